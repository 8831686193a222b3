#pragma once

#include "AlarmGroup.h"

#include <QObject>
#include <algorithm>
#include <qqmlregistration.h>

namespace kova {

/// The edited group as the views read and write it. A stored value that no control offers is shown as it is
/// and stays until the user changes it.
struct EditedGroup : AlarmGroup {
    Q_GADGET
    QML_VALUE_TYPE(editedGroup)
    Q_PROPERTY(int hourIndex READ hourIndex WRITE setHourIndex) ///< -1 for a stored hour that is none
    Q_PROPERTY(QString hourText READ hourText)
    Q_PROPERTY(int minuteIndex READ minuteIndex WRITE setMinuteIndex) ///< the same
    Q_PROPERTY(QString minuteText READ minuteText)
    Q_PROPERTY(bool startBefore MEMBER startBefore)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(int alarmCount READ nearestCount WRITE setAlarmCount) ///< as near as an int comes
    Q_PROPERTY(QString alarmCountText READ alarmCountText)
    Q_PROPERTY(int intervalMinutes READ nearestInterval WRITE setIntervalMinutes) ///< the same
    Q_PROPERTY(QString intervalText READ intervalText)
    Q_PROPERTY(bool hasCustomSound READ hasCustomSound)
    Q_PROPERTY(QString customSoundName READ fileName)
    Q_PROPERTY(QString chosenSound READ chosenSound) ///< a built-in one's id, or none
    Q_PROPERTY(float volume MEMBER volume WRITE setVolume)
    Q_PROPERTY(QString volumeText READ volumeText)
    Q_PROPERTY(bool ttsEnabled MEMBER ttsEnabled)
    Q_PROPERTY(QString ttsMessage MEMBER ttsMessage)
    Q_PROPERTY(bool ttsLastEnabled MEMBER ttsLastEnabled)
    Q_PROPERTY(QString ttsLastMessage MEMBER ttsLastMessage)
    Q_PROPERTY(float ttsVolume MEMBER ttsVolume WRITE setTtsVolume)
    Q_PROPERTY(QString ttsVolumeText READ ttsVolumeText)

public:
    static constexpr int maximumAlarmCount = 20;
    static constexpr int maximumIntervalMinutes = 30;
    static constexpr int volumeSteps = 20;

    int hourIndex() const { return indexBelow(24, targetHour); }
    QString hourText() const { return QString::number(targetHour); }
    int minuteIndex() const { return indexBelow(60, targetMinute); }
    QString minuteText() const { return QString::asprintf("%02lld", targetMinute); }
    int nearestCount() const { return nearestInt(alarmCount); }
    QString alarmCountText() const { return QStringLiteral("%1回").arg(alarmCount); }
    int nearestInterval() const { return nearestInt(intervalMinutes); }
    QString intervalText() const { return QStringLiteral("%1分").arg(intervalMinutes); }
    bool hasCustomSound() const { return customSoundName.has_value(); }
    QString fileName() const { return customSoundName.value_or(QString()); }
    QString chosenSound() const { return customSoundPath ? QString() : soundName; }
    QString volumeText() const { return percentText(volume); }
    QString ttsVolumeText() const { return percentText(ttsVolume); }

    void setHourIndex(int hour) { targetHour = hour; }
    void setMinuteIndex(int minute) { targetMinute = minute; }
    /// Brings the count into 1 to 20.
    void setAlarmCount(int count) { alarmCount = std::clamp(count, 1, maximumAlarmCount); }
    /// Brings the interval into 1 to 30.
    void setIntervalMinutes(int minutes) { intervalMinutes = std::clamp(minutes, 1, maximumIntervalMinutes); }
    /// Takes the nearest of the steps from 0 to 1; the same for the speech.
    void setVolume(float level) { volume = nearestStep(level); }
    void setTtsVolume(float level) { ttsVolume = nearestStep(level); }

    Q_INVOKABLE bool repeatsOn(int day) const { return repeatDays.contains(day); }
    /// Takes the day out wherever it stands, or puts it last.
    void toggleDay(int day);

private:
    static int indexBelow(int count, qint64 value);
    static int nearestInt(qint64 value);
    static float nearestStep(float level);
    static QString percentText(float level);
};

} // namespace kova
