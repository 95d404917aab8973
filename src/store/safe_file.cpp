#include "store/safe_file.h"

#include "store/line_reader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QThread>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

constexpr auto kTemporarySuffix = ".porvane-tmp"_L1;
constexpr auto kRemovingSuffix = ".removing"_L1;
// A whole file read at once is a day's status or a small settings file; a month is streamed.
constexpr qint64 kMaxWholeFile = qint64(1) << 30;

int errnoOr(int fallback) {
    return errno != 0 ? errno : fallback;
}

QByteArray encoded(const QString& path) {
    return QFile::encodeName(path);
}

// A rename is only durable once the folder that holds the name is flushed too.
void syncFolder(const QString& path) {
    const int fd =
        ::open(encoded(QFileInfo(path).absolutePath()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

// A byte-range lock on the whole file, taken before it is read for a change. The data folder's lock already
// keeps desks apart; this one is what makes the clients of a network share drop what they cached of the file,
// so that the change starts from the file as the other desk left it. Open-file-description locks, so that no
// other descriptor of the file in this process can drop it. A file system without byte-range locks is
// accepted as it is; one held by another program is waited for a moment, never for good.
FileError lockRange(int fd, short type, const QString& path) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    for (int tries = 0;; ++tries) {
        if (::fcntl(fd, F_OFD_SETLK, &range) == 0)
            return {};
        if (errno == EINTR)
            continue;
        if (errno != EAGAIN && errno != EACCES)
            return {}; // ENOLCK, EINVAL, EOPNOTSUPP: no locks on this file system
        if (tries == 200)
            return FileError::fromErrno(EAGAIN, path);
        QThread::msleep(10);
    }
}

} // namespace

int WritePath::write(int fd, QByteArrayView data) {
    const char* from = data.data();
    qsizetype left = data.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, from, size_t(left));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return n < 0 ? errnoOr(EIO) : EIO;
        from += n;
        left -= n;
    }
    return 0;
}

int WritePath::copy(int from, qint64 offset, int fd, qint64 length) {
    off64_t at = offset;
    while (length > 0) {
        const ssize_t n = ::copy_file_range(from, &at, fd, nullptr, size_t(length), 0);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && at == offset &&
            (errno == EXDEV || errno == ENOSYS || errno == EOPNOTSUPP || errno == EINVAL))
            return copyThroughWrite(from, offset, fd, length); // a file system that cannot copy by itself
        if (n <= 0)
            return n < 0 ? errnoOr(EIO) : EIO; // the old file is shorter than it was read
        length -= n;
    }
    return 0;
}

int WritePath::copyThroughWrite(int from, qint64 offset, int fd, qint64 length) {
    char chunk[256 * 1024];
    for (qint64 at = 0; at < length;) {
        const ssize_t n =
            ::pread(from, chunk, size_t(std::min<qint64>(sizeof chunk, length - at)), offset + at);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return n < 0 ? errnoOr(EIO) : EIO;
        if (const int err = write(fd, QByteArrayView(chunk, n)))
            return err;
        at += n;
    }
    return 0;
}

int WritePath::commit(int fd) {
    return ::fsync(fd) == 0 ? 0 : errnoOr(EIO);
}

int WritePath::sync(int fd) {
    return ::fsync(fd) == 0 ? 0 : errnoOr(EIO);
}

WritePath& realWritePath() {
    static WritePath real;
    return real;
}

