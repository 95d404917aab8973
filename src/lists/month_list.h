#pragma once

#include "lists/list_columns.h"

namespace porvane {

// "Select Month Record": one row for every booked day of every booking of the month, grouped by booking
// and in day order within it. Rows of days before today are grey, today's dark blue, later ones black.
// Each row goes to the listener, if any, as it is read.
BuiltList buildMonthList(LineFiles& files, const QDate& month, const QDate& today,
                         const RowListener& listener = {});

} // namespace porvane
