#include "desk/desk_help.h"

namespace porvane {

qint32 helpContextFor(DeskAction action) {
    switch (action) {
    case DeskAction::WindowActivated:
        return 1;
    case DeskAction::ListSelectedDay:
    case DeskAction::ListToday:
        return 20;
    case DeskAction::ListMonth:
        return 21;
    case DeskAction::OnSiteList:
        return 22;
    case DeskAction::Find:
        return 23;
    case DeskAction::ListCalendarDay:
        return 24;
    case DeskAction::NewBooking:
        return 25;
    case DeskAction::BookedTimes:
        return 26;
    case DeskAction::ArriveOrDepart:
        return 27;
    case DeskAction::SiteTimesLabel:
        return 28;
    case DeskAction::LocationDetails:
        return 60;
    case DeskAction::PersonalDetails:
        return 61;
    }
    return 1;
}

} // namespace porvane
