#include "text/modSTextFind.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "platform/FolderWalk.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"

#include <set>
#include <vector>

namespace {

// The headers "File name" and "Folder" of the lists of files, as the playlist's file list has them.
constexpr CaptionRow kFileNameHeader = 3;
constexpr CaptionRow kFolderHeader = 7;

bool Skipped(const QString& path) {
    return path.contains(QLatin1String("system"), Qt::CaseInsensitive) ||
           path.contains(QLatin1String("recycler"), Qt::CaseInsensitive);
}

// Calls `take` for every file under `folder`; false when aborted.
bool Walk(const QString& folder, bool subfolders, const STextFindOptions& o,
          const std::function<void(const QString& folder, const QString& name)>& take) {
    std::vector<QString> todo{folder};
    std::set<FolderId> seen;
    int done = 0;
    while (!todo.empty()) {
        const QString dir = todo.back();
        todo.pop_back();
        std::vector<FolderEntry> entries;
        FolderId id;
        if (!ListFolder(dir, entries, &id) || !seen.insert(id).second)
            continue;
        const QString prefix = dir.endsWith(QLatin1Char('/')) ? dir : dir + QLatin1Char('/');
        std::vector<QString> subs;
        for (const FolderEntry& e : entries) {
            const QString path = prefix + e.name;
            if (e.isDir) {
                if (subfolders && !Skipped(path))
                    subs.push_back(path);
                continue;
            }
            ++done;
            if (o.progress)
                o.progress(done, path);
            if (o.aborted && o.aborted())
                return false;
            if (!Skipped(path))
                take(prefix.size() > 1 ? prefix.left(prefix.size() - 1) : prefix, e.name);
        }
        todo.insert(todo.end(), subs.rbegin(), subs.rend());
    }
    return true;
}

} // namespace

void DefineSongWithLrcColumns(DataGrid& g) {
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("Mark"), Caption(CapPlayMarkHeader), 400, Align::Center);
    g.AddColumn(QStringLiteral("FileName"), Caption(kFileNameHeader), 4000);
    g.AddColumn(QStringLiteral("Folder"), Caption(kFolderHeader), 4000);
}

void DefineTxtLrcColumns(DataGrid& g, bool showKind) {
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("FileName"), Caption(kFileNameHeader), 4000);
    g.AddColumn(QStringLiteral("Folder"), Caption(kFolderHeader), 4000);
    g.AddColumn(QStringLiteral("Kind"), Caption(CapExtensionHeader), 500, Align::Left, showKind);
}

void CaptionFindLists(DataGrid& songs, DataGrid& files) {
    songs.SetColumnCaption(SongLrcCol::Mark, Caption(CapPlayMarkHeader));
    songs.SetColumnCaption(SongLrcCol::FileName, Caption(kFileNameHeader));
    songs.SetColumnCaption(SongLrcCol::Folder, Caption(kFolderHeader));
    files.SetColumnCaption(TxtLrcCol::FileName, Caption(kFileNameHeader));
    files.SetColumnCaption(TxtLrcCol::Folder, Caption(kFolderHeader));
    files.SetColumnCaption(TxtLrcCol::Kind, Caption(CapExtensionHeader));
}

int FindSongsWithLrc(DataGrid& g, TagEngine& engine, const QString& folder, const STextFindOptions& o) {
    if (!o.add)
        g.Clear();
    const int before = g.Rows();
    g.LockUpdate(true);
    Walk(folder, o.subfolders, o, [&](const QString& dir, const QString& name) {
        // Any user frame named "lrc" counts, not only the first: the tag writer keeps the
        // file's order of the frames, so a rating frame written before may stand first.
        if (engine.OpenFile(dir + QLatin1Char('/') + name) == 1 && LrcFrameIndex(engine) > 0)
            g.AddRow({QString(), name, dir});
    });
    g.LockUpdate(false);
    return g.Rows() - before;
}

int FindTxtLrcFiles(DataGrid& g, const QString& folder, TxtLrcKind kind, const STextFindOptions& o) {
    if (!o.add)
        g.Clear();
    const int before = g.Rows();
    g.LockUpdate(true);
    Walk(folder, o.subfolders, o, [&](const QString& dir, const QString& name) {
        const QString end = name.right(4).toLower();
        const bool txt = end == QLatin1String(".txt"), lrc = end == QLatin1String(".lrc");
        if ((kind == TxtLrcKind::Txt && txt) || (kind == TxtLrcKind::Lrc && lrc) ||
            (kind == TxtLrcKind::Both && (txt || lrc)))
            g.AddRow({name, dir, kind == TxtLrcKind::Both ? end.mid(1) : QString()});
    });
    g.LockUpdate(false);
    return g.Rows() - before;
}

void FinishFindList(DataGrid& g, int nameCol) {
    g.SetFooterText(nameCol, QString::number(g.Rows()));
    g.DoSort(nameCol, 1);
    g.SetCurRow(g.Rows() ? 1 : 0);
}
