#pragma once

#include "AlarmGroup.h"

namespace kova {

/// Returns a group with three alarms, the last at a full hour every day.
inline AlarmGroup groupAt(qint64 hour, const QString &label = {}) {
    AlarmGroup group;
    group.id = QUuid::createUuid();
    group.targetHour = hour;
    group.label = label;
    return group;
}

inline AlarmGroup makeGroup(qint64 hour, qint64 minute, qint64 count, qint64 interval,
                            bool startBefore = true) {
    AlarmGroup group = groupAt(hour);
    group.targetMinute = minute;
    group.alarmCount = count;
    group.intervalMinutes = interval;
    group.startBefore = startBefore;
    return group;
}

} // namespace kova
