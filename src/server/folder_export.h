#pragma once

#include "server/server_connection.h"

#include <QString>

namespace porvane {

// What writing the server's bookings into a data folder did; error is empty when all went well.
struct FolderExport {
    int files = 0;
    int lines = 0;
    QString error;
};

// Writes every month's bookings to Record/yymm.vrf and every day's status lines to Status/yymmdd.vdf, in
// their order, each line as the folder store wrote it and ended by CR LF. The folder and its Record, Status
// and photo folders are made when missing; a folder that already holds a month or day status file is
// refused, so that no desk's data is overwritten.
FolderExport exportDataFolder(ServerConnection& server, const QString& dataPath);

} // namespace porvane
