#include "bench_data.h"

#include <QDir>

namespace porvane::bench {

QString benchDataPath() {
    const QString path = qEnvironmentVariable("PORVANE_BENCH_DATA");
    return path.isEmpty() ? QString() : QDir(path).absolutePath() + u'/';
}

QDate benchToday() {
    return QDate::fromString(qEnvironmentVariable("PORVANE_BENCH_TODAY"), Qt::ISODate);
}

QString benchHomePath() {
    const QString path = qEnvironmentVariable("PORVANE_BENCH_HOME");
    return path.isEmpty() ? QString() : QDir(path).absolutePath() + u'/';
}

} // namespace porvane::bench
