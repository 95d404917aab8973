// What other users, other desks, links and odd files in the data folder can do to the store: nothing is
// lost, nothing is written outside the folder, nothing hangs. Tests run as root; another user is played by a
// forked child that drops to nobody.
#include "../store/store_fixture.h"
#include "admin_run.h"
#include "child_process.h"
#include "store/data_lock.h"
#include "store/line_reader.h"

#include <QSysInfo>
#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// Answers every question about a busy lock with `answer`, noting the holders it was asked about.
struct NotingQuestion final : LockHolderQuestion {
    LockChoice answer = LockChoice::Cancel;
    QList<LockHolder> asked;
    LockChoice ask(const LockHolder& holder) override {
        asked.append(holder);
        return answer;
    }
};

// A process id that no process has: a child that has come and gone.
qint64 deadPid() {
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return child;
}

QByteArray lockText(qint64 pid, const QString& host) {
    return QByteArray::number(pid) + "\nporvane\n" + host.toUtf8() + '\n' + QSysInfo::machineUniqueId() +
           '\n' + QSysInfo::bootUniqueId() + '\n';
}

struct DataFolderTrust : ::testing::Test {
    TempDataFolder folder;
    QString month = folder.path(u"Record/2611.vrf"_s);
    const QByteArray kLine = handBooking("261105090000", "Ann", "Lee");

    // Lets nobody into the folder and its data, as a shared folder lets in the other desks' users.
    void shareWithNobody() {
        folder.openToOtherUsers();
        for (const char* sub : {"", "Record", "Status"})
            ::chmod(QFile::encodeName(folder.path(QString::fromLatin1(sub))).constData(), 0777);
    }
    LineEdit keepAll() const {
        return [](QByteArrayView, QByteArray&) {
            return false;
        };
    }
};

} // namespace

// Only a lock naming a process of this PC that is gone is taken over unasked. A live desk's lock, another
// PC's, one that makes no sense and one that cannot be read are waited for and then asked about; Cancel
// leaves them in place.
TEST_F(DataFolderTrust, onlyALockOfADeadProcessHereIsTakenUnasked_everyOtherIsWaitedForAndAsked) {
    const QString lockPath = DataLock::lockPath(folder.dataPath());
    const QString here = QSysInfo::machineHostName();
    const struct {
        const char* what;
        QByteArray text;
        bool known;
    } busy[] = {
        {"live process here", lockText(::getpid(), here), true},
        {"another PC", lockText(4242, u"reception-2"_s), true},
        {"garbage", "\x7f\x45LF this is no lock\n", false},
        {"empty", "", false},
        {"a pid without a host", "4242\nporvane\n", false},
    };
    for (const auto& c : busy) {
        SCOPED_TRACE(c.what);
        folder.write(u"porvane.lock"_s, c.text);
        DataLock lock(folder.dataPath(), std::chrono::milliseconds(300));
        NotingQuestion question;
        const FileError error = takeDataLock(lock, question);
        EXPECT_EQ(error.number, 70);
        ASSERT_EQ(question.asked.size(), 1);
        EXPECT_EQ(question.asked[0].known, c.known);
        EXPECT_EQ(folder.read(u"porvane.lock"_s), c.text) << "never broken silently";
    }

    // The operator's No breaks it; the change goes through and leaves no lock behind.
    {
        DataLock lock(folder.dataPath(), std::chrono::milliseconds(50));
        NotingQuestion question;
        question.answer = LockChoice::Break;
        EXPECT_FALSE(takeDataLock(lock, question));
        EXPECT_TRUE(lock.held());
    }
    EXPECT_FALSE(QFileInfo::exists(lockPath));

    folder.write(u"porvane.lock"_s, lockText(deadPid(), here));
    DataLock lock(folder.dataPath(), std::chrono::milliseconds(5000));
    NotingQuestion question;
    EXPECT_FALSE(takeDataLock(lock, question));
    EXPECT_TRUE(question.asked.isEmpty());
    EXPECT_TRUE(lock.held());
}

