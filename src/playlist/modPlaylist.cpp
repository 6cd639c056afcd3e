#include "playlist/modPlaylist.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "list/InputColumns.h"
#include "list/RowKeys.h"
#include "list/modScan.h"
#include "output/modExport.h"
#include "platform/PosixFile.h"
#include "platform/Shell.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylistFile.h"
#include "playlist/modPlaylistPlay.h"
#include "tag/modTagList.h"

#include <QDateTime>
#include <QHash>
#include <QLocale>
#include <QRandomGenerator>
#include <unistd.h>
#include <vector>

namespace {

void Changed(PlaylistEnv& env) {
    if (env.sumsChanged)
        env.sumsChanged();
}

QString CellOrEmpty(DataGrid& g, int row, int col) {
    return g.Rows() >= row && g.Cols() >= col ? g.CellText(row, col) : QString();
}
void SetCell(DataGrid& g, int row, int col, const QString& text) {
    if (g.Rows() >= row && g.Cols() >= col)
        g.SetCellText(row, col, text);
}

void StoreFolder(PlaylistEnv& env, int row, int col, const QString& folder) {
    DataGrid& s = env.Settings();
    SetCell(s, row, col, folder);
    if (env.saveSettingsFile && !env.settings)
        SaveSettings();
}

bool ListHasRows(PlaylistEnv& env, const DataGrid& g) {
    if (g.Rows() > 0)
        return true;
    env.prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
    return false;
}

QString PlaylistFilePath(const DataGrid& files, int row) {
    return files.CellText(row, M3uCol::PathFile) + u'/' + files.CellText(row, M3uCol::FName);
}

// The repaired row's size, "#,##0.000" below 10,000,000 bytes and "#,##0.0" from there on.
QString RepairMegabytes(qint64 bytes) {
    const double mb = double(bytes) / 1024.0 / 1024.0;
    return QLocale().toString(mb, 'f', bytes < 10000000 ? 3 : 1);
}

void RepairRow(DataGrid& g, int row, const QString& folder, const QString& name, qint64 bytes) {
    g.SetCellText(row, PlCol::TF, Caption(CapStatusFound));
    g.SetCellText(row, PlCol::FileName, name);
    g.SetCellText(row, PlCol::PathFile, folder);
    g.SetCellText(row, PlCol::SizeByte, QString::number(bytes));
    g.SetCellText(row, PlCol::SizeMByte, RepairMegabytes(bytes));
}

bool Missing(const DataGrid& g, int row) {
    return g.CellView(row, PlCol::TF) == Caption(CapStatusMissing);
}

// The rows from `first` on as a run of highlighted rows: its last row.
int RunEnd(const DataGrid& g, int first) {
    int last = first;
    while (last < g.Rows() && g.IsSelected(last + 1))
        ++last;
    return last;
}
int RunStart(const DataGrid& g, int last) {
    int first = last;
    while (first > 1 && g.IsSelected(first - 1))
        --first;
    return first;
}

// Asks whether to replace the rows of LbxPlaylist before rows come over from another list.
bool PrepareTakeOver(PlaylistEnv& env) {
    if (env.playlist.Rows() > 0 && env.prompt.AskYesNo(Caption(CapReplacePlaylistQuestion))) {
        env.playlist.Clear();
        env.playlist.SetFooterText(PlCol::FTag, QString());
    }
    env.playlist.SetFooterText(PlCol::FileName, Caption(CapTakingRowsOver));
    env.playlist.LockUpdate(true);
    return true;
}

void FinishTakeOver(PlaylistEnv& env) {
    ShowPlaylistSums(env.playlist);
    env.title.clear();
    env.playlist.LockUpdate(false);
    env.playlist.Refresh();
    Changed(env);
}

} // namespace

DataGrid& PlaylistEnv::Settings() const {
    return settings ? *settings : ::Settings();
}

bool PlaylistEnv::Passes(const DataGrid& g, int row) const {
    return markText.isEmpty() || g.CellView(row, PlCol::FTag) == markText;
}

// ---- playlist files ---------------------------------------------------------------------

int FindPlaylists(PlaylistEnv& env) {
    const QString start = CellOrEmpty(env.Settings(), Ini::PlaylistFolderPreset, Ini::Col1);
    const QString folder = env.chooseFolder ? env.chooseFolder(start) : QString();
    if (folder.isEmpty()) {
        env.m3upls.LockUpdate(false);
        env.m3upls.Refresh();
        return -1;
    }
    StoreFolder(env, Ini::PlaylistFolderPreset, Ini::Col1, folder);
    return FindPlaylistsIn(env, folder);
}

