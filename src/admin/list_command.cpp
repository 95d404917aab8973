#include "admin/list_command.h"

#include <QRegularExpression>
#include <QTextStream>
#include <unistd.h>

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

ListOutput::ListOutput(CommandContext& context, GridLists& lists)
    : m_context(context)
    , m_lists(lists)
    , m_writer(m_stdout, context.csv) {
    // Straight to the descriptor: the writer hands over pieces large enough.
    m_stdout.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered); // a failure shows on writing
    m_lists.rowRead = [this](const ListTable& table, const ListRow& row) {
        if (m_printed++ == 0)
            m_writer.header(table);
        m_writer.row(row);
    };
}

ListOutput::~ListOutput() {
    m_lists.rowRead = {};
}

int ListOutput::finish(GridLists::Outcome outcome) {
    const ListTable& table = m_lists.table();
    const bool listed = outcome == GridLists::Outcome::Listed ||
                        (outcome == GridLists::Outcome::Failed && table.listedCount() > 0);
    if (listed && m_printed == 0) {
        m_writer.header(table);
        for (int r = 0; r < table.listedCount(); ++r)
            m_writer.row(table.row(r));
    }
    if ((listed || m_printed > 0) && !m_writer.flush()) {
        QTextStream(stderr) << "porvane-admin: the list could not be written\n";
        return 1;
    }
    if (outcome == GridLists::Outcome::Failed)
        QTextStream(stderr) << m_context.state.mainTitle << '\n';
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
    ListOutput output(context, lists);
    return output.finish(day ? lists.selectDayRecord(dates) : lists.selectMonthRecord(dates));
}

} // namespace porvane::admin
