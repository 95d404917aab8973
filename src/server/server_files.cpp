#include "server/server_files.h"

#include "server/server_connection.h"
#include "server/server_schema.h"
#include "server/stored_line.h"
#include "server/stored_rows.h"
#include "server/stored_tables.h"
#include "store/line_reader.h"
#include "store/windows1252.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <sys/mman.h>
#include <unistd.h>

namespace porvane {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("ServerFiles", text);
}

// Every change takes this lock for its transaction, so the desks' changes follow one another.
constexpr int kChangeLock = 90900002;
// NOTIFY's payload must stay below 8000 bytes.
constexpr qsizetype kMaxPayload = 7900;
// Rows per UPDATE of a rewrite.
constexpr int kRowsPerUpdate = 250;

const StoredTable& tableOf(LineFileName::Kind kind) {
    return storedTables()[kind == LineFileName::Kind::Month ? 0 : 1];
}

// The file's name as the data folder would have it: "Record/2403.vrf".
QString fileNameOf(const LineFileName& name) {
    const StoredTable& table = tableOf(name.kind);
    return QLatin1StringView(table.folder) + u'/' + name.key + QLatin1StringView(table.suffix);
}

// libpq reports a connection that failed or broke without a SQLSTATE; the server gives class 08 for a
// connection it refuses and 57P for one it ends as it shuts down.
bool isConnectionLost(const ServerError& error) {
    return error.sqlState.isEmpty() || error.sqlState.startsWith(u"08") || error.sqlState.startsWith(u"57P");
}

// The database named in a connection string, for messages.
QString databaseOf(const QString& connInfo) {
    for (const QString& pair : connInfo.split(u' ', Qt::SkipEmptyParts))
        if (pair.startsWith(u"dbname="))
            return pair.mid(7);
    return tr("(default database)");
}

// The text a search looks in, holding every run without blanks that the line's columns hold: the fields in
// line order, blank between two, save where one follows the other without a blank column, there padded to
// its width; the illness details with their line-break marks; with no fields, the whole line, the booked
// times run together after it.
QString searchedText(QList<int> fields) {
    const bool wholeLine = fields.isEmpty();
    if (wholeLine)
        for (const FieldSpec& def : kRecordFields)
            fields << int(def.field);
    std::sort(fields.begin(), fields.end());
    QStringList parts;
    bool joinsNext = false;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        const FieldSpec& def = kRecordFields[std::size_t(fields[i])];
        QString column = storedFieldText(def);
        const bool joinedToLast = joinsNext;
        joinsNext = i + 1 < fields.size() &&
                    kRecordFields[std::size_t(fields[i + 1])].column == def.column + def.width;
        if (joinsNext)
            column = QStringLiteral("rpad(%1, %2)").arg(column).arg(def.width);
        if (joinedToLast)
            parts.last() += QStringLiteral(" || ") + column;
        else
            parts << column;
    }
    // Slots run together hold every run of the line's slots, and more.
    if (wholeLine)
        parts << QStringLiteral("array_to_string(%1, '')").arg(QLatin1StringView(kBookedTimesColumnName));
    return QStringLiteral("concat_ws(' ', %1)").arg(parts.join(QStringLiteral(", ")));
}

// A pattern that finds text in whatever case the desk's search would: each letter as the class of the
// characters that fold to it, every other character literally.
QString foldedPattern(const QString& text) {
    QString pattern;
    for (const char c : toWindows1252(text)) {
        const unsigned char folded = kWindows1252Fold[static_cast<unsigned char>(c)];
        QByteArray cases;
        for (int b = 0; b < 256; ++b)
            if (kWindows1252Fold[std::size_t(b)] == folded)
                cases += char(b);
        if (cases.size() > 1)
            pattern += u'[' + fromWindows1252(cases) + u']';
        else if (c >= 0 && !std::isalnum(static_cast<unsigned char>(c)))
            pattern += u'\\' + QChar::fromLatin1(c);
        else
            pattern += fromWindows1252(QByteArrayView(&c, 1));
    }
    return pattern;
}

