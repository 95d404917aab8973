#include "desk/personal_details.h"
#include "desk_fixture.h"

using namespace porvane;
using porvane::test::handLine;

namespace {
const QString kJoLi = QStringLiteral("240310090000");
const QString kAlBo = QStringLiteral("240311120000");
const QString kMarch = QStringLiteral("Record/2403.vrf");
} // namespace

// The editor's questions and what each answer writes. March holds Jo Li (09:30 on the 14th) and Al Bo.
class BookingEditorTest : public porvane::test::DeskFlow {
protected:
    BookingEditorTest() {
        folder.write(kMarch, handLine({{1, "240310090000"},
                                       {14, "Jo"},
                                       {31, "Li"},
                                       {50, "F"},
                                       {293, "uses a stick<$c>needs lift"},
                                       {525, "ENGINEERING"},
                                       {550, "Acme Widgets Ltd"},
                                       {1060 + 4 * 13, "0930"}}) +
                                 "\r\n" + handLine({{1, "240311120000"}, {14, "Al"}, {31, "Bo"}}) + "\r\n");
        original = folder.read(kMarch);
    }

    void openJoLi() {
        editor.openRow(kJoLi);
        ASSERT_EQ(editor.box(Field::FirstName), u"Jo");
        prompter.clear();
    }
    QList<QByteArray> march() const { return monthLines("2403"); }
    void expectMarchUnwritten() const { EXPECT_EQ(folder.read(kMarch), original); }

    QByteArray original;
};

TEST_F(BookingEditorTest, newBookingFlashesThenSavesIntoTheSelectedMonth) {
    editor.setBoxText(Field::FirstName, QStringLiteral("Jo"));
    EXPECT_EQ(editor.box(Field::FirstName), u"") << "no name before NEW";

    QStringList flashes;
    editor.regNoShown = [&](const QString& text) {
        flashes << text;
    };
    editor.cmdNEW();
    EXPECT_EQ(flashes.size(), 11);
    EXPECT_EQ(flashes[0], u"NEW Booking");
    EXPECT_EQ(flashes[1], u"");
    EXPECT_EQ(flashes.last(), u"NEW Booking");
    EXPECT_DOUBLE_EQ(pause.total(), 0.5);
    EXPECT_EQ(editor.view().focus, BookingEditor::Focus::FirstName);
    EXPECT_EQ(editor.view().regNoBackground, editor_colour::kFilled);
    EXPECT_EQ(state.HelpContext, 25);

    typeBooking();
    times.setCurrentCell(20, 1);
    times.chooseTime(QStringLiteral("09:30"));
    times.cmdADD();
    editor.cmdSAVE();
    EXPECT_EQ(prompter.texts(), QStringList{QStringLiteral("New Booking made for JO LI in MARCH 2024 Ok")});
    EXPECT_EQ(prompter.last().title, u"Porvane 90");
    EXPECT_EQ(prompter.last().icon, Icon::Information);
    EXPECT_FALSE(editor.NewBookingPending);
    EXPECT_EQ(editor.box(Field::RegNo), u"240314100507");
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Record 240314100507 SAVED ]");
    EXPECT_EQ(refreshes, 1);
    const QList<QByteArray> lines = march();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[2].size(), 1186);
    EXPECT_EQ(lines[2].left(13), "240314100507 ");
    EXPECT_EQ(stored(lines[2], Field::FirstName), "Jo");
    EXPECT_EQ(stored(lines[2], Field::Department), " ENGINEERING") << "stored untrimmed";
    EXPECT_EQ(stored(lines[2], Field::Organisation), "Acme Widgets Ltd");
    EXPECT_EQ(bookedTime(lines[2], 20), "0930");
}

TEST_F(BookingEditorTest, validityTestsRunInOrderOnTheBoxes) {
    editor.cmdNEW();
    struct Case {
        const char* first;
        const char* last;
        const char* dept;
        const char* org;
        const char* message;
    } cases[] = {
        {"", "Li", "SALES", "Acme", "Can't SAVE without First Name [ Or Initial ] AND Last Name"},
        {"J", "Li", "SALES", "Acme", "Can't Save: A Valid Name does not appear to be entered"},
        {"Jo", "Li", "-  Select  -", "", "Can't SAVE:  No valid Department name has been entered"},
        {"J", "Lee", "HR", "Acme", "Can't SAVE:  No valid Department name has been entered"},
        {"Jo", "Li", "SALES", " Ac ", "Can't SAVE:  No valid ORGANISATION name has been entered"},
    };
    for (const Case& c : cases) {
        prompter.clear();
        typeBooking(c.first, c.last, c.dept, c.org);
        editor.cmdSAVE();
        EXPECT_EQ(prompter.texts(), QStringList{QString::fromUtf8(c.message)}) << c.first << c.last;
        EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    }
    expectMarchUnwritten();
    prompter.clear();
    typeBooking("Jo", "Li", "SALES", "Acme");
    editor.cmdSAVE();
    EXPECT_EQ(march().size(), 3);
}

