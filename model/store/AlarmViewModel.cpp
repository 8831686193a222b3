#include "AlarmViewModel.h"

#include "AlarmGroupJson.h"
#include "AlarmScheduler.h"
#include "Clock.h"
#include "PowerManager.h"
#include "Preferences.h"

#include <algorithm>

namespace kova {

AlarmViewModel::AlarmViewModel(Preferences &preferences, Clock &clock, AlarmScheduler &scheduler,
                               PowerManager &powerManager)
    : m_preferences(preferences),
      m_clock(clock),
      m_scheduler(scheduler),
      m_powerManager(powerManager) {
    load();
    connect(this, &AlarmViewModel::groupsChanged, this, &AlarmViewModel::handOn);
    handOn();
    m_scheduler.start(m_groups);
}

void AlarmViewModel::load() {
    const std::optional<QByteArray> json = m_preferences.data(m_key);
    if (!json) {
        return;
    }
    if (Result<QList<AlarmGroup>> groups = decodeGroups(*json)) {
        m_groups = std::move(groups).value();
        Q_EMIT groupsLoaded();
        Q_EMIT groupsChanged();
    } else {
        m_preferences.keepUnreadable(m_key);
    }
}

void AlarmViewModel::save() {
    if (const Result<QByteArray> json = encodeGroups(m_groups)) {
        m_preferences.setData(m_key, json.value());
    }
}

void AlarmViewModel::updateGroup(const AlarmGroup &group) {
    if (const qsizetype index = indexOf(group.id); index >= 0) {
        m_groups[index] = group;
        Q_EMIT groupReplaced(int(index));
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
    const qsizetype index = indexOf(group.id);
    insert(index < 0 ? m_groups.size() : index + 1, copy);
}

void AlarmViewModel::deleteSelectedGroups(const QSet<QUuid> &ids) {
    for (qsizetype index = m_groups.size() - 1; index >= 0; --index) {
        if (ids.contains(m_groups.at(index).id)) {
            m_groups.removeAt(index);
            Q_EMIT groupRemoved(int(index));
        }
    }
    finishChange();
}

void AlarmViewModel::startAdding() {
    startEditing(makeGroup(m_clock));
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

const AlarmGroup *AlarmViewModel::find(const QUuid &id) const {
    const qsizetype index = indexOf(id);
    return index < 0 ? nullptr : &m_groups.at(index);
}

qsizetype AlarmViewModel::indexOf(const QUuid &id) const {
    const auto found = std::find_if(m_groups.cbegin(), m_groups.cend(),
                                    [&id](const AlarmGroup &group) { return group.id == id; });
    return found == m_groups.cend() ? -1 : std::distance(m_groups.cbegin(), found);
}

void AlarmViewModel::insert(qsizetype index, const AlarmGroup &group) {
    m_groups.insert(index, group);
    Q_EMIT groupInserted(int(index));
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

// Every list reaches the scheduler, saved or not; the machine stays awake while some group is armed.
void AlarmViewModel::handOn() {
    m_scheduler.setGroups(m_groups);
    if (std::any_of(m_groups.cbegin(), m_groups.cend(),
                    [](const AlarmGroup &group) { return group.isEnabled; })) {
        m_powerManager.preventSleep();
    } else {
        m_powerManager.allowSleep();
    }
}

} // namespace kova