// The lines of a search, and more: the desk finds the whole text, blanks included, in the columns of the
// line, folding case byte by byte; the server asks only that each of its blank-free parts is in the fields'
// text, found in the desk's folding. A part cannot lie across a blank, so every line the desk finds is
// sent. (ILIKE would fold case as the server's locale does, which need not be the desk's.)
QString searchCondition(ServerConnection& server, const LineNarrowing& narrowing) {
    QStringList conditions;
    const QString text = searchedText(narrowing.searchFields);
    for (const QString& part : narrowing.searchWord.split(u' ', Qt::SkipEmptyParts))
        conditions << QStringLiteral("%1 ~ %2").arg(text, server.quoted(foldedPattern(part)));
    return conditions.join(QStringLiteral(" AND "));
}

// The rows of a file the narrowing names.
QString whereOf(ServerConnection& server, const LineFileName& name, const LineNarrowing& narrowing) {
    const StoredTable& table = tableOf(name.kind);
    QString where =
        QStringLiteral("%1 = %2").arg(QLatin1StringView(table.keyColumn), server.quoted(name.key));
    QString regNo = narrowing.regNo;
    while (regNo.endsWith(u' '))
        regNo.chop(1);
    if (!regNo.isEmpty())
        where += QStringLiteral(" AND RegNo = %1").arg(server.quoted(regNo));
    if (narrowing.bookedDay >= 1 && narrowing.bookedDay <= kBookedSlotCount)
        where += QStringLiteral(" AND (%1[%2] <> '' OR PassStart <> '' OR PassEnd <> '')")
                     .arg(QLatin1StringView(kBookedTimesColumnName))
                     .arg(narrowing.bookedDay);
    if (const QString search = searchCondition(server, narrowing); !search.isEmpty())
        where += QStringLiteral(" AND ") + search;
    return where;
}

// The lines a change wrote, each ended by CR LF; a last line without its end is taken too.
QList<QByteArray> linesOf(QByteArrayView bytes) {
    QList<QByteArray> lines;
    while (!bytes.isEmpty()) {
        const qsizetype end = bytes.indexOf(kLineEnd);
        lines << (end < 0 ? bytes : bytes.first(end)).toByteArray();
        bytes = end < 0 ? QByteArrayView() : bytes.sliced(end + kLineEnd.size());
    }
    return lines;
}

// Writes the bytes into an anonymous file in memory, read like a file from its start; -1 on failure.
int memoryFile(const QByteArray& bytes, int& err) {
    const int fd = ::memfd_create("porvane-lines", MFD_CLOEXEC);
    if (fd < 0) {
        err = errno;
        return -1;
    }
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            err = errno;
            ::close(fd);
            return -1;
        }
        done += n;
    }
    return fd;
}

class ServerFiles;

class ServerChanges final : public LineFileChanges {
public:
    explicit ServerChanges(ServerFiles& files)
        : m_files(files) {}

    std::unique_ptr<LineReader> read(const LineFileName& name, const LineNarrowing& narrowing) override;
    FileError append(const LineFileName& name, QByteArrayView line) override;
    FileError rewrite(const LineFileName& name, const LineNarrowing& narrowing, const LineEdit& edit,
                      bool* changed) override;
    FileError replace(const LineFileName& name,
                      const std::function<FileError(const PieceWriter& write)>& produce) override;
    FileError removeAll(const QList<LineFileName>& names) override;

    const QStringList& changedKeys() const { return m_changed; }

private:
    void changed(const LineFileName& name) {
        if (!m_changed.contains(name.key))
            m_changed << name.key;
    }
    FileError storable(const LineFileName& name, const QList<QByteArray>& lines);
    FileError updateRows(const LineFileName& name, const QList<std::pair<int, QByteArray>>& rows);
    FileError insertAfter(const LineFileName& name, int seq, const QList<QByteArray>& lines);

    ServerFiles& m_files;
    QStringList m_changed;
};

class ServerFiles final : public LineFiles {
public:
    explicit ServerFiles(const QString& connInfo)
        : m_connInfo(connInfo)
        , m_where(tr("server %1").arg(databaseOf(connInfo))) {}

