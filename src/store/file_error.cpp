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

} // namespace porvane
