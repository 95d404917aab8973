#pragma once

#include "app/app_state.h"
#include "passes/pass_layout.h"
#include "store/file_error.h"

#include <QCoreApplication>
#include <QDate>
#include <QString>
#include <functional>

namespace porvane {

// "1D" -> "1 Day", "2W" -> "2 Weeks", "3M" -> "3 Months"; any other unit letter gives "[ Unknown ]".
QString passPeriodWords(const QString& code);

// The working values of the pass window, read by pass printing.
struct PassWorking {
    int PassCount = 1;
    QString PassInterval = QStringLiteral("d");
    QString PassStartDate;
    QString PassEndDate;
    QString PassPeriodCode = QStringLiteral("1D");
    QString PassIssueStamp;
    QString PassValidText;
    bool PassPhotoShown = false;
};

// The pass window's logic over the application state: the working values of the pass being chosen, the
// preview texts, the refusals, removal and the print request. The window shows what this class computes.
class PassIssue {
    Q_DECLARE_TR_FUNCTIONS(PassIssue)

public:
    // The preview and controls as the window shows them.
    struct View {
        QString PassNumberCB = QStringLiteral("ONE");
        QString PassPeriodCB = QStringLiteral("Day");
        QString PassTodayTB = QStringLiteral("Today");
        QString PASSValidTB;
        QString laDayNotice;
        QString PassDateTB;
        QString PassTimeTB;
        QString PassNameTB;
        QString PassOrganTB;
        QString PassRegNoTB;
        QString PassRegOPTB;
        QString PassDeptTB;
        QString FirmNameTB;
        QString PassPortIma; // the image file shown
        QString LogoImage;   // empty when the logo is hidden
        QString laBC;
        bool laBCVisible = false;
        bool calendarShown = false;
        bool printEnabled = true; // allowed by the settings and the validity is valid
        bool removeEnabled = false;
    };

    enum class PrintResult {
        Disabled,   // pass printing is switched off, the desk is read-only, or the validity is invalid
        Declined,   // no photo and the operator chose not to print without one
        NotPrinted, // the printer failed; the record keeps its previous pass
        NotStored,  // printed, but the record could not be stored
        Printed,
    };

    // Lays the pass out on a printer or a PDF; returns an error text, empty when it printed.
    using Render = std::function<QString(const PassContent&)>;
    // Stores the printed pass in the booking's line; the error a user must see.
    using StoreRecord = std::function<FileError()>;

    explicit PassIssue(AppState& state);

    const View& view() const { return m_view; }
    const PassWorking& working() const { return m_working; }

    // Opening: working values, preview, flags and the remove button.
    void open();

    // The combos' selections; each runs the validity computation.
    void choosePassNumber(const QString& text);
    void choosePassPeriod(const QString& text);
    // Sets both choices and computes once (used where no window steps through the combos); false when
    // refused.
    bool choose(const QString& number, const QString& period);
    // Start date box: "Today" or "dd-mm-yyyy".
    void setStartBox(const QString& text);
    // Runs whenever a choice changes; false when the period text is not one of the three.
    bool computeValidity();
    // A day picked on the calendar; false when it lies before today (refused).
    bool pickCalendarDay(const QDate& day);
    // The calendar button: refused (false) for a one-day pass, otherwise toggles the calendar.
    bool toggleCalendar();

    // Activation: the preview and PhotoOnFile follow whether the booking's photo file exists now.
    void reloadPhoto() { followPhotoFile(); }

    // The remove button sets the request; the window then closes and asks here whether it may.
    void requestRemoval() { m_removalRequested = !m_state.settings.ReadOnlyMode(); }
    // True when the window may close; asks the removal question when removal was requested.
    bool confirmClose();
    // Removal was requested and, once the window closed, confirmed: the desk then revokes the pass.
    bool removalRequested() const { return m_removalRequested; }

    // The print request: the photo question, the record's pass fields, rendering and storing. error gets the
    // printer's or the store's failure.
    PrintResult print(const Render& render, const StoreRecord& store, QString* error = nullptr);
    // The pass contents as printed at this moment.
    PassContent content() const;

    QString placeholderImage() const;
    QString logoImage() const;
    QString visitorPhoto() const;

private:
    static QString dateText(const QDate& d) { return d.toString(QStringLiteral("dd-MM-yyyy")); }
    static QString passDay(const QDate& d);
    QDate startDate() const;
    QDate addIntervals(const QDate& start) const;
    void warn(const QString& text);
    void showInvalid();
    void followPhotoFile();

    AppState& m_state;
    View m_view;
    PassWorking m_working;
    bool m_printAllowed = true; // by the settings; the validity decides the rest
    bool m_removalRequested = false;
};

// Stores the pass fields of the current booking after printing, in the booking's own month; the booking's
// other fields are left as they are stored, so edits not yet saved are not written behind the operator's
// back.
std::function<FileError()> updateBookingInStore(AppState& state);

} // namespace porvane
