#include "admin/console_prompter.h"

#include <unistd.h>

namespace porvane::admin {

namespace {

Answer safeAnswer(Prompter::Buttons buttons) {
    return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

} // namespace

Answer ConsolePrompter::ask(const Message& message) {
    // A question answered beforehand on the command line is not shown: nothing is being asked.
    if (questions == Questions::AnswerYes && message.buttons == Buttons::YesNo)
        return Answer::Yes;
    QString text = message.text.trimmed();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QTextStream err(stderr);
    err << message.title << ": " << text << '\n';
    if (message.buttons == Buttons::Ok)
        return Answer::Ok;
    if (questions != Questions::AskOnTerminal)
        return safeAnswer(message.buttons);

    const bool withCancel = message.buttons == Buttons::YesNoCancel;
    err << (withCancel ? "[y/n/C] " : "[y/N] ");
    err.flush();
    const QString reply = m_in.readLine().trimmed().toLower();
    if (!::isatty(STDIN_FILENO))
        err << '\n'; // a piped answer is not echoed, so end the question's line here
    if (reply == u"y" || reply == u"yes")
        return message.buttons == Buttons::OkCancel ? Answer::Ok : Answer::Yes;
    if (withCancel && (reply == u"n" || reply == u"no"))
        return Answer::No;
    return safeAnswer(message.buttons);
}

} // namespace porvane::admin
