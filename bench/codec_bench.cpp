// The record line codec: stored lines written and read back, in lines per second.
#include "demo/demo_generator.h"
#include "store/record_line.h"

#include <QList>
#include <benchmark/benchmark.h>

using namespace porvane;

namespace {

constexpr int kLines = 1000;

// A thousand varied demonstration lines, without their line ends.
const QList<QByteArray>& demoLines() {
    static const QList<QByteArray> lines = [] {
        DemoGenerator::Options options;
        options.fromYear = 2026;
        options.fromMonth = 11;
        options.perMonth = kLines;
        options.passEvery = 4;
        QList<QByteArray> out;
        for (const QByteArray& line : DemoGenerator(options).monthFile(0).split('\n'))
            if (!line.isEmpty())
                out.append(line.chopped(1));
        return out;
    }();
    return lines;
}

void BM_RecordLineDecode(benchmark::State& state) {
    const QList<QByteArray>& lines = demoLines();
    CurrentRecord record;
    for (auto _ : state) {
        for (const QByteArray& line : lines)
            decodeRecordLine(RecordLine(line), record);
        benchmark::DoNotOptimize(record[Field::LastName].size());
    }
    state.SetItemsProcessed(state.iterations() * lines.size());
}
BENCHMARK(BM_RecordLineDecode);

void BM_RecordLineEncode(benchmark::State& state) {
    QList<CurrentRecord> records(demoLines().size());
    for (qsizetype i = 0; i < records.size(); ++i)
        decodeRecordLine(RecordLine(demoLines()[i]), records[i]);
    for (auto _ : state) {
        for (const CurrentRecord& record : records)
            benchmark::DoNotOptimize(encodeRecordLine(record).size());
    }
    state.SetItemsProcessed(state.iterations() * records.size());
}
BENCHMARK(BM_RecordLineEncode);

// What every list does per line: find its end, then look at its key and a booked-time slot.
void BM_RecordLineScan(benchmark::State& state) {
    QByteArray file;
    for (const QByteArray& line : demoLines())
        file += line + "\r\n";
    std::size_t seen = 0;
    for (auto _ : state) {
        for (qsizetype from = 0; from < file.size();) {
            const qsizetype end = file.indexOf('\n', from);
            const RecordLine line(QByteArrayView(file).sliced(from, end - 1 - from));
            seen += std::size_t(line.regNo().size() + line.bookedSlot(15).size());
            from = end + 1;
        }
    }
    benchmark::DoNotOptimize(seen);
    state.SetItemsProcessed(state.iterations() * demoLines().size());
}
BENCHMARK(BM_RecordLineScan);

} // namespace
