// The undo of the tag batches: the journal of the old tags, written before each file of a
// batch, and its undo through the engine, on copies of real audio files.

#include "TagUiFixture.h"

#include "core/CaptionRows.h"
#include "list/Marks.h"
#include "tag/modTagJournal.h"
#include "tag/modTagUpdate.h"

#include <QFile>
#include <QRandomGenerator>
#include <QtTest>

class TestTagJournal : public QObject {
    Q_OBJECT

    static QString JournalOf(TagUiFixture& f) { return f.work.filePath(QStringLiteral("tag.journal")); }

    static TagBatch JournalBatch(TagUiFixture& f) {
        TagBatch b = f.Batch();
        b.noMsg = true;
        b.journalPath = JournalOf(f);
        return b;
    }

    // A file with a rich ID3v2 tag: texts, a comment, a user text frame and a picture.
    static QString RichMp3(TagUiFixture& f, const QString& name) {
        const QString p = f.AddFile(QStringLiteral("mp3"), name);
        if (f.engine.OpenFile(p) == 0)
            return QString();
        f.engine.SetV2Artist(QStringLiteral("Old Artist"));
        f.engine.SetV2Title(QStringLiteral("Old Title"));
        f.engine.SetV2Album(QStringLiteral("Album\twith tab"));
        f.engine.SetComment(1, QStringLiteral("eng"), QStringLiteral("note"), QStringLiteral("A comment"));
        f.engine.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT****"));
        f.engine.AddPicture(FixtureDir() + QStringLiteral("/cover.jpg"), QStringLiteral("front"), 1);
        f.engine.SetV1Artist(QStringLiteral("V1 Artist"));
        if (f.engine.SaveV2(p) == 0 || f.engine.SaveV1(p) == 0)
            return QString();
        return p;
    }

