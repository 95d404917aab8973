#pragma once

#include "server/server_connection.h"
#include "temp_pg_cluster.h"

#include <gtest/gtest.h>
#include <memory>

namespace porvane::test {

// A test (over the fixture Base) with a new empty database of its own, m_db its connection string, on a
// PostgreSQL server started once for the test suite; skipped where PostgreSQL's server is not installed.
template <typename Base> class WithTestDatabase : public Base {
protected:
    static void SetUpTestSuite() {
        if (!TempPgCluster::serverBinaries().isEmpty())
            s_cluster = std::make_unique<TempPgCluster>();
    }
    static void TearDownTestSuite() { s_cluster.reset(); }

    void SetUp() override {
        if (!s_cluster)
            GTEST_SKIP() << "PostgreSQL's server is not installed (apt-get install postgresql): not tested";
        m_db = s_cluster->createDatabase();
        ASSERT_FALSE(m_db.isEmpty()) << s_cluster->problem().toStdString();
        Base::SetUp();
    }

    // Another desk's commit of changes to the files the payload names.
    void notifyChanges(const QString& payload) {
        ServerConnection desk(m_db);
        ASSERT_FALSE(desk.error()) << desk.error().text.toStdString();
        const ServerError error =
            desk.exec(QStringLiteral("NOTIFY porvane_changes, %1").arg(desk.quoted(payload)));
        ASSERT_FALSE(error) << error.text.toStdString();
    }
    // The server stops taking connections to the test's database and drops those it has, but the one made
    // here; serverBack() lets them in again. Done from the server's own database, since a database cannot
    // close its doors on itself.
    void serverGone() {
        adminExec(QStringLiteral("ALTER DATABASE %1 ALLOW_CONNECTIONS false").arg(databaseName()));
        adminExec(
            QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = '%1' "
                           "AND pid <> pg_backend_pid()")
                .arg(databaseName()));
    }
    void serverBack() {
        adminExec(QStringLiteral("ALTER DATABASE %1 ALLOW_CONNECTIONS true").arg(databaseName()));
    }

    inline static std::unique_ptr<TempPgCluster> s_cluster;
    QString m_db;

private:
    QString databaseName() const { return m_db.section(QStringLiteral("dbname="), 1).section(u' ', 0, 0); }
    void adminExec(const QString& sql) {
        ServerConnection admin(QString(m_db).replace(QStringLiteral("dbname=") + databaseName(),
                                                     QStringLiteral("dbname=postgres")));
        ASSERT_FALSE(admin.error()) << admin.error().text.toStdString();
        const ServerError error = admin.exec(sql);
        ASSERT_FALSE(error) << error.text.toStdString();
    }
};

using PgDatabaseTest = WithTestDatabase<::testing::Test>;

} // namespace porvane::test
