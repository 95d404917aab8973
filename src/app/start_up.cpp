#include "app/start_up.h"

#include "app/app_paths.h"
#include "app/app_state.h"
#include "app/os_version.h"

#include <QDir>
#include <QFile>

namespace porvane {

bool StartUp::run(const QString& appPath) {
    m_state.AppPath = withTrailingSlash(appPath);
    m_platform.enterAppFolder(m_state.AppPath);

    const OsVersionTest version = testOsVersion(m_platform.osVersion());
    m_state.IsXpOrLater = version.IsXpOrLater;
    m_state.OsMajorVersion = version.IsXpOrLater ? version.OsMajorVersion : 0;
    if (m_state.IsXpOrLater)
        m_platform.prepareVisualStyle(m_state.AppPath);

    if (!m_platform.claimSingleInstance()) {
        m_state.prompter.tell(title(), alreadyRunningText(), Icon::Exclamation);
        return false;
    }

    if (m_state.IsXpOrLater && !m_platform.visualThemeActive()) {
        // Without a theme the next start runs without the manifest; one that cannot be deleted is ignored.
        const QString manifest = m_state.AppPath + manifestFileName();
        if (FileExists(manifest)) {
            QFile::setPermissions(manifest, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
            QFile::remove(manifest);
        }
    }

    if (!screenTallEnough(m_platform.screenHeight())) {
        m_state.prompter.tell(title(), screenTooSmallText(), Icon::Exclamation);
        return false;
    }

    loadSettings();

    m_platform.showSplash();
    m_platform.loadMainWindow();
    Wait(m_state.pause, 2);
    m_platform.closeSplash();
    return true;
}

void StartUp::loadSettings() {
    const QString file = QDir::toNativeSeparators(settingsFilePath(m_state.AppPath));
    const SettingsLoad load = LoadSettings(m_state.AppPath, m_state.settings);
    if (load.status == SettingsLoad::Status::Unreadable) {
        // Writing the defaults over a file that is there but cannot be read would lose it for good.
        m_state.settings = defaultSettings(m_state.AppPath);
        m_state.SettingsCreated = true;
        m_state.prompter.tell(title(),
                              tr("The settings file %1 cannot be read (%2).\nThe default settings are used "
                                 "until it can be read again; the file is left as it is.")
                                  .arg(file, load.error.text),
                              Icon::Exclamation);
        return;
    }
    if (!m_state.settings.DataPath.trimmed().isEmpty())
        return;

    const FileError saved = ApplyDefaultSettings(m_state.AppPath, m_state.settings);
    m_state.SettingsCreated = true;
    if (load.status == SettingsLoad::Status::Damaged || load.status == SettingsLoad::Status::Short) {
        const QString kept =
            load.keptCopy.isEmpty()
                ? tr("The old file could not be kept.")
                : tr("The old file is kept as %1.").arg(QDir::toNativeSeparators(load.keptCopy));
        m_state.prompter.tell(
            title(),
            tr("The settings file %1 was damaged; the default settings are applied.\n%2").arg(file, kept),
            Icon::Information);
    }
    if (saved) {
        m_state.prompter.tell(title(),
                              tr("The default settings could not be written to %1 (%2).\nThey are used for "
                                 "this session only.")
                                  .arg(file, saved.text),
                              Icon::Exclamation);
    }
}

} // namespace porvane
