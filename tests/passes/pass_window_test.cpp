#include "documents_folder.h"
#include "passes/pass_window.h"
#include "photos/photo_manager_window.h"
#include "scanned_bar_code.h"
#include "store/record_store.h"
#include "test_desk.h"
#include "widgets.h"

#include <QBuffer>
#include <QCalendarWidget>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPdfWriter>
#include <QPrinterInfo>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray bitmap(const QColor& colour) {
    QImage image(150, 200, QImage::Format_RGB888);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "BMP");
    return bytes;
}

QString run(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    p.waitForFinished(60000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// 09:05 on 14 November 2026. Ada (open in the desk) and Bert are booked today, each with a photo on file:
// Ada's blue, Bert's red.
struct PassWindowDesk : test::TestDesk {
    const QByteArray ada = test::handBooking(
        "261114090000", "Ada", "Quist",
        {{525, "ENGINEERING"}, {550, "Quist Surveys"}, {989, "1"}, {test::slot(14), "0900"}});
    const QByteArray bert = test::handBooking("261114091500", "Bert", "Rowe",
                                              {{550, "Rowe & Sons"}, {989, "1"}, {test::slot(14), "0915"}});
    int renders = 0;

    PassWindowDesk()
        : TestDesk(QDateTime(QDate(2026, 11, 14), QTime(9, 5))) {
        state.AppPath = QStringLiteral(PORVANE_STAGE_DIR) + u'/'; // the shipped placeholder picture
        state.settings.SiteName = u"Harbour Works"_s;
        folder.write(u"Record/2611.vrf"_s, ada + "\r\n" + bert + "\r\n");
        folder.write(u"photo/2611/261114090000_Ada_Quist.bmp"_s, bitmap(Qt::blue));
        folder.write(u"photo/2611/261114091500_Bert_Rowe.bmp"_s, bitmap(Qt::red));
        FileError error;
        EXPECT_TRUE(readBookingLine(state.files(), u"261114090000"_s, state.record, error));
    }
    QString pdf() const { return folder.appPath() + u"pass.pdf"_s; }
    PassWindow::Hooks hooks() {
        PassWindow::Hooks h;
        h.render = [this](const PassContent& c) {
            ++renders;
            QPdfWriter writer(pdf());
            writer.setResolution(300);
            return PassLayout::print(writer, c);
        };
        return h;
    }
    QByteArray adaLine() const { return folder.read(u"Record/2611.vrf"_s).split('\n').at(0).chopped(1); }
    QString pdfText() const { return run(u"pdftotext"_s, {pdf(), u"-"_s}).simplified(); }
    // The colour in the middle of the printed photo (4 to 31 mm across, 18 to 54 mm down).
    QColor printedPhotoColour() const {
        run(u"pdftoppm"_s, {u"-r"_s, u"100"_s, u"-png"_s, u"-singlefile"_s, pdf(), pdf()});
        const QImage page(pdf() + u".png"_s);
        return page.isNull() ? QColor() : page.pixelColor(int(17.5 / 25.4 * 100), int(36 / 25.4 * 100));
    }
};

void choose(QComboBox* box, const QString& text) {
    box->setFocus();
    while (box->currentText() != text && box->currentIndex() + 1 < box->count())
        QTest::keyClick(box, Qt::Key_Down);
}

} // namespace

TEST(PassWindow, deletingAnotherVisitorsPhoto_keepsThisVisitorsPhotoOnHerPass) {
    PassWindowDesk d;
    PassWindow::Hooks hooks = d.hooks();
    hooks.openPhotos = [&d](QWidget* parent) {
        PhotoManagerWindow photos(d.state, parent);
        photos.show();
        EXPECT_EQ(photos.windowTitle(), u"Manage Photo  [ 261114090000 ]");
        EXPECT_EQ(test::find<QComboBox>(&photos, "CBHPMonth")->currentText(), u"Nov 2026");
        test::click(&photos, "cmdHPList");
        auto* grid = test::find<QTableView>(&photos, "PhotoGrid");
        ASSERT_EQ(grid->model()->rowCount(), 2);
        EXPECT_EQ(test::find<QLabel>(&photos, "laHPStatus")->text(), u"2 Photos Found");
        grid->setCurrentIndex(grid->model()->index(1, 0));
        ASSERT_EQ(test::find<QLabel>(&photos, "LAHPName")->text(), u"Bert Rowe");
        EXPECT_EQ(test::find<QLabel>(&photos, "LaHPPassI")->text(), u"No Pass");
        d.prompter.queue(Answer::Ok);
        test::click(&photos, "cmdHPDelete");
        EXPECT_EQ(grid->model()->rowCount(), 1);
        EXPECT_EQ(test::find<QLabel>(&photos, "laHPStatus")->text(), u"Photo Deleted");
        photos.accept();
    };
    PassWindow window(d.state, hooks);
    window.show();
    test::click(&window, "cmdGetPhoto");
    ASSERT_FALSE(d.folder.exists(u"photo/2611/261114091500_Bert_Rowe.bmp"_s));
    ASSERT_TRUE(d.folder.exists(u"photo/2611/261114090000_Ada_Quist.bmp"_s));

    test::click(&window, "cmdPrintPass");
    EXPECT_EQ(d.renders, 1);
    for (const QString& text : d.prompter.texts())
        EXPECT_FALSE(text.startsWith(u"No Photo Found")) << "her photo is on file";
    EXPECT_EQ(d.adaLine().at(988), '1') << "PhotoOnFile";
    EXPECT_EQ(d.adaLine().mid(935, 10), "14-11-2026");
    const QColor printed = d.printedPhotoColour();
    EXPECT_GT(printed.blue(), 200) << printed.name().toStdString();
    EXPECT_LT(printed.red(), 60) << printed.name().toStdString();
}

// A start before today reads "I N V A L I D" and cannot be printed until a valid start is picked.
TEST(PassWindow, aBackDatedStart_cannotBePrintedUntilAValidStartIsPicked) {
    PassWindowDesk d;
    PassWindow window(d.state, d.hooks());
    window.show();
    auto* print = test::find<QPushButton>(&window, "cmdPrintPass");
    auto* valid = test::find<QLabel>(&window, "PASSValidTB");
    auto* calendar = test::find<QCalendarWidget>(&window, "Calendar2");
    const QByteArray before = d.folder.read(u"Record/2611.vrf"_s);

    choose(test::find<QComboBox>(&window, "PassNumberCB"), u"TWO"_s);
    choose(test::find<QComboBox>(&window, "PassPeriodCB"), u"Week"_s);
    EXPECT_EQ(valid->text(), u"Valid Until:  28 NOV 2026");
    test::click(&window, "cmdCal");
    ASSERT_TRUE(calendar->isVisible());
    emit calendar->clicked(QDate(2026, 11, 10));
    EXPECT_EQ(d.prompter.last().text, u"You Cannot Issue a Pass DATED BEFORE Today");
    EXPECT_EQ(valid->text(), u"I N V A L I D");
    EXPECT_FALSE(print->isEnabled());

    // Another length is not computed on from the back-dated start either.
    choose(test::find<QComboBox>(&window, "PassPeriodCB"), u"Month"_s);
    EXPECT_EQ(valid->text(), u"I N V A L I D");
    EXPECT_FALSE(print->isEnabled());
    QTest::mouseClick(print, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(d.renders, 0);
    EXPECT_EQ(d.folder.read(u"Record/2611.vrf"_s), before);

    test::click(&window, "cmdCal");
    emit calendar->clicked(QDate(2026, 11, 20));
    EXPECT_EQ(valid->text(), u"Valid Until:  20 JAN 2027");
    ASSERT_TRUE(print->isEnabled());
    d.clock.advanceSeconds(7 * 60); // printed a few minutes after the window opened
    QTest::mouseClick(print, Qt::LeftButton);
    ASSERT_EQ(d.renders, 1);
    // Issued when the window opened; printed now.
    EXPECT_EQ(d.adaLine().mid(935, 52), "20-11-2026 20-01-2027 2M         14-11-2026 at 09:05");
    EXPECT_EQ(d.state.record.passPrintedNote, u"20-11-2026  2 Month");
    const QString printed = d.pdfText();
    for (const QString& line :
         {u"Valid Until: 20 JAN 2027"_s, u"Start: 20-11-2026"_s, u"Printed: 14-11-2026 at 09:12"_s})
        EXPECT_TRUE(printed.contains(line)) << printed.toStdString();
}

// ckEnbl_BarOP "1" prints the bar code with its text under it; "0" leaves the whole bar code off.
TEST(PassWindow, theBarCodeSettingPutsTheWholeBarCodeOnOrOff) {
    for (const QString& setting : {u"1"_s, u"0"_s}) {
        SCOPED_TRACE(setting.toStdString());
        PassWindowDesk d;
        d.state.settings.ckEnbl_BarOP = setting;
        PassWindow window(d.state, d.hooks());
        window.show();
        EXPECT_EQ(test::find<QLabel>(&window, "laBC")->isVisible(), setting == u"1");
        test::click(&window, "cmdPrintPass");
        ASSERT_EQ(d.renders, 1);
        const bool on = setting == u"1";
        EXPECT_EQ(d.pdfText().contains(u"*261114090000*"), on);
        EXPECT_EQ(test::scannedBarCode(d.pdf()), on ? u"CODE-39:261114090000"_s : QString());
    }
}

// Removing a pass asks first; No (or Cancel) keeps the window and the pass.
TEST(PassWindow, asksBeforeRemovingAPass) {
    PassWindowDesk d;
    d.state.record[Field::PassStart] = u"14-11-2026"_s;
    d.state.record[Field::PassEnd] = u"28-11-2026"_s;
    d.state.record[Field::PassPeriod] = u"2W"_s;
    d.state.record[Field::PassIssued] = u"14-11-2026 at 08:55"_s;
    PassWindow window(d.state, d.hooks());
    window.show();
    test::click(&window, "cmdClosePass");
    EXPECT_TRUE(d.prompter.messages().isEmpty()) << "a plain close asks nothing";
    window.show();
    d.prompter.queue(Answer::No);
    test::click(&window, "cmdRemovePass");
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.passRemoved());
    EXPECT_EQ(d.prompter.last().text, u"This will REMOVE the pass record for Ada Quist\r\n\r\n"
                                      u"Start Date: 14-11-2026   Pass Ends: 28-11-2026\r\n"
                                      u"Pass Issued: 14-11-2026 at 08:55 for 2 Weeks\r\n"
                                      u"Quist Surveys  [ 261114090000 ]\r\n\r\n"
                                      u"Do you wish to proceed ?");
    EXPECT_EQ(d.prompter.last().buttons, Buttons::YesNoCancel);
    // Yes, and the pass columns going blank, is the desk flow's (revokingAPass...).
}

// With no printer installed the pass can be saved as a PDF file in the documents folder instead; No stores
// nothing.
TEST(PassWindow, withoutAPrinter_thePassIsSavedAsPdfInTheDocumentsFolder) {
    if (!QPrinterInfo::defaultPrinter().isNull())
        GTEST_SKIP() << "a printer is installed here";
    PassWindowDesk d;
    const test::DocumentsFolder documents(d.folder.appPath());
    const QString file = d.folder.appPath() + u"Documents/Pass 261114090000.pdf"_s;
    PassWindow::Hooks hooks; // the real printing path
    PassWindow window(d.state, hooks);
    window.show();
    const QByteArray before = d.folder.read(u"Record/2611.vrf"_s);

    d.prompter.queue(Answer::No);
    test::click(&window, "cmdPrintPass");
    EXPECT_EQ(
        d.prompter.texts(),
        (QStringList{u"No printer is installed.\r\nSave the pass as a PDF file instead, as %1?"_s.arg(file),
                     u"The pass was not printed: No printer is installed"_s}));
    EXPECT_EQ(d.folder.read(u"Record/2611.vrf"_s), before);

    d.prompter.clear();
    d.prompter.queue(Answer::Yes);
    test::click(&window, "cmdPrintPass");
    EXPECT_EQ(d.prompter.texts().value(1), u"The pass was saved as %1"_s.arg(file));
    const QString printed = run(u"pdftotext"_s, {file, u"-"_s}).simplified();
    for (const QString& text :
         {u"Ada Quist"_s, u"No. 261114090000"_s, u"Quist Surveys"_s, u"HARBOUR WORKS"_s})
        EXPECT_TRUE(printed.contains(text)) << printed.toStdString();
    EXPECT_EQ(d.adaLine().mid(935, 11), "14-11-2026 ") << "the saved pass is issued like a printed one";
}
