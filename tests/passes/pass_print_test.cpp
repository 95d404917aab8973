#include "passes/pass_issue.h"
#include "passes/pass_layout.h"
#include "photos/photo_files.h"
#include "store/photo_paths.h"
#include "test_desk.h"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

namespace {

struct PrintDesk : test::TestDesk {
    PassIssue pass{state};
    int stored = 0;

    PrintDesk()
        : TestDesk(QDateTime(QDate(2026, 11, 14), QTime(9, 5))) {
        // The staged resources: the placeholder and the logo the desk ships.
        state.AppPath = QStringLiteral(PORVANE_STAGE_DIR) + u'/';
        state.settings.SiteName = u"Harbour Works"_s;
        state.settings.ckEnbl_BarOP = u"1"_s;
        state.settings.ckEnbl_PrnLogo = u"1"_s;
        state.record[Field::RegNo] = u"261114093012"_s;
        state.record[Field::FirstName] = u"Ada"_s;
        state.record[Field::LastName] = u"Quist"_s;
        state.record[Field::Organisation] = u"Quist Surveys"_s;
        state.record[Field::Department] = u"ENGINEERING"_s;
        state.record[Field::PassStart] = u"01-10-2026"_s;
        state.record[Field::PassEnd] = u"02-10-2026"_s;
        state.record[Field::PassPeriod] = u"1D"_s;
        state.record[Field::PassIssued] = u"01-10-2026 at 08:00"_s;
    }
    PassIssue::StoreRecord store() {
        return [this] {
            ++stored;
            return FileError();
        };
    }
    QString pdf() const { return folder.appPath() + u"pass.pdf"_s; }
    void givePhoto() {
        QImage img(150, 200, QImage::Format_RGB888);
        img.fill(QColor(0x3a, 0x6e, 0xa5));
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

} // namespace

// Switched off, or on a read-only desk, a pass is neither drawn nor stored: the booking keeps its old pass.
// (A print refused or failed later is the pass window's and porvane-admin pass's to show.)
TEST(PassPrint, switchedOffOrReadOnly_drawsAndStoresNothing) {
    for (QString Settings::*setting : {&Settings::ckDisPassPrn, &Settings::ckMakeSysRdO}) {
        PrintDesk d;
        d.state.settings.*setting = u"1"_s;
        d.pass.open();
        EXPECT_FALSE(d.pass.view().printEnabled);
        int renders = 0;
        const auto render = [&renders](const PassContent&) {
            ++renders;
            return QString();
        };
        EXPECT_EQ(d.pass.print(render, d.store()), PassIssue::PrintResult::Disabled);
        EXPECT_EQ(renders + d.stored, 0);
        EXPECT_EQ(d.state.record[Field::PassIssued], u"01-10-2026 at 08:00");
    }
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
    broken.photoFile = d.folder.appPath() + u"nope.bmp"_s;
    broken.logoFile = d.folder.appPath() + u"nologo.bmp"_s;
    QPdfWriter writer(d.pdf());
    EXPECT_TRUE(PassLayout::print(writer, broken).isEmpty());
}

TEST(PassPrint, aStoreFailureIsReportedButThePrintedPassStaysInTheRecord) {
    PrintDesk d;
    d.givePhoto();
    d.pass.open();
    QString error;
    const auto result = d.pass.print([](const PassContent&) { return QString(); },
                                     [] {
                                         return FileError{FileError::DiskFull, u"Disk full: x"_s};
                                     },
                                     &error);
    EXPECT_EQ(result, PassIssue::PrintResult::NotStored);
    EXPECT_EQ(error, u"Disk full: x");
    EXPECT_EQ(d.state.record[Field::PassIssued], u"14-11-2026 at 09:05"); // kept for the next save
}