    static void CheckRich(TagEngine& e, const QString& p) {
        QVERIFY(e.OpenFile(p) != 0);
        QVERIFY(e.HasV2());
        QCOMPARE(e.V2Artist(), QStringLiteral("Old Artist"));
        QCOMPARE(e.V2Title(), QStringLiteral("Old Title"));
        QCOMPARE(e.V2Album(), QStringLiteral("Album\twith tab"));
        QCOMPARE(e.CommentCount(), 1);
        QCOMPARE(e.CommentText(1), QStringLiteral("A comment"));
        QCOMPARE(e.UserFrameCount(), 1);
        QCOMPARE(e.UserFrameText(1), QStringLiteral("QLT****"));
        QCOMPARE(e.PictureCount(), 1);
        QCOMPARE(e.PictureDescription(1), QStringLiteral("front"));
        QCOMPARE(e.V1Artist(), QStringLiteral("V1 Artist"));
    }

private slots:
    void updateThenUndoPutsTheOldTagsBack() {
        TagUiFixture f;
        const QString a = RichMp3(f, QStringLiteral("A.mp3"));
        const QString b = RichMp3(f, QStringLiteral("B.mp3"));
        QVERIFY(!a.isEmpty() && !b.isEmpty());
        f.LoadAll(QStringLiteral("MP3"));
        f.tag.SelectAll();
        TagBoxes boxes;
        boxes.v2[2] = {true, QStringLiteral("New Artist")};
        TagBatch batch = JournalBatch(f);
        const BatchResult r = UpdateTags(batch, UpdateSet::V2, boxes);
        QCOMPARE(r.done, 2);
        QVERIFY(QFile::exists(JournalOf(f)));
        QVERIFY(f.engine.OpenFile(a) != 0);
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("New Artist"));
        // the lists are re-sorted: rows are found by folder and name
        f.input.DoSort(InCol::FileName, 2);
        const UndoOutcome u = UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, {});
        QVERIFY(u.hadJournal);
        QCOMPARE(u.done, 2);
        QCOMPARE(u.failed, 0);
        CheckRich(f.engine, a);
        CheckRich(f.engine, b);
        for (int row = 1; row <= 2; ++row)
            QCOMPARE(f.input.CellText(row, InCol::TagArtist), QStringLiteral("Old Artist"));
        QVERIFY(!QFile::exists(JournalOf(f)));
        QVERIFY(!UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, {}).hadJournal);
    }

    void deleteOfATagIsUndone() {
        TagUiFixture f;
        const QString a = RichMp3(f, QStringLiteral("A.mp3"));
        QVERIFY(!a.isEmpty());
        f.LoadAll(QStringLiteral("MP3"));
        f.tag.SelectAll();
        TagBatch batch = JournalBatch(f);
        f.prompt.answers = {true};
        const BatchResult r = DeleteTags(batch, UpdateSet::V1);
        QCOMPARE(r.done, 1);
        QVERIFY(f.engine.OpenFile(a) != 0);
        QVERIFY(!f.engine.HasV1());
        QCOMPARE(UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, {}).done, 1);
        CheckRich(f.engine, a);
        QVERIFY(f.engine.HasV1());
    }

    void aSetTheFileDidNotHoldIsStrippedAgain() {
        TagUiFixture f;
        const QString p = f.AddFile(QStringLiteral("mp3"), QStringLiteral("A.mp3"));
        QVERIFY(f.engine.OpenFile(p) != 0);
        const bool hadApe = f.engine.HasApe();
        f.LoadAll(QStringLiteral("MP3"));
        f.tag.SelectAll();
        TagBoxes boxes;
        boxes.ape[3] = {true, QStringLiteral("Ape Artist")};
        TagBatch batch = JournalBatch(f);
        QCOMPARE(UpdateTags(batch, UpdateSet::Ape, boxes).done, 1);
        QVERIFY(f.engine.OpenFile(p) != 0);
        QVERIFY(f.engine.HasApe());
        QCOMPARE(UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, {}).done, 1);
        QVERIFY(f.engine.OpenFile(p) != 0);
        QCOMPARE(f.engine.HasApe(), hadApe);
    }

    void flacUpdateIsUndone() {
        TagUiFixture f;
        const QString p = f.AddFile(QStringLiteral("flac"), QStringLiteral("A.flac"));
        QVERIFY(f.engine.OpenFile(p) != 0);
        const TagSnapshot before = TakeTagSnapshot(f.engine, p);
        f.LoadAll(QStringLiteral("FLAC"));
        f.tag.SelectAll();
        TagBoxes boxes;
        boxes.v2[2] = {true, QStringLiteral("New Artist")};
        TagBatch batch = JournalBatch(f);
        QCOMPARE(UpdateTags(batch, UpdateSet::V2, boxes).done, 1);
        QVERIFY(f.engine.OpenFile(p) != 0);
        QCOMPARE(f.engine.V2Artist(), QStringLiteral("New Artist"));
        QCOMPARE(UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, {}).done, 1);
        QVERIFY(f.engine.OpenFile(p) != 0);
        const TagSnapshot after = TakeTagSnapshot(f.engine, p);
        QCOMPARE(after.sets, before.sets);
        QVERIFY(after.fields == before.fields);
    }

    void aFileChangedSinceIsLeftAloneUnlessTheUserSaysYes() {
        TagUiFixture f;
        const QString a = RichMp3(f, QStringLiteral("A.mp3"));
        QVERIFY(!a.isEmpty());
        f.LoadAll(QStringLiteral("MP3"));
        f.tag.SelectAll();
        TagBoxes boxes;
        boxes.v2[3] = {true, QStringLiteral("New Title")};
        TagBatch batch = JournalBatch(f);
        QCOMPARE(UpdateTags(batch, UpdateSet::V2, boxes).done, 1);
        // someone else writes the file after the batch
        QVERIFY(f.engine.OpenFile(a) != 0);
        f.engine.SetV2Composer(QStringLiteral("Later"));
        QVERIFY(f.engine.SaveV2(a) != 0);
        QStringList asked;
        UndoOutcome u = UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, [&](const QString& path) {
            asked << path;
            return false;
        });
        QCOMPARE(u.done, 0);
        QCOMPARE(u.failed, 1);
        QCOMPARE(u.changedSince, 1);
        QCOMPARE(asked, QStringList{a});
        QVERIFY(u.failures.front().contains(Caption(CapUndoChangedLeft)));
        QCOMPARE(f.input.CellText(1, InCol::FTag), Mark::Failed);
        QVERIFY(f.engine.OpenFile(a) != 0);
        QCOMPARE(f.engine.V2Title(), QStringLiteral("New Title"));
        QCOMPARE(f.engine.V2Composer(), QStringLiteral("Later"));
        // the journal stays; a Yes puts the old tags back
        QVERIFY(QFile::exists(JournalOf(f)));
        u = UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, [](const QString&) { return true; });
        QCOMPARE(u.done, 1);
        CheckRich(f.engine, a);
        QCOMPARE(f.engine.V2Composer(), QString());
    }

    void aFileThatIsGoneFails() {
        TagUiFixture f;
        const QString a = RichMp3(f, QStringLiteral("A.mp3"));
        f.LoadAll(QStringLiteral("MP3"));
        f.tag.SelectAll();
        TagBoxes boxes;
        boxes.v2[3] = {true, QStringLiteral("New Title")};
        TagBatch batch = JournalBatch(f);
        QCOMPARE(UpdateTags(batch, UpdateSet::V2, boxes).done, 1);
        QVERIFY(QFile::remove(a));
        const UndoOutcome u = UndoTagBatch(&f.input, &f.tag, JournalOf(f), f.engine, {});
        QCOMPARE(u.failed, 1);
        QVERIFY(u.failures.front().contains(Caption(CapReasonGone)));
    }

    void journalRoundTrip() {
        QTemporaryDir dir;
        TagSnapshot s;
        s.path = dir.filePath(QStringLiteral("a %25\tb\nc.mp3"));
        s.sets = int(TagSet::V1) | int(TagSet::V2);
        s.fields = {{int(TagField::V2Title), QStringLiteral("T\x1f%\r\n\tx")},
                    {int(TagField::V1Artist), "Ä"}};
        s.comments = {{"eng", "d=e", "text"}};
        s.lyrics = {{"deu", "", "la\nla"}};
        s.userFrames = {{"QLT", "QLT*"}};
        s.size = 1234;
        s.mtimeNs = 5678;
        const QString path = dir.filePath(QStringLiteral("j"));
        QVERIFY(WriteTagJournal(path, {s, s}));
        std::vector<TagSnapshot> back;
        QVERIFY(ReadTagJournal(path, back));
        QCOMPARE(back.size(), size_t(2));
        QCOMPARE(back[1].path, s.path);
        QCOMPARE(back[1].sets, s.sets);
        QVERIFY(back[1].fields == s.fields);
        QVERIFY(back[1].comments == s.comments);
        QVERIFY(back[1].lyrics == s.lyrics);
        QVERIFY(back[1].userFrames == s.userFrames);
        QCOMPARE(back[1].size, s.size);
        QCOMPARE(back[1].mtimeNs, s.mtimeNs);
        // another version or no header: not a journal
        QVERIFY(!ReadTagJournalBytes("quillotune-tagjournal 2\n", back));
        QVERIFY(!ReadTagJournalBytes("", back));
    }

    // A bounded mutation test of the reader: no crash, and whatever it accepts is sane.
    void readerSurvivesMutations() {
        TagSnapshot s;
        s.path = QStringLiteral("/music/a.mp3");
        s.sets = 3;
        s.fields = {{int(TagField::V2Title), "Title"}, {int(TagField::V1Year), "1999"}};
        s.comments = {{"eng", "", "c"}};
        s.userFrames = {{"MOOD", "x"}};
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("j"));
        QVERIFY(WriteTagJournal(path, {s, s, s}));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray good = file.readAll();
        QRandomGenerator rng(4711);
        const char specials[] = {'\t', '\n', '=', '%', '\x1f', '\r', '0', '-', 'A'};
        for (int round = 0; round < 3000; ++round) {
            QByteArray bytes = good;
            const int edits = 1 + int(rng.bounded(8));
            for (int k = 0; k < edits && !bytes.isEmpty(); ++k) {
                const int at = int(rng.bounded(int(bytes.size())));
                switch (rng.bounded(4)) {
                case 0:
                    bytes[at] = char(rng.bounded(256));
                    break;
                case 1:
                    bytes.insert(at, specials[rng.bounded(int(sizeof specials))]);
                    break;
                case 2:
                    bytes.remove(at, 1 + int(rng.bounded(6)));
                    break;
                default:
                    bytes.truncate(at);
                }
            }
            std::vector<TagSnapshot> out;
            if (!ReadTagJournalBytes(bytes, out))
                continue;
            for (const TagSnapshot& e : out) {
                QVERIFY(!e.path.isEmpty());
                QVERIFY(e.sets >= 0 && e.sets <= 127);
                for (const auto& fv : e.fields)
                    QVERIFY(fv.first >= 0 && fv.first < kTagFieldCount);
                for (const QStringList& c : e.comments)
                    QCOMPARE(c.size(), 3);
                for (const QStringList& c : e.userFrames)
                    QCOMPARE(c.size(), 2);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestTagJournal)
#include "test_tagjournal.moc"
