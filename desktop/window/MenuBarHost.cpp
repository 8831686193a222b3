#include "MenuBarHost.h"

#include "MessageBuses.h"
#include "X11.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>

namespace kova {

namespace {
const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
} // namespace

void MenuBarHost::watch() {
    m_buses.run([this] {
        m_buses.watch(Bus::Session, watcherService, [this] { requestState(); });
        m_buses.listen(watcherService, QStringLiteral("StatusNotifierHostRegistered"),
                       [this](const QDBusMessage &) { requestState(); });
        requestState();
    });
}

void MenuBarHost::requestState() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcherService, QStringLiteral("/StatusNotifierWatcher"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({watcherService, QStringLiteral("IsStatusNotifierHostRegistered")});
    call.setAutoStartService(false);
    m_buses.call(Bus::Session, call, [this](const QDBusMessage &reply) {
        const bool isRegistered = reply.type() == QDBusMessage::ReplyMessage &&
                                  reply.arguments().value(0).value<QDBusVariant>().variant().toBool();
        QMetaObject::invokeMethod(
            this, [this, isRegistered] { update(isRegistered); }, Qt::QueuedConnection);
    });
}

void MenuBarHost::update(bool isRegistered) {
    if (m_isAvailable) {
        return;
    }
    m_isAvailable = isRegistered || (QGuiApplication::platformName() == QLatin1String("xcb") && hasX11Tray());
    if (m_isAvailable) {
        Q_EMIT available(isRegistered);
    }
}

} // namespace kova
