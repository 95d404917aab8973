#include "admin/list_command.h"

#include "lists/list_text.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

namespace porvane::admin {

bool setDateBoxes(DateSelection& dates, const QString& text, bool withDay) {
    static const QRegularExpression dayPattern(QStringLiteral("^(\\d{4})-(\\d{2})-(\\d{2})$"));
    static const QRegularExpression monthPattern(QStringLiteral("^(\\d{4})-(\\d{2})$"));
    const QRegularExpressionMatch m = (withDay ? dayPattern : monthPattern).match(text);
    if (!m.hasMatch())
        return false;
    const int month = m.captured(2).toInt();
    const QStringList months = DateSelection::monthItems();
    // An impossible month stays a number, so the desk's date test refuses it with its own message.
    dates.setMonthText(month >= 1 && month <= 12 ? months.at(month - 1) : m.captured(2));
    dates.setYearText(m.captured(1));
    dates.setDayText(withDay ? QString::number(m.captured(3).toInt()) : DateSelection::noDay());
    return true;
}

int finishList(CommandContext& context, const GridLists& lists, GridLists::Outcome outcome) {
    const bool listed = outcome == GridLists::Outcome::Listed ||
                        (outcome == GridLists::Outcome::Failed && lists.table().listedCount() > 0);
    if (listed) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly) || !writeListTableText(lists.table(), context.csv, out)) {
            QTextStream(stderr) << "porvane-admin: the list could not be written\n";
            return 1;
        }
    }
    if (outcome == GridLists::Outcome::Failed)
        QTextStream(stderr) << context.state.mainTitle << '\n';
    return outcome == GridLists::Outcome::Listed ? 0 : 1;
}

int runListCommand(CommandContext& context) {
    const QStringList& args = context.args;
    if (args.size() != 2 || (args.at(0) != u"day" && args.at(0) != u"month"))
        return usageError(QStringLiteral("list takes: day YYYY-MM-DD | month YYYY-MM"));
    const bool day = args.at(0) == u"day";
    DateSelection dates(context.state.clock.today().year());
    if (!setDateBoxes(dates, args.at(1), day))
        return usageError(day ? QStringLiteral("list day takes a date YYYY-MM-DD")
                              : QStringLiteral("list month takes a month YYYY-MM"));
    GridLists lists(context.state);
    return finishList(context, lists, day ? lists.selectDayRecord(dates) : lists.selectMonthRecord(dates));
}

} // namespace porvane::admin
