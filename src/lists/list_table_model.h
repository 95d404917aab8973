#pragma once

#include "lists/list_table.h"

#include <QAbstractTableModel>

namespace porvane {

// StatGrid's model: shows a ListTable as it is, its listed rows followed by the empty ones, with the column
// alignment, the cells' text colours and the two alternating row colours. Cells are decoded only when the
// view asks for them, so a month of tens of thousands of rows shows at once.
class ListTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setTable(ListTable table);
    const ListTable& table() const { return m_table; }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : m_table.gridRowCount();
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : m_table.columnCount();
    }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    ListTable m_table;
};

} // namespace porvane
