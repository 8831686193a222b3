#include "SoundListModel.h"

#include "builtInSounds.h"

namespace kova {

void SoundListModel::setChosenId(const QString &id) {
    const QString oldId = std::exchange(m_chosenId, id);
    if (oldId == id) {
        return;
    }
    for (int row = 0; row < rowCount(); ++row) {
        const QString &rowId = builtInSounds().at(row).id;
        if (rowId == oldId || rowId == id) {
            Q_EMIT dataChanged(index(row), index(row), {IsChosen});
        }
    }
}

int SoundListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(builtInSounds().size());
}

QVariant SoundListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const SoundEntry &sound = builtInSounds().at(index.row());
    switch (role) {
    case SoundId:
        return sound.id;
    case Label:
        return sound.label;
    case IsChosen:
        return sound.id == m_chosenId;
    default:
        return {};
    }
}

QHash<int, QByteArray> SoundListModel::roleNames() const {
    return {{SoundId, "soundId"}, {Label, "label"}, {IsChosen, "isChosen"}};
}

} // namespace kova
