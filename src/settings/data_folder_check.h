#pragma once

#include "store/file_error.h"

#include <QString>
#include <QStringList>

namespace porvane {

// Whether a folder can serve as the data folder: it must exist, be a folder, take new files, and hold the
// Record, Status and photo folders (which the desk expects and never makes itself).
struct DataFolderCheck {
    enum class Status {
        Ready,
        NotAbsolute,
        NotWindows1252,
        Missing,
        NotAFolder,
        NotWritable,
        LacksSubfolders
    };
    Status status = Status::Ready;
    QStringList missingSubfolders; // LacksSubfolders: which of Record, Status, photo are not there

    static DataFolderCheck of(const QString& path);
    // Whether path is an existing folder given in full, in characters the settings file can hold (the second
    // folder needs no more than that).
    static DataFolderCheck existingFolder(const QString& path);
    // Makes the missing sub-folders; the first failure stops it.
    static FileError createSubfolders(const QString& path, const QStringList& names);

    static QStringList subfolderNames();
    // Where a folder browser should start for a typed path: the path itself or its nearest existing parent.
    static QString nearestExistingFolder(const QString& path);
};

} // namespace porvane
