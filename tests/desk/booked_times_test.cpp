#include "desk/booked_times.h"
#include "desk_fixture.h"

using namespace porvane;

namespace {
const QString kIncorrect = QStringLiteral("Can't Enter This:  Incorrect Time Format");
const QString kInvalid = QStringLiteral("Can't Enter This:  Invalid Time Format");
} // namespace

TEST(TimeGrammar, separatorsAreRewrittenAndTimesTested) {
    struct Case {
        const char* typed;
        TimeEntry::Outcome outcome;
        const char* cell;
    } cases[] = {
        {"09-30", TimeEntry::Outcome::Accepted, "09:30"},
        {"09.30", TimeEntry::Outcome::Accepted, "09:30"},
        {"09/30", TimeEntry::Outcome::Accepted, "09:30"},
        {"09\\30", TimeEntry::Outcome::Accepted, "09:30"},
        {"09 30", TimeEntry::Outcome::Accepted, "09:30"},
        {" 09;30 ", TimeEntry::Outcome::Accepted, "09:30"},
        {"23:59", TimeEntry::Outcome::Accepted, "23:59"},
        {"00:00", TimeEntry::Outcome::Accepted, "00:00"},
        {"7a:05", TimeEntry::Outcome::Accepted, "7a:05"},
        {"ab:cd", TimeEntry::Outcome::Accepted, "ab:cd"},
        {"", TimeEntry::Outcome::Accepted, ""},
        {"09x30", TimeEntry::Outcome::IncorrectFormat, "09x30"},
        {"9:30", TimeEntry::Outcome::InvalidTime, ""},
        {"24:00", TimeEntry::Outcome::InvalidTime, ""},
        {"12:60", TimeEntry::Outcome::InvalidTime, ""},
        {"0930", TimeEntry::Outcome::InvalidTime, ""},
    };
    for (const Case& c : cases) {
        const TimeEntry e = parseTimeEntry(QString::fromUtf8(c.typed));
        EXPECT_EQ(e.outcome, c.outcome) << c.typed;
        EXPECT_EQ(e.text, QString::fromUtf8(c.cell)) << c.typed;
    }
}

class BookedTimesTest : public porvane::test::DeskFixture {
protected:
    BookedTimesTest()
        : grid(state) {
        grid.setMonth(2024, 3);
    }
    BookedTimes grid;
};

TEST_F(BookedTimesTest, invalidTimeEmptiesTheCellAndMarksItRed) {
    grid.setCellText(5, QStringLiteral("9:30"));
    grid.validateCell(5);
    EXPECT_EQ(prompter.texts(), QStringList{kInvalid});
    EXPECT_EQ(prompter.last().title, u"Porvane 90");
    EXPECT_EQ(grid.cell(5), u"");
    EXPECT_TRUE(grid.isMarkedRed(5));
    grid.setCellText(5, QStringLiteral("09.30"));
    grid.validateCell(5);
    EXPECT_EQ(grid.cell(5), u"09:30");
    EXPECT_FALSE(grid.isMarkedRed(5));

    prompter.clear();
    grid.setCellText(6, QStringLiteral("09x30"));
    grid.validateCell(6);
    EXPECT_EQ(prompter.texts(), QStringList{kIncorrect});
    EXPECT_EQ(grid.cell(6), u"09x30");
    EXPECT_FALSE(grid.isMarkedRed(6));
}

TEST_F(BookedTimesTest, rowsFollowTheMonthAndCellsPastItsEndGo) {
    EXPECT_EQ(grid.dayCount(), 31);
    EXPECT_EQ(grid.dayLabel(14), u"14 Thu");
    grid.setCellText(31, QStringLiteral("08:00"));
    grid.setMonth(2024, 2);
    EXPECT_EQ(grid.dayCount(), 29);
    grid.setMonth(2024, 3);
    EXPECT_EQ(grid.cell(31), u"");
    grid.setMonth(2023, 2);
    EXPECT_EQ(grid.dayCount(), 28);
    for (int day = 1; day <= 28; ++day)
        EXPECT_FALSE(grid.isGrey(day));
}

