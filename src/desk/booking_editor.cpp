#include "desk/booking_editor.h"

#include "desk/desk_help.h"
#include "desk/email_check.h"
#include "photos/photo_paths.h"
#include "store/day_status.h"
#include "store/record_store.h"

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

BookingEditor::BookingEditor(AppState& state, DateSelection& dates, BookedTimes& times, BookingStore& store)
    : m_state(state)
    , m_dates(dates)
    , m_times(times)
    , m_store(store) {
    siteTimes = [this](const QString& regNo) {
        const SiteTimes times = readSiteTimes(m_state.dataPath(), m_state.clock.today(), regNo);
        return std::pair{times.arrival, times.departure};
    };
    fillBoxes();
}

// ---------------------------------------------------------------- typing

bool BookingEditor::nameKeyAccepted(QChar key) {
    const char16_t c = key.unicode();
    return c == u'\b' || c == u'\t' || c == u' ' || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') ||
           c == u'-' || c == u'.';
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
            m_view.box[std::size_t(Field::LastName)] = split->last;
            m_state.record[Field::LastName] = split->last;
            m_view.focus = Focus::LastName;
            m_view.caret = int(split->last.size());
        }
    }
    m_view.box[std::size_t(field)] = value;
    m_state.record[field] = value;
    if (field == Field::RegNo)
        m_view.regNoBackground = value.trimmed().isEmpty() ? editor_colour::kEmpty : editor_colour::kFilled;
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
    const QString text = box(Field::RegNo).trimmed();
    qsizetype digits = 0;
    while (digits < text.size() && text[digits].isDigit())
        ++digits;
    return digits > 0 && text.left(digits).toULongLong() > 0;
}

QString BookingEditor::bookingTitle() const {
    return QStringLiteral("Porvane 90 [ ") + m_state.record[Field::RegNo] + QStringLiteral(" ]");
}

QString BookingEditor::firstUpper() const {
    return m_state.record[Field::FirstName].trimmed().toUpper();
}

QString BookingEditor::lastUpper() const {
    return m_state.record[Field::LastName].trimmed().toUpper();
}

Answer BookingEditor::ask(const QString& text, Buttons buttons, Icon icon) {
    return m_state.prompter.ask({bookingTitle(), text, buttons, icon});
}

// ---------------------------------------------------------------- the save decision

bool BookingEditor::saveDecision(Op op) {
    m_state.RecordChanged = m_state.record.TestRecordChanged();
    if (m_state.RecordChanged) {
        if (op != Op::Save) {
            const QString question =
                tr("The current booking for ") + firstUpper() + u' ' + lastUpper() + tr(" has changed.") +
                kCrLf + (op == Op::Close ? tr("Save it before you close? ") : tr("Do you wish to save it? "));
            const Answer a = ask(question, Buttons::YesNoCancel, Icon::Question);
            if (a == Answer::Cancel)
                return false;
            if (a == Answer::Yes && !saveRecordStep(op))
                return false;
        } else {
            return saveRecordStep(op);
        }
    }
    if (m_state.TimesChanged)
        return saveTimesStep(op);
    return true;
}

bool BookingEditor::saveRecordStep(Op op) {
    m_state.TimesChanged = false;
    const CurrentRecord& r = m_state.record;
    if (r[Field::FirstName] == r.saved(Field::FirstName) && r[Field::LastName] == r.saved(Field::LastName))
        return overwrite();
    // A renamed booking is saved beside the old person's booking, never over it.
    const QString first = r[Field::FirstName];
    const QString last = r[Field::LastName];
    if (!saveAsNew())
        return false;
    if (op != Op::Close)
        m_state.prompter.tell(bookingTitle(),
                              tr("Porvane has created a New Record for ") + first + u' ' + last,
                              op == Op::New ? Icon::Exclamation : Icon::Information);
    return true;
}

bool BookingEditor::saveTimesStep(Op op) {
    const QString regNo = m_state.record[Field::RegNo];
    const QString head =
        tr("Booked times for ") + firstUpper() + u' ' + lastUpper() + tr(" have changed.") + kCrLf;
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
    const Answer a =
        ask(head + line + kCrLf + kCrLf + tr("Click [ Yes ] to overwrite the current record or,") + kCrLf +
                tr("Click [ No ] to save to a new record"),
            Buttons::YesNoCancel, Icon::Question);
    if (a == Answer::Yes)
        return overwrite();
    if (a == Answer::No)
        return saveAsNew();
    return op == Op::Save;
}

