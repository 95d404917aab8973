#include "admin_run.h"
#include "scanned_bar_code.h"
#include "temp_data_folder.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <gtest/gtest.h>

using porvane::test::AdminRun;
using porvane::test::handBooking;
using porvane::test::TempDataFolder;
using namespace Qt::Literals::StringLiterals;

namespace {

// porvane-admin pass at 09:05 on 14 November 2026, over two bookings of November; the second has a photo.
struct PassCommand : ::testing::Test {
    PassCommand() {
        folder.write(u"Record/2611.vrf"_s,
                     handBooking("261103090000", "Ada", "Quist", {{550, "Quist Surveys"}}) + "\r\n" +
                         handBooking("261114093012", "Bert", "Rowe",
                                     {{525, "ENGINEERING"}, {550, "Rowe & Sons"}, {989, "1"}}) +
                         "\r\n");
        QImage photo(150, 200, QImage::Format_RGB888);
        photo.fill(Qt::darkGray);
        QByteArray bytes;
        QBuffer b(&bytes);
        b.open(QIODevice::WriteOnly);
        photo.save(&b, "BMP");
        folder.write(u"photo/2611/261114093012_Bert_Rowe.bmp"_s, bytes);
    }
    AdminRun pass(const QStringList& args, const QByteArray& input = {}) const {
        return porvane::test::runAdmin(folder, u"2026-11-14"_s,
                                       QStringList{u"--now"_s, u"09:05"_s, u"pass"_s} + args, input);
    }

    TempDataFolder folder;
    const QString pdf = folder.appPath() + u"pass.pdf"_s;
};

} // namespace

TEST_F(PassCommand, issuesThePassIntoTheMonthFileAndPrintsAScannablePdf) {
    const AdminRun r = pass({u"261114093012"_s, u"--count"_s, u"2"_s, u"--period"_s, u"Week"_s, u"--start"_s,
                             u"2026-11-20"_s, u"--pdf"_s, pdf});
    ASSERT_EQ(r.status, 0) << r.err.toStdString();
    const QList<QByteArray> lines = folder.read(u"Record/2611.vrf"_s).split('\n');
    ASSERT_GE(lines.size(), 2);
    EXPECT_EQ(lines[0].mid(935, 52).trimmed(), QByteArray()); // the other booking is untouched
    EXPECT_EQ(lines[1].mid(935, 52), "20-11-2026 04-12-2026 2W         14-11-2026 at 09:05");
    EXPECT_EQ(lines[1].mid(13, 4), "Bert");
    EXPECT_EQ(porvane::test::scannedBarCode(pdf), u"CODE-39:261114093012");
}

TEST_F(PassCommand, refusalsAreThePassWindowsMessagesAndLeaveTheFile) {
    const QByteArray before = folder.read(u"Record/2611.vrf"_s);
    struct Case {
        QStringList args;
        int status;
        QString message;
    };
    const Case cases[] = {
        {{u"261114093012"_s, u"--period"_s, u"Week"_s, u"--start"_s, u"2026-11-13"_s, u"--pdf"_s, pdf},
         1,
         u"You Cannot Issue a Pass DATED BEFORE Today"_s},
        {{u"261114093012"_s, u"--start"_s, u"2026-11-16"_s, u"--pdf"_s, pdf},
         1,
         u"You can only Issue/Print a Day Pass for TODAY"_s},
        // No photo: an empty answer is No, so nothing is printed.
        {{u"261103090000"_s, u"--pdf"_s, pdf}, 1, u"No Photo Found:  Do you wish to Print Without Photo ?"_s},
        {{u"261199999999"_s, u"--pdf"_s, pdf}, 1, QString()},
        {{u"261114093012"_s, u"--count"_s, u"7"_s}, 2, QString()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(u' ').toStdString());
        const AdminRun r = pass(c.args);
        EXPECT_EQ(r.status, c.status);
        EXPECT_TRUE(r.err.contains(c.message)) << r.err.toStdString();
    }
    EXPECT_EQ(folder.read(u"Record/2611.vrf"_s), before);
    EXPECT_FALSE(QFileInfo::exists(pdf));
}

TEST_F(PassCommand, aPassWithoutAPhotoPrintsWhenTheQuestionIsAnsweredYes) {
    for (const auto& [flag, answer] :
         {std::pair{u"--yes"_s, QByteArray()}, std::pair{QString(), QByteArray("y\n")}}) {
        SCOPED_TRACE(answer.isEmpty() ? "--yes" : "y on the terminal");
        QFile::remove(pdf);
        QStringList args{u"261103090000"_s, u"--pdf"_s, pdf};
        if (!flag.isEmpty())
            args << flag;
        const AdminRun r = pass(args, answer);
        ASSERT_EQ(r.status, 0) << r.err.toStdString();
        EXPECT_EQ(folder.read(u"Record/2611.vrf"_s).left(1186).mid(935, 21), "14-11-2026 15-11-2026");
        EXPECT_TRUE(QFileInfo::exists(pdf));
    }
}
