#include "tag/modTagUpdate.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modList.h"
#include "tag/TagEngine.h"
#include "tag/modTagBatch.h"

namespace {

bool TypeIn(int t, std::initializer_list<int> types) {
    for (int x : types)
        if (x == t)
            return true;
    return false;
}

template <size_t N>
void StageBoxes(TagEngine& e, const std::vector<TagField>& fields, const std::array<TagBox, N>& boxes,
                size_t first, size_t count) {
    for (size_t i = 0; i < count && i < fields.size(); ++i) {
        const TagBox& b = boxes[first + i];
        if (b.enabled)
            e.SetField(fields[i], b.text);
    }
}

} // namespace

// ---- update -----------------------------------------------------------------------------

void SetTagRatingMood(TagEngine& engine, const QString& name, const QString& value, const QString& tagKind) {
    if (tagKind.compare(QLatin1String("ID3v2"), Qt::CaseInsensitive) != 0)
        return; // a WMA file takes its rating and mood through the typical boxes
    const bool rating = name.compare(QLatin1String("Rating"), Qt::CaseInsensitive) == 0;
    const QString prefix = rating ? QStringLiteral("QLT") : QStringLiteral("MOOD");
    const int count = engine.UserFrameCount();
    int index = 0;
    if (count > 0) {
        index = 1;
        QString lastText;
        for (int i = 1; i <= count; ++i) {
            lastText = engine.UserFrameText(i);
            if (lastText.startsWith(prefix)) {
                index = i;
                break;
            }
        }
        // A frame found at index 1 is followed by a new one rather than replaced, just
        // as when no frame was found at all.
        if (index == 1 && !lastText.isEmpty())
            index = count + 1;
    }
    if (rating)
        engine.SetUserFrame(index, QStringLiteral("QLT"), QStringLiteral("QLT") + value);
    else
        engine.SetUserFrame(index, QStringLiteral("MOD"), QStringLiteral("MOOD") + value);
}

void EnsureV1ForLyrics(TagEngine& engine, const QString& path) {
    if (engine.HasV1())
        return;
    engine.SetV1Album(QStringLiteral("  "));
    engine.SaveV1(path); // the result does not matter here: SaveLyrics tells
    engine.OpenFile(path);
}

bool UpdateFile(TagEngine& e, const QString& path, UpdateSet set, const TagBoxes& b, QString* lyricsError) {
    const int t = e.OpenFile(path);
    if (t == 0)
        return true;
    bool failed = false;
    switch (set) {
    case UpdateSet::V1:
        if (TypeIn(t, {1, 4, 6, 7})) {
            StageBoxes(e, V1BoxFields(), b.v1, 1, 6);
            if (b.v1GenreEnabled && b.v1GenreData >= 0)
                e.SetV1GenreCode(b.v1GenreData);
            failed = e.SaveV1(path) == 0;
        }
        break;
    case UpdateSet::V2:
        if (TypeIn(t, {1, 3, 4, 5, 6, 7, 8})) {
            if (b.v2Genre.enabled)
                e.SetV2Genre(b.v2Genre.text);
            StageBoxes(e, V2BoxFields(), b.v2, 0, 13);
            if (b.v2[13].enabled)
                SetTagRatingMood(e, QStringLiteral("Rating"), b.v2[13].text, QStringLiteral("ID3v2"));
            if (b.v2[14].enabled)
                SetTagRatingMood(e, QStringLiteral("Mood"), b.v2[14].text, QStringLiteral("ID3v2"));
            failed = e.SaveV2(path) == 0;
        }
        break;
    case UpdateSet::Ape:
        if (TypeIn(t, {1, 4, 6, 7})) {
            if (b.apeGenre.enabled)
                e.SetApeGenre(b.apeGenre.text);
            StageBoxes(e, ApeBoxFields(), b.ape, 0, 7);
            failed = e.SaveApe(path) == 0;
        }
        break;
    case UpdateSet::Lyrics:
        if (TypeIn(t, {1, 7})) {
            EnsureV1ForLyrics(e, path);
            if (b.lyricsGenre.enabled)
                e.SetLyricsGenre(b.lyricsGenre.text);
            StageBoxes(e, LyricsBoxFields(), b.lyrics, 0, 7);
        }
        if (e.SaveLyrics(path) == 0) {
            failed = true;
            if (lyricsError)
                *lyricsError = e.LastError();
        }
        break;
    case UpdateSet::Typical: {
        TagField genre;
        if (TypicalGenreField(t, &genre)) {
            if (b.typicalGenre.enabled)
                e.SetField(genre, b.typicalGenre.text);
            StageBoxes(e, TypicalBoxFields(t), b.typical, 0, t == 2 ? 15 : 13);
            failed = e.Save(TypicalSetOfType(t), path) == 0;
        }
        break;
    }
    case UpdateSet::None:
        break;
    }
    return failed;
}

static bool TrackOrTitleEnabled(UpdateSet set, const TagBoxes& b) {
    switch (set) {
    case UpdateSet::V1:
        return b.v1[2].enabled || b.v1[4].enabled;
    case UpdateSet::V2:
        return b.v2[1].enabled || b.v2[3].enabled;
    case UpdateSet::Ape:
        return b.ape[1].enabled || b.ape[3].enabled;
    case UpdateSet::Lyrics:
        return b.lyrics[2].enabled;
    case UpdateSet::Typical:
        return b.typical[1].enabled || b.typical[3].enabled;
    case UpdateSet::None:
        break;
    }
    return false;
}

