// porvane-admin's commands with --db: the same bookings in a data folder and on a server of the test's own
// give the same output, command after command, changes included, and leave the same files behind.
#include "admin_run.h"
#include "pg_test.h"
#include "temp_data_folder.h"

#include <QDir>
#include <gtest/gtest.h>

using porvane::test::AdminRun;
using porvane::test::dataFiles;
using porvane::test::runAdmin;
using porvane::test::TempDataFolder;
using namespace Qt::Literals::StringLiterals;

namespace {

class AdminOverServer : public porvane::test::PgTest {};

const QString kToday = u"2026-02-10"_s;

} // namespace

TEST_F(AdminOverServer, everyCommandPrintsWhatItPrintsOverTheDataFolder_andChangesTheSameLines) {
    TempDataFolder folder;
    AdminRun r =
        runAdmin(folder, kToday,
                 {u"demo"_s, u"--from"_s, u"2026-01"_s, u"--months"_s, u"2"_s, u"--per-month"_s, u"150"_s});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    ASSERT_EQ(runAdmin(folder, kToday, {u"onsite"_s}).status, 0);
    // A line the desk's check faults (March's booking in February's file), which the server keeps as it is.
    folder.write(u"Record/2602.vrf"_s, folder.read(u"Record/2602.vrf"_s) +
                                           porvane::test::handBooking("260327090000", "Una", "Sound") +
                                           "\r\n");

    // The server's desk has an empty data folder of its own: its bookings are all on the server.
    TempDataFolder serverFolder;
    const auto onServer = [&](const QStringList& args, const QByteArray& input = {}) {
        return runAdmin(serverFolder, kToday, QStringList{u"--db"_s, m_db} + args, input);
    };
    ASSERT_EQ(onServer({u"db"_s, u"init"_s}).status, 0);
    r = onServer({u"db"_s, u"import"_s, folder.dataPath()});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();

    {
        // verify names the server's files as in a data folder.
        const AdminRun inFolder = runAdmin(folder, kToday, {u"verify"_s});
        const AdminRun server = onServer({u"verify"_s});
        EXPECT_EQ(inFolder.status, 1) << inFolder.out.toStdString() << inFolder.err.toStdString();
        EXPECT_EQ(server.status, 1);
        EXPECT_EQ(server.err, inFolder.err);
        EXPECT_EQ(server.out, inFolder.out.mid(folder.dataPath().size())) << server.out.toStdString();
    }

    const QString regNo =
        runAdmin(folder, kToday, {u"list"_s, u"day"_s, kToday}).outLines().value(1).left(12);
    ASSERT_EQ(regNo.size(), 12);
    const QList<QStringList> commands = {
        {u"list"_s, u"day"_s, kToday},
        {u"--csv"_s, u"list"_s, u"month"_s, u"2026-01"_s},
        {u"list"_s, u"month"_s, u"2026-03"_s}, // no such month
        {u"search"_s, u"2026-02"_s, u"NAME"_s, u"an"_s},
        {u"search"_s, u"2026-01..2026-02"_s, u"ANY TEXT"_s, u"ltd"_s},
        {u"search"_s, u"2026-02"_s, u"ORGANISATION"_s, u"a"_s},
        {u"search"_s, u"2026-02"_s, u"CATEGORY"_s, u"zzz"_s},
        {u"onsite"_s},
        {u"pass"_s, regNo, u"--count"_s, u"2"_s, u"--pdf"_s, folder.path(u"../pass.pdf"_s), u"--yes"_s},
        {u"list"_s, u"day"_s, kToday},
        {u"purge"_s, u"day"_s, u"2026-02-03"_s, u"--yes"_s},
        {u"purge"_s, u"month"_s, u"2026-01"_s, u"NAME"_s, u"a"_s, u"--yes"_s},
        {u"list"_s, u"month"_s, u"2026-01"_s},
        {u"rollcall"_s, u"--pdf"_s, folder.path(u"../roll.pdf"_s)},
    };
    for (const QStringList& args : commands) {
        SCOPED_TRACE(args.join(u' ').toStdString());
        const AdminRun inFolder = runAdmin(folder, kToday, args);
        const AdminRun server = onServer(args);
        EXPECT_EQ(server.status, inFolder.status) << server.err.toStdString();
        EXPECT_EQ(server.out, inFolder.out);
        EXPECT_EQ(server.err, inFolder.err);
        EXPECT_FALSE(inFolder.out.isEmpty() && inFolder.err.isEmpty());
    }

    // The same lines are left behind, byte for byte.
    const QString out = folder.path(u"../exported/"_s);
    ASSERT_EQ(onServer({u"db"_s, u"export"_s, out}).status, 0);
    EXPECT_EQ(dataFiles(out), dataFiles(folder.dataPath()));
    for (const QString& file : dataFiles(folder.dataPath()))
        EXPECT_EQ(folder.read(u"../exported/"_s + file), folder.read(file)) << file.toStdString();
}
