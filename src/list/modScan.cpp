#include "list/modScan.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/modFileCommands.h"
#include "list/InputColumns.h"
#include "list/ftcNames.h"
#include "list/ftcReadPool.h"
#include "list/modList.h"
#include "list/modListColumns.h"
#include "list/modRefresh.h"
#include "platform/FolderWalk.h"
#include "tag/TagEngine.h"

#include <QLocale>
#include <cmath>
#include <set>

namespace {

using TF = TagField;

bool SkippedPath(const QString& path) {
    return SweepSkips(path); // the one rule of all folder walks
}

bool MaskMatches(const QString& name, const QString& mask) {
    if (mask == QLatin1String("*"))
        return true;
    return name.endsWith(mask, Qt::CaseInsensitive);
}

void Walk(const QString& folder, const QString& mask, QStringList& list, bool recurse, int& added,
          std::set<FolderId>& visited) {
    std::vector<FolderEntry> entries;
    FolderId id;
    if (!ListFolder(folder, entries, &id))
        return; // unreadable: no entries
    if (!visited.insert(id).second)
        return; // entered before through a link
    const QString prefix = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    for (const FolderEntry& e : entries) {
        QString full = prefix + e.name;
        if (SkippedPath(full))
            continue;
        if (e.isDir) {
            if (recurse) {
                Walk(full, mask, list, recurse, added, visited);
            } else {
                list.append(QLatin1String(">>") + full);
                ++added;
            }
        } else if (MaskMatches(e.name, mask)) {
            list.append(std::move(full));
            ++added;
        }
    }
}

// Text of one field, or empty where the cell of a broken set stays empty.
inline QString F(const TagEngine& e, TF f) {
    return e.Field(f);
}

void FillTypical(QStringList& c, const TagEngine& e, int type) {
    for (int i = 0; i < kTypicalFieldCount; ++i)
        c[InCol::TypFirst - 1 + i] = TypicalColumnText(e, type, i);
}

} // namespace

RowContext MakeRowContext(const ScanOptions& o) {
    RowContext c;
    c.checkCharacters = o.checkCharacters;
    c.useChecklist = o.useChecklist;
    if (o.checkCharacters && !o.useChecklist) {
        c.artistSearch = o.artistSearch.trimmed().toLower();
        c.titleSearch = o.titleSearch.trimmed().toLower();
    }
    c.checklist = o.checklist;
    c.numberDigits = o.numberDigits > 0 ? o.numberDigits : NumberDigits();
    return c;
}

int FindFiles(const QString& folder, const QString& mask, QStringList& list, bool recurse, int& count) {
    std::set<FolderId> visited;
    int added = 0;
    QString start = folder;
    while (start.size() > 1 && start.endsWith(QLatin1Char('/')))
        start.chop(1);
    Walk(start, mask, list, recurse, added, visited);
    count += added;
    return added;
}

bool PassesTextCheck(const QString& artist, const QString& title, const QString& artistSearch,
                     const QString& titleSearch) {
    if (!artistSearch.isEmpty() && !artist.contains(artistSearch, Qt::CaseInsensitive))
        return false;
    if (!titleSearch.isEmpty() && !title.contains(titleSearch, Qt::CaseInsensitive))
        return false;
    return true;
}

bool PassesChecklist(const QString& fileName, const DataGrid& list) {
    if (list.Cols() < 1)
        return false;
    for (int r = 1; r <= list.Rows(); ++r) {
        const QStringView find1 = list.CellView(r, 1).trimmed();
        if (find1.isEmpty())
            break; // the first empty row ends the list
        const QStringView word = list.Cols() >= 2 ? list.CellView(r, 2).trimmed() : QStringView();
        const QStringView find2 = list.Cols() >= 3 ? list.CellView(r, 3).trimmed() : QStringView();
        const bool hit1 = fileName.contains(find1, Qt::CaseInsensitive);
        if (find2.isEmpty()) {
            if (hit1)
                return true;
            continue;
        }
        const bool hit2 = fileName.contains(find2, Qt::CaseInsensitive);
        const bool both = word.compare(QLatin1String("AND"), Qt::CaseInsensitive) == 0;
        if (both ? (hit1 && hit2) : (hit1 || hit2))
            return true;
    }
    return false;
}

void ChecklistFromSettings(DataGrid& list) {
    list.LockUpdate(true);
    if (list.Cols() == 0) {
        list.AddColumn(QStringLiteral("Find1"), Caption(CapCheckListFind1), 1500);
        list.AddColumn(QStringLiteral("AND"), QStringLiteral("AND"), 700, Align::Center);
        list.AddColumn(QStringLiteral("Find2"), Caption(CapCheckListFind2), 1500);
    }
    list.Clear();
    for (int r = Ini::FindChrFirst; r <= Ini::FindChrLast; ++r) {
        const QString find1 = Setting(r, Ini::FindChrCol1);
        if (find1.isEmpty())
            break;
        list.AddRow({find1, Setting(r, Ini::FindChrAndCol), Setting(r, Ini::FindChrCol2)});
    }
    list.LockUpdate(false);
}

