#include "app/single_instance.h"

#include <QDir>
#include <QStandardPaths>

namespace porvane {

SingleInstance::SingleInstance(const QString& lockPath)
    : m_lock(lockPath) {
    // Only a dead owner makes the lock stale, never its age: a desk may run for months.
    m_lock.setStaleLockTime(0);
}

bool SingleInstance::acquire() {
    return m_lock.isLocked() || m_lock.tryLock(0);
}

QString SingleInstance::defaultLockPath() {
    // The temporary folder is per user on Linux desktops; the user name keeps a shared /tmp per user too.
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = qEnvironmentVariable("USERNAME");
    return QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
        .filePath(QStringLiteral("porvane90-%1.lock").arg(user));
}

} // namespace porvane
