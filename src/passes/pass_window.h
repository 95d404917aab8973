#pragma once

#include "passes/pass_issue.h"

#include <QDialog>
#include <functional>

class QCalendarWidget;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;

namespace porvane {

// frmPass: choose a pass's length and start, preview it, print it, take or pick the photo, or remove an
// issued pass. All decisions are PassIssue's; this window shows them.
class PassWindow final : public QDialog {
    Q_OBJECT

public:
    struct Hooks {
        PassIssue::StoreRecord storeRecord;       // default: the record store's UpdateRecord
        PassIssue::Render render;                 // default: the default printer, or a PDF file without one
        std::function<void(QWidget*)> openCamera; // frmCapTest, modal
        std::function<void(QWidget*)> openPhotos; // frmHandlePhoto, modal
    };

    PassWindow(AppState& state, Hooks hooks, QWidget* parent = nullptr);

    // The operator removed the pass: asked for and confirmed before the window closed.
    bool passRemoved() const { return m_pass.removalRequested(); }

protected:
    void changeEvent(QEvent* event) override;
    void done(int result) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void refresh();
    void printPass();
    void stepCalendar(int months);

    AppState& m_state;
    Hooks m_hooks;
    PassIssue m_pass;

    QComboBox* m_number;
    QComboBox* m_period;
    QLineEdit* m_today;
    QFrame* m_calPanel;
    QCalendarWidget* m_calendar;
    QLabel* m_valid;
    QLabel* m_dayNotice;
    QLabel* m_printing;
    QLabel* m_firm;
    QLabel* m_photo;
    QLabel* m_logo;
    QLabel* m_name;
    QLabel* m_organ;
    QLabel* m_dept;
    QLabel* m_regOp;
    QLabel* m_regNo;
    QLabel* m_date;
    QLabel* m_time;
    QLabel* m_barText;
    QPushButton* m_print;
    QPushButton* m_remove;
};

} // namespace porvane
