#include "PortalNotificationCenter.h"

#include "Application.h"
#include "MessageBuses.h"
#include "Portal.h"
#include "shownText.h"

#include <QDBusArgument>
#include <QVariantMap>

namespace kova {

namespace {

const QString interface = QStringLiteral("org.freedesktop.portal.Notification");
const QString clickAction = QStringLiteral("show-window");

// Some desktops pass the token in a dictionary among the parameters of the action.
QByteArray activationToken(const QDBusMessage &invoked) {
    const auto parameters = qdbus_cast<QVariantList>(invoked.arguments().value(2));
    for (const QVariant &parameter : parameters) {
        const auto dictionary = parameter.value<QDBusArgument>();
        if (dictionary.currentSignature() == QLatin1String("a{sv}")) {
            return qdbus_cast<QVariantMap>(dictionary)
                .value(QStringLiteral("activation-token"))
                .toString()
                .toUtf8();
        }
    }
    return {};
}

} // namespace

void PortalNotificationCenter::requestAuthorization(Authorized result) {
    m_buses.run([this, result = std::move(result)] {
        const QDBusMessage call =
            portalCall(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"))
            << interface << QStringLiteral("version");
        m_buses.call(Bus::Session, call, [result](const QDBusMessage &reply) {
            const bool granted = reply.type() == QDBusMessage::ReplyMessage;
            result(granted, granted ? std::nullopt : std::optional(reply.errorMessage()));
        });
        m_buses.listen(interface, QStringLiteral("ActionInvoked"), [this](const QDBusMessage &signal) {
            if (signal.arguments().value(1) == clickAction) {
                m_application.showMainWindow(activationToken(signal));
            }
        });
    });
}

// The portal supports no markup and plays its own sound.
void PortalNotificationCenter::add(const NotificationRequest &request) {
    const QVariantMap notification{
        {QStringLiteral("title"), request.title},
        {QStringLiteral("body"), plainLine(request.body)},
        {QStringLiteral("priority"), QStringLiteral("high")}, // urgent ones stay until they are dismissed
        {QStringLiteral("default-action"), clickAction},
    };
    m_buses.call(Bus::Session, portalCall(interface, QStringLiteral("AddNotification"))
                                   << request.identifier << notification);
}

} // namespace kova
