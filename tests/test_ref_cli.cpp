// quillotune-cli ref: a reference list built from a saved data list, printed as text and
// JSON, checked against the disk after a file went away, and matched with the data list.
#include "CliRun.h"
#include "TestPaths.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Run = CliRun;

Run Cli(const QStringList& args) {
    return RunCli(args);
}

} // namespace

class TestRefCli : public QObject {
    Q_OBJECT
    QTemporaryDir tmp;
    QString music;

private slots:
    void initTestCase() {
        music = QDir(tmp.path()).canonicalPath() + "/music";
        QDir().mkpath(music);
        QVERIFY(QFile::copy(FixtureDir() + "/tone.mp3", music + "/Song.mp3"));
        QVERIFY(QFile::copy(FixtureDir() + "/tone.flac", music + "/Tune.flac"));
    }

    void buildPrintCheckMatch() {
        const QString data = tmp.path() + "/list.data";
        QCOMPARE(Cli({"scan", music, "--save", data}).code, 0);
        const Run b = Cli({"ref", "--from", data, "--save", tmp.path() + "/wanted"});
        QCOMPARE(b.code, 0);
        const QString ref = tmp.path() + "/wanted.ref";
        QCOMPARE(b.out.trimmed(), QStringLiteral("rows: 2, written: %1").arg(ref));

        const Run text = Cli({"ref", ref});
        QCOMPARE(text.code, 0);
        const QStringList lines = text.out.trimmed().split('\n');
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[0].startsWith("Bewertung\tFTag\tTF\tFileName"));
        QCOMPARE(lines[0].split('\t').size(), 16);

        const Run json = Cli({"ref", ref, "--json"});
        const QJsonArray rows = QJsonDocument::fromJson(json.out.toUtf8()).array();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0].toObject().value("Path").toString(), music);

        QCOMPARE(Cli({"ref", ref, "--check"}).out.trimmed(), QStringLiteral("rows: 2, found: 2, missing: 0"));
        QVERIFY(QFile::remove(music + "/Tune.flac"));
        QCOMPARE(Cli({"ref", ref, "--check"}).out.trimmed(), QStringLiteral("rows: 2, found: 1, missing: 1"));

        const Run m = Cli({"ref", ref, "--match", data, "--json"});
        QCOMPARE(m.code, 0);
        const QJsonObject o = QJsonDocument::fromJson(m.out.toUtf8()).object();
        QCOMPARE(o.value("matches").toInt(), 2);
        QCOMPARE(o.value("pairs").toArray().size(), 2);
    }

    void exportAndReplace() {
        const QString dir = QDir(tmp.path()).canonicalPath() + "/replace";
        const QString a = dir + "/a", b = dir + "/b";
        QDir().mkpath(a);
        QDir().mkpath(b);
        QVERIFY(QFile::copy(FixtureDir() + "/tone.mp3", a + "/New.mp3"));
        QVERIFY(QFile::copy(FixtureDir() + "/tone.flac", b + "/Old.flac"));
        const QString data = dir + "/a.data", refData = dir + "/b.data";
        QCOMPARE(Cli({"scan", a, "--save", data}).code, 0);
        QCOMPARE(Cli({"scan", b, "--save", refData}).code, 0);
        const QString ref = dir + "/b.ref";
        QCOMPARE(Cli({"ref", "--from", refData, "--save", ref}).code, 0);

        for (const char* ext : {"txt", "csv", "xls", "xml", "htm"}) {
            const QString out = dir + "/out." + QLatin1String(ext);
            const Run e = Cli({"ref", ref, "--export", out});
            QCOMPARE(e.code, 0);
            QVERIFY2(QFile(out).size() > 0, ext);
        }
        QCOMPARE(Cli({"ref", ref, "--export", dir + "/out.doc"}).code, 2);

        // Row 1 of the data list replaces row 1 of the reference list, keeping the name.
        const Run r = Cli({"ref", ref, "--replace", "1:1", "--data", data, "--keep-name"});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out.trimmed(), QStringLiteral("replaced: %1").arg(b + "/Old.flac"));
        QCOMPARE(QFile(b + "/Old.flac").size(), QFile(a + "/New.mp3").size());
        const QJsonArray rows = QJsonDocument::fromJson(Cli({"ref", ref, "--json"}).out.toUtf8()).array();
        QCOMPARE(rows[0].toObject().value("Type").toString(), QStringLiteral("MP3"));
        QCOMPARE(rows[0].toObject().value("FileName").toString(), QStringLiteral("Old.flac"));

        // A source that is not there fails and changes nothing.
        QVERIFY(QFile::remove(a + "/New.mp3"));
        QCOMPARE(Cli({"ref", ref, "--replace", "1:1", "--data", data}).code, 1);
        QVERIFY(QFile::exists(b + "/Old.flac"));
        QCOMPARE(Cli({"ref", ref, "--replace", "9:1", "--data", data}).code, 1);
        QCOMPARE(Cli({"ref", ref, "--replace", "x", "--data", data}).code, 2);
    }

    void badInput() {
        QCOMPARE(Cli({"ref"}).code, 2);
        QCOMPARE(Cli({"ref", tmp.path() + "/none.ref"}).code, 1);
        QFile junk(tmp.path() + "/junk.ref");
        QVERIFY(junk.open(QIODevice::WriteOnly));
        junk.write("\x00\x01garbage\r\n\t\t\t", 13);
        junk.close();
        QCOMPARE(Cli({"ref", junk.fileName(), "--check"}).code, 1);
        QCOMPARE(Cli({"ref", "--from", tmp.path() + "/none.data", "--save", tmp.path() + "/x"}).code, 1);
    }
};

QTEST_GUILESS_MAIN(TestRefCli)
#include "test_ref_cli.moc"
