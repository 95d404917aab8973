#include "lists/list_columns.h"

#include "store/digits.h"

#include <algorithm>
#include <cstring>

namespace porvane {

QByteArrayView passTypeText(QByteArrayView letter) {
    switch (letter.size() == 1 ? letter.front() : '\0') {
    case 'D':
        return "Day";
    case 'W':
        return "Week";
    case 'M':
        return "Month";
    default:
        return {};
    }
}

ListCell slotCell(QByteArrayView slot, std::array<char, 8>& scratch, TextColour colour) {
    const qsizetype half = std::min<qsizetype>(2, slot.size());
    char* out = scratch.data();
    out = std::copy_n(slot.data(), half, out);
    *out++ = ':';
    out = std::copy_n(slot.data() + slot.size() - half, half, out);
    return {QByteArrayView(scratch.data(), out - scratch.data()), colour};
}

QByteArrayView rawSlot(const RecordLine& line, int day) {
    return line.columns(bookedSlotColumn(day), kBookedSlotWidth);
}

namespace {

int passDateNumber(QByteArrayView date) {
    // Nearly every stored pass date is "dd-mm-yyyy" or blank, and every line of every month is tested: those
    // two are read without the general reading below, which gives the same numbers.
    if (date.size() == 10) {
        const auto digit = [&](int i) {
            return int(static_cast<unsigned char>(date[i])) - '0';
        };
        const auto isDigit = [&](int i) {
            return unsigned(digit(i)) < 10;
        };
        if (isDigit(0) && isDigit(1) && isDigit(3) && isDigit(4) && isDigit(8) && isDigit(9))
            return ((digit(8) * 10 + digit(9)) * 100 + digit(3) * 10 + digit(4)) * 100 + digit(0) * 10 +
                   digit(1);
        if (std::memcmp(date.data(), "          ", 10) == 0)
            return 0;
    }
    char yymmdd[6];
    qsizetype len = 0;
    // Characters 9-10, 4-5 and 1-2 of "dd-mm-yyyy"; a short text gives what it has.
    for (const auto& [from, count] : {std::pair{8, 2}, std::pair{3, 2}, std::pair{0, 2}})
        for (int i = from; i < from + count && i < date.size(); ++i)
            yymmdd[len++] = date[i];
    return leadingNumber(QByteArrayView(yymmdd, len), " "); // blanks inside are passed over too
}

} // namespace

bool passDateInRange(QByteArrayView from, QByteArrayView to, int dateNumber) {
    return passDateNumber(from) <= dateNumber && dateNumber <= passDateNumber(to);
}

QByteArray storedDate(const QDate& date) {
    return date.toString(QStringLiteral("dd-MM-yyyy")).toLatin1();
}

int passDateNumber(const QDate& date) {
    return passDateNumber(QByteArrayView(storedDate(date)));
}

} // namespace porvane
