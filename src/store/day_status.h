#pragma once

#include "store/file_error.h"
#include "store/line_files.h"

#include <QDate>
#include <QHash>
#include <QString>

namespace porvane {

// A booking's arrival and departure in a day status file, "hhmm" each (columns 991-992 and 994-995,
// 996-997 and 999-1000); found is false when the booking has no line there.
struct SiteTimes {
    bool found = false;
    QString arrival;
    QString departure;
};

// Streams the day's file; the last line whose first 12 characters equal regNo wins. A missing file reads as
// no line.
SiteTimes readSiteTimes(LineFiles& files, const QDate& day, const QString& regNo);

// The edit that writes arrival and departure ("hh:mm" or "  -  ", at most five characters each) into every
// line whose first 12 characters equal key, as UpdateDayStatus says.
LineEdit markSiteTimes(const QByteArray& key, const QByteArray& arrival, const QByteArray& departure);

// Writes a booking's arrival and departure (its TimeOnSite and TimeOffSite) into every line of the day's
// status file whose first 12 characters equal the registration box's trimmed text. Each value replaces at
// most five characters at columns 991 and 996; a line too short to hold them is first padded with blanks to
// 1000 columns, otherwise no line changes its length. One change of the store, from a fresh read; a booking
// with no line leaves the file untouched.
FileError UpdateDayStatus(LineFiles& files, const QDate& day, const QString& regNoText,
                          const QString& arrival, const QString& departure);

// End of day: writes one departure time ("hh:mm") into the lines of the day's status file named by marksSeen
// (RegNo -> the arrival and departure, columns 991-1000, as the caller saw them), in a single rewrite in one
// change of the store. A line whose marks another desk changed since is left as it is.
FileError SignOutDayStatus(LineFiles& files, const QDate& day, const QHash<QString, QString>& marksSeen,
                           const QString& departure);

} // namespace porvane
