#include "lists/list_text.h"

#include "store/windows1252.h"

#include <QIODevice>
#include <algorithm>

namespace porvane {

namespace {

constexpr qsizetype kPieceSize = 64 * 1024;

// The blanks QString::trimmed() removes from Windows-1252 text: ASCII white space and the no-break space.
bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\xA0';
}

bool isPlainAscii(char c) {
    return c >= 0x20 && c < 0x7F;
}

// A control character would reach the terminal raw and a tab inside a cell would split its column: each is
// shown as "?".
bool isControl(QChar c) {
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
}

// A cell's stored bytes trimmed, as UTF-8 with control characters shown as "?". Nearly every cell is plain
// ASCII, which is UTF-8 already and goes out as it is.
QByteArrayView shownUtf8(QByteArrayView bytes, QByteArray& scratch) {
    qsizetype from = 0;
    qsizetype to = bytes.size();
    while (from < to && isBlank(bytes[from]))
        ++from;
    while (to > from && isBlank(bytes[to - 1]))
        --to;
    const QByteArrayView trimmed = bytes.sliced(from, to - from);
    if (std::all_of(trimmed.begin(), trimmed.end(), isPlainAscii))
        return trimmed;
    QString text = fromWindows1252(trimmed);
    std::replace_if(text.begin(), text.end(), isControl, u'?');
    scratch = text.toUtf8();
    return scratch;
}

void appendField(QByteArray& out, QByteArrayView text, bool csv) {
    const bool quoted =
        csv && std::any_of(text.begin(), text.end(), [](char c) { return c == ',' || c == '"'; });
    if (!quoted) {
        out.append(text);
        return;
    }
    out.append('"');
    for (const char c : text) {
        if (c == '"')
            out.append('"');
        out.append(c);
    }
    out.append('"');
}

} // namespace

bool writeListTableText(const ListTable& table, bool csv, QIODevice& out) {
    const char separator = csv ? ',' : '\t';
    const QByteArrayView lineEnd = csv ? QByteArrayView("\r\n") : QByteArrayView("\n");
    QByteArray piece;
    piece.reserve(kPieceSize + 4096);
    QByteArray scratch;
    bool ok = true;
    auto flush = [&] {
        ok = ok && out.write(piece) == piece.size();
        piece.resize(0);
    };
    for (int c = 0; c < table.columnCount(); ++c) {
        if (c > 0)
            piece.append(separator);
        appendField(piece, table.columns[c].header.trimmed().toUtf8(), csv);
    }
    piece.append(lineEnd);
    for (int r = 0; r < table.listedCount(); ++r) {
        for (int c = 0; c < table.columnCount(); ++c) {
            if (c > 0)
                piece.append(separator);
            appendField(piece, shownUtf8(table.cell(r, c).bytes, scratch), csv);
        }
        piece.append(lineEnd);
        if (piece.size() >= kPieceSize)
            flush();
    }
    flush();
    return ok;
}

} // namespace porvane
