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
        setGroups(std::move(groups).value());
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
    const qsizetype index = indexOf(group.id);
    if (index < 0) {
        return;
    }
    QList<AlarmGroup> groups = m_groups;
    groups[index] = group;
    setGroups(std::move(groups));
    save();
}

void AlarmViewModel::toggleGroup(const QUuid &id) {
    const qsizetype index = indexOf(id);
    if (index < 0) {
        return;
    }
    QList<AlarmGroup> groups = m_groups;
    groups[index].isEnabled = !groups[index].isEnabled;
    setGroups(std::move(groups));
    save();
}

void AlarmViewModel::duplicateGroup(const AlarmGroup &group) {
    AlarmGroup copy = group;
    copy.id = QUuid::createUuid();
    copy.createdAt = m_clock.now();
    const qsizetype index = indexOf(group.id);
    QList<AlarmGroup> groups = m_groups;
    groups.insert(index < 0 ? groups.size() : index + 1, copy);
    setGroups(std::move(groups));
    save();
}

void AlarmViewModel::deleteGroup(const QUuid &id) {
    deleteSelectedGroups({id});
}

void AlarmViewModel::deleteSelectedGroups(const QSet<QUuid> &ids) {
    QList<AlarmGroup> groups = m_groups;
    groups.removeIf([&ids](const AlarmGroup &group) { return ids.contains(group.id); });
    setGroups(std::move(groups));
    save();
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
    if (indexOf(group.id) >= 0) {
        updateGroup(group);
    } else {
        setGroups(m_groups + QList{group});
        save();
    }
    cancelEditing();
}

void AlarmViewModel::setEditingGroup(std::optional<AlarmGroup> group) {
    m_editingGroup = std::move(group);
    Q_EMIT editingGroupChanged();
}

qsizetype AlarmViewModel::indexOf(const QUuid &id) const {
    const auto found = std::find_if(m_groups.cbegin(), m_groups.cend(),
                                    [&id](const AlarmGroup &group) { return group.id == id; });
    return found == m_groups.cend() ? -1 : std::distance(m_groups.cbegin(), found);
}

void AlarmViewModel::setGroups(QList<AlarmGroup> groups) {
    m_groups = std::move(groups);
    Q_EMIT groupsChanged();
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
