#pragma once

#include <QSqlDatabase>
#include <QString>
#include <functional>

class QSqlError;
class QSqlQuery;

namespace porvane {

// A failure of the server or of the connection to it: its text, and the SQLSTATE when the server gave one
// ("23505" a unique key taken, "42P01" no such table).
struct ServerError {
    QString text;
    QString sqlState;

    bool ok() const { return text.isEmpty(); }
    explicit operator bool() const { return !ok(); } // true when there is an error

    static ServerError from(const QSqlError& error);
};

// One connection to the PostgreSQL server that holds the bookings, made from a libpq connection string of
// key=value pairs ("host=/run/postgresql port=5432 dbname=porvane user=desk"). Qt's PostgreSQL driver, and
// libpq behind it, is loaded by the first connection made, so a desk or command that works on a data folder
// never loads them.
class ServerConnection {
public:
    explicit ServerConnection(const QString& connInfo);
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    // Why the connection could not be made; no error once it is open.
    const ServerError& error() const { return m_error; }
    QSqlDatabase database() const { return QSqlDatabase::database(m_name, false); }

    // Runs one statement whose result is not needed.
    ServerError exec(const QString& sql);
    // Runs work in one transaction: committed when work returns no error, rolled back when it does.
    ServerError inTransaction(const std::function<ServerError()>& work);
    // A literal of the text for a statement, quoted as the server expects.
    QString quoted(const QString& text) const;

private:
    QString m_name;
    ServerError m_error;
};

} // namespace porvane
