#include "store/data_lock.h"
#include "store/record_line.h"
#include "store/record_store.h"
#include "store_fixture.h"
#include "test_stores.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// Bookings of March 2024 laid out column by column.
const QByteArray kAnn = handBooking("240305090000", "Ann", "Lee",
                                    {{525, "ENGINEERING"},
                                     {550, "Acme Widgets"},
                                     {936, "05-03-2024"},
                                     {947, "06-03-2024"},
                                     {958, "2D"},
                                     {969, "05-03-2024 at 09:00"},
                                     {989, "1"},
                                     {991, "09:05"},
                                     {996, "  -  "},
                                     {slot(5), "0900"}});
const QByteArray kBob = handBooking("240305100000", "Bob", "Ray", {{550, "Ray & Sons"}});
const QByteArray kAnnTwin = handBooking("240305090000", "Annie", "Lee");

struct RecordStoreFixture : ::testing::Test {
    RecordStoreFixture()
        : desk(QDateTime(QDate(2026, 11, 14), QTime(10, 5, 7))) {
        desk.state.dataFolder.lockWait = std::chrono::milliseconds(50);
    }

    void typeNewBooking() {
        CurrentRecord& r = desk.state.record;
        r[Field::FirstName] = u"John"_s;
        r[Field::LastName] = u"Smith"_s;
        r[Field::Department] = u"ENGINEERING"_s;
        r[Field::Organisation] = u"Acme Widgets"_s;
        r.bookedTimes()[1] = u"09:30"_s;
    }
    // The booking as the editor holds it after a row click: read from its line and marked saved.
    void openBooking(const QByteArray& line) {
        decodeRecordLine(RecordLine(line), desk.state.record);
        desk.state.record.MarkRecordSaved();
    }
    QByteArray month() { return storedFile(desk.state.files(), u"Record/2403.vrf"_s); }
    bool monthExists() { return desk.state.files().exists(LineFileName::month(u"2403"_s)); }

    TestDesk desk;
    RecordStore store = recordStoreOf(desk.state);
};
using RecordStoreTest = RecordStoreFixture;
using RecordStoreEachStore = OverStores<RecordStoreFixture>;
PORVANE_OVER_STORES(RecordStoreEachStore);

// The month ends in a torn line, as a killed writer of another tool may leave it: the line is ended first.
TEST_F(RecordStoreTest, saveNew_makesRegNoFromClockAndBookingMonth_andAppendsOneCrLfLineAfterATornOne) {
    const QByteArray before = kAnn + "\r\n" + kBob.left(300);
    desk.folder.write(u"Record/2403.vrf"_s, before);
    typeNewBooking();
    const StoreResult result = store.SaveNewRecord(desk.state.record, u"2403"_s);
    ASSERT_TRUE(result.ok()) << result.error.text.toStdString();
    EXPECT_EQ(result.regNo, u"240314100507");
    EXPECT_EQ(
        month(),
        crLf({kAnn, kBob.left(300),
              handBooking(
                  "240314100507", "John", "Smith",
                  {{504, "VISITOR"}, {525, "ENGINEERING"}, {550, "Acme Widgets"}, {slot(2), "0930"}})}));
    EXPECT_TRUE(desk.prompter.messages().isEmpty()) << "the store never talks to the operator";
}

