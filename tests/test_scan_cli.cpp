// quillotune-cli scan and load: the same rows as the scan in the program, a summary line,
// saved lists and exports.
#include "CliRun.h"
#include "TestPaths.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Run = CliRun;

Run Cli(const QStringList& args) {
    return RunCli(args);
}

bool Copy(const QString& fixture, const QString& target) {
    QDir().mkpath(QFileInfo(target).path());
    return QFile::copy(FixtureDir() + "/" + fixture, target);
}

} // namespace

class TestScanCli : public QObject {
    Q_OBJECT
    QTemporaryDir tmp;
    QString music;

private slots:
    void initTestCase() {
        music = tmp.path() + "/music";
        QVERIFY(Copy("tone.mp3", music + "/01 - Artist - Song.mp3"));
        QVERIFY(Copy("tone.flac", music + "/Band-Tune.flac"));
        QVERIFY(Copy("tone.ogg", music + "/sub/Zed.ogg"));
        QVERIFY(Copy("tone.wma", music + "/sub/deeper/a.wma"));
        QFile f(music + "/notes.txt");
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("no audio");
    }

    void summaryLine() {
        const Run r = Cli({"scan", music});
        QCOMPARE(r.code, 0);
        // Without sub-folders: two audio files and the text file; the sub-folder is no file.
        QVERIFY2(QRegularExpression("^files: 3, rows: 2, failures: 1, seconds: \\d+\\.\\d\\d\\n$")
                     .match(r.out)
                     .hasMatch(),
                 qPrintable(r.out));
        QVERIFY2(r.err.isEmpty(), qPrintable(r.err)); // no terminal: no progress line
        const Run s = Cli({"scan", music, "--subfolders"});
        QVERIFY2(s.out.startsWith("files: 5, rows: 4, failures: 1,"), qPrintable(s.out));
    }

    void progressLineOnATerminal() {
        const QString script = QStandardPaths::findExecutable("script");
        if (script.isEmpty())
            QSKIP("no 'script' to give the tool a terminal");
        QProcess p;
        p.start(script,
                {"-qec", ProgramDir() + "/quillotune-cli scan '" + music + "' --subfolders", "/dev/null"});
        QVERIFY(p.waitForFinished(60000));
        const QString out = QString::fromUtf8(p.readAllStandardOutput());
        QVERIFY2(out.contains("\r5/5 (100%)"), qPrintable(out)); // the progress line, drawn over itself
        QVERIFY(out.contains("files: 5, rows: 4, failures: 1,"));
    }

    void sameRowsAsTheProgram() {
        const QString data = tmp.path() + "/list.data";
        const Run r = Cli({"scan", music, "--subfolders", "--save", data});
        QCOMPARE(r.code, 0);
        QVERIFY(QFile::exists(data));

        DataGrid fromCli;
        EnsureInputColumns(fromCli);
        QVERIFY(fromCli.LoadFile(data, true));

        DataGrid here;
        EnsureInputColumns(here);
        TagEngine engine;
        ScanOptions o;
        o.subFolders = true;
        o.numberDigits = 2;
        ScanFolder(here, music, o, engine);
        QCOMPARE(fromCli.Rows(), here.Rows());
        QCOMPARE(here.Rows(), 4);
        for (int row = 1; row <= here.Rows(); ++row)
            QCOMPARE(fromCli.RowCells(row), here.RowCells(row));
        QCOMPARE(here.CellText(1, InCol::FileName), QString("01 - Artist - Song.mp3"));
        QCOMPARE(here.CellText(4, InCol::FileName), QString("a.wma"));
    }

    void loadAndExport() {
        const QString data = tmp.path() + "/load.data";
        QVERIFY(Cli({"scan", music, "--save", data}).code == 0);
        const QString moved = music + "/Band-Tune.flac";
        QVERIFY(QFile::rename(moved, tmp.path() + "/away.flac"));
        const QString csv = tmp.path() + "/out.csv";
        const Run r = Cli({"load", data, "--export", csv});
        QVERIFY(QFile::rename(tmp.path() + "/away.flac", moved));
        QCOMPARE(r.code, 0);
        QVERIFY2(r.out.startsWith("rows: 2, missing: 1,"), qPrintable(r.out));
        QVERIFY(!r.err.isEmpty()); // the missing-file report
        QFile f(csv);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(f.readAll());
        QVERIFY(text.contains("Band-Tune.flac"));
        QVERIFY(text.contains("_#-/->"));

        const Run act = Cli({"load", data, "--act"});
        QCOMPARE(act.code, 0);
        QVERIFY2(act.out.startsWith("rows: 2, missing: 0,"), qPrintable(act.out));
    }

    void exportFormats() {
        for (const char* ext : {"txt", "csv", "xls", "xml", "htm"}) {
            const QString out = tmp.path() + "/e." + ext;
            const Run r = Cli({"scan", music, "--export", out});
            QCOMPARE(r.code, 0);
            QVERIFY2(QFileInfo(out).size() > 100, ext);
        }
        QCOMPARE(Cli({"scan", music, "--export", tmp.path() + "/e.doc"}).code, 1);
    }

    void badArguments() {
        QCOMPARE(Cli({"scan"}).code, 2);
        QCOMPARE(Cli({"scan", music, "--bogus"}).code, 2);
        const Run r = Cli({"scan", tmp.path() + "/missing"});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains("not a folder"));
        QCOMPARE(Cli({"load", tmp.path() + "/missing.data"}).code, 1);
        QCOMPARE(Cli({"scan", "--help"}).code, 0);
    }
};

QTEST_GUILESS_MAIN(TestScanCli)
#include "test_scan_cli.moc"
