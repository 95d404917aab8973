#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <vector>

namespace porvane {

// The lines of a list's rows, for showing any of them again without holding the list's files in memory. The
// first lines handed to it as the list is read are kept as they are, as long as they fit in a small budget,
// so that a short list (a day's, a search's) is read only once. The others are read again from the open
// files: a read takes the lines close behind the one asked for along, up to a block, so that a list read in
// order reads its part of each file once, and a list of lines far apart reads only those. A list of several
// months keeps one handle on each month file and one block for them all.
class LineCache {
public:
    // What the kept lines may take.
    static constexpr qsizetype kKeptBytes = 2 * 1024 * 1024;
    // The most a read takes at once.
    static constexpr qsizetype kBlock = 256 * 1024;

    LineCache() = default;
    ~LineCache();
    LineCache(const LineCache&) = delete;
    LineCache& operator=(const LineCache&) = delete;

    // Takes its own handle on an open file and returns the number lines of it are asked by; an invalid
    // descriptor gives a file without lines.
    int addFile(int fileDescriptor);

    // Keeps a copy of a line while the kept lines fit; where it lies among them, or -1 when it does not fit.
    qint32 keep(QByteArrayView line);
    QByteArrayView kept(qint32 at, qsizetype length) const {
        return QByteArrayView(m_kept.data() + at, length);
    }

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
    std::vector<char> m_kept;
    QByteArray m_block;
    int m_blockFile = -1;
    qint64 m_blockOffset = 0;
    qsizetype m_blockSize = 0; // bytes of m_block read
};

} // namespace porvane
