// Transfers of the tag list: set to set, file name to tag, tag to file name.

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/ftcFileOps.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modList.h"
#include "tag/TagEngine.h"
#include "tag/modTagBatch.h"
#include "tag/modTagUpdate.h"

#include <array>
#include <optional>

namespace {

const QString kNo = QStringLiteral("No"); // "leave the target's field alone"

// The seven values a transfer carries, in this order.
enum Val { Genre, Year, Track, Artist, Title, Album, Comment, ValCount };

// The typical sets that a transfer reads and writes: all but WMA's.
bool TypicalTransferType(int type) {
    const TagSet set = TypicalSetOfType(type);
    return set != TagSet::None && set != TagSet::Wma;
}

bool SourcePresent(const TagEngine& e, int source, int type) {
    switch (source) {
    case 0:
        return e.HasV1();
    case 1:
        return e.HasV2();
    case 2:
        return e.HasApe();
    case 3:
        return e.HasLyrics();
    case 4:
        return TypicalTransferType(type);
    default:
        return false;
    }
}

QString Take(bool enabled, const QString& value) {
    return enabled ? value : kNo;
}

std::array<QString, ValCount> ReadSource(const TagEngine& e, int source, int type, const TagBoxes& b) {
    std::array<QString, ValCount> v;
    v.fill(kNo);
    switch (source) {
    case 0:
        v[Genre] = Take(b.v1GenreEnabled, e.GenreName(e.V1GenreCode()));
        v[Year] = Take(b.v1[1].enabled, e.V1Year());
        v[Track] = Take(b.v1[2].enabled, e.V1Track());
        v[Artist] = Take(b.v1[3].enabled, e.V1Artist());
        v[Title] = Take(b.v1[4].enabled, e.V1Title());
        v[Album] = Take(b.v1[5].enabled, e.V1Album());
        v[Comment] = Take(b.v1[6].enabled, e.V1Comment());
        break;
    case 1:
        // The genre of a V2 source is the file's V1Genre property, as it always was.
        v[Genre] = Take(b.v2Genre.enabled, e.V1Genre());
        v[Year] = Take(b.v2[0].enabled, e.V2Year());
        v[Track] = Take(b.v2[1].enabled, e.V2Track());
        v[Artist] = Take(b.v2[2].enabled, e.V2Artist());
        v[Title] = Take(b.v2[3].enabled, e.V2Title());
        v[Album] = Take(b.v2[4].enabled, e.V2Album());
        // the first comment, unless the comment area is switched off: then "No"
        v[Comment] = Take(b.v2CommentEnabled, e.CommentText(1));
        break;
    case 2:
        v[Genre] = Take(b.apeGenre.enabled, e.ApeGenre());
        v[Year] = Take(b.ape[0].enabled, e.ApeYear());
        v[Track] = Take(b.ape[1].enabled, e.ApeTrack());
        v[Artist] = Take(b.ape[2].enabled, e.ApeArtist());
        v[Title] = Take(b.ape[3].enabled, e.ApeTitle());
        v[Album] = Take(b.ape[4].enabled, e.ApeAlbum());
        v[Comment] = Take(b.ape[5].enabled, e.ApeComment());
        break;
    case 3:
        v[Genre] = Take(b.lyricsGenre.enabled, e.LyricsGenre());
        v[Artist] = Take(b.lyrics[0].enabled, e.LyricsArtist());
        v[Title] = Take(b.lyrics[1].enabled, e.LyricsTitle());
        v[Album] = Take(b.lyrics[2].enabled, e.LyricsAlbum());
        v[Comment] = Take(b.lyrics[3].enabled, e.LyricsInfo());
        break;
    case 4: {
        TagField g;
        if (!TypicalGenreField(type, &g))
            break;
        const auto& f = TypicalBoxFields(type);
        v[Genre] = Take(b.typicalGenre.enabled, e.Field(g));
        for (int i = 0; i < 6; ++i)
            v[size_t(Year + i)] = Take(b.typical[size_t(i)].enabled, e.Field(f[size_t(i)]));
        break;
    }
    default:
        break;
    }
    return v;
}

void Put(TagEngine& e, TagField field, const QString& value) {
    if (value != kNo)
        e.SetField(field, value);
}

// Where the values go in the targets V1, V2, APE and Lyrics, and how each is saved. A value
// with no field in a set (V1 genre, V2 comment, Lyrics year and track) is left out.
struct TargetSet {
    std::array<std::optional<TagField>, ValCount> fields; // in the order of Val
    int (TagEngine::*save)(const QString&);
};

const TargetSet& FixedTarget(int target) {
    using F = TagField;
    static const std::array<TargetSet, 4> sets{{
        {{std::nullopt, F::V1Year, F::V1Track, F::V1Artist, F::V1Title, F::V1Album, F::V1Comment},
         &TagEngine::SaveV1},
        {{F::V2Genre, F::V2Year, F::V2Track, F::V2Artist, F::V2Title, F::V2Album, std::nullopt},
         &TagEngine::SaveV2},
        {{F::ApeGenre, F::ApeYear, F::ApeTrack, F::ApeArtist, F::ApeTitle, F::ApeAlbum, F::ApeComment},
         &TagEngine::SaveApe},
        {{F::LyricsGenre, std::nullopt, std::nullopt, F::LyricsArtist, F::LyricsTitle, F::LyricsAlbum,
          F::LyricsInfo},
         &TagEngine::SaveLyrics},
    }};
    return sets[size_t(target)];
}

// Stages and saves the values in the target set; false when the save failed.
bool WriteTarget(TagEngine& e, const QString& path, int target, int type,
                 const std::array<QString, ValCount>& v) {
    switch (target) {
    case 0:
    case 1:
    case 2:
    case 3: {
        // The V1 provision of the Lyrics set serves MP3 and MPP only: a FLAC or Ogg
        // file must not get a V1 tag from it.
        if (target == 3 && (type == 1 || type == 7))
            EnsureV1ForLyrics(e, path);
        const TargetSet& set = FixedTarget(target);
        for (size_t i = 0; i < ValCount; ++i)
            if (set.fields[i])
                Put(e, *set.fields[i], v[i]);
        return (e.*set.save)(path) != 0;
    }
    case 4: {
        if (!TypicalTransferType(type))
            return true; // no WMA target: nothing to write
        TagField g;
        TypicalGenreField(type, &g);
        Put(e, g, v[Genre]);
        const auto& f = TypicalBoxFields(type);
        for (int i = 0; i < 6; ++i)
            Put(e, f[size_t(i)], v[size_t(Year + i)]);
        return e.Save(TypicalSetOfType(type), path) != 0;
    }
    default:
        return true;
    }
}

bool StripSource(TagEngine& e, const QString& path, int source, int type) {
    // A FLAC file keeps its V1 and APE tags, an Ogg file its APE tag, as the delete
    // command does: those strips are left out.
    switch (source) {
    case 0:
        return type == 4 ? true : e.RemoveV1(path) != 0;
    case 1:
        return e.RemoveV2(path) != 0;
    case 2:
        return (type == 4 || type == 6) ? true : e.RemoveApe(path) != 0;
    case 3:
        return (type == 1 || type == 7) ? e.RemoveLyrics(path) != 0 : true;
    case 4:
        return type == 6 ? e.RemoveOgg(path) != 0 : true;
    default:
        return true;
    }
}

} // namespace

