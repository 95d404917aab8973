// Several desks on one data folder, played by child processes of this test program: each child runs one of
// the disabled StoreChild tests, chosen by --gtest_filter, with its orders in the environment. The crash loop
// and the lock take-over fork their writers instead, because five hundred kills need a writer that starts
// within a millisecond.
#include "server/server_connection.h"
#include "server/server_files.h"
#include "server/server_schema.h"
#include "store/data_lock.h"
#include "store/line_reader.h"
#include "store/record_line.h"
#include "store/record_store.h"
#include "store/safe_file.h"
#include "store_fixture.h"
#include "temp_pg_cluster.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>
#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

const char* const kDataVar = "PORVANE_TEST_CHILD_DATA";
const char* const kIndexVar = "PORVANE_TEST_CHILD_INDEX";
const char* const kCountVar = "PORVANE_TEST_CHILD_COUNT";
const char* const kDbVar = "PORVANE_TEST_CHILD_DB"; // a server's connection string, when the desks use one

const QString kOwnRegNo = u"240301090000"_s;
const QByteArray kOwnLine =
    handBooking("240301090000", "Own", "Booking", {{525, "STORES"}, {550, "Desk Test"}});

// A desk of its own in a child process, on the data folder the parent named.
struct ChildDesk {
    ScriptedPrompter prompter;
    FixedClock clock{QDateTime(QDate(2024, 3, 1), QTime(10, 0))};
    InstantPause pause;
    AppState state{prompter, clock, pause};
    RecordStore store = recordStoreOf(state);

    explicit ChildDesk(const QString& dataPath = qEnvironmentVariable(kDataVar),
                       const QString& db = qEnvironmentVariable(kDbVar)) {
        state.settings.DataPath = dataPath;
        state.dataFolder.lockWait = std::chrono::milliseconds(30000);
        if (!db.isEmpty())
            state.useFiles(openFiles(db));
    }
    static std::unique_ptr<LineFiles> openFiles(const QString& db) {
        QString error;
        std::unique_ptr<LineFiles> files = openServerFiles(db, error);
        if (!files)
            qFatal("cannot reach the test's server: %s", qPrintable(error));
        return files;
    }
    // Re-reads a booking the way a row click does.
    void open(const QString& regNo) {
        const std::unique_ptr<LineReader> reader =
            state.files().read(LineFileName::month(u"2403"_s), LineNarrowing::ofRegNo(regNo));
        for (QByteArrayView line; reader->next(line);)
            if (line.startsWith(regNo.toLatin1()))
                decodeRecordLine(RecordLine(line), state.record);
        state.record.MarkRecordSaved();
    }
};

// The month's lines on a server, each with CR LF.
FileError readMonth(LineFiles& files, QByteArray& bytes) {
    const std::unique_ptr<LineReader> reader = files.read(LineFileName::month(u"2403"_s));
    for (QByteArrayView line; reader->next(line);)
        bytes += line.toByteArray() + "\r\n";
    return reader->error();
}

// The identifier of booking i saved by desk `index`, from the clock that desk sets for it.
QByteArray savedRegNo(int index, int i) {
    return u"24031%1%2"_s.arg(index).arg(QTime(10, 0).addSecs(i).toString(u"hhmmss"_s)).toLatin1();
}

QProcess* startChild(const char* test, const QString& dataPath, const QString& db, int index, int count,
                     QObject* parent) {
    auto* child = new QProcess(parent);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QString::fromLatin1(kDataVar), dataPath);
    env.insert(QString::fromLatin1(kDbVar), db);
    env.insert(QString::fromLatin1(kIndexVar), QString::number(index));
    env.insert(QString::fromLatin1(kCountVar), QString::number(count));
    child->setProcessEnvironment(env);
    child->setProcessChannelMode(QProcess::MergedChannels);
    child->start(QCoreApplication::applicationFilePath(),
                 {u"--gtest_also_run_disabled_tests"_s,
                  u"--gtest_filter=StoreChild.DISABLED_"_s + QLatin1StringView(test)});
    return child;
}

