#include "app/system_start_up.h"

#include "app/os_version.h"

#include <QDir>
#include <QGuiApplication>
#include <QSaveFile>
#include <QScreen>

namespace porvane {

void SystemStartUp::enterAppFolder(const QString& appPath) {
    QDir::setCurrent(appPath);
}

QString SystemStartUp::osVersion() {
#ifdef Q_OS_WIN
    return GetOsVersion();
#else
    return {};
#endif
}

void SystemStartUp::prepareVisualStyle([[maybe_unused]] const QString& appPath) {
#ifdef Q_OS_WIN
    // Qt draws its own common controls; the manifest is what older tools beside the desk look for.
    QSaveFile file(appPath + manifestFileName());
    if (file.open(QIODevice::WriteOnly)) {
        file.write(visualStyleManifest(QStringLiteral("Tarnwell"), QStringLiteral("Porvane90"),
                                       QStringLiteral(PORVANE_VERSION ".0"),
                                       QStringLiteral("Porvane 90 visitor management"))
                       .toUtf8());
        file.commit();
    }
#endif
}

bool SystemStartUp::visualThemeActive() {
#ifdef Q_OS_WIN
    return porvane::visualThemeActive();
#else
    return true;
#endif
}

bool SystemStartUp::claimSingleInstance() {
    return m_instance.acquire();
}

int SystemStartUp::screenHeight() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->size().height() : 0;
}

} // namespace porvane
