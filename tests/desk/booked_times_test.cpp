#include "desk/booked_times.h"
#include "desk_fixture.h"

using namespace porvane;

class BookedTimesTest : public porvane::test::DeskFixture {
protected:
    BookedTimesTest()
        : grid(state) {
        grid.setMonth(2024, 3);
    }
    BookedTimes grid;
};

// A typed time is tested on leaving its cell: separators become ":", a time that cannot be one empties the
// cell and marks it red, an unknown separator stays with a warning.
TEST_F(BookedTimesTest, typedTimesAreRewrittenOrRefusedOnLeavingTheCell) {
    const QString invalid = QStringLiteral("Can't Enter This:  Invalid Time Format");
    const QString incorrect = QStringLiteral("Can't Enter This:  Incorrect Time Format");
    const struct Case {
        const char* typed;
        const char* cell;
        QString message;
    } cases[] = {
        {"", "", {}},
        {"09-30", "09:30", {}},
        {"09.30", "09:30", {}},
        {"09/30", "09:30", {}},
        {"09\\30", "09:30", {}},
        {"09 30", "09:30", {}},
        {" 09;30 ", "09:30", {}},
        {"23:59", "23:59", {}},
        {"9:30", "", invalid},
        {"00:00", "00:00", {}},
        {"24:00", "", invalid},
        {"7a:05", "7a:05", {}},
        {"12:60", "", invalid},
        {"ab:cd", "ab:cd", {}},
        {"0930", "", invalid},
        {"09x30", "09x30", incorrect},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed);
        prompter.clear();
        grid.setCellText(5, QString::fromUtf8(c.typed));
        grid.validateCell(5);
        EXPECT_EQ(grid.cell(5), QString::fromUtf8(c.cell));
        EXPECT_EQ(prompter.texts(), c.message.isEmpty() ? QStringList() : QStringList{c.message});
        EXPECT_EQ(grid.isMarkedRed(5), c.message == invalid);
    }
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

TEST_F(BookedTimesTest, keysAndClearingThatEditTimesSetTimesChanged) {
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
    // Clearing counts as a change even when there was nothing to clear.
    state.TimesChanged = false;
    grid.cmdCLEARAll();
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

TEST(TimeList, runsFromSixToTenInQuarterHours) {
    const QStringList items = BookedTimes::timeListItems();
    EXPECT_EQ(items.first(), u"06:00");
    EXPECT_EQ(items[1], u"06:15");
    EXPECT_EQ(items.last(), u"22:00");
    EXPECT_EQ(items.size(), 65);
}
