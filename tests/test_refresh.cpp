// The refresh of the data list: only files whose size or modification time changed are
// read again, vanished files are marked, nothing is added and the marks stay; the record
// in the row keys, lists of older versions, an abort, and quillotune-cli refresh.
#include "CliRun.h"
#include "TestPaths.h"
#include "core/AppState.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modRefresh.h"
#include "list/modScan.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "tag/TagEngine.h"
#include "tag/modTagList.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

bool Copy(const QString& fixture, const QString& target) {
    QDir().mkpath(QFileInfo(target).path());
    QFile::remove(target);
    return QFile::copy(FixtureDir() + "/" + fixture, target) &&
           QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
}

// Sets the modification time of a file `seconds` into the past, its size unchanged.
bool Touch(const QString& path, int seconds) {
    struct stat st {};
    if (PosixFile::Stat(path, st) != 0)
        return false;
    struct timespec times[2] = {st.st_atim, st.st_mtim};
    times[1].tv_sec -= seconds;
    return ::utimensat(AT_FDCWD, PosixFile::Native(path).constData(), times, 0) == 0;
}

bool Grow(const QString& path, int bytes) {
    QFile f(path);
    return f.open(QIODevice::Append) && f.write(QByteArray(bytes, '\0')) == bytes;
}

int RowOf(const DataGrid& list, const QString& name) {
    return list.FindRow(name, InCol::FileName);
}

} // namespace

class TestRefresh : public QObject {
    Q_OBJECT
    QTemporaryDir tmp;
    QString music;
    const QStringList names = {"a.mp3", "b.mp3", "c.flac", "d.ogg", "e.wma", "f.mp3", "g.ape", "h.mpc"};
    const QStringList fixtures = {"tone.mp3", "tone.mp3", "tone.flac", "tone.ogg",
                                  "tone.wma", "tone.mp3", "tone.ape",  "tone.mpc"};

    void MakeMusic() {
        QDir(music).removeRecursively();
        for (int i = 0; i < names.size(); ++i)
            QVERIFY(Copy(fixtures[i], music + "/" + (i % 2 ? "sub/" : "") + names[i]));
    }
    void Scan(DataGrid& list) {
        EnsureInputColumns(list);
        ScanOptions o;
        o.subFolders = true;
        o.threads = 1;
        TagEngine engine;
        ScanFolder(list, music, o, engine);
        for (int r = 1; r <= list.Rows(); ++r)
            list.SetCellText(r, InCol::FTag, QStringLiteral("mark ") + list.CellText(r, InCol::FileName));
    }

private slots:
    void init() {
        QVERIFY(tmp.isValid());
        music = tmp.path() + "/music";
        MakeMusic();
    }

    void keysCarryTheStamp() {
        const QString path = music + "/a.mp3";
        struct stat st {};
        QCOMPARE(PosixFile::Stat(path, st), 0);
        const QString stamp = FileStampText(path);
        QCOMPARE(stamp, QStringLiteral("%1:%2.%3")
                            .arg(qint64(st.st_size))
                            .arg(qint64(st.st_mtim.tv_sec))
                            .arg(qint64(st.st_mtim.tv_nsec)));
        QCOMPARE(FileStampText(music + "/gone.mp3"), QString());
        // The same record from the engine's look at the file when it opened it: for a
        // song, a file that is no song, a folder and a file that is not there.
        TagEngine engine;
        QVERIFY(engine.OpenFile(path) != 0);
        QCOMPARE(OpenedFileStampText(engine), stamp);
        const QString junk = music + "/junk.mp3";
        QVERIFY(SafeFile::WriteWholeFile(junk, QByteArray(300, 'x')));
        QCOMPARE(engine.OpenFile(junk), 0);
        QCOMPARE(OpenedFileStampText(engine), FileStampText(junk));
        QCOMPARE(engine.OpenFile(music), 0);
        QCOMPARE(OpenedFileStampText(engine), FileStampText(music));
        QCOMPARE(engine.OpenFile(music + "/gone.mp3"), 0);
        QCOMPARE(OpenedFileStampText(engine), QString());
        QVERIFY(QFile::remove(junk));
        QCOMPARE(StampedKey(u"12k", u"5:1.2"), QStringLiteral("12k|5:1.2"));
        QCOMPARE(StampedKey(u"12k", u""), QStringLiteral("12k"));
        QCOMPARE(KeyIdentity(u"12k|5:1.2"), QStringView(u"12k"));
        QCOMPARE(KeyStamp(u"12k|5:1.2"), QStringView(u"5:1.2"));
        QCOMPARE(KeyIdentity(u"12k"), QStringView(u"12k"));
        QVERIFY(KeyStamp(u"12k").isEmpty());

        DataGrid list;
        Scan(list);
        QCOMPARE(list.Rows(), names.size());
        for (int r = 1; r <= list.Rows(); ++r) {
            const QString file = list.CellText(r, InCol::Path) + "/" + list.CellText(r, InCol::FileName);
            QCOMPARE(KeyStamp(list.RowKey(r)), QStringView(FileStampText(file)));
            QVERIFY(KeyIdentity(list.RowKey(r)).endsWith(u'k'));
        }
    }

