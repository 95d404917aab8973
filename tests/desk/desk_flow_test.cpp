#include "csv_read_back.h"
#include "desk_window.h"
#include "documents_folder.h"
#include "pdf_text.h"

#include <QCheckBox>
#include <QDir>
#include <QHeaderView>
#include <QPrinterInfo>
#include <QScrollBar>

using namespace porvane;
using porvane::test::DeskWindow;
using porvane::test::handBooking;
using porvane::test::handColumns;
using porvane::test::slot;
using namespace Qt::Literals::StringLiterals;

namespace {

// Ann Lee, due today (23 November) at 09:30; Bob Ray due on the 22nd; Cy Day due today at 14:15.
const QByteArray kAnn =
    handBooking("261101080000", "Ann", "Lee",
                {{504, "VISITOR"}, {525, "ENGINEERING"}, {550, "Lee & Co"}, {slot(23), "0930"}});
const QByteArray kCy =
    handBooking("261103080000", "Cy", "Day", {{525, "SALES"}, {550, "Day plc"}, {slot(23), "1415"}});

class DeskFlow : public DeskWindow {
protected:
    void writeNovember(std::initializer_list<QByteArray> lines) {
        QByteArray file;
        for (const QByteArray& l : lines)
            file += l + "\r\n";
        folder.write(QStringLiteral("Record/2611.vrf"), file);
    }
    // Today's day list, then the row of a booking opened.
    void openFromTodaysList(int row) {
        click("cmdGetToday");
        clickRow(row);
    }
};

} // namespace

// New, names, category, department, a time today, Save; the on-site list; IN; the pass window; OUT.
TEST_F(DeskFlow, aTypicalVisitFromBookingToDeparture) {
    typeNewBooking(QStringLiteral("John S"), QStringLiteral("mith7"), QStringLiteral("Acme Widgets"));
    EXPECT_EQ(text("FirstNameTB"), u"John");
    EXPECT_EQ(text("LastNameTB"), u"Smith") << "a blank moves on to the last name; digits are refused";
    find<QComboBox>("CataCB")->setCurrentText(QStringLiteral("CONTRACTOR"));
    addTime(23, QStringLiteral("10:00"));
    click("cmdSAVE");
    EXPECT_EQ(prompter.texts(), QStringList{u"New Booking made for JOHN SMITH in NOVEMBER 2026 Ok"_s});

    const QList<QByteArray> lines = monthLines("2611");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0].size(), 1186);
    EXPECT_EQ(lines[0].left(12), "261123093015");
    EXPECT_EQ(handColumns(lines[0], 14, 16) + '|' + handColumns(lines[0], 31, 18), "John|Smith");
    EXPECT_EQ(handColumns(lines[0], 504, 20), "CONTRACTOR");
    EXPECT_EQ(handColumns(lines[0], 550, 50), "Acme Widgets");
    EXPECT_EQ(bookedTime(lines[0], 23), "1000");
    EXPECT_EQ(text("RegNoTB"), u"261123093015");
    EXPECT_EQ(window().windowTitle(), u"Tarnwell Solutions Porvane 90  [ Record 261123093015 SAVED ]");

    click("cmdDayList");
    ASSERT_EQ(cell(0, 0).trimmed(), u"261123093015");
    EXPECT_EQ(highlightedRow(), 0) << "the booking in the editor is the highlighted row";
    click("cmdIN");
    const QString status = QStringLiteral("Status/261123.vdf");
    EXPECT_EQ(folder.read(status).mid(990, 10), "09:30  -  ");
    EXPECT_EQ(label("LaON_Site"), u"09:30");

    bool passShown = false;
    test::whenModal([&](QWidget* pass) {
        passShown = pass->objectName() == u"frmPass";
        static_cast<QDialog*>(pass)->reject();
    });
    click("cmdPass");
    EXPECT_TRUE(passShown);

    clock.advanceSeconds(2 * 3600);
    click("cmdOUT");
    EXPECT_EQ(folder.read(status).mid(990, 10), "09:3011:30");
    EXPECT_EQ(label("LaOFFSite"), u"11:30");
    EXPECT_EQ(cell(0, 7), u"11:30") << "the on-site list shows the departure";
    EXPECT_EQ(monthLines("2611"), lines) << "arrival and departure never touch the month file";
}

