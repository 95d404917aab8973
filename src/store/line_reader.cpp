#include "store/line_reader.h"

#include "store/safe_file.h"

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
    m_fd = openDataFile(path, O_RDONLY, m_error);
    if (m_fd < 0) {
        m_eof = true;
        return;
    }
    m_buffer.resize(kChunk);
}

LineReader::LineReader(int fileDescriptor, const QString& name)
    : m_fd(fileDescriptor)
    , m_path(name) {
    ::lseek(m_fd, 0, SEEK_SET);
    m_buffer.resize(kChunk);
}

LineReader::LineReader(const FileError& error)
    : m_error(error)
    , m_eof(true) {}

LineReader::~LineReader() {
    if (m_fd >= 0)
        ::close(m_fd);
}

bool LineReader::fill() {
    // Keep the unread tail, then read more behind it; grow only for a line longer than the buffer.
    const qsizetype tail = m_end - m_start;
    if (m_start > 0 && tail > 0)
        std::memmove(m_buffer.data(), m_buffer.constData() + m_start, size_t(tail));
    m_fileOffset += m_start;
    m_nextLf = -1;
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

bool LineReader::take(qsizetype length, qsizetype lineEnd, QByteArrayView& line) {
    ++m_lineNumber;
    if (length > kMaxLineLength) {
        m_error = FileError::lineTooLong(m_path, m_lineNumber);
        m_eof = true;
        m_start = m_end;
        return false;
    }
    m_lineOffset = m_fileOffset + m_start;
    m_line = line = QByteArrayView(m_buffer.constData() + m_start, length);
    m_start += length + lineEnd;
    return true;
}

bool LineReader::next(QByteArrayView& line) {
    if (!m_error.ok())
        return false;
    for (;;) {
        const char* const begin = m_buffer.constData() + m_start;
        const qsizetype available = m_end - m_start;
        // The next LF is searched once per buffer fill, not once per line, so a file of lone-CR lines does
        // not rescan the buffer for every line; the line's CR is then looked for in front of it.
        if (m_nextLf < m_start) {
            const void* lf = std::memchr(begin, '\n', size_t(available));
            m_nextLf = lf ? static_cast<const char*>(lf) - m_buffer.constData() : m_end;
        }
        const qsizetype lfAt = m_nextLf - m_start;
        const void* cr = std::memchr(begin, '\r', size_t(lfAt));
        const qsizetype at = cr ? static_cast<const char*>(cr) - begin : lfAt;
        if (at < available) {
            if (begin[at] == '\n')
                return take(at, 1, line);
            // A CR: with an LF behind it the two end the line; alone, it ends the line by itself. The byte
            // behind it may still be unread.
            if (at + 1 < available || m_eof)
                return take(at, at + 1 < available && begin[at + 1] == '\n' ? 2 : 1, line);
        } else if (available > kMaxLineLength) {
            return take(available, 0, line); // reports the damage without reading the rest
        }
        if (m_eof || !fill()) {
            if (!m_error.ok() || m_start == m_end)
                return false;
            // The last line has no line end (or ends in a CR that is the file's last byte).
            const qsizetype left = m_end - m_start;
            const char* last = m_buffer.constData() + m_start;
            return take(last[left - 1] == '\r' ? left - 1 : left, last[left - 1] == '\r' ? 1 : 0, line);
        }
    }
}

} // namespace porvane
