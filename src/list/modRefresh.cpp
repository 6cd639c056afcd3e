#include "list/modRefresh.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/ftcReadPool.h"
#include "list/modList.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"

#include <sys/stat.h>
#include <vector>

namespace {

// The mark of a row whose file is gone, as the check of a loaded list sets it.
const QLatin1String kGoneMark("_#-/->");

struct BusyFlags {
    BusyFlags() { State().ScanRunning = true; }
    ~BusyFlags() { State().ScanRunning = false; }
};

} // namespace

namespace {
QString StampText(qint64 size, qint64 sec, qint64 nsec) {
    return QString::number(size) + QLatin1Char(':') + QString::number(sec) + QLatin1Char('.') +
           QString::number(nsec);
}
} // namespace

QString FileStampText(const QString& path) {
    struct stat st {};
    if (PosixFile::Stat(path, st) != 0)
        return QString();
    return StampText(qint64(st.st_size), qint64(st.st_mtim.tv_sec), qint64(st.st_mtim.tv_nsec));
}

QString OpenedFileStampText(const TagEngine& engine) {
    qint64 size = 0, sec = 0, nsec = 0;
    if (!engine.OpenedFileTimes(size, sec, nsec))
        return QString();
    return StampText(size, sec, nsec);
}

RefreshResult RefreshChanged(DataGrid& list, TagEngine& engine, Prompt& prompt, const ScanHooks& hooks,
                             int threads) {
    RefreshResult res;
    if (!ListNotEmpty(list, prompt))
        return res;
    BusyFlags busy;
    const bool quiet = State().SuppressEvents;
    list.LockUpdate(true);
    list.ClearSelection();

    // Every row's file as it is now against the stamp of its row.
    std::vector<int> changed;
    QStringList paths;
    res.rows = list.Rows();
    for (int row = 1; row <= res.rows; ++row) {
        if (row % 512 == 0 && hooks.pump)
            hooks.pump();
        QString path = InputRowPath(list, row);
        const QString now = FileStampText(path);
        if (now.isEmpty()) {
            ++res.missing;
            const QString mark = list.CellText(row, InCol::FTag);
            if (!mark.startsWith(kGoneMark))
                list.SetCellText(row, InCol::FTag, kGoneMark + QLatin1Char(' ') + mark);
            continue;
        }
        if (now == KeyStamp(list.RowKey(row))) {
            ++res.unchanged;
            continue;
        }
        changed.push_back(row);
        paths.append(std::move(path));
    }

    // The changed files, read again in place.
    const int count = int(paths.size());
    if (count > 0 && hooks.showProgress)
        hooks.showProgress(count);
    const int digits = NumberDigits();
    ReadPool pool(count, threads > 0 ? threads : ScanReadThreads(), engine,
                  [&paths, digits](TagEngine& e, int i, FileRead& out) {
                      const QString& path = paths.at(i);
                      out.type = e.OpenFile(path);
                      out.stamp = OpenedFileStampText(e);
                      out.cells = FileRowCells(e, path, out.type, 0, digits);
                  });
    for (int i = 0; i < count; ++i) {
        if (!EntryStepBegins(hooks, i)) {
            res.aborted = true;
            break;
        }
        FileRead read = pool.Take(i, hooks.pump);
        const int row = changed[std::size_t(i)];
        if (read.type == 0)
            ++res.failures;
        EntryProgressText(list, hooks, i, count);
        // The row keeps its number, its mark and its identity.
        read.cells[InCol::No - 1] = list.CellText(row, InCol::No);
        read.cells[InCol::FTag - 1] = list.CellText(row, InCol::FTag);
        list.SetRowCells(row, read.cells);
        list.SetRowKey(row, StampedKey(KeyIdentity(list.RowKey(row)), read.stamp));
        ++res.reread;
    }
    pool.Stop();
    State().SuppressEvents = quiet;
    if (res.aborted)
        State().AbortRequested = false;
    if (hooks.hideProgress)
        hooks.hideProgress();
    list.ClearFooters();
    RebuildValueLists(list, res.ratings, res.moods);
    ShowTotals(list);
    list.LockUpdate(false);
    list.Refresh();
    return res;
}

void TellRefreshResult(const RefreshResult& r, bool noMsg, Prompt& prompt) {
    if (r.aborted || (noMsg && r.missing == 0))
        return;
    QString text = Caption(CapRefreshReread) + QString::number(r.reread) + QLatin1Char('\n') +
                   Caption(CapRefreshUnchanged) + QString::number(r.unchanged);
    if (r.missing > 0)
        text += QLatin1Char('\n') + Caption(CapMissingFiles) + QString::number(r.missing);
    prompt.Tell(text, r.missing > 0 ? Prompt::Icon::Warning : Prompt::Icon::Information);
}
