#pragma once

#include "store/line_files.h"

#include <QString>

#include <memory>

namespace porvane {

// The month and day status files kept on a PostgreSQL server (the tables of server_schema.h), opened from a
// libpq connection string. Null with error set when the server cannot be reached or its tables are not
// those of this program.
std::unique_ptr<LineFiles> openServerFiles(const QString& connInfo, QString& error);

} // namespace porvane
