#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "lists/multi_delete_window.h"
#include "lists_fixture.h"
#include "store/record_store.h"
#include "widgets.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// March 2024, booked times laid out by hand (the 5th at column 1076, the 6th at 1080, the 20th at 1136): Ann
// comes on the 5th and the 20th, Bob on the 6th, Cy on the 5th.
struct MultiDeleteWindowTest : ListsFixture {
    const QByteArray ann = handBooking("240301090000", "Ann", "Lee", {{slot(5), "0900"}, {slot(20), "1000"}});
    const QByteArray bob = handBooking("240302090000", "Bob", "Ray", {{slot(6), "1000"}});
    const QByteArray cy = handBooking("240303090000", "Cy", "Day", {{slot(5), "1430"}});

    MultiDeleteWindowTest() {
        select(15, "MARCH", "2024");
        writeLines(u"Record/2403.vrf"_s, {ann, bob, cy});
    }
    QByteArray march() const { return desk.folder.read(u"Record/2403.vrf"_s); }
};

// The window starts on the month the desk shows. Enter never deletes: in the window it means Cancel, and
// in the question it means No.
TEST_F(MultiDeleteWindowTest, enterEnter_deletesNothing) {
    const QByteArray before = march();
    {
        MultiDeleteWindow window(desk.state, dates);
        window.show();
        QTest::keyClick(find<QComboBox>(&window, "CBMDELDay"), Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(window.result(), QDialog::Rejected);
        EXPECT_TRUE(desk.prompter.messages().isEmpty());
    }
    MultiDeleteWindow window(desk.state, dates);
    window.show();
    EXPECT_EQ(find<QComboBox>(&window, "CBMDELDay")->currentText(), u"All Days");
    desk.prompter.queueEnter();
    click(&window, "cmdMDELDelete");
    ASSERT_EQ(desk.prompter.messages().size(), 1);
    EXPECT_EQ(desk.prompter.last().text, u"DELETE ALL BOOKINGS for the Entire MONTH of MARCH 2024.\r\n"
                                         u"That removes 3 bookings.\r\nDo you wish to proceed?");
    EXPECT_EQ(desk.prompter.last().defaultAnswer, Answer::No);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(march(), before);
}

// Deleting a day says how many whole bookings go and how many of them have other days; Yes removes them.
TEST_F(MultiDeleteWindowTest, aDay_saysHowManyWholeBookingsGoWithTheirOtherDays) {
    MultiDeleteWindow window(desk.state, dates);
    window.show();
    auto* day = find<QComboBox>(&window, "CBMDELDay");
    day->setFocus();
    QTest::keyClicks(day, u"5"_s);
    ASSERT_EQ(day->currentText(), u"5");
    EXPECT_FALSE(find<QLineEdit>(&window, "DFindTB")->isEnabledTo(&window)) << "a text narrows only a month";
    desk.prompter.queue(Answer::No);
    click(&window, "cmdMDELDelete");
    EXPECT_EQ(
        desk.prompter.last().text,
        u"DELETE ALL Bookings made on the 5 of MARCH 2024.\r\nThat removes 2 whole bookings, with all their "
        u"days: 1 of them also have visits on other days.\r\nDo you wish to proceed?");
    EXPECT_EQ(desk.prompter.last().buttons, Buttons::YesNo);
    EXPECT_EQ(march(), ann + "\r\n" + bob + "\r\n" + cy + "\r\n");

    desk.prompter.queue(Answer::Yes);
    click(&window, "cmdMDELDelete");
    EXPECT_EQ(march(), bob + "\r\n");
    EXPECT_EQ(window.result(), QDialog::Accepted);
    EXPECT_EQ(desk.state.mainTitle,
              u"Tarnwell Solutions Porvane 90  [ 2 Records Deleted for the 5 of MARCH 2024 ]");
}

TEST_F(MultiDeleteWindowTest, purgeFromTheMainWindow_showsTheResultInItsTitleAndRefreshesTheList) {
    writeLines(u"Record/2406.vrf"_s, {handBooking("240601090000", "Ann", "Lee", {{slot(15), "0900"}}),
                                      handBooking("240602090000", "Bob", "Ray", {{slot(16), "1000"}})});
    RecordStore records = desk.recordStore();
    RecordStoreBooking store{records};
    MainWindow window(desk.state, store);
    window.show();
    find<QPushButton>(&window, "cmdGetToday")->click();
    QAbstractItemModel* grid = find<QTableView>(&window, "StatGrid")->model();
    ASSERT_EQ(grid->index(0, 0).data().toString(), u"240601090000");

    desk.prompter.clear();
    desk.prompter.queue({Answer::Yes, Answer::Ok}); // delete; then the empty day list's notice, if any
    QTimer::singleShot(0, [this] {
        auto* dialog = qobject_cast<MultiDeleteWindow*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(find<QComboBox>(dialog, "CBMDELMonth")->currentText(), u"JUNE");
        find<QComboBox>(dialog, "CBMDELDay")->setCurrentText(u"15"_s);
        QTest::mouseClick(find<QPushButton>(dialog, "cmdMDELDelete"), Qt::LeftButton);
    });
    find<QPushButton>(&window, "cmdMultiDELETE")->click();
    EXPECT_EQ(window.windowTitle(),
              u"Tarnwell Solutions Porvane 90  [ One Record Deleted for the 15 of JUNE 2024 ]");
    EXPECT_NE(grid->index(0, 0).data().toString(), u"240601090000") << "the day list was built again";
}

} // namespace
