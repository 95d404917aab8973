#include "server/folder_export.h"

#include "server/server_schema.h"
#include "server/stored_line.h"
#include "server/stored_rows.h"
#include "server/stored_tables.h"
#include "store/safe_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace porvane {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("FolderExport", text);
}

QString selectLines(const StoredTable& table) {
    return QStringLiteral("SELECT %1, %2 FROM %3 ORDER BY %1, seq")
        .arg(QLatin1StringView(table.keyColumn), storedLineSelectList(), QLatin1StringView(table.table));
}

// The first month or day status file the folder holds, empty when none.
QString existingDataFile(const QString& dataPath) {
    for (const StoredTable& table : storedTables()) {
        const QString folderName = QLatin1StringView(table.folder);
        const QDir folder(QDir(dataPath).filePath(folderName));
        for (const QString& name : folder.entryList(QDir::Files | QDir::System, QDir::Name))
            if (table.fileName.match(name).hasMatch())
                return folderName + u'/' + name;
    }
    return {};
}

bool writeFile(const QString& path, const QByteArray& bytes, FolderExport& result) {
    if (const FileError error = replaceFile(path, bytes)) {
        result.error = error.text;
        return false;
    }
    ++result.files;
    return true;
}

bool exportTable(ServerConnection& server, const StoredTable& table, const QString& dataPath,
                 FolderExport& result) {
    QSqlQuery query(server.database());
    query.setForwardOnly(true); // streamed, never the whole table in memory
    if (!query.exec(selectLines(table))) {
        result.error = ServerError::from(query.lastError()).text;
        return false;
    }
    const QDir folder(QDir(dataPath).filePath(QLatin1StringView(table.folder)));
    QString key;
    QByteArray bytes;
    StoredLine stored;
    while (query.next()) {
        const QString rowKey = query.value(0).toString();
        if (rowKey != key) {
            if (!key.isEmpty() &&
                !writeFile(folder.filePath(key + QLatin1StringView(table.suffix)), bytes, result))
                return false;
            // The key names a file: nothing but the digits of a month or day may come from the server.
            if (!table.fileName.match(rowKey + QLatin1StringView(table.suffix)).hasMatch()) {
                result.error = tr("the server holds lines of %1 \"%2\", which names no file")
                                   .arg(QLatin1StringView(table.keyColumn), rowKey);
                return false;
            }
            key = rowKey;
            bytes.clear();
        }
        readStoredLine(query, 1, stored);
        bytes += joinStoredLine(stored);
        bytes += kLineEnd;
        ++result.lines;
    }
    if (query.lastError().isValid()) {
        result.error = ServerError::from(query.lastError()).text;
        return false;
    }
    return key.isEmpty() || writeFile(folder.filePath(key + QLatin1StringView(table.suffix)), bytes, result);
}

} // namespace

FolderExport exportDataFolder(ServerConnection& server, const QString& dataPath) {
    FolderExport result;
    if (const QString existing = existingDataFile(dataPath); !existing.isEmpty()) {
        result.error = tr("%1 already holds %2: export writes only into a data folder without bookings")
                           .arg(QDir::toNativeSeparators(dataPath), existing);
        return result;
    }
    for (const char* sub : {"Record", "Status", "photo"}) {
        if (!QDir(dataPath).mkpath(QLatin1StringView(sub))) {
            result.error =
                tr("cannot make the folder %1")
                    .arg(QDir::toNativeSeparators(QDir(dataPath).filePath(QLatin1StringView(sub))));
            return result;
        }
    }
    // One snapshot for the months and the days, whatever the desks change meanwhile.
    const ServerError error = server.inTransaction([&]() -> ServerError {
        if (ServerError e = server.exec(QStringLiteral("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ")))
            return e;
        for (const StoredTable& table : storedTables())
            if (!exportTable(server, table, dataPath, result))
                break;
        return {};
    });
    if (result.error.isEmpty())
        result.error = error.text;
    return result;
}

} // namespace porvane
