#include "text/modSTextFind.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "list/ftcReadPool.h"
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

struct FoundFile {
    QString folder, name;
    bool skipped; // a path with "system" or "recycler"
};

// Every file under `folder`, in the order of the walk: the files of a folder, then its
// sub-folders one by one.
std::vector<FoundFile> Walk(const QString& folder, bool subfolders) {
    std::vector<FoundFile> found;
    std::vector<QString> todo{folder};
    std::set<FolderId> seen;
    while (!todo.empty()) {
        const QString dir = todo.back();
        todo.pop_back();
        std::vector<FolderEntry> entries;
        FolderId id;
        if (!ListFolder(dir, entries, &id) || !seen.insert(id).second)
            continue;
        const QString prefix = dir.endsWith(QLatin1Char('/')) ? dir : dir + QLatin1Char('/');
        const QString cell = prefix.size() > 1 ? prefix.left(prefix.size() - 1) : prefix;
        std::vector<QString> subs;
        for (const FolderEntry& e : entries) {
            const QString path = prefix + e.name;
            if (e.isDir) {
                if (subfolders && !Skipped(path))
                    subs.push_back(path);
                continue;
            }
            found.push_back({cell, e.name, Skipped(path)});
        }
        todo.insert(todo.end(), subs.rbegin(), subs.rend());
    }
    return found;
}

// Whether a file found belongs in the list; `engine` is the reader's own.
using Wanted = std::function<bool(TagEngine& engine, const FoundFile& file)>;

// Adds the row of every file `wanted` takes, in the order of the walk, with the progress
// and the abort test before each file. `threads` readers test the files ahead.
void AddFound(DataGrid& g, TagEngine& engine, const std::vector<FoundFile>& found, int threads,
              const STextFindOptions& o, const Wanted& wanted,
              const std::function<QStringList(const FoundFile&)>& cells) {
    const int count = int(found.size());
    ReadPool pool(count, threads, engine, [&found, &wanted](TagEngine& e, int i, FileRead& out) {
        const FoundFile& f = found[std::size_t(i)];
        out.type = !f.skipped && wanted(e, f) ? 1 : 0;
    });
    for (int i = 0; i < count; ++i) {
        const FoundFile& f = found[std::size_t(i)];
        if (o.progress)
            o.progress(i + 1, f.folder + QLatin1Char('/') + f.name);
        if (o.aborted && o.aborted())
            break;
        if (pool.Take(i, {}).type != 0)
            g.AddRow(cells(f));
    }
    pool.Stop(); // the files in the readers' hands are finished, their results dropped
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
    AddFound(
        g, engine, Walk(folder, o.subfolders), o.threads > 0 ? o.threads : ScanReadThreads(), o,
        [](TagEngine& e, const FoundFile& f) {
            // Any user frame named "lrc" counts, not only the first: the tag writer keeps the
            // file's order of the frames, so a rating frame written before may stand first.
            return e.OpenFile(f.folder + QLatin1Char('/') + f.name) == 1 && LrcFrameIndex(e) > 0;
        },
        [](const FoundFile& f) {
            return QStringList{QString(), f.name, f.folder};
        });
    g.LockUpdate(false);
    return g.Rows() - before;
}

int FindTxtLrcFiles(DataGrid& g, const QString& folder, TxtLrcKind kind, const STextFindOptions& o) {
    if (!o.add)
        g.Clear();
    const int before = g.Rows();
    g.LockUpdate(true);
    const auto ending = [](const FoundFile& f) { return f.name.right(4).toLower(); };
    TagEngine unused; // names only: no file is opened, no reader started
    AddFound(
        g, unused, Walk(folder, o.subfolders), 1, o,
        [kind, ending](TagEngine&, const FoundFile& f) {
            const QString end = ending(f);
            const bool txt = end == QLatin1String(".txt"), lrc = end == QLatin1String(".lrc");
            return (kind == TxtLrcKind::Txt && txt) || (kind == TxtLrcKind::Lrc && lrc) ||
                   (kind == TxtLrcKind::Both && (txt || lrc));
        },
        [kind, ending](const FoundFile& f) {
            return QStringList{f.name, f.folder, kind == TxtLrcKind::Both ? ending(f).mid(1) : QString()};
        });
    g.LockUpdate(false);
    return g.Rows() - before;
}

void FinishFindList(DataGrid& g, int nameCol) {
    g.SetFooterText(nameCol, QString::number(g.Rows()));
    g.DoSort(nameCol, 1);
    g.SetCurRow(g.Rows() ? 1 : 0);
}
