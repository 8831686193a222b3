#include "FreedesktopNotificationCenter.h"

#include "MessageBuses.h"
#include "plainLine.h"

#include <QStringList>
#include <QVariantMap>

namespace kova {

namespace {

QString service() {
    return QStringLiteral("org.freedesktop.Notifications");
}

QDBusMessage serviceCall(const QString &method) {
    return QDBusMessage::createMethodCall(service(), QStringLiteral("/org/freedesktop/Notifications"),
                                          service(), method);
}

QString escaped(QString text) {
    return text.replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"));
}

QVariantMap hints(const NotificationRequest &request) {
    constexpr uchar critical = 2; // shown over full-screen windows and while other ones are held back
    QVariantMap hints{
        {QStringLiteral("desktop-entry"), QStringLiteral("jp.kova.Alarm")},
        {QStringLiteral("category"), QStringLiteral("x-kova.alarm")},
        {QStringLiteral("urgency"), QVariant::fromValue(critical)},
        {QStringLiteral("x-kova-identifier"), request.identifier},
    };
    if (request.defaultSound) {
        hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    }
    return hints;
}

QDBusMessage notify(const NotificationRequest &request, bool takesMarkup) {
    constexpr quint32 replacesNone = 0;
    constexpr qint32 serversTimeout = -1;
    const QString body = plainLine(request.body);
    return serviceCall(QStringLiteral("Notify"))
           << QStringLiteral("KOVA Alarm") << replacesNone << QStringLiteral("jp.kova.Alarm") << request.title
           << (takesMarkup ? escaped(body) : body) << QStringList() << hints(request) << serversTimeout;
}

} // namespace

void FreedesktopNotificationCenter::requestAuthorization(AuthorizationOptions, Authorized answer) {
    m_buses.run([this, answer = std::move(answer)] {
        m_buses.watch(Bus::Session, service(), [this] { askCapabilities({}); });
        askCapabilities(answer);
    });
}

void FreedesktopNotificationCenter::add(const NotificationRequest &request) {
    m_buses.send(Bus::Session, notify(request, m_takesMarkup));
}

void FreedesktopNotificationCenter::askCapabilities(const Authorized &answer) {
    m_buses.call(Bus::Session, serviceCall(QStringLiteral("GetCapabilities")),
                 [this, answer](const QDBusMessage &reply) {
                     const bool granted = reply.type() == QDBusMessage::ReplyMessage;
                     if (granted) {
                         const QStringList capabilities = reply.arguments().value(0).toStringList();
                         m_takesMarkup = capabilities.contains(QStringLiteral("body-markup"));
                     }
                     if (answer) {
                         answer(granted, granted ? std::nullopt : std::optional(reply.errorMessage()));
                     }
                 });
}

} // namespace kova
