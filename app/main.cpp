#include "CommandLine.h"
#include "DesktopPlatform.h"
#include "FilePreferences.h"
#include "KovaAlarmApp.h"
#include "MenuBarHost.h"
#include "SingleInstance.h"
#include "TerminationSignals.h"
#include "drawing/Palette.h"
#include "prepareProcess.h"
#include "secondStart.h"
#include "startAtLogin.h"

#include <QApplication>
#include <string_view>

namespace {

void describeApplication() {
    QApplication::setApplicationName(QStringLiteral("KOVA"));
    QApplication::setApplicationDisplayName(QStringLiteral("KOVA Alarm"));
    QApplication::setDesktopFileName(QStringLiteral("jp.kova.Alarm"));
    QLocale::setDefault(QLocale(QLocale::Japanese)); // for the file dialog's names of file types
    QApplication::setQuitOnLastWindowClosed(false);
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc == 2 && argv[1] == std::string_view("--start-at-login")) {
        return kova::startAtLogin(argc, argv);
    }
    if (const std::optional<int> status = kova::parseArguments(argc, argv)) {
        return *status;
    }
    kova::prepareProcess();
    kova::SingleInstance instance(kova::FilePreferences::defaultFolder());
    if (!instance.acquire()) {
        return kova::wakeRunningInstance(instance, argc, argv);
    }
    kova::TerminationSignals terminationSignals;
    const QApplication qtApplication(argc, argv);
    describeApplication();

    kova::DesktopPlatform desktop;
    const kova::Platform platform = desktop.ports();
    kova::Platform::install(platform);

    kova::KovaAlarmApp app(platform);
    terminationSignals.listen([&app] { app.quit(); });
    QObject::connect(&desktop.menuBarHost(), &kova::MenuBarHost::available, &app,
                     &kova::KovaAlarmApp::showMenuBarExtra);
    desktop.show(app.mainWindow(), QPalette(kova::Palette::surface(), kova::Palette::background()));
    desktop.listenTo(instance);
    return desktop.end(QApplication::exec());
}
