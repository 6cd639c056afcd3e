#include "tag/modInputTagCommands.h"

#include "tag/modTagJournal.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"
#include "tag/modTagList.h"
#include "tag/modTagUpdate.h"

#include <array>

namespace {

using TF = TagField;

constexpr int kTypeWma = 2; // the engine's type number of WMA

constexpr std::array<TF, 6> kV1 = {TF::V1Year,  TF::V1Track, TF::V1Artist,
                                   TF::V1Title, TF::V1Album, TF::V1Comment};
constexpr std::array<TF, 15> kV2 = {TF::V2Genre,     TF::V2Year,      TF::V2Track,        TF::V2Artist,
                                    TF::V2Title,     TF::V2Album,     TF::V2Genre, // 28: comment, see below
                                    TF::V2Composer,  TF::V2Conductor, TF::V2Orchestra,    TF::V2OrigArtist,
                                    TF::V2Copyright, TF::V2EncodedBy, TF::V2PublisherUrl, TF::V2AudFileUrl};
constexpr std::array<TF, 8> kApe = {TF::ApeGenre, TF::ApeYear,  TF::ApeTrack,   TF::ApeArtist,
                                    TF::ApeTitle, TF::ApeAlbum, TF::ApeComment, TF::ApeCopyright};
constexpr std::array<TF, 8> kLyrics = {TF::LyricsGenre, TF::LyricsArtist, TF::LyricsTitle, TF::LyricsAlbum,
                                       TF::LyricsInfo,  TF::LyricsAuthor, TF::LyricsLink,  TF::LyricsLyric};

bool Passes(const DataGrid& list, int row, const QString& filter) {
    return filter.isEmpty() || list.CellView(row, InCol::FTag) == filter;
}

bool LinkTypes(int type);

// Rating or mood in the program's own user text frames of V2 ("QLT..." and "MOOD...");
// an empty value removes every such frame.
void WriteRatingMoodFrame(TagEngine& e, bool mood, const QString& value) {
    if (!value.isEmpty()) {
        SetTagRatingMood(e, mood ? QStringLiteral("Mood") : QStringLiteral("Rating"), value,
                         QStringLiteral("ID3v2"));
        return;
    }
    const QString prefix = mood ? QStringLiteral("MOOD") : QStringLiteral("QLT");
    for (int i = e.UserFrameCount(); i >= 1; --i)
        if (e.UserFrameText(i).startsWith(prefix))
            e.SetUserFrame(i, QString(), QString());
}

// Writes `text` into the field of `column`; 1 done, 0 failed, -1 the type is not served.
int WriteColumn(TagEngine& e, int type, int column, const QString& text, const QString& path) {
    if (column == InCol::Rating || column == InCol::Mood) {
        const bool mood = column == InCol::Mood;
        if (type == kTypeWma) {
            e.SetField(mood ? TF::WmaMood : TF::WmaRating, text);
            return e.SaveWma(path) > 0 ? 1 : 0;
        }
        if (!LinkTypes(type))
            return -1;
        WriteRatingMoodFrame(e, mood, text);
        return e.SaveV2(path) > 0 ? 1 : 0;
    }
    if (column >= 16 && column <= 21) {
        e.SetField(kV1[std::size_t(column - 16)], text);
        return e.SaveV1(path) > 0 ? 1 : 0;
    }
    if (column == InCol::TagComment) {
        const int n = e.CommentCount();
        const QString language = n >= 1 ? e.CommentLanguage(1) : QStringLiteral("???");
        const QString description = n >= 1 ? e.CommentDescription(1) : QString();
        e.SetComment(n >= 1 ? 1 : 0, language, description, text);
        return e.SaveV2(path) > 0 ? 1 : 0;
    }
    if (column >= 22 && column <= 36) {
        e.SetField(kV2[std::size_t(column - 22)], text);
        return e.SaveV2(path) > 0 ? 1 : 0;
    }
    if (column >= 39 && column <= 46) {
        e.SetField(kApe[std::size_t(column - 39)], text);
        return e.SaveApe(path) > 0 ? 1 : 0;
    }
    if (column >= 47 && column <= 54) {
        e.SetField(kLyrics[std::size_t(column - 47)], text);
        return e.SaveLyrics(path) > 0 ? 1 : 0;
    }
    if (column >= 55 && column <= 68) {
        const TagSet set = TypicalSetOfType(type);
        if (const TagField* fields = TypicalFields(set)) {
            e.SetField(fields[column - 55], text);
            return e.Save(set, path) > 0 ? 1 : 0;
        }
    }
    return -1;
}

constexpr std::array<TF, 8> kLinks = {TF::V2Composer,  TF::V2Conductor, TF::V2Orchestra,    TF::V2OrigArtist,
                                      TF::V2Copyright, TF::V2EncodedBy, TF::V2PublisherUrl, TF::V2AudFileUrl};

bool LinkTypes(int type) {
    return type == 1 || type == 3 || type == 4 || type == 5 || type == 6 || type == 7 || type == 8;
}

} // namespace

