#include "admin_run.h"
#include "temp_data_folder.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <gtest/gtest.h>

using porvane::test::AdminRun;
using porvane::test::handLine;
using porvane::test::TempDataFolder;

namespace {

AdminRun admin(const TempDataFolder& folder, const QStringList& args) {
    return porvane::test::runAdmin(folder, QStringLiteral("2026-11-14"),
                                   QStringList{QStringLiteral("--now"), QStringLiteral("09:05")} + args);
}

// Two bookings of November; the second one has a photo.
void twoBookings(const TempDataFolder& folder) {
    folder.write(QStringLiteral("Record/2611.vrf"),
                 handLine({{1, "261103090000"}, {14, "Ada"}, {31, "Quist"}, {550, "Quist Surveys"}}) +
                     "\r\n" +
                     handLine({{1, "261114093012"},
                               {14, "Bert"},
                               {31, "Rowe"},
                               {525, "ENGINEERING"},
                               {550, "Rowe & Sons"},
                               {989, "1"}}) +
                     "\r\n");
    QImage photo(150, 200, QImage::Format_RGB888);
    photo.fill(Qt::darkGray);
    QByteArray bytes;
    QBuffer b(&bytes);
    b.open(QIODevice::WriteOnly);
    photo.save(&b, "BMP");
    folder.write(QStringLiteral("photo/2611/261114093012_Bert_Rowe.bmp"), bytes);
}

} // namespace

TEST(PassCommand, issuesThePassIntoTheMonthFileAndPrintsAScannablePdf) {
    TempDataFolder folder;
    twoBookings(folder);
    const QString pdf = folder.appPath() + QStringLiteral("pass.pdf");
    const AdminRun r = admin(
        folder, {QStringLiteral("pass"), QStringLiteral("261114093012"), QStringLiteral("--count"),
                 QStringLiteral("2"), QStringLiteral("--period"), QStringLiteral("Week"),
                 QStringLiteral("--start"), QStringLiteral("2026-11-20"), QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    const QList<QByteArray> lines = folder.read(QStringLiteral("Record/2611.vrf")).split('\n');
    ASSERT_GE(lines.size(), 2);
    EXPECT_EQ(lines[0].mid(935, 52).trimmed(), QByteArray()); // the other booking is untouched
    const QByteArray line = lines[1];
    EXPECT_EQ(line.mid(935, 10), "20-11-2026");
    EXPECT_EQ(line.mid(946, 10), "04-12-2026");
    EXPECT_EQ(line.mid(957, 10), "2W        ");
    EXPECT_EQ(line.mid(968, 19), "14-11-2026 at 09:05");
    EXPECT_EQ(line.mid(13, 4), "Bert");

    const QString png = folder.appPath() + QStringLiteral("pass");
    QProcess::execute(QStringLiteral("pdftoppm"),
                      {QStringLiteral("-r"), QStringLiteral("300"), QStringLiteral("-png"),
                       QStringLiteral("-singlefile"), pdf, png});
    QProcess zbar;
    zbar.start(QStringLiteral("zbarimg"), {QStringLiteral("-q"), png + QStringLiteral(".png")});
    ASSERT_TRUE(zbar.waitForFinished(60000));
    EXPECT_EQ(QString::fromUtf8(zbar.readAllStandardOutput()).trimmed(), u"CODE-39:261114093012");
}

TEST(PassCommand, refusalsAreThePassWindowsMessagesAndLeaveTheFile) {
    TempDataFolder folder;
    twoBookings(folder);
    const QByteArray before = folder.read(QStringLiteral("Record/2611.vrf"));
    const QString pdf = folder.appPath() + QStringLiteral("pass.pdf");

    AdminRun r = admin(folder, {QStringLiteral("pass"), QStringLiteral("261114093012"),
                                QStringLiteral("--period"), QStringLiteral("Week"), QStringLiteral("--start"),
                                QStringLiteral("2026-11-13"), QStringLiteral("--pdf"), pdf});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.contains(u"You Cannot Issue a Pass DATED BEFORE Today")) << r.err.toStdString();

    r = admin(folder, {QStringLiteral("pass"), QStringLiteral("261114093012"), QStringLiteral("--start"),
                       QStringLiteral("2026-11-16"), QStringLiteral("--pdf"), pdf});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.contains(u"You can only Issue/Print a Day Pass for TODAY")) << r.err.toStdString();

    // No photo: the question has nobody to answer it, so nothing is printed.
    r = admin(folder, {QStringLiteral("pass"), QStringLiteral("261103090000"), QStringLiteral("--pdf"), pdf});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.contains(u"No Photo Found:  Do you wish to Print Without Photo ?"))
        << r.err.toStdString();

    r = admin(folder, {QStringLiteral("pass"), QStringLiteral("261199999999"), QStringLiteral("--pdf"), pdf});
    EXPECT_EQ(r.status, 1);
    r = admin(folder, {QStringLiteral("pass"), QStringLiteral("261114093012"), QStringLiteral("--count"),
                       QStringLiteral("7")});
    EXPECT_EQ(r.status, 2);

    EXPECT_EQ(folder.read(QStringLiteral("Record/2611.vrf")), before);
    EXPECT_FALSE(QFileInfo::exists(pdf));
}
