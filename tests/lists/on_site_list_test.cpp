#include "lists/on_site_list.h"
#include "lists_fixture.h"

#include <QDir>
#include <QFile>
#include <sys/stat.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// Today is 15 June 2024: today's slot is at column 1060 + 14 * 4 = 1116; marks at 991 and 996.
struct OnSiteFixture : ListsFixture {
    const QString statusFile = u"Status/240615.vdf"_s;

    QList<QByteArray> statusLines() {
        QList<QByteArray> lines = storedFile(desk.state.files(), statusFile).split('\n');
        if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        return lines;
    }
    static QByteArray marks(const QByteArray& line) { return line.mid(990, 10); }
    // The status file's inode: a file replaced is a new one.
    ino_t statusInode() const {
        struct stat st {};
        return ::stat(QFile::encodeName(desk.folder.path(statusFile)).constData(), &st) == 0 ? st.st_ino : 0;
    }
};
using OnSiteTest = OnSiteFixture;
using OnSite = OverStores<OnSiteFixture>;
PORVANE_OVER_STORES(OnSite);

// Nobody due gives an empty file and an empty list, without a message; then the rebuild reads thirteen
// months.
TEST_P(OnSite, rebuildTakesTodaysTimesAndCoveringPassesFromThirteenMonths) {
    writeLines(u"Record/2406.vrf"_s, {handLine({{1, "240601000002"}, {14, "Tomorrow"}, {slot(16), "1000"}})});
    EXPECT_EQ(lists.showDayStatus(), GridLists::Outcome::Listed);
    EXPECT_TRUE(files().exists(lineFileNameOf(statusFile)));
    EXPECT_TRUE(stored(statusFile).isEmpty());
    EXPECT_EQ(desk.state.ListedCount, 0);
    EXPECT_EQ(lists.table().gridRowCount(), 50);

    // Without a status file, everyone due starts with "  -  " marks.
    ASSERT_FALSE(
        files().change([&](LineFileChanges& c) { return c.removeAll({lineFileNameOf(statusFile)}); }));
    writeLines(u"Record/2406.vrf"_s, {handLine({{1, "240601000001"}, {14, "Today"}, {slot(15), "1000"}}),
                                      handLine({{1, "240601000002"}, {14, "Tomorrow"}, {slot(16), "1000"}})});
    // A pass recorded three months ago that runs until next week; its slot for "the 15th" is March's.
    writeLines(u"Record/2403.vrf"_s, {handLine({{1, "240301000003"},
                                                {14, "March"},
                                                {936, "01-03-2024"},
                                                {947, "20-06-2024"},
                                                {slot(15), "0800"}})});
    // Seven months back is never read.
    writeLines(u"Record/2311.vrf"_s,
               {handLine({{1, "231101000004"}, {14, "Old"}, {936, "01-11-2023"}, {947, "31-12-2024"}})});
    writeLines(u"Record/2412.vrf"_s,
               {handLine({{1, "241201000005"}, {14, "Ahead"}, {936, "01-06-2024"}, {947, "31-12-2024"}})});

    EXPECT_EQ(lists.showDayStatus(), GridLists::Outcome::Listed);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    EXPECT_EQ(desk.state.listMode, ListMode::OnSite);
    EXPECT_TRUE(lists.view().inOutEnabled);
    // Months in scan order: six before today's, today's, six after.
    EXPECT_EQ(column(0), (QStringList{u"240301000003"_s, u"240601000001"_s, u"241201000005"_s}));
    EXPECT_EQ(column(5), (QStringList{u"  -  "_s, u"10:00"_s, u"  -  "_s}));
    const QList<QByteArray> lines = statusLines();
    ASSERT_EQ(lines.size(), 3);
    for (const QByteArray& l : lines) {
        EXPECT_EQ(l.size(), 1187) << "1186 and CR";
        EXPECT_EQ(marks(l), "  -    -  ");
    }
    EXPECT_EQ(lists.table().rowColour(1), 0xDFE7F9u);
}

