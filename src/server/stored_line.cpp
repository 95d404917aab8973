#include "server/stored_line.h"

#include "store/record_line.h"
#include "store/windows1252.h"

#include <QCoreApplication>

namespace porvane {

namespace {

QString fromColumns(QByteArrayView bytes) {
    qsizetype end = bytes.size();
    while (end > 0 && bytes[end - 1] == ' ')
        --end;
    return fromWindows1252(bytes.first(end));
}

void putColumns(QByteArray& line, int column, int width, const QString& value) {
    const QByteArray bytes = toWindows1252(value);
    std::copy_n(bytes.constData(), std::min<qsizetype>(width, bytes.size()), line.data() + column - 1);
}

} // namespace

StoredLine splitStoredLine(QByteArrayView bytes) {
    const RecordLine line(bytes);
    StoredLine stored;
    for (const FieldSpec& def : kRecordFields) {
        const QString value = fromColumns(line.columns(def.column, def.width));
        stored.fields[std::size_t(def.field)] =
            def.field == Field::IllnessDetails ? marksToLineBreaks(value) : value;
    }
    for (int day = 1; day <= kBookedSlotCount; ++day)
        stored.bookedSlots[std::size_t(day - 1)] =
            fromColumns(line.columns(bookedSlotColumn(day), kBookedSlotWidth));
    return stored;
}

QByteArray joinStoredLine(const StoredLine& stored) {
    QByteArray line(kRecordLineLength, ' ');
    for (const FieldSpec& def : kRecordFields) {
        const QString& value = stored.fields[std::size_t(def.field)];
        putColumns(line, def.column, def.width,
                   def.field == Field::IllnessDetails ? lineBreaksToMarks(value) : value);
    }
    for (int day = 1; day <= kBookedSlotCount; ++day)
        putColumns(line, bookedSlotColumn(day), kBookedSlotWidth, stored.bookedSlots[std::size_t(day - 1)]);
    return line;
}

QString whyNotStorable(QByteArrayView line) {
    if (line.size() != kRecordLineLength)
        return QCoreApplication::translate("StoredLine", "line is %1 characters long, not %2")
            .arg(line.size())
            .arg(kRecordLineLength);
    // The server's text cannot hold a NUL.
    if (const qsizetype at = line.indexOf('\0'); at >= 0)
        return QCoreApplication::translate("StoredLine", "NUL byte in column %1").arg(at + 1);
    if (joinStoredLine(splitStoredLine(line)) != line)
        return QCoreApplication::translate("StoredLine", "text between the fields, where the line is blank");
    return {};
}

} // namespace porvane
