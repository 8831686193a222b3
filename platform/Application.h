#pragma once

namespace kova {

/// The application as a desktop service. Main thread.
class Application {
public:
    virtual ~Application() = default;

    /// Brings the application in front of others, or demands attention if the desktop denies that. Queued, so
    /// that a hung display does not delay the caller.
    virtual void activate() = 0;

    /// Shows the main window in front, with keyboard focus. Does nothing if there is none.
    virtual void showMainWindow() = 0;

    /// Exits the event loop with status 0.
    virtual void terminate() = 0;
};

} // namespace kova
