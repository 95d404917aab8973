#include "lists/list_table_model.h"

#include <QBrush>
#include <QColor>
#include <QSize>

namespace porvane {

void ListTableModel::setTable(ListTable table) {
    beginResetModel();
    m_table = std::move(table);
    endResetModel();
}

QVariant ListTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const int row = index.row();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return m_table.text(row, column);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(m_table.columns[column].alignment | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        return QBrush(QColor::fromRgb(textColourRgb(m_table.textColour(row, column))));
    case Qt::BackgroundRole:
        return QBrush(QColor::fromRgb(m_table.rowColour(row)));
    default:
        return {};
    }
}

QVariant ListTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= m_table.columnCount())
        return {};
    const ListColumn& column = m_table.columns[section];
    switch (role) {
    case Qt::DisplayRole:
        return column.header;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(column.alignment | Qt::AlignVCenter);
    case Qt::SizeHintRole:
        return QSize(column.width, 20);
    default:
        return {};
    }
}

} // namespace porvane
