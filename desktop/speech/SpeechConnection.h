#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QLocalSocket>
#include <QObject>
#include <QProcess>
#include <QTimer>
#include <deque>
#include <functional>

namespace kova {

/// A connection to the speech service in its line protocol, SSIP, over a local socket. It lives in the event
/// loop alone: the service may be slow, hung or gone without holding anybody up. It is made when it is wanted
/// and closed when it has rested for long, since the service ends itself when it has no clients.
class SpeechConnection : public QObject {
public:
    using Lines = QList<QByteArray>;
    using Reply = std::function<void(int code, const Lines &lines)>;

    /// What comes from the service.
    struct Listener {
        std::function<void()> ready; ///< commands can be given
        std::function<void(const QString &reason)> lost;
        std::function<void(int code, const Lines &lines)> event;
    };

    explicit SpeechConnection(Listener listener);
    ~SpeechConnection() override;

    /// Whether commands can be given now; else it connects and tells the listener, if need be in this call.
    /// One that owes an answer for long is made anew.
    bool want();

    /// Starts the service and then connects; false when that was tried for this want already.
    bool startService();

    bool isReady() const { return m_socket.state() == QLocalSocket::ConnectedState; }

    /// Once ready. The reply does not come when the connection is dropped or lost.
    void command(const QByteArray &line, Reply reply = {});
    void send(const QByteArray &bytes, Reply reply);

    /// Nothing is wanted for now.
    void rest();

    /// Whatever the service still has to say is of no more use. It is not told as a loss.
    void drop();

    /// What came from the service is beyond all measure: the connection is lost.
    void distrust();

private:
    void open();
    void serviceStarted();
    void introduce();
    void lose(const QString &reason);
    bool isStuck() const;
    void receive();
    void receiveLine(const QByteArray &line);

    const Listener m_listener;
    QLocalSocket m_socket;
    QProcess m_starter;
    QTimer m_idle;
    QElapsedTimer m_sinceProgress;
    bool m_isWanted = false;
    bool m_hasStartedService = false;
    std::deque<Reply> m_replies; ///< one for each command that is not answered yet
    Lines m_lines;               ///< of the answer that is coming in
};

} // namespace kova
