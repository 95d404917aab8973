// Lists that follow other desks: a booking another desk saves, or an arrival it marks, shows in the list this
// desk has open within a second, while the operator's highlighted row and unsaved edit stay as they were.
#include "desk_window.h"
#include "pg_database_test.h"

#include "lists/on_site_list.h"
#include "server/server_watcher.h"
#include "store/day_status.h"
#include "store/folder_watcher.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QSignalSpy>

using namespace porvane;
using porvane::test::DeskWindow;
using porvane::test::handBooking;
using porvane::test::slot;
using namespace Qt::Literals::StringLiterals;

namespace {

class LiveLists : public DeskWindow {
protected:
    void SetUp() override {
        // Forty visitors due today (Monday 23 November 2026), more than the grid shows at once.
        QByteArray file;
        for (int i = 0; i < 40; ++i)
            file += handBooking(QByteArray("2611010800").append(QByteArray::number(10 + i)).constData(), "Vi",
                                QByteArray("Sitor").append(QByteArray::number(10 + i)).constData(),
                                {{525, "SALES"}, {550, "Firm Ltd"}, {slot(23), "0900"}}) +
                    "\r\n";
        folder.write(u"Record/2611.vrf"_s, file);
        window().watch(makeWatcher());
        rebuilds = std::make_unique<QSignalSpy>(grid()->model(), &QAbstractItemModel::modelReset);
    }

    // Another desk, with its own clock, saves a booking for today through the record store.
    QString otherDeskBooks(const QString& first, const QTime& at) {
        FixedClock otherClock{QDateTime(QDate(2026, 11, 23), at)};
        RecordStore other([this]() -> LineFiles& { return otherDesk; }, [this] { return state.dataPath(); },
                          [&] { return otherClock.now(); });
        CurrentRecord booking;
        booking.ClearRecord();
        booking[Field::FirstName] = first;
        booking[Field::LastName] = u"Other"_s;
        booking[Field::Department] = u"SALES"_s;
        booking[Field::Organisation] = u"Desk Two Ltd"_s;
        booking.bookedTimes()[22] = u"1100"_s;
        const StoreResult saved = other.SaveNewRecord(booking, u"2611"_s);
        EXPECT_TRUE(saved.ok()) << saved.error.text.toStdString();
        return saved.regNo;
    }
    int listedRows() {
        int rows = 0;
        while (rows < grid()->model()->rowCount() && !cell(rows, 0).trimmed().isEmpty())
            ++rows;
        return rows;
    }

    virtual std::unique_ptr<ChangeWatcher> makeWatcher() {
        return std::make_unique<FolderWatcher>(folder.dataPath());
    }

    std::unique_ptr<QSignalSpy> rebuilds;
    // The other desk's own way to the data folder.
    FolderFiles otherDesk{[this] { return state.dataPath(); }, state.lockQuestion};
};

// The desk told by the server: another desk's commits come as notifications.
class LiveListsFromTheServer : public porvane::test::WithTestDatabase<LiveLists> {
protected:
    std::unique_ptr<ChangeWatcher> makeWatcher() override { return std::make_unique<ServerWatcher>(m_db); }
};

} // namespace

TEST_F(LiveLists, anotherDesksBookingIsListedWithinASecond_theHighlightAndTheUnsavedEditStay) {
    click("cmdGetToday");
    clickRow(30);
    const QString regNo = text("RegNoTB");
    const int scrolled = grid()->verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    retype("PersMobTB", u"0777"_s);
    rebuilds->clear();

    QElapsedTimer took;
    took.start();
    const QString added = otherDeskBooks(u"Zed"_s, QTime(10, 0, 1));
    QTRY_COMPARE_WITH_TIMEOUT(listedRows(), 41, 1000);
    EXPECT_LT(took.elapsed(), 1000);
    EXPECT_EQ(cell(40, 0).trimmed(), added);
    EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), regNo);
    EXPECT_EQ(text("RegNoTB"), regNo);
    EXPECT_EQ(grid()->verticalScrollBar()->value(), scrolled);
    EXPECT_EQ(text("PersMobTB"), u"0777") << "the edit is still in the editor";
    EXPECT_FALSE(folder.read(u"Record/2611.vrf"_s).contains("0777"));

    // Still unsaved: moving to another row asks about it, and No leaves the file without it.
    prompter.queue(Answer::No);
    clickRow(2);
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(prompter.messages().first().text.contains(u"Do you wish to save"_s))
        << prompter.messages().first().text.toStdString();
    EXPECT_FALSE(folder.read(u"Record/2611.vrf"_s).contains("0777"));
    EXPECT_EQ(rebuilds->size(), 1);
}

