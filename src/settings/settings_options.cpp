#include "settings/settings_options.h"

namespace porvane {

namespace {

constexpr OptionBox kBoxes[] = {
    {"ckMakeSysRdO", &Settings::ckMakeSysRdO,
     QT_TRANSLATE_NOOP("SettingsOptions", "Read only: bookings, times and passes cannot be changed"),
     OptionPage::Desk, false},
    {"ckDisSingleD", &Settings::ckDisSingleD,
     QT_TRANSLATE_NOOP("SettingsOptions", "Disable the Delete button (single bookings)"), OptionPage::Desk,
     false},
    {"ckDisMultiD", &Settings::ckDisMultiD,
     QT_TRANSLATE_NOOP("SettingsOptions", "Disable bulk deletion of old bookings"), OptionPage::Desk, false},
    {"ckStartFull", &Settings::ckStartFull, QT_TRANSLATE_NOOP("SettingsOptions", "Open the desk maximised"),
     OptionPage::Desk, true},
    {"ckShowToday", &Settings::ckShowToday,
     QT_TRANSLATE_NOOP("SettingsOptions", "Open the desk on today's date with today's day list shown"),
     OptionPage::Desk, true},
    {"ckCalAOatT", &Settings::ckCalAOatT,
     QT_TRANSLATE_NOOP("SettingsOptions", "Calendar: back to today whenever the idle desk is used again"),
     OptionPage::Desk, false},
    {"ckEnbl_RTC", &Settings::ckEnbl_RTC,
     QT_TRANSLATE_NOOP("SettingsOptions", "Show a running clock in the main window"), OptionPage::Desk, true},
    {"ckShowSplash", &Settings::ckShowSplash,
     QT_TRANSLATE_NOOP("SettingsOptions",
                       "Show the start-up window above the desk while it opens (off: before the desk)"),
     OptionPage::Desk, false},
    {"ckDisPassPrn", &Settings::ckDisPassPrn, QT_TRANSLATE_NOOP("SettingsOptions", "Disable pass printing"),
     OptionPage::Passes, false},
    {"ckEnbl_BarOP", &Settings::ckEnbl_BarOP,
     QT_TRANSLATE_NOOP("SettingsOptions", "Print the bar code on passes"), OptionPage::Passes, false},
    {"ckEnbl_PrnLogo", &Settings::ckEnbl_PrnLogo,
     QT_TRANSLATE_NOOP("SettingsOptions", "Print the site's logo (OurPassLogo.bmp) on passes"),
     OptionPage::Passes, false},
    {"ckEnbl_PrnFlip", &Settings::ckEnbl_PrnFlip,
     QT_TRANSLATE_NOOP("SettingsOptions", "Flip the pass image for the printer (kept for older printers)"),
     OptionPage::Passes, false},
    {"ckForceMono", &Settings::ckForceMono,
     QT_TRANSLATE_NOOP("SettingsOptions", "Force black and white printing (kept for older printers)"),
     OptionPage::Passes, false},
    {"ckEnbl_VidConfig", &Settings::ckEnbl_VidConfig,
     QT_TRANSLATE_NOOP("SettingsOptions", "Offer the camera set-up panel in the camera window"),
     OptionPage::Passes, false},
    {"ckRawCamPhoto", &Settings::ckRawCamPhoto,
     QT_TRANSLATE_NOOP("SettingsOptions", "Keep camera photos as captured (do not fit them to 100 KB)"),
     OptionPage::Passes, false},
    {"ckAllowExtCiPW", &Settings::ckAllowExtCiPW,
     QT_TRANSLATE_NOOP("SettingsOptions", "Allow extended characters (accents, symbols) in the password"),
     OptionPage::Security, false},
    {"ckPresvePW", &Settings::ckPresvePW,
     QT_TRANSLATE_NOOP("SettingsOptions",
                       "Ask for the password when opened from the About window (stored only)"),
     OptionPage::Security, false},
    {"ckEnblNetPaths", &Settings::ckEnblNetPaths,
     QT_TRANSLATE_NOOP("SettingsOptions",
                       "Allow the data folder, the program folder and the bookings server to be changed"),
     OptionPage::Folders, false},
};

} // namespace

std::span<const OptionBox> SettingsOptions::boxes() {
    return kBoxes;
}

bool SettingsOptions::restartNeeded(const Settings& before, const Settings& after) {
    if (before.DataPath != after.DataPath || before.SystemPath != after.SystemPath)
        return true;
    for (const OptionBox& box : kBoxes) {
        if (box.needsRestart && before.*box.member != after.*box.member)
            return true;
    }
    return false;
}

} // namespace porvane
