#include "RingingCoordinator.h"

#include "AlarmScheduler.h"
#include "FileChooser.h"

#include <QCoreApplication>

namespace kova {

RingingCoordinator::RingingCoordinator(AlarmScheduler &scheduler, FileChooser &fileChooser)
    : m_scheduler(scheduler),
      m_fileChooser(fileChooser) {
    // Queued, so that closing the dialog on a hung display cannot delay the sound.
    connect(&scheduler, &AlarmScheduler::activeAlarmChanged, this, &RingingCoordinator::onActiveAlarmChanged,
            Qt::QueuedConnection);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &scheduler,
            &AlarmScheduler::endRinging);
}

void RingingCoordinator::windowClosed() {
    if (m_scheduler.activeAlarm()) {
        m_scheduler.endRinging();
    }
}

void RingingCoordinator::onActiveAlarmChanged() {
    if (m_scheduler.activeAlarm()) {
        m_fileChooser.cancel();
    }
}

} // namespace kova
