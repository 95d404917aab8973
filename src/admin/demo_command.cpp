#include "admin/demo_command.h"

#include "demo/demo_generator.h"
#include "store/data_paths.h"
#include "store/pick_lists.h"

#include <QTextStream>

namespace porvane::admin {

int runDemoCommand(CommandContext& context) {
    DemoGenerator::Options options;
    bool haveFrom = false;
    const QStringList& args = context.args;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& opt = args[i];
        if (i + 1 >= args.size())
            return usageError(QStringLiteral("%1 needs a value").arg(opt));
        const QString value = args[++i];
        bool ok = true;
        if (opt == u"--from") {
            const QDate from = QDate::fromString(value + QStringLiteral("-01"), QStringLiteral("yyyy-MM-dd"));
            ok = from.isValid();
            options.fromYear = from.year();
            options.fromMonth = from.month();
            haveFrom = ok;
        } else if (opt == u"--months") {
            options.months = value.toInt(&ok);
            ok = ok && options.months >= 1 && options.months <= 240;
        } else if (opt == u"--per-month") {
            options.perMonth = value.toInt(&ok);
            ok = ok && options.perMonth >= 1 && options.perMonth <= 100000;
        } else if (opt == u"--seed") {
            options.seed = value.toUInt(&ok);
        } else {
            return usageError(QStringLiteral("unknown option %1").arg(opt));
        }
        if (!ok)
            return usageError(QStringLiteral("bad value for %1: %2").arg(opt, value));
    }
    if (!haveFrom)
        return usageError(QStringLiteral("demo needs --from YYYY-MM"));

    const PickLists lists = LoadMainPickLists(pickListsPath(context.state.AppPath));
    options.categories = lists.first;
    options.departments = lists.second;
    const DemoGenerator generator(options);
    if (const FileError error = generator.appendTo(context.state.dataPath(), context.state.lockQuestion)) {
        QTextStream(stderr) << error.text << '\n';
        return 1;
    }
    QTextStream(stdout) << options.months * options.perMonth << " bookings written to " << options.months
                        << " month files\n";
    return 0;
}

} // namespace porvane::admin
