#include "lists/line_cache.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace porvane {

namespace {
constexpr qsizetype kBlock = 256 * 1024;
}

LineCache::LineCache(int fileDescriptor)
    : m_fd(fileDescriptor >= 0 ? ::fcntl(fileDescriptor, F_DUPFD_CLOEXEC, 0) : -1) {}

LineCache::~LineCache() {
    if (m_fd >= 0)
        ::close(m_fd);
}

QByteArrayView LineCache::line(qint64 offset, qsizetype length) {
    const bool cached = offset >= m_blockOffset && offset + length <= m_blockOffset + m_blockSize;
    if (!cached && m_fd >= 0) {
        m_block.resize(std::max(kBlock, length));
        m_blockOffset = offset;
        m_blockSize = 0;
        while (m_blockSize < m_block.size()) {
            const ssize_t n = ::pread(m_fd, m_block.data() + m_blockSize,
                                      size_t(m_block.size() - m_blockSize), offset + m_blockSize);
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
