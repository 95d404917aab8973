#include "admin_run.h"
#include "temp_data_folder.h"

#include <gtest/gtest.h>

using porvane::test::AdminRun;
using porvane::test::handBooking;
using porvane::test::runAdmin;
using porvane::test::slot;
using porvane::test::TempDataFolder;
using namespace Qt::Literals::StringLiterals;

namespace {

// porvane-admin purge over the folder, with `input` on its stdin.
AdminRun purge(const TempDataFolder& folder, const QStringList& args, const QByteArray& input = {}) {
    return porvane::test::runAdmin(folder, u"2024-06-15"_s, QStringList{u"purge"_s} + args, input);
}

const QByteArray kMarch = handBooking("240301090000", "Ann", "Lee", {{slot(5), "0900"}}) + "\r\n" +
                          handBooking("240302090000", "Bob", "Ray", {{slot(6), "1000"}}) + "\r\n";

TEST(PurgeCommand, yesDeletesWithoutAsking_andPrintsTheDesksResultText) {
    TempDataFolder folder;
    folder.write(u"Record/2403.vrf"_s, kMarch);
    AdminRun r = purge(folder, {u"day"_s, u"2024-03-05"_s, u"--yes"_s});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, u"One Record Deleted for the 5 of MARCH 2024\n");
    EXPECT_FALSE(r.err.contains(u"Do you wish to proceed?")) << r.err.toStdString();
    EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), kMarch.mid(kMarch.indexOf('\n') + 1));

    // Nothing left to match is a result, not a failure, and writes nothing.
    r = purge(folder, {u"month"_s, u"2024-03"_s, u"NAME"_s, u"ann"_s, u"--yes"_s});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, u"No Records Deleted for MARCH 2024\n");
}

TEST(PurgeCommand, withoutYesAsksOnTheTerminal_andOnlyYDeletes) {
    TempDataFolder folder;
    folder.write(u"Record/2403.vrf"_s, kMarch);
    for (const QByteArray& answer : {QByteArray("\n"), QByteArray("n\n")}) {
        const AdminRun r = purge(folder, {u"month"_s, u"2024-03"_s}, answer);
        EXPECT_EQ(r.status, 1) << answer.constData();
        EXPECT_TRUE(r.err.contains(u"DELETE ALL BOOKINGS for the Entire MONTH of MARCH 2024.\nThat removes 2 "
                                   u"bookings.\nDo you wish to "
                                   u"proceed?\n[y/N]"))
            << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(u"nothing deleted"));
        EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), kMarch);
    }
    const AdminRun r = purge(folder, {u"month"_s, u"2024-03"_s}, "y\n");
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, u"All Bookings for MARCH 2024 Deleted\n");
    EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), QByteArray());
    // The emptied month is a month without bookings: its list shows no rows and says nothing.
    const AdminRun list =
        runAdmin(folder, u"2024-06-15"_s, {u"--csv"_s, u"list"_s, u"month"_s, u"2024-03"_s});
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.outLines().size(), 1) << list.out.toStdString();
    EXPECT_TRUE(list.err.isEmpty()) << list.err.toStdString();
}

TEST(PurgeCommand, wrongArgumentsAreUsageErrors_andFailuresExitOne) {
    TempDataFolder folder;
    folder.write(u"Record/2402.vrf"_s, kMarch);
    for (const QStringList& args : {QStringList{u"day"_s, u"2024-02-30"_s, u"--yes"_s},
                                    QStringList{u"month"_s, u"2024-02"_s, u"NAME"_s, u"  "_s, u"--yes"_s},
                                    QStringList{u"month"_s, u"2024-02"_s, u"SURNAME"_s, u"x"_s, u"--yes"_s},
                                    QStringList{u"week"_s, u"2024-02"_s}, QStringList{u"year"_s, u"24"_s}}) {
        const AdminRun r = purge(folder, args);
        EXPECT_EQ(r.status, 2) << args.join(u' ').toStdString();
        EXPECT_TRUE(r.err.contains(u"usage:"));
    }
    EXPECT_EQ(folder.read(u"Record/2402.vrf"_s), kMarch);

    const AdminRun missing = purge(folder, {u"day"_s, u"2024-04-02"_s, u"--yes"_s});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.contains(u"File not found")) << missing.err.toStdString();
    const AdminRun unstorable =
        purge(folder, {u"month"_s, u"2024-02"_s, u"NAME"_s, u"\u0141ukasz"_s, u"--yes"_s});
    EXPECT_EQ(unstorable.status, 1);
    EXPECT_TRUE(unstorable.err.contains(u"has a character that the booking files cannot hold"))
        << unstorable.err.toStdString();
    EXPECT_EQ(folder.read(u"Record/2402.vrf"_s), kMarch);
    const AdminRun tooLate = purge(folder, {u"year"_s, u"2031"_s, u"--yes"_s});
    EXPECT_EQ(tooLate.status, 1);
    EXPECT_TRUE(tooLate.err.contains(u"ATTENTION: No VALID Date selected - Try selecting again"));
}

} // namespace
