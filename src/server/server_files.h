#pragma once

#include "store/line_files.h"

#include <QList>
#include <QString>

#include <memory>

namespace porvane {

// The month and day status files kept on a PostgreSQL server (the tables of server_schema.h), opened from a
// libpq connection string. Null with error set when the server cannot be reached or its tables are not
// those of this program.
//
// Reads see one committed version of a file; a change is one transaction, and changes of all desks follow
// one another as under the data folder's lock. A failure comes back as a FileError: ServerUnreachable when
// the server cannot be reached or the connection was lost (the next call connects again), ServerFailed when
// it refused a statement; the text says which and why.
std::unique_ptr<LineFiles> openServerFiles(const QString& connInfo, QString& error);

// Each committed change that altered files sends a notification on this channel (LISTEN porvane_changes).
// Its payload names the altered files, separated by single blanks: a month file by its "yymm" key, a day
// status file by its "yymmdd" key ("2403 240314"); "*" when they are too many to name (any file may have
// changed).
inline constexpr const char* kServerChangesChannel = "porvane_changes";

// The files a payload names; every file of both kinds may have changed when all is set.
struct ChangedFiles {
    QList<LineFileName> names;
    bool all = false;
};
ChangedFiles changedFilesOf(const QString& payload);

} // namespace porvane
