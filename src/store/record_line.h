#pragma once

#include "store/current_record.h"
#include "store/record_fields.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <algorithm>
#include <bit>
#include <cstring>

namespace porvane {

// A read-only view of one stored line (Windows-1252 bytes, no line end). Columns are 1-based; columns past
// the end of a short line read as blanks. Nothing is decoded until a column is asked for, so list builders
// stay close to the speed of reading the file.
class RecordLine {
public:
    RecordLine() = default;
    explicit RecordLine(QByteArrayView bytes)
        : m_bytes(bytes) {}

    QByteArrayView bytes() const { return m_bytes; }
    // The raw bytes of columns [column, column + width), cut short where the line ends. Inline: the lists ask
    // for every cell of every row.
    QByteArrayView columns(int column, int width) const {
        const qsizetype from = column - 1;
        if (from >= m_bytes.size() || width <= 0)
            return {};
        return m_bytes.sliced(from, std::min<qsizetype>(width, m_bytes.size() - from));
    }
    QByteArrayView columns(Field f) const { return columns(fieldSpec(f).column, fieldSpec(f).width); }
    // The text of the columns as stored, untrimmed.
    QString text(int column, int width) const;
    // The text of the columns, trimmed of blanks on both sides.
    QString trimmed(int column, int width) const;
    QString text(Field f) const { return text(fieldSpec(f).column, fieldSpec(f).width); }
    QString trimmed(Field f) const { return trimmed(fieldSpec(f).column, fieldSpec(f).width); }

    // The first 12 columns, trimmed: the booking's key.
    QByteArrayView regNo() const;
    bool hasRegNo(QByteArrayView key) const { return regNo() == key; }
    // The booked-time slot of a day 1..31, trimmed ("hhmm" or empty).
    QByteArrayView bookedSlot(int day) const;

private:
    QByteArrayView m_bytes;
};

// Where the blanks that pad the first `to` bytes at p begin. Stored columns are padded with many: they are
// looked at eight at a time, and the last few of them found at once.
inline qsizetype endOfText(const char* p, qsizetype to) {
    for (; to >= 8; to -= 8) {
        quint64 w;
        std::memcpy(&w, p + to - 8, sizeof w);
        const quint64 text = w ^ 0x2020202020202020; // a non-zero byte is not a blank
        if (text != 0) {
            const int blanks =
                std::endian::native == std::endian::little ? std::countl_zero(text) : std::countr_zero(text);
            return to - blanks / 8;
        }
    }
    while (to > 0 && p[to - 1] == ' ')
        --to;
    return to;
}

// The bytes without the blanks before and after them.
inline QByteArrayView trimBlanks(QByteArrayView bytes) {
    const qsizetype to = endOfText(bytes.data(), bytes.size());
    qsizetype from = 0;
    while (from < to && bytes[from] == ' ')
        ++from;
    return bytes.sliced(from, to - from);
}

// "<$c>" stands for a line break inside a stored multi-line value.
QString lineBreaksToMarks(const QString& text);
QString marksToLineBreaks(const QString& text);

// Builds the stored line of a booking: fields padded or cut to their widths at their columns, the booked
// times at the end, the arrival and departure columns blank. Exactly 1186 bytes, no line end.
QByteArray encodeRecordLine(const CurrentRecord& record);

// Fills the record's fields, arrival, departure and booked times from a stored line.
void decodeRecordLine(const RecordLine& line, CurrentRecord& record);

} // namespace porvane
