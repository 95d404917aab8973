#pragma once

#include "app/clock.h"
#include "app/prompter.h"

#include <QCoreApplication>
#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>

namespace porvane {

// The main window's three date boxes (day, month, year) and the calendar beside them, as plain texts. The
// window shows the texts and forwards the boxes' changes; every change is checked by testDate() before a list
// is built.
class DateSelection {
    Q_DECLARE_TR_FUNCTIONS(DateSelection)

public:
    static constexpr int kFirstYear = 2010;
    // The last supported year is five years after the year of start-up, so the desk keeps working.
    static constexpr int kYearsAhead = 5;

    // currentYear: the clock's year at start-up.
    explicit DateSelection(int currentYear);

    int firstYear() const { return kFirstYear; }
    int lastYear() const { return m_lastYear; }

    // The boxes' lists: "--" then 1..31; JANUARY..DECEMBER; the supported years.
    static QStringList dayItems();
    static QStringList monthItems();
    QStringList yearItems() const;
    static QString noDay() { return QStringLiteral("--"); }
    // A month as the month and year boxes show it: "JUNE 2024".
    static QString monthYearText(const QDate& month);

    const QString& dayText() const { return m_day; }
    const QString& monthText() const { return m_month; }
    const QString& yearText() const { return m_year; }
    void setDayText(const QString& text) { m_day = text, notify(); }
    void setMonthText(const QString& text) { m_month = text, notify(); }
    void setYearText(const QString& text) { m_year = text, notify(); }
    // All three boxes at once, as the operator left them.
    void setTexts(const QString& day, const QString& month, const QString& year) {
        m_day = day;
        m_month = month;
        m_year = year;
        notify();
    }
    // Sets all three boxes from a date (day as a number, month in capitals, four-digit year).
    void setDate(const QDate& date);

    // Called after every change of the selected date, so that the boxes and the calendar always show the
    // month that a new booking goes into.
    std::function<void()> changed;

    // True after a date test that found no valid date; callers stop then.
    bool DateInvalid = false;

    // The date test: corrects a day beyond the month's end (with a message) and refuses an unknown month or
    // an unsupported year. Returns true when the date is valid.
    bool testDate(Prompter& prompter);
    // The year part of the date test alone: refuses a year outside the supported ones.
    bool testYear(Prompter& prompter);

    // "01".."12" from the first three letters of a month name ("JAN" -> "01"); empty when unknown.
    static QString MonthNumber(const QString& monthText);
    QString monthNumber() const { return MonthNumber(m_month); }
    // The booking month's file stem: last two characters of the year box and the month number.
    QString bookingMonth() const { return m_year.right(2) + monthNumber(); }

    // The selected date; invalid when no day is chosen or the boxes do not make a date.
    QDate selectedDate() const;
    // "dd-mm-yyyy", empty when there is no valid date.
    QString selectedDateText() const;
    // The date the calendar shows: the boxes' date, with the day held to the month's last day and the first
    // day when no day is chosen.
    QDate calendarDate() const;

    // Month steps; the day number is kept (held to the new month's length). Back from January of the first
    // year lands on December of the first year; forward from December of the last year wraps to January of
    // the first year.
    void cmdCalDECR();
    void cmdCalINCR();

    // Today's date into the three boxes.
    void cmdGetToday(const Clock& clock) { setDate(clock.today()); }
    static QDate tomorrow(const Clock& clock) { return clock.today().addDays(1); }

private:
    void stepTo(int month, int year);
    void notify() const {
        if (changed)
            changed();
    }

    int m_lastYear;
    QString m_day;
    QString m_month;
    QString m_year;
};

} // namespace porvane
