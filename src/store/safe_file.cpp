#include "store/safe_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

int errnoOr(int fallback) {
    return errno != 0 ? errno : fallback;
}

// A rename is only durable once the folder that holds the name is flushed too.
void syncFolder(const QString& path) {
    const int fd = ::open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(),
                          O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

} // namespace

int WritePath::write(QFileDevice& file, QByteArrayView data) {
    const char* from = data.data();
    qint64 left = data.size();
    while (left > 0) {
        errno = 0;
        const qint64 n = file.write(from, left);
        if (n <= 0)
            return errnoOr(EIO);
        from += n;
        left -= n;
    }
    return 0;
}

int WritePath::commit(QSaveFile& file) {
    errno = 0;
    return file.commit() ? 0 : errnoOr(EIO);
}

int WritePath::sync(QFileDevice& file) {
    return ::fsync(file.handle()) == 0 ? 0 : errnoOr(EIO);
}

WritePath& realWritePath() {
    static WritePath real;
    return real;
}

FileError readWholeFile(const QString& path, QByteArray& bytes) {
    bytes.clear();
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return FileError::fromErrno(errno, path);
    // Read straight into the array, sized from the file (one byte more, so the end is seen without growing)
    // and grown should the file grow meanwhile.
    struct stat st {};
    const bool sized = ::fstat(fd, &st) == 0 && st.st_size > 0;
    bytes.resize(sized ? qsizetype(st.st_size) + 1 : 256 * 1024);
    qsizetype size = 0;
    for (;;) {
        if (size == bytes.size())
            bytes.resize(2 * size);
        const ssize_t n = ::read(fd, bytes.data() + size, size_t(bytes.size() - size));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            const int err = errno;
            ::close(fd);
            bytes.clear();
            return FileError::fromErrno(err, path);
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
        , m_out(out)
        , m_file(path) {}

    FileError open() {
        // Never fall back to writing over the old file in place.
        m_file.setDirectWriteFallback(false);
        errno = 0;
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return FileError::fromErrno(errnoOr(EACCES), m_path);
        return {};
    }
    FileError write(QByteArrayView bytes) {
        if (const int err = m_out.write(m_file, bytes)) {
            m_file.cancelWriting();
            return FileError::fromErrno(err, m_path);
        }
        return {};
    }
    FileError commit() {
        if (const int err = m_out.commit(m_file))
            return FileError::fromErrno(err, m_path);
        syncFolder(m_path);
        return {};
    }

private:
    QString m_path;
    WritePath& m_out;
    QSaveFile m_file;
};

} // namespace

FileError replaceFile(const QString& path, QByteArrayView bytes, WritePath* writePath) {
    Replacement file(path, writePath ? *writePath : realWritePath());
    if (FileError error = file.open())
        return error;
    if (FileError error = file.write(bytes))
        return error;
    return file.commit();
}

QString appendNotePath(const QString& path) {
    return path + u".appending"_s;
}

FileError cutInterruptedAppend(const QString& path) {
    const QString notePath = appendNotePath(path);
    QFile note(notePath);
    if (!note.open(QIODevice::ReadOnly))
        return {};
    bool isSize = false;
    const qint64 oldSize = note.readAll().trimmed().toLongLong(&isSize);
    note.close();
    QFile file(path);
    if (isSize && file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && file.size() > oldSize) {
        // Lines that were written whole are kept; only a tail without its line end is taken back.
        char last = '\n';
        if (file.seek(file.size() - 1) && file.read(&last, 1) == 1 && last != '\n') {
            errno = 0;
            if (!file.resize(oldSize) || ::fsync(file.handle()) != 0)
                return FileError::fromErrno(errnoOr(EIO), path);
        }
    }
    file.close();
    errno = 0;
    if (!QFile::remove(notePath) && QFileInfo::exists(notePath))
        return FileError::fromErrno(errnoOr(EACCES), path);
    return {};
}

