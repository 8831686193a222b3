#include "AlarmAlertItem.h"

namespace kova {

QString AlarmAlertItem::id() const {
    return alarmKey(m_alarm.group, m_alarm.index);
}

QString AlarmAlertItem::alertTimeText() const {
    return timeText(alarmTime(m_alarm.group, m_alarm.index));
}

QString AlarmAlertItem::positionText() const {
    return QStringLiteral("アラーム %1 / %2").arg(m_alarm.index + 1).arg(m_alarm.group.alarmCount);
}

} // namespace kova