// Forks a child that runs `work` (which must not return) and writes its reports to the pipe it is given.
pid_t forkWriter(int pipeEnds[2], const std::function<void(int report)>& work) {
    if (::pipe(pipeEnds) != 0)
        return -1;
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(pipeEnds[0]);
        work(pipeEnds[1]);
        ::_exit(6);
    }
    ::close(pipeEnds[1]);
    return child;
}

} // namespace

// --- the children

// Saves booking after booking and updates each once, at random moments; the update is the booking's last
// word.
TEST(StoreChild, DISABLED_saveThenUpdateMany) {
    ChildDesk desk;
    const int index = qEnvironmentVariableIntValue(kIndexVar);
    const int count = qEnvironmentVariableIntValue(kCountVar);
    for (int i = 0; i < count; ++i) {
        desk.state.record.ClearRecord();
        desk.state.record[Field::FirstName] = u"Desk%1"_s.arg(index);
        desk.state.record[Field::LastName] = u"Visit%1"_s.arg(i);
        desk.state.record[Field::Department] = u"STORES"_s;
        desk.state.record[Field::Organisation] = u"Desk Test"_s;
        desk.state.record[Field::CarReg] = u"saved"_s;
        desk.clock.set(QDateTime(QDate(2026, 1, 10 + index), QTime(10, 0).addSecs(i)));
        const StoreResult saved = desk.store.SaveNewRecord(desk.state.record, u"2403"_s);
        ASSERT_TRUE(saved.ok()) << saved.error.text.toStdString();
        QThread::usleep(QRandomGenerator::global()->bounded(2000));

        desk.open(saved.regNo);
        ASSERT_EQ(desk.state.record[Field::LastName], u"Visit%1"_s.arg(i)) << "own booking not found";
        desk.state.record[Field::CarReg] = u"U%1-%2"_s.arg(index).arg(i);
        const StoreResult updated = desk.store.UpdateRecord(desk.state.record, u"2403"_s, saved.regNo);
        ASSERT_TRUE(updated.ok()) << updated.error.text.toStdString();
        QThread::usleep(QRandomGenerator::global()->bounded(2000));
    }
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

// Reads the month without a lock, as the lists do, until the parent leaves a file named "stop". Every line
// with its line end is whole; only the line being appended at that moment may show as a tail without one.
// On a server each read sees one committed version of the month.
TEST(StoreChild, DISABLED_listUntilStopped) {
    const QString dataPath = qEnvironmentVariable(kDataVar);
    const QString db = qEnvironmentVariable(kDbVar);
    const std::unique_ptr<LineFiles> server = db.isEmpty() ? nullptr : ChildDesk::openFiles(db);
    qsizetype seen = 0;
    int reads = 0;
    while (!QFileInfo::exists(dataPath + u"stop"_s)) {
        QByteArray bytes;
        const FileError error =
            server ? readMonth(*server, bytes) : readWholeFile(dataPath + u"Record/2403.vrf"_s, bytes);
        ASSERT_TRUE(error.ok()) << error.text.toStdString();
        const QByteArrayList lines = bytes.split('\n');
        for (qsizetype i = 0; i + 1 < lines.size(); ++i)
            ASSERT_EQ(lines[i].size(), 1187) << "read " << reads << " line " << i + 1;
        ASSERT_LT(lines.last().size(), 1187) << "read " << reads;
        ASSERT_GE(lines.size() - 1, seen) << "bookings vanished between two reads";
        seen = lines.size() - 1;
        ++reads;
    }
    std::printf("reads %d\n", reads);
}

// --- the parents

namespace {

// Four desks save and update `count` bookings each, desk i on dataPaths[i % size] (one folder, or mounts of
// one share that play different PCs), while a fifth lists the month without a lock (on a local folder only:
// through sshfs a list that meets another desk's rename may find no file for that moment), or all of them on
// the server db names; every booking must be there once, with its last update, no line torn or doubled.
void fourDesksSaveAndUpdate(const QStringList& dataPaths, int count, const QString& db = {}) {
    const bool withLister = dataPaths.size() == 1;
    const QString first = dataPaths.first();
    const std::unique_ptr<LineFiles> server = db.isEmpty() ? nullptr : ChildDesk::openFiles(db);
    if (server) {
        ASSERT_FALSE(server->change([](LineFileChanges& changes) {
            return changes.replace(LineFileName::month(u"2403"_s),
                                   [](const PieceWriter& write) { return write(crLf({kOwnLine})); });
        }));
    } else {
        QFile seed(first + u"Record/2403.vrf"_s);
        ASSERT_TRUE(seed.open(QIODevice::WriteOnly | QIODevice::Truncate));
        seed.write(crLf({kOwnLine}));
    }
    QObject owner;
    QProcess* lister = withLister ? startChild("listUntilStopped", first, db, 0, 0, &owner) : nullptr;
    QList<QProcess*> desks;
    for (int index = 1; index <= 4; ++index)
        desks.append(
            startChild("saveThenUpdateMany", dataPaths[index % dataPaths.size()], db, index, count, &owner));
    for (QProcess* desk : desks) {
        ASSERT_TRUE(desk->waitForFinished(600000));
        EXPECT_EQ(desk->exitCode(), 0) << desk->readAll().toStdString();
    }
    if (lister) {
        QFile stop(first + u"stop"_s);
        ASSERT_TRUE(stop.open(QIODevice::WriteOnly));
        stop.close();
        ASSERT_TRUE(lister->waitForFinished(60000));
        const QByteArray listed = lister->readAll();
        EXPECT_EQ(lister->exitCode(), 0) << listed.toStdString();
        EXPECT_TRUE(listed.contains("reads ")) << listed.toStdString();
        QFile::remove(first + u"stop"_s);
    }

    QByteArray bytes;
    if (server) {
        ASSERT_FALSE(readMonth(*server, bytes));
    } else {
        QFile month(first + u"Record/2403.vrf"_s);
        ASSERT_TRUE(month.open(QIODevice::ReadOnly));
        bytes = month.readAll();
    }
    ASSERT_TRUE(bytes.endsWith("\r\n"));
    const QByteArrayList lines = bytes.chopped(1).split('\n');
    QHash<QByteArray, QByteArray> carRegOf;
    for (const QByteArray& line : lines) {
        ASSERT_EQ(line.size(), 1187) << "a torn or joined line";
        EXPECT_FALSE(carRegOf.contains(line.left(12)))
            << "booking " << line.left(12).toStdString() << " twice";
        carRegOf.insert(line.left(12), line.mid(68, 10).trimmed());
    }
    int lost = 0;
    int stale = 0;
    for (int index = 1; index <= 4; ++index)
        for (int i = 0; i < count; ++i) {
            const QByteArray regNo = savedRegNo(index, i);
            if (!carRegOf.contains(regNo))
                ++lost;
            else if (carRegOf.value(regNo) != u"U%1-%2"_s.arg(index).arg(i).toLatin1())
                ++stale;
        }
    EXPECT_EQ(lost, 0) << "bookings reported saved that are gone";
    EXPECT_EQ(stale, 0) << "updates reported done that are gone";
    EXPECT_EQ(lines.size(), 1 + 4 * count);
}

} // namespace

TEST(StoreProcesses, fourDesksSavingAndUpdating250BookingsEach_whileAFifthLists_loseAndTearNothing) {
    TempDataFolder folder;
    fourDesksSaveAndUpdate({folder.dataPath()}, 250);
}

// The same on a PostgreSQL server: the desks' changes follow one another in its transactions.
TEST(StoreProcesses, fourDesksOnAServer_whileAFifthLists_loseAndDoubleNothing) {
    if (TempPgCluster::serverBinaries().isEmpty())
        GTEST_SKIP() << "PostgreSQL's server is not installed (apt-get install postgresql): not tested";
    TempPgCluster cluster;
    const QString db = cluster.createDatabase();
    ASSERT_FALSE(db.isEmpty()) << cluster.problem().toStdString();
    {
        ServerConnection tables(db);
        ASSERT_FALSE(initSchema(tables)) << "db init failed";
    }
    TempDataFolder folder;
    fourDesksSaveAndUpdate({folder.dataPath()}, 250, db);
}

// Two mounts of one network share, playing two PCs: PORVANE_TEST_SHARE_MOUNTS names their data folders,
// "A:B" (scripts/share-test mounts them). Skipped without it.
TEST(StoreProcesses, fourDesksOnTwoMountsOfOneShare_loseNothing) {
    const QStringList mounts =
        qEnvironmentVariable("PORVANE_TEST_SHARE_MOUNTS").split(u':', Qt::SkipEmptyParts);
    if (mounts.size() != 2)
        GTEST_SKIP() << "no share: set PORVANE_TEST_SHARE_MOUNTS=A:B (see scripts/share-test)";
    const int count = qEnvironmentVariableIntValue("PORVANE_TEST_SHARE_COUNT");
    fourDesksSaveAndUpdate({mounts[0] + u'/', mounts[1] + u'/'}, count > 0 ? count : 50);
}

namespace {

// A writer in a forked child: saves a booking now and then, otherwise updates the own booking with an ever
// larger number, and reports on the pipe each save and update that returned success. Runs until killed.
[[noreturn]] void crashLoopWriter(const QString& dataPath, int round, int report) {
    ChildDesk desk(dataPath);
    auto say = [report](const QByteArray& text) {
        if (::write(report, text.constData(), size_t(text.size())) != text.size())
            ::_exit(3);
    };
    for (int k = 0;; ++k) {
        if (k == 0 && round % 3 == 0) {
            desk.state.record.ClearRecord();
            desk.state.record[Field::FirstName] = u"Round"_s;
            desk.state.record[Field::LastName] = QString::number(round);
            desk.state.record[Field::Department] = u"STORES"_s;
            desk.state.record[Field::Organisation] = u"Crash Test"_s;
            desk.clock.set(QDateTime(QDate(2026, 1, 1), QTime(0, 0)).addSecs(round * 60));
            const StoreResult saved = desk.store.SaveNewRecord(desk.state.record, u"2403"_s);
            if (!saved.ok())
                ::_exit(4);
            say("S " + saved.regNo.toLatin1() + '\n');
            continue;
        }
        decodeRecordLine(RecordLine(kOwnLine), desk.state.record);
        const int version = round * 100000 + k;
        desk.state.record[Field::CarReg] = QString::number(version);
        if (!desk.store.UpdateRecord(desk.state.record, u"2403"_s, kOwnRegNo).ok())
            ::_exit(5);
        say("U " + QByteArray::number(version) + '\n');
    }
}

} // namespace

TEST(StoreProcesses, fiveHundredKillsOfAWriterDuringSavesAndUpdates_alwaysLeaveOneCompleteRecentVersion) {
    TempDataFolder folder;
    QList<QByteArray> others;
    QByteArray start = kOwnLine + "\r\n";
    for (int i = 0; i < 50; ++i) {
        others.append(handBooking(
            (u"2403%1"_s.arg(i % 28 + 1, 2, 10, QChar(u'0')) + u"120000"_s).toLatin1().constData(), "Other",
            QByteArray::number(i).constData()));
        start += others.last() + "\r\n";
    }
    folder.write(u"Record/2403.vrf"_s, start);

    QSet<QByteArray> savedRegNos;
    qint64 lastUpdate = -1;
    for (int round = 0; round < 500; ++round) {
        int pipeEnds[2];
        const pid_t child =
            forkWriter(pipeEnds, [&](int report) { crashLoopWriter(folder.dataPath(), round, report); });
        ASSERT_GE(child, 0);
        QByteArray reports;
        char chunk[4096];
        if (round % 4 == 0) {
            // Every fourth writer is killed only after its first success, so that kills also land well
            // inside the work, whatever the load on the machine.
            pollfd ready{pipeEnds[0], POLLIN, 0};
            ASSERT_EQ(::poll(&ready, 1, 60000), 1) << "round " << round << ": the writer never got going";
            const ssize_t n = ::read(pipeEnds[0], chunk, sizeof chunk);
            ASSERT_GT(n, 0);
            reports.append(chunk, n);
        }
        QThread::usleep(1000 + QRandomGenerator::global()->bounded(30000));
        ::kill(child, SIGKILL); // no clean-up of any kind
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status))
            << "round " << round << ": the writer stopped by itself, status " << WEXITSTATUS(status);
        for (ssize_t n; (n = ::read(pipeEnds[0], chunk, sizeof chunk)) > 0;)
            reports.append(chunk, n);
        ::close(pipeEnds[0]);
        for (const QByteArray& report : reports.split('\n')) {
            if (report.startsWith("S "))
                savedRegNos.insert(report.mid(2));
            else if (report.startsWith("U "))
                lastUpdate = report.mid(2).toLongLong();
        }

        // A kill in the middle of an append can leave part of the line; the next desk to change the month
        // takes it back first, as here.
        ASSERT_FALSE(cutInterruptedAppend(folder.path(u"Record/2403.vrf"_s)));
        const QByteArray bytes = folder.read(u"Record/2403.vrf"_s);
        ASSERT_TRUE(bytes.endsWith("\r\n")) << "round " << round;
        const QByteArrayList lines = bytes.chopped(1).split('\n');
        for (const QByteArray& line : lines)
            ASSERT_EQ(line.size(), 1187)
                << "round " << round << ": a line that is not 1186 characters and CR LF";
        ASSERT_GE(lines.size(), 1 + others.size() + savedRegNos.size()) << "round " << round;
        for (int i = 0; i < others.size(); ++i)
            ASSERT_EQ(lines[i + 1], others[i] + '\r') << "round " << round << " line " << i + 2;
        QSet<QByteArray> appended;
        for (qsizetype i = 1 + others.size(); i < lines.size(); ++i)
            appended.insert(lines[i].left(12));
        ASSERT_EQ(appended.size(), lines.size() - 1 - others.size())
            << "round " << round << ": a doubled save";
        for (const QByteArray& regNo : savedRegNos)
            ASSERT_TRUE(appended.contains(regNo))
                << "round " << round << ": saved booking " << regNo.toStdString() << " is gone";
        bool isNumber = false;
        const qint64 stored = handColumns(lines[0], 69, 10).toLongLong(&isNumber);
        ASSERT_TRUE(isNumber || lastUpdate < 0) << "round " << round;
        ASSERT_GE(isNumber ? stored : -1, lastUpdate)
            << "round " << round << ": older than the last update reported";
        lastUpdate = std::max(lastUpdate, isNumber ? stored : -1);
    }
    EXPECT_GE(savedRegNos.size(), 500 / 12) << "every twelfth writer saves before it is killed";
    // Nothing a killed writer leaves behind may look like a month file to the lists.
    for (const QString& name : folderEntries(folder.path(u"Record"_s)))
        EXPECT_TRUE(name == u"2403.vrf" || !name.endsWith(u".vrf")) << name.toStdString();
}

