// quillotune-cli tags and set, run as the user would run them.
#include "TagTestUtil.h"
#include "TestPaths.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

namespace {

struct Result {
    int code = -1;
    QString out, err;
};

Result Cli(const QStringList& args) {
    QProcess p;
    p.start(ProgramDir() + QStringLiteral("/quillotune-cli"), args);
    Result r;
    if (!p.waitForFinished(60000))
        return r;
    r.code = p.exitCode();
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

QJsonObject FirstFile(const Result& r) {
    return QJsonDocument::fromJson(r.out.toUtf8()).array().at(0).toObject();
}

} // namespace

class TestTagCli : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

private slots:
    void initTestCase() { QVERIFY(QFileInfo::exists(ProgramDir() + QStringLiteral("/quillotune-cli"))); }

    // The item list of MP4 and the INFO list and "id3 " chunk of WAV by their field names.
    void mp4AndWavSets() {
        const QString m4a = CopyFixture(QStringLiteral("tone.m4a"), m_dir.path(), QStringLiteral("c.m4a"));
        Result r = Cli({QStringLiteral("set"), m4a, QStringLiteral("Mp4Title=Titel ✓"),
                        QStringLiteral("mp4track=3/12"), QStringLiteral("Mp4Disc=1")});
        QCOMPARE(r.code, 0);
        r = Cli({QStringLiteral("tags"), m4a, QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        QJsonObject file = FirstFile(r);
        QCOMPARE(file.value(QStringLiteral("HasTag")).toString(), QStringLiteral("mp4"));
        QJsonObject set =
            file.value(QStringLiteral("Sets")).toObject().value(QStringLiteral("Mp4")).toObject();
        QCOMPARE(set.value(QStringLiteral("Mp4Title")).toString(), QStringLiteral("Titel ✓"));
        QCOMPARE(set.value(QStringLiteral("Mp4Track")).toString(), QStringLiteral("3/12"));
        QCOMPARE(set.value(QStringLiteral("Mp4Disc")).toString(), QStringLiteral("1"));
        QCOMPARE(set.value(QStringLiteral("Mp4Encoder")).toString(), QStringLiteral("Lavf59.27.100"));
        r = Cli({QStringLiteral("set"), m4a, QStringLiteral("Mp4Track=drei")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("drei")));
        r = Cli({QStringLiteral("set"), m4a, QStringLiteral("V2Title=x")});
        QCOMPARE(r.code, 1);

        const QString wav = CopyFixture(QStringLiteral("tone.wav"), m_dir.path(), QStringLiteral("c.wav"));
        r = Cli({QStringLiteral("set"), wav, QStringLiteral("WavArtist=Künstler"),
                 QStringLiteral("V2Title=Titel")});
        QCOMPARE(r.code, 0);
        file = FirstFile(Cli({QStringLiteral("tags"), wav, QStringLiteral("--json")}));
        QCOMPARE(file.value(QStringLiteral("HasTag")).toString(), QStringLiteral("id3v2.3, riff info"));
        const QJsonObject sets = file.value(QStringLiteral("Sets")).toObject();
        QCOMPARE(sets.value(QStringLiteral("Wav")).toObject().value(QStringLiteral("WavArtist")).toString(),
                 QStringLiteral("Künstler"));
        QCOMPARE(sets.value(QStringLiteral("V2")).toObject().value(QStringLiteral("V2Title")).toString(),
                 QStringLiteral("Titel"));
        r = Cli({QStringLiteral("set"), wav, QStringLiteral("Remove=V2")});
        QCOMPARE(r.code, 0);
        file = FirstFile(Cli({QStringLiteral("tags"), wav, QStringLiteral("--json")}));
        QCOMPARE(file.value(QStringLiteral("HasTag")).toString(), QStringLiteral("riff info"));
        QVERIFY(AudioUnchanged(wav, QStringLiteral("tone.wav"), 5));
        QVERIFY(AudioUnchanged(m4a, QStringLiteral("tone.m4a"), 9));
    }

    void helpAndBadArguments() {
        Result r = Cli({});
        QCOMPARE(r.code, 2);
        QVERIFY(r.out.contains(QStringLiteral("usage")));
        r = Cli({QStringLiteral("--help")});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains(QStringLiteral("tags FILE")));
        r = Cli({QStringLiteral("nosuchcommand")});
        QCOMPARE(r.code, 2);
        QVERIFY(r.err.contains(QStringLiteral("unknown command")));
        r = Cli({QStringLiteral("tags")});
        QCOMPARE(r.code, 2);
        r = Cli({QStringLiteral("tags"), QStringLiteral("--bogus"), QStringLiteral("x")});
        QCOMPARE(r.code, 2);
        r = Cli({QStringLiteral("set"), QStringLiteral("--help")});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains(QStringLiteral("Comment[I]")));
        r = Cli({QStringLiteral("set"), FixtureDir() + QStringLiteral("/tone.mp3")});
        QCOMPARE(r.code, 2);
    }

