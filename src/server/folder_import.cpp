#include "server/folder_import.h"

#include "server/server_schema.h"
#include "server/stored_line.h"
#include "server/stored_rows.h"
#include "server/stored_tables.h"
#include "store/line_reader.h"

#include <QCoreApplication>
#include <QDir>

namespace porvane {

namespace {

// Loads one file in one transaction; lines that cannot be loaded go to notLoaded, the others keep their
// order.
ServerError importFile(ServerConnection& server, const StoredTable& table, const QString& path,
                       const QString& relative, const QString& key, FolderImport& result) {
    LineReader reader(path);
    if (reader.handle() < 0) { // a link, a pipe, a file that cannot be read: the server's copy stays
        result.notLoaded.append({relative, 0, reader.error().text});
        return {};
    }
    QList<DataDamage> notLoaded;
    int loaded = 0;
    const ServerError error = server.inTransaction([&]() -> ServerError {
        if (ServerError e = server.exec(QStringLiteral("DELETE FROM %1 WHERE %2 = %3")
                                            .arg(QLatin1StringView(table.table),
                                                 QLatin1StringView(table.keyColumn), server.quoted(key))))
            return e;
        if (ServerError e = registerStoredFile(server, table, key))
            return e;
        StoredRowWriter rows(server, table, key);
        QByteArrayView line;
        int number = 0;
        while (reader.next(line)) {
            ++number;
            if (const QString why = whyNotStorable(line); !why.isEmpty()) {
                notLoaded.append({relative, number, why});
                continue;
            }
            if (ServerError e = rows.add(number, splitStoredLine(line)))
                return e;
            ++loaded;
        }
        if (reader.error())
            notLoaded.append(
                {relative, number + 1,
                 reader.error().text +
                     QCoreApplication::translate("FolderImport", "; the rest of the file is not read")});
        return rows.flush();
    });
    if (!error) {
        ++result.files;
        result.lines += loaded;
        result.notLoaded += notLoaded;
    }
    return error;
}

} // namespace

FolderImport importDataFolder(ServerConnection& server, const QString& dataPath) {
    FolderImport result;
    for (const StoredTable& table : storedTables()) {
        const QString folderName = QLatin1StringView(table.folder);
        const QDir folder(QDir(dataPath).filePath(folderName));
        for (const QString& name : folder.entryList(QDir::Files | QDir::System, QDir::Name)) {
            const QRegularExpressionMatch match = table.fileName.match(name);
            if (!match.hasMatch())
                continue;
            const QString relative = folderName + u'/' + name;
            result.error =
                importFile(server, table, folder.filePath(name), relative, match.captured(1), result);
            if (result.error) {
                result.failedFile = relative;
                return result;
            }
        }
    }
    return result;
}

} // namespace porvane