// Fields typed in the two detail dialogs are part of the booking: SAVE writes them, and a dialog closed with
// Cancel takes away neither its own edits' absence nor the editor's unsaved edits and times.
TEST_F(DeskFlow, detailDialogsEditTheBookingAndNothingIsMarkedSavedBehindTheOperatorsBack) {
    writeNovember({kAnn, kCy});
    openFromTodaysList(0);
    test::whenModal([](QWidget* dialog) {
        test::keys(test::find<QLineEdit>(dialog, "PersDOBTB"), QStringLiteral("12-05-1980"));
        test::keys(test::find<QLineEdit>(dialog, "PersTownTB"), QStringLiteral("Leeds"));
        test::find<QCheckBox>(dialog, "PersIOPMck")->click();
        test::click(dialog, "cmdPersOK");
    });
    click("cmdPersDetail");
    click("cmdSAVE");
    QByteArray ann = monthLines("2611")[0];
    EXPECT_EQ(handColumns(ann, 246, 10) + '|' + handColumns(ann, 180, 18) + '|' + handColumns(ann, 257, 2),
              "12-05-1980|Leeds|1");

    // Unsaved edits in the editor and the times grid outlive a dialog closed with Cancel (after Clear).
    type("PersCarRegTB", QStringLiteral("AB12 CDE"));
    addTime(24, QStringLiteral("08:15"));
    test::whenModal([](QWidget* dialog) {
        test::click(dialog, "cmdPersClear");
        test::click(dialog, "cmdPersCancel");
    });
    click("cmdPersDetail");
    EXPECT_EQ(text("PersCarRegTB"), u"AB12 CDE");
    EXPECT_EQ(timeCell(24), u"08:15");
    click("cmdSAVE");
    ann = monthLines("2611")[0];
    EXPECT_EQ(handColumns(ann, 69, 10), "AB12 CDE");
    EXPECT_EQ(bookedTime(ann, 24), "0815");
    EXPECT_EQ(handColumns(ann, 180, 18), "Leeds") << "Cancel after Clear put every field back";

    // The person visited, typed in the location dialog, makes another row's click ask first.
    test::whenModal([](QWidget* dialog) {
        test::keys(test::find<QLineEdit>(dialog, "LocVisitingTB"), QStringLiteral("Dr Ray"));
        static_cast<QDialog*>(dialog)->accept();
    });
    click("cmdLocDetail");
    prompter.queue(Answer::Yes);
    clickRow(1);
    EXPECT_EQ(prompter.texts().value(0),
              u"The current booking for ANN LEE has changed.\r\nDo you wish to save it? ");
    EXPECT_EQ(handColumns(monthLines("2611")[0], 758, 36), "Dr Ray");
    EXPECT_EQ(text("RegNoTB"), u"261103080000");
}

// With its month file unreadable, or the data folder gone, SAVE says what failed and why; the booking stays
// in the editor and is saved once the folder is back.
TEST_F(DeskFlow, dataFolderRemovedOrUnreadable_saveSaysWhyAndTheBookingStaysInTheEditor) {
    writeNovember({kAnn});
    openFromTodaysList(0);
    retype("CatOrganTB", QStringLiteral("Lee & Sons"));
    const QString month = folder.path(QStringLiteral("Record/2611.vrf"));
    ASSERT_TRUE(QFile::remove(month) && QDir().mkdir(month)); // a folder where the month file belongs
    prompter.clear();
    click("cmdSAVE");
    EXPECT_EQ(prompter.texts(),
              QStringList{u"The booking could not be saved: Not a data file (a link, folder, "
                          u"pipe or device): %1 (error 75).\r\nThe booking is still in the "
                          u"editor."_s.arg(month)});
    EXPECT_EQ(text("CatOrganTB"), u"Lee & Sons");

    ASSERT_TRUE(QDir(folder.dataPath()).removeRecursively());
    prompter.clear();
    prompter.queue(Answer::No); // NEW: the changed booking is not saved
    typeNewBooking(QStringLiteral("Dee"), QStringLiteral("Fox"), QStringLiteral("Fox Ltd"));
    click("cmdSAVE");
    EXPECT_EQ(prompter.texts().value(1),
              u"The booking could not be saved: Path not found: %1 (error 76).\r\nThe "
              u"booking is still in the editor."_s.arg(folder.dataPath()));
    EXPECT_EQ(text("FirstNameTB") + u' ' + text("LastNameTB"), u"Dee Fox");
    QDir().mkpath(folder.path(QStringLiteral("Record")));
    click("cmdSAVE");
    EXPECT_EQ(handColumns(monthLines("2611").value(0), 14, 16), "Dee");
}

