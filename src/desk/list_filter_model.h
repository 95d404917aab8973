#pragma once

#include "desk/on_site_rows.h"

#include <QDate>
#include <QSortFilterProxyModel>

namespace porvane {

class ListTableModel;

// Between StatGrid and its list model: on the on-site list it can show only those on site now, or only those
// on site whose pass has expired. The list itself is built and rebuilt from the file as always; this only
// hides rows.
class ListFilterModel final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    ListFilterModel(ListTableModel* source, QObject* parent = nullptr);

    void setFilter(OnSiteRows::Filter filter, const QDate& today);
    OnSiteRows::Filter filter() const { return m_filter; }
    // The list table's row of a shown row, and back (-1 when the table's row is hidden).
    int tableRow(int shownRow) const;
    int shownRow(int tableRow) const;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    ListTableModel* m_source;
    OnSiteRows::Filter m_filter = OnSiteRows::Filter::All;
    QDate m_today;
};

} // namespace porvane
