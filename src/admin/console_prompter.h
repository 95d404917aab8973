#pragma once

#include "app/prompter.h"

#include <QTextStream>

namespace porvane::admin {

// The desk's messages on a command line: each goes to stderr. Nobody is there to answer a question unless a
// command says otherwise, so by default every question takes its safe answer (Cancel, or No).
class ConsolePrompter final : public Prompter {
public:
    enum class Questions {
        TakeSafeAnswer, // Cancel, or No when there is no Cancel
        AskOnTerminal,  // reads the answer from stdin: y, n (and c where Cancel is offered)
        AnswerYes,      // Yes to a Yes/No question, the safe answer to any other
    };

    Questions questions = Questions::TakeSafeAnswer;

    Answer ask(const Message& message) override;

private:
    QTextStream m_in{stdin};
};

} // namespace porvane::admin
