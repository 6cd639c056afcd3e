// The trash: home trash with XDG_DATA_HOME pointed at a test folder, the volume
// trash of another mount, name collisions and the .trashinfo contents.

#include "TmpfsMount.h"
#include "core/Captions.h"
// GCC 12 reports a false "maybe uninitialized" inside std::optional<QString> of ScriptedPrompt.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include "core/Prompt.h"
#pragma GCC diagnostic pop
#include "file/ftcFileOps.h"
#include "platform/Trash.h"
#include "platform/Volumes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void Write(const QString& path, const QByteArray& data) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(data);
}

QByteArray Read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// The keys of a .trashinfo file; "header" holds the first line.
QMap<QString, QString> ParseInfo(const QString& path) {
    QMap<QString, QString> out;
    const QList<QByteArray> lines = Read(path).split('\n');
    if (!lines.isEmpty())
        out["header"] = QString::fromUtf8(lines[0]);
    for (const QByteArray& l : lines) {
        const int eq = l.indexOf('=');
        if (eq > 0)
            out[QString::fromUtf8(l.left(eq))] = QString::fromUtf8(l.mid(eq + 1));
    }
    return out;
}

} // namespace

class TestTrash : public QObject {
    Q_OBJECT
    QTemporaryDir m_data;

private slots:
    void initTestCase() {
        SetLanguageColumn(kLanguageEnglish);
        QVERIFY(m_data.isValid());
        qputenv("XDG_DATA_HOME", m_data.path().toUtf8());
    }
    void cleanupTestCase() { qunsetenv("XDG_DATA_HOME"); }

    void homeTrashFollowsXdgDataHome() { QCOMPARE(HomeTrashPath(), m_data.filePath("Trash")); }

    void trashEntryAndInfo() {
        QTemporaryDir dir;
        const QString name = QStringLiteral("Mein Lied ü 100%#.mp3");
        const QString src = dir.filePath(name);
        Write(src, "song");
        const TrashResult r = MoveToTrash(src);
        QCOMPARE(r.error, 0);
        QVERIFY(!QFile::exists(src));
        QCOMPARE(r.trashedPath, m_data.filePath("Trash/files/" + name));
        QCOMPARE(r.infoPath, m_data.filePath("Trash/info/" + name + ".trashinfo"));
        QCOMPARE(Read(r.trashedPath), QByteArray("song"));

        const auto info = ParseInfo(r.infoPath);
        QCOMPARE(info["header"], QString("[Trash Info]"));
        // Percent-encoded: no blank, no '%' of its own, no non-ASCII byte.
        QVERIFY(!info["Path"].contains(' '));
        QVERIFY(!info["Path"].contains("ü"));
        QVERIFY(info["Path"].contains("%20"));
        QCOMPARE(QUrl::fromPercentEncoding(info["Path"].toUtf8()), QDir::cleanPath(src));
        QVERIFY(QRegularExpression("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d$")
                    .match(info["DeletionDate"])
                    .hasMatch());
        struct stat st;
        QCOMPARE(::stat(QFile::encodeName(m_data.filePath("Trash")).constData(), &st), 0);
        QCOMPARE(int(st.st_mode & 0777), 0700);
    }
    void sameNameTwice() {
        QTemporaryDir dir;
        Write(dir.filePath("a/twice.mp3"), "first");
        Write(dir.filePath("b/twice.mp3"), "second");
        const TrashResult r1 = MoveToTrash(dir.filePath("a/twice.mp3"));
        const TrashResult r2 = MoveToTrash(dir.filePath("b/twice.mp3"));
        QCOMPARE(r1.error, 0);
        QCOMPARE(r2.error, 0);
        QCOMPARE(r2.trashedPath, m_data.filePath("Trash/files/twice (2).mp3"));
        QCOMPARE(r2.infoPath, m_data.filePath("Trash/info/twice (2).mp3.trashinfo"));
        QCOMPARE(Read(r1.trashedPath), QByteArray("first"));
        QCOMPARE(Read(r2.trashedPath), QByteArray("second"));
        QCOMPARE(QUrl::fromPercentEncoding(ParseInfo(r2.infoPath)["Path"].toUtf8()),
                 dir.filePath("b/twice.mp3"));
    }
    void missingFileFails() {
        QTemporaryDir dir;
        const TrashResult r = MoveToTrash(dir.filePath("none.mp3"));
        QCOMPARE(r.error, ENOENT);
        QVERIFY(!QFile::exists(m_data.filePath("Trash/info/none.mp3.trashinfo")));
    }
    void deleteFileToTrashAsks() {
        QTemporaryDir dir;
        Write(dir.filePath("ask.mp3"), "x");
        ScriptedPrompt no;
        no.answers = {false};
        QCOMPARE(DeleteFile(dir.filePath("ask.mp3"), true, true, &no), FileOp::Cancelled);
        QVERIFY(no.LastText().contains("trash"));
        QVERIFY(QFile::exists(dir.filePath("ask.mp3")));
        ScriptedPrompt yes;
        QCOMPARE(DeleteFile(dir.filePath("ask.mp3"), true, true, &yes), 0);
        QVERIFY(QFile::exists(m_data.filePath("Trash/files/ask.mp3")));
    }
    void otherVolumeUsesItsOwnTrash() {
        TmpfsMount mnt("1m");
        if (!mnt.IsMounted())
            QSKIP("cannot mount a tmpfs (needs root)");
        QVERIFY(!SameFileSystem(mnt.Path(), m_data.path()));
        QCOMPARE(MountTopDir(mnt.Path() + "/sub/deeper"), QFileInfo(mnt.Path()).canonicalFilePath());
        Write(mnt.Path() + "/sub/song.mp3", "on the stick");
        const TrashResult r = MoveToTrash(mnt.Path() + "/sub/song.mp3");
        QCOMPARE(r.error, 0);
        const QString own = mnt.Path() + "/.Trash-" + QString::number(::getuid());
        QCOMPARE(r.trashedPath, own + "/files/song.mp3");
        QCOMPARE(Read(r.trashedPath), QByteArray("on the stick"));
        // Relative to the volume's top folder.
        QCOMPARE(ParseInfo(r.infoPath)["Path"], QString("sub/song.mp3"));
    }
    void sharedVolumeTrashNeedsStickyBit() {
        TmpfsMount mnt("1m");
        if (!mnt.IsMounted())
            QSKIP("cannot mount a tmpfs (needs root)");
        const QString shared = mnt.Path() + "/.Trash";
        QVERIFY(QDir().mkpath(shared));
        // Without the sticky bit the shared folder is not trusted.
        QCOMPARE(::chmod(QFile::encodeName(shared).constData(), 0777), 0);
        Write(mnt.Path() + "/a.mp3", "a");
        TrashResult r = MoveToTrash(mnt.Path() + "/a.mp3");
        QCOMPARE(r.error, 0);
        QVERIFY(r.trashedPath.startsWith(mnt.Path() + "/.Trash-"));
        QCOMPARE(::chmod(QFile::encodeName(shared).constData(), 01777), 0);
        Write(mnt.Path() + "/b.mp3", "b");
        r = MoveToTrash(mnt.Path() + "/b.mp3");
        QCOMPARE(r.error, 0);
        QCOMPARE(r.trashedPath, shared + "/" + QString::number(::getuid()) + "/files/b.mp3");
    }
};

QTEST_GUILESS_MAIN(TestTrash)
#include "test_fileops_trash.moc"
