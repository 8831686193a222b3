#pragma once

#include "Application.h"

#include <QPointer>
#include <QWindow>

namespace kova {

/// The application with its one main window.
class DesktopApplication : public Application {
public:
    /// The window that is brought to the front; it may be hidden. Not owned.
    void setMainWindow(QWindow *window) { m_window = window; }

    void activate() override;
    void showMainWindow() override;
    void terminate() override;

private:
    QPointer<QWindow> m_window;
};

} // namespace kova
