#pragma once

#include "settings/settings.h"

#include <QCoreApplication>
#include <QString>
#include <span>

namespace porvane {

// The tab of the settings window an option is shown on.
enum class OptionPage { Desk, Passes, Security, Folders };

// One check box of the settings window: its control name, the setting it sets ("1" checked, "0" not), its
// label, and whether the desk must start again before a change takes effect (options read only when the
// main window opens).
struct OptionBox {
    const char* name;
    QString Settings::*member;
    const char* label;
    OptionPage page;
    bool needsRestart;
};

class SettingsOptions {
    Q_DECLARE_TR_FUNCTIONS(SettingsOptions)

public:
    // Every option of the settings record that has a check box, in the order the window shows them.
    static std::span<const OptionBox> boxes();
    static QString label(const OptionBox& box) { return tr(box.label); }

    // True when a change from before to after only takes effect after a restart: the folders, or an
    // option read when the desk opens.
    static bool restartNeeded(const Settings& before, const Settings& after);
};

} // namespace porvane
