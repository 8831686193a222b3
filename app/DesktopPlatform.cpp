#include "DesktopPlatform.h"

#include "AlarmViewModel.h"
#include "DesktopApplication.h"
#include "DesktopClock.h"
#include "DesktopFileChooser.h"
#include "FreedesktopNotificationCenter.h"
#include "InhibitorPowerAssertions.h"
#include "InhibitorProcessActivity.h"
#include "InodeBookmarks.h"
#include "InstalledResources.h"
#include "LineWriter.h"
#include "ListFile.h"
#include "Log.h"
#include "MenuBarHost.h"
#include "MessageBuses.h"
#include "PlayerLauncher.h"
#include "Portal.h"
#include "PortalNotificationCenter.h"
#include "SingleInstance.h"
#include "SpeechDispatcherSynthesizers.h"
#include "WallClockTimer.h"
#include "bringToFront.h"

#include <QApplication>
#include <QIcon>
#include <QStyleHints>
#include <QTimer>
#include <QtDebug>

#include <malloc.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::chrono::milliseconds postShowDelay{200};
constexpr std::chrono::seconds postStartDelay{2};

class StandardOutputLog : public Log {
public:
    void print(const QString &line) override { m_lines.write(line); }

private:
    LineWriter m_lines{STDOUT_FILENO};
};

class EventLoopRunLoop : public RunLoop {
public:
    std::unique_ptr<RepeatingTimer> everySecond(QObject *owner, std::function<void()> action) override {
        return std::make_unique<WallClockTimer>(owner, std::move(action));
    }
    void after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) override {
        QTimer::singleShot(delay, Qt::PreciseTimer, owner, std::move(action));
    }
};

std::unique_ptr<NotificationCenter> makeNotificationCenter(MessageBuses &buses, Application &application) {
    if (isSandboxed()) {
        return std::make_unique<PortalNotificationCenter>(buses, application);
    }
    return std::make_unique<FreedesktopNotificationCenter>(buses, application);
}

// The theme's icon itself would keep all its sizes in memory, up to 512.
QIcon windowIcon() {
    const QIcon themeIcon = QIcon::fromTheme(QStringLiteral("jp.kova.Alarm"));
    QIcon icon;
    for (const int size : {16, 32, 48, 64}) {
        icon.addPixmap(themeIcon.pixmap(size));
    }
    return icon;
}

// On Wayland, Qt may draw the title bar; its colours are those of the scheme or, in earlier versions, the
// palette.
void requestDarkTitleBar(const QPalette &palette) {
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        QGuiApplication::styleHints()->setColorScheme(Qt::ColorScheme::Dark);
#endif
        QGuiApplication::setPalette(palette);
    }
}

} // namespace

struct DesktopPlatform::Services {
    DesktopApplication application;
    DesktopFileChooser fileChooser;
    DesktopClock clock;
    StandardOutputLog log;
    EventLoopRunLoop runLoop;
    ListFile listFile{ListFile::defaultFolder() + u'/' + AlarmViewModel::key + QStringLiteral(".json")};
    InstalledResources resources;
    InodeBookmarks bookmarks;
    MessageBuses buses;
    InhibitorProcessActivity processActivity{buses};
    InhibitorPowerAssertions powerAssertions{buses};
    std::unique_ptr<NotificationCenter> notificationCenter = makeNotificationCenter(buses, application);
    MenuBarHost menuBarHost{buses};
    PlayerLauncher audioPlayers{resources};
    SpeechDispatcherSynthesizers speechSynthesizers;
    SingleInstance *instance = nullptr;
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
        .listStorage = m_services->listFile,
        .log = m_services->log,
        .notificationCenter = *m_services->notificationCenter,
        .powerAssertions = m_services->powerAssertions,
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
    requestDarkTitleBar(palette);
    window.show();
    QTimer::singleShot(postShowDelay, &m_services->menuBarHost, [host = &m_services->menuBarHost] {
        QApplication::setWindowIcon(windowIcon());
        host->watch();
    });
    // Returns the memory that only the start needed.
    QTimer::singleShot(postStartDelay, qApp, [] { malloc_trim(0); });
}

void DesktopPlatform::listenTo(SingleInstance &instance) {
    QObject::connect(&instance, &SingleInstance::activated, &m_services->application,
                     [this](const QByteArray &token) { bringToFront(m_services->application, token); });
    m_services->instance = &instance;
    instance.listen();
}

int DesktopPlatform::end(int status) {
    constexpr std::chrono::seconds saveTimeout{5};
    constexpr std::chrono::milliseconds serviceTimeout{500};
    const std::optional<QString> unsaved = m_services->listFile.flush(saveTimeout);
    if (unsaved) {
        qWarning().noquote() << "kova-alarm: exiting with unsaved changes:" << *unsaved;
    }
    const bool isSpeechClosed = m_services->speechSynthesizers.close(serviceTimeout);
    const bool areBusesClosed = m_services->buses.close(serviceTimeout);
    if (unsaved || !isSpeechClosed || !areBusesClosed || !m_services->bookmarks.isIdle()) {
        if (m_services->instance) {
            m_services->instance->stopListening();
        }
        _exit(status);
    }
    return status;
}

} // namespace kova
