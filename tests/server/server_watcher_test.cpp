// The server watcher against a PostgreSQL server of the test's own: changes another connection notifies are
// reported, those committed before the desk last read are not, and a server that goes away is said to be
// lost and listened to again once it is back, without ever holding up the desk's thread.
#include "pg_database_test.h"
#include "server/server_connection.h"
#include "server/server_watcher.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

using porvane::ServerConnection;
using porvane::ServerWatcher;
using namespace Qt::Literals::StringLiterals;

namespace {

// Runs the event loop until done says so or ms pass; how long it took.
qint64 waitUntil(const std::function<bool()>& done, int ms) {
    QElapsedTimer took;
    took.start();
    while (!done() && took.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    return took.elapsed();
}

class ServerWatcherTest : public porvane::test::PgDatabaseTest {
protected:
    void SetUp() override {
        PgDatabaseTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        m_other = std::make_unique<ServerConnection>(m_db);
        ASSERT_FALSE(m_other->error()) << m_other->error().text.toStdString();
    }

    // Another desk's commit.
    void notify(const QString& payload) {
        ASSERT_FALSE(m_other->exec(u"NOTIFY porvane_changes, %1"_s.arg(m_other->quoted(payload))));
    }
    // Follows the watcher's signals.
    void follow(ServerWatcher& watcher) {
        QObject::connect(&watcher, &ServerWatcher::filesChanged, &watcher,
                         [this](const QStringList& keys) { reported << keys; });
        QObject::connect(&watcher, &ServerWatcher::lost, &watcher,
                         [this](const QString& why) { lost << why; });
        QObject::connect(&watcher, &ServerWatcher::back, &watcher, [this] { ++back; });
    }
    // Notifies until the watcher, just made, listens.
    void untilListening() {
        for (int i = 0; i < 50 && reported.isEmpty(); ++i) {
            notify(u"0000"_s);
            waitUntil([this] { return !reported.isEmpty(); }, 100);
        }
        ASSERT_FALSE(reported.isEmpty()) << "the watcher never listened";
        waitUntil([] { return false; }, 200);
        reported.clear();
    }
    // From the server's own database, since a database cannot close its doors on itself.
    void allowConnections(bool allowed) {
        const QString name = m_db.section(u"dbname="_s, 1).section(u' ', 0, 0);
        ServerConnection admin(QString(m_db).replace(u"dbname="_s + name, u"dbname=postgres"_s));
        ASSERT_FALSE(admin.error()) << admin.error().text.toStdString();
        const auto error = admin.exec(
            u"ALTER DATABASE %1 ALLOW_CONNECTIONS %2"_s.arg(name, allowed ? u"true"_s : u"false"_s));
        ASSERT_FALSE(error) << error.text.toStdString();
    }

    std::unique_ptr<ServerConnection> m_other;
    QList<QStringList> reported;
    QStringList lost;
    int back = 0;
};

} // namespace

TEST_F(ServerWatcherTest, othersChangesAreReportedWithinASecond_butNotThoseCommittedBeforeTheDeskRead) {
    ServerWatcher watcher(m_db);
    follow(watcher);
    untilListening();

    QElapsedTimer took;
    took.start();
    notify(u"2403 240314 junk 2403"_s);
    waitUntil([this] { return !reported.isEmpty(); }, 1000);
    EXPECT_LT(took.elapsed(), 1000);
    EXPECT_EQ(reported, QList<QStringList>{QStringList({u"2403"_s, u"240314"_s})});

    // Another desk's mark names nothing and is passed over; "*" is any file, named by none.
    reported.clear();
    notify(QString());
    notify(u"*"_s);
    waitUntil([this] { return !reported.isEmpty(); }, 1000);
    waitUntil([] { return false; }, 200);
    EXPECT_EQ(reported, QList<QStringList>{QStringList()});

    // The desk's own save and what came before it are in what it reads next; a change after it is not.
    reported.clear();
    notify(u"2501"_s);
    watcher.seenUpToNow();
    notify(u"2502"_s);
    waitUntil([this] { return !reported.isEmpty(); }, 1000);
    waitUntil([] { return false; }, 300);
    EXPECT_EQ(reported, QList<QStringList>{QStringList{u"2502"_s}});
    EXPECT_TRUE(lost.isEmpty());
}

TEST_F(ServerWatcherTest, aServerGoneAwayIsSaidOnce_theDeskIsNotHeldUp_andItListensAgainWhenBack) {
    ServerWatcher watcher(m_db);
    follow(watcher);
    untilListening();

    // The server stops taking this database's connections and drops the watcher's.
    allowConnections(false);
    ASSERT_FALSE(m_other->exec(u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                               "WHERE datname = current_database() AND pid <> pg_backend_pid()"_s));
    EXPECT_LT(waitUntil([this] { return !lost.isEmpty(); }, 5000), 5000);
    waitUntil([] { return false; }, 2500); // a failed try to come back in between
    EXPECT_EQ(lost.size(), 1) << lost.join(u" / "_s).toStdString();
    EXPECT_EQ(back, 0);
    QElapsedTimer read;
    read.start();
    watcher.seenUpToNow();
    EXPECT_LT(read.elapsed(), 50) << "the desk does not wait for a lost server";

    allowConnections(true);
    EXPECT_LT(waitUntil([this] { return back == 1; }, 5000), 5000);
    notify(u"2611"_s);
    waitUntil([this] { return reported.size() == 2; }, 1000);
    // What changed while it was away was not heard: any file may have.
    EXPECT_EQ(reported, (QList<QStringList>{QStringList(), QStringList{u"2611"_s}}));
}
