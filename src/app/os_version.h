#pragma once

#include <QString>

namespace porvane {

// The platform version as the start-up compares it: major plus minor / 100 with two decimals
// (5.1 gives "5.01", 6.0 gives "6.00", a minor version of 10 gives major + 0.10).
QString GetOsVersion(int major, int minor);

// The version test: 5.01 or more admits the visual styles; the whole-number part is the major version.
struct OsVersionTest {
    bool IsXpOrLater = false;
    int OsMajorVersion = 0;
};
OsVersionTest testOsVersion(const QString& versionText);

// The visual-style manifest written beside the program on Windows.
QString visualStyleManifest(const QString& maker, const QString& exeName, const QString& version,
                            const QString& description);

// The manifest's file name beside the program.
inline QString manifestFileName() {
    return QStringLiteral("Porvane90.exe.manifest");
}

#ifdef Q_OS_WIN
// The running system's version text (from GetVersion).
QString GetOsVersion();
// Whether a visual theme is active (uxtheme IsThemeActive).
bool visualThemeActive();
#endif

} // namespace porvane
