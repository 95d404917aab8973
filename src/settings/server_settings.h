#pragma once

#include "settings/settings.h"

#include <QCoreApplication>
#include <QString>

#include <functional>

namespace porvane {

// Tries to reach the bookings server named by a libpq connection string: empty when it answers and holds
// this program's tables, otherwise why not. The settings cannot reach a server themselves; the desk hands
// this in.
using ServerTest = std::function<QString(const QString& connInfo)>;

// The bookings server as the settings name it.
class ServerSettings {
    Q_DECLARE_TR_FUNCTIONS(ServerSettings)

public:
    // The libpq connection string of the server settings: key='value' pairs, each value quoted as libpq
    // reads it, the password deciphered with the rest of the record; empty settings are left out so that
    // libpq's defaults apply. Empty when no host is set (the data folder).
    static QString connInfo(const Settings& settings);

    // Why the server settings cannot be saved (empty when they can).
    static QString refusal(const Settings& settings);

    // True when the two settings name different stores.
    static bool storeChanged(const Settings& before, const Settings& after) {
        return connInfo(before) != connInfo(after);
    }

    // The message the operator sees when the server cannot be reached.
    static QString unreachableText(const QString& why) {
        return tr("The bookings server cannot be reached: %1").arg(why.simplified());
    }
};

} // namespace porvane
