#include "HomeEditMode.h"

namespace kova {

HomeEditMode::HomeEditMode(AlarmViewModel &store, SoundPlayer &soundPlayer)
    : m_store(store),
      m_soundPlayer(soundPlayer) {
    connect(&store, &AlarmViewModel::groupsChanged, this, &HomeEditMode::changed);
}

void HomeEditMode::toggleEditMode() {
    m_editMode = !m_editMode;
    if (!m_editMode) {
        m_selected.ids.clear();
        m_soundPlayer.stop();
    }
    Q_EMIT changed();
}

void HomeEditMode::toggle(const QString &groupId) {
    if (const QUuid id = QUuid::fromString(groupId); !m_selected.ids.remove(id)) {
        m_selected.ids.insert(id);
    }
    Q_EMIT changed();
}

void HomeEditMode::toggleAll() {
    const bool wasAllSelected = isAllSelected();
    m_selected.ids.clear();
    for (const AlarmGroup &group : wasAllSelected ? QList<AlarmGroup>() : m_store.groups()) {
        m_selected.ids.insert(group.id);
    }
    Q_EMIT changed();
}

void HomeEditMode::askToDelete() {
    m_showDeleteConfirm = true;
    Q_EMIT changed();
}

void HomeEditMode::cancelDeletion() {
    m_showDeleteConfirm = false;
    Q_EMIT changed();
}

void HomeEditMode::confirmDeletion() {
    cancelDeletion();
    m_store.deleteSelectedGroups(m_selected.ids);
    m_selected.ids.clear();
    m_editMode = false;
    Q_EMIT changed();
}

} // namespace kova
