#include "FreedesktopNotificationCenter.h"

#include "MessageBuses.h"
#include "bringToFront.h"
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
    constexpr uchar normal = 1; // services keep a critical one on the screen whatever its time-out
    return {
        {QStringLiteral("desktop-entry"), QStringLiteral("jp.kova.Alarm")},
        {QStringLiteral("category"), QStringLiteral("x-kova.alarm")},
        {QStringLiteral("urgency"), QVariant::fromValue(normal)},
        {QStringLiteral("x-kova-identifier"), request.identifier},
        {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
    };
}

// The default action. Services that don't take a click on the notification itself make a button of it.
QStringList click() {
    return {QStringLiteral("default"), QStringLiteral("ウィンドウを表示")};
}

QDBusMessage notify(const NotificationRequest &request, bool takesMarkup) {
    constexpr quint32 replacesNone = 0;
    const auto timeout = static_cast<qint32>(request.lifetime.count());
    const QString body = plainLine(request.body);
    return serviceCall(QStringLiteral("Notify"))
           << QStringLiteral("KOVA Alarm") << replacesNone << QStringLiteral("jp.kova.Alarm") << request.title
           << (takesMarkup ? escaped(body) : body) << click() << hints(request) << timeout;
}

} // namespace

void FreedesktopNotificationCenter::requestAuthorization(Authorized answer) {
    m_buses.run([this, answer = std::move(answer)] {
        m_buses.watch(Bus::Session, service(), [this] {
            m_shown.clear();
            askCapabilities({});
        });
        listenForClicks();
        askCapabilities(answer);
    });
}

void FreedesktopNotificationCenter::add(const NotificationRequest &request) {
    m_buses.send(Bus::Session, notify(request, m_takesMarkup), [this](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            m_shown.insert(reply.arguments().value(0).toUInt());
        }
    });
}

// A service may tell everybody of every click, so a number that is not ours is passed over.
void FreedesktopNotificationCenter::listenForClicks() {
    m_buses.listen(service(), QStringLiteral("ActivationToken"), [this](const QDBusMessage &signal) {
        if (m_shown.contains(signal.arguments().value(0).toUInt())) {
            m_activationToken = signal.arguments().value(1).toString().toUtf8();
        }
    });
    m_buses.listen(service(), QStringLiteral("ActionInvoked"), [this](const QDBusMessage &signal) {
        if (m_shown.contains(signal.arguments().value(0).toUInt())) {
            bringToFront(m_application, std::exchange(m_activationToken, {}));
        }
    });
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
