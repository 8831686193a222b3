#include "DesktopPlatform.h"

namespace kova {

DesktopPlatform::DesktopPlatform(Application &application, FileChooser &fileChooser)
    : m_application(application),
      m_fileChooser(fileChooser),
      m_processActivity(m_buses),
      m_powerAssertions(m_buses),
      m_notificationCenter(m_buses) {}

Platform DesktopPlatform::ports() {
    return {
        .application = m_application,
        .audioPlayers = m_audioPlayers,
        .bookmarks = m_bookmarks,
        .clock = m_clock,
        .fileChooser = m_fileChooser,
        .log = m_log,
        .notificationCenter = m_notificationCenter,
        .powerAssertions = m_powerAssertions,
        .preferences = m_preferences,
        .processActivity = m_processActivity,
        .resources = m_resources,
        .runLoop = m_runLoop,
        .speechSynthesizers = m_speechSynthesizers,
    };
}

bool DesktopPlatform::shutDown() {
    constexpr std::chrono::seconds forTheDisk{5};
    constexpr std::chrono::milliseconds forAService{500};
    const bool isSaved = m_preferences.flush(forTheDisk);
    const bool isSilent = m_audioPlayers.close(forAService);
    const bool isOffTheBuses = m_buses.close(forAService);
    return isSaved && isSilent && isOffTheBuses;
}

} // namespace kova
