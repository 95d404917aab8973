#pragma once

#include <QtGlobal>

#include "lists/list_table.h"
#include "store/file_error.h"
#include "store/line_files.h"
#include "store/record_line.h"

#include <QByteArrayView>
#include <QDate>
#include <algorithm>
#include <array>
#include <cstring>
#include <span>

namespace porvane {

// How a list column shows its columns of the booking line.
enum class Shown : quint8 {
    AsRead,   // the stored columns, blanks included
    Trimmed,  // without leading and trailing blanks
    PassType, // the pass period letter: "D" Day, "W" Week, "M" Month, anything else nothing
    Own,      // filled by the list itself (booked times, day, arrival and departure)
};

// One column of a list grid and the part of the booking line it shows (1-based column, width).
struct ColumnDef {
    const char* header;
    int width;
    bool left; // left-aligned; centred otherwise
    int column;
    int size;
    Shown shown;
    // Words a printed list may wrap onto more lines; every other column (numbers, dates, times, telephone
    // numbers, car registrations) is printed on one line.
    bool wraps = false;
};

// A column showing one whole field of the booking line, placed as the field table places it.
constexpr ColumnDef fieldColumn(const char* header, int width, bool left, Field field, Shown shown,
                                bool wraps = false) {
    return {header, width, left, fieldSpec(field).column, fieldSpec(field).width, shown, wraps};
}

// The columns the lists share, each defined once; a list's table picks them in its own order.
inline constexpr ColumnDef kColRegistration =
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Registration"), 100, false, Field::RegNo, Shown::AsRead);
inline constexpr ColumnDef kColFirstName = fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "First Name"), 100,
                                                       true, Field::FirstName, Shown::Trimmed, true);
inline constexpr ColumnDef kColLastName = fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Last Name"), 100,
                                                      true, Field::LastName, Shown::Trimmed, true);
inline constexpr ColumnDef kColOrganisation = fieldColumn(
    QT_TRANSLATE_NOOP("ListColumns", "Organisation"), 180, true, Field::Organisation, Shown::AsRead, true);
inline constexpr ColumnDef kColCategory = fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Category"), 140, true,
                                                      Field::Category, Shown::AsRead, true);
inline constexpr ColumnDef kColParty =
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Party"), 45, false, Field::PartySize, Shown::Trimmed);
inline constexpr ColumnDef kColTelephone =
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Telephone"), 110, true, Field::OrgDirectTel, Shown::AsRead);
inline constexpr ColumnDef kColPassValid =
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Pass Valid"), 75, false, Field::PassStart, Shown::AsRead);
inline constexpr ColumnDef kColPassIssued = fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Pass Issued"), 120,
                                                        false, Field::PassIssued, Shown::AsRead);
// The pass period's two characters apart: its count, then its unit letter.
inline constexpr int kPassPeriodColumn = fieldSpec(Field::PassPeriod).column;
inline constexpr ColumnDef kColLength{
    QT_TRANSLATE_NOOP("ListColumns", "Length"), 50, false, kPassPeriodColumn, 1, Shown::AsRead};
inline constexpr ColumnDef kColPassType{
    QT_TRANSLATE_NOOP("ListColumns", "Pass Type"), 65, false, kPassPeriodColumn + 1, 1, Shown::PassType};
inline constexpr ColumnDef kColPassEnds =
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Pass Ends"), 75, false, Field::PassEnd, Shown::AsRead);
inline constexpr ColumnDef kColCarReg =
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Car Reg"), 75, false, Field::CarReg, Shown::AsRead);
inline constexpr ColumnDef kColReportsTo = fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Reports to:"), 140,
                                                       true, Field::Visiting, Shown::AsRead, true);
inline constexpr ColumnDef kColDepartment = fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Department"), 150,
                                                        true, Field::Department, Shown::AsRead, true);
inline constexpr ColumnDef kColContact =
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Contact"), 110, true, Field::VisitingTel, Shown::AsRead);
inline constexpr ColumnDef kColExpected{
    QT_TRANSLATE_NOOP("ListColumns", "Expected"), 60, false, 0, 0, Shown::Own};

// The pass period letter shown as "Day", "Week" or "Month"; anything else shows nothing.
QByteArrayView passTypeText(QByteArrayView letter);

