#include "AlarmScheduler.h"
#include "DesktopApplication.h"
#include "DesktopFileChooser.h"
#include "DesktopPlatform.h"
#include "FilePreferences.h"
#include "KovaAlarmApp.h"
#include "MenuBarHost.h"
#include "SingleInstance.h"
#include "TerminationSignals.h"

#include <QApplication>
#include <QQuickWindow>

#include <cstdio>
#include <unistd.h>

namespace {

constexpr const char *activationTokens[] = {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"};

// The desktop's permission to take the focus, given to the process that the user started.
QByteArray activationToken() {
    for (const char *name : activationTokens) {
        if (const QByteArray token = qgetenv(name); !token.isEmpty()) {
            return token;
        }
    }
    return {};
}

int activateRunningInstance(const kova::SingleInstance &instance) {
    if (!instance.activateOwner(activationToken())) {
        std::fputs("kova-alarm: already running, but it does not answer\n", stderr);
    }
    return 0;
}

// A clock in the background must not hold a GPU context.
void drawInSoftware() {
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

void describeApplication() {
    QApplication::setApplicationName(QStringLiteral("KOVA"));
    QApplication::setApplicationDisplayName(QStringLiteral("KOVA Alarm"));
    QApplication::setDesktopFileName(QStringLiteral("jp.kova.Alarm"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("jp.kova.Alarm")));
    QApplication::setQuitOnLastWindowClosed(false);
}

} // namespace

int main(int argc, char *argv[]) {
    kova::TerminationSignals terminationSignals;
    kova::SingleInstance instance(kova::FilePreferences::defaultFolder());
    if (!instance.acquire()) {
        return activateRunningInstance(instance);
    }
    drawInSoftware();
    const QApplication qtApplication(argc, argv);
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
    app.mainWindow().show();

    kova::MenuBarHost menuBarHost;
    QObject::connect(&menuBarHost, &kova::MenuBarHost::available, &app, &kova::KovaAlarmApp::showMenuBarExtra);
    menuBarHost.watch();

    QObject::connect(&instance, &kova::SingleInstance::activated, &app, [&app](const QByteArray &token) {
        qputenv(activationTokens[0], token);
        app.showWindow();
    });
    instance.listen();

    kova::AlarmScheduler &scheduler = kova::AlarmScheduler::shared();
    QObject::connect(&scheduler, &kova::AlarmScheduler::activeAlarmChanged, &app, [&scheduler, &fileChooser] {
        if (scheduler.activeAlarm()) {
            fileChooser.cancel(); // it would stand in front of the alert
        }
    });
    const int status = QApplication::exec();

    scheduler.endRinging();
    if (!desktop.shutDown()) {
        _exit(status);
    }
    return status;
}
