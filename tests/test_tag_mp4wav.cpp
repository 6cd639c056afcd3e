// The tags inside MP4 and WAV containers against an independent reader: items written
// by python3-mutagen read by the engine, the engine's writes read back by mutagen, and
// every atom, item and chunk that a save does not touch left exactly as it was.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

namespace {

const QString kU = QStringLiteral("Grüße ✓ 日本");

QJsonObject Run(const char* verb, const QString& path) {
    const QString script =
        QString::fromUtf8(ReadAll(SourceDir() + QStringLiteral("/tests/support/mutagen_mp4wav.py")));
    const QString out = RunPython(script, {QString::fromLatin1(verb), path});
    if (out.startsWith(QLatin1String("ERROR")))
        qWarning("%s", qPrintable(out));
    return QJsonDocument::fromJson(out.toUtf8()).object();
}

QString First(const QJsonObject& items, const QString& key) {
    const QJsonValue v = items.value(key);
    return v.isArray() ? v.toArray().at(0).toString() : v.toString();
}

// Everything of `before` but the given keys is in `after` with the same value.
void SameExcept(const QJsonObject& before, const QJsonObject& after, const QStringList& changed) {
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (changed.contains(it.key()))
            continue;
        QVERIFY2(after.contains(it.key()), qPrintable(it.key()));
        QVERIFY2(after.value(it.key()) == it.value(), qPrintable(it.key()));
    }
}

QStringList Leftovers(const QString& dir) {
    return QDir(dir).entryList({QStringLiteral(".*qlt-tmp-*")}, QDir::Files | QDir::Hidden);
}

} // namespace

class TestTagMp4Wav : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

