#pragma once

#include "desk/booked_times.h"

#include <QAbstractTableModel>

namespace porvane {

// Shows the booked-times grid (TimeGrid): one row per day, the day in column 0 and its time in column 1. The
// heading row of the old grid is the view's header here, so model row r is day r + 1.
class BookedTimesModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    BookedTimesModel(BookedTimes& times, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    // The month shown changed: the rows are laid out again.
    void reload();
    // The times changed: the cells are repainted, and the grid keeps its current cell and scroll position.
    void cellsChanged();

private:
    BookedTimes& m_times;
};

} // namespace porvane
