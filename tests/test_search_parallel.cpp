// The searches that open every file of a folder (lyric entries, embedded pictures, songs
// with an "lrc" frame) with readers on several threads: the same rows, cells, keys and
// order as with one reader, over the fixtures with broken files and over a generated
// tree, with and without an abort.
#include "../bench/search_tree.h"
#include "GridTestUtil.h"
#include "ReadTreeFixture.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/modScan.h"
#include "picture/modEmbeddedPictures.h"
#include "tag/TagEngine.h"
#include "text/TexteColumns.h"
#include "text/modSTextFind.h"
#include "text/modTexte.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/stat.h>

namespace {

struct Search {
    QString rows; // DumpGrid of the list
    int result = 0;
};

// The files the lyric search walks below `root` (without the folder entries).
int FilesBelow(const QString& root) {
    QStringList paths;
    int count = 0;
    FindFiles(root, QStringLiteral("*"), paths, true, count);
    paths.removeIf([](const QString& p) { return p.startsWith(QLatin1String(">>")); });
    return int(paths.size());
}

// The lyric search with `threads` readers; cancelAt > 0 presses the cancel button when the
// footer shows file cancelAt (a progress step): the files before it are listed.
Search Lyrics(const QString& root, int threads, bool withLyricsOnly, int cancelAt = -1) {
    ScriptedPrompt prompt;
    TagEngine engine;
    DataGrid txt, lyrics;
    TexteEnv env(prompt, engine, txt, lyrics);
    env.withSubFolderLyrics = true;
    env.withLyricsOnly = withLyricsOnly;
    env.threads = threads;
    bool cancel = cancelAt == 0;
    env.cancel = &cancel;
    if (cancelAt > 0) {
        const QString at = ProgressText(cancelAt, FilesBelow(root));
        env.pump = [at, &lyrics, &cancel] {
            if (lyrics.FooterText(LyrCol::FileName) == at)
                cancel = true;
        };
    }
    Search s;
    s.result = FindLyricsIn(env, root);
    s.rows = DumpGrid(lyrics);
    return s;
}

// The embedded-picture search with `threads` readers; abortAt >= 0 aborts before file
// abortAt (the files before it are listed).
Search Pictures(const QString& root, int threads, bool withPicturesOnly, int abortAt = -1) {
    DataGrid list;
    EmbeddedSearch how;
    how.withPicturesOnly = withPicturesOnly;
    how.threads = threads;
    int asked = 0;
    if (abortAt >= 0)
        how.aborted = [&] { return asked++ == abortAt; };
    TagEngine engine;
    Search s;
    s.result = bench::SearchPicturesBelow(list, engine, root, how);
    s.rows = DumpGrid(list);
    return s;
}

// The synchronising editor's search for songs with an "lrc" frame.
Search SongsWithLrc(const QString& root, int threads, int abortAt = -1) {
    DataGrid list;
    DefineSongWithLrcColumns(list);
    STextFindOptions o;
    o.subfolders = true;
    o.threads = threads;
    int asked = 0;
    if (abortAt >= 0)
        o.aborted = [&] { return asked++ == abortAt; };
    TagEngine engine;
    Search s;
    s.result = FindSongsWithLrc(list, engine, root, o);
    s.rows = DumpGrid(list);
    return s;
}

} // namespace

class TestSearchParallel : public QObject {
    Q_OBJECT
    QTemporaryDir tmp;
    QString music; // the fixtures, broken and cut files, a skipped folder
    QString tree;  // generated songs with lyric entries, pictures and "lrc" frames
    int treeFiles = 450;

    QStringList roots() const { return {music, tree}; }

    // Readers, folder (0 the fixtures, 1 the tree) and whether only songs with entries are listed.
    static void SameRowsData(const char* only) {
        QTest::addColumn<int>("threads");
        QTest::addColumn<int>("root");
        QTest::addColumn<bool>("only");
        for (int t : {2, 3, 8})
            for (int r : {0, 1})
                for (bool o : {false, true})
                    QTest::addRow("%d threads, %s, %s", t, r ? "tree" : "fixtures", o ? only : "all")
                        << t << r << o;
    }

    // The search with the readers of the test's data row gives the rows of one reader.
    void SameRowsAsOneReader(Search (*search)(const QString& root, int threads, bool only, int stopAt)) {
        QFETCH(int, threads);
        QFETCH(int, root);
        QFETCH(bool, only);
        const QString dir = roots()[root];
        const Search one = search(dir, 1, only, -1);
        const Search many = search(dir, threads, only, -1);
        QVERIFY(one.result > 0);
        QCOMPARE(many.result, one.result);
        QCOMPARE(many.rows, one.rows);
    }

private slots:
    void initTestCase() {
        QVERIFY(tmp.isValid());
        readtree::Folders folders;
        QVERIFY(folders.Make(tmp.path(), 450, corpus::LyricsAndPictures(FixtureDir())));
        music = folders.music;
        tree = folders.tree;
        treeFiles = folders.treeFiles;
        // A song with lyrics and pictures cut short, one without read rights (for a user
        // other than root), a link to a file that is gone, a song in a folder every
        // search passes over.
        const QString rich = tree + "/Artist 000/Album 0/15 - Artist 000 - Title 000014.mp3";
        const QByteArray bytes = readtree::ReadAll(rich);
        QVERIFY(bytes.size() > 2000);
        QFile cut(music + "/sub 1/cut.mp3");
        QVERIFY(cut.open(QIODevice::WriteOnly));
        QCOMPARE(cut.write(bytes.left(bytes.size() / 3)), bytes.size() / 3);
        cut.close();
        QVERIFY(QFile::copy(rich, music + "/sub 2/locked.mp3"));
        QCOMPARE(::chmod(QFile::encodeName(music + "/sub 2/locked.mp3").constData(), 0), 0);
        QVERIFY(QFile::link(music + "/no such file.mp3", music + "/sub 1/gone.mp3"));
        QVERIFY(QDir().mkpath(music + "/System Volume"));
        QVERIFY(QFile::copy(rich, music + "/System Volume/skipped.mp3"));
    }

