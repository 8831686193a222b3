#include "PortalNotificationCenter.h"

#include "MessageBuses.h"
#include "Portal.h"
#include "bringToFront.h"
#include "plainLine.h"

#include <QDBusArgument>
#include <QVariantMap>

namespace kova {

namespace {

QString interface() {
    return QStringLiteral("org.freedesktop.portal.Notification");
}

QString click() {
    return QStringLiteral("show-window");
}

// A record among what comes with a click, where the desktop sends one.
QByteArray activationToken(const QDBusMessage &invoked) {
    const auto parameters = qdbus_cast<QVariantList>(invoked.arguments().value(2));
    for (const QVariant &parameter : parameters) {
        const auto record = parameter.value<QDBusArgument>();
        if (record.currentSignature() == QLatin1String("a{sv}")) {
            return qdbus_cast<QVariantMap>(record)
                .value(QStringLiteral("activation-token"))
                .toString()
                .toUtf8();
        }
    }
    return {};
}

} // namespace

void PortalNotificationCenter::requestAuthorization(Authorized answer) {
    m_buses.run([this, answer = std::move(answer)] {
        const QDBusMessage call =
            portalCall(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"))
            << interface() << QStringLiteral("version");
        m_buses.call(Bus::Session, call, [answer](const QDBusMessage &reply) {
            const bool granted = reply.type() == QDBusMessage::ReplyMessage;
            answer(granted, granted ? std::nullopt : std::optional(reply.errorMessage()));
        });
        m_buses.listen(interface(), QStringLiteral("ActionInvoked"), [this](const QDBusMessage &signal) {
            if (signal.arguments().value(1) == click()) {
                bringToFront(m_application, activationToken(signal));
            }
        });
    });
}

// The portal takes the text as it is, and has its own sound.
void PortalNotificationCenter::add(const NotificationRequest &request) {
    const QVariantMap notification{
        {QStringLiteral("title"), request.title},
        {QStringLiteral("body"), plainLine(request.body)},
        {QStringLiteral("priority"), QStringLiteral("high")}, // urgent ones stay until they are dismissed
        {QStringLiteral("default-action"), click()},
    };
    m_buses.send(Bus::Session, portalCall(interface(), QStringLiteral("AddNotification"))
                                   << request.identifier << notification);
}

} // namespace kova
