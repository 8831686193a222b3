#include "PortalNotificationCenter.h"

#include "MessageBuses.h"
#include "Portal.h"
#include "plainLine.h"

#include <QVariantMap>

namespace kova {

namespace {

QString interface() {
    return QStringLiteral("org.freedesktop.portal.Notification");
}

} // namespace

void PortalNotificationCenter::requestAuthorization(AuthorizationOptions, Authorized answer) {
    m_buses.run([this, answer = std::move(answer)] {
        const QDBusMessage call =
            portalCall(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"))
            << interface() << QStringLiteral("version");
        m_buses.call(Bus::Session, call, [answer](const QDBusMessage &reply) {
            const bool granted = reply.type() == QDBusMessage::ReplyMessage;
            answer(granted, granted ? std::nullopt : std::optional(reply.errorMessage()));
        });
    });
}

// The portal takes the text as it is, and has its own sound.
void PortalNotificationCenter::add(const NotificationRequest &request) {
    const QVariantMap notification{
        {QStringLiteral("title"), request.title},
        {QStringLiteral("body"), plainLine(request.body)},
        {QStringLiteral("priority"), QStringLiteral("urgent")},
    };
    m_buses.send(Bus::Session, portalCall(interface(), QStringLiteral("AddNotification"))
                                   << request.identifier << notification);
}

} // namespace kova
