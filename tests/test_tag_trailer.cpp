// TagEngine: ID3v2, APE, Lyrics3 and ID3v1 together on MP3 and MPC files, with the tags
// behind the audio in every order real files have them.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

namespace {

struct Blocks {
    QByteArray head, audio, ape, lyrics, v1;
};

void StageFour(TagEngine& e, const QString& tag) {
    e.SetV1Title(QStringLiteral("v1 ") + tag);
    e.SetV1Artist(QStringLiteral("Künstler"));
    e.SetV2Title(QStringLiteral("v2 ") + tag + QStringLiteral(" ✓"));
    e.SetApeTitle(QStringLiteral("ape ") + tag + QStringLiteral(" ✓"));
    e.SetLyricsTitle(QStringLiteral("lyr ") + tag);
    e.SetLyricsLyric(QStringLiteral("[00:01]La la la\r\nZweite Zeile ✓\r\n"));
}

// Splits a file written by the engine with all four sets into its parts.
Blocks Split(const QByteArray& file, const QByteArray& audio) {
    Blocks b;
    const qsizetype audioAt = file.indexOf(audio);
    b.head = file.left(audioAt);
    b.audio = audio;
    QByteArray rest = file.mid(audioAt + audio.size());
    b.v1 = rest.right(128);
    rest.chop(128);
    const qsizetype lyr = rest.indexOf("LYRICSBEGIN");
    b.ape = rest.left(lyr);
    b.lyrics = rest.mid(lyr);
    return b;
}

} // namespace

class TestTagTrailer : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

    void CheckAll(TagEngine& e, const QString& path, int type, bool v1, bool v2, bool ape, bool lyrics,
                  const QString& tag) {
        QCOMPARE(e.OpenFile(path), type);
        QCOMPARE(e.HasV1(), v1);
        QCOMPARE(e.HasV2(), v2);
        QCOMPARE(e.HasApe(), ape);
        QCOMPARE(e.HasLyrics(), lyrics);
        if (v1)
            QCOMPARE(e.V1Title(), QStringLiteral("v1 ") + tag);
        if (v2)
            QCOMPARE(e.V2Title(), QStringLiteral("v2 ") + tag + QStringLiteral(" ✓"));
        if (ape)
            QCOMPARE(e.ApeTitle(), QStringLiteral("ape ") + tag + QStringLiteral(" ✓"));
        if (lyrics) {
            QCOMPARE(e.LyricsTitle(), QStringLiteral("lyr ") + tag);
            QCOMPARE(e.LyricsLyric(), QStringLiteral("[00:01]La la la\r\nZweite Zeile ✓\r\n"));
            QCOMPARE(e.LyricsVersion(), QStringLiteral("2.00"));
        }
    }

