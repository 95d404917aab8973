#include "settings/settings_password.h"

#include "store/windows1252.h"

namespace porvane {

bool SettingsPassword::isPlain(const QString& text) {
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() > 0x7E)
            return false;
    }
    return true;
}

SettingsPassword::Check SettingsPassword::check(const Settings& settings, const QString& typed) {
    if (!extendedAllowed(settings) && !isPlain(typed))
        return Check::ExtendedRefused;
    return typed == settings.SettingsPassword ? Check::Accepted : Check::Wrong;
}

QString SettingsPassword::refusal(const Settings& settings, const QString& newPassword,
                                  const QString& repeated) {
    if (newPassword != repeated)
        return tr("The new password and its repetition differ.");
    // Blanks at either end would be lost when the settings are read back.
    if (newPassword != newPassword.trimmed())
        return tr("A password cannot begin or end with a blank.");
    if (newPassword.isEmpty())
        return tr("The new password is empty.");
    if (newPassword.size() > kMaxLength)
        return tr("A password can have at most %1 characters.").arg(kMaxLength);
    if (!extendedAllowed(settings) && !isPlain(newPassword))
        return extendedRefusedText();
    // The settings record holds single-byte text; a character it cannot hold would become "?" and the
    // password could never be typed again.
    if (fromWindows1252(toWindows1252(newPassword)) != newPassword)
        return tr("The password has a character that cannot be stored.");
    return {};
}

} // namespace porvane
