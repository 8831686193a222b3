#include "HomeSelection.h"

#include "AlarmViewModel.h"
#include "SoundPlayer.h"

namespace kova {

HomeSelection::HomeSelection(AlarmViewModel &store, SoundPlayer &soundPlayer)
    : m_store(store),
      m_soundPlayer(soundPlayer) {
    connect(&store, &AlarmViewModel::groupsChanged, this, &HomeSelection::changed);
}

QString HomeSelection::editModeText() const {
    return m_editMode ? QStringLiteral("完了") : QStringLiteral("編集");
}

QString HomeSelection::selectAllText() const {
    return isAllSelected() ? QStringLiteral("全解除") : QStringLiteral("全選択");
}

QString HomeSelection::deleteText() const {
    return QStringLiteral("%1件を削除").arg(m_selected.size());
}

QString HomeSelection::deleteConfirmText() const {
    return QStringLiteral("%1件のアラームを削除しますか？").arg(m_selected.size());
}

void HomeSelection::toggleEditMode() {
    m_editMode = !m_editMode;
    if (!m_editMode) {
        m_selected.clear();
        m_soundPlayer.stop();
    }
    Q_EMIT changed();
}

void HomeSelection::toggle(const QString &groupId) {
    if (const QUuid id = QUuid::fromString(groupId); !m_selected.remove(id)) {
        m_selected.insert(id);
    }
    Q_EMIT changed();
}

void HomeSelection::toggleAll() {
    const bool isAll = isAllSelected();
    m_selected.clear();
    if (!isAll) {
        for (const AlarmGroup &group : m_store.groups()) {
            m_selected.insert(group.id);
        }
    }
    Q_EMIT changed();
}

void HomeSelection::askToDelete() {
    m_showDeleteConfirm = true;
    Q_EMIT changed();
}

void HomeSelection::cancelDeletion() {
    m_showDeleteConfirm = false;
    Q_EMIT changed();
}

void HomeSelection::confirmDeletion() {
    cancelDeletion();
    m_store.deleteSelectedGroups(m_selected);
    m_selected.clear();
    m_editMode = false;
    Q_EMIT changed();
}

bool HomeSelection::isAllSelected() const {
    return !m_store.groups().isEmpty() && m_selected.size() == m_store.groups().size();
}

} // namespace kova