TEST_F(BookingEditorTest, openingARowFillsTheEditorFromTheMonthFile) {
    state.TimesChanged = true;
    editor.openRow(kJoLi);
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(editor.box(Field::RegNo), kJoLi);
    EXPECT_EQ(editor.box(Field::LastName), u"Li");
    EXPECT_EQ(editor.box(Field::Department), u"ENGINEERING");
    EXPECT_EQ(state.record[Field::IllnessDetails], u"uses a stick\r\nneeds lift");
    EXPECT_EQ(times.cell(14), u"09:30");
    EXPECT_FALSE(state.TimesChanged);
    EXPECT_FALSE(state.record.TestRecordChanged());
    EXPECT_EQ(editor.view().PhotoOnFLa.text, u"NO PHOTO");
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"No Pass on-File");

    folder.write(QStringLiteral("photo/2403/240311120000_Al_Bo.bmp"), "BM");
    editor.openRow(kAlBo);
    EXPECT_EQ(editor.view().PhotoOnFLa.text, u"Photo on-File");
    EXPECT_EQ(state.record[Field::PhotoOnFile], u"1");
}

// Changes in the personal details window count as much as changes in the boxes.
TEST_F(BookingEditorTest, editsWithoutRenameRewriteTheLineInPlaceWithoutAQuestion) {
    openJoLi();
    PersonalDetails dialog(state);
    dialog.open();
    dialog.setText(Field::DateOfBirth, QStringLiteral("02-05-1980"));
    dialog.ok();
    editor.cmdSAVE();
    editor.setBoxText(Field::Organisation, QStringLiteral("Acme Widgets plc"));
    editor.cmdSAVE();
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Record 240310090000 UPDATED ]");
    EXPECT_EQ(refreshes, 2);
    const QList<QByteArray> lines = march();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(stored(lines[0], Field::RegNo), "240310090000");
    EXPECT_EQ(stored(lines[0], Field::DateOfBirth), "02-05-1980");
    EXPECT_EQ(stored(lines[0], Field::Organisation), "Acme Widgets plc");
    EXPECT_EQ(stored(lines[1], Field::FirstName), "Al");

    // Nothing left to save: a second SAVE does nothing.
    editor.cmdSAVE();
    EXPECT_EQ(refreshes, 2);
}

// A rename keeps the old person's booking: SAVE says so, NEW asks first and says so with an exclamation.
TEST_F(BookingEditorTest, renameKeepsTheOldBookingAndSavesASecond) {
    openJoLi();
    editor.setBoxText(Field::LastName, QStringLiteral("Lee"));
    editor.cmdSAVE();
    EXPECT_EQ(prompter.texts(), QStringList{QStringLiteral("Porvane has created a New Record for Jo Lee")});
    EXPECT_EQ(prompter.last().icon, Icon::Information);
    EXPECT_EQ(prompter.last().title, u"Porvane 90 [ 240314100507 ]");

    prompter.clear();
    clock.advanceSeconds(60);
    editor.setBoxText(Field::FirstName, QStringLiteral("Joan"));
    prompter.queue(Answer::Yes);
    editor.cmdNEW();
    ASSERT_EQ(prompter.messages().size(), 2);
    EXPECT_EQ(prompter.messages()[0].text,
              u"The current booking for JOAN LEE has changed.\r\nDo you wish to save it? ");
    EXPECT_EQ(prompter.messages()[0].title, u"Porvane 90 [ 240314100507 ]");
    EXPECT_EQ(prompter.last().text, u"Porvane has created a New Record for Joan Lee");
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(editor.box(Field::RegNo), u"NEW Booking");
    EXPECT_EQ(editor.box(Field::FirstName), u"");

    const QList<QByteArray> lines = march();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(stored(lines[0], Field::LastName), "Li");
    EXPECT_EQ(stored(lines[2], Field::RegNo), "240314100507");
    EXPECT_EQ(stored(lines[2], Field::FirstName) + ' ' + stored(lines[2], Field::LastName), "Jo Lee");
    EXPECT_EQ(stored(lines[3], Field::FirstName) + ' ' + stored(lines[3], Field::LastName), "Joan Lee");
}

