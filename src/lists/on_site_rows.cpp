#include "lists/on_site_rows.h"

#include "lists/on_site_list.h"

namespace porvane {

OnSiteRows::Visit OnSiteRows::visitOf(const QString& arrival, const QString& departure) {
    const int in = markNumber(arrival.toLatin1());
    if (in == 0)
        return Visit::Expected;
    return in < markNumber(departure.toLatin1()) ? Visit::Left : Visit::OnSite;
}

OnSiteRows::Visit OnSiteRows::rowVisit(const ListTable& table, int row) {
    return visitOf(table.text(row, kOnSiteArrived), table.text(row, kOnSiteDeparted));
}

bool OnSiteRows::overstayed(const ListTable& table, int row, const QDate& today) {
    if (rowVisit(table, row) != Visit::OnSite)
        return false;
    const QDate end =
        QDate::fromString(table.text(row, kOnSitePassEnds).trimmed(), QStringLiteral("dd-MM-yyyy"));
    return end.isValid() && end < today;
}

bool OnSiteRows::shown(const ListTable& table, int row, Filter filter, const QDate& today) {
    if (filter == Filter::All)
        return true;
    if (row >= table.listedCount())
        return false;
    return filter == Filter::OnSiteNow ? rowVisit(table, row) == Visit::OnSite
                                       : overstayed(table, row, today);
}

QString OnSiteRows::countsText(const ListTable& table) {
    int onSite = 0;
    int left = 0;
    for (int row = 0; row < table.listedCount(); ++row) {
        const Visit v = rowVisit(table, row);
        onSite += v == Visit::OnSite;
        left += v == Visit::Left;
    }
    return tr("Expected %1   On site %2   Left %3").arg(table.listedCount()).arg(onSite).arg(left);
}

QHash<QString, QString> OnSiteRows::onSiteMarks(const ListTable& table) {
    QHash<QString, QString> marks;
    for (int row = 0; row < table.listedCount(); ++row) {
        if (rowVisit(table, row) == Visit::OnSite)
            marks.insert(table.text(row, kOnSiteRegNo).trimmed(),
                         table.text(row, kOnSiteArrived) + table.text(row, kOnSiteDeparted));
    }
    return marks;
}

} // namespace porvane