    // Opens the connection, the first time and again after it was lost.
    FileError connect() {
        if (m_server && !m_lost)
            return {};
        m_server = std::make_unique<ServerConnection>(m_connInfo);
        if (m_server->error()) {
            m_lost = true;
            return {FileError::ServerUnreachable,
                    tr("The %1 could not be reached: %2").arg(m_where, m_server->error().text)};
        }
        m_lost = false;
        if (const ServerError error = checkSchema(*m_server))
            return failure(error, tr("checking its tables"));
        return {};
    }

    ServerConnection& server() { return *m_server; }

    // Runs a step that has changed nothing when it fails. A connection made before that finds the server gone
    // (restarted since, or dropped while idle) is made again and the step run once more, so that a server
    // back by then is not an error.
    FileError withConnection(const std::function<FileError()>& step) {
        const bool wasOpen = m_server && !m_lost;
        if (FileError error = connect())
            return error;
        FileError error = step();
        if (error.number == FileError::ServerUnreachable && wasOpen && !connect())
            error = step();
        return error;
    }

    // The error of a failed statement, noting a lost connection so that the next call connects again.
    FileError failure(const ServerError& error, const QString& doing) {
        if (isConnectionLost(error)) {
            m_lost = true;
            return {FileError::ServerUnreachable,
                    tr("The %1 could not be reached (%2): %3").arg(m_where, doing, error.text)};
        }
        return {FileError::ServerFailed, tr("The %1 failed %2: %3").arg(m_where, doing, error.text)};
    }
    FileError failure(const QSqlQuery& query, const QString& doing) {
        return failure(ServerError::from(query.lastError()), doing);
    }

    QString shownName(const LineFileName& name) const {
        return m_where + QStringLiteral(": ") + fileNameOf(name);
    }

    // The file's lines as they are, each ended by CR LF; FileNotFound when it does not exist.
    FileError content(const LineFileName& name, const LineNarrowing& narrowing, QByteArray& bytes) {
        const StoredTable& table = tableOf(name.kind);
        QSqlQuery query(m_server->database());
        query.setForwardOnly(true);
        if (!query.exec(QStringLiteral("SELECT %1 FROM %2 WHERE %3 ORDER BY seq")
                            .arg(storedLineSelectList(), QLatin1StringView(table.table),
                                 whereOf(*m_server, name, narrowing))))
            return failure(query, tr("reading %1").arg(fileNameOf(name)));
        StoredLine stored;
        while (query.next()) {
            readStoredLine(query, 0, stored);
            bytes += joinStoredLine(stored);
            bytes += kLineEnd;
        }
        if (query.lastError().isValid())
            return failure(query, tr("reading %1").arg(fileNameOf(name)));
        if (bytes.isEmpty()) {
            bool found = false;
            if (FileError error = existing(name, found))
                return error;
            if (!found)
                return FileError::notFound(shownName(name));
        }
        return {};
    }

    std::unique_ptr<LineReader> readLines(const LineFileName& name, const LineNarrowing& narrowing) {
        QByteArray bytes;
        if (FileError error = content(name, narrowing, bytes))
            return std::make_unique<LineReader>(error);
        int err = 0;
        const int fd = memoryFile(bytes, err);
        if (fd < 0)
            return std::make_unique<LineReader>(FileError::fromErrno(err, shownName(name)));
        return std::make_unique<LineReader>(fd, shownName(name));
    }

    FileError existing(const LineFileName& name, bool& found) {
        QSqlQuery query(m_server->database());
        if (!query.exec(QStringLiteral("SELECT 1 FROM data_file WHERE tbl = '%1' AND key = %2")
                            .arg(QLatin1StringView(tableOf(name.kind).table), m_server->quoted(name.key))))
            return failure(query, tr("looking for %1").arg(fileNameOf(name)));
        found = query.next();
        return {};
    }

    std::unique_ptr<LineReader> read(const LineFileName& name, const LineNarrowing& narrowing) override {
        std::unique_ptr<LineReader> reader;
        const FileError error = withConnection([&] {
            reader = readLines(name, narrowing);
            return reader->error();
        });
        return reader ? std::move(reader) : std::make_unique<LineReader>(error);
    }

    bool exists(const LineFileName& name) override {
        bool found = false;
        return !withConnection([&] { return existing(name, found); }) && found;
    }

