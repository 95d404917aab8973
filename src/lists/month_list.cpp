#include "lists/month_list.h"

#include "store/line_reader.h"

#include <QFileInfo>
#include <QtGlobal>

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

int yymmdd(int year, int month, int day) {
    return ((year % 100) * 100 + month) * 100 + day;
}

} // namespace

BuiltList buildMonthList(const QString& dataPath, const QDate& month, const QDate& today) {
    BuiltList out{tableWithColumns(kMonthColumns, QColor(0xE0, 0xE0, 0xE0)), {}};
    const int todayNumber = yymmdd(today.year(), today.month(), today.day());
    const int monthNumber = yymmdd(month.year(), month.month(), 0);
    const QString file = monthFileOf(dataPath, month);
    // Most bookings are booked on a day or two of their month: room for two rows of each, at most every
    // column's width, is enough for nearly every month and costs nothing where it stays unused.
    const int lines = int(QFileInfo(file).size() / (kRecordLineLength + 2)) + 1;
    out.table.reserve(2 * lines, qsizetype(2 * lines) * rowTextWidth(kMonthColumns));
    LineReader reader(file);
    QByteArrayView bytes;
    while (reader.next(bytes)) {
        const RecordLine line(bytes);
        for (int day = 1; day <= kBookedSlotCount; ++day) {
            const QByteArrayView slot = rawSlot(line, day);
            if (trimBlanks(slot).isEmpty())
                continue;
            const int rowNumber = monthNumber + day;
            const TextColour colour = rowNumber < todayNumber    ? TextColour::Grey
                                      : rowNumber == todayNumber ? TextColour::DarkBlue
                                                                 : TextColour::Black;
            addLineRow(out.table, line, kMonthColumns, colour, [&](ListTable& table, int column) {
                if (column == kDayColumn) {
                    const char dd[2] = {char('0' + day / 10), char('0' + day % 10)};
                    table.addCell(QByteArrayView(dd, 2), colour);
                } else {
                    addSlotCell(table, slot, colour);
                }
            });
        }
    }
    out.error = reader.error();
    return out;
}

} // namespace porvane
