#include "AlarmScheduler.h"
#include "Application.h"
#include "DesktopPlatform.h"
#include "FileChooser.h"
#include "KovaAlarmApp.h"
#include "TerminationSignals.h"

#include <QCoreApplication>
#include <unistd.h>

namespace {

// As long as there is no window.
class WindowlessApplication : public kova::Application {
public:
    void activate() override {}
    void showMainWindow() override {}
    void terminate() override { QCoreApplication::quit(); }
};

class NoFileChooser : public kova::FileChooser {
public:
    std::optional<QString> chooseFile(const kova::FileChooserRequest &) override { return std::nullopt; }
};

} // namespace

int main(int argc, char *argv[]) {
    kova::TerminationSignals terminationSignals;
    const QCoreApplication qtApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kova-alarm"));

    WindowlessApplication application;
    NoFileChooser fileChooser;
    kova::DesktopPlatform desktop(application, fileChooser);
    const kova::Platform platform = desktop.ports();
    kova::Platform::install(platform);

    kova::KovaAlarmApp app(platform);
    terminationSignals.listen([&app] { app.quit(); });
    const int status = QCoreApplication::exec();

    kova::AlarmScheduler::shared().endRinging();
    if (!desktop.shutDown()) {
        _exit(status);
    }
    return status;
}