BatchResult UpdateTags(TagBatch& batch, UpdateSet set, const TagBoxes& boxes) {
    BatchResult r;
    DataGrid& list = *batch.lbxTag;
    Prompt& prompt = *batch.prompt;
    if (!ListNotEmpty(list, prompt))
        return r;
    if (!TagSetChosen(set, prompt, CapNoTagChosenToUpdate, Prompt::Icon::Information))
        return r;
    BusyScope busy(batch.busy);
    if (!batch.noMsg) {
        const QString q = batch.markFilter.isEmpty() ? Caption(CapUpdateTagsQuestion)
                                                     : Caption(CapUpdateTagsMarkedBefore) + batch.markFilter +
                                                           Caption(CapUpdateTagsMarkedAfter);
        if (!prompt.AskYesNo(q))
            return r;
    }
    if (list.SelCount() > 1 && TrackOrTitleEnabled(set, boxes)) {
        if (!prompt.AskYesNo(Caption(CapSameTrackTitleWarning) + QLatin1Char('\n') +
                                 Caption(CapContinueQuestion),
                             false, Prompt::Icon::Warning))
            return r;
    }
    r.ran = true;
    ForEachBatchRow(
        batch,
        [&](int row, const QString& path) {
            QString lyricsError;
            const bool failed = UpdateFile(*batch.engine, path, set, boxes, &lyricsError);
            if (!lyricsError.isNull())
                // the engine's own text, in a box without a title
                prompt.TellUntitled(lyricsError.isEmpty() ? Caption(CapFileSaveFailed) : lyricsError,
                                    Prompt::Icon::None);
            if (!failed)
                CarryBackToInput(batch, row, path);
            return !failed;
        },
        r);
    FinishBatchReport(batch, r, CapFilesUpdated);
    return r;
}

// ---- delete ------------------------------------------------------------------------------

BatchResult DeleteTags(TagBatch& batch, UpdateSet set) {
    BatchResult r;
    Prompt& prompt = *batch.prompt;
    if (!SelectedRowsAndSetChosen(batch, set, CapNoTagChosenToDelete, Prompt::Icon::Warning))
        return r;
    if (!prompt.AskYesNo(Caption(CapDeleteTagsQuestion), false))
        return r;
    BusyScope busy(batch.busy);
    TagEngine& e = *batch.engine;
    ForEachOpenedFile(
        batch,
        [&](int row, const QString& path, int t) {
            bool ok = true;
            bool changed = false;
            auto strip = [&](bool has, int (TagEngine::*remove)(const QString&)) {
                if (!has)
                    return;
                changed = true;
                if ((e.*remove)(path) == 0)
                    ok = false;
            };
            switch (set) {
            case UpdateSet::V1:
                if (TypeIn(t, {1, 6, 7}))
                    strip(e.HasV1(), &TagEngine::RemoveV1);
                break;
            case UpdateSet::V2:
                if (TypeIn(t, {1, 3, 4, 5, 6, 7, 8}))
                    strip(e.HasV2(), &TagEngine::RemoveV2);
                break;
            case UpdateSet::Ape:
                if (TypeIn(t, {1, 7}))
                    strip(e.HasApe(), &TagEngine::RemoveApe);
                break;
            case UpdateSet::Lyrics:
                if (TypeIn(t, {1, 7}))
                    strip(e.HasLyrics(), &TagEngine::RemoveLyrics);
                break;
            case UpdateSet::Typical:
                if (t == 6)
                    strip(true, &TagEngine::RemoveOgg);
                break;
            case UpdateSet::None:
                break;
            }
            if (changed)
                CarryBackToInput(batch, row, path);
            return ok;
        },
        r);
    FinishBatchNote(batch, r, CapTagsDeleted);
    return r;
}

// ---- comments -----------------------------------------------------------------------------

static bool SaveV2OrTell(TagEngine& e, const QString& path, Prompt& prompt) {
    if (e.SaveV2(path) != 0)
        return true;
    prompt.Tell(e.LastError(), Prompt::Icon::Critical);
    return false;
}

bool UpdateComment(TagEngine& e, const QString& path, int item, const QString& language,
                   const QString& description, const QString& text, Prompt& prompt) {
    if (language.isEmpty()) {
        prompt.Tell(Caption(CapLanguageCodePrompt), Prompt::Icon::Information);
        return false;
    }
    if (e.OpenFile(path) == 0) {
        prompt.Tell(e.LastError(), Prompt::Icon::Critical);
        return false;
    }
    const int index = item <= 0 ? e.CommentCount() + 1 : item;
    e.SetComment(index, language, description, text);
    return SaveV2OrTell(e, path, prompt);
}

bool DeleteComment(TagEngine& e, const QString& path, int item, Prompt& prompt) {
    if (e.OpenFile(path) == 0) {
        prompt.Tell(e.LastError(), Prompt::Icon::Critical);
        return false;
    }
    if (item < 1 || item > e.CommentCount())
        return false;
    e.SetComment(item, QString(), QString(), QString());
    return SaveV2OrTell(e, path, prompt);
}

bool DeleteAllComments(TagEngine& e, const QString& path, Prompt& prompt) {
    if (e.OpenFile(path) == 0) {
        prompt.Tell(e.LastError(), Prompt::Icon::Critical);
        return false;
    }
    e.ClearComments();
    return SaveV2OrTell(e, path, prompt);
}

// ---- box copies ---------------------------------------------------------------------------

void CopyV1ToV2(const std::array<QString, 7>& v1, std::array<QString, 15>& v2) {
    for (int i = 0; i < 5; ++i)
        v2[size_t(i)] = v1[size_t(i + 1)];
}

void CopyV2ToV1(const std::array<QString, 15>& v2, std::array<QString, 7>& v1) {
    for (int i = 0; i < 5; ++i)
        v1[size_t(i + 1)] = v2[size_t(i)];
}
