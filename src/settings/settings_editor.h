#pragma once

#include "app/app_state.h"
#include "settings/settings.h"

#include <QCoreApplication>
#include <QString>

namespace porvane {

// The settings window's working copy: the window edits edited(), and save() checks it, writes the settings
// file and makes it the desk's settings. Questions and refusals go through the prompter.
class SettingsEditor {
    Q_DECLARE_TR_FUNCTIONS(SettingsEditor)

public:
    explicit SettingsEditor(AppState& state)
        : m_state(state)
        , m_saved(state.settings)
        , m_edited(state.settings) {}

    Settings& edited() { return m_edited; }
    const Settings& edited() const { return m_edited; }
    bool changed() const;

    // Checks a data folder the operator chose. A folder that lacks Record, Status or photo gets the offer
    // to make them; a missing or read-only folder is refused with a message. True when it can be used.
    bool acceptDataFolder(const QString& path);
    // The second folder only has to exist.
    bool acceptSystemFolder(const QString& path);

    // A new settings password, typed twice; both empty means no change.
    void setNewPassword(const QString& password, const QString& repeated) {
        m_newPassword = password;
        m_repeated = repeated;
    }

    // Checks what changed, writes the settings file and hands the settings to the desk. A change that needs
    // a restart sets SettingsRestartPending after telling the operator. False leaves the desk's settings
    // and the file as they were.
    bool save();

    static QString title() { return QStringLiteral("Porvane 90"); }

private:
    AppState& m_state;
    Settings m_saved;
    Settings m_edited;
    QString m_newPassword;
    QString m_repeated;
};

} // namespace porvane
