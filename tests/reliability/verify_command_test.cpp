// porvane-admin verify over data folders laid out by hand, and the desk's lists over the same damaged files.
#include "admin_run.h"
#include "temp_data_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sys/stat.h>

using porvane::test::AdminRun;
using porvane::test::handBooking;
using porvane::test::handLine;
using porvane::test::slot;
using porvane::test::TempDataFolder;
using namespace Qt::Literals::StringLiterals;

namespace {

AdminRun admin(const TempDataFolder& folder, const QStringList& args) {
    return porvane::test::runAdmin(folder, u"2024-02-10"_s, args);
}

const QByteArray kSound = handBooking("240203090000", "Ada", "Quist",
                                      {{936, "03-02-2024"},
                                       {947, "04-02-2024"},
                                       {969, "03-02-2024 at 09:00"},
                                       {991, "09:05"},
                                       {996, "  -  "},
                                       {slot(29), "0930"}}); // 29 February 2024

} // namespace

TEST(VerifyCommand, soundFolder_printsNothingAndExitsZero) {
    TempDataFolder folder;
    folder.write(u"Record/2402.vrf"_s, kSound + "\r\n" + kSound + "\r\n");
    folder.write(u"Status/240210.vdf"_s, kSound + "\r\n");
    folder.write(u"Record/2402.vrf.tmp1234"_s, "left-over temporary file, not a month"); // ignored
    const AdminRun r = admin(folder, {u"verify"_s});
    EXPECT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
    EXPECT_TRUE(r.err.contains(u"2 files checked, 0 faults")) << r.err.toStdString();
}

TEST(VerifyCommand, damagedLines_areEachReportedAsFileLineWhat_andTheListsStillReadThem) {
    TempDataFolder folder;
    QByteArray shortLine = kSound.left(600);
    QByteArray badIds = handBooking("24021X090000", "Bad", "Id");
    QByteArray otherMonth = handBooking("240303090000", "Mar", "Ch");
    QByteArray badTimes = handBooking(
        "240205090000", "Cy", "Dee",
        {{936, "31-02-2024"}, {991, "25:00"}, {slot(1), "12x0"}, {slot(30), "1000"}}); // day 30 of February
    QByteArray withNul = kSound;
    withNul[40] = '\0';
    folder.write(u"Record/2402.vrf"_s, kSound + "\r\n" + shortLine + "\r\n" + badIds + "\n" + otherMonth +
                                           "\r\n" + badTimes + "\r\n" + withNul + "\r\n" + kSound.left(300));
    folder.write(u"Status/240210.vdf"_s, kSound + "\r\n" + handLine({{1, "241305000000"}}) + "\r\n");

    const AdminRun r = admin(folder, {u"verify"_s});
    EXPECT_EQ(r.status, 1);
    const QString month = folder.path(u"Record/2402.vrf"_s);
    const QString status = folder.path(u"Status/240210.vdf"_s);
    const QStringList expected{
        month + u":2: line is 600 characters long, not 1186"_s,
        month + u":3: line ends in LF, not CR LF"_s,
        month + u":3: RegNo \"24021X090000\" is not 12 digits"_s,
        month + u":4: RegNo 240303090000 belongs to month 2403, not 2402"_s,
        month + u":5: TimeOnSite \"25:00\" is not hh:mm"_s,
        month + u":5: PassStart \"31-02-2024\" is not a date dd-mm-yyyy"_s,
        month + u":5: booked time of day 1 \"12x0\" is not hhmm"_s,
        month + u":5: booked time on day 30, past the month's end"_s,
        month + u":6: control character 0 in column 41"_s,
        month + u":7: no line end: the file ends in the middle of this line"_s,
        month + u":7: line is 300 characters long, not 1186"_s,
        status + u":2: RegNo 241305000000 names month 13"_s,
    };
    EXPECT_EQ(r.outLines(), expected) << r.out.toStdString();
    EXPECT_TRUE(r.err.contains(u"2 files checked, 12 faults")) << r.err.toStdString();

    // The desk still lists them, showing what the columns hold.
    const AdminRun list = admin(folder, {u"--csv"_s, u"list"_s, u"month"_s, u"2024-02"_s});
    EXPECT_EQ(list.status, 0) << list.err.toStdString();
    EXPECT_TRUE(list.out.contains(u"240205090000,Cy,Dee,,01,12:x0,,,,31-02-2024,"_s))
        << list.out.toStdString();
    const AdminRun onsite = admin(folder, {u"onsite"_s});
    EXPECT_EQ(onsite.status, 0) << onsite.err.toStdString();
}

TEST(VerifyCommand, missingDataFolder_isAnError) {
    TempDataFolder folder;
    ASSERT_TRUE(QDir(folder.dataPath()).removeRecursively());
    const AdminRun r = admin(folder, {u"verify"_s});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.contains(u"no data folder")) << r.err.toStdString();
}

// Lines ended by a lone CR, control characters in the columns, a pipe in place of a month, a line far longer
// than a booking and a desk's left-over temporary file: verify reports each, escaped, and hangs on nothing;
// the lists read the CR-ended month line by line.
TEST(VerifyCommand, oddFilesAndText_areReportedEscapedWithoutHanging_andCrEndedLinesAreLines) {
    TempDataFolder folder;
    QByteArray crMonth;
    for (int day = 1; day <= 6; ++day) {
        const QByteArray regNo = "2402" + QByteArray::number(day).rightJustified(2, '0') + "090000";
        crMonth += handBooking(regNo.constData(), "Ewan", "Wright", {{slot(day), "0900"}}) + '\r';
    }
    folder.write(u"Record/2402.vrf"_s, crMonth);
    QByteArray controls = kSound;
    controls.replace(0, 12, "24\x1b[2J\a\t0900");
    folder.write(u"Status/240210.vdf"_s, controls + "\r\n");
    folder.write(u"Record/2403.vrf"_s, QByteArray(200 * 1024, 'x') + "\r\n");
    folder.write(u"Record/2402.vrf.q7k2.porvane-tmp"_s, crMonth);
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.path(u"Record/2404.vrf"_s)).constData(), 0666), 0);

    const AdminRun r = admin(folder, {u"verify"_s});
    EXPECT_EQ(r.status, 1) << r.err.toStdString();
    const QString record = folder.path(u"Record/"_s);
    QStringList expected;
    for (int line = 1; line <= 6; ++line)
        expected << record + u"2402.vrf:%1: line ends in CR, not CR LF"_s.arg(line);
    expected << record + u"2402.vrf.q7k2.porvane-tmp:0: left over by a desk stopped while it wrote; the next "
                         "change removes it"_s;
    expected << record + u"2403.vrf:0: Damaged file: line 1 of "_s + record +
                    u"2403.vrf is longer than any booking"_s
             << record + u"2404.vrf:0: Not a data file (a link, folder, pipe or device): "_s + record +
                    u"2404.vrf"_s
             << folder.path(u"Status/240210.vdf"_s) + u":1: control character 27 in column 3"_s
             << folder.path(u"Status/240210.vdf"_s) +
                    u":1: RegNo \"24\\x1B[2J\\x07\\x090900\" is not 12 digits"_s;
    EXPECT_EQ(r.outLines(), expected) << r.out.toStdString();
    EXPECT_FALSE(r.out.contains(u'\x1b')) << "no raw control character reaches the terminal";

    const AdminRun list = admin(folder, {u"--csv"_s, u"list"_s, u"month"_s, u"2024-02"_s});
    EXPECT_EQ(list.status, 0) << list.err.toStdString();
    EXPECT_EQ(list.out.count(u"Ewan"_s), 6) << list.out.toStdString();
}
