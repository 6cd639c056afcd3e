#include "playlist/modPlaylistPlay.h"

#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "platform/PosixFile.h"
#include "platform/Shell.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylistFile.h"

#include <QDir>
#include <QFile>

namespace {

const QString kCrLf = QStringLiteral("\r\n");
constexpr int kAlbumColumns[] = {20, 27, 44, 50, 60};
constexpr int kRefNameCol = 4, kRefFolderCol = 8;

struct TempList {
    QString text = QStringLiteral("#EXTM3U") + kCrLf;
    QString base, ext; // lives through the loop, as in the playlist writer
    int entries = 0;
    void Add(const QString& seconds, const QString& title, const QString& path) {
        text += QStringLiteral("#EXTINF:") + seconds + u',' + title + kCrLf + path + kCrLf;
        ++entries;
    }
    QString BaseOf(const QString& name) {
        SplitExtensionKeeping(name, base, ext);
        return base;
    }
};

// Writes the temporary file; false with a message when it can't be written.
bool WriteTemp(const QString& path, const TempList& list, Prompt& prompt) {
    QString error;
    if (WritePlaylistBytes(path, PosixFile::Native(list.text), &error))
        return true;
    prompt.Tell(Caption(CapPlaylistWriteFailed) + path + QStringLiteral("\n") + error,
                Prompt::Icon::Critical);
    return false;
}

// Hands the file over, gives the player its second and deletes the file.
void HandOver(const QString& path, PlayEnv& env) {
    if (!ShellOpen(path, true, 1))
        env.prompt.Tell(Caption(CapOpenFailed), Prompt::Icon::Information);
    WaitSeconds(env.waitSeconds);
    QFile::remove(path);
}

QString InputSongPath(const DataGrid& input, int row) {
    return InputRowPath(input, row);
}

int PlayInputRows(const DataGrid& input, const std::vector<int>& rows, const QString& fileName,
                  PlayEnv& env) {
    TempList t;
    for (int r : rows)
        t.Add(input.CellText(r, InCol::DurationS), t.BaseOf(input.CellText(r, InCol::FileName)),
              InputSongPath(input, r));
    const QString path = TempPlaylistPath(fileName);
    if (!WriteTemp(path, t, env.prompt))
        return 0;
    HandOver(path, env);
    return t.entries;
}

} // namespace

QString TempPlaylistPath(const QString& name) {
    const QString dir = AppFile(QStringLiteral("temp"));
    QDir().mkpath(dir);
    return dir + u'/' + name;
}

QString PlaylistRowSongPath(const DataGrid& g, int row) {
    const QString folder = g.CellText(row, PlCol::PathFile);
    const QString name = g.CellText(row, PlCol::FileName);
    QString path = folder + u'/' + name;
    const QString playlist = g.CellText(row, PlCol::PathPlaylist);
    if (!IsAbsoluteEntry(folder) && !playlist.isEmpty()) {
        QString plFolder, plName;
        SplitPath(playlist, plFolder, plName);
        if (!plFolder.endsWith(u'/'))
            plFolder += u'/';
        path = plFolder + path;
    }
    return path;
}

bool PlayPlaylistSong(const DataGrid& g, int row, Prompt& prompt) {
    if (row < 1 || row > g.Rows())
        return false;
    if (ShellOpen(PlaylistRowSongPath(g, row), true, 1))
        return true;
    prompt.Tell(Caption(CapOpenFailed), Prompt::Icon::Information);
    return false;
}

int PlayRowsOfPlaylist(const DataGrid& g, PlayEnv& env) {
    TempList t;
    const QString missing = Caption(CapStatusMissing);
    for (int r = 1; r <= g.Rows(); ++r) {
        if (g.CellView(r, PlCol::TF) == missing)
            continue;
        const QString folder = g.CellText(r, PlCol::PathFile);
        const QString name = g.CellText(r, PlCol::FileName);
        QString path;
        if (IsAbsoluteEntry(folder)) {
            path = folder + u'/' + name;
        } else {
            const QString playlist = g.CellText(r, PlCol::PathPlaylist);
            if (playlist.isEmpty())
                continue;
            QString plFolder, plName;
            SplitPath(playlist, plFolder, plName);
            path = plFolder + u'/' + folder + u'/' + name;
        }
        t.Add(g.CellText(r, PlCol::DurationS), name, path);
    }
    const QString path = TempPlaylistPath(QStringLiteral("PlayTmp.m3u"));
    if (!WriteTemp(path, t, env.prompt))
        return 0;
    HandOver(path, env);
    return t.entries;
}

