#include "lists_fixture.h"

#include <QDir>
#include <QElapsedTimer>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

using DayListTest = ListsFixture;
using MonthListTest = ListsFixture;
using DayList = OverStores<ListsFixture>;
using MonthList = OverStores<ListsFixture>;
PORVANE_OVER_STORES(DayList);
PORVANE_OVER_STORES(MonthList);

// Slot of day d: column 1060 + (d - 1) * 4.
TEST_P(DayList, listsBookedTimeOrCoveringPass_inFileOrder_withTheCellsAsStored) {
    writeLines(
        u"Record/2406.vrf"_s,
        {handBooking("240601090000", "  Ann", "Lee",
                     {{69, "AB12 CDE"},
                      {504, "VISITOR"},
                      {525, "SALES"},
                      {550, "Acme Ltd"},
                      {601, " 3 "},
                      {670, "0123 456"},
                      {758, "Mr Boss"},
                      {795, "x204"},
                      {slot(15), "0930"}}),
         handBooking("240602090000", "Bob", "Ray",
                     {{936, "14-06-2024"}, {947, "16-06-2024"}, {958, "1W"}, {969, "10-06-2024 at 9:15"}}),
         handBooking("240603090000", "Cy", "Tomorrow", {{slot(16), "1100"}}),
         handBooking("240604090000", "Di", "Expired",
                     {{936, "01-06-2024"}, {947, "14-06-2024"}, {958, "2X"}})});
    select(15, "JUNE", "2024");

    EXPECT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Listed);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    EXPECT_EQ(desk.state.listMode, ListMode::Day);
    ASSERT_EQ(desk.state.ListedCount, 2);
    EXPECT_EQ(lists.table().gridRowCount(), 52);
    EXPECT_EQ(row(0).join(u'|'),
              u"240601090000|Ann|Lee|Acme Ltd|VISITOR|3|0123 456|09:30||||||AB12 CDE|Mr Boss|"
              u"SALES|x204");
    EXPECT_EQ(row(1).join(u'|'),
              u"240602090000|Bob|Ray||||||14-06-2024|10-06-2024 at 9:15|1|Week|16-06-2024||||");
    EXPECT_EQ(cell(0, 3), u"Acme Ltd"_s.leftJustified(50, u' ')); // as stored
    EXPECT_EQ(lists.table().rowColour(1), 0xE0E0E0u);

    // An unknown pass letter leaves the type empty; the expired pass is listed on its last day only.
    select(14, "JUNE", "2024");
    ASSERT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Listed);
    ASSERT_EQ(column(0).last(), u"240604090000");
    EXPECT_EQ(cell(lists.table().listedCount() - 1, 11), QString());
}

// A pass is listed on every day of its range, ends included, but only from its own month's file; a booked
// time only on its own day, the 31st included.
TEST_P(DayList, passRangesAndBookedDaysAtTheirEdges) {
    const QByteArray pass =
        handLine({{1, "240201120000"}, {14, "Leap"}, {936, "28-02-2024"}, {947, "02-03-2024"}});
    writeLines(u"Record/2402.vrf"_s, {pass});
    writeLines(u"Record/2403.vrf"_s, {handLine({{1, "240301120000"}, {14, "Other"}})});
    writeLines(u"Record/2405.vrf"_s, {handLine({{1, "240501080000"}, {14, "Late"}, {slot(31), "1700"}})});
    const auto listedOn = [&](int day, const char* month) {
        select(day, month, "2024");
        lists.selectDayRecord(dates);
        return lists.table().listedCount();
    };
    EXPECT_EQ(listedOn(27, "FEBRUARY"), 0);
    EXPECT_EQ(listedOn(28, "FEBRUARY"), 1);
    EXPECT_EQ(listedOn(29, "FEBRUARY"), 1);
    EXPECT_EQ(listedOn(1, "MARCH"), 0) << "the pass is recorded on February's booking";
    writeLines(u"Record/2403.vrf"_s, {pass});
    EXPECT_EQ(listedOn(2, "MARCH"), 1);
    EXPECT_EQ(listedOn(3, "MARCH"), 0);
    EXPECT_EQ(listedOn(30, "MAY"), 0);
    EXPECT_EQ(listedOn(31, "MAY"), 1);
    EXPECT_EQ(cell(0, 7), u"17:00");
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

// The lines of the first two megabytes of rows are kept as they were read; the later ones are read again when
// the row is shown: lines close together in one read (at most a block), lines far apart each on their own.
// Every row shows its own line whole, in whatever order the grid asks for them.
TEST_P(DayList, rowsCloseTogetherAndFarApartEachShowTheirOwnLine) {
    QByteArray bytes;
    QStringList listed;
    for (int i = 0; i < 3000; ++i) {
        const QByteArray regNo = QByteArray::number(240600000000LL + i);
        // Lines alone, runs of three, and a run past the kept lines and longer than one read.
        const bool booked = i % 40 == 0 || i % 400 < 3 || (i >= 1000 && i < 2900) || i == 2999;
        bytes +=
            handLine(
                {{1, regNo.constData()}, {14, booked ? "Listed" : "Other"}, {1116, booked ? "0930" : ""}}) +
            "\r\n";
        if (booked)
            listed.append(QString::fromLatin1(regNo));
    }
    put(u"Record/2406.vrf"_s, bytes);
    select(15, "JUNE", "2024");
    ASSERT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Listed);
    EXPECT_EQ(column(0), listed);
    QStringList backwards;
    for (int r = lists.table().listedCount() - 1; r >= 0; --r)
        backwards.prepend(cell(r, 0) + u' ' + cell(r, 1) + u' ' + cell(r, 7));
    EXPECT_EQ(backwards.size(), listed.size());
    for (qsizetype r = 0; r < backwards.size(); ++r)
        EXPECT_EQ(backwards[r], listed[r] + u" Listed 09:30"_s) << r;
}

