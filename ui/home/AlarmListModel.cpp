#include "AlarmListModel.h"

#include "AlarmTimes.h"
#include "AlarmViewModel.h"
#include "HomeSelection.h"
#include "elided.h"

namespace kova {

AlarmListModel::AlarmListModel(const AlarmViewModel &store, const HomeSelection &selection)
    : m_selection(selection),
      m_groups(store.groups()) {
    connect(&store, &AlarmViewModel::groupsLoaded, this, [this, &store] {
        beginResetModel();
        m_groups = store.groups();
        endResetModel();
    });
    connect(&store, &AlarmViewModel::groupInserted, this, [this, &store](int row) {
        beginInsertRows({}, row, row);
        m_groups = store.groups();
        endInsertRows();
    });
    connect(&store, &AlarmViewModel::groupReplaced, this, [this, &store](int row) {
        m_groups = store.groups();
        Q_EMIT dataChanged(index(row), index(row));
    });
    connect(&store, &AlarmViewModel::groupRemoved, this, [this](int row) {
        beginRemoveRows({}, row, row);
        m_groups.removeAt(row);
        endRemoveRows();
    });
    connect(&selection, &HomeSelection::changed, this, [this] {
        if (!m_groups.isEmpty()) {
            Q_EMIT dataChanged(index(0), index(int(m_groups.size()) - 1), {IsSelected});
        }
    });
}

int AlarmListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_groups.size());
}

QVariant AlarmListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const AlarmGroup &group = m_groups.at(index.row());
    switch (role) {
    case GroupId:
        return group.idText();
    case Label:
        return elided(group.label);
    case TimeText:
        return timeText(group.targetHour, group.targetMinute);
    case RepeatDaysText:
        return repeatDaysText(group);
    case SequenceText:
        return sequenceText(group).value_or(QString());
    case IsEnabled:
        return group.isEnabled;
    case IsSelected:
        return m_selection.contains(group.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> AlarmListModel::roleNames() const {
    return {
        {GroupId, "groupId"},           {Label, "label"},
        {TimeText, "timeText"},         {RepeatDaysText, "repeatDaysText"},
        {SequenceText, "sequenceText"}, {IsEnabled, "isEnabled"},
        {IsSelected, "isSelected"},
    };
}

} // namespace kova