    void refreshAfterChanges_data() {
        QTest::addColumn<int>("threads");
        QTest::newRow("one thread") << 1;
        QTest::newRow("two threads") << 2;
    }
    void refreshAfterChanges() {
        QFETCH(int, threads);
        DataGrid list;
        Scan(list);
        const int rows = list.Rows();
        std::vector<QStringList> before;
        QStringList keys;
        for (int r = 1; r <= rows; ++r) {
            before.push_back(list.RowCells(r));
            keys << list.RowKey(r);
        }
        QVERIFY(Touch(music + "/a.mp3", 1));           // touched
        QVERIFY(Grow(music + "/sub/b.mp3", 4096));     // grown
        QVERIFY(QFile::remove(music + "/c.flac"));     // deleted
        QVERIFY(Copy("tone.mp3", music + "/new.mp3")); // added
        const qint64 grown = QFileInfo(music + "/sub/b.mp3").size();

        ScriptedPrompt prompt;
        TagEngine engine;
        const RefreshResult r = RefreshChanged(list, engine, prompt, {}, threads);
        QVERIFY(!r.aborted);
        QCOMPARE(r.rows, rows);
        QCOMPARE(r.reread, 2);
        QCOMPARE(r.missing, 1);
        QCOMPARE(r.unchanged, rows - 3);
        QCOMPARE(r.failures, 0);
        QCOMPARE(list.Rows(), rows); // nothing added
        QCOMPARE(RowOf(list, "new.mp3"), 0);
        QCOMPARE(prompt.shown.size(), std::size_t(0));
        QVERIFY(!State().ScanRunning);
        QVERIFY(!list.IsLocked());

        for (int row = 1; row <= rows; ++row) {
            const QString name = list.CellText(row, InCol::FileName);
            const QStringList cells = list.RowCells(row);
            // Rows keep their places, numbers and identities.
            QCOMPARE(cells[InCol::FileName - 1], before[std::size_t(row - 1)][InCol::FileName - 1]);
            QCOMPARE(cells[InCol::No - 1], before[std::size_t(row - 1)][InCol::No - 1]);
            QCOMPARE(KeyIdentity(list.RowKey(row)), KeyIdentity(keys[row - 1]));
            if (name == "c.flac") {
                QCOMPARE(cells[InCol::FTag - 1], QStringLiteral("_#-/-> mark c.flac"));
                QCOMPARE(list.RowKey(row), keys[row - 1]);
                continue;
            }
            QCOMPARE(cells[InCol::FTag - 1], QStringLiteral("mark ") + name);
            if (name == "b.mp3") {
                QCOMPARE(cells[InCol::SizeByte - 1], QString::number(grown));
                QVERIFY(list.RowKey(row) != keys[row - 1]);
            } else if (name == "a.mp3") {
                QVERIFY(list.RowKey(row) != keys[row - 1]);
                // The same content at a new time (whose day may differ at midnight).
                QStringList old = before[std::size_t(row - 1)];
                old[InCol::DateTime - 1] = cells[InCol::DateTime - 1];
                QCOMPARE(cells, old);
            } else {
                QCOMPARE(cells, before[std::size_t(row - 1)]);
                QCOMPARE(list.RowKey(row), keys[row - 1]);
            }
        }

        // Lists that point at rows find them by the identity of the key, also the rows read
        // again.
        const QHash<QString, int> byKey = InputRowsByKey(list);
        for (int row = 1; row <= rows; ++row)
            QCOMPARE(byKey.value(KeyIdentity(keys[row - 1]).toString()), row);

        // A second refresh finds nothing new, and the mark of the missing file stays single.
        const RefreshResult again = RefreshChanged(list, engine, prompt, {}, threads);
        QCOMPARE(again.reread, 0);
        QCOMPARE(again.missing, 1);
        QCOMPARE(again.unchanged, rows - 1);
        QCOMPARE(list.CellText(RowOf(list, "c.flac"), InCol::FTag), QStringLiteral("_#-/-> mark c.flac"));

        // The file comes back: it is read again, and the row stays marked until the user
        // clears the mark.
        QVERIFY(Copy("tone.flac", music + "/c.flac"));
        const RefreshResult back = RefreshChanged(list, engine, prompt, {}, threads);
        QCOMPARE(back.reread, 1);
        QCOMPARE(back.missing, 0);
    }

