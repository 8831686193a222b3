#pragma once

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
class PlayerProcess : public QObject {
public:
    /// Why the sound is not to be heard. Runs from the event loop, at most once; it may destroy the object.
    using Failed = std::function<void(const QString &reason)>;

    /// Starts the program at once. It finds the held files after its end of the socket pair.
    PlayerProcess(const QByteArray &program, const message::Play &request, Failed failed,
                  const std::vector<int> &held = {});
    /// Ends the sound.
    ~PlayerProcess() override;

    void setVolume(float volume);

private:
    std::optional<QString> start(const QByteArray &program, const message::Play &request,
                                 const std::vector<int> &held);
    void tell(const message::Request &request);
    void receive();
    bool receiveOne();
    void heed(const message::Answer &answer);
    void fallenSilent();
    void childEnded(int signal);
    void fail(const QString &reason);

    Failed m_failed; ///< empty once there is nothing to fail any more
    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<ChildProcess> m_child;
    QTimer m_silence;
    QElapsedTimer m_age;
    qint64 m_answers = 0;
    bool m_isOutage = false; ///< of the sound server
};

} // namespace kova
