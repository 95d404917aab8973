#include "photos/save_filter.h"

namespace porvane {

QStringList saveFilterToNameFilters(const QString& filter) {
    QString pieces = filter;
    pieces.replace(u'|', QChar(0)).replace(u':', QChar(0));
    QStringList out;
    for (int i = 1;; i += 2) {
        const QString description = piece(pieces, i).trimmed();
        const QString pattern = piece(pieces, i + 1).trimmed();
        if (description.isEmpty() && pattern.isEmpty())
            break;
        if (pattern.isEmpty()) {
            out << description;
            continue;
        }
        // Qt reads the patterns from the last parentheses of a name filter, separated by blanks.
        const QString patterns = QString(pattern).replace(u';', u' ').simplified();
        if (description.endsWith(u'(' + patterns + u')'))
            out << description;
        else
            out << (description.isEmpty() ? patterns : description) + QStringLiteral(" (") + patterns + u')';
    }
    return out;
}

QString piece(const QString& text, int n) {
    if (n < 1)
        return {};
    const QStringList pieces = text.split(QChar(0));
    return n <= pieces.size() ? pieces.at(n - 1) : QString();
}

} // namespace porvane
