#pragma once

#include "app/app_state.h"
#include "lists/date_selection.h"
#include "lists/list_table.h"
#include "lists/record_search.h"

#include <QCoreApplication>
#include <QDate>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QTime>

namespace porvane {

// Prints the list the grid holds: the site's name and a title naming the list and its date on every page,
// the header row repeated on every page, the listed rows (never the empty ones after them), and the footer
// with page number, page count and the date of printing. A4 landscape at 90 %, in a smaller font when the
// columns need it. No cell is ever cut short: names and organisations wrap within their row, and numbers,
// dates, telephone numbers and car registrations always stand whole on one line. The desk hands in a
// QPrinter, tests and porvane-admin a QPdfWriter.
class ListPrinting {
    Q_DECLARE_TR_FUNCTIONS(ListPrinting)

public:
    // The title after the site's name, by ListMode; the month as the box has its first letter and the rest in
    // lower case. A search names the months it read, when they are given.
    static QString title(ListMode mode, const QString& siteName, const DateSelection& dates, const QTime& now,
                         const SearchMonths& searched = {});
    // "Porvane 90     Page &P of &N    Printed: &D" with the page, the count and the date filled in.
    static QString footer(int page, int pageCount, const QDate& printed);
    // The widest piece of a text between the places where a printed line may break (blanks, hyphens): how
    // narrow a box may be that wraps the text without breaking a word.
    static double widestPiece(const QFontMetricsF& metrics, const QString& text);
    // Rows of the given heights shared out over pages of the given height, as [first, last) ranges: a page
    // holds the rows that fit, and at least one. One empty page when there are no rows.
    static QList<QPair<int, int>> pages(const QList<double>& rowHeights, double pageHeight);
    // Prints rows 0 .. rows-1 of the table (at most its listed rows). Empty on success, else why not.
    static QString print(QPagedPaintDevice& device, const ListTable& table, int rows, const QString& title,
                         const QDate& printed);
};

} // namespace porvane
