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
        for (const Bus bus : {Bus::System, Bus::Session}) {
            if (const auto present = presentConnection(bus)) {
                setPresentConnection(bus, std::nullopt);
                QDBusConnection::disconnectFromBus(present->name());
            }
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
        reply(message.createErrorReply(QDBusError::Disconnected,
                                       QStringLiteral("The message bus is not there")));
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
    if (const auto present = presentConnection(bus); present && present->isConnected()) {
        present->send(message);
    } else {
        run([this, bus, message] { connection(bus).send(message); });
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
    if (const auto present = presentConnection(bus)) {
        if (present->isConnected()) {
            return *present;
        }
        setPresentConnection(bus, std::nullopt);
        QDBusConnection::disconnectFromBus(present->name());
    }
    const auto type = bus == Bus::System ? QDBusConnection::SystemBus : QDBusConnection::SessionBus;
    const QDBusConnection connected =
        QDBusConnection::connectToBus(type, QStringLiteral("kova-%1").arg(++m_connections));
    setPresentConnection(bus, connected);
    if (bus == Bus::Session && connected.isConnected()) {
        startWatching(connected);
    }
    return connected;
}

std::optional<QDBusConnection> MessageBuses::presentConnection(Bus bus) {
    const std::lock_guard lock(m_mutex);
    return m_present[static_cast<size_t>(bus)];
}

void MessageBuses::setPresentConnection(Bus bus, std::optional<QDBusConnection> connection) {
    const std::lock_guard lock(m_mutex);
    m_present[static_cast<size_t>(bus)] = std::move(connection);
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
