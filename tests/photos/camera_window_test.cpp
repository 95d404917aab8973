#include "photos/camera_window.h"
#include "test_desk.h"
#include "widgets.h"

#include <QCameraDevice>
#include <QComboBox>
#include <QMediaDevices>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

TEST(CameraWindow, withoutACameraSaysSoAndSnapsNothing) {
    if (!QMediaDevices::videoInputs().isEmpty())
        GTEST_SKIP() << "a camera is attached";
    test::TestDesk d(QDateTime(QDate(2026, 11, 14), QTime(10, 0)));
    d.state.record[Field::RegNo] = u"261114100000"_s;
    CameraWindow window(d.state);
    EXPECT_EQ(test::find<QComboBox>(&window, "cbDriver")->currentText(), u"<none>");
    ASSERT_EQ(d.prompter.messages().size(), 1);
    EXPECT_EQ(d.prompter.last().text, u"Problem: Porvane Can't detect a Working Camera");
    EXPECT_FALSE(test::find<QPushButton>(&window, "cmdEnterSetup")->isVisibleTo(&window));

    test::find<QPushButton>(&window, "cmdSaveDIB")->click();
    EXPECT_EQ(d.prompter.messages().size(), 2); // says why there is no photo
    EXPECT_FALSE(d.folder.exists(u"photo/2611"_s));
}
