#pragma once

#include "AlarmGroup.h"

namespace kova {

/// Returns groups of 20 alarms between 7:00 and 9:00 with weekdays and a message.
inline QList<AlarmGroup> manyGroups(qint64 count) {
    QList<AlarmGroup> groups(count);
    for (qint64 i = 0; i < count; ++i) {
        AlarmGroup &group = groups[i];
        group.id = QUuid::createUuid();
        group.label = QStringLiteral("アラーム %1").arg(i);
        group.targetMinute = i % 60;
        group.alarmCount = 20;
        group.intervalMinutes = 3;
        group.startBefore = false;
        group.repeatDays = {1, 2, 3, 4, 5};
        group.ttsEnabled = true;
        group.ttsMessage = QStringLiteral("起きてください");
    }
    return groups;
}

} // namespace kova
