#include "desk/booked_times.h"
#include "test_desk.h"

#include <gtest/gtest.h>

using namespace porvane;

namespace {

struct BookedTimesTest : ::testing::Test {
    BookedTimesTest() { grid.setMonth(2024, 3); }

    test::TestDesk desk{QDateTime(QDate(2024, 3, 14), QTime(10, 5, 7))};
    OpenBooking booking{desk.state.record};
    BookedTimes grid{desk.state, booking};
};

} // namespace

// A typed time is tested when its cell is left: separators become ":", a time that cannot be one empties the
// cell and marks it red, an unknown separator stays as typed with a warning. The booking keeps "hhmm".
TEST_F(BookedTimesTest, typedTimesAreRewrittenOrRefusedOnLeavingTheCell) {
    const QString invalid = QStringLiteral("Can't Enter This:  Invalid Time Format");
    const QString incorrect = QStringLiteral("Can't Enter This:  Incorrect Time Format");
    const struct Case {
        const char* typed;
        const char* cell;
        const char* stored;
        QString message;
    } cases[] = {
        {"09-30", "09:30", "0930", {}},
        {"09.30", "09:30", "0930", {}},
        {"09\\30", "09:30", "0930", {}},
        {" 09;30 ", "09:30", "0930", {}},
        {"23:59", "23:59", "2359", {}},
        {"00:00", "00:00", "0000", {}},
        {"7a:05", "7a:05", "7a05", {}},
        {"9:30", "", "", invalid},
        {"24:00", "", "", invalid},
        {"12:60", "", "", invalid},
        {"0930", "", "", invalid},
        {"09x30", "09x30", "0930", incorrect},
        {"", "", "", {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed);
        desk.prompter.clear();
        grid.enterCell(5, QString::fromUtf8(c.typed));
        EXPECT_EQ(grid.cell(5), QString::fromUtf8(c.cell));
        EXPECT_EQ(booking.time(5), QString::fromUtf8(c.stored));
        EXPECT_EQ(desk.prompter.texts(), c.message.isEmpty() ? QStringList() : QStringList{c.message});
        EXPECT_EQ(grid.isMarkedRed(5), c.message == invalid);
    }
}

// Keys and buttons that edit times mark them edited, even when nothing stored changes; ADD needs a day.
TEST_F(BookedTimesTest, editingKeysAndButtonsMarkTheTimesEdited) {
    EXPECT_EQ(grid.keyPress(u'x'), BookedTimes::KeyResult::ToCell);
    EXPECT_FALSE(booking.timesEdited());
    EXPECT_EQ(grid.keyPress(u'7'), BookedTimes::KeyResult::ToCell);
    EXPECT_TRUE(booking.timesEdited());

    booking.settleTimes();
    grid.cmdCLEARAll();
    EXPECT_TRUE(booking.timesEdited()) << "CLEAR All on an empty month still asks at the next SAVE";

    booking.settleTimes();
    grid.chooseTime(QStringLiteral("09:15"));
    grid.setCurrentCell(0, 1);
    grid.cmdADD();
    EXPECT_EQ(desk.prompter.texts(),
              QStringList{QStringLiteral("Can't Book Time  - No DAY has been Selected! ")});
    EXPECT_EQ(grid.timeListText(), u"");
    EXPECT_FALSE(booking.timesEdited());

    grid.chooseTime(QStringLiteral("09:15"));
    grid.setCurrentCell(13, 1);
    EXPECT_EQ(grid.keyPress(QChar(20)), BookedTimes::KeyResult::Consumed); // Ctrl+T
    EXPECT_EQ(booking.time(13), u"0915");
    EXPECT_EQ(grid.keyPress(u'-'), BookedTimes::KeyResult::Consumed);
    EXPECT_EQ(booking.time(13), u"");

    desk.state.settings.ckMakeSysRdO = QStringLiteral("1");
    booking.setTime(3, QStringLiteral("1000"));
    booking.settleTimes();
    grid.setCurrentCell(3, 1);
    grid.cmdSUB();
    grid.cmdCLEARAll();
    grid.deleteKey();
    EXPECT_EQ(booking.time(3), u"1000") << "a read-only desk changes no time";
    EXPECT_FALSE(booking.timesEdited());
}
