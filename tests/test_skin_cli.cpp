// quillotune-cli skin: the 33 values of a skin printed as lines and as JSON, the default
// skin for a missing file, a skin written from values and read back, and bad values.
#include "CliRun.h"
#include "text/modScrollText.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {
CliRun Cli(const QStringList& args) {
    return RunCli(args);
}
} // namespace

class TestSkinCli : public QObject {
    Q_OBJECT
private slots:
    void printsAll33() {
        QTemporaryDir dir;
        const CliRun r = Cli({QStringLiteral("skin"), dir.filePath(QStringLiteral("missing.scs"))});
        QCOMPARE(r.code, 0);
        const QStringList lines = r.out.trimmed().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 33);
        QCOMPARE(lines.first(), QStringLiteral("Mode=3"));
        QVERIFY(lines.contains(QStringLiteral("FontName=Tahoma")));
        QVERIFY(lines.contains(QStringLiteral("ForeTable5=16772070")));
        QCOMPARE(lines.last(), QStringLiteral("Top1Bold=0"));
    }

    void writesFromValues() {
        QTemporaryDir dir;
        const QString base = dir.filePath(QStringLiteral("Dark"));
        CliRun r = Cli({QStringLiteral("skin"), QStringLiteral("--write"), base, QStringLiteral("Mode=4"),
                        QStringLiteral("WindowBack=1"), QStringLiteral("FontName=DejaVu Sans"),
                        QStringLiteral("ForeTable10=77"), QStringLiteral("actbold=0")});
        QCOMPARE(r.code, 0);
        const QString path = base + QStringLiteral(".scs");
        QCOMPARE(r.out.trimmed(), path);
        const ScrollSkin k = LoadScrollSkin(path);
        QCOMPARE(k.Mode, 4);
        QCOMPARE(k.WindowBack, 1);
        QCOMPARE(k.FontName, QStringLiteral("DejaVu Sans"));
        QCOMPARE(k.ForeTable[9], 77);
        QVERIFY(!k.ActBold);
        r = Cli({QStringLiteral("skin"), path, QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonObject o = QJsonDocument::fromJson(r.out.toUtf8()).object();
        QCOMPARE(o.size(), 33);
        QCOMPARE(o.value(QStringLiteral("Mode")).toInt(), 4);
        QCOMPARE(o.value(QStringLiteral("FontName")).toString(), QStringLiteral("DejaVu Sans"));
        QCOMPARE(o.value(QStringLiteral("ForeTable10")).toInt(), 77);
        // --from starts from another skin
        r = Cli({QStringLiteral("skin"), QStringLiteral("--write"), dir.filePath(QStringLiteral("b.scs")),
                 QStringLiteral("--from"), path, QStringLiteral("Mode=3")});
        QCOMPARE(r.code, 0);
        QCOMPARE(LoadScrollSkin(dir.filePath(QStringLiteral("b.scs"))).WindowBack, 1);
    }

    void badValues() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("x.scs"));
        QCOMPARE(
            Cli({QStringLiteral("skin"), QStringLiteral("--write"), path, QStringLiteral("Colour=1")}).code,
            2);
        QCOMPARE(
            Cli({QStringLiteral("skin"), QStringLiteral("--write"), path, QStringLiteral("Mode=x")}).code, 2);
        QVERIFY(!QFile::exists(path));
        QCOMPARE(Cli({QStringLiteral("skin")}).code, 2);
        QCOMPARE(Cli({QStringLiteral("skin"), QStringLiteral("--write"),
                      dir.filePath(QStringLiteral("no/such/a.scs"))})
                     .code,
                 1);
    }
};

QTEST_GUILESS_MAIN(TestSkinCli)
#include "test_skin_cli.moc"
