// TagEngine: file types by content, audio data, and what an untagged file answers.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

class TestTagDetect : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;
    QString Path(const QString& name) const { return m_dir.path() + QLatin1Char('/') + name; }

private slots:
    void everyFixtureHasItsType_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("type");
        for (const FixtureType& f : kFixtures)
            QTest::newRow(f.file) << QString::fromLatin1(f.file) << f.type;
    }
    void everyFixtureHasItsType() {
        QFETCH(QString, file);
        QFETCH(int, type);
        TagEngine e;
        QCOMPARE(e.OpenFile(FixtureDir() + QLatin1Char('/') + file), type);
        QCOMPARE(e.FileType(), type);
        QVERIFY2(e.DurationSeconds() > 0.4f && e.DurationSeconds() < 0.7f,
                 qPrintable(QString::number(e.DurationSeconds())));
        QVERIFY(e.Frequency() >= 8000);
        QVERIFY(e.Bitrate() > 0);
        QCOMPARE(e.FileSizeBytes(), QFileInfo(FixtureDir() + QLatin1Char('/') + file).size());
        // An untagged file: no set present, no V2 members, empty first comment.
        QVERIFY(!e.HasV1());
        QVERIFY(!e.HasV2());
        QVERIFY(!e.HasApe());
        QVERIFY(!e.HasLyrics());
        QVERIFY(e.V1Version().isEmpty());
        QVERIFY(e.V2Version().isEmpty());
        QCOMPARE(e.CommentCount(), 0);
        QCOMPARE(e.CommentText(1), QString());
        QCOMPARE(e.UserFrameCount(), 0);
        QCOMPARE(e.PictureCount(), 0);
        QCOMPARE(e.LyricCount(), 0);
        QCOMPARE(e.TrackNumberValue(), QStringLiteral("0"));
    }

    void typeByContentNotByName_data() {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("type");
        QTest::newRow("flac as mp3") << "tone.flac"
                                     << "song.mp3" << 4;
        QTest::newRow("mp3 as wav") << "tone.mp3"
                                    << "song.wav" << 1;
        QTest::newRow("ogg as mp3") << "tone.ogg"
                                    << "x.MP3" << 6;
        QTest::newRow("upper-case ext") << "tone.mp3"
                                        << "LOUD.MP3" << 1;
        QTest::newRow("upper flac") << "tone.flac"
                                    << "LOUD.FLAC" << 4;
        QTest::newRow("no extension") << "tone.wma"
                                      << "noext" << 2;
        QTest::newRow("picture as mp3") << "cover.jpg"
                                        << "cover.mp3" << 0;
        QTest::newRow("mpc as ogg") << "tone.mpc"
                                    << "x.ogg" << 7;
        QTest::newRow("ape") << "tone.ape"
                             << "x.APE" << 3;
        QTest::newRow("aac as m4a") << "tone.aac"
                                    << "x.m4a" << 8;
        QTest::newRow("m4b") << "tone.m4a"
                             << "book.m4b" << 9;
    }
    void typeByContentNotByName() {
        QFETCH(QString, fixture);
        QFETCH(QString, name);
        QFETCH(int, type);
        const QString path = CopyFixture(fixture, m_dir.path(), name);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), type);
    }

    void notAudioIsTypeZero() {
        TagEngine e;
        WriteAll(Path(QStringLiteral("text.mp3")), "This is a plain text file, not music.\r\n");
        QCOMPARE(e.OpenFile(Path(QStringLiteral("text.mp3"))), 0);
        QVERIFY(!e.LastError().isEmpty());
        WriteAll(Path(QStringLiteral("empty.mp3")), QByteArray());
        QCOMPARE(e.OpenFile(Path(QStringLiteral("empty.mp3"))), 0);
        QCOMPARE(e.OpenFile(m_dir.path()), 0);
        QCOMPARE(e.OpenFile(Path(QStringLiteral("missing.mp3"))), 0);
        QCOMPARE(e.OpenFile(QString()), 0);
        QVERIFY(!e.HasV1());
        QCOMPARE(e.CommentCount(), 0);
        QCOMPARE(e.CommentText(1), QString());
        // Only an ID3v2 tag and nothing behind it.
        QByteArray onlyTag("ID3\x03\x00\x00\x00\x00\x00\x0A", 10);
        onlyTag += QByteArray(10, '\0');
        WriteAll(Path(QStringLiteral("tagonly.mp3")), onlyTag);
        QCOMPARE(e.OpenFile(Path(QStringLiteral("tagonly.mp3"))), 0);
    }

    void headersCutShortAreTypeZero() {
        TagEngine e;
        for (const FixtureType& f : kFixtures) {
            const QByteArray all = ReadAll(FixtureDir() + QLatin1Char('/') + QLatin1String(f.file));
            for (int len : {3, 8, 20}) {
                const QString path = Path(QStringLiteral("cut%1-%2").arg(len).arg(QLatin1String(f.file)));
                WriteAll(path, all.left(len));
                QVERIFY2(e.OpenFile(path) == 0, qPrintable(path));
            }
        }
    }

    void mp3BehindId3v2AndPadding() {
        // An ID3v2 tag, then zero padding beyond its size, then the frames.
        QByteArray data("ID3\x03\x00\x00\x00\x00\x00\x10", 10);
        data += QByteArray(16 + 300, '\0');
        data += ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"));
        WriteAll(Path(QStringLiteral("padded.mp3")), data);
        TagEngine e;
        QCOMPARE(e.OpenFile(Path(QStringLiteral("padded.mp3"))), 1);
        QVERIFY(e.HasV2());
    }

    void genreTable() {
        TagEngine e;
        QVERIFY(e.GenreCount() >= 148);
        QCOMPARE(e.GenreName(0), QStringLiteral("Blues"));
        QCOMPARE(e.GenreName(17), QStringLiteral("Rock"));
        QCOMPARE(e.GenreName(255), QString());
        QCOMPARE(e.GenreName(-1), QString());
    }

    void openingIsFast() {
        // The scan opens every file of a folder: a few thousand opens stay well below a
        // millisecond each.
        TagEngine e;
        const QString mp3 = FixtureDir() + QStringLiteral("/tone.mp3");
        QElapsedTimer t;
        t.start();
        for (int i = 0; i < 2000; ++i)
            QCOMPARE(e.OpenFile(mp3), 1);
        QVERIFY2(t.elapsed() < 4000, qPrintable(QString::number(t.elapsed())));
    }
};

QTEST_GUILESS_MAIN(TestTagDetect)
#include "test_tag_detect.moc"