TEST_F(BookedTimesTest, keysThatEditATimeSetTimesChanged) {
    EXPECT_EQ(grid.keyPress(u'x'), BookedTimes::KeyResult::ToCell);
    EXPECT_FALSE(state.TimesChanged);
    EXPECT_EQ(grid.keyPress(u'7'), BookedTimes::KeyResult::ToCell);
    EXPECT_TRUE(state.TimesChanged);
    state.TimesChanged = false;
    grid.keyPress(u':');
    EXPECT_TRUE(state.TimesChanged);
    state.TimesChanged = false;
    grid.deleteKey();
    EXPECT_TRUE(state.TimesChanged);
}

TEST_F(BookedTimesTest, addAndSubWorkOnTheCurrentDay) {
    grid.chooseTime(QStringLiteral("09:15"));
    EXPECT_EQ(grid.timeCaption(), u"Select");
    grid.setCurrentCell(0, 1);
    grid.cmdADD();
    EXPECT_EQ(prompter.texts(), QStringList{QStringLiteral("Can't Book Time  - No DAY has been Selected! ")});
    EXPECT_EQ(grid.timeListText(), u"");
    EXPECT_FALSE(state.TimesChanged);

    grid.chooseTime(QStringLiteral("09:15"));
    grid.setCurrentCell(12, 1);
    EXPECT_EQ(grid.keyPress(u'+'), BookedTimes::KeyResult::Consumed);
    EXPECT_EQ(grid.cell(12), u"09:15");
    EXPECT_TRUE(state.TimesChanged);
    EXPECT_EQ(state.HelpContext, 26);
    grid.setCurrentCell(13, 1);
    grid.keyPress(QChar(20)); // Ctrl+T
    EXPECT_EQ(grid.cell(13), u"09:15");
    EXPECT_EQ(grid.lastBookedDay(), 13);

    state.TimesChanged = false;
    EXPECT_EQ(grid.keyPress(u'-'), BookedTimes::KeyResult::Consumed);
    EXPECT_EQ(grid.cell(13), u"");
    EXPECT_TRUE(state.TimesChanged);
    EXPECT_EQ(grid.cell(12), u"09:15");
}

TEST_F(BookedTimesTest, clearAllOnAnEmptyGridStillCountsAsAChange) {
    grid.cmdCLEARAll();
    EXPECT_TRUE(state.TimesChanged);
}

TEST_F(BookedTimesTest, readOnlyBlocksAddSubAndClear) {
    state.settings.ckMakeSysRdO = QStringLiteral("1");
    grid.setCellText(3, QStringLiteral("10:00"));
    grid.setCurrentCell(3, 1);
    grid.chooseTime(QStringLiteral("11:00"));
    grid.cmdADD();
    grid.cmdSUB();
    grid.cmdCLEARAll();
    EXPECT_EQ(grid.cell(3), u"10:00");
    EXPECT_FALSE(state.TimesChanged);
    EXPECT_FALSE(grid.editable());
}

TEST_F(BookedTimesTest, timesTravelBetweenRecordAndGridAsHhmm) {
    state.record.bookedTimes()[0] = QStringLiteral("0800");
    state.record.bookedTimes()[16] = QStringLiteral("1745");
    state.TimesChanged = true;
    grid.showTimes();
    EXPECT_EQ(grid.cell(1), u"08:00");
    EXPECT_EQ(grid.cell(17), u"17:45");
    EXPECT_EQ(grid.cell(2), u"");
    EXPECT_EQ(grid.lastBookedDay(), 17);
    EXPECT_FALSE(state.TimesChanged);

    grid.setCellText(1, QString());
    grid.setCellText(20, QStringLiteral("09:30"));
    grid.takeTimes();
    EXPECT_EQ(state.record.bookedTimes()[0], u"");
    EXPECT_EQ(state.record.bookedTimes()[16], u"1745");
    EXPECT_EQ(state.record.bookedTimes()[19], u"0930");
}

TEST(TimeList, runsFromSixToTenInQuarterHours) {
    const QStringList items = BookedTimes::timeListItems();
    EXPECT_EQ(items.first(), u"06:00");
    EXPECT_EQ(items[1], u"06:15");
    EXPECT_EQ(items.last(), u"22:00");
    EXPECT_EQ(items.size(), 65);
}
