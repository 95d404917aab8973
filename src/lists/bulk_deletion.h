#pragma once

#include "app/app_state.h"
#include "lists/record_search.h"
#include "store/file_error.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace porvane {

// What the boxes of the bulk deletion window hold, as texts.
struct BulkSelection {
    QString day;   // "All Days" or 1..31; the date test may correct it
    QString month; // "All Months" or JANUARY..DECEMBER
    QString year;
    QString kind; // one of BulkDeletion::kindItems()
    QString findText;
};

// Removes old bookings in bulk from the month files: a whole year, a whole month, the bookings of one day,
// or those of one month whose chosen field contains a text, in the desk's store. Every deletion is one
// change of the store from a fresh read, so a failure leaves the files as they were. Photos and day status
// files are never touched.
class BulkDeletion {
    Q_DECLARE_TR_FUNCTIONS(BulkDeletion)

public:
    enum class Scope { Year, Month, MonthWithText, Day };

    struct Outcome {
        enum class Status {
            Deleted,        // done; resultText tells what
            NothingMatched, // the year, month, day or text holds no booking; nothing was asked or written
            Declined,       // the operator answered No
            Refused,        // a date or text message was shown, or bulk deletion is switched off
            Failed,         // error tells why; nothing was changed
        };
        Status status = Status::Refused;
        Scope scope = Scope::Year;
        int count = 0; // bookings dropped (day, text) or month files removed (year)
        // For the main window: "All Bookings for MARCH 2024 Deleted", "No Records Deleted for ..."
        QString resultText;
        FileError error;

        bool finished() const { return status == Status::Deleted || status == Status::NothingMatched; }
    };

    explicit BulkDeletion(AppState& state);

    static QString allDays();
    static QString allMonths();
    // CBMDELDay: "All Days", 1..31. CBMDELMonth: "All Months", JANUARY..DECEMBER. CBMDELYear: the
    // supported years.
    static QStringList dayItems();
    static QStringList monthItems();
    QStringList yearItems() const;

    // CBDListBy: the search kinds, with "REPORTING TO" for "VISITING/REPORTING TO".
    static QStringList kindItems();
    static QString kindText(SearchKind kind);
    static std::optional<SearchKind> kindFromText(const QString& text);
    // The two captions beside the find text box for a kind: above the kind box, and beside the text box.
    struct Captions {
        QString kind;
        QString text;
    };
    static Captions captions(SearchKind kind);

    // Read-only desks and desks with bulk deletion switched off (ckDisMultiD "1") delete nothing.
    bool switchedOff() const;

    // cmdMDELDelete: checks the date boxes (a day beyond the month's end is corrected in selection, with a
    // message), counts what would go and asks the operator with that count (No by default), then deletes.
    // A finished deletion's result text goes into the main window's title.
    Outcome run(BulkSelection& selection);

private:
    std::optional<Scope> checkDate(BulkSelection& selection);
    Outcome remove(Scope scope, const BulkSelection& selection);
    QList<LineFileName> yearFiles(const QString& year) const;
    Outcome deleteYear(const QString& year);
    Outcome deleteMonth(const QString& yymm, const QString& monthYear);
    // day: the day whose bookings go (Scope::Day), else 0.
    Outcome deleteLines(Scope scope, const QString& yymm, int day, const QString& dateText,
                        const std::function<bool(const RecordLine&)>& drops);
    bool confirmed(const QString& question, const QString& count);
    // "That removes 3 bookings."; for a day, whole bookings with their other days.
    static QString countLine(Scope scope, int count, int withOtherDays);

    AppState& m_state;
};

} // namespace porvane
