#include "photos/photo_manager_window.h"
#include "test_desk.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

TEST(PhotoManagerWindow, listsAMonthAndDeletesTheSelectedPhoto) {
    test::TestDesk d(QDateTime(QDate(2026, 11, 14), QTime(10, 0)));
    d.folder.write(u"Record/2611.vrf"_s,
                   test::handLine({{1, "261103090000"}, {14, "Ada"}, {31, "Quist"}, {550, "Quist Surveys"}}) +
                       "\r\n" + test::handLine({{1, "261105101010"}, {14, "Bert"}, {31, "Rowe"}}) + "\r\n");
    d.folder.write(u"photo/2611/261103090000_Ada_Quist.bmp"_s, QByteArray(100, 'x'));
    d.folder.write(u"photo/2611/261105101010_Bert_Rowe.bmp"_s, QByteArray(100, 'x'));
    PhotoManagerWindow window(d.state);
    EXPECT_EQ(window.windowTitle(), u"Manage Photo");
    auto* month = window.findChild<QComboBox*>(u"CBHPMonth"_s);
    EXPECT_EQ(month->currentText(), u"Nov 2026");
    window.findChild<QPushButton*>(u"cmdHPList"_s)->click();
    auto* grid = window.findChild<QTableView*>(u"PhotoGrid"_s);
    ASSERT_EQ(grid->model()->rowCount(), 2);
    EXPECT_EQ(grid->model()->headerData(4, Qt::Horizontal).toString(), u"Photo Age");
    EXPECT_EQ(window.findChild<QLabel*>(u"laHPStatus"_s)->text(), u"2 Photos Found");

    grid->setCurrentIndex(grid->model()->index(1, 0));
    EXPECT_EQ(window.findChild<QLabel*>(u"LAHPName"_s)->text(), u"Bert Rowe");
    EXPECT_EQ(window.findChild<QLabel*>(u"LaHPPassI"_s)->text(), u"No Pass");
    d.prompter.queue(Answer::Ok);
    window.findChild<QPushButton*>(u"cmdHPDelete"_s)->click();
    EXPECT_EQ(grid->model()->rowCount(), 1);
    EXPECT_FALSE(d.folder.exists(u"photo/2611/261105101010_Bert_Rowe.bmp"_s));
    EXPECT_EQ(window.findChild<QLabel*>(u"laHPStatus"_s)->text(), u"Photo Deleted");
}
