#include "server/server_connection.h"

#include <QCoreApplication>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <atomic>

namespace porvane {

namespace {
const QString kDriver = QStringLiteral("QPSQL");
}

ServerError ServerError::from(const QSqlError& error) {
    if (error.type() == QSqlError::NoError)
        return {};
    // libpq's own text runs over indented lines, and Qt's driver adds the SQLSTATE in brackets, empty ones
    // when the connection broke: shown in a message box, one line without them reads better.
    QString text = error.databaseText();
    if (const QString state = u'(' + error.nativeErrorCode() + u')'; text.endsWith(state))
        text.chop(state.size());
    text = text.simplified();
    if (text.isEmpty())
        text = error.text().trimmed();
    if (text.isEmpty())
        text = QCoreApplication::translate("ServerConnection", "the server failed without saying why");
    return {text, error.nativeErrorCode()};
}

ServerConnection::ServerConnection(const QString& connInfo) {
    static std::atomic<int> made{0};
    m_name = QStringLiteral("porvane-server-%1").arg(++made);
    if (!QSqlDatabase::isDriverAvailable(kDriver)) {
        m_error.text = QCoreApplication::translate(
            "ServerConnection", "Qt's PostgreSQL driver is not installed (Debian package libqt6sql6-psql)");
        return;
    }
    QSqlDatabase db = QSqlDatabase::addDatabase(kDriver, m_name);
    // The driver hands its connect options to libpq as they are, after the parts it was given one by one
    // (none here); it reads a ";" as a blank, which a key=value string never needs. The defaults go first so
    // that the string's own keys win (libpq keeps the later one). Over TCP a server that does not answer, or
    // that vanished from the network, is an error within about fifteen seconds rather than a hang: the
    // connect is bounded, an idle connection is probed after five seconds and given up after three unanswered
    // probes, and data the server does not acknowledge gives up the connection after fifteen seconds. libpq
    // ignores the keepalive keys over a unix socket, where a dead server closes the socket at once.
    db.setConnectOptions(QStringLiteral("connect_timeout=10 keepalives=1 keepalives_idle=5 "
                                        "keepalives_interval=2 keepalives_count=3 tcp_user_timeout=15000 ") +
                         connInfo);
    if (!db.open())
        m_error = ServerError::from(db.lastError());
}

ServerConnection::~ServerConnection() {
    {
        QSqlDatabase db = database();
        if (db.isValid())
            db.close();
    }
    QSqlDatabase::removeDatabase(m_name);
}

ServerError ServerConnection::exec(const QString& sql) {
    QSqlQuery query(database());
    if (!query.exec(sql))
        return ServerError::from(query.lastError());
    return {};
}

ServerError ServerConnection::inTransaction(const std::function<ServerError()>& work) {
    QSqlDatabase db = database();
    if (!db.transaction())
        return ServerError::from(db.lastError());
    ServerError error = work();
    if (error) {
        db.rollback();
        return error;
    }
    if (!db.commit())
        return ServerError::from(db.lastError());
    return {};
}

QString ServerConnection::quoted(const QString& text) const {
    if (text.isEmpty())
        return QStringLiteral("''"); // never NULL, which a null text would give
    QSqlField field{QString(), QMetaType(QMetaType::QString)};
    field.setValue(text);
    return database().driver()->formatValue(field);
}

} // namespace porvane
