#pragma once

namespace kova {

/// This program as the desktop sees it. Main thread.
class Application {
public:
    virtual ~Application() = default;

    /// Brings the application in front of the others, or asks for attention where that is refused; soon, so
    /// that a display that hangs holds up nothing of what the caller does next.
    virtual void activate() = 0;

    /// Shows the main window, in front and with the keyboard focus; nothing when there is none.
    virtual void showMainWindow() = 0;

    /// Leaves the event loop; the process ends with status 0.
    virtual void terminate() = 0;
};

} // namespace kova
