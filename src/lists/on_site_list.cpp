#include "lists/on_site_list.h"

#include "lists/line_cache.h"
#include "store/digits.h"
#include "store/line_reader.h"

#include <QHash>
#include <QtGlobal>
#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

namespace porvane {

namespace {

constexpr ColumnDef kStatusColumns[] = {
    kColRegistration,
    kColFirstName,
    kColLastName,
    kColOrganisation,
    kColCategory,
    kColExpected,
    {QT_TRANSLATE_NOOP("ListColumns", "Arrived"), 60, false, 0, 0, Shown::Own},
    {QT_TRANSLATE_NOOP("ListColumns", "Departed"), 60, false, 0, 0, Shown::Own},
    kColPassValid,
    kColPassIssued,
    kColLength,
    kColPassType,
    kColPassEnds,
    fieldColumn(QT_TRANSLATE_NOOP("ListColumns", "Party"), 45, false, Field::PartySize, Shown::AsRead),
    kColTelephone,
    kColCarReg,
    kColReportsTo,
    kColDepartment,
    kColContact,
};

constexpr int kMarkColumn = fieldSpec(Field::TimeOnSite).column; // arrival, then departure
constexpr int kMarkWidth = fieldSpec(Field::TimeOnSite).width + fieldSpec(Field::TimeOffSite).width;
constexpr int kRegNoWidth = fieldSpec(Field::RegNo).width;
static_assert(fieldSpec(Field::TimeOffSite).column == kMarkColumn + fieldSpec(Field::TimeOnSite).width);
constexpr QByteArrayView kNoMark = "  -  ";
constexpr QByteArrayView kNoMarks = "  -    -  "; // arrival and departure

QByteArrayView firstColumns(QByteArrayView line) {
    return line.first(std::min<qsizetype>(kRegNoWidth, line.size()));
}

// The row's note is today's day when the line is of today's month, else 0: a booked time on a line of
// another month is not today's.
ListCell statusCell(const RecordLine& line, quint16 todaysDay, int column, std::array<char, 8>& scratch) {
    if (column == kOnSiteExpected) {
        if (todaysDay != 0 && !line.bookedSlot(todaysDay).isEmpty())
            return slotCell(rawSlot(line, todaysDay), scratch);
        return {kNoMark};
    }
    const QByteArrayView arrived = line.columns(Field::TimeOnSite);
    const QByteArrayView departed = line.columns(Field::TimeOffSite);
    const int in = markNumber(arrived);
    if (in == 0)
        return {kNoMark};
    const bool arrivedCell = column == kOnSiteArrived;
    if (in < markNumber(departed)) // gone
        return arrivedCell ? ListCell{arrived, TextColour::Red} : ListCell{departed, TextColour::Black};
    // still on site, also after a stay past midnight
    return arrivedCell ? ListCell{arrived, TextColour::Grey} : ListCell{departed, TextColour::Green};
}

constexpr ListLayout kStatusLayout{kStatusColumns, 0xDFE7F9, statusCell};

} // namespace

FileError OnSiteList::writeStatusList(LineFiles& files, const QDate& today) {
    const int todayNumber = passDateNumber(today);
    // Only where each kept line lies is held, and the new status file is written from the month files once
    // its marks are known, so it never stands in memory. The month files stay open meanwhile: the file is
    // made of the lines as they were read, whatever another desk writes.
    struct Entry {
        int month; // of monthFiles and of the cache
        qint64 offset;
        qsizetype length;
    };
    QStringList monthFiles;
    LineCache months;
    QList<Entry> kept;
    // The kept entries of each RegNo in list order; the n-th status line of a RegNo gives its marks to the
    // n-th entry of it, so twin identifiers (two desks saving in the same second) all keep theirs.
    struct Twins {
        QList<qsizetype> entries;
        qsizetype marked = 0;
    };
    QHash<QByteArray, Twins> byRegNo;
    for (int k = -6; k <= 6; ++k) {
        const LineFileName month = LineFileName::month(today.addMonths(k));
        if (!files.exists(month))
            continue;
        const bool todaysMonth = k == 0;
        // A line of another month is taken only for its pass dates.
        const std::unique_ptr<LineReader> monthFile =
            files.read(month, LineNarrowing::ofBookedDay(today.day()));
        LineReader& reader = *monthFile;
        monthFiles.append(reader.name());
        const int cached = months.addFile(reader.handle());
        QByteArrayView bytes;
        while (reader.next(bytes)) {
            const RecordLine line(bytes);
            const bool booked = todaysMonth && !line.bookedSlot(today.day()).isEmpty();
            if (!booked &&
                !passDateInRange(line.columns(Field::PassStart), line.columns(Field::PassEnd), todayNumber))
                continue;
            byRegNo[firstColumns(bytes).toByteArray()].entries.append(kept.size());
            kept.append({cached, reader.lineOffset(), bytes.size()});
        }
        if (reader.error())
            return reader.error();
    }

    return files.change([&](LineFileChanges& changes) -> FileError {
        // The marks an entry takes from the old file; one it gives none to keeps its month line's columns.
        std::vector<std::array<char, kMarkWidth>> marks(std::size_t(kept.size()));
        std::vector<bool> marked(std::size_t(kept.size()), false);
        const auto setMarks = [&](qsizetype entry, QByteArrayView given) {
            std::copy(given.begin(), given.end(), marks[std::size_t(entry)].begin());
            marked[std::size_t(entry)] = true;
        };
        const LineFileName statusFile = LineFileName::dayStatus(today);
        const std::unique_ptr<LineReader> oldFile = changes.read(statusFile);
        LineReader& old = *oldFile;
        if (old.error().number == FileError::FileNotFound) {
            for (qsizetype i = 0; i < kept.size(); ++i)
                setMarks(i, kNoMarks);
        } else {
            QByteArrayView status;
            while (old.next(status)) {
                // A status line torn before its marks has no marks to give.
                if (status.size() < kMarkColumn - 1 + kMarkWidth)
                    continue;
                const auto twins = byRegNo.find(firstColumns(status).toByteArray());
                if (twins != byRegNo.end() && twins->marked < twins->entries.size())
                    setMarks(twins->entries[twins->marked++], status.sliced(kMarkColumn - 1, kMarkWidth));
            }
            if (old.error())
                return old.error();
        }
        return changes.replace(statusFile, [&](const PieceWriter& write) {
            constexpr qsizetype kPiece = 256 * 1024;
            QByteArray piece;
            piece.reserve(kPiece + LineReader::kMaxLineLength + kRecordLineLength);
            for (qsizetype i = 0; i < kept.size(); ++i) {
                const Entry& e = kept[i];
                const QByteArrayView line = months.line(e.month, e.offset, e.length, e.length);
                if (line.size() < e.length)
                    return FileError::fromErrno(EIO, monthFiles[e.month]);
                const qsizetype at = piece.size();
                piece.append(line);
                // A torn line still gets its mark columns; missing columns read as blanks anyway.
                if (line.size() < kRecordLineLength)
                    piece.append(kRecordLineLength - line.size(), ' ');
                if (marked[std::size_t(i)])
                    std::copy(marks[std::size_t(i)].begin(), marks[std::size_t(i)].end(),
                              piece.begin() + at + kMarkColumn - 1);
                piece.append(kLineEnd);
                if (piece.size() >= kPiece) {
                    if (FileError error = write(piece))
                        return error;
                    piece.resize(0);
                }
            }
            return write(piece);
        });
    });
}

BuiltList OnSiteList::build(LineFiles& files, const QDate& today, const RowListener& listener) {
    const char month[2] = {char('0' + today.month() / 10), char('0' + today.month() % 10)};
    const std::unique_ptr<LineReader> reader = files.read(LineFileName::dayStatus(today));
    BuiltList out{ListTable(kStatusLayout, *reader), {}};
    QByteArrayView bytes;
    while (reader->next(bytes)) {
        const bool todaysMonth = RecordLine(bytes).columns(3, 2) == QByteArrayView(month, 2);
        out.table.addRow(*reader, bytes.size(), todaysMonth ? quint16(today.day()) : 0, listener);
    }
    out.error = reader->error();
    return out;
}

int markNumber(QByteArrayView mark) {
    return leadingNumber(mark, " :");
}

} // namespace porvane
