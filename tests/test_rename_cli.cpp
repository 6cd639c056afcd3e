// quillotune-cli rename and undo: dry run, JSON output, the renames on disk, failures
// with their reason, and the undo of the last batch.

#include "TestPaths.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Result {
    int code = -1;
    QByteArray out, err;
};

Result Cli(const QStringList& args) {
    QProcess p;
    p.start(ProgramDir() + QStringLiteral("/quillotune-cli"), args);
    Result r;
    if (!p.waitForFinished(60000))
        return r;
    r.code = p.exitCode();
    r.out = p.readAllStandardOutput();
    r.err = p.readAllStandardError();
    return r;
}

QStringList Names(const QString& dir) {
    return QDir(dir).entryList(QDir::Files, QDir::Name);
}

} // namespace

class TestRenameCli : public QObject {
    Q_OBJECT

private slots:
    void dryRunThenRenameThenUndo() {
        QTemporaryDir dir;
        for (const char* n : {"01 - Abba - SOS.mp3", "Cream - Crossroads.mp3"})
            QVERIFY(
                QFile::copy(FixtureDir() + QStringLiteral("/tone.mp3"), dir.filePath(QString::fromUtf8(n))));
        const QStringList before = Names(dir.path());

        Result r = Cli({QStringLiteral("rename"), dir.path(), QStringLiteral("--do"), QStringLiteral("swap"),
                        QStringLiteral("--digits"), QStringLiteral("2"), QStringLiteral("--dry-run"),
                        QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonObject top = QJsonDocument::fromJson(r.out).object();
        QCOMPARE(top.value(QStringLiteral("dryRun")).toBool(), true);
        const QJsonArray rows = top.value(QStringLiteral("rows")).toArray();
        QCOMPARE(rows.size(), 2);
        QStringList proposed;
        for (const QJsonValue& v : rows)
            proposed << v.toObject().value(QStringLiteral("new")).toString();
        proposed.sort();
        QCOMPARE(proposed, (QStringList{QStringLiteral("01_SOS - Abba.mp3"),
                                        QStringLiteral("Crossroads - Cream.mp3")}));
        QCOMPARE(Names(dir.path()), before); // nothing moved

        r = Cli({QStringLiteral("rename"), dir.path(), QStringLiteral("--do"), QStringLiteral("swap"),
                 QStringLiteral("--digits"), QStringLiteral("2")});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains("-> Crossroads - Cream.mp3"));
        QCOMPARE(Names(dir.path()), (QStringList{QStringLiteral("01_SOS - Abba.mp3"),
                                                 QStringLiteral("Crossroads - Cream.mp3")}));

        r = Cli({QStringLiteral("undo")});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains("renamed back: 2"));
        QCOMPARE(Names(dir.path()), before);
        // Nothing left to undo.
        QCOMPARE(Cli({QStringLiteral("undo")}).code, 1);
    }

    void filesFailuresAndUsage() {
        QTemporaryDir dir;
        QFile f(dir.filePath(QStringLiteral("Abba - SOS.txt")));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
        // A plain file is renamed as well; a cut that empties the name fails with its reason.
        Result r = Cli({QStringLiteral("rename"), f.fileName(), QStringLiteral("--do"), QStringLiteral("cut"),
                        QStringLiteral("--a"), QStringLiteral("0"), QStringLiteral("--b"),
                        QStringLiteral("20"), QStringLiteral("--json")});
        QCOMPARE(r.code, 1);
        const QJsonObject row =
            QJsonDocument::fromJson(r.out).object().value(QStringLiteral("rows")).toArray().at(0).toObject();
        QCOMPARE(row.value(QStringLiteral("ok")).toBool(), false);
        QVERIFY(!row.value(QStringLiteral("reason")).toString().isEmpty());
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Abba - SOS.txt")});

        r = Cli({QStringLiteral("rename"), f.fileName(), QStringLiteral("--do"), QStringLiteral("replace"),
                 QStringLiteral("sos"), QStringLiteral("Waterloo")});
        QCOMPARE(r.code, 0);
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Abba - Waterloo.txt")});

        // Cut with A > B ends with its message before any file.
        r = Cli({QStringLiteral("rename"), dir.path(), QStringLiteral("--do"), QStringLiteral("cut"),
                 QStringLiteral("--a"), QStringLiteral("3"), QStringLiteral("--b"), QStringLiteral("2")});
        QCOMPARE(r.code, 2);
        QCOMPARE(Cli({QStringLiteral("rename"), dir.path()}).code, 2);
        QCOMPARE(
            Cli({QStringLiteral("rename"), dir.path(), QStringLiteral("--do"), QStringLiteral("nonsense")})
                .code,
            2);
        QCOMPARE(Cli({QStringLiteral("rename"), QStringLiteral("--help")}).code, 0);
    }
};

QTEST_GUILESS_MAIN(TestRenameCli)
#include "test_rename_cli.moc"
