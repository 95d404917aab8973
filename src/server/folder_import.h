#pragma once

#include "server/server_connection.h"
#include "store/data_check.h"

#include <QList>
#include <QString>

namespace porvane {

// What loading a data folder into the server did.
struct FolderImport {
    int files = 0; // month and day status files loaded
    int lines = 0; // lines loaded
    // Lines that could not be loaded: the file relative to the data folder, the line number (0 for the file
    // as a whole) and why. Every other line of the file is loaded.
    QList<DataDamage> notLoaded;
    // The server failed while loading failedFile: the files before it are loaded, it and those after are not.
    ServerError error;
    QString failedFile;
};

// Loads every month file (Record/yymm.vrf) into the bookings and every day status file (Status/yymmdd.vdf)
// into the day status lines, each file in one transaction that replaces what the server held for that month
// or day, in the file's line order.
FolderImport importDataFolder(ServerConnection& server, const QString& dataPath);

} // namespace porvane
