#include "passes/pass_window.h"
#include "photos/camera_window.h"
#include "photos/photo_manager_window.h"
#include "recording_opener.h"
#include "test_desk.h"
#include "widgets.h"

#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

using namespace porvane;

// F1 in the pass and photo windows opens their page, whatever topic was current before.
TEST(HelpKey, passCameraAndPhotoWindowsOpenTheirOwnPages) {
    test::TestDesk d(QDateTime(QDate(2026, 11, 14), QTime(10, 0)));
    test::RecordingOpener opener;
    d.state.help.urlOpener = &opener;
    d.state.record[Field::RegNo] = QStringLiteral("261114100000");
    d.state.record[Field::FirstName] = QStringLiteral("Ada");
    d.state.record[Field::LastName] = QStringLiteral("Quist");
    const auto pageOpened = [&] {
        return opener.opened.isEmpty() ? QString() : opener.opened.takeLast().fileName();
    };

    {
        PassWindow window(d.state, {});
        d.state.help.HelpContext = 1;
        QTest::keyClick(&window, Qt::Key_F1);
        EXPECT_EQ(pageOpened(), u"issuingapass.html");
        // From a box inside the window too, and only F1.
        auto* box = window.findChild<QLineEdit*>();
        ASSERT_NE(box, nullptr);
        QTest::keyClick(box, Qt::Key_F1);
        EXPECT_EQ(pageOpened(), u"issuingapass.html");
        QTest::keyClick(&window, Qt::Key_F2);
        EXPECT_TRUE(opener.opened.isEmpty());
    }
    {
        d.prompter.clear(); // the camera window may say that there is no camera
        CameraWindow window(d.state);
        QTest::keyClick(&window, Qt::Key_F1);
        EXPECT_EQ(pageOpened(), u"snapshot.html");
    }
    {
        PhotoManagerWindow window(d.state);
        d.state.help.HelpContext = 1;
        QTest::keyClick(test::find<QLineEdit>(&window, "HPFindTB"), Qt::Key_F1);
        EXPECT_EQ(pageOpened(), u"managingpics2.html");
        EXPECT_EQ(d.state.help.HelpContext, 70);
    }
}
