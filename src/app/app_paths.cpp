#include "app/app_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace porvane {

QString withTrailingSlash(const QString& path) {
    return path.endsWith(u'/') ? path : path + u'/';
}

QString resolveAppPath(const QStringList& arguments, const QString& environmentHome,
                       const QString& programDir, bool programDirWritable, const QString& userHome) {
    QString home;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        if (a == u"--home" && i + 1 < arguments.size())
            home = arguments.at(i + 1);
        else if (a.startsWith(u"--home="))
            home = a.mid(7);
    }
    if (home.isEmpty())
        home = environmentHome;
    if (home.isEmpty())
        home = programDirWritable || userHome.isEmpty() ? programDir : userHome;
    return withTrailingSlash(QDir::cleanPath(QDir(home).absolutePath()));
}

QString AppPathForThisProgram() {
    const QString programDir = QCoreApplication::applicationDirPath();
    return resolveAppPath(QCoreApplication::arguments(), qEnvironmentVariable("PORVANE_HOME"), programDir,
                          QFileInfo(programDir).isWritable(),
                          QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                              QStringLiteral("/porvane90"));
}

bool FileExists(const QString& path) {
    return !path.isEmpty() && QFileInfo(path).exists();
}

bool seedHomeFolder(const QString& appPath, const QString& programDir) {
    const QDir from(programDir);
    const QDir to(appPath);
    if (from.canonicalPath() == to.canonicalPath())
        return true;
    // What the program ships, and only that: pick lists, pass images and help pages. Whatever a run wrote
    // beside the program (its settings, and with them its data folder) stays that installation's own.
    QStringList shipped{QStringLiteral("_PSF/PSystem/PACustom.ini")};
    for (const QString& folder : {QStringLiteral("_PSF/IRender"), QStringLiteral("PorvaneDocs")}) {
        QDirIterator it(from.filePath(folder), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            shipped << from.relativeFilePath(it.next());
    }
    bool ok = true;
    for (const QString& relative : shipped) {
        const QString source = from.filePath(relative);
        const QString target = to.filePath(relative);
        if (!QFileInfo::exists(source) || QFileInfo::exists(target))
            continue;
        ok = QDir().mkpath(QFileInfo(target).absolutePath()) && QFile::copy(source, target) && ok;
        // An installed file is read-only; the site edits its copy (the pick lists).
        QFile(target).setPermissions(QFile(target).permissions() | QFileDevice::WriteOwner);
    }
    return ok;
}

} // namespace porvane
