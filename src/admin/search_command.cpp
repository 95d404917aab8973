#include "admin/list_command.h"
#include "lists/record_search.h"

#include <QRegularExpression>

namespace porvane::admin {

namespace {

// "YYYY-MM", or "YYYY-MM..YYYY-MM" for the months from the first to the last. A month that is no month
// (2026-13) is passed on as one, and the search says that it has no file.
std::optional<SearchMonths> monthsOf(const QString& text) {
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d{4})-(\\d{2})(?:\\.\\.(\\d{4})-(\\d{2}))?$"));
    const QRegularExpressionMatch m = pattern.match(text);
    if (!m.hasMatch())
        return std::nullopt;
    const QDate first(m.captured(1).toInt(), m.captured(2).toInt(), 1);
    if (!m.hasCaptured(3))
        return SearchMonths::of(first);
    const QDate last(m.captured(3).toInt(), m.captured(4).toInt(), 1);
    if (!first.isValid() || !last.isValid() || last < first)
        return std::nullopt;
    return SearchMonths{first, last};
}

} // namespace

int runSearchCommand(CommandContext& context) {
    const QStringList& args = context.args;
    if (args.size() != 3)
        return usageError(QStringLiteral("search takes: YYYY-MM[..YYYY-MM] KIND TEXT"));
    const std::optional<SearchMonths> months = monthsOf(args.at(0));
    if (!months)
        return usageError(QStringLiteral("search takes a month YYYY-MM, or the months YYYY-MM..YYYY-MM from "
                                         "the first to the last"));
    if (!RecordSearch::kindFromText(args.at(1)))
        return usageError(QStringLiteral("KIND is one of: ") +
                          RecordSearch::kindItems().join(QStringLiteral(", ")));
    GridLists lists(context.state);
    ListOutput output(context, lists);
    return output.finish(lists.startSearch({*months, args.at(1), args.at(2)}));
}

} // namespace porvane::admin