std::vector<int> TextInTagColumns() {
    std::vector<int> cols;
    for (int c = 16; c <= 68; ++c)
        if (c != InCol::TagAnzLyrics && c != InCol::TagAnzPic)
            cols.push_back(c);
    return cols;
}

TagCommandResult SetTextInTag(DataGrid& list, int column, const QString& text, const QString& markFilter,
                              bool noMsg, TagEngine& engine, const ListEnv& env, const QString& journalPath) {
    TagCommandResult res;
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return res;
    res.ran = true;
    const std::vector<int> rows = list.SelectedRows();
    TagJournalRecorder journal(journalPath);
    State().AbortRequested = false;
    list.LockUpdate(true);
    env.ShowProgress(int(rows.size()), 0);
    int n = 0;
    for (int row : rows) {
        if (State().AbortRequested)
            break;
        env.SetProgress(++n);
        if (!Passes(list, row, markFilter))
            continue;
        const QString path = InputRowPath(list, row);
        const int type = engine.OpenFile(path);
        journal.Before(engine, path);
        const int r = type == 0 ? 0 : WriteColumn(engine, type, column, text, path);
        journal.After(path);
        if (r < 0)
            continue; // the set does not serve this type
        if (r == 0) {
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            ++res.failed;
            continue;
        }
        ++res.done;
        if (engine.OpenFile(path) != 0)
            RefreshInputTagCells(list, row, engine);
    }
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    if (!noMsg)
        env.prompt.Tell(CountText(CapFilesChanged, res.done), Prompt::Icon::Information);
    if (res.failed)
        env.prompt.Tell(CountText(CapFailedCount, res.failed), Prompt::Icon::Critical);
    return res;
}

