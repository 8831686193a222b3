#include "HomeSelection.h"

#include "AlarmViewModel.h"
#include "SoundPlayer.h"

namespace kova {

HomeSelection::HomeSelection(AlarmViewModel &store, SoundPlayer &soundPlayer)
    : m_store(store),
      m_soundPlayer(soundPlayer) {
    connect(&store, &AlarmViewModel::groupsChanged, this, &HomeSelection::selectionChanged);
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
    setEditMode(!m_editMode);
    if (!m_editMode) {
        setSelected({});
        m_soundPlayer.stop();
    }
}

void HomeSelection::toggle(const QString &groupId) {
    QSet<QUuid> selected = m_selected;
    if (const QUuid id = QUuid::fromString(groupId); !selected.remove(id)) {
        selected.insert(id);
    }
    setSelected(selected);
}

void HomeSelection::toggleAll() {
    QSet<QUuid> selected;
    if (!isAllSelected()) {
        for (const AlarmGroup &group : m_store.groups()) {
            selected.insert(group.id);
        }
    }
    setSelected(selected);
}

void HomeSelection::askToDelete() {
    setShowDeleteConfirm(true);
}

void HomeSelection::cancelDeletion() {
    setShowDeleteConfirm(false);
}

void HomeSelection::confirmDeletion() {
    setShowDeleteConfirm(false);
    m_store.deleteSelectedGroups(m_selected);
    setSelected({});
    setEditMode(false);
}

bool HomeSelection::isAllSelected() const {
    return !m_store.groups().isEmpty() && m_selected.size() == m_store.groups().size();
}

void HomeSelection::setEditMode(bool editMode) {
    if (m_editMode != editMode) {
        m_editMode = editMode;
        Q_EMIT editModeChanged();
    }
}

void HomeSelection::setSelected(const QSet<QUuid> &selected) {
    m_selected = selected;
    Q_EMIT selectionChanged();
}

void HomeSelection::setShowDeleteConfirm(bool show) {
    if (m_showDeleteConfirm != show) {
        m_showDeleteConfirm = show;
        Q_EMIT showDeleteConfirmChanged();
    }
}

} // namespace kova