    void theTreeHasWhatTheSearchesLookFor() {
        const Search lyrics = Lyrics(tree, 1, true);
        QVERIFY(lyrics.rows.contains(QStringLiteral("|3|")));        // a song with three entries
        QVERIFY(lyrics.rows.contains(QStringLiteral("Strophe 2/"))); // descriptions
        const Search pictures = Pictures(tree, 1, true);
        QVERIFY(pictures.result > treeFiles / 2);
        QVERIFY(pictures.rows.contains(QStringLiteral("/pictures/Bild "))); // a link
        QVERIFY(pictures.rows.contains(QStringLiteral("|02|")));            // a second picture
        const Search lrc = SongsWithLrc(tree, 1);
        QVERIFY(lrc.result > 10);
        QVERIFY(lrc.result < treeFiles / 4);
    }

    void lyricsSameRows_data() { SameRowsData("with lyrics"); }
    void lyricsSameRows() { SameRowsAsOneReader(Lyrics); }

    void lyricsSameRowsAfterACancel_data() {
        QTest::addColumn<int>("cancelAt");
        const int files = readtree::TreeFiles(450); // the walk passes over the marker ".complete"
        for (int at : {0, 50, 100, 300, files - 5, files - 1})
            QTest::addRow("at %d", at) << at;
    }
    void lyricsSameRowsAfterACancel() {
        QFETCH(int, cancelAt);
        QCOMPARE(FilesBelow(tree), treeFiles);
        const Search full = Lyrics(tree, 1, false);
        const Search one = Lyrics(tree, 1, false, cancelAt);
        QVERIFY(one.result <= full.result);
        QVERIFY(full.rows.startsWith(one.rows.left(one.rows.lastIndexOf(QLatin1String("\ncur|")))));
        for (int threads : {2, 3, 8}) {
            const Search many = Lyrics(tree, threads, false, cancelAt);
            QCOMPARE(many.result, one.result);
            QCOMPARE(many.rows, one.rows);
        }
    }

    void picturesSameRows_data() { SameRowsData("with pictures"); }
    void picturesSameRows() { SameRowsAsOneReader(Pictures); }

    void picturesSameRowsAfterAnAbort_data() {
        QTest::addColumn<int>("abortAt");
        const int files = readtree::TreeFiles(450);
        for (int at : {0, 1, 2, 9, 255, 256, 257, files - 2})
            QTest::addRow("at %d", at) << at;
    }
    void picturesSameRowsAfterAnAbort() {
        QFETCH(int, abortAt);
        const Search one = Pictures(tree, 1, false, abortAt);
        QCOMPARE(one.result, abortAt); // every file of the tree is read
        for (int threads : {2, 3, 8}) {
            const Search many = Pictures(tree, threads, false, abortAt);
            QCOMPARE(many.result, one.result);
            QCOMPARE(many.rows, one.rows);
        }
    }

    void songsWithLrcSameRows() {
        for (const QString& dir : roots()) {
            const Search one = SongsWithLrc(dir, 1);
            for (int threads : {2, 3, 8}) {
                const Search many = SongsWithLrc(dir, threads);
                QCOMPARE(many.result, one.result);
                QCOMPARE(many.rows, one.rows);
            }
        }
    }

    void songsWithLrcSameRowsAfterAnAbort() {
        for (int at : {0, 1, 9, 200, treeFiles - 1}) {
            const Search one = SongsWithLrc(tree, 1, at);
            for (int threads : {2, 3, 8}) {
                const Search many = SongsWithLrc(tree, threads, at);
                QCOMPARE(many.result, one.result);
                QCOMPARE(many.rows, one.rows);
            }
        }
    }

    void textFileSearchUnchanged() {
        // The search for text files reads names only; it keeps its rows and order.
        QFile(tree + "/Artist 000/a.txt").open(QIODevice::WriteOnly);
        QFile(tree + "/Artist 000/Album 2/b.TXT").open(QIODevice::WriteOnly);
        ScriptedPrompt prompt;
        TagEngine engine;
        DataGrid txt, lyrics;
        TexteEnv env(prompt, engine, txt, lyrics);
        env.withSubFolderTxt = true;
        QCOMPARE(FindTextFilesIn(env, tree), 2);
        QCOMPARE(txt.CellText(1, TxtCol::FileName), QStringLiteral("b.TXT")); // "Album 2" before "a.txt"
        QCOMPARE(txt.CellText(2, TxtCol::FileName), QStringLiteral("a.txt"));
        QFile::remove(tree + "/Artist 000/a.txt");
        QFile::remove(tree + "/Artist 000/Album 2/b.TXT");
    }
};

QTEST_GUILESS_MAIN(TestSearchParallel)
#include "test_search_parallel.moc"