// How one list makes its rows' cells from their booking lines: its columns, its second row colour (the first
// is always white) and the cells it fills itself (booked times, day, arrival and departure) from the line and
// the note it keeps for the row. Cells of columns after the first take the row's colour.
struct ListLayout {
    std::span<const ColumnDef> columns;
    quint32 secondRowColour; // 0xRRGGBB
    ListCell (*ownCell)(const RecordLine& line, quint16 note, int column, std::array<char, 8>& scratch);
    TextColour (*rowColour)(quint16 note) = nullptr; // black when there is none
};

// The cell of one column of a row; `scratch` holds a cell that is not stored as it shows, `colour` is the
// colour the row gives its cells. Inline, with the row below: porvane-admin asks for every cell of every row
// of a month.
inline ListCell cellOf(const ListLayout& layout, const RecordLine& line, quint16 note, int column,
                       TextColour colour, std::array<char, 8>& scratch) {
    const ColumnDef& def = layout.columns[std::size_t(column)];
    switch (def.shown) {
    case Shown::AsRead:
        return {line.columns(def.column, def.size), colour};
    case Shown::Trimmed:
        return {trimBlanks(line.columns(def.column, def.size)), colour};
    case Shown::PassType:
        return {passTypeText(line.columns(def.column, 1)), colour};
    case Shown::Own:
        break;
    }
    return layout.ownCell(line, note, column, scratch);
}

// One listed row's cells, taken in turn from its line, which is read once; valid until the table reads
// another line. A cell's bytes are valid until the next cell is asked for.
class ListRow {
public:
    // Where a row's line lies: the number of its file in the table and its offset there. A month list's rows
    // of one booking, one for each booked day, lie at the same place.
    struct Place {
        int file = -1;
        qint64 offset = -1;
        bool operator==(const Place&) const = default;
    };

    ListRow() = default;
    ListRow(const ListLayout* layout, QByteArrayView line, Place place, quint16 note,
            std::array<char, 8>* scratch)
        : m_layout(layout)
        , m_line(line)
        , m_place(place)
        , m_note(note)
        , m_colour(layout && layout->rowColour ? layout->rowColour(note) : TextColour::Black)
        , m_scratch(scratch) {}
    Place place() const { return m_place; }
    int columnCount() const { return m_layout ? int(m_layout->columns.size()) : 0; }
    // The column's cell is made of the line alone, the same in every row of it.
    bool ofLineAlone(int column) const { return m_layout->columns[std::size_t(column)].shown != Shown::Own; }
    ListCell cell(int column) const {
        if (!m_layout || column < 0 || column >= int(m_layout->columns.size()))
            return {};
        return cellOf(*m_layout, RecordLine(m_line), m_note, column,
                      column == 0 ? TextColour::Black : m_colour, *m_scratch);
    }

private:
    const ListLayout* m_layout = nullptr; // none for a row past the listed ones: every cell empty
    QByteArrayView m_line;
    Place m_place;
    quint16 m_note = 0;
    TextColour m_colour = TextColour::Black; // of every cell but the first
    std::array<char, 8>* m_scratch = nullptr;
};

// The last column any list shows: a line is read again only as far as this.
inline constexpr int kLastListedColumn = bookedSlotColumn(kBookedSlotCount) + kBookedSlotWidth - 1;

// A list as built: the table, and the file error that stopped the reading (the rows read before it stay).
struct BuiltList {
    ListTable table;
    FileError error;
};

// A booked-time slot shown as its first two characters, ":" and its last two (0930 -> 09:30).
ListCell slotCell(QByteArrayView slot, std::array<char, 8>& scratch, TextColour colour = TextColour::Black);
// The four stored columns of a day's booked-time slot, blanks included.
QByteArrayView rawSlot(const RecordLine& line, int day);
// A slot holds a booked time when it is not all blanks. Looked at 31 times a line, so kept small.
inline bool isBooked(QByteArrayView slot) {
    if (slot.size() == 4)
        return std::memcmp(slot.data(), "    ", 4) != 0;
    return std::any_of(slot.begin(), slot.end(), [](char c) { return c != ' '; });
}

// The pass-date range test: from <= date <= to, each "dd-mm-yyyy" text taken as the number yymmdd, so by
// two-digit year first (a date of 2100 sorts before 2099, as it always has). The date is tested against every
// line of a month, so it comes as its number.
bool passDateInRange(QByteArrayView from, QByteArrayView to, int dateNumber);
// "dd-mm-yyyy" as stored in the pass columns, and as the number the range test takes.
QByteArray storedDate(const QDate& date);
int passDateNumber(const QDate& date);

} // namespace porvane
