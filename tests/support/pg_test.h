#pragma once

#include "server/server_connection.h"
#include "temp_pg_cluster.h"

#include <gtest/gtest.h>
#include <memory>

namespace porvane::test {

// Tests on a PostgreSQL server, over the fixture Base: one throw-away cluster for the test program's suite, a
// new empty database for each test (m_db, its connection string). Skipped where PostgreSQL's server is not
// installed.
template <typename Base> class WithPgDatabase : public Base {
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

    // Another desk's commit of changes to the files the payload names, as the server's store tells it.
    void notifyChanges(const QString& payload) {
        ServerConnection desk(m_db);
        ASSERT_FALSE(desk.error()) << desk.error().text.toStdString();
        const ServerError error =
            desk.exec(QStringLiteral("NOTIFY porvane_changes, %1").arg(desk.quoted(payload)));
        ASSERT_FALSE(error) << error.text.toStdString();
    }

    static inline std::unique_ptr<TempPgCluster> s_cluster;
    QString m_db;
};

class PgTest : public WithPgDatabase<::testing::Test> {};

} // namespace porvane::test
