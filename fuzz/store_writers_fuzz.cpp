// The store's writers on hostile month and status files: the note of an interrupted append, a rewrite that
// keeps and drops lines, an append after whatever tail the file has, and arrival marks on lines of any
// length. The first input bytes choose what is kept and noted; the rest is the file.
#include "fuzz_files.h"
#include "store/day_status.h"
#include "store/safe_file.h"

#include <QList>

using namespace porvane;

namespace {

// The lines as the readers must see them, split here by hand: CR LF, LF and a lone CR end a line.
QList<QByteArray> splitLines(const QByteArray& bytes) {
    QList<QByteArray> lines;
    QByteArray line;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (c != '\r' && c != '\n') {
            line += c;
            continue;
        }
        if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n')
            ++i;
        lines.append(std::exchange(line, {}));
    }
    if (!line.isEmpty())
        lines.append(line);
    return lines;
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void check(bool ok) {
    if (!ok)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3)
        return 0;
    const unsigned keepMask = data[0];
    const qint64 noted = data[1] * 16 + data[2];
    const QString path = fuzz::writeInput(QStringLiteral("Record/2402.vrf"), data + 3, size - 3);
    const QByteArray before = read(path);

    // A note of an append that a kill interrupted: only a tail without a line end past the noted length goes.
    QFile note(path + QStringLiteral(".appending"));
    if (!note.open(QIODevice::WriteOnly | QIODevice::Truncate) || note.write(QByteArray::number(noted)) < 0)
        qFatal("fuzz: cannot write the note");
    note.close();
    check(!cutInterruptedAppend(path));
    const QByteArray cut = read(path);
    check(!note.exists());
    check(before.startsWith(cut));
    if (cut.size() < before.size())
        check(cut.size() == noted && !before.endsWith('\n'));

    // Keep and drop lines by the mask: the result is exactly the kept lines, each ended by CR LF.
    int index = 0;
    QByteArray expected;
    for (const QByteArray& line : splitLines(cut))
        if (keepMask & (1u << (index++ % 8)))
            expected += line + "\r\n";
    index = 0;
    bool changed = false;
    const FileError rewritten = rewriteLines(
        path,
        [&](QByteArrayView line, QByteArray& out) {
            const int i = index++;
            if (!(keepMask & (1u << (i % 8))))
                return true; // dropped
            if (i % 2 == 0)
                return false;                  // kept as it is
            out.append(line).append(kLineEnd); // kept by writing it again
            return true;
        },
        &changed);
    if (rewritten) {
        // Only a line longer than any booking stops a rewrite, and then the file stays as it was.
        check(rewritten.number == FileError::PathFileAccess && read(path) == cut);
        return 0;
    }
    check(read(path) == expected);
    check(changed == (expected != cut));

    // An append ends a torn last line first and never joins the new line to it.
    const QByteArray line(40, 'n');
    check(!appendLine(path, line));
    check(read(path) == expected + line + "\r\n");

    // Arrival marks on the lines of the first line's key: every such line gets them, padded to 1000
    // columns when shorter; no other line changes.
    const QList<QByteArray> lines = splitLines(read(path));
    const QByteArray key = lines.value(0).left(12);
    check(!rewriteLines(path, markSiteTimes(key, "09:15", "  -  ")));
    const QList<QByteArray> marked = splitLines(read(path));
    check(marked.size() == lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (key.isEmpty() || lines[i].left(12) != key) {
            check(marked[i] == lines[i]);
            continue;
        }
        check(marked[i].size() == std::max<qsizetype>(lines[i].size(), 1000));
        check(marked[i].mid(990, 10) == "09:15  -  ");
    }
    return 0;
}
