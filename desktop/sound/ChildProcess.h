#pragma once

#include "Result.h"

#include <QByteArray>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <span>
#include <sys/types.h>

namespace kova {

/// A program that runs for us in the background, with those descriptors of ours that it is given and no
/// others, in a process group of its own. Nobody waits for its end: it is told and the process is cleared
/// away from the event loop. Main thread.
class ChildProcess : public QObject {
public:
    /// How it ended: the number of the signal, or 0 when it ended by itself.
    using Ended = std::function<void(int signal)>;

    /// The child finds the descriptors, which stay the caller's, under the numbers from 3 on, in place of -1
    /// nothing. All but the first lie above those numbers. Nothing else of it is told once the object is
    /// gone.
    static Result<std::unique_ptr<ChildProcess>> start(const QByteArray &program,
                                                       std::span<const int> descriptors, Ended ended);
    ~ChildProcess() override;

    void kill();

    /// Lets it end by itself within that time; then it is killed.
    static void endSoon(std::unique_ptr<ChildProcess> child, std::chrono::milliseconds patience);

private:
    ChildProcess(pid_t id, int handle, Ended ended);
    void reap();

    pid_t m_id;
    const int m_handle; ///< tells the end by becoming readable
    Ended m_ended;
    QSocketNotifier m_notifier;
    bool m_isRunning = true;
};

} // namespace kova
