#include "photos/photo_files.h"

#include "app/lock_question.h"
#include "store/data_lock.h"
#include "store/safe_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>

namespace porvane {

PhotoFileTime photoFileTime(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return {QStringLiteral("01/01/1601"), QStringLiteral("00:00:00"), {}};
    const QDateTime written = file.fileTime(QFileDevice::FileModificationTime).toLocalTime();
    return {written.toString(QStringLiteral("dd/MM/yyyy")), written.toString(QStringLiteral("hh:mm:ss")),
            written};
}

QString photoAge(const QDateTime& taken, const QDateTime& now) {
    auto tr = [](const char* text) {
        return QCoreApplication::translate("PhotoAge", text);
    };
    int months = (now.date().year() - taken.date().year()) * 12 + now.date().month() - taken.date().month();
    if (months > 0 && taken.addMonths(months) > now)
        --months;
    if (months > 0) {
        if (months == 1)
            return tr("1 Month");
        if (months > 24)
            return tr("> 2 Years");
        if (months > 12)
            return tr("> 1 Year");
        return tr("%1 Months").arg(months);
    }
    qint64 days = taken.daysTo(now);
    if (days > 0 && taken.addDays(days) > now)
        --days;
    if (days > 0)
        return days == 1 ? tr("1 Day") : tr("%1 Days").arg(days);
    const qint64 hours = std::max<qint64>(0, taken.secsTo(now) / 3600);
    if (hours == 0)
        return tr("< 1 Hour");
    return hours == 1 ? tr("1 Hour") : tr("%1 Hours").arg(hours);
}

FileError replacePhotoFile(const QString& dataPath, Prompter& prompter, const QString& path,
                           const QByteArray& bytes) {
    const QString folder = QFileInfo(path).absolutePath();
    DataLock lock(dataPath);
    if (FileError e = takeDataLock(lock, prompter))
        return e;
    errno = 0;
    if (!QDir().mkpath(folder))
        return FileError::fromErrno(errno ? errno : ENOENT, folder);
    return replaceFile(path, bytes);
}

} // namespace porvane
