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

/// The desktop's message buses, served by one thread, so that nobody waits for a bus or a service that is
/// missing, slow or hung. Each is connected at its first use, and again at the next one after it was lost.
class MessageBuses {
public:
    using Reply = std::function<void(const QDBusMessage &reply)>;
    using Arrived = std::function<void(const QDBusMessage &signal)>;

    MessageBuses();
    /// Waits for the thread, as long as a bus holds it up.
    ~MessageBuses();
    MessageBuses(const MessageBuses &) = delete;
    MessageBuses &operator=(const MessageBuses &) = delete;

    /// Runs the action on the buses' thread. Any thread.
    void run(std::function<void()> action);

    /// Sends a call; its reply or error comes to the buses' thread. On the buses' thread.
    void call(Bus bus, const QDBusMessage &message, const Reply &reply,
              std::chrono::milliseconds timeout = std::chrono::seconds(25));

    /// The same, sent at once where the bus is connected. Any thread.
    void send(
        Bus bus, const QDBusMessage &message, const Reply &reply = [](const QDBusMessage &) {});

    /// Tells each new owner of a service's name, and that a bus that was lost is there again. It does not
    /// connect the bus. On the buses' thread.
    void watch(Bus bus, const QString &service, std::function<void()> newOwner);

    /// Tells each arrival of a signal on the session bus, whoever sends it. On the buses' thread.
    void listen(const QString &interface, const QString &signal, Arrived arrived);

    /// Lets everything that was run so far be sent, and ends the thread; false when a bus holds it up.
    bool close(std::chrono::milliseconds timeout);

private:
    struct Watch {
        Bus bus;
        QString service;
        std::function<void()> newOwner;
    };

    struct Listening {
        QString interface;
        QString signal;
        Arrived arrived;
    };

    void follow(const QDBusPendingCall &call, const Reply &reply);
    QDBusConnection connection(Bus bus);
    void watchAnew(Bus bus);
    std::optional<QDBusConnection> presentConnection(Bus bus);
    void setPresentConnection(Bus bus, std::optional<QDBusConnection> connection);
    void tellOwners(Bus bus);
    void startWatching(Bus bus, const QDBusConnection &connection);

    QThread m_thread;
    QObject m_home;                                     ///< lives on the thread
    std::array<std::unique_ptr<QObject>, 2> m_watchers; ///< of the present connections
    std::mutex m_mutex;
    std::array<std::optional<QDBusConnection>, 2> m_present; ///< guarded; never held while a bus is called
    int m_connections = 0;
    std::array<bool, 2> m_wasConnected{};
    std::vector<Watch> m_watches;
    std::vector<Listening> m_listenings;
};

} // namespace kova
