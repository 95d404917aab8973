// The work of porvane-admin's list, search and on-site commands and of one save or update, without the
// start-up of a process, on the data folder that bench/run makes.
#include "bench_data.h"
#include "bench_desk.h"
#include "lists/day_list.h"
#include "lists/list_text.h"
#include "lists/month_list.h"
#include "lists/on_site_list.h"
#include "lists/record_search.h"
#include "store/data_paths.h"
#include "store/record_store.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace porvane;
using namespace porvane::bench;

namespace {

bool haveData(benchmark::State& state) {
    if (benchDataPath().isEmpty() || !benchToday().isValid()) {
        state.SkipWithError("PORVANE_BENCH_DATA and PORVANE_BENCH_TODAY are not set (bench/run sets them)");
        return false;
    }
    return true;
}

// The bench data folder's files, as a desk reads them.
LineFiles& benchFiles() {
    static BenchDesk desk(benchDataPath());
    return desk.state.files();
}

// The list as the command prints it, to /dev/null.
void printList(const BuiltList& built) {
    QFile null(QStringLiteral("/dev/null"));
    null.open(QIODevice::WriteOnly);
    writeListTableText(built.table, false, null);
}

template <typename Build> void runList(benchmark::State& state, Build&& build) {
    if (!haveData(state))
        return;
    int rows = 0;
    for (auto _ : state) {
        const BuiltList built = build();
        printList(built);
        rows = built.table.listedCount();
    }
    state.counters["rows"] = rows;
}

void BM_ListDay(benchmark::State& state) {
    runList(state, [] { return buildDayList(benchFiles(), benchToday()); });
}
BENCHMARK(BM_ListDay)->Unit(benchmark::kMillisecond);

void BM_ListMonth(benchmark::State& state) {
    runList(state, [] { return buildMonthList(benchFiles(), benchToday(), benchToday()); });
}
BENCHMARK(BM_ListMonth)->Unit(benchmark::kMillisecond);

void BM_SearchName(benchmark::State& state) {
    runList(state, [] {
        return RecordSearch::run(benchFiles(), SearchMonths::of(benchToday()), SearchKind::Name,
                                 QStringLiteral("Smith"));
    });
}
BENCHMARK(BM_SearchName)->Unit(benchmark::kMillisecond);

// The thirteen months of the data folder, six either side of today's.
void BM_SearchNameThirteenMonths(benchmark::State& state) {
    runList(state, [] {
        return RecordSearch::run(benchFiles(),
                                 SearchMonths::between(benchToday().addMonths(-6), benchToday().addMonths(6)),
                                 SearchKind::Name, QStringLiteral("Smith"));
    });
}
BENCHMARK(BM_SearchNameThirteenMonths)->Unit(benchmark::kMillisecond);

void BM_SearchAnyText(benchmark::State& state) {
    runList(state, [] {
        return RecordSearch::run(benchFiles(), SearchMonths::of(benchToday()), SearchKind::AnyText,
                                 QStringLiteral("Kestrel"));
    });
}
BENCHMARK(BM_SearchAnyText)->Unit(benchmark::kMillisecond);

void BM_OnSite(benchmark::State& state) {
    runList(state, [] {
        OnSiteList::writeStatusList(benchFiles(), benchToday());
        return OnSiteList::build(benchFiles(), benchToday());
    });
}
BENCHMARK(BM_OnSite)->Unit(benchmark::kMillisecond);

// A scratch data folder beside the bench data, holding the first `lines` lines of today's month file.
struct ScratchMonth {
    QTemporaryDir dir{benchDataPath() + QStringLiteral("../scratch-XXXXXX")};
    QString yymm = benchToday().toString(QStringLiteral("yyMM"));
    QString file;
    QByteArray firstRegNo;
    qint64 size = 0;

    explicit ScratchMonth(int lines) {
        QDir(dir.path()).mkpath(QStringLiteral("Record"));
        QFile source(monthFilePath(benchDataPath(), yymm));
        source.open(QIODevice::ReadOnly);
        QByteArray bytes;
        for (int i = 0; i < lines && !source.atEnd(); ++i)
            bytes += source.readLine();
        firstRegNo = bytes.left(12);
        file = monthFilePath(dir.path() + u'/', yymm);
        QFile out(file);
        out.open(QIODevice::WriteOnly);
        out.write(bytes);
        size = bytes.size();
    }
};

void BM_Append(benchmark::State& state) {
    if (!haveData(state))
        return;
    ScratchMonth month(int(state.range(0)));
    BenchDesk desk(month.dir.path());
    RecordStore store = desk.recordStore();
    for (auto _ : state) {
        fillBenchBooking(desk.state.record, {}, QStringLiteral("append"));
        if (!store.SaveNewRecord(desk.state.record, month.yymm).ok())
            state.SkipWithError("the save failed");
        state.PauseTiming();
        QFile::resize(month.file, month.size); // every save finds the file at the same length
        state.ResumeTiming();
    }
}
BENCHMARK(BM_Append)->Arg(10)->Arg(15000)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_Update(benchmark::State& state) {
    if (!haveData(state))
        return;
    ScratchMonth month(int(state.range(0)));
    BenchDesk desk(month.dir.path());
    RecordStore store = desk.recordStore();
    const QString regNo = QString::fromLatin1(month.firstRegNo);
    int turn = 0;
    for (auto _ : state) {
        // A different note each time, so that every update writes.
        fillBenchBooking(desk.state.record, regNo, QString::number(++turn));
        if (!store.UpdateRecord(desk.state.record, month.yymm, regNo).ok())
            state.SkipWithError("the update failed");
    }
}
BENCHMARK(BM_Update)->Arg(15000)->Unit(benchmark::kMillisecond)->UseRealTime();

// The baseline of an update: a plain copy of the same file.
void BM_CopyMonthFile(benchmark::State& state) {
    if (!haveData(state))
        return;
    ScratchMonth month(int(state.range(0)));
    const QString copy = month.file + QStringLiteral(".copy");
    for (auto _ : state) {
        QFile::remove(copy);
        QFile::copy(month.file, copy);
    }
}
BENCHMARK(BM_CopyMonthFile)->Arg(15000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
