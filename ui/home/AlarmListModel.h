#pragma once

#include <QIdentityProxyModel>
#include <qqmlregistration.h>

namespace kova {

class AlarmViewModel;
class HomeEditMode;

/// The rows of the store with a role for their selection. Main thread.
class AlarmListModel : public QIdentityProxyModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("created by the home screen")

public:
    /// Both must outlive the model.
    AlarmListModel(AlarmViewModel &store, const HomeEditMode &editMode);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const AlarmViewModel &m_store;
    const HomeEditMode &m_editMode;
};

} // namespace kova
