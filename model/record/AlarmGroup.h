#pragma once

#include "Clock.h"

#include <QList>
#include <QString>
#include <QUuid>
#include <chrono>
#include <optional>

namespace kova {

/// How long an alarm rings unless the user ends it.
inline constexpr std::chrono::seconds longestRinging{55};

/// A target time of day and a run of alarms that ends or starts at it. A plain value with the defaults of a
/// new group except for the id and the creation time, which makeGroup() sets. Stored values are not limited
/// to the ranges below.
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

    /// Returns the id as canonical upper-case text of 36 characters.
    QString idText() const { return id.toString(QUuid::WithoutBraces).toUpper(); }

    /// Compares all fields by value; canonically equivalent texts are equal, NaN is not equal to itself.
    friend bool operator==(const AlarmGroup &a, const AlarmGroup &b);
};

AlarmGroup makeGroup(const Clock &clock);

/// A built-in sound. The id is also the base name of its file.
struct SoundEntry {
    QString id;
    QString label;
};

} // namespace kova

Q_DECLARE_TYPEINFO(kova::AlarmGroup, Q_RELOCATABLE_TYPE);
