// The folder scan and the re-read with readers on several threads: the same rows, cells,
// keys and order as with one thread, byte for byte in the saved list, with and without
// an abort; the reader pool itself (order, stop with files in hand).
#include "ReadTreeFixture.h"
#include "core/AppState.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/ftcReadPool.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <atomic>

namespace {

using readtree::ReadAll;

// The saved list of a scan of `root` with `threads` readers; abortAt >= 0 presses the
// abort button while entry abortAt is being read.
QByteArray ScanBytes(const QString& root, const QString& work, int threads, bool subFolders, int abortAt = -1,
                     ScanResult* result = nullptr) {
    DataGrid list;
    EnsureInputColumns(list);
    ScanOptions o;
    o.subFolders = subFolders;
    o.threads = threads;
    o.numberDigits = 2;
    ScanHooks hooks;
    if (abortAt >= 0) {
        hooks.setProgress = [abortAt](int v) {
            if (v == abortAt)
                State().AbortRequested = true;
        };
    }
    TagEngine engine;
    const ScanResult r = ScanFolder(list, root, o, engine, hooks);
    if (result)
        *result = r;
    const QString path = work + QStringLiteral("/scan-%1-%2.data").arg(threads).arg(abortAt);
    if (!list.SaveFile(path))
        return QByteArray();
    return ReadAll(path);
}

} // namespace

class TestScanParallel : public QObject {
    Q_OBJECT
    QTemporaryDir tmp;
    QString music; // the fixtures in a few folders, with files that are no audio
    QString tree;  // a generated collection of 10,000 files (QLT_TREE_FILES changes it)
    int treeFiles = 10000;

private slots:
    void initTestCase() {
        QVERIFY(tmp.isValid());
        readtree::Folders folders;
        QVERIFY(folders.Make(tmp.path(), 10000));
        music = folders.music;
        tree = folders.tree;
        treeFiles = folders.treeFiles;
    }

    void sameRowsOverTheFixtures_data() {
        QTest::addColumn<int>("threads");
        QTest::addColumn<bool>("subFolders");
        for (int t : {2, 3, 8}) {
            QTest::addRow("%d threads, sub-folders", t) << t << true;
            QTest::addRow("%d threads, one folder", t) << t << false;
        }
    }
    void sameRowsOverTheFixtures() {
        QFETCH(int, threads);
        QFETCH(bool, subFolders);
        ScanResult one, many;
        const QByteArray expected = ScanBytes(music, tmp.path(), 1, subFolders, -1, &one);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(ScanBytes(music, tmp.path(), threads, subFolders, -1, &many), expected);
        QCOMPARE(many.rowsAdded, one.rowsAdded);
        QCOMPARE(many.failures, one.failures);
        QCOMPARE(many.processed, one.processed);
        QVERIFY(one.rowsAdded >= (subFolders ? 30 : 10));
        QVERIFY(one.failures >= 1); // broken.mp3 (and the picture)
    }

    void sameRowsOverAGeneratedTree() {
        ScanResult one, many;
        const QByteArray expected = ScanBytes(tree, tmp.path(), 1, true, -1, &one);
        QCOMPARE(one.rowsAdded, treeFiles);
        QCOMPARE(ScanBytes(tree, tmp.path(), 2, true, -1, &many), expected);
        QCOMPARE(ScanBytes(tree, tmp.path(), 4, true), expected);
        QCOMPARE(many.rowsAdded, treeFiles);
    }

    void sameRowsAfterAnAbort_data() {
        QTest::addColumn<int>("abortAt");
        const int files = readtree::TreeFiles(10000);
        for (int at : {0, 1, 2, 9, 255, 256, 257, files * 4 / 10, files - 2})
            QTest::addRow("at %d", at) << at;
    }
    void sameRowsAfterAnAbort() {
        QFETCH(int, abortAt);
        // The file in progress when the button is pressed is finished: abortAt + 1 entries.
        ScanResult one, many;
        const QByteArray expected = ScanBytes(tree, tmp.path(), 1, true, abortAt, &one);
        QVERIFY(one.aborted);
        QCOMPARE(one.processed, abortAt + 1);
        QVERIFY(one.rowsAdded >= abortAt);
        QCOMPARE(ScanBytes(tree, tmp.path(), 2, true, abortAt, &many), expected);
        QVERIFY(many.aborted);
        QCOMPARE(many.processed, abortAt + 1);
        QCOMPARE(many.rowsAdded, one.rowsAdded);
        QVERIFY(!State().AbortRequested);
        QVERIFY(!State().ScanRunning);
        if (abortAt < 40) {
            QCOMPARE(ScanBytes(music, tmp.path(), 1, true, abortAt),
                     ScanBytes(music, tmp.path(), 3, true, abortAt));
        }
    }

