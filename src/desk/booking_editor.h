#pragma once

#include "app/app_state.h"
#include "desk/booked_times.h"
#include "desk/booking_store.h"
#include "desk/open_booking.h"
#include "lists/date_selection.h"

#include <QColor>
#include <QCoreApplication>
#include <QString>
#include <array>
#include <functional>

namespace porvane {

// The colours of the editor, as the desk has always used them.
namespace editor_colour {
inline const QColor kFilled{0xDF, 0xE7, 0xF9};   // pale blue: a box holds something, a warning
inline const QColor kEmpty{0xE0, 0xE0, 0xE0};    // grey: empty
inline const QColor kNoPhoto{0xE6, 0xE6, 0xE6};  // light grey
inline const QColor kWindow{0xF0, 0xF0, 0xF0};   // window grey
inline const QColor kDarkGrey{0x80, 0x80, 0x80}; // greyed text
inline const QColor kGreen{0x00, 0xFF, 0x00};    // pass valid, departed
inline const QColor kRed{0xFF, 0x00, 0x00};      // arrived
inline const QColor kWhite{0xFF, 0xFF, 0xFF};
inline const QColor kBlack{0x00, 0x00, 0x00};
} // namespace editor_colour

// The booking editor of the main window: NEW, SAVE, Delete, IN, OUT, opening a list row and closing, with
// every question asked before anything is lost. The booking itself is the OpenBooking; the window's boxes
// follow its signals and forward their edits here. Nothing here knows about widgets.
class BookingEditor {
    Q_DECLARE_TR_FUNCTIONS(BookingEditor)

public:
    // The editor's boxes, each by the record field it edits (RegNoTB ... CatEMATB).
    static constexpr std::array<Field, 16> kBoxes{
        Field::RegNo,        Field::FirstName,    Field::LastName,  Field::Gender,
        Field::MobileTel,    Field::CarReg,       Field::Email,     Field::Category,
        Field::Department,   Field::Organisation, Field::PartySize, Field::OrgAddress,
        Field::OrgDirectTel, Field::OrgPostcode,  Field::OrgAltTel, Field::OrgEmail};
    // The control's objectName for a box ("FirstNameTB", "CataCB" ...).
    static QString controlName(Field field);

    struct Label {
        QString text;
        QColor background; // invalid: the window's own
        QColor foreground; // invalid: the window's own
    };
    enum class Focus { None, FirstName, LastName, MainFind };

    // What the window shows beside the boxes.
    struct View {
        Label PassPrntdLa;
        Label PhotoOnFLa;
        Label LaON_Site;
        Label LaOFFSite;
        Focus focus = Focus::None;
        int caret = 0; // caret position in the focused box, when the editor moved the focus
    };

    // The department box's text when nothing is chosen.
    static QString noDepartment() { return QStringLiteral("-  Select  -"); }
    static QString newBookingText() { return QStringLiteral("NEW Booking"); }

    BookingEditor(AppState& state, OpenBooking& booking, DateSelection& dates, BookedTimes& times,
                  BookingStore& store);

    // Rebuilds the list the grid shows; the window sets it. Called after every save, delete, arrival and
    // departure.
    std::function<void()> refreshList;
    // Rebuilds today's status file from the month files; false when that failed (the window says why).
    std::function<bool()> rebuildTodayStatus;
    // Called each time the registration box changes during NEW's flash, and with "Pass Revoked" during a
    // revocation, so the window can paint each step before the pause.
    std::function<void(const QString&)> regNoShown;
    std::function<void(const QString&)> passLabelShown;

    const View& view() const { return m_view; }
    bool readOnly() const { return m_state.settings.ReadOnlyMode(); }
    // The colour of the registration box: pale blue when it holds something.
    QColor regNoBackground() const;
    // The month NEW and SAVE book into, as the boxes show it ("NOVEMBER 2026"); an open booking's own month
    // when that differs.
    QString bookingMonthText() const;
    bool bookingMonthDiffers() const;

