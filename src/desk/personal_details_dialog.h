#pragma once

#include "desk/personal_details.h"

#include <QDialog>
#include <map>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

namespace porvane {

// frmPDetail: the visitor's title, home address, date of birth, health note and emergency contact. Edits go
// straight into the current record; Cancel restores what the dialog found.
class PersonalDetailsDialog final : public QDialog {
    Q_OBJECT

public:
    PersonalDetailsDialog(AppState& state, OpenBooking& booking, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void reject() override;

private:
    void showFields();

    AppState& m_state;
    PersonalDetails m_details;
    std::map<Field, QLineEdit*> m_edits;
    QComboBox* SalCB = nullptr;
    QCheckBox* PersIOPMck = nullptr;
    QPlainTextEdit* PersIOPDTB = nullptr;
    bool m_showing = false;
};

} // namespace porvane
