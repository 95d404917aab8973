#pragma once

#include "server/server_connection.h"
#include "server/stored_line.h"
#include "server/stored_tables.h"

#include <QSqlQuery>
#include <QString>

namespace porvane {

// A stored line in the statements that carry it to and from the server's tables.

// A field's text as the line holds it, unpadded: for searching it on the server.
QString storedFieldText(const FieldSpec& def);
// The select list of a stored line: the fields, then the booked times, an array that comes as one text in
// the server's array syntax: far quicker to send and read than its 31 slots one by one.
QString storedLineSelectList();
// Reads the stored line a query's row holds from column first on, laid out by storedLineSelectList().
void readStoredLine(const QSqlQuery& query, int first, StoredLine& stored);
// The row of a key, a line number (an expression) and a stored line as a VALUES tuple, in the order (key,
// seq, the columns of storedLineColumns()); the booked times are an array literal, cast.
QString storedRowValues(ServerConnection& server, const QString& quotedKey, const QString& seq,
                        const StoredLine& stored);

// Inserts the lines of one month or day, a few hundred rows to a statement: few round trips, statements of a
// few hundred kilobytes.
class StoredRowWriter {
public:
    StoredRowWriter(ServerConnection& server, const StoredTable& table, const QString& key);
    ServerError add(int seq, const StoredLine& stored);
    // Sends the rows not sent yet; call once after the last add().
    ServerError flush();

private:
    static constexpr int kRowsPerStatement = 250;

    ServerConnection& m_server;
    const QString m_head;
    const QString m_key;
    QString m_values;
    int m_rows = 0;
};

// Notes that the month or day's file exists, even with no line: the server then tells an empty file from a
// missing one, as the folder does.
ServerError registerStoredFile(ServerConnection& server, const StoredTable& table, const QString& key);

} // namespace porvane
