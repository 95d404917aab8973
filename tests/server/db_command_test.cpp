// porvane-admin's db commands against a PostgreSQL server of the test's own: the tables made and guarded by
// their version, a data folder moved to the server and back byte for byte, damaged lines reported.
#include "admin_run.h"
#include "pg_test.h"
#include "server/server_connection.h"
#include "temp_data_folder.h"

#include <QDir>
#include <QSqlQuery>
#include <QVariant>
#include <gtest/gtest.h>
#include <memory>

using porvane::test::AdminRun;
using porvane::test::dataFiles;
using porvane::test::handLine;
using porvane::test::TempDataFolder;
using namespace Qt::Literals::StringLiterals;

namespace {

class DbCommand : public porvane::test::PgTest {
protected:
    AdminRun db(const TempDataFolder& folder, const QStringList& args) const {
        return porvane::test::runAdmin(folder, u"2026-02-10"_s, QStringList{u"--db"_s, m_db, u"db"_s} + args);
    }
};

} // namespace

TEST_F(DbCommand, initMakesTheTablesOnce_andRefusesNewerOnes) {
    TempDataFolder folder;
    AdminRun r = db(folder, {u"import"_s, folder.dataPath()});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.contains(u"not made yet: run porvane-admin --db CONNINFO db init"_s))
        << r.err.toStdString();

    r = db(folder, {u"init"_s});
    EXPECT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, u"tables made at version 2\n"_s);
    r = db(folder, {u"init"_s});
    EXPECT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, u"tables already at version 2\n"_s);

    // Tables of version 1, holding a month, are brought up: the month is then known as a file.
    porvane::ServerConnection server(m_db);
    ASSERT_FALSE(server.error()) << server.error().text.toStdString();
    for (const QString& sql : {u"DROP TABLE data_file"_s, u"UPDATE schema_version SET version = 1"_s,
                               u"INSERT INTO booking (yymm, seq, BookedTimes) "
                               "VALUES ('2602', 1, array_fill(''::text, ARRAY[31]))"_s})
        ASSERT_FALSE(server.exec(sql)) << sql.toStdString();
    r = db(folder, {u"init"_s});
    EXPECT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, u"tables brought from version 1 to version 2\n"_s);
    QSqlQuery files(server.database());
    ASSERT_TRUE(files.exec(u"SELECT tbl || ' ' || key FROM data_file"_s) && files.next());
    EXPECT_EQ(files.value(0).toString(), u"booking 2602"_s);
    EXPECT_FALSE(files.next());

    ASSERT_FALSE(server.exec(u"UPDATE schema_version SET version = 7"_s));
    for (const QStringList& args :
         {QStringList{u"init"_s}, QStringList{u"export"_s, folder.path(u"out"_s)}}) {
        r = db(folder, args);
        EXPECT_EQ(r.status, 1);
        EXPECT_TRUE(r.err.contains(u"tables are of version 7, newer than this program's 2"_s))
            << r.err.toStdString();
    }
    EXPECT_FALSE(QDir(folder.path(u"out"_s)).exists());
}

