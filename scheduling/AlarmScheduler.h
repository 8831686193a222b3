#pragma once

#include "AlarmTimes.h"
#include "Application.h"
#include "Clock.h"
#include "Log.h"
#include "NotificationCenter.h"
#include "RunLoop.h"
#include "SoundPlayer.h"
#include "TTSPlayer.h"

#include <QSet>

namespace kova {

/// A ringing alarm. The group is a copy, unaffected by later edits.
struct FiringAlarm {
    AlarmGroup group;
    qint64 index; ///< 0-based in the group's run
    Instant firedAt;

    friend bool operator==(const FiringAlarm &, const FiringAlarm &) = default;
};

/// The key of one alarm: the group's id text, a hyphen and the index.
QString alarmKey(const AlarmGroup &group, qint64 index);

/// Checks the clock once a second and fires each due alarm once a day. Main thread.
class AlarmScheduler : public QObject {
    Q_OBJECT

public:
    struct Ports {
        Clock &clock;
        RunLoop &runLoop;
        NotificationCenter &notificationCenter;
        Application &application;
        Log &log;
        SoundPlayer &soundPlayer;
        TTSPlayer &ttsPlayer;
    };

    /// Requests permission for notifications. No alarm fires before start().
    explicit AlarmScheduler(const Ports &ports);

    /// Returns the shared instance, which uses the installed ports.
    static AlarmScheduler &shared();

    const std::optional<FiringAlarm> &activeAlarm() const { return m_activeAlarm; }
    void setActiveAlarm(std::optional<FiringAlarm> alarm);

    /// Stops the sound and the speech and clears the active alarm, in this order.
    void endRinging();

    /// The keys of the alarms that fired since the last 00:00:00.
    const QSet<QString> &firedToday() const { return m_firedToday; }

    /// The scheduler's copy of the list. A new list takes effect at the next tick.
    const QList<AlarmGroup> &groups() const { return m_groups; }
    void setGroups(const QList<AlarmGroup> &groups) { m_groups = groups; }

    /// Sets the list and, at the first call, starts the timer.
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
    std::unique_ptr<QObject> m_timer;
    QList<AlarmGroup> m_groups;
};

} // namespace kova
