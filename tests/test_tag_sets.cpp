// TagEngine: the read, write and strip matrix of every set on every file type, with
// unicode in every field, and the audio unchanged by every write and strip.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

namespace {

const TagSet kAllSets[] = {TagSet::V1,   TagSet::V2,  TagSet::Ape, TagSet::Lyrics, TagSet::Wma,
                           TagSet::Flac, TagSet::Ogg, TagSet::Mp4, TagSet::Wav};

bool In(int type, std::initializer_list<int> list) {
    return std::find(list.begin(), list.end(), type) != list.end();
}

bool Writes(int type, TagSet set) {
    switch (set) {
    case TagSet::V1:
    case TagSet::Ape:
        return In(type, {1, 4, 6, 7});
    case TagSet::V2:
        return In(type, {1, 3, 4, 5, 6, 7, 8});
    case TagSet::Lyrics:
        return In(type, {1, 7});
    case TagSet::Mp4:
        return type == 9;
    case TagSet::Wav:
        return type == 5;
    case TagSet::Wma:
        return type == 2;
    case TagSet::Flac:
        return type == 4;
    case TagSet::Ogg:
        return type == 6;
    default:
        return false;
    }
}

bool Strips(int type, TagSet set) {
    switch (set) {
    case TagSet::V1:
        return In(type, {1, 6, 7});
    case TagSet::Ape:
        return In(type, {1, 7});
    case TagSet::V2:
    case TagSet::Lyrics:
        return Writes(type, set);
    case TagSet::Ogg:
        return type == 6;
    default:
        return false;
    }
}

bool HasRemove(TagSet set) {
    return set != TagSet::Wma && set != TagSet::Flac && set != TagSet::Mp4 && set != TagSet::Wav;
}

bool Has(const TagEngine& e, TagSet set) {
    switch (set) {
    case TagSet::V1:
        return e.HasV1();
    case TagSet::V2:
        return e.HasV2();
    case TagSet::Ape:
        return e.HasApe();
    case TagSet::Lyrics:
        return e.HasLyrics();
    case TagSet::Mp4:
        return e.HasMp4();
    case TagSet::Wav:
        return e.HasWav();
    default:
        return true;
    }
}

// A distinct value with characters from beyond Latin-1 for every field.
QString ValueFor(TagField f) {
    const QString name = TagFieldName(f);
    switch (f) {
    case TagField::V1Year:
        return QStringLiteral("1999");
    case TagField::V1Track:
        return QStringLiteral("7");
    case TagField::V1Genre:
        return QStringLiteral("Rock");
    case TagField::V2Year:
        return QStringLiteral("2004");
    case TagField::V2Track:
    case TagField::Mp4Track:
        return QStringLiteral("3/12");
    case TagField::Mp4Disc:
        return QStringLiteral("1/2");
    default:
        break;
    }
    if (TagFieldSet(f) == TagSet::V1)
        return name.mid(2, 5) + QStringLiteral(" Ä✓");
    return name + QStringLiteral(" Grüße ✓ 日本語 Ω");
}

void StageAll(TagEngine& e, TagSet set) {
    for (int i = 0; i < kTagFieldCount; ++i) {
        const auto f = static_cast<TagField>(i);
        if (TagFieldSet(f) == set)
            e.SetField(f, ValueFor(f));
    }
}

} // namespace

class TestTagSets : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

