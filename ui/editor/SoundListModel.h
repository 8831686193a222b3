#pragma once

#include <QAbstractListModel>
#include <qqmlregistration.h>

namespace kova {

/// The built-in sounds, of which at most one is chosen.
class SoundListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("part of an AlarmEditor")

public:
    enum Role { SoundId = Qt::UserRole, Label, IsChosen };

    using QAbstractListModel::QAbstractListModel;

    /// A null id chooses none.
    void setChosenId(const QString &id);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QString m_chosenId;
};

} // namespace kova
