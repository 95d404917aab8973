// The month and day status files on a PostgreSQL server of the test's own, through the same LineFiles the
// data folder implements: lines read back byte for byte, narrowed reads that never leave out a line the
// reader would take, each change one transaction told to the other desks, and a server killed mid-save met
// with an error. (Many writers at once: the four-desk test; a server that goes and comes back: the desk's
// server flow.)
#include "lists/record_search.h"
#include "pg_test.h"
#include "server/server_connection.h"
#include "server/server_files.h"
#include "server/server_schema.h"
#include "store/line_reader.h"
#include "store/record_line.h"
#include "temp_data_folder.h"

#include <QCoreApplication>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QThread>
#include <QVariant>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

using namespace porvane;
using porvane::test::crLf;
using porvane::test::handBooking;
using porvane::test::handLine;
using porvane::test::slot;
using namespace Qt::Literals::StringLiterals;

namespace {

LineNarrowing byRegNo(const QString& regNo) {
    LineNarrowing narrowing;
    narrowing.regNo = regNo;
    return narrowing;
}
LineNarrowing byDay(int day) {
    LineNarrowing narrowing;
    narrowing.bookedDay = day;
    return narrowing;
}
LineNarrowing bySearch(const QString& word, const QList<int>& fields) {
    LineNarrowing narrowing;
    narrowing.searchWord = word;
    narrowing.searchFields = fields;
    return narrowing;
}

const LineFileName kMarch = LineFileName::month(u"2603"_s);
const LineFileName kDay = {LineFileName::Kind::DayStatus, u"260310"_s};

class ServerFilesTest : public porvane::test::PgTest {
protected:
    void SetUp() override {
        PgTest::SetUp();
        if (m_db.isEmpty())
            return;
        ServerConnection server(m_db);
        ASSERT_FALSE(initSchema(server)) << "db init failed";
        QString error;
        m_files = openServerFiles(m_db, error);
        ASSERT_TRUE(m_files) << error.toStdString();
    }

    // The whole file as a reader gives it, lines ended by CR LF; empty with error set on failure.
    static QByteArray readAll(LineReader& reader, FileError* error = nullptr) {
        QByteArray bytes;
        QByteArrayView line;
        while (reader.next(line))
            bytes += line.toByteArray() + "\r\n";
        if (error)
            *error = reader.error();
        return bytes;
    }
    QByteArray readAll(const LineFileName& name, const LineNarrowing& narrowing = {}) {
        std::unique_ptr<LineReader> reader = m_files->read(name, narrowing);
        FileError error;
        const QByteArray bytes = readAll(*reader, &error);
        EXPECT_FALSE(error) << error.text.toStdString();
        return bytes;
    }

    FileError replace(const LineFileName& name, const QByteArray& bytes) {
        return m_files->change([&](LineFileChanges& changes) {
            return changes.replace(name, [&](const PieceWriter& write) { return write(bytes); });
        });
    }

    std::unique_ptr<LineFiles> m_files;
};

// Lines as desks leave them: Windows-1252 letters of both cases, line-break marks, a leading blank, pass
// dates, arrival marked and departure blank, booked times on a few days, text running across fields.
const QByteArray kAnn =
    handBooking("260301090000", "Ann", "Lee",
                {{525, "STORES"}, {550, "ACME  Ltd"}, {slot(3), "0900"}, {slot(10), "0930"}});
const QByteArray kZoe = handBooking("260302090000", " Zo\xCB", "M\xDCLLER \x8A",
                                    {{293, "knee<$c>stick<$c>"}, {550, "100% Ltd_x\\y"}, {991, "09:05"}});
const QByteArray kPass =
    handBooking("260303090000", "Pat", "Pass", {{936, "01-03-2026"}, {947, "31-03-2026"}});
const QByteArray kBo = handBooking("260304090000", "Bo", "Nash",
                                   {{80, "bo.n+a@(x).org"},
                                    {550, "Organisation-without-a-blank-in-it-runs-to-its-50c"},
                                    {601, "12"},
                                    {slot(10), "1400"},
                                    {slot(11), "0800"}});
const QByteArray kTimes = handBooking("260305090000", "Tim", "Times", {{991, "09:0517:30"}});

const QByteArray kMonth = crLf({kAnn, kZoe, kPass, kBo, kTimes});

// The lines of bytes the search takes, and those of the server's narrowed read.
QList<QByteArray> linesOf(const QByteArray& bytes) {
    QList<QByteArray> lines = bytes.split('\n');
    lines.removeLast();
    for (QByteArray& line : lines)
        line.chop(1);
    return lines;
}

} // namespace

