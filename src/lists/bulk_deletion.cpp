#include "lists/bulk_deletion.h"

#include "lists/date_selection.h"
#include "store/digits.h"
#include "store/line_reader.h"
#include "store/windows1252.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

const QString kCrLf = u"\r\n"_s;

QString title() {
    return u"Porvane 90"_s;
}

} // namespace

BulkDeletion::BulkDeletion(AppState& state)
    : m_state(state) {}

QString BulkDeletion::allDays() {
    return tr("All Days");
}

QString BulkDeletion::allMonths() {
    return tr("All Months");
}

QStringList BulkDeletion::dayItems() {
    QStringList items = DateSelection::dayItems();
    items.front() = allDays(); // in place of the main window's "--"
    return items;
}

QStringList BulkDeletion::monthItems() {
    return QStringList{allMonths()} + DateSelection::monthItems();
}

QStringList BulkDeletion::yearItems() const {
    return DateSelection(m_state.clock.today().year()).yearItems();
}

QStringList BulkDeletion::kindItems() {
    QStringList items = RecordSearch::kindItems();
    items.replace(int(SearchKind::VisitingReportingTo), kindText(SearchKind::VisitingReportingTo));
    return items;
}

QString BulkDeletion::kindText(SearchKind kind) {
    return kind == SearchKind::VisitingReportingTo ? tr("REPORTING TO") : RecordSearch::kindText(kind);
}

std::optional<SearchKind> BulkDeletion::kindFromText(const QString& text) {
    if (text.trimmed() == kindText(SearchKind::VisitingReportingTo))
        return SearchKind::VisitingReportingTo;
    const auto kind = RecordSearch::kindFromText(text);
    if (kind == SearchKind::VisitingReportingTo)
        return std::nullopt; // the main window's name for it is not one of this box's entries
    return kind;
}

BulkDeletion::Captions BulkDeletion::captions(SearchKind kind) {
    switch (kind) {
    case SearchKind::AnyText:
        return {tr("Look for:"), tr("Text:")};
    case SearchKind::Name:
        return {tr("Find Visitor by:"), tr("Enter Name")};
    case SearchKind::Organisation:
    case SearchKind::HomeAddress:
        return {tr("Search all fields in:"), tr("Find:")};
    case SearchKind::CarRegistration:
        return {tr("Find whole or part of a:"), tr("Enter Number Plate:")};
    case SearchKind::VisitingReportingTo:
        return {tr("Find who a person is:"), tr("Find:")};
    case SearchKind::Department:
    case SearchKind::Category:
    case SearchKind::BuildingLocation:
    case SearchKind::ReferenceNo:
        break;
    }
    return {tr("Find a:"), tr("Find:")};
}

bool BulkDeletion::switchedOff() const {
    return m_state.settings.ReadOnlyMode() || m_state.settings.ckDisMultiD == u"1";
}

std::optional<BulkDeletion::Scope> BulkDeletion::checkDate(BulkSelection& selection) {
    Prompter& prompter = m_state.prompter;
    const QString day = selection.day.trimmed();
    const bool wholeMonth = day == allDays();
    const int dayNumber = day.toInt();
    if (!wholeMonth && (!isDigits(day) || day.size() > 2 || dayNumber < 1 || dayNumber > 31)) {
        prompter.tell(title(), tr("ATTENTION: The DAY entered is not valid - Try selecting again"));
        return std::nullopt;
    }

    DateSelection dates(m_state.clock.today().year());
    dates.setYearText(selection.year.trimmed());
    const bool wholeYear = selection.month.trimmed() == allMonths();
    if (wholeYear) {
        if (!dates.testYear(prompter))
            return std::nullopt;
    } else {
        dates.setMonthText(selection.month.trimmed());
        dates.setDayText(wholeMonth ? DateSelection::noDay() : day);
        if (!dates.testDate(prompter))
            return std::nullopt;
        if (!wholeMonth)
            selection.day = dates.dayText();
    }
    // A year the date test let through may still not be a plain four-digit year ("2024x").
    if (!isDigits(dates.yearText()) || dates.yearText().size() != 4) {
        prompter.tell(title(), tr("Porvane Can't Determine the Date you wish to Delete - Select again!"));
        return std::nullopt;
    }
    if (wholeYear)
        return Scope::Year;
    if (!wholeMonth)
        return Scope::Day;
    return selection.findText.trimmed().isEmpty() ? Scope::Month : Scope::MonthWithText;
}