private slots:
    void matrix_data() {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("set");
        for (const FixtureType& f : kFixtures) {
            for (TagSet s : kAllSets)
                QTest::addRow("%s %s", f.file, qPrintable(TagSetName(s)))
                    << QString::fromLatin1(f.file) << f.type << static_cast<int>(s);
        }
    }
    void matrix() {
        QFETCH(QString, fixture);
        QFETCH(int, type);
        QFETCH(int, set);
        const auto s = static_cast<TagSet>(set);
        const QString path = CopyFixture(fixture, m_dir.path(), TagSetName(s) + QLatin1Char('-') + fixture);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), type);
        StageAll(e, s);
        const QByteArray before = ReadAll(path);
        const int saved = e.Save(s, path);
        QCOMPARE(saved != 0, Writes(type, s));
        if (!saved) {
            QVERIFY(!e.LastError().isEmpty());
            QCOMPARE(ReadAll(path), before); // not touched
        }
        QVERIFY(AudioUnchanged(path, fixture, type));
        QCOMPARE(e.OpenFile(path), type);
        if (saved) {
            QVERIFY(Has(e, s));
            for (int i = 0; i < kTagFieldCount; ++i) {
                const auto f = static_cast<TagField>(i);
                if (TagFieldSet(f) == s)
                    QCOMPARE(e.Field(f), ValueFor(f));
            }
            if (s == TagSet::V1) {
                QCOMPARE(e.V1GenreCode(), 17);
                QCOMPARE(e.V1Version(), QStringLiteral("1.1"));
            }
            if (s == TagSet::V2)
                QCOMPARE(e.V2Version(), QStringLiteral("2.3"));
            if (s == TagSet::V2 || s == TagSet::Ape || s == TagSet::Flac || s == TagSet::Ogg ||
                s == TagSet::Wma || s == TagSet::Mp4 || s == TagSet::Wav)
                QCOMPARE(e.TrackNumberValue(),
                         s == TagSet::V2 || s == TagSet::Mp4 ? QStringLiteral("3") : QStringLiteral("0"));
        } else {
            QVERIFY(!Has(e, s) || s == TagSet::Wma || s == TagSet::Flac || s == TagSet::Ogg);
        }
        // An empty text clears a field.
        if (saved) {
            const TagField first = s == TagSet::V1       ? TagField::V1Title
                                   : s == TagSet::V2     ? TagField::V2Artist
                                   : s == TagSet::Ape    ? TagField::ApeArtist
                                   : s == TagSet::Lyrics ? TagField::LyricsArtist
                                   : s == TagSet::Wma    ? TagField::WmaArtist
                                   : s == TagSet::Flac   ? TagField::FlacArtist
                                   : s == TagSet::Mp4    ? TagField::Mp4Artist
                                   : s == TagSet::Wav    ? TagField::WavArtist
                                                         : TagField::OggArtist;
            e.SetField(first, QString());
            QVERIFY(e.Save(s, path));
            QCOMPARE(e.OpenFile(path), type);
            QCOMPARE(e.Field(first), QString());
            QVERIFY(AudioUnchanged(path, fixture, type));
        }
        if (!HasRemove(s))
            return;
        const QByteArray beforeStrip = ReadAll(path);
        const int stripped = e.Remove(s, path);
        QCOMPARE(stripped != 0, Strips(type, s));
        QVERIFY(AudioUnchanged(path, fixture, type));
        QCOMPARE(e.OpenFile(path), type);
        if (stripped) {
            QVERIFY(!Has(e, s) || s == TagSet::Ogg);
            if (s == TagSet::Ogg)
                QCOMPARE(e.OggTitle(), QString());
        } else {
            QCOMPARE(ReadAll(path), beforeStrip);
            if (saved)
                QVERIFY(Has(e, s)); // e.g. APE stays on FLAC and Ogg files
        }
    }

    void allSetsTogether_data() {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<int>("type");
        for (const FixtureType& f : kFixtures)
            QTest::newRow(f.file) << QString::fromLatin1(f.file) << f.type;
    }
    // Every set the type takes, written one after the other from one OpenFile, then all
    // read back; then stripped one by one while the rest stays.
    void allSetsTogether() {
        QFETCH(QString, fixture);
        QFETCH(int, type);
        const QString path = CopyFixture(fixture, m_dir.path(), QStringLiteral("all-") + fixture);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), type);
        for (TagSet s : kAllSets)
            StageAll(e, s);
        for (TagSet s : kAllSets)
            QCOMPARE(e.Save(s, path) != 0, Writes(type, s));
        QVERIFY(AudioUnchanged(path, fixture, type));
        for (TagSet s : kAllSets) {
            QCOMPARE(e.OpenFile(path), type);
            if (!Writes(type, s))
                continue;
            for (int i = 0; i < kTagFieldCount; ++i) {
                const auto f = static_cast<TagField>(i);
                if (TagFieldSet(f) == s)
                    QCOMPARE(e.Field(f), ValueFor(f));
            }
            if (!Strips(type, s) || !HasRemove(s))
                continue;
            QVERIFY(e.Remove(s, path));
            QVERIFY(AudioUnchanged(path, fixture, type));
            QCOMPARE(e.OpenFile(path), type);
            // The sets not yet stripped are all still there.
            bool later = false;
            for (TagSet o : kAllSets) {
                if (o == s) {
                    later = true;
                    continue;
                }
                if (!later || !Writes(type, o))
                    continue;
                for (int i = 0; i < kTagFieldCount; ++i) {
                    const auto f = static_cast<TagField>(i);
                    if (TagFieldSet(f) == o)
                        QCOMPARE(e.Field(f), ValueFor(f));
                }
            }
        }
    }

    void existingV24KeepsItsVersion() {
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("v24.mp3"));
        // A minimal v2.4 tag with one UTF-8 title frame.
        const QByteArray title = QByteArray("\x03") + QStringLiteral("Vier ✓").toUtf8();
        QByteArray frame = "TIT2";
        const int n = static_cast<int>(title.size());
        frame += QByteArray(1, char((n >> 21) & 0x7F)) + char((n >> 14) & 0x7F) + char((n >> 7) & 0x7F) +
                 char(n & 0x7F);
        frame += QByteArray(2, '\0') + title;
        const int size = static_cast<int>(frame.size());
        QByteArray tag("ID3\x04\x00\x00", 6);
        tag += QByteArray(1, char((size >> 21) & 0x7F)) + char((size >> 14) & 0x7F) +
               char((size >> 7) & 0x7F) + char(size & 0x7F);
        WriteAll(path, tag + frame + ReadAll(path));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Version(), QStringLiteral("2.4"));
        QCOMPARE(e.V2Title(), QStringLiteral("Vier ✓"));
        e.SetV2Artist(QStringLiteral("Künstler ✓"));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Version(), QStringLiteral("2.4"));
        QCOMPARE(e.V2Title(), QStringLiteral("Vier ✓"));
        QCOMPARE(e.V2Artist(), QStringLiteral("Künstler ✓"));
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.mp3"), 1));
    }

    void monkeysOwnApeTagIsLeftAlone() {
        // Monkey's Audio files carry an APE tag of their own; the engine neither reads nor
        // touches it, and an ID3v2 write keeps it.
        const QString path = CopyFixture(QStringLiteral("tone.ape"), m_dir.path(), QStringLiteral("own.ape"));
        QByteArray item = QByteArray("\x05\0\0\0\0\0\0\0Title\0", 14) + "Titel";
        QByteArray footer("APETAGEX");
        auto le = [](quint32 v) {
            QByteArray b;
            for (int i = 0; i < 4; ++i)
                b.append(char((v >> (8 * i)) & 0xFF));
            return b;
        };
        footer += le(2000) + le(static_cast<quint32>(item.size() + 32)) + le(1) + le(0) + QByteArray(8, '\0');
        const QByteArray ape = item + footer;
        WriteAll(path, ReadAll(path) + ape);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 3);
        QVERIFY(!e.HasApe());
        QCOMPARE(e.ApeTitle(), QString());
        e.SetV2Title(QStringLiteral("v2"));
        QVERIFY(e.SaveV2(path));
        QVERIFY(ReadAll(path).endsWith(ape));
        QCOMPARE(e.RemoveApe(path), 0);
        QVERIFY(e.RemoveV2(path));
        QCOMPARE(ReadAll(path), ReadAll(FixtureDir() + QStringLiteral("/tone.ape")) + ape);
    }

    void v22IsReadAndWrittenAsV23() {
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("v22.mp3"));
        auto frame = [](const char* id, const QByteArray& body) {
            const int n = static_cast<int>(body.size());
            return QByteArray(id, 3) + char((n >> 16) & 0xFF) + char((n >> 8) & 0xFF) + char(n & 0xFF) + body;
        };
        const QByteArray frames = frame("TT2", QByteArray("\0Alter Titel", 12)) +
                                  frame("COM", QByteArray("\0engd\0Kommentar", 15)) +
                                  frame("TCO", QByteArray("\0(17)", 5));
        const int size = static_cast<int>(frames.size());
        QByteArray tag("ID3\x02\x00\x00", 6);
        tag += QByteArray(1, char((size >> 21) & 0x7F)) + char((size >> 14) & 0x7F) +
               char((size >> 7) & 0x7F) + char(size & 0x7F);
        WriteAll(path, tag + frames + ReadAll(path));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Version(), QStringLiteral("2.2"));
        QCOMPARE(e.V2Title(), QStringLiteral("Alter Titel"));
        QCOMPARE(e.V2Genre(), QStringLiteral("Rock"));
        QCOMPARE(e.CommentCount(), 1);
        QCOMPARE(e.CommentDescription(1), QStringLiteral("d"));
        QCOMPARE(e.CommentText(1), QStringLiteral("Kommentar"));
        e.SetV2Artist(QStringLiteral("Neu ✓"));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Version(), QStringLiteral("2.3"));
        QCOMPARE(e.V2Title(), QStringLiteral("Alter Titel"));
        QCOMPARE(e.V2Artist(), QStringLiteral("Neu ✓"));
        QCOMPARE(e.CommentText(1), QStringLiteral("Kommentar"));
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.mp3"), 1));
    }

    void v1GenreCodeAndText() {
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("genre.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV1GenreCode(8);
        QCOMPARE(e.V1Genre(), QStringLiteral("Jazz"));
        e.SetV1Genre(QStringLiteral("blues"));
        QCOMPARE(e.V1GenreCode(), 0);
        e.SetV1Genre(QStringLiteral("No such genre"));
        QCOMPARE(e.V1GenreCode(), 255);
        e.SetV1GenreCode(300);
        QCOMPARE(e.V1GenreCode(), 255);
        e.SetV1GenreCode(52);
        QVERIFY(e.SaveV1(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V1GenreCode(), 52);
        QCOMPARE(e.V1Genre(), e.GenreName(52));
        // Without a track the tag is version 1.0 with a 30-character comment.
        e.SetV1Track(QString());
        e.SetV1Comment(QStringLiteral("123456789012345678901234567890"));
        QVERIFY(e.SaveV1(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V1Version(), QStringLiteral("1.0"));
        QCOMPARE(e.V1Comment(), QStringLiteral("123456789012345678901234567890"));
        // Too long for the field: cut, never spilling into the next one.
        e.SetV1Title(QStringLiteral("A title much longer than thirty characters"));
        QVERIFY(e.SaveV1(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V1Title(), QStringLiteral("A title much longer than thirt"));
    }

    void aFileReplacedUnderItsNameGetsTheWholeSet() {
        // Keep the tags of a file that another file replaces under the same name: read,
        // replace, then save V2 and the typical set.
        const QString path =
            CopyFixture(QStringLiteral("tone.flac"), m_dir.path(), QStringLiteral("keep.flac"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 4);
        e.SetV2Title(QStringLiteral("Behalten ✓"));
        e.SetFlacTitle(QStringLiteral("Flac behalten"));
        e.SetComment(1, QStringLiteral("deu"), QString(), QStringLiteral("Kommentar"));
        QVERIFY(e.SaveV2(path));
        QVERIFY(e.SaveFlac(path));
        QCOMPARE(e.OpenFile(path), 4);
        QVERIFY(QFile::remove(path));
        QVERIFY(QFile::copy(FixtureDir() + QStringLiteral("/tone.flac"), path));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        QVERIFY(e.SaveV2(path));
        QVERIFY(e.SaveFlac(path));
        QCOMPARE(e.OpenFile(path), 4);
        QCOMPARE(e.V2Title(), QStringLiteral("Behalten ✓"));
        QCOMPARE(e.CommentText(1), QStringLiteral("Kommentar"));
        QCOMPARE(e.FlacTitle(), QStringLiteral("Flac behalten"));
    }

    void saveToAnotherFileWritesTheWholeSet() {
        // Tags read from one file and written into another (keep-tags copy).
        const QString a = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("a.mp3"));
        const QString b = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("b.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(a), 1);
        StageAll(e, TagSet::V2);
        e.SetComment(1, QStringLiteral("deu"), QString(), QStringLiteral("Kommentar"));
        QVERIFY(e.SaveV2(a));
        QCOMPARE(e.OpenFile(a), 1);
        QVERIFY(e.SaveV2(b));
        QCOMPARE(e.OpenFile(b), 1);
        QCOMPARE(e.V2Composer(), ValueFor(TagField::V2Composer));
        QCOMPARE(e.CommentText(1), QStringLiteral("Kommentar"));
    }
};

QTEST_GUILESS_MAIN(TestTagSets)
#include "test_tag_sets.moc"
