// quillotune-cli playlist: the rows a read gives (text and JSON, the twelve column keys),
// and --write with and without --relative, with the counts of written and skipped.
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

QByteArray Read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

} // namespace

class TestPlaylistCli : public QObject {
    Q_OBJECT
    QTemporaryDir tmp;
    QString music;

private slots:
    void initTestCase() {
        music = QDir(tmp.path()).canonicalPath() + "/music";
        QDir().mkpath(music + "/sub");
        QVERIFY(QFile::copy(FixtureDir() + "/tone.mp3", music + "/Song.mp3"));
        QVERIFY(QFile::copy(FixtureDir() + "/tone.flac", music + "/sub/Tune.flac"));
    }

    void writeAndRead() {
        const Run w =
            Cli({"playlist", "--write", music + "/list.m3u", music + "/Song.mp3", music + "/sub/Tune.flac"});
        QCOMPARE(w.code, 0);
        QCOMPARE(w.out.trimmed(), QStringLiteral("written: 2, skipped: 0"));
        const QByteArray bytes = Read(music + "/list.m3u");
        QVERIFY(bytes.startsWith("#EXTM3U\r\n#EXTINF:"));
        QVERIFY(bytes.contains(",Song\r\n" + (music + "/Song.mp3\r\n").toUtf8()));
        QVERIFY(bytes.contains(",Tune\r\n" + (music + "/sub/Tune.flac\r\n").toUtf8()));

        const Run r = Cli({"playlist", music + "/list.m3u"});
        QCOMPARE(r.code, 0);
        const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0],
                 QStringLiteral("No\tFTag\tTF\tFileName\tType\tDurationS\tDurationMS\tSizeByte\tSizeMByte\t"
                                "PathFile\tPathPlaylist\tKeyInput"));
        const QStringList row = lines[1].split(u'\t');
        QCOMPARE(row.size(), 12);
        QCOMPARE(row[3], QStringLiteral("Song.mp3"));
        QCOMPARE(row[7], QString::number(QFileInfo(music + "/Song.mp3").size()));
        QCOMPARE(row[9], music);
        QCOMPARE(row[10], music + "/list.m3u");

        const Run j = Cli({"playlist", music + "/list.m3u", "--json"});
        QCOMPARE(j.code, 0);
        const QJsonArray a = QJsonDocument::fromJson(j.out.toUtf8()).array();
        QCOMPARE(a.size(), 2);
        const QJsonObject o = a[1].toObject();
        QCOMPARE(o.keys().size(), 12);
        for (const char* k : {"No", "FTag", "TF", "FileName", "Type", "DurationS", "DurationMS", "SizeByte",
                              "SizeMByte", "PathFile", "PathPlaylist", "KeyInput"})
            QVERIFY2(o.contains(QLatin1String(k)), k);
        QCOMPARE(o.value("FileName").toString(), QStringLiteral("Tune.flac"));
    }

    void relativePls() {
        const Run w = Cli({"playlist", "--write", music + "/sub/rel.pls", "--relative", music + "/Song.mp3",
                           music + "/sub/Tune.flac"});
        QCOMPARE(w.code, 0);
        QCOMPARE(w.out.trimmed(), QStringLiteral("written: 1, skipped: 1"));
        const QByteArray bytes = Read(music + "/sub/rel.pls");
        QVERIFY(bytes.startsWith("[playlist]\r\nFile1=" +
                                 (music + "/sub/Tune.flac\r\nTitle1=Tune.flac\r\nLength1=").toUtf8()));
        QVERIFY(bytes.endsWith("\r\nNumberOfEntries=1\r\nVersion=2\r\n"));
        const Run r = Cli({"playlist", music + "/sub/rel.pls", "--json"});
        QCOMPARE(QJsonDocument::fromJson(r.out.toUtf8()).array().size(), 1);
    }

    void nothingWrittenMakesNoFile() {
        const Run w =
            Cli({"playlist", "--write", music + "/sub/none.m3u", "--relative", music + "/Song.mp3"});
        QCOMPARE(w.code, 1);
        QCOMPARE(w.out.trimmed(), QStringLiteral("written: 0, skipped: 1"));
        QVERIFY(!QFile::exists(music + "/sub/none.m3u"));
    }

    void badArguments() {
        QCOMPARE(Cli({"playlist"}).code, 2);
        QCOMPARE(Cli({"playlist", "--write", music + "/x.txt", music + "/Song.mp3"}).code, 2);
        const Run missing = Cli({"playlist", music + "/nothing.m3u"});
        QCOMPARE(missing.code, 1);
        QVERIFY(missing.err.contains(QLatin1String("cannot read")));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistCli)
#include "test_playlist_cli.moc"