// Desk A runs with umask 077; desk B, another user, must still see that A holds the lock and wait, not
// take the lock for a torn one. A lock that B cannot read at all is asked about, not removed.
TEST_F(DataFolderTrust, anotherUsersLockIsReadAndWaitedFor_andOneThatCannotBeReadIsNotRemoved) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "playing another user needs root";
    shareWithNobody();
    const mode_t oldMask = ::umask(077);
    DataLock held(folder.dataPath());
    ASSERT_EQ(held.acquire(), DataLock::State::Held);
    ::umask(oldMask);
    const qint64 own = ::getpid();
    EXPECT_TRUE(inChildProcess(
        [&] {
            DataLock lock(folder.dataPath(), std::chrono::milliseconds(400));
            return lock.acquire() == DataLock::State::Busy && lock.holder().known && lock.holder().pid == own;
        },
        true));
    EXPECT_TRUE(held.held());
    held.release();

    // Mode 600 and root's: nobody cannot read it, though it names a process that is gone.
    folder.write(u"porvane.lock"_s, lockText(deadPid(), QSysInfo::machineHostName()));
    ::chmod(QFile::encodeName(DataLock::lockPath(folder.dataPath())).constData(), 0600);
    EXPECT_TRUE(inChildProcess(
        [&] {
            DataLock lock(folder.dataPath(), std::chrono::milliseconds(400));
            return lock.acquire() == DataLock::State::Busy && !lock.holder().known;
        },
        true));
    EXPECT_TRUE(folder.exists(u"porvane.lock"_s));
}

// In a folder shared through its group, a rewritten or replaced file keeps its group and mode, so the other
// desks' users can still read and write it.
TEST_F(DataFolderTrust, rewrittenAndReplacedFilesKeepTheirGroupAndPermissionBits) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "giving a file another group needs root";
    const QString status = folder.path(u"Status/261105.vdf"_s);
    folder.write(u"Record/2611.vrf"_s, kLine + "\r\n");
    folder.write(u"Status/261105.vdf"_s, kLine + "\r\n");
    for (const QString& path : {month, status}) {
        ASSERT_EQ(::chown(QFile::encodeName(path).constData(), uid_t(-1), 4321), 0);
        ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0664), 0);
    }
    const mode_t oldMask = ::umask(077);
    const FileError rewritten = rewriteLines(month, [](QByteArrayView line, QByteArray& out) {
        out.append(line.first(20));
        out.append(kLineEnd);
        return true;
    });
    const FileError replaced = replaceFile(status, "new\r\n");
    ::umask(oldMask);
    ASSERT_FALSE(rewritten) << rewritten.text.toStdString();
    ASSERT_FALSE(replaced) << replaced.text.toStdString();
    for (const QString& path : {month, status}) {
        struct stat st {};
        ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &st), 0);
        EXPECT_EQ(st.st_gid, 4321u) << path.toStdString();
        EXPECT_EQ(st.st_mode & 07777, 0664u) << path.toStdString();
    }
    EXPECT_EQ(folder.read(u"Record/2611.vrf"_s), kLine.left(20) + "\r\n");
}

// A month, a status file or the Record folder as a link out of the data folder: nothing is read, written,
// emptied or deleted through it.
TEST_F(DataFolderTrust, linksOutOfTheDataFolderAreNeverFollowed) {
    QTemporaryDir outside;
    const QString victim = outside.filePath(u"victim.txt"_s);
    const QByteArray kept = "someone else's file\n";
    QFile f(victim);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(kept);
    f.close();
    ASSERT_TRUE(QFile::link(victim, month));
    ASSERT_TRUE(QFile::link(victim, folder.path(u"Status/261105.vdf"_s)));

    EXPECT_EQ(appendLine(month, kLine).number, 75);
    EXPECT_EQ(rewriteLines(month, keepAll()).number, 75);
    EXPECT_EQ(replaceFile(month, {}).number, 75) << "a month purge";
    EXPECT_EQ(replaceFile(folder.path(u"Status/261105.vdf"_s), kLine).number, 75) << "the on-site rebuild";
    LineReader reader(month);
    QByteArrayView line;
    EXPECT_FALSE(reader.next(line));
    EXPECT_EQ(reader.error().number, 75);
    EXPECT_TRUE(reader.error().text.contains(u"Not a data file"_s)) << reader.error().text.toStdString();
    QByteArray bytes;
    EXPECT_EQ(readWholeFile(folder.path(u"Status/261105.vdf"_s), bytes).number, 75);

    // Record itself a link: a year purge removes nothing there.
    const QString outsideMonth = outside.filePath(u"2611.vrf"_s);
    QFile::copy(victim, outsideMonth);
    ASSERT_TRUE(QDir(folder.path(u"Record"_s)).removeRecursively());
    ASSERT_TRUE(QFile::link(outside.path(), folder.path(u"Record"_s)));
    EXPECT_EQ(removeAllOrNone({month}).number, 75);
    EXPECT_EQ(appendLine(month, kLine).number, 75);
    EXPECT_TRUE(QFileInfo::exists(outsideMonth));
    QFile v(victim);
    ASSERT_TRUE(v.open(QIODevice::ReadOnly));
    EXPECT_EQ(v.readAll(), kept);
}

