#include "admin/verify_command.h"

#include "store/data_check.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>

namespace porvane::admin {

namespace {

// A control character stored in a file (ESC, BEL, TAB ...) is shown as \xHH: it never reaches the terminal
// raw, and never splits the report's columns.
QString escaped(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F || (c.unicode() >= 0x80 && c.unicode() < 0xA0))
            out += QStringLiteral("\\x") + QString::number(c.unicode(), 16).rightJustified(2, u'0').toUpper();
        else
            out += c;
    }
    return out;
}

} // namespace

int runVerifyCommand(CommandContext& context) {
    if (!context.args.isEmpty())
        return usageError(QStringLiteral("verify takes no arguments"));
    AppState& state = context.state;
    const QString dataPath = state.dataPath();
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (state.usesDataFolder() && !QFileInfo(dataPath).isDir()) {
        err << "porvane-admin: no data folder " << escaped(QDir::toNativeSeparators(dataPath)) << '\n';
        return 1;
    }
    // The data folder is checked file by file, its leftovers and strangers too; another store line by line.
    int files = 0;
    const QList<DataDamage> damage =
        state.usesDataFolder() ? checkDataFolder(dataPath, &files) : checkLineFiles(state.files(), &files);
    for (const DataDamage& d : damage) {
        const QString file =
            state.usesDataFolder() ? QDir::toNativeSeparators(QDir(dataPath).filePath(d.file)) : d.file;
        out << escaped(file) << ':' << d.line << ": " << escaped(d.what) << '\n';
    }
    out.flush();
    err << "porvane-admin: " << files << (files == 1 ? " file" : " files") << " checked, " << damage.size()
        << (damage.size() == 1 ? " fault" : " faults") << '\n';
    return damage.isEmpty() ? 0 : 1;
}

} // namespace porvane::admin