TEST_F(DayListTest, missingFileNoMatchNoDayAndUnreadableFile) {
    desk.state.ListedCount = 7;
    select(15, "JUNE", "2024");
    EXPECT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Message);
    ASSERT_EQ(desk.prompter.messages().size(), 1);
    EXPECT_EQ(desk.prompter.last().text, u"No Visitor Bookings for this DATE have been found");
    EXPECT_EQ(desk.prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(desk.state.ListedCount, 7); // not updated

    writeLines(u"Record/2406.vrf"_s, {handLine({{1, "240601090000"}, {slot(1), "0800"}})});
    desk.prompter.clear();
    EXPECT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Listed);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    EXPECT_EQ(desk.state.ListedCount, 0);
    EXPECT_EQ(lists.table().gridRowCount(), 50);

    select(0, "JUNE", "2024");
    EXPECT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Refused);
    EXPECT_EQ(desk.prompter.last().text, u"Can't list Day Bookings:  No Day has been selected ");

    // A month "file" that cannot be read is an error in the title, not a message.
    QDir().mkpath(desk.folder.path(u"Record/2407.vrf"_s));
    desk.prompter.clear();
    select(1, "JULY", "2024");
    EXPECT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Failed);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    EXPECT_EQ(desk.state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Error: 2185 in Select Day Record ]");
}

TEST_P(MonthList, oneRowPerBookedDay_colouredAgainstTodayNotTheSelectedDay) {
    writeLines(u"Record/2406.vrf"_s,
               {handBooking("240601090000", "Ann", "Lee",
                            {{slot(3), "0800"}, {slot(15), "0930"}, {slot(17), "1415"}}),
                handLine({{1, "240602090000"}, {14, "Pass"}, {936, "01-06-2024"}, {947, "30-06-2024"}}),
                handLine({{1, "240603090000"}, {14, "Bob"}, {slot(1), "0700"}})});
    select(0, "JUNE", "2024");
    EXPECT_EQ(lists.selectMonthRecord(dates), GridLists::Outcome::Listed);
    EXPECT_EQ(desk.state.listMode, ListMode::Month);
    EXPECT_TRUE(lists.view().dayBoxGreyed);
    ASSERT_EQ(desk.state.ListedCount, 4);
    EXPECT_EQ(column(4), (QStringList{u"03"_s, u"15"_s, u"17"_s, u"01"_s}));
    EXPECT_EQ(column(5), (QStringList{u"08:00"_s, u"09:30"_s, u"14:15"_s, u"07:00"_s}));
    EXPECT_EQ(column(1), (QStringList{u"Ann"_s, u"Ann"_s, u"Ann"_s, u"Bob"_s}));
    const ListTable& t = lists.table();
    for (int c = 1; c < t.columnCount(); ++c) {
        EXPECT_EQ(t.textColour(0, c), TextColour::Grey) << c;
        EXPECT_EQ(t.textColour(1, c), TextColour::DarkBlue) << c;
        EXPECT_EQ(t.textColour(2, c), TextColour::Black) << c;
    }
    EXPECT_EQ(t.textColour(0, 0), TextColour::Black);
    // Next month: everything is still to come.
    writeLines(u"Record/2407.vrf"_s, {handLine({{1, "240701090000"}, {slot(1), "0800"}})});
    select(0, "JULY", "2024");
    lists.selectMonthRecord(dates);
    EXPECT_EQ(lists.table().textColour(0, 1), TextColour::Black);
    select(0, "MAY", "2024");
    EXPECT_EQ(lists.selectMonthRecord(dates), GridLists::Outcome::Message);
    EXPECT_EQ(desk.prompter.last().text, u"No Visitor Bookings for this DATE have been found");
}

// The bound only catches a gross slowdown: this also runs under AddressSanitizer on a busy machine.
TEST_F(MonthListTest, aBusyMonthIsListedWithoutAGrossSlowdown) {
    // 15,000 bookings with two booked days each.
    QByteArray bytes;
    for (int i = 0; i < 15000; ++i)
        bytes += handBooking(QByteArray::number(240600000000LL + i).constData(), "Visitor", "Number",
                             {{550, "Somewhere plc"}, {slot(2), "0900"}, {slot(16), "1300"}}) +
                 "\r\n";
    desk.folder.write(u"Record/2406.vrf"_s, bytes);
    select(0, "JUNE", "2024");
    QElapsedTimer timer;
    timer.start();
    lists.selectMonthRecord(dates);
    const qint64 ms = timer.elapsed();
    EXPECT_EQ(lists.table().gridRowCount(), 30050);
    EXPECT_EQ(cell(29999, 4), u"16");
    EXPECT_LT(ms, 2000);
    RecordProperty("month_list_ms", int(ms));
}

} // namespace
