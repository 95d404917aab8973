#include "settings/settings_editor.h"

#include "app/app_paths.h"
#include "settings/data_folder_check.h"
#include "settings/settings_file.h"
#include "settings/settings_options.h"
#include "settings/settings_password.h"

#include <QDir>

namespace porvane {

namespace {

QString shown(const QString& path) {
    return QDir::toNativeSeparators(path);
}

// The refusal for a folder that cannot be used at all; empty when it can.
QString folderRefusal(const DataFolderCheck& check, const QString& path) {
    using Status = DataFolderCheck::Status;
    switch (check.status) {
    case Status::NotAbsolute:
        return SettingsEditor::tr("Give the folder's full path, for example /srv/porvane/Porvanedata.");
    case Status::NotWindows1252:
        return SettingsEditor::tr(
                   "The folder %1 has a character that the settings file cannot hold; it would "
                   "be saved as \"?\" and name no folder. Choose a folder whose path has only "
                   "Western European letters.")
            .arg(shown(path));
    case Status::Missing:
        return SettingsEditor::tr("The folder %1 does not exist.").arg(shown(path));
    case Status::NotAFolder:
        return SettingsEditor::tr("%1 is a file, not a folder.").arg(shown(path));
    case Status::NotWritable:
        return SettingsEditor::tr("The folder %1 cannot be written to. Choose a folder where this desk may "
                                  "create files, or ask for write access to it.")
            .arg(shown(path));
    case Status::Ready:
    case Status::LacksSubfolders:
        break;
    }
    return {};
}

} // namespace

bool SettingsEditor::changed() const {
    if (!m_newPassword.isEmpty() || !m_repeated.isEmpty())
        return true;
    for (const OptionBox& box : SettingsOptions::boxes()) {
        if (m_saved.*box.member != m_edited.*box.member)
            return true;
    }
    return m_saved.DataPath != m_edited.DataPath || m_saved.SystemPath != m_edited.SystemPath ||
           m_saved.SiteName != m_edited.SiteName || m_saved.ServerHost != m_edited.ServerHost ||
           m_saved.ServerPort != m_edited.ServerPort || m_saved.ServerDatabase != m_edited.ServerDatabase ||
           m_saved.ServerUser != m_edited.ServerUser || m_saved.ServerPassword != m_edited.ServerPassword;
}

bool SettingsEditor::acceptDataFolder(const QString& path) {
    const DataFolderCheck check = DataFolderCheck::of(path);
    if (const QString refusal = folderRefusal(check, path); !refusal.isEmpty()) {
        m_prompter.tell(title(), refusal, Icon::Exclamation);
        return false;
    }
    if (check.status == DataFolderCheck::Status::Ready)
        return true;
    QStringList names = check.missingSubfolders;
    const QString last = names.takeLast();
    const QString listed =
        names.isEmpty() ? last : tr("%1 and %2").arg(names.join(QStringLiteral(", ")), last);
    const QString question =
        names.isEmpty() ? tr("The folder %1 has no %2 folder for the visitor data.\nCreate it now?")
                        : tr("The folder %1 has no %2 folders for the visitor data.\nCreate them now?");
    const Answer answer =
        m_prompter.ask({title(), question.arg(shown(path), listed), Buttons::YesNo, Icon::Question});
    if (answer != Answer::Yes)
        return false;
    if (const FileError error = DataFolderCheck::createSubfolders(path, check.missingSubfolders)) {
        m_prompter.tell(title(), tr("The folders could not be made: %1").arg(error.text), Icon::Exclamation);
        return false;
    }
    return true;
}

bool SettingsEditor::acceptSystemFolder(const QString& path) {
    const QString refusal = folderRefusal(DataFolderCheck::existingFolder(path), path);
    if (refusal.isEmpty())
        return true;
    m_prompter.tell(title(), refusal, Icon::Exclamation);
    return false;
}

bool SettingsEditor::save() {
    Settings next = m_edited;
    next.SiteName = next.SiteName.trimmed();
    // A folder written another way ("/srv/data/" for "/srv/data") is no change.
    const auto samePath = [](const QString& a, const QString& b) {
        return QDir::cleanPath(a.trimmed()) == QDir::cleanPath(b.trimmed());
    };
    next.DataPath = samePath(next.DataPath, m_saved.DataPath) ? m_saved.DataPath
                                                              : QDir::cleanPath(next.DataPath.trimmed());
    const QString typedSystem = QDir::cleanPath(next.SystemPath.trimmed());
    if (samePath(typedSystem, m_saved.SystemPath))
        next.SystemPath = m_saved.SystemPath;
    else
        next.SystemPath = typedSystem.isEmpty() ? QString() : withTrailingSlash(typedSystem);

    const bool newPassword = !m_newPassword.isEmpty() || !m_repeated.isEmpty();
    if (newPassword) {
        if (const QString refusal = SettingsPassword::refusal(next, m_newPassword, m_repeated);
            !refusal.isEmpty()) {
            m_prompter.tell(title(), refusal, Icon::Exclamation);
            return false;
        }
        next.SettingsPassword = m_newPassword;
    }
    if (next.DataPath != m_saved.DataPath && !acceptDataFolder(next.DataPath))
        return false;
    if (next.SystemPath != m_saved.SystemPath && !acceptSystemFolder(next.SystemPath))
        return false;
    if (const QString refusal = ServerSettings::refusal(next); !refusal.isEmpty()) {
        m_prompter.tell(title(), refusal, Icon::Exclamation);
        return false;
    }

    const bool restart = SettingsOptions::restartNeeded(m_saved, next);
    if (const FileError error = SaveSettings(m_appPath, next)) {
        m_prompter.tell(title(), tr("The settings could not be saved: %1").arg(error.text),
                        Icon::Exclamation);
        return false;
    }
    m_storeChanged = m_storeChanged || ServerSettings::storeChanged(m_saved, next);
    m_settings = next;
    m_saved = next;
    m_edited = next;
    m_newPassword.clear();
    m_repeated.clear();
    if (restart) {
        m_restartPending = true;
        m_prompter.tell(title(),
                        tr("The new settings take effect when Porvane 90 starts again.\nPorvane 90 "
                           "closes now; please start it again."),
                        Icon::Information);
    }
    return true;
}

void SettingsEditor::testServer(const ServerTest& test) {
    if (const QString refusal = ServerSettings::refusal(m_edited); !refusal.isEmpty()) {
        m_prompter.tell(title(), refusal, Icon::Exclamation);
        return;
    }
    if (!m_edited.usesServer()) {
        m_prompter.tell(title(), tr("No server is set: the bookings are kept in the data folder."),
                        Icon::Information);
        return;
    }
    if (const QString why = test(ServerSettings::connInfo(m_edited)); !why.isEmpty()) {
        m_prompter.tell(title(), ServerSettings::unreachableText(why), Icon::Exclamation);
        return;
    }
    m_prompter.tell(title(), tr("The bookings server answers and holds the bookings tables."),
                    Icon::Information);
}

} // namespace porvane
