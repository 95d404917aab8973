#pragma once

#include "photos/photo_list_model.h"
#include "photos/photo_manager.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace porvane {

// frmHandlePhoto: lists the photos of a month, a day or a search, shows one, attaches it to the current
// booking or deletes photos. The decisions are PhotoManager's.
class PhotoManagerWindow final : public QDialog {
    Q_OBJECT

public:
    explicit PhotoManagerWindow(AppState& state, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QStringList chosenMonths() const;
    void showRows(QList<PhotoRow> rows);
    const PhotoRow* selected() const;
    void showSelected();
    void clearSelected();

    AppState& m_state;
    PhotoManager m_photos;
    PhotoListModel m_model;
    QComboBox* m_month;
    QComboBox* m_day;
    QLineEdit* m_find;
    QTableView* m_grid;
    QLabel* m_image;
    QLabel* m_regNo;
    QLabel* m_name;
    QLabel* m_org;
    QLabel* m_passIssued;
    QLabel* m_status;
};

} // namespace porvane
