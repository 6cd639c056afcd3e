// The engine's own byte parsers one by one: ID3v1, APE, Lyrics3, the trailer scan, ADTS
// and the type detection, with round trips and an in-memory mutation fuzz.
#include "tag/Adts.h"
#include "tag/TagLayout.h"
#include "tag/TagText.h"
#include "tag/TrailerTags.h"

#include "TagTestUtil.h"
#include "TestPaths.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

#include <taglib/tbytevectorstream.h>

using namespace qlt_tag;

namespace {

TagLib::ByteVector Bv(const QByteArray& b) {
    return TagLib::ByteVector(b.constData(), static_cast<unsigned>(b.size()));
}

QByteArray Mutate(QByteArray data, QRandomGenerator& rng) {
    static const QByteArray markers[] = {"APETAGEX", "LYRICS200", "LYRICSBEGIN", "LYRICSEND",
                                         "TAG",      "IND",       "LYR",         "99999",
                                         "000000",   "\xFF\xF1",  "\xFF\xFB",    "ID3\x03"};
    const int edits = 1 + static_cast<int>(rng.bounded(6));
    for (int k = 0; k < edits && !data.isEmpty(); ++k) {
        const auto at = static_cast<qsizetype>(rng.bounded(static_cast<quint32>(data.size())));
        switch (rng.bounded(5)) {
        case 0:
            data[at] = static_cast<char>(rng.bounded(256));
            break;
        case 1: {
            const QByteArray& m = markers[rng.bounded(static_cast<quint32>(std::size(markers)))];
            data.replace(at, std::min<qsizetype>(m.size(), data.size() - at), m);
            break;
        }
        case 2:
            data.truncate(at);
            break;
        case 3:
            data.insert(
                at, QByteArray(static_cast<qsizetype>(rng.bounded(20)), static_cast<char>(rng.bounded(256))));
            break;
        default:
            data.remove(at, static_cast<qsizetype>(rng.bounded(20)));
            break;
        }
    }
    return data;
}

} // namespace

class TestTagParsers : public QObject {
    Q_OBJECT
private slots:
    void legacyText() {
        QCOMPARE(DecodeLegacy(QByteArray("abc  \0\0", 7)), QStringLiteral("abc"));
        QCOMPARE(DecodeLegacy(QByteArray("\x80 \xE4", 3)), QStringLiteral("€ ä")); // Windows-1252
        QCOMPARE(DecodeLegacy(QStringLiteral("日本").toUtf8()), QStringLiteral("日本"));
        QCOMPARE(EncodeLegacy(QStringLiteral("Grüße")), QStringLiteral("Grüße").toLatin1());
        QCOMPARE(EncodeLegacy(QStringLiteral("日本語"), 7),
                 QStringLiteral("日本").toUtf8()); // no split character
    }

    void id3v1RoundTrip() {
        Id3v1Data t;
        t.title = QStringLiteral("Titel ÄÖÜ");
        t.artist = QStringLiteral("日本");
        t.album = QStringLiteral("Album");
        t.year = QStringLiteral("1999");
        t.comment = QStringLiteral("Kommentar");
        t.track = QStringLiteral("12");
        t.genre = 17;
        const QByteArray b = RenderId3v1(t);
        QCOMPARE(b.size(), 128);
        Id3v1Data r;
        QVERIFY(ParseId3v1(b, &r));
        QCOMPARE(r.title, t.title);
        QCOMPARE(r.artist, t.artist);
        QCOMPARE(r.track, QStringLiteral("12"));
        QVERIFY(r.v11);
        QCOMPARE(r.genre, 17);
        QVERIFY(!ParseId3v1(b.left(100), &r));
    }

    void apeRoundTripKeepsOtherItems() {
        ApeData a;
        a.items.push_back(ApeItem{"Cover Art (Front)", 2, QByteArray("cover.jpg\0\xFF\xD8", 12)});
        a.SetText("Title", QStringLiteral("Titel ✓"));
        a.SetText("ARTIST", QStringLiteral("x"));
        a.SetText("Artist", QStringLiteral("Künstler")); // replaces regardless of case
        const QByteArray b = RenderApe(a);
        QVERIFY(b.startsWith("APETAGEX"));
        ApeData r;
        QVERIFY(ParseApe(b, &r));
        QCOMPARE(r.items.size(), size_t(3));
        QCOMPARE(r.Text("title"), QStringLiteral("Titel ✓"));
        QCOMPARE(r.Text("Artist"), QStringLiteral("Künstler"));
        QCOMPARE(r.items.front().value, QByteArray("cover.jpg\0\xFF\xD8", 12));
        QCOMPARE(r.Text("Cover Art (Front)"), QString()); // binary items are no text
        ApeData empty;
        QVERIFY(RenderApe(empty).isEmpty());
    }

    void lyrics3RoundTrip() {
        Lyrics3Data l;
        l.SetText("LYR", QStringLiteral("[00:01]eins\r\nzwei ✓"));
        l.SetText("EAR", QStringLiteral("Artist"));
        l.fields.push_back(Lyrics3Field{"XYZ", "unknown field"});
        QString error;
        const QByteArray b = RenderLyrics3(l, &error);
        QVERIFY(b.startsWith("LYRICSBEGININD00003110"));
        QVERIFY(b.endsWith("LYRICS200"));
        QCOMPARE(b.mid(b.size() - 15, 6).toInt(), b.size() - 15);
        Lyrics3Data r;
        QVERIFY(ParseLyrics3(b, &r));
        QCOMPARE(r.Text("LYR"), QStringLiteral("[00:01]eins\r\nzwei ✓"));
        QCOMPARE(r.Text("EAR"), QStringLiteral("Artist"));
        QCOMPARE(r.Text("XYZ"), QStringLiteral("unknown field"));
        QVERIFY(r.HasContent());
    }

