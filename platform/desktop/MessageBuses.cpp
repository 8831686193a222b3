#include "MessageBuses.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>

namespace kova {

MessageBuses::MessageBuses() {
    m_thread.setObjectName(QStringLiteral("buses"));
    m_home.moveToThread(&m_thread);
    m_thread.start();
}

MessageBuses::~MessageBuses() {
    close(std::chrono::milliseconds::max());
}

bool MessageBuses::close(std::chrono::milliseconds timeout) {
    run([this] {
        m_watchers.reset();
        for (QString &name : m_names) {
            QDBusConnection::disconnectFromBus(std::exchange(name, QString()));
        }
        m_thread.quit();
    });
    return m_thread.wait(QDeadlineTimer(timeout));
}

void MessageBuses::run(std::function<void()> action) {
    QMetaObject::invokeMethod(&m_home, std::move(action), Qt::QueuedConnection);
}

void MessageBuses::call(Bus bus, const QDBusMessage &message, const Reply &reply,
                        std::chrono::milliseconds timeout) {
    const QDBusConnection to = connection(bus);
    if (!to.isConnected()) {
        reply(message.createErrorReply(QDBusError::Disconnected, QStringLiteral("The message bus is not there")));
        return;
    }
    auto *const watcher =
        new QDBusPendingCallWatcher(to.asyncCall(message, static_cast<int>(timeout.count())), &m_home);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_home, [watcher, reply] {
        watcher->deleteLater();
        reply(watcher->reply());
    });
}

void MessageBuses::send(Bus bus, const QDBusMessage &message) {
    const QDBusConnection to = connection(bus);
    if (to.isConnected()) {
        to.send(message);
    }
}

void MessageBuses::watch(const QString &service, std::function<void()> newOwner) {
    m_watches.push_back({service, std::move(newOwner)});
    m_watchers.reset();
    const QDBusConnection session = connection(Bus::Session);
    if (!m_watchers && session.isConnected()) {
        startWatching(session);
    }
}

// A lost connection stays lost, so each new one gets a name of its own.
QDBusConnection MessageBuses::connection(Bus bus) {
    QString &name = m_names[static_cast<size_t>(bus)];
    if (!name.isEmpty()) {
        const QDBusConnection present(name);
        if (present.isConnected()) {
            return present;
        }
        QDBusConnection::disconnectFromBus(name);
    }
    name = QStringLiteral("kova-%1").arg(++m_connections);
    const auto type = bus == Bus::System ? QDBusConnection::SystemBus : QDBusConnection::SessionBus;
    QDBusConnection connected = QDBusConnection::connectToBus(type, name);
    if (bus == Bus::Session && connected.isConnected()) {
        startWatching(connected);
    }
    return connected;
}

void MessageBuses::startWatching(const QDBusConnection &session) {
    m_watchers = std::make_unique<QObject>();
    for (const Watch &watch : m_watches) {
        auto *const watcher = new QDBusServiceWatcher(
            watch.service, session, QDBusServiceWatcher::WatchForRegistration, m_watchers.get());
        QObject::connect(watcher, &QDBusServiceWatcher::serviceRegistered, m_watchers.get(), watch.newOwner);
    }
}

} // namespace kova
