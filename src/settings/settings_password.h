#pragma once

#include "settings/settings.h"

#include <QCoreApplication>
#include <QString>

namespace porvane {

// The gate in front of the settings window, and the rules for a new settings password.
class SettingsPassword {
    Q_DECLARE_TR_FUNCTIONS(SettingsPassword)

public:
    enum class Check { Accepted, Wrong, ExtendedRefused };

    // Plain printable characters are blank to "~"; anything else counts as extended.
    static bool isPlain(const QString& text);
    static bool extendedAllowed(const Settings& settings) { return settings.ckAllowExtCiPW == u"1"; }

    // Checks a typed password against SettingsPassword. Extended characters are refused before the
    // comparison unless ckAllowExtCiPW is "1".
    static Check check(const Settings& settings, const QString& typed);

    // Why a new password cannot be taken (empty when it can): settings holds the options as they will be
    // saved, so a change of ckAllowExtCiPW in the same session counts.
    static QString refusal(const Settings& settings, const QString& newPassword, const QString& repeated);

    static QString extendedRefusedText() {
        return tr("Options Currently set Prohibit EXTENDED Characters in Passwords    ");
    }
    static QString wrongText() { return tr("The settings password is not correct."); }
    // The password lies in 64 columns of the settings record and is read back trimmed.
    static constexpr int kMaxLength = 64;
};

} // namespace porvane
