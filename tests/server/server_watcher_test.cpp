// The server watcher against a PostgreSQL server of the test's own: changes another connection notifies are
// reported, those committed before the desk last read are not, and a server that goes away is said to be
// lost and listened to again once it is back, without ever holding up the desk's thread.
#include "pg_test.h"
#include "sanitized.h"
#include "server/server_watcher.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

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

class ServerWatcherTest : public porvane::test::PgTest {
protected:
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
            notifyChanges(u"0000"_s);
            waitUntil([this] { return !reported.isEmpty(); }, 100);
        }
        ASSERT_FALSE(reported.isEmpty()) << "the watcher never listened";
        waitUntil([] { return false; }, 200);
        reported.clear();
    }
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
    notifyChanges(u"2403 240314"_s);
    waitUntil([this] { return !reported.isEmpty(); }, porvane::test::kWithinASecond);
    EXPECT_LT(took.elapsed(), porvane::test::kWithinASecond);
    EXPECT_EQ(reported, QList<QStringList>{QStringList({u"2403"_s, u"240314"_s})});

    // Another desk's mark names nothing and is passed over; "*" is any file, named by none.
    reported.clear();
    notifyChanges(QString());
    notifyChanges(u"*"_s);
    waitUntil([this] { return !reported.isEmpty(); }, porvane::test::kWithinASecond);
    waitUntil([] { return false; }, 200);
    EXPECT_EQ(reported, QList<QStringList>{QStringList()});

    // The desk's own save and what came before it are in what it reads next; a change after it is not.
    reported.clear();
    notifyChanges(u"2501"_s);
    watcher.seenUpToNow();
    notifyChanges(u"2502"_s);
    waitUntil([this] { return !reported.isEmpty(); }, porvane::test::kWithinASecond);
    waitUntil([] { return false; }, 300);
    EXPECT_EQ(reported, QList<QStringList>{QStringList{u"2502"_s}});
    EXPECT_TRUE(lost.isEmpty());
}

TEST_F(ServerWatcherTest, aServerGoneAwayIsSaidOnce_theDeskIsNotHeldUp_andItListensAgainWhenBack) {
    ServerWatcher watcher(m_db);
    follow(watcher);
    untilListening();

    ASSERT_TRUE(s_cluster->stop()) << s_cluster->problem().toStdString();
    EXPECT_LT(waitUntil([this] { return !lost.isEmpty(); }, 5 * porvane::test::kWithinASecond),
              5 * porvane::test::kWithinASecond);
    waitUntil([] { return false; }, 2500); // a failed try to come back in between
    EXPECT_EQ(lost.size(), 1) << lost.join(u" / "_s).toStdString();
    EXPECT_EQ(back, 0);
    QElapsedTimer read;
    read.start();
    watcher.seenUpToNow();
    EXPECT_LT(read.elapsed(), 50 * porvane::test::kSlowdown) << "the desk does not wait for a lost server";

    ASSERT_TRUE(s_cluster->start()) << s_cluster->problem().toStdString();
    EXPECT_LT(waitUntil([this] { return back == 1; }, 5 * porvane::test::kWithinASecond),
              5 * porvane::test::kWithinASecond);
    notifyChanges(u"2611"_s);
    waitUntil([this] { return reported.size() == 2; }, porvane::test::kWithinASecond);
    // What changed while it was away was not heard: any file may have.
    EXPECT_EQ(reported, (QList<QStringList>{QStringList(), QStringList{u"2611"_s}}));
}
