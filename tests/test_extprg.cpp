// External programs: the list from the settings rows, the keys, and the start without a
// shell, checked by a script that records the arguments it gets.
#include "CliRun.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "prefs/modExtPrg.h"

#include <QtTest>

class TestExtPrg : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

    QString Script(const QString& name, const QString& out) {
        const QString path = dir.filePath(name);
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly))
            return QString();
        f.write("#!/bin/sh\nprintf '%s\\0' \"$@\" > \"" + out.toUtf8() + ".part\"\nmv \"" + out.toUtf8() +
                ".part\" \"" + out.toUtf8() + "\"\n");
        f.close();
        f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }
    static QStringList Recorded(const QString& out) {
        QFile f(out);
        for (int i = 0; i < 100 && !f.exists(); ++i)
            QTest::qWait(50);
        if (!f.open(QIODevice::ReadOnly))
            return {};
        QList<QByteArray> parts = f.readAll().split('\0');
        parts.removeLast(); // after the last terminator
        QStringList args;
        for (const QByteArray& p : parts)
            args.append(QString::fromUtf8(p));
        return args;
    }

private slots:
    void listFromSettings() {
        DataGrid ini;
        for (int c = 1; c <= Ini::Columns; ++c)
            ini.AddColumn(QString::number(c), QString());
        for (int r = 0; r < 12; ++r)
            ini.AddRow({});
        ini.SetCellText(2, Ini::PrgExternNameCol, QStringLiteral("Editor"));
        ini.SetCellText(2, Ini::PrgExternPathCol, QStringLiteral("/usr/bin/editor"));
        ini.SetCellText(10, Ini::PrgExternPathCol, QStringLiteral("/opt/x/tool"));
        ini.SetCellText(11, Ini::PrgExternPathCol, QStringLiteral("/beyond/ten")); // not a program row
        const auto programs = ExternalPrograms(ini);
        QCOMPARE(programs.size(), std::size_t(2));
        QCOMPARE(programs[0].Key(), QStringLiteral("extPrg02"));
        QCOMPARE(programs[0].name, QStringLiteral("Editor"));
        QCOMPARE(programs[1].Key(), QStringLiteral("extPrg10"));
        QCOMPARE(programs[1].name, QStringLiteral("tool")); // no name: the file name
        QCOMPARE(ExternalProgramNumber(QStringLiteral("extPrg07")), 7);
        QCOMPARE(ExternalProgramNumber(QStringLiteral("extPrg11")), 0);
        QCOMPARE(ExternalProgramNumber(QStringLiteral("extPrg00")), 0);
        QCOMPARE(ExternalProgramNumber(QStringLiteral("Copy")), 0);
    }

    void argumentsArriveAsTheyStand() {
        const QString out = dir.filePath(QStringLiteral("args.bin"));
        const QString script = Script(QStringLiteral("record me.sh"), out);
        QVERIFY(!script.isEmpty());
        const QStringList args = {QStringLiteral("/music/It's \"quoted\".mp3"),
                                  QStringLiteral("two  blanks .flac"),
                                  QStringLiteral("$HOME and `id`"),
                                  QStringLiteral("-rf"),
                                  QStringLiteral("a;b|c & d > e"),
                                  QStringLiteral("Ärger ünd Ölmühle.ogg")};
        ScriptedPrompt prompt;
        QVERIFY(StartExternalProgram(script, args, prompt));
        QCOMPARE(Recorded(out), args);
        QVERIFY(prompt.shown.empty());
    }

    void missingProgramGivesMessage() {
        ScriptedPrompt prompt;
        QVERIFY(
            !StartExternalProgram(dir.filePath(QStringLiteral("not there")), {QStringLiteral("x")}, prompt));
        QCOMPARE(prompt.Count(QStringLiteral("tell")), 1);
        QVERIFY(prompt.shown.back().text.endsWith(QStringLiteral("not there")));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);
        // a file that may not be run and a folder are no programs either
        const QString plain = dir.filePath(QStringLiteral("plain.txt"));
        QFile f(plain);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
        QVERIFY(!StartExternalProgram(plain, {}, prompt));
        QVERIFY(!StartExternalProgram(dir.path(), {}, prompt));
        QVERIFY(!StartExternalProgram(QStringLiteral("no-such-program-on-path-xyz"), {}, prompt));
        QCOMPARE(prompt.Count(QStringLiteral("tell")), 4);
    }

    void cliVerb() {
        // the default settings set up no program
        CliRun r = RunCli({QStringLiteral("programs")});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.trimmed().isEmpty());
        QCOMPARE(RunCli({QStringLiteral("programs"), QStringLiteral("--start"), QStringLiteral("11")}).code,
                 2);
        QCOMPARE(RunCli({QStringLiteral("programs"), QStringLiteral("--start"), QStringLiteral("3"),
                         QStringLiteral("a.mp3")})
                     .code,
                 1);
        r = RunCli({QStringLiteral("programs"), QStringLiteral("--help")});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains(QStringLiteral("--start N")));
    }

    void programLookedUpOnPath() {
        QVERIFY(!ResolveProgram(QStringLiteral("sh")).isEmpty());
        QVERIFY(ResolveProgram(QString()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestExtPrg)
#include "test_extprg.moc"
