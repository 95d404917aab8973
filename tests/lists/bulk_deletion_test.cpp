#include "../store/store_fixture.h"
#include "lists/bulk_deletion.h"
#include "lists_fixture.h"
#include "store/data_lock.h"

#include <QLockFile>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;
using Status = BulkDeletion::Outcome::Status;

namespace {

// Slot of a day in a hand-laid line: column 1060 + (day - 1) * 4.
constexpr int slot(int day) {
    return 1060 + (day - 1) * 4;
}

// March 2024, laid out by hand: Ann comes on the 5th and the 20th, Bob on the 20th, Cy on the 5th; Dee's
// line is cut short before the booked times.
const QByteArray kAnn =
    handLine({{1, "240301090000"}, {14, "Ann"}, {31, "Lee"}, {slot(5), "0900"}, {slot(20), "1000"}});
const QByteArray kBob = handLine({{1, "240302090000"}, {14, "Bob"}, {31, "Ray"}, {slot(20), "1100"}});
const QByteArray kCy = handLine({{1, "240303090000"}, {14, "Cy"}, {31, "Day"}, {slot(5), "1430"}});
const QByteArray kDee = handLine({{1, "240304090000"}, {14, "Dee"}, {31, "Ng"}}, 900);

struct BulkDeletionTest : ListsFixture {
    BulkDeletion bulk{desk.state};

    BulkDeletionTest() { bulk.lockWait = std::chrono::milliseconds(100); }

