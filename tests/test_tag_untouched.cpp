// Nothing in an ID3v2 tag is lost that an edit did not touch: the v2.3 frames that v2.4
// gave up, several tags in a row, frames kept to the byte. Checked on the bytes and with
// mutagen as an independent reader.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <taglib/asffile.h>

using namespace tagtest;

namespace {

QByteArray Be32(quint32 v) {
    QByteArray b;
    for (int i = 3; i >= 0; --i)
        b.append(char((v >> (8 * i)) & 0xFF));
    return b;
}

QByteArray SyncSafe(quint32 v) {
    QByteArray b(4, '\0');
    for (int i = 0; i < 4; ++i)
        b[3 - i] = char((v >> (7 * i)) & 0x7F);
    return b;
}

// A v2.3 frame with the given body.
QByteArray Frame(const char* id, const QByteArray& body) {
    return QByteArray(id, 4) + Be32(quint32(body.size())) + QByteArray(2, '\0') + body;
}
QByteArray Text(const char* id, const char* latin1) {
    return Frame(id, QByteArray(1, '\0') + QByteArray(latin1));
}

QByteArray Tag(int version, const QByteArray& frames, int padding = 64) {
    return QByteArray("ID3") + char(version) + '\0' + '\0' + SyncSafe(quint32(frames.size() + padding)) +
           frames + QByteArray(padding, '\0');
}

const QByteArray kRvad = Frame("RVAD", QByteArray("\x03\x10\x01\x02\x03\x04", 6));
const QByteArray kEqua = Frame("EQUA", QByteArray("\x10\x80\x40\x00\x20", 5));
const QByteArray kTcon = Text("TCON", "(17)Rock");
const QByteArray kTdat = Text("TDAT", "3112");
const QByteArray kTime = Text("TIME", "1230");
const QByteArray kTrda = Text("TRDA", "December 31");
const QByteArray kTsiz = Text("TSIZ", "123456");

QStringList MutagenFrames(const QString& path) {
    if (MutagenPython().isEmpty())
        return {};
    const QString script =
        QString::fromUtf8(ReadAll(SourceDir() + QStringLiteral("/tests/support/mutagen_frames.py")));
    return RunPython(script, {path}).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

class TestTagUntouched : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
    QByteArray m_audio;

    QString Write(const char* name, const QByteArray& data) {
        const QString path = m_dir.path() + u'/' + QLatin1String(name);
        if (!WriteAll(path, data))
            return QString();
        return path;
    }

private slots:
    void initTestCase() {
        m_audio = ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"));
        QVERIFY(!m_audio.startsWith("ID3"));
        if (MutagenPython().isEmpty())
            qWarning("python3-mutagen is missing: the checks by an independent reader are skipped");
    }

    void v23FramesSurviveAndTheYearKeepsItsDay() {
        const QByteArray frames = Text("TIT2", "Titel") + Text("TYER", "1999") + kTdat + kTime + kTrda +
                                  kTsiz + kTcon + kRvad + kEqua;
        const QString path = Write("v23.mp3", Tag(3, frames) + m_audio);
        const QStringList before = MutagenFrames(path);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Version(), QStringLiteral("2.3"));
        e.SetV2Year(QStringLiteral("2001"));
        QVERIFY2(e.SaveV2(path), qPrintable(e.LastError()));
        const QByteArray after = ReadAll(path);
        QVERIFY(after.endsWith(m_audio));
        for (const QByteArray& kept :
             {kTdat, kTime, kTrda, kTsiz, kTcon, kRvad, kEqua, Text("TIT2", "Titel")})
            QVERIFY2(after.contains(kept), kept.left(4).constData());
        QCOMPARE(after.at(3), '\x03');
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(e.V2Year().startsWith(QStringLiteral("2001")));
        QCOMPARE(e.V2Genre(), QStringLiteral("Rock"));
        const QStringList now = MutagenFrames(path);
        if (!before.isEmpty()) {
            QStringList b = before, n = now;
            b.removeIf([](const QString& l) { return l.startsWith(QLatin1String("TYER")); });
            n.removeIf([](const QString& l) { return l.startsWith(QLatin1String("TYER")); });
            QCOMPARE(n, b);
            QVERIFY2(now.filter(QStringLiteral("TYER")).join(u' ').contains(QStringLiteral("2001")),
                     qPrintable(now.join(u'\n')));
        }
    }