    QStringList keys(LineFileName::Kind kind) override {
        QStringList keys;
        withConnection([&] {
            keys.clear();
            QSqlQuery query(m_server->database());
            if (!query.exec(QStringLiteral("SELECT key FROM data_file WHERE tbl = '%1' ORDER BY key")
                                .arg(QLatin1StringView(tableOf(kind).table))))
                return failure(query, tr("listing its files"));
            while (query.next())
                keys << query.value(0).toString();
            return FileError{};
        });
        return keys;
    }

    FileError change(const std::function<FileError(LineFileChanges& changes)>& work) override {
        const FileError begun = withConnection([&] {
            QSqlDatabase db = m_server->database();
            if (!db.transaction())
                return failure(ServerError::from(db.lastError()), tr("starting a change"));
            if (const ServerError taken =
                    m_server->exec(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(kChangeLock))) {
                db.rollback();
                return failure(taken, tr("waiting for the other desks' changes"));
            }
            return FileError{};
        });
        if (begun)
            return begun;
        QSqlDatabase db = m_server->database();
        ServerChanges changes(*this);
        FileError error = work(changes);
        if (!error && !changes.changedKeys().isEmpty())
            error = notify(changes.changedKeys());
        if (error) {
            db.rollback();
            return error;
        }
        if (!db.commit())
            return failure(ServerError::from(db.lastError()), tr("saving the change"));
        return {};
    }

    QString where() const override { return m_where; }

private:
    // Sent with the commit, and only if it commits.
    FileError notify(const QStringList& keys) {
        QString payload = keys.join(u' ');
        if (payload.size() > kMaxPayload)
            payload = QStringLiteral("*");
        if (const ServerError error =
                m_server->exec(QStringLiteral("SELECT pg_notify('%1', %2)")
                                   .arg(QLatin1StringView(kServerChangesChannel), m_server->quoted(payload))))
            return failure(error, tr("telling the other desks"));
        return {};
    }

    QString m_connInfo;
    QString m_where;
    std::unique_ptr<ServerConnection> m_server;
    bool m_lost = false;
};

std::unique_ptr<LineReader> ServerChanges::read(const LineFileName& name, const LineNarrowing& narrowing) {
    return m_files.readLines(name, narrowing);
}

FileError ServerChanges::storable(const LineFileName& name, const QList<QByteArray>& lines) {
    for (const QByteArray& line : lines)
        if (const QString why = whyNotStorable(line); !why.isEmpty())
            return {
                FileError::ServerFailed,
                tr("A line of %1 cannot be kept on the %2: %3").arg(fileNameOf(name), m_files.where(), why)};
    return {};
}

FileError ServerChanges::append(const LineFileName& name, QByteArrayView line) {
    if (FileError error = storable(name, {line.toByteArray()}))
        return error;
    ServerConnection& server = m_files.server();
    const StoredTable& table = tableOf(name.kind);
    const QString key = server.quoted(name.key);
    const QString nextSeq = QStringLiteral("(SELECT coalesce(max(seq), 0) + 1 FROM %1 WHERE %2 = %3)")
                                .arg(QLatin1StringView(table.table), QLatin1StringView(table.keyColumn), key);
    if (const ServerError error = server.exec(
            QStringLiteral("WITH file AS (INSERT INTO data_file VALUES ('%1', %2) ON CONFLICT DO NOTHING) "
                           "INSERT INTO %1 (%3, seq, %4) VALUES %5")
                .arg(QLatin1StringView(table.table), key, QLatin1StringView(table.keyColumn),
                     storedLineColumns().join(QStringLiteral(", ")),
                     storedRowValues(server, key, nextSeq, splitStoredLine(line)))))
        return m_files.failure(error, tr("saving to %1").arg(fileNameOf(name)));
    changed(name);
    return {};
}

