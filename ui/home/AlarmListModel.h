#pragma once

#include "AlarmGroup.h"

#include <QAbstractListModel>
#include <qqmlregistration.h>

namespace kova {

class AlarmViewModel;
class HomeSelection;

/// The store's groups as rows of texts; rows that stay are never rebuilt. Main thread.
class AlarmListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the home screen")

public:
    enum Role {
        GroupId = Qt::UserRole, ///< the id as upper-case text
        Label,
        TimeText,
        RepeatDaysText,
        SequenceText, ///< empty when the group has none
        IsEnabled,
        IsSelected,
    };

    /// Both must outlive the model.
    AlarmListModel(const AlarmViewModel &store, const HomeSelection &selection);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const HomeSelection &m_selection;
    QList<AlarmGroup> m_groups; // what the rows show, at each step of a change
};

} // namespace kova
