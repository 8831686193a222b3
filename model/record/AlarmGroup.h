#pragma once

#include "Instant.h"

#include <QList>
#include <QString>
#include <QUuid>
#include <chrono>
#include <optional>

namespace kova {

class Clock;

/// An alarm that nobody ends rings so long.
inline constexpr std::chrono::seconds longestRinging{55};

/// A target time of day and a run of alarms that ends or starts there. A plain value with the defaults of a
/// new group, but for the id and the moment that makeGroup gives. Stored values may have any size: nothing
/// here clamps or repairs them.
struct AlarmGroup {
    QUuid id;
    QString label;
    qint64 targetHour = 7;      ///< 0 to 23
    qint64 targetMinute = 0;    ///< 0 to 59
    qint64 alarmCount = 3;      ///< the editor offers 1 to 20
    qint64 intervalMinutes = 1; ///< the editor offers 1 to 30
    bool startBefore = true;    ///< the run ends at the target time, else it starts there
    bool isEnabled = true;
    QList<qint64> repeatDays; ///< 0 = Sunday to 6 = Saturday, in the order chosen; empty: every day
    QString soundName = QStringLiteral("morning_glass");
    std::optional<QString> customSoundPath; ///< a bookmark in Base64
    std::optional<QString> customSoundName; ///< that file's name, for display
    float volume = 0.8F;                    ///< 0 to 1
    bool ttsEnabled = false;
    QString ttsMessage;
    bool ttsLastEnabled = false;
    QString ttsLastMessage;
    float ttsVolume = 1.0F; ///< 0 to 1
    Instant createdAt = 0;

    /// The id as canonical upper-case text of 36 characters.
    QString idText() const;

    /// All fields by value; canonically equivalent texts are equal, a NaN equals nothing.
    friend bool operator==(const AlarmGroup &a, const AlarmGroup &b);
};

/// A new group: the defaults with an id of its own and the current time.
AlarmGroup makeGroup(const Clock &clock);

/// A built-in sound: the id is also the base name of its file.
struct SoundEntry {
    QString id;
    QString label;
};

} // namespace kova
