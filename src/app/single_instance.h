#pragma once

#include <QLockFile>
#include <QString>

namespace porvane {

// One running desk per user on a machine: a lock file in the temporary folder, held while the desk runs.
// A lock left by a copy that died is taken over at once.
class SingleInstance {
public:
    explicit SingleInstance(const QString& lockPath = defaultLockPath());

    // True when this is the only copy; the lock is then held until this object goes.
    bool acquire();

    static QString defaultLockPath();

private:
    QLockFile m_lock;
};

} // namespace porvane
