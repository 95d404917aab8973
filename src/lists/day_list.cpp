#include "lists/day_list.h"

#include "store/line_reader.h"

#include <QtGlobal>

namespace porvane {

namespace {

constexpr ColumnDef kDayColumns[] = {
    kColRegistration, kColFirstName, kColLastName,  kColOrganisation, kColCategory, kColParty,
    kColTelephone,    kColExpected,  kColPassValid, kColPassIssued,   kColLength,   kColPassType,
    kColPassEnds,     kColCarReg,    kColReportsTo, kColDepartment,   kColContact,
};

// The row's note is the listed day; "Expected" shows its booked time, or four blanks for a pass holder.
ListCell expectedCell(const RecordLine& line, quint16 day, int, std::array<char, 8>& scratch) {
    const QByteArrayView slot = rawSlot(line, day);
    if (!isBooked(slot))
        return {"    "};
    return slotCell(slot, scratch);
}

constexpr ListLayout kDayLayout{kDayColumns, 0xE0E0E0, expectedCell};

} // namespace

BuiltList buildDayList(LineFiles& files, const QDate& date, const RowListener& listener) {
    const int dateNumber = passDateNumber(date);
    const int day = date.day();
    const std::unique_ptr<LineReader> reader =
        files.read(LineFileName::month(date), LineNarrowing::ofBookedDay(day));
    BuiltList out{ListTable(kDayLayout, *reader), {}};
    QByteArrayView bytes;
    while (reader->next(bytes)) {
        const RecordLine line(bytes);
        const bool booked = isBooked(rawSlot(line, day));
        if (booked ||
            passDateInRange(line.columns(Field::PassStart), line.columns(Field::PassEnd), dateNumber))
            out.table.addRow(*reader, bytes.size(), quint16(day), listener);
    }
    out.error = reader->error();
    return out;
}

} // namespace porvane
