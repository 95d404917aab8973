#pragma once

#include <QRegularExpression>
#include <QString>
#include <array>

namespace porvane {

// Where each kind of data file lives in the data folder and on the server: the month files in booking (key
// yymm), the day status files in day_status (key yymmdd). The key is the file's name without ".vrf"/".vdf".
struct StoredTable {
    const char* folder;
    const char* suffix;
    const char* table;
    const char* keyColumn;
    QRegularExpression fileName; // captures the key
};

const std::array<StoredTable, 2>& storedTables();

} // namespace porvane
