#include "DesktopPlatform.h"

#include "DesktopClock.h"
#include "EventLoopRunLoop.h"
#include "FilePreferences.h"
#include "FreedesktopNotificationCenter.h"
#include "InhibitorPowerAssertions.h"
#include "InhibitorProcessActivity.h"
#include "InodeBookmarks.h"
#include "InstalledResources.h"
#include "MessageBuses.h"
#include "Portal.h"
#include "PortalNotificationCenter.h"
#include "ProcessAudioPlayers.h"
#include "SpeechDispatcherSynthesizers.h"
#include "StandardOutputLog.h"

#include <QtDebug>

namespace kova {

namespace {

std::unique_ptr<NotificationCenter> makeNotificationCenter(MessageBuses &buses, Application &application) {
    if (isSandboxed()) {
        return std::make_unique<PortalNotificationCenter>(buses, application);
    }
    return std::make_unique<FreedesktopNotificationCenter>(buses, application);
}

} // namespace

struct DesktopPlatform::Services {
    explicit Services(Application &application)
        : notificationCenter(makeNotificationCenter(buses, application)) {}

    DesktopClock clock;
    StandardOutputLog log;
    EventLoopRunLoop runLoop;
    FilePreferences preferences;
    InstalledResources resources;
    InodeBookmarks bookmarks;
    MessageBuses buses;
    InhibitorProcessActivity processActivity{buses};
    InhibitorPowerAssertions powerAssertions{buses};
    std::unique_ptr<NotificationCenter> notificationCenter;
    ProcessAudioPlayers audioPlayers;
    SpeechDispatcherSynthesizers speechSynthesizers;
};

DesktopPlatform::DesktopPlatform(Application &application, FileChooser &fileChooser)
    : m_application(application),
      m_fileChooser(fileChooser),
      m_services(std::make_unique<Services>(application)) {}

DesktopPlatform::~DesktopPlatform() = default;

Platform DesktopPlatform::ports() {
    return {
        .application = m_application,
        .audioPlayers = m_services->audioPlayers,
        .bookmarks = m_services->bookmarks,
        .clock = m_services->clock,
        .fileChooser = m_fileChooser,
        .log = m_services->log,
        .notificationCenter = *m_services->notificationCenter,
        .powerAssertions = m_services->powerAssertions,
        .preferences = m_services->preferences,
        .processActivity = m_services->processActivity,
        .resources = m_services->resources,
        .runLoop = m_services->runLoop,
        .speechSynthesizers = m_services->speechSynthesizers,
    };
}

MessageBuses &DesktopPlatform::buses() {
    return m_services->buses;
}

bool DesktopPlatform::shutDown() {
    constexpr std::chrono::seconds forTheDisk{5};
    constexpr std::chrono::milliseconds forAService{500};
    const std::optional<QString> unsaved = m_services->preferences.flush(forTheDisk);
    if (unsaved) {
        qWarning().noquote() << "kova-alarm: ends with unsaved changes:" << *unsaved;
    }
    const bool isSpeechless = m_services->speechSynthesizers.close(forAService);
    const bool isOffTheBuses = m_services->buses.close(forAService);
    return !unsaved && isSpeechless && isOffTheBuses && m_services->bookmarks.isIdle();
}

} // namespace kova
