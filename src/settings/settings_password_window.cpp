#include "settings/settings_password_window.h"

#include "app/prompter.h"
#include "settings/settings.h"
#include "settings/settings_password.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace porvane {

SettingsPasswordWindow::SettingsPasswordWindow(const Settings& settings, Prompter& prompter, QWidget* parent)
    : QDialog(parent)
    , m_settings(settings)
    , m_prompter(prompter) {
    setObjectName(QStringLiteral("frmSettingsPW"));
    setWindowTitle(tr("Porvane 90 Settings"));
    auto* prompt = new QLabel(tr("Enter the settings password:"), this);
    txtPassword = new QLineEdit(this);
    txtPassword->setObjectName(QStringLiteral("txtPassword"));
    txtPassword->setEchoMode(QLineEdit::Password);
    txtPassword->setMaxLength(SettingsPassword::kMaxLength);
    prompt->setBuddy(txtPassword);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdPWOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdPWCancel"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addWidget(txtPassword);
    layout->addWidget(buttons);
    setMinimumWidth(340);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsPasswordWindow::tryPassword);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void SettingsPasswordWindow::tryPassword() {
    const SettingsPassword::Check check = SettingsPassword::check(m_settings, txtPassword->text());
    if (check == SettingsPassword::Check::Accepted) {
        accept();
        return;
    }
    txtPassword->clear();
    m_prompter.tell(QStringLiteral("Porvane 90"),
                    check == SettingsPassword::Check::ExtendedRefused
                        ? SettingsPassword::extendedRefusedText()
                        : SettingsPassword::wrongText(),
                    Icon::Exclamation);
    if (check == SettingsPassword::Check::Wrong && ++m_wrongTries >= kTries)
        reject();
    else
        txtPassword->setFocus();
}

} // namespace porvane
