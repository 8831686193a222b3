#pragma once

#include "AlarmViewModel.h"

#include <qqmlregistration.h>

namespace kova {

/// The ids of the selected groups, as the rows read them.
struct SelectedGroups {
    Q_GADGET
    QML_VALUE_TYPE(selectedGroups)

public:
    QSet<QUuid> ids;

    Q_INVOKABLE bool contains(const QString &groupId) const {
        return ids.contains(QUuid::fromString(groupId));
    }
};

/// The edit mode of the home list: the selected groups and their deletion after a confirmation. Main thread.
class HomeEditMode : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("created by the home screen")
    Q_PROPERTY(bool editMode READ editMode NOTIFY changed)
    Q_PROPERTY(kova::SelectedGroups selected READ selected NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed) ///< of the selected groups
    Q_PROPERTY(bool isAllSelected READ isAllSelected NOTIFY changed)
    Q_PROPERTY(bool showDeleteConfirm READ showDeleteConfirm NOTIFY changed)

public:
    /// Both must outlive the edit mode.
    HomeEditMode(AlarmViewModel &store, SoundPlayer &soundPlayer);

    bool editMode() const { return m_editMode; }
    const SelectedGroups &selected() const { return m_selected; }
    int count() const { return static_cast<int>(m_selected.ids.size()); }
    bool isAllSelected() const { return count() > 0 && count() == m_store.groups().size(); }
    bool showDeleteConfirm() const { return m_showDeleteConfirm; }

    /// Leaving the edit mode clears the selection and stops a preview.
    Q_INVOKABLE void toggleEditMode();
    Q_INVOKABLE void toggle(const QString &groupId);
    Q_INVOKABLE void toggleAll();

    Q_INVOKABLE void askToDelete();
    Q_INVOKABLE void cancelDeletion();
    Q_INVOKABLE void confirmDeletion();

Q_SIGNALS:
    void changed(); ///< any property

private:
    AlarmViewModel &m_store;
    SoundPlayer &m_soundPlayer;
    bool m_editMode = false;
    SelectedGroups m_selected;
    bool m_showDeleteConfirm = false;
};

} // namespace kova
