// bench_listsums [rows]: time of ShowTotals over the whole data list and of the
// selection sum with every row selected (default 200,000 rows).

#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/modList.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int rows = argc > 1 ? std::atoi(argv[1]) : 200000;
    DataGrid g;
    for (const InputColumnDef& c : kInputColumns)
        g.AddColumn(QString::fromLatin1(c.key), QString(), c.widthTwips, c.align, true, c.sortType);
    g.LockUpdate(true);
    QStringList cells(InCol::Count);
    for (int r = 1; r <= rows; ++r) {
        cells[InCol::No - 1] = QString::number(r);
        cells[InCol::FileName - 1] = QStringLiteral("%1 - Artist - Title.mp3").arg(r);
        cells[InCol::DurationS - 1] = QString::number(120 + r % 300);
        cells[InCol::SizeByte - 1] = QString::number(3000000 + r);
        cells[InCol::TagAnzLyrics - 1] = r % 7 == 0 ? QStringLiteral("1 [Lrc]") : QString();
        g.AddRow(cells);
    }
    g.LockUpdate(false);
    QString label;
    SumTarget t = DefaultSumTarget(QStringLiteral("Input"));
    t.grid = &g;
    t.setLabel = [&](const QString& s) { label = s; };
    RegisterSumTarget(QStringLiteral("Input"), t);

    QElapsedTimer timer;
    timer.start();
    ShowTotals(g);
    const qint64 totals = timer.elapsed();
    g.SelectAll();
    timer.restart();
    ShowSelectionSum(QStringLiteral("Input"));
    const qint64 selection = timer.elapsed();
    std::printf("rows %d: ShowTotals %lld ms, selection sum (all selected) %lld ms\n%s\n", rows,
                static_cast<long long>(totals), static_cast<long long>(selection), qPrintable(label));
    return 0;
}
