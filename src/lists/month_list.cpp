#include "lists/month_list.h"

#include "store/line_reader.h"

#include <QtGlobal>
#include <cstring>

namespace porvane {

namespace {

constexpr ColumnDef kMonthColumns[] = {
    kColRegistration,
    kColFirstName,
    kColLastName,
    kColOrganisation,
    {QT_TRANSLATE_NOOP("ListColumns", "Day"), 40, false, 0, 0, Shown::Own},
    kColExpected,
    kColCategory,
    kColParty,
    kColTelephone,
    kColPassValid,
    kColPassIssued,
    kColLength,
    kColPassType,
    kColPassEnds,
    kColCarReg,
    kColReportsTo,
    kColDepartment,
    kColContact,
};

constexpr int kDayColumn = 4;

// A row's note: its day of the month, and its colour against today above it.
quint16 rowNote(int day, TextColour colour) {
    return quint16(day | int(colour) << 8);
}

TextColour noteColour(quint16 note) {
    return TextColour(note >> 8);
}

ListCell dayOrTimeCell(const RecordLine& line, quint16 note, int column, std::array<char, 8>& scratch) {
    const int day = note & 0xFF;
    if (column != kDayColumn)
        return slotCell(rawSlot(line, day), scratch, noteColour(note));
    scratch[0] = char('0' + day / 10);
    scratch[1] = char('0' + day % 10);
    return {QByteArrayView(scratch.data(), 2), noteColour(note)};
}

constexpr ListLayout kMonthLayout{kMonthColumns, 0xE0E0E0, dayOrTimeCell, noteColour};

int yymmdd(int year, int month, int day) {
    return ((year % 100) * 100 + month) * 100 + day;
}

} // namespace

BuiltList buildMonthList(LineFiles& files, const QDate& month, const QDate& today,
                         const RowListener& listener) {
    const int todayNumber = yymmdd(today.year(), today.month(), today.day());
    const int monthNumber = yymmdd(month.year(), month.month(), 0);
    const std::unique_ptr<LineReader> reader = files.read(LineFileName::month(month));
    BuiltList out{ListTable(kMonthLayout, *reader), {}};
    QByteArrayView bytes;
    while (reader->next(bytes)) {
        // The booked times of the whole month at once; a short line has fewer.
        const QByteArrayView times =
            RecordLine(bytes).columns(bookedSlotColumn(1), kBookedSlotCount * kBookedSlotWidth);
        for (int day = 1; day <= kBookedSlotCount; ++day) {
            const qsizetype at = qsizetype(day - 1) * kBookedSlotWidth;
            if (at >= times.size())
                break;
            // Most days have no booked time: two empty slots are passed over at once.
            if (times.size() - at >= 2 * kBookedSlotWidth &&
                std::memcmp(times.data() + at, "        ", 2 * kBookedSlotWidth) == 0) {
                ++day;
                continue;
            }
            if (!isBooked(times.sliced(at, std::min<qsizetype>(kBookedSlotWidth, times.size() - at))))
                continue;
            const int rowNumber = monthNumber + day;
            const TextColour colour = rowNumber < todayNumber    ? TextColour::Grey
                                      : rowNumber == todayNumber ? TextColour::DarkBlue
                                                                 : TextColour::Black;
            out.table.addRow(*reader, bytes.size(), rowNote(day, colour), listener);
        }
    }
    out.error = reader->error();
    return out;
}

} // namespace porvane
