#pragma once

#include "store/change_watcher.h"

#include <QString>

#include <memory>

namespace porvane {

class AppState;

// Makes the desk read and write where its settings say: the data folder, or the bookings server when a host
// is set. The server is tried at once; when it cannot be reached the operator is told, and the desk tries it
// again at the next action. False when the server could not be reached now.
bool useStoreOfSettings(AppState& state);

// What tells the desk that other desks changed the files of its store: the server's notices when the
// settings name a server, the data folder's Record and Status folders otherwise.
std::unique_ptr<ChangeWatcher> watcherOfSettings(const AppState& state);

// Tries the bookings server of a libpq connection string: empty when it answers and holds this program's
// tables, otherwise why not. What the settings window's "Test connection" runs.
QString reachServer(const QString& connInfo);

} // namespace porvane
