#pragma once

#include "app/prompter.h"
#include "settings/server_settings.h"
#include "settings/settings.h"

#include <QCoreApplication>
#include <QString>

namespace porvane {

// The settings window's working copy: the window edits edited(), and save() checks it, writes the settings
// file of the installation in appPath and makes it the desk's settings. Questions and refusals go through the
// prompter.
class SettingsEditor {
    Q_DECLARE_TR_FUNCTIONS(SettingsEditor)

public:
    SettingsEditor(const QString& appPath, Settings& settings, Prompter& prompter)
        : m_appPath(appPath)
        , m_settings(settings)
        , m_prompter(prompter)
        , m_saved(settings)
        , m_edited(settings) {}

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
    // a restart tells the operator and leaves restartPending() true. False leaves the desk's settings and the
    // file as they were.
    bool save();
    // The saved settings take effect only when the desk starts again: it closes without asking.
    bool restartPending() const { return m_restartPending; }
    // The saved settings name another store (the server or the data folder): the desk switches to it.
    bool storeChanged() const { return m_storeChanged; }

    // Tries the server settings as edited, not yet saved, and tells the operator what came of it.
    void testServer(const ServerTest& test);

    static QString title() { return QStringLiteral("Porvane 90"); }

private:
    const QString& m_appPath;
    Settings& m_settings;
    Prompter& m_prompter;
    Settings m_saved;
    Settings m_edited;
    QString m_newPassword;
    QString m_repeated;
    bool m_restartPending = false;
    bool m_storeChanged = false;
};

} // namespace porvane
