// The file primitives: copy, move, rename, delete and KillFile, with collisions,
// other file systems, read-only folders and full disks.

#include "TmpfsMount.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "file/ftcFileOps.h"
#include "platform/Volumes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray Pattern(int size, char seed = 'a') {
    QByteArray b(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        b[i] = char(seed + (i * 7 + i / 251) % 26);
    return b;
}

void Write(const QString& path, const QByteArray& data) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(f.write(data), data.size());
}

QByteArray Read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A fixed, old modification time and an unusual mode, to see both survive.
void MarkFile(const QString& path) {
    const struct timespec times[2] = {{1000000000, 0}, {1234567890, 123456789}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0640), 0);
}

void CheckMarked(const QString& path) {
    struct stat st;
    QCOMPARE(::stat(QFile::encodeName(path).constData(), &st), 0);
    QCOMPARE(int(st.st_mode & 07777), 0640);
    QCOMPARE(qint64(st.st_mtim.tv_sec), qint64(1234567890));
    QCOMPARE(qint64(st.st_mtim.tv_nsec), qint64(123456789));
}

// Names in a folder, hidden ones included (left-over temporary files would show here).
QStringList Names(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

class TestFileOps : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { SetLanguageColumn(kLanguageEnglish); }

    // ---- copy ----------------------------------------------------------------------
    void copyIntoFolderKeepsNameModeAndTime() {
        QTemporaryDir dir;
        const QString src = dir.filePath("a/Song.mp3");
        Write(src, Pattern(300000));
        MarkFile(src);
        QDir().mkpath(dir.filePath("b"));
        QString final;
        QCOMPARE(CopyFile(src, dir.filePath("b"), false, nullptr, &final), 0);
        QCOMPARE(final, dir.filePath("b/Song.mp3"));
        QCOMPARE(Read(final), Pattern(300000));
        CheckMarked(final);
        QVERIFY(QFile::exists(src));
        QCOMPARE(Names(dir.filePath("b")), QStringList{"Song.mp3"});
    }
    void copyToFullPathMakesFolders() {
        QTemporaryDir dir;
        const QString src = dir.filePath("x.flac");
        Write(src, "data");
        QCOMPARE(CopyFile(src, dir.filePath("new/deeper/y.flac"), false), 0);
        QCOMPARE(Read(dir.filePath("new/deeper/y.flac")), QByteArray("data"));
        // A target ending in "/" is a folder even when it does not exist yet.
        QCOMPARE(CopyFile(src, dir.filePath("made") + "/", false), 0);
        QCOMPARE(Read(dir.filePath("made/x.flac")), QByteArray("data"));
    }
    void copyRenameOnCollisionNumbers() {
        QTemporaryDir dir;
        Write(dir.filePath("src/name.ext"), "new");
        Write(dir.filePath("dst/name.ext"), "old");
        QString final;
        QCOMPARE(CopyFile(dir.filePath("src/name.ext"), dir.filePath("dst"), true, nullptr, &final), 0);
        QCOMPARE(final, dir.filePath("dst/name (2).ext"));
        QCOMPARE(CopyFile(dir.filePath("src/name.ext"), dir.filePath("dst"), true, nullptr, &final), 0);
        QCOMPARE(final, dir.filePath("dst/name (3).ext"));
        QCOMPARE(Read(dir.filePath("dst/name.ext")), QByteArray("old"));
        QCOMPARE(Read(dir.filePath("dst/name (3).ext")), QByteArray("new"));
        // A file copied into its own folder with renaming gets the next free name.
        QCOMPARE(CopyFile(dir.filePath("src/name.ext"), dir.filePath("src"), true, nullptr, &final), 0);
        QCOMPARE(final, dir.filePath("src/name (2).ext"));
    }
    void copyWithoutRenameAsks() {
        QTemporaryDir dir;
        Write(dir.filePath("src/song.mp3"), "new");
        Write(dir.filePath("dst/song.mp3"), "old");
        ScriptedPrompt no;
        no.answers = {false};
        QCOMPARE(CopyFile(dir.filePath("src/song.mp3"), dir.filePath("dst"), false, &no), FileOp::Cancelled);
        QCOMPARE(no.Count("yesno"), 1);
        QVERIFY(no.shown[0].text.contains("already exists"));
        QVERIFY(no.shown[0].text.contains(dir.filePath("dst/song.mp3")));
        QCOMPARE(Read(dir.filePath("dst/song.mp3")), QByteArray("old"));

        ScriptedPrompt yes;
        yes.answers = {true};
        QCOMPARE(CopyFile(dir.filePath("src/song.mp3"), dir.filePath("dst"), false, &yes), 0);
        QCOMPARE(Read(dir.filePath("dst/song.mp3")), QByteArray("new"));
        QCOMPARE(Names(dir.filePath("dst")), QStringList{"song.mp3"});

        // Nobody to ask: the copy fails and changes nothing.
        Write(dir.filePath("src/song.mp3"), "newer");
        QVERIFY(CopyFile(dir.filePath("src/song.mp3"), dir.filePath("dst"), false) != 0);
        QCOMPARE(Read(dir.filePath("dst/song.mp3")), QByteArray("new"));
    }
    void copyOntoItselfFails() {
        QTemporaryDir dir;
        Write(dir.filePath("a.mp3"), "x");
        ScriptedPrompt p;
        QVERIFY(CopyFile(dir.filePath("a.mp3"), dir.path(), false, &p) != 0);
        QCOMPARE(p.Count("yesno"), 0);
        QCOMPARE(Read(dir.filePath("a.mp3")), QByteArray("x"));
    }
    void copyMissingSourceFails() {
        QTemporaryDir dir;
        QVERIFY(CopyFile(dir.filePath("none.mp3"), dir.filePath("b"), true) != 0);
        QVERIFY(!QFileInfo::exists(dir.filePath("b")));
    }
    void copyWildcard() {
        QTemporaryDir dir;
        Write(dir.filePath("t/a.jpg"), "1");
        Write(dir.filePath("t/b.png"), "2");
        Write(dir.filePath("t/noext"), "3");
        QDir().mkpath(dir.filePath("out"));
        QCOMPARE(CopyFile(dir.filePath("t/*.*"), dir.filePath("out"), true), 0);
        QCOMPARE(Names(dir.filePath("out")), (QStringList{"a.jpg", "b.png", "noext"}));
    }

    // ---- move and rename -----------------------------------------------------------
    void moveWithinFileSystem() {
        QTemporaryDir dir;
        const QString src = dir.filePath("a/song.mp3");
        Write(src, "content");
        MarkFile(src);
        QDir().mkpath(dir.filePath("b"));
        QString final;
        QCOMPARE(MoveFile(src, dir.filePath("b"), &final), 0);
        QCOMPARE(final, dir.filePath("b/song.mp3"));
        QVERIFY(!QFile::exists(src));
        QCOMPARE(Read(final), QByteArray("content"));
        CheckMarked(final);
    }
    void moveNeverOverwrites() {
        QTemporaryDir dir;
        Write(dir.filePath("a/song.mp3"), "moved");
        Write(dir.filePath("b/song.mp3"), "stays");
        Write(dir.filePath("b/song (2).mp3"), "stays too");
        QString final;
        QCOMPARE(MoveFile(dir.filePath("a/song.mp3"), dir.filePath("b"), &final), 0);
        QCOMPARE(final, dir.filePath("b/song (3).mp3"));
        QCOMPARE(Read(dir.filePath("b/song.mp3")), QByteArray("stays"));
        QCOMPARE(Read(dir.filePath("b/song (2).mp3")), QByteArray("stays too"));
        QCOMPARE(Read(final), QByteArray("moved"));
        QVERIFY(!QFile::exists(dir.filePath("a/song.mp3")));
    }
    void moveOntoItselfFails() {
        QTemporaryDir dir;
        Write(dir.filePath("a.mp3"), "x");
        QVERIFY(MoveFile(dir.filePath("a.mp3"), dir.path()) != 0);
        QCOMPARE(Read(dir.filePath("a.mp3")), QByteArray("x"));
    }
    void renameCollisions() {
        QTemporaryDir dir;
        Write(dir.filePath("old.mp3"), "1");
        Write(dir.filePath("new.mp3"), "2");
        QString final;
        QCOMPARE(RenameFile(dir.filePath("old.mp3"), "new.mp3", &final), 0);
        QCOMPARE(final, dir.filePath("new (2).mp3"));
        QCOMPARE(Read(dir.filePath("new.mp3")), QByteArray("2"));
        QCOMPARE(Read(final), QByteArray("1"));
        // Names without an extension and hidden names get the number at the end.
        Write(dir.filePath("README"), "r");
        Write(dir.filePath("other"), "o");
        QCOMPARE(RenameFile(dir.filePath("other"), dir.filePath("README"), &final), 0);
        QCOMPARE(final, dir.filePath("README (2)"));
        Write(dir.filePath(".hidden"), "h");
        Write(dir.filePath("x"), "x");
        QCOMPARE(RenameFile(dir.filePath("x"), ".hidden", &final), 0);
        QCOMPARE(final, dir.filePath(".hidden (2)"));
        // A rename target is never a folder.
        QDir().mkpath(dir.filePath("folder"));
        Write(dir.filePath("f.mp3"), "f");
        QCOMPARE(RenameFile(dir.filePath("f.mp3"), dir.filePath("folder"), &final), 0);
        QCOMPARE(final, dir.filePath("folder (2)"));
    }
    void renameChangesCase() {
        QTemporaryDir dir;
        Write(dir.filePath("Song.MP3"), "s");
        QString final;
        QCOMPARE(RenameFile(dir.filePath("Song.MP3"), "song.mp3", &final), 0);
        QCOMPARE(final, dir.filePath("song.mp3"));
        QCOMPARE(Names(dir.path()), QStringList{"song.mp3"});
    }
    void moveOntoHardLinkTakesAnotherName() {
        QTemporaryDir dir;
        Write(dir.filePath("a/song.mp3"), "x");
        QDir().mkpath(dir.filePath("b"));
        QCOMPARE(::link(QFile::encodeName(dir.filePath("a/song.mp3")).constData(),
                        QFile::encodeName(dir.filePath("b/song.mp3")).constData()),
                 0);
        QString final;
        QCOMPARE(MoveFile(dir.filePath("a/song.mp3"), dir.filePath("b"), &final), 0);
        QCOMPARE(final, dir.filePath("b/song (2).mp3"));
        QVERIFY(!QFile::exists(dir.filePath("a/song.mp3")));
    }
    void crossFileSystemMove() {
        TmpfsMount mnt("16m");
        QTemporaryDir local;
        QString other = mnt.IsMounted() ? mnt.Path() : QString();
        QTemporaryDir shm(QStringLiteral("/dev/shm/qlt-test-XXXXXX"));
        if (other.isEmpty() && shm.isValid())
            other = shm.path();
        if (other.isEmpty() || SameFileSystem(other, local.path()))
            QSKIP("no second file system available");
        for (const QString& from : {local.path(), other}) {
            const QString to = from == other ? local.path() : other;
            const QString src = from + "/big.flac";
            Write(src, Pattern(3 * 1024 * 1024 + 17, 'k'));
            MarkFile(src);
            Write(to + "/big.flac", "in the way");
            QString final;
            QCOMPARE(MoveFile(src, to, &final), 0);
            QCOMPARE(final, to + "/big (2).flac");
            QVERIFY(!QFile::exists(src));
            QCOMPARE(Read(final), Pattern(3 * 1024 * 1024 + 17, 'k'));
            QCOMPARE(Read(to + "/big.flac"), QByteArray("in the way"));
            CheckMarked(final);
            QCOMPARE(Names(to), (QStringList{"big (2).flac", "big.flac"}));
            QFile::remove(final);
            QFile::remove(to + "/big.flac");
        }
    }
    void readOnlySourceFolderKeepsSource() {
        QTemporaryDir local;
        if (::geteuid() == 0) {
            // root passes folder permissions: a read-only volume is the real test.
            TmpfsMount ro("1m");
            if (!ro.IsMounted())
                QSKIP("cannot mount a tmpfs");
            Write(ro.Path() + "/keep.mp3", "precious");
            QVERIFY(ro.MakeReadOnly());
            QVERIFY(MoveFile(ro.Path() + "/keep.mp3", local.path()) != 0);
            QCOMPARE(Read(ro.Path() + "/keep.mp3"), QByteArray("precious"));
            QVERIFY(Names(local.path()).isEmpty());
            QVERIFY(RenameFile(ro.Path() + "/keep.mp3", "other.mp3") != 0);
            QCOMPARE(Read(ro.Path() + "/keep.mp3"), QByteArray("precious"));
            QVERIFY(!KillFile(ro.Path() + "/keep.mp3", 0, true));
            QVERIFY(!KillFile(ro.Path() + "/keep.mp3", 2, true));
            QCOMPARE(Read(ro.Path() + "/keep.mp3"), QByteArray("precious"));
        } else {
            Write(local.filePath("ro/keep.mp3"), "precious");
            QDir().mkpath(local.filePath("target"));
            QVERIFY(QFile::setPermissions(local.filePath("ro"), QFile::ReadOwner | QFile::ExeOwner));
            QVERIFY(MoveFile(local.filePath("ro/keep.mp3"), local.filePath("target")) != 0);
            QCOMPARE(Read(local.filePath("ro/keep.mp3")), QByteArray("precious"));
            QVERIFY(Names(local.filePath("target")).isEmpty());
            QFile::setPermissions(local.filePath("ro"),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
    }
    void fullDiskLeavesNoPartialFile() {
        TmpfsMount tiny("64k");
        if (!tiny.IsMounted())
            QSKIP("cannot mount a tmpfs (needs root)");
        QTemporaryDir local;
        const QString src = local.filePath("large.wav");
        Write(src, Pattern(512 * 1024));
        QVERIFY(CopyFile(src, tiny.Path(), true) != 0);
        QVERIFY(Names(tiny.Path()).isEmpty());
        QVERIFY(MoveFile(src, tiny.Path()) != 0);
        QVERIFY(Names(tiny.Path()).isEmpty());
        QCOMPARE(Read(src), Pattern(512 * 1024));
    }
    void failingWriteLeavesNoPartialFile() {
        // Works without root: a file size limit makes the writes fail midway.
        QTemporaryDir dir;
        const QString src = dir.filePath("src/large.wav");
        Write(src, Pattern(256 * 1024));
        Write(dir.filePath("dst/large.wav"), "old");
        QDir().mkpath(dir.filePath("dst"));
        struct rlimit old;
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &old), 0);
        const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        struct rlimit lim = old;
        lim.rlim_cur = 64 * 1024;
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &lim), 0);
        ScriptedPrompt yes;
        yes.answers = {true};
        const int copy = CopyFile(src, dir.filePath("dst"), false, &yes);
        const int copy2 = CopyFile(src, dir.filePath("dst/new.wav"), true);
        ::setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, oldHandler);
        QVERIFY(copy != 0);
        QVERIFY(copy2 != 0);
        QCOMPARE(Names(dir.filePath("dst")), QStringList{"large.wav"});
        QCOMPARE(Read(dir.filePath("dst/large.wav")), QByteArray("old"));
    }

    // ---- delete and KillFile -------------------------------------------------------
    void deletePlainAndAsked() {
        QTemporaryDir dir;
        Write(dir.filePath("a.mp3"), "a");
        ScriptedPrompt no;
        no.answers = {false};
        QCOMPARE(DeleteFile(dir.filePath("a.mp3"), false, true, &no), FileOp::Cancelled);
        QVERIFY(QFile::exists(dir.filePath("a.mp3")));
        QVERIFY(no.LastText().contains("permanently"));
        ScriptedPrompt yes;
        QCOMPARE(DeleteFile(dir.filePath("a.mp3"), false, true, &yes), 0);
        QVERIFY(!QFile::exists(dir.filePath("a.mp3")));
        QVERIFY(DeleteFile(dir.filePath("a.mp3"), false, false) != 0);
        QDir().mkpath(dir.filePath("sub"));
        QVERIFY(DeleteFile(dir.filePath("sub"), false, false) != 0);
        QVERIFY(QFileInfo(dir.filePath("sub")).isDir());
    }
    void deleteWildcard() {
        QTemporaryDir dir;
        Write(dir.filePath("t/a.jpg"), "1");
        Write(dir.filePath("t/b"), "2");
        QDir().mkpath(dir.filePath("t/keepdir"));
        QCOMPARE(DeleteFile(dir.filePath("t/*.*"), false, false), 0);
        QCOMPARE(Names(dir.filePath("t")), QStringList{"keepdir"});
    }
    void killModes() {
        QTemporaryDir dir;
        QTemporaryDir data;
        qputenv("XDG_DATA_HOME", data.path().toUtf8());
        Write(dir.filePath("zero.mp3"), "0");
        QVERIFY(KillFile(dir.filePath("zero.mp3"), 0, false));
        QVERIFY(!QFile::exists(dir.filePath("zero.mp3")));
        QVERIFY(!KillFile(dir.filePath("zero.mp3"), 0, false));

        Write(dir.filePath("one.mp3"), "1");
        QVERIFY(KillFile(dir.filePath("one.mp3"), 1, false));
        QVERIFY(!QFile::exists(dir.filePath("one.mp3")));
        QCOMPARE(Read(data.filePath("Trash/files/one.mp3")), QByteArray("1"));
        QVERIFY(QFile::exists(data.filePath("Trash/info/one.mp3.trashinfo")));

        // chbPref_Paperbin: whatever the caller asks, the file is deleted directly.
        Write(dir.filePath("two.mp3"), "2");
        QVERIFY(KillFile(dir.filePath("two.mp3"), 1, false, true));
        QVERIFY(!QFile::exists(dir.filePath("two.mp3")));
        QVERIFY(!QFile::exists(data.filePath("Trash/files/two.mp3")));
        qunsetenv("XDG_DATA_HOME");
    }
    void killMode1FailureShownOnlyWhenQuiet() {
        QTemporaryDir dir;
        ScriptedPrompt p;
        QVERIFY(!KillFile(dir.filePath("none.mp3"), 1, false, false, &p));
        QCOMPARE(p.Count("tell"), 0);
        QVERIFY(!KillFile(dir.filePath("none.mp3"), 1, true, false, &p));
        QCOMPARE(p.Count("tell"), 1);
        QCOMPARE(p.shown[0].icon, Prompt::Icon::Critical);
    }
    void killMode2OverwritesBeforeDeleting() {
        QTemporaryDir dir;
        const QString path = dir.filePath("secret.mp3");
        const int size = 3 * 4096 + 123; // not a whole number of blocks
        Write(path, Pattern(size, 'A'));
        // A second name for the same data shows what the overwrite left behind.
        QCOMPARE(::link(QFile::encodeName(path).constData(),
                        QFile::encodeName(dir.filePath("witness")).constData()),
                 0);
        QVERIFY(KillFile(path, 2, false));
        QVERIFY(!QFile::exists(path));
        const QByteArray left = Read(dir.filePath("witness"));
        QCOMPARE(left.size(), size);
        QCOMPARE(left, QByteArray(size, '\0'));
    }
    void killMode2WithPaperbinIsPlain() {
        QTemporaryDir dir;
        const QString path = dir.filePath("s.mp3");
        Write(path, "abc");
        QCOMPARE(
            ::link(QFile::encodeName(path).constData(), QFile::encodeName(dir.filePath("w")).constData()), 0);
        QVERIFY(KillFile(path, 2, false, true));
        QCOMPARE(Read(dir.filePath("w")), QByteArray("abc"));
    }
    void paperbinSetting() {
        DataGrid ini;
        for (int c = 0; c < Ini::Columns; ++c)
            ini.AddColumn(QString(), QString());
        for (int r = 0; r < 120; ++r)
            ini.AddRow({});
        QVERIFY(!PaperbinSetting(ini));
        ini.SetCellText(Ini::Paperbin, Ini::Col2, "1");
        QVERIFY(PaperbinSetting(ini));
        DataGrid empty;
        QVERIFY(!PaperbinSetting(empty));
    }
    void freeFileName() {
        QTemporaryDir dir;
        QCOMPARE(FreeFileName(dir.filePath("a.mp3")), dir.filePath("a.mp3"));
        Write(dir.filePath("a.mp3"), "");
        Write(dir.filePath("a (2).mp3"), "");
        QCOMPARE(FreeFileName(dir.filePath("a.mp3")), dir.filePath("a (3).mp3"));
        QCOMPARE(FreeFileName(dir.filePath("archive.tar.gz")), dir.filePath("archive.tar.gz"));
        Write(dir.filePath("archive.tar.gz"), "");
        QCOMPARE(FreeFileName(dir.filePath("archive.tar.gz")), dir.filePath("archive.tar (2).gz"));
    }
};

QTEST_GUILESS_MAIN(TestFileOps)
#include "test_fileops.moc"
