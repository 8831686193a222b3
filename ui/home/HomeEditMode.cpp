#include "HomeEditMode.h"

#include "AlarmViewModel.h"
#include "SoundPlayer.h"

namespace kova {

HomeEditMode::HomeEditMode(AlarmViewModel &store, SoundPlayer &soundPlayer)
    : m_store(store),
      m_soundPlayer(soundPlayer) {
    connect(&store, &AlarmViewModel::groupsChanged, this, &HomeEditMode::changed);
}

QString HomeEditMode::editModeText() const {
    return m_editMode ? QStringLiteral("完了") : QStringLiteral("編集");
}

QString HomeEditMode::selectAllText() const {
    return isAllSelected() ? QStringLiteral("全解除") : QStringLiteral("全選択");
}

QString HomeEditMode::deleteText() const {
    return QStringLiteral("%1件を削除").arg(m_selected.size());
}

QString HomeEditMode::deleteConfirmText() const {
    return QStringLiteral("%1件のアラームを削除しますか？").arg(m_selected.size());
}

void HomeEditMode::toggleEditMode() {
    m_editMode = !m_editMode;
    if (!m_editMode) {
        m_soundPlayer.stop();
        select({});
    } else {
        Q_EMIT changed();
    }
}

void HomeEditMode::toggle(const QString &groupId) {
    QSet<QUuid> ids = m_selected;
    if (const QUuid id = QUuid::fromString(groupId); !ids.remove(id)) {
        ids.insert(id);
    }
    select(ids);
}

void HomeEditMode::toggleAll() {
    QSet<QUuid> ids;
    if (!isAllSelected()) {
        for (const AlarmGroup &group : m_store.groups()) {
            ids.insert(group.id);
        }
    }
    select(ids);
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
    m_store.deleteSelectedGroups(m_selected);
    m_editMode = false;
    select({});
}

void HomeEditMode::select(const QSet<QUuid> &ids) {
    m_selected = ids;
    Q_EMIT selectedChanged();
    Q_EMIT changed();
}

bool HomeEditMode::isAllSelected() const {
    return !m_store.groups().isEmpty() && m_selected.size() == m_store.groups().size();
}

} // namespace kova
