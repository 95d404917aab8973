#pragma once

#include "app/prompter.h"
#include "store/file_error.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace porvane {

// A photo file longer than this is taken as made with too high a camera resolution.
inline constexpr qint64 kPhotoSizeLimit = 100000;

// A photo file's last-written time as two local texts, "dd/mm/yyyy" and "hh:mm:ss". The file is opened for
// writing on purpose: a read-only or locked photo yields the zero time, "01/01/1601" "00:00:00".
struct PhotoFileTime {
    QString date;
    QString time;
    QDateTime moment; // invalid for the zero time
};
PhotoFileTime photoFileTime(const QString& path);

// The age shown for a photo taken at `taken`, seen at `now`: whole calendar months, else whole days, else
// whole hours ("< 1 Hour", "1 Day", "12 Months", "> 1 Year", "> 2 Years", ...).
QString photoAge(const QDateTime& taken, const QDateTime& now);

// Writes a photo file whole under the data folder's lock, replacing an older one only once the new one is
// complete; creates the month folder when it is missing. The prompter asks when another desk holds the lock.
FileError replacePhotoFile(const QString& dataPath, Prompter& prompter, const QString& path,
                           const QByteArray& bytes);

} // namespace porvane