// A renamed booking goes through the save decision before its pass: the old booking stays, a second is made,
// and the pass print stores only pass fields.
TEST_F(DeskFlow, passAfterARenameAsksAndKeepsTheOldPersonsBooking) {
    writeNovember({kAnn});
    openFromTodaysList(0);
    retype("FirstNameTB", QStringLiteral("Anna"));
    retype("CatOrganTB", QStringLiteral("Other Firm"));
    prompter.queue({Answer::Yes, Answer::Ok});
    test::whenModal([](QWidget* pass) { static_cast<QDialog*>(pass)->reject(); });
    click("cmdPass");
    EXPECT_EQ(prompter.texts(),
              (QStringList{u"The current booking for ANNA LEE has changed.\r\nDo you wish to save it? "_s,
                           u"Porvane has created a New Record for Anna Lee"_s}));
    const QList<QByteArray> lines = monthLines("2611");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], kAnn) << "the old person's booking is untouched";
    EXPECT_EQ(handColumns(lines[1], 14, 16) + '|' + handColumns(lines[1], 550, 50), "Anna|Other Firm");

    // Cancel keeps the pass window shut and the edit on screen.
    retype("CatOrganTB", QStringLiteral("Third Firm"));
    prompter.clear();
    prompter.queue(Answer::Cancel);
    click("cmdPass");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(text("CatOrganTB"), u"Third Firm");
    EXPECT_EQ(monthLines("2611").size(), 2);
}

// The month boxes always show the month a booking is written to.
TEST_F(DeskFlow, aBookingLandsOnlyInTheMonthTheBoxesShow) {
    writeNovember({kAnn});
    openFromTodaysList(0);
    pick("CBGetMonth", QStringLiteral("DECEMBER"));
    EXPECT_EQ(label("laBookMonth"), u"NOVEMBER 2026");
    EXPECT_TRUE(find<QLabel>("laBookMonth")->styleSheet().contains(u"#c00000"))
        << "the booking's month stands out while the boxes show another";
    retype("CatOrganTB", QStringLiteral("Lee & Sons"));
    click("cmdSAVE");
    EXPECT_EQ(handColumns(monthLines("2611")[0], 550, 50), "Lee & Sons")
        << "the update goes to the booking's month";
    EXPECT_EQ(combo("CBGetMonth"), u"NOVEMBER") << "the boxes follow the booking saved";

    typeNewBooking(QStringLiteral("Dee"), QStringLiteral("Fox"), QStringLiteral("Fox Ltd"));
    EXPECT_EQ(label("laBookMonth"), u"NOVEMBER 2026");
    click("cmdSAVE");
    EXPECT_EQ(prompter.texts().last(), u"New Booking made for DEE FOX in NOVEMBER 2026 Ok");
    EXPECT_EQ(monthLines("2611").size(), 2);
    EXPECT_FALSE(folder.exists(QStringLiteral("Record/2612.vrf")));

    // An October pass holder opened from the on-site list moves the boxes to October, in sight.
    folder.write(QStringLiteral("Record/2610.vrf"), handBooking("261030080000", "Oz", "Holt",
                                                                {{525, "SALES"},
                                                                 {550, "Holt plc"},
                                                                 {936, "30-10-2026"},
                                                                 {947, "30-11-2026"},
                                                                 {958, "1M"},
                                                                 {969, "30-10-2026 at 08:00"}}) +
                                                        "\r\n");
    click("cmdDayList");
    for (int row = 0; row < grid()->model()->rowCount(); ++row)
        if (cell(row, 0).trimmed() == u"261030080000")
            clickRow(row);
    ASSERT_EQ(text("RegNoTB"), u"261030080000");
    EXPECT_EQ(combo("CBGetMonth"), u"OCTOBER");
    EXPECT_EQ(label("laBookMonth"), u"OCTOBER 2026");
    typeNewBooking(QStringLiteral("Walk"), QStringLiteral("Inn"), QStringLiteral("Inn Ltd"));
    click("cmdSAVE");
    EXPECT_EQ(monthLines("2610").size(), 2) << "NEW booked into the month the boxes show";
    EXPECT_EQ(combo("CBGetMonth"), u"OCTOBER");
}

TEST_F(DeskFlow, aDeletedBookingLeavesTheEditorAndCannotBeSavedAgain) {
    writeNovember({kAnn, kCy});
    openFromTodaysList(1);
    prompter.queue(Answer::Yes);
    click("cmdDelete");
    EXPECT_EQ(prompter.texts(),
              QStringList{u"This will DELETE this Booking for CY DAY \r\nDo you wish to Proceed? "_s});
    EXPECT_EQ(monthLines("2611"), QList<QByteArray>{kAnn});
    EXPECT_EQ(text("RegNoTB"), u"");
    EXPECT_EQ(text("FirstNameTB"), u"");
    EXPECT_EQ(window().windowTitle(), u"Tarnwell Solutions Porvane 90  [ One Booking DELETED ]");
    prompter.clear();
    click("cmdSAVE");
    click("cmdNEW");
    EXPECT_EQ(monthLines("2611"), QList<QByteArray>{kAnn}) << "nothing of the deleted booking is written";
    EXPECT_EQ(window().windowTitle(), u"Tarnwell Solutions Porvane 90  [ One Booking DELETED ]");
}

