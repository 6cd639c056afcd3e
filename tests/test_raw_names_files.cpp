// File names that are no valid UTF-8 through the file commands: a Latin-1 name is
// renamed (the way a user mends it), moved, copied, deleted into the trash and put back
// by the undo, on real files whose names hold the invalid bytes.
#include "InstalledCaptions.h"
#include "ProgramFolder.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/ftcFileOps.h"
#include "file/modFileCommands.h"
#include "file/modRename.h"
#include "file/modRenameJournal.h"
#include "list/InputColumns.h"
#include "list/ftcNames.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "platform/PosixFile.h"
#include "platform/Trash.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylistFile.h"
#include "tag/TagEngine.h"
#include "tag/modDirectEdit.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <ftw.h>
#include <unistd.h>

namespace {

// The names in a folder as raw bytes, hidden ones left out.
QList<QByteArray> RawNames(const QByteArray& folder) {
    QList<QByteArray> names;
    DIR* d = ::opendir(folder.constData());
    while (dirent* e = d ? ::readdir(d) : nullptr) {
        if (e->d_name[0] != '.')
            names << QByteArray(e->d_name);
    }
    if (d)
        ::closedir(d);
    std::sort(names.begin(), names.end());
    return names;
}

bool WriteRaw(const QByteArray& path, const QByteArray& data) {
    const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0)
        return false;
    const bool ok = ::write(fd, data.constData(), size_t(data.size())) == data.size();
    return ::close(fd) == 0 && ok;
}

QByteArray ReadRaw(const QByteArray& path) {
    QByteArray out;
    const int fd = ::open(path.constData(), O_RDONLY);
    if (fd < 0)
        return out;
    char buf[4096];
    for (ssize_t n; (n = ::read(fd, buf, sizeof buf)) > 0;)
        out.append(buf, n);
    ::close(fd);
    return out;
}

// One selected row per raw name, artist and title as the scan makes them.
void Fill(DataGrid& list, const QString& dir, const QList<QByteArray>& raws) {
    EnsureInputColumns(list);
    list.Clear();
    for (const QByteArray& raw : raws) {
        const QString n = PosixFile::FromNative(raw);
        QString base, ext, artist, title;
        SplitExtension(n, base, ext);
        SplitArtistTitle(base, artist, title);
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = n;
        cells[InCol::Artist - 1] = artist;
        cells[InCol::Title - 1] = title;
        cells[InCol::Path - 1] = dir;
        list.AddRow(cells);
    }
    list.SelectAll();
}

// A temporary folder that is removed by the bytes of its names (QTemporaryDir would
// spell names that are no UTF-8 anew and leave them behind).
class RawDir {
public:
    RawDir() : m_dir(QDir::tempPath() + QStringLiteral("/qlt-raw-XXXXXX")) { m_dir.setAutoRemove(false); }
    ~RawDir() {
        ::nftw(
            QFile::encodeName(m_dir.path()).constData(),
            [](const char* p, const struct stat*, int, struct FTW*) { return ::remove(p); }, 16,
            FTW_DEPTH | FTW_PHYS);
    }
    QString path() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

const QByteArray kMueller = "M\xFCller - Caf\xE9.mp3";
const QByteArray kSwapped = "Caf\xE9 - M\xFCller.mp3";

} // namespace

class TestRawNamesFiles : public QObject {
    Q_OBJECT
    ProgramFolder program;
    QTemporaryDir trashHome;
    ScriptedPrompt prompt;

private slots:
    void initTestCase() {
        QVERIFY(LoadInstalledCaptions());
        QVERIFY(QDir().mkpath(program.file(QStringLiteral("temp"))));
        qputenv("XDG_DATA_HOME", trashHome.path().toUtf8());
    }
    void cleanupTestCase() { qunsetenv("XDG_DATA_HOME"); }

