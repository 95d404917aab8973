#include "admin/admin_session.h"

#include "admin/command_line.h"
#include "app/app_paths.h"
#include "server/server_files.h"
#include "settings/settings_file.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <cerrno>
#include <cstring>
#include <memory>
#include <unistd.h>

namespace porvane::admin {

namespace {

// What the command line asks for: the common options, then the command and its own arguments.
struct Options {
    QString home;
    QString data;
    QString database;
    QDate today;
    QTime now;
    bool csv = false;
    bool help = false;
    QString command;
    QStringList args;
};

// Reads the common options up to the command name; the rest belongs to the command. Returns an error text.
QString parse(const QStringList& arguments, Options& o) {
    const CommonOptions options;
    QCommandLineParser parser;
    parser.addOptions(options.all());
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    if (!parser.parse(arguments))
        return parser.errorText();
    o.home = parser.value(options.home);
    o.data = parser.value(options.data);
    o.database = parser.value(options.db);
    o.csv = parser.isSet(options.csv);
    o.help = parser.isSet(options.help);
    if (parser.isSet(options.today)) {
        o.today = QDate::fromString(parser.value(options.today), Qt::ISODate);
        if (!o.today.isValid())
            return QStringLiteral("--today takes a date YYYY-MM-DD");
    }
    if (parser.isSet(options.now)) {
        o.now = QTime::fromString(parser.value(options.now), QStringLiteral("HH:mm"));
        if (!o.now.isValid())
            return QStringLiteral("--now takes a time HH:MM");
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty())
        return o.help ? QString() : QStringLiteral("no command given");
    o.command = positional.first();
    o.args = positional.mid(1);
    // A command's --help anywhere among its arguments asks for its usage, whatever else is there.
    o.help = o.help || o.args.contains(u"--help") || o.args.contains(u"-h");
    return {};
}

// A command of a sibling program (pass printing, which needs Qt Gui) is handed over whole: that program
// parses the same command line and runs the command as if it had been started itself.
int handOver(const char* program, char* argv[]) {
    const QString path =
        QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath() + u'/' + QString::fromLatin1(program);
    const QByteArray file = QFile::encodeName(path);
    ::execv(file.constData(), argv);
    QTextStream(stderr) << "porvane-admin: cannot start " << path << ": " << std::strerror(errno) << '\n';
    return 1;
}

} // namespace

int runAdminCommandLine(int argc, char* argv[], const ApplicationMaker& makeApplication) {
    // The command is known before anything starts, so that a sibling program's command is handed over first.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    Options o;
    const QString why = parse(arguments, o);
    const Command* command = nullptr;
    for (const Command& c : commandTable())
        if (why.isEmpty() && o.command == QLatin1StringView(c.name))
            command = &c;
    if (why.isEmpty() && o.help && (command || o.command.isEmpty())) {
        QTextStream out(stdout);
        printUsage(out, command);
        return 0;
    }
    if (command && command->program)
        return handOver(command->program, argv);
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv);
    if (!why.isEmpty())
        return usageError(why);
    if (!command)
        return usageError(QStringLiteral("unknown command ") + o.command);
    if (!o.database.isEmpty() && o.command == u"demo")
        return usageError(QStringLiteral("demo writes into a data folder only: load it with db import"));

    ConsolePrompter prompter;
    SystemClock systemClock;
    const QDateTime now = QDateTime::currentDateTime();
    FixedClock fixedClock(
        QDateTime(o.today.isValid() ? o.today : now.date(), o.now.isValid() ? o.now : now.time()));
    const bool fixed = o.today.isValid() || o.now.isValid();
    InstantPause pause;
    AppState state(prompter, fixed ? static_cast<Clock&>(fixedClock) : systemClock, pause);

    state.AppPath =
        o.home.isEmpty() ? AppPathForThisProgram() : withTrailingSlash(QDir(o.home).absolutePath());
    const SettingsLoad load = LoadSettings(state.AppPath, state.settings);
    if (load.status == SettingsLoad::Status::Unreadable) {
        QTextStream(stderr) << "porvane-admin: " << load.error.text << '\n';
        return 1;
    }
    if (state.settings.DataPath.trimmed().isEmpty())
        state.settings = defaultSettings(state.AppPath); // never written from here: the desk owns the file
    if (!o.data.isEmpty())
        state.settings.DataPath = QDir(o.data).absolutePath();

    // With a server, every command reads and writes its bookings there; photos and pick lists stay in the
    // data folder.
    if (!o.database.isEmpty() && o.command != u"db") {
        QString error;
        std::unique_ptr<LineFiles> files = openServerFiles(o.database, error);
        if (!files) {
            QTextStream(stderr) << "porvane-admin: " << error << '\n';
            return 1;
        }
        state.useFiles(std::move(files));
    }

    CommandContext context{state, o.args, o.csv, prompter, o.database};
    return command->run(context);
}

} // namespace porvane::admin
