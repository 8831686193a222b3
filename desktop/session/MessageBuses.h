#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QThread>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace kova {

enum class Bus { Session, System };

/// The session and system bus on a dedicated thread, so that a missing, slow or hung bus or service does not
/// block callers. Each bus is connected on first use and reconnected on the next use after a disconnect.
class MessageBuses {
public:
    using ReplyCallback = std::function<void(const QDBusMessage &reply)>;
    using SignalCallback = std::function<void(const QDBusMessage &signal)>;

    MessageBuses();
    /// Waits for the thread without a time limit.
    ~MessageBuses();

    /// Runs the action on the buses' thread. Any thread.
    void run(std::function<void()> action);

    /// Sends a call, before returning if the bus is connected. Passes its reply or error to `reply` on the
    /// buses' thread. Any thread.
    void call(
        Bus bus, const QDBusMessage &message, const ReplyCallback &reply = [](const QDBusMessage &) {});

    /// Calls `newOwner` whenever the service name gains an owner and after a lost bus is reconnected. Does
    /// not open the connection itself. On the buses' thread.
    void watch(Bus bus, const QString &service, const std::function<void()> &newOwner);

    /// Calls `received` for each such signal on the session bus, whoever sends it. On the buses' thread.
    void listen(const QString &interface, const QString &signal, SignalCallback received);

    /// Sends everything that was run before and ends the thread. Returns false if a bus blocks it for longer
    /// than the timeout.
    bool close(std::chrono::milliseconds timeout);

private:
    struct Subscription {
        Bus bus;
        QString interface;
        QString signal;
        QStringList arguments; ///< the first ones of the signals to receive, or empty
        SignalCallback received;
        std::function<void()> reconnected = [] {};
    };

    void awaitReply(const QDBusPendingCall &call, const ReplyCallback &reply);
    QDBusConnection connection(Bus bus);
    std::optional<QDBusConnection> currentConnection(Bus bus);
    void setCurrentConnection(Bus bus, std::optional<QDBusConnection> connection);
    void subscribe(const Subscription &subscription);
    void connectSignal(QDBusConnection connection, const Subscription &subscription);

    QThread m_thread;
    QObject m_context;                                    ///< lives in the thread
    std::array<std::unique_ptr<QObject>, 2> m_forwarders; ///< parents of those of the current connections
    std::mutex m_mutex;
    std::array<std::optional<QDBusConnection>, 2> m_current; ///< guarded; never held while a bus is called
    int m_connections = 0;
    std::array<bool, 2> m_wasConnected{};
    std::vector<Subscription> m_subscriptions;
};

} // namespace kova