    void filePrimitivesKeepTheBytes() {
        RawDir dir;
        const QByteArray folder = QFile::encodeName(dir.path());
        QVERIFY(WriteRaw(folder + '/' + kMueller, "song"));
        const QString path = dir.path() + u'/' + PosixFile::FromNative(kMueller);

        // Mended: renamed to its UTF-8 spelling.
        QString finalPath;
        QCOMPARE(RenameFile(path, QStringLiteral("Müller - Café.mp3"), &finalPath), 0);
        QCOMPARE(RawNames(folder), QList<QByteArray>{"M\xC3\xBCller - Caf\xC3\xA9.mp3"});
        QCOMPARE(finalPath, dir.path() + QStringLiteral("/Müller - Café.mp3"));
        // And back to the old bytes.
        QCOMPARE(RenameFile(finalPath, PosixFile::FromNative(kMueller), &finalPath), 0);
        QCOMPARE(RawNames(folder), QList<QByteArray>{kMueller});
        QCOMPARE(PosixFile::Native(finalPath), folder + '/' + kMueller);

        // Moved into a new folder whose name is no UTF-8 either.
        const QString sub = dir.path() + u'/' + PosixFile::FromNative("Fr\xE9res");
        QCOMPARE(MoveFile(path, sub + u'/', &finalPath), 0);
        QCOMPARE(RawNames(folder), QList<QByteArray>{"Fr\xE9res"});
        QCOMPARE(RawNames(folder + "/Fr\xE9res"), QList<QByteArray>{kMueller});
        QCOMPARE(PosixFile::Native(finalPath), folder + "/Fr\xE9res/" + kMueller);

        // Copied back twice: the second copy gets a number, the bytes of the name stay.
        QCOMPARE(CopyFile(finalPath, dir.path() + u'/', true, nullptr, nullptr), 0);
        QCOMPARE(CopyFile(finalPath, dir.path() + u'/', true, nullptr, nullptr), 0);
        QCOMPARE(RawNames(folder), (QList<QByteArray>{"Fr\xE9res", "M\xFCller - Caf\xE9 (2).mp3", kMueller}));
        QCOMPARE(ReadRaw(folder + '/' + kMueller), QByteArray("song"));

        // A wildcard reaches such names as well.
        QCOMPARE(DeleteFile(dir.path() + QStringLiteral("/m*(2).MP3"), false, false, nullptr), 0);
        QCOMPARE(RawNames(folder), (QList<QByteArray>{"Fr\xE9res", kMueller}));
        QCOMPARE(CopyFile(dir.path() + QStringLiteral("/*.mp3"), sub, true, nullptr, nullptr), 0);
        QCOMPARE(RawNames(folder + "/Fr\xE9res"),
                 (QList<QByteArray>{"M\xFCller - Caf\xE9 (2).mp3", kMueller}));

        // Deleted for good, and without a trace.
        QVERIFY(KillFile(sub + u'/' + PosixFile::FromNative("M\xFCller - Caf\xE9 (2).mp3"), 2, true, false,
                         nullptr));
        QCOMPARE(RawNames(folder + "/Fr\xE9res"), QList<QByteArray>{kMueller});
        QCOMPARE(DeleteFile(sub + u'/' + PosixFile::FromNative(kMueller), false, false, nullptr), 0);
        QVERIFY(RawNames(folder + "/Fr\xE9res").isEmpty());
    }

