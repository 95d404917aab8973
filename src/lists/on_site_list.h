#pragma once

#include "lists/list_columns.h"

namespace porvane {

// Where the on-site list shows what the desk reads back from it: who is on site, and the roll call.
enum OnSiteColumn : int {
    kOnSiteRegNo = 0,
    kOnSiteFirstName = 1,
    kOnSiteLastName = 2,
    kOnSiteOrganisation = 3,
    kOnSiteExpected = 5,
    kOnSiteArrived = 6,
    kOnSiteDeparted = 7,
    kOnSitePassEnds = 12,
    kOnSiteCarReg = 15,
    kOnSiteReportsTo = 16,
};

// The IN/OUT day-status view: today's day status file, rebuilt from the month files ("Write List") and then
// listed with who is expected, on site and gone.
class OnSiteList {
public:
    // Rebuilds today's status file from the thirteen month files around today: every booking with a booked
    // time today in today's month file, and every booking of any of them whose pass covers today. The IN/OUT
    // marks already in the file are kept by RegNo; where two lines share a RegNo, each keeps its own. The
    // month files are read without holding the store; the status file is read fresh and replaced in one
    // change, so a mark made a moment ago by another desk survives. On any error the status file is left as
    // it was.
    static FileError writeStatusList(LineFiles& files, const QDate& today);

    // Lists today's status file line by line, with the arrival and departure colours; each row goes to the
    // listener, if any, as it is read.
    static BuiltList build(LineFiles& files, const QDate& today, const RowListener& listener = {});
};

// A mark "hh:mm" (or "hhmm") as the number hhmm; a missing mark ("  -  ", blanks) is 0.
int markNumber(QByteArrayView mark);

} // namespace porvane
