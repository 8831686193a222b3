// Decodes arbitrary bytes as the saved list. A decoded list survives encoding, and its groups, whatever their
// numbers, have alarms at valid times of day.

#include "AlarmGroupJson.h"
#include "AlarmTimes.h"
#include "require.h"

#include <limits>

using namespace kova;

namespace {

// An alarm is found at its own time.
void findAlarms(const AlarmGroup &group) {
    if (!hasAlarms(group)) {
        require(alarmsAt(group, alarmTime(group, 0)).isEmpty());
        return;
    }
    for (const qint64 index : {qint64(0), group.alarmCount / 2, group.alarmCount - 1}) {
        require(alarmsAt(group, alarmTime(group, index)).contains(index));
    }
}

void showAlarms(const AlarmGroup &group) {
    using Limits = std::numeric_limits<qint64>;
    for (const qint64 index : {Limits::min(), qint64(-1), qint64(0), group.alarmCount, Limits::max()}) {
        const ClockTime time = alarmTime(group, index);
        require(time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60);
    }
    require(timeText(group.targetHour, group.targetMinute).contains(u':'));
    require(repeatDaysText(group).size() <= 2 * group.repeatDays.size() + 4);
    require(sequenceText(group).has_value() == (group.alarmCount >= 2));
}

void checkGroups(const QList<AlarmGroup> &groups) {
    require(canEncode(groups));
    const QByteArray json = encodeGroups(groups);
    const Result<QList<AlarmGroup>> again = decodeGroups(json);
    require(again && again.value() == groups && encodeGroups(again.value()) == json);
    for (const AlarmGroup &group : groups) {
        findAlarms(group);
        showAlarms(group);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const Result<QList<AlarmGroup>> groups = decodeGroups(bytes)) {
        checkGroups(groups.value());
    } else {
        require(!groups.error().isEmpty());
    }
    return 0;
}
