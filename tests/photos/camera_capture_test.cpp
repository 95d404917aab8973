#include "photos/camera_capture.h"
#include "photos/photo_files.h"
#include "test_desk.h"

#include <QDir>
#include <QDirIterator>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

namespace {

struct CameraDesk : test::TestDesk {
    CameraCapture camera{state};

    CameraDesk()
        : TestDesk(QDateTime(QDate(2026, 11, 14), QTime(10, 0))) {
        state.record[Field::RegNo] = u"270102080000"_s;
        state.record[Field::FirstName] = u"Ada"_s;
        state.record[Field::LastName] = u"Quist"_s;
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
    ASSERT_TRUE(d.camera.snapshot(source));
    const QString relative = u"photo/2701/270102080000_Ada_Quist.bmp"_s;
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
    EXPECT_EQ(d.state.record[Field::PhotoOnFile], u"1");

    // A second snapshot replaces the first under the same name.
    QImage grey(640, 480, QImage::Format_RGB32);
    grey.fill(Qt::gray);
    StillFrameSource second(grey);
    ASSERT_TRUE(d.camera.snapshot(second));
    EXPECT_EQ(filesUnder(d.folder.path(u"photo"_s)), QStringList{u"2701/270102080000_Ada_Quist.bmp"_s});
    EXPECT_EQ(QColor(QImage::fromData(d.folder.read(relative), "BMP").pixel(75, 100)), QColor(Qt::gray));
}

TEST(CameraCapture, unfittedSnapshotsWarnOnlyAboveTheLimit) {
    for (const auto& [size, warns] : {std::pair{QSize(200, 166), false}, std::pair{QSize(640, 480), true}}) {
        CameraDesk d;
        d.state.settings.ckRawCamPhoto = u"1"_s;
        QImage frame(size, QImage::Format_RGB32);
        frame.fill(Qt::darkCyan);
        StillFrameSource source(frame);
        ASSERT_TRUE(d.camera.snapshot(source));
        const QByteArray bytes = d.folder.read(u"photo/2701/270102080000_Ada_Quist.bmp"_s);
        EXPECT_EQ(bytes.size() > kPhotoSizeLimit, warns) << bytes.size();
        EXPECT_EQ(d.prompter.messages().size(), warns ? 1 : 0);
        if (warns) {
            EXPECT_EQ(d.prompter.last().text,
                      u"Video Setup Warning: Resolution settings are too high for Porvane");
        }
        EXPECT_EQ(d.state.record[Field::PhotoOnFile], u"1"); // the photo is kept all the same
    }
}

// No frame from the camera, or a read-only desk: no photo and no mark; only the missing frame says why.
TEST(CameraCapture, noFrameOrAReadOnlyDesk_writesNothing) {
    for (const bool readOnly : {false, true}) {
        SCOPED_TRACE(readOnly ? "read-only" : "no frame");
        CameraDesk d;
        d.state.settings.ckMakeSysRdO = readOnly ? u"1"_s : u"0"_s;
        StillFrameSource source(readOnly ? wideFrame() : QImage(), u"No camera is connected"_s);
        EXPECT_FALSE(d.camera.snapshot(source));
        EXPECT_EQ(d.prompter.texts(), readOnly ? QStringList() : QStringList{u"No camera is connected"_s});
        if (!readOnly) {
            EXPECT_EQ(d.prompter.last().icon, Icon::Information);
        }
        EXPECT_TRUE(filesUnder(d.folder.dataPath()).isEmpty());
    }
}
