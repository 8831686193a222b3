#pragma once

#include "AlarmGroup.h"

#include <QAbstractListModel>
#include <QSet>
#include <qqmlregistration.h>

namespace kova {

class AlarmViewModel;
class HomeSelection;

/// The store's groups as rows of texts. A change of the list reaches the views as the smallest change of rows:
/// rows that stay are never rebuilt, and only the roles that look different are announced. Main thread.
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
    void synchronize();
    void removeMissing(const QList<AlarmGroup> &groups);
    void placeRow(qsizetype row, const QList<AlarmGroup> &groups);
    void removeRange(qsizetype first, qsizetype count);
    void updateRows(const QList<AlarmGroup> &groups);
    void announceSelection(const QSet<QUuid> &changed);

    const AlarmViewModel &m_store;
    const HomeSelection &m_selection;
    QList<AlarmGroup> m_groups; // what the rows show
};

} // namespace kova
