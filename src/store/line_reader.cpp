#include "store/line_reader.h"

#include <QFile>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace porvane {

namespace {
constexpr qsizetype kChunk = 256 * 1024;
}

LineReader::LineReader(const QString& path)
    : m_path(path) {
    m_fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (m_fd < 0) {
        m_error = FileError::fromErrno(errno, path);
        m_eof = true;
        return;
    }
    m_buffer.resize(kChunk);
}

LineReader::~LineReader() {
    if (m_fd >= 0)
        ::close(m_fd);
}

bool LineReader::fill() {
    // Keep the unread tail, then read more behind it; grow only for a line longer than the buffer.
    const qsizetype tail = m_end - m_start;
    if (m_start > 0 && tail > 0)
        std::memmove(m_buffer.data(), m_buffer.constData() + m_start, size_t(tail));
    m_bufferOffset += m_start;
    m_start = 0;
    m_end = tail;
    if (m_end == m_buffer.size())
        m_buffer.resize(m_buffer.size() * 2);
    for (;;) {
        const ssize_t n = ::read(m_fd, m_buffer.data() + m_end, size_t(m_buffer.size() - m_end));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            m_error = FileError::fromErrno(errno, m_path);
            m_eof = true;
            return false;
        }
        if (n == 0) {
            m_eof = true;
            return false;
        }
        m_end += n;
        return true;
    }
}

bool LineReader::next(QByteArrayView& line) {
    for (;;) {
        const char* begin = m_buffer.constData() + m_start;
        const auto* nl = static_cast<const char*>(std::memchr(begin, '\n', size_t(m_end - m_start)));
        if (nl) {
            m_lineOffset = m_bufferOffset + m_start;
            qsizetype len = nl - begin;
            m_start += len + 1;
            if (len > 0 && begin[len - 1] == '\r')
                --len;
            line = QByteArrayView(begin, len);
            return true;
        }
        if (m_eof || !fill()) {
            if (!m_error.ok() || m_start == m_end)
                return false;
            // The last line has no line end.
            m_lineOffset = m_bufferOffset + m_start;
            qsizetype len = m_end - m_start;
            const char* last = m_buffer.constData() + m_start;
            m_start = m_end;
            if (len > 0 && last[len - 1] == '\r')
                --len;
            line = QByteArrayView(last, len);
            return true;
        }
    }
}

} // namespace porvane
