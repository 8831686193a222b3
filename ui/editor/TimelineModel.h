#pragma once

#include "AlarmGroup.h"

#include <QAbstractListModel>
#include <qqmlregistration.h>

namespace kova {

/// The alarms of a run in ringing order, one row each; a time is worked out when it is asked for.
class TimelineModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("part of an AlarmEditor")

public:
    enum Role { TimeText = Qt::UserRole, IsLast };

    using QAbstractListModel::QAbstractListModel;

    void setGroup(const AlarmGroup &group);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    AlarmGroup m_group;
    int m_rowCount = 0;
};

} // namespace kova