FileError appendLine(const QString& path, QByteArrayView line, WritePath* writePath) {
    WritePath& out = writePath ? *writePath : realWritePath();
    if (FileError error = cutInterruptedAppend(path))
        return error;
    const bool created = !QFileInfo::exists(path);
    QFile file(path);
    errno = 0;
    if (!file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
        return FileError::fromErrno(errnoOr(EACCES), path);
    const qint64 oldSize = file.size();
    // A kill can stop the write of the line part-way, where nothing here can take it back; the note of the
    // old length lets the next desk to write do that.
    const QString notePath = appendNotePath(path);
    QFile note(notePath);
    errno = 0;
    const QByteArray noted = QByteArray::number(oldSize);
    if (!note.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered) ||
        note.write(noted) != noted.size()) {
        const FileError error = FileError::fromErrno(errnoOr(EIO), path);
        note.close();
        QFile::remove(notePath);
        return error;
    }
    note.close();
    QByteArray bytes;
    bytes.reserve(line.size() + 4);
    if (oldSize > 0) {
        // Only the last byte is read: a torn tail gets its line end before the new line.
        char last = '\n';
        if (!file.seek(oldSize - 1) || file.read(&last, 1) != 1)
            return FileError::fromErrno(errnoOr(EIO), path);
        if (last == '\r')
            bytes.append('\n');
        else if (last != '\n')
            bytes.append(kLineEnd);
    }
    bytes.append(line);
    bytes.append(kLineEnd);
    int err = out.write(file, bytes);
    if (!err)
        err = out.sync(file);
    if (err) {
        // Take back whatever part of the line reached the file.
        file.resize(oldSize);
        ::fsync(file.handle());
        QFile::remove(notePath);
        return FileError::fromErrno(err, path);
    }
    file.close();
    QFile::remove(notePath);
    if (created)
        syncFolder(path);
    return {};
}

FileError removeAllOrNone(const QStringList& paths) {
    QStringList aside;
    for (const QString& path : paths) {
        const QString moved = path + u".removing"_s;
        errno = 0;
        if (::rename(QFile::encodeName(path).constData(), QFile::encodeName(moved).constData()) != 0) {
            const FileError error = FileError::fromErrno(errnoOr(EACCES), path);
            for (qsizetype i = 0; i < aside.size(); ++i)
                ::rename(QFile::encodeName(aside[i]).constData(), QFile::encodeName(paths[i]).constData());
            return error;
        }
        aside.append(moved);
    }
    // Past this point every file is gone from the desk's sight; a name left behind is never read as data.
    for (const QString& moved : aside)
        QFile::remove(moved);
    for (const QString& path : paths)
        syncFolder(path);
    return {};
}

FileError rewriteLines(const QString& path, const LineEdit& edit, bool* changed, WritePath* writePath) {
    if (changed)
        *changed = false;
    if (FileError error = cutInterruptedAppend(path))
        return error;
    QByteArray bytes;
    if (FileError error = readWholeFile(path, bytes))
        return error;
    // The new content is checked against the old as it is made and goes out in pieces, so a big month never
    // stands in memory twice. Nothing is written while it is the same as the old; at the first difference the
    // part that was the same is written from the old content.
    constexpr qsizetype kPiece = 256 * 1024;
    std::optional<Replacement> file;
    qsizetype same = 0; // bytes of the old content matched while nothing is written
    QByteArray out;
    out.reserve(2 * kPiece); // a piece and the line that fills it
    auto startWriting = [&]() -> FileError {
        file.emplace(path, writePath ? *writePath : realWritePath());
        if (FileError error = file->open())
            return error;
        return file->write(QByteArrayView(bytes).first(same));
    };
    const char* at = bytes.constData();
    const char* const end = at + bytes.size();
    while (at < end) {
        const auto* nl = static_cast<const char*>(std::memchr(at, '\n', size_t(end - at)));
        const char* lineEnd = nl ? nl : end;
        qsizetype len = lineEnd - at;
        if (len > 0 && at[len - 1] == '\r')
            --len;
        edit(QByteArrayView(at, len), out);
        at = nl ? nl + 1 : end;
        if (!file) {
            if (out.size() <= bytes.size() - same &&
                std::memcmp(bytes.constData() + same, out.constData(), size_t(out.size())) == 0) {
                same += out.size();
                out.resize(0);
                continue;
            }
            if (FileError error = startWriting())
                return error;
        }
        if (out.size() >= kPiece) {
            if (FileError error = file->write(out))
                return error;
            out.resize(0);
        }
    }
    if (!file) {
        if (same == bytes.size())
            return {};
        if (FileError error = startWriting()) // the old content less its last lines
            return error;
    }
    if (FileError error = file->write(out))
        return error;
    if (FileError error = file->commit())
        return error;
    if (changed)
        *changed = true;
    return {};
}

} // namespace porvane
