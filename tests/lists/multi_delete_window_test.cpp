#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "lists/multi_delete_window.h"
#include "lists_fixture.h"
#include "store/record_store.h"

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

struct MultiDeleteWindowTest : ListsFixture {
    MultiDeleteWindowTest() {
        select(15, "MARCH", "2024");
        writeLines(u"Record/2403.vrf"_s,
                   {handLine({{1, "240301090000"}, {14, "Ann"}, {31, "Lee"}, {1076, "0900"}}),
                    handLine({{1, "240302090000"}, {14, "Bob"}, {31, "Ray"}, {1080, "1000"}})});
    }
    template <typename T> T* find(QWidget& window, const char* name) {
        auto* w = window.findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
};

TEST_F(MultiDeleteWindowTest, startsOnTheShownMonth_andOffersTheTextOnlyForAWholeMonth) {
    MultiDeleteWindow window(desk.state, dates);
    window.show();
    auto* day = find<QComboBox>(window, "CBMDELDay");
    EXPECT_EQ(day->currentText(), u"All Days");
    EXPECT_EQ(find<QComboBox>(window, "CBMDELMonth")->currentText(), u"MARCH");
    EXPECT_EQ(find<QComboBox>(window, "CBMDELYear")->currentText(), u"2024");
    auto* text = find<QLineEdit>(window, "DFindTB");
    EXPECT_TRUE(text->isEnabledTo(&window));
    day->setCurrentText(u"5"_s);
    EXPECT_FALSE(text->isEnabledTo(&window));
    day->setCurrentText(u"All Days"_s);
    find<QComboBox>(window, "CBMDELMonth")->setCurrentText(u"All Months"_s);
    EXPECT_FALSE(text->isEnabledTo(&window));

    auto* kinds = find<QComboBox>(window, "CBDListBy");
    EXPECT_EQ(kinds->itemText(kinds->count() - 1), u"REPORTING TO");
    kinds->setCurrentText(u"CAR REGISTRATION"_s);
    EXPECT_EQ(find<QLabel>(window, "laDListBy")->text(), u"Find whole or part of a:");
    EXPECT_EQ(find<QLabel>(window, "laDFind")->text(), u"Enter Number Plate:");
    EXPECT_LE(window.sizeHint().width(), 1024);
    EXPECT_LE(window.sizeHint().height(), 700);
}

// Enter deleting on Yes is the main window's test below.
TEST_F(MultiDeleteWindowTest, enterAsksBeforeDeleting_noKeepsTheWindowOpen_escapeCancels) {
    MultiDeleteWindow window(desk.state, dates);
    window.show();
    find<QComboBox>(window, "CBMDELDay")->setCurrentText(u"5"_s);
    const QByteArray before = desk.folder.read(u"Record/2403.vrf"_s);
    desk.prompter.queue(Answer::No);
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(desk.prompter.texts(),
              QStringList{u"DELETE ALL Bookings made on the 5 of MARCH 2024.\r\nDo you wish to proceed?"_s});
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Rejected);
    EXPECT_EQ(desk.prompter.messages().size(), 1);
    EXPECT_EQ(desk.folder.read(u"Record/2403.vrf"_s), before);
}

TEST_F(MultiDeleteWindowTest, aFailureIsShownAndTheWindowStaysOpen) {
    MultiDeleteWindow window(desk.state, dates);
    window.show();
    find<QComboBox>(window, "CBMDELMonth")->setCurrentText(u"APRIL"_s); // no file for April
    find<QComboBox>(window, "CBMDELDay")->setCurrentText(u"2"_s);
    desk.prompter.queue(Answer::Yes);
    find<QPushButton>(window, "cmdMDELDelete")->click();
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(desk.prompter.messages().size(), 2);
    EXPECT_TRUE(desk.prompter.last().text.startsWith(u"Nothing was deleted: File not found: "));
    EXPECT_TRUE(desk.prompter.last().text.endsWith(u" (error 53)."));
}

// Switched off, the main window's button cannot be pressed; enabled, it opens the window (the test below).
TEST_F(MultiDeleteWindowTest, mainWindowPurgeButton_followsTheSettings) {
    RecordStore records{desk.state};
    RecordStoreBooking store{records};
    desk.state.settings.ckDisMultiD = u"1"_s;
    MainWindow window(desk.state, store);
    EXPECT_FALSE(window.findChild<QPushButton*>(u"cmdMultiDELETE"_s)->isEnabled());
}

TEST_F(MultiDeleteWindowTest, purgeFromTheMainWindow_showsTheResultInItsTitleAndRefreshesTheList) {
    writeLines(u"Record/2406.vrf"_s,
               {handLine({{1, "240601090000"}, {14, "Ann"}, {31, "Lee"}, {1116, "0900"}}),
                handLine({{1, "240602090000"}, {14, "Bob"}, {31, "Ray"}, {1120, "1000"}})});
    RecordStore records{desk.state};
    RecordStoreBooking store{records};
    MainWindow window(desk.state, store);
    window.show();
    window.findChild<QPushButton*>(u"cmdGetToday"_s)->click();
    QAbstractItemModel* grid = window.findChild<QTableView*>(u"StatGrid"_s)->model();
    ASSERT_EQ(grid->index(0, 0).data().toString(), u"240601090000");

    desk.prompter.clear();
    desk.prompter.queue({Answer::Yes, Answer::Ok}); // delete; then the empty day list's notice, if any
    QTimer::singleShot(0, [this] {
        auto* dialog = qobject_cast<MultiDeleteWindow*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->findChild<QComboBox*>(u"CBMDELMonth"_s)->currentText(), u"JUNE");
        dialog->findChild<QComboBox*>(u"CBMDELDay"_s)->setCurrentText(u"15"_s);
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    window.findChild<QPushButton*>(u"cmdMultiDELETE"_s)->click();
    EXPECT_EQ(window.windowTitle(),
              u"Tarnwell Solutions Porvane 90  [ One Record Deleted for the 15 of JUNE 2024 ]");
    EXPECT_NE(grid->index(0, 0).data().toString(), u"240601090000") << "the day list was built again";
}

} // namespace
