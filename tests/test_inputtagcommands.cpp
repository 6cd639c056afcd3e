// The tag commands of the rename tab on real MP3 files: the name from the tags (with the
// track in front), a text into one tag column, and the removal of dead links.

#include "InstalledCaptions.h"
#include "ProgramFolder.h"
#include "TestPaths.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/modRename.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"
#include "tag/modInputTagCommands.h"
#include "tag/modTagJournal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestInputTagCommands : public QObject {
    Q_OBJECT

    ProgramFolder program;
    QTemporaryDir dir;
    DataGrid list;
    ScriptedPrompt prompt;

    QString Song(const QString& name, const QString& artist, const QString& title, const QString& track) {
        const QString path = dir.filePath(name);
        QFile::remove(path);
        if (!QFile::copy(FixtureDir() + QStringLiteral("/tone.mp3"), path))
            return QString();
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        TagEngine& e = TagEngine::Shared();
        if (e.OpenFile(path) == 0)
            return QString();
        e.SetV2Artist(artist);
        e.SetV2Title(title);
        e.SetV2Track(track);
        return e.SaveV2(path) > 0 ? path : QString();
    }
    void Rows() {
        EnsureInputColumns(list);
        list.Clear();
        const RowContext context;
        for (const QString& n : QDir(dir.path()).entryList(QDir::Files, QDir::Name))
            AddFileRow(list, TagEngine::Shared(), dir.filePath(n), context);
        list.SelectAll();
        prompt.shown.clear();
    }

