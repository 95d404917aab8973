#include "lists/list_columns.h"

#include <QCoreApplication>

namespace porvane {

ListTable tableWithColumns(std::span<const ColumnDef> defs, const QColor& secondRowColour) {
    ListTable table;
    table.columns.reserve(qsizetype(defs.size()));
    for (const ColumnDef& def : defs)
        table.columns.append({QCoreApplication::translate("ListColumns", def.header), def.width,
                              def.left ? Qt::Alignment(Qt::AlignLeft) : Qt::Alignment(Qt::AlignHCenter)});
    table.rowColours = {QColor(0xFF, 0xFF, 0xFF), secondRowColour};
    return table;
}

qsizetype rowTextWidth(std::span<const ColumnDef> defs) {
    qsizetype width = 0;
    for (const ColumnDef& def : defs)
        width += def.shown == Shown::Own || def.shown == Shown::PassType ? 5 : def.size; // "hh:mm", "Month"
    return width;
}

QByteArrayView passTypeText(QByteArrayView letter) {
    if (letter == "D")
        return "Day";
    if (letter == "W")
        return "Week";
    if (letter == "M")
        return "Month";
    return {};
}

void addSlotCell(ListTable& table, QByteArrayView slot, TextColour colour) {
    table.addCell(slot.first(std::min<qsizetype>(2, slot.size())), colour);
    table.extendCell(":");
    table.extendCell(slot.last(std::min<qsizetype>(2, slot.size())));
}

QByteArrayView rawSlot(const RecordLine& line, int day) {
    return line.columns(bookedSlotColumn(day), kBookedSlotWidth);
}

namespace {

// The old desk's number reading: blanks are skipped wherever they stand, digits are read until anything
// else; no digit gives 0.
int valNumber(QByteArrayView text) {
    int n = 0;
    for (const char c : text) {
        if (c == ' ')
            continue;
        if (c < '0' || c > '9')
            break;
        n = n * 10 + (c - '0');
    }
    return n;
}

int passDateNumber(QByteArrayView date) {
    char yymmdd[6];
    qsizetype len = 0;
    // Characters 9-10, 4-5 and 1-2 of "dd-mm-yyyy"; a short text gives what it has.
    for (const auto& [from, count] : {std::pair{8, 2}, std::pair{3, 2}, std::pair{0, 2}})
        for (int i = from; i < from + count && i < date.size(); ++i)
            yymmdd[len++] = date[i];
    return valNumber(QByteArrayView(yymmdd, len));
}

} // namespace

bool passDateInRange(QByteArrayView from, QByteArrayView to, QByteArrayView date) {
    const int d = passDateNumber(date);
    return passDateNumber(from) <= d && d <= passDateNumber(to);
}

QByteArray storedDate(const QDate& date) {
    return date.toString(QStringLiteral("dd-MM-yyyy")).toLatin1();
}

QString monthFileOf(const QString& dataPath, const QDate& date) {
    return monthFilePath(dataPath, date.toString(QStringLiteral("yyMM")));
}

} // namespace porvane
