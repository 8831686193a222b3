#include "RingingRules.h"

#include "AlarmScheduler.h"
#include "FileChooser.h"

#include <QCoreApplication>

namespace kova {

RingingRules::RingingRules(AlarmScheduler &scheduler, FileChooser &fileChooser)
    : m_scheduler(scheduler),
      m_fileChooser(fileChooser) {
    // Queued, lest a display that hangs keeps the alarm from sounding.
    connect(&scheduler, &AlarmScheduler::activeAlarmChanged, this, &RingingRules::activeAlarmChanged,
            Qt::QueuedConnection);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &scheduler,
            &AlarmScheduler::endRinging);
}

void RingingRules::windowClosed() {
    if (m_scheduler.activeAlarm()) {
        m_scheduler.endRinging();
    }
}

void RingingRules::activeAlarmChanged() {
    if (m_scheduler.activeAlarm()) {
        m_fileChooser.cancel();
    }
}

} // namespace kova
