#include "store/data_lock.h"

#include "store/safe_file.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSysInfo>
#include <QThread>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

// Between two looks at a busy lock: a few milliseconds, varied so that waiting desks do not take turns in
// step.
constexpr int kPollStep = 8;

// What the lock file says: pid, program, host, machine and boot identifiers, one a line (the layout QLockFile
// writes, so a lock of either kind reads the same).
struct LockText {
    LockHolder holder;
    QByteArray machine;
    QByteArray boot;
};

// The last line, a number drawn for each taking of the lock, tells this lock file from any other, also where
// inode numbers cannot (a network share's client may give two names of one file two numbers).
QByteArray ownLockText() {
    return QByteArray::number(QCoreApplication::applicationPid()) + '\n' +
           QCoreApplication::applicationName().toUtf8() + '\n' + QSysInfo::machineHostName().toUtf8() + '\n' +
           QSysInfo::machineUniqueId() + '\n' + QSysInfo::bootUniqueId() + '\n' +
           QByteArray::number(QRandomGenerator::global()->generate64(), 36) + '\n';
}

LockText parse(const QByteArray& bytes) {
    const QList<QByteArray> lines = bytes.split('\n');
    LockText text;
    bool isNumber = false;
    text.holder.pid = lines.value(0).toLongLong(&isNumber);
    text.holder.app = QString::fromUtf8(lines.value(1));
    text.holder.host = QString::fromUtf8(lines.value(2));
    text.machine = lines.value(3);
    text.boot = lines.value(4);
    text.holder.known = isNumber && text.holder.pid > 0 && lines.size() >= 4 && !text.holder.host.isEmpty();
    return text;
}

// Reads an open lock file; a file that is not a small regular file reads as nothing.
QByteArray readLock(int fd) {
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode))
        return {};
    QByteArray bytes(1024, '\0');
    const ssize_t n = ::pread(fd, bytes.data(), size_t(bytes.size()), 0);
    bytes.resize(n > 0 ? n : 0);
    return bytes;
}

// A process on this PC that no longer runs: the only lock that may go without a question.
bool namesDeadProcessHere(const LockText& text) {
    if (!text.holder.known || text.holder.host != QSysInfo::machineHostName())
        return false;
    if (!text.machine.isEmpty() && text.machine != QSysInfo::machineUniqueId())
        return false;
    if (!text.boot.isEmpty() && text.boot != QSysInfo::bootUniqueId())
        return true; // made before this PC was last started
    return ::kill(pid_t(text.holder.pid), 0) != 0 && errno == ESRCH;
}

QByteArray encoded(const QString& path) {
    return QFile::encodeName(path);
}

// What the lock file at path says now; empty when there is none or it cannot be read.
QByteArray readLockAt(const QByteArray& path) {
    const int fd = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return {};
    const QByteArray bytes = readLock(fd);
    ::close(fd);
    return bytes;
}

// Makes the file holding text; the descriptor, or -1 with errno set.
int writeLockFile(const QByteArray& path, const QByteArray& text) {
    const int fd = ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (fd < 0)
        return -1;
    // Every desk must be able to read whose lock it is, whatever its user's umask.
    ::fchmod(fd, 0644);
    // Held as long as the lock: a desk that finds this file names a dead process removes it only once it gets
    // this lock too, so it can never remove a lock just made by a live desk.
    ::flock(fd, LOCK_EX | LOCK_NB);
    if (const int err = realWritePath().write(fd, text)) {
        ::unlink(path.constData());
        ::close(fd);
        errno = err;
        return -1;
    }
    return fd;
}

} // namespace

QString describeLockHolder(const LockHolder& holder) {
    if (!holder.known)
        return QCoreApplication::translate("DataLock", "a desk that the lock file does not name");
    return QCoreApplication::translate("DataLock", "the desk on %1 (process %2)")
        .arg(holder.host)
        .arg(holder.pid);
}

DataLock::DataLock(const QString& dataPath, std::chrono::milliseconds wait)
    : m_dataPath(dataPath)
    , m_wait(wait) {}

DataLock::~DataLock() {
    release();
}

QString DataLock::lockPath(const QString& dataPath) {
    return QDir(dataPath).filePath(u"porvane.lock"_s);
}

