#pragma once

#include "app/clock.h"
#include "app/help_topics.h"
#include "app/lock_question.h"
#include "app/pause.h"
#include "app/prompter.h"
#include "settings/settings.h"
#include "store/current_record.h"
#include "store/folder_files.h"
#include "store/record_store.h"

#include <QString>
#include <memory>

namespace porvane {

// What the list grid shows; the list refresh rebuilds it after every change.
enum class ListMode : int { None = 0, Day = 1, Month = 2, Search = 3, OnSite = 4 };

// The application-wide state, made once in main() and handed by reference to whoever needs it.
class AppState {
public:
    AppState(Prompter& prompter, Clock& clock, Pause& pause)
        : prompter(prompter)
        , clock(clock)
        , pause(pause) {}
    // One state per desk: its help key refers to its AppPath.
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;

    Prompter& prompter;
    Clock& clock;
    Pause& pause;
    // Asked by every change while another desk holds the data folder.
    PrompterLockQuestion lockQuestion{prompter};

    QString AppPath; // the program's folder, always ending with "/"
    Help help{AppPath};
    Settings settings;
    bool SettingsCreated = false;
    // The platform version test; only a Windows start-up sets these.
    bool IsXpOrLater = false;
    int OsMajorVersion = 0;

    CurrentRecord record;

    ListMode listMode = ListMode::None;
    int ListedCount = 0;

    // The main window's title; results of saves and list errors are shown in it.
    QString mainTitle = plainTitle();
    static QString plainTitle() { return QStringLiteral("Tarnwell Solutions Porvane 90"); }
    void showResultInTitle(const QString& text) {
        mainTitle = plainTitle() + QStringLiteral("  [ ") + text + QStringLiteral(" ]");
    }

    // The data folder as a path ending with "/".
    QString dataPath() const {
        QString p = settings.DataPath;
        return p.endsWith(u'/') ? p : p + u'/';
    }

    // The month and day status files in the data folder, as the settings name it at each read and change.
    FolderFiles dataFolder{[this] { return dataPath(); }, lockQuestion};
    // Where the bookings are read and written: the data folder, unless another store was handed in.
    LineFiles& files() { return m_otherFiles ? *m_otherFiles : dataFolder; }
    // Hands in the store to use from now on; null goes back to the data folder.
    void useFiles(std::unique_ptr<LineFiles> files) { m_otherFiles = std::move(files); }
    bool usesDataFolder() const { return !m_otherFiles; }

private:
    std::unique_ptr<LineFiles> m_otherFiles;
};

// The record store over the desk's store (as it is at each change), data folder (for photos) and clock.
inline RecordStore recordStoreOf(AppState& state) {
    const auto files = [&state]() -> LineFiles& {
        return state.files();
    };
    const auto dataPath = [&state] {
        return state.dataPath();
    };
    const auto now = [&state] {
        return state.clock.now();
    };
    return {files, dataPath, now};
}

} // namespace porvane
