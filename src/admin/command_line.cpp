#include "admin/command_line.h"

#include "admin/commands.h"

#include <QCommandLineParser>

namespace porvane::admin {

using namespace Qt::Literals::StringLiterals;

CommonOptions::CommonOptions()
    : home(u"home"_s, u"the desk's home (default: PORVANE_HOME, else the program's folder)"_s, u"DIR"_s)
    , data(u"data"_s, u"the data folder (default: the data folder in the home's settings)"_s, u"DIR"_s)
    , db(u"db"_s,
         u"the PostgreSQL server (\"host=/run/postgresql port=5432 dbname=porvane user=desk\"), for the db "
         u"commands"_s,
         u"CONNINFO"_s)
    , today(u"today"_s, u"run as on that day"_s, u"YYYY-MM-DD"_s)
    , now(u"now"_s, u"run as at that time"_s, u"HH:MM"_s)
    , csv(u"csv"_s, u"print lists as CSV"_s)
    , help(QStringList{u"h"_s, u"help"_s}, u"print this text; after a command, that command's usage"_s) {}

namespace {

QString dashed(const QString& name) {
    return (name.size() == 1 ? u"-"_s : u"--"_s) + name;
}

// "--home DIR" or "-h, --help".
QString spelled(const QCommandLineOption& option) {
    QStringList names;
    for (const QString& name : option.names())
        names << dashed(name);
    QString text = names.join(u", "_s);
    if (!option.valueName().isEmpty())
        text += u' ' + option.valueName();
    return text;
}

// "pass REGNO [--count N] ...": a command with its arguments.
QString spelled(const Command& command) {
    return QString::fromLatin1(command.name) + (*command.synopsis ? u" "_s : QString()) +
           QString::fromLatin1(command.synopsis);
}

} // namespace

void printUsage(QTextStream& out, const Command* command) {
    const CommonOptions options;
    const QList<QCommandLineOption> all = options.all();
    out << "usage: porvane-admin";
    for (const QCommandLineOption& o : all.first(all.size() - 1)) // all but the help
        out << " [" << spelled(o) << ']';
    out << ' ' << (command ? spelled(*command) : u"COMMAND [ARGS]"_s) << '\n';
    out << "options:\n";
    for (const QCommandLineOption& o : all)
        out << "  " << spelled(o).leftJustified(20) << ' ' << o.description() << '\n';
    if (command)
        return;
    const auto commands = commandTable();
    out << "commands:\n";
    if (commands.empty())
        out << "  none in this build\n";
    for (const Command& c : commands)
        out << "  " << spelled(c) << '\n';
}

int usageError(const QString& why) {
    QTextStream err(stderr);
    if (!why.isEmpty())
        err << "porvane-admin: " << why << '\n';
    printUsage(err);
    return kWrongArguments;
}

std::optional<QStringList> readCommandLine(const CommandContext& context, QCommandLineParser& parser) {
    if (!parser.parse(QStringList{u"porvane-admin"_s} + context.args)) {
        usageError(parser.errorText());
        return std::nullopt;
    }
    return parser.positionalArguments();
}

} // namespace porvane::admin
