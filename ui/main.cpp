#include "AlarmScheduler.h"
#include "DesktopApplication.h"
#include "DesktopFileChooser.h"
#include "DesktopPlatform.h"
#include "KovaAlarmApp.h"
#include "MenuBarHost.h"
#include "SingleInstance.h"
#include "TerminationSignals.h"

#include <QApplication>
#include <QQuickWindow>
#include <unistd.h>

namespace {

// The desktop's permission to take the focus, handed to a program that the user starts.
QByteArray activationToken() {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

} // namespace

int main(int argc, char *argv[]) {
    kova::SingleInstance instance(kova::FilePreferences::defaultFolder());
    if (!instance.acquire()) {
        instance.activateOwner(activationToken());
        return 0;
    }

    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QApplication qtApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kova-alarm"));
    QApplication::setDesktopFileName(QStringLiteral("jp.kova.Alarm"));
    QApplication::setQuitOnLastWindowClosed(false);

    kova::DesktopApplication application;
    kova::DesktopFileChooser fileChooser;
    kova::DesktopPlatform desktop(application, fileChooser);
    const kova::Platform platform = desktop.ports();
    kova::Platform::install(platform);

    kova::KovaAlarmApp app(platform);
    const kova::TerminationSignals terminationSignals([&app] { app.quit(); });
    application.setMainWindow(&app.mainWindow());
    fileChooser.setParentWindow(&app.mainWindow());
    instance.listen();
    QObject::connect(&instance, &kova::SingleInstance::activated, &app, [&app](const QByteArray &token) {
        qputenv("XDG_ACTIVATION_TOKEN", token);
        app.showWindow();
    });
    kova::MenuBarHost menuBarHost;
    QObject::connect(&menuBarHost, &kova::MenuBarHost::available, &app, &kova::KovaAlarmApp::showMenuBarExtra);
    app.mainWindow().show();
    menuBarHost.watch();
    const int status = QApplication::exec();

    kova::AlarmScheduler::shared().endRinging();
    if (!desktop.shutDown()) {
        _exit(status);
    }
    return status;
}
