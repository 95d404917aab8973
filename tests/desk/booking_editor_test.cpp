#include "desk/booking_editor.h"
#include "desk/personal_details.h"
#include "desk_fixture.h"
#include "store/record_line.h"

#include <QDir>
#include <QFile>

using namespace porvane;
using porvane::test::handLine;

namespace {

// Stands in for the record store: records which operation the editor chose and can fail like a locked file.
class RecordingStore final : public BookingStore {
public:
    explicit RecordingStore(AppState& state)
        : m_state(state) {}

    StoreResult saveNew(const QString& yymm) override {
        if (fail)
            return failure();
        calls << QStringLiteral("saveNew ") + yymm;
        // A new identifier in the given month, as the store makes it.
        m_state.record[Field::RegNo] = yymm + m_state.clock.now().toString(QStringLiteral("ddhhmmss"));
        savedLines << encodeRecordLine(m_state.record);
        return {};
    }
    StoreResult update(const QString& yymm, const QString& regNoText) override {
        if (fail)
            return failure();
        calls << QStringLiteral("update ") + yymm + u' ' + regNoText;
        savedLines << encodeRecordLine(m_state.record);
        return {};
    }
    StoreResult deleteBooking(const QString& yymm, const QString& regNoText) override {
        if (fail)
            return failure();
        calls << QStringLiteral("delete ") + yymm + u' ' + regNoText;
        return {};
    }

    QStringList calls;
    QList<QByteArray> savedLines;
    bool fail = false;

private:
    static StoreResult failure() {
        StoreResult r;
        r.status = StoreResult::Status::FileFailed;
        r.error = {FileError::PermissionDenied, QStringLiteral("Record/2403.vrf is locked")};
        return r;
    }
    AppState& m_state;
};

const char* kRegNo = "240310090000";

} // namespace

class BookingEditorTest : public porvane::test::DeskFixture {
protected:
    BookingEditorTest()
        : dates(2024)
        , times(state)
        , store(state)
        , editor(state, dates, times, store) {
        dates.cmdGetToday(clock); // 14 MARCH 2024
        times.setMonth(2024, 3);
        editor.refreshList = [this] {
            ++refreshes;
        };
        folder.write(QStringLiteral("Record/2403.vrf"),
                     handLine({{1, kRegNo},
                               {14, "Jo"},
                               {31, "Li"},
                               {50, "F"},
                               {293, "uses a stick<$c>needs lift"},
                               {504, "CONTRACTOR"},
                               {525, "ENGINEERING"},
                               {550, "Acme Widgets Ltd"},
                               {1060 + 4 * 13, "0930"}}) +
                         "\r\n" + handLine({{1, "240311120000"}, {14, "Al"}, {31, "Bo"}}) + "\r\n");
    }

    void openJoLi() {
        editor.openRow(QString::fromLatin1(kRegNo));
        ASSERT_EQ(editor.box(Field::FirstName), u"Jo");
        prompter.clear();
    }
    void typeNewBooking(const char* first, const char* last, const char* dept, const char* org) {
        editor.setBoxText(Field::FirstName, QString::fromUtf8(first));
        editor.setBoxText(Field::LastName, QString::fromUtf8(last));
        editor.setBoxText(Field::Department, QString::fromUtf8(dept));
        editor.setBoxText(Field::Organisation, QString::fromUtf8(org));
    }
    QString title() const {
        return QStringLiteral("Porvane 90 [ ") + state.record[Field::RegNo] + QStringLiteral(" ]");
    }

    DateSelection dates;
    BookedTimes times;
    RecordingStore store;
    BookingEditor editor;
    int refreshes = 0;
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
    EXPECT_EQ(flashes.first(), u"NEW Booking");
    EXPECT_EQ(flashes[1], u"");
    EXPECT_EQ(flashes.last(), u"NEW Booking");
    EXPECT_DOUBLE_EQ(pause.total(), 0.5);
    EXPECT_TRUE(editor.NewBookingPending);
    EXPECT_EQ(editor.view().focus, BookingEditor::Focus::FirstName);
    EXPECT_EQ(editor.view().regNoBackground, editor_colour::kFilled);
    EXPECT_EQ(state.HelpContext, 25);

