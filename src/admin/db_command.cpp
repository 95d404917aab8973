#include "admin/db_command.h"

#include "server/folder_export.h"
#include "server/folder_import.h"
#include "server/server_schema.h"

#include <QDir>
#include <QTextStream>

namespace porvane::admin {

namespace {

int failed(const QString& why) {
    QTextStream(stderr) << "porvane-admin: " << why << '\n';
    return 1;
}

int init(ServerConnection& server) {
    int from = 0;
    if (const ServerError error = initSchema(server, &from))
        return failed(error.text);
    QTextStream out(stdout);
    if (from == kSchemaVersion)
        out << "tables already at version " << kSchemaVersion << '\n';
    else if (from == 0)
        out << "tables made at version " << kSchemaVersion << '\n';
    else
        out << "tables brought from version " << from << " to version " << kSchemaVersion << '\n';
    return 0;
}

int import(ServerConnection& server, const QString& dataPath) {
    if (!QFileInfo(dataPath).isDir())
        return failed(QStringLiteral("no data folder %1").arg(QDir::toNativeSeparators(dataPath)));
    const FolderImport result = importDataFolder(server, dataPath);
    QTextStream err(stderr);
    for (const DataDamage& d : result.notLoaded)
        err << "porvane-admin: " << d.file << ':' << d.line << ": not loaded: " << d.what << '\n';
    if (result.error)
        err << "porvane-admin: " << result.failedFile
            << ": not loaded, nor the files after it: " << result.error.text << '\n';
    QTextStream(stdout) << result.lines << " lines of " << result.files
                        << (result.files == 1 ? " file" : " files") << " loaded\n";
    return result.error || !result.notLoaded.isEmpty() ? 1 : 0;
}

int exportTo(ServerConnection& server, const QString& dataPath) {
    const FolderExport result = exportDataFolder(server, dataPath);
    if (!result.error.isEmpty())
        return failed(result.error);
    QTextStream(stdout) << result.lines << " lines written to " << result.files
                        << (result.files == 1 ? " file\n" : " files\n");
    return 0;
}

} // namespace

int runDbCommand(CommandContext& context) {
    const QStringList& args = context.args;
    const QString action = args.value(0);
    const bool withFolder = action == u"import" || action == u"export";
    if (!(action == u"init" && args.size() == 1) && !(withFolder && args.size() == 2))
        return usageError(QStringLiteral("db takes init, import DATAFOLDER or export DATAFOLDER"));
    if (context.database.isEmpty())
        return usageError(QStringLiteral("db needs the server: --db CONNINFO before the command"));
    ServerConnection server(context.database);
    if (server.error())
        return failed(QStringLiteral("cannot reach the server: ") + server.error().text);
    if (action == u"init")
        return init(server);
    if (const ServerError error = checkSchema(server))
        return failed(error.text);
    const QString dataPath = QDir(args.at(1)).absolutePath();
    return action == u"import" ? import(server, dataPath) : exportTo(server, dataPath);
}

} // namespace porvane::admin