// The highlighted row is the booking in the editor: after SAVE, after keys move the highlight, after a
// cancelled question, and after IN and OUT, which keep the list's place.
TEST_F(DeskFlow, theHighlightedRowIsAlwaysTheBookingInTheEditor) {
    QList<QByteArray> many;
    for (int i = 0; i < 40; ++i)
        many << handBooking(QByteArray("2611010800").append(QByteArray::number(10 + i)).constData(), "Vi",
                            QByteArray("Sitor").append(QByteArray::number(10 + i)).constData(),
                            {{525, "SALES"}, {550, "Firm Ltd"}, {slot(23), "0900"}});
    QByteArray file;
    for (const QByteArray& l : many)
        file += l + "\r\n";
    folder.write(QStringLiteral("Record/2611.vrf"), file);
    openFromTodaysList(1);
    retype("CatOrganTB", QStringLiteral("Firm plc"));
    click("cmdSAVE");
    EXPECT_EQ(highlightedRow(), 1);

    grid()->setFocus();
    QTest::keyClick(grid(), Qt::Key_Down);
    EXPECT_EQ(text("RegNoTB"), cell(2, 0).trimmed()) << "the arrow key opened the row it moved to";
    retype("PersMobTB", QStringLiteral("0777"));
    prompter.queue(Answer::Cancel);
    QTest::keyClick(grid(), Qt::Key_Down);
    EXPECT_EQ(highlightedRow(), 2) << "a cancelled question puts the highlight back";
    EXPECT_EQ(text("PersMobTB"), u"0777");
    prompter.queue(Answer::No);
    QTest::keyClick(grid(), Qt::Key_Down);
    EXPECT_EQ(highlightedRow(), 3);

    click("cmdDayList");
    clickRow(30);
    const int scrolled = grid()->verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    const QString regNo = text("RegNoTB");
    click("cmdIN");
    EXPECT_EQ(highlightedRow(), 30);
    EXPECT_EQ(cell(30, 0).trimmed(), regNo);
    EXPECT_EQ(grid()->verticalScrollBar()->value(), scrolled);
    click("cmdOUT");
    EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), regNo);
    const QByteArray status = folder.read(QStringLiteral("Status/261123.vdf"));
    EXPECT_EQ(status.mid(status.indexOf(regNo.toLatin1()) + 990, 10), "09:3009:30");
}

// IN on a walk-in who is not on today's list books them for today first, so the roll call has them.
TEST_F(DeskFlow, inOnAWalkInBooksThemForTodayAndWritesTheArrival) {
    writeNovember({kAnn});
    typeNewBooking(QStringLiteral("Wes"), QStringLiteral("Kay"), QStringLiteral("Kay Ltd"));
    click("cmdSAVE");
    click("cmdDayList");
    const QString status = QStringLiteral("Status/261123.vdf");
    ASSERT_EQ(folder.read(status).size(), 1188) << "only Ann is due today";

    prompter.clear();
    prompter.queue(Answer::No);
    click("cmdIN");
    EXPECT_EQ(
        prompter.texts(),
        QStringList{
            u"WES KAY is not on today's list.\r\nBook this visitor for today at 09:30 and mark the arrival?"_s});
    EXPECT_EQ(label("LaON_Site"), u"  -  ") << "no arrival shown that was not written";
    EXPECT_EQ(folder.read(status).size(), 1188);

    prompter.queue(Answer::Yes);
    click("cmdIN");
    EXPECT_EQ(bookedTime(monthLines("2611")[1], 23), "0930");
    const QByteArray lines = folder.read(status);
    const qsizetype at = lines.indexOf("261123093015");
    ASSERT_GE(at, 0) << "the walk-in is on today's status file";
    EXPECT_EQ(lines.mid(at + 990, 10), "09:30  -  ");
    EXPECT_EQ(label("LaON_Site"), u"09:30");
}

