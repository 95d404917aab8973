#pragma once

#include <QMap>
#include <QString>
#include <QTemporaryDir>

namespace porvane::test {

// A PostgreSQL server of its own for one test program: a cluster made by initdb in a temporary folder,
// reached only through a unix socket in that folder (no TCP port, so nothing on the machine can collide with
// it), stopped and removed at the end. initdb refuses to run as root, so under root the server runs as the
// user "nobody", which owns the folder.
class TempPgCluster {
public:
    TempPgCluster();
    ~TempPgCluster();
    TempPgCluster(const TempPgCluster&) = delete;
    TempPgCluster& operator=(const TempPgCluster&) = delete;

    // The folder of initdb and pg_ctl; empty when PostgreSQL's server is not installed.
    static QString serverBinaries();

    // Empty when the server runs; otherwise why not, with its log.
    const QString& problem() const { return m_problem; }
    // Stops the server as a power cut would (pg_ctl stop -m immediate), and starts it again; false with
    // problem() set when pg_ctl fails.
    bool stop();
    bool start();

    // Makes a new empty database and returns its connection string, or an empty string (see problem()).
    QString createDatabase();

private:
    // Runs a server program (initdb, pg_ctl) as the cluster's owner; false with m_problem set on failure.
    bool runAsOwner(const QString& program, const QStringList& args);

    QTemporaryDir m_dir;
    QString m_bin;
    QString m_problem;
    bool m_started = false;
    int m_databases = 0;
};

// The parts of a connection string that createDatabase made, by key: "host", "port", "dbname", "user".
QMap<QString, QString> connInfoParts(const QString& connInfo);

} // namespace porvane::test
