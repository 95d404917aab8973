#include "settings/data_folder_check.h"

#include "store/windows1252.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cerrno>

namespace porvane {

QStringList DataFolderCheck::subfolderNames() {
    return {QStringLiteral("Record"), QStringLiteral("Status"), QStringLiteral("photo")};
}

QString DataFolderCheck::nearestExistingFolder(const QString& path) {
    QString folder = QDir::cleanPath(path.trimmed());
    if (!QDir::isAbsolutePath(folder))
        return QDir::rootPath();
    while (!QFileInfo(folder).isDir() && folder != QDir::rootPath())
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

DataFolderCheck DataFolderCheck::existingFolder(const QString& path) {
    DataFolderCheck check;
    const QFileInfo info(path);
    if (path.trimmed().isEmpty() || !QDir::isAbsolutePath(path))
        check.status = Status::NotAbsolute;
    else if (!fitsWindows1252(path))
        check.status = Status::NotWindows1252; // it would be saved with "?" and name no folder next time
    else if (!info.exists())
        check.status = Status::Missing;
    else if (!info.isDir())
        check.status = Status::NotAFolder;
    return check;
}

DataFolderCheck DataFolderCheck::of(const QString& path) {
    DataFolderCheck check = existingFolder(path);
    if (check.status != Status::Ready)
        return check;
    // Permissions alone do not tell for a network share; making a file does.
    QTemporaryFile probe(QDir(path).filePath(QStringLiteral("porvane-write-test-XXXXXX")));
    if (!probe.open()) {
        check.status = Status::NotWritable;
        return check;
    }
    for (const QString& name : subfolderNames()) {
        if (!QFileInfo(QDir(path).filePath(name)).isDir())
            check.missingSubfolders << name;
    }
    if (!check.missingSubfolders.isEmpty())
        check.status = Status::LacksSubfolders;
    return check;
}

FileError DataFolderCheck::createSubfolders(const QString& path, const QStringList& names) {
    for (const QString& name : names) {
        const QString folder = QDir(path).filePath(name);
        errno = 0;
        if (!QDir().mkpath(folder))
            return FileError::fromErrno(errno ? errno : EACCES, folder);
    }
    return {};
}

} // namespace porvane
