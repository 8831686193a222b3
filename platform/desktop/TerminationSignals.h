#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace kova {

/// Runs an action from the event loop when the process is asked to end (SIGTERM, SIGINT, SIGHUP), and keeps a
/// reader that went away from killing it (SIGPIPE). One per process; child processes inherit none of it.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> action);

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kova