    typeNewBooking("Jo", "Li", " ENGINEERING", "Acme Widgets Ltd");
    times.setCurrentCell(20, 1);
    times.chooseTime(QStringLiteral("09:30"));
    times.cmdADD();
    editor.cmdSAVE();

    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});
    EXPECT_EQ(prompter.texts(), QStringList{QStringLiteral("New Booking made for JO LI in MARCH 2024 Ok")});
    EXPECT_EQ(prompter.last().title, u"Porvane 90");
    EXPECT_EQ(prompter.last().icon, Icon::Information);
    EXPECT_FALSE(editor.NewBookingPending);
    EXPECT_EQ(state.record[Field::RegNo], u"240314100507");
    EXPECT_EQ(editor.box(Field::RegNo), u"240314100507");
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Record 240314100507 SAVED ]");
    EXPECT_EQ(refreshes, 1);
    // The time typed into the grid went into the stored line as hhmm at day 20's slot.
    ASSERT_EQ(store.savedLines.size(), 1);
    EXPECT_EQ(store.savedLines[0].mid(1060 - 1 + 4 * 19, 4), "0930");
    EXPECT_EQ(store.savedLines[0].mid(525 - 1, 12), " ENGINEERING");
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
        typeNewBooking(c.first, c.last, c.dept, c.org);
        editor.cmdSAVE();
        EXPECT_EQ(prompter.texts(), QStringList{QString::fromUtf8(c.message)}) << c.first << c.last;
        EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    }
    EXPECT_TRUE(store.calls.isEmpty());
    prompter.clear();
    typeNewBooking("Jo", "Li", "SALES", "Acme");
    editor.cmdSAVE();
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});
}

TEST_F(BookingEditorTest, openingARowFillsTheEditorFromTheMonthFile) {
    state.TimesChanged = true;
    editor.openRow(QString::fromLatin1(kRegNo));
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(editor.box(Field::RegNo), QString::fromLatin1(kRegNo));
    EXPECT_EQ(editor.box(Field::LastName), u"Li");
    EXPECT_EQ(editor.box(Field::Department), u"ENGINEERING");
    EXPECT_EQ(state.record[Field::IllnessDetails], u"uses a stick\r\nneeds lift");
    EXPECT_EQ(times.cell(14), u"09:30");
    EXPECT_FALSE(state.TimesChanged);
    EXPECT_FALSE(state.record.TestRecordChanged());
    EXPECT_EQ(editor.view().PhotoOnFLa.text, u"NO PHOTO");
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"No Pass on-File");
}

TEST_F(BookingEditorTest, editWithoutRenameUpdatesInPlaceWithoutAQuestion) {
    openJoLi();
    editor.setBoxText(Field::Organisation, QStringLiteral("Acme Widgets plc"));
    editor.cmdSAVE();
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("update 2403 240310090000")});
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Record 240310090000 UPDATED ]");
    EXPECT_EQ(refreshes, 1);
    // Nothing left to save: a second SAVE does nothing.
    editor.cmdSAVE();
    EXPECT_EQ(store.calls.size(), 1);
}

TEST_F(BookingEditorTest, renameSavesASecondBookingAndSaysSo) {
    openJoLi();
    editor.setBoxText(Field::LastName, QStringLiteral("Lee"));
    editor.cmdSAVE();
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(prompter.last().text, u"Porvane has created a New Record for Jo Lee");
    EXPECT_EQ(prompter.last().icon, Icon::Information);
    EXPECT_EQ(prompter.last().title, u"Porvane 90 [ 240314100507 ]");
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
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2404")});
    EXPECT_TRUE(state.record[Field::RegNo].startsWith(u"2404"));
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
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});
    EXPECT_EQ(store.savedLines[0].mid(1060 - 1 + 4 * 13, 4), "    ");
}

