#include "MessageBuses.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>

namespace kova {

namespace {

// QDBusConnection::connect() takes a slot, no function.
class SignalForwarder : public QObject {
    Q_OBJECT

public:
    SignalForwarder(MessageBuses::SignalCallback received, QObject *parent)
        : QObject(parent),
          m_received(std::move(received)) {}

    Q_SLOT void forward(const QDBusMessage &signal) { m_received(signal); }

private:
    const MessageBuses::SignalCallback m_received;
};

} // namespace

MessageBuses::MessageBuses() {
    m_thread.setObjectName(QStringLiteral("buses"));
    m_context.moveToThread(&m_thread);
    m_thread.start();
}

MessageBuses::~MessageBuses() {
    close(std::chrono::milliseconds::max());
}

bool MessageBuses::close(std::chrono::milliseconds timeout) {
    run([this] {
        m_watchers = {};
        for (const Bus bus : {Bus::System, Bus::Session}) {
            if (const auto current = currentConnection(bus)) {
                setCurrentConnection(bus, std::nullopt);
                QDBusConnection::disconnectFromBus(current->name());
            }
        }
        m_thread.quit();
    });
    return m_thread.wait(QDeadlineTimer(timeout));
}

void MessageBuses::run(std::function<void()> action) {
    QMetaObject::invokeMethod(&m_context, std::move(action), Qt::QueuedConnection);
}

void MessageBuses::call(Bus bus, const QDBusMessage &message, const ReplyCallback &reply) {
    if (const auto current = currentConnection(bus); current && current->isConnected()) {
        run([this, sent = current->asyncCall(message), reply] { awaitReply(sent, reply); });
        return;
    }
    run([this, bus, message, reply] {
        if (const QDBusConnection connected = connection(bus); connected.isConnected()) {
            awaitReply(connected.asyncCall(message), reply);
        } else {
            reply(message.createErrorReply(QDBusError::Disconnected,
                                           QStringLiteral("The message bus is not available")));
        }
    });
}

void MessageBuses::awaitReply(const QDBusPendingCall &call, const ReplyCallback &reply) {
    auto *const watcher = new QDBusPendingCallWatcher(call, &m_context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_context, [watcher, reply] {
        watcher->deleteLater();
        reply(watcher->reply());
    });
}

void MessageBuses::watch(Bus bus, const QString &service, std::function<void()> newOwner) {
    m_watches.push_back({bus, service, std::move(newOwner)});
    refreshWatches(bus);
}

void MessageBuses::listen(const QString &interface, const QString &signal, SignalCallback received) {
    m_subscriptions.push_back({interface, signal, std::move(received)});
    refreshWatches(Bus::Session);
}

void MessageBuses::refreshWatches(Bus bus) {
    if (const auto current = currentConnection(bus)) {
        startWatching(bus, *current);
    }
}

// QtDBus keeps a lost connection under its name, so each new one gets another.
QDBusConnection MessageBuses::connection(Bus bus) {
    if (const auto current = currentConnection(bus)) {
        if (current->isConnected()) {
            return *current;
        }
        setCurrentConnection(bus, std::nullopt);
        QDBusConnection::disconnectFromBus(current->name());
    }
    QDBusConnection connected = QDBusConnection::connectToBus(
        bus == Bus::Session ? QDBusConnection::SessionBus : QDBusConnection::SystemBus,
        QStringLiteral("kova-%1").arg(++m_connections));
    setCurrentConnection(bus, connected);
    if (connected.isConnected()) {
        startWatching(bus, connected);
        if (std::exchange(m_wasConnected[static_cast<size_t>(bus)], true)) {
            for (const Watch &watch : m_watches) {
                if (watch.bus == bus) {
                    run(watch.newOwner); // the state of the service was lost with the bus
                }
            }
        }
    }
    return connected;
}

std::optional<QDBusConnection> MessageBuses::currentConnection(Bus bus) {
    const std::lock_guard lock(m_mutex);
    return m_current[static_cast<size_t>(bus)];
}

void MessageBuses::setCurrentConnection(Bus bus, std::optional<QDBusConnection> connection) {
    const std::lock_guard lock(m_mutex);
    m_current[static_cast<size_t>(bus)] = std::move(connection);
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
    for (const Subscription &subscription : m_subscriptions) {
        if (bus == Bus::Session) {
            QDBusConnection(connection)
                .connect(QString(), QString(), subscription.interface, subscription.signal,
                         new SignalForwarder(subscription.received, watchers.get()),
                         SLOT(forward(QDBusMessage)));
        }
    }
    m_watchers[static_cast<size_t>(bus)] = std::move(watchers);
}

} // namespace kova

#include "MessageBuses.moc"
