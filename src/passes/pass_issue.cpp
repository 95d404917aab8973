#include "passes/pass_issue.h"

#include "store/digits.h"
#include "store/photo_paths.h"
#include "store/record_store.h"

#include <QFileInfo>
#include <QLocale>

namespace porvane {

namespace {

const QString kTitle = QStringLiteral("Porvane 90");
const QString kCrLf = QStringLiteral("\r\n");

} // namespace

QString passPeriodWords(const QString& code) {
    if (code.size() < 2)
        return QCoreApplication::translate("PassIssue", "[ Unknown ]");
    const QChar unit = code.at(1).toUpper();
    // The count is the first character as written; a non-digit counts as 0, so it reads singular.
    const bool plural = leadingNumber(QStringView(code).left(1)) >= 2;
    const QString first = code.left(1);
    if (unit == u'D')
        return first + (plural ? QStringLiteral(" Days") : QStringLiteral(" Day"));
    if (unit == u'W')
        return first + (plural ? QStringLiteral(" Weeks") : QStringLiteral(" Week"));
    if (unit == u'M')
        return first + (plural ? QStringLiteral(" Months") : QStringLiteral(" Month"));
    return QCoreApplication::translate("PassIssue", "[ Unknown ]");
}

PassIssue::PassIssue(AppState& state)
    : m_state(state) {}

QString PassIssue::passDay(const QDate& d) {
    // Passes read the same whatever the desk's language.
    return QLocale(QLocale::English).toString(d, QStringLiteral("dd MMM yyyy")).toUpper();
}

QString PassIssue::placeholderImage() const {
    return m_state.AppPath + QStringLiteral("_PSF/IRender/currentfile.bmp");
}

QString PassIssue::logoImage() const {
    return m_state.AppPath + QStringLiteral("_PSF/IRender/OurPassLogo.bmp");
}

QString PassIssue::visitorPhoto() const {
    const CurrentRecord& r = m_state.record;
    return photoPath(m_state.dataPath(), r[Field::RegNo], r[Field::FirstName], r[Field::LastName]);
}

void PassIssue::warn(const QString& text) {
    m_state.prompter.ask({kTitle, text, Buttons::Ok, Icon::Exclamation});
}

void PassIssue::open() {
    const CurrentRecord& r = m_state.record;
    const Settings& s = m_state.settings;
    const QDateTime now = m_state.clock.now();
    PassWorking& p = m_working;

    m_view = View();
    // A read-only desk neither issues nor removes passes: both are stored in the booking.
    m_printAllowed = s.ckDisPassPrn != u"1" && !s.ReadOnlyMode();

    p = PassWorking();
    p.PassStartDate = dateText(now.date());
    p.PassEndDate = p.PassStartDate;
    p.PassIssueStamp = dateText(now.date()) + QStringLiteral(" at ") + now.toString(QStringLiteral("hh:mm"));
    computeValidity();
    setStartBox(m_view.PassTodayTB);

    m_view.PassTimeTB = p.PassIssueStamp;
    m_view.PassNameTB = r[Field::FirstName] + u' ' + r[Field::LastName];
    m_view.PassRegOPTB = QStringLiteral("No. ") + r[Field::RegNo];
    m_view.PassRegNoTB = r[Field::RegNo];
    m_view.PassOrganTB = r[Field::Organisation];
    m_view.PassDeptTB = r[Field::Department];
    m_view.FirmNameTB = s.SiteName.toUpper();

    followPhotoFile();
    m_view.LogoImage = s.ckEnbl_PrnLogo == u"1" ? logoImage() : QString();
    m_view.laBC = u'*' + r[Field::RegNo] + u'*';
    m_view.laBCVisible = s.ckEnbl_BarOP == u"1";

    m_removalRequested = false;
    m_view.removeEnabled = !s.ReadOnlyMode() && !r[Field::PassIssued].trimmed().isEmpty();
}

void PassIssue::choosePassNumber(const QString& text) {
    m_view.PassNumberCB = text;
    computeValidity();
}

void PassIssue::choosePassPeriod(const QString& text) {
    m_view.PassPeriodCB = text;
    computeValidity();
}

bool PassIssue::choose(const QString& number, const QString& period) {
    m_view.PassNumberCB = number;
    m_view.PassPeriodCB = period;
    return computeValidity();
}

void PassIssue::setStartBox(const QString& text) {
    m_view.PassTodayTB = text;
    m_working.PassStartDate = text == u"Today" ? dateText(m_state.clock.today()) : text;
    m_view.PassDateTB = m_working.PassStartDate;
}

QDate PassIssue::startDate() const {
    if (m_view.PassTodayTB == u"Today")
        return m_state.clock.today();
    return QDate::fromString(m_view.PassTodayTB, QStringLiteral("dd-MM-yyyy"));
}

QDate PassIssue::addIntervals(const QDate& start) const {
    const PassWorking& p = m_working;
    if (p.PassInterval == u"ww")
        return start.addDays(7 * qint64(p.PassCount));
    if (p.PassInterval == u"m")
        return start.addMonths(p.PassCount); // clamps to the last day of a shorter month
    return start.addDays(p.PassCount);
}

bool PassIssue::computeValidity() {
    static const QStringList counts = {QStringLiteral("ONE"),   QStringLiteral("TWO"),
                                       QStringLiteral("THREE"), QStringLiteral("FOUR"),
                                       QStringLiteral("FIVE"),  QStringLiteral("SIX")};
    PassWorking& p = m_working;
    const QString number = m_view.PassNumberCB.trimmed();
    const QString period = m_view.PassPeriodCB.trimmed();
    QString interval;
    if (period == u"Day")
        interval = QStringLiteral("d");
    else if (period == u"Week")
        interval = QStringLiteral("ww");
    else if (period == u"Month")
        interval = QStringLiteral("m");
    else {
        warn(tr("ATTENTION: No VALID Date selected - Try selecting again"));
        return false;
    }
    if (const qsizetype i = counts.indexOf(number); i >= 0)
        p.PassCount = int(i) + 1;
    p.PassCount = std::clamp(p.PassCount, 1, 6);
    p.PassInterval = interval;

    const bool dayPass = p.PassCount == 1 && interval == u"d";
    if (dayPass)
        setStartBox(QStringLiteral("Today")); // a one-day pass is always for today
    if (p.PassInterval.isEmpty())
        p.PassInterval = QStringLiteral("d");

    const QDate start = startDate();
    if (!start.isValid() || start < m_state.clock.today()) {
        showInvalid();
        return false;
    }
    const QDate end = addIntervals(start);
    if (dayPass) {
        p.PassValidText = QStringLiteral("DAY PASS  ") + passDay(m_state.clock.today());
        m_view.laDayNotice = tr("PRINTING PASS ONLY VALID TODAY");
    } else {
        p.PassValidText = QStringLiteral("Valid Until:  ") + passDay(end);
        m_view.laDayNotice = tr("PRINTING PASS");
    }
    m_view.PASSValidTB = p.PassValidText;
    m_view.printEnabled = m_printAllowed;
    p.PassEndDate = dateText(end);
    p.PassPeriodCode = QString::number(p.PassCount) + period.left(1);
    return true;
}

bool PassIssue::pickCalendarDay(const QDate& day) {
    setStartBox(dateText(day));
    m_view.calendarShown = false;
    // Compared as yymmdd numbers built from the texts.
    const QString today = m_state.clock.today().toString(QStringLiteral("yyMMdd"));
    const QString picked =
        m_view.PassTodayTB.mid(8, 2) + m_view.PassTodayTB.mid(3, 2) + m_view.PassTodayTB.left(2);
    if (picked.toInt() < today.toInt()) {
        warn(tr("You Cannot Issue a Pass DATED BEFORE Today"));
        showInvalid();
        return false;
    }
    return computeValidity();
}

bool PassIssue::toggleCalendar() {
    if (m_view.PassNumberCB.trimmed() + m_view.PassPeriodCB.trimmed() == u"ONEDay") {
        warn(tr("You can only Issue/Print a Day Pass for TODAY"));
        m_view.calendarShown = false;
        return false;
    }
    m_view.calendarShown = !m_view.calendarShown;
    return true;
}

void PassIssue::showInvalid() {
    // Nothing is computed on a start before today, so nothing can be printed from it either.
    m_view.PASSValidTB = QStringLiteral("I N V A L I D");
    m_view.printEnabled = false;
}

void PassIssue::followPhotoFile() {
    // The booking's own photo file decides, whoever's photo was captured, attached or deleted meanwhile.
    const bool own = QFileInfo::exists(visitorPhoto());
    m_view.PassPortIma = own ? visitorPhoto() : placeholderImage();
    m_working.PassPhotoShown = own;
    const QString onFile = own ? QStringLiteral("1") : QStringLiteral("0");
    if (m_state.record[Field::PhotoOnFile] != onFile && (own || m_state.record[Field::PhotoOnFile] == u"1")) {
        m_state.record[Field::PhotoOnFile] = onFile;
    }
}

bool PassIssue::confirmClose() {
    if (!m_removalRequested)
        return true;
    const CurrentRecord& r = m_state.record;
    const QString text =
        tr("This will REMOVE the pass record for %1 %2").arg(r[Field::FirstName], r[Field::LastName]) +
        kCrLf + kCrLf + tr("Start Date: %1   Pass Ends: %2").arg(r[Field::PassStart], r[Field::PassEnd]) +
        kCrLf +
        tr("Pass Issued: %1 for %2").arg(r[Field::PassIssued], passPeriodWords(r[Field::PassPeriod])) +
        kCrLf + r[Field::Organisation] + QStringLiteral("  [ ") + r[Field::RegNo] + QStringLiteral(" ]") +
        kCrLf + kCrLf + tr("Do you wish to proceed ?");
    if (m_state.prompter.ask({kTitle, text, Buttons::YesNoCancel, Icon::Question}) == Answer::Yes)
        return true;
    m_removalRequested = false;
    return false;
}

PassContent PassIssue::content() const {
    const CurrentRecord& r = m_state.record;
    const PassWorking& p = m_working;
    PassContent c;
    c.firmName = m_state.settings.SiteName.toUpper();
    c.name = r[Field::FirstName] + u' ' + r[Field::LastName];
    c.regNo = r[Field::RegNo];
    c.regNoLine = QStringLiteral("No. ") + r[Field::RegNo];
    c.organisation = r[Field::Organisation];
    c.department = r[Field::Department];
    // The name line always holds at least the blank between the names, so a pass for blank names still
    // carries its validity.
    if (!c.name.isEmpty()) {
        const QDateTime now = m_state.clock.now();
        c.validText = p.PassValidText;
        c.date = p.PassStartDate;
        c.time = dateText(now.date()) + QStringLiteral(" at ") + now.toString(QStringLiteral("hh:mm"));
    }
    c.photoFile = p.PassPhotoShown ? visitorPhoto() : placeholderImage();
    c.logoFile = m_state.settings.ckEnbl_PrnLogo == u"1" ? logoImage() : QString();
    c.barCode = m_state.settings.ckEnbl_BarOP == u"1";
    return c;
}

PassIssue::PrintResult PassIssue::print(const Render& render, const StoreRecord& store, QString* error) {
    if (!m_printAllowed || !m_view.printEnabled)
        return PrintResult::Disabled;
    followPhotoFile();
    if (!m_working.PassPhotoShown &&
        m_state.prompter.ask({kTitle, tr("No Photo Found:  Do you wish to Print Without Photo ? "),
                              Buttons::YesNo, Icon::Exclamation}) != Answer::Yes)
        return PrintResult::Declined;

    CurrentRecord& r = m_state.record;
    PassWorking& p = m_working;
    const CurrentRecord before = r;
    r[Field::PassStart] = p.PassStartDate;
    r[Field::PassEnd] = p.PassEndDate;
    r[Field::PassPeriod] = p.PassPeriodCode;
    r[Field::PassIssued] = p.PassIssueStamp;

    m_state.pause.wait(2);
    if (p.PassCount < 1)
        p.PassCount = 1;
    const QString start =
        m_view.PassTodayTB == u"Today" ? dateText(m_state.clock.today()) : m_view.PassTodayTB;
    r.passPrintedNote =
        start + QStringLiteral("  ") + QString::number(p.PassCount) + u' ' + m_view.PassPeriodCB;

    m_state.pause.wait(0.1);
    const QString failure = render(content());
    if (!failure.isEmpty()) {
        // Only a printed pass counts as issued.
        r = before;
        if (error)
            *error = failure;
        return PrintResult::NotPrinted;
    }
    if (const FileError e = store()) {
        if (error)
            *error = e.text;
        return PrintResult::NotStored;
    }
    return PrintResult::Printed;
}

std::function<FileError()> updateBookingInStore(AppState& state) {
    return [&state]() -> FileError {
        const QString regNo = state.record[Field::RegNo].trimmed();
        return recordStoreOf(state).UpdatePass(state.record, regNo.left(4), regNo).error;
    };
}

} // namespace porvane
