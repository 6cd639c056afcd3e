// quillotune-cli refresh FILE.data: the window's "refresh changed files" on a saved data
// list. Reads again only the files that changed since their rows were read, marks the
// rows of files that are gone, and saves the list in its place.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/DataGrid.h"
#include "list/modRefresh.h"
#include "list/modSavedLists.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QElapsedTimer>

namespace {

const char kRefreshUsage[] =
    "usage: quillotune-cli refresh FILE.data [--threads N]\n"
    "  Looks at the file of every row of a saved data list: a file whose size or\n"
    "  modification time changed since its row was read is read again, a file that is\n"
    "  gone gets the mark \"_#-/->\" in front of its row's mark; marks and order stay.\n"
    "  Then the list is saved in its place. --threads sets how many files are read at\n"
    "  once (1 to 8). Prints one summary line.";

} // namespace

int RunRefresh(const QStringList& args) {
    QString path;
    int threads = 0;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kRefreshUsage));
            return 0;
        } else if (a == QLatin1String("--threads")) {
            if (!ThreadsArgument(args, i, threads, kRefreshUsage))
                return 2;
        } else if (a.startsWith(QLatin1String("--")) || !path.isEmpty()) {
            Err(QLatin1String(kRefreshUsage));
            return 2;
        } else {
            path = a;
        }
    }
    if (path.isEmpty()) {
        Err(QLatin1String(kRefreshUsage));
        return 2;
    }
    LoadProgramTexts();
    DataGrid list;
    EnsureInputColumns(list);
    if (!list.LoadFile(path, true)) {
        Err(QStringLiteral("quillotune-cli: the list can't be loaded: %1 (%2)")
                .arg(path, list.LastFileError()));
        return 1;
    }
    CliPrompt prompt;
    TerminalProgress progress;
    QElapsedTimer timer;
    timer.start();
    RefreshResult r;
    if (list.Rows() > 0)
        r = RefreshChanged(list, TagEngine::Shared(), prompt, TerminalScanHooks(progress), threads);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    progress.Finish();
    Out(QStringLiteral("rows: %1, unchanged: %2, read again: %3, missing: %4, failures: %5, seconds: %6")
            .arg(list.Rows())
            .arg(r.unchanged)
            .arg(r.reread)
            .arg(r.missing)
            .arg(r.failures)
            .arg(seconds, 0, 'f', 2));
    SavedListOptions so;
    so.noMsg = true;
    return SaveList(list, path, so, prompt) ? 0 : 1;
}
