#pragma once

#include <QDialog>

class QLineEdit;

namespace porvane {

class AppState;

// The gate in front of the settings window: asks for the settings password. Accepted only for the right
// password; three wrong tries close it.
class SettingsPasswordWindow final : public QDialog {
    Q_OBJECT

public:
    explicit SettingsPasswordWindow(AppState& state, QWidget* parent = nullptr);

    static constexpr int kTries = 3;

private:
    void tryPassword();

    AppState& m_state;
    QLineEdit* txtPassword;
    int m_wrongTries = 0;
};

} // namespace porvane
