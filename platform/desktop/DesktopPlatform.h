#pragma once

#include "DesktopClock.h"
#include "EventLoopRunLoop.h"
#include "FilePreferences.h"
#include "FreedesktopNotificationCenter.h"
#include "InhibitorPowerAssertions.h"
#include "InhibitorProcessActivity.h"
#include "InodeBookmarks.h"
#include "InstalledResources.h"
#include "MessageBuses.h"
#include "MixerAudioPlayers.h"
#include "Platform.h"
#include "SpeechDispatcherSynthesizers.h"
#include "StandardOutputLog.h"

namespace kova {

/// The real desktop: every port but those that need a window, which come from outside and must outlive it.
/// Needs the application object.
class DesktopPlatform {
public:
    DesktopPlatform(Application &application, FileChooser &fileChooser);

    Platform ports();

    /// Lands what is to be saved, ends sound and speech and lets go of the machine's sleep, in bounded time.
    /// False when some service still holds up a thread of ours: then the process can only end at once.
    bool shutDown();

private:
    Application &m_application;
    FileChooser &m_fileChooser;
    DesktopClock m_clock;
    StandardOutputLog m_log;
    EventLoopRunLoop m_runLoop;
    FilePreferences m_preferences;
    InstalledResources m_resources;
    InodeBookmarks m_bookmarks;
    MessageBuses m_buses;
    InhibitorProcessActivity m_processActivity;
    InhibitorPowerAssertions m_powerAssertions;
    FreedesktopNotificationCenter m_notificationCenter;
    MixerAudioPlayers m_audioPlayers;
    SpeechDispatcherSynthesizers m_speechSynthesizers;
};

} // namespace kova
