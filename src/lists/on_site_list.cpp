#include "lists/on_site_list.h"

#include "app/lock_question.h"
#include "store/data_lock.h"
#include "store/digits.h"
#include "store/line_reader.h"
#include "store/safe_file.h"

#include <QFileInfo>
#include <QHash>
#include <QtGlobal>
#include <algorithm>

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

QString OnSiteList::statusFilePath(const QString& dataPath, const QDate& today) {
    return dayStatusPath(dataPath, today);
}

FileError OnSiteList::writeStatusList(const QString& dataPath, const QDate& today, Prompter& prompter) {
    const QByteArray todayText = storedDate(today);
    // The new status file as it is made, and where each kept line starts in it.
    QByteArray content;
    QList<qsizetype> kept;
    for (int k = -6; k <= 6; ++k) {
        const QDate month = today.addMonths(k);
        const QString file = monthFileOf(dataPath, month);
        if (!QFileInfo::exists(file))
            continue;
        const bool todaysMonth = k == 0;
        LineReader reader(file);
        QByteArrayView bytes;
        while (reader.next(bytes)) {
            const RecordLine line(bytes);
            const bool booked = todaysMonth && !line.bookedSlot(today.day()).isEmpty();
            if (!booked &&
                !passDateInRange(line.columns(Field::PassStart), line.columns(Field::PassEnd), todayText))
                continue;
            kept.append(content.size());
            content.append(bytes);
            // A torn line still gets its mark columns; missing columns read as blanks anyway.
            if (bytes.size() < kRecordLineLength)
                content.append(kRecordLineLength - bytes.size(), ' ');
            content.append(kLineEnd);
        }
        if (reader.error())
            return reader.error();
    }
    const auto setMarks = [&](qsizetype entry, QByteArrayView marks) {
        std::copy(marks.begin(), marks.end(), content.begin() + kept[entry] + kMarkColumn - 1);
    };

    const QString statusFile = statusFilePath(dataPath, today);
    DataLock lock(dataPath);
    if (FileError e = takeDataLock(lock, prompter))
        return e;
    LineReader old(statusFile);
    if (old.error().number == FileError::FileNotFound) {
        for (qsizetype i = 0; i < kept.size(); ++i)
            setMarks(i, kNoMarks);
        return replaceFile(statusFile, content);
    }
    // The kept entries of each RegNo in list order; the n-th status line of a RegNo gives its marks to the
    // n-th entry of it, so twin identifiers (two desks saving in the same second) all keep theirs.
    struct Twins {
        QList<qsizetype> entries;
        qsizetype marked = 0;
    };
    QHash<QByteArray, Twins> byRegNo;
    byRegNo.reserve(kept.size());
    for (qsizetype i = 0; i < kept.size(); ++i)
        byRegNo[firstColumns(QByteArrayView(content).sliced(kept[i])).toByteArray()].entries.append(i);
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
    return replaceFile(statusFile, content);
}

BuiltList OnSiteList::build(const QString& dataPath, const QDate& today) {
    const char month[2] = {char('0' + today.month() / 10), char('0' + today.month() % 10)};
    LineReader reader(statusFilePath(dataPath, today));
    BuiltList out{ListTable(kStatusLayout, reader), {}};
    QByteArrayView bytes;
    while (reader.next(bytes)) {
        const bool todaysMonth = RecordLine(bytes).columns(3, 2) == QByteArrayView(month, 2);
        out.table.addRow(reader, bytes.size(), todaysMonth ? quint16(today.day()) : 0);
    }
    out.error = reader.error();
    return out;
}

int markNumber(QByteArrayView mark) {
    return leadingNumber(mark, " :");
}

} // namespace porvane
