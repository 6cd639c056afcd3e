// TagEngine against an independent reader and writer: python3-mutagen. Tags written by
// the engine read back by mutagen with the same values (and a v2.3 tag without any UTF-8
// text), tags written by mutagen read correctly by the engine.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

namespace {

QString Script(const char* name) {
    return QString::fromUtf8(ReadAll(SourceDir() + QStringLiteral("/tests/support/") + QLatin1String(name)));
}

const QString kU = QStringLiteral("Grüße ✓ 日本");

QJsonObject Json(const QString& text) {
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

} // namespace

class TestTagMutagen : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

private slots:
    void initTestCase() {
        if (MutagenPython().isEmpty())
            QSKIP("python3-mutagen is not installed (scripts/setup.sh installs it)");
    }

    void engineId3v2ReadByMutagen() {
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("e2m.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        const TagField fields[] = {TagField::V2Genre,     TagField::V2Artist,     TagField::V2Title,
                                   TagField::V2Album,     TagField::V2Composer,   TagField::V2Conductor,
                                   TagField::V2Orchestra, TagField::V2OrigArtist, TagField::V2Copyright,
                                   TagField::V2EncodedBy};
        for (TagField f : fields)
            e.SetField(f, TagFieldName(f) + QLatin1Char(' ') + kU);
        e.SetV2Year(QStringLiteral("2004"));
        e.SetV2Track(QStringLiteral("3/12"));
        e.SetV2PublisherUrl(QStringLiteral("http://publisher.example/"));
        e.SetV2AudFileUrl(QStringLiteral("/music/texts/song.txt"));
        e.SetComment(1, QStringLiteral("deu"), QStringLiteral("Beschr ") + kU,
                     QStringLiteral("Kommentar ") + kU);
        e.SetComment(2, QStringLiteral("eng"), QString(), QStringLiteral("plain latin1 äöü"));
        e.SetLyric(1, QStringLiteral("eng"), QStringLiteral("lrc"), QStringLiteral("[00:01.00]Zeile ") + kU);
        e.SetLyric(2, QStringLiteral("deu"), QString(), QStringLiteral("Text ") + kU);
        e.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT5"));
        e.SetUserFrame(2, QStringLiteral("MOD"), QStringLiteral("MOOD") + kU);
        QVERIFY(
            e.AddPicture(FixtureDir() + QStringLiteral("/cover.jpg"), QStringLiteral("Bild ") + kU, 1, 3));
        QVERIFY(e.AddPicture(QString(), QStringLiteral("Link"), 2, 0, QStringLiteral("-->/pics/a.png")));
        QVERIFY(e.SaveV2(path));

        const QString out = RunPython(Script("mutagen_dump_id3.py"), {path});
        QVERIFY2(!out.startsWith(QLatin1String("ERROR")), qPrintable(out));
        const QJsonObject tag = Json(out);
        QCOMPARE(tag.value(QStringLiteral("version")).toArray().at(1).toInt(), 3);
        QMap<QString, QList<QJsonObject>> byId;
        for (const QJsonValue v : tag.value(QStringLiteral("frames")).toArray()) {
            const QJsonObject f = v.toObject();
            // A v2.3 tag never carries UTF-8 (encoding 3) text.
            QVERIFY2(f.value(QStringLiteral("encoding")).toInt() != 3,
                     qPrintable(f.value(QStringLiteral("id")).toString()));
            QVERIFY(f.value(QStringLiteral("encoding")).toInt() <= 1);
            byId[f.value(QStringLiteral("id")).toString()] << f;
        }
        auto text = [&](const char* id) {
            const QList<QJsonObject> l = byId.value(QLatin1String(id));
            return l.isEmpty() ? QString()
                               : l.first().value(QStringLiteral("text")).toArray().at(0).toString();
        };
        const char* ids[] = {"TCON", "TPE1", "TIT2", "TALB", "TCOM", "TPE3", "TPE2", "TOPE", "TCOP", "TENC"};
        for (int i = 0; i < 10; ++i)
            QCOMPARE(text(ids[i]), TagFieldName(fields[i]) + QLatin1Char(' ') + kU);
        QCOMPARE(text("TYER"), QStringLiteral("2004"));
        QCOMPARE(text("TRCK"), QStringLiteral("3/12"));
        QCOMPARE(byId.value(QStringLiteral("WPUB")).first().value(QStringLiteral("url")).toString(),
                 QStringLiteral("http://publisher.example/"));
        QCOMPARE(byId.value(QStringLiteral("WOAF")).first().value(QStringLiteral("url")).toString(),
                 QStringLiteral("/music/texts/song.txt"));
        const QList<QJsonObject> comm = byId.value(QStringLiteral("COMM"));
        QCOMPARE(comm.size(), 2);
        QCOMPARE(comm.at(0).value(QStringLiteral("lang")).toString(), QStringLiteral("deu"));
        QCOMPARE(comm.at(0).value(QStringLiteral("desc")).toString(), QStringLiteral("Beschr ") + kU);
        QCOMPARE(comm.at(0).value(QStringLiteral("text")).toArray().at(0).toString(),
                 QStringLiteral("Kommentar ") + kU);
        QCOMPARE(comm.at(1).value(QStringLiteral("text")).toArray().at(0).toString(),
                 QStringLiteral("plain latin1 äöü"));
        QCOMPARE(comm.at(1).value(QStringLiteral("encoding")).toInt(), 0);
        const QList<QJsonObject> uslt = byId.value(QStringLiteral("USLT"));
        QCOMPARE(uslt.size(), 2);
        QCOMPARE(uslt.at(0).value(QStringLiteral("desc")).toString(), QStringLiteral("lrc"));
        QCOMPARE(uslt.at(0).value(QStringLiteral("text")).toString(),
                 QStringLiteral("[00:01.00]Zeile ") + kU);
        QCOMPARE(uslt.at(1).value(QStringLiteral("text")).toString(), QStringLiteral("Text ") + kU);
        const QList<QJsonObject> txxx = byId.value(QStringLiteral("TXXX"));
        QCOMPARE(txxx.size(), 2);
        QCOMPARE(txxx.at(0).value(QStringLiteral("desc")).toString(), QStringLiteral("QLT"));
        QCOMPARE(txxx.at(0).value(QStringLiteral("text")).toArray().at(0).toString(), QStringLiteral("QLT5"));
        QCOMPARE(txxx.at(1).value(QStringLiteral("text")).toArray().at(0).toString(),
                 QStringLiteral("MOOD") + kU);
        const QList<QJsonObject> apic = byId.value(QStringLiteral("APIC"));
        QCOMPARE(apic.size(), 2);
        QCOMPARE(apic.at(0).value(QStringLiteral("desc")).toString(), QStringLiteral("Bild ") + kU);
        QCOMPARE(apic.at(0).value(QStringLiteral("mime")).toString(), QStringLiteral("image/jpeg"));
        QCOMPARE(apic.at(0).value(QStringLiteral("size")).toInt(),
                 ReadAll(FixtureDir() + QStringLiteral("/cover.jpg")).size());
        QCOMPARE(apic.at(1).value(QStringLiteral("mime")).toString(), QStringLiteral("-->/pics/a.png"));
    }