TEST_F(BookingEditorTest, timesChangedWhileAnotherMonthIsShownOfferOnlyANewRecord) {
    openJoLi();
    dates.cmdCalINCR(); // APRIL
    times.setMonth(2024, 4);
    times.setCurrentCell(2, 1);
    times.chooseTime(QStringLiteral("08:00"));
    times.cmdADD();
    prompter.queue(Answer::Yes);
    editor.cmdSAVE();
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(prompter.last().text,
              u"Booked times for JO LI have changed.\r\nDo you wish to save this new record?");
    EXPECT_EQ(prompter.last().title, u"Porvane 90 [ 240310090000 ]");
    EXPECT_EQ(prompter.last().buttons, Buttons::YesNoCancel);
    EXPECT_EQ(prompter.last().icon, Icon::Question);
    const QList<QByteArray> april = monthLines("2404");
    ASSERT_EQ(april.size(), 1);
    EXPECT_TRUE(april[0].startsWith("2404"));
    EXPECT_EQ(bookedTime(april[0], 2), "0800");
    expectMarchUnwritten();
}

TEST_F(BookingEditorTest, timesChangedInTheBookingsMonthAskOverwriteOrNew) {
    openJoLi();
    times.setCurrentCell(14, 1);
    times.cmdSUB();
    prompter.queue(Answer::No);
    editor.cmdSAVE();
    EXPECT_EQ(prompter.texts(),
              QStringList{QStringLiteral(
                  "Booked times for JO LI have changed.\r\nDo you wish to overwrite the current "
                  "record? \r\n\r\nClick [ Yes ] to overwrite the current record or,\r\n"
                  "Click [ No ] to save to a new record")});
    const QList<QByteArray> lines = march();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(bookedTime(lines[0], 14), "0930");
    EXPECT_EQ(bookedTime(lines[2], 14), "    ");
}

TEST_F(BookingEditorTest, rowClickWithUnsavedChangesCancelledKeepsTheBooking) {
    openJoLi();
    editor.setBoxText(Field::CarReg, QStringLiteral("AB12 CDE"));
    state.TimesChanged = true;
    prompter.queue(Answer::Cancel);
    editor.openRow(kAlBo);
    EXPECT_EQ(prompter.texts(),
              QStringList{
                  QStringLiteral("The current booking for JO LI has changed.\r\nDo you wish to save it? ")});
    EXPECT_EQ(editor.box(Field::FirstName), u"Jo");
    EXPECT_EQ(state.record[Field::CarReg], u"AB12 CDE");
    EXPECT_TRUE(state.TimesChanged);

    // Answered No to the record, the times question still follows.
    prompter.clear();
    prompter.queue({Answer::No, Answer::Cancel});
    editor.openRow(kAlBo);
    EXPECT_EQ(prompter.messages().size(), 2);
    EXPECT_TRUE(
        prompter.last().text.startsWith(u"Booked times for JO LI have changed.\r\nDo you wish to overwrite"));
    EXPECT_EQ(editor.box(Field::FirstName), u"Jo");
    expectMarchUnwritten();

    // Yes saves the record (times with it) and opens the row.
    prompter.clear();
    prompter.queue(Answer::Yes);
    editor.openRow(kAlBo);
    EXPECT_EQ(stored(march().value(0), Field::CarReg), "AB12 CDE");
    EXPECT_EQ(editor.box(Field::FirstName), u"Al");
}

TEST_F(BookingEditorTest, rowClickDuringAnUnsavedNewBooking) {
    editor.cmdNEW();
    typeBooking("Al", "Bo", "SALES", "Acme");
    prompter.queue(Answer::Ok);
    editor.openRow(kJoLi);
    EXPECT_EQ(prompter.texts(),
              QStringList{QStringLiteral("This new booking has not been saved: A Valid Name is "
                                         "required.\r\nClick [OK] to return to the record or "
                                         "[Cancel] to discard it")});
    EXPECT_EQ(prompter.last().buttons, Buttons::OkCancel);
    EXPECT_EQ(editor.box(Field::FirstName), u"Al");
    EXPECT_TRUE(editor.NewBookingPending);

    prompter.clear();
    editor.setBoxText(Field::LastName, QStringLiteral("Bond"));
    prompter.queue(Answer::Yes);
    editor.openRow(kJoLi);
    EXPECT_EQ(prompter.texts(),
              QStringList{QStringLiteral(
                  "The NEW booking for AL BOND has not been saved.\r\nDo you wish to save it? ")});
    EXPECT_EQ(stored(march().value(2), Field::LastName), "Bond");
    EXPECT_EQ(editor.box(Field::FirstName), u"Jo");
    EXPECT_FALSE(editor.NewBookingPending);
}

