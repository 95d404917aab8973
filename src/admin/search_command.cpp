#include "admin/list_command.h"
#include "lists/record_search.h"

namespace porvane::admin {

int runSearchCommand(CommandContext& context) {
    const QStringList& args = context.args;
    if (args.size() != 3)
        return usageError(QStringLiteral("search takes: YYYY-MM KIND TEXT"));
    DateSelection dates(context.state.clock.today().year());
    if (!setDateBoxes(dates, args.at(0), false))
        return usageError(QStringLiteral("search takes a month YYYY-MM"));
    if (!RecordSearch::kindFromText(args.at(1)))
        return usageError(QStringLiteral("KIND is one of: ") +
                          RecordSearch::kindItems().join(QStringLiteral(", ")));
    GridLists lists(context.state);
    return finishList(context, lists, lists.startSearch(dates, args.at(1), args.at(2)));
}

} // namespace porvane::admin