    void aFullDateReplacesTheDayFrame() {
        const QByteArray frames = Text("TIT2", "Titel") + Text("TYER", "1999") + kTdat;
        const QString path = Write("date.mp3", Tag(3, frames) + m_audio);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV2Year(QStringLiteral("2001-05-06"));
        QVERIFY(e.SaveV2(path));
        const QByteArray after = ReadAll(path);
        QCOMPARE(after.count("TDAT"), 1);
        QVERIFY(after.contains(Text("TDAT", "0605")));
        QVERIFY(!after.contains(kTdat));
    }

    void untouchedFramesKeepTheirBytes() {
        const QByteArray frames = Text("TIT2", "Alt") + kTcon + Text("TPE1", "Artist") + kRvad;
        const QString path = Write("tcon.mp3", Tag(3, frames) + m_audio);
        const QStringList before = MutagenFrames(path);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV2Title(QStringLiteral("Neu"));
        QVERIFY(e.SaveV2(path));
        const QByteArray after = ReadAll(path);
        QVERIFY(after.contains(kTcon));
        QVERIFY(after.contains(Text("TPE1", "Artist")));
        QVERIFY(after.contains(kRvad));
        QVERIFY(!after.contains(Text("TIT2", "Alt")));
        const QStringList now = MutagenFrames(path);
        if (!before.isEmpty()) {
            QCOMPARE(now.filter(QStringLiteral("TCON")), before.filter(QStringLiteral("TCON")));
            QCOMPARE(now.size(), before.size());
        }
        // A v2.4 tag keeps its bytes in the same way.
        const QByteArray v24Tcon =
            QByteArray("TCON") + SyncSafe(6) + QByteArray(2, '\0') + QByteArray("\x03(17)", 6);
        const QString p4 = Write("v24.mp3", Tag(4, QByteArray("TIT2") + SyncSafe(4) + QByteArray(2, '\0') +
                                                       QByteArray("\x03"
                                                                  "Alt",
                                                                  4) +
                                                       v24Tcon) +
                                                m_audio);
        QCOMPARE(e.OpenFile(p4), 1);
        e.SetV2Title(QStringLiteral("Neu"));
        QVERIFY(e.SaveV2(p4));
        QVERIFY(ReadAll(p4).contains(v24Tcon));
    }

