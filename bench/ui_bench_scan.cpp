// The scan in the window (progress bar, footer text, an event pump per file) against
// the same scan without a window (as quillotune-cli runs it). Usage:
//   ui_bench_scan [COUNT]   (default 10000; the tree is qlt_corpus_COUNT under /tmp or QLT_BENCH_TREES, made
//   by
//                            bench_scan when missing)
#include "app/DataGridView.h"
#include "app/FolderPanel.h"
#include "app/InputDataPage.h"
#include "app/ListProgressBar.h"
#include "app/ScanPanel.h"
#include "bench_clock.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Settings.h"
#include "list/modList.h"
#include "list/modScan.h"
#include "make_corpus.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QVBoxLayout>
#include <cstdio>
#include <ctime>

namespace {

using bench::Cpu;
using bench::FixtureDir;
using bench::Seconds;

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const int count = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 10000;
    const QString root = bench::TreeFolder() + QStringLiteral("/qlt_corpus_%1").arg(count);
    if (!corpus::MakeCorpus(FixtureDir(), root, count)) {
        std::printf("could not write the tree %s\n", qPrintable(root));
        return 1;
    }
    EnsureSettingsShape();

    // Warm the page cache.
    {
        DataGrid warm;
        EnsureInputColumns(warm);
        TagEngine e;
        ScanOptions o;
        o.subFolders = true;
        ScanFolder(warm, root, o, e);
    }

    // The window: the data area with the list, the folder pane and the bar.
    InputDataPage page;
    page.resize(1200, 800);
    auto* progress = new ListProgressBar(&page);
    page.body()->insertWidget(1, progress); // under the list, as in the main window
    ScanPanel* panel = ScanPanel::Install(&page, progress);
    page.DefineColumns();
    page.show();
    panel->OpenFolderPane();
    panel->folders->ShowFolder(root);
    panel->chbTab1_SubFolders->setChecked(true);
    int barMoves = 0;
    QObject::connect(panel->prgBar, &QProgressBar::valueChanged, [&] { ++barMoves; });
    QApplication::processEvents();

    // Rounds in turn; the best of each counts, as other programs share the machine.
    const int rounds = qEnvironmentVariableIntValue("QLT_BENCH_ROUNDS") > 0
                           ? qEnvironmentVariableIntValue("QLT_BENCH_ROUNDS")
                           : 3;
    double cli = 1e9, ui = 1e9, cliCpu = 1e9, uiCpu = 1e9;
    int cliRows = 0;
    for (int round = 0; round < rounds; ++round) {
        {
            // Without a window: the hooks of quillotune-cli when its output is no terminal.
            DataGrid list;
            EnsureInputColumns(list);
            ScanOptions o;
            o.subFolders = true;
            QElapsedTimer t;
            t.start();
            const double c0 = Cpu();
            ScanFolder(list, root, o, TagEngine::Shared(), {});
            cli = std::min(cli, Seconds(t));
            cliCpu = std::min(cliCpu, Cpu() - c0);
            cliRows = list.Rows();
        }
        barMoves = 0;
        QElapsedTimer t;
        t.start();
        const double c0 = Cpu();
        panel->btnTab1_GetFiles_Click();
        ui = std::min(ui, Seconds(t));
        uiCpu = std::min(uiCpu, Cpu() - c0);
    }
    std::printf("scan without window   %8.2f s  cpu %6.2f s  (%d rows, best of %d)\n", cli, cliCpu, cliRows,
                rounds);
    std::printf("scan in the window    %8.2f s  cpu %6.2f s  (%d rows, bar moved %d times)   %+.1f%% (cpu "
                "%+.1f%%) of "
                "the scan without window\n",
                ui, uiCpu, Grids::LbxInput().Rows(), barMoves, cli > 0 ? (ui / cli - 1.0) * 100.0 : 0.0,
                cliCpu > 0 ? (uiCpu / cliCpu - 1.0) * 100.0 : 0.0);
    if (qEnvironmentVariableIsSet("QLT_BENCH_DETAIL")) {
        // The same list with its view, but without bar, pump and fitting.
        ScanOptions o;
        o.subFolders = true;
        QElapsedTimer s;
        s.start();
        ScanFolder(Grids::LbxInput(), root, o, TagEngine::Shared(), {});
        QApplication::processEvents();
        std::printf("  scan into the shown list, no hooks %.2f s\n", Seconds(s));
        QElapsedTimer r;
        r.start();
        Grids::LbxInput().LockUpdate(true);
        Grids::LbxInput().SetCellText(1, 1, QStringLiteral("1"));
        Grids::LbxInput().DoSort(QStringLiteral("7,3"), 1);
        Grids::LbxInput().LockUpdate(false);
        std::printf("  one reset of the view %lld ms\n", r.elapsed());
        r.restart();
        ShowTotals(Grids::LbxInput());
        std::printf("  totals %lld ms\n", r.elapsed());
        r.restart();
        Grids::LbxInput().DoColumnAutoSize(3);
        QApplication::processEvents();
        std::printf("  fit of column 3 %lld ms\n", r.elapsed());
    }
    return 0;
}