    void intoTheTrashWithItsBytes() {
        RawDir dir;
        const QByteArray folder = QFile::encodeName(dir.path());
        QVERIFY(WriteRaw(folder + '/' + kMueller, "song"));
        const QString path = dir.path() + u'/' + PosixFile::FromNative(kMueller);
        QCOMPARE(DeleteFile(path, true, false, nullptr), 0);
        QVERIFY(RawNames(folder).isEmpty());
        const QByteArray trash = QFile::encodeName(trashHome.path()) + "/Trash";
        QCOMPARE(ReadRaw(trash + "/files/" + kMueller), QByteArray("song"));
        const QByteArray info = ReadRaw(trash + "/info/" + kMueller + ".trashinfo");
        // Path= holds the bytes percent-encoded, exactly.
        QVERIFY2(info.contains("Path=" + (folder + '/' + kMueller).toPercentEncoding("/") + '\n'),
                 info.constData());
        QVERIFY(info.contains("/M%FCller%20-%20Caf%E9.mp3\n"));
        ::unlink((trash + "/files/" + kMueller).constData());
        ::unlink((trash + "/info/" + kMueller + ".trashinfo").constData());
    }

    void renameCommandsAndTheirUndo() {
        RawDir dir;
        const QByteArray folder = QFile::encodeName(dir.path());
        QVERIFY(WriteRaw(folder + '/' + kMueller, "a"));
        QVERIFY(WriteRaw(folder + "/Gr\xFC\xDF - Gott.mp3", "b"));
        DataGrid list;
        Fill(list, dir.path(), {kMueller, "Gr\xFC\xDF - Gott.mp3"});
        ListEnv env(prompt);
        RenameRequest swap;
        swap.command = RenameCommand::SwapArtistTitle;
        const RenameRun run =
            RunRename(list, swap, env, true, false, &TagEngine::Shared(), RenameJournalPath());
        QCOMPARE(run.outcome.done, 2);
        QCOMPARE(RawNames(folder), (QList<QByteArray>{kSwapped, "Gott - Gr\xFC\xDF.mp3"}));
        QCOMPARE(PosixFile::Native(list.CellText(
                     list.FindRow(PosixFile::FromNative(kSwapped), InCol::FileName), InCol::FileName)),
                 kSwapped);

        // The journal holds the bytes: the undo gives back exactly the old names.
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 2);
        QCOMPARE(RawNames(folder), (QList<QByteArray>{"Gr\xFC\xDF - Gott.mp3", kMueller}));
        QVERIFY(list.FindRow(PosixFile::FromNative(kMueller), InCol::FileName) > 0);

