#pragma once

#include "app/app_state.h"
#include "desk/open_booking.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <array>

namespace porvane {

// What the grammar made of a typed time.
struct TimeEntry {
    enum class Outcome {
        Accepted,        // text is the cell's new content ("hh:mm", or empty)
        IncorrectFormat, // a five-character text with an unknown separator: the cell stays as typed
        InvalidTime,     // not a time: the cell is emptied and marked
    };
    Outcome outcome = Outcome::Accepted;
    QString text;
};

// The time grammar of a grid cell: separators . / \ blank - * , ; become ":", then the time test.
TimeEntry parseTimeEntry(const QString& typed);
// "hh:mm" with hour 0-23 and minute 0-59, each pair read by the leading-number rule ("7a:05" is 07:05).
bool isValidTime(const QString& text);

// The booked-times grid (TimeGrid) of the main window: one row per day of the selected month, the booked
// time of each day as "hh:mm" in column 1. Row 0 is the heading, so the current row is the day number.
// No day is painted grey: every day of the month may be booked, weekends included, because sites take
// visitors at weekends too. Days past the month's end are simply not rows.
class BookedTimes {
    Q_DECLARE_TR_FUNCTIONS(BookedTimes)

public:
    enum class KeyResult { ToCell, Consumed };

    // The times themselves live in the booking; this keeps only what the grid adds to them: its month, its
    // current cell, a cell left as typed and the cells marked red.
    BookedTimes(AppState& state, OpenBooking& booking);

    // The month shown decides the rows.
    void setMonth(int year, int month);
    int year() const { return m_year; }
    int month() const { return m_month; }
    int dayCount() const { return m_days; }

    static QString dayHeading() { return tr("Day"); }
    static QString timeHeading() { return tr("Time"); }
    // Column 0 of a day row, for example "03 Tue".
    QString dayLabel(int day) const;
    // Column 1 of a day row (day 1..dayCount()): the booked time as "hh:mm", or a text left as typed.
    QString cell(int day) const;
    bool isMarkedRed(int day) const;
    bool isGrey(int day) const;
    // The window's read-only switch for the grid.
    bool editable() const { return !m_state.settings.ReadOnlyMode(); }

    // The grid's current cell; row 0 is the heading (no day chosen).
    void setCurrentCell(int row, int column);
    int currentRow() const { return m_row; }

    // A day's cell edit is finished: the time grammar decides what the booking keeps.
    void enterCell(int day, const QString& typed);

    // A key typed in the grid. Time characters mark the times edited and go to the cell; Ctrl+T (code 20)
    // and "+" act as ADD, "-" as SUB, and those are not typed into the cell.
    KeyResult keyPress(QChar key);
    // The Delete key empties the current cell.
    void deleteKey();

    void cmdADD();
    void cmdSUB();
    void cmdCLEARAll();

    // The time list that feeds ADD: 06:00 to 22:00 every 15 minutes.
    static QStringList timeListItems();
    void chooseTime(const QString& text);
    const QString& timeListText() const { return m_timeText; }
    // The caption beside the time list: "Select" once a time has been chosen.
    const QString& timeCaption() const { return m_timeCaption; }

    // Another booking is shown: cells typed or marked for the last one go.
    void forgetMarks();
    // The last day that holds a time (the grid scrolls to it); 0 when none.
    int lastBookedDay() const;

private:
    bool readOnly() const { return m_state.settings.ReadOnlyMode(); }
    bool isDayRow(int day) const { return day >= 1 && day <= m_days; }
    void setDayTime(int day, const QString& hhmm);

    AppState& m_state;
    OpenBooking& m_booking;
    int m_year = 2010;
    int m_month = 1;
    int m_days = 31;
    int m_row = 0;
    int m_column = 1;
    std::array<QString, 31> m_typed; // a cell left as typed after "Incorrect Time Format"
    std::array<bool, 31> m_red{};
    QString m_timeText;
    QString m_timeCaption;
};

} // namespace porvane