TEST_F(BookingEditorTest, closeAsksThenSavesWithoutANotice) {
    openJoLi();
    editor.setBoxText(Field::MobileTel, QStringLiteral("07700 900123"));
    prompter.queue({Answer::Ok, Answer::Yes});
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(prompter.texts(),
              (QStringList{QStringLiteral("This will close your current session of Porvane"),
                           QStringLiteral(
                               "The current booking for JO LI has changed.\r\nSave it before you close? ")}));
    EXPECT_EQ(prompter.messages()[0].buttons, Buttons::OkCancel);
    EXPECT_EQ(prompter.messages()[0].icon, Icon::Information);
    EXPECT_EQ(stored(march().value(0), Field::MobileTel), "07700 900123");

    prompter.clear();
    prompter.queue(Answer::Cancel);
    EXPECT_FALSE(editor.closeRequested());
}

TEST_F(BookingEditorTest, closeDropsAnInvalidBookingAndOffersAValidNewOne) {
    editor.cmdNEW();
    typeBooking("Jo", "Li", "-  Select  -", "Acme");
    prompter.queue(Answer::Ok);
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(prompter.messages().size(), 1);

    prompter.clear();
    editor.cmdNEW();
    typeBooking("Jo", "Li", "SALES", "Acme");
    prompter.queue({Answer::Ok, Answer::Cancel});
    EXPECT_FALSE(editor.closeRequested());
    EXPECT_EQ(prompter.last().text, u"New booking not saved:  Save it before you close?");
    EXPECT_TRUE(editor.NewBookingPending);
    expectMarchUnwritten();
    prompter.queue({Answer::Ok, Answer::Yes});
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(march().size(), 3);

    // An open booking whose changes would not pass the tests is dropped as well.
    const QByteArray saved = folder.read(kMarch);
    openJoLi();
    editor.setBoxText(Field::Organisation, QStringLiteral("A"));
    prompter.queue(Answer::Ok);
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(folder.read(kMarch), saved);

    state.SettingsRestartPending = true;
    prompter.clear();
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_TRUE(prompter.messages().isEmpty());
}

TEST_F(BookingEditorTest, deleteAsksAndRespectsTheSwitches) {
    openJoLi();
    prompter.queue(Answer::No);
    editor.cmdDelete();
    EXPECT_EQ(prompter.last().text, u"This will DELETE this Booking for JO LI \r\nDo you wish to Proceed? ");
    EXPECT_EQ(prompter.last().title, u"Porvane 90 [ 240310090000 ]");
    expectMarchUnwritten();
    prompter.queue(Answer::Yes);
    editor.cmdDelete();
    ASSERT_EQ(march().size(), 1);
    EXPECT_EQ(stored(march()[0], Field::RegNo), "240311120000");
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ One Booking DELETED ]");
    EXPECT_EQ(refreshes, 1);

    // Single deletes switched off: no question, nothing deleted.
    editor.openRow(kAlBo);
    state.settings.ckDisSingleD = QStringLiteral("1");
    prompter.clear();
    editor.cmdDelete();
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(march().size(), 1);
    state.settings.ckDisSingleD = QStringLiteral("0");

    // An empty editor offers to clear the boxes instead.
    editor.setBoxText(Field::RegNo, QString());
    editor.setBoxText(Field::Organisation, QStringLiteral("left over"));
    prompter.queue(Answer::Yes);
    editor.cmdDelete();
    EXPECT_EQ(prompter.last().text, u"No Record to DELETE: Clear all text entries for this record?");
    EXPECT_EQ(prompter.last().title, u"Porvane 90");
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(editor.box(Field::Organisation), u"");
    EXPECT_EQ(editor.box(Field::Category), u"VISITOR");
}