TEST_F(LiveLists, aBurstIsListedOnce_anotherMonthNotAtAll_andTheDesksOwnSaveOnce) {
    click("cmdGetTom");
    rebuilds->clear();
    for (int i = 0; i < 3; ++i) {
        otherDeskBooks(u"Zed"_s, QTime(10, 0, 1 + i));
        QTest::qWait(40);
    }
    QTRY_COMPARE_WITH_TIMEOUT(listedRows(), 43, 1000);
    QTest::qWait(600);
    EXPECT_EQ(rebuilds->size(), 1);

    folder.write(u"Record/2612.vrf"_s, handBooking("261201080000", "Dec", "Ember") + "\r\n");
    QTest::qWait(800);
    EXPECT_EQ(rebuilds->size(), 1) << "December is not the month listed";

    clickRow(5);
    retype("PersMobTB", u"0777"_s);
    click("cmdSAVE");
    QTest::qWait(800);
    EXPECT_EQ(rebuilds->size(), 2) << "the desk's own save is listed once";
    EXPECT_TRUE(folder.read(u"Record/2611.vrf"_s).contains("0777"));
}

TEST_F(LiveLists, anArrivalAnotherDeskMarksShowsOnTheOnSiteList) {
    click("cmdDayList");
    ASSERT_EQ(listedRows(), 40);
    const QString regNo = cell(7, 0).trimmed();
    rebuilds->clear();
    ASSERT_FALSE(UpdateDayStatus(otherDesk, QDate(2026, 11, 23), regNo, u"09:41"_s, u"  -  "_s));
    QTRY_COMPARE_WITH_TIMEOUT(cell(7, kOnSiteArrived).trimmed(), u"09:41"_s, 1000);
    EXPECT_EQ(rebuilds->size(), 1);
}

TEST_F(LiveListsFromTheServer,
       anotherDesksNotifiedBookingIsListed_aLostServerIsSaid_andOnceBackTheListIsReadAgain) {
    click("cmdGetToday");
    // Until the watcher listens, a notice of the listed month reads it again.
    for (int i = 0; i < 50 && rebuilds->isEmpty(); ++i) {
        notifyChanges(u"2611"_s);
        QTest::qWait(100);
    }
    ASSERT_FALSE(rebuilds->isEmpty()) << "the watcher never listened";
    clickRow(30);
    const QString regNo = text("RegNoTB");
    retype("PersMobTB", u"0777"_s);
    rebuilds->clear();

    QElapsedTimer took;
    took.start();
    const QString added = otherDeskBooks(u"Zed"_s, QTime(10, 0, 1));
    notifyChanges(u"2611"_s);
    QTRY_COMPARE_WITH_TIMEOUT(listedRows(), 41, 1000);
    EXPECT_LT(took.elapsed(), 1000);
    EXPECT_EQ(cell(40, 0).trimmed(), added);
    EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), regNo);
    EXPECT_EQ(text("PersMobTB"), u"0777");
    EXPECT_EQ(rebuilds->size(), 1);

    serverGone();
    QTRY_VERIFY_WITH_TIMEOUT(window().windowTitle().contains(u"Lists are not kept up to date"_s), 5000);
    otherDeskBooks(u"Yan"_s, QTime(10, 0, 2)); // not heard of
    serverBack();
    QTRY_COMPARE_WITH_TIMEOUT(listedRows(), 42, 5000);
    EXPECT_EQ(window().windowTitle(), AppState::plainTitle());
    EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), regNo);
    EXPECT_EQ(text("PersMobTB"), u"0777");
}