int openDataFile(const QString& path, int flags, FileError& error) {
    struct stat st {};
    const QString folder = QFileInfo(path).absolutePath();
    if (::lstat(encoded(folder).constData(), &st) == 0 && S_ISLNK(st.st_mode)) {
        error = FileError::notADataFile(folder);
        return -1;
    }
    // O_NONBLOCK: opening a pipe must not wait for a writer; the file-type check below then refuses it.
    const int fd = ::open(encoded(path).constData(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    if (fd < 0) {
        error = FileError::fromErrno(errno, path);
        return -1;
    }
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        error = FileError::notADataFile(path);
        return -1;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    error = {};
    return fd;
}

bool isLeftoverName(const QString& fileName) {
    return fileName.endsWith(kTemporarySuffix) || fileName.endsWith(kRemovingSuffix);
}

void removeLeftovers(const QString& folder) {
    const QDir dir(folder);
    for (const QString& name : dir.entryList({u"*"_s + kTemporarySuffix, u"*"_s + kRemovingSuffix},
                                             QDir::Files | QDir::Hidden | QDir::System))
        ::unlink(encoded(dir.filePath(name)).constData());
}

FileError readWholeFile(const QString& path, QByteArray& bytes) {
    bytes.clear();
    FileError error;
    const int fd = openDataFile(path, O_RDONLY, error);
    if (fd < 0)
        return error;
    // Read straight into the array, sized from the file (one byte more, so the end is seen without growing)
    // and grown should the file grow meanwhile.
    struct stat st {};
    const bool sized = ::fstat(fd, &st) == 0 && st.st_size > 0;
    if (sized && st.st_size > kMaxWholeFile) {
        ::close(fd);
        return FileError::lineTooLong(path, 1);
    }
    bytes.resize(sized ? qsizetype(st.st_size) + 1 : 256 * 1024);
    qsizetype size = 0;
    for (;;) {
        if (size == bytes.size())
            bytes.resize(2 * size);
        const ssize_t n = ::read(fd, bytes.data() + size, size_t(bytes.size() - size));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 || size + n > kMaxWholeFile) {
            error = n < 0 ? FileError::fromErrno(errno, path) : FileError::lineTooLong(path, 1);
            ::close(fd);
            bytes.clear();
            return error;
        }
        if (n == 0)
            break;
        size += n;
    }
    ::close(fd);
    bytes.resize(size);
    return {};
}

namespace {

// A file's new content on its way in: written to a temporary file in the same folder, then flushed and
// renamed over the old one. Until commit() succeeds the old file is untouched; a failure drops the new one.
class Replacement {
public:
    Replacement(const QString& path, WritePath& out)
        : m_path(path)
        , m_out(out) {}
    ~Replacement() {
        if (m_fd >= 0) {
            ::close(m_fd);
            ::unlink(encoded(m_temporary).constData());
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    // old: the file being replaced, whose group and permission bits the new one takes; null for a new file.
    FileError open(const struct stat* old) {
        const QFileInfo target(m_path);
        struct stat st {};
        if (::lstat(encoded(target.absolutePath()).constData(), &st) == 0 && S_ISLNK(st.st_mode))
            return FileError::notADataFile(target.absolutePath());
        if (::lstat(encoded(m_path).constData(), &st) == 0 && !S_ISREG(st.st_mode))
            return FileError::notADataFile(m_path);
        for (int tries = 0; m_fd < 0; ++tries) {
            m_temporary = m_path + u'.' + QString::number(QRandomGenerator::global()->generate(), 36) +
                          kTemporarySuffix;
            m_fd = ::open(encoded(m_temporary).constData(),
                          O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
            if (m_fd < 0 && (errno != EEXIST || tries == 10))
                return FileError::fromErrno(errno, m_path);
        }
        if (old) {
            // Desks of different users share the folder through its group: the group and mode stay. Only the
            // owner or root may set them; for anyone else the new file has what the folder gives it.
            if (::fchown(m_fd, uid_t(-1), old->st_gid) != 0 && errno != EPERM)
                return FileError::fromErrno(errno, m_path);
            ::fchmod(m_fd, old->st_mode & 07777);
        }
        return {};
    }
    FileError write(QByteArrayView bytes) {
        if (const int err = m_out.write(m_fd, bytes))
            return FileError::fromErrno(err, m_path);
        return {};
    }
    // Copies the bytes [offset, offset + length) of the open file `from`: a part of the old content that
    // stays.
    FileError copy(int from, qint64 offset, qint64 length) {
        if (const int err = m_out.copy(from, offset, m_fd, length))
            return FileError::fromErrno(err, m_path);
        return {};
    }
    FileError commit() {
        if (const int err = m_out.commit(m_fd))
            return FileError::fromErrno(err, m_path);
        errno = 0;
        if (::close(std::exchange(m_fd, -1)) != 0 ||
            ::rename(encoded(m_temporary).constData(), encoded(m_path).constData()) != 0) {
            const FileError error = FileError::fromErrno(errnoOr(EIO), m_path);
            ::unlink(encoded(m_temporary).constData());
            return error;
        }
        syncFolder(m_path);
        return {};
    }

private:
    QString m_path;
    QString m_temporary;
    WritePath& m_out;
    int m_fd = -1;
};

// The old file's status, or null when there is none (or it cannot be seen).
const struct stat* statOf(const QString& path, struct stat& st) {
    return ::lstat(encoded(path).constData(), &st) == 0 && S_ISREG(st.st_mode) ? &st : nullptr;
}

} // namespace

FileError replaceFile(const QString& path, QByteArrayView bytes, WritePath* writePath) {
    Replacement file(path, writePath ? *writePath : realWritePath());
    struct stat st {};
    if (FileError error = file.open(statOf(path, st)))
        return error;
    if (FileError error = file.write(bytes))
        return error;
    return file.commit();
}

FileError replaceFileByPieces(const QString& path,
                              const std::function<FileError(const PieceWriter& write)>& produce,
                              WritePath* writePath) {
    // The new content is compared with the old as it is made: nothing is written while they are the same, and
    // at the first difference the part that was the same is copied from the old file.
    FileError ignored;
    const int old = openDataFile(path, O_RDONLY, ignored); // none, or none to compare with: all is new
    const auto closeOld = qScopeGuard([old] {
        if (old >= 0)
            ::close(old);
    });
    qint64 same = 0;
    QByteArray oldBytes;
    std::optional<Replacement> file;
    const auto start = [&]() -> FileError {
        file.emplace(path, writePath ? *writePath : realWritePath());
        struct stat st {};
        if (FileError error = file->open(statOf(path, st)))
            return error;
        return same > 0 ? file->copy(old, 0, same) : FileError();
    };
    const PieceWriter write = [&](QByteArrayView piece) -> FileError {
        if (!file) {
            oldBytes.resize(piece.size());
            qsizetype read = 0;
            while (old >= 0 && read < piece.size()) {
                const ssize_t n =
                    ::pread(old, oldBytes.data() + read, size_t(piece.size() - read), same + read);
                if (n < 0 && errno == EINTR)
                    continue;
                if (n <= 0)
                    break; // the old file ends here, or cannot be read: the new content differs
                read += n;
            }
            if (read == piece.size() && std::memcmp(oldBytes.constData(), piece.data(), size_t(read)) == 0) {
                same += read;
                return {};
            }
            if (FileError error = start())
                return error;
        }
        return file->write(piece);
    };
    if (FileError error = produce(write))
        return error;
    struct stat st {};
    if (!file && old >= 0 && ::fstat(old, &st) == 0 && st.st_size == same)
        return {}; // the same, byte for byte
    if (!file) {
        if (FileError error = start())
            return error;
    }
    return file->commit();
}

namespace {

QString appendNotePath(const QString& path) {
    return path + u".appending"_s;
}

// A note that could not be written whole is not left behind; its failure is the month's.
FileError writeNote(const QString& notePath, const QByteArray& text, const QString& path) {
    FileError error;
    const int fd = openDataFile(notePath, O_WRONLY | O_CREAT | O_TRUNC, error);
    if (fd < 0)
        return error;
    const int err = realWritePath().write(fd, text);
    ::close(fd);
    if (!err)
        return {};
    ::unlink(encoded(notePath).constData());
    return FileError::fromErrno(err, path);
}

} // namespace

FileError cutInterruptedAppend(const QString& path) {
    const QString notePath = appendNotePath(path);
    QByteArray noted;
    if (readWholeFile(notePath, noted))
        return {};
    bool isSize = false;
    const qint64 oldSize = noted.trimmed().toLongLong(&isSize);
    FileError error;
    const int fd = openDataFile(path, O_RDWR, error);
    struct stat st {};
    if (isSize && fd >= 0 && ::fstat(fd, &st) == 0 && st.st_size > oldSize) {
        // Lines that were written whole are kept; only a tail without its line end is taken back.
        char last = '\n';
        if (::pread(fd, &last, 1, st.st_size - 1) == 1 && last != '\n' &&
            (::ftruncate(fd, oldSize) != 0 || ::fsync(fd) != 0)) {
            error = FileError::fromErrno(errnoOr(EIO), path);
            ::close(fd);
            return error;
        }
    }
    if (fd >= 0)
        ::close(fd);
    if (::unlink(encoded(notePath).constData()) != 0 && errno != ENOENT)
        return FileError::fromErrno(errnoOr(EACCES), path);
    return {};
}

FileError appendLine(const QString& path, QByteArrayView line, WritePath* writePath) {
    WritePath& out = writePath ? *writePath : realWritePath();
    if (FileError error = cutInterruptedAppend(path))
        return error;
    const bool created = !QFileInfo::exists(path);
    FileError error;
    const int fd = openDataFile(path, O_RDWR | O_APPEND | O_CREAT, error);
    if (fd < 0)
        return error;
    auto fail = [&](const FileError& e) {
        ::close(fd);
        return e;
    };
    if (FileError locked = lockRange(fd, F_WRLCK, path))
        return fail(locked);
    struct stat st {};
    if (::fstat(fd, &st) != 0)
        return fail(FileError::fromErrno(errnoOr(EIO), path));
    const qint64 oldSize = st.st_size;
    // A kill can stop the write of the line part-way, where nothing here can take it back; the note of the
    // old length lets the next desk to write do that.
    const QString notePath = appendNotePath(path);
    if (FileError noted = writeNote(notePath, QByteArray::number(oldSize), path))
        return fail(noted);
    QByteArray bytes;
    bytes.reserve(line.size() + 4);
    if (oldSize > 0) {
        // Only the last byte is read: a torn tail gets its line end before the new line.
        char last = '\n';
        if (::pread(fd, &last, 1, oldSize - 1) != 1)
            return fail(FileError::fromErrno(errnoOr(EIO), path));
        if (last == '\r')
            bytes.append('\n');
        else if (last != '\n')
            bytes.append(kLineEnd);
    }
    bytes.append(line);
    bytes.append(kLineEnd);
    int err = out.write(fd, bytes);
    if (!err)
        err = out.sync(fd);
    if (err) {
        // Take back whatever part of the line reached the file.
        if (::ftruncate(fd, oldSize) == 0)
            ::fsync(fd);
        ::unlink(encoded(notePath).constData());
        return fail(FileError::fromErrno(err, path));
    }
    ::close(fd);
    ::unlink(encoded(notePath).constData());
    if (created)
        syncFolder(path);
    return {};
}

FileError removeAllOrNone(const QStringList& paths) {
    QStringList aside;
    for (const QString& path : paths) {
        const QString moved = path + kRemovingSuffix;
        struct stat st {};
        const QString folder = QFileInfo(path).absolutePath();
        FileError error;
        if (::lstat(encoded(folder).constData(), &st) == 0 && S_ISLNK(st.st_mode))
            error = FileError::notADataFile(folder);
        else if (::lstat(encoded(path).constData(), &st) == 0 && !S_ISREG(st.st_mode))
            error = FileError::notADataFile(path);
        else if (::rename(encoded(path).constData(), encoded(moved).constData()) != 0)
            error = FileError::fromErrno(errnoOr(EACCES), path);
        if (error) {
            for (qsizetype i = 0; i < aside.size(); ++i)
                ::rename(encoded(aside[i]).constData(), encoded(paths[i]).constData());
            return error;
        }
        aside.append(moved);
    }
    // Past this point every file is gone from the desk's sight; a name left behind is never read as data.
    for (const QString& moved : aside)
        ::unlink(encoded(moved).constData());
    for (const QString& path : paths)
        syncFolder(path);
    return {};
}

FileError rewriteLines(const QString& path, const LineEdit& edit, bool* changed, WritePath* writePath) {
    if (changed)
        *changed = false;
    if (FileError error = cutInterruptedAppend(path))
        return error;
    LineReader reader(path);
    if (reader.error())
        return reader.error();
    if (FileError error = lockRange(reader.handle(), F_RDLCK, path))
        return error;
    struct stat old {};
    if (::fstat(reader.handle(), &old) != 0)
        return FileError::fromErrno(errnoOr(EIO), path);
    // The new content is checked against the old line by line as it is made, so a big month never stands in
    // memory. Nothing is written while it is the same as the old; at the first difference the part that was
    // the same is copied from the old file, and from then on each run of lines kept as they were is copied
    // too, the changed lines going out in pieces between them.
    constexpr qsizetype kPiece = 256 * 1024;
    std::optional<Replacement> file;
    qint64 keptFrom = 0; // the run of old bytes kept as they were, not yet copied
    qint64 keptTo = 0;
    QByteArray out;
    out.reserve(2 * kPiece); // a piece and the line that fills it
    const auto copyKept = [&]() -> FileError {
        const FileError error = file->copy(reader.handle(), keptFrom, keptTo - keptFrom);
        keptFrom = keptTo;
        return error;
    };
    const auto writeOut = [&]() -> FileError {
        const FileError error = file->write(out);
        out.resize(0);
        return error;
    };
    QByteArrayView line;
    for (qint64 at = reader.offset(); reader.next(line); at = reader.offset()) {
        const qint64 raw = reader.offset() - at; // the line with its line end, as it is in the file
        const qsizetype before = out.size();
        const bool edited = edit(line, out);
        const bool crLf = raw == line.size() + 2; // a two-byte line end is CR LF
        bool kept = !edited && crLf;
        if (!edited && !crLf)
            out.append(line).append(kLineEnd);
        if (edited && out.size() - before == raw &&
            std::memcmp(line.data(), out.constData() + before, size_t(raw)) == 0) {
            out.resize(before);
            kept = true;
        }
        if (kept) {
            if (file && !out.isEmpty()) {
                if (FileError error = writeOut())
                    return error;
                keptFrom = at;
            }
            keptTo = at + raw;
            continue;
        }
        if (!file) {
            file.emplace(path, writePath ? *writePath : realWritePath());
            if (FileError error = file->open(&old))
                return error;
        }
        if (keptTo > keptFrom) {
            if (FileError error = copyKept())
                return error;
        }
        keptFrom = keptTo = at + raw;
        if (out.size() >= kPiece) {
            if (FileError error = writeOut())
                return error;
        }
    }
    if (reader.error())
        return reader.error();
    if (!file)
        return {};
    if (FileError error = keptTo > keptFrom ? copyKept() : writeOut())
        return error;
    if (FileError error = file->commit())
        return error;
    if (changed)
        *changed = true;
    return {};
}

} // namespace porvane