private slots:
    void initTestCase() {
        if (MutagenPython().isEmpty())
            QSKIP("python3-mutagen is not installed (scripts/setup.sh installs it)");
    }

    void mp4ItemsWrittenByMutagenAreRead() {
        const QString path =
            CopyFixture(QStringLiteral("tone.m4a"), m_dir.path(), QStringLiteral("read.m4a"));
        Run("mp4write", path);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 9);
        QVERIFY(e.HasMp4());
        QCOMPARE(HasTagText(e), QStringLiteral("mp4"));
        QCOMPARE(e.Mp4Title(), QStringLiteral("Titel ") + kU);
        QCOMPARE(e.Mp4Artist(), QStringLiteral("Künstler ") + kU);
        QCOMPARE(e.Mp4Album(), QStringLiteral("Album ") + kU);
        QCOMPARE(e.Mp4Genre(), QStringLiteral("Genre ") + kU);
        QCOMPARE(e.Mp4Year(), QStringLiteral("1987"));
        QCOMPARE(e.Mp4Track(), QStringLiteral("4/9"));
        QCOMPARE(e.Mp4Disc(), QStringLiteral("1/2"));
        QCOMPARE(e.Mp4Comment(), QStringLiteral("Kommentar ") + kU);
        QCOMPARE(e.Mp4Description(), QStringLiteral("Beschreibung ") + kU);
        QCOMPARE(e.Mp4AlbumArtist(), QStringLiteral("Albuminterpret ") + kU);
        QCOMPARE(e.Mp4Encoder(), QStringLiteral("Lavf59.27.100"));
        QCOMPARE(e.Mp4Copyright(), QStringLiteral("(c) ") + kU);
        QCOMPARE(e.Mp4Composer(), QStringLiteral("Komponist ") + kU);
        QCOMPARE(e.Mp4Grouping(), QStringLiteral("Gruppe ") + kU);
        QCOMPARE(e.TrackNumberValue(), QStringLiteral("4"));
        // The data list's typical columns in their order: genre, year, track, ...
        QCOMPARE(TypicalColumnText(e, 9, 0), e.Mp4Genre());
        QCOMPARE(TypicalColumnText(e, 9, 2), QStringLiteral("4/9"));
        QCOMPARE(TypicalColumnText(e, 9, 13), QStringLiteral("1/2"));
    }

    void mp4SaveKeepsEveryOtherItemAndAtom() {
        const QString path =
            CopyFixture(QStringLiteral("tone.m4a"), m_dir.path(), QStringLiteral("keep.m4a"));
        Run("mp4write", path);
        const QJsonObject before = Run("mp4dump", path);
        QVERIFY(!before.isEmpty());
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 9);
        e.SetMp4Title(QStringLiteral("Neuer Titel ") + kU);
        e.SetMp4Track(QStringLiteral("5/10"));
        e.SetMp4Comment(QString()); // clears the item
        e.SetMp4Grouping(QStringLiteral("Neue Gruppe"));
        QVERIFY2(e.SaveMp4(path), qPrintable(e.LastError()));
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
        const QJsonObject after = Run("mp4dump", path);
        const QJsonObject items = after.value(QStringLiteral("items")).toObject();
        QCOMPARE(First(items, QStringLiteral("©nam")), QStringLiteral("Neuer Titel ") + kU);
        QCOMPARE(items.value(QStringLiteral("trkn")).toArray().at(0).toArray(), (QJsonArray{5, 10}));
        QCOMPARE(First(items, QStringLiteral("©grp")), QStringLiteral("Neue Gruppe"));
        QVERIFY(!items.contains(QStringLiteral("©cmt")));
        SameExcept(
            before.value(QStringLiteral("items")).toObject(), items,
            {QStringLiteral("©nam"), QStringLiteral("trkn"), QStringLiteral("©cmt"), QStringLiteral("©grp")});
        // The audio stays, byte for byte, and the file still plays.
        QVERIFY(after.value(QStringLiteral("length")).toBool());
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.m4a"), 9));
        const QJsonArray atomsBefore = before.value(QStringLiteral("atoms")).toArray();
        const QJsonArray atomsAfter = after.value(QStringLiteral("atoms")).toArray();
        QCOMPARE(atomsAfter.size(), atomsBefore.size());
        for (int i = 0; i < atomsBefore.size(); ++i) {
            QCOMPARE(atomsAfter.at(i).toArray().at(0), atomsBefore.at(i).toArray().at(0));
            if (atomsBefore.at(i).toArray().at(0).toString() != QLatin1String("moov"))
                QCOMPARE(atomsAfter.at(i), atomsBefore.at(i));
        }
        // The engine reads what it wrote, and what it did not touch.
        QCOMPARE(e.OpenFile(path), 9);
        QCOMPARE(e.Mp4Title(), QStringLiteral("Neuer Titel ") + kU);
        QCOMPARE(e.Mp4Track(), QStringLiteral("5/10"));
        QCOMPARE(e.Mp4Comment(), QString());
        QCOMPARE(e.Mp4Artist(), QStringLiteral("Künstler ") + kU);
    }

    void mp4AllFieldsReadBackByMutagen() {
        const QString path = CopyFixture(QStringLiteral("tone.m4a"), m_dir.path(), QStringLiteral("all.m4a"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 9);
        const TagField* f = TypicalFields(TagSet::Mp4);
        for (int i = 0; i < kTypicalFieldCount; ++i)
            e.SetField(f[i], TagFieldName(f[i]) + QLatin1Char(' ') + kU);
        e.SetMp4Track(QStringLiteral("7"));
        e.SetMp4Disc(QStringLiteral("2/3"));
        QVERIFY2(e.SaveMp4(path), qPrintable(e.LastError()));
        const QJsonObject items = Run("mp4dump", path).value(QStringLiteral("items")).toObject();
        const char* keys[] = {"©gen", "©day", nullptr, "©ART", "©nam", "©alb", "©cmt",
                              "desc", "aART", "©too",  "cprt", "©wrt", "©grp", nullptr};
        for (int i = 0; i < kTypicalFieldCount; ++i) {
            if (keys[i])
                QCOMPARE(First(items, QString::fromUtf8(keys[i])),
                         TagFieldName(f[i]) + QLatin1Char(' ') + kU);
        }
        QCOMPARE(items.value(QStringLiteral("trkn")).toArray().at(0).toArray(), (QJsonArray{7, 0}));
        QCOMPARE(items.value(QStringLiteral("disk")).toArray().at(0).toArray(), (QJsonArray{2, 3}));
    }

    void mp4TrackMustBeANumber() {
        const QString path = CopyFixture(QStringLiteral("tone.m4a"), m_dir.path(), QStringLiteral("bad.m4a"));
        const QByteArray before = ReadAll(path);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 9);
        e.SetMp4Title(QStringLiteral("x"));
        e.SetMp4Track(QStringLiteral("drei"));
        QCOMPARE(e.SaveMp4(path), 0);
        QVERIFY(e.LastError().contains(QLatin1String("drei")));
        QCOMPARE(ReadAll(path), before);
        e.SetMp4Track(QStringLiteral(" 3 / 12 "));
        QVERIFY(e.SaveMp4(path));
        QCOMPARE(e.OpenFile(path), 9);
        QCOMPARE(e.Mp4Track(), QStringLiteral("3/12"));
    }

    void wavTagsWrittenByOthersAreRead() {
        const QString path =
            CopyFixture(QStringLiteral("tone.wav"), m_dir.path(), QStringLiteral("read.wav"));
        Run("wavwrite", path);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 5);
        QVERIFY(e.HasV2());
        QVERIFY(e.HasWav());
        QCOMPARE(HasTagText(e), QStringLiteral("id3v2.3, riff info"));
        QCOMPARE(e.V2Title(), QStringLiteral("Titel ") + kU);
        QCOMPARE(e.V2Composer(), QStringLiteral("Komponist ") + kU);
        QCOMPARE(e.CommentText(1), QStringLiteral("Kommentar ") + kU);
        QCOMPARE(e.V2Rating(), QStringLiteral("7"));
        QCOMPARE(e.PictureCount(), 1);
        QCOMPARE(e.WavTitle(), QStringLiteral("Titel ") + kU);
        QCOMPARE(e.WavArtist(), QStringLiteral("Künstler ") + kU);
        QCOMPARE(e.WavAlbum(), QStringLiteral("Album ") + kU);
        QCOMPARE(e.WavGenre(), QStringLiteral("Jazz"));
        QCOMPARE(e.WavYear(), QStringLiteral("1987"));
        QCOMPARE(e.WavTrack(), QStringLiteral("4"));
        QCOMPARE(e.WavComment(), QStringLiteral("Kommentar ") + kU);
        QCOMPARE(e.WavEngineer(), QStringLiteral("Toningenieur ") + kU);
        QCOMPARE(e.WavCopyright(), QStringLiteral("(c) ") + kU);
        QCOMPARE(e.WavKeywords(), QStringLiteral("Stichwort"));
        QCOMPARE(e.TrackNumberValue(), QStringLiteral("4"));
    }

    void wavSavesKeepEveryOtherChunkAndField() {
        const QString path =
            CopyFixture(QStringLiteral("tone.wav"), m_dir.path(), QStringLiteral("keep.wav"));
        Run("wavwrite", path);
        const QJsonObject before = Run("wavdump", path);
        QVERIFY(!before.isEmpty());
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 5);
        e.SetV2Title(QStringLiteral("Neuer Titel ") + kU);
        QVERIFY2(e.SaveV2(path), qPrintable(e.LastError()));
        e.SetWavArtist(QStringLiteral("Neuer Künstler ") + kU);
        e.SetWavKeywords(QString());
        QVERIFY2(e.SaveWav(path), qPrintable(e.LastError()));
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
        const QJsonObject after = Run("wavdump", path);
        const QJsonObject frames = after.value(QStringLiteral("frames")).toObject();
        const QJsonObject info = after.value(QStringLiteral("info")).toObject();
        QCOMPARE(First(frames, QStringLiteral("TIT2")), QStringLiteral("Neuer Titel ") + kU);
        SameExcept(before.value(QStringLiteral("frames")).toObject(), frames, {QStringLiteral("TIT2")});
        QCOMPARE(after.value(QStringLiteral("version")).toInt(), 3);
        QCOMPARE(info.value(QStringLiteral("IART")).toString(), QStringLiteral("Neuer Künstler ") + kU);
        QVERIFY(!info.contains(QStringLiteral("IKEY")));
        SameExcept(before.value(QStringLiteral("info")).toObject(), info,
                   {QStringLiteral("IART"), QStringLiteral("IKEY")});
        // fmt, data and the chunk of our own, unchanged and in their order.
        QCOMPARE(after.value(QStringLiteral("chunks")), before.value(QStringLiteral("chunks")));
        QVERIFY(after.value(QStringLiteral("length")).toBool());
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.wav"), 5));
        QCOMPARE(e.OpenFile(path), 5);
        QCOMPARE(e.V2Title(), QStringLiteral("Neuer Titel ") + kU);
        QCOMPARE(e.WavArtist(), QStringLiteral("Neuer Künstler ") + kU);
        QCOMPARE(e.WavTitle(), QStringLiteral("Titel ") + kU);
    }

    void wavId3ChunkIsStrippedAlone() {
        const QString path =
            CopyFixture(QStringLiteral("tone.wav"), m_dir.path(), QStringLiteral("strip.wav"));
        Run("wavwrite", path);
        const QJsonObject before = Run("wavdump", path);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 5);
        QVERIFY(e.RemoveV2(path));
        QVERIFY(!e.HasV2());
        QCOMPARE(e.V2Title(), QString());
        const QJsonObject after = Run("wavdump", path);
        QVERIFY(after.value(QStringLiteral("frames")).toObject().isEmpty());
        QCOMPARE(after.value(QStringLiteral("info")), before.value(QStringLiteral("info")));
        QCOMPARE(after.value(QStringLiteral("chunks")), before.value(QStringLiteral("chunks")));
        QCOMPARE(e.OpenFile(path), 5);
        QVERIFY(!e.HasV2());
        QCOMPARE(HasTagText(e), QStringLiteral("riff info"));
        // Stripping what is not there succeeds and changes nothing.
        const QByteArray bytes = ReadAll(path);
        QVERIFY(e.RemoveV2(path));
        QCOMPARE(ReadAll(path), bytes);
    }

    void wavInfoInTheOldCodePage() {
        // Older programs write INFO texts in Windows-1252.
        const QString path = CopyFixture(QStringLiteral("tone.wav"), m_dir.path(), QStringLiteral("cp.wav"));
        const QByteArray original = ReadAll(path);
        // The fixture's own INFO list goes; ours takes its place at the end.
        QByteArray data = original.left(12);
        for (qsizetype pos = 12; pos + 8 <= original.size();) {
            const auto* u = reinterpret_cast<const unsigned char*>(original.constData() + pos + 4);
            const qsizetype size = qsizetype(u[0]) | (u[1] << 8) | (u[2] << 16) | (qsizetype(u[3]) << 24);
            const qsizetype whole = 8 + size + (size & 1);
            if (original.mid(pos, 4) != "LIST")
                data += original.mid(pos, whole);
            pos += whole;
        }
        const QByteArray text("M\xFC"
                              "ller \x80\0",
                              10);
        QByteArray info = QByteArray("INFOIART") + char(text.size()) + QByteArray(3, '\0') + text;
        QByteArray list = QByteArray("LIST") + char(info.size()) + QByteArray(3, '\0') + info;
        data += list;
        const quint32 riff = quint32(data.size() - 8);
        for (int i = 0; i < 4; ++i)
            data[4 + i] = char((riff >> (8 * i)) & 0xFF);
        QVERIFY(WriteAll(path, data));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 5);
        QCOMPARE(e.WavArtist(), QStringLiteral("Müller €"));
    }
};

QTEST_GUILESS_MAIN(TestTagMp4Wav)
#include "test_tag_mp4wav.moc"