bool BookingEditor::reportResult(const StoreResult& result, const QString& what) {
    // A refusal has already been shown by the store.
    if (result.status != StoreResult::Status::FileFailed)
        return result.ok();
    m_state.prompter.tell(plainTitle(),
                          what + result.error.text + tr(" (error %1).").arg(result.error.number) + kCrLf +
                              tr("The booking is still in the editor."),
                          Icon::Exclamation);
    return false;
}

bool BookingEditor::saveAsNew() {
    m_times.takeTimes();
    if (!reportResult(m_store.saveNew(m_dates.bookingMonth()), tr("The booking could not be saved: ")))
        return false;
    m_state.showResultInTitle(tr("Record ") + m_state.record[Field::RegNo] + tr(" SAVED"));
    afterSave();
    return true;
}

// An update or delete goes to the month file that holds the booking, whichever month the boxes show.
QString BookingEditor::bookingFileMonth() const {
    return bookingOpen() ? box(Field::RegNo).trimmed().left(4) : m_dates.bookingMonth();
}

bool BookingEditor::overwrite() {
    m_times.takeTimes();
    const QString regNo = box(Field::RegNo).trimmed();
    if (!reportResult(m_store.update(bookingFileMonth(), regNo), tr("The booking could not be saved: ")))
        return false;
    m_state.showResultInTitle(tr("Record ") + m_state.record[Field::RegNo] + tr(" UPDATED"));
    afterSave();
    return true;
}

void BookingEditor::afterSave() {
    m_state.record.MarkRecordSaved();
    m_state.RecordChanged = false;
    m_state.TimesChanged = false;
    NewBookingPending = false;
    showRecord();
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
    m_state.RecordChanged = m_state.record.TestRecordChanged();
    if (NewBookingPending) {
        NewBookingPending = false;
        if (!saveAsNew()) {
            NewBookingPending = true;
            return;
        }
        m_state.prompter.tell(plainTitle(),
                              tr("New Booking made for ") + firstUpper() + u' ' + lastUpper() + tr(" in ") +
                                  m_dates.monthText() + u' ' + m_dates.yearText() + tr(" Ok"),
                              Icon::Information);
        return;
    }
    if (!bookingOpen())
        return;
    if (m_state.RecordChanged || m_state.TimesChanged)
        saveDecision(Op::Save);
}

void BookingEditor::cmdNEW() {
    if (readOnly())
        return;
    setHelpContext(m_state, DeskAction::NewBooking);
    // An unsaved new booking already on screen is dropped without a question.
    if (bookingOpen() && !saveDecision(Op::New))
        return;
    clearEditor();
    for (int i = 0; i < 5; ++i) {
        setRegNoBox(newBookingText());
        m_state.pause.wait(0.05);
        setRegNoBox(QString());
        m_state.pause.wait(0.05);
    }
    setRegNoBox(newBookingText());
    NewBookingPending = true;
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
            clearEditor();
        return;
    }
    const Answer a = ask(tr("This will DELETE this Booking for ") + firstUpper() + u' ' + lastUpper() + u' ' +
                             kCrLf + tr("Do you wish to Proceed? "),
                         Buttons::YesNoCancel, Icon::Question);
    if (a != Answer::Yes)
        return;
    const QString regNo = box(Field::RegNo).trimmed();
    if (!reportResult(m_store.deleteBooking(bookingFileMonth(), regNo),
                      tr("The booking could not be deleted: ")))
        return;
    m_state.showResultInTitle(tr("One Booking DELETED"));
    if (refreshList)
        refreshList();
}

void BookingEditor::clearEditor() {
    m_state.record.ClearRecord();
    NewBookingPending = false;
    showRecord();
}

// ---------------------------------------------------------------- arrival and departure

void BookingEditor::cmdIN() {
    if (!siteMarkAllowed(tr("Can't mark as ARRIVED: No booking has been created or saved!"), 3))
        return;
    // Marking in again starts a new visit, so an earlier departure goes.
    m_state.record[Field::TimeOnSite] = m_state.clock.now().toString(QStringLiteral("hh:mm"));
    m_state.record[Field::TimeOffSite] = QString::fromUtf16(kNoTimeMark);
    paintSiteLabels();
    writeSiteTimes(tr("The arrival"));
}