TEST(StoreProcesses, lockOfAWriterKilledWhileHoldingIt_isTakenOverWithinTwoSecondsWithoutAQuestion) {
    TempDataFolder folder;
    folder.write(u"Record/2403.vrf"_s, crLf({kOwnLine}));
    int pipeEnds[2];
    const pid_t child = forkWriter(pipeEnds, [&](int report) {
        DataLock lock(folder.dataPath());
        const char held = lock.acquire() == DataLock::State::Held ? 'H' : 'F';
        if (::write(report, &held, 1) == 1)
            for (;;)
                ::pause();
    });
    ASSERT_GE(child, 0);
    pollfd ready{pipeEnds[0], POLLIN, 0};
    char held = 0;
    ASSERT_EQ(::poll(&ready, 1, 60000), 1);
    ASSERT_EQ(::read(pipeEnds[0], &held, 1), 1);
    ::close(pipeEnds[0]);
    EXPECT_EQ(held, 'H');
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    ASSERT_TRUE(QFileInfo::exists(DataLock::lockPath(folder.dataPath()))) << "the killed writer's lock";

    ChildDesk desk(folder.dataPath());
    desk.state.dataFolder.lockWait = std::chrono::milliseconds(3000);
    desk.open(kOwnRegNo);
    desk.state.record[Field::CarReg] = u"taken"_s;
    QElapsedTimer took;
    took.start();
    EXPECT_TRUE(desk.store.UpdateRecord(desk.state.record, u"2403"_s, kOwnRegNo).ok());
    EXPECT_LT(took.elapsed(), 2000);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
    EXPECT_EQ(handColumns(folder.read(u"Record/2403.vrf"_s), 69, 10), "taken");
}
