// One save or one update of a booking with the desk's own store code, for timing whole commands:
//   porvane-bench-store DATA YYMM save
//   porvane-bench-store DATA YYMM update REGNO
#include "bench_desk.h"
#include "store/record_store.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTextStream>

using namespace porvane;

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const bool save = args.size() == 4 && args[3] == u"save";
    const bool update = args.size() == 5 && args[3] == u"update";
    if (!save && !update) {
        QTextStream(stderr) << "usage: porvane-bench-store DATA YYMM save | DATA YYMM update REGNO\n";
        return 2;
    }
    bench::BenchDesk desk(args[1]);
    // A new note every time, so that an update always has something to write.
    bench::fillBenchBooking(desk.state.record, update ? args[4] : QString(),
                            QString::number(QDateTime::currentMSecsSinceEpoch()));
    RecordStore store = desk.recordStore();
    const StoreResult result = save ? store.SaveNewRecord(desk.state.record, args[2])
                                    : store.UpdateRecord(desk.state.record, args[2], args[4]);
    if (!result.ok()) {
        QTextStream(stderr) << "porvane-bench-store: " << result.error.text << '\n';
        return 1;
    }
    return 0;
}