int FindPlaylistsIn(PlaylistEnv& env, const QString& folder) {
    DefineM3uPlsColumns(env.m3upls);
    QStringList paths;
    int count = 0;
    FindFiles(folder, QStringLiteral("*"), paths, env.withSubFolders, count);
    env.m3upls.LockUpdate(true);
    if (!env.add)
        env.m3upls.Clear();
    int found = 0;
    for (const QString& path : paths) {
        if (path.startsWith(QLatin1String(">>")))
            continue; // a sub-folder entry of the walk without sub-folders
        if (path.contains(QLatin1String("system"), Qt::CaseInsensitive) ||
            path.contains(QLatin1String("recycler"), Qt::CaseInsensitive))
            continue;
        const bool m3u = IsM3uPath(path), pls = IsPlsPath(path);
        const bool keep = env.format == 1 ? m3u : env.format == 2 ? pls : (m3u || pls);
        if (!keep)
            continue;
        QString dir, name;
        SplitPath(path, dir, name);
        env.m3upls.AddRow({name, dir});
        ++found;
    }
    env.m3upls.SetFooterText(M3uCol::FName, QString::number(env.m3upls.Rows()));
    env.m3upls.DoSort(QStringLiteral("1"), 1);
    env.m3upls.LockUpdate(false);
    env.m3upls.Refresh();
    return found;
}

bool OpenPlaylist(PlaylistEnv& env, int target) {
    if (!ListHasRows(env, env.m3upls))
        return false;
    if (env.m3upls.SelCount() == 0) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return false;
    }
    const QString path = PlaylistFilePath(env.m3upls, env.m3upls.SelRow(1));
    if (target == 0 && !env.noMsg && !env.openWithClick && !env.tab1NoMsg && !env.add &&
        env.playlist.Rows() > 0 &&
        !env.prompt.AskYesNo(Caption(CapPlaylistReplaceWarning) + u'\n' + Caption(CapContinueQuestion)))
        return false;
    return OpenPlaylistFile(env, path, target);
}

bool OpenPlaylistFile(PlaylistEnv& env, const QString& path, int target) {
    DataGrid* grid = target == 2 && env.playlist2 ? env.playlist2 : &env.playlist;
    PlaylistReadResult r;
    if (IsM3uPath(path)) {
        QString title2;
        r = target == 2 ? ReadM3u(path, *grid, false, &title2) : ReadM3u(path, *grid, env.add, &env.title);
    } else if (IsPlsPath(path)) {
        r = ReadPls(path, *grid, target == 2 ? false : env.add);
    } else {
        return false;
    }
    env.m3upls.LockUpdate(false);
    env.m3upls.Refresh();
    Changed(env);
    if (!r.ok) {
        env.prompt.Tell(Caption(CapPlaylistReadFailed) + path + u'\n' + r.error, Prompt::Icon::Critical);
        return false;
    }
    return true;
}

bool DeletePlaylistFile(PlaylistEnv& env) {
    if (!ListHasRows(env, env.m3upls))
        return false;
    if (env.m3upls.SelCount() == 0) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return false;
    }
    int row = env.m3upls.CurRow();
    if (row < 1 || row > env.m3upls.Rows() || !env.m3upls.IsSelected(row))
        row = env.m3upls.SelRow(1);
    const QString path = PlaylistFilePath(env.m3upls, row);
    const int rc = DeleteFile(path, PaperbinSetting(env.Settings()), true, &env.prompt);
    if (rc != FileOp::Ok) {
        if (rc != FileOp::Cancelled)
            env.prompt.Tell(Caption(CapDeleteFailed) + u'\n' + FileOpErrorText(rc), Prompt::Icon::Critical);
        return false;
    }
    env.m3upls.DeleteRow(row);
    env.m3upls.SetFooterText(M3uCol::FName, QString::number(env.m3upls.Rows()));
    return true;
}

bool PlayPlaylistFile(PlaylistEnv& env) {
    if (env.m3upls.Rows() == 0) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return false;
    }
    if (env.m3upls.SelCount() == 0 && !OfferHighlightAll(env))
        return false;
    int row = env.m3upls.CurRow();
    if (row < 1 || row > env.m3upls.Rows())
        row = env.m3upls.SelRow(1);
    if (ShellOpen(PlaylistFilePath(env.m3upls, row), true, 1))
        return true;
    env.prompt.Tell(Caption(CapOpenFailed), Prompt::Icon::Information);
    return false;
}