private slots:
    void initTestCase() {
        QVERIFY(LoadInstalledCaptions());
        QDir().mkpath(program.file(QStringLiteral("temp")));
    }

    void tagToFilename() {
        QVERIFY(!Song(QStringLiteral("x1.mp3"), QStringLiteral("Abba"), QStringLiteral("SOS"),
                      QStringLiteral("3/12"))
                     .isEmpty());
        QVERIFY(!Song(QStringLiteral("x2.mp3"), QString(), QStringLiteral("No artist"), QString()).isEmpty());
        Rows();
        RenameRequest r;
        r.command = RenameCommand::TagToFilename;
        r.digits = 2;
        r.tagSet = 2;
        r.withTrack = true;
        ListEnv env(prompt);
        prompt.answers = {true};
        const RenameRun run =
            RunRename(list, r, env, false, false, &TagEngine::Shared(), RenameJournalPath());
        QCOMPARE(prompt.shown.front().text, Caption(CapTagToNameQuestion));
        QCOMPARE(run.outcome.done, 1);
        QCOMPARE(run.outcome.failed, 1);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("03_Abba - SOS.mp3"))));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("x2.mp3"))));
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 1);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("x1.mp3"))));
        for (const QString& n : QDir(dir.path()).entryList(QDir::Files))
            QFile::remove(dir.filePath(n));
    }

    void filenameToTag() {
        QVERIFY(!Song(QStringLiteral("07_Abba - Waterloo.mp3"), QString(), QString(), QString()).isEmpty());
        Rows();
        ListEnv env(prompt);
        prompt.answers = {true};
        const TagCommandResult r =
            FilenameToTagRows(list, 2, true, QString(), false, TagEngine::Shared(), env);
        QCOMPARE(r.done, 1);
        QCOMPARE(prompt.shown.front().text, Caption(CapNameToTagQuestion));
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("07_Abba - Waterloo.mp3"))) != 0);
        QCOMPARE(e.V2Artist(), QStringLiteral("Abba"));
        QCOMPARE(e.V2Title(), QStringLiteral("Waterloo"));
        QCOMPARE(e.V2Track(), QStringLiteral("7"));
        QCOMPARE(list.CellText(1, InCol::TagArtist), QStringLiteral("Abba"));
        QFile::remove(dir.filePath(QStringLiteral("07_Abba - Waterloo.mp3")));
    }

    void textIntoTagColumnAndNameToTagAreUndone() {
        const QString a = Song(QStringLiteral("Abba - Waterloo.mp3"), QStringLiteral("A"),
                               QStringLiteral("T"), QStringLiteral("3"));
        QVERIFY(!a.isEmpty());
        Rows();
        ListEnv env(prompt);
        TagEngine& e = TagEngine::Shared();
        const QString journal = TagJournalPath();
        QCOMPARE(
            SetTextInTag(list, InCol::TagAlbum, QStringLiteral("Arrival"), QString(), true, e, env, journal)
                .done,
            1);
        list.DoSort(InCol::FileName, 2);
        UndoOutcome u = UndoTagBatch(&list, nullptr, journal, e, {});
        QCOMPARE(u.done, 1);
        QVERIFY(e.OpenFile(a) != 0);
        QVERIFY(e.V2Album().isEmpty());
        QCOMPARE(e.V2Artist(), QStringLiteral("A"));
        QVERIFY(list.CellText(1, InCol::TagAlbum).isEmpty());
        QCOMPARE(FilenameToTagRows(list, 2, false, QString(), true, e, env, journal).done, 1);
        QVERIFY(e.OpenFile(a) != 0);
        QCOMPARE(e.V2Artist(), QStringLiteral("Abba"));
        u = UndoTagBatch(&list, nullptr, journal, e, {});
        QCOMPARE(u.done, 1);
        QVERIFY(e.OpenFile(a) != 0);
        QCOMPARE(e.V2Artist(), QStringLiteral("A"));
        QCOMPARE(e.V2Title(), QStringLiteral("T"));
        QCOMPARE(list.CellText(1, InCol::TagArtist), QStringLiteral("A"));
        QFile::remove(a);
    }

    void textIntoTagColumn() {
        QVERIFY(
            !Song(QStringLiteral("a.mp3"), QStringLiteral("A"), QStringLiteral("T"), QString()).isEmpty());
        QVERIFY(
            !Song(QStringLiteral("b.mp3"), QStringLiteral("B"), QStringLiteral("U"), QString()).isEmpty());
        Rows();
        list.SetCellText(2, InCol::FTag, QStringLiteral("skip"));
        list.SetCellText(1, InCol::FTag, QStringLiteral("go"));
        ListEnv env(prompt);
        TagCommandResult r = SetTextInTag(list, InCol::TagAlbum, QStringLiteral("Arrival"),
                                          QStringLiteral("go"), false, TagEngine::Shared(), env);
        QCOMPARE(r.done, 1);
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("a.mp3"))) != 0);
        QCOMPARE(e.V2Album(), QStringLiteral("Arrival"));
        QCOMPARE(list.CellText(1, InCol::TagAlbum), QStringLiteral("Arrival"));
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("b.mp3"))) != 0);
        QVERIFY(e.V2Album().isEmpty());
        // The comment column: the first comment, "???" as language for a new one.
        r = SetTextInTag(list, InCol::TagComment, QStringLiteral("live"), QString(), true, e, env);
        QCOMPARE(r.done, 2);
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("b.mp3"))) != 0);
        QCOMPARE(e.CommentText(1), QStringLiteral("live"));
        QCOMPARE(e.CommentLanguage(1), QStringLiteral("???"));
        // A file that is gone fails with its mark.
        QFile::remove(dir.filePath(QStringLiteral("b.mp3")));
        r = SetTextInTag(list, InCol::Tg1Album, QStringLiteral("x"), QString(), true, e, env);
        QCOMPARE(r.failed, 1);
        QCOMPARE(list.CellText(2, InCol::FTag), Mark::Failed);
    }

    void deadLinks() {
        const QString path =
            Song(QStringLiteral("c.mp3"), QStringLiteral("C"), QStringLiteral("V"), QString());
        QVERIFY(!path.isEmpty());
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(path) != 0);
        e.SetV2Composer(QStringLiteral("/nowhere/score.pdf"));
        e.SetV2Conductor(path); // exists: stays
        QVERIFY(e.SaveV2(path) > 0);
        Rows();
        const int row = list.FindRow(QStringLiteral("c.mp3"), InCol::FileName);
        list.ClearSelection();
        list.SetSelected(row, true);
        ListEnv env(prompt);
        prompt.answers = {true, false}; // the command yes, the link no
        TagCommandResult r = RemoveInvalidLinks(list, QString(), false, e, env);
        QCOMPARE(r.linksRemoved, 0);
        prompt.answers = {true, true};
        r = RemoveInvalidLinks(list, QString(), false, e, env);
        QCOMPARE(r.linksRemoved, 1);
        QCOMPARE(r.done, 1);
        QVERIFY(e.OpenFile(path) != 0);
        QVERIFY(e.V2Composer().isEmpty());
        QCOMPARE(e.V2Conductor(), path);
        QVERIFY(list.CellText(row, InCol::TagComposer).isEmpty());
    }

    // Rating and mood into the program's user frames, the cells following; an empty
    // value removes the frame; a WMA file takes them in its own fields.
    void ratingAndMood() {
        QVERIFY(
            !Song(QStringLiteral("r1.mp3"), QStringLiteral("R"), QStringLiteral("One"), QString()).isEmpty());
        const QString wma = dir.filePath(QStringLiteral("r2.wma"));
        QFile::remove(wma);
        QVERIFY(QFile::copy(FixtureDir() + QStringLiteral("/tone.wma"), wma));
        QFile::setPermissions(wma, QFile::ReadOwner | QFile::WriteOwner);
        Rows();
        ListEnv env(prompt);
        TagEngine& e = TagEngine::Shared();
        const int mp3 = list.FindRow(QStringLiteral("r1.mp3"), InCol::FileName);
        const int wmaRow = list.FindRow(QStringLiteral("r2.wma"), InCol::FileName);
        list.ClearSelection();
        list.SetSelected(mp3, true);
        list.SetSelected(wmaRow, true);
        TagCommandResult r = SetRatingMoodRows(list, false, QStringLiteral("****"), QString(), true, e, env);
        QCOMPARE(r.done, 2);
        r = SetRatingMoodRows(list, true, QStringLiteral("calm"), QString(), true, e, env);
        QCOMPARE(r.done, 2);
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("r1.mp3"))) != 0);
        QCOMPARE(e.V2Rating(), QStringLiteral("****"));
        QCOMPARE(e.V2Mood(), QStringLiteral("calm"));
        QCOMPARE(list.CellText(mp3, InCol::Rating), QStringLiteral("****"));
        QCOMPARE(list.CellText(mp3, InCol::Mood), QStringLiteral("calm"));
        QVERIFY(e.OpenFile(wma) != 0);
        QCOMPARE(e.WmaRating(), QStringLiteral("****"));
        QCOMPARE(list.CellText(wmaRow, InCol::Mood), QStringLiteral("calm"));
        // A second rating replaces the first.
        r = SetRatingMoodRows(list, false, QStringLiteral("*"), QString(), true, e, env);
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("r1.mp3"))) != 0);
        QCOMPARE(e.V2Rating(), QStringLiteral("*"));
        // Removing: no QLT frame is left, the mood stays.
        r = SetRatingMoodRows(list, false, QString(), QString(), true, e, env);
        QCOMPARE(r.done, 2);
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("r1.mp3"))) != 0);
        for (int i = 1; i <= e.UserFrameCount(); ++i)
            QVERIFY(!e.UserFrameText(i).startsWith(QLatin1String("QLT")));
        QCOMPARE(e.V2Mood(), QStringLiteral("calm"));
        QVERIFY(list.CellText(mp3, InCol::Rating).isEmpty());
        QVERIFY(e.OpenFile(wma) != 0);
        QVERIFY(e.WmaRating().isEmpty());
        QCOMPARE(e.WmaMood(), QStringLiteral("calm"));
        // The album column of each tag set.
        QCOMPARE(AlbumColumnOfSet(1), int(InCol::Tg1Album));
        QCOMPARE(AlbumColumnOfSet(2), int(InCol::TagAlbum));
        QCOMPARE(AlbumColumnOfSet(0), int(InCol::TagAlbum));
        QCOMPARE(AlbumColumnOfSet(3), int(InCol::TagApeAlbum));
        QCOMPARE(AlbumColumnOfSet(4), int(InCol::TagLyricsAlbum));
        QCOMPARE(AlbumColumnOfSet(5), int(InCol::TagTypAlbum));
    }
};

QTEST_GUILESS_MAIN(TestInputTagCommands)
#include "test_inputtagcommands.moc"
