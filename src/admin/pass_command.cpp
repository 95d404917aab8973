#include "admin/pass_command.h"

#include "admin/print_target.h"
#include "passes/pass_issue.h"
#include "passes/pass_layout.h"
#include "store/data_paths.h"
#include "store/record_store.h"

#include <QTextStream>

namespace porvane::admin {

FileError loadBooking(AppState& state, const QString& regNo) {
    FileError error;
    if (readBookingLine(state.dataPath(), regNo, state.record, error)) {
        state.record.MarkRecordSaved();
        return {};
    }
    if (error)
        return error;
    return {FileError::FileNotFound, QStringLiteral("Booking %1 not found in %2")
                                         .arg(regNo, monthFilePath(state.dataPath(), regNo.left(4)))};
}

int runPassCommand(CommandContext& context) {
    AppState& state = context.state;
    const QStringList& args = context.args;
    static const QStringList counts = {QStringLiteral("ONE"),   QStringLiteral("TWO"),
                                       QStringLiteral("THREE"), QStringLiteral("FOUR"),
                                       QStringLiteral("FIVE"),  QStringLiteral("SIX")};
    QString regNo;
    int count = 1;
    QString period = QStringLiteral("Day");
    QDate start;
    QString pdf;
    bool yes = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        const bool hasValue = i + 1 < args.size();
        if (a == u"--count" && hasValue) {
            bool ok = false;
            count = args.at(++i).toInt(&ok);
            if (!ok || count < 1 || count > 6)
                return usageError(QStringLiteral("--count takes 1 to 6"));
        } else if (a == u"--period" && hasValue) {
            period = args.at(++i);
        } else if (a == u"--start" && hasValue) {
            start = QDate::fromString(args.at(++i), Qt::ISODate);
            if (!start.isValid())
                return usageError(QStringLiteral("--start takes a date YYYY-MM-DD"));
        } else if (a == u"--pdf" && hasValue) {
            pdf = args.at(++i);
        } else if (a == u"--yes") {
            yes = true;
        } else if (regNo.isEmpty() && !a.startsWith(u"--")) {
            regNo = a.trimmed();
        } else {
            return usageError(QStringLiteral("unexpected argument: ") + a);
        }
    }
    if (regNo.size() != 12)
        return usageError(QStringLiteral("pass needs the 12-digit booking number"));

    if (const FileError e = loadBooking(state, regNo)) {
        QTextStream(stderr) << e.text << '\n';
        return 1;
    }
    // A booking without a photo asks whether to print anyway: --yes answers it for cron and scripts.
    context.prompter.questions =
        yes ? ConsolePrompter::Questions::AnswerYes : ConsolePrompter::Questions::AskOnTerminal;
    PassIssue pass(state);
    pass.open();
    if (!pass.choose(counts.at(count - 1), period))
        return 1;
    if (start.isValid() && start != state.clock.today()) {
        // A later start is picked on the calendar, which a one-day pass cannot open.
        if (!pass.toggleCalendar() || !pass.pickCalendarDay(start))
            return 1;
    }
    QString error;
    const auto printTo = [&pdf](const PassContent& c) {
        return printOrWritePdf(pdf, QStringLiteral("Visitor pass ") + c.regNo, true,
                               [&c](QPagedPaintDevice& device) { return PassLayout::print(device, c); });
    };
    switch (pass.print(printTo, updateBookingInStore(state), &error)) {
    case PassIssue::PrintResult::Printed:
        QTextStream(stdout) << "Pass " << regNo << ' ' << state.record[Field::PassStart] << " to "
                            << state.record[Field::PassEnd] << ' ' << state.record[Field::PassPeriod] << '\n';
        return 0;
    case PassIssue::PrintResult::Disabled:
        QTextStream(stderr) << "Pass printing is switched off in the settings\n";
        return 1;
    case PassIssue::PrintResult::Declined:
        QTextStream(stderr) << "porvane-admin: not confirmed; no pass printed\n";
        return 1;
    case PassIssue::PrintResult::NotPrinted:
    case PassIssue::PrintResult::NotStored:
        if (!error.isEmpty())
            QTextStream(stderr) << error << '\n';
        return 1;
    }
    return 1;
}

} // namespace porvane::admin
