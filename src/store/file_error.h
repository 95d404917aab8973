#pragma once

#include <QString>

namespace porvane {

// A file failure as the desk reports it: the old program's error number and a text a user can act on.
struct FileError {
    enum Number : int {
        None = 0,
        FileNotFound = 53,
        PathNotFound = 76,
        PermissionDenied = 70,
        DiskFull = 61,
        DeviceIO = 57,
        PathFileAccess = 75,
        // The store on a PostgreSQL server: it could not be reached or the connection was lost (the next
        // action connects again), or it failed a statement.
        ServerUnreachable = 3151,
        ServerFailed = 3146,
    };

    int number = None;
    QString text;

    bool ok() const { return number == None; }
    explicit operator bool() const { return !ok(); } // true when there is an error

    // Classifies the current errno of a failed operation on path.
    static FileError fromErrno(int err, const QString& path);
    static FileError notFound(const QString& path);
    // A symbolic link, folder, pipe or device where the desk expects a file of its own: never followed,
    // opened or waited on.
    static FileError notADataFile(const QString& path);
    // A line longer than any booking can be: the file is damaged, and is not read on.
    static FileError lineTooLong(const QString& path, qint64 lineNumber);
};

} // namespace porvane
