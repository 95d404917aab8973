#include "desk/booked_times_model.h"

#include <QBrush>
#include <QColor>

namespace porvane {

BookedTimesModel::BookedTimesModel(BookedTimes& times, QObject* parent)
    : QAbstractTableModel(parent)
    , m_times(times) {}

int BookedTimesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_times.dayCount();
}

int BookedTimesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

QVariant BookedTimesModel::data(const QModelIndex& index, int role) const {
    const int day = index.row() + 1;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return index.column() == 0 ? m_times.dayLabel(day) : m_times.cell(day);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::BackgroundRole:
        if (m_times.isGrey(day))
            return QBrush(QColor(0xE0, 0xE0, 0xE0));
        if (index.column() == 1 && m_times.isMarkedRed(day))
            return QBrush(QColor(0xFF, 0x00, 0x00));
        return {};
    default:
        return {};
    }
}

QVariant BookedTimesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    return section == 0 ? BookedTimes::dayHeading() : BookedTimes::timeHeading();
}

Qt::ItemFlags BookedTimesModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == 1 && m_times.editable() && !m_times.isGrey(index.row() + 1))
        f |= Qt::ItemIsEditable;
    return f;
}

bool BookedTimesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || index.column() != 1)
        return false;
    m_times.enterCell(index.row() + 1, value.toString());
    // A message may have marked or emptied the cell; the booking's signal repaints the rest.
    emit dataChanged(this->index(index.row(), 1), this->index(index.row(), 1));
    return true;
}

void BookedTimesModel::reload() {
    beginResetModel();
    endResetModel();
}

void BookedTimesModel::cellsChanged() {
    if (rowCount() > 0)
        emit dataChanged(index(0, 1), index(rowCount() - 1, 1));
}

} // namespace porvane
