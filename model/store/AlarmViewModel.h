#pragma once

#include "AlarmScheduler.h"
#include "ListStorage.h"
#include "PowerManager.h"

#include <QAbstractListModel>

namespace kova {

/// The store: the ordered list of groups, as a model whose rows are what their cards show, and the state of
/// the editor. Saves the list at the end of each operation and passes every list to the scheduler. Main
/// thread.
class AlarmViewModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// The name under which the list is saved.
    static constexpr QLatin1StringView key{"kova_alarm_groups"};

    enum Role {
        GroupId = Qt::UserRole, ///< the id as upper-case text
        Label,
        TimeText,
        RepeatDaysText,
        SequenceText, ///< empty if the group has none
        IsEnabled,
    };

    /// Loads the saved list and starts the scheduler. The ports and services must outlive the store.
    AlarmViewModel(ListStorage &storage, Clock &clock, AlarmScheduler &scheduler, PowerManager &powerManager);

    const QList<AlarmGroup> &groups() const { return m_groups; }
    const std::optional<AlarmGroup> &editingGroup() const { return m_editingGroup; }
    bool isEditing() const { return m_isEditing; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Returns the first group with this id, valid until the list changes, or null.
    const AlarmGroup *find(const QUuid &id) const;

    /// Changes neither the list nor what is saved.
    void setEditingGroup(std::optional<AlarmGroup> group);

    /// Leaves the list unchanged if no list can be read.
    void load();
    void save();

    void updateGroup(const AlarmGroup &group);
    void toggleGroup(const QUuid &id);
    void duplicateGroup(const AlarmGroup &group);
    void deleteGroup(const QUuid &id) { deleteSelectedGroups({id}); }
    void deleteSelectedGroups(const QSet<QUuid> &ids);

    /// Opens the editor on a new group.
    void startAdding() { startEditing(makeGroup(m_clock)); }
    void startEditing(const AlarmGroup &group);
    void cancelEditing();
    void saveEditedGroup(const AlarmGroup &group);

Q_SIGNALS:
    void groupsChanged(); ///< once for each operation, after the changes of the rows
    void editingGroupChanged();
    void isEditingChanged();

private:
    qsizetype indexOf(const QUuid &id) const;
    void insert(qsizetype row, const AlarmGroup &group);
    void finishChange();
    void setIsEditing(bool isEditing);
    void publishGroups();

    ListStorage &m_storage;
    Clock &m_clock;
    AlarmScheduler &m_scheduler;
    PowerManager &m_powerManager;

    QList<AlarmGroup> m_groups;
    std::optional<AlarmGroup> m_editingGroup;
    bool m_isEditing = false;
};

} // namespace kova
