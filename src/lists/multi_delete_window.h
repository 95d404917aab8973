#pragma once

#include "lists/bulk_deletion.h"

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace porvane {

class DateSelection;

// frmMultiDelete: picks a year, a month, a day or a month with a text and deletes its bookings in bulk.
// Every decision is BulkDeletion's; the window closes once a deletion has finished, leaving its result in
// the main window's title.
class MultiDeleteWindow final : public QDialog {
    Q_OBJECT

public:
    // shown: the main window's date boxes, whose month and year the window starts with.
    MultiDeleteWindow(AppState& state, const DateSelection& shown, QWidget* parent = nullptr);

    const BulkDeletion::Outcome& outcome() const { return m_outcome; }

private:
    void deleteSelected();
    void showKind(const QString& kindText);
    void showFilterState();

    AppState& m_state;
    BulkDeletion m_bulk;
    BulkDeletion::Outcome m_outcome;

    QComboBox* CBMDELDay;
    QComboBox* CBMDELMonth;
    QComboBox* CBMDELYear;
    QGroupBox* m_filter;
    QLabel* m_kindCaption;
    QLabel* m_textCaption;
    QComboBox* CBDListBy;
    QLineEdit* DFindTB;
    QPushButton* cmdMDELDelete;
    QPushButton* cmdMDELCancel;
};

} // namespace porvane
