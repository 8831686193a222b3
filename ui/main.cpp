#include "AlarmScheduler.h"
#include "BusAddress.h"
#include "CommandLine.h"
#include "DesktopApplication.h"
#include "DesktopFileChooser.h"
#include "DesktopPlatform.h"
#include "FilePreferences.h"
#include "KovaAlarmApp.h"
#include "MenuBarHost.h"
#include "Palette.h"
#include "SingleInstance.h"
#include "TerminationSignals.h"
#include "standardStreams.h"

#include <QApplication>
#include <QDBusConnection>
#include <QMessageBox>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <malloc.h>
#include <optional>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds untilTheWindowStands{200};
constexpr const char *activationTokens[] = {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"};

// The desktop's permission to take the focus, given to the process that the user started.
QByteArray activationToken() {
    for (const char *name : activationTokens) {
        if (QByteArray token = qgetenv(name); !token.isEmpty()) {
            return token;
        }
    }
    return {};
}

bool isHeard(const kova::SingleInstance &instance, int argc, char *argv[]) {
    const QCoreApplication withoutDisplay(argc, argv);
    return instance.activateOwner(activationToken());
}

// Else somebody who starts the program sees nothing happen. A display that hangs ends the process.
void tellThatItDoesNotAnswer(int argc, char *argv[]) {
    constexpr unsigned forTheDisplay = 10; // seconds
    qWarning("kova-alarm: already running, but it does not answer");
    alarm(forTheDisplay);
    const QApplication withDisplay(argc, argv);
    alarm(0);
    QMessageBox::warning(nullptr, QStringLiteral("KOVA Alarm"),
                         QStringLiteral("KOVA Alarm はすでに起動していますが、応答がありません。"));
}

// A clock in the background must not hold a GPU context.
void drawInSoftware() {
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

// The toolkit talks to the session bus on the main thread, where one that hangs would hold up the alarms.
// While this lives such a bus can't be found; what the toolkit has not found by then it does not look for
// again.
class ToolkitsBus {
public:
    ToolkitsBus() {
        if (!kova::busAnswers(kova::busAddress(kova::Bus::Session))) {
            m_address = qgetenv(variable);
            qputenv(variable, "disabled:");
        }
    }
    ~ToolkitsBus() {
        if (m_address) {
            QDBusConnection::sessionBus();
            m_address->isEmpty() ? qunsetenv(variable) : qputenv(variable, *m_address);
        }
    }
    Q_DISABLE_COPY_MOVE(ToolkitsBus)

private:
    static constexpr const char *variable = "DBUS_SESSION_BUS_ADDRESS";
    std::optional<QByteArray> m_address;
};

void describeApplication() {
    QApplication::setApplicationName(QStringLiteral("KOVA"));
    QApplication::setApplicationDisplayName(QStringLiteral("KOVA Alarm"));
    QApplication::setDesktopFileName(QStringLiteral("jp.kova.Alarm"));
    QApplication::setQuitOnLastWindowClosed(false);
}

} // namespace

int main(int argc, char *argv[]) {
    if (const std::optional<int> status = kova::answerArguments(argc, argv)) {
        return *status;
    }
    mallopt(M_ARENA_MAX, 1); // a heap for each thread would keep what only the start needs
    kova::prepareStandardStreams();
    // Else a desktop in another language lends our texts its own forms of the characters.
    qputenv("FC_LANG", "ja");
    kova::SingleInstance instance(kova::FilePreferences::defaultFolder());
    if (!instance.acquire()) {
        if (!isHeard(instance, argc, argv)) {
            tellThatItDoesNotAnswer(argc, argv);
            return EXIT_FAILURE;
        }
        return EXIT_SUCCESS;
    }
    kova::TerminationSignals terminationSignals;
    drawInSoftware();
    std::optional<ToolkitsBus> toolkitsBus(std::in_place);
    const QApplication qtApplication(argc, argv);
    toolkitsBus.reset();
    describeApplication();

    kova::DesktopApplication application;
    kova::DesktopFileChooser fileChooser;
    kova::DesktopPlatform desktop(application, fileChooser);
    const kova::Platform platform = desktop.ports();
    kova::Platform::install(platform);

    kova::KovaAlarmApp app(platform);
    terminationSignals.listen([&app] { app.quit(); });
    application.setMainWindow(&app.mainWindow());
    fileChooser.setParentWindow(&app.mainWindow());
    fileChooser.setPalette(QPalette(kova::Palette::surface(), kova::Palette::background()));
    app.mainWindow().show();

    kova::MenuBarHost menuBarHost(desktop.buses());
    QObject::connect(&menuBarHost, &kova::MenuBarHost::available, &app,
                     &kova::KovaAlarmApp::showMenuBarExtra);
    QTimer::singleShot(untilTheWindowStands, &app, [&menuBarHost] {
        QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("jp.kova.Alarm")));
        menuBarHost.watch();
    });

    QObject::connect(&instance, &kova::SingleInstance::activated, &app, [&app](const QByteArray &token) {
        qputenv(activationTokens[0], token);
        app.showWindow();
    });
    instance.listen();

    kova::AlarmScheduler &scheduler = kova::AlarmScheduler::shared();
    const auto clearTheWay = [&scheduler, &fileChooser] {
        if (scheduler.activeAlarm()) {
            fileChooser.cancel(); // it would stand in front of the alert
        }
    };
    // Queued, lest a display that hangs keeps the alarm from sounding.
    QObject::connect(&scheduler, &kova::AlarmScheduler::activeAlarmChanged, &app, clearTheWay,
                     Qt::QueuedConnection);
    const int status = QApplication::exec();

    scheduler.endRinging();
    if (!desktop.shutDown()) {
        _exit(status);
    }
    return status;
}
