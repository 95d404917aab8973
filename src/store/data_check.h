#pragma once

#include "store/line_files.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

namespace porvane {

// One damaged line of a data file: the file (relative to the data folder), its 1-based line number and what
// is wrong with it.
struct DataDamage {
    QString file;
    int line = 0;
    QString what;
};

// Checks one stored line of a month file (yymm, "2403") or a day status file (yymmdd, "240315"): length,
// control characters, the identifier's twelve digits and month, the arrival and departure columns, the pass
// dates and the booked-time slots. Returns each fault found, empty for a sound line. A status line may hold a
// booking of a neighbouring month, so only a month file ties the identifier to its own month.
QStringList checkStoredLine(QByteArrayView line, const QString& fileStem, bool monthFile);

// Checks every month file (Record/yymm.vrf) and day status file (Status/yymmdd.vdf) of the data folder,
// including line ends: each line must end in CR LF (a lone CR or LF ends a line too, and is reported). files
// tells how many files were read whole. A file that cannot be read (a link, a pipe, a line longer than any
// booking) and a temporary file left by a desk stopped while it wrote are reported as damage at line 0.
QList<DataDamage> checkDataFolder(const QString& dataPath, int* files = nullptr);
// The same line checks over the month and day status files of a store that is not a folder: its files are
// named as in the data folder ("Record/2403.vrf").
QList<DataDamage> checkLineFiles(LineFiles& store, int* files = nullptr);

} // namespace porvane
