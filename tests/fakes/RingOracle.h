#pragma once

#include "groups.h"

#include <QRandomGenerator>
#include <algorithm>
#include <ctime>
#include <map>
#include <set>
#include <vector>

namespace kova {

/// A ring: the group's label and the alarm's number.
using Ring = std::pair<QString, qint64>;

/// Computes the expected rings independently of the product, from a table of the day with every alarm.
class RingOracle {
public:
    explicit RingOracle(const QList<AlarmGroup> &groups) {
        for (const AlarmGroup &group : groups) {
            for (qint64 k = 0; group.isEnabled && k < group.alarmCount; ++k) {
                const qint64 steps = group.startBefore ? k + 1 - group.alarmCount : k;
                const qint64 minute =
                    group.targetHour * 60 + group.targetMinute + steps * group.intervalMinutes;
                constexpr qint64 minutes = 24 * 60;
                m_table[(minute % minutes + minutes) % minutes].push_back(
                    {{group.label, k + 1}, group.repeatDays});
            }
        }
    }

    /// Returns the ring at a time in seconds since 1970. Must be called for each second in turn.
    std::optional<Ring> tick(time_t moment) {
        tm local{};
        localtime_r(&moment, &local);
        if (local.tm_sec != 0) {
            return std::nullopt;
        }
        if (local.tm_hour == 0 && local.tm_min == 0) {
            m_rang.clear();
        }
        for (const auto &[ring, days] : m_table[local.tm_hour * 60 + local.tm_min]) {
            const bool isDay = days.isEmpty() || std::count(days.begin(), days.end(), local.tm_wday) > 0;
            if (isDay && m_rang.insert(ring).second) {
                return ring;
            }
        }
        return std::nullopt;
    }

private:
    struct Entry {
        Ring ring;
        QList<qint64> days;
    };
    std::map<qint64, std::vector<Entry>> m_table;
    std::set<Ring> m_rang;
};

/// Returns random groups within the editor's limits, labelled with their numbers.
inline QList<AlarmGroup> randomGroups(QRandomGenerator &random, int count) {
    QList<AlarmGroup> groups;
    for (int i = 0; i < count; ++i) {
        // Every third group is near a daylight-saving transition or midnight.
        AlarmGroup group = groupAt(random.bounded(i % 3 == 0 ? 4 : 24), QString::number(i));
        group.targetMinute = random.bounded(60);
        group.alarmCount = random.bounded(1, 21);
        group.intervalMinutes = random.bounded(0, 31);
        group.startBefore = random.bounded(2) == 0;
        group.isEnabled = random.bounded(8) != 0;
        for (qint64 day = 0; day < 7; ++day) {
            if (random.bounded(3) == 0) {
                group.repeatDays.prepend(day);
            }
        }
        groups.append(group);
    }
    return groups;
}

} // namespace kova
