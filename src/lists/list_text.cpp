#include "lists/list_text.h"

#include "store/windows1252.h"

#include <QIODevice>
#include <algorithm>

namespace porvane {

namespace {

constexpr qsizetype kPieceSize = 64 * 1024;

// The blanks QString::trimmed() removes, as far as they are ASCII.
bool isAsciiSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// A cell's text trimmed, as UTF-8. Nearly every stored cell is plain ASCII, which is UTF-8 already and is
// trimmed in place; any other goes through text so that it trims and converts as text does.
QByteArrayView trimmedUtf8(QByteArrayView bytes, QByteArray& scratch) {
    if (std::any_of(bytes.begin(), bytes.end(),
                    [](char c) { return static_cast<unsigned char>(c) >= 0x80; })) {
        scratch = fromWindows1252(bytes).trimmed().toUtf8();
        return scratch;
    }
    qsizetype from = 0;
    qsizetype to = bytes.size();
    while (from < to && isAsciiSpace(bytes[from]))
        ++from;
    while (to > from && isAsciiSpace(bytes[to - 1]))
        --to;
    return bytes.sliced(from, to - from);
}

void appendField(QByteArray& out, QByteArrayView text, bool csv) {
    const bool quoted = csv && std::any_of(text.begin(), text.end(), [](char c) {
                            return c == ',' || c == '"' || c == '\n' || c == '\r';
                        });
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
            appendField(piece, trimmedUtf8(table.bytes(r, c), scratch), csv);
        }
        piece.append(lineEnd);
        if (piece.size() >= kPieceSize)
            flush();
    }
    flush();
    return ok;
}

} // namespace porvane