// A rebuild takes each booking afresh from its month file, with the IN and OUT marks of its RegNo. Two lines
// of one RegNo (two desks saving in the same second) each keep their own marks, rebuild after rebuild; a
// rebuild that changes nothing leaves the file unwritten. A torn status file is read as far as it makes sense
// and then written whole.
TEST_F(OnSiteTest, marksSurviveEveryRebuildByRegNo_twinsEachKeepTheirs) {
    writeLines(u"Record/2406.vrf"_s,
               {handLine({{1, "240601000001"}, {14, "Ann"}, {550, "Acme NEW"}, {slot(15), "0900"}}),
                handLine({{1, "240601000002"}, {14, "Twin"}, {slot(15), "0900"}}),
                handLine({{1, "240601000002"}, {14, "Twin2"}, {slot(15), "0930"}})});
    writeLines(statusFile, {handLine({{1, "240601000001"}, {550, "Acme"}, {991, "09:05"}, {996, "  -  "}}),
                            handLine({{1, "240601000002"}, {991, "09:10"}, {996, "11:00"}}),
                            handLine({{1, "240601000002"}, {991, "09:40"}, {996, "  -  "}})});
    ino_t written = 0;
    for (int rebuild = 0; rebuild < 2; ++rebuild) {
        ASSERT_EQ(lists.showDayStatus(), GridLists::Outcome::Listed);
        if (rebuild == 0)
            written = statusInode();
        EXPECT_EQ(statusInode(), written) << "the second rebuild changes nothing";
        const QList<QByteArray> lines = statusLines();
        ASSERT_EQ(lines.size(), 3);
        EXPECT_EQ(marks(lines[0]), "09:05  -  ");
        EXPECT_EQ(lines[0].mid(549, 8), "Acme NEW");
        EXPECT_EQ(marks(lines[1]), "09:1011:00");
        EXPECT_EQ(marks(lines[2]), "09:40  -  ");
        EXPECT_EQ(column(1), (QStringList{u"Ann"_s, u"Twin"_s, u"Twin2"_s}));
        EXPECT_EQ(column(6), (QStringList{u"09:05"_s, u"09:10"_s, u"09:40"_s}));
        EXPECT_EQ(column(7), (QStringList{u"  -  "_s, u"11:00"_s, u"  -  "_s}));
    }

    // A third line of the RegNo appears: it keeps the month file's columns, the two marked ones their marks.
    QByteArray month = desk.folder.read(u"Record/2406.vrf"_s);
    month += handLine({{1, "240601000002"}, {14, "Twin3"}, {slot(15), "1000"}}) + "\r\n";
    desk.folder.write(u"Record/2406.vrf"_s, month);
    ASSERT_EQ(lists.showDayStatus(), GridLists::Outcome::Listed);
    EXPECT_NE(statusInode(), written);
    QList<QByteArray> lines = statusLines();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(marks(lines[1]), "09:1011:00");
    EXPECT_EQ(marks(lines[2]), "09:40  -  ");
    EXPECT_EQ(marks(lines[3]), QByteArray(10, ' '));

    // Torn: one short line with a RegNo, garbage, no final line end.
    desk.folder.write(statusFile, handLine({{1, "240601000002"}}, 400) + "\r\n\x01\x02\r\n240601");
    ASSERT_EQ(lists.showDayStatus(), GridLists::Outcome::Listed);
    lines = statusLines();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[1].size(), 1187);
    EXPECT_EQ(marks(lines[1]), QByteArray(10, ' '));
}

TEST_P(OnSite, arrivalAndDepartureColours) {
    writeLines(
        u"Status/240615.vdf"_s,
        {handLine({{1, "240601000001"}, {991, "09:05"}, {996, "  -  "}}),   // on site
         handLine({{1, "240601000002"}, {991, "09:00"}, {996, "17:00"}}),   // gone
         handLine({{1, "240601000003"}, {991, "22:00"}, {996, "01:00"}}),   // past midnight: still on site
         handLine({{1, "240601000004"}, {991, "  -  "}, {996, "  -  "}})}); // not arrived
    const BuiltList built = OnSiteList::build(desk.state.files(), QDate(2024, 6, 15));
    ASSERT_TRUE(built.error.ok());
    const ListTable& t = built.table;
    ASSERT_EQ(t.listedCount(), 4);
    const std::pair<TextColour, TextColour> expected[] = {{TextColour::Grey, TextColour::Green},
                                                          {TextColour::Red, TextColour::Black},
                                                          {TextColour::Grey, TextColour::Green},
                                                          {TextColour::Black, TextColour::Black}};
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(t.textColour(r, 6), expected[r].first) << r;
        EXPECT_EQ(t.textColour(r, 7), expected[r].second) << r;
    }
}

// A rebuild that cannot read a month keeps the old status file and lists it; without a Status folder there
// is neither file nor list. Either is an error in the title, not a message.
TEST_F(OnSiteTest, aFailedRebuildKeepsTheStatusFileAsItWas) {
    writeLines(u"Record/2406.vrf"_s, {handLine({{1, "240601000001"}, {slot(15), "0900"}})});
    const QByteArray before =
        handLine({{1, "240601000009"}, {14, "Kept"}, {991, "08:00"}, {996, "  -  "}}) + "\r\n";
    desk.folder.write(statusFile, before);
    QDir().mkpath(desk.folder.path(u"Record/2404.vrf"_s)); // exists, cannot be read as a file
    EXPECT_EQ(lists.showDayStatus(), GridLists::Outcome::Failed);
    EXPECT_EQ(desk.state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Error: 2185 Write List ]");
    EXPECT_EQ(desk.folder.read(statusFile), before);
    EXPECT_EQ(column(1), QStringList{u"Kept"_s});

    QDir(desk.folder.path(u"Status"_s)).removeRecursively();
    EXPECT_EQ(lists.showDayStatus(), GridLists::Outcome::Failed);
    EXPECT_EQ(desk.state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Error: 2186 in Day List ]");
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    QDir().mkpath(desk.folder.path(u"Status"_s));
    EXPECT_EQ(OnSiteList::build(desk.state.files(), QDate(2024, 6, 15)).error.number,
              FileError::FileNotFound);
}

} // namespace
