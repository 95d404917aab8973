#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace porvane {

// Reads lines of open files again by where they lie, a block at a time, so that a list can show any of its
// rows without holding its files in memory and a list read in order reads each file once. A list of several
// months keeps one handle on each month file and one block for them all.
class LineCache {
public:
    LineCache() = default;
    ~LineCache();
    LineCache(const LineCache&) = delete;
    LineCache& operator=(const LineCache&) = delete;

    // Takes its own handle on an open file and returns the number lines of it are asked by; an invalid
    // descriptor gives a file without lines.
    int addFile(int fileDescriptor);

    // The bytes [offset, offset + length) of a file, or fewer where the file has fewer; valid until the next
    // call.
    QByteArrayView line(int file, qint64 offset, qsizetype length);

private:
    QList<int> m_fds;
    QByteArray m_block;
    int m_blockFile = -1;
    qint64 m_blockOffset = 0;
    qsizetype m_blockSize = 0; // bytes of m_block read
};

} // namespace porvane