    void engineTrailerTagsReadByMutagen() {
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("e2m-ape.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetApeTitle(QStringLiteral("Titel ") + kU);
        e.SetApeArtist(QStringLiteral("Künstler"));
        e.SetApeYear(QStringLiteral("2001"));
        e.SetApeCopyright(QStringLiteral("(c) ") + kU);
        e.SetV1Title(QStringLiteral("Süß"));
        e.SetV1Artist(QStringLiteral("Band"));
        e.SetV1Year(QStringLiteral("1970"));
        e.SetV1Track(QStringLiteral("12"));
        e.SetV1GenreCode(8);
        e.SetLyricsLyric(QStringLiteral("la la"));
        QVERIFY(e.SaveV1(path));
        QVERIFY(e.SaveApe(path));
        QVERIFY(e.SaveLyrics(path));
        const QJsonObject ape =
            Json(RunPython(Script("mutagen_dump_other.py"), {QStringLiteral("ape"), path}));
        QCOMPARE(ape.value(QStringLiteral("Title")).toString(), QStringLiteral("Titel ") + kU);
        QCOMPARE(ape.value(QStringLiteral("Artist")).toString(), QStringLiteral("Künstler"));
        QCOMPARE(ape.value(QStringLiteral("Year")).toString(), QStringLiteral("2001"));
        QCOMPARE(ape.value(QStringLiteral("Copyright")).toString(), QStringLiteral("(c) ") + kU);
        const QJsonObject v1 = Json(RunPython(Script("mutagen_dump_other.py"), {QStringLiteral("v1"), path}));
        QCOMPARE(v1.value(QStringLiteral("TIT2")).toString(), QStringLiteral("Süß"));
        QCOMPARE(v1.value(QStringLiteral("TPE1")).toString(), QStringLiteral("Band"));
        QCOMPARE(v1.value(QStringLiteral("TRCK")).toString(), QStringLiteral("12"));
        QCOMPARE(v1.value(QStringLiteral("TCON")).toString(), QStringLiteral("8")); // Jazz
    }

    void engineTypicalReadByMutagen_data() {
        QTest::addColumn<QString>("fixture");
        QTest::newRow("flac") << "tone.flac";
        QTest::newRow("ogg") << "tone.ogg";
        QTest::newRow("opus") << "tone-opus.oga";
        QTest::newRow("wma") << "tone.wma";
    }
    void engineTypicalReadByMutagen() {
        QFETCH(QString, fixture);
        const QString path = CopyFixture(fixture, m_dir.path(), QStringLiteral("e2m-") + fixture);
        TagEngine e;
        const int type = e.OpenFile(path);
        QVERIFY(type != 0);
        const TagSet set = type == 2 ? TagSet::Wma : type == 4 ? TagSet::Flac : TagSet::Ogg;
        for (int i = 0; i < kTagFieldCount; ++i) {
            const auto f = static_cast<TagField>(i);
            if (TagFieldSet(f) == set)
                e.SetField(f, TagFieldName(f) + QLatin1Char(' ') + kU);
        }
        QVERIFY(type == 2 ? e.SaveWma(path) : type == 4 ? e.SaveFlac(path) : e.SaveOgg(path));
        const QJsonObject tags =
            Json(RunPython(Script("mutagen_dump_other.py"),
                           {type == 2 ? QStringLiteral("asf") : QStringLiteral("xiph"), path}));
        auto first = [&](const char* key) {
            return tags.value(QLatin1String(key)).toArray().at(0).toString();
        };
        if (type == 2) {
            QCOMPARE(first("Title"), QStringLiteral("WmaTitle ") + kU);
            QCOMPARE(first("Author"), QStringLiteral("WmaArtist ") + kU);
            QCOMPARE(first("WM/AlbumTitle"), QStringLiteral("WmaAlbum ") + kU);
            QCOMPARE(first("WM/Genre"), QStringLiteral("WmaGenre ") + kU);
            QCOMPARE(first("WM/Year"), QStringLiteral("WmaYear ") + kU);
            QCOMPARE(first("WM/Composer"), QStringLiteral("WmaExtra8 ") + kU);
            QCOMPARE(first("WM/Mood"), QStringLiteral("WmaMood ") + kU);
            QCOMPARE(first("WM/Publisher"), QStringLiteral("WmaExtra5 ") + kU);
            QCOMPARE(first("Copyright"), QStringLiteral("WmaExtra7 ") + kU);
            QCOMPARE(first("Description"), QStringLiteral("WmaComment ") + kU);
        } else {
            const QString p = type == 4 ? QStringLiteral("Flac") : QStringLiteral("Ogg");
            const char* keys[] = {"GENRE",     "DATE",    "TRACKNUMBER", "ARTIST",    "TITLE",
                                  "ALBUM",     "COMMENT", "DESCRIPTION", "PERFORMER", "VENDOR",
                                  "COPYRIGHT", "CONTACT", "LICENSE",     "LOCATION"};
            const char* names[] = {"Genre",     "Year",    "Track",       "Artist",    "Title",
                                   "Album",     "Comment", "Description", "Performer", "Vendor",
                                   "Copyright", "Contact", "License",     "Location"};
            for (int i = 0; i < 14; ++i)
                QCOMPARE(first(keys[i]), p + QLatin1String(names[i]) + QLatin1Char(' ') + kU);
        }
        QVERIFY(AudioUnchanged(path, fixture, type));
    }

    void mutagenId3v2ReadByEngine_data() {
        QTest::addColumn<QString>("kind");
        QTest::newRow("v2.3 UTF-16") << "id3v23";
        QTest::newRow("v2.4 UTF-8") << "id3v24";
    }
    void mutagenId3v2ReadByEngine() {
        QFETCH(QString, kind);
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), kind + QStringLiteral(".mp3"));
        const QString r = RunPython(Script("mutagen_write.py"), {kind, path});
        QVERIFY2(!r.startsWith(QLatin1String("ERROR")), qPrintable(r));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(e.HasV2());
        QCOMPARE(e.V2Version(),
                 kind == QLatin1String("id3v23") ? QStringLiteral("2.3") : QStringLiteral("2.4"));
        QCOMPARE(e.V2Title(), QStringLiteral("Titel ") + kU);
        QCOMPARE(e.V2Artist(), QStringLiteral("Künstler ") + kU);
        QCOMPARE(e.V2Album(), QStringLiteral("Album ") + kU);
        QCOMPARE(e.V2Genre(), QStringLiteral("Jazz"));
        QCOMPARE(e.V2Year(), QStringLiteral("1987"));
        QCOMPARE(e.V2Track(), QStringLiteral("4/9"));
        QCOMPARE(e.TrackNumberValue(), QStringLiteral("4"));
        QCOMPARE(e.V2Composer(), QStringLiteral("Komponist ") + kU);
        QCOMPARE(e.V2Conductor(), QStringLiteral("Dirigent ") + kU);
        QCOMPARE(e.V2Orchestra(), QStringLiteral("Orchester ") + kU);
        QCOMPARE(e.V2OrigArtist(), QStringLiteral("Original ") + kU);
        QCOMPARE(e.V2Copyright(), QStringLiteral("(c) ") + kU);
        QCOMPARE(e.V2EncodedBy(), QStringLiteral("Encoder ") + kU);
        QCOMPARE(e.V2PublisherUrl(), QStringLiteral("http://publisher.example/"));
        QCOMPARE(e.V2AudFileUrl(), QStringLiteral("http://file.example/x.mp3"));
        QCOMPARE(e.CommentCount(), 2);
        // mutagen orders the frames its own way: find the comments by their language.
        const int deu = e.CommentLanguage(1) == QLatin1String("deu") ? 1 : 2;
        QCOMPARE(e.CommentLanguage(deu), QStringLiteral("deu"));
        QCOMPARE(e.CommentDescription(deu), QStringLiteral("eins"));
        QCOMPARE(e.CommentText(deu), QStringLiteral("Kommentar ") + kU);
        QCOMPARE(e.CommentText(3 - deu), QStringLiteral("Comment two"));
        QCOMPARE(e.LyricCount(), 1);
        QCOMPARE(e.LyricDescription(1), QStringLiteral("lrc"));
        QCOMPARE(e.LyricText(1), QStringLiteral("[00:01.00]Zeile ") + kU);
        QCOMPARE(e.UserFrameCount(), 2);
        QCOMPARE(e.V2Rating(), QStringLiteral("7"));
        QCOMPARE(e.V2Mood(), QStringLiteral("ruhig ") + kU);
        QCOMPARE(e.PictureCount(), 1);
        QCOMPARE(e.PictureMime(1), QStringLiteral("image/png"));
        QCOMPARE(e.PictureDescription(1), QStringLiteral("Bild ") + kU);
        QCOMPARE(e.PictureSize(1), 104);
        // And written back by the engine, the tag keeps its version and all it held.
        e.SetV2Title(QStringLiteral("Neu ✓"));
        QVERIFY(e.SaveV2(path));
        const QJsonObject tag = Json(RunPython(Script("mutagen_dump_id3.py"), {path}));
        QCOMPARE(tag.value(QStringLiteral("version")).toArray().at(1).toInt(),
                 kind == QLatin1String("id3v23") ? 3 : 4);
        int comments = 0;
        for (const QJsonValue v : tag.value(QStringLiteral("frames")).toArray()) {
            const QJsonObject f = v.toObject();
            if (kind == QLatin1String("id3v23"))
                QVERIFY(f.value(QStringLiteral("encoding")).toInt() != 3);
            if (f.value(QStringLiteral("id")).toString() == QLatin1String("TIT2"))
                QCOMPARE(f.value(QStringLiteral("text")).toArray().at(0).toString(), QStringLiteral("Neu ✓"));
            if (f.value(QStringLiteral("id")).toString() == QLatin1String("COMM"))
                ++comments;
        }
        QCOMPARE(comments, 2);
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.mp3"), 1));
    }

    void mutagenApeReadByEngine() {
        const QString path = CopyFixture(QStringLiteral("tone.mpc"), m_dir.path(), QStringLiteral("m2e.mpc"));
        QVERIFY(!RunPython(Script("mutagen_write.py"), {QStringLiteral("ape"), path})
                     .startsWith(QLatin1String("ERROR")));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 7);
        QVERIFY(e.HasApe());
        QCOMPARE(e.ApeVersion(), QStringLiteral("2.0"));
        QCOMPARE(e.ApeTitle(), QStringLiteral("Title ") + kU);
        QCOMPARE(e.ApeArtist(), QStringLiteral("Artist ") + kU);
        QCOMPARE(e.ApeAlbum(), QStringLiteral("Album ") + kU);
        QCOMPARE(e.ApeYear(), QStringLiteral("Year ") + kU);
        QCOMPARE(e.ApeTrack(), QStringLiteral("Track ") + kU);
        QCOMPARE(e.ApeGenre(), QStringLiteral("Genre ") + kU);
        QCOMPARE(e.ApeComment(), QStringLiteral("Comment ") + kU);
        QCOMPARE(e.ApeCopyright(), QStringLiteral("Copyright ") + kU);
    }

    void mutagenTypicalReadByEngine_data() {
        QTest::addColumn<QString>("fixture");
        QTest::newRow("flac") << "tone.flac";
        QTest::newRow("ogg") << "tone.ogg";
        QTest::newRow("wma") << "tone.wma";
    }
    void mutagenTypicalReadByEngine() {
        QFETCH(QString, fixture);
        const QString path = CopyFixture(fixture, m_dir.path(), QStringLiteral("m2e-") + fixture);
        const bool wma = fixture.endsWith(QLatin1String(".wma"));
        const QString r = RunPython(Script("mutagen_write.py"),
                                    {wma ? QStringLiteral("asf") : QStringLiteral("xiph"), path});
        QVERIFY2(!r.startsWith(QLatin1String("ERROR")), qPrintable(r));
        TagEngine e;
        const int type = e.OpenFile(path);
        if (wma) {
            QCOMPARE(type, 2);
            QCOMPARE(e.WmaTitle(), QStringLiteral("Titel ") + kU);
            QCOMPARE(e.WmaArtist(), QStringLiteral("Künstler ") + kU);
            QCOMPARE(e.WmaAlbum(), QStringLiteral("Album ") + kU);
            QCOMPARE(e.WmaGenre(), QStringLiteral("Genre ") + kU);
            QCOMPARE(e.WmaYear(), QStringLiteral("1999"));
            QCOMPARE(e.WmaTrack(), QStringLiteral("5"));
            QCOMPARE(e.WmaExtra8(), QStringLiteral("Komponist ") + kU);
            QCOMPARE(e.WmaMood(), QStringLiteral("Stimmung ") + kU);
            return;
        }
        const bool flac = type == 4;
        QCOMPARE(flac ? e.FlacTitle() : e.OggTitle(), QStringLiteral("TITLE ") + kU);
        QCOMPARE(flac ? e.FlacArtist() : e.OggArtist(), QStringLiteral("ARTIST ") + kU);
        QCOMPARE(flac ? e.FlacYear() : e.OggYear(), QStringLiteral("DATE ") + kU);
        QCOMPARE(flac ? e.FlacTrack() : e.OggTrack(), QStringLiteral("TRACKNUMBER ") + kU);
        QCOMPARE(flac ? e.FlacLocation() : e.OggLocation(), QStringLiteral("LOCATION ") + kU);
        QCOMPARE(flac ? e.FlacVendor() : e.OggVendor(), QStringLiteral("VENDOR ") + kU);
    }
};

QTEST_GUILESS_MAIN(TestTagMutagen)
#include "test_tag_mutagen.moc"