bool RenamePlaylistFile(PlaylistEnv& env, int row, const QString& newName) {
    if (row < 1 || row > env.m3upls.Rows())
        return false;
    const QString folder = env.m3upls.CellText(row, M3uCol::PathFile);
    const QString oldName = env.m3upls.CellText(row, M3uCol::FName);
    if (newName == oldName)
        return true;
    QString finalPath;
    const int rc = newName.isEmpty() || newName.contains(u'/')
                       ? FileOp::Cancelled
                       : RenameFile(folder + u'/' + oldName, folder + u'/' + newName, &finalPath);
    if (rc != FileOp::Ok) {
        env.prompt.Tell(Caption(CapRenameFailedPlaylist), Prompt::Icon::Critical);
        return false;
    }
    QString dir, name;
    SplitPath(finalPath.isEmpty() ? folder + u'/' + newName : finalPath, dir, name);
    env.m3upls.SetCellText(row, M3uCol::FName, name);
    if (!env.noMsg)
        env.prompt.Tell(Caption(CapRenamed), Prompt::Icon::Information);
    return true;
}

// ---- saving -----------------------------------------------------------------------------

bool OfferHighlightAll(PlaylistEnv& env, int atLeast) {
    DataGrid& g = env.playlist;
    if (g.SelCount() >= atLeast)
        return true;
    if (!env.prompt.AskYesNo(Caption(CapNoRowSelected) + u'\n' + Caption(CapSelectAllQuestion)))
        return false;
    g.SelectAll();
    Changed(env);
    return g.SelCount() >= 1;
}

SaveResult SavePlaylist(PlaylistEnv& env) {
    SaveResult result;
    DataGrid& g = env.playlist;
    if (!ListHasRows(env, g))
        return result;
    if (!OfferHighlightAll(env, 2))
        return result;
    const QString missing = Caption(CapStatusMissing);
    bool anyMissing = false;
    for (int r = 1; r <= g.Rows() && !anyMissing; ++r)
        anyMissing = g.CellView(r, PlCol::TF) == missing;
    if (anyMissing && env.prompt.AskYesNo(Caption(CapRemoveMissingQuestion)))
        RemoveMissingEntries(env, true);
    QString startFolder;
    const QString found = Caption(CapStatusFound);
    for (int r = 1; r <= g.Rows(); ++r) {
        if (g.CellView(r, PlCol::TF) != found)
            continue;
        QString name;
        const QString pl = g.CellText(r, PlCol::PathPlaylist);
        if (!pl.isEmpty())
            SplitPath(pl, startFolder, name);
        break;
    }
    const QString path = env.chooseSavePath ? env.chooseSavePath(startFolder) : QString();
    if (path.isEmpty())
        return result;
    QString playlistFolder, name;
    SplitPath(path, playlistFolder, name);
    PlaylistWriteOptions o;
    o.relative = env.relative;
    o.markFilter = env.markText;
    PlaylistWriteCounts counts;
    const bool m3u = IsM3uPath(path);
    const QByteArray bytes =
        m3u ? BuildM3u(g, o, playlistFolder, counts) : BuildPls(g, o, playlistFolder, counts);
    result.written = counts.written;
    result.skipped = counts.skipped;
    result.path = path;
    if (counts.written == 0) {
        // Nothing to write: the save leaves no file of that name, also where the user chose
        // an existing playlist to be replaced.
        if (PosixFile::Exists(path) && ::unlink(PosixFile::Native(path).constData()) != 0)
            env.prompt.Tell(Caption(CapEmptyPlaylistNotDeleted), Prompt::Icon::Critical);
    } else {
        QString error;
        if (!WritePlaylistBytes(path, bytes, &error)) {
            env.prompt.Tell(Caption(CapPlaylistWriteFailed) + path + u'\n' + error, Prompt::Icon::Critical);
            g.Refresh();
            return result;
        }
        result.saved = true;
        if (!m3u && !env.noMsg)
            env.prompt.Tell(Caption(CapPlaylistSaved), Prompt::Icon::Information);
        DefineM3uPlsColumns(env.m3upls);
        bool listed = false;
        for (int r = 1; r <= env.m3upls.Rows() && !listed; ++r)
            listed = env.m3upls.CellView(r, M3uCol::FName) == name;
        if (!listed)
            env.m3upls.AddRow({name, playlistFolder});
        env.m3upls.Refresh();
        env.title = name;
        for (int r = 1; r <= g.Rows(); ++r)
            g.SetCellText(r, PlCol::PathPlaylist, path);
        if (!env.noMsg)
            env.prompt.Tell(Caption(CapPlaylistSavedAs) + path, Prompt::Icon::Information);
    }
    g.Refresh();
    if (env.relative && counts.skipped > 0) {
        if (counts.written == 0)
            env.prompt.Tell(Caption(CapPlaylistNothingWritten), Prompt::Icon::Critical);
        else
            env.prompt.Tell(Caption(CapPlaylistSkipped) + QString::number(counts.skipped),
                            Prompt::Icon::Critical);
    }
    return result;
}

