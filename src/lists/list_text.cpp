#include "lists/list_text.h"

#include "lists/list_columns.h"
#include "store/windows1252.h"

#include <QIODevice>
#include <algorithm>
#include <array>
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

// A control character would reach the terminal raw and a tab inside a cell would split its column: each is
// shown as "?".
bool isControl(QChar c) {
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
}

// The text going out, written straight into a buffer with room for a row and handed on a piece at a time.
class TextOut {
public:
    TextOut(QIODevice& device, bool csv)
        : m_device(device)
        , m_csv(csv)
        , m_buffer(kPieceSize + kRowRoom, Qt::Uninitialized) {}

    // A cell's stored bytes trimmed, as UTF-8, quoted in CSV where it must be. Nearly every cell is plain
    // ASCII, which is UTF-8 already and is copied as it is.
    void field(QByteArrayView bytes) {
        qsizetype from = 0;
        qsizetype to = bytes.size();
        // Stored cells are padded with blanks: eight at a time first.
        while (to - from >= 8 && std::memcmp(bytes.data() + to - 8, "        ", 8) == 0)
            to -= 8;
        while (to > from && classOf(bytes[to - 1]) & kBlank)
            --to;
        while (from < to && classOf(bytes[from]) & kBlank)
            ++from;
        quint8 classes = 0;
        for (qsizetype i = from; i < to; ++i)
            classes |= classOf(bytes[i]);
        if (classes & kNotPlain) {
            field(fromWindows1252(bytes.sliced(from, to - from)));
            return;
        }
        char* const start = m_at;
        m_at = std::copy(bytes.begin() + from, bytes.begin() + to, m_at);
        if (classes & kCsvSpecial && m_csv) {
            const QByteArray ascii(start, m_at - start);
            m_at = start;
            quoted(ascii);
        }
    }
    void field(QString text) {
        std::replace_if(text.begin(), text.end(), isControl, u'?');
        const QByteArray utf8 = text.toUtf8();
        if (m_csv && std::any_of(utf8.begin(), utf8.end(), [](char c) { return c == ',' || c == '"'; })) {
            quoted(utf8);
            return;
        }
        m_at = std::copy(utf8.begin(), utf8.end(), m_at);
    }
    void put(char c) { *m_at++ = c; }
    void put(QByteArrayView bytes) { m_at = std::copy(bytes.begin(), bytes.end(), m_at); }
    // After a row: the piece goes out once it is full.
    void endRow() {
        if (m_at - m_buffer.data() >= kPieceSize)
            flush();
    }
    bool flush() {
        const qsizetype size = m_at - m_buffer.data();
        m_ok = m_ok && m_device.write(m_buffer.constData(), size) == size;
        m_at = m_buffer.data();
        return m_ok;
    }

private:
    // A field between quotes, its quotes doubled.
    void quoted(QByteArrayView text) {
        *m_at++ = '"';
        for (const char c : text) {
            if (c == '"')
                *m_at++ = '"';
            *m_at++ = c;
        }
        *m_at++ = '"';
    }

    QIODevice& m_device;
    bool m_csv;
    QByteArray m_buffer;
    char* m_at = m_buffer.data();
    bool m_ok = true;
};

} // namespace

bool writeListTableText(const ListTable& table, bool csv, QIODevice& out) {
    const char separator = csv ? ',' : '\t';
    const QByteArrayView lineEnd = csv ? QByteArrayView("\r\n") : QByteArrayView("\n");
    TextOut text(out, csv);
    for (int c = 0; c < table.columnCount(); ++c) {
        if (c > 0)
            text.put(separator);
        text.field(table.columns[c].header.trimmed());
    }
    text.put(lineEnd);
    for (int r = 0; r < table.listedCount(); ++r) {
        const ListRow row = table.row(r);
        for (int c = 0; c < table.columnCount(); ++c) {
            if (c > 0)
                text.put(separator);
            text.field(row.cell(c).bytes);
        }
        text.put(lineEnd);
        text.endRow();
    }
    return text.flush();
}

} // namespace porvane
