#include "MessageBuses.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>

namespace kova {

namespace {

// Hears one signal of a bus.
class SignalEar : public QObject {
    Q_OBJECT

public:
    SignalEar(MessageBuses::Arrived arrived, QObject *parent)
        : QObject(parent),
          m_arrived(std::move(arrived)) {}

    Q_SLOT void hear(const QDBusMessage &signal) { m_arrived(signal); }

private:
    const MessageBuses::Arrived m_arrived;
};

} // namespace

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
        m_watchers = {};
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
    follow(to.asyncCall(message, static_cast<int>(timeout.count())), reply);
}

void MessageBuses::follow(const QDBusPendingCall &call, const Reply &reply) {
    auto *const watcher = new QDBusPendingCallWatcher(call, &m_home);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_home, [watcher, reply] {
        watcher->deleteLater();
        reply(watcher->reply());
    });
}

void MessageBuses::send(Bus bus, const QDBusMessage &message, const Reply &reply) {
    if (const auto present = presentConnection(bus); present && present->isConnected()) {
        run([this, sent = present->asyncCall(message), reply] { follow(sent, reply); });
    } else {
        run([this, bus, message, reply] { call(bus, message, reply); });
    }
}

void MessageBuses::watch(Bus bus, const QString &service, std::function<void()> newOwner) {
    m_watches.push_back({bus, service, std::move(newOwner)});
    watchAnew(bus);
}

void MessageBuses::listen(const QString &interface, const QString &signal, Arrived arrived) {
    m_listenings.push_back({interface, signal, std::move(arrived)});
    watchAnew(Bus::Session);
}

void MessageBuses::watchAnew(Bus bus) {
    if (const auto present = presentConnection(bus)) {
        startWatching(bus, *present);
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
    QDBusConnection connected = QDBusConnection::connectToBus(
        bus == Bus::Session ? QDBusConnection::SessionBus : QDBusConnection::SystemBus,
        QStringLiteral("kova-%1").arg(++m_connections));
    setPresentConnection(bus, connected);
    if (connected.isConnected()) {
        startWatching(bus, connected);
        if (std::exchange(m_wasConnected[static_cast<size_t>(bus)], true)) {
            tellOwners(bus);
        }
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

void MessageBuses::startWatching(Bus bus, const QDBusConnection &connection) {
    auto watchers = std::make_unique<QObject>();
    for (const Watch &watch : m_watches) {
        if (watch.bus != bus) {
            continue;
        }
        auto *const watcher = new QDBusServiceWatcher(
            watch.service, connection, QDBusServiceWatcher::WatchForOwnerChange, watchers.get());
        QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, watchers.get(),
                         [newOwner = watch.newOwner](const QString &, const QString &, const QString &owner) {
                             if (!owner.isEmpty()) {
                                 newOwner();
                             }
                         });
    }
    for (const Listening &listening : m_listenings) {
        if (bus == Bus::Session) {
            QDBusConnection(connection)
                .connect(QString(), QString(), listening.interface, listening.signal,
                         new SignalEar(listening.arrived, watchers.get()), SLOT(hear(QDBusMessage)));
        }
    }
    m_watchers[static_cast<size_t>(bus)] = std::move(watchers);
}

// What was asked of the services on a bus that was lost went with it.
void MessageBuses::tellOwners(Bus bus) {
    for (const Watch &watch : m_watches) {
        if (watch.bus == bus) {
            run(watch.newOwner);
        }
    }
}

} // namespace kova

#include "MessageBuses.moc"
