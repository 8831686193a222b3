#include "AlarmScheduler.h"

#include "Platform.h"
#include "shownText.h"

namespace kova {

namespace {

bool ringsOn(const AlarmGroup &group, int day) {
    return group.isEnabled && (group.repeatDays.isEmpty() || group.repeatDays.contains(day));
}

QString spokenMessage(const AlarmGroup &group, qint64 index) {
    if (isLastAlarm(group, index)) {
        return group.ttsLastEnabled ? group.ttsLastMessage : QString();
    }
    return group.ttsEnabled ? group.ttsMessage : QString();
}

void requestNotificationAuthorization(NotificationCenter &center, Log &log) {
    center.requestAuthorization([&log](bool granted, const std::optional<QString> &error) {
        if (error) {
            log.print(QStringLiteral("[Scheduler] Notification error: ") + *error);
        }
        log.print(QStringLiteral("[Scheduler] Notifications ") +
                  (granted ? QStringLiteral("granted") : QStringLiteral("denied")));
    });
}

void sendNotification(NotificationCenter &center, const AlarmGroup &group, qint64 index) {
    const QString prefix =
        group.label.isEmpty() ? QStringLiteral("アラーム ") : elided(group.label) + QStringLiteral(" — ");
    center.add({
        .identifier = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(),
        .title = QStringLiteral("KOVA"),
        .body = prefix + timeText(alarmTime(group, index)),
        .lifetime = longestRinging,
    });
}

} // namespace

QString alarmKey(const AlarmGroup &group, qint64 index) {
    return group.idText() + u'-' + QString::number(index);
}

AlarmScheduler::AlarmScheduler(const Ports &ports) : m_ports(ports) {
    requestNotificationAuthorization(m_ports.notificationCenter, m_ports.log);
}

AlarmScheduler &AlarmScheduler::shared() {
    static const Platform &platform = Platform::installed();
    static auto *const scheduler = new AlarmScheduler({
        .clock = platform.clock,
        .runLoop = platform.runLoop,
        .notificationCenter = platform.notificationCenter,
        .application = platform.application,
        .log = platform.log,
        .soundPlayer = SoundPlayer::shared(),
        .ttsPlayer = TTSPlayer::shared(),
    });
    return *scheduler;
}

void AlarmScheduler::setActiveAlarm(std::optional<FiringAlarm> alarm) {
    if (m_activeAlarm != alarm) {
        m_activeAlarm = std::move(alarm);
        Q_EMIT activeAlarmChanged();
    }
}

void AlarmScheduler::endRinging() {
    m_ports.soundPlayer.stop();
    m_ports.ttsPlayer.stop();
    setActiveAlarm(std::nullopt);
}

void AlarmScheduler::start(const QList<AlarmGroup> &groups) {
    m_groups = groups;
    if (m_timer) {
        return;
    }
    m_timer = m_ports.runLoop.everySecond(this, [this] { tick(); });
    m_ports.log.print(QStringLiteral("[Scheduler] Started"));
}

void AlarmScheduler::tick() {
    const std::optional<LocalTime> now = m_ports.clock.localTime(m_ports.clock.now());
    if (!now || now->second != 0) {
        return;
    }
    const ClockTime time{now->hour, now->minute};
    if (time == ClockTime{0, 0}) {
        m_firedToday.clear();
    }
    const int day = now->weekday - 1;
    for (const AlarmGroup &group : std::as_const(m_groups)) {
        if (!ringsOn(group, day)) {
            continue;
        }
        if (const std::optional<qint64> index = dueAlarm(group, time)) {
            // A copy, since an observer of the active alarm may set a new list.
            fire(AlarmGroup(group), *index);
            return;
        }
    }
}

// Returns the first alarm of the run at this time that has not fired today.
std::optional<qint64> AlarmScheduler::dueAlarm(const AlarmGroup &group, ClockTime time) const {
    for (const qint64 index : alarmsAt(group, time)) {
        if (!m_firedToday.contains(alarmKey(group, index))) {
            return index;
        }
    }
    return std::nullopt;
}

void AlarmScheduler::fire(const AlarmGroup &group, qint64 index) {
    m_firedToday.insert(alarmKey(group, index));

    m_ports.log.print(
        QStringLiteral("[Scheduler] FIRE: %1 alarm #%2").arg(group.label, QString::number(index + 1)));
    if (m_activeAlarm) {
        endRinging();
    }
    setActiveAlarm(FiringAlarm{group, index, m_ports.clock.now()});

    m_ports.soundPlayer.stop();
    m_ports.soundPlayer.play(group, true, QStringLiteral("alarm"));
    if (const QString message = spokenMessage(group, index); !message.isEmpty()) {
        m_ports.ttsPlayer.speak(message, group.ttsVolume, true);
    }
    sendNotification(m_ports.notificationCenter, group, index);
    m_ports.runLoop.after(longestRinging, this,
                          [this, groupId = group.id, index] { stopAutomatically(groupId, index); });
    m_ports.application.activate();
}

// Does nothing if the user has ended this alarm or another alarm has replaced it.
void AlarmScheduler::stopAutomatically(const QUuid &groupId, qint64 index) {
    if (m_activeAlarm && m_activeAlarm->group.id == groupId && m_activeAlarm->index == index) {
        endRinging();
    }
}

} // namespace kova
