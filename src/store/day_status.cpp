#include "store/day_status.h"

#include "store/data_lock.h"
#include "store/data_paths.h"
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

SiteTimes readSiteTimes(const QString& dataPath, const QDate& day, const QString& regNo) {
    SiteTimes times;
    const QByteArray key = toWindows1252(regNo);
    LineReader reader(dayStatusPath(dataPath, day));
    QByteArrayView bytes;
    while (reader.next(bytes)) {
        if (!keyMatches(bytes, key))
            continue;
        const RecordLine line(bytes);
        times = {true, hhmm(line, kArrivalColumn), hhmm(line, kDepartureColumn)};
    }
    return times;
}

FileError markSiteTimes(const QString& statusPath, QByteArrayView key, QByteArrayView arrival,
                        QByteArrayView departure, WritePath* writePath) {
    const LineEdit mark = [&](QByteArrayView stored, QByteArray& out) {
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
    return rewriteLines(statusPath, mark, nullptr, writePath);
}

FileError UpdateDayStatus(const QString& dataPath, const QDate& day, const QString& regNoText,
                          const QString& arrival, const QString& departure, LockHolderQuestion& lockQuestion,
                          std::chrono::milliseconds lockWait, WritePath* writePath) {
    DataLock lock(dataPath, lockWait);
    if (FileError error = takeDataLock(lock, lockQuestion))
        return error;
    return markSiteTimes(dayStatusPath(dataPath, day), toWindows1252(regNoText.trimmed()),
                         toWindows1252(arrival), toWindows1252(departure), writePath);
}

FileError SignOutDayStatus(const QString& dataPath, const QDate& day,
                           const QHash<QString, QString>& marksSeen, const QString& departure,
                           LockHolderQuestion& lockQuestion, std::chrono::milliseconds lockWait) {
    QHash<QByteArray, QByteArray> seen;
    for (auto it = marksSeen.cbegin(); it != marksSeen.cend(); ++it)
        seen.insert(toWindows1252(it.key().trimmed()), toWindows1252(it.value()));
    const QByteArray time = toWindows1252(departure);
    DataLock lock(dataPath, lockWait);
    if (FileError error = takeDataLock(lock, lockQuestion))
        return error;
    const LineEdit signOut = [&](QByteArrayView stored, QByteArray& out) {
        QByteArray line = stored.toByteArray();
        const auto marks = seen.constFind(line.left(kKeyWidth));
        if (marks == seen.cend() || line.mid(kArrivalColumn - 1, 2 * kTimeWidth) != *marks)
            return false;
        overwrite(line, kDepartureColumn, time);
        out.append(line).append(kLineEnd);
        return true;
    };
    return rewriteLines(dayStatusPath(dataPath, day), signOut, nullptr, nullptr);
}

} // namespace porvane
