#include "scripted_prompter.h"

#include <gtest/gtest.h>

namespace porvane::test {

Answer ScriptedPrompter::ask(const Message& message) {
    m_messages.append(message);
    if (whileAsking)
        whileAsking(message);
    if (m_answers.empty()) {
        // A notice needs no scripted answer; a question without one is a test fault.
        if (message.buttons == Buttons::Ok)
            return Answer::Ok;
        ADD_FAILURE() << "unexpected question: " << message.text.toStdString();
        return Answer::Cancel;
    }
    const std::optional<Answer> a = m_answers.front();
    m_answers.pop_front();
    if (a)
        return *a;
    if (message.defaultAnswer)
        return *message.defaultAnswer;
    return message.buttons == Buttons::Ok || message.buttons == Buttons::OkCancel ? Answer::Ok : Answer::Yes;
}

std::optional<QString> ScriptedPrompter::askSaveFileName(const FileQuestion& question) {
    m_fileQuestions.append(question);
    if (m_fileNames.empty()) {
        ADD_FAILURE() << "unexpected file question: " << question.title.toStdString();
        return std::nullopt;
    }
    const QString path = m_fileNames.front();
    m_fileNames.pop_front();
    if (path.isNull())
        return std::nullopt;
    return path;
}

QStringList ScriptedPrompter::texts() const {
    QStringList out;
    for (const Message& m : m_messages)
        out << m.text;
    return out;
}

} // namespace porvane::test
