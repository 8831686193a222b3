#pragma once

#include "AlarmGroup.h"
#include "AlarmTimes.h"

#include <QObject>
#include <QSet>
#include <memory>

namespace kova {

class Application;
class Clock;
class Log;
class NotificationCenter;
class RepeatingTimer;
class RunLoop;
class SoundPlayer;
class TTSPlayer;

/// An alarm that rings. The group is a copy, untouched by later edits.
struct FiringAlarm {
    AlarmGroup group;
    qint64 index; ///< 0-based in the group's run
    Instant firedAt;

    friend bool operator==(const FiringAlarm &, const FiringAlarm &) = default;
};

/// The key of one alarm: the group's id text, a hyphen and the index.
QString alarmKey(const AlarmGroup &group, qint64 index);

/// Looks at the clock once a second and rings each due alarm once a day. Main thread.
class AlarmScheduler : public QObject {
    Q_OBJECT

public:
    /// What rings an alarm.
    struct Ports {
        Clock &clock;
        RunLoop &runLoop;
        NotificationCenter &notificationCenter;
        Application &application;
        Log &log;
        SoundPlayer &soundPlayer;
        TTSPlayer &ttsPlayer;
    };

    /// Asks for permission to notify; nothing fires before `start`.
    explicit AlarmScheduler(const Ports &ports);
    ~AlarmScheduler() override;

    /// The one scheduler of the process, on the installed ports.
    static AlarmScheduler &shared();

    const std::optional<FiringAlarm> &activeAlarm() const { return m_activeAlarm; }
    void setActiveAlarm(std::optional<FiringAlarm> alarm);

    /// Ends the ringing: sound, speech and the active alarm, in this order.
    void endRinging();

    /// The keys of the alarms that fired since the last 00:00:00.
    const QSet<QString> &firedToday() const { return m_firedToday; }

    /// The scheduler's copy of the list; a new one counts from the next tick.
    const QList<AlarmGroup> &groups() const { return m_groups; }
    void setGroups(const QList<AlarmGroup> &groups) { m_groups = groups; }

    /// Takes the list and, the first time, starts the clock.
    void start(const QList<AlarmGroup> &groups);

    void tick();

Q_SIGNALS:
    void activeAlarmChanged();

private:
    std::optional<qint64> dueAlarm(const AlarmGroup &group, ClockTime time) const;
    void fire(const AlarmGroup &group, qint64 index);
    void stopAutomatically(const QUuid &groupId, qint64 index);

    Ports m_ports;
    std::optional<FiringAlarm> m_activeAlarm;
    QSet<QString> m_firedToday;
    std::unique_ptr<RepeatingTimer> m_timer;
    QList<AlarmGroup> m_groups;
};

} // namespace kova
