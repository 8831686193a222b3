#pragma once

#include "AlarmGroup.h"

namespace kova {

/// Returns a group that rings every day.
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
