#include "photos/photo_list_model.h"

namespace porvane {

void PhotoListModel::setRows(QList<PhotoRow> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void PhotoListModel::removeRegNo(const QString& regNo) {
    for (int i = int(m_rows.size()) - 1; i >= 0; --i) {
        if (m_rows.at(i).regNo != regNo)
            continue;
        beginRemoveRows({}, i, i);
        m_rows.removeAt(i);
        endRemoveRows();
    }
}

QVariant PhotoListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= m_rows.size())
        return {};
    const PhotoRow& r = m_rows.at(index.row());
    switch (index.column()) {
    case 0:
        return r.regNo;
    case 1:
        return r.name;
    case 2:
        return r.organisation;
    case 3:
        return r.taken;
    case 4:
        return r.age;
    }
    return {};
}

QVariant PhotoListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    static const char* const headers[] = {QT_TR_NOOP("Registration"), QT_TR_NOOP("Name"),
                                          QT_TR_NOOP("Organisation"), QT_TR_NOOP("Taken"),
                                          QT_TR_NOOP("Photo Age")};
    return section >= 0 && section < 5 ? tr(headers[section]) : QVariant();
}

} // namespace porvane
