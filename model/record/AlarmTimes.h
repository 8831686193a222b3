#pragma once

#include "AlarmGroup.h"

#include <QStringList>

namespace kova {

struct ClockTime {
    int hour;   ///< 0 to 23
    int minute; ///< 0 to 59

    friend bool operator==(const ClockTime &, const ClockTime &) = default;
};

/// The weekday labels, 0 = Sunday.
const QStringList &dayLabels();

/// Returns the time of the alarm at a 0-based index of the run, exact for all stored values.
ClockTime alarmTime(const AlarmGroup &group, qint64 index);

bool isLastAlarm(const AlarmGroup &group, qint64 index);

/// Returns false for a count below 1 or above 100,000, and for a run whose minutes do not fit into 64 bits.
bool hasAlarms(const AlarmGroup &group);

/// Returns the indexes of the run's alarms at a time of day, in ascending order.
QList<qint64> alarmsAt(const AlarmGroup &group, ClockTime time);

/// Returns "7:05".
QString timeText(qint64 hour, qint64 minute);
inline QString timeText(ClockTime time) {
    return timeText(time.hour, time.minute);
}

/// Returns "月・水・金", or the words for every day and for no weekday.
QString repeatDaysText(const AlarmGroup &group);

/// Returns "3回 / 5分間隔", or nullopt for fewer than two alarms.
std::optional<QString> sequenceText(const AlarmGroup &group);

} // namespace kova
