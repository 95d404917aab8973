#pragma once

#include "lists/list_table.h"
#include "lists/on_site_rows.h"

#include <QDate>
#include <QSortFilterProxyModel>

namespace porvane {

class ListTableModel;

// Between StatGrid and its list model: sorts the listed rows by a column the operator clicked, and on the
// on-site list can show only those on site now, or only those on site whose pass has expired. The list itself
// is built and rebuilt from the file as always; this only orders and hides rows, and keeps its order through
// every rebuild.
class ListSortFilterModel final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    ListSortFilterModel(ListTableModel* source, QObject* parent = nullptr);

    void setFilter(OnSiteRows::Filter filter, const QDate& today);
    OnSiteRows::Filter filter() const { return m_filter; }
    QVariant data(const QModelIndex& index, int role) const override;
    // The listed rows as shown, in their order, for printing what the operator sees.
    ListTable shownTable() const;
    // The list table's row of a shown row, and back (-1 when the table's row is hidden).
    int tableRow(int shownRow) const;
    int shownRow(int tableRow) const;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    // Dates ("dd-mm-yyyy") by date, whole numbers by value, other texts by their letters.
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    ListTableModel* m_source;
    OnSiteRows::Filter m_filter = OnSiteRows::Filter::All;
    QDate m_today;
};

} // namespace porvane
