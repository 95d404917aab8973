#pragma once

#include "temp_pg_cluster.h"

#include <gtest/gtest.h>
#include <memory>

namespace porvane::test {

// Tests on a PostgreSQL server: one throw-away cluster for the test program's suite, a new empty database
// for each test (m_db, its connection string). Skipped where PostgreSQL's server is not installed. Base is
// the fixture the tests build on otherwise (the desk's window, say).
template <typename Base = ::testing::Test> class PgTestOn : public Base {
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

    static inline std::unique_ptr<TempPgCluster> s_cluster;
    QString m_db;
};
class PgTest : public PgTestOn<> {};

} // namespace porvane::test