BatchResult TagToTag(TagBatch& batch, int index, const TagBoxes& boxes, bool strip) {
    BatchResult r;
    Prompt& prompt = *batch.prompt;
    if (!ListNotEmpty(*batch.lbxTag, prompt))
        return r;
    if (index < 0 || index > 19) {
        prompt.Tell(Caption(CapNothingChosen), Prompt::Icon::Information);
        return r;
    }
    const int source = index / 4;
    const int position = index % 4;
    const int target = position < source ? position : position + 1;
    BusyScope busy(batch.busy);
    TagEngine& e = *batch.engine;
    ForEachOpenedFile(
        batch,
        [&](int row, const QString& path, int t) {
            if (!SourcePresent(e, source, t))
                return false;
            const auto values = ReadSource(e, source, t, boxes);
            bool ok = true;
            if (index != 9) // APE to V2 writes nothing, as it always did
                ok = WriteTarget(e, path, target, t, values);
            if (ok && strip)
                ok = StripSource(e, path, source, t);
            CarryBackToInput(batch, row, path);
            return ok;
        },
        r);
    FinishBatchNote(batch, r, CapTagsTransferred);
    return r;
}

// ---- names ---------------------------------------------------------------------------------

NameParts SplitNameForTag(const QString& baseIn) {
    NameParts p;
    QString base = baseIn.trimmed();
    int i = 0;
    if (base.startsWith(QLatin1Char('#'))) {
        // internal number: "#07 Artist - Title"
        i = 1;
        while (i < base.size() && base[i].isDigit())
            ++i;
        if (i > 1) {
            p.number = base.mid(1, i - 1);
            const int blank = base.indexOf(QLatin1Char(' '), i);
            base = blank < 0 ? QString() : base.mid(blank + 1);
        }
    } else {
        while (i < base.size() && base[i].isDigit())
            ++i;
        if (i > 0) {
            p.number = base.left(i);
            // the rest starts at the first letter, so any separator goes
            int j = i;
            while (j < base.size() && !(base[j].isLetter()))
                ++j;
            base = base.mid(j);
        }
    }
    int dash = base.indexOf(QLatin1Char('-'));
    if (dash < 0) {
        p.artist = base.trimmed();
        return p;
    }
    bool numeric = false;
    base.left(dash).trimmed().toLongLong(&numeric);
    if (numeric)
        dash = base.indexOf(QLatin1Char('-'), dash + 1);
    if (dash < 0) {
        p.artist = base.trimmed();
        return p;
    }
    p.artist = base.left(dash).trimmed();
    p.title = base.mid(dash + 1).trimmed();
    return p;
}