bool BulkDeletion::confirmed(const QString& question, const QString& count) {
    // Enter must never delete: the safe answer is the default.
    return m_state.prompter.ask({title(), question + kCrLf + count + kCrLf + tr("Do you wish to proceed?"),
                                 Buttons::YesNo, Icon::Question, Answer::No}) == Answer::Yes;
}

BulkDeletion::Outcome BulkDeletion::run(BulkSelection& selection) {
    if (switchedOff())
        return {};
    const std::optional<Scope> scope = checkDate(selection);
    if (!scope)
        return {};

    Outcome out = remove(*scope, selection);
    if (out.finished())
        m_state.showResultInTitle(out.resultText);
    return out;
}

namespace {

using Drops = std::function<bool(const RecordLine&)>;

// What a deletion would drop, counted without the lock: the question only needs to be right at the moment it
// is asked; the deletion itself works from a fresh read under the lock.
struct Tally {
    int bookings = 0;
    int withOtherDays = 0; // of those, the ones booked on other days of the month too (day deletion)
    FileError error;
};

void tally(LineReader& reader, const Drops& drops, int day, Tally& t) {
    QByteArrayView bytes;
    while (reader.next(bytes)) {
        if (bytes.trimmed().isEmpty())
            continue;
        const RecordLine line(bytes);
        if (!drops(line))
            continue;
        ++t.bookings;
        for (int other = 1; day > 0 && other <= 31; ++other)
            if (other != day && !line.bookedSlot(other).isEmpty()) {
                ++t.withOtherDays;
                break;
            }
    }
    t.error = reader.error();
}

} // namespace

QString BulkDeletion::countLine(Scope scope, int count, int withOtherDays) {
    if (scope != Scope::Day)
        return count == 1 ? tr("That removes 1 booking.") : tr("That removes %1 bookings.").arg(count);
    if (count > 1 && withOtherDays == 0)
        return tr("That removes %1 whole bookings; none of them has a visit on another day.").arg(count);
    if (count > 1)
        return tr("That removes %1 whole bookings, with all their days: %2 of them also have visits on other "
                  "days.")
            .arg(count)
            .arg(withOtherDays);
    return withOtherDays ? tr("That removes 1 whole booking, with its visits on other days too.")
                         : tr("That removes 1 whole booking; it has no visit on another day.");
}

BulkDeletion::Outcome BulkDeletion::remove(Scope scope, const BulkSelection& selection) {
    const QString year = selection.year.trimmed();
    const QString month = selection.month.trimmed();
    const QString monthYear = month + u' ' + year;
    const QString yymm = year.right(2) + DateSelection::MonthNumber(month);
    const int day = scope == Scope::Day ? selection.day.trimmed().toInt() : 0;
    const QString date = tr("%1 of %2").arg(selection.day.trimmed(), monthYear);

    QList<LineFileName> files{LineFileName::month(yymm)};
    Drops drops = [](const RecordLine&) {
        return true;
    };
    QString question;
    QString noneText = tr("No Records Deleted for %1").arg(monthYear);
    switch (scope) {
    case Scope::Year:
        files = yearFiles(year);
        question = tr("This will DELETE ALL BOOKINGS for the Entire YEAR of %1.").arg(year);
        noneText = tr("No Records Deleted for the year %1").arg(year);
        break;
    case Scope::Month:
        question = tr("DELETE ALL BOOKINGS for the Entire MONTH of %1.").arg(monthYear);
        break;
    case Scope::MonthWithText: {
        const SearchKind kind = kindFromText(selection.kind).value_or(SearchKind::AnyText);
        const QString text = selection.findText.trimmed();
        if (!fitsWindows1252(text)) {
            // Stored as "?", such a character would match every "?" in the month.
            m_state.prompter.tell(title(), tr("The text [ %1 ] has a character that the booking files cannot "
                                              "hold, so no booking can contain it. Nothing was deleted.")
                                               .arg(text));
            return {Outcome::Status::Refused, scope, 0, {}, {}};
        }
        drops = [match = SearchMatch(kind, text)](const RecordLine& line) {
            return match.matches(line);
        };
        question = tr("DELETE ALL BOOKINGS for the Month of %1 with:").arg(monthYear) + kCrLf +
                   (kind == SearchKind::AnyText ? tr("[ %1 ] found in ANY field").arg(text)
                                                : tr("[ %1 ] in the %2 field").arg(text, kindText(kind)));
        break;
    }
    case Scope::Day:
        // A booking with a time on that day goes whole, with its other days and its pass.
        drops = [day](const RecordLine& line) {
            return !line.bookedSlot(day).isEmpty();
        };
        question = tr("DELETE ALL Bookings made on the %1.").arg(date);
        noneText = tr("No Records Deleted for the %1").arg(date);
        break;
    }

    Tally t;
    for (const LineFileName& file : files) {
        tally(*m_state.files().read(file, LineNarrowing::ofBookedDay(day)), drops, day, t);
        if (t.error)
            return {Outcome::Status::Failed, scope, 0, {}, t.error};
    }
    if (t.bookings == 0)
        return {Outcome::Status::NothingMatched, scope, 0, noneText, {}};
    if (!confirmed(question, countLine(scope, t.bookings, t.withOtherDays)))
        return {Outcome::Status::Declined, scope, 0, {}, {}};
    switch (scope) {
    case Scope::Year:
        return deleteYear(year);
    case Scope::Month:
        return deleteMonth(yymm, monthYear);
    case Scope::MonthWithText:
        return deleteLines(scope, yymm, 0, monthYear, drops);
    case Scope::Day:
        return deleteLines(scope, yymm, day, date, drops);
    }
    return {};
}

