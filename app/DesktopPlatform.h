#pragma once

#include "AlarmViewModel.h"
#include "DesktopApplication.h"
#include "DesktopClock.h"
#include "DesktopFileChooser.h"
#include "InhibitorPowerAssertions.h"
#include "InodeBookmarks.h"
#include "InstalledResources.h"
#include "ListFile.h"
#include "MenuBarHost.h"
#include "MessageBuses.h"
#include "NotificationCenter.h"
#include "Platform.h"
#include "PlayerLauncher.h"
#include "SpeechDispatcherSynthesizers.h"
#include "StandardStreams.h"
#include "WallClockTimer.h"

#include <unistd.h>

namespace kova {

class SingleInstance;

/// The implementations of all ports, and the application's integration into the desktop. Needs the
/// application object. Main thread.
class DesktopPlatform {
public:
    /// The window is shown again when the instance is activated. It must outlive this object.
    explicit DesktopPlatform(SingleInstance &instance);

    Platform ports();

    const MenuBarHost &menuBarHost() const { return m_menuBarHost; }

    /// Shows the main window for the first time, later watches for a panel for the menu-bar item, and listens
    /// to further starts. The file dialog and a title bar drawn by Qt have the palette's colours. The window
    /// must outlive the event loop.
    void show(QWindow &window, const QPalette &palette);

    /// Saves pending changes and releases the inhibitors, within a time limit. Returns the exit status; exits
    /// the process if a thread is still blocked by a disk or service.
    int end(int status);

private:
    DesktopApplication m_application;
    DesktopFileChooser m_fileChooser;
    DesktopClock m_clock;
    LineWriter m_log{STDOUT_FILENO};
    EventLoopRunLoop m_runLoop;
    ListFile m_listFile{ListFile::defaultFolder() + u'/' + AlarmViewModel::key + QStringLiteral(".json")};
    InstalledResources m_resources;
    InodeBookmarks m_bookmarks;
    MessageBuses m_buses;
    InhibitorPowerAssertions m_powerAssertions{m_buses};
    std::unique_ptr<NotificationCenter> m_notificationCenter;
    MenuBarHost m_menuBarHost{m_buses};
    PlayerLauncher m_audioPlayers{m_resources};
    SpeechDispatcherSynthesizers m_speechSynthesizers;
    SingleInstance &m_instance;
};

} // namespace kova
