#pragma once

#include "lists/line_cache.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <array>
#include <functional>
#include <memory>

namespace porvane {

class LineReader;
struct ListLayout;

// The text colours a list cell can take, as the desk has always coloured its lists.
enum class TextColour : quint8 { Black, Grey, DarkBlue, Red, Green };
// As 0xRRGGBB; the grid and the printer make their colours of it.
quint32 textColourRgb(TextColour colour);

struct ListColumn {
    QString header;
    int width = 0; // the grid's units (pixels at 96 dpi)
    Qt::Alignment alignment = Qt::AlignCenter;
    bool wraps = false; // printed on more lines at its blanks when it must; else always on one line
};

// One cell: its stored Windows-1252 bytes, valid until the table is asked for another cell, and its colour.
struct ListCell {
    QByteArrayView bytes;
    TextColour colour = TextColour::Black;
};

class ListRow;
class ListTable;

// Hears of each row as a list is read: the table being built, and the row over the line just read (valid
// until the reading goes on). porvane-admin writes the rows out as they come, so a list is read once.
using RowListener = std::function<void(const ListTable& table, const ListRow& row)>;

// What a list builder produces and the grid, list printing and porvane-admin show as it is: the columns,
// the rows, the two row colours and the count. A row is only where its line lies in the file the list was
// read from (a search over several months reads several) and a small note of the list's own (the day of a
// month list's row); its cells are made from the line when they are asked for. The files are kept open, so a
// month replaced by another desk meanwhile still shows as it was read, and a month of tens of thousands of
// rows costs a few hundred kilobytes.
class ListTable {
public:
    static constexpr int kTrailingEmptyRows = 50;

    // A table without rows or columns.
    ListTable() = default;
    // An empty table with the layout's columns, to be read from the files readFrom() names.
    explicit ListTable(const ListLayout& layout);
    // An empty table with the layout's columns over the file the reader reads; rows are added as it reads.
    ListTable(const ListLayout& layout, const LineReader& reader);

    QList<ListColumn> columns;
    std::array<quint32, 2> rowColours{0xFFFFFF, 0xE0E0E0}; // 0xRRGGBB
    // Empty rows the grid shows after the last entry.
    int trailingEmptyRows = kTrailingEmptyRows;

    int columnCount() const { return int(columns.size()); }
    // The listed rows; ListedCount takes this number.
    int listedCount() const { return int(m_rows.size()); }
    // The rows the grid shows: the listed ones and the empty ones after them.
    int gridRowCount() const { return listedCount() + trailingEmptyRows; }

    // Rows and columns from 0; rows past the listed ones are empty and black.
    ListRow row(int row) const;
    ListCell cell(int row, int column) const;
    QString text(int row, int column) const;
    TextColour textColour(int row, int column) const { return cell(row, column).colour; }
    quint32 rowColour(int row) const { return rowColours[std::size_t(row % 2)]; }

    // The same table with only the given listed rows, in the given order: what the grid shows sorted or
    // filtered, for printing it as it is seen.
    ListTable withRows(const QList<int>& rows) const;

    // Rows added from now on are lines of the file the reader reads.
    void readFrom(const LineReader& reader);
    // Adds a row for the line the reader returned last, with the list's note for it, and hands it to the
    // listener if there is one.
    void addRow(const LineReader& reader, qsizetype lineLength, quint16 note = 0,
                const RowListener& listener = {});

private:
    struct Row {
        qint64 offset;
        quint16 length; // as far as any cell reaches
        quint16 note;
        quint16 file; // of m_lines
        qint32 kept;  // where m_lines keeps the line, -1 when it is read again
    };

    // How far the rows from this one on reach while each starts close behind the one before: what reading
    // this row again takes along.
    qsizetype readSpan(int row) const;

    const ListLayout* m_layout = nullptr;
    std::shared_ptr<LineCache> m_lines = std::make_shared<LineCache>();
    quint16 m_readingFile = 0;
    QList<Row> m_rows;
    mutable std::array<char, 8> m_scratch{}; // a cell that is not stored as it shows ("09:30")
};

} // namespace porvane
