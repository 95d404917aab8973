#include "admin/commands.h"
#include "admin/demo_command.h"
#include "admin/list_command.h"
#include "admin/pass_command.h"
#include "admin/purge_command.h"
#include "admin/verify_command.h"
#include "app/app_paths.h"
#include "settings/settings_file.h"

#include <QDir>
#include <QGuiApplication>
#include <QTextStream>
#include <memory>
#include <vector>

using namespace porvane;
using namespace porvane::admin;

namespace porvane::admin {

std::span<const Command> commandTable() {
    // One row per command: name, its arguments for the usage text, its function.
    static const std::vector<Command> commands{
        {"demo", "--from YYYY-MM --months N --per-month N [--seed S]", runDemoCommand},
        {"pass", "REGNO [--count N] [--period Day|Week|Month] [--start YYYY-MM-DD] [--pdf FILE] [--yes]",
         runPassCommand, true},
        {"list", "day YYYY-MM-DD | month YYYY-MM", runListCommand},
        {"search", "YYYY-MM KIND TEXT", runSearchCommand},
        {"onsite", "", runOnsiteCommand},
        {"purge", kPurgeSynopsis, runPurgeCommand},
        {"verify", "", runVerifyCommand},
    };
    return commands;
}

int usageError(const QString& why) {
    QTextStream err(stderr);
    if (!why.isEmpty())
        err << "porvane-admin: " << why << '\n';
    err << "usage: porvane-admin [--home DIR] [--data DIR] [--today YYYY-MM-DD] [--now HH:MM] [--csv] "
           "COMMAND [ARGS]\n";
    err << "  --home DIR   the desk's home (default: PORVANE_HOME, else the program's folder)\n"
           "  --data DIR   the data folder (default: the data folder in the home's settings)\n"
           "  --today, --now   run as on that day and at that time\n"
           "  --csv        print lists as CSV\n";
    const auto commands = commandTable();
    if (commands.empty())
        err << "no commands are available in this build\n";
    for (const Command& c : commands)
        err << "  " << c.name << (*c.synopsis ? " " : "") << c.synopsis << '\n';
    return 2;
}

} // namespace porvane::admin

namespace {

struct Options {
    QString home;
    QString data;
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

// The application object the command needs: a GUI one only for a command that draws.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char* argv[], const Command* command) {
    if (!command || !command->draws)
        return std::make_unique<QCoreApplication>(argc, argv);
    // Without a display the drawing runs off-screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char* argv[]) {
    // The command is known before the application exists, so that only a drawing command pays for a GUI one.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    Options o;
    const QString why = parse(arguments, o);
    const Command* command = nullptr;
    for (const Command& c : commandTable())
        if (why.isEmpty() && o.command == QLatin1StringView(c.name))
            command = &c;
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv, command);
    if (!why.isEmpty())
        return usageError(why);
    if (!command)
        return usageError(QStringLiteral("unknown command ") + o.command);

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
    const SettingsLoad load = LoadSettings(state);
    if (load.status == SettingsLoad::Status::Unreadable) {
        QTextStream(stderr) << "porvane-admin: " << load.error.text << '\n';
        return 1;
    }
    if (state.settings.DataPath.trimmed().isEmpty())
        state.settings = defaultSettings(state.AppPath); // never written from here: the desk owns the file
    if (!o.data.isEmpty())
        state.settings.DataPath = QDir(o.data).absolutePath();

    CommandContext context{state, o.args, o.csv, prompter};
    return command->run(context);
}
