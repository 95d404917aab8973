#include "lists/list_table.h"

#include "lists/list_columns.h"
#include "store/line_reader.h"
#include "store/windows1252.h"

#include <QCoreApplication>

namespace porvane {

quint32 textColourRgb(TextColour colour) {
    switch (colour) {
    case TextColour::Grey:
        return 0x808080;
    case TextColour::DarkBlue:
        return 0x0000A0;
    case TextColour::Red:
        return 0xFF0000;
    case TextColour::Green:
        return 0x008000;
    case TextColour::Black:
        break;
    }
    return 0x000000;
}

ListTable::ListTable(const ListLayout& layout)
    : rowColours{0xFFFFFF, layout.secondRowColour}
    , m_layout(&layout) {
    columns.reserve(qsizetype(layout.columns.size()));
    for (const ColumnDef& def : layout.columns)
        columns.append({QCoreApplication::translate("ListColumns", def.header), def.width,
                        def.left ? Qt::Alignment(Qt::AlignLeft) : Qt::Alignment(Qt::AlignHCenter),
                        def.wraps});
}

ListTable::ListTable(const ListLayout& layout, const LineReader& reader)
    : ListTable(layout) {
    readFrom(reader);
}

void ListTable::readFrom(const LineReader& reader) {
    m_readingFile = quint16(m_lines->addFile(reader.handle()));
}

void ListTable::addRow(const LineReader& reader, qsizetype lineLength, quint16 note,
                       const RowListener& listener) {
    const auto length = quint16(std::min<qsizetype>(lineLength, kLastListedColumn));
    const qint64 offset = reader.lineOffset();
    const QByteArrayView line = reader.line().first(length);
    if (listener) {
        // Its listener has the row as it is read: it is not kept.
        m_rows.append({offset, length, note, m_readingFile, -1});
        listener(*this, ListRow(m_layout, line, {m_readingFile, offset}, note, &m_scratch));
        return;
    }
    // A month list lists a line once for each of its booked days; it is kept once.
    const Row* last = m_rows.isEmpty() ? nullptr : &m_rows.last();
    const bool same = last && last->file == m_readingFile && last->offset == offset;
    m_rows.append({offset, length, note, m_readingFile, same ? last->kept : m_lines->keep(line)});
}

qsizetype ListTable::readSpan(int row) const {
    // Farther apart than this, two reads cost less than reading the bytes between them.
    constexpr qint64 kNear = 4096;
    const qint64 from = m_rows[row].offset;
    qint64 end = from + m_rows[row].length;
    for (qsizetype next = row + 1; next < m_rows.size(); ++next) {
        const Row& r = m_rows[next];
        if (r.file != m_rows[row].file || r.offset < from || r.offset > end + kNear ||
            r.offset + r.length - from > LineCache::kBlock)
            break;
        end = std::max<qint64>(end, r.offset + r.length);
    }
    return end - from;
}

ListRow ListTable::row(int row) const {
    if (row < 0 || row >= listedCount())
        return {};
    const Row& r = m_rows[row];
    const QByteArrayView line =
        r.kept >= 0 ? m_lines->kept(r.kept, r.length)
                    : m_lines->line(r.file, r.offset, r.length,
                                    m_lines->holds(r.file, r.offset, r.length) ? 0 : readSpan(row));
    return ListRow(m_layout, line, {r.file, r.offset}, r.note, &m_scratch);
}

ListCell ListTable::cell(int row, int column) const {
    return this->row(row).cell(column);
}

QString ListTable::text(int row, int column) const {
    return fromWindows1252(cell(row, column).bytes);
}

ListTable ListTable::withRows(const QList<int>& rows) const {
    ListTable shown = *this;
    shown.m_rows.clear();
    for (const int row : rows)
        if (row >= 0 && row < listedCount())
            shown.m_rows.append(m_rows[row]);
    return shown;
}

} // namespace porvane
