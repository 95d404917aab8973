#pragma once

#include "store/file_error.h"
#include "store/safe_file.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QDate>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace porvane {

class LineReader;

// One file of bookings or marks, named as in the data folder: a month file "yymm" (Record/yymm.vrf) or a day
// status file "yymmdd" (Status/yymmdd.vdf).
struct LineFileName {
    enum class Kind { Month, DayStatus };
    Kind kind = Kind::Month;
    QString key; // "2403", "240314"

    static LineFileName month(const QString& yymm) { return {Kind::Month, yymm}; }
    static LineFileName month(const QDate& date);
    static LineFileName dayStatus(const QDate& day);
    bool operator==(const LineFileName&) const = default;
};

// What the reader of a file will look at, so that a store that can pick lines out (the server) sends fewer.
// Every line the reader would take is among those sent, in file order; the reader still decides on each line
// itself, so a store may ignore the narrowing and send the whole file.
struct LineNarrowing {
    QString regNo;           // only lines of this identifier; empty: any
    int bookedDay = 0;       // 1..31: only lines booked on that day or holding pass dates; 0: any
    QString searchWord;      // only lines holding this text in searchFields, whatever its case; empty: any
    QList<int> searchFields; // Field values (store/record_fields.h), each field of the searched columns;
                             // empty: the whole line, booked times included

    static LineNarrowing ofRegNo(const QString& regNo) {
        LineNarrowing n;
        n.regNo = regNo;
        return n;
    }
    static LineNarrowing ofBookedDay(int day) {
        LineNarrowing n;
        n.bookedDay = day;
        return n;
    }
};

// The changes a store makes while it holds itself for one writer: the data folder under its lock, the
// server in one transaction. Each reads fresh what it changes.
class LineFileChanges {
public:
    virtual ~LineFileChanges() = default;
    // The file's lines as they are now, including what this change wrote so far.
    virtual std::unique_ptr<LineReader> read(const LineFileName& name,
                                             const LineNarrowing& narrowing = {}) = 0;
    // Appends one line (without its line end), making the file when missing.
    virtual FileError append(const LineFileName& name, QByteArrayView line) = 0;
    // Hands each line of the file (of those the narrowing names) to edit, as rewriteLines does; only the
    // lines edit takes are changed. changed tells whether any was. A missing file is FileNotFound (53).
    virtual FileError rewrite(const LineFileName& name, const LineNarrowing& narrowing, const LineEdit& edit,
                              bool* changed = nullptr) = 0;
    // Replaces the whole file with what produce writes, lines ended by CR LF; making it when missing.
    virtual FileError replace(const LineFileName& name,
                              const std::function<FileError(const PieceWriter& write)>& produce) = 0;
    // Removes every one of the files, or none of them.
    virtual FileError removeAll(const QList<LineFileName>& names) = 0;
};

// Where the month and day status files are kept: the data folder, or a PostgreSQL server holding the same
// lines. Every list, search, on-site rebuild, save, mark and deletion reads and writes through it, so each is
// written once and runs over either.
class LineFiles {
public:
    virtual ~LineFiles() = default;

    // Reads a file's lines without holding the store; a reader always sees one whole version of the file.
    // A missing file gives a reader whose error is FileNotFound (53).
    virtual std::unique_ptr<LineReader> read(const LineFileName& name,
                                             const LineNarrowing& narrowing = {}) = 0;
    virtual bool exists(const LineFileName& name) = 0;
    // The keys of the files of a kind that exist, in ascending order.
    virtual QStringList keys(LineFileName::Kind kind) = 0;

    // Runs work holding the store for one writer; its changes all happen or none does (the folder: each
    // change replaces its file atomically under the lock). An error from work or from taking the store comes
    // back; a store that cannot be reached says so in the error's text.
    virtual FileError change(const std::function<FileError(LineFileChanges& changes)>& work) = 0;

    // Where the store is, for messages and window titles: the data folder's path or "server NAME".
    virtual QString where() const = 0;
};

} // namespace porvane
