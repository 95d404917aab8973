#pragma once

#include "app/prompter.h"
#include "store/file_error.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLockFile>
#include <QString>
#include <chrono>

namespace porvane {

// Which desk holds the data folder's lock, as its lock file tells.
struct LockHolder {
    qint64 pid = 0;
    QString host;
    QString app;
};

// The one lock of the data folder, porvane.lock at its top, held only for the moment of each change. A lock
// left by a dead process on this PC is taken over at once; one held by another desk or a live process is
// waited for, then reported with its holder, never broken silently.
class DataLock {
    Q_DECLARE_TR_FUNCTIONS(DataLock)

public:
    static constexpr std::chrono::milliseconds kDefaultWait{10000};
    static constexpr std::chrono::milliseconds kTornLockSettle{200};
    enum class State { Held, Busy, Failed };

    explicit DataLock(const QString& dataPath, std::chrono::milliseconds wait = kDefaultWait);
    ~DataLock();
    DataLock(const DataLock&) = delete;
    DataLock& operator=(const DataLock&) = delete;

    static QString lockPath(const QString& dataPath);

    // Waits up to the wait time. Busy: holder() names the desk; Failed: error() says why (no folder ...).
    State acquire();
    void release();
    bool held() const { return m_file.isLocked(); }
    const LockHolder& holder() const { return m_holder; }
    const FileError& error() const { return m_error; }
    // Removes the lock file of the desk that holds it; only on the operator's word.
    bool breakLock();

private:
    bool readHolder();
    // Removes the lock file at path once it has been seen without a holder's name for kTornLockSettle.
    static bool removeIfTorn(const QString& path, QElapsedTimer& namelessSince);

    QString m_dataPath;
    QLockFile m_file;
    std::chrono::milliseconds m_wait;
    LockHolder m_holder;
    FileError m_error;
};

enum class LockChoice { Retry, Break, Cancel };

// Asks the operator what to do about a data folder that another desk holds: Yes retries, No breaks the
// lock, Cancel gives up.
LockChoice askAboutBusyLock(Prompter& prompter, const LockHolder& holder);

// Takes the lock, asking the operator for as long as another desk holds it. Returns no error once the lock is
// held; error 70 naming the holder when the operator cancels; the folder's error when no lock can be made.
FileError takeDataLock(DataLock& lock, Prompter& prompter);

} // namespace porvane
