#include "store/data_check.h"

#include "store/digits.h"
#include "store/line_reader.h"
#include "store/record_fields.h"
#include "store/record_line.h"
#include "store/safe_file.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QRegularExpression>

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("DataCheck", text);
}

// Strict "hhmm" digits, hour 0-23, minute 0-59 (the grid's lenient reading is for typing, not for files).
bool isStoredTime(QByteArrayView hh, QByteArrayView mm) {
    return isDigits(hh) && isDigits(mm) && hh.size() == 2 && mm.size() == 2 && leadingNumber(hh) < 24 &&
           leadingNumber(mm) < 60;
}

// "dd-mm-yyyy" naming a real day.
bool isStoredDate(QByteArrayView text) {
    if (text.size() != 10 || text[2] != '-' || text[5] != '-')
        return false;
    const QByteArrayView d = text.first(2), m = text.sliced(3, 2), y = text.sliced(6, 4);
    return isDigits(d) && isDigits(m) && isDigits(y) &&
           QDate(leadingNumber(y), leadingNumber(m), leadingNumber(d)).isValid();
}

QString fieldName(Field f) {
    return QString::fromLatin1(fieldSpec(f).name);
}

void checkIdentifier(const RecordLine& line, const QString& fileStem, bool monthFile, QStringList& faults) {
    const QByteArrayView regNo = line.columns(1, fieldSpec(Field::RegNo).width);
    if (regNo.size() != 12 || !isDigits(regNo)) {
        faults << tr("RegNo \"%1\" is not 12 digits").arg(QString::fromLatin1(regNo.toByteArray()));
        return;
    }
    const int month = leadingNumber(regNo.sliced(2, 2));
    if (month < 1 || month > 12)
        faults << tr("RegNo %1 names month %2").arg(QString::fromLatin1(regNo.toByteArray())).arg(month);
    else if (monthFile && QString::fromLatin1(regNo.first(4).toByteArray()) != fileStem.left(4))
        faults << tr("RegNo %1 belongs to month %2, not %3")
                      .arg(QString::fromLatin1(regNo.toByteArray()),
                           QString::fromLatin1(regNo.first(4).toByteArray()), fileStem.left(4));
}

void checkSiteTime(const RecordLine& line, Field f, QStringList& faults) {
    const QByteArrayView raw = line.columns(fieldSpec(f).column, fieldSpec(f).width);
    const QByteArrayView value = trimBlanks(raw);
    if (value.isEmpty() || value == "-")
        return;
    if (raw.size() == 5 && raw[2] == ':' && isStoredTime(raw.first(2), raw.last(2)))
        return;
    faults << tr("%1 \"%2\" is not hh:mm").arg(fieldName(f), QString::fromLatin1(raw.toByteArray()));
}

void checkPassDates(const RecordLine& line, QStringList& faults) {
    for (Field f : {Field::PassStart, Field::PassEnd}) {
        const QByteArrayView value = trimBlanks(line.columns(fieldSpec(f).column, fieldSpec(f).width));
        if (!value.isEmpty() && !isStoredDate(value))
            faults << tr("%1 \"%2\" is not a date dd-mm-yyyy")
                          .arg(fieldName(f), QString::fromLatin1(value.toByteArray()));
    }
    const QByteArrayView issued =
        trimBlanks(line.columns(fieldSpec(Field::PassIssued).column, fieldSpec(Field::PassIssued).width));
    if (issued.isEmpty())
        return;
    if (issued.size() != 19 || !isStoredDate(issued.first(10)) || issued.sliced(10, 4) != " at " ||
        issued[16] != ':' || !isStoredTime(issued.sliced(14, 2), issued.sliced(17, 2)))
        faults << tr("PassIssued \"%1\" is not dd-mm-yyyy at hh:mm")
                      .arg(QString::fromLatin1(issued.toByteArray()));
}

// The days of month "yymm"; 0 when the text names no month.
int daysOfMonth(QByteArrayView yymm) {
    if (yymm.size() < 4 || !isDigits(yymm.first(4)))
        return 0;
    return QDate(2000 + leadingNumber(yymm.first(2)), leadingNumber(yymm.sliced(2, 2)), 1).daysInMonth();
}

// Slots past the month's end can hold nothing the desk could show; days is 0 when the month is unknown.
void checkBookedSlots(const RecordLine& line, int days, QStringList& faults) {
    for (int day = 1; day <= kBookedSlotCount; ++day) {
        const QByteArrayView raw = line.columns(bookedSlotColumn(day), kBookedSlotWidth);
        if (trimBlanks(raw).isEmpty())
            continue;
        if (raw.size() != 4 || !isStoredTime(raw.first(2), raw.last(2)))
            faults << tr("booked time of day %1 \"%2\" is not hhmm")
                          .arg(day)
                          .arg(QString::fromLatin1(raw.toByteArray()));
        else if (days > 0 && day > days)
            faults << tr("booked time on day %1, past the month's end").arg(day);
    }
}

} // namespace

