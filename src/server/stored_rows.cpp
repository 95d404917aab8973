#include "server/stored_rows.h"

#include "server/server_schema.h"

#include <QVariant>

namespace porvane {

namespace {

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

} // namespace

QString storedFieldText(const FieldSpec& def) {
    const QString name = QLatin1StringView(def.name);
    // The column holds line breaks where the line holds marks (stored_line.h).
    return def.field == Field::IllnessDetails ? QStringLiteral("replace(%1, E'\\r\\n', '<$c>')").arg(name)
                                              : name;
}

QString storedLineSelectList() {
    QStringList columns;
    for (const FieldSpec& def : kRecordFields)
        columns << QLatin1StringView(def.name);
    columns << QLatin1StringView(kBookedTimesColumnName);
    return columns.join(QStringLiteral(", "));
}

namespace {

// The slots from the server's text of the array: {0930,"",...}, an element quoted when it is empty or holds
// a blank, a comma, a brace, a quote or a backslash (these two escaped by a backslash).
void readSlots(QStringView text, std::array<QString, kBookedSlotCount>& times) {
    std::size_t slot = 0;
    qsizetype at = text.startsWith(u'{') ? 1 : 0;
    while (at < text.size() && slot < times.size()) {
        QString& value = times[slot++];
        value.clear();
        if (text[at] == u'"') {
            for (++at; at < text.size() && text[at] != u'"'; ++at) {
                if (text[at] == u'\\' && at + 1 < text.size())
                    ++at;
                value += text[at];
            }
            ++at; // the closing quote
        } else {
            const qsizetype start = at;
            while (at < text.size() && text[at] != u',' && text[at] != u'}')
                ++at;
            value = text.sliced(start, at - start).toString();
            if (value == u"NULL")
                value.clear();
        }
        ++at; // the comma or the closing brace
    }
    for (; slot < times.size(); ++slot)
        times[slot].clear();
}

} // namespace

void readStoredLine(const QSqlQuery& query, int first, StoredLine& stored) {
    int column = first;
    for (QString& value : stored.fields)
        value = query.value(column++).toString();
    readSlots(query.value(column).toString(), stored.bookedSlots);
}

QString storedRowValues(ServerConnection& server, const QString& quotedKey, const QString& seq,
                        const StoredLine& stored) {
    QString row = u'(' + quotedKey + u',' + seq;
    for (const QString& value : stored.fields)
        row += u',' + server.quoted(value);
    return row + u',' + server.quoted(arrayLiteral(stored.bookedSlots)) + QStringLiteral("::text[])");
}

StoredRowWriter::StoredRowWriter(ServerConnection& server, const StoredTable& table, const QString& key)
    : m_server(server)
    , m_head(QStringLiteral("INSERT INTO %1 (%2, seq, %3) VALUES ")
                 .arg(QLatin1StringView(table.table), QLatin1StringView(table.keyColumn),
                      storedLineColumns().join(QStringLiteral(", "))))
    , m_key(server.quoted(key)) {}

ServerError StoredRowWriter::add(int seq, const StoredLine& stored) {
    if (m_rows > 0)
        m_values += QStringLiteral(", ");
    m_values += storedRowValues(m_server, m_key, QString::number(seq), stored);
    return ++m_rows == kRowsPerStatement ? flush() : ServerError{};
}

ServerError StoredRowWriter::flush() {
    if (m_rows == 0)
        return {};
    const ServerError error = m_server.exec(m_head + m_values);
    m_values.clear();
    m_rows = 0;
    return error;
}

ServerError registerStoredFile(ServerConnection& server, const StoredTable& table, const QString& key) {
    return server.exec(QStringLiteral("INSERT INTO data_file VALUES (%1, %2) ON CONFLICT DO NOTHING")
                           .arg(server.quoted(QLatin1StringView(table.table)), server.quoted(key)));
}

} // namespace porvane
