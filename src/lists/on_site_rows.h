#pragma once

#include "lists/list_table.h"

#include <QCoreApplication>
#include <QDate>
#include <QHash>

namespace porvane {

// Who on today's on-site list is still expected, on site or gone, read from the list's arrival and
// departure cells. The window's counts and filters, the gate scan and the end-of-day sign-out all judge a
// visit by this one rule.
class OnSiteRows {
    Q_DECLARE_TR_FUNCTIONS(OnSiteRows)

public:
    enum class Visit { Expected, OnSite, Left };
    enum class Filter { All, OnSiteNow, Overstayed };

    // An arrival and departure as stored ("hh:mm", "hhmm" or "  -  "): not arrived, or arrived and not left
    // since (a departure earlier than the arrival is a stay past midnight), or gone.
    static Visit visitOf(const QString& arrival, const QString& departure);

    static Visit rowVisit(const ListTable& table, int row);
    // On site, with a pass whose end date is before today.
    static bool overstayed(const ListTable& table, int row, const QDate& today);
    static bool shown(const ListTable& table, int row, Filter filter, const QDate& today);

    // "Expected 3   On site 2   Left 1": everyone on today's list, those on site now and those gone.
    static QString countsText(const ListTable& table);
    // Everyone on site now: RegNo -> the arrival and departure as listed ("hh:mm" and "  -  ", ten
    // characters).
    static QHash<QString, QString> onSiteMarks(const ListTable& table);
};

} // namespace porvane