TagCommandResult RemoveInvalidLinks(DataGrid& list, const QString& markFilter, bool noMsg, TagEngine& engine,
                                    const ListEnv& env, const QString& journalPath) {
    TagCommandResult res;
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return res;
    if (!noMsg && !env.prompt.AskYesNo(Caption(CapRemoveInvalidLinksQuestion), true, Prompt::Icon::Question))
        return res;
    res.ran = true;
    const std::vector<int> rows = list.SelectedRows();
    TagJournalRecorder journal(journalPath);
    State().AbortRequested = false;
    list.LockUpdate(true);
    for (int row : rows) {
        if (State().AbortRequested)
            break;
        if (!Passes(list, row, markFilter))
            continue;
        const QString path = InputRowPath(list, row);
        bool opened = false, changed = false, unreadable = false;
        for (int i = 0; i < int(kLinks.size()); ++i) {
            const int col = InCol::TagComposer + i;
            const QString link = list.CellText(row, col);
            // A dead link: an absolute path to a file that is not there.
            if (!link.startsWith(u'/') || PosixFile::ExistsFollowed(link))
                continue;
            if (!noMsg && !env.prompt.AskYesNo(Caption(CapDeadLinkBefore) + link + u'\n' +
                                                   Caption(CapRemoveLinkQuestion),
                                               false, Prompt::Icon::Question))
                continue;
            if (!opened) {
                opened = true;
                if (engine.OpenFile(path) == 0) {
                    unreadable = true;
                    break;
                }
                journal.Before(engine, path);
                if (!LinkTypes(engine.FileType()))
                    break;
            }
            engine.SetField(kLinks[std::size_t(i)], QString());
            list.SetCellText(row, col, QString());
            changed = true;
            ++res.linksRemoved;
        }
        if (unreadable) {
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            ++res.failed;
            continue;
        }
        if (!changed)
            continue;
        const bool saved = engine.SaveV2(path) > 0;
        journal.After(path);
        if (saved) {
            ++res.done;
        } else {
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            ++res.failed;
        }
    }
    list.LockUpdate(false);
    list.Refresh();
    if (!noMsg)
        env.prompt.Tell(CountText(CapInvalidLinksRemoved, res.linksRemoved) + u'\n' +
                            CountText(CapFilesChanged, res.done),
                        Prompt::Icon::Information);
    if (res.failed)
        env.prompt.Tell(CountText(CapFailedCount, res.failed), Prompt::Icon::Critical);
    return res;
}

TagCommandResult FilenameToTagRows(DataGrid& list, int set, bool withTrack, const QString& markFilter,
                                   bool noMsg, TagEngine& engine, const ListEnv& env,
                                   const QString& journalPath) {
    TagCommandResult res;
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return res;
    if (!noMsg && !env.prompt.AskYesNo(Caption(CapNameToTagQuestion), true, Prompt::Icon::Question))
        return res;
    res.ran = true;
    const std::vector<int> rows = list.SelectedRows();
    TagJournalRecorder journal(journalPath);
    State().AbortRequested = false;
    list.LockUpdate(true);
    env.ShowProgress(int(rows.size()), 0);
    int n = 0;
    for (int row : rows) {
        if (State().AbortRequested)
            break;
        env.SetProgress(++n);
        if (!Passes(list, row, markFilter))
            continue;
        const QString path = InputRowPath(list, row);
        const int type = engine.OpenFile(path);
        journal.Before(engine, path);
        const bool saved = type != 0 && SaveNameToSet(engine, path, type, list.CellText(row, InCol::FileName),
                                                      UpdateSet(set), withTrack) != 0;
        journal.After(path);
        if (!saved) {
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            ++res.failed;
            continue;
        }
        ++res.done;
        if (engine.OpenFile(path) != 0)
            RefreshInputTagCells(list, row, engine);
    }
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    if (!noMsg)
        env.prompt.Tell(CountText(CapFilesUpdated, res.done), Prompt::Icon::Information);
    if (res.failed)
        env.prompt.Tell(CountText(CapFilesFailed, res.failed), Prompt::Icon::Critical);
    return res;
}

TagCommandResult SetRatingMoodRows(DataGrid& list, bool mood, const QString& value, const QString& markFilter,
                                   bool noMsg, TagEngine& engine, const ListEnv& env,
                                   const QString& journalPath) {
    return SetTextInTag(list, mood ? InCol::Mood : InCol::Rating, value, markFilter, noMsg, engine, env,
                        journalPath);
}

int AlbumColumnOfSet(int set) {
    switch (UpdateSet(set)) {
    case UpdateSet::V1:
        return InCol::Tg1Album;
    case UpdateSet::Ape:
        return InCol::TagApeAlbum;
    case UpdateSet::Lyrics:
        return InCol::TagLyricsAlbum;
    case UpdateSet::Typical:
        return InCol::TagTypAlbum;
    default:
        return InCol::TagAlbum;
    }
}
