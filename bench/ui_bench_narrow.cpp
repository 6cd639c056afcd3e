// ui_bench_narrow
//
// The commands that narrow down the data list, run through the buttons of the main
// window with 100,000 rows in the list (offscreen): find in all columns, a filter with
// its value list, doubles, invert selection with the sums. Prints the time of each.

#include "app/FrmInput.h"
#include "app/InputDataPage.h"
#include "app/MessageBoxPrompt.h"
#include "bench_grid_data.h"
#include "core/AppState.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/Settings.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <cstdio>

namespace {
// Answers Yes to every question and counts the messages.
class QuietPrompt : public Prompt {
public:
    int told = 0;
    void Tell(const QString&, Icon) override { ++told; }
    bool AskYesNo(const QString&, bool, Icon) override { return true; }
    bool AskOkCancel(const QString&, Icon) override { return true; }
    std::optional<QString> InputBox(const QString&, const QString& initial) override { return initial; }
};

template <typename T> T* Get(QWidget* root, const char* name) {
    T* w = root->findChild<T*>(QString::fromLatin1(name));
    if (!w) {
        std::fprintf(stderr, "no control %s\n", name);
        std::exit(1);
    }
    return w;
}

// The best of three runs: the machine may be busy with other work; the best run is
// what the command costs. The worst is printed beside it.
struct Timing {
    double best = 0, worst = 0;
};

template <typename F> Timing TimeMs(F&& f) {
    Timing t{1e300, 0};
    for (int round = 0; round < 3; ++round) {
        QElapsedTimer clock;
        clock.start();
        f();
        QApplication::processEvents(); // the repaint that follows belongs to the command
        const double ms = double(clock.nsecsElapsed()) / 1e6;
        t.best = std::min(t.best, ms);
        t.worst = std::max(t.worst, ms);
    }
    return t;
}

void Report(const char* what, Timing t) {
    std::printf("%-44s %8.1f ms  (worst of 3: %.1f ms)%s\n", what, t.best, t.worst,
                t.best < 1000.0 ? "" : "   OVER 1 s");
}
} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    constexpr int kRows = 100000;
    QuietPrompt prompt;
    SetAppPrompt(&prompt);
    EnsureSettingsShape();

    FrmInput window;
    window.pageData->DefineColumns();
    window.ApplySettings();
    window.resize(1400, 900);
    window.show();
    DataGrid& list = Grids::LbxInput();
    FillInputRows(list, kRows);
    QApplication::processEvents();
    Get<QCheckBox>(&window, "chbTab1_NoMsg")->setChecked(true);
    std::printf("rows in the list                             %8d\n", list.Rows());

    auto* find = Get<QComboBox>(&window, "cmbTab1_Find");
    find->setCurrentText(QStringLiteral("Sommer"));
    Report("find \"Sommer\" in all columns",
           TimeMs([&] { Get<QPushButton>(&window, "btnTab1_M_Find")->click(); }));
    find->setCurrentText(QStringLiteral("nicht da"));
    Report("find a text that is nowhere",
           TimeMs([&] { Get<QPushButton>(&window, "btnTab1_M_Find")->click(); }));

    auto* column = Get<QComboBox>(&window, "cmbTab1_Filter(0)");
    Report("filter: value list of Artist", TimeMs([&] {
               column->setCurrentIndex(0);
               emit column->activated(0);
           }));
    auto* value = Get<QComboBox>(&window, "cmbTab1_Filter(1)");
    std::printf("  values in the list                         %8d\n", value->count() - 1);
    Report("filter: count of one value", TimeMs([&] {
               value->setCurrentIndex(1);
               emit value->activated(1);
           }));
    Report("filter: mark the rows of the value",
           TimeMs([&] { Get<QPushButton>(&window, "btnTab1_FilterMarkChoosen")->click(); }));
    Report("filter: value list of Title", TimeMs([&] {
               column->setCurrentIndex(1);
               emit column->activated(1);
           }));

    Report("find doubles", TimeMs([&] { Get<QPushButton>(&window, "btnTab1_FindDouble")->click(); }));
    list.ClearSelection();
    list.SelectRange(1, kRows / 2, true);
    QApplication::processEvents();
    Report("invert selection + sums",
           TimeMs([&] { Get<QPushButton>(&window, "btnTab1_InvertHighlight")->click(); }));
    Report("select all + sums", TimeMs([&] { Get<QPushButton>(&window, "btnTab1_HighlightAll")->click(); }));
    std::printf("  sums label: %s\n", qPrintable(Get<QLabel>(&window, "lblTab1_TimeSizeMarkedData")->text()));
    SetAppPrompt(nullptr);
    return 0;
}
