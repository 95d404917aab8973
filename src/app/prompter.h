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

    virtual ~Prompter() = default;
    virtual Answer ask(const Message& message) = 0;

    // Shorthands for the two common shapes: a plain notice and a question.
    void tell(const QString& title, const QString& text, Icon icon = Icon::Exclamation) {
        ask({title, text, Buttons::Ok, icon});
    }
};

using Answer = Prompter::Answer;
using Buttons = Prompter::Buttons;
using Icon = Prompter::Icon;

} // namespace porvane
