#pragma once

#include "temp_pg_cluster.h"

#include <gtest/gtest.h>
#include <memory>

namespace porvane::test {

// A test with a new empty database of its own (m_db, a connection string) on a PostgreSQL server started
// once for the test program; skipped where PostgreSQL's server is not installed.
class PgDatabaseTest : public ::testing::Test {
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
    }

    inline static std::unique_ptr<TempPgCluster> s_cluster;
    QString m_db;
};

} // namespace porvane::test
