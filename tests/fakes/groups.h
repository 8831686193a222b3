#pragma once

#include "AlarmGroup.h"

namespace kova {

/// A group that rings every day at the times of one run.
inline AlarmGroup makeGroup(qint64 hour, qint64 minute, qint64 count, qint64 interval,
                            bool startBefore = true) {
    AlarmGroup group;
    group.id = QUuid::createUuid();
    group.targetHour = hour;
    group.targetMinute = minute;
    group.alarmCount = count;
    group.intervalMinutes = interval;
    group.startBefore = startBefore;
    return group;
}

} // namespace kova
