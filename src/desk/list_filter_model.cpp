#include "desk/list_filter_model.h"

#include "lists/list_table_model.h"

namespace porvane {

ListFilterModel::ListFilterModel(ListTableModel* source, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_source(source) {
    setSourceModel(source);
}

void ListFilterModel::setFilter(OnSiteRows::Filter filter, const QDate& today) {
    if (filter == m_filter && today == m_today)
        return;
    m_filter = filter;
    m_today = today;
    invalidateFilter();
}

int ListFilterModel::tableRow(int shownRow) const {
    return mapToSource(index(shownRow, 0)).row();
}

int ListFilterModel::shownRow(int tableRow) const {
    return mapFromSource(m_source->index(tableRow, 0)).row();
}

bool ListFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex&) const {
    return OnSiteRows::shown(m_source->table(), sourceRow, m_filter, m_today);
}

} // namespace porvane
