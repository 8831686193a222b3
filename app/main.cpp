#include "CommandLine.h"
#include "DesktopPlatform.h"
#include "KovaAlarmApp.h"
#include "SingleInstance.h"
#include "StandardStreams.h"
#include "TerminationSignals.h"
#include "drawing/Palette.h"
#include "startAtLogin.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdlib>
#include <malloc.h>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// GLib aborts the process when it gets no descriptor.
void raiseDescriptorLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

void prepareProcess() {
    kova::prepareStandardStreams();
    raiseDescriptorLimit();
    mallopt(M_ARENA_MAX, 1); // an arena for each thread would keep memory that only the start needs
    qputenv("QT_QUICK_BACKEND", "software"); // a background process must not hold a GPU context
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0"); // Qt would wait 5 ms before each frame
    qputenv("FC_LANG", "ja");                // Japanese glyphs of the characters that other languages share
    if (!qEnvironmentVariableIsSet("QT_WAYLAND_DECORATION")) {
        qputenv("QT_WAYLAND_DECORATION", "bradient");
    }
}

void describeApplication() {
    QApplication::setApplicationName(QStringLiteral("KOVA"));
    QApplication::setApplicationDisplayName(QStringLiteral("KOVA Alarm"));
    QApplication::setDesktopFileName(QStringLiteral("jp.kova.Alarm"));
    QLocale::setDefault(QLocale(QLocale::Japanese)); // for the file dialog's names of file types
    QApplication::setQuitOnLastWindowClosed(false);
}

// Shows the warning, or exits if the display is unresponsive too.
void warnUnresponsive(int argc, char *argv[]) {
    constexpr unsigned displayTimeout = 10; // seconds
    qWarning("kova-alarm: already running, but unresponsive");
    alarm(displayTimeout);
    const QApplication application(argc, argv);
    alarm(0);
    QMessageBox::warning(nullptr, QStringLiteral("KOVA Alarm"),
                         QStringLiteral("KOVA Alarm はすでに起動していますが、応答がありません。"));
}

// Returns the token by which the desktop permits this process to take the focus, or an empty one.
QByteArray activationToken() {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

// Asks the running process to show its window, or warns the user. Returns the exit status.
int wakeRunningInstance(const kova::SingleInstance &instance, int argc, char *argv[]) {
    if (const QCoreApplication application(argc, argv); instance.activateOwner(activationToken())) {
        return EXIT_SUCCESS;
    }
    warnUnresponsive(argc, argv);
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc == 2 && argv[1] == std::string_view("--start-at-login")) {
        return kova::startAtLogin(argc, argv);
    }
    if (const std::optional<int> status = kova::parseArguments(argc, argv)) {
        return *status;
    }
    prepareProcess();
    kova::SingleInstance instance(kova::ListFile::defaultFolder());
    if (!instance.acquire()) {
        return wakeRunningInstance(instance, argc, argv);
    }
    kova::TerminationSignals terminationSignals;
    const QApplication qtApplication(argc, argv);
    describeApplication();

    kova::DesktopPlatform desktop(instance);
    const kova::Platform platform = desktop.ports();
    kova::Platform::install(platform);

    kova::KovaAlarmApp app(platform);
    terminationSignals.listen([&app] { app.quit(); });
    QObject::connect(&desktop.menuBarHost(), &kova::MenuBarHost::available, &app,
                     &kova::KovaAlarmApp::showMenuBarExtra);
    desktop.show(app.mainWindow(), QPalette(kova::Palette::surface(), kova::Palette::background()));
    return desktop.end(QApplication::exec());
}
