#pragma once

#include "lists/list_columns.h"

namespace porvane {

// "Select Day Record": every booking of the date's month file that has a booked time on that day or a pass
// that covers it, in file order.
// Each row goes to the listener, if any, as it is read.
BuiltList buildDayList(LineFiles& files, const QDate& date, const RowListener& listener = {});

} // namespace porvane
