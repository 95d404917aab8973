#include "store/file_error.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <cstring>

namespace porvane {

FileError FileError::fromErrno(int err, const QString& path) {
    const QString where = QDir::toNativeSeparators(path);
    const QString reason = QString::fromLocal8Bit(std::strerror(err));
    switch (err) {
    case ENOENT:
        if (!QFileInfo::exists(QFileInfo(path).absolutePath()))
            return {PathNotFound, QCoreApplication::translate("FileError", "Path not found: %1").arg(where)};
        return notFound(path);
    case ENOTDIR:
        return {PathNotFound, QCoreApplication::translate("FileError", "Path not found: %1").arg(where)};
    case EACCES:
    case EPERM:
    case EROFS:
        return {PermissionDenied,
                QCoreApplication::translate("FileError", "Permission denied: %1").arg(where)};
    case ENOSPC:
    case EDQUOT:
        return {DiskFull, QCoreApplication::translate("FileError", "Disk full: %1").arg(where)};
    case ELOOP:
    case EISDIR:
    case ENXIO:
        return notADataFile(path);
    case EIO:
        return {DeviceIO, QCoreApplication::translate("FileError", "Device I/O error: %1").arg(where)};
    default:
        return {
            PathFileAccess,
            QCoreApplication::translate("FileError", "Path/File access error: %1 (%2)").arg(where, reason)};
    }
}

FileError FileError::notFound(const QString& path) {
    return {
        FileNotFound,
        QCoreApplication::translate("FileError", "File not found: %1").arg(QDir::toNativeSeparators(path))};
}

FileError FileError::notADataFile(const QString& path) {
    return {PathFileAccess,
            QCoreApplication::translate("FileError", "Not a data file (a link, folder, pipe or device): %1")
                .arg(QDir::toNativeSeparators(path))};
}

FileError FileError::lineTooLong(const QString& path, qint64 lineNumber) {
    return {PathFileAccess,
            QCoreApplication::translate("FileError", "Damaged file: line %1 of %2 is longer than any booking")
                .arg(lineNumber)
                .arg(QDir::toNativeSeparators(path))};
}

} // namespace porvane
