#include "admin/admin_session.h"

#include "app/app_paths.h"
#include "settings/settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <cerrno>
#include <cstring>
#include <memory>
#include <unistd.h>

namespace porvane::admin {

int usageError(const QString& why) {
    QTextStream err(stderr);
    if (!why.isEmpty())
        err << "porvane-admin: " << why << '\n';
    err << "usage: porvane-admin [--home DIR] [--data DIR] [--db CONNINFO] [--today YYYY-MM-DD] [--now "
           "HH:MM] "
           "[--csv] COMMAND [ARGS]\n";
    err << "  --home DIR   the desk's home (default: PORVANE_HOME, else the program's folder)\n"
           "  --data DIR   the data folder (default: the data folder in the home's settings)\n"
           "  --db CONNINFO  the PostgreSQL server (\"host=/run/postgresql port=5432 dbname=porvane "
           "user=desk\"),\n"
           "               for the db commands\n"
           "  --today, --now   run as on that day and at that time\n"
           "  --csv        print lists as CSV\n";
    const auto commands = commandTable();
    if (commands.empty())
        err << "no commands are available in this build\n";
    for (const Command& c : commands)
        err << "  " << c.name << (*c.synopsis ? " " : "") << c.synopsis << '\n';
    return 2;
}

namespace {

struct Options {
    QString home;
    QString data;
    QString database;
    QDate today;
    QTime now;
    bool csv = false;
    QString command;
    QStringList args;
};

// Reads the common options up to the command name; the rest belongs to the command. Returns an error text.
QString parse(const QStringList& arguments, Options& o) {
    qsizetype i = 1;
    for (; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        if (!a.startsWith(u"--"))
            break;
        const bool hasValue = i + 1 < arguments.size();
        if (a == u"--csv") {
            o.csv = true;
        } else if (a == u"--home" && hasValue) {
            o.home = arguments.at(++i);
        } else if (a == u"--data" && hasValue) {
            o.data = arguments.at(++i);
        } else if (a == u"--db" && hasValue) {
            o.database = arguments.at(++i);
        } else if (a == u"--today" && hasValue) {
            o.today = QDate::fromString(arguments.at(++i), Qt::ISODate);
            if (!o.today.isValid())
                return QStringLiteral("--today takes a date YYYY-MM-DD");
        } else if (a == u"--now" && hasValue) {
            o.now = QTime::fromString(arguments.at(++i), QStringLiteral("HH:mm"));
            if (!o.now.isValid())
                return QStringLiteral("--now takes a time HH:MM");
        } else {
            return QStringLiteral("unknown option ") + a;
        }
    }
    if (i == arguments.size())
        return QStringLiteral("no command given");
    o.command = arguments.at(i);
    o.args = arguments.mid(i + 1);
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
    if (command && command->program)
        return handOver(command->program, argv);
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv);
    if (!why.isEmpty())
        return usageError(why);
    if (!command)
        return usageError(QStringLiteral("unknown command ") + o.command);
    if (!o.database.isEmpty() && o.command != u"db")
        return usageError(o.command +
                          QStringLiteral(" works on the data folder only; --db is for the db commands"));

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

    CommandContext context{state, o.args, o.csv, prompter, o.database};
    return command->run(context);
}

} // namespace porvane::admin
