#pragma once

#include "photos/photo_manager.h"

#include <QAbstractTableModel>

namespace porvane {

// PhotoGrid's rows: "Registration", "Name", "Organisation", "Taken", "Photo Age".
class PhotoListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setRows(QList<PhotoRow> rows);
    const QList<PhotoRow>& rows() const { return m_rows; }
    void removeRegNo(const QString& regNo);

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 5; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QList<PhotoRow> m_rows;
};

} // namespace porvane