void BookingEditor::cmdOUT() {
    if (!siteMarkAllowed(tr("Can't mark as DEPARTED: No booking has been created or saved!"), 4))
        return;
    // Nobody leaves who has not arrived.
    if (m_state.record[Field::TimeOnSite].trimmed().size() < 5)
        return;
    m_state.record[Field::TimeOffSite] = m_state.clock.now().toString(QStringLiteral("hh:mm"));
    paintSiteLabels();
    writeSiteTimes(tr("The departure"));
}

bool BookingEditor::siteMarkAllowed(const QString& noBookingText, qsizetype lastNameBound) {
    if (readOnly())
        return false;
    setHelpContext(m_state, DeskAction::ArriveOrDepart);
    if (!bookingOpen()) {
        m_state.prompter.tell(plainTitle(), noBookingText, Icon::Exclamation);
        return false;
    }
    return box(Field::LastName).trimmed().size() >= lastNameBound ||
           box(Field::FirstName).trimmed().size() >= 2;
}

// The new time is on screen already; the desk's next name is typed into the search box.
void BookingEditor::writeSiteTimes(const QString& what) {
    m_view.focus = Focus::MainFind;
    if (const FileError error = UpdateDayStatus(m_state, box(Field::RegNo))) {
        m_state.prompter.tell(plainTitle(),
                              what + tr(" could not be written to today's status file: ") + error.text +
                                  tr(" (error %1).").arg(error.number),
                              Icon::Exclamation);
        // Show what the file still holds rather than a mark that was never stored.
        showSiteLabels();
    }
    if (refreshList)
        refreshList();
}

// ---------------------------------------------------------------- list rows

bool BookingEditor::refuseSort() {
    if (m_state.listMode != ListMode::OnSite)
        return false;
    m_state.prompter.tell(plainTitle(), tr("You can't sort this list in the IN/OUT Day-Status view    "),
                          Icon::Information);
    if (refreshList)
        refreshList();
    return true;
}

void BookingEditor::openRow(const QString& regNo) {
    if (regNo.trimmed().isEmpty())
        return;
    if (!readOnly()) {
        if (!NewBookingPending && bookingOpen()) {
            if (!saveDecision(Op::RowClick))
                return;
        } else if (NewBookingPending) {
            m_state.RecordChanged = m_state.record.TestRecordChanged();
            if (m_state.RecordChanged) {
                m_state.TimesChanged = false;
                const QString first = firstUpper();
                const QString last = lastUpper();
                if (first.size() + last.size() >= 5) {
                    const Answer a =
                        ask(tr("The NEW booking for ") + first + u' ' + last + tr(" has not been saved.") +
                                kCrLf + tr("Do you wish to save it? "),
                            Buttons::YesNoCancel, Icon::Question);
                    if (a == Answer::Cancel)
                        return;
                    if (a == Answer::No) {
                        NewBookingPending = false;
                        return;
                    }
                    NewBookingPending = false;
                    if (!saveAsNew()) {
                        NewBookingPending = true;
                        return;
                    }
                } else {
                    const Answer a = m_state.prompter.ask(
                        {plainTitle(),
                         tr("This new booking has not been saved: A Valid Name is required.") + kCrLf +
                             tr("Click [OK] to return to the record or [Cancel] to discard it"),
                         Buttons::OkCancel, Icon::Information});
                    if (a != Answer::Cancel)
                        return;
                }
            }
            NewBookingPending = false;
        }
    }
    if (!m_dates.testDate(m_state.prompter))
        return;
    if (!readBooking(regNo.trimmed()))
        return;
    m_state.record.MarkRecordSaved();
    m_state.RecordChanged = false;
    m_state.TimesChanged = false;
    showRecord();
}

bool BookingEditor::readBooking(const QString& regNo) {
    FileError error;
    if (readBookingLine(m_state.dataPath(), regNo, m_state.record, error))
        return true;
    // A month file that cannot be read stops the opening; a booking that is no longer in a readable file
    // leaves the record as it was, shown as saved.
    if (error) {
        m_state.prompter.tell(plainTitle(),
                              tr("The booking could not be opened: ") + error.text +
                                  tr(" (error %1).").arg(error.number),
                              Icon::Exclamation);
        return false;
    }
    return true;
}

