#pragma once

#include "server/server_connection.h"

#include <QStringList>

namespace porvane {

// The version of the tables this program reads and writes. Each version's changes are one step of
// server_schema.cpp; a server at an older version is brought up to this one by db init.
inline constexpr int kSchemaVersion = 2;

// The columns of booking and day_status that hold a stored line, in line order: one per field, named as the
// field, then BookedTimes (31 texts, day 1 first).
QStringList storedLineColumns();
inline constexpr const char* kBookedTimesColumnName = "BookedTimes";

// Creates the tables when the database has none, brings older ones up to kSchemaVersion, and refuses tables
// newer than this program knows. Safe to run again, and from two places at once. from tells the version
// found (0 for none).
ServerError initSchema(ServerConnection& server, int* from = nullptr);

// No error when the database holds the tables at kSchemaVersion; otherwise says what to do.
ServerError checkSchema(ServerConnection& server);

} // namespace porvane
