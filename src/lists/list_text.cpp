#include "lists/list_text.h"

#include "lists/list_columns.h"
#include "store/record_line.h"
#include "store/windows1252.h"

#include <QIODevice>
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace porvane {

namespace {

constexpr qsizetype kPieceSize = 64 * 1024;
// Room for a whole row however its cells turn out: every byte three bytes of UTF-8 and doubled in CSV.
constexpr qsizetype kRowRoom = 6 * 2048 + 256;

// What the writer needs to know of a byte, looked up at once: a blank that QString::trimmed() removes from
// Windows-1252 text (ASCII white space, the no-break space), a byte that is not plain ASCII, a CSV special.
enum ByteClass : quint8 { kBlank = 1, kNotPlain = 2, kCsvSpecial = 4 };
constexpr std::array<quint8, 256> makeByteClasses() {
    std::array<quint8, 256> classes{};
    for (int b = 0; b < 256; ++b) {
        quint8 k = b < 0x20 || b >= 0x7F ? kNotPlain : 0;
        if (b == ' ' || (b >= '\t' && b <= '\r') || b == 0xA0)
            k |= kBlank;
        if (b == ',' || b == '"')
            k |= kCsvSpecial;
        classes[std::size_t(b)] = k;
    }
    return classes;
}
constexpr std::array<quint8, 256> kByteClasses = makeByteClasses();

quint8 classOf(char c) {
    return kByteClasses[static_cast<unsigned char>(c)];
}

// Eight bytes at once, for the plain ASCII that nearly every cell is.
quint64 word(const char* at) {
    quint64 w;
    std::memcpy(&w, at, sizeof w);
    return w;
}
constexpr quint64 kOnes = 0x0101010101010101;
constexpr quint64 kHigh = 0x8080808080808080;
// The bits of a word's first n bytes (all of them from eight on), in memory order.
constexpr quint64 firstBytes(qsizetype n) {
    if (n >= 8)
        return ~quint64(0);
    const quint64 low = (quint64(1) << (8 * n)) - 1;
    return std::endian::native == std::endian::little ? low : ~(~quint64(0) >> (8 * n));
}
// The high bit of a byte is set where that byte, or one before it, is zero; none is set when no byte is.
constexpr quint64 zeroBytes(quint64 w) {
    return (w - kOnes) & ~w & kHigh;
}

// A control character would reach the terminal raw and a tab inside a cell would split its column: each is
// shown as "?".
bool isControl(QChar c) {
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
}

// Not zero when one of eight bytes is not plain ASCII (a control character, DEL or above) or, in CSV, is a
// comma or a quote.
quint64 notPlain(quint64 w, bool csv) {
    quint64 odd = (w & kHigh) | ((w - kOnes * 0x20) & ~w & kHigh) | zeroBytes(w ^ (kOnes * 0x7F));
    if (csv)
        odd |= zeroBytes(w ^ (kOnes * ',')) | zeroBytes(w ^ (kOnes * '"'));
    return odd;
}

} // namespace

ListTextWriter::ListTextWriter(QIODevice& device, bool csv)
    : m_device(device)
    , m_csv(csv)
    , m_buffer(kPieceSize + kRowRoom, Qt::Uninitialized) {}

// Inline: it runs for every cell of every row.
[[gnu::always_inline]] inline void ListTextWriter::field(QByteArrayView bytes) {
    const char* const p = bytes.data();
    const bool csv = m_csv; // once: what is written through char pointers could be any member
    qsizetype from = 0;
    qsizetype to = bytes.size();
    // Stored cells are padded with blanks; the other blanks are rare.
    to = endOfText(p, to);
    while (to > from && classOf(p[to - 1]) & kBlank)
        --to;
    while (from < to && classOf(p[from]) & kBlank)
        ++from;
    // Eight bytes at a time; the last word may read on past the cell inside its line and write on past it
    // into the buffer's spare room, but only the cell's bytes are looked at and kept.
    char* out = m_at;
    quint64 odd = 0;
    qsizetype i = from;
    for (; bytes.size() - i >= 8 && i < to; i += 8) {
        const quint64 w = word(p + i);
        odd |= notPlain(w, csv) & firstBytes(to - i);
        std::memcpy(out, &w, 8);
        out += 8;
    }
    quint8 classes = 0;
    for (; i < to; ++i) {
        classes |= classOf(p[i]);
        *out++ = p[i];
    }
    out -= i - to; // the last word's bytes past the cell
    if (odd == 0 && (classes & (kNotPlain | (csv ? kCsvSpecial : 0))) == 0) {
        m_at = out;
        return;
    }
    // Rarely: text outside ASCII or a control character is decoded; plain ASCII with a CSV special quoted.
    if (std::any_of(p + from, p + to, [](char c) { return classOf(c) & kNotPlain; })) {
        field(fromWindows1252(bytes.sliced(from, to - from)));
        return;
    }
    quoted(QByteArray(m_at, out - m_at));
}

void ListTextWriter::header(const ListTable& table) {
    for (int c = 0; c < table.columnCount(); ++c) {
        if (c > 0)
            put(m_csv ? ',' : '\t');
        field(table.columns[c].header.trimmed());
    }
    endRow();
}

void ListTextWriter::row(const ListRow& row) {
    const char separator = m_csv ? ',' : '\t';
    // A month list lists a booking once for each booked day: a row of the line before takes each run of cells
    // made of the line alone, with the separators between them, as it was written for that row.
    const bool again = row.place() == m_last.place && row.place().offset >= 0;
    char* const start = m_at;
    const int count = row.columnCount();
    m_last.cells.resize(std::max<std::size_t>(m_last.cells.size(), std::size_t(count)));
    for (int column = 0; column < count; ++column) {
        if (column > 0)
            put(separator);
        if (again && row.ofLineAlone(column)) {
            int end = column + 1;
            while (end < count && row.ofLineAlone(end))
                ++end;
            const qsizetype from = m_last.cells[std::size_t(column)].first;
            const qsizetype size = m_last.cells[std::size_t(end - 1)].second - from;
            std::memcpy(m_at, m_last.text.data() + from, std::size_t(size));
            m_at += size;
            column = end - 1;
            continue;
        }
        const qsizetype from = m_at - start;
        field(row.cell(column).bytes);
        if (!again)
            m_last.cells[std::size_t(column)] = {from, m_at - start};
    }
    if (!again) {
        m_last.place = row.place();
        m_last.text.assign(start, m_at);
    }
    endRow();
}

void ListTextWriter::endRow() {
    put(m_csv ? QByteArrayView("\r\n") : QByteArrayView("\n"));
    // The piece goes out once it is full.
    if (m_at - m_buffer.data() >= kPieceSize)
        flush();
}

bool ListTextWriter::flush() {
    const qsizetype size = m_at - m_buffer.data();
    m_ok = m_ok && m_device.write(m_buffer.constData(), size) == size;
    m_at = m_buffer.data();
    return m_ok;
}

void ListTextWriter::field(QString text) {
    std::replace_if(text.begin(), text.end(), isControl, u'?');
    const QByteArray utf8 = text.toUtf8();
    if (m_csv && std::any_of(utf8.begin(), utf8.end(), [](char c) { return c == ',' || c == '"'; })) {
        quoted(utf8);
        return;
    }
    put(utf8);
}

void ListTextWriter::put(QByteArrayView bytes) {
    m_at = std::copy(bytes.begin(), bytes.end(), m_at);
}

void ListTextWriter::quoted(QByteArrayView text) {
    *m_at++ = '"';
    for (const char c : text) {
        if (c == '"')
            *m_at++ = '"';
        *m_at++ = c;
    }
    *m_at++ = '"';
}

bool writeListTableText(const ListTable& table, bool csv, QIODevice& out) {
    ListTextWriter text(out, csv);
    text.header(table);
    for (int r = 0; r < table.listedCount(); ++r)
        text.row(table.row(r));
    return text.flush();
}

} // namespace porvane
