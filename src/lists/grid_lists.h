#pragma once

#include "app/app_state.h"
#include "lists/date_selection.h"
#include "lists/list_table.h"
#include "lists/record_search.h"

#include <QCoreApplication>
#include <functional>

namespace porvane {

// The lists of the main window's grid: builds the day, month, search and on-site lists from the values the
// window holds (its date boxes, search kind and find text), shows their messages, keeps ListMode and
// ListedCount, and rebuilds whichever list is shown after a change. porvane-admin runs the same calls.
class GridLists {
    Q_DECLARE_TR_FUNCTIONS(GridLists)

public:
    enum class Outcome {
        Listed,  // the table was built
        Refused, // a message stopped it before anything was built; the grid is as it was
        Message, // the list was laid out but a message tells why it is empty
        Failed,  // an error shown in the main window's title
    };

    // What the window's controls around the grid show.
    struct View {
        bool inOutEnabled = false; // cmdIN, cmdOUT
        bool dayBoxGreyed = false; // CBGetDay's text grey while the month list is shown
        bool locked = true;        // the grid's cells cannot be edited
    };

    explicit GridLists(AppState& state);

    const ListTable& table() const { return m_table; }
    const View& view() const { return m_view; }
    // Called whenever the table changes; the window hands it to StatGrid's model.
    std::function<void(const ListTable&)> tableChanged;
    // Called with each row of the day, month and on-site lists as their file is read, before the table is
    // shown: porvane-admin writes them out at once.
    RowListener rowRead;

    // "Select Day Record": the day chosen in the date boxes.
    Outcome selectDayRecord(DateSelection& dates);
    // "Select Month Record": the month of the date boxes.
    Outcome selectMonthRecord(DateSelection& dates);
    // What the find controls hold: the kind (CBListBy), the find text (MainFindTB) and the months to read.
    struct SearchRequest {
        SearchMonths months;
        QString kindText;
        QString findText;
    };
    // The month of the month and year boxes; invalid when they name none.
    static SearchMonths monthOfBoxes(const DateSelection& dates);
    // cmdMFind or Enter in MainFindTB: refuses an empty find text, then searches.
    Outcome startSearch(const SearchRequest& request);
    // The search itself, in the months asked for.
    Outcome runSearch(const SearchRequest& request);
    // The months the search shown read.
    const SearchMonths& searchedMonths() const { return m_search.months; }
    // cmdDayList: rebuilds today's status file ("Write List"), then lists it ("Day List").
    Outcome showDayStatus();
    // Rebuilds today's status file; false when it failed (shown in the title).
    bool writeStatusList();

    // The list refresh after saves, deletions, arrivals and departures: rebuilds the list ListMode names.
    Outcome refresh(DateSelection& dates, const SearchRequest& search);

    // Called before every list reads its files, so that what changed until then is known to be in it.
    std::function<void()> aboutToRead;
    // The files the list shown reads (month "yymm", day status "yymmdd"): the day's or the month's month
    // file, the months searched, or today's status file for the on-site list. The on-site list is rebuilt
    // from the months only when the operator asks for it, since that writes the status file.
    QStringList shownFiles() const;
    // Another desk changed a file the list reads: the list is read again as it was asked for, whatever the
    // date boxes and find controls hold now, without a message, a title or a write. On an error other than a
    // missing file the list stays as it was.
    void relist();

private:
    // Reads the list ListMode names, as it was asked for.
    BuiltList build();
    void show(ListTable table);
    void titleError(int number, const QString& where);
    Outcome noBookings();

    AppState& m_state;
    ListTable m_table;
    View m_view;
    QDate m_listed; // the day of the day and on-site lists, the month of the month list
    SearchRequest m_search;
};

} // namespace porvane
