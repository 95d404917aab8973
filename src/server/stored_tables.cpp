#include "server/stored_tables.h"

namespace porvane {

const std::array<StoredTable, 2>& storedTables() {
    static const std::array<StoredTable, 2> tables{{
        {"Record", ".vrf", "booking", "yymm",
         QRegularExpression(QStringLiteral("^(\\d{2}(?:0[1-9]|1[0-2]))\\.vrf$"))},
        {"Status", ".vdf", "day_status", "day", QRegularExpression(QStringLiteral("^(\\d{6})\\.vdf$"))},
    }};
    return tables;
}

} // namespace porvane
