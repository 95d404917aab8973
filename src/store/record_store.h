#pragma once

#include "store/current_record.h"
#include "store/file_error.h"
#include "store/line_files.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QString>
#include <array>
#include <functional>

namespace porvane {

// What a store operation did. The store never talks to the operator: a refusal or a failed write comes back
// here, and the desk shows it; the record the desk holds is never touched.
struct StoreResult {
    enum class Status {
        Ok,
        Refused,    // error.text says why (a validation message); nothing was written
        FileFailed, // error holds the number and text to show (also: data folder held by another desk)
    };
    Status status = Status::Ok;
    FileError error;
    QString regNo; // the booking's identifier after the operation

    bool ok() const { return status == Status::Ok; }
};

// The identifier of a new booking: now as "yymmddhhmmss" with its first four characters replaced by the
// booking month "yymm". A booking made on 14 Nov 2026 at 10:05:07 for March 2024 gets 240314100507.
QString makeRegNo(const QDateTime& now, const QString& bookingYymm);

// Finds the booking's line in its month file and decodes it into record; false when it is not there. A month
// file that cannot be read leaves error set. Holds no store: a read always sees one whole version of the
// file.
bool readBookingLine(LineFiles& files, const QString& regNo, CurrentRecord& record, FileError& error);

// The four pass fields, blanked when a pass is revoked.
inline constexpr std::array<Field, 4> kPassFields{Field::PassStart, Field::PassEnd, Field::PassPeriod,
                                                  Field::PassIssued};

// Saves, updates and deletes a booking's line in its month file "yymm". Every change is one change of the
// store, from a fresh read.
class RecordStore {
    Q_DECLARE_TR_FUNCTIONS(RecordStore)

public:
    // files and dataPath are asked at every change, since the settings can move the data folder or name
    // another store while the desk runs; the data folder keeps the photos. now gives a new booking's
    // identifier.
    RecordStore(std::function<LineFiles&()> files, std::function<QString()> dataPath,
                std::function<QDateTime()> now);

    // Validates names, department and organisation, makes a new RegNo from the clock and the booking month
    // ("yymm") and appends the booking's line under it; the result carries the new RegNo.
    StoreResult SaveNewRecord(const CurrentRecord& booking, const QString& bookingYymm);
    // Validates the names and replaces every line of the month whose identifier equals regNoText (the
    // registration box) with the booking's line.
    StoreResult UpdateRecord(const CurrentRecord& booking, const QString& bookingYymm,
                             const QString& regNoText);
    // Writes only the pass fields of the booking into those lines; the rest of each stored line stays as it
    // is, so edits not yet saved are not stored behind the operator's back.
    StoreResult UpdatePass(const CurrentRecord& booking, const QString& bookingYymm,
                           const QString& regNoText);
    // Removes every line whose identifier equals regNoText, then the booking's photo (under its names).
    StoreResult DeleteBooking(const QString& bookingYymm, const QString& regNoText, const QString& firstName,
                              const QString& lastName);

private:
    // Rewrites the month with each line of the identifier handed to replace, which writes what takes its
    // place (lines with their line ends, or nothing).
    StoreResult replaceLines(const QString& bookingYymm, const QString& regNoText,
                             const std::function<void(QByteArrayView stored, QByteArray& out)>& replace,
                             const std::function<void()>& afterWrite = {});

    std::function<LineFiles&()> m_files;
    std::function<QString()> m_dataPath;
    std::function<QDateTime()> m_now;
};

} // namespace porvane