// ---------------------------------------------------------------- closing

bool BookingEditor::closeRequested() {
    if (!m_state.SettingsRestartPending &&
        m_state.prompter.ask({plainTitle(), tr("This will close your current session of Porvane"),
                              Buttons::OkCancel, Icon::Information}) == Answer::Cancel)
        return false;
    if (readOnly())
        return true;
    m_state.RecordChanged = m_state.record.TestRecordChanged();
    if (!validityFault().isEmpty()) {
        // An invalid booking cannot be stored, so it is dropped.
        NewBookingPending = false;
        m_state.RecordChanged = false;
        m_state.TimesChanged = false;
        return true;
    }
    if (NewBookingPending) {
        NewBookingPending = false;
        const Answer a =
            m_state.prompter.ask({plainTitle(), tr("New booking not saved:  Save it before you close?"),
                                  Buttons::YesNoCancel, Icon::Question});
        if (a == Answer::Cancel) {
            NewBookingPending = true;
            return false;
        }
        if (a == Answer::Yes && !saveAsNew()) {
            NewBookingPending = true;
            return false;
        }
        return true;
    }
    if (bookingOpen())
        return saveDecision(Op::Close);
    return true;
}

// ---------------------------------------------------------------- showing the record

void BookingEditor::fillBoxes() {
    for (Field f : kBoxes)
        m_view.box[std::size_t(f)] = m_state.record[f];
    const QString& regNo = box(Field::RegNo);
    m_view.regNoBackground = regNo.trimmed().isEmpty() ? editor_colour::kEmpty : editor_colour::kFilled;
    m_view.readOnly = readOnly();
}

void BookingEditor::showRecord() {
    fillBoxes();
    showPassLabel();
    showPhotoLabel();
    showSiteLabels();
    showBookingMonth();
    m_times.setMonth(m_dates.calendarDate().year(), m_dates.calendarDate().month());
    m_times.showTimes();
}

void BookingEditor::recordWindowClosed() {
    if (m_state.RemovePassRequested) {
        if (bookingOpen() && !readOnly()) {
            overwrite();
        } else {
            // Nothing stored yet: the pass fields simply go.
            m_state.RemovePassRequested = false;
            for (Field f : {Field::PassStart, Field::PassEnd, Field::PassPeriod, Field::PassIssued})
                m_state.record[f].clear();
        }
        m_state.PassWindowChanged = true;
    }
    if (!m_state.PassWindowChanged)
        return;
    m_state.PassWindowChanged = false;
    fillBoxes();
    showPassLabel();
    showPhotoLabel();
    showSiteLabels();
}

void BookingEditor::showPassLabel() {
    const CurrentRecord& r = m_state.record;
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
    CurrentRecord& r = m_state.record;
    const bool onFile = !r[Field::RegNo].trimmed().isEmpty() &&
                        QFileInfo::exists(photoPath(m_state.dataPath(), r[Field::RegNo], r[Field::FirstName],
                                                    r[Field::LastName]));
    if (onFile) {
        m_view.PhotoOnFLa = {tr("Photo on-File"), editor_colour::kFilled, {}};
        r[Field::PhotoOnFile] = QStringLiteral("1");
    } else {
        m_view.PhotoOnFLa = {tr("NO PHOTO"), editor_colour::kNoPhoto, {}};
        r[Field::PhotoOnFile] = QStringLiteral("0");
    }
}

void BookingEditor::showSiteLabels() {
    CurrentRecord& r = m_state.record;
    std::pair<QString, QString> times;
    if (siteTimes && bookingOpen())
        times = siteTimes(r[Field::RegNo].trimmed());
    r[Field::TimeOnSite] = siteTimeText(times.first);
    r[Field::TimeOffSite] = siteTimeText(times.second);
    paintSiteLabels();
}

// The label of the visit's present state is highlighted, the other greyed.
void BookingEditor::paintSiteLabels() {
    const CurrentRecord& r = m_state.record;
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

void BookingEditor::showBookingMonth() {
    const QString regNo = m_state.record[Field::RegNo];
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
