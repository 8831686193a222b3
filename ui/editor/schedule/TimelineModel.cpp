#include "TimelineModel.h"

#include "AlarmTimes.h"
#include "AlarmViewModel.h"

namespace kova {

void TimelineModel::update() {
    const AlarmGroup &group = *m_store.editingGroup();
    const int oldCount = m_rowCount;
    const int newCount = hasAlarms(group) ? static_cast<int>(group.alarmCount) : 0;
    if (newCount > oldCount) {
        beginInsertRows({}, oldCount, newCount - 1);
        m_rowCount = newCount;
        endInsertRows();
    } else if (newCount < oldCount) {
        beginRemoveRows({}, newCount, oldCount - 1);
        m_rowCount = newCount;
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
    const std::optional<AlarmGroup> &group = m_store.editingGroup();
    if (!group || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case TimeText:
        return timeText(alarmTime(*group, index.row()));
    case IsLast:
        return isLastAlarm(*group, index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> TimelineModel::roleNames() const {
    return {{TimeText, "timeText"}, {IsLast, "isLast"}};
}

} // namespace kova
