#pragma once

#include "AudioPlayer.h"
#include "ChildProcess.h"
#include "Messages.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <optional>
#include <vector>

namespace kova {

/// The player of one sound in a process of its own, watched over: one that crashes, falls silent or talks
/// without end is killed. No call waits for it. Main thread.
class PlayerProcess : public QObject, public AudioPlayer {
public:
    /// The program finds the held files after its end of the socket pair.
    PlayerProcess(QByteArray program, std::string path, AudioPlayers::Refusal refused,
                  std::vector<int> held = {});
    ~PlayerProcess() override;

    void setVolume(float volume) override;
    void setNumberOfLoops(int loops) override { m_request.loops = loops; }
    void setLongestTime(std::chrono::milliseconds time) override { m_request.longest = time; }
    void play() override;
    void stop() override;

private:
    std::optional<QString> start();
    void tell(const message::Request &request);
    void receive();
    bool receiveOne();
    void heed(const message::Answer &answer);
    void fallenSilent();
    void childEnded(int signal);
    void fail(const QString &reason);

    const QByteArray m_program;
    const std::vector<int> m_held;
    message::Play m_request;
    AudioPlayers::Refusal m_refused; ///< empty once there is nothing to refuse any more
    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<ChildProcess> m_child;
    QTimer m_silence;
    QElapsedTimer m_age;
    qint64 m_answers = 0;
    bool m_isOutage = false; ///< of the sound server
};

} // namespace kova