QStringList FileRowCells(TagEngine& e, const QString& path, int type, int rowNumber, int digits) {
    QStringList c(InCol::Count);
    QString folder, name, base, ext, artist, title, number;
    SplitPath(path, folder, name);
    SplitExtension(name, base, ext);
    SplitArtistTitle(base, artist, title);
    StripArtistNumber(artist, number, 0, digits);
    QString rest;
    StripTitleNumber(title, number, rest, digits);
    title = rest;

    const QLocale loc;
    const qint64 seconds = qint64(std::llround(double(e.DurationSeconds())));
    const qint64 bytes = e.FileSizeBytes();
    c[InCol::No - 1] = QString::number(rowNumber);
    c[InCol::FileName - 1] = name;
    c[InCol::Artist - 1] = artist;
    c[InCol::Title - 1] = title;
    c[InCol::Type - 1] = FileTypeName(type);
    c[InCol::Path - 1] = folder;
    c[InCol::DurationS - 1] = loc.toString(seconds);
    c[InCol::DurationMS - 1] = FormatDuration(seconds);
    c[InCol::SizeByte - 1] = QString::number(bytes);
    c[InCol::SizeMByte - 1] = loc.toString(double(bytes) / 1024.0 / 1024.0, 'f', 3);
    c[InCol::Bitrate - 1] = QString::number(e.Bitrate());
    c[InCol::Frequency - 1] = QString::number(e.Frequency());
    c[InCol::HasTag - 1] = HasTagText(e);

    if (e.HasV1()) {
        static constexpr TF kV1[7] = {TF::V1Genre, TF::V1Year,  TF::V1Track,  TF::V1Artist,
                                      TF::V1Title, TF::V1Album, TF::V1Comment};
        for (int i = 0; i < 7; ++i)
            c[InCol::V1First - 1 + i] = F(e, kV1[i]);
    }
    const bool v2 = e.HasV2();
    if (v2) {
        static constexpr TF kV2a[6] = {TF::V2Genre,  TF::V2Year,  TF::V2Track,
                                       TF::V2Artist, TF::V2Title, TF::V2Album};
        for (int i = 0; i < 6; ++i)
            c[InCol::TagGenre - 1 + i] = F(e, kV2a[i]);
        c[InCol::TagComment - 1] = e.CommentText(1);
        static constexpr TF kV2b[8] = {TF::V2Composer,     TF::V2Conductor, TF::V2Orchestra,
                                       TF::V2OrigArtist,   TF::V2Copyright, TF::V2EncodedBy,
                                       TF::V2PublisherUrl, TF::V2AudFileUrl};
        for (int i = 0; i < 8; ++i)
            c[InCol::TagComposer - 1 + i] = F(e, kV2b[i]);
        const int lyrics = e.LyricCount();
        QString ly;
        if (lyrics > 0) {
            ly = QString::number(lyrics);
            if (type == 1 && e.LyricDescription(1).compare(QLatin1String("lrc"), Qt::CaseInsensitive) == 0)
                ly += QLatin1String(" [Lrc]");
        }
        c[InCol::TagAnzLyrics - 1] = ly;
        const int pictures = e.PictureCount();
        if (pictures > 0)
            c[InCol::TagAnzPic - 1] = QString::number(pictures);
    }
    if (e.HasApe()) {
        static constexpr TF kApe[8] = {TF::ApeGenre, TF::ApeYear,  TF::ApeTrack,   TF::ApeArtist,
                                       TF::ApeTitle, TF::ApeAlbum, TF::ApeComment, TF::ApeCopyright};
        for (int i = 0; i < 8; ++i)
            c[InCol::ApeFirst - 1 + i] = F(e, kApe[i]);
    }
    if (e.HasLyrics()) {
        static constexpr TF kLy[8] = {TF::LyricsGenre, TF::LyricsArtist, TF::LyricsTitle, TF::LyricsAlbum,
                                      TF::LyricsInfo,  TF::LyricsAuthor, TF::LyricsLink,  TF::LyricsLyric};
        for (int i = 0; i < 8; ++i)
            c[InCol::LyricsFirst - 1 + i] = F(e, kLy[i]);
    }
    FillTypical(c, e, type);

    switch (type) {
    case 1:
    case 3:
    case 4:
    case 6:
    case 5:
    case 7:
    case 8:
        if (v2) {
            c[InCol::Rating - 1] = e.V2Rating();
            c[InCol::Mood - 1] = e.V2Mood();
        }
        break;
    case 2:
        c[InCol::Rating - 1] = F(e, TF::WmaRating);
        c[InCol::Mood - 1] = F(e, TF::WmaMood);
        break;
    default:
        break;
    }
    c[InCol::DateTime - 1] = FileDateText(path);
    return c;
}

