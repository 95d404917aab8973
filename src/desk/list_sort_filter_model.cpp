#include "desk/list_sort_filter_model.h"

#include "lists/list_table_model.h"

#include <QColor>

namespace porvane {

ListSortFilterModel::ListSortFilterModel(ListTableModel* source, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_source(source) {
    setSourceModel(source);
}

void ListSortFilterModel::setFilter(OnSiteRows::Filter filter, const QDate& today) {
    if (filter == m_filter && today == m_today)
        return;
    m_filter = filter;
    m_today = today;
    invalidateFilter();
}

int ListSortFilterModel::tableRow(int shownRow) const {
    return mapToSource(index(shownRow, 0)).row();
}

int ListSortFilterModel::shownRow(int tableRow) const {
    return mapFromSource(m_source->index(tableRow, 0)).row();
}

ListTable ListSortFilterModel::shownTable() const {
    QList<int> rows;
    for (int row = 0; row < rowCount(); ++row)
        rows.append(tableRow(row));
    return m_source->table().withRows(rows);
}

QVariant ListSortFilterModel::data(const QModelIndex& index, int role) const {
    // The rows keep alternating colours in the order shown.
    if (role == Qt::BackgroundRole)
        return QColor::fromRgb(QRgb(m_source->table().rowColour(index.row())));
    return QSortFilterProxyModel::data(index, role);
}

bool ListSortFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex&) const {
    // A sorted list shows no empty rows, which would otherwise sort among the listed ones.
    if (sortColumn() >= 0 && sourceRow >= m_source->table().listedCount())
        return false;
    return OnSiteRows::shown(m_source->table(), sourceRow, m_filter, m_today);
}

bool ListSortFilterModel::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    const QString a = m_source->table().text(left.row(), left.column()).trimmed();
    const QString b = m_source->table().text(right.row(), right.column()).trimmed();
    const QString dateFormat = QStringLiteral("dd-MM-yyyy");
    const QDate da = QDate::fromString(a.left(10), dateFormat);
    const QDate db = QDate::fromString(b.left(10), dateFormat);
    if (da.isValid() && db.isValid() && da != db)
        return da < db;
    bool numberA = false;
    bool numberB = false;
    const qlonglong na = a.toLongLong(&numberA);
    const qlonglong nb = b.toLongLong(&numberB);
    if (numberA && numberB)
        return na < nb;
    return a.compare(b, Qt::CaseInsensitive) < 0;
}

} // namespace porvane
