#include "passes/pass_issue.h"
#include "passes/pass_layout.h"
#include "photos/photo_files.h"
#include "photos/photo_paths.h"
#include "test_desk.h"

#include <QBuffer>
#include <QDir>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <gtest/gtest.h>

using namespace porvane;

namespace {

struct PrintDesk : test::TestDesk {
    PassIssue pass{state};
    int stored = 0;

    PrintDesk()
        : TestDesk(QDateTime(QDate(2026, 11, 14), QTime(9, 5))) {
        // The staged resources: the placeholder and the logo the desk ships.
        state.AppPath = QStringLiteral(PORVANE_STAGE_DIR) + u'/';
        state.settings.SiteName = QStringLiteral("Harbour Works");
        state.settings.ckEnbl_BarOP = QStringLiteral("1");
        state.settings.ckEnbl_PrnLogo = QStringLiteral("1");
        state.record[Field::RegNo] = QStringLiteral("261114093012");
        state.record[Field::FirstName] = QStringLiteral("Ada");
        state.record[Field::LastName] = QStringLiteral("Quist");
        state.record[Field::Organisation] = QStringLiteral("Quist Surveys");
        state.record[Field::Department] = QStringLiteral("ENGINEERING");
        state.record[Field::PassStart] = QStringLiteral("01-10-2026");
        state.record[Field::PassEnd] = QStringLiteral("02-10-2026");
        state.record[Field::PassPeriod] = QStringLiteral("1D");
        state.record[Field::PassIssued] = QStringLiteral("01-10-2026 at 08:00");
    }
    PassIssue::StoreRecord store() {
        return [this] {
            ++stored;
            return FileError();
        };
    }
    QString pdf() const { return folder.appPath() + QStringLiteral("pass.pdf"); }
    PassIssue::Render toPdf() const {
        return [file = pdf()](const PassContent& c) {
            QPdfWriter writer(file);
            writer.setResolution(600);
            return PassLayout::print(writer, c);
        };
    }
    void givePhoto() {
        // A head-and-shoulders stand-in: a face on a blue ground, 150 x 200.
        QImage img(150, 200, QImage::Format_RGB888);
        img.fill(QColor(0x3a, 0x6e, 0xa5));
        QPainter p(&img);
        p.setBrush(QColor(0xe0, 0xb0, 0x90));
        p.setPen(Qt::NoPen);
        p.drawEllipse(QPointF(75, 80), 38, 48);
        p.setBrush(QColor(0x30, 0x30, 0x30));
        p.drawEllipse(QPointF(75, 215), 70, 70);
        p.end();
        QByteArray bytes;
        QBuffer b(&bytes);
        b.open(QIODevice::WriteOnly);
        img.save(&b, "BMP");
        const CurrentRecord& r = state.record;
        const QString path =
            photoPath(state.dataPath(), r[Field::RegNo], r[Field::FirstName], r[Field::LastName]);
        ASSERT_TRUE(replacePhotoFile(state.dataPath(), prompter, path, bytes).ok());
    }
};

QString run(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000))
        return QStringLiteral("<timeout>");
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace

TEST(PassPrint, printedPassCarriesAScannableBarCodeAndIssuesThePass) {
    PrintDesk d;
    d.givePhoto();
    d.pass.open();
    d.pass.choose(QStringLiteral("TWO"), QStringLiteral("Week"));
    d.clock.advanceSeconds(7 * 60); // printed a few minutes after the window opened

    ASSERT_EQ(d.pass.print(d.toPdf(), d.store()), PassIssue::PrintResult::Printed);
    EXPECT_TRUE(d.prompter.messages().isEmpty()); // a photo exists: no question
    EXPECT_EQ(d.stored, 1);
    EXPECT_EQ(d.state.record[Field::PassStart], u"14-11-2026");
    EXPECT_EQ(d.state.record[Field::PassEnd], u"28-11-2026");
    EXPECT_EQ(d.state.record[Field::PassPeriod], u"2W");
    EXPECT_EQ(d.state.record[Field::PassIssued], u"14-11-2026 at 09:05");
    EXPECT_EQ(d.state.record.passPrintedNote, u"14-11-2026  2 Week");
    EXPECT_TRUE(d.state.PassWindowChanged);
    EXPECT_EQ(d.pass.content().time, u"14-11-2026 at 09:12");

    const QString png = d.folder.appPath() + QStringLiteral("pass");
    run(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("300"), QStringLiteral("-png"),
                                     QStringLiteral("-singlefile"), d.pdf(), png});
    ASSERT_TRUE(QFileInfo::exists(png + QStringLiteral(".png")));
    const QString decoded =
        run(QStringLiteral("zbarimg"), {QStringLiteral("-q"), png + QStringLiteral(".png")});
    EXPECT_EQ(decoded.trimmed(), u"CODE-39:261114093012");
    // Kept for a look by eye when PORVANE_KEEP_PASS names a file.
    if (const QString keep = qEnvironmentVariable("PORVANE_KEEP_PASS"); !keep.isEmpty()) {
        QFile::remove(keep);
        QFile::copy(png + QStringLiteral(".png"), keep);
    }
}

