#include "admin/demo_command.h"

#include "demo/demo_generator.h"
#include "store/data_paths.h"
#include "store/pick_lists.h"

#include <QTextStream>
#include <type_traits>

namespace porvane::admin {

int runDemoCommand(CommandContext& context) {
    using namespace Qt::Literals::StringLiterals;
    QCommandLineParser parser;
    // The options as the synopsis in the command table explains them.
    const QCommandLineOption from(u"from"_s, {}, u"YYYY-MM"_s);
    const QCommandLineOption months(u"months"_s, {}, u"N"_s);
    const QCommandLineOption perMonth(u"per-month"_s, {}, u"N"_s);
    const QCommandLineOption seed(u"seed"_s, {}, u"S"_s);
    parser.addOptions({from, months, perMonth, seed});
    const std::optional<QStringList> positional = readCommandLine(context, parser);
    if (!positional)
        return kWrongArguments;
    if (!positional->isEmpty())
        return usageError(u"demo takes only options, not "_s + positional->first());
    if (!parser.isSet(from))
        return usageError(u"demo needs --from YYYY-MM"_s);

    // Each option given must hold a value in its range; one not given keeps the generator's default.
    const auto bad = [&parser](const QCommandLineOption& option) {
        return usageError(u"bad value for --%1: %2"_s.arg(option.names().first(), parser.value(option)));
    };
    const auto read = [&parser](const QCommandLineOption& option, qint64 low, qint64 high, auto& into) {
        bool ok = true;
        const qint64 value = parser.isSet(option) ? parser.value(option).toLongLong(&ok) : qint64(into);
        if (!ok || value < low || value > high)
            return false;
        into = static_cast<std::decay_t<decltype(into)>>(value);
        return true;
    };
    DemoGenerator::Options options;
    const QDate first = QDate::fromString(parser.value(from) + u"-01"_s, u"yyyy-MM-dd"_s);
    if (!first.isValid())
        return bad(from);
    options.fromYear = first.year();
    options.fromMonth = first.month();
    if (!read(months, 1, 240, options.months))
        return bad(months);
    if (!read(perMonth, 1, 100000, options.perMonth))
        return bad(perMonth);
    if (!read(seed, 0, UINT32_MAX, options.seed))
        return bad(seed);

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
