// quillotune-cli scan DIR: the folder scan of the window, without a window. Same walk,
// same rows, cells and order for the same folder and options.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/DataGrid.h"
#include "list/modSavedLists.h"
#include "list/modScan.h"
#include "output/modExport.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"

#include <QElapsedTimer>
#include <sys/stat.h>

namespace {

const char kScanUsage[] =
    "usage: quillotune-cli scan DIR [--subfolders] [--artist TEXT] [--title TEXT]\n"
    "                           [--save FILE.data] [--export FILE.txt|csv|xls|xml|htm]\n"
    "                           [--threads N]\n"
    "  Scans the audio files of DIR (with --subfolders also of its sub-folders) into the\n"
    "  data list, as the window does. --artist and --title take only files whose artist\n"
    "  and title (from the file name) contain the text. --threads sets how many files are\n"
    "  read at once (1 to 8; by default all cores, or 1 when the preferences say so).\n"
    "  Prints one summary line.";

} // namespace

bool ExportDataList(DataGrid& list, const QString& path) {
    const int format = ExportFormatForPath(path);
    if (format == ExportFormat::None) {
        Err(QStringLiteral("quillotune-cli: unknown export format: %1").arg(path));
        return false;
    }
    const bool ok = format == ExportFormat::Htm ? ExportHtml(list, path) : ExportList(list, path, format);
    if (!ok)
        Err(QStringLiteral("quillotune-cli: export failed: %1 %2").arg(path, LastExportError()));
    return ok;
}

int RunScan(const QStringList& args) {
    QString dir, savePath, exportPath;
    ScanOptions options;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        auto value = [&](QString& target) {
            if (i + 1 >= args.size())
                return false;
            target = args[++i];
            return true;
        };
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kScanUsage));
            return 0;
        } else if (a == QLatin1String("--subfolders")) {
            options.subFolders = true;
        } else if (a == QLatin1String("--artist")) {
            if (!value(options.artistSearch))
                return Err(QLatin1String(kScanUsage)), 2;
            options.checkCharacters = true;
        } else if (a == QLatin1String("--title")) {
            if (!value(options.titleSearch))
                return Err(QLatin1String(kScanUsage)), 2;
            options.checkCharacters = true;
        } else if (a == QLatin1String("--threads")) {
            if (!ThreadsArgument(args, i, options.threads, kScanUsage))
                return 2;
        } else if (a == QLatin1String("--save")) {
            if (!value(savePath))
                return Err(QLatin1String(kScanUsage)), 2;
        } else if (a == QLatin1String("--export")) {
            if (!value(exportPath))
                return Err(QLatin1String(kScanUsage)), 2;
        } else if (a.startsWith(QLatin1String("--")) || !dir.isEmpty()) {
            Err(QLatin1String(kScanUsage));
            return 2;
        } else {
            dir = a;
        }
    }
    if (dir.isEmpty()) {
        Err(QLatin1String(kScanUsage));
        return 2;
    }
    const QString folder = PosixFile::AbsolutePath(dir);
    struct stat st;
    if (PosixFile::Stat(folder, st) != 0 || !S_ISDIR(st.st_mode)) {
        Err(QStringLiteral("quillotune-cli: not a folder: %1").arg(dir));
        return 1;
    }
    LoadProgramTexts();
    DataGrid list;
    EnsureInputColumns(list);
    TagEngine& engine = TagEngine::Shared();
    CliPrompt prompt;
    TerminalProgress progress;
    const ScanHooks hooks = TerminalScanHooks(progress);

    QElapsedTimer timer;
    timer.start();
    const ScanResult r = ScanFolder(list, folder, options, engine, hooks);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    progress.Finish();
    Out(QStringLiteral("files: %1, rows: %2, failures: %3, seconds: %4")
            .arg(r.entries - r.folders)
            .arg(list.Rows())
            .arg(r.failures)
            .arg(seconds, 0, 'f', 2));

    int rc = 0;
    if (!savePath.isEmpty()) {
        SavedListOptions so;
        so.noMsg = true;
        if (!SaveList(list, savePath, so, prompt))
            rc = 1;
    }
    if (!exportPath.isEmpty() && !ExportDataList(list, exportPath))
        rc = 1;
    return rc;
}
