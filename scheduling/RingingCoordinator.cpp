#include "RingingCoordinator.h"

#include <QCoreApplication>

namespace kova {

RingingCoordinator::RingingCoordinator(AlarmScheduler &scheduler, FileChooser &fileChooser)
    : m_scheduler(scheduler) {
    const auto closeDialog = [&scheduler, &fileChooser] {
        if (scheduler.activeAlarm()) {
            fileChooser.cancel();
        }
    };
    // Queued, so that closing the dialog on a hung display cannot delay the sound.
    connect(&scheduler, &AlarmScheduler::activeAlarmChanged, this, closeDialog, Qt::QueuedConnection);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &scheduler,
            &AlarmScheduler::endRinging);
}

void RingingCoordinator::windowClosed() {
    if (m_scheduler.activeAlarm()) {
        m_scheduler.endRinging();
    }
}

} // namespace kova