// A pipe where a month or status file belongs is refused at once by every reader and writer: nothing waits
// on it, least of all while holding the lock.
TEST_F(DataFolderTrust, aPipeInPlaceOfADataFileIsRefusedAtOnce) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(month).constData(), 0666), 0);
    EXPECT_TRUE(inChildProcess([&] {
        LineReader reader(month);
        QByteArrayView line;
        QByteArray bytes;
        return !reader.next(line) && reader.error().number == 75 && appendLine(month, kLine).number == 75 &&
               rewriteLines(month, keepAll()).number == 75 && readWholeFile(month, bytes).number == 75 &&
               replaceFile(month, {}).number == 75;
    }));
}

// A line far longer than a booking is reported as damage, without reading it whole into memory, and no
// change is made to its file.
TEST_F(DataFolderTrust, aLineLongerThanAnyBookingIsReportedAsDamage_andTheFileIsLeftAsItIs) {
    const QByteArray huge = kLine + "\r\n" + QByteArray(8 * 1024 * 1024, 'x') + "\r\n" + kLine + "\r\n";
    folder.write(u"Record/2611.vrf"_s, huge);
    LineReader reader(month);
    QByteArrayView line;
    ASSERT_TRUE(reader.next(line));
    EXPECT_EQ(line, kLine);
    EXPECT_FALSE(reader.next(line));
    EXPECT_EQ(reader.error().text, u"Damaged file: line 2 of "_s + month + u" is longer than any booking"_s);
    EXPECT_EQ(rewriteLines(month, [](QByteArrayView, QByteArray&) { return true; }).number, 75);
    EXPECT_EQ(folder.read(u"Record/2611.vrf"_s), huge);
}

// The desk's own temporary files, left by a desk killed while it wrote, go with the next change.
TEST_F(DataFolderTrust, leftoverTemporaryFilesGoWithTheNextChange) {
    folder.write(u"Record/2611.vrf"_s, kLine + "\r\n");
    folder.write(u"Record/2611.vrf.k3x9q.porvane-tmp"_s, kLine + "\r\n" + kLine);
    folder.write(u"Status/261105.vdf.removing"_s, kLine);
    folder.write(u"Record/notes.txt"_s, "the site's own file");
    DataLock lock(folder.dataPath());
    ASSERT_EQ(lock.acquire(), DataLock::State::Held);
    EXPECT_EQ(folderEntries(folder.path(u"Record"_s)), (QStringList{u"2611.vrf"_s, u"notes.txt"_s}));
    EXPECT_TRUE(folderEntries(folder.path(u"Status"_s)).isEmpty());
}

// A find text that the files cannot hold would be searched for as "?" and find every name stored as "?":
// porvane-admin (through the desk's own search entry) refuses it and says why; a Western European letter is
// searched for as typed.
TEST_F(DataFolderTrust, aSearchTextTheFilesCannotHoldIsRefused_notSearchedForAsQuestionMarks) {
    folder.write(u"Record/2611.vrf"_s,
                 crLf({handBooking("261105090000", "????", "??????", {{slot(5), "0900"}}),
                       handBooking("261106090000", "Jos\xe9", "Lee", {{slot(6), "0900"}})}));
    const AdminRun refused = runAdmin(folder, u"2026-11-20"_s,
                                      {u"search"_s, u"2026-11"_s, u"NAME"_s, u"\u041E\u043B\u0435\u0433"_s});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.out.isEmpty()) << refused.out.toStdString();
    EXPECT_TRUE(refused.err.contains(u"Can't Search!  \"\u041E\u043B\u0435\u0433\" has a character that the "
                                     "visitor files cannot hold"_s))
        << refused.err.toStdString();

    const AdminRun found =
        runAdmin(folder, u"2026-11-20"_s, {u"--csv"_s, u"search"_s, u"2026-11"_s, u"NAME"_s, u"jos\u00E9"_s});
    EXPECT_EQ(found.status, 0) << found.err.toStdString();
    EXPECT_EQ(found.outLines().size(), 2) << found.out.toStdString(); // header and José
    EXPECT_TRUE(found.out.contains(u"261106090000,Jos\u00E9,Lee"_s)) << found.out.toStdString();
}
