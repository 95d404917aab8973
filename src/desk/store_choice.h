#pragma once

#include <QString>

namespace porvane {

// Tries the bookings server of a libpq connection string: empty when it answers and holds this program's
// tables, otherwise why not. What the settings window's "Test connection" runs.
QString reachServer(const QString& connInfo);

} // namespace porvane