    // --- the controls' events
    // A box's change event: its whole text, untrimmed, goes into its field. The first-name rules apply.
    void setBoxText(Field field, const QString& text);
    // The gender box's click: "M", or "F" when it already holds "M".
    void toggleGender();
    // Leaving the visitor's or the organisation's e-mail box: lower case, then the e-mail check.
    void leaveEmail(Field field);
    // Characters the name boxes accept: letters that the data files can hold (accented ones too), blank,
    // hyphen, full stop and apostrophe.
    static bool nameCharAccepted(QChar c);

    // --- the buttons
    void cmdSAVE();
    void cmdNEW();
    void cmdDelete();
    // Arrival and departure: mark the open booking in or out now and write today's day status file.
    void cmdIN();
    void cmdOUT();
    // Opening the booking regNo from a list row; false when the operator kept the current booking.
    bool openRow(const QString& regNo);
    // The window's close request; true when the window may close. askFirst false: the desk closes for a
    // restart the operator was told of, so only unsaved work is asked about.
    bool closeRequested(bool askFirst = true);

    // Before the pass window: unsaved edits go through the save decision, so a pass print never stores them
    // behind the operator's back. False when the operator cancelled.
    bool settleBeforePass();
    // After the pass or photo windows: a pass the operator removed there is revoked and stored, pass fields
    // the window stored are the saved state, and the labels catch up.
    void recordWindowClosed(bool passRemoved = false);
    // Recomputes the pass, photo and arrival labels from the booking and today's status file.
    void showLabels();

    // The four validity tests on the boxes, in order; the failing test's message, or empty.
    QString validityFault() const;
    // True when the registration box holds a number above zero (a saved booking is open).
    bool bookingOpen() const;

private:
    enum class Op { Save, New, RowClick, Close, Pass };

    QString box(Field field) const { return m_booking[field]; }
    QString bookingTitle() const;
    QString firstUpper() const;
    QString lastUpper() const;
    Answer ask(const QString& text, Buttons buttons, Icon icon);
    void setRegNoBox(const QString& text);
    void clearEditor(bool forget);

    // The save decision: false when the user cancelled or a save failed (the booking stays in the editor).
    bool saveDecision(Op op);
    bool saveRecordStep(Op op);
    bool saveTimesStep(Op op);
    // The store operations; failures are shown and return false.
    bool saveAsNew(const QString& bookingYymm);
    bool saveAsNew() { return saveAsNew(m_dates.bookingMonth()); }
    QString bookingFileMonth() const;
    bool overwrite();
    // Shows a refusal, or a failed write as failureText ("%1" the error's text, "%2" its number); true when
    // the operation succeeded.
    bool reportResult(const StoreResult& result, const QString& failureText);
    void afterSave();
    // Reads the booking; false when it cannot be opened (the error was shown).
    bool readBooking(const QString& regNo);
    // The arrival and departure of today's status file into the record's TimeOnSite and TimeOffSite; false
    // when the booking has no line there.
    bool takeSiteTimes(CurrentRecord& record) const;
    // A photo file under the booking's names decides PhotoOnFile.
    void takePhotoMark(CurrentRecord& record) const;
    // IN on a visitor not on today's list: book them for today now, after asking. False when not booked.
    bool bookWalkInForToday();
    void revokePass();

    void showPassLabel();
    void showPhotoLabel();
    void paintSiteLabels();
    // The tests IN and OUT share: the desk may write, a saved booking is open and its name is long enough.
    bool siteMarkAllowed(const QString& noBookingText, qsizetype lastNameBound);
    void writeSiteTimes(const QString& failureText);
    void showBookingMonth();

    AppState& m_state;
    OpenBooking& m_booking;
    DateSelection& m_dates;
    BookedTimes& m_times;
    BookingStore& m_store;
    View m_view;
};

// The first-name box's rule for a blank: the character after the blank goes to the last-name box and the
// first name loses its last two characters ("John S" -> "John" and "S"). nullopt when there is no blank.
struct NameSplit {
    QString first;
    QString last;
};
std::optional<NameSplit> splitFirstName(const QString& text);

} // namespace porvane
