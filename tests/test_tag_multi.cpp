// TagEngine: the multi-valued members of V2 (comments, lyric texts, user text frames,
// pictures), rating and mood, picture links.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

class TestTagMulti : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;
    QString Fresh(const QString& name, const QString& fixture = QStringLiteral("tone.mp3")) {
        return CopyFixture(fixture, m_dir.path(), name);
    }

private slots:
    void comments() {
        const QString path = Fresh(QStringLiteral("comments.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.CommentCount(), 0);
        QCOMPARE(e.CommentText(1), QString());
        // Index 1 on a file without comments creates the first one.
        QVERIFY(e.SetComment(1, QStringLiteral("???"), QString(), QStringLiteral("Erster ✓")));
        QVERIFY(e.SetComment(e.CommentCount() + 1, QStringLiteral("eng"), QStringLiteral("Beschreibung"),
                             QStringLiteral("Zweiter 日本")));
        QVERIFY(e.SetComment(3, QStringLiteral("deu"), QStringLiteral("d3"), QStringLiteral("Dritter")));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.CommentCount(), 3);
        QCOMPARE(e.CommentLanguage(1), QStringLiteral("???"));
        QCOMPARE(e.CommentText(1), QStringLiteral("Erster ✓"));
        QCOMPARE(e.CommentLanguage(2), QStringLiteral("eng"));
        QCOMPARE(e.CommentDescription(2), QStringLiteral("Beschreibung"));
        QCOMPARE(e.CommentText(2), QStringLiteral("Zweiter 日本"));
        QCOMPARE(e.CommentText(3), QStringLiteral("Dritter"));
        QCOMPARE(e.CommentText(4), QString());
        // Replace 2, remove 1 by three empty texts.
        QVERIFY(e.SetComment(2, QStringLiteral("fra"), QString(), QStringLiteral("Neu")));
        QVERIFY(e.SetComment(1, QString(), QString(), QString()));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.CommentCount(), 2);
        QCOMPARE(e.CommentText(1), QStringLiteral("Neu"));
        QCOMPARE(e.CommentLanguage(1), QStringLiteral("fra"));
        e.ClearComments();
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.CommentCount(), 0);
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.mp3"), 1));
    }

    void lyricTexts() {
        const QString path = Fresh(QStringLiteral("lyrics.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        const QString lrc = QStringLiteral("[00:01.00]Zeile eins\r\n[00:02.50]Zeile zwei ✓\r\n");
        QVERIFY(e.SetLyric(1, QStringLiteral("GER"), QStringLiteral("lrc"), lrc));
        QVERIFY(e.SetLyric(2, QStringLiteral("ENG"), QString(), QStringLiteral("Plain text\nline two")));
        QVERIFY(e.SetLyric(3, QStringLiteral("UNO"), QStringLiteral("third"), QStringLiteral("drei")));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.LyricCount(), 3);
        QCOMPARE(e.LyricDescription(1), QStringLiteral("lrc"));
        QCOMPARE(e.LyricText(1), lrc);
        QCOMPARE(e.LyricLanguage(2), QStringLiteral("ENG"));
        QCOMPARE(e.LyricText(2), QStringLiteral("Plain text\nline two"));
        QVERIFY(e.SetLyric(2, QString(), QString(), QString())); // removes entry 2
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.LyricCount(), 2);
        QCOMPARE(e.LyricText(2), QStringLiteral("drei"));
        e.ClearLyrics();
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.LyricCount(), 0);
    }

    void userFramesRatingAndMood() {
        const QString path = Fresh(QStringLiteral("frames.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.UserFrameCount(), 0);
        // Index 0 on a file without frames creates the first one.
        QVERIFY(e.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT5")));
        QVERIFY(e.SetUserFrame(2, QStringLiteral("MOD"), QStringLiteral("MOODfröhlich ✓")));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.UserFrameCount(), 2);
        QCOMPARE(e.UserFrameName(1), QStringLiteral("QLT"));
        QCOMPARE(e.UserFrameText(1), QStringLiteral("QLT5"));
        QCOMPARE(e.UserFrameName(2), QStringLiteral("MOD"));
        QCOMPARE(e.V2Rating(), QStringLiteral("5"));
        QCOMPARE(e.V2Mood(), QStringLiteral("fröhlich ✓"));
        // The reader looks at the text only, and the last matching frame wins.
        QVERIFY(e.SetUserFrame(3, QStringLiteral("other"), QStringLiteral("QLT9")));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Rating(), QStringLiteral("9"));
        // The time-stamped lyrics go into frame 1, replacing what stood there.
        QVERIFY(e.SetUserFrame(1, QStringLiteral("lrc"), QStringLiteral("[00:01.00]eins\r\n")));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.UserFrameName(1), QStringLiteral("lrc"));
        QCOMPARE(e.UserFrameText(1), QStringLiteral("[00:01.00]eins\r\n"));
        // Empty name and text remove the frame.
        QVERIFY(e.SetUserFrame(1, QString(), QString()));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.UserFrameCount(), 2);
        QCOMPARE(e.UserFrameName(1), QStringLiteral("MOD"));
    }

    void pictures() {
        const QString path = Fresh(QStringLiteral("pictures.mp3"));
        const QString cover = FixtureDir() + QStringLiteral("/cover.jpg");
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(e.AddPicture(cover, QStringLiteral("Vorderseite ✓"), 1, 3));
        QVERIFY(e.AddPicture(cover, QStringLiteral("Rückseite"), 2, 4, QStringLiteral("image/jpeg")));
        const QString link = QStringLiteral("-->/home/user/Bilder/日本 cover.png");
        QVERIFY(e.AddPicture(QString(), QStringLiteral("Link"), 3, 0, link));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.PictureCount(), 3);
        QCOMPARE(e.PictureDescription(1), QStringLiteral("Vorderseite ✓"));
        QCOMPARE(e.PictureType(1), 3);
        QCOMPARE(e.PictureMime(1), QStringLiteral("image/jpeg"));
        QCOMPARE(e.PictureType(2), 4);
        QCOMPARE(e.PictureMime(3), link);
        QCOMPARE(e.PictureSize(3), 0);
        const QString out = m_dir.path() + QStringLiteral("/out.jpg");
        QVERIFY(e.ExportPicture(1, out));
        QCOMPARE(ReadAll(out), ReadAll(cover));
        QVERIFY(!e.ExportPicture(3, out)); // a link has no data
        QVERIFY(!e.LastError().isEmpty());
        QVERIFY(!e.ExportPicture(9, out));
        // Replace, then remove one, then all.
        QVERIFY(e.AddPicture(cover, QStringLiteral("ersetzt"), 2, 5));
        QVERIFY(e.RemovePicture(1));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.PictureCount(), 2);
        QCOMPARE(e.PictureDescription(1), QStringLiteral("ersetzt"));
        QCOMPARE(e.PictureMime(2), link); // the link survives a second write unchanged
        QVERIFY(!e.RemovePicture(7));
        QVERIFY(!e.AddPicture(m_dir.path() + QStringLiteral("/missing.jpg"), QString(), 1, 3));
        e.ClearPictures();
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.PictureCount(), 0);
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.mp3"), 1));
    }

    void bigPicture() {
        const QString path = Fresh(QStringLiteral("big.flac"), QStringLiteral("tone.flac"));
        QByteArray big = ReadAll(FixtureDir() + QStringLiteral("/cover.jpg"));
        big += QByteArray(10 * 1024 * 1024, '\x5A');
        const QString pic = m_dir.path() + QStringLiteral("/big.jpg");
        WriteAll(pic, big);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 4);
        QVERIFY(e.AddPicture(pic, QStringLiteral("groß"), 1, 3));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), 4);
        QCOMPARE(e.PictureCount(), 1);
        QCOMPARE(e.PictureSize(1), big.size());
        QCOMPARE(e.PictureMime(1), QStringLiteral("image/jpeg"));
        QVERIFY(AudioUnchanged(path, QStringLiteral("tone.flac"), 4));
    }

    void membersOnOtherTypes_data() {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<int>("type");
        QTest::newRow("ape") << "tone.ape" << 3;
        QTest::newRow("flac") << "tone.flac" << 4;
        QTest::newRow("ogg") << "tone.ogg" << 6;
        QTest::newRow("mpc") << "tone.mpc" << 7;
        QTest::newRow("aac") << "tone.aac" << 8;
    }
    void membersOnOtherTypes() {
        QFETCH(QString, fixture);
        QFETCH(int, type);
        const QString path = Fresh(QStringLiteral("multi-") + fixture, fixture);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), type);
        QVERIFY(e.SetComment(1, QStringLiteral("eng"), QString(), QStringLiteral("c ✓")));
        QVERIFY(e.SetLyric(1, QStringLiteral("eng"), QStringLiteral("lrc"), QStringLiteral("l ✓")));
        QVERIFY(e.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT3")));
        QVERIFY(e.AddPicture(FixtureDir() + QStringLiteral("/cover.jpg"), QStringLiteral("p"), 1, 3));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(e.OpenFile(path), type);
        QCOMPARE(e.CommentText(1), QStringLiteral("c ✓"));
        QCOMPARE(e.LyricText(1), QStringLiteral("l ✓"));
        QCOMPARE(e.V2Rating(), QStringLiteral("3"));
        QCOMPARE(e.PictureCount(), 1);
        QVERIFY(AudioUnchanged(path, fixture, type));
    }

    void stagedValuesAreForgottenByOpenFile() {
        const QString path = Fresh(QStringLiteral("forget.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV2Title(QStringLiteral("staged"));
        e.SetComment(1, QStringLiteral("eng"), QString(), QStringLiteral("x"));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Title(), QString());
        QCOMPARE(e.CommentCount(), 0);
        QVERIFY(e.SaveV2(path)); // nothing staged: the file gets an empty tag or none
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Title(), QString());
    }
};

QTEST_GUILESS_MAIN(TestTagMulti)
#include "test_tag_multi.moc"
