#pragma once

#include "Platform.h"

#include <QPalette>
#include <QWindow>
#include <memory>

namespace kova {

class MenuBarHost;
class SingleInstance;

/// The implementations of all ports, and the application's integration into the desktop. Needs the
/// application object. Main thread.
class DesktopPlatform {
public:
    DesktopPlatform();
    ~DesktopPlatform();
    DesktopPlatform(const DesktopPlatform &) = delete;
    DesktopPlatform &operator=(const DesktopPlatform &) = delete;

    Platform ports();

    const MenuBarHost &menuBarHost() const;

    /// Shows the main window for the first time, and later watches for a panel for the menu-bar item. The
    /// file dialog and a title bar drawn by Qt have the palette's colours. The window must outlive the event
    /// loop.
    void show(QWindow &window, const QPalette &palette);

    /// Shows the window when the application is started again. The instance must outlive this object.
    void listenTo(SingleInstance &instance);

    /// Saves pending changes and releases the inhibitors, within a time limit. Returns the exit status; exits
    /// the process if a thread is still blocked by a disk or service.
    int end(int status);

private:
    struct Services;

    std::unique_ptr<Services> m_services;
};

} // namespace kova
