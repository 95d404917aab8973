#pragma once

#include "store/record_fields.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <array>

namespace porvane {

// A month or day status line taken apart for the server: each field as its columns store it (the padding
// blanks on the right cut off, leading blanks kept, line-break marks as line breaks) and the 31 booked-time
// slots the same way. Putting it back together gives the line byte for byte, so a data folder moved to the
// server and back is unchanged, arrival and departure columns ("  -  " or blank) included.
struct StoredLine {
    std::array<QString, kFieldCount> fields;
    std::array<QString, kBookedSlotCount> bookedSlots;
};

StoredLine splitStoredLine(QByteArrayView line);
QByteArray joinStoredLine(const StoredLine& stored);

// Why the line cannot go to the server and come back the same (wrong length, a NUL byte, text between the
// fields); empty when it can.
QString whyNotStorable(QByteArrayView line);

} // namespace porvane
