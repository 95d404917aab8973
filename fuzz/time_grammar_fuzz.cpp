// The time grammar of the booked-times grid on any typed text.
#include "desk/booked_times.h"

#include <cstddef>
#include <cstdint>

using namespace porvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString typed = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const TimeEntry entry = parseTimeEntry(typed);
    switch (entry.outcome) {
    case TimeEntry::Outcome::Accepted:
        // What the grammar accepts is empty or a time it would accept again unchanged.
        if (!entry.text.isEmpty() &&
            (!isValidTime(entry.text) || parseTimeEntry(entry.text).text != entry.text))
            __builtin_trap();
        break;
    case TimeEntry::Outcome::InvalidTime:
        if (!entry.text.isEmpty())
            __builtin_trap(); // the cell is emptied
        break;
    case TimeEntry::Outcome::IncorrectFormat:
        if (typed.trimmed().size() != 5)
            __builtin_trap(); // only a five-character text has a separator to refuse
        break;
    }
    return 0;
}