TEST_F(BookingEditorTest, rowClickWithUnsavedChangesCancelledKeepsTheBooking) {
    openJoLi();
    editor.setBoxText(Field::CarReg, QStringLiteral("AB12 CDE"));
    state.TimesChanged = true;
    prompter.queue(Answer::Cancel);
    editor.openRow(QStringLiteral("240311120000"));
    EXPECT_EQ(prompter.texts(),
              QStringList{
                  QStringLiteral("The current booking for JO LI has changed.\r\nDo you wish to save it? ")});
    EXPECT_EQ(editor.box(Field::FirstName), u"Jo");
    EXPECT_EQ(state.record[Field::CarReg], u"AB12 CDE");
    EXPECT_TRUE(state.TimesChanged);
    EXPECT_TRUE(store.calls.isEmpty());

    // Answered No to the record, the times question still follows.
    prompter.clear();
    prompter.queue({Answer::No, Answer::Cancel});
    editor.openRow(QStringLiteral("240311120000"));
    EXPECT_EQ(prompter.messages().size(), 2);
    EXPECT_TRUE(
        prompter.last().text.startsWith(u"Booked times for JO LI have changed.\r\nDo you wish to overwrite"));
    EXPECT_EQ(editor.box(Field::FirstName), u"Jo");

    // Yes saves the record (times with it) and opens the row.
    prompter.clear();
    prompter.queue(Answer::Yes);
    editor.openRow(QStringLiteral("240311120000"));
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("update 2403 240310090000")});
    EXPECT_EQ(editor.box(Field::FirstName), u"Al");
}

TEST_F(BookingEditorTest, rowClickDuringAnUnsavedNewBooking) {
    editor.cmdNEW();
    typeNewBooking("Al", "Bo", "SALES", "Acme");
    prompter.queue(Answer::Ok);
    editor.openRow(QString::fromLatin1(kRegNo));
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
    editor.openRow(QString::fromLatin1(kRegNo));
    EXPECT_EQ(prompter.texts(),
              QStringList{QStringLiteral(
                  "The NEW booking for AL BOND has not been saved.\r\nDo you wish to save it? ")});
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});
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
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("update 2403 240310090000")});

    prompter.clear();
    prompter.queue(Answer::Cancel);
    EXPECT_FALSE(editor.closeRequested());
}

TEST_F(BookingEditorTest, closeDropsAnInvalidNewBookingAndOffersAValidOne) {
    editor.cmdNEW();
    typeNewBooking("Jo", "Li", "-  Select  -", "Acme");
    prompter.queue(Answer::Ok);
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(store.calls.isEmpty());

    prompter.clear();
    editor.cmdNEW();
    typeNewBooking("Jo", "Li", "SALES", "Acme");
    prompter.queue({Answer::Ok, Answer::Cancel});
    EXPECT_FALSE(editor.closeRequested());
    EXPECT_EQ(prompter.last().text, u"New booking not saved:  Save it before you close?");
    EXPECT_TRUE(editor.NewBookingPending);
    prompter.queue({Answer::Ok, Answer::Yes});
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});

    // An open booking whose changes would not pass the tests is dropped as well.
    prompter.clear();
    openJoLi();
    editor.setBoxText(Field::Organisation, QStringLiteral("A"));
    prompter.queue(Answer::Ok);
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(store.calls.size(), 1);

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
    EXPECT_TRUE(store.calls.isEmpty());
    prompter.queue(Answer::Yes);
    editor.cmdDelete();
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("delete 2403 240310090000")});
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ One Booking DELETED ]");
    EXPECT_EQ(refreshes, 1);

    state.settings.ckDisSingleD = QStringLiteral("1");
    prompter.clear();
    editor.cmdDelete();
    EXPECT_TRUE(prompter.messages().isEmpty());
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
    editor.openRow(QStringLiteral("240311120000"));
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(editor.box(Field::FirstName), u"Al");
    editor.setBoxText(Field::Organisation, QStringLiteral("changed"));
    prompter.queue(Answer::Ok);
    EXPECT_TRUE(editor.closeRequested());
    EXPECT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(store.calls.isEmpty());
}