// ---- entries ----------------------------------------------------------------------------

int RemoveHighlightedEntries(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    if (!ListHasRows(env, g) || !OfferHighlightAll(env))
        return 0;
    if (!env.noMsg && !env.prompt.AskYesNo(Caption(CapRemoveEntriesQuestion)))
        return 0;
    g.LockUpdate(true);
    int removed = 0;
    if (env.markText.isEmpty()) {
        removed = g.DeleteSelected();
    } else {
        const QString staging = QStringLiteral("_#DDelete");
        for (int row : g.SelectedRows())
            if (g.CellView(row, PlCol::FTag) == env.markText)
                g.SetCellText(row, PlCol::FTag, staging);
        g.ClearSelection();
        for (int r = 1; r <= g.Rows(); ++r)
            if (g.CellView(r, PlCol::FTag) == staging)
                g.SetSelected(r, true);
        removed = g.DeleteSelected();
    }
    ShowPlaylistSums(g);
    env.title.clear();
    g.LockUpdate(false);
    g.Refresh();
    Changed(env);
    return removed;
}

int RemoveMissingEntries(PlaylistEnv& env, bool silent) {
    DataGrid& g = env.playlist;
    if (!silent && !env.noMsg && !env.prompt.AskYesNo(Caption(CapRemoveEntriesListQuestion)))
        return -1;
    g.LockUpdate(true);
    g.ClearSelection();
    for (int r = 1; r <= g.Rows(); ++r)
        if (Missing(g, r))
            g.SetSelected(r, true);
    const int removed = g.DeleteSelected();
    if (g.Rows() > 0)
        g.SetCurRow(1);
    ShowPlaylistSums(g);
    g.LockUpdate(false);
    g.Refresh();
    Changed(env);
    if (!silent) {
        if (removed == 0)
            env.prompt.Tell(Caption(CapNothingRemoved), Prompt::Icon::Information);
        else
            env.prompt.Tell(Caption(CapEntriesRemoved) + QString::number(removed), Prompt::Icon::Information);
    }
    return removed;
}

int RepairMissingEntries(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    if (!ListHasRows(env, g) || !OfferHighlightAll(env))
        return 0;
    int repaired = 0;
    g.LockUpdate(true);
    const std::vector<int> rows = g.SelectedRows();
    for (int row : rows) {
        if (!Missing(g, row))
            continue; // repaired meanwhile, or never missing
        const QString chosen = env.chooseSongFile ? env.chooseSongFile(g.CellText(row, PlCol::PathFile),
                                                                       g.CellText(row, PlCol::FileName))
                                                  : QString();
        qint64 bytes = 0;
        if (chosen.isEmpty() || !SongFileExists(chosen, &bytes))
            continue; // cancelled: this row stays as it is
        QString folder, name;
        SplitPath(chosen, folder, name);
        RepairRow(g, row, folder, name, bytes);
        ++repaired;
        // one choice repairs a whole moved album
        for (int other : rows) {
            if (other == row || !Missing(g, other))
                continue;
            const QString candidate = folder + u'/' + g.CellText(other, PlCol::FileName);
            if (SongFileExists(candidate, &bytes)) {
                RepairRow(g, other, folder, g.CellText(other, PlCol::FileName), bytes);
                ++repaired;
            }
        }
    }
    ShowPlaylistSums(g);
    g.LockUpdate(false);
    g.Refresh();
    Changed(env);
    if (!env.noMsg && repaired > 0)
        env.prompt.Tell(Caption(CapEntriesRepaired), Prompt::Icon::Information);
    return repaired;
}

bool MoveBlockUp(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    if (!ListHasRows(env, g))
        return false;
    if (g.SelCount() == 0) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return false;
    }
    const int first = g.SelRow(1);
    if (first == 1) {
        env.prompt.Tell(Caption(CapFirstRowSelected), Prompt::Icon::Information);
        return false;
    }
    const int last = RunEnd(g, first);
    g.MoveRow(first - 1, last); // the row above goes just below the block; highlights travel
    if (g.CurRow() >= first - 1 && g.CurRow() <= last)
        g.SetCurRow(g.CurRow() == first - 1 ? last : g.CurRow() - 1);
    Changed(env);
    return true;
}

