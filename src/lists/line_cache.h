#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace porvane {

// Reads lines of open files again by where they lie, so that a list can show any of its rows without holding
// its files in memory. A read takes the lines close behind the one asked for along, up to a block, so that a
// list read in order reads its part of each file once, and a list of lines far apart reads only those. A list
// of several months keeps one handle on each month file and one block for them all.
class LineCache {
public:
    // The most a read takes at once.
    static constexpr qsizetype kBlock = 256 * 1024;

    LineCache() = default;
    ~LineCache();
    LineCache(const LineCache&) = delete;
    LineCache& operator=(const LineCache&) = delete;

    // Takes its own handle on an open file and returns the number lines of it are asked by; an invalid
    // descriptor gives a file without lines.
    int addFile(int fileDescriptor);

    // Whether the last read took the bytes [offset, offset + length) of the file.
    bool holds(int file, qint64 offset, qsizetype length) const {
        return file == m_blockFile && offset >= m_blockOffset &&
               offset + length <= m_blockOffset + m_blockSize;
    }
    // The bytes [offset, offset + length) of a file, or fewer where the file has fewer; valid until the next
    // call. When the last read did not take them, `span` bytes from offset are read (at least the line, at
    // most a block).
    QByteArrayView line(int file, qint64 offset, qsizetype length, qsizetype span);

private:
    QList<int> m_fds;
    QByteArray m_block;
    int m_blockFile = -1;
    qint64 m_blockOffset = 0;
    qsizetype m_blockSize = 0; // bytes of m_block read
};

} // namespace porvane