// ADD and SUB act on the chosen cell and keep it; Delete empties it; a booking opens on its last booked day.
TEST_F(DeskFlow, timesGridKeepsItsCellAndShowsTheBookedDays) {
    writeNovember({handBooking("261101080000", "Ann", "Lee",
                               {{525, "SALES"}, {550, "Lee & Co"}, {slot(23), "0930"}, {slot(30), "1100"}})});
    openFromTodaysList(0);
    auto* times = find<QTableView>("TimeGrid");
    EXPECT_TRUE(times->viewport()->rect().intersects(times->visualRect(times->model()->index(29, 1))))
        << "the 30th, the last booked day, is in sight";

    addTime(5, QStringLiteral("09:00"));
    QTest::keyClick(times, Qt::Key_Down);
    click("cmdADD");
    EXPECT_EQ(timeCell(5) + u'|' + timeCell(6), u"09:00|09:00");
    EXPECT_EQ(times->currentIndex().row(), 5) << "ADD keeps the chosen day";
    click("cmdSUB");
    EXPECT_EQ(timeCell(6), u"");
    chooseTimeCell(23);
    QTest::keyClick(times, Qt::Key_Delete);
    EXPECT_EQ(timeCell(23), u"");

    prompter.queue(Answer::Yes);
    click("cmdSAVE");
    const QByteArray ann = monthLines("2611")[0];
    EXPECT_EQ(bookedTime(ann, 5) + bookedTime(ann, 6) + bookedTime(ann, 23) + bookedTime(ann, 30),
              "0900        1100");
}

// Letters of the desk's code page, accented ones included, and apostrophes are names; editing keys work.
TEST_F(DeskFlow, realNamesAreTypedAsTheyAre) {
    click("cmdNEW");
    type("FirstNameTB", QStringLiteral("José"));
    type("LastNameTB", QStringLiteral("O'Neill"));
    EXPECT_EQ(text("FirstNameTB") + u'|' + text("LastNameTB"), u"José|O'Neill");
    retype("LastNameTB", QStringLiteral("Müller-Łukasz"));
    EXPECT_EQ(text("LastNameTB"), u"Müller-ukasz") << "only Ł, which the files cannot hold, is refused";
    auto* last = find<QLineEdit>("LastNameTB");
    QTest::keyClick(last, Qt::Key_Home);
    QTest::keyClick(last, Qt::Key_Delete);
    EXPECT_EQ(last->text(), u"üller-ukasz");
    retype("LastNameTB", QStringLiteral("Doe"));
    EXPECT_EQ(text("LastNameTB"), u"Doe");
}

// A pass revoked in the pass window is stored when the window closes, with "Pass Revoked" in sight meanwhile.
TEST_F(DeskFlow, revokingAPassShowsItAndBlanksThePassColumns) {
    writeNovember({handBooking("261101080000", "Ann", "Lee",
                               {{525, "SALES"},
                                {550, "Lee & Co"},
                                {936, "20-11-2026"},
                                {947, "27-11-2026"},
                                {958, "1W"},
                                {969, "20-11-2026 at 08:00"},
                                {slot(23), "0930"}})});
    openFromTodaysList(0);
    EXPECT_EQ(label("PassPrntdLa"), u"27-11-2026  1 Week");
    QStringList shownDuringPause;
    pause.onWait = [&] {
        shownDuringPause << label("PassPrntdLa");
    };
    test::whenModal([&](QWidget* pass) {
        prompter.queue(Answer::Yes);
        test::click(pass, "cmdRemovePass");
    });
    click("cmdPass");
    EXPECT_TRUE(shownDuringPause.contains(u"Pass Revoked"_s)) << shownDuringPause.join(u'|').toStdString();
    EXPECT_EQ(monthLines("2611")[0].mid(935, 52), QByteArray(52, ' '));
    EXPECT_EQ(label("PassPrntdLa"), u"No Pass on-File");
}

TEST_F(DeskFlow, fitsA1024By768Screen) {
    EXPECT_LE(window().frameGeometry().width(), 1024);
    EXPECT_LE(window().frameGeometry().height(), 768);
    EXPECT_LE(window().minimumSizeHint().width(), 1024);
    EXPECT_LE(window().minimumSizeHint().height(), 740);
}