FileError ServerChanges::rewrite(const LineFileName& name, const LineNarrowing& narrowing,
                                 const LineEdit& edit, bool* changedAny) {
    if (changedAny)
        *changedAny = false;
    ServerConnection& server = m_files.server();
    const StoredTable& table = tableOf(name.kind);
    const QString doing = tr("saving to %1").arg(fileNameOf(name));
    QSqlQuery query(server.database());
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT seq, %1 FROM %2 WHERE %3 ORDER BY seq FOR UPDATE")
                        .arg(storedLineSelectList(), QLatin1StringView(table.table),
                             whereOf(server, name, narrowing))))
        return m_files.failure(query, doing);
    QList<int> deleted;
    QList<std::pair<int, QByteArray>> updated;
    QList<std::pair<int, QList<QByteArray>>> grown; // a line that became several, in line order
    StoredLine stored;
    bool any = false;
    while (query.next()) {
        any = true;
        const int seq = query.value(0).toInt();
        readStoredLine(query, 1, stored);
        const QByteArray line = joinStoredLine(stored);
        QByteArray out;
        if (!edit(line, out))
            continue;
        const QList<QByteArray> lines = linesOf(out);
        if (lines.size() == 1 && lines.front() == line)
            continue;
        if (FileError error = storable(name, lines))
            return error;
        if (lines.isEmpty())
            deleted << seq;
        else if (lines.size() == 1)
            updated.append({seq, lines.front()});
        else
            grown.append({seq, lines});
    }
    if (query.lastError().isValid())
        return m_files.failure(query, doing);
    query.finish();
    if (!any) {
        bool found = false;
        if (FileError error = m_files.existing(name, found))
            return error;
        if (!found)
            return FileError::notFound(m_files.shownName(name));
    }
    if (deleted.isEmpty() && updated.isEmpty() && grown.isEmpty())
        return {};
    if (!deleted.isEmpty()) {
        QStringList seqs;
        for (const int seq : deleted)
            seqs << QString::number(seq);
        if (const ServerError error =
                server.exec(QStringLiteral("DELETE FROM %1 WHERE %2 = %3 AND seq IN (%4)")
                                .arg(QLatin1StringView(table.table), QLatin1StringView(table.keyColumn),
                                     server.quoted(name.key), seqs.join(u','))))
            return m_files.failure(error, doing);
    }
    for (qsizetype from = 0; from < updated.size(); from += kRowsPerUpdate)
        if (FileError error = updateRows(name, updated.mid(from, kRowsPerUpdate)))
            return error;
    // From the last to the first, so that making room behind one line leaves those before it in place.
    for (auto it = grown.crbegin(); it != grown.crend(); ++it) {
        if (FileError error = updateRows(name, {{it->first, it->second.front()}}))
            return error;
        if (FileError error = insertAfter(name, it->first, it->second.mid(1)))
            return error;
    }
    if (changedAny)
        *changedAny = true;
    changed(name);
    return {};
}

FileError ServerChanges::updateRows(const LineFileName& name, const QList<std::pair<int, QByteArray>>& rows) {
    ServerConnection& server = m_files.server();
    const StoredTable& table = tableOf(name.kind);
    const QString key = server.quoted(name.key);
    QStringList values;
    for (const auto& [seq, line] : rows)
        values << storedRowValues(server, key, QString::number(seq), splitStoredLine(line));
    QStringList sets;
    for (const QString& column : storedLineColumns())
        sets << QStringLiteral("%1 = v.%1").arg(column);
    const QString sql =
        QStringLiteral("UPDATE %1 SET %2 FROM (VALUES %3) AS v(k, s, %4) "
                       "WHERE %1.%5 = v.k AND %1.seq = v.s")
            .arg(QLatin1StringView(table.table), sets.join(QStringLiteral(", ")),
                 values.join(QStringLiteral(", ")), storedLineColumns().join(QStringLiteral(", ")),
                 QLatin1StringView(table.keyColumn));
    if (const ServerError error = server.exec(sql))
        return m_files.failure(error, tr("saving to %1").arg(fileNameOf(name)));
    return {};
}

