#pragma once

#include "lists/list_table.h"

class QIODevice;

namespace porvane {

// Writes a list as UTF-8 text: the header row, then one line for each listed row (never the empty rows after
// them), each cell without its leading and trailing blanks. Cells are separated by tabs, or written as
// RFC 4180 CSV (CR LF line ends, fields quoted where they must be). The text goes out in small pieces, so a
// month of tens of thousands of rows never stands in memory a second time. Returns false when a write failed.
bool writeListTableText(const ListTable& table, bool csv, QIODevice& out);

} // namespace porvane