static void SplitExt(const QString& name, QString* base, QString* ext) {
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot < 0) {
        *base = name;
        ext->clear();
        return;
    }
    *base = name.left(dot);
    *ext = name.mid(dot + 1);
}

static QString PlainNumber(const QString& text) {
    bool ok = false;
    const qlonglong n = text.trimmed().toLongLong(&ok);
    return ok ? QString::number(n) : text.trimmed();
}

int SaveNameToSet(TagEngine& e, const QString& path, int t, const QString& fileName, UpdateSet set,
                  bool withTrack, NameParts* parts, QString* trackOut) {
    QString base, ext;
    SplitExt(fileName, &base, &ext);
    NameParts p = SplitNameForTag(base);
    const QString track = withTrack ? PlainNumber(p.number) : QString();
    using F = TagField;
    auto put = [&](F artist, F title, F trackField, bool withTrackField) {
        e.SetField(artist, p.artist);
        e.SetField(title, p.title);
        if (withTrackField && !track.isEmpty())
            e.SetField(trackField, track);
    };
    int saved = 1;
    switch (set) {
    case UpdateSet::V1:
        put(F::V1Artist, F::V1Title, F::V1Track, true);
        saved = e.SaveV1(path);
        break;
    case UpdateSet::V2:
        put(F::V2Artist, F::V2Title, F::V2Track, true);
        saved = e.SaveV2(path);
        break;
    case UpdateSet::Ape:
        put(F::ApeArtist, F::ApeTitle, F::ApeTrack, true);
        saved = e.SaveApe(path);
        break;
    case UpdateSet::Lyrics:
        if (t == 1 || t == 7)
            EnsureV1ForLyrics(e, path);
        put(F::LyricsArtist, F::LyricsTitle, F::LyricsArtist, false);
        saved = e.SaveLyrics(path);
        break;
    case UpdateSet::Typical:
        if (const TagField* f = TypicalFields(TypicalSetOfType(t))) {
            put(f[3], f[4], f[2], true); // artist, title, track
            saved = e.Save(TypicalSetOfType(t), path);
        }
        break;
    case UpdateSet::None:
        break;
    }
    if (parts)
        *parts = p;
    if (trackOut)
        *trackOut = track;
    return saved;
}

BatchResult FilenameToTag(TagBatch& batch, UpdateSet set, bool withTrack, NameToTagShown* shown) {
    BatchResult r;
    Prompt& prompt = *batch.prompt;
    DataGrid& list = *batch.lbxTag;
    if (!SelectedRowsAndSetChosen(batch, set, CapNoTagChosenToUpdate, Prompt::Icon::Information))
        return r;
    if (!prompt.AskYesNo(Caption(CapNameToTagQuestion)))
        return r;
    BusyScope busy(batch.busy);
    TagEngine& e = *batch.engine;
    ForEachOpenedFile(
        batch,
        [&](int row, const QString& path, int t) {
            NameParts p;
            QString track;
            const int saved =
                SaveNameToSet(e, path, t, list.CellText(row, TagCol::FileName), set, withTrack, &p, &track);
            if (saved == 0)
                return false;
            if (shown) {
                shown->any = true;
                shown->track = track;
                shown->artist = p.artist;
                shown->title = p.title;
            }
            CarryBackToInput(batch, row, path);
            return true;
        },
        r);
    FinishBatchReport(batch, r, CapFilesUpdated);
    return r;
}

