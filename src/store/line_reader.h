#pragma once

#include "store/file_error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace porvane {

// Streams a data file line by line in fixed-size chunks. A line ends at CR LF, LF or a lone CR, or at the end
// of the file. Only a regular file is read, never through a symbolic link (see openDataFile). A line longer
// than kMaxLineLength stops the reading with a damaged-file error, so a huge line never fills the memory. A
// line is valid until the next call to next().
class LineReader {
public:
    // Far above the 1186 characters of a booking, far below what would strain the memory.
    static constexpr qsizetype kMaxLineLength = 64 * 1024;

    explicit LineReader(const QString& path);
    // Reads an open descriptor from its start and closes it at the end; name is what errors call it. A store
    // that is not a folder hands its lines this way.
    LineReader(int fileDescriptor, const QString& name);
    // A reader of nothing that stops with error at once.
    explicit LineReader(const FileError& error);
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    // The error of opening or reading; FileNotFound (53) when the file does not exist.
    const FileError& error() const { return m_error; }
    // The file's path, or the name errors call it.
    const QString& name() const { return m_path; }
    bool next(QByteArrayView& line);
    // Where in the file the next line starts: after next(), the line read and its line end are the bytes
    // between the offset before and the offset after, starting at line.data().
    qint64 offset() const { return m_fileOffset + m_start; }
    // The line last returned by next(), and where in the file it starts.
    QByteArrayView line() const { return m_line; }
    qint64 lineOffset() const { return m_lineOffset; }
    // The open file, for a range lock, for copying a part of it or for reading its lines again later; -1 when
    // it could not be opened.
    int handle() const { return m_fd; }

private:
    bool fill();
    bool take(qsizetype length, qsizetype lineEnd, QByteArrayView& line);

    int m_fd = -1;
    QString m_path;
    FileError m_error;
    QByteArray m_buffer;
    qint64 m_fileOffset = 0; // file offset of m_buffer[0]
    qint64 m_lineNumber = 0;
    qsizetype m_start = 0;
    qsizetype m_end = 0;
    qint64 m_lineOffset = 0;
    QByteArrayView m_line;
    qsizetype m_nextLf = -1; // buffer index of the next LF, m_end when the buffer holds none; -1 unknown
    bool m_eof = false;
};

} // namespace porvane