TEST_F(ServerFilesTest, linesComeBackByteForByte_andEachNarrowingSendsEveryLineTheReaderTakes) {
    EXPECT_FALSE(m_files->exists(kMarch));
    std::unique_ptr<LineReader> missing = m_files->read(kMarch);
    EXPECT_EQ(missing->error().number, FileError::FileNotFound) << missing->error().text.toStdString();

    ASSERT_FALSE(replace(kMarch, kMonth));
    ASSERT_FALSE(replace(kDay, crLf({kZoe})));
    EXPECT_EQ(readAll(kMarch), kMonth);
    EXPECT_EQ(readAll(kDay), crLf({kZoe}));
    EXPECT_EQ(m_files->keys(LineFileName::Kind::Month), QStringList{u"2603"_s});
    EXPECT_EQ(m_files->keys(LineFileName::Kind::DayStatus), QStringList{u"260310"_s});
    EXPECT_EQ(m_files->where(), u"server "_s + m_db.section(u"dbname="_s, 1).section(u' ', 0, 0));

    // The list code reads rows again by their offset in the reader's descriptor, as in a file.
    std::unique_ptr<LineReader> reader = m_files->read(kMarch);
    QByteArrayView line;
    ASSERT_TRUE(reader->next(line) && reader->next(line));
    QByteArray again(kZoe.size(), '\0');
    EXPECT_EQ(::pread(reader->handle(), again.data(), size_t(again.size()), reader->lineOffset()),
              again.size());
    EXPECT_EQ(again, kZoe);

    // An emptied file is still there, empty, as in the folder.
    ASSERT_FALSE(replace(kDay, {}));
    EXPECT_TRUE(m_files->exists(kDay));
    EXPECT_EQ(readAll(kDay), QByteArray());

    EXPECT_EQ(readAll(kMarch, byRegNo(u"260302090000"_s)), crLf({kZoe}));
    // Day 10: those booked on it, and those with pass dates (the reader tests the range).
    EXPECT_EQ(readAll(kMarch, byDay(10)), crLf({kAnn, kPass, kBo}));

    // Every line the desk's search takes is sent, for the whole line and for the fields of a kind; case is
    // folded as the desk folds it, the LIKE marks are plain text, and a text across two fields is found.
    struct Search {
        SearchKind kind;
        QList<int> fields;
        QString text;
        int sent;
    };
    const QList<int> organisation = {
        int(Field::Organisation), int(Field::PartySize), int(Field::OrgAddress), int(Field::OrgDirectTel),
        int(Field::OrgPostcode),  int(Field::OrgAltTel), int(Field::OrgEmail)};
    const QList<int> name = {int(Field::FirstName), int(Field::LastName)};
    const QList<Search> searches = {
        {SearchKind::AnyText, {}, u"zoË"_s, 1},
        {SearchKind::AnyText, {}, u"müller š"_s, 1},
        {SearchKind::AnyText, {}, u"<$C>STICK"_s, 1},
        {SearchKind::AnyText, {}, u"0517"_s, 1},     // arrival and departure side by side
        {SearchKind::AnyText, {}, u"09000930"_s, 0}, // days 3 and 10 are not side by side
        {SearchKind::AnyText, {}, u"14000800"_s, 1},
        {SearchKind::AnyText, {}, u"acme  ltd"_s, 1},
        {SearchKind::AnyText, {}, u"N+A@(X"_s, 1},
        {SearchKind::Organisation, organisation, u"100%"_s, 1},
        {SearchKind::Organisation, organisation, u"ltd_x\\"_s, 1},
        {SearchKind::Organisation, organisation, u"%"_s, 1},
        {SearchKind::Organisation, organisation, u"its-50c 12"_s, 1},
        {SearchKind::Organisation, organisation, u"Lee"_s, 0},
        {SearchKind::Name, name, u"ann lee"_s, 1},
        {SearchKind::Name, name, u"ZOË MÜ"_s, 1},
        {SearchKind::Name, name, u"stores"_s, 0},
    };
    for (const Search& s : searches) {
        SCOPED_TRACE(s.text.toStdString());
        const SearchMatch match(s.kind, s.text);
        const QList<QByteArray> sent =
            linesOf(readAll(kMarch, bySearch(RecordSearch::findTextFor(s.kind, s.text), s.fields)));
        EXPECT_LT(sent.size(), 5) << "the search was not narrowed";
        int taken = 0;
        for (const QByteArray& stored : linesOf(kMonth))
            if (match.matches(RecordLine(stored))) {
                ++taken;
                EXPECT_TRUE(sent.contains(stored)) << "left out: " << stored.left(40).toStdString();
            }
        EXPECT_EQ(taken, s.sent);
    }
}

