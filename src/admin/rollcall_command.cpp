#include "admin/rollcall_command.h"

#include "admin/print_target.h"
#include "lists/grid_lists.h"
#include "lists/roll_call_sheet.h"

#include <QTextStream>

namespace porvane::admin {

int runRollCallCommand(CommandContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption pdfOption(QStringLiteral("pdf"), {}, QStringLiteral("FILE"));
    parser.addOption(pdfOption);
    const std::optional<QStringList> positional = readCommandLine(context, parser);
    if (!positional)
        return kWrongArguments;
    if (!positional->isEmpty())
        return usageError(QStringLiteral("rollcall takes: [--pdf FILE]"));
    const QString pdf = parser.value(pdfOption);

    AppState& state = context.state;
    GridLists lists(state);
    // A list that could not be rebuilt is printed as today's status file last had it: in an alarm, the last
    // known roll call is better than none. The reason has gone to stderr.
    if (lists.showDayStatus() == GridLists::Outcome::Failed)
        QTextStream(stderr) << state.mainTitle << '\n';
    const QList<RollCallEntry> entries = RollCallSheet::entries(lists.table(), state.dataPath());
    const QDateTime made = state.clock.now();
    const QString error =
        printOrWritePdf(pdf, QStringLiteral("Roll call ") + made.toString(QStringLiteral("yyyy-MM-dd hh:mm")),
                        false, [&](QPagedPaintDevice& device) {
                            return RollCallSheet::print(device, entries, state.settings.SiteName, made);
                        });
    if (!error.isEmpty()) {
        QTextStream(stderr) << "porvane-admin: " << error << '\n';
        return 1;
    }
    QTextStream(stdout) << "Roll call: " << entries.size() << " on site at "
                        << made.toString(QStringLiteral("hh:mm")) << '\n';
    return 0;
}

} // namespace porvane::admin
