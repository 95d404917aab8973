#include "server/folder_import.h"

#include "server/server_schema.h"
#include "server/stored_line.h"
#include "server/stored_tables.h"
#include "store/line_reader.h"

#include <QCoreApplication>
#include <QDir>

namespace porvane {

namespace {

// Rows per INSERT: few round trips, statements of a few hundred kilobytes.
constexpr int kRowsPerStatement = 250;

// The slots as one array literal, each element quoted: the server reads it far faster than 31 expressions.
QString arrayLiteral(const std::array<QString, kBookedSlotCount>& times) {
    QString literal = QStringLiteral("{");
    for (const QString& time : times) {
        if (literal.size() > 1)
            literal += u',';
        literal += u'"';
        for (const QChar c : time) {
            if (c == u'"' || c == u'\\')
                literal += u'\\';
            literal += c;
        }
        literal += u'"';
    }
    return literal + u'}';
}

class RowWriter {
public:
    RowWriter(ServerConnection& server, const StoredTable& table, const QString& key)
        : m_server(server)
        , m_head(QStringLiteral("INSERT INTO %1 (%2, seq, %3) VALUES ")
                     .arg(QLatin1StringView(table.table), QLatin1StringView(table.keyColumn),
                          storedLineColumns().join(QStringLiteral(", "))))
        , m_key(server.quoted(key)) {}

    ServerError add(int seq, const StoredLine& stored) {
        m_values += m_rows == 0 ? QStringLiteral("(") : QStringLiteral(", (");
        m_values += m_key + u',' + QString::number(seq);
        for (const QString& value : stored.fields)
            m_values += u',' + m_server.quoted(value);
        m_values += u',' + m_server.quoted(arrayLiteral(stored.bookedSlots)) + u')';
        return ++m_rows == kRowsPerStatement ? flush() : ServerError{};
    }

    ServerError flush() {
        if (m_rows == 0)
            return {};
        const ServerError error = m_server.exec(m_head + m_values);
        m_values.clear();
        m_rows = 0;
        return error;
    }

private:
    ServerConnection& m_server;
    const QString m_head;
    const QString m_key;
    QString m_values;
    int m_rows = 0;
};

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
        RowWriter rows(server, table, key);
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
