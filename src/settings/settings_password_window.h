#pragma once

#include <QDialog>

class QLineEdit;

namespace porvane {

class Prompter;
struct Settings;

// The gate in front of the settings window: asks for the settings password. Accepted only for the right
// password; three wrong tries close it.
class SettingsPasswordWindow final : public QDialog {
    Q_OBJECT

public:
    SettingsPasswordWindow(const Settings& settings, Prompter& prompter, QWidget* parent = nullptr);

    static constexpr int kTries = 3;

private:
    void tryPassword();

    const Settings& m_settings;
    Prompter& m_prompter;
    QLineEdit* txtPassword;
    int m_wrongTries = 0;
};

} // namespace porvane
