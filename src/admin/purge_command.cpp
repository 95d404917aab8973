#include "admin/purge_command.h"

#include "admin/list_command.h"
#include "lists/bulk_deletion.h"
#include "store/digits.h"

#include <QTextStream>
#include <algorithm>

namespace porvane::admin {

namespace {

int purgeUsage(const QString& why) {
    return usageError(QStringLiteral("purge %1; it takes: year YYYY | month YYYY-MM [KIND TEXT] | "
                                     "day YYYY-MM-DD [--yes]")
                          .arg(why));
}

bool isYear(const QString& text) {
    return text.size() == 4 && isDigits(text);
}

} // namespace

int runPurgeCommand(CommandContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption yesOption(QStringLiteral("yes"), {});
    parser.addOption(yesOption);
    const std::optional<QStringList> positional = readCommandLine(context, parser);
    if (!positional)
        return kWrongArguments;
    const QStringList& args = *positional;
    const bool yes = parser.isSet(yesOption);
    if (args.isEmpty())
        return purgeUsage(QStringLiteral("needs a year, month or day"));
    const QString scope = args.at(0);

    BulkSelection selection{BulkDeletion::allDays(), BulkDeletion::allMonths(), {}, {}, {}};
    if (scope == u"year" && args.size() == 2) {
        if (!isYear(args.at(1)))
            return purgeUsage(QStringLiteral("year needs four digits"));
        selection.year = args.at(1);
    } else if ((scope == u"month" && (args.size() == 2 || args.size() == 4)) ||
               (scope == u"day" && args.size() == 2)) {
        const bool day = scope == u"day";
        DateSelection dates(context.state.clock.today().year());
        if (!setDateBoxes(dates, args.at(1), day))
            return purgeUsage(day ? QStringLiteral("day needs YYYY-MM-DD")
                                  : QStringLiteral("month needs YYYY-MM"));
        // The desk would move 30 February to 29 February; a command deletes only the day it was given.
        if (day && !QDate::fromString(args.at(1), Qt::ISODate).isValid())
            return purgeUsage(QStringLiteral("day %1 does not exist").arg(args.at(1)));
        selection.month = dates.monthText();
        selection.year = dates.yearText();
        if (day)
            selection.day = dates.dayText();
        if (args.size() == 4) {
            if (!BulkDeletion::kindFromText(args.at(2)))
                return purgeUsage(QStringLiteral("KIND is one of: ") +
                                  BulkDeletion::kindItems().join(QStringLiteral(", ")));
            if (args.at(3).trimmed().isEmpty())
                return purgeUsage(QStringLiteral("TEXT must not be blank (that would be the whole month)"));
            selection.kind = args.at(2);
            selection.findText = args.at(3);
        }
    } else {
        return purgeUsage(QStringLiteral("got unexpected arguments"));
    }

    BulkDeletion bulk(context.state);
    QTextStream err(stderr);
    if (bulk.switchedOff()) {
        err << "porvane-admin: bulk deletion is switched off in this desk's settings (read only, or bulk "
               "deletion disabled)\n";
        return 1;
    }
    context.prompter.questions =
        yes ? ConsolePrompter::Questions::AnswerYes : ConsolePrompter::Questions::AskOnTerminal;
    const BulkDeletion::Outcome outcome = bulk.run(selection);
    switch (outcome.status) {
    case BulkDeletion::Outcome::Status::Deleted:
    case BulkDeletion::Outcome::Status::NothingMatched:
        QTextStream(stdout) << outcome.resultText << '\n';
        return 0;
    case BulkDeletion::Outcome::Status::Declined:
        err << "porvane-admin: not confirmed; nothing deleted\n";
        return 1;
    case BulkDeletion::Outcome::Status::Failed:
        err << "porvane-admin: nothing deleted: " << outcome.error.text << '\n';
        return 1;
    case BulkDeletion::Outcome::Status::Refused:
        break; // the desk's message is on stderr already
    }
    return 1;
}

} // namespace porvane::admin
