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

} // namespace

BuiltList buildDayList(const QString& dataPath, const QDate& date) {
    BuiltList out{tableWithColumns(kDayColumns, QColor(0xE0, 0xE0, 0xE0)), {}};
    const QByteArray dateText = storedDate(date);
    const int day = date.day();
    LineReader reader(monthFileOf(dataPath, date));
    QByteArrayView bytes;
    while (reader.next(bytes)) {
        const RecordLine line(bytes);
        const QByteArrayView slot = rawSlot(line, day);
        const bool booked = !trimBlanks(slot).isEmpty();
        if (!booked && !passDateInRange(line.columns(936, 10), line.columns(947, 10), dateText))
            continue;
        addLineRow(out.table, line, kDayColumns, TextColour::Black, [&](ListTable& table, int) {
            if (booked)
                addSlotCell(table, slot);
            else
                table.addCell("    ");
        });
    }
    out.error = reader.error();
    return out;
}

} // namespace porvane