    void trailerScanFindsEveryOrder() {
        Id3v1Data t;
        t.title = QStringLiteral("t");
        const QByteArray v1 = RenderId3v1(t);
        ApeData a;
        a.SetText("Title", QStringLiteral("a"));
        const QByteArray ape = RenderApe(a);
        Lyrics3Data l;
        l.SetText("LYR", QStringLiteral("l"));
        const QByteArray lyr = RenderLyrics3(l, nullptr);
        const QByteArray audio(1000, '\x55');
        const QList<QList<QByteArray>> orders = {{ape, lyr, v1}, {lyr, ape, v1}, {v1, ape}, {ape},
                                                 {lyr},          {v1},           {}};
        for (const auto& order : orders) {
            QByteArray file = audio;
            for (const QByteArray& b : order)
                file += b;
            TagLib::ByteVectorStream s(Bv(file));
            const std::vector<TrailerBlock> blocks = ScanTrailer(&s, file.size(), 0);
            QCOMPARE(blocks.size(), static_cast<size_t>(order.size()));
            if (!blocks.empty())
                QCOMPARE(blocks.front().offset, 1000);
        }
    }

    void apeFooterWithoutItsHeader() {
        ApeData a;
        a.SetText("Title", QStringLiteral("a"));
        const QByteArray full = RenderApe(a);
        const QByteArray noHeader = full.mid(32); // the footer still says "with header"
        const QByteArray file = QByteArray(1000, '\x55') + noHeader;
        TagLib::ByteVectorStream s(Bv(file));
        const std::vector<TrailerBlock> blocks = ScanTrailer(&s, file.size(), 0);
        QCOMPARE(blocks.size(), size_t(1));
        QCOMPARE(blocks.front().offset, 1000); // no audio byte taken for a header
        ApeData r;
        QVERIFY(ParseApe(file.mid(1000), &r));
        QCOMPARE(r.Text("Title"), QStringLiteral("a"));
    }

    void adtsWalk() {
        const QByteArray aac = tagtest::ReadAll(FixtureDir() + QStringLiteral("/tone.aac"));
        TagLib::ByteVectorStream s(Bv(aac));
        const AdtsInfo info = AnalyseAdts(&s, 0, aac.size());
        QVERIFY(info.valid);
        QCOMPARE(info.sampleRate, 22050);
        QVERIFY(info.seconds > 0.45 && info.seconds < 0.65);
        QVERIFY(info.bitrateKbps > 10);
        TagLib::ByteVectorStream junk(Bv(QByteArray(100, '\xFF')));
        QVERIFY(!AnalyseAdts(&junk, 0, 100).valid);
    }

    void fuzzInMemory() {
        // Seeds: a tail with all three trailing tags, an ADTS stream, an MP3 start.
        Id3v1Data t;
        t.title = QStringLiteral("title");
        ApeData a;
        a.SetText("Title", QStringLiteral("a"));
        a.SetText("Artist", QStringLiteral("b"));
        Lyrics3Data l;
        l.SetText("LYR", QStringLiteral("lyrics"));
        l.SetText("INF", QStringLiteral("info"));
        const QByteArray tail =
            QByteArray(300, '\x55') + RenderApe(a) + RenderLyrics3(l, nullptr) + RenderId3v1(t);
        const QByteArray aac = tagtest::ReadAll(FixtureDir() + QStringLiteral("/tone.aac"));
        const QByteArray mp3 = tagtest::ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"));
        const QByteArray seeds[] = {tail, aac, mp3.left(3000)};
        QRandomGenerator rng(99);
        QElapsedTimer timer;
        timer.start();
        int rounds = 0;
        for (; rounds < 200000 && timer.elapsed() < 30000; ++rounds) {
            const QByteArray data = Mutate(seeds[rounds % 3], rng);
            TagLib::ByteVectorStream s(Bv(data));
            for (const TrailerBlock& b : ScanTrailer(&s, data.size(), 0)) {
                QVERIFY(b.offset >= 0 && b.offset + b.length <= data.size());
                const QByteArray block = data.mid(b.offset, b.length);
                Id3v1Data v1;
                ApeData ape;
                Lyrics3Data lyr;
                ParseId3v1(block, &v1);
                if (ParseApe(block, &ape))
                    (void)ape.Text("Title");
                if (ParseLyrics3(block, &lyr))
                    (void)lyr.Text("LYR");
            }
            const AdtsInfo info = AnalyseAdts(&s, 0, data.size());
            QVERIFY(!info.valid || info.sampleRate > 0);
            FileLayout lay;
            const int type = DetectType(&s, data.size(), &lay);
            QVERIFY(type >= 0 && type <= 9);
            QVERIFY(lay.headEnd <= lay.bodyEnd || type == 0);
        }
        qInfo("%d mutated buffers in %lld ms", rounds, static_cast<long long>(timer.elapsed()));
        QVERIFY(rounds >= 1000);
    }
};

QTEST_GUILESS_MAIN(TestTagParsers)
#include "test_tag_parsers.moc"
