#include "AlarmGroup.h"

namespace kova {

namespace {

bool sameText(const QString &a, const QString &b) {
    return a == b || a.normalized(QString::NormalizationForm_C) == b.normalized(QString::NormalizationForm_C);
}

bool sameText(const std::optional<QString> &a, const std::optional<QString> &b) {
    return a.has_value() == b.has_value() && (!a || sameText(*a, *b));
}

} // namespace

AlarmGroup makeGroup(const Clock &clock) {
    AlarmGroup group;
    group.id = QUuid::createUuid();
    group.createdAt = clock.now();
    return group;
}

bool operator==(const AlarmGroup &a, const AlarmGroup &b) {
    return a.id == b.id && sameText(a.label, b.label) && a.targetHour == b.targetHour &&
           a.targetMinute == b.targetMinute && a.alarmCount == b.alarmCount &&
           a.intervalMinutes == b.intervalMinutes && a.startBefore == b.startBefore &&
           a.isEnabled == b.isEnabled && a.repeatDays == b.repeatDays && sameText(a.soundName, b.soundName) &&
           sameText(a.customSoundPath, b.customSoundPath) && sameText(a.customSoundName, b.customSoundName) &&
           a.volume == b.volume && a.ttsEnabled == b.ttsEnabled && sameText(a.ttsMessage, b.ttsMessage) &&
           a.ttsLastEnabled == b.ttsLastEnabled && sameText(a.ttsLastMessage, b.ttsLastMessage) &&
           a.ttsVolume == b.ttsVolume && a.createdAt == b.createdAt;
}

} // namespace kova
