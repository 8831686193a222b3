#include "AlarmListModel.h"

#include "AlarmViewModel.h"
#include "HomeEditMode.h"

namespace kova {

namespace {
constexpr int isSelected = AlarmViewModel::LastRole + 1;
} // namespace

AlarmListModel::AlarmListModel(AlarmViewModel &store, const HomeEditMode &editMode)
    : m_store(store),
      m_editMode(editMode) {
    setSourceModel(&store);
    connect(&editMode, &HomeEditMode::selectedChanged, this, [this] {
        if (const int count = rowCount(); count > 0) {
            Q_EMIT dataChanged(index(0, 0), index(count - 1, 0), {isSelected});
        }
    });
}

QVariant AlarmListModel::data(const QModelIndex &index, int role) const {
    if (role == isSelected && checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return m_editMode.contains(m_store.groups().at(index.row()).id);
    }
    return QIdentityProxyModel::data(index, role);
}

QHash<int, QByteArray> AlarmListModel::roleNames() const {
    QHash<int, QByteArray> names = m_store.roleNames();
    names.insert(isSelected, "isSelected");
    return names;
}

} // namespace kova
