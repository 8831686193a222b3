#pragma once

#include "AlarmGroup.h"
#include "shownText.h"

#include <QObject>
#include <algorithm>
#include <cmath>
#include <limits>
#include <qqmlregistration.h>

namespace kova {

/// The edited group as the views read and write it. A stored value outside a control's range is shown
/// unchanged and kept until the user changes it. Of a text that is too long for a field, the field edits the
/// beginning and the rest is kept.
struct EditedGroup : AlarmGroup {
    Q_GADGET
    QML_VALUE_TYPE(editedGroup)
    Q_PROPERTY(int hourIndex READ hourIndex WRITE setHourIndex) ///< -1 for an invalid stored hour
    Q_PROPERTY(QString hourText READ hourText)
    Q_PROPERTY(int minuteIndex READ minuteIndex WRITE setMinuteIndex) ///< the same
    Q_PROPERTY(QString minuteText READ minuteText)
    Q_PROPERTY(bool startBefore MEMBER startBefore)
    Q_PROPERTY(QString label READ editedLabel WRITE setEditedLabel)
    Q_PROPERTY(int alarmCount READ nearestCount WRITE setAlarmCount) ///< clamped to int
    Q_PROPERTY(QString alarmCountText READ alarmCountText)
    Q_PROPERTY(int intervalMinutes READ nearestInterval WRITE setIntervalMinutes) ///< the same
    Q_PROPERTY(QString intervalText READ intervalText)
    Q_PROPERTY(bool hasCustomSound READ hasCustomSound)
    Q_PROPERTY(QString customSoundName READ fileName)
    Q_PROPERTY(QString chosenSound READ chosenSound) ///< id of a built-in sound, or empty
    Q_PROPERTY(float volume MEMBER volume WRITE setVolume)
    Q_PROPERTY(QString volumeText READ volumeText)
    Q_PROPERTY(bool ttsEnabled MEMBER ttsEnabled)
    Q_PROPERTY(QString ttsMessage READ editedMessage WRITE setEditedMessage)
    Q_PROPERTY(bool ttsLastEnabled MEMBER ttsLastEnabled)
    Q_PROPERTY(QString ttsLastMessage READ editedLastMessage WRITE setEditedLastMessage)
    Q_PROPERTY(float ttsVolume MEMBER ttsVolume WRITE setTtsVolume)
    Q_PROPERTY(QString ttsVolumeText READ ttsVolumeText)

public:
    static constexpr int maximumAlarmCount = 20;
    static constexpr int maximumIntervalMinutes = 30;
    static constexpr float volumeSteps = 20;
    static constexpr int maximumTextLength = 32767; ///< of a QML text field

    int hourIndex() const { return indexBelow(24, targetHour); }
    QString hourText() const { return QString::number(targetHour); }
    int minuteIndex() const { return indexBelow(60, targetMinute); }
    QString minuteText() const { return QString::asprintf("%02lld", targetMinute); }
    int nearestCount() const { return nearestInt(alarmCount); }
    QString alarmCountText() const { return QStringLiteral("%1回").arg(alarmCount); }
    int nearestInterval() const { return nearestInt(intervalMinutes); }
    QString intervalText() const { return QStringLiteral("%1分").arg(intervalMinutes); }
    QString editedLabel() const { return label.left(maximumTextLength); }
    QString editedMessage() const { return ttsMessage.left(maximumTextLength); }
    QString editedLastMessage() const { return ttsLastMessage.left(maximumTextLength); }
    bool hasCustomSound() const { return customSoundName.has_value(); }
    QString fileName() const { return elided(customSoundName.value_or(QString())); }
    QString chosenSound() const { return customSoundPath ? QString() : soundName; }
    QString volumeText() const { return percentText(volume); }
    QString ttsVolumeText() const { return percentText(ttsVolume); }

    void setHourIndex(int hour) { targetHour = hour; }
    void setMinuteIndex(int minute) { targetMinute = minute; }
    void setEditedLabel(const QString &text) { label = text + label.mid(maximumTextLength); }
    void setEditedMessage(const QString &text) { ttsMessage = text + ttsMessage.mid(maximumTextLength); }
    void setEditedLastMessage(const QString &text) {
        ttsLastMessage = text + ttsLastMessage.mid(maximumTextLength);
    }
    void setAlarmCount(int count) { alarmCount = std::clamp(count, 1, maximumAlarmCount); }
    void setIntervalMinutes(int minutes) { intervalMinutes = std::clamp(minutes, 1, maximumIntervalMinutes); }
    void setVolume(float level) { volume = nearestStep(level); }
    void setTtsVolume(float level) { ttsVolume = nearestStep(level); }

    Q_INVOKABLE bool repeatsOn(int day) const { return repeatDays.contains(day); }

private:
    static int indexBelow(int count, qint64 value) {
        return value >= 0 && value < count ? static_cast<int>(value) : -1;
    }
    static int nearestInt(qint64 value) {
        using Limits = std::numeric_limits<int>;
        return static_cast<int>(std::clamp<qint64>(value, Limits::min(), Limits::max()));
    }
    static float nearestStep(float level) {
        return std::round(std::clamp(level, 0.0F, 1.0F) * volumeSteps) / volumeSteps;
    }
    // Multiplies as a 32-bit float, so that 0.7 gives 70, not 69.
    static QString percentText(float level) {
        return QString::number(std::trunc(static_cast<double>(level * 100.0F)), 'f', 0) + u'%';
    }
};

} // namespace kova
