#include "secondStart.h"

#include "SingleInstance.h"
#include "bringToFront.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdlib>
#include <unistd.h>

namespace kova {

namespace {

bool isHeard(const SingleInstance &instance, int argc, char *argv[]) {
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

} // namespace

int wakeRunningInstance(const SingleInstance &instance, int argc, char *argv[]) {
    if (isHeard(instance, argc, argv)) {
        return EXIT_SUCCESS;
    }
    tellThatItDoesNotAnswer(argc, argv);
    return EXIT_FAILURE;
}

} // namespace kova
