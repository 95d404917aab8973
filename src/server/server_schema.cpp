#include "server/server_schema.h"

#include "store/record_fields.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace porvane {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("ServerSchema", text);
}

// What a stored line becomes: a text column per field ('' when blank, never NULL) and the booked times.
QString lineColumnsDefinition() {
    QStringList columns;
    for (const FieldSpec& def : kRecordFields)
        columns << QStringLiteral("%1 text NOT NULL DEFAULT ''").arg(QLatin1StringView(def.name));
    columns << QStringLiteral("%1 text[] NOT NULL CHECK (cardinality(%1) = %2)")
                   .arg(QLatin1StringView(kBookedTimesColumnName))
                   .arg(kBookedSlotCount);
    return columns.join(QStringLiteral(", "));
}

// Version 1: the bookings of each month (yymm) in line order (seq), and each day's (yymmdd) status lines.
QStringList version1() {
    return {
        QStringLiteral("CREATE TABLE booking (yymm text NOT NULL, seq integer NOT NULL, %1, "
                       "PRIMARY KEY (yymm, seq))")
            .arg(lineColumnsDefinition()),
        QStringLiteral("CREATE INDEX booking_regno ON booking (RegNo)"),
        QStringLiteral("CREATE INDEX booking_names ON booking (lower(LastName), lower(FirstName))"),
        QStringLiteral("CREATE TABLE day_status (day text NOT NULL, seq integer NOT NULL, %1, "
                       "PRIMARY KEY (day, seq))")
            .arg(lineColumnsDefinition()),
        QStringLiteral("CREATE INDEX day_status_regno ON day_status (day, RegNo)"),
    };
}

// Version 2: which month and day files exist, so that a file emptied by a change is still there, empty, as
// in the data folder, and the files of a kind are listed without reading every line.
QStringList version2() {
    return {
        QStringLiteral(
            "CREATE TABLE data_file (tbl text NOT NULL, key text NOT NULL, PRIMARY KEY (tbl, key))"),
        QStringLiteral("INSERT INTO data_file SELECT DISTINCT 'booking', yymm FROM booking"),
        QStringLiteral("INSERT INTO data_file SELECT DISTINCT 'day_status', day FROM day_status"),
    };
}

using SchemaStep = QStringList (*)();
// Step i brings the tables from version i to version i + 1.
constexpr SchemaStep kSteps[] = {version1, version2};
static_assert(std::size(kSteps) == kSchemaVersion);

// The version the database holds: 0 when it has no schema_version table or no row in it.
ServerError readVersion(ServerConnection& server, int& version) {
    version = 0;
    QSqlQuery query(server.database());
    if (!query.exec(QStringLiteral("SELECT to_regclass('schema_version') IS NOT NULL")) || !query.next())
        return ServerError::from(query.lastError());
    if (!query.value(0).toBool())
        return {};
    if (!query.exec(QStringLiteral("SELECT coalesce(max(version), 0) FROM schema_version")) || !query.next())
        return ServerError::from(query.lastError());
    version = query.value(0).toInt();
    return {};
}

ServerError tooNew(int version) {
    return {tr("the database's tables are of version %1, newer than this program's %2: use a newer "
               "Porvane 90")
                .arg(version)
                .arg(kSchemaVersion),
            {}};
}

} // namespace

QStringList storedLineColumns() {
    QStringList names;
    for (const FieldSpec& def : kRecordFields)
        names << QLatin1StringView(def.name);
    names << QLatin1StringView(kBookedTimesColumnName);
    return names;
}

ServerError initSchema(ServerConnection& server, int* from) {
    return server.inTransaction([&]() -> ServerError {
        // Two inits at once wait for each other here instead of both creating the tables.
        if (ServerError error = server.exec(QStringLiteral("SELECT pg_advisory_xact_lock(90900001)")))
            return error;
        int version = 0;
        if (ServerError error = readVersion(server, version))
            return error;
        if (from)
            *from = version;
        if (version > kSchemaVersion)
            return tooNew(version);
        if (version == kSchemaVersion)
            return {};
        if (version == 0)
            if (ServerError error =
                    server.exec(QStringLiteral("CREATE TABLE schema_version (version integer NOT NULL)")))
                return error;
        for (int step = version; step < kSchemaVersion; ++step)
            for (const QString& statement : kSteps[step]())
                if (ServerError error = server.exec(statement))
                    return error;
        if (ServerError error = server.exec(QStringLiteral("DELETE FROM schema_version")))
            return error;
        return server.exec(QStringLiteral("INSERT INTO schema_version VALUES (%1)").arg(kSchemaVersion));
    });
}

ServerError checkSchema(ServerConnection& server) {
    int version = 0;
    if (ServerError error = readVersion(server, version))
        return error;
    if (version > kSchemaVersion)
        return tooNew(version);
    if (version < kSchemaVersion)
        return {tr("the database's tables are %1: run porvane-admin --db CONNINFO db init")
                    .arg(version == 0 ? tr("not made yet")
                                      : tr("of version %1, older than %2").arg(version).arg(kSchemaVersion)),
                {}};
    return {};
}

} // namespace porvane
