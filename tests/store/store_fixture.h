#pragma once

#include "store/safe_file.h"
#include "test_desk.h"

#include <QByteArrayList>
#include <QDir>
#include <QFileInfo>
#include <cerrno>

namespace porvane::test {

// A write path that lets the first `budget` bytes through and then fails like a full disk, or fails at
// the rename.
class FailingWritePath final : public WritePath {
public:
    qint64 budget = -1; // -1: no limit
    bool failCommit = false;
    int written = 0;

    int write(int fd, QByteArrayView data) override {
        if (budget < 0)
            return WritePath::write(fd, data);
        const qint64 n = std::min<qint64>(budget, data.size());
        budget -= n;
        if (const int err = WritePath::write(fd, data.first(n)))
            return err;
        written += int(n);
        return n < data.size() ? ENOSPC : 0;
    }
    // The lines kept as they were count as written too.
    int copy(int from, qint64 offset, int fd, qint64 length) override {
        return copyThroughWrite(from, offset, fd, length);
    }
    int commit(int fd) override { return failCommit ? EIO : WritePath::commit(fd); }
};

// Files in a folder other than the ones expected: left-over temporary files.
inline QStringList folderEntries(const QString& path) {
    return QDir(path).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace porvane::test
