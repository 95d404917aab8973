#include "photos/camera_capture.h"
#include "photos/photo_files.h"
#include "photos/save_filter.h"
#include "test_desk.h"

#include <QDir>
#include <QDirIterator>
#include <gtest/gtest.h>

using namespace porvane;

namespace {

struct CameraDesk : test::TestDesk {
    CameraCapture camera{state};

    CameraDesk()
        : TestDesk(QDateTime(QDate(2026, 11, 14), QTime(10, 0))) {
        state.record[Field::RegNo] = QStringLiteral("270102080000");
        state.record[Field::FirstName] = QStringLiteral("Ada");
        state.record[Field::LastName] = QStringLiteral("Quist");
    }
};

// A 1280 x 720 camera frame: red and blue edges around a green middle that is wider than a 3:4 crop.
QImage wideFrame() {
    QImage frame(1280, 720, QImage::Format_RGB32);
    for (int x = 0; x < frame.width(); ++x)
        for (int y = 0; y < frame.height(); ++y)
            frame.setPixel(x, y, x < 320 ? qRgb(255, 0, 0) : x < 960 ? qRgb(0, 255, 0) : qRgb(0, 0, 255));
    return frame;
}

QStringList filesUnder(const QString& root) {
    QStringList out;
    QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        out << QDir(root).relativeFilePath(it.next());
    return out;
}

} // namespace

TEST(CameraCapture, snapshotIsCroppedToAPortraitWithinTheLimitInANewMonthFolder) {
    CameraDesk d;
    StillFrameSource source(wideFrame());
    d.camera.open();
    ASSERT_TRUE(d.camera.snapshot(source));
    const QString relative = QStringLiteral("photo/2701/270102080000_Ada_Quist.bmp");
    ASSERT_TRUE(d.folder.exists(relative));
    const QByteArray bytes = d.folder.read(relative);
    EXPECT_LE(bytes.size(), kPhotoSizeLimit);
    const QImage stored = QImage::fromData(bytes, "BMP");
    EXPECT_EQ(stored.size(), QSize(150, 200));
    // Centre crop, not a squeeze: the green middle fills the portrait from edge to edge.
    EXPECT_EQ(QColor(stored.pixel(75, 100)), QColor(0, 255, 0));
    EXPECT_GT(qGreen(stored.pixel(2, 100)), 200);
    EXPECT_GT(qGreen(stored.pixel(147, 100)), 200);
    EXPECT_TRUE(d.prompter.messages().isEmpty());
    EXPECT_TRUE(d.state.JustCapturedMark);
    EXPECT_EQ(d.state.record[Field::PhotoOnFile], u"1");

    // A second snapshot replaces the first under the same name.
    QImage grey(640, 480, QImage::Format_RGB32);
    grey.fill(Qt::gray);
    StillFrameSource second(grey);
    ASSERT_TRUE(d.camera.snapshot(second));
    EXPECT_EQ(filesUnder(d.folder.path(QStringLiteral("photo"))),
              QStringList{QStringLiteral("2701/270102080000_Ada_Quist.bmp")});
    EXPECT_EQ(QColor(QImage::fromData(d.folder.read(relative), "BMP").pixel(75, 100)), QColor(Qt::gray));
}

TEST(CameraCapture, unfittedSnapshotsWarnOnlyAboveTheLimit) {
    for (const auto& [size, warns] : {std::pair{QSize(200, 166), false}, std::pair{QSize(640, 480), true}}) {
        CameraDesk d;
        d.state.settings.ckRawCamPhoto = QStringLiteral("1");
        QImage frame(size, QImage::Format_RGB32);
        frame.fill(Qt::darkCyan);
        StillFrameSource source(frame);
        ASSERT_TRUE(d.camera.snapshot(source));
        const QByteArray bytes = d.folder.read(QStringLiteral("photo/2701/270102080000_Ada_Quist.bmp"));
        EXPECT_EQ(bytes.size() > kPhotoSizeLimit, warns) << bytes.size();
        EXPECT_EQ(d.prompter.messages().size(), warns ? 1 : 0);
        if (warns) {
            EXPECT_EQ(d.prompter.last().text,
                      u"Video Setup Warning: Resolution settings are too high for Porvane");
        }
        EXPECT_TRUE(d.state.JustCapturedMark); // the photo is kept all the same
    }
}

TEST(CameraCapture, noFrameWritesNothingAndSaysWhy) {
    CameraDesk d;
    StillFrameSource none(QImage(), QStringLiteral("No camera is connected"));
    EXPECT_FALSE(d.camera.snapshot(none));
    EXPECT_EQ(d.prompter.last().text, u"No camera is connected");
    EXPECT_EQ(d.prompter.last().icon, Icon::Information);
    EXPECT_FALSE(d.state.JustCapturedMark);
    EXPECT_TRUE(filesUnder(d.folder.path(QStringLiteral("photo"))).isEmpty());
}

TEST(CameraCapture, namesWithSlashesOrDotsStayInTheMonthFolder) {
    CameraDesk d;
    QImage frame(300, 400, QImage::Format_RGB32);
    frame.fill(Qt::white);
    StillFrameSource source(frame);
    for (const auto& [first, last] :
         {std::pair{"../../x", "y/../../z"}, std::pair{"..", ".."}, std::pair{"a\\b", "\t"}}) {
        d.state.record[Field::FirstName] = QString::fromLatin1(first);
        d.state.record[Field::LastName] = QString::fromLatin1(last);
        ASSERT_TRUE(d.camera.snapshot(source));
    }
    const QStringList files = filesUnder(d.folder.appPath());
    EXPECT_EQ(files.size(), 3) << files.join(u' ').toStdString();
    for (const QString& f : files)
        EXPECT_TRUE(f.startsWith(u"Porvanedata/photo/2701/270102080000_")) << f.toStdString();
}

TEST(SaveFilter, barsAndColonsSplitIntoPairs) {
    EXPECT_EQ(saveFilterToNameFilters(QStringLiteral("AVI files (*.avi)|*.avi")),
              QStringList{QStringLiteral("AVI files (*.avi)")});
    EXPECT_EQ(saveFilterToNameFilters(QStringLiteral("Video|*.avi;*.mpg:All files|*.*")),
              (QStringList{QStringLiteral("Video (*.avi *.mpg)"), QStringLiteral("All files (*.*)")}));
    // A colon splits even where it looks like part of a description.
    EXPECT_EQ(saveFilterToNameFilters(QStringLiteral("Clips: AVI|*.avi")),
              (QStringList{QStringLiteral("Clips (AVI)"), QStringLiteral("*.avi")}));
}

TEST(SaveFilter, pieces) {
    const QString text = QStringLiteral("C:/clips/a.avi") + QChar(0) + QStringLiteral("a.avi") + QChar(0);
    EXPECT_EQ(piece(text, 1), u"C:/clips/a.avi");
    EXPECT_EQ(piece(text, 2), u"a.avi");
    EXPECT_EQ(piece(text, 3), u"");
    EXPECT_EQ(piece(text, 4), u"");
    EXPECT_EQ(piece(text, 0), u"");
}

TEST(CameraCapture, aReadOnlyDeskTakesNoPhoto) {
    CameraDesk d;
    d.state.settings.ckMakeSysRdO = QStringLiteral("1");
    StillFrameSource frame(wideFrame());
    EXPECT_FALSE(d.camera.snapshot(frame));
    EXPECT_FALSE(d.state.JustCapturedMark);
    EXPECT_TRUE(filesUnder(d.folder.dataPath()).isEmpty());
}
