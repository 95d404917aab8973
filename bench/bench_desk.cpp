#include "bench_desk.h"

namespace porvane::bench {

void fillBenchBooking(CurrentRecord& record, const QString& regNo, const QString& note) {
    record.ClearRecord();
    record[Field::RegNo] = regNo;
    record[Field::FirstName] = QStringLiteral("Bench");
    record[Field::LastName] = QStringLiteral("Marker");
    record[Field::Department] = QStringLiteral("RECEPTION");
    record[Field::Organisation] = QStringLiteral("Benchmark Visitors Ltd");
    record[Field::OurRef] = note;
    record.bookedTimes()[14] = QStringLiteral("09:30");
}

} // namespace porvane::bench
