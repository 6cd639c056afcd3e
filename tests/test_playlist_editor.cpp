// The commands of the playlist editor without a window: save with its questions, removal,
// repair of a moved album, the block moves, the shuffle, marks, the search for playlist
// files, rows taken over from the data list and the tag list, the temporary playlists
// handed to a scripted desktop shell, and the language change of the status words.

#include "InstalledCaptions.h"
#include "ProgramFolder.h"
#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modScan.h"
#include "platform/Shell.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylist.h"
#include "playlist/modPlaylistFile.h"
#include "playlist/modPlaylistPlay.h"
#include "tag/modTagList.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

class TestPlaylistEditor : public QObject {
    Q_OBJECT

    ProgramFolder program;
    QString root;
    ScriptedPrompt prompt;
    ScriptedShell shell;
    DataGrid playlist, files, settings;

    QString Song(const QString& rel, int size = 1000) {
        const QString path = root + u'/' + rel;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly))
            qFatal("cannot write");
        f.write(QByteArray(size, 's'));
        return path;
    }
    QByteArray Read(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }
    void Row(const QString& folder, const QString& name, const QString& seconds,
             const QString& tf = QString(), const QString& mark = QString()) {
        QStringList c(PlCol::Count);
        c[PlCol::FTag - 1] = mark;
        c[PlCol::TF - 1] = tf.isEmpty() ? Caption(CapStatusFound) : tf;
        c[PlCol::FileName - 1] = name;
        c[PlCol::DurationS - 1] = seconds;
        c[PlCol::PathFile - 1] = folder;
        playlist.AddRow(c);
    }
    QStringList Names() {
        QStringList n;
        for (int r = 1; r <= playlist.Rows(); ++r)
            n << playlist.CellText(r, PlCol::FileName);
        return n;
    }
    PlaylistEnv Env() {
        PlaylistEnv env(prompt, playlist, files);
        env.settings = &settings;
        env.saveSettingsFile = false;
        return env;
    }