TEST_P(RecordStoreEachStore, saveNewAndUpdate_refuseWithTheStoreMessagesInOrder_andWriteNothing) {
    struct Case {
        const char16_t* first;
        const char16_t* last;
        const char16_t* department;
        const char16_t* organisation;
        const char16_t* message;
    };
    const Case cases[] = {
        {u"  ", u"Smith", u"-  Select  -", u"x", u"Can't SAVE without First Name/(Initial) AND Last Name"},
        {u"John", u"", u"ENGINEERING", u"Acme", u"Can't SAVE without First Name/(Initial) AND Last Name"},
        {u"John", u"Smith", u"-  Select  -", u"x", u"Can't SAVE:  No valid Department name has been entered"},
        {u"John", u"Smith", u" IT ", u"Acme", u"Can't SAVE:  No valid Department name has been entered"},
        {u"John", u"Smith", u"ENGINEERING", u" AB ",
         u"Can't SAVE:  No valid ORGANISATION name has been entered"},
    };
    for (const Case& c : cases) {
        desk.prompter.clear();
        CurrentRecord& r = desk.state.record;
        r[Field::FirstName] = QString::fromUtf16(c.first);
        r[Field::LastName] = QString::fromUtf16(c.last);
        r[Field::Department] = QString::fromUtf16(c.department);
        r[Field::Organisation] = QString::fromUtf16(c.organisation);
        r[Field::RegNo] = u"NEW Booking"_s;
        const StoreResult result = store.SaveNewRecord(desk.state.record, u"2403"_s);
        EXPECT_EQ(result.status, StoreResult::Status::Refused);
        EXPECT_EQ(result.error.text, QString::fromUtf16(c.message));
    }
    EXPECT_FALSE(monthExists());

    // An update checks the names only, and refuses the same way.
    put(u"Record/2403.vrf"_s, crLf({kAnn}));
    openBooking(kAnn);
    desk.state.record[Field::LastName] = u"  "_s;
    const StoreResult update = store.UpdateRecord(desk.state.record, u"2403"_s, u"240305090000"_s);
    EXPECT_EQ(update.status, StoreResult::Status::Refused);
    EXPECT_EQ(update.error.text, QString::fromUtf16(cases[0].message));
    EXPECT_EQ(month(), crLf({kAnn}));
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

TEST_F(RecordStoreTest,
       update_replacesEveryLineOfTheIdentifier_keepsOthers_checksOnlyNames_andSkipsAnUnknownOne) {
    // LF-only lines, a garbage line, a short line and no final line end, as other tools may leave them.
    desk.folder.write(u"Record/2403.vrf"_s,
                      kAnn + "\n" + kBob + "\n" + "garbage\n" + kAnnTwin + "\r\n" + "2403");
    openBooking(kAnn);
    desk.state.record[Field::CarReg] = u"AB12 CDE"_s;
    desk.state.record[Field::Department] = u"-  Select  -"_s; // refused for a new booking, not for an update
    const StoreResult result = store.UpdateRecord(desk.state.record, u"2403"_s, u" 240305090000 "_s);
    ASSERT_TRUE(result.ok()) << result.error.text.toStdString();

    QByteArray updated = kAnn;
    updated.replace(68, 8, "AB12 CDE");
    updated.replace(524, 12, "-  Select  -");
    updated.replace(990, 10, QByteArray(10, ' ')); // arrival and departure are never written by an update
    EXPECT_EQ(month(), crLf({updated, kBob, "garbage", updated, "2403"}));

    // An identifier with no line leaves the file as it is, and still reports the update.
    const QByteArray before = month();
    desk.state.record[Field::RegNo] = u"240305999999"_s;
    desk.state.record[Field::CarReg] = u"CHANGED"_s;
    EXPECT_EQ(store.UpdateRecord(desk.state.record, u"2403"_s, u"240305999999"_s).regNo, u"240305999999");
    EXPECT_EQ(month(), before);
}

// A pass print or revocation stores the pass and nothing else: fields typed but not saved stay unstored.
TEST_P(RecordStoreEachStore, updatePass_writesOnlyThePassColumnsOfEveryLineOfTheIdentifier) {
    if (GetParam() == StoreKind::Server)
        GTEST_SKIP()
            << "a server keeps whole lines of 1186 columns only: no short line can be laid out there";
    put(u"Record/2403.vrf"_s, crLf({kBob, kAnn, kAnnTwin.left(500)}));
    openBooking(kAnn);
    desk.state.record[Field::FirstName] = u"Renamed"_s;
    for (Field f : {Field::PassStart, Field::PassEnd, Field::PassPeriod, Field::PassIssued})
        desk.state.record[f].clear();
    ASSERT_TRUE(store.UpdatePass(desk.state.record, u"2403"_s, u"240305090000"_s).ok());
    const QList<QByteArray> lines = month().split('\n');
    QByteArray revoked = kAnn;
    revoked.replace(935, 52, QByteArray(52, ' '));
    EXPECT_EQ(lines[1], revoked + '\r') << "the name typed but not saved is not stored";
    EXPECT_EQ(lines[2].size(), 988) << "a short twin is widened to hold the pass";
    EXPECT_EQ(lines[2].mid(935, 52), QByteArray(52, ' '));
    EXPECT_EQ(lines[0], kBob + '\r');
}

TEST_P(RecordStoreEachStore, delete_removesEveryLineOfTheIdentifierAndItsPhotos) {
    put(u"Record/2403.vrf"_s, crLf({kAnn, kBob, kAnnTwin}));
    desk.folder.write(u"photo/2403/240305090000_Ann_Lee.bmp"_s, "BM");
    desk.folder.write(u"photo/2403/240305090000_Annie_Lee.bmp"_s, "BM"); // taken under an earlier name
    desk.folder.write(u"photo/2403/240305100000_Bob_Ray.bmp"_s, "BM");
    openBooking(kAnn);
    const StoreResult result = store.DeleteBooking(u"2403"_s, u"240305090000"_s, u"Ann"_s, u"Lee"_s);
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(month(), crLf({kBob}));
    EXPECT_EQ(folderEntries(desk.folder.path(u"photo/2403"_s)), QStringList{u"240305100000_Bob_Ray.bmp"_s});
}

TEST_P(RecordStoreEachStore, missingMonth_reportsFileNotFound_andMakesNoFile) {
    openBooking(kAnn);
    desk.state.record[Field::CarReg] = u"typed"_s;
    const StoreResult result = store.UpdateRecord(desk.state.record, u"2403"_s, u"240305090000"_s);
    EXPECT_EQ(result.status, StoreResult::Status::FileFailed);
    EXPECT_EQ(result.error.number, 53);
    EXPECT_EQ(store.DeleteBooking(u"2403"_s, u"240305090000"_s, u"Ann"_s, u"Lee"_s).error.number, 53);
    EXPECT_FALSE(monthExists());

    // A data folder that is gone is the desk flow's (dataFolderRemovedOrUnreadable...).
}

TEST_F(RecordStoreTest,
       writeFailingAfterAnyByteOrAtTheRename_leavesTheMonthByteIdentical_thenARetrySucceeds) {
    const QByteArray before = crLf({kAnn, kBob});
    desk.folder.write(u"Record/2403.vrf"_s, before);
    const QString monthPath = desk.folder.path(u"Record/2403.vrf"_s);
    FailingWritePath failing;
    desk.state.dataFolder.writePath = &failing;

    openBooking(kAnn);
    desk.state.record[Field::CarReg] = u"typed"_s;
    // The update rewrites the whole file: fail it after counts of bytes on either side of each line end.
    for (const qint64 budget : {0, 1, 1185, 1186, 1187, 1188, 1189, 2000, 2373, 2374, 2375}) {
        failing.budget = budget;
        failing.written = 0;
        const StoreResult result = store.UpdateRecord(desk.state.record, u"2403"_s, u"240305090000"_s);
        ASSERT_EQ(result.error.number, 61) << "disk full after " << budget << " bytes";
        ASSERT_EQ(result.error.text, u"Disk full: "_s + monthPath);
        ASSERT_EQ(failing.written, budget);
        ASSERT_EQ(month(), before) << "after " << budget << " bytes";
    }
    EXPECT_EQ(desk.state.record[Field::CarReg], u"typed");

    // The append of a new booking, the same.
    typeNewBooking();
    const qint64 lineBytes = kRecordLineLength + 2;
    for (const qint64 budget : {qint64(0), qint64(1), qint64(12), lineBytes - 2, lineBytes - 1}) {
        failing.budget = budget;
        const StoreResult result = store.SaveNewRecord(desk.state.record, u"2403"_s);
        ASSERT_EQ(result.error.number, 61);
        ASSERT_EQ(month(), before) << "a part-written append is taken back, after " << budget << " bytes";
    }

    failing.budget = -1;
    failing.failCommit = true;
    StoreResult result = store.DeleteBooking(u"2403"_s, u"240305090000"_s, u"Ann"_s, u"Lee"_s);
    EXPECT_EQ(result.error.number, 57) << "device I/O error at the rename";
    EXPECT_EQ(result.error.text, u"Device I/O error: "_s + monthPath);
    EXPECT_EQ(month(), before);
    EXPECT_EQ(folderEntries(desk.folder.path(u"Record"_s)), QStringList{u"2403.vrf"_s});

    // Once the disk takes the bytes again, the same changes go through.
    failing.failCommit = false;
    openBooking(kAnn);
    desk.state.record[Field::CarReg] = u"typed"_s;
    ASSERT_TRUE(store.UpdateRecord(desk.state.record, u"2403"_s, u"240305090000"_s).ok());
    EXPECT_EQ(handColumns(month(), 69, 10), "typed");
    typeNewBooking();
    ASSERT_TRUE(store.SaveNewRecord(desk.state.record, u"2403"_s).ok());
    EXPECT_EQ(month().count("\r\n"), 3);
}

// Another desk's lock is waited for and then put to the operator with its holder: Yes tries again, Cancel
// gives up, only No breaks it. (Which locks are asked about at all: DataFolderTrust.)
TEST_F(RecordStoreTest, lockOfAnotherDesk_isWaitedFor_namesItsHolder_andIsBrokenOnlyOnTheOperatorsNo) {
    const QByteArray lock = "4242\nporvane\nreception-2\n";
    desk.folder.write(u"Record/2403.vrf"_s, crLf({kAnn}));
    desk.folder.write(u"porvane.lock"_s, lock);
    openBooking(kAnn);
    desk.state.record[Field::CarReg] = u"typed"_s;

    for (const Answer answer : {Answer::Cancel, Answer::Yes}) {
        desk.prompter.clear();
        desk.prompter.queue({answer, Answer::Cancel});
        QElapsedTimer waited;
        waited.start();
        const StoreResult result = store.UpdateRecord(desk.state.record, u"2403"_s, u"240305090000"_s);
        EXPECT_GE(waited.elapsed(), 50) << "each try waits for the lock";
        EXPECT_EQ(result.error.number, 70);
        EXPECT_TRUE(result.error.text.contains(u"reception-2 (process 4242)"_s))
            << result.error.text.toStdString();
        ASSERT_EQ(desk.prompter.messages().size(), answer == Answer::Yes ? 2 : 1);
        EXPECT_EQ(desk.prompter.last().buttons, Buttons::YesNoCancel);
        EXPECT_TRUE(desk.prompter.last().text.startsWith(
            u"The data folder is being changed by the desk on reception-2 (process 4242)."_s))
            << desk.prompter.last().text.toStdString();
        EXPECT_EQ(desk.folder.read(u"porvane.lock"_s), lock) << "left alone without a yes to breaking it";
        EXPECT_EQ(month(), crLf({kAnn}));
        EXPECT_EQ(desk.state.record[Field::CarReg], u"typed");
    }

    desk.prompter.queue(Answer::No);
    const StoreResult result = store.UpdateRecord(desk.state.record, u"2403"_s, u"240305090000"_s);
    ASSERT_TRUE(result.ok()) << result.error.text.toStdString();
    EXPECT_EQ(handColumns(month(), 69, 10), "typed");
    EXPECT_FALSE(desk.folder.exists(u"porvane.lock"_s)) << "released after the change";
}

} // namespace
