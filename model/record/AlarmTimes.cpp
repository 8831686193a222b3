#include "AlarmTimes.h"

#include <QtNumeric>

namespace kova {

namespace {

constexpr qint64 minutesPerDay = 1440;
constexpr qint64 maxSearchedAlarms = 100'000; // bounds the search along a run

// Returns 0 to 1439. Times of day are computed with residues, so that no stored value can overflow.
constexpr qint64 dayResidue(qint64 minutes) {
    const qint64 remainder = minutes % minutesPerDay;
    return remainder < 0 ? remainder + minutesPerDay : remainder;
}

qint64 offsetResidue(const AlarmGroup &group, qint64 steps) {
    return dayResidue(dayResidue(steps) * dayResidue(group.intervalMinutes));
}

qint64 minuteOfFirstAlarm(const AlarmGroup &group) {
    const qint64 length = group.startBefore ? offsetResidue(group, dayResidue(group.alarmCount) - 1) : 0;
    return dayResidue(dayResidue(group.targetHour) * 60 + dayResidue(group.targetMinute) - length);
}

} // namespace

const QStringList &dayLabels() {
    static const QStringList labels{
        QStringLiteral("日"), QStringLiteral("月"), QStringLiteral("火"), QStringLiteral("水"),
        QStringLiteral("木"), QStringLiteral("金"), QStringLiteral("土"),
    };
    return labels;
}

ClockTime alarmTime(const AlarmGroup &group, qint64 index) {
    const qint64 minute = dayResidue(minuteOfFirstAlarm(group) + offsetResidue(group, index));
    return {static_cast<int>(minute / 60), static_cast<int>(minute % 60)};
}

bool isLastAlarm(const AlarmGroup &group, qint64 index) {
    return group.alarmCount >= 1 && index == group.alarmCount - 1;
}

bool hasAlarms(const AlarmGroup &group) {
    if (group.alarmCount < 1 || group.alarmCount > maxSearchedAlarms) {
        return false;
    }
    qint64 length = 0;
    qint64 target = 0;
    qint64 end = 0;
    return !qMulOverflow(group.alarmCount - 1, group.intervalMinutes, &length) &&
           !qMulOverflow(group.targetHour, qint64(60), &target) &&
           !qAddOverflow(target, group.targetMinute, &target) &&
           !(group.startBefore ? qSubOverflow(target, length, &end) : qAddOverflow(target, length, &end));
}

QList<qint64> alarmsAt(const AlarmGroup &group, ClockTime time) {
    if (!hasAlarms(group)) {
        return {};
    }
    QList<qint64> indexes;
    const qint64 wanted = time.hour * 60 + time.minute;
    const qint64 step = dayResidue(group.intervalMinutes);
    qint64 minute = minuteOfFirstAlarm(group);
    for (qint64 index = 0; index < group.alarmCount; ++index) {
        if (minute == wanted) {
            indexes.append(index);
        }
        minute += step;
        minute -= minute < minutesPerDay ? 0 : minutesPerDay;
    }
    return indexes;
}

QString timeText(qint64 hour, qint64 minute) {
    return QString::asprintf("%lld:%02lld", hour, minute);
}

QString repeatDaysText(const AlarmGroup &group) {
    if (group.repeatDays.isEmpty()) {
        return QStringLiteral("一度だけ");
    }
    if (group.repeatDays.size() == 7) {
        return QStringLiteral("毎日");
    }
    QString text;
    for (qint64 day = 0; day < dayLabels().size(); ++day) {
        text += (dayLabels().at(day) + u'・').repeated(group.repeatDays.count(day));
    }
    text.chop(1);
    return text;
}

std::optional<QString> sequenceText(const AlarmGroup &group) {
    if (group.alarmCount < 2) {
        return std::nullopt;
    }
    return QStringLiteral("%1回 / %2分間隔").arg(group.alarmCount).arg(group.intervalMinutes);
}

} // namespace kova