    BulkDeletion::Outcome run(const char* day, const char* month, const char* year,
                              const char* kind = "ANY TEXT", const QString& text = {}) {
        BulkSelection selection{QString::fromLatin1(day), QString::fromLatin1(month),
                                QString::fromLatin1(year), QString::fromLatin1(kind), text};
        const BulkDeletion::Outcome outcome = bulk.run(selection);
        lastDay = selection.day;
        return outcome;
    }
    QByteArray march() const { return desk.folder.read(u"Record/2403.vrf"_s); }
    QString lastDay;
};

TEST_F(BulkDeletionTest, oneDay_dropsWholeBookingsWithATimeThatDay_andLeavesPhotosAndStatusFiles) {
    desk.folder.write(u"Record/2403.vrf"_s, crLf({kAnn, kBob, kCy, kDee}));
    desk.folder.write(u"photo/2403/240301090000_Ann_Lee.bmp"_s, "BM");
    desk.folder.write(u"Status/240305.vdf"_s, "status\r\n");

    desk.prompter.queue(Answer::Yes);
    const BulkDeletion::Outcome outcome = run("5", "MARCH", "2024");
    EXPECT_EQ(outcome.status, Status::Deleted);
    EXPECT_EQ(outcome.count, 2);
    ASSERT_EQ(desk.prompter.messages().size(), 1);
    const Prompter::Message& asked = desk.prompter.last();
    EXPECT_EQ(asked.text, u"DELETE ALL Bookings made on the 5 of MARCH 2024.\r\nDo you wish to proceed?");
    EXPECT_EQ(asked.title, u"Porvane 90");
    EXPECT_EQ(asked.buttons, Buttons::YesNo);
    // Ann goes whole, her 20th too; Dee's short line has no slot for the 5th and stays as it was.
    EXPECT_EQ(march(), crLf({kBob, kDee}));
    EXPECT_EQ(outcome.resultText, u"2 Records Deleted for the 5 of MARCH 2024");
    EXPECT_EQ(desk.state.mainTitle,
              u"Tarnwell Solutions Porvane 90  [ 2 Records Deleted for the 5 of MARCH 2024 ]");
    EXPECT_EQ(desk.folder.read(u"photo/2403/240301090000_Ann_Lee.bmp"_s), "BM");
    EXPECT_EQ(desk.folder.read(u"Status/240305.vdf"_s), "status\r\n");

    desk.prompter.queue(Answer::Yes);
    EXPECT_EQ(run("20", "MARCH", "2024").resultText, u"One Record Deleted for the 20 of MARCH 2024");
    EXPECT_EQ(march(), crLf({kDee}));
}

TEST_F(BulkDeletionTest, nothingMatched_saysSoAndDoesNotRewriteTheFile) {
    // LF-only lines: any rewrite would give them CR LF.
    const QByteArray lfOnly = kAnn + "\n" + kBob + "\n" + kDee;
    desk.folder.write(u"Record/2403.vrf"_s, lfOnly);

    desk.prompter.queue(Answer::Yes);
    BulkDeletion::Outcome outcome = run("7", "MARCH", "2024");
    EXPECT_EQ(outcome.status, Status::NothingMatched);
    EXPECT_EQ(outcome.resultText, u"No Records Deleted for the 7 of MARCH 2024");
    EXPECT_EQ(desk.state.mainTitle,
              u"Tarnwell Solutions Porvane 90  [ No Records Deleted for the 7 of MARCH 2024 ]");
    desk.prompter.queue(Answer::Yes);
    outcome = run("All Days", "MARCH", "2024", "NAME", u"Zed"_s);
    EXPECT_EQ(outcome.status, Status::NothingMatched);
    EXPECT_EQ(outcome.resultText, u"No Records Deleted for MARCH 2024");
    EXPECT_EQ(march(), lfOnly);
}

TEST_F(BulkDeletionTest, wholeMonth_leavesAnEmptyFile_soTheMonthListShowsNoRowsAndNoMessage) {
    desk.folder.write(u"Record/2403.vrf"_s, crLf({kAnn, kBob}));
    desk.folder.write(u"Record/2404.vrf"_s, crLf({kCy}));

    desk.prompter.queue(Answer::Yes);
    const BulkDeletion::Outcome outcome = run("All Days", "MARCH", "2024", "NAME", u"   "_s);
    EXPECT_EQ(outcome.status, Status::Deleted);
    EXPECT_EQ(desk.prompter.last().text,
              u"DELETE ALL BOOKINGS for the Entire MONTH of MARCH 2024.\r\nDo you wish to proceed?");
    EXPECT_EQ(desk.prompter.last().icon, Icon::Question);
    EXPECT_EQ(outcome.resultText, u"All Bookings for MARCH 2024 Deleted");
    EXPECT_TRUE(desk.folder.exists(u"Record/2403.vrf"_s));
    EXPECT_EQ(march(), QByteArray());
    EXPECT_EQ(desk.folder.read(u"Record/2404.vrf"_s), crLf({kCy}));

    desk.prompter.clear();
    select(0, "MARCH", "2024");
    EXPECT_EQ(lists.selectMonthRecord(dates), GridLists::Outcome::Listed);
    EXPECT_EQ(lists.table().listedCount(), 0);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

TEST_F(BulkDeletionTest, wholeYear_removesThatYearsMonthFilesOnly_thenTheListsSayNoFile) {
    for (const char* name : {"Record/2401.vrf", "Record/2412.vrf", "Record/2501.vrf", "Record/1412.vrf"})
        desk.folder.write(QString::fromLatin1(name), crLf({kAnn}));
    desk.folder.write(u"Status/240105.vdf"_s, "status\r\n");
    desk.folder.write(u"photo/2401/240101090000_Ann_Lee.bmp"_s, "BM");

    desk.prompter.queue(Answer::Yes);
    const BulkDeletion::Outcome outcome = run("12", "All Months", "2024");
    EXPECT_EQ(outcome.status, Status::Deleted);
    EXPECT_EQ(outcome.count, 2);
    EXPECT_EQ(desk.prompter.last().text,
              u"This will DELETE ALL BOOKINGS for the Entire YEAR of 2024.\r\nDo you wish to proceed?");
    EXPECT_EQ(outcome.resultText, u"All Bookings for the year 2024 Deleted");
    EXPECT_EQ(folderEntries(desk.folder.path(u"Record"_s)), (QStringList{u"1412.vrf"_s, u"2501.vrf"_s}));
    EXPECT_TRUE(desk.folder.exists(u"Status/240105.vdf"_s));
    EXPECT_TRUE(desk.folder.exists(u"photo/2401/240101090000_Ann_Lee.bmp"_s));

    desk.prompter.clear();
    select(0, "JANUARY", "2024");
    lists.selectMonthRecord(dates);
    ASSERT_EQ(desk.prompter.messages().size(), 1) << "the month list's own file-not-found message";
}

TEST_F(BulkDeletionTest, answeringNo_changesNothingInAnyScope) {
    const QByteArray before = crLf({kAnn, kBob, kCy});
    desk.folder.write(u"Record/2403.vrf"_s, before);
    desk.prompter.queue({Answer::No, Answer::No, Answer::No, Answer::No});
    EXPECT_EQ(run("All Days", "All Months", "2024").status, Status::Declined);
    EXPECT_EQ(run("All Days", "MARCH", "2024").status, Status::Declined);
    EXPECT_EQ(run("All Days", "MARCH", "2024", "NAME", u"Ann"_s).status, Status::Declined);
    EXPECT_EQ(run("5", "MARCH", "2024").status, Status::Declined);
    EXPECT_EQ(desk.prompter.messages().size(), 4);
    EXPECT_EQ(march(), before);
    EXPECT_EQ(desk.state.mainTitle, AppState::plainTitle());
}

TEST_F(BulkDeletionTest, findText_matchesTheKindsColumnsAsPlainTextInAnyCase) {
    const QByteArray literal = handLine({{1, "240310090000"}, {550, "A.B*C [Ltd]"}});
    const QByteArray lookalike = handLine({{1, "240311090000"}, {550, "AXBBBC Ltd"}});
    const QByteArray elsewhere = handLine({{1, "240312090000"}, {147, "a.b* street"}}); // home address
    const QByteArray host = handLine({{1, "240313090000"}, {758, "Dr A.B* Host"}});     // person visited
    desk.folder.write(u"Record/2403.vrf"_s, crLf({literal, lookalike, elsewhere, host}));

    desk.prompter.queue(Answer::Yes);
    BulkDeletion::Outcome outcome = run("All Days", "MARCH", "2024", "ORGANISATION", u" a.b*c [ltd "_s);
    EXPECT_EQ(desk.prompter.last().text,
              u"DELETE ALL BOOKINGS for the Month of MARCH 2024 with:\r\n"
              u"[ a.b*c [ltd ] in the ORGANISATION field\r\nDo you wish to proceed?");
    EXPECT_EQ(outcome.resultText, u"One Record Deleted for MARCH 2024");
    EXPECT_EQ(march(), crLf({lookalike, elsewhere, host}));

    desk.prompter.queue(Answer::Yes);
    outcome = run("All Days", "MARCH", "2024", "REPORTING TO", u"A.B*"_s);
    EXPECT_EQ(outcome.count, 1);
    EXPECT_EQ(march(), crLf({lookalike, elsewhere}));

    desk.prompter.queue(Answer::Yes);
    outcome = run("All Days", "MARCH", "2024", "ANY TEXT", u"A.B*"_s);
    EXPECT_TRUE(desk.prompter.last().text.contains(u"\r\n[ A.B* ] found in ANY field\r\n"));
    EXPECT_EQ(outcome.count, 1);
    EXPECT_EQ(march(), crLf({lookalike}));
}

TEST_F(BulkDeletionTest, monthLockedByAnotherDesk_isReportedAndNothingChanges) {
    const QByteArray before = crLf({kAnn, kBob});
    desk.folder.write(u"Record/2403.vrf"_s, before);
    desk.folder.write(u"Record/2401.vrf"_s, before);
    QLockFile other(DataLock::lockPath(desk.state.dataPath()));
    ASSERT_TRUE(other.tryLock(0));

    for (const char* month : {"MARCH", "All Months"}) {
        desk.prompter.clear();
        desk.prompter.queue({Answer::Yes, Answer::Cancel}); // proceed; then give up waiting for the lock
        const BulkDeletion::Outcome outcome = run("5", month, "2024");
        EXPECT_EQ(outcome.status, Status::Failed) << month;
        EXPECT_EQ(outcome.error.number, 70);
        EXPECT_TRUE(outcome.error.text.contains(QSysInfo::machineHostName()));
        ASSERT_EQ(desk.prompter.messages().size(), 2);
        EXPECT_TRUE(
            desk.prompter.last().text.startsWith(u"The data folder is being changed by the desk on "));
    }
    EXPECT_EQ(march(), before);
    EXPECT_EQ(desk.folder.read(u"Record/2401.vrf"_s), before);
    EXPECT_EQ(desk.state.mainTitle, AppState::plainTitle());
}

TEST_F(BulkDeletionTest, aFailedWrite_leavesTheMonthAsItWas) {
    const QByteArray before = crLf({kAnn, kBob, kCy});
    desk.folder.write(u"Record/2403.vrf"_s, before);
    FailingWritePath failing;
    failing.budget = 500;
    bulk.writePath = &failing;
    desk.prompter.queue(Answer::Yes);
    const BulkDeletion::Outcome outcome = run("5", "MARCH", "2024");
    EXPECT_EQ(outcome.status, Status::Failed);
    EXPECT_EQ(outcome.error.number, 61);
    EXPECT_EQ(march(), before);
    EXPECT_EQ(folderEntries(desk.folder.path(u"Record"_s)), QStringList{u"2403.vrf"_s});
}

TEST_F(BulkDeletionTest, removeAllOrNone_putsBackWhatItMovedWhenOneFileCannotGo) {
    desk.folder.write(u"Record/2401.vrf"_s, "a");
    desk.folder.write(u"Record/2403.vrf"_s, "c");
    const FileError error =
        removeAllOrNone({desk.folder.path(u"Record/2401.vrf"_s), desk.folder.path(u"Record/2402.vrf"_s),
                         desk.folder.path(u"Record/2403.vrf"_s)});
    EXPECT_EQ(error.number, 53);
    EXPECT_EQ(folderEntries(desk.folder.path(u"Record"_s)), (QStringList{u"2401.vrf"_s, u"2403.vrf"_s}));
    EXPECT_EQ(desk.folder.read(u"Record/2401.vrf"_s), "a");
}

TEST_F(BulkDeletionTest, dateBoxes_areCheckedWithTheDesksMessagesBeforeAnyQuestion) {
    desk.folder.write(u"Record/2404.vrf"_s, crLf({kAnn}));
    desk.prompter.queue({Answer::Ok, Answer::No});
    EXPECT_EQ(run("31", "APRIL", "2024").status, Status::Declined);
    EXPECT_EQ(lastDay, u"30") << "a day past the month's end is corrected, not refused";
    EXPECT_EQ(desk.prompter.texts(), (QStringList{u"ATTENTION: Only [ 30 ] Days in the Month Selected"_s,
                                                  u"DELETE ALL Bookings made on the 30 of APRIL 2024.\r\n"
                                                  u"Do you wish to proceed?"_s}));

    const std::tuple<const char*, const char*, const char*, const char*> refused[] = {
        {"x", "APRIL", "2024", "ATTENTION: The DAY entered is not valid - Try selecting again"},
        {"32", "APRIL", "2024", "ATTENTION: The DAY entered is not valid - Try selecting again"},
        {"All Days", "APRIL", "2030", "ATTENTION: No VALID Date selected - Try selecting again"},
        {"All Days", "All Months", "2009", "ATTENTION: No VALID Date selected - Try selecting again"},
        {"All Days", "SMARCH", "2024", "ATTENTION: No VALID Date selected - Try selecting again"},
        {"3", "APRIL", "2024x", "Porvane Can't Determine the Date you wish to Delete - Select again!"},
    };
    for (const auto& [day, month, year, message] : refused) {
        desk.prompter.clear();
        EXPECT_EQ(run(day, month, year).status, Status::Refused) << day << month << year;
        EXPECT_EQ(desk.prompter.texts(), QStringList{QString::fromLatin1(message)}) << day << month << year;
    }
    EXPECT_EQ(desk.folder.read(u"Record/2404.vrf"_s), crLf({kAnn}));
}

TEST_F(BulkDeletionTest, switchedOffOrReadOnly_deletesNothingAndAsksNothing) {
    desk.folder.write(u"Record/2403.vrf"_s, crLf({kAnn}));
    desk.state.settings.ckDisMultiD = u"1"_s;
    EXPECT_TRUE(bulk.switchedOff());
    EXPECT_EQ(run("5", "MARCH", "2024").status, Status::Refused);
    desk.state.settings.ckDisMultiD = u"0"_s;
    desk.state.settings.ckMakeSysRdO = u"1"_s;
    EXPECT_EQ(run("All Days", "All Months", "2024").status, Status::Refused);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    EXPECT_EQ(march(), crLf({kAnn}));
}

TEST(BulkDeletionBoxes, kindsUseReportingTo_andEachKindHasItsCaptions) {
    const QStringList kinds = BulkDeletion::kindItems();
    EXPECT_EQ(kinds.size(), 10);
    EXPECT_EQ(kinds.last(), u"REPORTING TO");
    EXPECT_FALSE(BulkDeletion::kindFromText(u"VISITING/REPORTING TO"_s));
    EXPECT_EQ(BulkDeletion::kindFromText(u" REPORTING TO "_s), SearchKind::VisitingReportingTo);
    EXPECT_EQ(BulkDeletion::captions(SearchKind::Name).text, u"Enter Name");
    EXPECT_EQ(BulkDeletion::captions(SearchKind::CarRegistration).kind, u"Find whole or part of a:");
    EXPECT_EQ(BulkDeletion::dayItems().first(), u"All Days");
    EXPECT_EQ(BulkDeletion::dayItems().last(), u"31");
    EXPECT_EQ(BulkDeletion::monthItems().first(), u"All Months");
    EXPECT_EQ(BulkDeletion::monthItems().at(3), u"MARCH");
}

} // namespace
