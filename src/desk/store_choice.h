#pragma once

#include <QString>

namespace porvane {

class AppState;

// Makes the desk read and write where its settings say: the data folder, or the bookings server when a host
// is set. The server is tried at once; when it cannot be reached the operator is told, and the desk tries it
// again at the next action. False when the server could not be reached now.
bool useStoreOfSettings(AppState& state);

// Tries the bookings server of a libpq connection string: empty when it answers and holds this program's
// tables, otherwise why not. What the settings window's "Test connection" runs.
QString reachServer(const QString& connInfo);

} // namespace porvane
