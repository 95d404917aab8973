#include "desk/booking_editor.h"

#include "desk/email_check.h"
#include "store/day_status.h"
#include "store/digits.h"
#include "store/photo_paths.h"
#include "store/record_store.h"
#include "store/windows1252.h"

#include <QFileInfo>

namespace porvane {

namespace {

QString plainTitle() {
    return QStringLiteral("Porvane 90");
}

const QString kCrLf = QStringLiteral("\r\n");

// Hours and minutes "hhmm" as the labels show them; "  -  " when not marked.
QString siteTimeText(const QString& hhmm) {
    const QString t = hhmm.trimmed();
    if (t.isEmpty() || t == u"-")
        return QString::fromUtf16(kNoTimeMark);
    return t.size() == 4 ? t.left(2) + u':' + t.right(2) : t;
}

} // namespace

std::optional<NameSplit> splitFirstName(const QString& text) {
    const QString trimmed = text.trimmed();
    const qsizetype blank = trimmed.indexOf(u' ');
    if (blank < 0 || blank + 1 >= trimmed.size())
        return std::nullopt;
    return NameSplit{text.left(std::max<qsizetype>(0, text.size() - 2)), trimmed.mid(blank + 1, 1)};
}

QString BookingEditor::controlName(Field field) {
    switch (field) {
    case Field::RegNo:
        return QStringLiteral("RegNoTB");
    case Field::FirstName:
        return QStringLiteral("FirstNameTB");
    case Field::LastName:
        return QStringLiteral("LastNameTB");
    case Field::Gender:
        return QStringLiteral("PersGendTB");
    case Field::MobileTel:
        return QStringLiteral("PersMobTB");
    case Field::CarReg:
        return QStringLiteral("PersCarRegTB");
    case Field::Email:
        return QStringLiteral("PersEmailTB");
    case Field::Category:
        return QStringLiteral("CataCB");
    case Field::Department:
        return QStringLiteral("Dept1CB");
    case Field::Organisation:
        return QStringLiteral("CatOrganTB");
    case Field::PartySize:
        return QStringLiteral("CatPartyTB");
    case Field::OrgAddress:
        return QStringLiteral("CatAdrTB");
    case Field::OrgDirectTel:
        return QStringLiteral("CatDDITB");
    case Field::OrgPostcode:
        return QStringLiteral("CatPCodeTB");
    case Field::OrgAltTel:
        return QStringLiteral("CatAltTTB");
    case Field::OrgEmail:
        return QStringLiteral("CatEMATB");
    default:
        return {};
    }
}

BookingEditor::BookingEditor(AppState& state, OpenBooking& booking, DateSelection& dates, BookedTimes& times,
                             BookingStore& store)
    : m_state(state)
    , m_booking(booking)
    , m_dates(dates)
    , m_times(times)
    , m_store(store) {
    showLabels();
}

// ---------------------------------------------------------------- typing

bool BookingEditor::nameCharAccepted(QChar c) {
    if (c == u' ' || c == u'-' || c == u'.' || c == u'\'')
        return true;
    return c.isLetter() && fitsWindows1252(QStringView(&c, 1));
}

void BookingEditor::setBoxText(Field field, const QString& text) {
    if (controlName(field).isEmpty())
        return;
    QString value = text;
    if (field == Field::FirstName) {
        // No name can be typed until NEW is pressed or a booking is opened.
        if (box(Field::RegNo).trimmed().isEmpty()) {
            value.clear();
        } else if (const auto split = splitFirstName(value)) {
            value = split->first;
            m_booking.setField(Field::LastName, split->last);
            m_view.focus = Focus::LastName;
            m_view.caret = int(split->last.size());
        }
    }
    m_booking.setField(field, value);
}

void BookingEditor::toggleGender() {
    setBoxText(Field::Gender,
               box(Field::Gender).trimmed() == u"M" ? QStringLiteral("F") : QStringLiteral("M"));
}

void BookingEditor::leaveEmail(Field field) {
    if (field != Field::Email && field != Field::OrgEmail)
        return;
    setBoxText(field, box(field).toLower());
    if (!box(field).trimmed().isEmpty())
        checkEmailAddress(m_state.prompter, box(field));
}

// ---------------------------------------------------------------- tests and texts

QString BookingEditor::validityFault() const {
    const QString first = box(Field::FirstName).trimmed();
    const QString last = box(Field::LastName).trimmed();
    if (first.isEmpty() || last.isEmpty())
        return tr("Can't SAVE without First Name [ Or Initial ] AND Last Name");
    if (first.size() < 2 && last.size() < 3)
        return tr("Can't Save: A Valid Name does not appear to be entered");
    const QString department = box(Field::Department).trimmed();
    if (department == noDepartment() || department.size() < 3)
        return tr("Can't SAVE:  No valid Department name has been entered");
    if (box(Field::Organisation).trimmed().size() < 3)
        return tr("Can't SAVE:  No valid ORGANISATION name has been entered");
    return {};
}

bool BookingEditor::bookingOpen() const {
    return leadingNumber(box(Field::RegNo).trimmed()) > 0;
}

QColor BookingEditor::regNoBackground() const {
    return box(Field::RegNo).trimmed().isEmpty() ? editor_colour::kEmpty : editor_colour::kFilled;
}

QString BookingEditor::bookingMonthText() const {
    if (!bookingMonthDiffers())
        return m_dates.monthText() + u' ' + m_dates.yearText();
    const QString regNo = m_booking.regNo();
    return DateSelection::monthItems().value(regNo.mid(2, 2).toInt() - 1) + QStringLiteral(" 20") +
           regNo.left(2);
}

bool BookingEditor::bookingMonthDiffers() const {
    return bookingOpen() && m_booking.regNo().left(4) != m_dates.bookingMonth();
}

QString BookingEditor::bookingTitle() const {
    return QStringLiteral("Porvane 90 [ ") + m_booking[Field::RegNo] + QStringLiteral(" ]");
}

QString BookingEditor::firstUpper() const {
    return m_booking[Field::FirstName].trimmed().toUpper();
}

QString BookingEditor::lastUpper() const {
    return m_booking[Field::LastName].trimmed().toUpper();
}

Answer BookingEditor::ask(const QString& text, Buttons buttons, Icon icon) {
    return m_state.prompter.ask({bookingTitle(), text, buttons, icon});
}

// ---------------------------------------------------------------- the save decision

bool BookingEditor::saveDecision(Op op) {
    if (m_booking.changed()) {
        if (op == Op::Save)
            return saveRecordStep(op);
        const QString question =
            tr("The current booking for %1 %2 has changed.").arg(firstUpper(), lastUpper()) + kCrLf +
            (op == Op::Close ? tr("Save it before you close? ") : tr("Do you wish to save it? "));
        const Answer a = ask(question, Buttons::YesNoCancel, Icon::Question);
        if (a == Answer::Cancel)
            return false;
        if (a == Answer::Yes && !saveRecordStep(op))
            return false;
    }
    if (m_booking.timesEdited())
        return saveTimesStep(op);
    return true;
}

bool BookingEditor::saveRecordStep(Op op) {
    m_booking.settleTimes();
    const CurrentRecord& r = m_booking.record();
    if (r[Field::FirstName] == r.saved(Field::FirstName) && r[Field::LastName] == r.saved(Field::LastName))
        return overwrite();
    // A renamed booking is saved beside the old person's booking, never over it.
    const QString first = r[Field::FirstName];
    const QString last = r[Field::LastName];
    if (!saveAsNew())
        return false;
    if (op != Op::Close)
        m_state.prompter.tell(bookingTitle(),
                              tr("Porvane has created a New Record for %1 %2").arg(first, last),
                              op == Op::New || op == Op::Pass ? Icon::Exclamation : Icon::Information);
    return true;
}

bool BookingEditor::saveTimesStep(Op op) {
    const QString regNo = m_booking[Field::RegNo];
    const QString head = tr("Booked times for %1 %2 have changed.").arg(firstUpper(), lastUpper()) + kCrLf;
    const bool otherMonth =
        regNo.left(2) != m_dates.yearText().right(2) || regNo.mid(2, 2) != m_dates.monthNumber();
    if (otherMonth) {
        const QString line = op == Op::Close ? tr("Save new times before you close? ")
                                             : tr("Do you wish to save this new record?");
        const Answer a = ask(head + line, Buttons::YesNoCancel, Icon::Question);
        if (a == Answer::Yes)
            return saveAsNew();
        return a != Answer::Cancel || op == Op::Save;
    }
    const QString line = op == Op::Close ? tr("Overwrite current bookings before you close? ")
                                         : tr("Do you wish to overwrite the current record? ");
    const Answer a = ask(
        head + line + kCrLf + kCrLf +
            tr("Click [ Yes ] to overwrite the current record or,\r\nClick [ No ] to save to a new record"),
        Buttons::YesNoCancel, Icon::Question);
    if (a == Answer::Yes)
        return overwrite();
    if (a == Answer::No)
        return saveAsNew();
    return op == Op::Save;
}

bool BookingEditor::reportResult(const StoreResult& result, const QString& failureText) {
    switch (result.status) {
    case StoreResult::Status::Ok:
        return true;
    case StoreResult::Status::Refused:
        m_state.prompter.tell(plainTitle(), result.error.text, Icon::Exclamation);
        return false;
    case StoreResult::Status::FileFailed:
        break;
    }
    m_state.prompter.tell(plainTitle(),
                          failureText.arg(result.error.text, QString::number(result.error.number)) + kCrLf +
                              tr("The booking is still in the editor."),
                          Icon::Exclamation);
    return false;
}

bool BookingEditor::saveAsNew(const QString& bookingYymm) {
    const StoreResult result = m_store.saveNew(m_booking.record(), bookingYymm);
    if (!reportResult(result, tr("The booking could not be saved: %1 (error %2).")))
        return false;
    m_booking.setField(Field::RegNo, result.regNo);
    m_state.showResultInTitle(tr("Record %1 SAVED").arg(result.regNo));
    afterSave();
    return true;
}

// An update or delete goes to the month file that holds the booking, whichever month the boxes show.
QString BookingEditor::bookingFileMonth() const {
    return bookingOpen() ? box(Field::RegNo).trimmed().left(4) : m_dates.bookingMonth();
}

bool BookingEditor::overwrite() {
    const QString regNo = box(Field::RegNo).trimmed();
    if (!reportResult(m_store.update(m_booking.record(), bookingFileMonth(), regNo),
                      tr("The booking could not be saved: %1 (error %2).")))
        return false;
    m_state.showResultInTitle(tr("Record %1 UPDATED").arg(m_booking[Field::RegNo]));
    afterSave();
    return true;
}

void BookingEditor::afterSave() {
    m_booking.markSaved();
    showBookingMonth();
    showLabels();
    if (refreshList)
        refreshList();
}

// ---------------------------------------------------------------- buttons

void BookingEditor::cmdSAVE() {
    if (readOnly())
        return;
    const QString fault = validityFault();
    if (!fault.isEmpty()) {
        m_state.prompter.tell(plainTitle(), fault, Icon::Exclamation);
        return;
    }
    if (m_booking.newPending()) {
        if (!saveAsNew())
            return;
        m_state.prompter.tell(plainTitle(),
                              tr("New Booking made for %1 %2 in %3 %4 Ok")
                                  .arg(firstUpper(), lastUpper(), m_dates.monthText(), m_dates.yearText()),
                              Icon::Information);
        return;
    }
    if (!bookingOpen())
        return;
    if (m_booking.changed() || m_booking.timesEdited())
        saveDecision(Op::Save);
}

void BookingEditor::cmdNEW() {
    if (readOnly())
        return;
    m_state.help.setTopic(HelpTopic::NewBooking);
    // An unsaved new booking already on screen is dropped without a question.
    if (bookingOpen() && !saveDecision(Op::New))
        return;
    clearEditor(false);
    for (int i = 0; i < 5; ++i) {
        setRegNoBox(newBookingText());
        m_state.pause.wait(0.05);
        setRegNoBox(QString());
        m_state.pause.wait(0.05);
    }
    setRegNoBox(newBookingText());
    m_booking.setNewPending(true);
    m_view.focus = Focus::FirstName;
    m_view.caret = 0;
}

void BookingEditor::setRegNoBox(const QString& text) {
    setBoxText(Field::RegNo, text);
    if (regNoShown)
        regNoShown(text);
}

void BookingEditor::cmdDelete() {
    if (readOnly() || m_state.settings.DisableSingleDelete())
        return;
    if (box(Field::RegNo).trimmed().isEmpty()) {
        const Answer a = m_state.prompter.ask(
            {plainTitle(), tr("No Record to DELETE: Clear all text entries for this record?"),
             Buttons::YesNoCancel, Icon::Exclamation});
        if (a == Answer::Yes)
            clearEditor(false);
        return;
    }
    const Answer a = ask(tr("This will DELETE this Booking for %1 %2 ").arg(firstUpper(), lastUpper()) +
                             kCrLf + tr("Do you wish to Proceed? "),
                         Buttons::YesNoCancel, Icon::Question);
    if (a != Answer::Yes)
        return;
    const QString regNo = box(Field::RegNo).trimmed();
    if (!reportResult(
            m_store.deleteBooking(bookingFileMonth(), regNo, box(Field::FirstName), box(Field::LastName)),
            tr("The booking could not be deleted: %1 (error %2).")))
        return;
    m_state.showResultInTitle(tr("One Booking DELETED"));
    // The booking is gone: nothing of it stays in the editor to be saved again.
    clearEditor(true);
    if (refreshList)
        refreshList();
}

void BookingEditor::clearEditor(bool forget) {
    m_booking.clear(forget);
    m_times.forgetMarks();
    showLabels();
}

// ---------------------------------------------------------------- arrival and departure

void BookingEditor::cmdIN() {
    if (!siteMarkAllowed(tr("Can't mark as ARRIVED: No booking has been created or saved!"), 3))
        return;
    CurrentRecord onFile = m_booking.record();
    if (!takeSiteTimes(onFile) && !bookWalkInForToday())
        return;
    // Marking in again starts a new visit, so an earlier departure goes.
    m_booking.setField(Field::TimeOnSite, m_state.clock.now().toString(QStringLiteral("hh:mm")));
    m_booking.setField(Field::TimeOffSite, QString::fromUtf16(kNoTimeMark));
    writeSiteTimes(tr("The arrival could not be written to today's status file: %1 (error %2)."));
}

void BookingEditor::cmdOUT() {
    if (!siteMarkAllowed(tr("Can't mark as DEPARTED: No booking has been created or saved!"), 4))
        return;
    // Nobody leaves who has not arrived.
    if (m_booking[Field::TimeOnSite].trimmed().size() < 5)
        return;
    m_booking.setField(Field::TimeOffSite, m_state.clock.now().toString(QStringLiteral("hh:mm")));
    writeSiteTimes(tr("The departure could not be written to today's status file: %1 (error %2)."));
}

bool BookingEditor::siteMarkAllowed(const QString& noBookingText, qsizetype lastNameBound) {
    if (readOnly())
        return false;
    m_state.help.setTopic(HelpTopic::ArriveOrDepart);
    if (!bookingOpen()) {
        m_state.prompter.tell(plainTitle(), noBookingText, Icon::Exclamation);
        return false;
    }
    return box(Field::LastName).trimmed().size() >= lastNameBound ||
           box(Field::FirstName).trimmed().size() >= 2;
}

bool BookingEditor::bookWalkInForToday() {
    const QDateTime now = m_state.clock.now();
    const QString hhmm = now.toString(QStringLiteral("hhmm"));
    const Answer a = ask(tr("%1 %2 is not on today's list.").arg(firstUpper(), lastUpper()) + kCrLf +
                             tr("Book this visitor for today at %1 and mark the arrival?")
                                 .arg(now.toString(QStringLiteral("hh:mm"))),
                         Buttons::YesNo, Icon::Question);
    if (a != Answer::Yes)
        return false;
    const QString todayMonth = now.toString(QStringLiteral("yyMM"));
    const CurrentRecord& r = m_booking.record();
    const bool renamed =
        r[Field::FirstName] != r.saved(Field::FirstName) || r[Field::LastName] != r.saved(Field::LastName);
    m_booking.setTime(now.date().day(), hhmm);
    // A booking of another month, or one renamed on screen, is booked for today as a new booking of this
    // month, so nobody else's booking is overwritten.
    const bool saved = renamed || bookingFileMonth() != todayMonth ? saveAsNew(todayMonth) : overwrite();
    if (!saved)
        return false;
    if (rebuildTodayStatus && !rebuildTodayStatus())
        return false;
    CurrentRecord check = m_booking.record();
    return takeSiteTimes(check);
}

// The new time is written first and then shown as the file holds it, so the desk never shows an arrival or
// departure it has not stored.
void BookingEditor::writeSiteTimes(const QString& failureText) {
    m_view.focus = Focus::MainFind;
    if (const FileError error =
            UpdateDayStatus(m_state.files(), m_state.clock.today(), box(Field::RegNo),
                            m_booking[Field::TimeOnSite], m_booking[Field::TimeOffSite])) {
        m_state.prompter.tell(plainTitle(), failureText.arg(error.text, QString::number(error.number)),
                              Icon::Exclamation);
    }
    showLabels();
    if (refreshList)
        refreshList();
}

// ---------------------------------------------------------------- list rows

bool BookingEditor::openRow(const QString& regNo) {
    if (regNo.trimmed().isEmpty())
        return false;
    if (!readOnly()) {
        if (!m_booking.newPending() && bookingOpen()) {
            if (!saveDecision(Op::RowClick))
                return false;
        } else if (m_booking.newPending() && m_booking.changed()) {
            m_booking.settleTimes();
            const QString first = firstUpper();
            const QString last = lastUpper();
            if (first.size() + last.size() >= 5) {
                const Answer a = ask(tr("The NEW booking for %1 %2 has not been saved.").arg(first, last) +
                                         kCrLf + tr("Do you wish to save it? "),
                                     Buttons::YesNoCancel, Icon::Question);
                if (a == Answer::Cancel)
                    return false;
                if (a == Answer::No) {
                    m_booking.setNewPending(false);
                    return false;
                }
                if (!saveAsNew())
                    return false;
            } else {
                const Answer a = m_state.prompter.ask(
                    {plainTitle(),
                     tr("This new booking has not been saved: A Valid Name is required.") + kCrLf +
                         tr("Click [OK] to return to the record or [Cancel] to discard it"),
                     Buttons::OkCancel, Icon::Information});
                if (a != Answer::Cancel)
                    return false;
            }
        }
    }
    if (!m_dates.testDate(m_state.prompter))
        return false;
    return readBooking(regNo.trimmed());
}

bool BookingEditor::readBooking(const QString& regNo) {
    CurrentRecord stored = m_booking.record();
    FileError error;
    if (!readBookingLine(m_state.files(), regNo, stored, error) && error) {
        m_state.prompter.tell(plainTitle(),
                              tr("The booking could not be opened: %1 (error %2).")
                                  .arg(error.text, QString::number(error.number)),
                              Icon::Exclamation);
        return false;
    }
    // A booking no longer in its file leaves the values as they were, shown as saved.
    takeSiteTimes(stored);
    takePhotoMark(stored);
    m_times.forgetMarks();
    m_booking.load(stored);
    showBookingMonth();
    showLabels();
    return true;
}

bool BookingEditor::takeSiteTimes(CurrentRecord& record) const {
    SiteTimes times;
    if (bookingOpen())
        times = readSiteTimes(m_state.files(), m_state.clock.today(), record[Field::RegNo].trimmed());
    record[Field::TimeOnSite] = siteTimeText(times.arrival);
    record[Field::TimeOffSite] = siteTimeText(times.departure);
    return times.found;
}

void BookingEditor::takePhotoMark(CurrentRecord& record) const {
    const bool onFile = !record[Field::RegNo].trimmed().isEmpty() &&
                        QFileInfo::exists(photoPath(m_state.dataPath(), record[Field::RegNo],
                                                    record[Field::FirstName], record[Field::LastName]));
    record[Field::PhotoOnFile] = onFile ? QStringLiteral("1") : QStringLiteral("0");
}

// ---------------------------------------------------------------- closing

bool BookingEditor::closeRequested(bool askFirst) {
    if (askFirst && m_state.prompter.ask({plainTitle(), tr("This will close your current session of Porvane"),
                                          Buttons::OkCancel, Icon::Information}) == Answer::Cancel)
        return false;
    if (readOnly())
        return true;
    if (!validityFault().isEmpty()) {
        // An invalid booking cannot be stored, so it is dropped.
        m_booking.setNewPending(false);
        return true;
    }
    if (m_booking.newPending()) {
        const Answer a =
            m_state.prompter.ask({plainTitle(), tr("New booking not saved:  Save it before you close?"),
                                  Buttons::YesNoCancel, Icon::Question});
        if (a == Answer::Cancel)
            return false;
        if (a == Answer::Yes && !saveAsNew())
            return false;
        m_booking.setNewPending(false);
        return true;
    }
    if (bookingOpen())
        return saveDecision(Op::Close);
    return true;
}

// ---------------------------------------------------------------- the pass and photo windows

bool BookingEditor::settleBeforePass() {
    if (!bookingOpen() || readOnly())
        return true;
    return saveDecision(Op::Pass);
}

void BookingEditor::recordWindowClosed(bool passRemoved) {
    if (passRemoved)
        revokePass();
    // What the pass window stored of the pass is the saved state; other unsaved edits stay unsaved.
    if (bookingOpen()) {
        CurrentRecord stored;
        FileError error;
        if (readBookingLine(m_state.files(), m_booking.regNo(), stored, error)) {
            for (Field f : kPassFields)
                if (stored[f] == m_booking[f])
                    m_booking.markFieldsSaved({f});
        }
    }
    CurrentRecord marked = m_booking.record();
    takePhotoMark(marked);
    m_booking.setField(Field::PhotoOnFile, marked[Field::PhotoOnFile]);
    m_booking.changedElsewhere();
    showLabels();
}

void BookingEditor::revokePass() {
    for (Field f : kPassFields)
        m_booking.setField(f, QString(fieldSpec(f).width, u' '));
    if (!bookingOpen() || readOnly())
        return; // nothing stored yet: the pass fields simply go
    if (!reportResult(m_store.updatePass(m_booking.record(), bookingFileMonth(), m_booking.regNo()),
                      tr("The pass could not be revoked: %1 (error %2).")))
        return;
    m_booking.markFieldsSaved({Field::PassStart, Field::PassEnd, Field::PassPeriod, Field::PassIssued});
    m_view.PassPrntdLa = {tr("Pass Revoked"), editor_colour::kFilled, {}};
    if (passLabelShown)
        passLabelShown(m_view.PassPrntdLa.text);
    m_state.pause.wait(1);
}

// ---------------------------------------------------------------- labels

void BookingEditor::showLabels() {
    showPassLabel();
    showPhotoLabel();
    CurrentRecord onFile = m_booking.record();
    takeSiteTimes(onFile);
    m_booking.setField(Field::TimeOnSite, onFile[Field::TimeOnSite]);
    m_booking.setField(Field::TimeOffSite, onFile[Field::TimeOffSite]);
    paintSiteLabels();
}

void BookingEditor::showPassLabel() {
    const CurrentRecord& r = m_booking.record();
    if (r[Field::PassIssued].trimmed().size() != 19) {
        m_view.PassPrntdLa = {tr("No Pass on-File"), editor_colour::kEmpty, {}};
        return;
    }
    const QDate end = QDate::fromString(r[Field::PassEnd].trimmed(), QStringLiteral("dd-MM-yyyy"));
    if (!end.isValid() || end < m_state.clock.today()) {
        m_view.PassPrntdLa = {tr("Pass NOT Valid"), editor_colour::kFilled, {}};
        return;
    }
    const QString code = r[Field::PassPeriod].trimmed();
    const QChar unit = code.isEmpty() ? QChar() : code.back().toUpper();
    QString word = QStringLiteral(" ??");
    if (unit == u'D')
        word = tr("Day");
    else if (unit == u'W')
        word = tr("Week");
    else if (unit == u'M')
        word = tr("Month");
    m_view.PassPrntdLa = {r[Field::PassEnd].trimmed() + QStringLiteral("  ") + code.left(1) + u' ' + word,
                          editor_colour::kGreen,
                          {}};
}

void BookingEditor::showPhotoLabel() {
    if (m_booking[Field::PhotoOnFile] == u"1")
        m_view.PhotoOnFLa = {tr("Photo on-File"), editor_colour::kFilled, {}};
    else
        m_view.PhotoOnFLa = {tr("NO PHOTO"), editor_colour::kNoPhoto, {}};
}

// The label of the visit's present state is highlighted, the other greyed.
void BookingEditor::paintSiteLabels() {
    const CurrentRecord& r = m_booking.record();
    const Label greyOn{r[Field::TimeOnSite], editor_colour::kWindow, editor_colour::kDarkGrey};
    const Label greyOff{r[Field::TimeOffSite], editor_colour::kWindow, editor_colour::kDarkGrey};
    const bool arrived = r[Field::TimeOnSite] != QString::fromUtf16(kNoTimeMark);
    const bool departed = r[Field::TimeOffSite] != QString::fromUtf16(kNoTimeMark);
    m_view.LaON_Site = greyOn;
    m_view.LaOFFSite = greyOff;
    if (departed)
        m_view.LaOFFSite = {r[Field::TimeOffSite], editor_colour::kGreen, editor_colour::kBlack};
    else if (arrived)
        m_view.LaON_Site = {r[Field::TimeOnSite], editor_colour::kWhite, editor_colour::kRed};
}

// The year and month boxes follow the open booking, so the month shown is the month it belongs to.
void BookingEditor::showBookingMonth() {
    const QString regNo = m_booking[Field::RegNo];
    if (regNo.size() < 4)
        return;
    bool yearOk = false;
    bool monthOk = false;
    const int yy = regNo.left(2).toInt(&yearOk);
    const int mm = regNo.mid(2, 2).toInt(&monthOk);
    const int year = 2000 + yy;
    if (!yearOk || !monthOk || mm < 1 || mm > 12 || year < m_dates.firstYear() || year > m_dates.lastYear())
        return;
    m_dates.setYearText(QString::number(year));
    m_dates.setMonthText(DateSelection::monthItems()[mm - 1]);
}

} // namespace porvane
