#include "FreedesktopNotificationCenter.h"

#include "Application.h"
#include "MessageBuses.h"
#include "shownText.h"

#include <QStringList>
#include <QVariantMap>

namespace kova {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");

QDBusMessage serviceCall(const QString &method) {
    return QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"), service,
                                          method);
}

QString escaped(QString text) {
    return text.replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"));
}

QVariantMap hints(const NotificationRequest &request) {
    constexpr uchar normal = 1; // services ignore the timeout of a critical one
    return {
        {QStringLiteral("desktop-entry"), QStringLiteral("jp.kova.Alarm")},
        {QStringLiteral("category"), QStringLiteral("x-kova.alarm")},
        {QStringLiteral("urgency"), QVariant::fromValue(normal)},
        {QStringLiteral("x-kova-identifier"), request.identifier},
        {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
    };
}

QDBusMessage notify(const NotificationRequest &request, bool supportsMarkup) {
    constexpr quint32 replacesNone = 0;
    // The default action: a click, or, on Xfce, which reports none, a button with this label.
    const QStringList actions{QStringLiteral("default"), QStringLiteral("ウィンドウを表示")};
    const auto timeout = static_cast<qint32>(request.lifetime.count());
    const QString body = plainLine(request.body);
    return serviceCall(QStringLiteral("Notify"))
           << QStringLiteral("KOVA Alarm") << replacesNone << QStringLiteral("jp.kova.Alarm") << request.title
           << (supportsMarkup ? escaped(body) : body) << actions << hints(request) << timeout;
}

} // namespace

void FreedesktopNotificationCenter::requestAuthorization(Authorized result) {
    m_buses.run([this, result = std::move(result)] {
        m_buses.watch(Bus::Session, service, [this] {
            m_shown.clear();
            requestCapabilities({});
        });
        listenForClicks();
        requestCapabilities(result);
    });
}

void FreedesktopNotificationCenter::add(const NotificationRequest &request) {
    m_buses.call(Bus::Session, notify(request, m_supportsMarkup), [this](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            m_shown.insert(reply.arguments().value(0).toUInt());
        }
    });
}

// Some services broadcast every click, so the ids of other applications' notifications are ignored.
void FreedesktopNotificationCenter::listenForClicks() {
    m_buses.listen(service, QStringLiteral("ActivationToken"), [this](const QDBusMessage &signal) {
        if (m_shown.contains(signal.arguments().value(0).toUInt())) {
            m_activationToken = signal.arguments().value(1).toString().toUtf8();
        }
    });
    m_buses.listen(service, QStringLiteral("ActionInvoked"), [this](const QDBusMessage &signal) {
        if (m_shown.contains(signal.arguments().value(0).toUInt())) {
            m_application.showMainWindow(std::exchange(m_activationToken, {}));
        }
    });
}

void FreedesktopNotificationCenter::requestCapabilities(const Authorized &result) {
    m_buses.call(Bus::Session, serviceCall(QStringLiteral("GetCapabilities")),
                 [this, result](const QDBusMessage &reply) {
                     const bool granted = reply.type() == QDBusMessage::ReplyMessage;
                     if (granted) {
                         const QStringList capabilities = reply.arguments().value(0).toStringList();
                         m_supportsMarkup = capabilities.contains(QStringLiteral("body-markup"));
                     }
                     if (result) {
                         result(granted, granted ? std::nullopt : std::optional(reply.errorMessage()));
                     }
                 });
}

} // namespace kova
