// quillotune-cli load FILE.data: a saved data list, checked against the disk (or, with
// --act, rebuilt from its files), optionally exported.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/DataGrid.h"
#include "list/modList.h"
#include "list/modSavedLists.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QElapsedTimer>

namespace {

const char kLoadUsage[] =
    "usage: quillotune-cli load FILE.data [--act] [--export FILE.txt|csv|xls|xml|htm]\n"
    "  Loads a saved data list and marks the rows whose file is gone; --act reads every\n"
    "  row from its file again instead. Prints one summary line.";

} // namespace

int RunLoad(const QStringList& args) {
    QString path, exportPath;
    bool act = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kLoadUsage));
            return 0;
        } else if (a == QLatin1String("--act")) {
            act = true;
        } else if (a == QLatin1String("--export") && i + 1 < args.size()) {
            exportPath = args[++i];
        } else if (a.startsWith(QLatin1String("--")) || !path.isEmpty()) {
            Err(QLatin1String(kLoadUsage));
            return 2;
        } else {
            path = a;
        }
    }
    if (path.isEmpty()) {
        Err(QLatin1String(kLoadUsage));
        return 2;
    }
    LoadProgramTexts();
    DataGrid list;
    EnsureInputColumns(list);
    CliPrompt prompt;
    TerminalProgress progress;
    ScanResult rereadResult;
    SavedListOptions options;
    options.noMsg = true;
    options.refreshFromFiles = act;
    SavedListHooks hooks;
    hooks.updateList = [&] {
        rereadResult = UpdateList(list, TagEngine::Shared(), prompt, TerminalScanHooks(progress));
    };
    hooks.showTotals = [&] { ShowTotals(list); };

    QElapsedTimer timer;
    timer.start();
    const LoadListResult r = LoadList(list, path, options, hooks, prompt);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    progress.Finish();
    if (!r.loaded)
        return 1;
    Out(QStringLiteral("rows: %1, missing: %2, failures: %3, seconds: %4")
            .arg(list.Rows())
            .arg(r.missing)
            .arg(rereadResult.failures)
            .arg(seconds, 0, 'f', 2));
    if (!exportPath.isEmpty() && !ExportDataList(list, exportPath))
        return 1;
    return 0;
}
