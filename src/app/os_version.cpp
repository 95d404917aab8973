#include "app/os_version.h"

#ifdef Q_OS_WIN
#include <uxtheme.h>
#include <windows.h>
#endif

namespace porvane {

QString GetOsVersion(int major, int minor) {
    return QString::number(double(major) + double(minor) / 100.0, 'f', 2);
}

OsVersionTest testOsVersion(const QString& versionText) {
    bool ok = false;
    const double version = versionText.trimmed().toDouble(&ok);
    // Compared in hundredths so that 5.01 is not lost to rounding.
    if (!ok || qRound(version * 100.0) < 501)
        return {};
    return {true, int(version)};
}

QString visualStyleManifest(const QString& maker, const QString& exeName, const QString& version,
                            const QString& description) {
    QString text = QStringLiteral(
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
        "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\r\n"
        "<assemblyIdentity processorArchitecture=\"x86\" version=\"EXEVERSION\" type=\"win32\" "
        "name=\"COMPANYNAME.EXENAME\"/>\r\n"
        "<description>EXEDESCRIPTION</description>\r\n"
        "<dependency>\r\n"
        "  <dependentAssembly>\r\n"
        "    <assemblyIdentity type=\"win32\" name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\" "
        "processorArchitecture=\"x86\" publicKeyToken=\"6595b64144ccf1df\" language=\"*\"/>\r\n"
        "  </dependentAssembly>\r\n"
        "</dependency>\r\n"
        "</assembly>\r\n");
    text.replace(QStringLiteral("EXEVERSION"), version);
    text.replace(QStringLiteral("COMPANYNAME"), maker);
    text.replace(QStringLiteral("EXENAME"), exeName);
    text.replace(QStringLiteral("EXEDESCRIPTION"), description);
    return text;
}

#ifdef Q_OS_WIN
QString GetOsVersion() {
    const DWORD v = ::GetVersion();
    return GetOsVersion(int(LOBYTE(LOWORD(v))), int(HIBYTE(LOWORD(v))));
}

bool visualThemeActive() {
    return ::IsThemeActive() != FALSE;
}
#endif

} // namespace porvane
