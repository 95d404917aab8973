#pragma once

#include "lists/list_table.h"

#include <QString>

namespace porvane {

// A list as text: the header row, then one line for each listed row (never the empty rows after them), each
// cell without its leading and trailing blanks. Cells are separated by tabs, or written as RFC 4180 CSV
// (CR LF line ends, fields quoted where they must be).
QString listTableText(const ListTable& table, bool csv);

} // namespace porvane