    void olderListsReadEverything() {
        DataGrid list;
        Scan(list);
        // A list of an older version: keys without the record.
        const QString data = tmp.path() + "/old.data";
        for (int r = 1; r <= list.Rows(); ++r)
            list.SetRowKey(r, KeyIdentity(list.RowKey(r)).toString());
        QVERIFY(list.SaveFile(data));
        DataGrid loaded;
        EnsureInputColumns(loaded);
        QVERIFY(loaded.LoadFile(data, true));
        ScriptedPrompt prompt;
        TagEngine engine;
        const RefreshResult r = RefreshChanged(loaded, engine, prompt, {}, 2);
        QCOMPARE(r.reread, names.size());
        QCOMPARE(r.unchanged, 0);
        for (int row = 1; row <= loaded.Rows(); ++row) {
            QVERIFY(!KeyStamp(loaded.RowKey(row)).isEmpty());
            QCOMPARE(loaded.CellText(row, InCol::FTag),
                     QStringLiteral("mark ") + loaded.CellText(row, InCol::FileName));
        }
        // Now every row is known: nothing is read.
        QCOMPARE(RefreshChanged(loaded, engine, prompt, {}, 2).unchanged, names.size());
    }

    void abortLeavesTheRestForLater_data() {
        QTest::addColumn<int>("threads");
        QTest::newRow("one thread") << 1;
        QTest::newRow("two threads") << 2;
    }
    void abortLeavesTheRestForLater() {
        QFETCH(int, threads);
        DataGrid list;
        Scan(list);
        for (int r = 1; r <= list.Rows(); ++r)
            list.SetRowKey(r, KeyIdentity(list.RowKey(r)).toString());
        ScanHooks hooks;
        int shown = 0;
        hooks.showProgress = [&](int max) { shown = max; };
        hooks.setProgress = [](int v) {
            if (v == 2)
                State().AbortRequested = true;
        };
        ScriptedPrompt prompt;
        TagEngine engine;
        const RefreshResult r = RefreshChanged(list, engine, prompt, hooks, threads);
        QVERIFY(r.aborted);
        QCOMPARE(shown, names.size());
        QCOMPARE(r.reread, 3); // the file in progress is finished
        QVERIFY(!State().AbortRequested);
        TellRefreshResult(r, false, prompt);
        QCOMPARE(prompt.shown.size(), std::size_t(0)); // an abort tells nothing
        const RefreshResult rest = RefreshChanged(list, engine, prompt, {}, threads);
        QCOMPARE(rest.reread, names.size() - 3);
    }

    void messages() {
        ScriptedPrompt prompt;
        RefreshResult r;
        r.reread = 2;
        r.unchanged = 5;
        TellRefreshResult(r, true, prompt);
        QCOMPARE(prompt.shown.size(), std::size_t(0));
        TellRefreshResult(r, false, prompt);
        QCOMPARE(prompt.shown.size(), std::size_t(1));
        QVERIFY(prompt.LastText().contains("2"));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Information);
        r.missing = 1; // always told
        TellRefreshResult(r, true, prompt);
        QCOMPARE(prompt.shown.size(), std::size_t(2));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Warning);

        DataGrid empty;
        EnsureInputColumns(empty);
        TagEngine engine;
        const RefreshResult none = RefreshChanged(empty, engine, prompt);
        QCOMPARE(none.rows, 0);
        QCOMPARE(prompt.shown.size(), std::size_t(3)); // the guard of an empty list
    }

    void commandLine() {
        const QString data = tmp.path() + "/cli.data";
        CliRun s = RunCli({"scan", music, "--subfolders", "--save", data});
        QCOMPARE(s.code, 0);
        CliRun r = RunCli({"refresh", data, "--threads", "2"});
        QCOMPARE(r.code, 0);
        QVERIFY2(QRegularExpression("^rows: 8, unchanged: 8, read again: 0, missing: 0, failures: 0, "
                                    "seconds: \\d+\\.\\d\\d\\n$")
                     .match(r.out)
                     .hasMatch(),
                 qPrintable(r.out));
        QVERIFY(Grow(music + "/a.mp3", 100));
        QVERIFY(QFile::remove(music + "/sub/b.mp3"));
        r = RunCli({"refresh", data});
        QCOMPARE(r.code, 0);
        QVERIFY2(r.out.startsWith("rows: 8, unchanged: 6, read again: 1, missing: 1, failures: 0"),
                 qPrintable(r.out));
        // Saved: the next run finds the new record and the mark.
        r = RunCli({"refresh", data});
        QVERIFY2(r.out.startsWith("rows: 8, unchanged: 7, read again: 0, missing: 1,"), qPrintable(r.out));
        DataGrid list;
        EnsureInputColumns(list);
        QVERIFY(list.LoadFile(data, true));
        QCOMPARE(list.CellText(RowOf(list, "b.mp3"), InCol::FTag), QStringLiteral("_#-/-> "));
        QCOMPARE(RunCli({"refresh"}).code, 2);
        QCOMPARE(RunCli({"refresh", data, "--threads", "0"}).code, 2);
        QCOMPARE(RunCli({"refresh", tmp.path() + "/none.data"}).code, 1);
    }
};

QTEST_GUILESS_MAIN(TestRefresh)
#include "test_refresh.moc"
