#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace kova {

/// Passes the signals that request termination (SIGTERM, SIGINT, SIGHUP) to the event loop, and turns those
/// about a failed write (SIGPIPE, SIGXFSZ) into the error that write() returns. One per process; child
/// processes start with the default handlers.
class TerminationSignals {
public:
    /// Installs the handlers. A termination signal that is ignored, as by nohup, stays ignored.
    TerminationSignals();

    /// Runs the action from the event loop after each termination signal since the construction.
    void listen(std::function<void()> action);

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kova