        // A replace mends the names: the Latin-1 bytes become their UTF-8 letters.
        for (const auto& [from, to] : {std::pair{QByteArray("\xFC"), QStringLiteral("ü")},
                                       std::pair{QByteArray("\xE9"), QStringLiteral("é")},
                                       std::pair{QByteArray("\xDF"), QStringLiteral("ß")}}) {
            RenameRequest replace;
            replace.command = RenameCommand::ReplaceString;
            replace.text = PosixFile::FromNative(from);
            replace.replacement = to;
            replace.confirmed = true;
            RunRename(list, replace, env, true, false, &TagEngine::Shared(), RenameJournalPath());
        }
        QCOMPARE(RawNames(folder), (QList<QByteArray>{QStringLiteral("Grüß - Gott.mp3").toUtf8(),
                                                      QStringLiteral("Müller - Café.mp3").toUtf8()}));
        // The last replace is undone: the ß goes back to its byte.
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 1);
        QCOMPARE(RawNames(folder), (QList<QByteArray>{"Gr\xC3\xBC\xDF - Gott.mp3",
                                                      QStringLiteral("Müller - Café.mp3").toUtf8()}));
    }

    // The user mends a name by typing it anew in the list.
    void directEditOfTheName() {
        RawDir dir;
        const QByteArray folder = QFile::encodeName(dir.path());
        QVERIFY(WriteRaw(folder + '/' + kMueller, "a"));
        DataGrid list;
        Fill(list, dir.path(), {kMueller});
        QString text = QStringLiteral("Müller - Café.mp3");
        bool changed = false;
        QVERIFY(DirectEditCell(list, 1, InCol::FileName, text, false, TagEngine::Shared(), prompt, &changed));
        QCOMPARE(RawNames(folder), QList<QByteArray>{text.toUtf8()});
        QCOMPARE(text, QStringLiteral("Müller - Café.mp3")); // the cell takes it from here
        QCOMPARE(list.CellText(1, InCol::Title), QStringLiteral("Café"));
    }

    void moveRowsAndItsUndo() {
        RawDir src, dst;
        const QByteArray from = QFile::encodeName(src.path()), to = QFile::encodeName(dst.path());
        QVERIFY(WriteRaw(from + '/' + kMueller, "a"));
        DataGrid list;
        Fill(list, src.path(), {kMueller});
        FileCommandOptions o;
        o.paperbin = true;
        o.noMsg = true;
        o.tempFolder = program.file(QStringLiteral("temp"));
        o.chooseFolder = [&dst](int, const QString&) { return dst.path(); };
        o.journalPath = program.file(QStringLiteral("temp/raw-move.journal"));
        ListEnv env(prompt);
        QCOMPARE(MoveRows(list, o, env).done, 1);
        QVERIFY(RawNames(from).isEmpty());
        QCOMPARE(RawNames(to), QList<QByteArray>{kMueller});
        QCOMPARE(UndoLastBatch(nullptr, o.journalPath).done, 1);
        QCOMPARE(RawNames(from), QList<QByteArray>{kMueller});
        QVERIFY(RawNames(to).isEmpty());

        Fill(list, src.path(), {kMueller});
        QCOMPARE(CopyRows(list, o, env, nullptr).done, 1);
        QCOMPARE(RawNames(to), QList<QByteArray>{kMueller});
        Fill(list, dst.path(), {kMueller});
        QCOMPARE(DeleteRows(list, o, env, true).done, 1);
        QVERIFY(RawNames(to).isEmpty());
        QCOMPARE(RawNames(from), QList<QByteArray>{kMueller});
    }

    // A playlist of an old collection holds the Latin-1 bytes of the names: the text is
    // read as Windows-1252, and the rows reach the files by their bytes. Written back, the
    // names keep their bytes as well.
    void playlistsReachSuchNames() {
        RawDir dir;
        const QByteArray folder = QFile::encodeName(dir.path());
        QVERIFY(WriteRaw(folder + '/' + kMueller, "12345"));
        QVERIFY(WriteRaw(folder + "/Caf\xC3\xA9.mp3", "abc")); // a UTF-8 name beside it
        const QString m3u = dir.path() + u'/' + PosixFile::FromNative("Lieder f\xFCr.m3u");
        QVERIFY(WriteRaw(PosixFile::Native(m3u), "#EXTM3U\r\n#EXTINF:3,x\r\n" + folder + '/' + kMueller +
                                                     "\r\n" + kMueller +
                                                     "\r\nCaf\xE9.mp3\r\nnone \xE9.mp3\r\n"));
        DataGrid grid;
        const PlaylistReadResult r = ReadM3u(m3u, grid, false);
        QVERIFY(r.ok);
        QCOMPARE(r.rows, 4);
        for (int row = 1; row <= 2; ++row) {
            QCOMPARE(grid.CellText(row, PlCol::TF), Caption(CapStatusFound));
            QCOMPARE(PosixFile::Native(grid.CellText(row, PlCol::PathFile) + u'/' +
                                       grid.CellText(row, PlCol::FileName)),
                     folder + '/' + kMueller);
        }
        QCOMPARE(grid.CellText(1, PlCol::SizeByte), QStringLiteral("5"));
        // A name that exists as UTF-8 text is taken as such; a missing one stays as read.
        QCOMPARE(grid.CellText(3, PlCol::TF), Caption(CapStatusFound));
        QCOMPARE(grid.CellText(3, PlCol::FileName), QStringLiteral("Café.mp3"));
        QCOMPARE(grid.CellText(4, PlCol::TF), Caption(CapStatusMissing));
        QCOMPARE(grid.CellText(4, PlCol::FileName), QStringLiteral("none é.mp3"));

        const QString pls = dir.path() + QStringLiteral("/list.pls");
        QVERIFY(WriteRaw(QFile::encodeName(pls), "[playlist]\r\nFile1=" + folder + '/' + kMueller +
                                                     "\r\nLength1=3\r\nNumberOfEntries=1\r\n"));
        QCOMPARE(ReadPls(pls, grid, false).rows, 1);
        QCOMPARE(grid.CellText(1, PlCol::TF), Caption(CapStatusFound));
        QCOMPARE(PosixFile::Native(grid.CellText(1, PlCol::FileName)), kMueller);

        // Written: the entry holds the name's bytes, through the safe writer.
        ReadM3u(m3u, grid, false);
        grid.SelectAll();
        PlaylistWriteCounts counts;
        const QByteArray bytes = BuildM3u(grid, PlaylistWriteOptions(), dir.path(), counts);
        QVERIFY(bytes.contains(folder + '/' + kMueller + "\r\n"));
        const QString out = dir.path() + u'/' + PosixFile::FromNative("neu \xE9.m3u");
        QString error;
        QVERIFY2(WritePlaylistBytes(out, bytes, &error), qPrintable(error));
        QCOMPARE(ReadRaw(PosixFile::Native(out)), bytes);
        QCOMPARE(ReadM3u(out, grid, false).rows, 4);
        QCOMPARE(PosixFile::Native(grid.CellText(1, PlCol::FileName)), kMueller);
        QCOMPARE(grid.CellText(1, PlCol::TF), Caption(CapStatusFound));
    }

    void journalKeepsBytesAndReadsAnything() {
        const QString path = program.file(QStringLiteral("temp/raw.journal"));
        JournalEntry e{PosixFile::FromNative("/m\xFCsic"), PosixFile::FromNative(kMueller),
                       QStringLiteral("Müller - Café.mp3"), QStringLiteral("a%b\tc"), QStringLiteral("t")};
        e.newFolder = PosixFile::FromNative("/n\xE9w");
        QVERIFY(WriteJournal(path, {e}));
        const QByteArray text = ReadRaw(QFile::encodeName(path));
        QVERIFY(QString::fromUtf8(text).toUtf8() == text); // the journal itself is UTF-8 text
        std::vector<JournalEntry> back;
        QVERIFY(ReadJournal(path, back));
        QCOMPARE(int(back.size()), 1);
        QCOMPARE(PosixFile::Native(back[0].folder), QByteArray("/m\xFCsic"));
        QCOMPARE(PosixFile::Native(back[0].oldName), kMueller);
        QCOMPARE(back[0].newName, e.newName);
        QCOMPARE(back[0].oldArtist, e.oldArtist);
        QCOMPARE(PosixFile::Native(back[0].newFolder), QByteArray("/n\xE9w"));

        // Damaged journals: whatever the bytes, the reader neither crashes nor invents names.
        QRandomGenerator rng(7);
        for (int round = 0; round < 300; ++round) {
            QByteArray junk = text;
            const int edits = 1 + int(rng.bounded(8));
            for (int i = 0; i < edits && !junk.isEmpty(); ++i) {
                const int at = int(rng.bounded(junk.size()));
                switch (rng.bounded(3)) {
                case 0:
                    junk[at] = char(rng.bounded(256));
                    break;
                case 1:
                    junk.insert(at, rng.bounded(2) ? "%" : "%Z");
                    break;
                default:
                    junk.remove(at, 1 + int(rng.bounded(4)));
                }
            }
            QVERIFY(WriteRaw(QFile::encodeName(path), junk));
            ReadJournal(path, back);
            for (const JournalEntry& j : back)
                QVERIFY(!j.folder.isEmpty() && !j.oldName.isEmpty() && !j.newName.isEmpty());
        }
        QFile::remove(path);
    }
};

QTEST_GUILESS_MAIN(TestRawNamesFiles)
#include "test_raw_names_files.moc"
