#pragma once

#include <QAbstractListModel>
#include <qqmlregistration.h>

namespace kova {

class AlarmViewModel;

/// The alarms of the edited group's run in ringing order, one row each; a time is worked out when it is asked
/// for.
class TimelineModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("part of an AlarmEditor")

public:
    enum Role { TimeText = Qt::UserRole, IsLast };

    /// The store must outlive the model.
    explicit TimelineModel(const AlarmViewModel &store) : m_store(store) {}

    /// Call when a group is edited and has changed. Rows come and go at the end; the rest only change what
    /// they show.
    void update();

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const AlarmViewModel &m_store;
    int m_rowCount = 0;
};

} // namespace kova