private slots:
    void everyOrder_data() {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("order");
        for (const char* order : {"ALV", "LAV", "AV", "LV", "VA", "A", "L"}) {
            QTest::addRow("mp3 %s", order) << "tone.mp3" << 1 << order;
            QTest::addRow("mpc %s", order) << "tone.mpc" << 7 << order;
        }
    }
    void everyOrder() {
        QFETCH(QString, fixture);
        QFETCH(int, type);
        QFETCH(QString, order);
        const QString base = CopyFixture(fixture, m_dir.path(), QStringLiteral("base-") + fixture);
        TagEngine e;
        QCOMPARE(e.OpenFile(base), type);
        StageFour(e, QStringLiteral("eins"));
        QVERIFY(e.SaveV1(base));
        QVERIFY(e.SaveV2(base));
        QVERIFY(e.SaveApe(base));
        QVERIFY(e.SaveLyrics(base));
        const QByteArray audio = ReadAll(FixtureDir() + QLatin1Char('/') + fixture);
        const Blocks b = Split(ReadAll(base), audio);
        QVERIFY(b.ape.startsWith("APETAGEX"));
        QVERIFY(b.lyrics.endsWith("LYRICS200"));
        QVERIFY(b.v1.startsWith("TAG"));

        QByteArray file = b.head + b.audio;
        for (QChar c : order)
            file += c == QLatin1Char('A') ? b.ape : c == QLatin1Char('L') ? b.lyrics : b.v1;
        const QString path = m_dir.path() + QStringLiteral("/%1-%2").arg(order, fixture);
        WriteAll(path, file);
        bool v1 = order.contains(QLatin1Char('V')), ape = order.contains(QLatin1Char('A')),
             lyr = order.contains(QLatin1Char('L'));
        CheckAll(e, path, type, v1, true, ape, lyr, QStringLiteral("eins"));

        // Save each set in turn with a new value: the others stay as they are.
        QCOMPARE(e.OpenFile(path), type);
        StageFour(e, QStringLiteral("zwei"));
        QVERIFY(e.SaveV2(path));
        QVERIFY(AudioUnchanged(path, fixture, type));
        QCOMPARE(e.OpenFile(path), type);
        QCOMPARE(e.V2Title(), QStringLiteral("v2 zwei ✓"));
        QCOMPARE(e.HasV1(), v1);
        QCOMPARE(e.HasApe(), ape);
        QCOMPARE(e.HasLyrics(), lyr);
        if (ape)
            QCOMPARE(e.ApeTitle(), QStringLiteral("ape eins ✓"));
        if (lyr)
            QCOMPARE(e.LyricsTitle(), QStringLiteral("lyr eins"));
        if (v1)
            QCOMPARE(e.V1Title(), QStringLiteral("v1 eins"));
        StageFour(e, QStringLiteral("zwei"));
        QVERIFY(e.SaveApe(path));
        QVERIFY(e.SaveLyrics(path));
        QVERIFY(e.SaveV1(path));
        CheckAll(e, path, type, true, true, true, true, QStringLiteral("zwei"));
        QVERIFY(AudioUnchanged(path, fixture, type));

        // Strip one set after the other; what is left stays readable.
        QVERIFY(e.RemoveLyrics(path));
        CheckAll(e, path, type, true, true, true, false, QStringLiteral("zwei"));
        QVERIFY(e.RemoveV1(path));
        CheckAll(e, path, type, false, true, true, false, QStringLiteral("zwei"));
        QVERIFY(e.RemoveV2(path));
        CheckAll(e, path, type, false, false, true, false, QStringLiteral("zwei"));
        QVERIFY(e.RemoveApe(path));
        CheckAll(e, path, type, false, false, false, false, QStringLiteral("zwei"));
        // Nothing left but the audio itself.
        QCOMPARE(ReadAll(path), audio);
    }

    void stripInEveryOrder() {
        const QList<QStringList> orders = {{"V1", "V2", "Ape", "Lyrics"},
                                           {"Ape", "Lyrics", "V1", "V2"},
                                           {"Lyrics", "Ape", "V2", "V1"},
                                           {"V2", "V1", "Lyrics", "Ape"}};
        for (const QStringList& order : orders) {
            const QString path =
                CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(),
                            QStringLiteral("strip-%1.mp3").arg(order.join(QLatin1Char('-'))));
            TagEngine e;
            QCOMPARE(e.OpenFile(path), 1);
            StageFour(e, QStringLiteral("drei"));
            QVERIFY(e.SaveV1(path));
            QVERIFY(e.SaveV2(path));
            QVERIFY(e.SaveApe(path));
            QVERIFY(e.SaveLyrics(path));
            bool v1 = true, v2 = true, ape = true, lyr = true;
            for (const QString& s : order) {
                int ok = 0;
                if (s == QLatin1String("V1")) {
                    ok = e.RemoveV1(path);
                    v1 = false;
                } else if (s == QLatin1String("V2")) {
                    ok = e.RemoveV2(path);
                    v2 = false;
                } else if (s == QLatin1String("Ape")) {
                    ok = e.RemoveApe(path);
                    ape = false;
                } else {
                    ok = e.RemoveLyrics(path);
                    lyr = false;
                }
                QVERIFY(ok);
                CheckAll(e, path, 1, v1, v2, ape, lyr, QStringLiteral("drei"));
                QVERIFY(AudioUnchanged(path, QStringLiteral("tone.mp3"), 1));
            }
        }
    }

    void lyricsNeedsAV1TagTheCallerMakes() {
        // The caller's provision: a V1 album of two blanks, SaveV1, OpenFile, then Lyrics.
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("provision.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(!e.HasV1());
        e.SetV1Album(QStringLiteral("  "));
        e.SaveV1(path);
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(e.HasV1());
        e.SetLyricsArtist(QStringLiteral("Artist"));
        QVERIFY(e.SaveLyrics(path));
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(e.HasLyrics());
        QCOMPARE(e.LyricsArtist(), QStringLiteral("Artist"));
        const QByteArray all = ReadAll(path);
        QVERIFY(all.right(128).startsWith("TAG"));
        QVERIFY(all.left(all.size() - 128).endsWith("LYRICS200"));
    }

    void lyrics3Version1IsReadAndReplaced() {
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("l3v1.mp3"));
        QByteArray v1(128, '\0');
        v1.replace(0, 3, "TAG");
        WriteAll(path, ReadAll(path) + "LYRICSBEGINOld lyrics\r\nline 2LYRICSEND" + v1);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(e.HasLyrics());
        QCOMPARE(e.LyricsVersion(), QStringLiteral("1.00"));
        QCOMPARE(e.LyricsLyric(), QStringLiteral("Old lyrics\r\nline 2"));
        e.SetLyricsAuthor(QStringLiteral("Autorin"));
        QVERIFY(e.SaveLyrics(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.LyricsVersion(), QStringLiteral("2.00"));
        QCOMPARE(e.LyricsLyric(), QStringLiteral("Old lyrics\r\nline 2"));
        QCOMPARE(e.LyricsAuthor(), QStringLiteral("Autorin"));
        QVERIFY(e.RemoveLyrics(path));
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(!e.HasLyrics());
        QVERIFY(e.HasV1());
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.mp3"), 1));
    }

    void lyricsTooLongFails() {
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("long.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        const QByteArray before = ReadAll(path);
        e.SetLyricsLyric(QString(100000, QLatin1Char('x')));
        QCOMPARE(e.SaveLyrics(path), 0);
        QVERIFY(e.LastError().contains(QStringLiteral("99,999")));
        QCOMPARE(ReadAll(path), before);
    }
};

QTEST_GUILESS_MAIN(TestTagTrailer)
#include "test_tag_trailer.moc"
