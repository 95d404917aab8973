#pragma once

#include "app/prompter.h"

#include <QList>
#include <deque>
#include <functional>
#include <optional>

namespace porvane::test {

// Records every message and answers from a queue; an unexpected question fails loudly.
class ScriptedPrompter final : public Prompter {
public:
    Answer ask(const Message& message) override;
    // Answers from its own queue: the path the operator chooses, or nullopt for Cancel.
    std::optional<QString> askSaveFileName(const FileQuestion& question) override;
    void queueFileName(const std::optional<QString>& path) {
        m_fileNames.push_back(path.value_or(QString()));
    }
    const QList<FileQuestion>& fileQuestions() const { return m_fileQuestions; }

    void queue(Answer answer) { m_answers.push_back(answer); }
    void queue(std::initializer_list<Answer> answers) {
        m_answers.insert(m_answers.end(), answers.begin(), answers.end());
    }
    // The operator presses Enter: the message's default answer, or its first button when it names none.
    void queueEnter() { m_answers.push_back(std::nullopt); }

    const QList<Message>& messages() const { return m_messages; }
    QStringList texts() const;
    const Message& last() const { return m_messages.last(); }
    void clear() {
        m_messages.clear();
        m_answers.clear();
        m_fileQuestions.clear();
        m_fileNames.clear();
    }
    std::size_t unusedAnswers() const { return m_answers.size(); }
    // Runs while a message is up: what another desk does while this one waits for its operator.
    std::function<void(const Message&)> whileAsking;

private:
    QList<Message> m_messages;
    std::deque<std::optional<Answer>> m_answers;
    QList<FileQuestion> m_fileQuestions;
    std::deque<QString> m_fileNames; // a null text cancels
};

} // namespace porvane::test