FileError ServerChanges::insertAfter(const LineFileName& name, int seq, const QList<QByteArray>& lines) {
    ServerConnection& server = m_files.server();
    const StoredTable& table = tableOf(name.kind);
    const QString doing = tr("saving to %1").arg(fileNameOf(name));
    const QString where =
        QStringLiteral("%1 = %2").arg(QLatin1StringView(table.keyColumn), server.quoted(name.key));
    // The lines behind move up in two steps, through negative numbers, so that no two rows ever share one.
    const QString tableName = QLatin1StringView(table.table);
    for (const QString& step :
         {QStringLiteral("UPDATE %1 SET seq = -(seq + %2) WHERE %3 AND seq > %4")
              .arg(tableName, QString::number(lines.size()), where, QString::number(seq)),
          QStringLiteral("UPDATE %1 SET seq = -seq WHERE %2 AND seq < 0").arg(tableName, where)})
        if (const ServerError error = server.exec(step))
            return m_files.failure(error, doing);
    StoredRowWriter rows(server, table, name.key);
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (const ServerError error = rows.add(seq + 1 + int(i), splitStoredLine(lines[i])))
            return m_files.failure(error, doing);
    if (const ServerError error = rows.flush())
        return m_files.failure(error, doing);
    return {};
}

FileError ServerChanges::replace(const LineFileName& name,
                                 const std::function<FileError(const PieceWriter& write)>& produce) {
    QByteArray bytes;
    if (FileError error = produce([&bytes](QByteArrayView piece) {
            bytes += piece;
            return FileError{};
        }))
        return error;
    QByteArray old;
    const FileError oldError = m_files.content(name, {}, old);
    if (oldError && oldError.number != FileError::FileNotFound)
        return oldError;
    // Content the same, byte for byte, leaves the file as it was, and the other desks untold.
    if (!oldError && old == bytes)
        return {};
    const QList<QByteArray> lines = linesOf(bytes);
    if (FileError error = storable(name, lines))
        return error;
    ServerConnection& server = m_files.server();
    const StoredTable& table = tableOf(name.kind);
    const QString doing = tr("saving to %1").arg(fileNameOf(name));
    if (const ServerError error =
            server.exec(QStringLiteral("DELETE FROM %1 WHERE %2 = %3")
                            .arg(QLatin1StringView(table.table), QLatin1StringView(table.keyColumn),
                                 server.quoted(name.key))))
        return m_files.failure(error, doing);
    if (const ServerError error = registerStoredFile(server, table, name.key))
        return m_files.failure(error, doing);
    StoredRowWriter rows(server, table, name.key);
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (const ServerError error = rows.add(int(i) + 1, splitStoredLine(lines[i])))
            return m_files.failure(error, doing);
    if (const ServerError error = rows.flush())
        return m_files.failure(error, doing);
    changed(name);
    return {};
}

FileError ServerChanges::removeAll(const QList<LineFileName>& names) {
    ServerConnection& server = m_files.server();
    for (const LineFileName& name : names) {
        const StoredTable& table = tableOf(name.kind);
        const QString doing = tr("removing %1").arg(fileNameOf(name));
        QSqlQuery query(server.database());
        if (!query.exec(QStringLiteral("DELETE FROM data_file WHERE tbl = '%1' AND key = %2")
                            .arg(QLatin1StringView(table.table), server.quoted(name.key))))
            return m_files.failure(query, doing);
        // A file that is not there fails the whole removal, as in the folder; the change's transaction
        // puts back those removed before it.
        if (query.numRowsAffected() == 0)
            return FileError::notFound(m_files.shownName(name));
        if (const ServerError error =
                server.exec(QStringLiteral("DELETE FROM %1 WHERE %2 = %3")
                                .arg(QLatin1StringView(table.table), QLatin1StringView(table.keyColumn),
                                     server.quoted(name.key))))
            return m_files.failure(error, doing);
        changed(name);
    }
    return {};
}

} // namespace

std::unique_ptr<LineFiles> openServerFiles(const QString& connInfo, QString& error) {
    auto files = std::make_unique<ServerFiles>(connInfo);
    if (const FileError failed = files->connect()) {
        error = failed.text;
        return nullptr;
    }
    return files;
}

ChangedFiles changedFilesOf(const QString& payload) {
    ChangedFiles changed;
    for (const QString& key : payload.split(u' ', Qt::SkipEmptyParts)) {
        if (key == u"*")
            changed.all = true;
        else if (key.size() == 4)
            changed.names << LineFileName{LineFileName::Kind::Month, key};
        else if (key.size() == 6)
            changed.names << LineFileName{LineFileName::Kind::DayStatus, key};
    }
    return changed;
}

} // namespace porvane
