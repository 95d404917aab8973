#pragma once

#include <QDate>
#include <QString>

namespace porvane::bench {

// The data folder that bench/run makes (PORVANE_BENCH_DATA) and the day it is built around
// (PORVANE_BENCH_TODAY, YYYY-MM-DD). Empty or invalid when not set; the benchmarks that need them then skip.
QString benchDataPath();
QDate benchToday();
// The desk's home with its pick lists (PORVANE_BENCH_HOME).
QString benchHomePath();

} // namespace porvane::bench
