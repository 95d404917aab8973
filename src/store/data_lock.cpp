#include "store/data_lock.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {
// Between two looks at a busy lock: a few milliseconds, varied so that waiting desks do not take turns in
// step.
constexpr int kPollStep = 8;

QString describe(const LockHolder& holder) {
    const QString host =
        holder.host.isEmpty() ? QCoreApplication::translate("DataLock", "an unknown PC") : holder.host;
    return QCoreApplication::translate("DataLock", "the desk on %1 (process %2)").arg(host).arg(holder.pid);
}
} // namespace

DataLock::DataLock(const QString& dataPath, std::chrono::milliseconds wait)
    : m_dataPath(dataPath)
    , m_file(lockPath(dataPath))
    , m_wait(wait) {
    // Age never makes a lock stale: only a dead owner on this PC does.
    m_file.setStaleLockTime(0);
}

DataLock::~DataLock() {
    release();
}

QString DataLock::lockPath(const QString& dataPath) {
    return QDir(dataPath).filePath(u"porvane.lock"_s);
}

DataLock::State DataLock::acquire() {
    m_error = {};
    m_holder = {};
    if (m_file.isLocked())
        return State::Held;
    // Not tryLock(wait): Qt sleeps 100 ms and then ever longer between its tries, while a desk holds the lock
    // only for the milliseconds of one change, so busy desks would queue for seconds.
    const QDeadlineTimer deadline(m_wait);
    // Qt removes a dead desk's lock under a second lock file, porvane.lock.rmlock; a desk killed while making
    // either file leaves it without a name, and Qt would wait 30 seconds for such an rmlock to age.
    QElapsedTimer namelessLock;
    QElapsedTimer namelessRmLock;
    while (!m_file.tryLock(0)) {
        if (m_file.error() != QLockFile::LockFailedError)
            break;
        // Both files are looked at on every pass, so that each one's nameless time keeps running.
        const bool lockRemoved = removeIfTorn(lockPath(m_dataPath), namelessLock);
        const bool rmLockRemoved = removeIfTorn(lockPath(m_dataPath) + u".rmlock"_s, namelessRmLock);
        if (lockRemoved || rmLockRemoved)
            continue;
        if (deadline.hasExpired() && !namelessLock.isValid() && !namelessRmLock.isValid())
            break;
        QThread::msleep(1 + QRandomGenerator::global()->bounded(kPollStep));
    }
    if (m_file.isLocked())
        return State::Held;
    switch (m_file.error()) {
    case QLockFile::LockFailedError:
        readHolder();
        m_error = {FileError::PermissionDenied,
                   tr("The data folder is in use by %1: %2").arg(describe(m_holder), lockPath(m_dataPath))};
        return State::Busy;
    case QLockFile::PermissionError:
    case QLockFile::UnknownError:
    case QLockFile::NoError:
        break;
    }
    if (!QFileInfo(m_dataPath).isDir())
        m_error = {FileError::PathNotFound,
                   tr("Path not found: %1").arg(QDir::toNativeSeparators(m_dataPath))};
    else
        m_error = {FileError::PermissionDenied,
                   tr("Permission denied: %1").arg(QDir::toNativeSeparators(lockPath(m_dataPath)))};
    return State::Failed;
}

void DataLock::release() {
    if (m_file.isLocked())
        m_file.unlock();
}

bool DataLock::readHolder() {
    m_holder = {};
    return m_file.getLockInfo(&m_holder.pid, &m_holder.host, &m_holder.app);
}

bool DataLock::removeIfTorn(const QString& path, QElapsedTimer& namelessSince) {
    // A live desk writes its name into a lock file the moment it makes it; a file still without a name a
    // moment later is what a desk killed in between left behind, and nobody would ever release it.
    qint64 pid = 0;
    QString host;
    QString app;
    if (!QFileInfo::exists(path) || QLockFile(path).getLockInfo(&pid, &host, &app)) {
        namelessSince.invalidate();
        return false;
    }
    if (!namelessSince.isValid()) {
        namelessSince.start();
        return false;
    }
    if (namelessSince.elapsed() < kTornLockSettle.count())
        return false;
    namelessSince.invalidate();
    return QFile::remove(path);
}

bool DataLock::breakLock() {
    // Not removeStaleLockFile(): that refuses while the holder's process still has the file open, which is
    // just the case of a hung desk.
    QFile::remove(lockPath(m_dataPath));
    return !QFileInfo::exists(lockPath(m_dataPath));
}

LockChoice askAboutBusyLock(Prompter& prompter, const LockHolder& holder) {
    const QString text = QCoreApplication::translate("DataLock", "The data folder is being changed by %1.")
                             .arg(describe(holder)) +
                         u"\r\n\r\n"_s +
                         QCoreApplication::translate(
                             "DataLock", "Yes: try again.\r\nNo: break the lock (only when that desk is "
                                         "no longer running).\r\nCancel: stop; nothing is saved.");
    switch (prompter.ask({u"Porvane 90"_s, text, Buttons::YesNoCancel, Icon::Exclamation})) {
    case Answer::Yes:
    case Answer::Ok:
        return LockChoice::Retry;
    case Answer::No:
        return LockChoice::Break;
    case Answer::Cancel:
        break;
    }
    return LockChoice::Cancel;
}

FileError takeDataLock(DataLock& lock, Prompter& prompter) {
    for (;;) {
        switch (lock.acquire()) {
        case DataLock::State::Held:
            return {};
        case DataLock::State::Failed:
            return lock.error();
        case DataLock::State::Busy:
            break;
        }
        switch (askAboutBusyLock(prompter, lock.holder())) {
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