TEST(PassPrint, noPhotoAnsweredNoPrintsNothingAndKeepsTheOldPass) {
    PrintDesk d;
    d.pass.open();
    d.pass.choose(QStringLiteral("ONE"), QStringLiteral("Month"));
    int renders = 0;
    d.prompter.queue(Answer::No);
    const auto result = d.pass.print(
        [&](const PassContent&) {
            ++renders;
            return QString();
        },
        d.store());
    EXPECT_EQ(result, PassIssue::PrintResult::Declined);
    EXPECT_EQ(d.prompter.last().text, u"No Photo Found:  Do you wish to Print Without Photo ? ");
    EXPECT_EQ(d.prompter.last().buttons, Buttons::YesNo);
    EXPECT_EQ(renders, 0);
    EXPECT_EQ(d.stored, 0);
    EXPECT_EQ(d.state.record[Field::PassStart], u"01-10-2026");
    EXPECT_EQ(d.state.record[Field::PassIssued], u"01-10-2026 at 08:00");
}

TEST(PassPrint, aFailedPrintLeavesThePassUnissued) {
    PrintDesk d;
    d.pass.open();
    d.prompter.queue(Answer::Yes); // print without a photo
    QString error;
    PassContent printed;
    const auto result = d.pass.print(
        [&](const PassContent& c) {
            printed = c;
            return QStringLiteral("printer offline");
        },
        d.store(), &error);
    EXPECT_EQ(result, PassIssue::PrintResult::NotPrinted);
    EXPECT_EQ(error, u"printer offline");
    EXPECT_TRUE(printed.photoFile.endsWith(u"_PSF/IRender/currentfile.bmp"));
    EXPECT_EQ(printed.validText, u"DAY PASS  14 NOV 2026");
    EXPECT_EQ(d.stored, 0);
    EXPECT_EQ(d.state.record[Field::PassStart], u"01-10-2026");
    EXPECT_EQ(d.state.record[Field::PassPeriod], u"1D");
}

TEST(PassPrint, switchedOffPrintingNeverStarts) {
    PrintDesk d;
    d.state.settings.ckDisPassPrn = QStringLiteral("1");
    d.pass.open();
    EXPECT_EQ(d.pass.print([](const PassContent&) { return QString(); }, d.store()),
              PassIssue::PrintResult::Disabled);
    EXPECT_TRUE(d.prompter.messages().isEmpty());
    EXPECT_EQ(d.state.record[Field::PassIssued], u"01-10-2026 at 08:00");
}

TEST(PassPrint, blankNamesStillCarryValidityAndMissingImagesDoNotFail) {
    PrintDesk d;
    d.state.record[Field::FirstName].clear();
    d.state.record[Field::LastName].clear();
    d.pass.open();
    const PassContent c = d.pass.content();
    EXPECT_EQ(c.name, u" ");
    EXPECT_EQ(c.validText, u"DAY PASS  14 NOV 2026");
    EXPECT_EQ(c.date, u"14-11-2026");
    EXPECT_EQ(c.time, u"14-11-2026 at 09:05");

    // Missing image files draw neutral boxes instead of failing.
    PassContent broken = c;
    broken.photoFile = d.folder.appPath() + QStringLiteral("nope.bmp");
    broken.logoFile = d.folder.appPath() + QStringLiteral("nologo.bmp");
    QPdfWriter writer(d.pdf());
    EXPECT_TRUE(PassLayout::print(writer, broken).isEmpty());
}

TEST(PassPrint, aStoreFailureIsReportedButThePrintedPassStaysInTheRecord) {
    PrintDesk d;
    d.givePhoto();
    d.pass.open();
    QString error;
    const auto result =
        d.pass.print([](const PassContent&) { return QString(); },
                     [] {
                         return FileError{FileError::DiskFull, QStringLiteral("Disk full: x")};
                     },
                     &error);
    EXPECT_EQ(result, PassIssue::PrintResult::NotStored);
    EXPECT_EQ(error, u"Disk full: x");
    EXPECT_EQ(d.state.record[Field::PassIssued], u"14-11-2026 at 09:05"); // kept for the next save
}

TEST(PassPrint, aReadOnlyDeskNeitherIssuesNorRemovesAPass) {
    PrintDesk d;
    d.state.settings.ckMakeSysRdO = QStringLiteral("1");
    d.pass.open();
    EXPECT_FALSE(d.pass.view().printEnabled);
    EXPECT_FALSE(d.pass.view().removeEnabled);
    int renders = 0;
    const auto result = d.pass.print(
        [&](const PassContent&) {
            ++renders;
            return QString();
        },
        d.store());
    EXPECT_EQ(result, PassIssue::PrintResult::Disabled);
    EXPECT_EQ(renders, 0);
    EXPECT_EQ(d.stored, 0);
    EXPECT_EQ(d.state.record[Field::PassIssued], u"01-10-2026 at 08:00");
    d.pass.requestRemoval();
    EXPECT_FALSE(d.state.RemovePassRequested);
    EXPECT_TRUE(d.pass.confirmClose());
    EXPECT_TRUE(d.prompter.messages().isEmpty());
}
