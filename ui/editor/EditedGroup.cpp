#include "EditedGroup.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kova {

namespace {

int indexBelow(int count, qint64 value) {
    return value >= 0 && value < count ? static_cast<int>(value) : -1;
}

int nearestInt(qint64 value) {
    return static_cast<int>(
        std::clamp<qint64>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

float nearestStep(float level) {
    constexpr float steps = EditedGroup::volumeSteps;
    return std::round(std::clamp(level, 0.0F, 1.0F) * steps) / steps;
}

// The whole part of the product as a 32-bit float, which names the steps right: 0.7 gives 70, not 69.
QString percentText(float level) {
    return QString::number(std::trunc(static_cast<double>(level * 100.0F)), 'f', 0) + u'%';
}

} // namespace

int EditedGroup::hourIndex() const {
    return indexBelow(24, targetHour);
}

int EditedGroup::minuteIndex() const {
    return indexBelow(60, targetMinute);
}

int EditedGroup::nearestCount() const {
    return nearestInt(alarmCount);
}

int EditedGroup::nearestInterval() const {
    return nearestInt(intervalMinutes);
}

QString EditedGroup::volumeText() const {
    return percentText(volume);
}

QString EditedGroup::ttsVolumeText() const {
    return percentText(ttsVolume);
}

void EditedGroup::setAlarmCount(int count) {
    alarmCount = std::clamp(count, 1, maximumAlarmCount);
}

void EditedGroup::setIntervalMinutes(int minutes) {
    intervalMinutes = std::clamp(minutes, 1, maximumIntervalMinutes);
}

void EditedGroup::setVolume(float level) {
    volume = nearestStep(level);
}

void EditedGroup::setTtsVolume(float level) {
    ttsVolume = nearestStep(level);
}

void EditedGroup::toggleDay(int day) {
    if (repeatDays.removeAll(day) == 0) {
        repeatDays.append(day);
    }
    if (repeatDays.isEmpty()) {
        repeatDays = {}; // without memory, as the toolkit compares that of an empty list too
    }
}

} // namespace kova