private slots:
    void initTestCase() {
        QVERIFY(LoadInstalledCaptions(kLanguageEnglish));
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        root = QDir(program.path()).canonicalPath();
        QDir().mkpath(root + "/temp");
        for (int c = 1; c <= 8; ++c)
            settings.AddColumn(QStringLiteral("C%1").arg(c), QString());
        for (int r = 1; r <= 1000; ++r)
            settings.AddRow({});
        SetShell(&shell);
    }
    void cleanupTestCase() { SetShell(nullptr); }
    void init() {
        // Numbers follow the program's language; a test of the language change switches it.
        SetLanguageColumn(kLanguageEnglish);
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        prompt = ScriptedPrompt();
        shell = ScriptedShell();
        playlist.Clear();
        files.Clear();
        DefinePlaylistColumns(playlist);
        DefineM3uPlsColumns(files);
        State().AbortRequested = false;
    }

    // ---- save -------------------------------------------------------------------------
    void saveEmptyList() {
        PlaylistEnv env = Env();
        QVERIFY(!SavePlaylist(env).saved);
        QCOMPARE(prompt.LastText(), Caption(CapListEmpty));
    }

    void saveAsksToHighlightAll() {
        const QString a = Song("S/a.mp3");
        Row(root + "/S", "a.mp3", "5");
        Row(root + "/S", "b.mp3", "6", Caption(CapStatusMissing));
        PlaylistEnv env = Env();
        prompt.answers = {false};
        QVERIFY(!SavePlaylist(env).saved);
        QCOMPARE(prompt.shown.back().text, Caption(CapNoRowSelected) + "\n" + Caption(CapSelectAllQuestion));
        // Yes highlights all, then the missing rows are offered for removal (Yes)
        prompt.answers = {true, true};
        env.chooseSavePath = [&](const QString&) { return root + "/S/out.m3u"; };
        const SaveResult r = SavePlaylist(env);
        QVERIFY(r.saved);
        QCOMPARE(r.written, 1);
        QCOMPARE(Read(root + "/S/out.m3u"), ("#EXTM3U\r\n#EXTINF:5,a\r\n" + a + "\r\n").toUtf8());
        QCOMPARE(playlist.Rows(), 1);
        QCOMPARE(playlist.CellText(1, PlCol::PathPlaylist), root + "/S/out.m3u");
        QCOMPARE(playlist.CellText(1, PlCol::DurationS), root + "/S"); // the M3U writer's folder
        QCOMPARE(env.title, QStringLiteral("out.m3u"));
        QCOMPARE(files.Rows(), 1);
        QCOMPARE(files.RowCells(1), (QStringList{"out.m3u", root + "/S"}));
        QCOMPARE(prompt.LastText(), Caption(CapPlaylistSavedAs) + root + "/S/out.m3u");
        // a second save into the same name does not list the file twice
        playlist.SelectAll();
        Row(root + "/S", "a.mp3", "5");
        playlist.SelectAll();
        SavePlaylist(env);
        QCOMPARE(files.Rows(), 1);
    }

    void savePlsOnlyHighlightedWithBox() {
        const QString a = Song("T/a.mp3");
        const QString b = Song("T/b.mp3");
        Row(root + "/T", "a.mp3", "5");
        Row(root + "/T", "b.mp3", "6");
        Row(root + "/T", "c.mp3", "7");
        playlist.SetSelected(2, true);
        playlist.SetSelected(3, true);
        Song("T/c.mp3");
        PlaylistEnv env = Env();
        env.chooseSavePath = [&](const QString&) { return root + "/T/x.pls"; };
        const SaveResult r = SavePlaylist(env);
        QCOMPARE(r.written, 2);
        QCOMPARE(Read(root + "/T/x.pls"),
                 ("[playlist]\r\nFile1=" + b + "\r\nTitle1=b.mp3\r\nLength1=6\r\nFile2=" + root +
                  "/T/c.mp3\r\nTitle2=c.mp3\r\nLength2=7\r\nNumberOfEntries=2\r\n"
                  "Version=2\r\n")
                     .toUtf8());
        QCOMPARE(prompt.Count("tell"), 2); // Caption(436), then Caption(316)
        QCOMPARE(prompt.shown[0].text, Caption(CapPlaylistSaved));
        QCOMPARE(playlist.CellText(1, PlCol::DurationS), QStringLiteral("5")); // PLS changes no cell
    }

    void relativeSaveWithNothingLeftMakesNoFile() {
        Row("/elsewhere", "a.mp3", "5");
        Row("/elsewhere", "b.mp3", "5");
        playlist.SelectAll();
        PlaylistEnv env = Env();
        env.relative = true;
        env.noMsg = true;
        QDir().mkpath(root + "/R");
        env.chooseSavePath = [&](const QString&) { return root + "/R/rel.m3u"; };
        const SaveResult r = SavePlaylist(env);
        QVERIFY(!r.saved);
        QCOMPARE(r.written, 0);
        QCOMPARE(r.skipped, 2);
        QVERIFY(!QFile::exists(root + "/R/rel.m3u"));
        QCOMPARE(QDir(root + "/R").entryList(QDir::Files), QStringList());
        QCOMPARE(prompt.LastText(), Caption(CapPlaylistNothingWritten));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);
        QCOMPARE(files.Rows(), 0);
    }

    void relativeSaveWithNothingLeftRemovesTheReplacedFile() {
        // The user chose an existing playlist to be replaced; with nothing to write the
        // save leaves no file of that name.
        Row("/elsewhere", "a.mp3", "5");
        playlist.SelectAll();
        PlaylistEnv env = Env();
        env.relative = true;
        env.noMsg = true;
        QDir().mkpath(root + "/R2");
        QFile old(root + "/R2/old.m3u");
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("#EXTM3U\r\n/x.mp3\r\n");
        old.close();
        env.chooseSavePath = [&](const QString&) { return root + "/R2/old.m3u"; };
        const SaveResult r = SavePlaylist(env);
        QCOMPARE(r.written, 0);
        QVERIFY(!QFile::exists(root + "/R2/old.m3u"));
        QCOMPARE(prompt.LastText(), Caption(CapPlaylistNothingWritten));
    }

    void relativeSaveReportsSkipped() {
        const QString a = Song("Q/sub/a.mp3");
        Row(root + "/Q/sub", "a.mp3", "5");
        Row("/elsewhere", "b.mp3", "5");
        playlist.SelectAll();
        PlaylistEnv env = Env();
        env.relative = true;
        env.noMsg = true;
        env.chooseSavePath = [&](const QString&) { return root + "/Q/rel.m3u"; };
        QCOMPARE(SavePlaylist(env).written, 1);
        QCOMPARE(Read(root + "/Q/rel.m3u"), QByteArray("#EXTM3U\r\n#EXTINF:5,a\r\nsub/a.mp3\r\n"));
        QCOMPARE(prompt.LastText(), Caption(CapPlaylistSkipped) + "1");
    }

    void saveM3u8AsM3u() {
        Row("/x", "a.mp3", "3");
        Row("/x", "b", "4");
        playlist.SelectAll();
        PlaylistEnv env = Env();
        env.noMsg = true;
        env.chooseSavePath = [&](const QString&) { return root + "/list.M3U8"; };
        QVERIFY(SavePlaylist(env).saved);
        QCOMPARE(Read(root + "/list.M3U8"),
                 QByteArray("#EXTM3U\r\n#EXTINF:3,a\r\n/x/a.mp3\r\n#EXTINF:4,a\r\n/x/b\r\n"));
    }

    void saveCancelled() {
        Row("/x", "a.mp3", "1");
        Row("/x", "b.mp3", "1");
        playlist.SelectAll();
        PlaylistEnv env = Env();
        env.chooseSavePath = [](const QString&) { return QString(); };
        QVERIFY(!SavePlaylist(env).saved);
        QCOMPARE(playlist.CellText(1, PlCol::DurationS), QStringLiteral("1"));
    }

    // ---- entries ----------------------------------------------------------------------
    void removeHighlightedWithMark() {
        Row("/x", "a.mp3", "1", QString(), "m");
        Row("/x", "b.mp3", "1", QString(), "n");
        Row("/x", "c.mp3", "1", QString(), "m");
        playlist.SelectAll();
        PlaylistEnv env = Env();
        env.title = QStringLiteral("list.m3u");
        env.markText = QStringLiteral("m");
        prompt.answers = {true};
        QCOMPARE(RemoveHighlightedEntries(env), 2);
        QCOMPARE(Names(), QStringList{"b.mp3"});
        QCOMPARE(env.title, QString()); // the title goes even though the file is unchanged
        QCOMPARE(playlist.FooterText(PlCol::FileName), QStringLiteral("1  (1 = 0 Byte)"));
    }

    void removeMissing() {
        Row("/x", "a.mp3", "1");
        Row("/x", "b.mp3", "1", Caption(CapStatusMissing));
        PlaylistEnv env = Env();
        QCOMPARE(RemoveMissingEntries(env), 1);
        QCOMPARE(Names(), QStringList{"a.mp3"});
        QCOMPARE(prompt.LastText(), Caption(CapEntriesRemoved) + "1");
        QCOMPARE(RemoveMissingEntries(env), 0);
        QCOMPARE(prompt.LastText(), Caption(CapNothingRemoved));
    }

    void repairMovedAlbum() {
        Song("New/Album/01.mp3", 100);
        Song("New/Album/02.mp3", 20000000);
        const QString missing = Caption(CapStatusMissing);
        Row("/old/Album", "01.mp3", "1", missing);
        Row("/old/Album", "02.mp3", "2", missing);
        Row("/old/Album", "03.mp3", "3", missing);
        playlist.SelectAll();
        PlaylistEnv env = Env();
        int dialogs = 0;
        env.chooseSongFile = [&](const QString&, const QString& name) {
            ++dialogs;
            return dialogs == 1 ? root + "/New/Album/" + name : QString();
        };
        QCOMPARE(RepairMissingEntries(env), 2);
        QCOMPARE(dialogs, 2); // one choice repairs the album; only 03 asks again, and is cancelled
        QCOMPARE(playlist.CellText(1, PlCol::TF), Caption(CapStatusFound));
        QCOMPARE(playlist.CellText(2, PlCol::PathFile), root + "/New/Album");
        QCOMPARE(playlist.CellText(2, PlCol::SizeMByte), QStringLiteral("19,1"));
        QCOMPARE(playlist.CellText(1, PlCol::SizeMByte), QStringLiteral("0,000"));
        QCOMPARE(playlist.CellText(3, PlCol::TF), missing);
        QCOMPARE(prompt.LastText(), Caption(CapEntriesRepaired));
    }

    void moveUpFirstBlockOnly() {
        for (const char* n : {"1", "2", "3", "4", "5"})
            Row("/x", QString::fromLatin1(n), "1");
        playlist.SetSelected(2, true);
        playlist.SetSelected(3, true);
        playlist.SetSelected(5, true);
        PlaylistEnv env = Env();
        QVERIFY(MoveBlockUp(env));
        QCOMPARE(Names(), (QStringList{"2", "3", "1", "4", "5"}));
        QCOMPARE(playlist.SelectedRows(), (std::vector<int>{1, 2, 5}));
        QVERIFY(!MoveBlockUp(env));
        QCOMPARE(prompt.LastText(), Caption(CapFirstRowSelected));
        playlist.ClearSelection();
        playlist.SetSelected(3, true);
        playlist.SetSelected(4, true);
        QVERIFY(MoveBlockDown(env));
        QCOMPARE(Names(), (QStringList{"2", "3", "5", "1", "4"}));
        QCOMPARE(playlist.SelectedRows(), (std::vector<int>{4, 5}));
        QVERIFY(!MoveBlockDown(env));
        QCOMPARE(prompt.LastText(), Caption(CapLastRowSelected));
    }

    void shuffle() {
        Row("/x", "only.mp3", "1");
        playlist.SetCellText(1, PlCol::No, QStringLiteral("7"));
        PlaylistEnv env = Env();
        QVERIFY(ShufflePlaylist(env, 99));
        QCOMPARE(prompt.shown.front().text, Caption(CapShuffleQuestion));
        QCOMPARE(playlist.CellText(1, PlCol::No), QStringLiteral("1"));
        for (int i = 2; i <= 40; ++i)
            Row("/x", QString::number(i), "1");
        QVERIFY(ShufflePlaylist(env, 12345));
        QStringList nos;
        for (int r = 1; r <= playlist.Rows(); ++r)
            nos << playlist.CellText(r, PlCol::No);
        QStringList expected;
        for (int i = 1; i <= 40; ++i)
            expected << QString::number(i);
        QCOMPARE(nos, expected); // a permutation, sorted by it
        QVERIFY(Names() != [] {
            QStringList s{"only.mp3"};
            for (int i = 2; i <= 40; ++i)
                s << QString::number(i);
            return s;
        }());
        prompt.answers = {false};
        QVERIFY(!ShufflePlaylist(env, 1));
    }

    void marks() {
        Row("/x", "a", "1", QString(), "Red");
        Row("/x", "b", "1", QString(), "blue");
        Row("/x", "c", "1");
        playlist.SelectAll();
        PlaylistEnv env = Env();
        env.markText = QStringLiteral("red"); // exact in the commands: "Red" does not pass
        UnhighlightOthers(env);
        QCOMPARE(playlist.SelCount(), 0);
        playlist.SelectAll();
        env.markText = QStringLiteral("Red");
        RemoveMarks(env);
        QCOMPARE(playlist.CellText(1, PlCol::FTag), QString());
        QCOMPARE(playlist.CellText(2, PlCol::FTag), QStringLiteral("blue"));
        MarkHighlighted(env);
        QCOMPARE(playlist.CellText(2, PlCol::FTag), QStringLiteral("Red"));
        playlist.SetCellText(1, PlCol::FTag, QStringLiteral("blue"));
        ToggleSign(env, QStringLiteral("blue"));
        QCOMPARE(playlist.CellText(1, PlCol::FTag), QString());
        QCOMPARE(playlist.CellText(2, PlCol::FTag), QStringLiteral("blue"));
        playlist.SetCellText(2, PlCol::TF, Caption(CapStatusMissing));
        HighlightFound(env);
        QCOMPARE(playlist.SelectedRows(), (std::vector<int>{1, 3}));
    }

    void languageChangeBreaksStatus() {
        Row("/x", "a.mp3", "1"); // "yes" in English
        SetLanguageColumn(kLanguageGerman);
        PlaylistEnv env = Env();
        HighlightFound(env);
        QCOMPARE(playlist.SelCount(), 0); // "yes" is not "ja"
        SetLanguageColumn(kLanguageEnglish);
        HighlightFound(env);
        QCOMPARE(playlist.SelCount(), 1);
    }

    // ---- playlist files ---------------------------------------------------------------
    void findAndOpen() {
        Song("F/a.mp3");
        QFile::copy(root + "/F/a.mp3", root + "/F/ignored.txt");
        auto write = [&](const QString& rel, const QByteArray& b) {
            QDir().mkpath(QFileInfo(root + "/" + rel).absolutePath());
            QFile f(root + "/" + rel);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(b);
        };
        write("F/b.m3u", "#EXTM3U\r\na.mp3\r\n");
        write("F/c.PLS", "[playlist]\r\nFile1=a.mp3\r\nLength1=4\r\n");
        write("F/new.m3u8", "#EXTM3U\na.mp3\n");
        write("F/sub/d.m3u", "#EXTM3U\r\n");
        write("F/system/e.m3u", "#EXTM3U\r\n");
        PlaylistEnv env = Env();
        env.chooseFolder = [&](const QString& start) {
            [&] { QCOMPARE(start, QString()); }();
            return root + "/F";
        };
        QCOMPARE(FindPlaylists(env), 3);
        QCOMPARE(settings.CellText(63, 1), root + "/F");
        QCOMPARE(files.CellText(1, 1), QStringLiteral("b.m3u"));
        QCOMPARE(files.FooterText(1), QStringLiteral("3"));
        env.withSubFolders = true;
        QCOMPARE(FindPlaylistsIn(env, root + "/F"), 4); // the folder "system" is never entered
        env.format = 2;
        QCOMPARE(FindPlaylistsIn(env, root + "/F"), 1);
        env.format = 1;
        QCOMPARE(FindPlaylistsIn(env, root + "/F"), 3);
        QCOMPARE(files.CellText(3, 1), QStringLiteral("new.m3u8"));

        // open with the replace question
        files.ClearSelection();
        files.SetSelected(1, true);
        QVERIFY(OpenPlaylist(env));
        QCOMPARE(playlist.Rows(), 1);
        QCOMPARE(env.title, Caption(CapPlaylistTitle) + "b.m3u");
        files.ClearSelection();
        files.SetSelected(3, true);
        prompt.answers = {false};
        QVERIFY(!OpenPlaylist(env));
        QCOMPARE(prompt.LastText(), Caption(CapPlaylistReplaceWarning) + "\n" + Caption(CapContinueQuestion));
        QVERIFY(OpenPlaylist(env));
        QCOMPARE(playlist.CellText(1, PlCol::PathPlaylist), root + "/F/new.m3u8");
        // the second list takes a playlist without touching the first
        DataGrid second;
        env.playlist2 = &second;
        QVERIFY(OpenPlaylistFile(env, root + "/F/c.PLS", 2));
        QCOMPARE(second.Rows(), 1);
        QCOMPARE(playlist.CellText(1, PlCol::PathPlaylist), root + "/F/new.m3u8");

        // rename in the cell, then delete the file
        prompt = ScriptedPrompt();
        QVERIFY(RenamePlaylistFile(env, 1, QStringLiteral("renamed.m3u")));
        QVERIFY(QFile::exists(root + "/F/renamed.m3u"));
        QCOMPARE(prompt.LastText(), Caption(CapRenamed));
        QVERIFY(!RenamePlaylistFile(env, 1, QStringLiteral("a/b.m3u")));
        QCOMPARE(prompt.LastText(), Caption(CapRenameFailedPlaylist));
        files.ClearSelection();
        files.SetSelected(1, true);
        files.SetCurRow(1);
        prompt.answers = {true};
        QVERIFY(DeletePlaylistFile(env));
        QVERIFY(!QFile::exists(root + "/F/renamed.m3u"));
        QCOMPARE(files.Rows(), 2);
        QCOMPARE(files.FooterText(1), QStringLiteral("2"));
    }

    void playPlaylistFileAndSong() {
        Song("G/a.mp3");
        files.AddRow({"a.mp3", root + "/G"});
        PlaylistEnv env = Env();
        files.SetSelected(1, true);
        files.SetCurRow(1);
        QVERIFY(PlayPlaylistFile(env));
        QCOMPARE(shell.opened, QStringList{root + "/G/a.mp3"});
        // a relative row takes the playlist's folder in front
        Row("sub", "s.mp3", "1");
        playlist.SetCellText(1, PlCol::PathPlaylist, root + "/G/l.m3u");
        QVERIFY(PlayPlaylistSong(playlist, 1, prompt));
        QCOMPARE(shell.opened.last(), root + "/G/sub/s.mp3");
        shell.openResult = Shell::kFileNotFound;
        QVERIFY(!PlayPlaylistSong(playlist, 1, prompt));
        QCOMPARE(prompt.LastText(), Caption(CapOpenFailed));
        // no association: the chooser of programs steps in
        shell.openResult = Shell::kNoAssociation;
        QVERIFY(PlayPlaylistSong(playlist, 1, prompt));
        QCOMPARE(shell.openedWith, QStringList{root + "/G/sub/s.mp3"});
    }

    // ---- temporary playlists ----------------------------------------------------------
    void playRowsOfPlaylist() {
        Row("/abs", "a.mp3", "12");
        Row("rel", "b.mp3", "1.234");
        playlist.SetCellText(2, PlCol::PathPlaylist, "/lists/l.m3u");
        Row("rel", "c.mp3", "3"); // relative without a playlist: left out
        Row("/abs", "gone.mp3", "4", Caption(CapStatusMissing));
        PlayEnv env(prompt);
        env.waitSeconds = 0;
        QCOMPARE(PlayRowsOfPlaylist(playlist, env), 2);
        QCOMPARE(shell.opened, QStringList{root + "/temp/PlayTmp.m3u"});
        QCOMPARE(
            shell.seen.front(),
            QByteArray(
                "#EXTM3U\r\n#EXTINF:12,a.mp3\r\n/abs/a.mp3\r\n#EXTINF:1.234,b.mp3\r\n/lists/rel/b.mp3\r\n"));
        QVERIFY(!QFile::exists(root + "/temp/PlayTmp.m3u"));
    }

    void playAlbumAndHighlighted() {
        DataGrid input;
        EnsureInputColumns(input);
        auto add = [&](const QString& name, const QString& album, const QString& v2album) {
            QStringList c(InCol::Count);
            c[InCol::FileName - 1] = name;
            c[InCol::Path - 1] = QStringLiteral("/m");
            c[InCol::DurationS - 1] = QStringLiteral("10");
            c[InCol::Tg1Album - 1] = album;
            c[InCol::TagAlbum - 1] = v2album;
            input.AddRow(c);
        };
        add("a.mp3", "One", "");
        add("b.mp3", "", "One");
        add("c", "One", "");
        add("d.mp3", "Two", "");
        PlayEnv env(prompt);
        env.waitSeconds = 0;
        QCOMPARE(PlayAlbum(input, InCol::Tg1Album, QStringLiteral("One"), env), 2);
        QCOMPARE(shell.opened.last(), root + "/temp/AlbumTmp.m3u");
        QCOMPARE(shell.seen.back(),
                 QByteArray("#EXTM3U\r\n#EXTINF:10,a\r\n/m/a.mp3\r\n#EXTINF:10,a\r\n/m/c\r\n"));
        QCOMPARE(prompt.LastText(), Caption(CapAlbumPassed));
        // the album of the current row: the first album column that is not empty there
        input.SetCurRow(2);
        QCOMPARE(PlayAlbumOfCurrentRow(input, QString(), env), 1);
        QCOMPARE(shell.opened.last(), root + "/temp/PlayTmp.m3u");
        QCOMPARE(PlayAlbumOfCurrentRow(input, QStringLiteral("Two"), env), 1);
        // highlighted rows, saved as a playlist without opening
        input.SetSelected(1, true);
        input.SetSelected(4, true);
        settings.SetCellText(82, 2, QStringLiteral("/start"));
        env.settings = &settings;
        QString start;
        env.chooseSavePath = [&](const QString& s) {
            start = s;
            return root + "/saved.m3u";
        };
        const int opened = int(shell.opened.size());
        QCOMPARE(PlayHighlightedRows(input, false, true, false, env), 2);
        QCOMPARE(int(shell.opened.size()), opened);
        QCOMPARE(start, QStringLiteral("/start"));
        QCOMPARE(settings.CellText(82, 2), root);
        QCOMPARE(Read(root + "/saved.m3u"),
                 QByteArray("#EXTM3U\r\n#EXTINF:10,a\r\n/m/a.mp3\r\n#EXTINF:10,d\r\n/m/d.mp3\r\n"));
        QCOMPARE(prompt.LastText(), Caption(CapPlaylistSaved));
        QVERIFY(!QFile::exists(root + "/temp/PlayTmp.m3u"));
        // from the reference list: name in column 4, folder (and seconds) in column 8
        DataGrid ref;
        for (int c = 1; c <= 12; ++c)
            ref.AddColumn(QStringLiteral("c%1").arg(c), QString());
        ref.AddRow({"", "", "", "x.mp3", "", "", "", "/r"});
        ref.SelectAll();
        QCOMPARE(PlayHighlightedRows(ref, true, false, true, env), 1);
        QCOMPARE(shell.seen.back(), QByteArray("#EXTM3U\r\n#EXTINF:/r,x\r\n/r/x.mp3\r\n"));
    }

    void tempFileThatCannotBeWritten() {
        // "temp" is a file here: the temporary playlist can't be made, and the user is told
        QTemporaryDir other;
        QFile blocker(other.filePath("temp"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        SetAppPath(other.path());
        Row("/abs", "a.mp3", "1");
        PlayEnv env(prompt);
        env.waitSeconds = 0;
        QCOMPARE(PlayRowsOfPlaylist(playlist, env), 0);
        QVERIFY(shell.opened.isEmpty());
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);
        QVERIFY(prompt.LastText().startsWith(Caption(CapPlaylistWriteFailed)));
        SetAppPath(program.path());
    }

    void waitSecondsHonoursAbort() {
        State().AbortRequested = true;
        QElapsedTimer t;
        t.start();
        WaitSeconds(5);
        QVERIFY(t.elapsed() < 1000);
        State().AbortRequested = false;
    }

    void execLine() {
        QCOMPARE(ExecCommandFor(QStringLiteral("vlc --started-from-file %U"), QStringLiteral("/a b.m3u")),
                 (QStringList{"vlc", "--started-from-file", "file:///a b.m3u"}));
        QCOMPARE(ExecCommandFor(QStringLiteral("\"/opt/my player\" %f %i"), QStringLiteral("/x.m3u")),
                 (QStringList{"/opt/my player", "/x.m3u"}));
        QCOMPARE(ExecCommandFor(QStringLiteral("mpv"), QStringLiteral("/x.m3u")),
                 (QStringList{"mpv", "/x.m3u"}));
    }

    void desktopShellChooser() {
        // the applications of the XDG data folders, and the chosen one started for the file
        const QString home = root + "/xdg";
        QDir().mkpath(home + "/applications");
        auto entry = [&](const QString& file, const QByteArray& text) {
            QFile f(home + "/applications/" + file);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(text);
        };
        entry("aplayer.desktop", "[Desktop Entry]\nType=Application\nName=A Player\nName[de]=Ein Spieler\n"
                                 "Exec=true --play %F\n");
        entry("hidden.desktop",
              "[Desktop Entry]\nType=Application\nName=Hidden\nNoDisplay=true\nExec=true %f\n");
        entry("nofile.desktop", "[Desktop Entry]\nType=Application\nName=No file\nExec=true\n");
        const QByteArray old = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", home.toUtf8());
        const std::vector<DesktopApplication> apps = InstalledApplications();
        int mine = -1;
        for (size_t i = 0; i < apps.size(); ++i) {
            QVERIFY(apps[i].name != QLatin1String("Hidden"));
            QVERIFY(apps[i].name != QLatin1String("No file"));
            if (apps[i].fileName == home + "/applications/aplayer.desktop")
                mine = int(i);
        }
        QVERIFY(mine >= 0);
        DesktopShell desktop;
        QCOMPARE(desktop.Open(root + "/no/such/file.m3u"), Shell::kFileNotFound);
        QVERIFY(!desktop.OpenWith(root + "/x.m3u")); // no chooser: nothing is started
        QString offered;
        desktop.chooseApplication = [&](const QString& path, const std::vector<DesktopApplication>& list) {
            offered = path;
            for (size_t i = 0; i < list.size(); ++i)
                if (list[i].fileName.endsWith(QLatin1String("/aplayer.desktop")))
                    return int(i);
            return -1;
        };
        QVERIFY(desktop.OpenWith(root + "/x.m3u")); // starts "true --play <path>"
        QCOMPARE(offered, root + "/x.m3u");
        desktop.chooseApplication = [](const QString&, const std::vector<DesktopApplication>&) { return -1; };
        QVERIFY(!desktop.OpenWith(root + "/x.m3u"));
        if (old.isEmpty())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", old);
    }

    void fuzzExecLine() {
        QRandomGenerator rng(77);
        const QString pieces = QStringLiteral("%fFuUic\"\\ a=-/%%");
        for (int i = 0; i < 3000; ++i) {
            QString exec;
            const int n = int(rng.bounded(24));
            for (int k = 0; k < n; ++k)
                exec += pieces.at(int(rng.bounded(int(pieces.size()))));
            const QStringList cmd = ExecCommandFor(exec, QStringLiteral("/p q.m3u"));
            // the file is always handed over, as a path or as a URL
            QVERIFY(cmd.contains(QStringLiteral("/p q.m3u")) ||
                    cmd.contains(QStringLiteral("file:///p q.m3u")));
        }
    }

    // ---- rows from the data list and the tag list -------------------------------------
    void copyRowsFromDataList() {
        DataGrid input;
        EnsureInputColumns(input);
        for (int i = 1; i <= 3; ++i) {
            QStringList c(InCol::Count);
            c[InCol::FTag - 1] = i == 2 ? QStringLiteral("x") : QString();
            c[InCol::FileName - 1] = QStringLiteral("s%1.mp3").arg(i);
            c[InCol::Type - 1] = QStringLiteral("MP3");
            c[InCol::Path - 1] = QStringLiteral("/m");
            c[InCol::DurationS - 1] = QString::number(i * 100);
            c[InCol::DurationMS - 1] = FormatDurationForTest(i * 100);
            c[InCol::SizeByte - 1] = QString::number(i * 1048576);
            c[InCol::SizeMByte - 1] = QStringLiteral("%1,00").arg(i);
            input.AddRow(c);
        }
        PlaylistEnv env = Env();
        env.title = QStringLiteral("old");
        QCOMPARE(CopyRowsToPlaylist(env, input, QString()), -1);
        QCOMPARE(prompt.LastText(), Caption(CapNoRowSelected));
        input.SetSelected(1, true);
        input.SetSelected(2, true);
        input.SetSelected(3, true);
        prompt.answers = {false};
        QCOMPARE(CopyRowsToPlaylist(env, input, QString()), -1);
        QVERIFY(State().AbortRequested);
        State().AbortRequested = false;
        QCOMPARE(CopyRowsToPlaylist(env, input, QStringLiteral("x")), 1);
        QCOMPARE(playlist.RowCells(1), (QStringList{"2", "", Caption(CapStatusFound), "s2.mp3", "MP3", "200",
                                                    "03:20", "2097152", "2,00", "/m", "", "2k"}));
        QCOMPARE(env.title, QString());
        // rows there: replace (Yes) or add (No)
        prompt.answers = {true, false};
        QCOMPARE(CopyRowsToPlaylist(env, input, QString()), 3);
        QCOMPARE(playlist.Rows(), 4);
        QCOMPARE(playlist.FooterText(PlCol::FileName), QStringLiteral("4"));
        QCOMPARE(playlist.FooterText(PlCol::DurationMS), QStringLiteral("13:20"));
        QCOMPARE(playlist.FooterText(PlCol::SizeMByte), QStringLiteral("8,00"));
        QCOMPARE(PlaylistTimeSizeText(playlist, QString()), QStringLiteral("(0)  00:00 mm:ss / 0,0 Mb"));
    }

    void copyRowsFromTagList() {
        DataGrid input, tag;
        EnsureInputColumns(input);
        QStringList c(InCol::Count);
        c[InCol::FileName - 1] = QStringLiteral("t.mp3");
        c[InCol::DurationS - 1] = QStringLiteral("61");
        c[InCol::DurationMS - 1] = QStringLiteral("01:01");
        c[InCol::SizeByte - 1] = QStringLiteral("5");
        input.AddRow(c);
        DefineTagList(tag);
        tag.AddRow({"", "", "t.mp3", "MP3", "/m", input.RowKey(1)});
        tag.AddRow({"", "skip", "u.mp3", "MP3", "/m", "nokey"});
        tag.SelectAll();
        PlaylistEnv env = Env();
        env.tab1NoMsg = true;
        QCOMPARE(CopyTagRowsToPlaylist(env, tag, input, QString()), 2);
        QCOMPARE(playlist.CellText(1, PlCol::DurationS), QStringLiteral("61"));
        QCOMPARE(playlist.CellText(1, PlCol::KeyInput), input.RowKey(1));
        QCOMPARE(playlist.CellText(2, PlCol::DurationS), QString());
        QCOMPARE(CopyTagRowsToPlaylist(env, tag, input, QStringLiteral("skip")), 1);
    }

    void copySongs() {
        Song("C/a.mp3", 10);
        Song("C/b.mp3", 20);
        Row(root + "/C", "a.mp3", "1");
        Row(root + "/C", "b.mp3", "1");
        Row(root + "/C", "gone.mp3", "1");
        playlist.SelectAll();
        settings.SetCellText(27, 1, QStringLiteral("3"));
        PlaylistEnv env = Env();
        env.copyWithNum = true;
        QDir().mkpath(root + "/Target");
        env.chooseFolder = [&](const QString&) { return root + "/Target"; };
        const CopyResult r = CopyPlaylistSongs(env);
        QCOMPARE(r.copied, 2);
        QCOMPARE(r.missing, 1);
        QCOMPARE(settings.CellText(79, 2), root + "/Target");
        QStringList got = QDir(root + "/Target").entryList(QDir::Files);
        QCOMPARE(got.size(), 2);
        QVERIFY(got.at(0).endsWith(QLatin1String("1_a.mp3")));
        QVERIFY(got.at(1).endsWith(QLatin1String("2_b.mp3")));
        QCOMPARE(prompt.LastText(), Caption(CapFilesCopied) + "2\n" + Caption(CapFilesMissing) + "1");
    }

    void exportPlaylist() {
        Row("/m", "a.mp3", "1", QString(), "marked");
        Row("/m", "b.mp3", "2");
        DataGrid dummy;
        PlaylistEnv env = Env();
        env.title = QStringLiteral("list.m3u");
        env.noMsg = true;
        QVERIFY(ExportPlaylist(env, dummy, root + "/exp.txt"));
        QCOMPARE(dummy.Rows(), 3);
        QCOMPARE(dummy.CellText(1, 1), QStringLiteral("list.m3u"));
        QCOMPARE(dummy.CellText(3, 2), QStringLiteral("b.mp3"));
        QCOMPARE(settings.CellText(84, 2), root);
    }

private:
    static QString FormatDurationForTest(int s) {
        return QStringLiteral("%1:%2")
            .arg(s / 60, 2, 10, QLatin1Char('0'))
            .arg(s % 60, 2, 10, QLatin1Char('0'));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistEditor)
#include "test_playlist_editor.moc"