int PlayAlbum(const DataGrid& input, int column, const QString& value, PlayEnv& env) {
    std::vector<int> rows;
    if (column >= 1 && column <= input.Cols())
        for (int r = 1; r <= input.Rows(); ++r)
            if (input.CellView(r, column) == value)
                rows.push_back(r);
    const int n = PlayInputRows(input, rows, QStringLiteral("AlbumTmp.m3u"), env);
    if (!env.noMsg)
        env.prompt.Tell(Caption(CapAlbumPassed), Prompt::Icon::Information);
    return n;
}

int PlayAlbumOfCurrentRow(const DataGrid& input, const QString& value, PlayEnv& env) {
    int column = 0;
    QString album = value;
    if (!value.isEmpty()) {
        for (int c : kAlbumColumns) {
            if (c > input.Cols())
                continue;
            for (int r = 1; r <= input.Rows() && column == 0; ++r)
                if (input.CellView(r, c) == value)
                    column = c;
            if (column)
                break;
        }
    } else {
        const int cur = input.CurRow();
        if (cur >= 1 && cur <= input.Rows())
            for (int c : kAlbumColumns)
                if (c <= input.Cols() && !input.CellView(cur, c).isEmpty()) {
                    column = c;
                    album = input.CellText(cur, c);
                    break;
                }
    }
    if (column == 0)
        return 0;
    std::vector<int> rows;
    for (int r = 1; r <= input.Rows(); ++r)
        if (input.CellView(r, column) == album)
            rows.push_back(r);
    return PlayInputRows(input, rows, QStringLiteral("PlayTmp.m3u"), env);
}

int PlayHighlightedRows(const DataGrid& list, bool fromRefList, bool saveAsPlaylist, bool openInPlayer,
                        PlayEnv& env) {
    TempList t;
    for (int r : list.SelectedRows()) {
        if (fromRefList) {
            const QString folder = list.CellText(r, kRefFolderCol);
            const QString name = list.CellText(r, kRefNameCol);
            t.Add(folder, t.BaseOf(name), folder + u'/' + name);
        } else {
            t.Add(list.CellText(r, InCol::DurationS), t.BaseOf(list.CellText(r, InCol::FileName)),
                  InputSongPath(list, r));
        }
    }
    const QString path = TempPlaylistPath(QStringLiteral("PlayTmp.m3u"));
    if (!WriteTemp(path, t, env.prompt))
        return 0;
    if (openInPlayer && !ShellOpen(path, true, 1))
        env.prompt.Tell(Caption(CapOpenFailed), Prompt::Icon::Information);
    if (saveAsPlaylist) {
        DataGrid& settings = env.settings ? *env.settings : Settings();
        const QString start = settings.Rows() >= Ini::PathRename2 && settings.Cols() >= Ini::Col2
                                  ? settings.CellText(Ini::PathRename2, Ini::Col2)
                                  : QString();
        const QString chosen = env.chooseSavePath ? env.chooseSavePath(start) : QString();
        if (!chosen.isEmpty()) {
            QString folder, name;
            SplitPath(chosen, folder, name);
            if (settings.Rows() >= Ini::PathRename2 && settings.Cols() >= Ini::Col2)
                settings.SetCellText(Ini::PathRename2, Ini::Col2, folder);
            QString error;
            if (WritePlaylistBytes(chosen, PosixFile::Native(t.text), &error))
                env.prompt.Tell(Caption(CapPlaylistSaved), Prompt::Icon::Information);
            else
                env.prompt.Tell(Caption(CapPlaylistWriteFailed) + chosen + QStringLiteral("\n") + error,
                                Prompt::Icon::Critical);
        }
        QFile::remove(path);
    } else {
        WaitSeconds(env.waitSeconds);
        QFile::remove(path);
    }
    return t.entries;
}
