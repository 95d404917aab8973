#include "admin/pass_command.h"

#include "admin/print_target.h"
#include "passes/pass_issue.h"
#include "passes/pass_layout.h"
#include "store/line_reader.h"
#include "store/record_store.h"

#include <QTextStream>

namespace porvane::admin {

FileError loadBooking(AppState& state, const QString& regNo) {
    FileError error;
    if (readBookingLine(state.files(), regNo, state.record, error)) {
        state.record.MarkRecordSaved();
        return {};
    }
    if (error)
        return error;
    const QString month = state.files().read(LineFileName::month(regNo.left(4)))->name();
    return {FileError::FileNotFound, QStringLiteral("Booking %1 not found in %2").arg(regNo, month)};
}

int runPassCommand(CommandContext& context) {
    using namespace Qt::Literals::StringLiterals;
    AppState& state = context.state;
    static const QStringList counts = {QStringLiteral("ONE"),   QStringLiteral("TWO"),
                                       QStringLiteral("THREE"), QStringLiteral("FOUR"),
                                       QStringLiteral("FIVE"),  QStringLiteral("SIX")};
    // The options as kPassSynopsis explains them.
    QCommandLineParser parser;
    const QCommandLineOption countOption(u"count"_s, {}, u"N"_s, u"1"_s);
    const QCommandLineOption periodOption(u"period"_s, {}, u"Day|Week|Month"_s, u"Day"_s);
    const QCommandLineOption startOption(u"start"_s, {}, u"YYYY-MM-DD"_s);
    const QCommandLineOption pdfOption(u"pdf"_s, {}, u"FILE"_s);
    const QCommandLineOption yesOption(u"yes"_s, {});
    parser.addOptions({countOption, periodOption, startOption, pdfOption, yesOption});
    const std::optional<QStringList> positional = readCommandLine(context, parser);
    if (!positional)
        return kWrongArguments;
    if (positional->size() > 1)
        return usageError(u"unexpected argument: "_s + positional->at(1));
    const QString regNo = positional->value(0).trimmed();
    if (regNo.size() != 12)
        return usageError(u"pass needs the 12-digit booking number"_s);
    bool ok = false;
    const int count = parser.value(countOption).toInt(&ok);
    if (!ok || count < 1 || count > 6)
        return usageError(u"--count takes 1 to 6"_s);
    const QString period = parser.value(periodOption);
    const QDate start = QDate::fromString(parser.value(startOption), Qt::ISODate);
    if (parser.isSet(startOption) && !start.isValid())
        return usageError(u"--start takes a date YYYY-MM-DD"_s);
    const QString pdf = parser.value(pdfOption);
    const bool yes = parser.isSet(yesOption);

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