QList<LineFileName> BulkDeletion::yearFiles(const QString& year) const {
    QList<LineFileName> months;
    for (const QString& key : m_state.files().keys(LineFileName::Kind::Month))
        if (key.startsWith(year.right(2)))
            months.append(LineFileName::month(key));
    return months;
}

BulkDeletion::Outcome BulkDeletion::deleteYear(const QString& year) {
    Outcome out{Outcome::Status::Failed, Scope::Year, 0, {}, {}};
    qsizetype removed = 0;
    out.error = m_state.files().change([&](LineFileChanges& changes) {
        const QList<LineFileName> months = yearFiles(year);
        removed = months.size();
        return changes.removeAll(months);
    });
    if (out.error)
        return out;
    out.status = Outcome::Status::Deleted;
    out.count = int(removed);
    out.resultText = tr("All Bookings for the year %1 Deleted").arg(year);
    return out;
}

BulkDeletion::Outcome BulkDeletion::deleteMonth(const QString& yymm, const QString& monthYear) {
    Outcome out{Outcome::Status::Failed, Scope::Month, 0, {}, {}};
    // The file stays, empty: the month's lists then show no rows rather than a missing file.
    if ((out.error = m_state.files().change([&](LineFileChanges& changes) {
            return changes.replace(LineFileName::month(yymm), [](const PieceWriter&) { return FileError(); });
        })))
        return out;
    out.status = Outcome::Status::Deleted;
    out.resultText = tr("All Bookings for %1 Deleted").arg(monthYear);
    return out;
}

BulkDeletion::Outcome BulkDeletion::deleteLines(Scope scope, const QString& yymm, int day,
                                                const QString& dateText,
                                                const std::function<bool(const RecordLine&)>& drops) {
    Outcome out{Outcome::Status::Failed, scope, 0, {}, {}};
    const LineFileName month = LineFileName::month(yymm);
    const LineNarrowing narrowing = LineNarrowing::ofBookedDay(day);
    const LineEdit keep = [&drops](QByteArrayView stored, QByteArray&) {
        return drops(RecordLine(stored)); // dropped: nothing takes its place
    };
    out.error = m_state.files().change([&](LineFileChanges& changes) {
        // Counted first, so that a month where nothing matches is not written at all.
        const std::unique_ptr<LineReader> reader = changes.read(month, narrowing);
        QByteArrayView bytes;
        while (reader->next(bytes))
            out.count += drops(RecordLine(bytes)) ? 1 : 0;
        if (reader->error() || out.count == 0)
            return reader->error();
        return changes.rewrite(month, narrowing, keep);
    });
    if (out.error)
        return out;

    const bool theDay = scope == Scope::Day;
    if (out.count == 0) {
        out.status = Outcome::Status::NothingMatched;
        out.resultText =
            (theDay ? tr("No Records Deleted for the ") : tr("No Records Deleted for ")) + dateText;
        return out;
    }
    out.status = Outcome::Status::Deleted;
    if (out.count == 1)
        out.resultText = theDay ? tr("One Record Deleted for the ") : tr("One Record Deleted for ");
    else
        out.resultText = QString::number(out.count) +
                         (theDay ? tr(" Records Deleted for the ") : tr(" Records Deleted for "));
    out.resultText += dateText;
    return out;
}

} // namespace porvane
