#pragma once

#include "desk/location_details.h"

#include <QDialog>
#include <map>

class QComboBox;
class QLineEdit;
class QPlainTextEdit;

namespace porvane {

// frmDetail: who the visitor reports to, where, the work and the access areas. Edits go straight into the
// current record; Cancel restores what the dialog found.
class LocationDetailsDialog final : public QDialog {
    Q_OBJECT

public:
    // The two lists come from the pick lists file.
    LocationDetailsDialog(AppState& state, OpenBooking& booking, const QStringList& workDescriptions,
                          const QStringList& accessAreas, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void reject() override;

private:
    void showFields();

    AppState& m_state;
    LocationDetails m_details;
    std::map<Field, QLineEdit*> m_edits;
    QLineEdit* LocDepTb = nullptr;
    QComboBox* DescOWCB = nullptr;
    QComboBox* SelectACB = nullptr;
    QPlainTextEdit* LocInfoTB = nullptr;
    QPlainTextEdit* LocRestrTB = nullptr;
    bool m_showing = false;
};

} // namespace porvane
