#pragma once

#include "store/file_error.h"

#include <QCoreApplication>
#include <QString>
#include <chrono>

namespace porvane {

// Which desk holds the data folder's lock, as its lock file tells. known is false when the lock file cannot
// be read or makes no sense: then nobody can say whose it is.
struct LockHolder {
    qint64 pid = 0;
    QString host;
    QString app;
    bool known = false;
};

// The one lock of the data folder, porvane.lock at its top, held only for the moment of each change. A lock
// that names a process on this PC that no longer exists is taken over at once; any other (a live desk, a desk
// on another PC, a lock file that cannot be read or makes no sense) is waited for, then reported, never
// broken silently.
class DataLock {
    Q_DECLARE_TR_FUNCTIONS(DataLock)

public:
    static constexpr std::chrono::milliseconds kDefaultWait{10000};
    enum class State { Held, Busy, Failed };

    explicit DataLock(const QString& dataPath, std::chrono::milliseconds wait = kDefaultWait);
    ~DataLock();
    DataLock(const DataLock&) = delete;
    DataLock& operator=(const DataLock&) = delete;

    static QString lockPath(const QString& dataPath);

    // Waits up to the wait time. Busy: holder() names the desk; Failed: error() says why (no folder, disk
    // full ...). Once held, the desk's own temporary files left by a killed desk are cleared away.
    State acquire();
    void release();
    bool held() const { return m_fd >= 0; }
    const LockHolder& holder() const { return m_holder; }
    const FileError& error() const { return m_error; }
    // Removes the lock file of the desk that holds it; only on the operator's word.
    bool breakLock();

private:
    enum class Look { Gone, Dead, Busy };
    // 0 once the lock is made and held, else the errno (EEXIST: someone holds it).
    int create();
    Look look();
    bool removeDead();

    QString m_dataPath;
    std::chrono::milliseconds m_wait;
    int m_fd = -1;
    QByteArray m_text; // what our lock file says
    QByteArray m_seen; // what the lock file of another said when last looked at
    LockHolder m_holder;
    FileError m_error;
};

// "the desk on HOST (process PID)", or that the lock file does not say.
QString describeLockHolder(const LockHolder& holder);

enum class LockChoice { Retry, Break, Cancel };

// The question a change asks when the lock stays busy. The store declares it; the desk asks its operator.
class LockHolderQuestion {
public:
    virtual ~LockHolderQuestion() = default;
    virtual LockChoice ask(const LockHolder& holder) = 0;
};

// Takes the lock, asking for as long as another desk holds it. Returns no error once the lock is held; error
// 70 naming the holder when the question says cancel; the folder's error when no lock can be made.
FileError takeDataLock(DataLock& lock, LockHolderQuestion& question);

} // namespace porvane
