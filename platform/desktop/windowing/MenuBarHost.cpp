#include "MenuBarHost.h"

#include "X11.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>

namespace kova {

namespace {
const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
} // namespace

void MenuBarHost::watch() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        answer(false);
        return;
    }
    auto *const watcher = new QDBusServiceWatcher(watcherService, bus,
                                                  QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &MenuBarHost::ask);
    bus.connect(watcherService, watcherPath, watcherService, QStringLiteral("StatusNotifierHostRegistered"),
                this, SLOT(ask()));
    ask();
}

void MenuBarHost::ask() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherService, watcherPath,
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({watcherService, QStringLiteral("IsStatusNotifierHostRegistered")});
    call.setAutoStartService(false);
    auto *const pending = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        const QDBusPendingReply<QDBusVariant> reply = *pending;
        pending->deleteLater();
        answer(reply.isValid() && reply.value().variant().toBool());
    });
}

// The toolkit decides once, at the first icon, where icons go: none may be made before there is a place.
void MenuBarHost::answer(bool isRegistered) {
    if (m_isAvailable) {
        return;
    }
    m_isAvailable =
        isRegistered || (QGuiApplication::platformName() == QLatin1String("xcb") && hasX11Tray());
    if (m_isAvailable) {
        Q_EMIT available();
    }
}

} // namespace kova
