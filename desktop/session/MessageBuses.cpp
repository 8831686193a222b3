#include "MessageBuses.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
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
        m_forwarders = {};
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

void MessageBuses::watch(Bus bus, const QString &service, const std::function<void()> &newOwner) {
    const auto ownerChanged = [newOwner](const QDBusMessage &signal) {
        if (!signal.arguments().value(2).toString().isEmpty()) {
            newOwner();
        }
    };
    const QStringList arguments{service};
    subscribe({bus, QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), arguments,
               ownerChanged, newOwner});
}

void MessageBuses::listen(const QString &interface, const QString &signal, SignalCallback received) {
    subscribe({Bus::Session, interface, signal, {}, std::move(received)});
}

void MessageBuses::subscribe(const Subscription &subscription) {
    m_subscriptions.push_back(subscription);
    if (const auto current = currentConnection(subscription.bus); current && current->isConnected()) {
        connectSignal(*current, subscription);
    }
}

void MessageBuses::connectSignal(QDBusConnection connection, const Subscription &subscription) {
    QObject *const parent = m_forwarders[static_cast<size_t>(subscription.bus)].get();
    connection.connect(QString(), QString(), subscription.interface, subscription.signal,
                       subscription.arguments, QString(), new SignalForwarder(subscription.received, parent),
                       SLOT(forward(QDBusMessage)));
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
        m_forwarders[static_cast<size_t>(bus)] = std::make_unique<QObject>();
        const bool isReconnected = std::exchange(m_wasConnected[static_cast<size_t>(bus)], true);
        for (const Subscription &subscription : m_subscriptions) {
            if (subscription.bus != bus) {
                continue;
            }
            connectSignal(connected, subscription);
            if (isReconnected) {
                run(subscription.reconnected); // the state of the service was lost with the bus
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

} // namespace kova

#include "MessageBuses.moc"
