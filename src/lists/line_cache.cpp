#include "lists/line_cache.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace porvane {

LineCache::~LineCache() {
    for (const int fd : m_fds)
        if (fd >= 0)
            ::close(fd);
}

int LineCache::addFile(int fileDescriptor) {
    m_fds.append(fileDescriptor >= 0 ? ::fcntl(fileDescriptor, F_DUPFD_CLOEXEC, 0) : -1);
    return int(m_fds.size() - 1);
}

qint32 LineCache::keep(QByteArrayView line) {
    if (qsizetype(m_kept.size()) + line.size() > kKeptBytes)
        return -1;
    if (m_kept.capacity() == 0)
        m_kept.reserve(std::size_t(kKeptBytes)); // never moved as it fills; only the pages written count
    const auto at = qint32(m_kept.size());
    m_kept.insert(m_kept.end(), line.begin(), line.end());
    return at;
}

QByteArrayView LineCache::line(int file, qint64 offset, qsizetype length, qsizetype span) {
    const int fd = file >= 0 && file < m_fds.size() ? m_fds[file] : -1;
    if (!holds(file, offset, length)) {
        m_blockFile = file;
        m_blockOffset = offset;
        m_blockSize = 0;
        if (fd >= 0)
            m_block.resize(std::clamp(span, length, std::max(kBlock, length)));
        while (fd >= 0 && m_blockSize < m_block.size()) {
            const ssize_t n = ::pread(fd, m_block.data() + m_blockSize, size_t(m_block.size() - m_blockSize),
                                      offset + m_blockSize);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                break; // the end of the file, or a read error: the line is cut short there
            m_blockSize += n;
        }
    }
    const qsizetype from = std::clamp<qint64>(offset - m_blockOffset, 0, m_blockSize);
    return QByteArrayView(m_block.constData() + from, std::min(length, m_blockSize - from));
}

} // namespace porvane
