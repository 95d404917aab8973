#pragma once

#include <QString>
#include <optional>

namespace porvane {

// Every message box of the program goes through a Prompter, so the desk's questions can be scripted in tests.
class Prompter {
public:
    enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
    enum class Icon { Exclamation, Information, Question };
    enum class Answer { Ok, Cancel, Yes, No };

    struct Message {
        QString title;
        QString text;
        Buttons buttons = Buttons::Ok;
        Icon icon = Icon::Exclamation;
        // The answer Enter gives; unset, the box's first button (Ok or Yes).
        std::optional<Answer> defaultAnswer = std::nullopt;
    };

    // Where to save a file, asked in a save dialog.
    struct FileQuestion {
        QString title;
        QString offeredPath;   // the folder and name offered
        QString filter;        // "CSV files (*.csv)"
        QString defaultSuffix; // added to a name typed without one
    };

    virtual ~Prompter() = default;
    virtual Answer ask(const Message& message) = 0;
    // The path chosen, or nothing when the operator cancelled. Where nobody can choose (a command line),
    // nothing is chosen.
    virtual std::optional<QString> askSaveFileName(const FileQuestion&) { return std::nullopt; }

    // Shorthands for the two common shapes: a plain notice and a question.
    void tell(const QString& title, const QString& text, Icon icon = Icon::Exclamation) {
        ask({title, text, Buttons::Ok, icon});
    }
};

using Answer = Prompter::Answer;
using Buttons = Prompter::Buttons;
using Icon = Prompter::Icon;

} // namespace porvane
