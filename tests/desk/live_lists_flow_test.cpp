// Lists that follow other desks, over the data folder and over the server: a booking another desk saves, or
// an arrival it marks, shows in the list this desk has open within a second, while the operator's highlighted
// row and unsaved edit stay as they were; the desk's own save is listed once.
#include "desk_window.h"
#include "pg_test.h"
#include "sanitized.h"

#include "lists/on_site_list.h"
#include "server/server_files.h"
#include "server/server_schema.h"
#include "server/server_watcher.h"
#include "store/day_status.h"
#include "store/folder_watcher.h"
#include "store/line_reader.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QSignalSpy>

using namespace porvane;
using porvane::test::DeskWindow;
using porvane::test::handBooking;
using porvane::test::slot;
using namespace Qt::Literals::StringLiterals;

namespace {

const LineFileName kNovember = LineFileName::month(u"2611"_s);

// The desk, and another desk beside it on the same store.
class LiveLists : public DeskWindow {
protected:
    void SetUp() override {
        // Forty visitors due today (Monday 23 November 2026), more than the grid shows at once.
        ASSERT_FALSE(otherDesk().change([](LineFileChanges& changes) {
            for (int i = 0; i < 40; ++i)
                if (FileError error = changes.append(
                        kNovember,
                        handBooking(QByteArray("2611010800").append(QByteArray::number(10 + i)).constData(),
                                    "Vi", QByteArray("Sitor").append(QByteArray::number(10 + i)).constData(),
                                    {{525, "SALES"}, {550, "Firm Ltd"}, {slot(23), "0900"}})))
                    return error;
            return FileError();
        }));
        std::unique_ptr<ChangeWatcher> made = makeWatcher();
        watcher = made.get();
        window().watch(std::move(made));
        rebuilds = std::make_unique<QSignalSpy>(grid()->model(), &QAbstractItemModel::modelReset);
    }

    virtual std::unique_ptr<ChangeWatcher> makeWatcher() = 0;
    // The other desk's own way to the store.
    virtual LineFiles& otherDesk() = 0;

    // The other desk, with its own clock, saves a booking for today.
    QString otherDeskBooks(const QString& first, const QTime& at) {
        FixedClock otherClock{QDateTime(QDate(2026, 11, 23), at)};
        RecordStore other([this]() -> LineFiles& { return otherDesk(); }, [this] { return state.dataPath(); },
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
    // November's lines as this desk's store holds them.
    QByteArray november() {
        QByteArray bytes;
        const std::unique_ptr<LineReader> reader = state.files().read(kNovember);
        QByteArrayView line;
        while (reader->next(line))
            bytes += line.toByteArray() + "\r\n";
        return bytes;
    }
    int listedRows() {
        int rows = 0;
        while (rows < grid()->model()->rowCount() && !cell(rows, 0).trimmed().isEmpty())
            ++rows;
        return rows;
    }

    void anotherDesksBookingIsListedWithinASecond_theHighlightAndTheUnsavedEditStay() {
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
        QTRY_COMPARE_WITH_TIMEOUT(listedRows(), 41, test::kWithinASecond);
        EXPECT_LT(took.elapsed(), test::kWithinASecond);
        EXPECT_EQ(cell(40, 0).trimmed(), added);
        EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), regNo);
        EXPECT_EQ(text("RegNoTB"), regNo);
        EXPECT_EQ(grid()->verticalScrollBar()->value(), scrolled);
        EXPECT_EQ(text("PersMobTB"), u"0777") << "the edit is still in the editor";
        EXPECT_FALSE(november().contains("0777"));

        // Still unsaved: moving to another row asks about it, and No leaves the store without it.
        prompter.queue(Answer::No);
        clickRow(2);
        ASSERT_EQ(prompter.messages().size(), 1);
        EXPECT_TRUE(prompter.messages().first().text.contains(u"Do you wish to save"_s))
            << prompter.messages().first().text.toStdString();
        EXPECT_FALSE(november().contains("0777"));
        EXPECT_EQ(rebuilds->size(), 1);
    }

    void aBurstIsListedOnce_anotherMonthNotAtAll_andTheDesksOwnSaveOnce() {
        click("cmdGetTom");
        rebuilds->clear();
        for (int i = 0; i < 3; ++i) {
            otherDeskBooks(u"Zed"_s, QTime(10, 0, 1 + i));
            QTest::qWait(40);
        }
        QTRY_COMPARE_WITH_TIMEOUT(listedRows(), 43, test::kWithinASecond);
        QTest::qWait(600);
        EXPECT_EQ(rebuilds->size(), 1);

        ASSERT_FALSE(otherDesk().change([](LineFileChanges& changes) {
            return changes.append(LineFileName::month(u"2612"_s),
                                  handBooking("261201080000", "Dec", "Ember"));
        }));
        QTest::qWait(800);
        EXPECT_EQ(rebuilds->size(), 1) << "December is not the month listed";

        clickRow(5);
        retype("PersMobTB", u"0777"_s);
        click("cmdSAVE");
        QTest::qWait(800);
        EXPECT_EQ(rebuilds->size(), 2) << "the desk's own save is listed once";
        EXPECT_TRUE(november().contains("0777"));
    }

