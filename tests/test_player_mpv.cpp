// The media device on libmpv with the null audio output: it plays in real time, so these
// tests use songs of a few seconds and wait a little.

#include "TestPaths.h"
#include "WavUtil.h"
#include "platform/mpv/MpvDevice.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class TestPlayerMpv : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<MpvDevice> m_dev;

    // Waits until the position reaches `ms`, at most `timeout` ms.
    bool WaitForPosition(qint32 ms, int timeout = 3000) {
        QElapsedTimer t;
        t.start();
        while (t.elapsed() < timeout) {
            if (m_dev->Position() >= ms)
                return true;
            QTest::qWait(20);
        }
        return false;
    }

private slots:
    void initTestCase() {
        m_dev = std::make_unique<MpvDevice>(QStringLiteral("null"));
        QVERIFY(m_dev->IsValid());
        QVERIFY(WriteWav(m_dir.filePath(QStringLiteral("three.wav")), 3));
    }
    void cleanupTestCase() { m_dev.reset(); }
    void cleanup() { m_dev->Close(); }

    void playsPausesSeeksAndCloses() {
        QVERIFY(m_dev->Open(m_dir.filePath(QStringLiteral("three.wav"))));
        QVERIFY(m_dev->IsOpen());
        QCOMPARE(m_dev->Position(), 0);
        m_dev->PlayFrom(0);
        QVERIFY(WaitForPosition(200));
        m_dev->Pause();
        QTest::qWait(100);
        const qint32 paused = m_dev->Position();
        QTest::qWait(300);
        QVERIFY(qAbs(m_dev->Position() - paused) < 50);
        m_dev->PlayFrom(2000); // plays on from there
        QVERIFY(WaitForPosition(2100));
        m_dev->Pause();
        m_dev->PlayFrom(500); // backwards
        QTest::qWait(100);
        QVERIFY(m_dev->Position() < 1500);
        m_dev->Close();
        QVERIFY(!m_dev->IsOpen());
        QCOMPARE(m_dev->Position(), 0);
    }

    void staysAtTheEnd() {
        QVERIFY(m_dev->Open(m_dir.filePath(QStringLiteral("three.wav"))));
        m_dev->PlayFrom(2700);
        QTest::qWait(800);
        QVERIFY(m_dev->IsOpen());
        QVERIFY(m_dev->Position() >= 2900); // the end test of the player sees the end
    }

    void missingAndBrokenFilesFail() {
        QVERIFY(!m_dev->Open(m_dir.filePath(QStringLiteral("nothere.mp3"))));
        QVERIFY(!m_dev->IsOpen());
        QFile broken(m_dir.filePath(QStringLiteral("broken.mp3")));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write(QByteArray(4000, '\x5a'));
        broken.close();
        QVERIFY(!m_dev->Open(broken.fileName()));
        QCOMPARE(m_dev->Position(), 0);
        // A good song opens after a failed one.
        QVERIFY(m_dev->Open(m_dir.filePath(QStringLiteral("three.wav"))));
    }

    void pathsWithBlanksAndOtherScriptsPlay() {
        const QString blanks = m_dir.filePath(QStringLiteral("a song – Ärger ñ 日本.wav"));
        QVERIFY(QFile::copy(m_dir.filePath(QStringLiteral("three.wav")), blanks));
        QVERIFY(m_dev->Open(blanks));
        m_dev->PlayFrom(0);
        QVERIFY(WaitForPosition(100));
        // A name whose bytes are no UTF-8 (Latin-1 "é").
        const QByteArray raw = QFile::encodeName(m_dir.path()) + "/caf\xe9.wav";
        const QString latin = QFile::decodeName(raw);
        QVERIFY(QFile::copy(m_dir.filePath(QStringLiteral("three.wav")), latin));
        QVERIFY(m_dev->Open(latin));
    }

    void everyFixtureTypeOpens_data() {
        QTest::addColumn<QString>("file");
        for (const char* f : {"tone.mp3", "tone.flac", "tone.ogg", "tone-opus.oga", "tone.wav", "tone.aac",
                              "tone.m4a", "tone.wma"})
            QTest::newRow(f) << QString::fromLatin1(f);
    }
    void everyFixtureTypeOpens() {
        QFETCH(QString, file);
        QVERIFY(m_dev->Open(FixtureDir() + QLatin1Char('/') + file));
        QVERIFY(!m_dev->StreamType().isEmpty());
    }

    void withoutSoundTheSongRunsAndTheDeviceSaysSoOnce() {
        // OSS does not exist on this system: the list falls through to the null output.
        MpvDevice dev(QStringLiteral("oss,null"));
        QSignalSpy missing(&dev, &MediaDevice::audioOutputMissing);
        for (int i = 0; i < 2; ++i) {
            QVERIFY(dev.Open(m_dir.filePath(QStringLiteral("three.wav"))));
            dev.PlayFrom(0);
            QTRY_VERIFY_WITH_TIMEOUT(dev.Position() > 100, 3000);
        }
        QCOMPARE(missing.count(), 1);
        QVERIFY(!dev.HasAudioOutput());
        QVERIFY(m_dev->HasAudioOutput()); // "null" alone was asked for: no news
    }

    void volumeIsTheDevicesOwn() {
        m_dev->SetVolume(40);
        QCOMPARE(m_dev->Volume(), 40);
        m_dev->SetVolume(100);
        QCOMPARE(m_dev->Volume(), 100);
    }
};

QTEST_GUILESS_MAIN(TestPlayerMpv)
#include "test_player_mpv.moc"
