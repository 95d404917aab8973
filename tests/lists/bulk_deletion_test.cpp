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
const QByteArray kAnn = handBooking("240301090000", "Ann", "Lee", {{slot(5), "0900"}, {slot(20), "1000"}});
const QByteArray kBob = handBooking("240302090000", "Bob", "Ray", {{slot(20), "1100"}});
const QByteArray kCy = handBooking("240303090000", "Cy", "Day", {{slot(5), "1430"}});
const QByteArray kDee = handBooking("240304090000", "Dee", "Ng", {}, 900);

struct BulkDeletionFixture : ListsFixture {
    BulkDeletion bulk{desk.state};
    const QString photo = u"photo/2403/240301090000_Ann_Lee.bmp"_s;
    const QString status = u"Status/240305.vdf"_s;
    // A day's status line, which no deletion touches.
    const QByteArray statusBytes = crLf({handLine({{1, "240305090000"}, {991, "09:00"}})});

    BulkDeletionFixture() {
        desk.state.dataFolder.lockWait = std::chrono::milliseconds(100);
        desk.folder.write(photo, "BM");
    }
    void SetUp() override { putStoredFile(desk.state.files(), status, statusBytes); }
    // Runs the selection; `answers` go to the questions it asks.
    BulkDeletion::Outcome run(const char* day, const char* month, const char* year,
                              std::initializer_list<Answer> answers = {Answer::Yes},
                              const char* kind = "ANY TEXT", const QString& text = {}) {
        desk.prompter.clear();
        desk.prompter.queue(answers);
        BulkSelection selection{QString::fromLatin1(day), QString::fromLatin1(month),
                                QString::fromLatin1(year), QString::fromLatin1(kind), text};
        const BulkDeletion::Outcome outcome = bulk.run(selection);
        lastDay = selection.day;
        return outcome;
    }
    QByteArray march() { return storedFile(desk.state.files(), u"Record/2403.vrf"_s); }
    // No scope touches photos or day status files.
    void expectPhotoAndStatusKept() {
        EXPECT_EQ(desk.folder.read(photo), "BM");
        EXPECT_EQ(storedFile(desk.state.files(), status), statusBytes);
    }
    QString lastDay;
};
using BulkDeletionTest = BulkDeletionFixture;
using BulkDeletionEachStore = OverStores<BulkDeletionFixture>;
PORVANE_OVER_STORES(BulkDeletionEachStore);

// Nothing to delete: no question, the title says so, and no file is rewritten or removed.
TEST_F(BulkDeletionTest, nothingMatched_asksNothingAndRewritesNothing) {
    // LF-only lines: any rewrite would give them CR LF.
    const QByteArray lfOnly = kAnn + "\n" + kBob + "\n" + kDee;
    desk.folder.write(u"Record/2403.vrf"_s, lfOnly);
    desk.folder.write(u"Record/2404.vrf"_s, "");
    BulkDeletion::Outcome outcome = run("7", "MARCH", "2024", {});
    EXPECT_EQ(outcome.status, Status::NothingMatched);
    EXPECT_EQ(desk.state.mainTitle,
              u"Tarnwell Solutions Porvane 90  [ No Records Deleted for the 7 of MARCH 2024 ]");
    outcome = run("All Days", "MARCH", "2024", {}, "NAME", u"Zed"_s);
    EXPECT_EQ(outcome.resultText, u"No Records Deleted for MARCH 2024");
    EXPECT_EQ(run("All Days", "APRIL", "2024", {}).resultText, u"No Records Deleted for APRIL 2024");
    EXPECT_EQ(run("All Days", "All Months", "2023", {}).resultText, u"No Records Deleted for the year 2023");
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    EXPECT_EQ(march(), lfOnly);
    EXPECT_TRUE(desk.folder.exists(u"Record/2404.vrf"_s));
}

TEST_P(BulkDeletionEachStore, wholeYear_removesThatYearsMonthFilesOnly) {
    for (const char* name : {"Record/2401.vrf", "Record/2412.vrf", "Record/2501.vrf", "Record/1412.vrf"})
        put(QString::fromLatin1(name), crLf({kAnn}));
    const BulkDeletion::Outcome outcome = run("12", "All Months", "2024");
    EXPECT_EQ(outcome.count, 2);
    EXPECT_EQ(desk.prompter.last().text, u"This will DELETE ALL BOOKINGS for the Entire YEAR of 2024.\r\n"
                                         u"That removes 2 bookings.\r\nDo you wish to proceed?");
    EXPECT_EQ(outcome.resultText, u"All Bookings for the year 2024 Deleted");
    EXPECT_EQ(storedFiles(files()).keys(),
              (QStringList{u"Record/1412.vrf"_s, u"Record/2501.vrf"_s, u"Status/240305.vdf"_s}));
    expectPhotoAndStatusKept();
}

TEST_P(BulkDeletionEachStore, findText_matchesTheKindsColumnsOnly) {
    const QByteArray org = handLine({{1, "240310090000"}, {550, "A.B*C [Ltd]"}});
    const QByteArray elsewhere = handLine({{1, "240312090000"}, {147, "a.b* street"}}); // home address
    const QByteArray host = handLine({{1, "240313090000"}, {758, "Dr A.B* Host"}});     // person visited
    put(u"Record/2403.vrf"_s, crLf({org, elsewhere, host}));

    BulkDeletion::Outcome outcome =
        run("All Days", "MARCH", "2024", {Answer::Yes}, "ORGANISATION", u" a.b*"_s);
    EXPECT_EQ(desk.prompter.last().text, u"DELETE ALL BOOKINGS for the Month of MARCH 2024 with:\r\n"
                                         u"[ a.b* ] in the ORGANISATION field\r\nThat removes 1 booking.\r\n"
                                         u"Do you wish to proceed?");
    EXPECT_EQ(outcome.resultText, u"One Record Deleted for MARCH 2024");
    EXPECT_EQ(march(), crLf({elsewhere, host}));

    EXPECT_EQ(run("All Days", "MARCH", "2024", {Answer::Yes}, "REPORTING TO", u"A.B*"_s).count, 1);
    EXPECT_EQ(march(), crLf({elsewhere}));

    run("All Days", "MARCH", "2024", {Answer::Yes}, "ANY TEXT", u"A.B*"_s);
    EXPECT_TRUE(desk.prompter.last().text.contains(u"\r\n[ A.B* ] found in ANY field\r\n"));
    EXPECT_EQ(march(), QByteArray());
}

