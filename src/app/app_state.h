#pragma once

#include "app/clock.h"
#include "app/help_topics.h"
#include "app/lock_question.h"
#include "app/pause.h"
#include "app/prompter.h"
#include "settings/settings.h"
#include "store/current_record.h"
#include "store/record_store.h"

#include <QString>

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
};

// The record store over the desk's data folder (as the settings name it at each change) and clock.
inline RecordStore recordStoreOf(AppState& state) {
    return {[&state] { return state.dataPath(); }, [&state] { return state.clock.now(); },
            state.lockQuestion};
}

} // namespace porvane
