#include "AlarmViewModel.h"

#include "AlarmGroupJson.h"
#include "shownText.h"

#include <algorithm>

namespace kova {

AlarmViewModel::AlarmViewModel(ListStorage &storage, Clock &clock, AlarmScheduler &scheduler,
                               PowerManager &powerManager)
    : m_storage(storage),
      m_clock(clock),
      m_scheduler(scheduler),
      m_powerManager(powerManager) {
    load();
    connect(this, &AlarmViewModel::groupsChanged, this, &AlarmViewModel::publishGroups);
    publishGroups();
    m_scheduler.start(m_groups);
}

void AlarmViewModel::load() {
    const std::optional<QByteArray> json = m_storage.read();
    if (!json) {
        return;
    }
    if (Result<QList<AlarmGroup>> groups = decodeGroups(*json)) {
        beginResetModel();
        m_groups = std::move(groups).value();
        endResetModel();
        Q_EMIT groupsChanged();
    } else {
        m_storage.markUnreadable(groups.error());
    }
}

void AlarmViewModel::save() {
    if (canEncode(m_groups)) {
        m_storage.write([groups = m_groups] { return encodeGroups(groups); });
    }
}

void AlarmViewModel::updateGroup(const AlarmGroup &group) {
    if (const qsizetype row = indexOf(group.id); row >= 0) {
        m_scheduler.setGroups({}); // the change would copy a list that the scheduler shares
        m_groups[row] = group;
        m_scheduler.setGroups(m_groups); // at once, so that no tick meets an empty list
        Q_EMIT dataChanged(index(int(row)), index(int(row)));
        finishChange();
    }
}

void AlarmViewModel::toggleGroup(const QUuid &id) {
    if (const AlarmGroup *found = find(id)) {
        AlarmGroup group = *found;
        group.isEnabled = !group.isEnabled;
        updateGroup(group);
    }
}

void AlarmViewModel::duplicateGroup(const AlarmGroup &group) {
    AlarmGroup copy = group;
    copy.id = QUuid::createUuid();
    copy.createdAt = m_clock.now();
    const qsizetype row = indexOf(group.id);
    insert(row < 0 ? m_groups.size() : row + 1, copy);
}

void AlarmViewModel::deleteSelectedGroups(const QSet<QUuid> &ids) {
    const auto isSelected = [this, &ids](qsizetype row) { return ids.contains(m_groups.at(row).id); };
    for (qsizetype last = m_groups.size() - 1; last >= 0; --last) {
        qsizetype first = last + 1;
        while (first > 0 && isSelected(first - 1)) {
            --first;
        }
        if (first <= last) {
            beginRemoveRows({}, int(first), int(last));
            m_groups.remove(first, last - first + 1);
            endRemoveRows();
            last = first;
        }
    }
    finishChange();
}

void AlarmViewModel::startEditing(const AlarmGroup &group) {
    setEditingGroup(group);
    setIsEditing(true);
}

void AlarmViewModel::cancelEditing() {
    setEditingGroup(std::nullopt);
    setIsEditing(false);
}

void AlarmViewModel::saveEditedGroup(const AlarmGroup &group) {
    if (find(group.id)) {
        updateGroup(group);
    } else {
        insert(m_groups.size(), group);
    }
    cancelEditing();
}

void AlarmViewModel::setEditingGroup(std::optional<AlarmGroup> group) {
    m_editingGroup = std::move(group);
    Q_EMIT editingGroupChanged();
}

int AlarmViewModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_groups.size());
}

QVariant AlarmViewModel::data(const QModelIndex &index, int role) const {
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
        return elided(repeatDaysText(group));
    case SequenceText:
        return sequenceText(group).value_or(QString());
    case IsEnabled:
        return group.isEnabled;
    default:
        return {};
    }
}

QHash<int, QByteArray> AlarmViewModel::roleNames() const {
    return {
        {GroupId, "groupId"},           {Label, "label"},
        {TimeText, "timeText"},         {RepeatDaysText, "repeatDaysText"},
        {SequenceText, "sequenceText"}, {IsEnabled, "isEnabled"},
    };
}

const AlarmGroup *AlarmViewModel::find(const QUuid &id) const {
    const qsizetype row = indexOf(id);
    return row < 0 ? nullptr : &m_groups.at(row);
}

qsizetype AlarmViewModel::indexOf(const QUuid &id) const {
    const auto found = std::ranges::find(m_groups, id, &AlarmGroup::id);
    return found == m_groups.cend() ? -1 : std::distance(m_groups.cbegin(), found);
}

void AlarmViewModel::insert(qsizetype row, const AlarmGroup &group) {
    beginInsertRows({}, int(row), int(row));
    m_groups.insert(row, group);
    endInsertRows();
    finishChange();
}

void AlarmViewModel::finishChange() {
    Q_EMIT groupsChanged();
    save();
}

void AlarmViewModel::setIsEditing(bool isEditing) {
    if (m_isEditing != isEditing) {
        m_isEditing = isEditing;
        Q_EMIT isEditingChanged();
    }
}

// Passes every list to the scheduler, saved or not, and prevents sleep while any group is enabled.
void AlarmViewModel::publishGroups() {
    m_scheduler.setGroups(m_groups);
    if (std::ranges::any_of(std::as_const(m_groups), &AlarmGroup::isEnabled)) {
        m_powerManager.preventSleep();
    } else {
        m_powerManager.allowSleep();
    }
}

} // namespace kova
