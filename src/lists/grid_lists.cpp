#include "lists/grid_lists.h"

#include "lists/day_list.h"
#include "lists/month_list.h"
#include "lists/on_site_list.h"
#include "lists/record_search.h"
#include "store/digits.h"
#include "store/line_files.h"

namespace porvane {

namespace {

// Error numbers are shown with this offset, as the desk has always shown them.
constexpr int kShownErrorOffset = 2110;

QString plainTitle() {
    return QStringLiteral("Porvane 90");
}

QDate monthOf(const DateSelection& dates) {
    const QString number = dates.monthNumber();
    if (number.isEmpty())
        return {};
    return QDate(leadingNumber(dates.yearText()), number.toInt(), 1);
}

} // namespace

GridLists::GridLists(AppState& state)
    : m_state(state) {}

void GridLists::show(ListTable table) {
    m_table = std::move(table);
    if (tableChanged)
        tableChanged(m_table);
}

void GridLists::titleError(int number, const QString& text) {
    m_state.showResultInTitle(text.arg(number + kShownErrorOffset));
}

GridLists::Outcome GridLists::noBookings() {
    m_state.prompter.tell(plainTitle(), tr("No Visitor Bookings for this DATE have been found"),
                          Icon::Exclamation);
    return Outcome::Message;
}

GridLists::Outcome GridLists::selectDayRecord(DateSelection& dates) {
    if (dates.dayText().trimmed() == DateSelection::noDay()) {
        m_state.prompter.tell(plainTitle(), tr("Can't list Day Bookings:  No Day has been selected "),
                              Icon::Exclamation);
        return Outcome::Refused;
    }
    m_view.inOutEnabled = false;
    if (!dates.testDate(m_state.prompter))
        return Outcome::Refused;
    m_state.listMode = ListMode::Day;
    m_view.locked = true;
    m_listed = dates.selectedDate();
    BuiltList built = build();
    show(std::move(built.table));
    if (built.error.number == FileError::FileNotFound)
        return noBookings();
    if (built.error) {
        titleError(built.error.number, tr("Error: %1 in Select Day Record"));
        return Outcome::Failed;
    }
    m_state.ListedCount = m_table.listedCount();
    return Outcome::Listed;
}

GridLists::Outcome GridLists::selectMonthRecord(DateSelection& dates) {
    m_view.dayBoxGreyed = true;
    if (!dates.testDate(m_state.prompter))
        return Outcome::Refused;
    m_view.inOutEnabled = false;
    m_state.listMode = ListMode::Month;
    m_view.locked = true;
    m_listed = monthOf(dates);
    BuiltList built = build();
    show(std::move(built.table));
    if (built.error.number == FileError::FileNotFound)
        return noBookings();
    if (built.error) {
        titleError(built.error.number, tr("Error: %1 in Select Month Record"));
        return Outcome::Failed;
    }
    m_state.ListedCount = m_table.listedCount();
    return Outcome::Listed;
}

SearchMonths GridLists::monthOfBoxes(const DateSelection& dates) {
    return SearchMonths::of(monthOf(dates));
}

GridLists::Outcome GridLists::startSearch(const SearchRequest& request) {
    if (request.findText.trimmed().isEmpty()) {
        m_state.prompter.tell(plainTitle(), tr("Can't Search!  Nothing Entered in FIND Box to look for "),
                              Icon::Exclamation);
        return Outcome::Refused;
    }
    if (const QString refusal = RecordSearch::findTextRefusal(request.findText); !refusal.isEmpty()) {
        m_state.prompter.tell(plainTitle(), refusal, Icon::Exclamation);
        return Outcome::Refused;
    }
    return runSearch(request);
}

GridLists::Outcome GridLists::runSearch(const SearchRequest& request) {
    m_view.inOutEnabled = false;
    m_state.listMode = ListMode::Search;
    m_view.locked = true;
    m_search = request;
    BuiltList built = build();
    show(std::move(built.table));
    if (built.error.number == FileError::FileNotFound) {
        m_state.prompter.tell(QStringLiteral("Porvane 90 6725"),
                              tr("No Visitor records can be found for the DATE Specified"),
                              Icon::Exclamation);
        return Outcome::Message;
    }
    if (built.error) {
        m_state.prompter.tell(QStringLiteral("Porvane 90 6727"),
                              tr("No Search items have been found for this Date "), Icon::Exclamation);
        return Outcome::Message;
    }
    if (m_table.listedCount() == 0) {
        const SearchMonths& months = request.months;
        const QString searched = months.count() > 1 ? tr("%1 to %2")
                                                          .arg(DateSelection::monthYearText(months.first),
                                                               DateSelection::monthYearText(months.last))
                                                    : DateSelection::monthYearText(months.first);
        m_state.prompter.tell(QStringLiteral("Porvane 90 6726"),
                              tr("No items have can be found for %1").arg(searched), Icon::Exclamation);
        return Outcome::Message;
    }
    m_state.ListedCount = m_table.listedCount();
    return Outcome::Listed;
}

bool GridLists::writeStatusList() {
    const FileError error = OnSiteList::writeStatusList(m_state.files(), m_state.clock.today());
    if (error)
        titleError(error.number, tr("Error: %1 Write List"));
    return !error;
}

GridLists::Outcome GridLists::showDayStatus() {
    m_view.inOutEnabled = true;
    m_view.locked = m_state.settings.ReadOnlyMode();
    const bool rebuilt = writeStatusList();
    m_state.listMode = ListMode::OnSite;
    m_view.dayBoxGreyed = false;
    m_listed = m_state.clock.today();
    BuiltList built = build();
    show(std::move(built.table));
    if (built.error.number == FileError::FileNotFound)
        return noBookings();
    if (built.error) {
        titleError(built.error.number, tr("Error: %1 in Day List"));
        return Outcome::Failed;
    }
    m_state.ListedCount = m_table.listedCount();
    return rebuilt ? Outcome::Listed : Outcome::Failed;
}

BuiltList GridLists::build() {
    if (aboutToRead)
        aboutToRead();
    switch (m_state.listMode) {
    case ListMode::None:
        break;
    case ListMode::Day:
        return buildDayList(m_state.files(), m_listed, rowRead);
    case ListMode::Month:
        return buildMonthList(m_state.files(), m_listed, m_state.clock.today(), rowRead);
    case ListMode::Search: {
        const SearchKind kind = RecordSearch::kindFromText(m_search.kindText).value_or(SearchKind::AnyText);
        return RecordSearch::run(m_state.files(), m_search.months, kind, m_search.findText);
    }
    case ListMode::OnSite:
        return OnSiteList::build(m_state.files(), m_listed, rowRead);
    }
    return {};
}

QStringList GridLists::shownFiles() const {
    const auto monthFile = [](const QDate& month) {
        return LineFileName::month(month).key;
    };
    switch (m_state.listMode) {
    case ListMode::None:
        break;
    case ListMode::Day:
    case ListMode::Month:
        return {monthFile(m_listed)};
    case ListMode::Search: {
        QStringList files;
        for (QDate month = m_search.months.first; month.isValid() && month <= m_search.months.last;
             month = month.addMonths(1))
            files << monthFile(month);
        return files;
    }
    case ListMode::OnSite:
        return {LineFileName::dayStatus(m_listed).key};
    }
    return {};
}

void GridLists::relist() {
    if (m_state.listMode == ListMode::None)
        return;
    BuiltList built = build();
    if (built.error && built.error.number != FileError::FileNotFound)
        return;
    show(std::move(built.table));
    m_state.ListedCount = m_table.listedCount();
}

GridLists::Outcome GridLists::refresh(DateSelection& dates, const SearchRequest& search) {
    switch (m_state.listMode) {
    case ListMode::None:
    case ListMode::Month:
        return selectMonthRecord(dates);
    case ListMode::Day:
        return selectDayRecord(dates);
    case ListMode::Search:
        return runSearch(search);
    case ListMode::OnSite:
        return showDayStatus();
    }
    return Outcome::Refused;
}

} // namespace porvane
