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

constexpr int kGridRows = 100000;

// A month list of 100,000 real rows: the rows of a demonstration month, repeated.
const ListTable& hundredThousandRows() {
    static const ListTable table = [] {
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(QStringLiteral("Record"));
        DemoGenerator::Options options;
        options.fromYear = 2026;
        options.fromMonth = 11;
        options.perMonth = 2000;
        QFile file(monthFilePath(dir.path() + u'/', QStringLiteral("2611")));
        file.open(QIODevice::WriteOnly);
        file.write(DemoGenerator(options).monthFile(0));
        file.close();
        const ListTable month =
            buildMonthList(dir.path() + u'/', QDate(2026, 11, 1), QDate(2026, 11, 18)).table;
        ListTable out;
        out.columns = month.columns;
        out.rowColours = month.rowColours;
        out.reserve(kGridRows, qsizetype(kGridRows) * 400); // a month row holds under 400 bytes
        for (int r = 0; r < kGridRows; ++r) {
            out.beginRow();
            for (int c = 0; c < month.columnCount(); ++c)
                out.addCell(month.bytes(r % month.listedCount(), c),
                            month.textColour(r % month.listedCount(), c));
        }
        return out;
    }();
    return table;
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
        row = (row + 7919) % kGridRows;
    }
    state.SetItemsProcessed(state.iterations() * columns);
}
BENCHMARK(BM_GridModelCells);

// The desk's main window lists today's month (cmdGetTom) and draws its grid.
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
    RecordStore records(desk);
    RecordStoreBooking store(records);
    MainWindow window(desk, store);
    window.resize(1024, 740);
    window.show();
    QApplication::processEvents();
    auto* today = window.findChild<QPushButton*>(QStringLiteral("cmdGetToday"));
    auto* month = window.findChild<QPushButton*>(QStringLiteral("cmdGetTom"));
    auto* grid = window.findChild<QTableView*>(QStringLiteral("StatGrid"));
    today->click(); // the date boxes on today
    int rows = 0;
    for (auto _ : state) {
        month->click();
        benchmark::DoNotOptimize(grid->viewport()->grab().width());
        QApplication::processEvents();
        rows = grid->model()->rowCount();
    }
    state.counters["rows"] = rows;
}
BENCHMARK(BM_DeskMonthListShown)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