TEST_F(BookingEditorTest, failedWriteKeepsTheBookingForAnotherTry) {
    editor.cmdNEW();
    typeNewBooking("Jo", "Li", "SALES", "Acme");
    store.fail = true;
    editor.cmdSAVE();
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(prompter.last().text.contains(u"Record/2403.vrf is locked"));
    EXPECT_TRUE(editor.NewBookingPending);
    EXPECT_EQ(editor.box(Field::LastName), u"Li");
    EXPECT_EQ(refreshes, 0);
    store.fail = false;
    editor.cmdSAVE();
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});
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

    EXPECT_TRUE(BookingEditor::nameKeyAccepted(u'-'));
    EXPECT_TRUE(BookingEditor::nameKeyAccepted(u'.'));
    EXPECT_FALSE(BookingEditor::nameKeyAccepted(u'3'));
    EXPECT_FALSE(BookingEditor::nameKeyAccepted(u'\''));

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

TEST_F(BookingEditorTest, labelsShowPassPhotoAndSiteTimes) {
    editor.siteTimes = [](const QString& regNo) {
        return regNo == u"240310090000" ? std::pair{QStringLiteral("0915"), QStringLiteral("    ")}
                                        : std::pair<QString, QString>{};
    };
    folder.write(QStringLiteral("photo/2403/240310090000_Jo_Li.bmp"), "BM");
    openJoLi();
    EXPECT_EQ(editor.view().PhotoOnFLa.text, u"Photo on-File");
    EXPECT_EQ(state.record[Field::PhotoOnFile], u"1");
    EXPECT_EQ(editor.view().LaON_Site.text, u"09:15");
    EXPECT_EQ(editor.view().LaON_Site.foreground, editor_colour::kRed);
    EXPECT_EQ(editor.view().LaOFFSite.text, u"  -  ");
    EXPECT_EQ(editor.view().LaOFFSite.background, editor_colour::kWindow);

    state.record[Field::PassEnd] = QStringLiteral("21-03-2024");
    state.record[Field::PassPeriod] = QStringLiteral("1W");
    state.record[Field::PassIssued] = QStringLiteral("14-03-2024 at 09:05");
    editor.showRecord();
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"21-03-2024  1 Week");
    EXPECT_EQ(editor.view().PassPrntdLa.background, editor_colour::kGreen);
    clock.set(QDateTime(QDate(2024, 3, 22), QTime(8, 0)));
    editor.showRecord();
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"Pass NOT Valid");
    EXPECT_EQ(editor.view().PassPrntdLa.background, editor_colour::kFilled);
}

TEST_F(BookingEditorTest, personalDetailsEditMakesTheNextSaveAnUpdate) {
    openJoLi();
    PersonalDetails dialog(state);
    dialog.open();
    dialog.setText(Field::DateOfBirth, QStringLiteral("02-05-1980"));
    dialog.ok();
    editor.cmdSAVE();
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("update 2403 240310090000")});
    EXPECT_EQ(store.savedLines[0].mid(246 - 1, 10), "02-05-1980");
}

TEST_F(BookingEditorTest, newAfterARenameSavesTheRenamedBookingWithAnExclamation) {
    openJoLi();
    editor.setBoxText(Field::FirstName, QStringLiteral("Joan"));
    prompter.queue(Answer::Yes);
    editor.cmdNEW();
    ASSERT_EQ(prompter.messages().size(), 2);
    EXPECT_EQ(prompter.messages()[0].text,
              u"The current booking for JOAN LI has changed.\r\nDo you wish to save it? ");
    EXPECT_EQ(prompter.messages()[0].title, u"Porvane 90 [ 240310090000 ]");
    EXPECT_EQ(prompter.last().text, u"Porvane has created a New Record for Joan Li");
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(store.calls, QStringList{QStringLiteral("saveNew 2403")});
    EXPECT_EQ(editor.box(Field::RegNo), u"NEW Booking");
    EXPECT_EQ(editor.box(Field::FirstName), u"");
}