TEST_F(DbCommand, importThenExport_givesEveryFileBackByteForByte) {
    TempDataFolder folder;
    // January, a February of 28 days and March, with on-site lists of two days.
    AdminRun r = porvane::test::runAdmin(
        folder, u"2026-02-10"_s,
        {u"demo"_s, u"--from"_s, u"2026-01"_s, u"--months"_s, u"3"_s, u"--per-month"_s, u"150"_s});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    for (const QString& day : {u"2026-01-15"_s, u"2026-02-10"_s})
        ASSERT_EQ(porvane::test::runAdmin(folder, day, {u"onsite"_s}).status, 0);
    // Lines as another desk may have left them: Windows-1252 letters, line-break marks, a leading blank,
    // arrival marked, departure blank rather than "  -  ", a booked time no desk would write.
    const QByteArray odd = handLine({{1, "260203090000"},
                                     {14, " Zo\xEB"},
                                     {31, "M\xFCller \x80"},
                                     {293, "knee<$c>stick<$c>"},
                                     {991, "09:05"},
                                     {1060, "0900"},
                                     {1064, "9\"\\5"},
                                     {1060 + 4 * 27, "1730"}});
    folder.write(u"Record/2602.vrf"_s, folder.read(u"Record/2602.vrf"_s) + odd + "\r\n");
    folder.write(u"Status/260210.vdf"_s, folder.read(u"Status/260210.vdf"_s) + odd + "\r\n");
    const QStringList files = dataFiles(folder.dataPath());
    ASSERT_EQ(files, QStringList({u"Record/2601.vrf"_s, u"Record/2602.vrf"_s, u"Record/2603.vrf"_s,
                                  u"Status/260115.vdf"_s, u"Status/260210.vdf"_s}));

    ASSERT_EQ(db(folder, {u"init"_s}).status, 0);
    // A second import replaces the months and days of the first.
    for (int i = 0; i < 2; ++i) {
        r = db(folder, {u"import"_s, folder.dataPath()});
        EXPECT_EQ(r.status, 0) << r.err.toStdString();
        EXPECT_TRUE(r.err.isEmpty()) << r.err.toStdString();
    }
    const QString out = folder.path(u"out/"_s);
    r = db(folder, {u"export"_s, out});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(dataFiles(out), files);
    for (const QString& file : files)
        EXPECT_EQ(folder.read(u"out/"_s + file), folder.read(file)) << file.toStdString();
    EXPECT_TRUE(QDir(out + u"photo"_s).exists());

    // An export never writes over a folder's bookings.
    r = db(folder, {u"export"_s, out});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.contains(u"already holds Record/2601.vrf"_s)) << r.err.toStdString();
}

TEST_F(DbCommand, damagedLines_areReportedWithTheirPlace_andTheRestLoaded) {
    TempDataFolder folder;
    const QByteArray a = handLine({{1, "260201080000"}, {14, "Ann"}, {31, "Lee"}});
    const QByteArray b = handLine({{1, "260202080000"}, {14, "Bo"}, {31, "Nash"}});
    const QByteArray c = handLine({{1, "260203080000"}, {14, "Cy"}, {31, "Ode"}});
    folder.write(u"Record/2602.vrf"_s, a + "\r\n" + handLine({{1, "260201090000"}}, 1200) + "\r\n" + b +
                                           "\r\n" + handLine({{1, "260201100000"}}, 100) + "\r\n" +
                                           handLine({{1, "260201110000"}, {13, "X"}}) + "\r\n" + c + "\r\n");

    // A line far longer than any booking stops the reading of its file; the lines before it are kept.
    folder.write(u"Record/2603.vrf"_s, a + "\r\n" + QByteArray(70000, 'x') + "\r\n" + b + "\r\n");

    ASSERT_EQ(db(folder, {u"init"_s}).status, 0);
    AdminRun r = db(folder, {u"import"_s, folder.dataPath()});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, u"4 lines of 2 files loaded\n"_s);
    const QStringList err = r.err.split(u'\n');
    ASSERT_EQ(err.size(), 5) << r.err.toStdString();
    EXPECT_EQ(err[0],
              u"porvane-admin: Record/2602.vrf:2: not loaded: line is 1200 characters long, not 1186"_s);
    EXPECT_EQ(err[1],
              u"porvane-admin: Record/2602.vrf:4: not loaded: line is 100 characters long, not 1186"_s);
    EXPECT_EQ(
        err[2],
        u"porvane-admin: Record/2602.vrf:5: not loaded: text between the fields, where the line is blank"_s);
    EXPECT_TRUE(
        err[3].startsWith(u"porvane-admin: Record/2603.vrf:2: not loaded: Damaged file: line 2 of "_s));
    EXPECT_TRUE(err[3].endsWith(u"2603.vrf is longer than any booking; the rest of the file is not read"_s));

    r = db(folder, {u"export"_s, folder.path(u"out"_s)});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, u"4 lines written to 2 files\n"_s);
    EXPECT_EQ(folder.read(u"out/Record/2602.vrf"_s), a + "\r\n" + b + "\r\n" + c + "\r\n");
    EXPECT_EQ(folder.read(u"out/Record/2603.vrf"_s), a + "\r\n");
}
