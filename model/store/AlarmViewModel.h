#pragma once

#include "AlarmGroup.h"

#include <QObject>
#include <QSet>

namespace kova {

class AlarmScheduler;
class Clock;
class PowerManager;
class Preferences;

/// The store: the ordered list of groups, saved at the end of each operation and handed to the scheduler at
/// every change, and the state of the editor. Main thread.
class AlarmViewModel : public QObject {
    Q_OBJECT

public:
    /// Loads the saved list and starts the scheduler.
    AlarmViewModel(Preferences &preferences, Clock &clock, AlarmScheduler &scheduler,
                   PowerManager &powerManager);

    const QList<AlarmGroup> &groups() const { return m_groups; }
    const std::optional<AlarmGroup> &editingGroup() const { return m_editingGroup; }
    bool isEditing() const { return m_isEditing; }

    /// The first group with this id, or none; good until the list changes.
    const AlarmGroup *find(const QUuid &id) const;

    /// The editor's changes; they reach neither the list nor the preferences.
    void setEditingGroup(std::optional<AlarmGroup> group);

    /// Keeps the list when nothing stored can be read.
    void load();
    void save();

    void updateGroup(const AlarmGroup &group);
    void toggleGroup(const QUuid &id);
    void duplicateGroup(const AlarmGroup &group);
    void deleteGroup(const QUuid &id) { deleteSelectedGroups({id}); }
    void deleteSelectedGroups(const QSet<QUuid> &ids);

    /// Opens the editor on a new group.
    void startAdding();
    void startEditing(const AlarmGroup &group);
    void cancelEditing();
    void saveEditedGroup(const AlarmGroup &group);

Q_SIGNALS:
    void groupsChanged(); ///< once for each change, when it is complete
    void groupsLoaded();  ///< before it, as the steps that follow: the whole list is another one
    void groupInserted(int index);
    void groupReplaced(int index);
    void groupRemoved(int index);
    void editingGroupChanged();
    void isEditingChanged();

private:
    qsizetype indexOf(const QUuid &id) const;
    void insert(qsizetype index, const AlarmGroup &group);
    void finishChange();
    void setIsEditing(bool isEditing);
    void handOn();

    Preferences &m_preferences;
    Clock &m_clock;
    AlarmScheduler &m_scheduler;
    PowerManager &m_powerManager;

    const QString m_key = QStringLiteral("kova_alarm_groups");
    QList<AlarmGroup> m_groups;
    std::optional<AlarmGroup> m_editingGroup;
    bool m_isEditing = false;
};

} // namespace kova