    void severalTagsInARowLoseNoFrame() {
        const QByteArray first = Tag(3, Text("TIT2", "Erster") + Text("TPE1", "A"));
        const QByteArray comm = Frame("COMM", QByteArray("\0deu", 4) + QByteArray("\0Kommentar", 10));
        const QByteArray second = Tag(3, Text("TIT2", "Zweiter") + Text("TALB", "Album B") + comm);
        const QString path = Write("two.mp3", first + second + m_audio);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Title(), QStringLiteral("Erster"));
        e.SetV2Artist(QStringLiteral("X"));
        QVERIFY(e.SaveV2(path));
        const QByteArray after = ReadAll(path);
        QVERIFY(after.endsWith(m_audio));
        QCOMPARE(after.count("ID3"), m_audio.count("ID3") + 1); // one tag now
        QVERIFY(after.contains(Text("TIT2", "Erster")));
        QVERIFY2(after.contains(Text("TALB", "Album B")), after.left(200).toHex().constData());
        QVERIFY(after.contains(comm));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Title(), QStringLiteral("Erster"));
        QCOMPARE(e.V2Artist(), QStringLiteral("X"));
        QCOMPARE(e.V2Album(), QStringLiteral("Album B"));
        QCOMPARE(e.CommentCount(), 1);
        const QStringList now = MutagenFrames(path);
        if (!now.isEmpty()) {
            QCOMPARE(now.filter(QStringLiteral("TALB")).size(), 1);
            QCOMPARE(now.filter(QStringLiteral("COMM")).size(), 1);
            QCOMPARE(now.filter(QStringLiteral("TIT2")).size(), 1);
        }
    }

    // WMA: the old zero-based WM/Track follows a new track, and copies of artist and
    // comment in the attributes "Author" and "Description" follow the new values.
    void wmaCopiesFollowTheEdit() {
        const QString path =
            CopyFixture(QStringLiteral("tone.wma"), m_dir.path(), QStringLiteral("copies.wma"));
        {
            TagLib::ASF::File f(QFile::encodeName(path).constData(), false);
            QVERIFY(f.isValid());
            f.tag()->setAttribute("WM/Track", TagLib::ASF::Attribute(2u));
            f.tag()->setAttribute("WM/TrackNumber", TagLib::ASF::Attribute(TagLib::String("3")));
            f.tag()->setAttribute("Author", TagLib::ASF::Attribute(TagLib::String("Alt")));
            f.tag()->setAttribute("Description", TagLib::ASF::Attribute(TagLib::String("Alter Kommentar")));
            f.tag()->setAttribute("WM/Composer", TagLib::ASF::Attribute(TagLib::String("Komponist")));
            QVERIFY(f.save());
        }
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 2);
        QCOMPARE(e.WmaTrack(), QStringLiteral("3"));
        e.SetWmaTrack(QStringLiteral("7"));
        e.SetWmaArtist(QStringLiteral("Neu"));
        e.SetWmaComment(QStringLiteral("Neuer Kommentar"));
        QVERIFY2(e.SaveWma(path), qPrintable(e.LastError()));
        TagLib::ASF::File f(QFile::encodeName(path).constData(), false);
        const TagLib::ASF::AttributeListMap& map = f.tag()->attributeListMap();
        QCOMPARE(map["WM/Track"].front().toUInt(), 6u);
        QCOMPARE(QString::fromStdString(map["WM/TrackNumber"].front().toString().to8Bit(true)),
                 QStringLiteral("7"));
        QCOMPARE(QString::fromStdString(map["Author"].front().toString().to8Bit(true)),
                 QStringLiteral("Neu"));
        QCOMPARE(QString::fromStdString(map["Description"].front().toString().to8Bit(true)),
                 QStringLiteral("Neuer Kommentar"));
        QCOMPARE(QString::fromStdString(map["WM/Composer"].front().toString().to8Bit(true)),
                 QStringLiteral("Komponist"));
        if (!MutagenPython().isEmpty()) {
            const QString script = QString::fromUtf8(
                ReadAll(SourceDir() + QStringLiteral("/tests/support/mutagen_dump_other.py")));
            const QString out = RunPython(script, {QStringLiteral("asf"), path});
            QVERIFY2(!out.contains(QStringLiteral("Alt")), qPrintable(out));
            QVERIFY2(out.contains(QStringLiteral("Neuer Kommentar")), qPrintable(out));
        }
    }

    // WM/Genre in the extended content description and in the metadata library: a save
    // that does not touch the genre leaves each value where it was.
    void wmaValuesStayInTheirPlaces() {
        const QString path =
            CopyFixture(QStringLiteral("tone.wma"), m_dir.path(), QStringLiteral("places.wma"));
        {
            TagLib::ASF::File f(QFile::encodeName(path).constData(), false);
            TagLib::ASF::Attribute pop(TagLib::String("Pop"));
            pop.setLanguage(1); // goes to the metadata library
            f.tag()->setAttribute("WM/Genre", TagLib::ASF::Attribute(TagLib::String("Rock")));
            f.tag()->addAttribute("WM/Genre", pop);
            QVERIFY(f.save());
        }
        // Language 0 in the metadata library, as other tools write it.
        QByteArray data = ReadAll(path);
        const QByteArray name = QByteArray("W\0M\0/\0G\0e\0n\0r\0e\0", 16);
        const QByteArray library("\x94\x1C\x23\x44\x98\x94\xD1\x49\xA1\x41\x1D\x13\x4E\x45\x70\x54", 16);
        const qsizetype lib = data.indexOf(library);
        QVERIFY(lib > 0);
        const qsizetype at = data.indexOf(name, lib);
        QVERIFY(at > lib);
        data[at - 12] = 0;
        data[at - 11] = 0;
        QVERIFY(WriteAll(path, data));
        auto extendedHolds = [&](const char* text) {
            const QByteArray file = ReadAll(path);
            const QByteArray guid("\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50", 16);
            const qsizetype ecd = file.indexOf(guid);
            if (ecd < 0)
                return false;
            qint64 size = 0;
            for (int i = 7; i >= 0; --i)
                size = (size << 8) | static_cast<unsigned char>(file[ecd + 16 + i]);
            const QString t = QString::fromLatin1(text);
            const QByteArray utf16(reinterpret_cast<const char*>(t.utf16()), t.size() * 2);
            return file.mid(ecd, size).contains(utf16);
        };
        QVERIFY(extendedHolds("Rock"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 2);
        e.SetWmaAlbum(QStringLiteral("Album"));
        QVERIFY(e.SaveWma(path));
        QVERIFY(extendedHolds("Rock"));
        QVERIFY(!extendedHolds("Pop"));
    }

    // A WMA save changes what was changed and adds nothing: no empty title, author,
    // copyright, description or rating where the file had none.
    void wmaSaveAddsNoEmptyAttributes() {
        const QString path =
            CopyFixture(QStringLiteral("tone.wma"), m_dir.path(), QStringLiteral("plain.wma"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 2);
        e.SetWmaAlbum(QStringLiteral("Album"));
        QVERIFY2(e.SaveWma(path), qPrintable(e.LastError()));
        QCOMPARE(e.OpenFile(path), 2);
        QCOMPARE(e.WmaAlbum(), QStringLiteral("Album"));
        QVERIFY(!ReadAll(path).contains(
            QByteArray("\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16)));
        // A title set later brings the object back, with the title in it.
        e.SetWmaTitle(QStringLiteral("Titel"));
        QVERIFY(e.SaveWma(path));
        QCOMPARE(e.OpenFile(path), 2);
        QCOMPARE(e.WmaTitle(), QStringLiteral("Titel"));
        QCOMPARE(e.WmaAlbum(), QStringLiteral("Album"));
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.wma"), 2));
        if (!MutagenPython().isEmpty()) {
            const QString script = QString::fromUtf8(
                ReadAll(SourceDir() + QStringLiteral("/tests/support/mutagen_dump_other.py")));
            const QString out = RunPython(script, {QStringLiteral("asf"), path});
            QVERIFY2(out.contains(QStringLiteral("\"Title\": [\"Titel\"]")), qPrintable(out));
            QVERIFY2(out.contains(QStringLiteral("\"WM/AlbumTitle\": [\"Album\"]")), qPrintable(out));
            // Only the title: no empty author, copyright, description or rating beside it.
            for (const char* name : {"\"Author\"", "\"Copyright\"", "\"Description\"", "\"Rating\""})
                QVERIFY2(!out.contains(QLatin1String(name)), qPrintable(out));
        }
        // An emptied title goes, it does not stay behind as an empty value.
        QCOMPARE(e.OpenFile(path), 2);
        e.SetWmaTitle(QString());
        QVERIFY(e.SaveWma(path));
        QCOMPARE(e.OpenFile(path), 2);
        QCOMPARE(e.WmaAlbum(), QStringLiteral("Album"));
        if (!MutagenPython().isEmpty()) {
            const QString script = QString::fromUtf8(
                ReadAll(SourceDir() + QStringLiteral("/tests/support/mutagen_dump_other.py")));
            const QString out = RunPython(script, {QStringLiteral("asf"), path});
            QVERIFY2(!out.contains(QLatin1String("\"Title\"")), qPrintable(out));
        }
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.wma"), 2));
    }

    // A tag that claims more bytes than the file has: a rewrite would drop the audio.
    void aTagLongerThanTheFileIsLeftAlone() {
        const QByteArray data =
            QByteArray("ID3\x03\x00\x00\x7F\x7F\x7F\x7F", 10) + Text("TIT2", "x") + m_audio;
        const QString path = Write("long.mp3", data);
        TagEngine e;
        e.OpenFile(path);
        e.SetV2Title(QStringLiteral("neu"));
        QCOMPARE(e.SaveV2(path), 0);
        QVERIFY(!e.LastError().isEmpty());
        QCOMPARE(e.RemoveV2(path), 0);
        QCOMPARE(ReadAll(path), data);
    }
};

QTEST_GUILESS_MAIN(TestTagUntouched)
#include "test_tag_untouched.moc"
