#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace porvane {

// Reads lines of an open file again by where they lie, a block at a time, so that a list can show any of
// its rows without holding the file in memory and a list read in order reads the file once.
class LineCache {
public:
    // Takes its own handle on the open file; an invalid descriptor gives a cache without lines.
    explicit LineCache(int fileDescriptor);
    ~LineCache();
    LineCache(const LineCache&) = delete;
    LineCache& operator=(const LineCache&) = delete;

    // The bytes [offset, offset + length), or fewer where the file has fewer; valid until the next call.
    QByteArrayView line(qint64 offset, qsizetype length);

private:
    int m_fd = -1;
    QByteArray m_block;
    qint64 m_blockOffset = 0;
    qsizetype m_blockSize = 0; // bytes of m_block read
};

} // namespace porvane