    void tagsJson() {
        const Result r = Cli({QStringLiteral("tags"), FixtureDir() + QStringLiteral("/tone.flac"),
                              FixtureDir() + QStringLiteral("/cover.jpg"), QStringLiteral("--json")});
        QCOMPARE(r.code, 1); // one file is no audio file
        const QJsonArray files = QJsonDocument::fromJson(r.out.toUtf8()).array();
        QCOMPARE(files.size(), 2);
        const QJsonObject flac = files.at(0).toObject();
        QCOMPARE(flac.value(QStringLiteral("Type")).toInt(), 4);
        QCOMPARE(flac.value(QStringLiteral("TypeName")).toString(), QStringLiteral("FLAC"));
        QCOMPARE(flac.value(QStringLiteral("Frequency")).toInt(), 44100);
        QVERIFY(flac.value(QStringLiteral("Sets")).toObject().contains(QStringLiteral("Flac")));
        QCOMPARE(files.at(1).toObject().value(QStringLiteral("Type")).toInt(), 0);
        QCOMPARE(files.at(1).toObject().value(QStringLiteral("TypeName")).toString(),
                 QStringLiteral("Datei"));
    }

    void setThenTags() {
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("cli.mp3"));
        const QString cover = FixtureDir() + QStringLiteral("/cover.jpg");
        Result r = Cli({QStringLiteral("set"), path, QStringLiteral("V2Title=Titel ✓"),
                        QStringLiteral("v1artist=Band"), QStringLiteral("V1GenreCode=17"),
                        QStringLiteral("Comment[1]=deu|Beschr|Text ✓"),
                        QStringLiteral("Lyric[1]=eng|lrc|[00:01.00]la"), QStringLiteral("V2Rating=4"),
                        QStringLiteral("V2Mood=froh"),
                        QStringLiteral("Picture[1]=") + cover + QStringLiteral("|Cover|3|"),
                        QStringLiteral("ApeYear=2001"), QStringLiteral("LyricsLyric=la la")});
        QVERIFY2(r.code == 0, qPrintable(r.err));
        r = Cli({QStringLiteral("tags"), path, QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonObject sets = FirstFile(r).value(QStringLiteral("Sets")).toObject();
        const QJsonObject v2 = sets.value(QStringLiteral("V2")).toObject();
        QCOMPARE(v2.value(QStringLiteral("V2Title")).toString(), QStringLiteral("Titel ✓"));
        QCOMPARE(v2.value(QStringLiteral("V2Rating")).toString(), QStringLiteral("4"));
        QCOMPARE(v2.value(QStringLiteral("V2Mood")).toString(), QStringLiteral("froh"));
        QCOMPARE(v2.value(QStringLiteral("Comments"))
                     .toArray()
                     .at(0)
                     .toObject()
                     .value(QStringLiteral("text"))
                     .toString(),
                 QStringLiteral("Text ✓"));
        const QJsonObject pic = v2.value(QStringLiteral("Pictures")).toArray().at(0).toObject();
        QCOMPARE(pic.value(QStringLiteral("description")).toString(), QStringLiteral("Cover"));
        QCOMPARE(pic.value(QStringLiteral("mime")).toString(), QStringLiteral("image/jpeg"));
        QCOMPARE(pic.value(QStringLiteral("size")).toInt(), ReadAll(cover).size());
        const QJsonObject v1 = sets.value(QStringLiteral("V1")).toObject();
        QCOMPARE(v1.value(QStringLiteral("V1Artist")).toString(), QStringLiteral("Band"));
        QCOMPARE(v1.value(QStringLiteral("V1Genre")).toString(), QStringLiteral("Rock"));
        QCOMPARE(sets.value(QStringLiteral("Ape")).toObject().value(QStringLiteral("ApeYear")).toString(),
                 QStringLiteral("2001"));
        QCOMPARE(
            sets.value(QStringLiteral("Lyrics")).toObject().value(QStringLiteral("LyricsLyric")).toString(),
            QStringLiteral("la la"));
        // The plain text form names the same fields.
        r = Cli({QStringLiteral("tags"), path});
        QVERIFY(r.out.contains(QStringLiteral("V2Title: Titel ✓")));
        // Strip a set.
        r = Cli({QStringLiteral("set"), path, QStringLiteral("Remove=Ape")});
        QCOMPARE(r.code, 0);
        r = Cli({QStringLiteral("tags"), path, QStringLiteral("--json")});
        QVERIFY(!FirstFile(r).value(QStringLiteral("Sets")).toObject().contains(QStringLiteral("Ape")));
    }

    void setFailures() {
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("fail.mp3"));
        const QByteArray before = ReadAll(path);
        Result r =
            Cli({QStringLiteral("set"), path, QStringLiteral("V2Title=x"), QStringLiteral("NoSuchField=1")});
        QCOMPARE(r.code, 2);
        QVERIFY(r.err.contains(QStringLiteral("NoSuchField")));
        r = Cli({QStringLiteral("set"), path, QStringLiteral("novalue")});
        QCOMPARE(r.code, 2);
        r = Cli({QStringLiteral("set"), path, QStringLiteral("Comment[1]=only text")});
        QCOMPARE(r.code, 2);
        r = Cli({QStringLiteral("set"), path, QStringLiteral("WmaTitle=x")});
        QCOMPARE(r.code, 1); // no WMA set on an MP3 file
        QVERIFY(!r.err.isEmpty());
        QCOMPARE(ReadAll(path), before);
        QFile::setPermissions(path, QFile::ReadOwner);
        r = Cli({QStringLiteral("set"), path, QStringLiteral("V2Title=x")});
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.contains(QStringLiteral("write-protected")), qPrintable(r.err));
        QCOMPARE(ReadAll(path), before);
        r = Cli({QStringLiteral("set"), m_dir.path() + QStringLiteral("/missing.mp3"),
                 QStringLiteral("V2Title=x")});
        QCOMPARE(r.code, 1);
    }
};

QTEST_GUILESS_MAIN(TestTagCli)
#include "test_tag_cli.moc"
