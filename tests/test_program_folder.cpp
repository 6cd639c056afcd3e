// The program folder: beside the executable or per user, the first start and updates,
// and the merge of a newly shipped caption table into the user's.

#include "core/DataGrid.h"
#include "core/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

namespace {

void WriteText(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(f.write(bytes), qint64(bytes.size()));
}

QByteArray ReadText(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A caption table of `rows` rows: number, note, German, English.
void WriteCaptions(const QString& path, const QList<QStringList>& rows) {
    DataGrid g;
    g.AddColumn(QStringLiteral("No"), QString());
    g.AddColumn(QStringLiteral("Note"), QString());
    g.AddColumn(QStringLiteral("Deutsch"), QStringLiteral("Deutsch"));
    g.AddColumn(QStringLiteral("English"), QStringLiteral("English"));
    for (const QStringList& r : rows)
        g.AddRow(r);
    QVERIFY(g.SaveFile(path));
}

QString Cell(const QString& path, int row, int col) {
    DataGrid g;
    if (!g.LoadFile(path))
        return QStringLiteral("<unreadable>");
    return row <= g.Rows() ? g.CellText(row, col) : QStringLiteral("<no row>");
}

} // namespace

class TestProgramFolder : public QObject {
    Q_OBJECT
private slots:
    void buildFolderStaysBesideTheExecutable() {
        QTemporaryDir dir;
        WriteText(dir.filePath(QStringLiteral("bin/qlt.ini")), "x");
        WriteText(dir.filePath(QStringLiteral("share/quillotune/qlt.ini")), "x");
        const ProgramFolderChoice c =
            ChooseProgramFolder(dir.filePath(QStringLiteral("bin")), dir.filePath("data"));
        QVERIFY(!c.perUser);
        QCOMPARE(c.folder, QDir::cleanPath(dir.filePath(QStringLiteral("bin"))));
        QVERIFY(PrepareProgramFolder(c).ok);
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("data/quillotune"))));
    }

    void installedProgramGoesPerUser() {
        QTemporaryDir dir;
        QDir().mkpath(dir.filePath(QStringLiteral("usr/bin")));
        WriteText(dir.filePath(QStringLiteral("usr/share/quillotune/qlt.ini")), "x");
        const ProgramFolderChoice c = ChooseProgramFolder(dir.filePath(QStringLiteral("usr/bin/")),
                                                          dir.filePath(QStringLiteral("data")));
        QVERIFY(c.perUser);
        QCOMPARE(c.folder, dir.filePath(QStringLiteral("data/quillotune")));
        QCOMPARE(c.sharedFolder, dir.filePath(QStringLiteral("usr/share/quillotune")));
    }

    void readOnlyFolderWithFilesGoesPerUser() {
        if (::geteuid() == 0)
            QSKIP("root may write everywhere");
        QTemporaryDir dir;
        WriteText(dir.filePath(QStringLiteral("usr/bin/qlt.ini")), "x");
        WriteText(dir.filePath(QStringLiteral("usr/share/quillotune/qlt.ini")), "x");
        QFile::setPermissions(dir.filePath(QStringLiteral("usr/bin")), QFile::ReadOwner | QFile::ExeOwner);
        const ProgramFolderChoice c = ChooseProgramFolder(dir.filePath(QStringLiteral("usr/bin")),
                                                          dir.filePath(QStringLiteral("data")));
        QFile::setPermissions(dir.filePath(QStringLiteral("usr/bin")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(c.perUser);
    }

    void nothingShippedStaysBesideTheExecutable() {
        QTemporaryDir dir;
        QDir().mkpath(dir.filePath(QStringLiteral("bin")));
        const ProgramFolderChoice c =
            ChooseProgramFolder(dir.filePath(QStringLiteral("bin")), dir.filePath("data"));
        QVERIFY(!c.perUser);
    }

    void firstStartFillsAndUpdateAddsWithoutOverwriting() {
        QTemporaryDir dir;
        const QString shared = dir.filePath(QStringLiteral("usr/share/quillotune"));
        WriteText(shared + QStringLiteral("/qlt.ini"), "settings");
        WriteText(shared + QStringLiteral("/icons/a.ico"), "a");
        WriteCaptions(shared + QStringLiteral("/Caption.qlt"), {{"1", "", "Eins", "One"}});
        ProgramFolderChoice c;
        c.perUser = true;
        c.sharedFolder = shared;
        c.folder = dir.filePath(QStringLiteral("data/quillotune"));

        ProgramFolderSetup s = PrepareProgramFolder(c);
        QVERIFY2(s.ok, qPrintable(s.error));
        QVERIFY(s.filled);
        QCOMPARE(ReadText(c.folder + QStringLiteral("/qlt.ini")), QByteArray("settings"));
        QCOMPARE(ReadText(c.folder + QStringLiteral("/icons/a.ico")), QByteArray("a"));
        for (const char* sub : {"data", "reference", "skin", "temp", "language", "icons"})
            QVERIFY(QFileInfo(c.folder + u'/' + QLatin1String(sub)).isDir());

        // A second start with nothing new changes nothing.
        WriteText(c.folder + QStringLiteral("/qlt.ini"), "mine");
        s = PrepareProgramFolder(c);
        QVERIFY(s.ok && !s.filled && !s.updated);

        // An update: a new file arrives, the user's settings stay; a deleted settings file
        // is not quietly brought back (the start-up check reports it).
        WriteText(shared + QStringLiteral("/icons/b.ico"), "b");
        WriteText(shared + QStringLiteral("/icons/a.ico"), "a2");
        s = PrepareProgramFolder(c);
        QVERIFY2(s.ok, qPrintable(s.error));
        QVERIFY(s.updated);
        QCOMPARE(ReadText(c.folder + QStringLiteral("/icons/b.ico")), QByteArray("b"));
        QCOMPARE(ReadText(c.folder + QStringLiteral("/icons/a.ico")), QByteArray("a"));
        QCOMPARE(ReadText(c.folder + QStringLiteral("/qlt.ini")), QByteArray("mine"));
        QFile::remove(c.folder + QStringLiteral("/qlt.ini"));
        WriteText(shared + QStringLiteral("/icons/c.ico"), "c");
        QVERIFY(PrepareProgramFolder(c).ok);
        QVERIFY(!QFileInfo::exists(c.folder + QStringLiteral("/qlt.ini")));
    }

    void unwritableUserFolderFailsWithMessage() {
        if (::geteuid() == 0)
            QSKIP("root may write everywhere");
        QTemporaryDir dir;
        const QString shared = dir.filePath(QStringLiteral("share"));
        WriteText(shared + QStringLiteral("/qlt.ini"), "settings");
        QDir().mkpath(dir.filePath(QStringLiteral("locked")));
        QFile::setPermissions(dir.filePath(QStringLiteral("locked")), QFile::ReadOwner | QFile::ExeOwner);
        ProgramFolderChoice c;
        c.perUser = true;
        c.sharedFolder = shared;
        c.folder = dir.filePath(QStringLiteral("locked/quillotune"));
        const ProgramFolderSetup s = PrepareProgramFolder(c);
        QFile::setPermissions(dir.filePath(QStringLiteral("locked")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(!s.ok);
        QVERIFY(s.error.contains(QStringLiteral("Programmordner")));
        QVERIFY(s.error.contains(QStringLiteral("program folder")));
    }

    void captionMergeKeepsTheUsersTexts() {
        QTemporaryDir dir;
        const QString user = dir.filePath(QStringLiteral("user.qlt"));
        const QString oldShipped = dir.filePath(QStringLiteral("old.qlt"));
        const QString newShipped = dir.filePath(QStringLiteral("new.qlt"));
        WriteCaptions(oldShipped, {{"1", "", "Eins", "One"}, {"2", "", "Zwei", "Two"}, {"3", "", "", ""}});
        // The user translated row 2 and imported a language in column 5.
        {
            DataGrid g;
            QVERIFY(g.LoadFile(oldShipped));
            g.AddColumn(QStringLiteral("Français"), QStringLiteral("Français"));
            g.SetCellText(2, 4, QStringLiteral("Second"));
            g.SetCellText(1, 5, QStringLiteral("Un"));
            QVERIFY(g.SaveFile(user));
        }
        WriteCaptions(newShipped, {{"1", "", "Eins!", "One!"},
                                   {"2", "", "Zwei", "Two!"},
                                   {"3", "", "Drei", "Three"},
                                   {"4", "", "Vier", "Four"}});
        QString error;
        QVERIFY2(MergeCaptionFile(user, oldShipped, newShipped, &error), qPrintable(error));
        QCOMPARE(Cell(user, 1, 3), QStringLiteral("Eins!"));
        QCOMPARE(Cell(user, 1, 4), QStringLiteral("One!"));
        QCOMPARE(Cell(user, 1, 5), QStringLiteral("Un"));
        QCOMPARE(Cell(user, 2, 4), QStringLiteral("Second"));
        QCOMPARE(Cell(user, 3, 3), QStringLiteral("Drei"));
        QCOMPARE(Cell(user, 4, 4), QStringLiteral("Four"));
    }

    void captionMergeFailureLeavesTheUsersFile() {
        QTemporaryDir dir;
        const QString user = dir.filePath(QStringLiteral("user.qlt"));
        WriteCaptions(user, {{"1", "", "Eins", "One"}});
        const QByteArray before = ReadText(user);
        const QString broken = dir.filePath(QStringLiteral("broken.qlt"));
        WriteText(broken, "QLTGRID\t1\nC\t4\n");
        QString error;
        QVERIFY(!MergeCaptionFile(user, QString(), broken, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(ReadText(user), before);
    }

    void versionComesFromTheBuild() {
        QVERIFY(QRegularExpression(QStringLiteral("^\\d+\\.\\d+")).match(ProgramVersion()).hasMatch());
    }
};

QTEST_GUILESS_MAIN(TestProgramFolder)
#include "test_program_folder.moc"
