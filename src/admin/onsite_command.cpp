#include "admin/list_command.h"

namespace porvane::admin {

int runOnsiteCommand(CommandContext& context) {
    if (!context.args.isEmpty())
        return usageError(QStringLiteral("onsite takes no arguments"));
    GridLists lists(context.state);
    ListOutput output(context, lists);
    return output.finish(lists.showDayStatus());
}

} // namespace porvane::admin
