#include "app/message_box_dialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <array>

namespace porvane {

Answer MessageBoxPrompter::ask(const Message& message) {
    QMessageBox box(m_parent ? m_parent : QApplication::activeWindow());
    box.setWindowTitle(message.title);
    box.setText(message.text);
    switch (message.icon) {
    case Icon::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case Icon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    case Icon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    }
    switch (message.buttons) {
    case Buttons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case Buttons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case Buttons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case Buttons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    }
    if (message.defaultAnswer) {
        // In the order of Answer.
        constexpr std::array kButtons{QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::Yes,
                                      QMessageBox::No};
        box.setDefaultButton(kButtons[std::size_t(*message.defaultAnswer)]);
    }
    // Closing the box with Escape or its close button means the safe answer: Cancel, or No without Cancel.
    if (message.buttons == Buttons::YesNo)
        box.setEscapeButton(QMessageBox::No);
    switch (box.exec()) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return message.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
}

std::optional<QString> MessageBoxPrompter::askSaveFileName(const FileQuestion& question) {
    QFileDialog dialog(m_parent ? m_parent : QApplication::activeWindow(), question.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(question.filter);
    dialog.setDefaultSuffix(question.defaultSuffix);
    dialog.selectFile(question.offeredPath);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

} // namespace porvane