    void anArrivalAnotherDeskMarksShowsOnTheOnSiteList() {
        click("cmdDayList");
        ASSERT_EQ(listedRows(), 40);
        const QString regNo = cell(7, 0).trimmed();
        rebuilds->clear();
        ASSERT_FALSE(UpdateDayStatus(otherDesk(), QDate(2026, 11, 23), regNo, u"09:41"_s, u"  -  "_s));
        QTRY_COMPARE_WITH_TIMEOUT(cell(7, kOnSiteArrived).trimmed(), u"09:41"_s, test::kWithinASecond);
        EXPECT_EQ(rebuilds->size(), 1);
    }

    ChangeWatcher* watcher = nullptr; // the window's
    std::unique_ptr<QSignalSpy> rebuilds;
};

class LiveListsOverTheDataFolder : public LiveLists {
protected:
    std::unique_ptr<ChangeWatcher> makeWatcher() override {
        return std::make_unique<FolderWatcher>(folder.dataPath());
    }
    LineFiles& otherDesk() override { return m_other; }

    FolderFiles m_other{[this] { return state.dataPath(); }, state.lockQuestion};
};

// Both desks on the server: each change's commit notifies the other.
class LiveListsOverTheServer : public porvane::test::WithPgDatabase<LiveLists> {
protected:
    // The watcher listens before the test begins: a notice naming no list's file comes back.
    void SetUp() override {
        WithPgDatabase::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        bool heard = false;
        QObject::connect(watcher, &ChangeWatcher::filesChanged, watcher, [&] { heard = true; });
        for (int i = 0; i < 50 && !heard; ++i) {
            notifyChanges(u"0000"_s);
            QTest::qWait(100);
        }
        ASSERT_TRUE(heard) << "the watcher never listened";
        QObject::disconnect(watcher, &ChangeWatcher::filesChanged, watcher, nullptr);
    }
    std::unique_ptr<ChangeWatcher> makeWatcher() override { return std::make_unique<ServerWatcher>(m_db); }
    LineFiles& otherDesk() override {
        if (!m_other) {
            ServerConnection server(m_db);
            EXPECT_FALSE(initSchema(server)) << "db init failed";
            QString error;
            m_other = openServerFiles(m_db, error);
            std::unique_ptr<LineFiles> mine = openServerFiles(m_db, error);
            EXPECT_TRUE(m_other && mine) << error.toStdString();
            state.useFiles(std::move(mine));
        }
        return *m_other;
    }

    std::unique_ptr<LineFiles> m_other;
};

} // namespace

TEST_F(LiveListsOverTheDataFolder,
       anotherDesksBookingIsListedWithinASecond_theHighlightAndTheUnsavedEditStay) {
    anotherDesksBookingIsListedWithinASecond_theHighlightAndTheUnsavedEditStay();
}
TEST_F(LiveListsOverTheDataFolder, aBurstIsListedOnce_anotherMonthNotAtAll_andTheDesksOwnSaveOnce) {
    aBurstIsListedOnce_anotherMonthNotAtAll_andTheDesksOwnSaveOnce();
}
TEST_F(LiveListsOverTheDataFolder, anArrivalAnotherDeskMarksShowsOnTheOnSiteList) {
    anArrivalAnotherDeskMarksShowsOnTheOnSiteList();
}

TEST_F(LiveListsOverTheServer, anotherDesksBookingIsListedWithinASecond_theHighlightAndTheUnsavedEditStay) {
    anotherDesksBookingIsListedWithinASecond_theHighlightAndTheUnsavedEditStay();
}
TEST_F(LiveListsOverTheServer, aBurstIsListedOnce_anotherMonthNotAtAll_andTheDesksOwnSaveOnce) {
    aBurstIsListedOnce_anotherMonthNotAtAll_andTheDesksOwnSaveOnce();
}
TEST_F(LiveListsOverTheServer, anArrivalAnotherDeskMarksShowsOnTheOnSiteList) {
    anArrivalAnotherDeskMarksShowsOnTheOnSiteList();
}

// The server goes away and comes back: the title says the lists are not kept up to date meanwhile, and once
// it is back the list is read again, since what changed meanwhile was not heard.
TEST_F(LiveListsOverTheServer, aLostServerIsSaidInTheTitle_andOnceBackTheListIsReadAgain) {
    click("cmdGetToday");
    clickRow(30);
    const QString regNo = text("RegNoTB");
    retype("PersMobTB", u"0777"_s);

    ASSERT_TRUE(s_cluster->stop()) << s_cluster->problem().toStdString();
    QTRY_VERIFY_WITH_TIMEOUT(window().windowTitle().contains(u"Lists are not kept up to date"_s),
                             5 * test::kWithinASecond);
    ASSERT_TRUE(s_cluster->start()) << s_cluster->problem().toStdString();
    otherDeskBooks(u"Yan"_s, QTime(10, 0, 2));
    QTRY_COMPARE_WITH_TIMEOUT(listedRows(), 41, 5 * test::kWithinASecond);
    EXPECT_EQ(window().windowTitle(), AppState::plainTitle());
    EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), regNo);
    EXPECT_EQ(text("PersMobTB"), u"0777");
}
