#include "lists/date_selection.h"
#include "scripted_prompter.h"

#include <gtest/gtest.h>

using namespace porvane;
using porvane::test::ScriptedPrompter;

namespace {
const QString kNoDate = QStringLiteral("ATTENTION: No VALID Date selected - Try selecting again");

DateSelection boxes(const char* day, const char* month, const char* year, int currentYear = 2024) {
    DateSelection d(currentYear);
    d.setDayText(QString::fromUtf8(day));
    d.setMonthText(QString::fromUtf8(month));
    d.setYearText(QString::fromUtf8(year));
    return d;
}
} // namespace

TEST(DateSelection, dayBeyondTheMonthIsCorrectedWithItsMessage) {
    struct Case {
        const char* day;
        const char* month;
        const char* year;
        const char* message;
        const char* corrected;
    } cases[] = {
        {"30", "FEBRUARY", "2024", "ATTENTION: Only [ 29 ] Days in February 2024", "29"},
        {"29", "FEBRUARY", "2023", "ATTENTION: Only [ 28 ] Days in February 2023", "28"},
        {"31", "APRIL", "2024", "ATTENTION: Only [ 30 ] Days in the Month Selected", "30"},
        {"32", "JULY", "2024", "ATTENTION: Invalid DAY Entered for the Month Selected", "31"},
    };
    for (const Case& c : cases) {
        ScriptedPrompter prompter;
        DateSelection d = boxes(c.day, c.month, c.year);
        EXPECT_TRUE(d.testDate(prompter)) << c.month;
        EXPECT_FALSE(d.DateInvalid);
        ASSERT_EQ(prompter.messages().size(), 1) << c.month;
        EXPECT_EQ(prompter.last().text, QString::fromUtf8(c.message));
        EXPECT_EQ(prompter.last().title, u"Porvane 90");
        EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
        EXPECT_EQ(d.dayText(), QString::fromUtf8(c.corrected));
    }
}

// Years run from 2010 to five years after start-up; a date within them and a known month passes without a
// word, anything else leaves no valid date.
TEST(DateSelection, onlyKnownMonthsOfTheOfferedYearsAreDates) {
    const struct Case {
        const char* day;
        const char* month;
        const char* year;
        int startYear;
        bool valid;
    } cases[] = {
        {"29", "FEBRUARY", "2024", 2024, true}, {"1", "FEBRUARY", "2024", 2024, true},
        {"--", "FEBRUARY", "2024", 2024, true}, {"31", "DECEMBER", "2029", 2024, true},
        {"1", "JANUARY", "2031", 2026, true},   {"1", "JANUARY", "2032", 2026, false},
        {"10", "MARCH", "2009", 2024, false},   {"10", "MARCH", "2030", 2024, false},
        {"10", "MARCH", "abcd", 2024, false},   {"10", "SMARCH", "2024", 2024, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.day) + " " + c.month + " " + c.year);
        ScriptedPrompter prompter;
        DateSelection d = boxes(c.day, c.month, c.year, c.startYear);
        EXPECT_EQ(d.testDate(prompter), c.valid);
        EXPECT_EQ(d.DateInvalid, !c.valid);
        EXPECT_EQ(prompter.texts(), c.valid ? QStringList() : QStringList{kNoDate});
    }
    // The flag is the result of the latest test only.
    ScriptedPrompter prompter;
    DateSelection d = boxes("10", "SMARCH", "2024");
    EXPECT_FALSE(d.testDate(prompter));
    d.setMonthText(QStringLiteral("MARCH"));
    EXPECT_TRUE(d.testDate(prompter));
    EXPECT_FALSE(d.DateInvalid);

    const QStringList years = DateSelection(2026).yearItems();
    EXPECT_EQ(years.first(), u"2010");
    EXPECT_EQ(years.last(), u"2031");
    EXPECT_EQ(years.size(), 22);
}

// Steps wrap within the offered years (2010 to 2029 for a 2024 start-up) and hold the day to the new month.
TEST(DateSelection, monthStepsWrapAtTheEndsAndHoldTheDay) {
    const struct Case {
        const char *day, *month, *year;
        int steps;
        const char* after; // day month year
    } cases[] = {
        {"15", "JANUARY", "2010", -1, "15 DECEMBER 2010"}, {"15", "DECEMBER", "2029", 1, "15 JANUARY 2010"},
        {"15", "DECEMBER", "2023", 1, "15 JANUARY 2024"},  {"15", "JANUARY", "2024", -2, "15 NOVEMBER 2023"},
        {"31", "JANUARY", "2024", 1, "29 FEBRUARY 2024"},  {"--", "MAY", "2024", 1, "-- JUNE 2024"},
    };
    for (const Case& c : cases) {
        DateSelection d = boxes(c.day, c.month, c.year);
        for (int i = 0; i < std::abs(c.steps); ++i)
            c.steps < 0 ? d.cmdCalDECR() : d.cmdCalINCR();
        EXPECT_EQ((d.dayText() + u' ' + d.monthText() + u' ' + d.yearText()).toStdString(), c.after)
            << c.day << ' ' << c.month << ' ' << c.year << " by " << c.steps;
    }
    EXPECT_FALSE(boxes("--", "MAY", "2024").selectedDate().isValid());
}