// Whatever stops a deletion (the operator's No, the switch, another desk's lock, a failed write) leaves
// every file and the title as they were.
TEST_F(BulkDeletionTest, aStoppedDeletionChangesNothing) {
    const QByteArray before = crLf({kAnn, kBob, kCy});
    desk.folder.write(u"Record/2403.vrf"_s, before);
    desk.folder.write(u"Record/2401.vrf"_s, before);
    const auto expectUnchanged = [&](const char* why) {
        EXPECT_EQ(march(), before) << why;
        EXPECT_EQ(desk.folder.read(u"Record/2401.vrf"_s), before) << why;
        EXPECT_EQ(folderEntries(desk.folder.path(u"Record"_s)), (QStringList{u"2401.vrf"_s, u"2403.vrf"_s}))
            << why;
        EXPECT_EQ(desk.state.mainTitle, AppState::plainTitle()) << why;
    };

    for (const auto& [day, month, kind, text] :
         {std::tuple{"All Days", "All Months", "ANY TEXT", ""},
          std::tuple{"All Days", "MARCH", "ANY TEXT", ""}, std::tuple{"All Days", "MARCH", "NAME", "Ann"},
          std::tuple{"5", "MARCH", "ANY TEXT", ""}}) {
        EXPECT_EQ(run(day, month, "2024", {Answer::No}, kind, QString::fromLatin1(text)).status,
                  Status::Declined)
            << day << month;
        EXPECT_EQ(desk.prompter.messages().size(), 1);
    }
    expectUnchanged("declined");

    desk.state.settings.ckDisMultiD = u"1"_s;
    EXPECT_EQ(run("5", "MARCH", "2024").status, Status::Refused);
    desk.state.settings.ckDisMultiD = u"0"_s;
    desk.state.settings.ckMakeSysRdO = u"1"_s;
    EXPECT_EQ(run("All Days", "All Months", "2024").status, Status::Refused);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    desk.state.settings.ckMakeSysRdO = u"0"_s;
    expectUnchanged("switched off");

    {
        QLockFile other(DataLock::lockPath(desk.state.dataPath()));
        ASSERT_TRUE(other.tryLock(0));
        for (const char* month : {"MARCH", "All Months"}) {
            // Proceed; then give up waiting for the lock.
            const BulkDeletion::Outcome outcome = run("5", month, "2024", {Answer::Yes, Answer::Cancel});
            EXPECT_EQ(outcome.status, Status::Failed) << month;
            EXPECT_EQ(outcome.error.number, 70);
            EXPECT_TRUE(outcome.error.text.contains(QSysInfo::machineHostName()));
            EXPECT_TRUE(
                desk.prompter.last().text.startsWith(u"The data folder is being changed by the desk on "));
        }
    }
    expectUnchanged("locked");

    FailingWritePath failing;
    failing.budget = 500;
    desk.state.dataFolder.writePath = &failing;
    const BulkDeletion::Outcome outcome = run("5", "MARCH", "2024");
    EXPECT_EQ(outcome.status, Status::Failed);
    EXPECT_EQ(outcome.error.number, 61);
    expectUnchanged("failed write");
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

TEST_P(BulkDeletionEachStore, dateBoxes_areCheckedWithTheDesksMessagesBeforeAnyQuestion) {
    const QByteArray april = crLf({handLine({{1, "240401090000"}, {slot(30), "0900"}})});
    put(u"Record/2404.vrf"_s, april);
    EXPECT_EQ(run("31", "APRIL", "2024", {Answer::Ok, Answer::No}).status, Status::Declined);
    EXPECT_EQ(lastDay, u"30") << "a day past the month's end is corrected, not refused";
    EXPECT_EQ(
        desk.prompter.texts(),
        (QStringList{u"ATTENTION: Only [ 30 ] Days in the Month Selected"_s,
                     u"DELETE ALL Bookings made on the 30 of APRIL 2024.\r\nThat removes 1 whole booking; it "
                     u"has no visit on another day.\r\nDo you wish to proceed?"_s}));

    const std::tuple<const char*, const char*, const char*, const char*> refused[] = {
        {"x", "APRIL", "2024", "ATTENTION: The DAY entered is not valid - Try selecting again"},
        {"32", "APRIL", "2024", "ATTENTION: The DAY entered is not valid - Try selecting again"},
        {"All Days", "APRIL", "2030", "ATTENTION: No VALID Date selected - Try selecting again"},
        {"All Days", "All Months", "2009", "ATTENTION: No VALID Date selected - Try selecting again"},
        {"3", "APRIL", "2024x", "Porvane Can't Determine the Date you wish to Delete - Select again!"},
    };
    for (const auto& [day, month, year, message] : refused) {
        EXPECT_EQ(run(day, month, year, {}).status, Status::Refused) << day << month << year;
        EXPECT_EQ(desk.prompter.texts(), QStringList{QString::fromLatin1(message)}) << day << month << year;
    }
    EXPECT_EQ(stored(u"Record/2404.vrf"_s), april);
}

} // namespace
