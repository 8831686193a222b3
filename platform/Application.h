#pragma once

#include <QByteArray>

namespace kova {

/// The application as a desktop service. Calls are queued, so that a hung display does not delay the caller.
class Application {
public:
    virtual ~Application() = default;

    /// Brings the application in front of others, or demands attention if the desktop denies that. Main
    /// thread.
    virtual void activate() = 0;

    /// Shows the main window in front, with keyboard focus; `activationToken` is the desktop's permission to
    /// take it, or empty. Does nothing if there is no window. Any thread.
    virtual void showMainWindow(const QByteArray &activationToken = {}) = 0;
};

} // namespace kova
