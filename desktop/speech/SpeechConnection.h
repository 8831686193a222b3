#pragma once

#include <QByteArray>
#include <QList>
#include <QLocalSocket>
#include <QObject>
#include <QProcess>
#include <QTimer>
#include <deque>
#include <functional>

namespace kova {

/// A non-blocking connection to the speech service over SSIP, its line protocol, on a local socket. Opened on
/// demand and closed after an idle period, since the service exits when it has no clients.
class SpeechConnection : public QObject {
public:
    using Lines = QList<QByteArray>;
    using Reply = std::function<void(int code, const Lines &lines)>;

    /// Callbacks, which run from the event loop or from a function of the connection.
    struct Listener {
        std::function<void()> ready; ///< connected: commands can be sent
        std::function<void(const QString &reason)> lost;
        std::function<void(int code, const Lines &lines)> event;
    };

    /// A connection without a reply for `replyTimeout` is lost.
    SpeechConnection(Listener listener, std::chrono::milliseconds replyTimeout);
    ~SpeechConnection() override;

    /// Returns whether commands can be sent. Otherwise connects and calls the listener, possibly before
    /// returning.
    bool ensureConnected();

    /// Starts the service and then connects. Returns false if ensureConnected() was not called since the last
    /// start.
    bool startService();

    bool isReady() const { return m_socket.state() == QLocalSocket::ConnectedState; }

    /// Sends a line; requires isReady(). `reply` is discarded if the connection is closed first.
    void command(const QByteArray &line, Reply reply = {});
    void send(const QByteArray &bytes, Reply reply);

    /// Lets the connection close after the idle period.
    void setIdle();

    /// Cancels what is being spoken, closes the connection and discards pending replies without calling
    /// `lost`.
    void abort();

    /// Closes the connection, as abort() does, and calls `lost`.
    void fail(const QString &reason);

private:
    void open();
    void sendHandshake();
    void onTimeout();
    void receive();
    bool receiveLine(const QByteArray &line);

    const Listener m_listener;
    const std::chrono::milliseconds m_replyTimeout;
    QLocalSocket m_socket;
    QProcess m_starter;
    QTimer m_idle;
    QTimer m_timeout; ///< active while connecting, starting the service or waiting for a reply
    bool m_isNeeded = false;
    bool m_hasStartedService = false;
    std::deque<Reply> m_replies; ///< one for each command without a reply
    Lines m_lines;               ///< of the reply that is being received
};

} // namespace kova
