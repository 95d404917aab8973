#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QColor>
#include <QList>
#include <QString>
#include <array>

namespace porvane {

// The text colours a list cell can take, as the desk has always coloured its lists.
enum class TextColour : quint8 { Black, Grey, DarkBlue, Red, Green };
QColor textColourValue(TextColour colour);

struct ListColumn {
    QString header;
    int width = 0; // the grid's units (pixels at 96 dpi)
    Qt::Alignment alignment = Qt::AlignCenter;
};

// What a list builder produces and the grid, list printing and porvane-admin show as it is: the columns,
// one row of cells per listed entry, the two row colours and the count. Cell texts are kept as the stored
// Windows-1252 bytes in one buffer and turned into text only when a cell is asked for, so a month of tens
// of thousands of rows costs a few allocations, not one per cell.
class ListTable {
public:
    static constexpr int kTrailingEmptyRows = 50;

    QList<ListColumn> columns;
    std::array<QColor, 2> rowColours{QColor(0xFF, 0xFF, 0xFF), QColor(0xE0, 0xE0, 0xE0)};
    // Empty rows the grid shows after the last entry.
    int trailingEmptyRows = kTrailingEmptyRows;

    int columnCount() const { return int(columns.size()); }
    // The listed rows; ListedCount takes this number.
    int listedCount() const { return int(m_rowStarts.size()); }
    // The rows the grid shows: the listed ones and the empty ones after them.
    int gridRowCount() const { return listedCount() + trailingEmptyRows; }

    // Rows and columns from 0; rows past the listed ones are empty and black.
    QByteArrayView bytes(int row, int column) const;
    QString text(int row, int column) const;
    TextColour textColour(int row, int column) const;
    const QColor& rowColour(int row) const { return rowColours[std::size_t(row % 2)]; }

    // Building, row by row: every row gets exactly columnCount() cells. Reserving room for the rows and their
    // text up front spares a long list the copies and fresh pages of growing step by step.
    void reserve(int rows, qsizetype textBytes);
    void beginRow();
    void addCell(QByteArrayView bytes, TextColour colour = TextColour::Black);
    // Appends to the last cell added.
    void extendCell(QByteArrayView bytes);
    // Drops the rows from `rows` on.
    void truncate(int rows);

private:
    qsizetype cellIndex(int row, int column) const { return m_rowStarts[row] + column; }

    QByteArray m_text;
    QList<quint32> m_cellEnds; // end offset in m_text of each cell, row after row
    QList<TextColour> m_colours;
    QList<quint32> m_rowStarts; // index of each row's first cell
};

} // namespace porvane
