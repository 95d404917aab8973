#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "store/record_store.h"
#include "test_desk.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace porvane;
using porvane::test::handLine;
using porvane::test::TestDesk;

namespace {

// The desk's main window over a throw-away data folder, with the real record store behind it.
struct MainWindowFixture : ::testing::Test {
    TestDesk desk{QDateTime(QDate(2026, 11, 23), QTime(9, 30, 15))};
    RecordStore records{desk.state};
    RecordStoreBooking store{records};
    MainWindow window{desk.state, store};

    template <typename T> T* find(const char* name) {
        auto* w = window.findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    void click(const char* name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
};

} // namespace

TEST_F(MainWindowFixture, newBookingTypedAndSavedLandsInTheMonthFile) {
    desk.state.settings.ckEnbl_RTC = QStringLiteral("0");
    click("cmdNEW");
    EXPECT_EQ(find<QLineEdit>("RegNoTB")->text(), u"NEW Booking");

    auto* first = find<QLineEdit>("FirstNameTB");
    first->setFocus();
    QTest::keyClicks(first, QStringLiteral("John S"));
    EXPECT_EQ(first->text(), u"John");
    EXPECT_EQ(find<QLineEdit>("LastNameTB")->text(), u"S");
    QTest::keyClicks(find<QLineEdit>("LastNameTB"), QStringLiteral("mith7"));
    EXPECT_EQ(find<QLineEdit>("LastNameTB")->text(), u"Smith") << "digits are not accepted in names";

    find<QComboBox>("Dept1CB")->setCurrentText(QStringLiteral("ENGINEERING"));
    QTest::keyClicks(find<QLineEdit>("CatOrganTB"), QStringLiteral("Acme Widgets"));
    click("cmdSAVE");

    const QByteArray file = desk.folder.read(QStringLiteral("Record/2611.vrf"));
    ASSERT_EQ(file.size(), 1188) << "one line and its CR LF";
    EXPECT_EQ(file.left(12), QByteArray("261123093015"));
    EXPECT_EQ(file.mid(13, 17) + file.mid(30, 5), QByteArray("John             Smith"));
    EXPECT_EQ(file.mid(524, 11), QByteArray("ENGINEERING"));
    EXPECT_EQ(file.mid(549, 12), QByteArray("Acme Widgets"));
    EXPECT_EQ(find<QLineEdit>("RegNoTB")->text(), u"261123093015");
}

TEST_F(MainWindowFixture, dayListFillsTheGridAndARowClickOpensItsBooking) {
    desk.folder.write(
        QStringLiteral("Record/2611.vrf"),
        handLine(
            {{1, "261101080000"}, {14, "Ann"}, {31, "Lee"}, {550, "Lee & Co"}, {1060 + 4 * 22, "0930"}}) +
            "\r\n" +
            handLine(
                {{1, "261102080000"}, {14, "Bob"}, {31, "Ray"}, {550, "Ray Ltd"}, {1060 + 4 * 21, "1000"}}) +
            "\r\n" +
            handLine(
                {{1, "261103080000"}, {14, "Cy"}, {31, "Day"}, {550, "Day plc"}, {1060 + 4 * 22, "1415"}}) +
            "\r\n");
    click("cmdGetToday");

    auto* grid = find<QTableView>("StatGrid");
    QAbstractItemModel* model = grid->model();
    EXPECT_EQ(model->rowCount(), 2 + 50) << "two bookings on the 23rd and fifty empty rows";
    EXPECT_EQ(model->index(0, 1).data().toString(), u"Ann");
    EXPECT_EQ(model->index(1, 1).data().toString(), u"Cy");
    EXPECT_EQ(model->index(1, 7).data().toString(), u"14:15");

    grid->scrollTo(model->index(1, 1));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(model->index(1, 1)).center());
    EXPECT_EQ(find<QLineEdit>("RegNoTB")->text(), u"261103080000");
    EXPECT_EQ(find<QLineEdit>("FirstNameTB")->text(), u"Cy");
    EXPECT_EQ(find<QLineEdit>("CatOrganTB")->text(), u"Day plc");
}

TEST_F(MainWindowFixture, fitsA1024By768Screen) {
    window.show();
    EXPECT_LE(window.frameGeometry().width(), 1024);
    EXPECT_LE(window.frameGeometry().height(), 768);
    EXPECT_LE(window.minimumSizeHint().width(), 1024);
    EXPECT_LE(window.minimumSizeHint().height(), 740);
}

TEST_F(MainWindowFixture, inThenOutOnTheOnSiteListMarkTodaysStatusFile) {
    desk.folder.write(QStringLiteral("Record/2611.vrf"), handLine({{1, "261101080000"},
                                                                   {14, "Al"},
                                                                   {31, "Bond"},
                                                                   {525, "ENGINEERING"},
                                                                   {550, "Bond plc"},
                                                                   {1060 + 4 * 22, "0900"}}) +
                                                             "\r\n");
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_FALSE(find<QPushButton>("cmdIN")->isEnabled()) << "IN and OUT work on the on-site list only";
    click("cmdDayList");
    ASSERT_TRUE(find<QPushButton>("cmdIN")->isEnabled());
    auto* grid = find<QTableView>("StatGrid");
    QAbstractItemModel* model = grid->model();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(model->index(0, 1)).center());
    ASSERT_EQ(find<QLineEdit>("RegNoTB")->text(), u"261101080000");

    click("cmdIN");
    const QString status = QStringLiteral("Status/261123.vdf");
    EXPECT_EQ(desk.folder.read(status).mid(990, 10), QByteArray("09:30  -  "));
    auto* on = find<QLabel>("LaON_Site");
    auto* off = find<QLabel>("LaOFFSite");
    EXPECT_EQ(on->text(), u"09:30");
    EXPECT_TRUE(on->styleSheet().contains(u"color: #ff0000")) << on->styleSheet().toStdString();
    EXPECT_EQ(off->text(), u"  -  ");
    EXPECT_EQ(model->index(0, 6).data().toString(), u"09:30") << "the on-site list shows the arrival";
    EXPECT_TRUE(find<QLineEdit>("MainFindTB")->hasFocus());

    desk.clock.advanceSeconds(3 * 3600 + 60);
    click("cmdOUT");
    EXPECT_EQ(desk.folder.read(status).mid(990, 10), QByteArray("09:3012:31"));
    EXPECT_EQ(off->text(), u"12:31");
    EXPECT_TRUE(off->styleSheet().contains(u"background-color: #00ff00")) << off->styleSheet().toStdString();
    EXPECT_TRUE(on->styleSheet().contains(u"color: #808080"));
    EXPECT_EQ(model->index(0, 7).data().toString(), u"12:31");
    EXPECT_TRUE(desk.prompter.messages().isEmpty()) << desk.prompter.texts().join(u'|').toStdString();
}