// "Open on today's list" lists today at start; "calendar back to today" returns an idle desk to today.
TEST_F(DeskFlow, todaySettingsListTodayAtStartAndBringTheIdleCalendarBack) {
    writeNovember({kAnn});
    state.settings.ckShowToday = QStringLiteral("1");
    state.settings.ckCalAOatT = QStringLiteral("1");
    EXPECT_EQ(cell(0, 1), u"Ann");
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    pick("CBGetMonth", QStringLiteral("DECEMBER"));
    QEvent activated(QEvent::ActivationChange);
    QApplication::sendEvent(&window(), &activated);
    EXPECT_EQ(combo("CBGetMonth") + u' ' + combo("CBGetDay"), u"NOVEMBER 23");

    clickRow(0);
    ASSERT_EQ(text("RegNoTB"), u"261101080000") << prompter.texts().join(u'|').toStdString();
    pick("CBGetMonth", QStringLiteral("DECEMBER"));
    QApplication::sendEvent(&window(), &activated);
    EXPECT_EQ(combo("CBGetMonth"), u"DECEMBER") << "a desk with a booking open keeps its month";
}

namespace {

// The gate's visitors besides Ann: Ed is due today on a pass that ended on the 20th; Fay's pass starts on the
// 25th; Hal has neither a time today nor a pass.
const QByteArray kEd = handBooking(
    "261102080000", "Ed", "Old",
    {{525, "SALES"}, {550, "Old Ltd"}, {936, "01-11-2026"}, {947, "20-11-2026"}, {slot(23), "0800"}});
const QByteArray kFay =
    handBooking("261104080000", "Fay", "Soon",
                {{525, "SALES"}, {550, "Soon Ltd"}, {936, "25-11-2026"}, {947, "30-11-2026"}});
const QByteArray kHal = handBooking("261105080000", "Hal", "Lone", {{525, "SALES"}, {550, "Lone Ltd"}});

class GateFlow : public DeskFlow {
protected:
    void SetUp() override {
        writeNovember({kAnn, kCy, kEd, kFay, kHal});
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    // A keyboard-wedge scanner: the digits as keys, then Enter, wherever the focus is after F2.
    void scan(const QString& typed) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
        ASSERT_EQ(QApplication::focusWidget(), find<QWidget>("ScanTB"));
        test::keys(QApplication::focusWidget(), typed);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    QByteArray marks(const QByteArray& regNo) {
        const QByteArray status = folder.read(QStringLiteral("Status/261123.vdf"));
        const qsizetype at = status.indexOf(regNo);
        return at < 0 ? QByteArray() : status.mid(at + 990, 10);
    }
    void key(Qt::Key k) { QTest::keyClick(QApplication::focusWidget(), k); }
    // A button's shortcut presses it visibly and clicks a moment later.
    void shortcut(Qt::Key k) {
        key(k);
        QTest::qWait(150);
    }
};

} // namespace

// Scanning a pass marks IN, the next scan OUT; a gone visitor, an unknown number, passes out of date and a
// visitor not due today are refused with a message; a scan goes through the save decision like a row click.
TEST_F(GateFlow, scanningAPassMarksInThenOutAndRefusesWhatIsNotOnTodaysList) {
    find<QWidget>("StatGrid")->setFocus();
    scan(u"261101080000"_s);
    EXPECT_EQ(prompter.texts(), QStringList());
    EXPECT_EQ(marks("261101080000"), "09:30  -  ");
    EXPECT_EQ(text("RegNoTB"), u"261101080000");
    EXPECT_EQ(label("LaON_Site"), u"09:30");
    EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), u"261101080000") << "the on-site list shows the visitor";
    EXPECT_EQ(label("laOnSiteCounts"), u"Expected 3   On site 1   Left 0");

    clock.advanceSeconds(3600);
    scan(u"*261101080000*"_s); // a reader that sends the start and stop characters
    EXPECT_EQ(marks("261101080000"), "09:3010:30");
    EXPECT_EQ(label("LaOFFSite"), u"10:30");

    const QByteArray before = folder.read(QStringLiteral("Status/261123.vdf"));
    for (const QString& typed : {u"261101080000"_s, u"261120000000"_s, u"261102080000x"_s, u"261104080000"_s,
                                 u"261105080000"_s, u"261002080000"_s})
        scan(typed);
    EXPECT_EQ(prompter.texts(),
              (QStringList{u"Ann Lee (261101080000) has already left today at 10:30."_s,
                           u"No booking has the number 261120000000."_s,
                           u"\"261102080000x\" is not a pass number."_s,
                           u"The pass of Fay Soon (261104080000) is not valid before 25-11-2026."_s,
                           u"Hal Lone (261105080000) is not on today's list."_s,
                           u"No booking has the number 261002080000."_s}));
    EXPECT_EQ(folder.read(QStringLiteral("Status/261123.vdf")), before) << "a refused scan writes nothing";
    EXPECT_EQ(text("RegNoTB"), u"261101080000") << "a refused scan opens nothing";

    // An edit in the editor is asked about first; Cancel keeps it and marks nobody.
    retype("PersMobTB", QStringLiteral("0777"));
    prompter.clear();
    prompter.queue(Answer::Cancel);
    scan(u"261103080000"_s);
    EXPECT_EQ(prompter.texts(),
              QStringList{u"The current booking for ANN LEE has changed.\r\nDo you wish to save it? "_s});
    EXPECT_EQ(marks("261103080000"), "  -    -  ");
    EXPECT_EQ(text("PersMobTB"), u"0777");
    prompter.queue(Answer::Yes);
    scan(u"261103080000"_s);
    EXPECT_EQ(handColumns(monthLines("2611")[0], 52, 16), "0777") << "the edit was saved on the way";
    EXPECT_EQ(marks("261103080000"), "10:30  -  ");
    EXPECT_EQ(text("RegNoTB"), u"261103080000");
}

