#include "DesktopPlatform.h"

#include "DesktopApplication.h"
#include "DesktopClock.h"
#include "DesktopFileChooser.h"
#include "EventLoopRunLoop.h"
#include "FilePreferences.h"
#include "FreedesktopNotificationCenter.h"
#include "InhibitorPowerAssertions.h"
#include "InhibitorProcessActivity.h"
#include "InodeBookmarks.h"
#include "InstalledResources.h"
#include "MenuBarHost.h"
#include "MessageBuses.h"
#include "Portal.h"
#include "PortalNotificationCenter.h"
#include "ProcessAudioPlayers.h"
#include "SingleInstance.h"
#include "SpeechDispatcherSynthesizers.h"
#include "StandardOutputLog.h"
#include "bringToFront.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <QtDebug>

#include <malloc.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::chrono::milliseconds untilTheWindowStands{200};
constexpr std::chrono::seconds untilTheStartIsOver{2};

std::unique_ptr<NotificationCenter> makeNotificationCenter(MessageBuses &buses, Application &application) {
    if (isSandboxed()) {
        return std::make_unique<PortalNotificationCenter>(buses, application);
    }
    return std::make_unique<FreedesktopNotificationCenter>(buses, application);
}

// The theme's own icon would keep each of its sizes in memory, up to 512.
QIcon windowIcon() {
    const QIcon ofTheme = QIcon::fromTheme(QStringLiteral("jp.kova.Alarm"));
    QIcon icon;
    for (const int size : {16, 32, 48, 64}) {
        icon.addPixmap(ofTheme.pixmap(size));
    }
    return icon;
}

} // namespace

struct DesktopPlatform::Services {
    DesktopApplication application;
    DesktopFileChooser fileChooser;
    DesktopClock clock;
    StandardOutputLog log;
    EventLoopRunLoop runLoop;
    FilePreferences preferences;
    InstalledResources resources;
    InodeBookmarks bookmarks;
    MessageBuses buses;
    InhibitorProcessActivity processActivity{buses};
    InhibitorPowerAssertions powerAssertions{buses};
    std::unique_ptr<NotificationCenter> notificationCenter = makeNotificationCenter(buses, application);
    MenuBarHost menuBarHost{buses};
    ProcessAudioPlayers audioPlayers{resources};
    SpeechDispatcherSynthesizers speechSynthesizers;
};

DesktopPlatform::DesktopPlatform() : m_services(std::make_unique<Services>()) {}

DesktopPlatform::~DesktopPlatform() = default;

Platform DesktopPlatform::ports() {
    return {
        .application = m_services->application,
        .audioPlayers = m_services->audioPlayers,
        .bookmarks = m_services->bookmarks,
        .clock = m_services->clock,
        .fileChooser = m_services->fileChooser,
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

const MenuBarHost &DesktopPlatform::menuBarHost() const {
    return m_services->menuBarHost;
}

void DesktopPlatform::show(QWindow &window, const QPalette &palette) {
    m_services->application.setMainWindow(&window);
    m_services->fileChooser.setParentWindow(&window, palette);
    window.show();
    QTimer::singleShot(untilTheWindowStands, &m_services->menuBarHost, [host = &m_services->menuBarHost] {
        QApplication::setWindowIcon(windowIcon());
        host->watch();
    });
    // The start needed more than the rest.
    QTimer::singleShot(untilTheStartIsOver, qApp, [] { malloc_trim(0); });
}

void DesktopPlatform::listenTo(SingleInstance &instance) {
    QObject::connect(&instance, &SingleInstance::activated, &m_services->application,
                     [this](const QByteArray &token) { bringToFront(m_services->application, token); });
    instance.listen();
}

int DesktopPlatform::end(int status) {
    constexpr std::chrono::seconds forTheDisk{5};
    constexpr std::chrono::milliseconds forAService{500};
    const std::optional<QString> unsaved = m_services->preferences.flush(forTheDisk);
    if (unsaved) {
        qWarning().noquote() << "kova-alarm: ends with unsaved changes:" << *unsaved;
    }
    const bool isSpeechless = m_services->speechSynthesizers.close(forAService);
    const bool isOffTheBuses = m_services->buses.close(forAService);
    if (unsaved || !isSpeechless || !isOffTheBuses || !m_services->bookmarks.isIdle()) {
        _exit(status);
    }
    return status;
}

} // namespace kova