bool AddFileRow(DataGrid& list, TagEngine& engine, const QString& path, const RowContext& ctx,
                int alreadyOpenType) {
    const QString stamp = FileStampText(path);
    const int type = alreadyOpenType >= 0 ? alreadyOpenType : engine.OpenFile(path);
    return AddReadRow(list, FileRowCells(engine, path, type, 0, ctx.numberDigits), stamp, ctx);
}

bool AddReadRow(DataGrid& list, QStringList cells, const QString& stamp, const RowContext& ctx) {
    if (ctx.checkCharacters && !State().UpdateRun) {
        if (ctx.useChecklist) {
            if (!ctx.checklist || !PassesChecklist(cells[InCol::FileName - 1], *ctx.checklist))
                return false;
        } else if (!PassesTextCheck(cells[InCol::Artist - 1], cells[InCol::Title - 1], ctx.artistSearch,
                                    ctx.titleSearch)) {
            return false;
        }
    }
    const int row = list.Rows() + 1;
    cells[InCol::No - 1] = QString::number(row - ctx.rowOffset);
    list.AddRow(cells, StampedKey(QString(QString::number(row) + u'k'), stamp));
    return true;
}

QString ScanProgressText(int i, int count) {
    return Caption(CapProgressFile) + QString::number(i) + Caption(CapProgressOf) + QString::number(count);
}

bool ProgressTextDue(int i, int count) {
    const int left = count - i;
    if (left <= 10)
        return true;
    if (left <= 1000)
        return i % 50 == 0;
    return i % 100 == 0;
}

void RebuildValueLists(const DataGrid& list, QStringList& ratings, QStringList& moods) {
    ratings.clear();
    moods.clear();
    if (list.Cols() < InCol::Mood)
        return;
    QSet<QString> r, m;
    for (int row = 1; row <= list.Rows(); ++row) {
        const QStringView rv = list.CellView(row, InCol::Rating);
        if (!rv.isEmpty()) {
            QString s = rv.toString();
            if (!r.contains(s)) {
                r.insert(s);
                ratings.append(std::move(s));
            }
        }
        const QStringView mv = list.CellView(row, InCol::Mood);
        if (!mv.isEmpty()) {
            QString s = mv.toString();
            if (!m.contains(s)) {
                m.insert(s);
                moods.append(std::move(s));
            }
        }
    }
    ratings.sort();
    moods.sort();
}

namespace {

struct ScanFlags {
    bool oldSuppress;
    explicit ScanFlags() : oldSuppress(State().SuppressEvents) { State().ScanRunning = true; }
    ~ScanFlags() {
        State().SuppressEvents = oldSuppress;
        State().ScanRunning = false;
    }
};

// Reads one entry as the scan does: a folder entry gives type 0, an unreadable file no
// cells when it is skipped. The stamp is taken before the file is read, so that a change
// during the read shows at the next refresh.
void ReadEntry(TagEngine& engine, const QString& entry, bool skipUnreadable, int digits, FileRead& out) {
    const bool folderEntry = entry.startsWith(QLatin1String(">>"));
    const QString path = folderEntry ? entry.mid(2) : entry;
    out.type = folderEntry ? 0 : engine.OpenFile(path);
    if (!folderEntry)
        out.stamp = OpenedFileStampText(engine); // as found before the read
    if (out.type == 0 && skipUnreadable)
        return;
    if (folderEntry)
        engine.OpenFile(path); // an empty engine for the row of a folder
    out.cells = FileRowCells(engine, path, out.type, 0, digits);
}

// The loop shared by the scan and the re-read: each entry with a pump, the abort test,
// the bar, one OpenFile, the progress text and the row. With readers on threads the
// files are read ahead of this loop, which only takes their results in order.
void RunEntries(DataGrid& list, TagEngine& engine, const QStringList& entries, const RowContext& ctx,
                bool skipUnreadable, int threads, const ScanHooks& hooks, ScanResult& res) {
    const int count = int(entries.size());
    if (count > 0 && hooks.showProgress)
        hooks.showProgress(count);
    const int digits = ctx.numberDigits;
    ReadPool pool(count, threads, engine,
                  [&entries, skipUnreadable, digits](TagEngine& e, int i, FileRead& out) {
                      ReadEntry(e, entries.at(i), skipUnreadable, digits, out);
                  });
    for (int i = 0; i < count; ++i) {
        if (!EntryStepBegins(hooks, i)) {
            res.aborted = true;
            break;
        }
        ++res.processed;
        const QString& entry = entries.at(i);
        const bool folderEntry = entry.startsWith(QLatin1String(">>"));
        FileRead read = pool.Take(i, hooks.pump);
        if (read.type == 0 && skipUnreadable) {
            if (!folderEntry)
                ++res.failures;
            continue;
        }
        if (read.type == 0)
            ++res.failures;
        EntryProgressText(list, hooks, i, count);
        if (AddReadRow(list, std::move(read.cells), read.stamp, ctx))
            ++res.rowsAdded;
        else
            ++res.filtered;
    }
    pool.Stop(); // the files in the readers' hands are finished, their rows dropped
}

void FinishNormal(DataGrid& list, ScanResult& res, const ScanHooks& hooks) {
    if (hooks.hideProgress)
        hooks.hideProgress();
    RebuildValueLists(list, res.ratings, res.moods);
    ShowTotals(list);
    list.DoSort(QLatin1String(kScanSortOrder), 1);
    if (list.Rows() > 0)
        list.SetCurRow(1);
    list.LockUpdate(false);
    list.Refresh();
}

void FinishAborted(DataGrid& list, ScanResult& res, const ScanHooks& hooks) {
    State().AbortRequested = false;
    RebuildValueLists(list, res.ratings, res.moods);
    if (hooks.hideProgress)
        hooks.hideProgress();
    list.ClearFooters();
    list.LockUpdate(false);
    list.Refresh();
}

} // namespace

