#include "admin/verify_command.h"

#include "store/data_check.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>

namespace porvane::admin {

int runVerifyCommand(CommandContext& context) {
    if (!context.args.isEmpty())
        return usageError(QStringLiteral("verify takes no arguments"));
    const QString dataPath = context.state.dataPath();
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (!QFileInfo(dataPath).isDir()) {
        err << "porvane-admin: no data folder " << QDir::toNativeSeparators(dataPath) << '\n';
        return 1;
    }
    int files = 0;
    const QList<DataDamage> damage = checkDataFolder(dataPath, &files);
    for (const DataDamage& d : damage)
        out << QDir::toNativeSeparators(QDir(dataPath).filePath(d.file)) << ':' << d.line << ": " << d.what
            << '\n';
    out.flush();
    err << "porvane-admin: " << files << (files == 1 ? " file" : " files") << " checked, " << damage.size()
        << (damage.size() == 1 ? " fault" : " faults") << '\n';
    return damage.isEmpty() ? 0 : 1;
}

} // namespace porvane::admin
