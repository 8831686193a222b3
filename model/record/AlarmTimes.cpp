#include "AlarmTimes.h"

#include <algorithm>
#include <numeric>

namespace kova {

namespace {

constexpr qint64 minutesPerDay = 1440;
constexpr qint64 minutesPerYear = 366 * minutesPerDay;

// The residue from 0 to 1439. All times of day are computed with residues, so no stored value can overflow.
constexpr qint64 dayResidue(qint64 minutes) {
    const qint64 remainder = minutes % minutesPerDay;
    return remainder < 0 ? remainder + minutesPerDay : remainder;
}

qint64 targetResidue(const AlarmGroup &group) {
    return dayResidue(dayResidue(group.targetHour) * 60 + dayResidue(group.targetMinute));
}

// The residue of an alarm's offset from the target time, before the sign of the direction.
qint64 offsetResidue(const AlarmGroup &group, qint64 steps) {
    return dayResidue(dayResidue(steps) * dayResidue(group.intervalMinutes));
}

qint64 minuteOfFirstAlarm(const AlarmGroup &group) {
    const qint64 length = group.startBefore ? offsetResidue(group, group.alarmCount - 1) : 0;
    return dayResidue(targetResidue(group) - length);
}

struct Bezout {
    qint64 divisor;
    qint64 factor; // factor × a ≡ divisor, modulo b
};

Bezout extendedGcd(qint64 a, qint64 b) {
    qint64 factor = 1;
    qint64 nextFactor = 0;
    while (b != 0) {
        const qint64 quotient = a / b;
        a = std::exchange(b, a - quotient * b);
        factor = std::exchange(nextFactor, factor - quotient * nextFactor);
    }
    return {a, factor};
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
    qint64 minute = targetResidue(group);
    if (group.startBefore) {
        minute -= dayResidue(offsetResidue(group, group.alarmCount) - offsetResidue(group, 1) -
                             offsetResidue(group, index));
    } else {
        minute += offsetResidue(group, index);
    }
    minute = dayResidue(minute);
    return {static_cast<int>(minute / 60), static_cast<int>(minute % 60)};
}

bool isLastAlarm(const AlarmGroup &group, qint64 index) {
    return group.alarmCount >= 1 && index == group.alarmCount - 1;
}

bool hasAlarms(const AlarmGroup &group) {
    if (group.alarmCount < 1 || group.alarmCount > minutesPerYear) {
        return false;
    }
    qint64 length = 0;
    qint64 target = 0;
    qint64 end = 0;
    if (__builtin_mul_overflow(group.alarmCount - 1, group.intervalMinutes, &length) ||
        __builtin_mul_overflow(group.targetHour, 60, &target) ||
        __builtin_add_overflow(target, group.targetMinute, &target)) {
        return false;
    }
    return group.startBefore ? !__builtin_sub_overflow(target, length, &end)
                             : !__builtin_add_overflow(target, length, &end);
}

std::optional<AlarmIndexes> alarmsAt(const AlarmGroup &group, ClockTime time) {
    if (!hasAlarms(group)) {
        return std::nullopt;
    }
    // first × interval ≡ wanted, modulo a day: solvable when the divisor divides what is wanted.
    const qint64 wanted = dayResidue(time.hour * 60 + time.minute - minuteOfFirstAlarm(group));
    const Bezout bezout = extendedGcd(dayResidue(group.intervalMinutes), minutesPerDay);
    if (wanted % bezout.divisor != 0) {
        return std::nullopt;
    }
    const qint64 period = minutesPerDay / bezout.divisor;
    const qint64 solution = (wanted / bezout.divisor) * (bezout.factor % period) % period;
    const qint64 first = solution < 0 ? solution + period : solution;
    if (first >= group.alarmCount) {
        return std::nullopt;
    }
    return AlarmIndexes{first, period};
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
    QList<qint64> days = group.repeatDays;
    std::sort(days.begin(), days.end());
    QStringList labels;
    for (const qint64 day : days) {
        if (day >= 0 && day < dayLabels().size()) {
            labels.append(dayLabels().at(day));
        }
    }
    return labels.join(QStringLiteral("・"));
}

std::optional<QString> sequenceText(const AlarmGroup &group) {
    if (group.alarmCount < 2) {
        return std::nullopt;
    }
    return QStringLiteral("%1回 / %2分間隔").arg(group.alarmCount).arg(group.intervalMinutes);
}

} // namespace kova