bool MoveBlockDown(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    if (!ListHasRows(env, g))
        return false;
    if (g.SelCount() == 0) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return false;
    }
    const int last = g.SelRow(g.SelCount());
    if (last == g.Rows()) {
        env.prompt.Tell(Caption(CapLastRowSelected), Prompt::Icon::Information);
        return false;
    }
    const int first = RunStart(g, last);
    g.MoveRow(last + 1, first); // the row below goes just above the block
    if (g.CurRow() >= first && g.CurRow() <= last + 1)
        g.SetCurRow(g.CurRow() == last + 1 ? first : g.CurRow() + 1);
    Changed(env);
    return true;
}

bool ShufflePlaylist(PlaylistEnv& env, quint32 seed) {
    DataGrid& g = env.playlist;
    if (!ListHasRows(env, g))
        return false;
    if (!env.prompt.AskYesNo(Caption(CapShuffleQuestion)))
        return false;
    g.SetFooterText(PlCol::FileName, Caption(CapShuffling));
    g.LockUpdate(true);
    if (seed == 0)
        seed = quint32(QTime::currentTime().msecsSinceStartOfDay()) ^ 0x5A17u;
    QRandomGenerator rng(seed);
    const int n = g.Rows();
    // For each slot a number from 1 to n is drawn until it differs from all placed so far.
    std::vector<char> placed(size_t(n) + 1, 0);
    for (int slot = 1; slot <= n; ++slot) {
        int candidate;
        do
            candidate = int(rng.bounded(n)) + 1;
        while (placed[size_t(candidate)]);
        placed[size_t(candidate)] = 1;
        g.SetCellText(slot, PlCol::No, QString::number(candidate));
    }
    g.DoSort(PlCol::No, 1);
    g.SetFooterText(PlCol::FileName, QString::number(n));
    if (n > 0)
        g.SetCurRow(1);
    g.LockUpdate(false);
    g.Refresh();
    Changed(env);
    return true;
}

CopyResult CopyPlaylistSongs(PlaylistEnv& env) {
    CopyResult res;
    DataGrid& g = env.playlist;
    if (!ListHasRows(env, g) || !OfferHighlightAll(env))
        return res;
    const QString start = CellOrEmpty(env.Settings(), Ini::PathPlaylist1, Ini::Col2);
    const QString target = env.chooseFolder ? env.chooseFolder(start) : QString();
    if (target.isEmpty())
        return res;
    StoreFolder(env, Ini::PathPlaylist1, Ini::Col2, target);
    int number = 0;
    const int digits = std::max(1, NumberDigits());
    for (int row : g.SelectedRows()) {
        if (!env.Passes(g, row))
            continue;
        const QString source = PlaylistRowSongPath(g, row);
        if (!SongFileExists(source)) {
            ++res.missing;
            continue;
        }
        QString dest = target + u'/';
        if (env.copyWithNum)
            dest += QStringLiteral("%1_").arg(number + 1, digits, 10, QLatin1Char('0'));
        dest += g.CellText(row, PlCol::FileName);
        if (CopyFile(source, dest, false, &env.prompt) == FileOp::Ok) {
            ++res.copied;
            ++number;
        } else {
            ++res.failed;
        }
    }
    if (!env.noMsg) {
        QString text = Caption(CapFilesCopied) + QString::number(res.copied);
        if (res.missing > 0)
            text += u'\n' + Caption(CapFilesMissing) + QString::number(res.missing);
        env.prompt.Tell(text, Prompt::Icon::Information);
    }
    return res;
}

bool ExportPlaylist(PlaylistEnv& env, DataGrid& dummy, const QString& path) {
    PreparePlaylistExport(env.playlist, env.title, dummy);
    const ExportOutcome outcome = ExportByPath(dummy, path, env.prompt);
    if (outcome == ExportOutcome::Written) {
        RememberExportFolder(env.Settings(), CellOrEmpty(env.Settings(), Ini::PresetPathExport, Ini::Col1),
                             path, ExportFolders::Playlist);
        if (!env.noMsg)
            env.prompt.Tell(Caption(CapListExported), Prompt::Icon::Information);
    }
    return outcome == ExportOutcome::Written;
}

// ---- highlight and marks ----------------------------------------------------------------

