// quillotune-cli lrc: the rows a read gives (text and JSON, the five column keys) from a
// .lrc file, an LF-only .txt and a song; --into writes the song's "lrc" frame (read back
// with the engine) and --remove takes it out.
#include "CliRun.h"
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

CliRun Cli(const QStringList& args) {
    return RunCli(args);
}

} // namespace

class TestLrcCli : public QObject {
    Q_OBJECT
    QTemporaryDir tmp;

    QString Write(const QString& name, const QByteArray& bytes) {
        const QString path = tmp.path() + QLatin1Char('/') + name;
        tagtest::WriteAll(path, bytes);
        return path;
    }

private slots:
    void printsRows() {
        const QString lrc =
            Write(QStringLiteral("a.lrc"), "[ti:T]\r\n[01:02.34]abc\r\n\r\n[1:02.34]x\r\nlost");
        const CliRun r = Cli({QStringLiteral("lrc"), lrc});
        QCOMPARE(r.code, 0);
        const QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.value(0), QStringLiteral("Refrain\tSeconds\tTimeMSec\tmmss\tText"));
        QCOMPARE(lines.value(1), QStringLiteral("\t\t\t\t[ti:T]"));
        QCOMPARE(lines.value(2), QStringLiteral("\t62\t62340\t01:02.34\tabc"));
        QCOMPARE(lines.value(3), QStringLiteral("\t\t\t\t")); // a blank row inside the text
        QCOMPARE(lines.value(4), QStringLiteral("\t\t\t\t[1:02.34]x"));
        QCOMPARE(lines.size(), 5); // "lost" had no CR LF
    }

    void printsJsonOfLfFile() {
        const QString txt = Write(QStringLiteral("b.txt"), "[00:00.50]one\ntwo");
        const CliRun r = Cli({QStringLiteral("lrc"), txt, QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonArray rows = QJsonDocument::fromJson(r.out.toUtf8()).array();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0].toObject()[QStringLiteral("TimeMSec")].toString(), QStringLiteral("500"));
        QCOMPARE(rows[0].toObject()[QStringLiteral("Seconds")].toString(), QStringLiteral("0"));
        QCOMPARE(rows[0].toObject()[QStringLiteral("mmss")].toString(), QStringLiteral("00:00.50"));
        QCOMPARE(rows[1].toObject()[QStringLiteral("Text")].toString(), QStringLiteral("two"));
        QCOMPARE(rows[1].toObject()[QStringLiteral("Refrain")].toString(), QString());
    }

    void intoAndRemove() {
        const QString song =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), tmp.path(), QStringLiteral("s.mp3"));
        const QString lrc = Write(QStringLiteral("s.lrc"), "plain\r\n[00:03.00]Grüße\r\n");
        QCOMPARE(Cli({QStringLiteral("lrc"), song}).code, 1); // no frame yet
        CliRun r = Cli({QStringLiteral("lrc"), QStringLiteral("--into"), song, lrc});
        QVERIFY2(r.code == 0, qPrintable(r.err));
        TagEngine e;
        QCOMPARE(e.OpenFile(song), 1);
        QCOMPARE(e.UserFrameName(1), QStringLiteral("lrc"));
        QCOMPARE(e.UserFrameText(1), QStringLiteral("plain\r\n[00:03.00]Grüße\r\n\r\n"));
        r = Cli({QStringLiteral("lrc"), song});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains(QStringLiteral("\t3\t3000\t00:03.00\tGrüße")));
        r = Cli({QStringLiteral("lrc"), QStringLiteral("--remove"), song});
        QCOMPARE(r.code, 0);
        QCOMPARE(e.OpenFile(song), 1);
        QCOMPARE(e.UserFrameCount(), 0);
        QCOMPARE(Cli({QStringLiteral("lrc"), QStringLiteral("--remove"), song}).code, 1);
        QVERIFY(tagtest::AudioUnchanged(song, QStringLiteral("tone.mp3"), 1));
    }

    void refusals() {
        const QString flac =
            tagtest::CopyFixture(QStringLiteral("tone.flac"), tmp.path(), QStringLiteral("f.flac"));
        const QString lrc = Write(QStringLiteral("f.lrc"), "[00:03.00]x\r\n");
        const QString plain = Write(QStringLiteral("p.lrc"), "no stamp\r\n");
        const QString song =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), tmp.path(), QStringLiteral("r.mp3"));
        QCOMPARE(Cli({QStringLiteral("lrc"), QStringLiteral("--into"), flac, lrc}).code, 1);
        QCOMPARE(Cli({QStringLiteral("lrc"), QStringLiteral("--into"), song, plain}).code, 1);
        QCOMPARE(Cli({QStringLiteral("lrc"), tmp.path() + QStringLiteral("/missing.lrc")}).code, 1);
        QCOMPARE(Cli({QStringLiteral("lrc")}).code, 2);
        QCOMPARE(Cli({QStringLiteral("lrc"), QStringLiteral("--help")}).code, 0);
    }
};

QTEST_GUILESS_MAIN(TestLrcCli)
#include "test_lrc_cli.moc"