ScanResult ScanFolder(DataGrid& list, const QString& path, const ScanOptions& options, TagEngine& engine,
                      const ScanHooks& hooks) {
    ScanFlags flags;
    ScanResult res;
    const RowContext ctx = MakeRowContext(options);
    list.ClearFooters();
    if (hooks.pump)
        hooks.pump();
    QStringList entries;
    entries.reserve(1024);
    FindFiles(path, QStringLiteral("*"), entries, options.subFolders, res.entries);
    if (!options.subFolders) {
        for (const QString& e : entries)
            res.folders += e.startsWith(QLatin1String(">>")) ? 1 : 0;
    }
    if (hooks.pump)
        hooks.pump();
    list.LockUpdate(true);
    if (!options.attach) {
        list.Clear();
        if (hooks.listCleared)
            hooks.listCleared();
    }
    const int threads = options.threads > 0 ? options.threads : ScanReadThreads();
    RunEntries(list, engine, entries, ctx, true, threads, hooks, res);
    if (res.aborted)
        FinishAborted(list, res, hooks);
    else
        FinishNormal(list, res, hooks);
    return res;
}

ScanResult UpdateList(DataGrid& list, TagEngine& engine, Prompt& prompt, const ScanHooks& hooks,
                      int threads) {
    ScanResult res;
    if (!ListNotEmpty(list, prompt))
        return res;
    ScanFlags flags;
    // The files of the rows that stand in the list now.
    QStringList paths;
    paths.reserve(list.Rows());
    for (int r = 1; r <= list.Rows(); ++r)
        paths.append(InputRowPath(list, r));
    res.entries = int(paths.size());
    list.LockUpdate(true);
    // The old rows stay until their files have been read again: the new rows go behind
    // them, and each old row goes only when its file has been read. An abort keeps the
    // rows not yet read as they were.
    const int oldRows = list.Rows();
    list.ClearSelection();
    RowContext ctx;
    ctx.numberDigits = NumberDigits();
    ctx.rowOffset = oldRows;
    RunEntries(list, engine, paths, ctx, false, threads > 0 ? threads : ScanReadThreads(), hooks, res);
    const int reread = std::min(res.processed, oldRows);
    if (reread > 0) {
        list.SelectRange(1, reread, true);
        list.DeleteSelected();
    }
    if (res.aborted) {
        // The rows read again follow the rows left as they were; the numbers follow the rows.
        for (int r = 1; r <= list.Rows(); ++r)
            list.SetCellText(r, InCol::No, QString::number(r));
        FinishAborted(list, res, hooks);
        return res;
    }
    for (int r = 1; r <= list.Rows(); ++r)
        list.SetRowKey(r, StampedKey(QString(QString::number(r) + u'k'), KeyStamp(list.RowKey(r))));
    list.DoSort(QLatin1String(kScanSortOrder), 1);
    if (list.Rows() > 0)
        list.SetCurRow(1);
    RebuildValueLists(list, res.ratings, res.moods);
    ShowTotals(list);
    list.LockUpdate(false);
    list.Refresh();
    if (hooks.hideProgress)
        hooks.hideProgress();
    return res;
}

ScanResult btnTab1_UpdateData(DataGrid& list, TagEngine& engine, Prompt& prompt, const ScanHooks& hooks) {
    State().UpdateRun = true;
    ScanResult res = UpdateList(list, engine, prompt, hooks);
    State().UpdateRun = false;
    return res;
}

void EnsureInputColumns(DataGrid& list) {
    if (list.Cols() == 0)
        DefineInputColumns(list);
}
