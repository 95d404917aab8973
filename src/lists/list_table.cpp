#include "lists/list_table.h"

#include "store/windows1252.h"

namespace porvane {

QColor textColourValue(TextColour colour) {
    switch (colour) {
    case TextColour::Grey:
        return {0x80, 0x80, 0x80};
    case TextColour::DarkBlue:
        return {0x00, 0x00, 0xA0};
    case TextColour::Red:
        return {0xFF, 0x00, 0x00};
    case TextColour::Green:
        return {0x00, 0x80, 0x00};
    case TextColour::Black:
        break;
    }
    return {0x00, 0x00, 0x00};
}

QByteArrayView ListTable::bytes(int row, int column) const {
    if (row < 0 || row >= listedCount() || column < 0 || column >= columnCount())
        return {};
    const qsizetype i = cellIndex(row, column);
    const quint32 from = i == 0 ? 0 : m_cellEnds[i - 1];
    return QByteArrayView(m_text.constData() + from, m_cellEnds[i] - from);
}

QString ListTable::text(int row, int column) const {
    return fromWindows1252(bytes(row, column));
}

TextColour ListTable::textColour(int row, int column) const {
    if (row < 0 || row >= listedCount() || column < 0 || column >= columnCount())
        return TextColour::Black;
    return m_colours[cellIndex(row, column)];
}

void ListTable::reserve(int rows, qsizetype textBytes) {
    m_text.reserve(textBytes);
    m_rowStarts.reserve(rows);
    m_cellEnds.reserve(qsizetype(rows) * columns.size());
    m_colours.reserve(qsizetype(rows) * columns.size());
}

void ListTable::beginRow() {
    m_rowStarts.append(quint32(m_cellEnds.size()));
}

void ListTable::addCell(QByteArrayView bytes, TextColour colour) {
    m_text.append(bytes);
    m_cellEnds.append(quint32(m_text.size()));
    m_colours.append(colour);
}

void ListTable::extendCell(QByteArrayView bytes) {
    m_text.append(bytes);
    m_cellEnds.last() = quint32(m_text.size());
}

void ListTable::truncate(int rows) {
    if (rows >= listedCount())
        return;
    const quint32 cells = m_rowStarts[rows];
    m_rowStarts.resize(rows);
    m_cellEnds.resize(cells);
    m_colours.resize(cells);
    m_text.resize(cells == 0 ? 0 : m_cellEnds.last());
}

} // namespace porvane
