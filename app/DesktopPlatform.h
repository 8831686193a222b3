#pragma once

#include "Platform.h"

#include <QPalette>
#include <QWindow>
#include <memory>

namespace kova {

class MenuBarHost;
class SingleInstance;

/// The real desktop: every port, and what the desktop wants of the program. Needs the application object.
/// Main thread.
class DesktopPlatform {
public:
    DesktopPlatform();
    ~DesktopPlatform();
    DesktopPlatform(const DesktopPlatform &) = delete;
    DesktopPlatform &operator=(const DesktopPlatform &) = delete;

    Platform ports();

    const MenuBarHost &menuBarHost() const;

    /// Shows the main window for the first time, and soon looks for a place for the menu-bar item. The file
    /// dialog has these colours. The window must outlive the event loop.
    void show(QWindow &window, const QPalette &palette);

    /// Shows the window when the program is started again. The instance must outlive the event loop.
    void listenTo(SingleInstance &instance);

    /// Lands what is to be saved and lets go of the machine's sleep, in bounded time. Returns the exit
    /// status, unless a service still holds up a thread of ours: then the process ends here.
    int end(int status);

private:
    struct Services;

    std::unique_ptr<Services> m_services;
};

} // namespace kova
