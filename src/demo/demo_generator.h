#pragma once

#include "store/file_error.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>
#include <cstdint>

namespace porvane {

class LockHolderQuestion;

// Invents bookings for demonstrations and benchmarks: varied names and organisations, categories and
// departments from the pick lists, telephone numbers, booked times on working days, and some passes.
// The same seed gives the same files.
class DemoGenerator {
public:
    struct Options {
        int fromYear = 0;
        int fromMonth = 0;
        int months = 1;
        int perMonth = 50;
        std::uint32_t seed = 1;
        // Roughly one booking in this many carries a pass; 0 for none.
        int passEvery = 40;
        QStringList categories; // entries as the pick lists give them; blanks are trimmed
        QStringList departments;
    };

    explicit DemoGenerator(Options options);

    // The lines of one month's file (CR LF after each), month index 0 .. months-1.
    QByteArray monthFile(int monthIndex) const;
    QDate monthStart(int monthIndex) const {
        return QDate(m_options.fromYear, m_options.fromMonth, 1).addMonths(monthIndex);
    }

    // Appends every month's bookings to its file in the data folder, one append per month under the data
    // folder's lock (lockQuestion is asked while another desk holds it). Returns the first error; months
    // already written stay written.
    FileError appendTo(const QString& dataPath, LockHolderQuestion& lockQuestion) const;

private:
    Options m_options;
};

} // namespace porvane
