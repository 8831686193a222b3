#pragma once

#include "AudioPlayer.h"
#include "PlayerProtocol.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>
#include <vector>

namespace kova {

/// Plays one sound in a supervised child process. A player that crashes, stops sending heartbeats or sends
/// invalid or too many messages is cleaned up and reported. Calls do not block. Main thread.
class PlayerProcess : public QObject, public AudioPlayer {
public:
    struct Program {
        QString path;
        QProcessEnvironment environment;
        std::vector<int> descriptors; ///< become 4, 5, …; above that range; -1 leaves its number closed
    };

    PlayerProcess(const Program &program, const protocol::Request &request,
                  AudioPlayers::ErrorCallback onError);
    ~PlayerProcess() override;

private:
    void start(const Program &program, int socket);
    void releaseProcess(std::chrono::milliseconds gracePeriod);
    void receive();
    bool receiveOne();
    void handleEvent(const protocol::Event &event);
    void onHeartbeatTimeout();
    void onExit(int code, QProcess::ExitStatus status);
    void fail(const QString &reason, bool isFinal = false);

    const protocol::Request m_request;
    AudioPlayers::ErrorCallback m_onError; ///< empty once the result is known
    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<QProcess> m_process;
    QTimer m_heartbeatTimer;
    QElapsedTimer m_age;
    qint64 m_messages = 0;
    bool m_isOutage = false; ///< of the sound server
};

} // namespace kova
