#pragma once

#include "app/app_state.h"
#include "store/file_error.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QString>
#include <chrono>
#include <functional>

namespace porvane {

class WritePath;

// What a store operation did. On anything but Ok the current record is left exactly as it was, so nothing
// the operator typed is lost.
struct StoreResult {
    enum class Status {
        Ok,
        Refused,    // a validation message was shown; nothing was written
        FileFailed, // error holds the number and text to show (also: data folder held by another desk)
    };
    Status status = Status::Ok;
    FileError error;
    QString regNo;     // the booking's identifier after the operation
    QString passLabel; // "Pass Revoked" after an update that revoked the pass, else empty

    bool ok() const { return status == Status::Ok; }
};

// The identifier of a new booking: now as "yymmddhhmmss" with its first four characters replaced by the
// booking month "yymm". A booking made on 14 Nov 2026 at 10:05:07 for March 2024 gets 240314100507.
QString makeRegNo(const QDateTime& now, const QString& bookingYymm);

// Finds the booking's line in its month file and decodes it into record; false when it is not there. A month
// file that cannot be read leaves error set. Takes no lock: a read always sees one whole version of the file.
bool readBookingLine(const QString& dataPath, const QString& regNo, CurrentRecord& record, FileError& error);

// Saves, updates and deletes the current record's line in its month file <data>/Record/<yymm>.vrf. Every
// change is made under the data folder's lock, from a fresh read, and replaces the file atomically.
class RecordStore {
    Q_DECLARE_TR_FUNCTIONS(RecordStore)

public:
    explicit RecordStore(AppState& state);

    // How long a change waits for another desk's lock before asking the operator what to do.
    std::chrono::milliseconds lockWait{10000};
    // Where the bytes go; tests hand in one that fails part-way. Null means the real file system.
    WritePath* writePath = nullptr;
    // Called with "Pass Revoked" the moment an update has revoked the pass, before the one-second pause,
    // so the window can show it in its pass label.
    std::function<void(const QString&)> passLabelShown;

    // Validates names, department and organisation, makes a new RegNo from the clock and the booking month
    // ("yymm") and appends the line. On success RegNo is set and the record is marked saved.
    StoreResult SaveNewRecord(const QString& bookingYymm);
    // Validates the names and replaces every line of the month whose identifier equals regNoText (the
    // registration box) with the current record's line, revoking the pass first when RemovePassRequested.
    StoreResult UpdateRecord(const QString& bookingYymm, const QString& regNoText);
    // Removes every line whose identifier equals regNoText, then the booking's photo.
    StoreResult DeleteBooking(const QString& bookingYymm, const QString& regNoText);

private:
    bool namesValid();
    bool refuse(const QString& text);

    AppState& m_state;
};

} // namespace porvane
