// The list grid: a table of 100,000 rows handed to the grid's model and drawn, and the desk's own main window
// showing the month list of a 15,000-booking month.
#include "bench_data.h"
#include "bench_desk.h"
#include "demo/demo_generator.h"
#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "lists/list_table_model.h"
#include "lists/month_list.h"
#include "store/data_paths.h"
#include "store/record_store.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace porvane;
using namespace porvane::bench;

namespace {

// A month list of about 100,000 rows: a demonstration month of 50,000 bookings (one to three booked days
// each). The table keeps its file open, so the folder may go.
const ListTable& hundredThousandRows() {
    static const ListTable table = [] {
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(QStringLiteral("Record"));
        DemoGenerator::Options options;
        options.fromYear = 2026;
        options.fromMonth = 11;
        options.perMonth = 50000;
        QFile file(monthFilePath(dir.path() + u'/', QStringLiteral("2611")));
        file.open(QIODevice::WriteOnly);
        file.write(DemoGenerator(options).monthFile(0));
        file.close();
        BenchDesk desk(dir.path() + u'/');
        return buildMonthList(desk.state.files(), QDate(2026, 11, 1), QDate(2026, 11, 18)).table;
    }();
    return table;
}

// The process's resident memory now, from /proc.
double residentMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

// A grid set up as the desk's StatGrid, at the size it has on a 1024 x 768 screen.
void setUpGrid(QTableView& grid) {
    grid.setSelectionBehavior(QAbstractItemView::SelectRows);
    grid.verticalHeader()->setDefaultSectionSize(20);
    grid.verticalHeader()->hide();
    grid.resize(1000, 300);
    grid.show();
}

void BM_GridShow100kRows(benchmark::State& state) {
    const ListTable& table = hundredThousandRows();
    QTableView grid;
    auto* model = new ListTableModel(&grid);
    grid.setModel(model);
    setUpGrid(grid);
    for (auto _ : state) {
        model->setTable(table);
        benchmark::DoNotOptimize(grid.viewport()->grab().width()); // drawn, cells asked for
        QApplication::processEvents();
    }
    state.counters["rows"] = table.listedCount();
}
BENCHMARK(BM_GridShow100kRows)->Unit(benchmark::kMillisecond)->UseRealTime();

// What the grid asks of the model for every cell it draws.
void BM_GridModelCells(benchmark::State& state) {
    ListTableModel model;
    model.setTable(hundredThousandRows());
    const int columns = model.columnCount();
    int row = 0;
    for (auto _ : state) {
        for (int c = 0; c < columns; ++c) {
            const QModelIndex index = model.index(row, c);
            for (int role : {int(Qt::DisplayRole), int(Qt::TextAlignmentRole), int(Qt::ForegroundRole),
                             int(Qt::BackgroundRole)})
                benchmark::DoNotOptimize(model.data(index, role));
        }
        row = (row + 7919) % model.table().listedCount();
    }
    state.SetItemsProcessed(state.iterations() * columns);
}
BENCHMARK(BM_GridModelCells);

// Counts the paints a widget gets.
class PaintCounter final : public QObject {
public:
    int paints = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

// The desk's main window lists today's month (cmdGetTom) and, back in the event loop, paints its grid once,
// as it does on the desk. The grid's paints are counted: a run in which it was not painted is no figure.
void BM_DeskMonthListShown(benchmark::State& state) {
    if (benchDataPath().isEmpty() || !benchToday().isValid() || benchHomePath().isEmpty()) {
        state.SkipWithError("PORVANE_BENCH_DATA, PORVANE_BENCH_TODAY and PORVANE_BENCH_HOME are not set");
        return;
    }
    DecliningPrompter prompter;
    FixedClock clock(QDateTime(benchToday(), QTime(10, 0)));
    InstantPause pause;
    AppState desk(prompter, clock, pause);
    desk.AppPath = benchHomePath();
    desk.settings.DataPath = benchDataPath();
    desk.settings.ckEnbl_RTC = QStringLiteral("0");
    RecordStore records = recordStoreOf(desk);
    RecordStoreBooking store(records);
    MainWindow window(desk, store);
    window.resize(1024, 740);
    window.show();
    QApplication::processEvents();
    auto* today = window.findChild<QPushButton*>(QStringLiteral("cmdGetToday"));
    auto* month = window.findChild<QPushButton*>(QStringLiteral("cmdGetTom"));
    auto* grid = window.findChild<QTableView*>(QStringLiteral("StatGrid"));
    today->click(); // the date boxes on today
    QApplication::processEvents();
    const double before = residentMiB();
    int rows = 0;
    PaintCounter counter;
    grid->viewport()->installEventFilter(&counter);
    for (auto _ : state) {
        month->click();
        QApplication::processEvents();
        rows = grid->model()->rowCount();
    }
    if (counter.paints < state.iterations())
        state.SkipWithError("the grid was not painted after every listing");
    state.counters["rows"] = rows;
    state.counters["paints"] = double(counter.paints) / double(state.iterations());
    // What showing the month list added to the desk's memory, over the day list it replaced. Only the first
    // window of the process tells: later ones reuse the memory earlier ones freed. bench/run runs this
    // benchmark alone in a process of its own for this figure.
    static const double firstGrowth = residentMiB() - before;
    state.counters["rss_growth_MiB"] = firstGrowth;
}
BENCHMARK(BM_DeskMonthListShown)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
