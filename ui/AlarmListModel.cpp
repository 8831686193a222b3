#include "AlarmListModel.h"

#include "AlarmTimes.h"
#include "AlarmViewModel.h"
#include "HomeSelection.h"

#include <algorithm>

namespace kova {

namespace {

QSet<QUuid> idsOf(const QList<AlarmGroup> &groups) {
    QSet<QUuid> ids;
    ids.reserve(groups.size());
    for (const AlarmGroup &group : groups) {
        ids.insert(group.id);
    }
    return ids;
}

// Only cheap comparisons: this runs over the whole list at every change, and texts that did not change are
// shared between both versions.
QList<int> changedRoles(const AlarmGroup &before, const AlarmGroup &after) {
    QList<int> roles;
    if (before.label != after.label) {
        roles << AlarmListModel::Label;
    }
    if (before.targetHour != after.targetHour || before.targetMinute != after.targetMinute) {
        roles << AlarmListModel::TimeText;
    }
    if (before.repeatDays != after.repeatDays) {
        roles << AlarmListModel::RepeatDaysText;
    }
    if (before.alarmCount != after.alarmCount || before.intervalMinutes != after.intervalMinutes) {
        roles << AlarmListModel::SequenceText;
    }
    if (before.isEnabled != after.isEnabled) {
        roles << AlarmListModel::IsEnabled;
    }
    return roles;
}

} // namespace

AlarmListModel::AlarmListModel(const AlarmViewModel &store, const HomeSelection &selection)
    : m_store(store),
      m_selection(selection),
      m_groups(store.groups()) {
    connect(&store, &AlarmViewModel::groupsChanged, this, &AlarmListModel::synchronize);
    connect(&selection, &HomeSelection::selectionChanged, this, &AlarmListModel::announceSelection);
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
        return group.label;
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
        {GroupId, "groupId"},
        {Label, "label"},
        {TimeText, "timeText"},
        {RepeatDaysText, "repeatDaysText"},
        {SequenceText, "sequenceText"},
        {IsEnabled, "isEnabled"},
        {IsSelected, "isSelected"},
    };
}

// Ids may be doubled in a list that was edited by hand; the rows still end as the list.
void AlarmListModel::synchronize() {
    const QList<AlarmGroup> groups = m_store.groups();
    const auto sameId = [](const AlarmGroup &a, const AlarmGroup &b) { return a.id == b.id; };
    if (!std::equal(m_groups.cbegin(), m_groups.cend(), groups.cbegin(), groups.cend(), sameId)) {
        removeMissing(groups);
        for (qsizetype row = 0; row < groups.size(); ++row) {
            placeRow(row, groups);
        }
        removeRange(groups.size(), m_groups.size() - groups.size());
    }
    updateRows(groups);
}

void AlarmListModel::removeMissing(const QList<AlarmGroup> &groups) {
    const QSet<QUuid> kept = idsOf(groups);
    for (qsizetype end = m_groups.size(); end > 0;) {
        qsizetype first = end;
        while (first > 0 && !kept.contains(m_groups.at(first - 1).id)) {
            --first;
        }
        removeRange(first, end - first);
        end = first - 1;
    }
}

// Brings the right group to a row: it is there, comes from further down, or is new with those that follow it.
void AlarmListModel::placeRow(qsizetype row, const QList<AlarmGroup> &groups) {
    const auto rowOf = [this, row](const QUuid &id) {
        const auto found = std::find_if(m_groups.cbegin() + row, m_groups.cend(),
                                        [&id](const AlarmGroup &group) { return group.id == id; });
        return found == m_groups.cend() ? -1 : std::distance(m_groups.cbegin(), found);
    };
    const qsizetype from = rowOf(groups.at(row).id);
    if (from == row) {
        return;
    }
    if (from > row) {
        beginMoveRows({}, int(from), int(from), {}, int(row));
        m_groups.move(from, row);
        endMoveRows();
        return;
    }
    qsizetype end = row + 1;
    while (end < groups.size() && rowOf(groups.at(end).id) < 0) {
        ++end;
    }
    beginInsertRows({}, int(row), int(end - 1));
    m_groups = m_groups.first(row) + groups.sliced(row, end - row) + m_groups.sliced(row);
    endInsertRows();
}

void AlarmListModel::removeRange(qsizetype first, qsizetype count) {
    if (count > 0) {
        beginRemoveRows({}, int(first), int(first + count - 1));
        m_groups.remove(first, count);
        endRemoveRows();
    }
}

void AlarmListModel::updateRows(const QList<AlarmGroup> &groups) {
    const QList<AlarmGroup> before = std::exchange(m_groups, groups);
    for (qsizetype row = 0; row < groups.size(); ++row) {
        if (const QList<int> roles = changedRoles(before.at(row), groups.at(row)); !roles.isEmpty()) {
            const QModelIndex changed = index(int(row));
            Q_EMIT dataChanged(changed, changed, roles);
        }
    }
}

void AlarmListModel::announceSelection(const QSet<QUuid> &changed) {
    const auto isChanged = [&changed](const AlarmGroup &group) { return changed.contains(group.id); };
    for (auto first = m_groups.cbegin(); first != m_groups.cend();) {
        first = std::find_if(first, m_groups.cend(), isChanged);
        const auto end = std::find_if_not(first, m_groups.cend(), isChanged);
        if (first != end) {
            Q_EMIT dataChanged(index(int(std::distance(m_groups.cbegin(), first))),
                               index(int(std::distance(m_groups.cbegin(), end)) - 1), {IsSelected});
        }
        first = end;
    }
}

} // namespace kova
