// Writing tags from the tag list: batch update, delete, comments, transfers and the
// file name commands, on copies of real audio files read back through the engine.

#include "TagUiFixture.h"

#include "core/CaptionRows.h"
#include "list/Marks.h"
#include "tag/modTagUpdate.h"

#include <QFile>
#include <QtTest>
#include <unistd.h>

namespace {
int CountKind(const ScriptedPrompt& p, Prompt::Icon icon) {
    int n = 0;
    for (const auto& s : p.shown)
        n += s.icon == icon;
    return n;
}
} // namespace

class TestTagUpdate : public QObject {
    Q_OBJECT

private slots:
    void disabledBoxLeavesEnabledEmptyClears() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV2Artist("Old");
        f.engine.SetV2Title("Title");
        f.engine.SetV2Album("Album");
        QVERIFY(f.engine.SaveV2(p));
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBoxes b;
        b.v2[2] = {true, "New"};
        b.v2[3] = {false, "ignored"};
        b.v2[4] = {true, ""};
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        const BatchResult r = UpdateTags(batch, UpdateSet::V2, b);
        QVERIFY(r.ran);
        QCOMPARE(r.done, 1);
        QCOMPARE(r.failed, 0);
        QVERIFY(f.prompt.shown.empty());
        QVERIFY(!f.busy);
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("New"));
        QCOMPARE(f.engine.V2Title(), QStringLiteral("Title"));
        QCOMPARE(f.engine.V2Album(), QString());
        // the data list row follows
        QCOMPARE(f.input.CellText(1, InCol::TagArtist), QStringLiteral("New"));
        QCOMPARE(f.input.CellText(1, InCol::TagTitle), QStringLiteral("Title"));
    }

    void failedRowIsMarkedAndTheOthersWritten() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        const QString bad = f.AddFile("mp3", "B.mp3");
        f.AddFile("mp3", "C.mp3");
        f.LoadAll("MP3");
        // A read-only file; the superuser writes those anyway, so there the file goes.
        QFile::setPermissions(bad, QFile::ReadOwner);
        if (geteuid() == 0)
            QFile::remove(bad);
        f.tag.SelectAll();
        TagBoxes b;
        b.v2[6] = {true, "Cond"};
        TagBatch batch = f.Batch();
        f.prompt.answers = {true};
        const BatchResult r = UpdateTags(batch, UpdateSet::V2, b);
        QCOMPARE(r.done, 2);
        QCOMPARE(r.failed, 1);
        // question, success count, failure count (critical)
        QCOMPARE(f.prompt.shown.size(), size_t(3));
        QCOMPARE(f.prompt.shown[0].text, Caption(CapUpdateTagsQuestion));
        QCOMPARE(f.prompt.shown[1].text, Caption(CapFilesUpdated) + "2");
        QCOMPARE(f.prompt.shown[2].text, Caption(CapFilesFailed) + "1");
        QCOMPARE(f.prompt.shown[2].icon, Prompt::Icon::Critical);
        // failed rows come first
        QCOMPARE(f.tag.CellText(1, TagCol::FTag), Mark::Failed);
        QCOMPARE(f.tag.CellText(1, TagCol::FileName), QStringLiteral("B.mp3"));
        QCOMPARE(f.tag.CurRow(), 1);
        for (int row = 2; row <= 3; ++row) {
            QVERIFY(f.engine.OpenFile(f.PathOf(row)));
            QCOMPARE(f.engine.V2Conductor(), QStringLiteral("Cond"));
        }
    }

    void noMsgSilencesAllButTheFailureReport() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        const QString bad = f.AddFile("mp3", "B.mp3");
        f.LoadAll("MP3");
        QFile::remove(bad);
        f.tag.SelectAll();
        TagBoxes b;
        b.v2[0] = {true, "1999"};
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        const BatchResult r = UpdateTags(batch, UpdateSet::V2, b);
        QCOMPARE(r.failed, 1);
        QCOMPARE(f.prompt.shown.size(), size_t(1));
        QCOMPARE(f.prompt.shown[0].text, Caption(CapFilesFailed) + "1");
        QCOMPARE(f.prompt.shown[0].icon, Prompt::Icon::Critical);
    }

    void guardsAndQuestions() {
        TagUiFixture f;
        TagBatch batch = f.Batch();
        TagBoxes b;
        QVERIFY(!UpdateTags(batch, UpdateSet::V2, b).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapListEmpty));
        f.AddFile("mp3", "A.mp3");
        f.AddFile("mp3", "B.mp3");
        f.LoadAll("MP3");
        QVERIFY(!UpdateTags(batch, UpdateSet::None, b).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapNoTagChosenToUpdate));
        // with a mark filter
        batch.markFilter = "m";
        f.prompt.answers = {false};
        QVERIFY(!UpdateTags(batch, UpdateSet::V2, b).ran);
        QCOMPARE(f.prompt.LastText(),
                 Caption(CapUpdateTagsMarkedBefore) + "m" + Caption(CapUpdateTagsMarkedAfter));
        // one value for many titles: warned, and No writes nothing
        batch.markFilter.clear();
        f.tag.SelectAll();
        b.v2[3] = {true, "Same"};
        f.prompt.answers = {true, false};
        QVERIFY(!UpdateTags(batch, UpdateSet::V2, b).ran);
        QCOMPARE(f.prompt.LastText(),
                 Caption(CapSameTrackTitleWarning) + "\n" + Caption(CapContinueQuestion));
        QVERIFY(f.engine.OpenFile(f.PathOf(1)));
        QVERIFY(!f.engine.HasV2());
        // the mark filter lets only the marked row through
        f.tag.SetCellText(2, TagCol::FTag, "m");
        batch.markFilter = "m";
        f.prompt.answers = {true, true};
        const BatchResult r = UpdateTags(batch, UpdateSet::V2, b);
        QCOMPARE(r.done, 1);
        QVERIFY(f.engine.OpenFile(f.PathOf(2)));
        QCOMPARE(f.engine.V2Title(), QStringLiteral("Same"));
        QVERIFY(f.engine.OpenFile(f.PathOf(1)));
        QVERIFY(!f.engine.HasV2());
    }

    void allSetsWrite() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.v1[3] = {true, "V1Art"};
        b.v1GenreEnabled = true;
        b.v1GenreData = 9;
        QCOMPARE(UpdateTags(batch, UpdateSet::V1, b).done, 1);
        b.ape[2] = {true, "ApeArt"};
        b.apeGenre = {true, "ApeG"};
        QCOMPARE(UpdateTags(batch, UpdateSet::Ape, b).done, 1);
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.V1Artist(), QStringLiteral("V1Art"));
        QCOMPARE(f.engine.V1GenreCode(), 9);
        QCOMPARE(f.engine.ApeArtist(), QStringLiteral("ApeArt"));
        QCOMPARE(f.engine.ApeGenre(), QStringLiteral("ApeG"));
        QVERIFY(!f.engine.HasV2());
    }

    void lyricsGetsAnId3v1First() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        f.LoadAll("MP3");
        f.tag.SelectAll();
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(!f.engine.HasV1());
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.lyrics[0] = {true, "LyArt"};
        b.lyrics[6] = {true, "la la"};
        QCOMPARE(UpdateTags(batch, UpdateSet::Lyrics, b).done, 1);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(f.engine.HasV1());
        QVERIFY(f.engine.HasLyrics());
        QCOMPARE(f.engine.LyricsArtist(), QStringLiteral("LyArt"));
        QCOMPARE(f.engine.LyricsLyric(), QStringLiteral("la la"));
    }

    void failedLyricsShowsTheEngineText() {
        TagUiFixture f;
        f.AddFile("flac", "A.flac");
        f.LoadAll("FLAC");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.lyrics[0] = {true, "x"};
        const BatchResult r = UpdateTags(batch, UpdateSet::Lyrics, b);
        QCOMPARE(r.failed, 1);
        QCOMPARE(f.prompt.shown.size(), size_t(2));
        QCOMPARE(f.prompt.shown[0].kind, QStringLiteral("untitled")); // the box has no title
        QCOMPARE(f.prompt.shown[0].icon, Prompt::Icon::None);
        QVERIFY(!f.prompt.shown[0].text.isEmpty());
        QCOMPARE(f.prompt.shown[1].icon, Prompt::Icon::Critical);
    }

    void typicalSetsByType() {
        TagUiFixture f;
        const QString fl = f.AddFile("flac", "A.flac");
        f.LoadAll("FLAC");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.typicalGenre = {true, "Blues"};
        b.typical[2] = {true, "FArt"};
        b.typical[12] = {true, "Loc"};
        b.typical[13] = {true, "not for flac"};
        QCOMPARE(UpdateTags(batch, UpdateSet::Typical, b).done, 1);
        QVERIFY(f.engine.OpenFile(fl));
        QCOMPARE(f.engine.FlacGenre(), QStringLiteral("Blues"));
        QCOMPARE(f.engine.FlacArtist(), QStringLiteral("FArt"));
        QCOMPARE(f.engine.FlacLocation(), QStringLiteral("Loc"));
        QCOMPARE(f.input.CellText(1, InCol::TagTypArtist), QStringLiteral("FArt"));
    }

    void wmaTypicalWithRatingAndMood() {
        TagUiFixture f;
        const QString w = f.AddFile("wma", "A.wma");
        QCOMPARE(f.input.CellText(1, InCol::Type), QStringLiteral("WMA"));
        f.LoadAll("WMA");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.typicalGenre = {true, "Soul"};
        b.typical[0] = {true, "2001"};
        b.typical[13] = {true, "****"};
        b.typical[14] = {true, "sad"};
        QCOMPARE(UpdateTags(batch, UpdateSet::Typical, b).done, 1);
        QVERIFY(f.engine.OpenFile(w));
        QCOMPARE(f.engine.WmaGenre(), QStringLiteral("Soul"));
        QCOMPARE(f.engine.WmaYear(), QStringLiteral("2001"));
        QCOMPARE(f.engine.WmaRating(), QStringLiteral("****"));
        QCOMPARE(f.engine.WmaMood(), QStringLiteral("sad"));
        // the data list crosses year and genre in its first two typical columns
        QCOMPARE(f.input.CellText(1, InCol::TagTypGenre), QStringLiteral("2001"));
        QCOMPARE(f.input.CellText(1, InCol::TagTypYear), QStringLiteral("Soul"));
        QCOMPARE(f.input.CellText(1, InCol::Rating), QStringLiteral("****"));
    }

    void abortFinishesTheFileInProgress() {
        TagUiFixture f;
        for (int i = 0; i < 6; ++i)
            f.AddFile("mp3", QStringLiteral("%1.mp3").arg(i));
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        int calls = 0;
        batch.progress = [&](int done, int total) {
            ++calls;
            QCOMPARE(total, 6);
            if (done == 3)
                State().AbortRequested = true; // as the abort button does between two files
        };
        TagBoxes b;
        b.v2[4] = {true, "Stopped"};
        const BatchResult r = UpdateTags(batch, UpdateSet::V2, b);
        QCOMPARE(r.done, 3);
        QCOMPARE(calls, 3);
        for (int row = 1; row <= 6; ++row) {
            QVERIFY(f.engine.OpenFile(f.PathOf(row)));
            QCOMPARE(f.engine.V2Album(), row <= 3 ? QStringLiteral("Stopped") : QString());
        }
        State().AbortRequested = false;
    }

    void otherTypes() {
        // AAC and MONKEY carry V2 only; a V1 update skips them and counts them done
        for (const QString& kind : {QStringLiteral("aac"), QStringLiteral("ape")}) {
            TagUiFixture f;
            const QString p = f.AddFile(kind, "A." + kind);
            const QString type = f.input.CellText(1, InCol::Type);
            QVERIFY2(type == "AAC" || type == "MONKEY", qPrintable(type));
            QCOMPARE(f.LoadAll(type), LoadTagResult::Loaded);
            f.tag.SelectAll();
            TagBatch batch = f.Batch();
            batch.noMsg = true;
            TagBoxes b;
            b.v2[2] = {true, "Art"};
            b.v1[3] = {true, "V1"};
            QCOMPARE(UpdateTags(batch, UpdateSet::V2, b).done, 1);
            const BatchResult r = UpdateTags(batch, UpdateSet::V1, b);
            QCOMPARE(r.done, 1);
            QCOMPARE(r.failed, 0);
            QVERIFY(f.engine.OpenFile(p));
            QCOMPARE(f.engine.V2Artist(), QStringLiteral("Art"));
            QVERIFY(!f.engine.HasV1());
        }
        // OGG: the typical set is written and stripped
        TagUiFixture g;
        const QString o = g.AddFile("ogg", "A.ogg");
        g.LoadAll("OGG");
        g.tag.SelectAll();
        TagBatch gb = g.Batch();
        gb.noMsg = true;
        TagBoxes t;
        t.typical[3] = {true, "OggTitle"};
        QCOMPARE(UpdateTags(gb, UpdateSet::Typical, t).done, 1);
        QVERIFY(g.engine.OpenFile(o));
        QCOMPARE(g.engine.OggTitle(), QStringLiteral("OggTitle"));
        g.prompt.answers = {true};
        QVERIFY(DeleteTags(gb, UpdateSet::Typical).ran);
        QVERIFY(g.engine.OpenFile(o));
        QCOMPARE(g.engine.OggTitle(), QString());
    }

    void ratingMoodFrames() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        SetTagRatingMood(f.engine, "Rating", "*", "ID3v2"); // no frames: the first one
        QVERIFY(f.engine.SaveV2(p));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.UserFrameCount(), 1);
        // the rating frame stands first: it is followed, not replaced
        SetTagRatingMood(f.engine, "Rating", "**", "ID3v2");
        QVERIFY(f.engine.SaveV2(p));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.UserFrameCount(), 2);
        QCOMPARE(f.engine.UserFrameName(2), QStringLiteral("QLT"));
        QCOMPARE(f.engine.UserFrameText(2), QStringLiteral("QLT**"));
        QCOMPARE(ReadTagRow(f.engine, p).v2[13], QStringLiteral("**"));
        // a mood frame behind them is new; set again it is replaced in place
        SetTagRatingMood(f.engine, "Mood", "calm", "ID3v2");
        QVERIFY(f.engine.SaveV2(p));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.UserFrameCount(), 3);
        SetTagRatingMood(f.engine, "Mood", "wild", "ID3v2");
        QVERIFY(f.engine.SaveV2(p));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.UserFrameCount(), 3);
        QCOMPARE(f.engine.UserFrameText(3), QStringLiteral("MOODwild"));
        QCOMPARE(f.engine.UserFrameName(3), QStringLiteral("MOD"));
        // "wma" writes nothing
        SetTagRatingMood(f.engine, "Mood", "x", "wma");
        QCOMPARE(f.engine.UserFrameCount(), 3);
    }

    void apeDeleteOnFlacDoesNothing() {
        TagUiFixture f;
        const QString p = f.AddFile("flac", "A.flac");
        f.LoadAll("FLAC");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.ape[2] = {true, "ApeOnFlac"};
        QCOMPARE(UpdateTags(batch, UpdateSet::Ape, b).done, 1);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(f.engine.HasApe());
        f.prompt.answers = {true};
        const BatchResult r = DeleteTags(batch, UpdateSet::Ape);
        QVERIFY(r.ran);
        QCOMPARE(r.failed, 0);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(f.engine.HasApe());
        QCOMPARE(f.engine.ApeArtist(), QStringLiteral("ApeOnFlac"));
    }

    void typicalDeleteOnWmaAndFlacStripsNothing() {
        TagUiFixture f;
        const QString fl = f.AddFile("flac", "A.flac");
        QVERIFY(f.engine.OpenFile(fl));
        f.engine.SetFlacArtist("Keep");
        QVERIFY(f.engine.SaveFlac(fl));
        f.LoadAll("FLAC");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        f.prompt.answers = {true};
        QVERIFY(DeleteTags(batch, UpdateSet::Typical).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapTagsDeleted));
        QVERIFY(f.engine.OpenFile(fl));
        QCOMPARE(f.engine.FlacArtist(), QStringLiteral("Keep"));

        TagUiFixture g;
        const QString w = g.AddFile("wma", "A.wma");
        QCOMPARE(g.engine.OpenFile(w), 2);
        g.engine.SetWmaArtist("Keep");
        QVERIFY(g.engine.SaveWma(w));
        g.LoadAll("WMA");
        g.tag.SelectAll();
        TagBatch gb = g.Batch();
        gb.noMsg = true;
        g.prompt.answers = {true};
        QVERIFY(DeleteTags(gb, UpdateSet::Typical).ran);
        QVERIFY(g.engine.OpenFile(w));
        QCOMPARE(g.engine.WmaArtist(), QStringLiteral("Keep"));
    }

    void deleteGuardsAndStrip() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV2Artist("x");
        QVERIFY(f.engine.SaveV2(p));
        f.LoadAll("MP3");
        TagBatch batch = f.Batch();
        f.tag.ClearSelection();
        QVERIFY(!DeleteTags(batch, UpdateSet::V2).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapNoRowSelected));
        f.tag.SelectAll();
        QVERIFY(!DeleteTags(batch, UpdateSet::None).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapNoTagChosenToDelete));
        QCOMPARE(f.prompt.shown.back().icon, Prompt::Icon::Warning);
        f.prompt.answers = {false};
        QVERIFY(!DeleteTags(batch, UpdateSet::V2).ran);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(f.engine.HasV2());
        f.prompt.answers = {true};
        QVERIFY(DeleteTags(batch, UpdateSet::V2).ran);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(!f.engine.HasV2());
        QCOMPARE(f.input.CellText(1, InCol::TagArtist), QString());
    }

    void comments() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(!UpdateComment(f.engine, p, 0, "", "", "text", f.prompt));
        QCOMPARE(f.prompt.LastText(), Caption(CapLanguageCodePrompt));
        QVERIFY(UpdateComment(f.engine, p, 0, "eng", "one", "first", f.prompt));
        QVERIFY(UpdateComment(f.engine, p, 0, "deu", "two", "second", f.prompt));
        QVERIFY(UpdateComment(f.engine, p, 1, "eng", "one", "changed", f.prompt));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.CommentCount(), 2);
        QCOMPARE(f.engine.CommentText(1), QStringLiteral("changed"));
        QVERIFY(DeleteComment(f.engine, p, 1, f.prompt));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.CommentCount(), 1);
        QCOMPARE(f.engine.CommentText(1), QStringLiteral("second"));
        QVERIFY(DeleteAllComments(f.engine, p, f.prompt));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.CommentCount(), 0);
    }

    void boxCopies() {
        std::array<QString, 7> v1{"", "y", "t", "a", "ti", "al", "c"};
        std::array<QString, 15> v2;
        CopyV1ToV2(v1, v2);
        QCOMPARE(v2[0], QStringLiteral("y"));
        QCOMPARE(v2[4], QStringLiteral("al"));
        QCOMPARE(v2[5], QString());
        v2[2] = "other";
        CopyV2ToV1(v2, v1);
        QCOMPARE(v1[3], QStringLiteral("other"));
        QCOMPARE(v1[6], QStringLiteral("c"));
    }

    void tagToTagV1ToV2WithSentinel() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV1Artist("Art1");
        f.engine.SetV1Title("Tit1");
        f.engine.SetV1GenreCode(17);
        QVERIFY(f.engine.SaveV1(p));
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV2Title("KeepMe");
        QVERIFY(f.engine.SaveV2(p));
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        TagBoxes b;
        b.v1GenreEnabled = true;
        b.v1[3].enabled = true; // artist read, title left alone
        QVERIFY(TagToTag(batch, 0, b, false).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapTagsTransferred));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("Art1"));
        QCOMPARE(f.engine.V2Title(), QStringLiteral("KeepMe"));
        QCOMPARE(f.engine.V2Genre(), f.engine.GenreName(17));
        QVERIFY(f.engine.HasV1());
        // with stripping
        QVERIFY(TagToTag(batch, 0, b, true).ran);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(!f.engine.HasV1());
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("Art1"));
        // the source is gone now: the row fails
        batch.noMsg = true;
        const BatchResult r = TagToTag(batch, 0, b, false);
        QCOMPARE(r.failed, 1);
        QCOMPARE(f.tag.CellText(1, TagCol::FTag), Mark::Failed);
    }

    void tagToTagIndexNineWritesNothingButStrips() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetApeArtist("ApeA");
        QVERIFY(f.engine.SaveApe(p));
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        for (auto& box : b.ape)
            box.enabled = true;
        b.apeGenre.enabled = true;
        QCOMPARE(TagToTag(batch, 9, b, false).done, 1);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(!f.engine.HasV2());
        QVERIFY(f.engine.HasApe());
        QCOMPARE(TagToTag(batch, 9, b, true).done, 1);
        QVERIFY(f.engine.OpenFile(p));
        QVERIFY(!f.engine.HasV2());
        QVERIFY(!f.engine.HasApe());
        QVERIFY(f.prompt.shown.empty());
        // nothing chosen
        batch.noMsg = false;
        QVERIFY(!TagToTag(batch, -1, b, false).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapNothingChosen));
    }

    void tagToTagIntoLyricsAndTypical() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV2Artist("VA");
        f.engine.SetComment(1, "eng", "", "Com");
        QVERIFY(f.engine.SaveV2(p));
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.v2[2].enabled = true;
        QCOMPARE(TagToTag(batch, 6, b, false).done, 1); // V2 to Lyrics
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.LyricsArtist(), QStringLiteral("VA"));
        QCOMPARE(f.engine.LyricsInfo(), QStringLiteral("Com"));

        TagUiFixture g;
        const QString fl = g.AddFile("flac", "B.flac");
        QVERIFY(g.engine.OpenFile(fl));
        g.engine.SetFlacArtist("FA");
        g.engine.SetFlacYear("1977");
        QVERIFY(g.engine.SaveFlac(fl));
        g.LoadAll("FLAC");
        g.tag.SelectAll();
        TagBatch gb = g.Batch();
        gb.noMsg = true;
        TagBoxes t;
        t.typical[0].enabled = true;
        t.typical[2].enabled = true;
        QCOMPARE(TagToTag(gb, 17, t, false).done, 1); // typical to V2
        QVERIFY(g.engine.OpenFile(fl));
        QCOMPARE(g.engine.V2Artist(), QStringLiteral("FA"));
        QCOMPARE(g.engine.V2Year(), QStringLiteral("1977"));
    }

    // Into Lyrics: the V1 provision only for MP3 and MPP; a FLAC file gets no V1 tag.
    void tagToTagLyricsProvisionOnlyForMp3() {
        TagUiFixture f;
        const QString fl = f.AddFile("flac", "B.flac");
        QVERIFY(f.engine.OpenFile(fl));
        f.engine.SetV2Artist("VA");
        QVERIFY(f.engine.SaveV2(fl));
        QVERIFY(f.engine.OpenFile(fl));
        QVERIFY(!f.engine.HasV1());
        f.LoadAll("FLAC");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.v2[2].enabled = true;
        TagToTag(batch, 6, b, false); // V2 to Lyrics
        QVERIFY(f.engine.OpenFile(fl));
        QVERIFY(!f.engine.HasV1());
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("VA"));
        // An MP3 gets it, as the update does.
        TagUiFixture m;
        const QString mp = m.AddFile("mp3", "A.mp3");
        QVERIFY(m.engine.OpenFile(mp));
        m.engine.SetV2Artist("VA");
        QVERIFY(m.engine.SaveV2(mp));
        m.LoadAll("MP3");
        m.tag.SelectAll();
        TagBatch mb = m.Batch();
        mb.noMsg = true;
        QCOMPARE(TagToTag(mb, 6, b, false).done, 1);
        QVERIFY(m.engine.OpenFile(mp));
        QVERIFY(m.engine.HasV1());
        QCOMPARE(m.engine.LyricsArtist(), QStringLiteral("VA"));
    }

    // Stripping the source leaves the V1 and APE tags of FLAC and the APE tag of Ogg alone.
    void tagToTagStripSparesFlacAndOgg() {
        for (const char* kind : {"flac", "ogg"}) {
            TagUiFixture f;
            const QString p = f.AddFile(kind, QStringLiteral("A.%1").arg(kind));
            QVERIFY(f.engine.OpenFile(p));
            f.engine.SetApeArtist("ApeA");
            QVERIFY(f.engine.SaveApe(p));
            QVERIFY(f.engine.OpenFile(p));
            f.engine.SetV1Artist("V1A");
            QVERIFY(f.engine.SaveV1(p));
            QVERIFY(f.engine.OpenFile(p));
            QVERIFY(f.engine.HasApe());
            QVERIFY(f.engine.HasV1());
            f.LoadAll(kind == QLatin1String("flac") ? "FLAC" : "OGG");
            f.tag.SelectAll();
            TagBatch batch = f.Batch();
            batch.noMsg = true;
            TagBoxes b;
            b.ape[2].enabled = true;
            b.v1[3].enabled = true;
            TagToTag(batch, 9, b, true); // APE to V2, with the strip of APE
            QVERIFY(f.engine.OpenFile(p));
            QVERIFY2(f.engine.HasApe(), kind);
            TagToTag(batch, 1, b, true); // V1 to APE, with the strip of V1
            QVERIFY(f.engine.OpenFile(p));
            QCOMPARE(f.engine.HasV1(), kind == QLatin1String("flac")); // only Ogg loses it
        }
    }

    // The comment of a V2 source is "No" while the comment area is off.
    void tagToTagV2CommentHonoursTheSentinel() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetComment(1, "eng", "", "V2 comment");
        f.engine.SetV2Artist("VA");
        QVERIFY(f.engine.SaveV2(p));
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetApeComment("APE comment");
        QVERIFY(f.engine.SaveApe(p));
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        batch.noMsg = true;
        TagBoxes b;
        b.v2[2].enabled = true;
        b.v2CommentEnabled = false;
        QCOMPARE(TagToTag(batch, 5, b, false).done, 1); // V2 to APE
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.ApeArtist(), QStringLiteral("VA"));
        QCOMPARE(f.engine.ApeComment(), QStringLiteral("APE comment"));
        b.v2CommentEnabled = true;
        QCOMPARE(TagToTag(batch, 5, b, false).done, 1);
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.ApeComment(), QStringLiteral("V2 comment"));
    }

    // Row 42 in both of its forms.
    void updateOptionInBothForms() {
        QCOMPARE(UpdateOptionFromSetting("5"), UpdateSet::Typical);
        QCOMPARE(UpdateOptionFromSetting("00001"), UpdateSet::Typical);
        QCOMPARE(UpdateOptionFromSetting("2"), UpdateSet::V2);
        QCOMPARE(UpdateOptionFromSetting("01000"), UpdateSet::V2);
        QCOMPARE(UpdateOptionFromSetting(""), UpdateSet::None);
        QVERIFY(SetTabsForType("FLAC", "5").optionTypicalSet);
        QVERIFY(SetTabsForType("FLAC", "00001").optionTypicalSet);
        QVERIFY(!SetTabsForType("FLAC", "2").optionTypicalSet);
    }

    void splitNames() {
        auto check = [](const QString& base, const QString& n, const QString& a, const QString& t) {
            const NameParts p = SplitNameForTag(base);
            QCOMPARE(p.number, n);
            QCOMPARE(p.artist, a);
            QCOMPARE(p.title, t);
        };
        check("07_Artist - Title", "07", "Artist", "Title");
        check("#12 Artist - Title", "12", "Artist", "Title");
        check("Artist - Title", "", "Artist", "Title");
        check("Artist-Title - More", "", "Artist", "Title - More");
        check("NoHyphen", "", "NoHyphen", "");
        check("Artist -", "", "Artist", "");
        check("3 - Art - Tit", "3", "Art", "Tit");
    }

    void filenameToTag() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "07_The Art - The Title.mp3");
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        f.prompt.answers = {true};
        NameToTagShown shown;
        const BatchResult r = FilenameToTag(batch, UpdateSet::V2, true, &shown);
        QCOMPARE(r.done, 1);
        QCOMPARE(f.prompt.shown[0].text, Caption(CapNameToTagQuestion));
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("The Art"));
        QCOMPARE(f.engine.V2Title(), QStringLiteral("The Title"));
        QCOMPARE(f.engine.V2Track(), QStringLiteral("7"));
        QVERIFY(shown.any);
        QCOMPARE(shown.track, QStringLiteral("7"));
        QCOMPARE(f.input.CellText(1, InCol::TagTitle), QStringLiteral("The Title"));
        // without the track, the V1 set
        f.prompt.answers = {true};
        QCOMPARE(FilenameToTag(batch, UpdateSet::V1, false).done, 1);
        QVERIFY(f.engine.OpenFile(p));
        QCOMPARE(f.engine.V1Artist(), QStringLiteral("The Art"));
        QCOMPARE(f.engine.V1Track(), QString());
    }

    void tagToFilenameRoundTripWithCollisions() {
        TagUiFixture f;
        const QString a = f.AddFile("mp3", "a.mp3");
        const QString b = f.AddFile("mp3", "b.mp3");
        const QString c = f.AddFile("mp3", "c.mp3");
        for (const QString& p : {a, b}) {
            QVERIFY(f.engine.OpenFile(p));
            f.engine.SetV2Artist("Art");
            f.engine.SetV2Title("Tit");
            f.engine.SetV2Track("7/12");
            QVERIFY(f.engine.SaveV2(p));
        }
        // c has no title: marked
        QVERIFY(f.engine.OpenFile(c));
        f.engine.SetV2Artist("Art");
        QVERIFY(f.engine.SaveV2(c));
        f.LoadAll("MP3");
        f.tag.SelectAll();
        TagBatch batch = f.Batch();
        QVERIFY(!TagToFilename(batch, UpdateSet::V2, "Art", "", false, 2).ran);
        QCOMPARE(f.prompt.LastText(), Caption(CapTagArtistTitleEmpty));
        f.prompt.answers = {true};
        BatchResult r = TagToFilename(batch, UpdateSet::V2, "Art", "Tit", false, 2);
        QCOMPARE(f.prompt.shown[1].text, Caption(CapTagToNameQuestion));
        QCOMPARE(r.done, 2);
        QCOMPARE(r.failed, 1);
        QStringList names;
        for (int row = 1; row <= 3; ++row)
            names << f.tag.CellText(row, TagCol::FileName);
        QVERIFY(names.contains("Art - Tit.mp3"));
        QVERIFY(names.contains("Art - Tit (2).mp3"));
        QVERIFY(names.contains("c.mp3"));
        QVERIFY(QFile::exists(f.work.filePath("Art - Tit.mp3")));
        QVERIFY(QFile::exists(f.work.filePath("Art - Tit (2).mp3")));
        QVERIFY(!QFile::exists(a));
        // the data list rows follow
        for (int row = 1; row <= 3; ++row) {
            if (f.input.CellText(row, InCol::FileName) == "c.mp3")
                continue;
            QVERIFY(f.input.CellText(row, InCol::FileName).startsWith("Art - Tit"));
            QCOMPARE(f.input.CellText(row, InCol::Artist), QStringLiteral("Art"));
            QCOMPARE(f.input.CellText(row, InCol::Title), QStringLiteral("Tit"));
        }
        // with the track, three digits
        for (int row = 1; row <= 3; ++row)
            f.tag.SetCellText(row, TagCol::FTag, QString());
        f.tag.SelectAll();
        batch.noMsg = true;
        f.prompt.shown.clear();
        f.prompt.answers = {true};
        r = TagToFilename(batch, UpdateSet::V2, "Art", "Tit", true, 3);
        QCOMPARE(r.done, 2);
        QVERIFY(QFile::exists(f.work.filePath("007_Art - Tit.mp3")));
        QVERIFY(QFile::exists(f.work.filePath("007_Art - Tit (2).mp3")));
        QCOMPARE(CountKind(f.prompt, Prompt::Icon::Critical), 1);
        // and back: the name gives the tag again
        for (int row = 1; row <= 3; ++row)
            f.tag.SetCellText(row, TagCol::FTag, QString());
        f.prompt.answers = {true};
        QCOMPARE(FilenameToTag(batch, UpdateSet::V2, true).done, 3);
        QVERIFY(f.engine.OpenFile(f.work.filePath("007_Art - Tit.mp3")));
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("Art"));
        QCOMPARE(f.engine.V2Title(), QStringLiteral("Tit"));
        QCOMPARE(f.engine.V2Track(), QStringLiteral("7"));
    }
};

QTEST_GUILESS_MAIN(TestTagUpdate)
#include "test_tagupdate.moc"