TEST_F(ServerFilesTest, changesAreOneTransaction_toldToTheOtherDesks_andKeepLineOrder) {
    ServerConnection listener(m_db);
    ASSERT_FALSE(listener.error());
    QStringList told;
    QSqlDriver* driver = listener.database().driver();
    ASSERT_TRUE(driver->subscribeToNotification(QLatin1StringView(kServerChangesChannel)));
    QObject::connect(driver, &QSqlDriver::notification,
                     [&](const QString&, QSqlDriver::NotificationSource, const QVariant& payload) {
                         told << payload.toString();
                     });
    const auto takeTold = [&] {
        // The notification comes through the listener's socket: a few turns of the event loop fetch it.
        for (int i = 0; i < 50 && told.isEmpty(); ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            QThread::msleep(5);
        }
        return std::exchange(told, {});
    };

    ASSERT_FALSE(m_files->change([&](LineFileChanges& changes) -> FileError {
        for (const QByteArray& line : {kAnn, kZoe, kPass})
            if (FileError e = changes.append(kMarch, line))
                return e;
        return changes.append(kDay, kAnn);
    }));
    EXPECT_EQ(takeTold(), QStringList{u"2603 260310"_s});
    EXPECT_EQ(readAll(kMarch), crLf({kAnn, kZoe, kPass}));

    // A rewrite: one line changed, one dropped, one grown into two; the others keep their places.
    const QByteArray annMarked = handBooking("260301090000", "Ann", "Lee", {{991, "10:00"}});
    bool changed = false;
    ASSERT_FALSE(m_files->change([&](LineFileChanges& changes) {
        return changes.rewrite(
            kMarch, {},
            [&](QByteArrayView stored, QByteArray& out) {
                if (stored == kAnn)
                    out = annMarked + "\r\n";
                else if (stored == kZoe)
                    out = kBo + "\r\n" + kTimes + "\r\n";
                else
                    return false;
                return true;
            },
            &changed);
    }));
    EXPECT_TRUE(changed);
    EXPECT_EQ(readAll(kMarch), crLf({annMarked, kBo, kTimes, kPass}));
    EXPECT_EQ(takeTold(), QStringList{u"2603"_s});
    // Appended behind the grown line, and a narrowed rewrite leaves the other lines alone.
    ASSERT_FALSE(m_files->change([&](LineFileChanges& changes) -> FileError {
        if (FileError e = changes.append(kMarch, kZoe))
            return e;
        return changes.rewrite(kMarch, byRegNo(u"260304090000"_s),
                               [&](QByteArrayView, QByteArray&) { return true; });
    }));
    EXPECT_EQ(readAll(kMarch), crLf({annMarked, kTimes, kPass, kZoe}));
    EXPECT_EQ(takeTold(), QStringList{u"2603"_s});

    // An edit that takes no line changes nothing and tells no one; nor does a replace with the same lines.
    ASSERT_FALSE(m_files->change([&](LineFileChanges& changes) -> FileError {
        if (FileError e = changes.rewrite(
                kMarch, {}, [](QByteArrayView, QByteArray&) { return false; }, &changed))
            return e;
        return changes.replace(kMarch, [&](const PieceWriter& write) {
            return write(crLf({annMarked, kTimes, kPass, kZoe}));
        });
    }));
    EXPECT_FALSE(changed);
    EXPECT_EQ(takeTold(), QStringList());

    // A failure part-way takes back what the change did before it; a missing file is FileNotFound.
    FileError failed = m_files->change([&](LineFileChanges& changes) -> FileError {
        if (FileError e =
                changes.replace(kMarch, [&](const PieceWriter& write) { return write(crLf({kBo})); }))
            return e;
        std::unique_ptr<LineReader> inside = changes.read(kMarch);
        EXPECT_EQ(readAll(*inside), crLf({kBo})); // the change sees its own writing
        return changes.removeAll({kDay, LineFileName::month(u"2604"_s)});
    });
    EXPECT_EQ(failed.number, FileError::FileNotFound) << failed.text.toStdString();
    EXPECT_TRUE(failed.text.contains(u"Record/2604.vrf"_s)) << failed.text.toStdString();
    EXPECT_EQ(readAll(kMarch), crLf({annMarked, kTimes, kPass, kZoe}));
    EXPECT_TRUE(m_files->exists(kDay));
    failed = m_files->change([&](LineFileChanges& changes) {
        return changes.rewrite(LineFileName::month(u"2604"_s), {},
                               [](QByteArrayView, QByteArray&) { return true; });
    });
    EXPECT_EQ(failed.number, FileError::FileNotFound);
    // A line the server's columns cannot give back the same is refused, naming why.
    failed = m_files->change([&](LineFileChanges& changes) { return changes.append(kMarch, "short"); });
    EXPECT_EQ(failed.number, FileError::ServerFailed);
    EXPECT_TRUE(failed.text.contains(u"line is 5 characters long, not 1186"_s)) << failed.text.toStdString();
    EXPECT_EQ(takeTold(), QStringList());

    ASSERT_FALSE(m_files->change([&](LineFileChanges& changes) {
        return changes.removeAll({kMarch, kDay});
    }));
    EXPECT_FALSE(m_files->exists(kMarch));
    EXPECT_EQ(m_files->keys(LineFileName::Kind::DayStatus), QStringList());
    EXPECT_EQ(takeTold(), QStringList{u"2603 260310"_s});
    EXPECT_EQ(changedFilesOf(u"2603 260310"_s).names, QList<LineFileName>({kMarch, kDay}));
    EXPECT_TRUE(changedFilesOf(u"*"_s).all);
}