int DataLock::create() {
    // The lock file is written whole under a name of its own, then linked to porvane.lock in one step, so no
    // desk ever sees a lock without its holder's name. Not of the leftovers' naming: a desk holding the lock
    // clears those away, and this one is not made under it.
    const QByteArray path = encoded(lockPath(m_dataPath));
    const QByteArray temporary = path + '.' + QByteArray::number(QCoreApplication::applicationPid()) + '.' +
                                 QByteArray::number(QRandomGenerator::global()->generate(), 36);
    const QByteArray text = ownLockText();
    m_text = text;
    int fd = writeLockFile(temporary, text);
    if (fd < 0)
        return errno;
    const int linked = ::link(temporary.constData(), path.constData()) == 0 ? 0 : errno;
    ::unlink(temporary.constData());
    if (linked == EPERM || linked == EOPNOTSUPP || linked == ENOSYS) {
        // A file system without hard links: made in place, named the moment after.
        ::close(fd);
        fd = writeLockFile(path, text);
        if (fd < 0)
            return errno;
    } else if (linked != 0) {
        ::close(fd);
        return linked;
    }
    m_fd = fd;
    return 0;
}

DataLock::Look DataLock::look() {
    m_holder = {};
    const int fd =
        ::open(encoded(lockPath(m_dataPath)).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return errno == ENOENT ? Look::Gone : Look::Busy;
    m_seen = readLock(fd);
    ::close(fd);
    const LockText text = parse(m_seen);
    m_holder = text.holder;
    return namesDeadProcessHere(text) ? Look::Dead : Look::Busy;
}

bool DataLock::removeDead() {
    const QByteArray path = encoded(lockPath(m_dataPath));
    const int fd = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return errno == ENOENT;
    // Another desk may have removed the dead lock and made its own a moment ago: only the lock that was seen,
    // held by nobody, and still the one at its name, goes.
    const bool remove = ::flock(fd, LOCK_EX | LOCK_NB) == 0 && readLock(fd) == m_seen &&
                        readLockAt(path) == m_seen && ::unlink(path.constData()) == 0;
    ::close(fd);
    return remove;
}

DataLock::State DataLock::acquire() {
    m_error = {};
    m_holder = {};
    if (held())
        return State::Held;
    const QDeadlineTimer deadline(m_wait);
    for (;;) {
        const int err = create();
        if (err == 0) {
            for (const QString& folder : {u"Record"_s, u"Status"_s})
                removeLeftovers(QDir(m_dataPath).filePath(folder));
            return State::Held;
        }
        if (err != EEXIST) {
            if (!QFileInfo(m_dataPath).isDir())
                m_error = {FileError::PathNotFound,
                           tr("Path not found: %1").arg(QDir::toNativeSeparators(m_dataPath))};
            else
                m_error = FileError::fromErrno(err, lockPath(m_dataPath));
            return State::Failed;
        }
        switch (look()) {
        case Look::Gone:
            continue;
        case Look::Dead:
            if (removeDead())
                continue;
            break;
        case Look::Busy:
            break;
        }
        if (deadline.hasExpired())
            break;
        QThread::msleep(1 + QRandomGenerator::global()->bounded(kPollStep));
    }
    m_error = {
        FileError::PermissionDenied,
        tr("The data folder is in use by %1: %2").arg(describeLockHolder(m_holder), lockPath(m_dataPath))};
    return State::Busy;
}

void DataLock::release() {
    if (m_fd < 0)
        return;
    // Only our own lock file goes: after an operator broke it, the name may already be another desk's.
    const QByteArray path = encoded(lockPath(m_dataPath));
    if (readLockAt(path) == m_text)
        ::unlink(path.constData());
    ::close(m_fd);
    m_fd = -1;
}

bool DataLock::breakLock() {
    ::unlink(encoded(lockPath(m_dataPath)).constData());
    struct stat st {};
    return ::lstat(encoded(lockPath(m_dataPath)).constData(), &st) != 0;
}

FileError takeDataLock(DataLock& lock, LockHolderQuestion& question) {
    for (;;) {
        switch (lock.acquire()) {
        case DataLock::State::Held:
            return {};
        case DataLock::State::Failed:
            return lock.error();
        case DataLock::State::Busy:
            break;
        }
        switch (question.ask(lock.holder())) {
        case LockChoice::Retry:
            continue;
        case LockChoice::Break:
            lock.breakLock();
            continue;
        case LockChoice::Cancel:
            return lock.error();
        }
    }
}

} // namespace porvane