    void textChecksOnThreads() {
        // The checks run where the rows are added: the same rows pass.
        for (int threads : {1, 2}) {
            DataGrid list;
            EnsureInputColumns(list);
            ScanOptions o;
            o.subFolders = true;
            o.threads = threads;
            o.checkCharacters = true;
            o.titleSearch = QStringLiteral("Title 0001");
            TagEngine engine;
            ScanFolder(list, tree, o, engine);
            QCOMPARE(list.Rows(), 100); // Title 000100 to Title 000199
        }
    }

    void rereadOnThreads() {
        // The re-read of a list gives the same list with one reader and with several.
        QByteArray bytes[2];
        for (int k = 0; k < 2; ++k) {
            DataGrid list;
            EnsureInputColumns(list);
            ScanOptions o;
            o.subFolders = true;
            o.threads = 1;
            TagEngine engine;
            ScanFolder(list, music, o, engine);
            list.SetCellText(1, InCol::FTag, QStringLiteral("mark"));
            ScriptedPrompt prompt;
            const ScanResult r = UpdateList(list, engine, prompt, {}, k == 0 ? 1 : 3);
            QVERIFY(!r.aborted);
            QCOMPARE(list.CellText(1, InCol::FTag), QString());
            const QString path = tmp.path() + QStringLiteral("/reread-%1.data").arg(k);
            QVERIFY(list.SaveFile(path));
            bytes[k] = ReadAll(path);
        }
        QVERIFY(!bytes[0].isEmpty());
        QCOMPARE(bytes[1], bytes[0]);
    }

    void poolGivesResultsInOrder_data() {
        QTest::addColumn<int>("window");
        QTest::newRow("window 16") << 16;
        QTest::newRow("window 1") << 1;
        QTest::newRow("window 2") << 2;
        QTest::newRow("window 5") << 5;
    }
    void poolGivesResultsInOrder() {
        // Small windows too: the owner's wait for a batch never asks for an entry the
        // readers can't reach yet.
        QFETCH(int, window);
        TagEngine engine;
        ReadPool pool(
            5000, 4, engine, [](TagEngine&, int i, FileRead& out) { out.type = i; }, window);
        for (int i = 0; i < 5000; ++i)
            QCOMPARE(pool.Take(i, {}).type, i);
        pool.Stop();
    }

    void poolStopFinishesFilesInHand() {
        std::atomic<int> started{0}, finished{0};
        TagEngine engine;
        {
            ReadPool pool(
                100000, 2, engine,
                [&](TagEngine&, int, FileRead&) {
                    ++started;
                    QThread::usleep(200);
                    ++finished;
                },
                32);
            for (int i = 0; i < 10; ++i)
                pool.Take(i, {});
            pool.Stop();
            QCOMPARE(finished.load(), started.load());
            QVERIFY(started.load() <= 10 + 32 + 2); // no more than the window ahead
        }
        QCOMPARE(finished.load(), started.load());
    }

    void poolWithOneThreadReadsInPlace() {
        TagEngine engine;
        const TagEngine* seen = nullptr;
        ReadPool pool(3, 1, engine, [&](TagEngine& e, int i, FileRead& out) {
            seen = &e;
            out.type = 10 + i;
        });
        QCOMPARE(pool.Take(0, {}).type, 10);
        QCOMPARE(seen, &engine);
    }
};

QTEST_GUILESS_MAIN(TestScanParallel)
#include "test_scan_parallel.moc"