QStringList checkStoredLine(QByteArrayView bytes, const QString& fileStem, bool monthFile) {
    QStringList faults;
    if (bytes.size() != kRecordLineLength)
        faults << tr("line is %1 characters long, not %2").arg(bytes.size()).arg(kRecordLineLength);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        if (c < 0x20 || c == 0x7F) {
            faults << tr("control character %1 in column %2").arg(int(c)).arg(i + 1);
            break;
        }
    }
    const RecordLine line(bytes);
    checkIdentifier(line, fileStem, monthFile, faults);
    checkSiteTime(line, Field::TimeOnSite, faults);
    checkSiteTime(line, Field::TimeOffSite, faults);
    checkPassDates(line, faults);
    // A status line's slots belong to its booking's month, which its identifier names.
    const QByteArray stem = fileStem.toLatin1();
    checkBookedSlots(line, daysOfMonth(monthFile ? QByteArrayView(stem) : line.columns(1, 4)), faults);
    return faults;
}

namespace {

// The two kinds of data file: where they are kept, the names that are theirs (the key captured first).
struct FileKind {
    LineFileName::Kind kind;
    QString folder;
    QString suffix;
    QRegularExpression name;
    bool monthFile;
};

const std::array<FileKind, 2>& fileKinds() {
    static const std::array<FileKind, 2> kinds{{
        {LineFileName::Kind::Month, u"Record"_s, u".vrf"_s,
         QRegularExpression(u"^(\\d{2}(0[1-9]|1[0-2]))\\.vrf$"_s), true},
        {LineFileName::Kind::DayStatus, u"Status"_s, u".vdf"_s, QRegularExpression(u"^(\\d{6})\\.vdf$"_s),
         false},
    }};
    return kinds;
}

// Checks each line of a file, its line end included; true when the file was read whole.
bool checkFileLines(LineReader& reader, const QString& relative, const QString& fileStem, bool monthFile,
                    QList<DataDamage>& damage) {
    int number = 0;
    QByteArrayView line;
    for (qint64 at = reader.offset(); reader.next(line); at = reader.offset()) {
        ++number;
        QStringList faults;
        const qint64 lineEnd = reader.offset() - at - line.size();
        if (lineEnd == 0)
            faults << tr("no line end: the file ends in the middle of this line");
        else if (lineEnd == 1)
            faults << (line.data()[line.size()] == '\n' ? tr("line ends in LF, not CR LF")
                                                        : tr("line ends in CR, not CR LF"));
        faults += checkStoredLine(line, fileStem, monthFile);
        for (const QString& what : faults)
            damage.append({relative, number, what});
    }
    if (reader.error())
        damage.append({relative, 0, reader.error().text});
    return !reader.error();
}

} // namespace

QList<DataDamage> checkLineFiles(LineFiles& store, int* files) {
    QList<DataDamage> damage;
    int read = 0;
    for (const FileKind& kind : fileKinds()) {
        for (const QString& key : store.keys(kind.kind)) {
            const QRegularExpressionMatch match = kind.name.match(key + kind.suffix);
            if (!match.hasMatch())
                continue;
            const std::unique_ptr<LineReader> reader = store.read({kind.kind, key});
            read += checkFileLines(*reader, kind.folder + u'/' + key + kind.suffix, match.captured(1),
                                   kind.monthFile, damage);
        }
    }
    if (files)
        *files = read;
    return damage;
}

QList<DataDamage> checkDataFolder(const QString& dataPath, int* files) {
    QList<DataDamage> damage;
    int read = 0;
    for (const FileKind& kind : fileKinds()) {
        const QDir folder(QDir(dataPath).filePath(kind.folder));
        for (const QString& name : folder.entryList(QDir::Files | QDir::System, QDir::Name)) {
            const QString relative = kind.folder + u'/' + name;
            if (isLeftoverName(name))
                damage.append({relative, 0,
                               tr("left over by a desk stopped while it wrote; the next change "
                                  "removes it")});
            const QRegularExpressionMatch match = kind.name.match(name);
            if (!match.hasMatch())
                continue;
            LineReader reader(folder.filePath(name));
            read += checkFileLines(reader, relative, match.captured(1), kind.monthFile, damage);
        }
    }
    if (files)
        *files = read;
    return damage;
}

} // namespace porvane