TEST_F(BookingEditorTest, readOnlyModeOnlyOpensAndCloses) {
    openJoLi();
    state.settings.ckMakeSysRdO = QStringLiteral("1");
    editor.setBoxText(Field::Organisation, QStringLiteral("changed"));
    editor.cmdSAVE();
    editor.cmdNEW();
    editor.cmdDelete();
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_FALSE(editor.NewBookingPending);
    editor.openRow(kAlBo);
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(editor.box(Field::FirstName), u"Al");
    editor.setBoxText(Field::Organisation, QStringLiteral("changed"));
    prompter.queue(Answer::Ok);
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(prompter.messages().size(), 1);
    expectMarchUnwritten();
}

TEST_F(BookingEditorTest, failedWriteKeepsTheNewBookingForAnotherTry) {
    dates.cmdCalINCR(); // APRIL, whose file cannot be written: a folder stands in its place
    const QString april = folder.path(QStringLiteral("Record/2404.vrf"));
    ASSERT_TRUE(QDir().mkpath(april));
    editor.cmdNEW();
    typeBooking();
    editor.cmdSAVE();
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(prompter.last().text.startsWith(u"The booking could not be saved: "))
        << prompter.last().text.toStdString();
    EXPECT_TRUE(prompter.last().text.endsWith(u"The booking is still in the editor."));
    EXPECT_TRUE(editor.NewBookingPending);
    EXPECT_EQ(editor.box(Field::LastName), u"Li");
    EXPECT_EQ(refreshes, 0);

    ASSERT_TRUE(QDir().rmdir(april));
    editor.cmdSAVE();
    EXPECT_EQ(monthLines("2404").size(), 1);
    EXPECT_FALSE(editor.NewBookingPending);
}

TEST_F(BookingEditorTest, missingRowLeavesTheRecordShownAsSaved) {
    openJoLi();
    editor.setBoxText(Field::CarReg, QStringLiteral("XY1"));
    prompter.queue(Answer::No);
    editor.openRow(QStringLiteral("240399999999"));
    EXPECT_EQ(editor.box(Field::FirstName), u"Jo");
    EXPECT_EQ(state.record[Field::CarReg], u"XY1");
    EXPECT_FALSE(state.record.TestRecordChanged());

    // A month file that is not there is reported and changes nothing.
    prompter.clear();
    editor.setBoxText(Field::CarReg, QStringLiteral("XY2"));
    prompter.queue(Answer::No);
    editor.openRow(QStringLiteral("230101000000"));
    EXPECT_EQ(prompter.messages().size(), 2);
    EXPECT_TRUE(prompter.last().text.contains(u"53"));
    EXPECT_TRUE(state.record.TestRecordChanged());
}

TEST_F(BookingEditorTest, typingRulesForNamesGenderAndEmail) {
    editor.cmdNEW();
    editor.setBoxText(Field::FirstName, QStringLiteral("John S"));
    EXPECT_EQ(editor.box(Field::FirstName), u"John");
    EXPECT_EQ(editor.box(Field::LastName), u"S");
    EXPECT_EQ(editor.view().focus, BookingEditor::Focus::LastName);
    EXPECT_EQ(editor.view().caret, 1);
    editor.setBoxText(Field::LastName, QStringLiteral("Smith "));
    EXPECT_EQ(state.record[Field::LastName], u"Smith ") << "copied untrimmed";
    for (const QChar key : {u'-', u'.'})
        EXPECT_TRUE(BookingEditor::nameKeyAccepted(key)) << key.toLatin1();
    for (const QChar key : {u'3', u'\''})
        EXPECT_FALSE(BookingEditor::nameKeyAccepted(key)) << key.toLatin1();

    editor.toggleGender();
    EXPECT_EQ(editor.box(Field::Gender), u"M");
    editor.toggleGender();
    EXPECT_EQ(editor.box(Field::Gender), u"F");

    editor.setBoxText(Field::OrgEmail, QStringLiteral("Sales@ACME.co.uk"));
    editor.leaveEmail(Field::OrgEmail);
    EXPECT_EQ(state.record[Field::OrgEmail], u"sales@acme.co.uk");
    EXPECT_TRUE(prompter.messages().isEmpty());
    editor.setBoxText(Field::Email, QStringLiteral("JOHN@HOME"));
    editor.leaveEmail(Field::Email);
    EXPECT_EQ(editor.box(Field::Email), u"john@home");
    EXPECT_EQ(prompter.last().title, u"Porvane 90 [Bad Domain Identity]");
}
