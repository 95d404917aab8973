#include "lists/list_text.h"

namespace porvane {

namespace {

QString csvField(const QString& cell) {
    if (!cell.contains(u',') && !cell.contains(u'"') && !cell.contains(u'\n') && !cell.contains(u'\r'))
        return cell;
    QString quoted = cell;
    return u'"' + quoted.replace(QStringLiteral("\""), QStringLiteral("\"\"")) + u'"';
}

} // namespace

QString listTableText(const ListTable& table, bool csv) {
    const QChar separator = csv ? u',' : u'\t';
    const QString lineEnd = csv ? QStringLiteral("\r\n") : QStringLiteral("\n");
    QString out;
    auto addLine = [&](auto&& cell) {
        for (int c = 0; c < table.columnCount(); ++c) {
            if (c > 0)
                out += separator;
            const QString text = cell(c).trimmed();
            out += csv ? csvField(text) : text;
        }
        out += lineEnd;
    };
    addLine([&](int c) { return table.columns[c].header; });
    for (int r = 0; r < table.listedCount(); ++r)
        addLine([&](int c) { return table.text(r, c); });
    return out;
}

} // namespace porvane
