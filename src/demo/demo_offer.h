#pragma once

#include "app/app_state.h"

#include <QCoreApplication>
#include <QDate>

namespace porvane {

// The desk's demonstration button: offers to fill an empty month with invented bookings, writes them and
// says what it made. A month that already holds bookings is left alone, since invented identifiers could
// match real ones.
class DemoOffer {
    Q_DECLARE_TR_FUNCTIONS(DemoOffer)

public:
    static constexpr int kBookings = 60;

    // Asks first; true when bookings were written (the list then needs refreshing).
    static bool run(AppState& state, QDate month);
};

} // namespace porvane
