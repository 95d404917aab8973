#pragma once

#include "lists/list_table.h"

class QIODevice;

namespace porvane {

// Writes a list as UTF-8 text: the header row, then one line for each listed row (never the empty rows after
// them), each cell without its leading and trailing blanks and with control characters (a tab, an escape)
// shown as "?", so that a stored name can neither split its column nor reach the terminal raw. Cells are
// separated by tabs, or written as RFC 4180 CSV (CR LF line ends, fields quoted where they must be). Rows go
// out in small pieces as they are read, so a month of tens of thousands of rows never stands in memory.
// Returns false when a write failed.
bool writeListTableText(const ListTable& table, bool csv, QIODevice& out);

} // namespace porvane
