#pragma once

#include "AlarmScheduler.h"
#include "AlarmTimes.h"
#include "shownText.h"

#include <QObject>
#include <qqmlregistration.h>

namespace kova {

/// A ringing alarm as the alert shows it.
class AlarmAlertItem {
    Q_GADGET
    QML_VALUE_TYPE(alarmAlertItem)
    Q_PROPERTY(QString timeText READ alertTimeText)
    Q_PROPERTY(QString label READ label)
    Q_PROPERTY(QString positionText READ positionText)

public:
    AlarmAlertItem() = default;
    explicit AlarmAlertItem(FiringAlarm alarm) : m_alarm(std::move(alarm)) {}

    /// Items with the same id are the same presentation.
    QString id() const { return alarmKey(m_alarm.group, m_alarm.index); }

    /// The planned time of the alarm, not the moment of firing.
    QString alertTimeText() const { return timeText(alarmTime(m_alarm.group, m_alarm.index)); }

    QString label() const { return elided(m_alarm.group.label); }

    QString positionText() const {
        return QStringLiteral("アラーム %1 / %2").arg(m_alarm.index + 1).arg(m_alarm.group.alarmCount);
    }

private:
    FiringAlarm m_alarm{};
};

} // namespace kova
