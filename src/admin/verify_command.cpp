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
    const QString dataPath = context.state.dataPath();
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (!QFileInfo(dataPath).isDir()) {
        err << "porvane-admin: no data folder " << escaped(QDir::toNativeSeparators(dataPath)) << '\n';
        return 1;
    }
    int files = 0;
    const QList<DataDamage> damage = checkDataFolder(dataPath, &files);
    for (const DataDamage& d : damage)
        out << escaped(QDir::toNativeSeparators(QDir(dataPath).filePath(d.file))) << ':' << d.line << ": "
            << escaped(d.what) << '\n';
    out.flush();
    err << "porvane-admin: " << files << (files == 1 ? " file" : " files") << " checked, " << damage.size()
        << (damage.size() == 1 ? " fault" : " faults") << '\n';
    return damage.isEmpty() ? 0 : 1;
}

} // namespace porvane::admin
