#pragma once

#include "lists/list_columns.h"

namespace porvane {

// "Select Day Record": every booking of the date's month file that has a booked time on that day or a pass
// that covers it, in file order.
BuiltList buildDayList(const QString& dataPath, const QDate& date);

} // namespace porvane
