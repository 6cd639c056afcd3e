// ui_bench_grid_scroll [screenshot.png]
//
// Scrolls a DataGridView over 100,000 rows of 71 cells on the offscreen platform and
// prints the time per page: one page step, painted at once.

#include "app/DataGridView.h"
#include "bench_grid_data.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <cstdio>
#include <vector>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    constexpr int kRows = 100000;
    DataGrid grid;
    DefineInputColumns(grid);
    for (int c = 8; c <= 14; ++c)
        grid.Column(c).headerColor = 0xFF0000;
    for (int c = 15; c <= 21; ++c)
        grid.Column(c).headerColor = 0x0080FF;
    grid.ColumnsChanged();
    FillInputRows(grid, kRows);
    grid.SetFooterText(3, QString::number(kRows));
    grid.SetFooterText(9, QStringLiteral("6:12:44:10"));
    for (int r = 3; r <= 9; r += 2)
        grid.SetSelected(r, true);
    grid.SetCurRow(5);

    DataGridView view(&grid);
    view.resize(1400, 900);
    view.show();
    QApplication::processEvents();

    QTableView* t = view.table();
    QScrollBar* bar = t->verticalScrollBar();
    const int page = std::max(1, bar->pageStep());
    std::vector<double> times;
    QElapsedTimer total;
    total.start();
    for (int v = 0; v <= bar->maximum(); v += page) {
        QElapsedTimer one;
        one.start();
        bar->setValue(v);
        t->viewport()->repaint();
        times.push_back(double(one.nsecsElapsed()) / 1e6);
        if (total.elapsed() > 20000)
            break; // enough pages for a figure
    }
    std::sort(times.begin(), times.end());
    double sum = 0;
    for (double x : times)
        sum += x;
    std::printf("pages painted            %zu (%d rows each, %d columns visible of %d)\n", times.size(), page,
                t->columnAt(t->viewport()->width() - 1) - t->columnAt(0) + 1, grid.Cols());
    std::printf("time per page, mean      %.2f ms\n", sum / double(times.size()));
    std::printf("time per page, median    %.2f ms\n", times[times.size() / 2]);
    std::printf("time per page, 99th pct  %.2f ms\n", times[times.size() * 99 / 100]);
    std::printf("time per page, worst     %.2f ms\n", times.back());

    if (argc > 1) {
        bar->setValue(0);
        t->horizontalScrollBar()->setValue(t->horizontalHeader()->sectionViewportPosition(4) +
                                           t->horizontalScrollBar()->value());
        view.resize(1400, 420);
        QApplication::processEvents();
        view.grab().save(QString::fromLocal8Bit(argv[1]));
    }
    return 0;
}
