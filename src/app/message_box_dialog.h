#pragma once

#include "app/prompter.h"

class QWidget;

namespace porvane {

// The desk's prompter: a modal QMessageBox with the message's title, text, buttons and icon, and a save
// dialog for a file name.
class MessageBoxPrompter final : public Prompter {
public:
    explicit MessageBoxPrompter(QWidget* parent = nullptr)
        : m_parent(parent) {}
    Answer ask(const Message& message) override;
    std::optional<QString> askSaveFileName(const FileQuestion& question) override;
    void setParent(QWidget* parent) { m_parent = parent; }

private:
    QWidget* m_parent;
};

} // namespace porvane