void HighlightFound(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    const QString found = Caption(CapStatusFound);
    for (int r = 1; r <= g.Rows(); ++r)
        g.SetSelected(r, g.CellView(r, PlCol::TF) == found);
    Changed(env);
}

void MarkHighlighted(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    for (int row : g.SelectedRows())
        g.SetCellText(row, PlCol::FTag, env.markText);
    Changed(env);
}

void UnhighlightOthers(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    for (int row : g.SelectedRows())
        if (!env.Passes(g, row))
            g.SetSelected(row, false);
    Changed(env);
}

void RemoveMarks(PlaylistEnv& env) {
    DataGrid& g = env.playlist;
    for (int row : g.SelectedRows())
        if (env.Passes(g, row))
            g.SetCellText(row, PlCol::FTag, QString());
    Changed(env);
}

void ToggleSign(PlaylistEnv& env, const QString& sign) {
    DataGrid& g = env.playlist;
    for (int row : g.SelectedRows())
        g.SetCellText(row, PlCol::FTag, g.CellView(row, PlCol::FTag) == sign ? QString() : sign);
    Changed(env);
}

// ---- rows from the other lists ----------------------------------------------------------

int CopyRowsToPlaylist(PlaylistEnv& env, const DataGrid& input, const QString& inputMark) {
    if (!ListHasRows(env, input))
        return -1;
    if (input.SelCount() < 1) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return -1;
    }
    if (!env.tab1NoMsg && !env.prompt.AskYesNo(Caption(CapCopyToPlaylistQuestion))) {
        State().AbortRequested = true;
        return -1;
    }
    DefinePlaylistColumns(env.playlist);
    PrepareTakeOver(env);
    const QString found = Caption(CapStatusFound);
    int taken = 0;
    for (int row : input.SelectedRows()) {
        if (!inputMark.isEmpty() && input.CellView(row, InCol::FTag) != inputMark)
            continue;
        env.playlist.AddRow({QString::number(row), QString(), found, input.CellText(row, InCol::FileName),
                             input.CellText(row, InCol::Type), input.CellText(row, InCol::DurationS),
                             input.CellText(row, InCol::DurationMS), input.CellText(row, InCol::SizeByte),
                             input.CellText(row, InCol::SizeMByte), input.CellText(row, InCol::Path),
                             QString(), input.RowKey(row)});
        ++taken;
    }
    FinishTakeOver(env);
    return taken;
}

int CopyTagRowsToPlaylist(PlaylistEnv& env, const DataGrid& tagList, const DataGrid& input,
                          const QString& tagMark) {
    if (!ListHasRows(env, tagList))
        return -1;
    if (tagList.SelCount() < 1) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return -1;
    }
    if (!env.tab1NoMsg && !env.prompt.AskYesNo(Caption(CapCopyToPlaylistQuestion))) {
        State().AbortRequested = true;
        return -1;
    }
    DefinePlaylistColumns(env.playlist);
    PrepareTakeOver(env);
    const QString found = Caption(CapStatusFound);
    // the data list row each tag row came from gives length and size
    QHash<QString, int> rowOfKey;
    rowOfKey.reserve(input.Rows());
    for (int r = input.Rows(); r >= 1; --r)
        rowOfKey.insert(KeyIdentity(input.RowKey(r)).toString(), r); // the first row of a key wins
    int taken = 0;
    for (int row : tagList.SelectedRows()) {
        if (!tagMark.isEmpty() && tagList.CellView(row, TagCol::FTag) != tagMark)
            continue;
        const QString key = tagList.CellText(row, TagCol::KeyInput);
        const int src = rowOfKey.value(KeyIdentity(key).toString(), 0);
        auto from = [&](int col) { return src ? input.CellText(src, col) : QString(); };
        QString sizeByte = from(InCol::SizeByte), sizeMByte = from(InCol::SizeMByte);
        qint64 bytes = 0;
        if (!src && SongFileExists(TagRowPath(tagList, row), &bytes)) {
            sizeByte = QString::number(bytes);
            sizeMByte = PlaylistMegabytes(bytes);
        }
        env.playlist.AddRow({QString::number(row), QString(), found, tagList.CellText(row, TagCol::FileName),
                             tagList.CellText(row, TagCol::Type), from(InCol::DurationS),
                             from(InCol::DurationMS), sizeByte, sizeMByte,
                             tagList.CellText(row, TagCol::Path), QString(), key});
        ++taken;
    }
    FinishTakeOver(env);
    return taken;
}
