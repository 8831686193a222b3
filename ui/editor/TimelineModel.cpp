#include "TimelineModel.h"

#include "AlarmTimes.h"

namespace kova {

namespace {

int rows(const AlarmGroup &group) {
    return hasAlarms(group) ? static_cast<int>(group.alarmCount) : 0;
}

bool haveSameAlarms(const AlarmGroup &a, const AlarmGroup &b) {
    return a.targetHour == b.targetHour && a.targetMinute == b.targetMinute && a.alarmCount == b.alarmCount &&
           a.intervalMinutes == b.intervalMinutes && a.startBefore == b.startBefore;
}

} // namespace

// Rows come and go at the end; the rest only change what they show.
void TimelineModel::setGroup(const AlarmGroup &group) {
    if (haveSameAlarms(m_group, group) && rows(group) == m_rowCount) {
        return;
    }
    const int oldCount = m_rowCount;
    const int newCount = rows(group);
    if (newCount > oldCount) {
        beginInsertRows({}, oldCount, newCount - 1);
    } else if (newCount < oldCount) {
        beginRemoveRows({}, newCount, oldCount - 1);
    }
    m_group = group;
    m_rowCount = newCount;
    if (newCount > oldCount) {
        endInsertRows();
    } else if (newCount < oldCount) {
        endRemoveRows();
    }
    if (const int kept = std::min(oldCount, newCount); kept > 0) {
        Q_EMIT dataChanged(index(0), index(kept - 1));
    }
}

int TimelineModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : m_rowCount;
}

QVariant TimelineModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case TimeText:
        return timeText(alarmTime(m_group, index.row()));
    case IsLast:
        return isLastAlarm(m_group, index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> TimelineModel::roleNames() const {
    return {{TimeText, "timeText"}, {IsLast, "isLast"}};
}

} // namespace kova