bool ReadSetNameFields(const TagEngine& e, UpdateSet set, QString* artist, QString* title, QString* track) {
    const int t = e.FileType();
    switch (set) {
    case UpdateSet::V1:
        *artist = e.V1Artist(), *title = e.V1Title(), *track = e.V1Track();
        return e.HasV1();
    case UpdateSet::V2:
        *artist = e.V2Artist(), *title = e.V2Title(), *track = e.V2Track();
        return e.HasV2();
    case UpdateSet::Ape:
        *artist = e.ApeArtist(), *title = e.ApeTitle(), *track = e.ApeTrack();
        return e.HasApe();
    case UpdateSet::Lyrics:
        *artist = e.LyricsArtist(), *title = e.LyricsTitle(), track->clear();
        return e.HasLyrics();
    case UpdateSet::Typical:
        if (const TagField* f = TypicalFields(TypicalSetOfType(t))) {
            *artist = e.Field(f[3]), *title = e.Field(f[4]), *track = e.Field(f[2]);
            return true;
        }
        return false;
    case UpdateSet::None:
        break;
    }
    return false;
}

FileMover DefaultFileMover() {
    return [](const QString& source, const QString& target, QString* finalPath) {
        return MoveFile(source, target, finalPath);
    };
}

// A file name may not hold a slash; anything else the file system takes as it is.
static QString NamePart(const QString& text) {
    QString s = text;
    s.replace(QLatin1Char('/'), QLatin1Char('_'));
    s.remove(QChar(0));
    return s.trimmed();
}

BatchResult TagToFilename(TagBatch& batch, UpdateSet set, const QString& formArtist, const QString& formTitle,
                          bool withTrack, int digits, const FileMover& mover) {
    BatchResult r;
    Prompt& prompt = *batch.prompt;
    DataGrid& list = *batch.lbxTag;
    if (!SelectedRowsAndSetChosen(batch, set, CapNoTagChosenToUpdate, Prompt::Icon::Information))
        return r;
    if (formArtist.isEmpty() || formTitle.isEmpty()) {
        prompt.Tell(Caption(CapTagArtistTitleEmpty), Prompt::Icon::Information);
        return r;
    }
    if (!prompt.AskYesNo(Caption(CapTagToNameQuestion)))
        return r;
    BusyScope busy(batch.busy);
    TagEngine& e = *batch.engine;
    ForEachOpenedFile(
        batch,
        [&](int row, const QString& path, int) {
            QString artist, title, track;
            if (!ReadSetNameFields(e, set, &artist, &title, &track))
                return false;
            artist = NamePart(artist);
            title = NamePart(title);
            if (artist.isEmpty() || title.isEmpty())
                return false;
            QString base, ext;
            SplitExt(list.CellText(row, TagCol::FileName), &base, &ext);
            QString name = artist + QStringLiteral(" - ") + title + QLatin1Char('.') + ext;
            if (withTrack && !track.trimmed().isEmpty()) {
                const long n = long(DataGrid::NumericPrefix(track));
                name = QStringLiteral("%1_").arg(n, digits, 10, QLatin1Char('0')) + name;
            }
            const QString folder = list.CellText(row, TagCol::Path);
            QString finalName = name;
            if (name != list.CellText(row, TagCol::FileName)) {
                QString finalPath;
                if (mover(path, folder + QLatin1Char('/') + name, &finalPath) != 0)
                    return false;
                if (!finalPath.isEmpty())
                    finalName = finalPath.mid(finalPath.lastIndexOf(QLatin1Char('/')) + 1);
                list.SetCellText(row, TagCol::FileName, finalName);
            }
            if (const int in = InputRowOf(batch, row)) {
                batch.lbxInput->SetCellText(in, InCol::FileName, finalName);
                batch.lbxInput->SetCellText(in, InCol::Artist, artist);
                batch.lbxInput->SetCellText(in, InCol::Title, title);
            }
            return true;
        },
        r);
    FinishBatchReport(batch, r, CapFilesUpdated);
    return r;
}
