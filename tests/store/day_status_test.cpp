#include "store/day_status.h"
#include "store_fixture.h"
#include "test_stores.h"

#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct DayStatusFixture : ::testing::Test {
    DayStatusFixture()
        : desk(QDateTime(QDate(2024, 6, 15), QTime(9, 41))) {}

    void mark(const char16_t* arrival, const char16_t* departure) {
        m_arrival = QString::fromUtf16(arrival);
        m_departure = QString::fromUtf16(departure);
    }
    FileError update(const QString& regNoText) {
        return UpdateDayStatus(desk.state.files(), desk.clock.today(), regNoText, m_arrival, m_departure);
    }
    QByteArray today() { return storedFile(desk.state.files(), u"Status/240615.vdf"_s); }

    TestDesk desk;
    QString m_arrival;
    QString m_departure;
};
using DayStatusTest = DayStatusFixture;
using DayStatusEachStore = OverStores<DayStatusFixture>;
PORVANE_OVER_STORES(DayStatusEachStore);

const QByteArray kAnn =
    handLine({{1, "240605090000"}, {14, "Ann"}, {991, "  -  "}, {996, "  -  "}, {slot(1), "0900"}});
const QByteArray kBob = handLine({{1, "240610100000"}, {14, "Bob"}, {991, "08:10"}, {996, "  -  "}});

TEST_F(DayStatusTest, arrivalAndDeparture_overwriteTheirColumnsInEveryLineOfTheBooking) {
    desk.folder.write(u"Status/240615.vdf"_s, kAnn + "\n" + kBob + "\r\n" + kAnn); // LF, CR LF, no end
    mark(u"09:41", u"  -  ");
    ASSERT_FALSE(update(u" 240605090000 "_s));
    QByteArray arrived = kAnn;
    arrived.replace(990, 5, "09:41");
    EXPECT_EQ(today(), crLf({arrived, kBob, arrived}));

    const SiteTimes times = readSiteTimes(desk.state.files(), QDate(2024, 6, 15), u"240605090000"_s);
    EXPECT_TRUE(times.found);
    EXPECT_EQ(times.arrival, u"0941");
    EXPECT_EQ(times.departure, u"    ");

    // Writing "  -  " back restores the not-arrived state.
    mark(u"  -  ", u"  -  ");
    ASSERT_FALSE(update(u"240605090000"_s));
    EXPECT_EQ(today(), crLf({kAnn, kBob, kAnn}));
}

TEST_P(DayStatusEachStore, aShorterValueReplacesOnlyItsOwnCharacters_andShortLinesArePaddedNotCut) {
    if (GetParam() == StoreKind::Server)
        GTEST_SKIP()
            << "a server keeps whole lines of 1186 columns only: no short line can be laid out there";
    const QByteArray shortLine = handLine({{1, "240605090000"}, {14, "Ann"}}, 40);
    const QByteArray longLine = handLine({{1, "240605090000"}, {991, "11:22"}, {996, "33:44"}}, 1186);
    put(u"Status/240615.vdf"_s, crLf({shortLine, longLine}));
    mark(u"9:5", u"17:30");
    ASSERT_FALSE(update(u"240605090000"_s));
    QByteArray padded = shortLine + QByteArray(960, ' ');
    padded.replace(990, 3, "9:5");
    padded.replace(995, 5, "17:30");
    QByteArray marked = longLine;
    marked.replace(990, 3, "9:5");
    marked.replace(995, 5, "17:30");
    EXPECT_EQ(today(), crLf({padded, marked}));
    EXPECT_EQ(marked.mid(990, 5), "9:522");
}

TEST_P(DayStatusEachStore, readTakesTheLastMatchingLine_andABookingWithoutALineLeavesTheFileUntouched) {
    QByteArray later = kAnn;
    later.replace(990, 10, "10:0516:45");
    const QByteArray before = crLf({kAnn, kBob, later});
    put(u"Status/240615.vdf"_s, before);
    const SiteTimes times = readSiteTimes(desk.state.files(), QDate(2024, 6, 15), u"240605090000"_s);
    EXPECT_EQ(times.arrival, u"1005");
    EXPECT_EQ(times.departure, u"1645");
    EXPECT_FALSE(readSiteTimes(desk.state.files(), QDate(2024, 6, 15), u"240699999999"_s).found);
    EXPECT_FALSE(readSiteTimes(desk.state.files(), QDate(2024, 6, 16), u"240605090000"_s).found);

    const QDateTime written = QFileInfo(desk.folder.path(u"Status/240615.vdf"_s)).lastModified();
    mark(u"10:00", u"  -  ");
    EXPECT_FALSE(update(u"240605"_s)) << "a part of a key is no key";
    EXPECT_FALSE(update(u""_s));
    EXPECT_EQ(today(), before);
    if (GetParam() == StoreKind::DataFolder) {
        EXPECT_EQ(QFileInfo(desk.folder.path(u"Status/240615.vdf"_s)).lastModified(), written) << "unwritten";
    }

    desk.clock.set(QDateTime(QDate(2024, 6, 16), QTime(8, 0)));
    EXPECT_EQ(update(u"240605090000"_s).number, 53) << "no file for the day";
}

} // namespace
