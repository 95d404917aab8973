#include "store/day_status.h"

#include "store/line_reader.h"
#include "store/record_line.h"
#include "store/safe_file.h"
#include "store/windows1252.h"

#include <QHash>

namespace porvane {

namespace {

constexpr int kArrivalColumn = fieldSpec(Field::TimeOnSite).column;
constexpr int kDepartureColumn = fieldSpec(Field::TimeOffSite).column;
constexpr int kTimeWidth = fieldSpec(Field::TimeOnSite).width;
constexpr int kKeyWidth = fieldSpec(Field::RegNo).width;
static_assert(fieldSpec(Field::TimeOffSite).width == kTimeWidth);

bool keyMatches(QByteArrayView line, QByteArrayView key) {
    return !key.isEmpty() && line.first(std::min<qsizetype>(kKeyWidth, line.size())) == key;
}

// "hh:mm" read as "hhmm": the colon's column is skipped.
QString hhmm(const RecordLine& line, int column) {
    return line.text(column, 2) + line.text(column + 3, 2);
}

void overwrite(QByteArray& line, int column, QByteArrayView value) {
    const qsizetype n = std::min<qsizetype>(kTimeWidth, value.size());
    std::copy_n(value.data(), n, line.data() + column - 1);
}

} // namespace

LineEdit markSiteTimes(const QByteArray& key, const QByteArray& arrival, const QByteArray& departure) {
    return [=](QByteArrayView stored, QByteArray& out) {
        if (!keyMatches(stored, key))
            return false;
        QByteArray line = stored.toByteArray();
        if (line.size() < kDepartureColumn + kTimeWidth - 1)
            line.resize(kDepartureColumn + kTimeWidth - 1, ' ');
        overwrite(line, kArrivalColumn, arrival);
        overwrite(line, kDepartureColumn, departure);
        out.append(line).append(kLineEnd);
        return true;
    };
}

SiteTimes readSiteTimes(LineFiles& files, const QDate& day, const QString& regNo) {
    SiteTimes times;
    const QByteArray key = toWindows1252(regNo);
    const std::unique_ptr<LineReader> reader =
        files.read(LineFileName::dayStatus(day), LineNarrowing::ofRegNo(regNo));
    QByteArrayView bytes;
    while (reader->next(bytes)) {
        if (!keyMatches(bytes, key))
            continue;
        const RecordLine line(bytes);
        times = {true, hhmm(line, kArrivalColumn), hhmm(line, kDepartureColumn)};
    }
    return times;
}

FileError UpdateDayStatus(LineFiles& files, const QDate& day, const QString& regNoText,
                          const QString& arrival, const QString& departure) {
    const QString regNo = regNoText.trimmed();
    const LineEdit mark =
        markSiteTimes(toWindows1252(regNo), toWindows1252(arrival), toWindows1252(departure));
    return files.change([&](LineFileChanges& changes) {
        return changes.rewrite(LineFileName::dayStatus(day), LineNarrowing::ofRegNo(regNo), mark);
    });
}

FileError SignOutDayStatus(LineFiles& files, const QDate& day, const QHash<QString, QString>& marksSeen,
                           const QString& departure) {
    QHash<QByteArray, QByteArray> seen;
    for (auto it = marksSeen.cbegin(); it != marksSeen.cend(); ++it)
        seen.insert(toWindows1252(it.key().trimmed()), toWindows1252(it.value()));
    const QByteArray time = toWindows1252(departure);
    const LineEdit signOut = [&](QByteArrayView stored, QByteArray& out) {
        QByteArray line = stored.toByteArray();
        const auto marks = seen.constFind(line.left(kKeyWidth));
        if (marks == seen.cend() || line.mid(kArrivalColumn - 1, 2 * kTimeWidth) != *marks)
            return false;
        overwrite(line, kDepartureColumn, time);
        out.append(line).append(kLineEnd);
        return true;
    };
    return files.change(
        [&](LineFileChanges& changes) { return changes.rewrite(LineFileName::dayStatus(day), {}, signOut); });
}

} // namespace porvane
