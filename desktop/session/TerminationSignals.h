#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace kova {

/// Turns the signals that ask the process to end (SIGTERM, SIGINT, SIGHUP) into an action of the event loop,
/// and keeps a reader that went away (SIGPIPE) from killing it. One per process; child processes inherit none
/// of it.
class TerminationSignals {
public:
    /// From now on no such signal kills the process.
    TerminationSignals();

    /// Runs the action for each signal from the construction on.
    void listen(std::function<void()> action);

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kova