// The on-site list counts and filters who is on site; F5 and F6 mark IN and OUT; Enter on a row goes to the
// booking; Tab leaves the grids; the end of day signs out everyone still on site in one write.
TEST_F(GateFlow, onSiteCountsFiltersKeysAndTheEndOfDaySignOut) {
    click("cmdDayList");
    EXPECT_EQ(label("laOnSiteCounts"), u"Expected 3   On site 0   Left 0");
    clickRow(0);
    shortcut(Qt::Key_F5);
    EXPECT_EQ(marks("261101080000"), "09:30  -  ");
    grid()->setFocus();
    QTest::keyClick(grid(), Qt::Key_Down);
    QTest::keyClick(grid(), Qt::Key_Down);
    QTest::keyClick(grid(), Qt::Key_Return);
    EXPECT_EQ(text("RegNoTB"), u"261102080000");
    EXPECT_EQ(QApplication::focusWidget(), find<QWidget>("FirstNameTB")) << "Enter goes on to the booking";
    shortcut(Qt::Key_F5);
    clickRow(1);
    shortcut(Qt::Key_F5);
    clock.advanceSeconds(3600);
    clickRow(0);
    shortcut(Qt::Key_F6);
    EXPECT_EQ(marks("261101080000"), "09:3010:30");
    EXPECT_EQ(label("laOnSiteCounts"), u"Expected 3   On site 2   Left 1");

    auto* onSiteNow = find<QCheckBox>("ckOnSiteNow");
    auto* overstayed = find<QCheckBox>("ckOverstayed");
    onSiteNow->click();
    EXPECT_EQ(grid()->model()->rowCount(), 2);
    EXPECT_EQ(cell(0, 0).trimmed() + u' ' + cell(1, 0).trimmed(), u"261103080000 261102080000");
    EXPECT_EQ(highlightedRow(), -1) << "Ann, in the editor, has left and is not shown";
    clickRow(1);
    EXPECT_EQ(text("RegNoTB"), u"261102080000") << "a filtered row opens its own booking";
    overstayed->click();
    EXPECT_FALSE(onSiteNow->isChecked());
    ASSERT_EQ(grid()->model()->rowCount(), 1);
    EXPECT_EQ(cell(0, 0).trimmed(), u"261102080000") << "on site on a pass that ended on the 20th";
    EXPECT_EQ(highlightedRow(), 0);
    // The export holds what the grid shows: the one row the filter leaves.
    const QString exported = folder.appPath() + u"overstayed.csv"_s;
    prompter.queueFileName(exported);
    click("cmdExport");
    const test::CsvReadBack back = test::readCsvWithPython(exported);
    ASSERT_EQ(back.rows.size(), 2) << back.error.toStdString();
    EXPECT_EQ(back.rows[1].mid(0, 3), (QStringList{u"261102080000"_s, u"Ed"_s, u"Old"_s}));
    overstayed->click();
    EXPECT_EQ(grid()->model()->rowCount(), 3 + 50);

    // A heading click rebuilds the list from the file, then sorts by that column; a second click reverses.
    writeNovember({kAnn, kCy, kEd, kFay, kHal,
                   handBooking("261106080000", "Bo", "Abe", {{550, "Abe Ltd"}, {slot(23), "1200"}})});
    QHeaderView* heading = grid()->horizontalHeader();
    const auto clickHeading = [&](int column) {
        QTest::mouseClick(heading->viewport(), Qt::LeftButton, {},
                          QPoint(heading->sectionViewportPosition(column) + 10, heading->height() / 2));
    };
    const auto lastNames = [&] {
        QStringList names;
        for (int row = 0; row < grid()->model()->rowCount(); ++row)
            names << cell(row, 2);
        return names.join(u' ');
    };
    clickHeading(2);
    EXPECT_EQ(lastNames(), u"Abe Day Lee Old");
    EXPECT_EQ(cell(highlightedRow(), 0).trimmed(), u"261102080000") << "the highlight follows the booking";
    clickHeading(2);
    EXPECT_EQ(lastNames(), u"Old Lee Day Abe");
    clickHeading(5); // Expected: 08:00 09:30 12:00 14:15
    EXPECT_EQ(lastNames(), u"Old Lee Abe Day");

    for (const char* name : {"StatGrid", "TimeGrid"}) {
        find<QWidget>(name)->setFocus();
        key(Qt::Key_Tab);
        EXPECT_NE(QApplication::focusWidget(), find<QWidget>(name)) << name << ": Tab leaves the grid";
    }

    clock.set(QDateTime(QDate(2026, 11, 23), QTime(17, 45)));
    prompter.clear();
    prompter.queue(Answer::No);
    click("cmdSignOutAll");
    EXPECT_EQ(prompter.texts(),
              QStringList{u"2 visitors are still on site.\r\nSign them all out at 17:45?"_s});
    EXPECT_EQ(marks("261102080000"), "09:30  -  ");
    // While the question is up, another desk signs Cy out at 17:40: that departure stays.
    prompter.whileAsking = [&](const Prompter::Message&) {
        QByteArray status = folder.read(QStringLiteral("Status/261123.vdf"));
        status.replace(status.indexOf("261103080000") + 995, 5, "17:40");
        folder.write(QStringLiteral("Status/261123.vdf"), status);
    };
    prompter.queue(Answer::Yes);
    click("cmdSignOutAll");
    prompter.whileAsking = nullptr;
    EXPECT_EQ(marks("261101080000"), "09:3010:30") << "who had left keeps the time they left";
    EXPECT_EQ(marks("261102080000"), "09:3017:45");
    EXPECT_EQ(marks("261103080000"), "09:3017:40");
    EXPECT_EQ(label("LaOFFSite"), u"17:45") << "the booking in the editor shows its departure";
    EXPECT_EQ(label("laOnSiteCounts"), u"Expected 4   On site 0   Left 3");
    EXPECT_EQ(lastNames(), u"Old Lee Abe Day") << "the order holds through every rebuild";
    prompter.clear();
    click("cmdSignOutAll");
    EXPECT_EQ(prompter.texts(), QStringList{u"Nobody is on site now."_s});
}