TEST_F(ServerFilesTest, aServerKilledWhileADeskSaves_leavesEachSaveEitherKeptOrRefused) {
    // A desk saves one booking after another while the server is stopped as by a power cut: every save it
    // was told succeeded is there afterwards, every other one was refused with an error, and the one whose
    // answer was lost with the server is there or not, never twice or torn.
    std::atomic<int> saved{0};
    QList<QByteArray> kept;
    QList<FileError> refused;
    const auto booking = [](int i) {
        return handBooking(QByteArray::number(260301000000 + i).constData(), "Kill", "Test");
    };
    std::thread desk([&] {
        QString error;
        std::unique_ptr<LineFiles> files = openServerFiles(m_db, error);
        ASSERT_TRUE(files) << error.toStdString();
        for (int i = 0; refused.size() < 3 && i < 100000; ++i) {
            const FileError failed =
                files->change([&](LineFileChanges& changes) { return changes.append(kMarch, booking(i)); });
            if (failed)
                refused << failed;
            else
                kept << booking(i);
            saved = int(kept.size());
        }
    });
    while (saved < 20)
        QThread::msleep(1);
    ASSERT_TRUE(s_cluster->stop()) << s_cluster->problem().toStdString();
    desk.join();
    ASSERT_EQ(refused.size(), 3);
    for (const FileError& failed : refused) {
        EXPECT_EQ(failed.number, FileError::ServerUnreachable) << failed.text.toStdString();
        EXPECT_TRUE(failed.text.contains(u"could not be reached"_s)) << failed.text.toStdString();
    }

    ASSERT_TRUE(s_cluster->start()) << s_cluster->problem().toStdString();
    const QList<QByteArray> lines = linesOf(readAll(kMarch));
    // The saves told done, in order, and at most the one in flight behind them.
    ASSERT_GE(lines.size(), kept.size());
    EXPECT_LE(lines.size(), kept.size() + 1);
    EXPECT_EQ(lines.mid(0, kept.size()), kept);
    if (lines.size() > kept.size()) {
        EXPECT_EQ(lines.back(), booking(int(kept.size())));
    }
}
