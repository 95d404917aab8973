#include "store/record_line.h"

#include "store/windows1252.h"

namespace porvane {

namespace {
const QString kLineBreakMark = QStringLiteral("<$c>");
const QString kLineBreak = QStringLiteral("\r\n");
} // namespace

QString RecordLine::text(int column, int width) const {
    return fromWindows1252(columns(column, width));
}

QString RecordLine::trimmed(int column, int width) const {
    return fromWindows1252(trimBlanks(columns(column, width)));
}

QByteArrayView RecordLine::regNo() const {
    return trimBlanks(columns(1, fieldSpec(Field::RegNo).width));
}

QByteArrayView RecordLine::bookedSlot(int day) const {
    return trimBlanks(columns(bookedSlotColumn(day), kBookedSlotWidth));
}

QString lineBreaksToMarks(const QString& text) {
    QString out = text;
    return out.replace(kLineBreak, kLineBreakMark);
}

QString marksToLineBreaks(const QString& text) {
    QString out = text;
    return out.replace(kLineBreakMark, kLineBreak);
}

QByteArray encodeRecordLine(const CurrentRecord& record) {
    QByteArray line(kRecordLineLength, ' ');
    auto put = [&line](int column, int width, const QString& value) {
        QByteArray bytes = toWindows1252(value);
        // A line break left in a value would split the record in two: it is stored as a blank.
        bytes.replace('\r', ' ').replace('\n', ' ');
        std::copy_n(bytes.constData(), std::min<qsizetype>(width, bytes.size()), line.data() + column - 1);
    };
    for (int i = 0; i <= int(kLastWrittenField); ++i) {
        const FieldSpec& def = kRecordFields[std::size_t(i)];
        const QString& value = record[def.field];
        put(def.column, def.width, def.field == Field::IllnessDetails ? lineBreaksToMarks(value) : value);
    }
    for (int k = 0; k < kBookedSlotCount; ++k) {
        const QString time = record.bookedTimes()[std::size_t(k)].trimmed();
        if (time.isEmpty())
            continue;
        // A slot holds the first two and the last two characters of the time, whatever its length: 09:30 is
        // stored as 0930, 9:30 unchanged.
        put(bookedSlotColumn(k + 1), kBookedSlotWidth, time.left(2) + time.right(2));
    }
    return line;
}

void decodeRecordLine(const RecordLine& line, CurrentRecord& record) {
    for (const FieldSpec& def : kRecordFields) {
        const QString value = line.trimmed(def.field);
        record[def.field] = def.field == Field::IllnessDetails ? marksToLineBreaks(value) : value;
    }
    // Arrival and departure keep their five columns: "  -  " means not yet.
    for (Field f : {Field::TimeOnSite, Field::TimeOffSite}) {
        const QString raw = line.text(f);
        record[f] = raw.trimmed() == u"-" || raw.trimmed().isEmpty() ? QString::fromUtf16(kNoTimeMark) : raw;
    }
    for (int k = 0; k < kBookedSlotCount; ++k)
        record.bookedTimes()[std::size_t(k)] = fromWindows1252(line.bookedSlot(k + 1));
    record.bookedTimes()[kBookedSlotCount].clear();
}

} // namespace porvane