// F9 prints the roll call of everyone on site now, from the on-site list rebuilt and shown: here with no
// printer installed, saved as a PDF file in the documents folder once the operator agrees.
TEST_F(GateFlow, rollCallPrintsEveryoneOnSiteNow) {
    if (!QPrinterInfo::defaultPrinter().isNull())
        GTEST_SKIP() << "a printer is installed here";
    const test::DocumentsFolder documents(folder.appPath());
    click("cmdDayList");
    for (int row : {0, 1, 2}) { // Ann, Cy and Ed arrive at 09:30
        clickRow(row);
        shortcut(Qt::Key_F5);
    }
    clock.advanceSeconds(3600);
    clickRow(0);
    shortcut(Qt::Key_F6); // Ann leaves at 10:30
    click("cmdGetToday");

    const QString file = folder.appPath() + u"Documents/Roll call 2026-11-23 1030.pdf"_s;
    prompter.clear();
    prompter.queue(Answer::No);
    shortcut(Qt::Key_F9);
    EXPECT_EQ(prompter.texts(),
              (QStringList{
                  u"No printer is installed.\r\nSave the roll call as a PDF file instead, as %1?"_s.arg(file),
                  u"No printer is installed"_s}));
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(label("laOnSiteCounts"), u"Expected 3   On site 2   Left 1") << "the on-site list is shown";

    prompter.clear();
    prompter.queue(Answer::Yes);
    click("cmdRollCall");
    EXPECT_EQ(prompter.texts().value(1), u"The roll call was saved as %1"_s.arg(file));
    const QList<test::PdfPage> pages = test::readPdf(file);
    ASSERT_EQ(pages.size(), 1);
    const QString text = pages[0].text.simplified();
    EXPECT_TRUE(text.contains(u"Roll call: 2 on site at 10:30 on Monday 23 November 2026"_s))
        << text.toStdString();
    EXPECT_TRUE(text.contains(u"1 Day, Cy Day plc 09:30 2 Old, Ed Old Ltd 09:30 Not on this list"_s))
        << text.toStdString();
    EXPECT_FALSE(text.contains(u"Lee"_s)) << "Ann has left";
}
