#include "secondStart.h"

#include "SingleInstance.h"
#include "bringToFront.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdlib>
#include <unistd.h>

namespace kova {

namespace {

bool requestActivation(const SingleInstance &instance, int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    return instance.activateOwner(activationToken());
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

} // namespace

int wakeRunningInstance(const SingleInstance &instance, int argc, char *argv[]) {
    if (requestActivation(instance, argc, argv)) {
        return EXIT_SUCCESS;
    }
    warnUnresponsive(argc, argv);
    return EXIT_FAILURE;
}

} // namespace kova
