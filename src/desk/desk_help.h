#pragma once

#include "app/app_state.h"

namespace porvane {

// The main window's actions that choose the help topic the help key opens.
enum class DeskAction {
    WindowActivated, // the main window is activated
    ListSelectedDay, // cmdGetAny
    ListToday,       // cmdGetToday
    ListMonth,       // cmdGetTom
    OnSiteList,      // cmdDayList
    Find,            // cmdMFind
    ListCalendarDay, // cmdListCal
    NewBooking,      // cmdNEW
    BookedTimes,     // cmdADD, cmdSUB, or the times grid used
    ArriveOrDepart,  // cmdIN, cmdOUT
    SiteTimesLabel,  // LaON_Site or LaOFFSite double-clicked
    LocationDetails, // the location and work details dialog loads
    PersonalDetails, // the personal details dialog loads
};

qint32 helpContextFor(DeskAction action);
inline void setHelpContext(AppState& state, DeskAction action) {
    state.HelpContext = helpContextFor(action);
}

} // namespace porvane
