#pragma once

#include "store/file_error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace porvane {

// Streams a text file line by line in fixed-size chunks. Accepts CR LF and LF-only lines and a missing final
// line end. A line is valid until the next call to next().
class LineReader {
public:
    explicit LineReader(const QString& path);
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    // The error of opening or reading; FileNotFound (53) when the file does not exist.
    const FileError& error() const { return m_error; }
    bool next(QByteArrayView& line);
    // Where in the file the line last returned by next() starts.
    qint64 lineOffset() const { return m_lineOffset; }
    // The open file, for a caller that reads its lines again later; -1 when it could not be opened.
    int fileDescriptor() const { return m_fd; }

private:
    bool fill();

    int m_fd = -1;
    QString m_path;
    FileError m_error;
    QByteArray m_buffer;
    qsizetype m_start = 0;
    qsizetype m_end = 0;
    qint64 m_bufferOffset = 0; // the file offset of m_buffer's first byte
    qint64 m_lineOffset = 0;
    bool m_eof = false;
};

} // namespace porvane
