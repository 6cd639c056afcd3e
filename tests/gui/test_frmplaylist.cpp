// The playlist window driven as a user drives it: rows from the data list and the tag
// list, the search for playlist files, open, save, the block moves, marks, sums, the
// in-cell rename, the context menu and the double clicks. Dialogues are replaced by
// their hooks, the desktop by a scripted shell.

#include "ListWindowFixture.h"
#include "app/DataGridView.h"
#include "app/FrmPlaylist.h"
#include "app/FrmTag.h"
#include "app/Mnemonics.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "platform/Shell.h"
#include "playlist/PlaylistColumns.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>

class TestFrmPlaylist : public QObject {
    Q_OBJECT

    ScriptedShell shell;

    static FrmPlaylist* Page(GuiProgram& g) { return g.window->frmPlaylist; }
    static void Click(QWidget* root, const char* name) {
        auto* b = Control<QAbstractButton>(root, QString::fromLatin1(name));
        QVERIFY2(b && b->isEnabled(), name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    // A click on a row of a grid view, with modifiers (Ctrl adds to the highlight).
    static void ClickRow(DataGridView* view, int row, int col = 1,
                         Qt::KeyboardModifiers mods = Qt::NoModifier) {
        QTableView* t = view->table();
        const QRect r = t->visualRect(t->model()->index(row - 1, col - 1));
        QTest::mouseClick(t->viewport(), Qt::LeftButton, mods, r.center());
    }
    static void DoubleClickRow(DataGridView* view, int row, int col) {
        QTableView* t = view->table();
        const QRect r = t->visualRect(t->model()->index(row - 1, col - 1));
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
    }
    static DataGridView* View(FrmPlaylist* p, const char* name) {
        return p->findChild<DataGridView*>(QString::fromLatin1(name));
    }
    static QString Write(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        if (f.open(QIODevice::WriteOnly))
            f.write(bytes);
        return path;
    }
    static QByteArray Read(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }
    static QStringList Names(const DataGrid& g) {
        QStringList n;
        for (int r = 1; r <= g.Rows(); ++r)
            n << g.CellText(r, PlCol::FileName);
        return n;
    }

private slots:
    void init() {
        shell = ScriptedShell();
        SetShell(&shell);
    }
    void cleanup() { SetShell(nullptr); }

    void everyCommandIsThere() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPlaylist* p = Page(g);
        for (const char* n : {"lbxM3UPLS",
                              "LbxPlaylist",
                              "lbxPlaylist2",
                              "lblPlaylist_TimeSize",
                              "txtPlaylist_FTag",
                              "btnPlaylist_FindPlaylist",
                              "btnPlaylist_OpenPlaylist",
                              "btnPlaylist_DeletePlaylist",
                              "btnPlaylist_PlayPlaylist",
                              "btnPlaylist_SavePlaylist",
                              "btnPlaylist_DeleteEntries",
                              "btnPlaylist_EraseF",
                              "btnPlaylist_CorrectPath",
                              "btnPlaylist_Up",
                              "btnPlaylist_Down",
                              "btnPlaylist_Shuffle",
                              "btnPlaylist_Copy",
                              "btnPlaylist_Export",
                              "btnPlaylist_HighlightAll",
                              "btnPlaylist_Highlight_T",
                              "btnPlaylist_InvertHighlight",
                              "btnPlaylist_SetFTagActRow",
                              "btnPlaylist_FTagBlue",
                              "btnPlaylist_RemoveFTag",
                              "btnPlaylist_ClearFtag",
                              "chbPlaylist_NoMsg",
                              "chbPlaylist_WithSubFolders",
                              "optPlaylist_M3UPLS",
                              "optPlaylist_M3U",
                              "optPlaylist_PLS",
                              "chbPlaylist_TimeSize",
                              "chbPlaylist_Add",
                              "chbPlaylist_OpenPlaylistWithClick",
                              "chbPlaylist_DirectEdit",
                              "chbPlaylist_CopyWithNum",
                              "optPlaylist_Relativ",
                              "optPlaylist_Absolut",
                              "mnuPlaylist_PlaySong",
                              "mnuPlaylist_PlayPlaylist",
                              "mnuPlaylist_DeleteF",
                              "mnuPlaylist_Shuffle",
                              "mnuPlaylist_HighlightAll",
                              "mnuPlaylist_MarkFromFTag",
                              "mnuPlaylist_SignID"})
            QVERIFY2(p->findChild<QObject*>(QString::fromLatin1(n)), n);
        QCOMPARE(WithoutMnemonic(Control<QPushButton>(p, "btnPlaylist_SavePlaylist")->text()), Caption(461));
        QCOMPARE(p->lbxPlaylist().Column(PlCol::TF).caption, Caption(CapHeaderFileFound));
        QVERIFY(!Control<QPushButton>(p, "btnPlaylist_SavePlaylist")->text().isEmpty());
    }

    void rowsFromTheDataListSavedAndMoved() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        DataGrid& input = Grids::LbxInput();
        input.SetSelected(1, true);
        input.SetSelected(3, true);
        input.SetSelected(5, true);
        QTest::mouseClick(Control<QRadioButton>(g.window.get(), "optTab1_CopyToPlaylist"), Qt::LeftButton);
        g.prompt.answers = {true};
        Click(g.window.get(), "btnTab1_Sub2_1_OK");
        FrmPlaylist* p = Page(g);
        QCOMPARE(g.window->TabInput->currentWidget(), p);
        DataGrid& list = p->lbxPlaylist();
        QCOMPARE(Names(list),
                 (QStringList{"Abba - Waterloo.mp3", "Beatles - Help.flac", "Doors - Helpless.mp3"}));
        QCOMPARE(list.CellText(2, PlCol::TF), Caption(CapStatusFound));
        QCOMPARE(list.CellText(2, PlCol::PathFile), QStringLiteral("/m/c"));
        QCOMPARE(list.FooterText(PlCol::FileName), QStringLiteral("3"));

        // sums of the highlighted rows
        Click(p, "chbPlaylist_TimeSize");
        QCOMPARE(Setting(Ini::PlaylistTimeSize, Ini::Col2), QStringLiteral("1"));
        Click(p, "btnPlaylist_HighlightAll");
        QCOMPARE(Control<QLabel>(p, "lblPlaylist_TimeSize")->text(), QStringLiteral("(3)  08:40 mm:ss / ") +
                                                                         QLocale().toString(5.0, 'f', 2) +
                                                                         QStringLiteral(" Mb"));

        // up with rows 2 and 3: a click and a Ctrl click in the list, then the button
        DataGridView* view = View(p, "LbxPlaylist");
        ClickRow(view, 2);
        ClickRow(view, 3, 1, Qt::ControlModifier);
        QCOMPARE(list.SelectedRows(), (std::vector<int>{2, 3}));
        Click(p, "btnPlaylist_Up");
        QCOMPARE(Names(list),
                 (QStringList{"Beatles - Help.flac", "Doors - Helpless.mp3", "Abba - Waterloo.mp3"}));
        Click(p, "btnPlaylist_Down");
        QCOMPARE(Names(list),
                 (QStringList{"Abba - Waterloo.mp3", "Beatles - Help.flac", "Doors - Helpless.mp3"}));

        // save as PLS, only the highlighted rows; the songs do not exist here
        QTemporaryDir out;
        p->chooseSavePath = [&](const QString&) { return out.filePath("list.pls"); };
        Click(p, "chbPlaylist_NoMsg");
        Click(p, "btnPlaylist_SavePlaylist");
        QCOMPARE(
            Read(out.filePath("list.pls")),
            QByteArray("[playlist]\r\nFile1=/m/c/Beatles - Help.flac\r\nTitle1=Beatles - "
                       "Help.flac\r\nLength1=140\r\n"
                       "File2=/m/d/Doors - Helpless.mp3\r\nTitle2=Doors - Helpless.mp3\r\nLength2=200\r\n"
                       "NumberOfEntries=2\r\nVersion=2\r\n"));
        QCOMPARE(p->lbxM3UPLS().Rows(), 1);
        QCOMPARE(Control<QLabel>(p, "lblPlaylist_Title")->text(), QStringLiteral("list.pls"));
        QCOMPARE(Setting(Ini::PlaylistNoMsg, Ini::Col1), QStringLiteral("1"));

        // marks: typed into the box, written by the button; a digit key writes a sign
        QLineEdit* mark = Control<QLineEdit>(p, "txtPlaylist_FTag");
        QTest::keyClicks(mark, QStringLiteral("Best"));
        ClickRow(view, 1);
        Click(p, "btnPlaylist_SetFTagActRow");
        QCOMPARE(list.CellText(1, PlCol::FTag), QStringLiteral("Best"));
        SetSetting(Ini::SignFirst, Ini::SignCol, QStringLiteral("Party"));
        ClickRow(view, 3);
        QTest::keyClick(view->table(), Qt::Key_1);
        QCOMPARE(list.CellText(3, PlCol::FTag), QStringLiteral("Party"));
        // a double click in column 2 takes the row's mark into the box
        DoubleClickRow(view, 3, PlCol::FTag);
        QCOMPARE(mark->text(), QStringLiteral("Party"));
        Click(p, "btnPlaylist_ClearFtag");
        QCOMPARE(mark->text(), QString());

        // a double click elsewhere plays the song; the context menu plays the list
        DoubleClickRow(view, 2, PlCol::FileName);
        QCOMPARE(shell.opened, QStringList{"/m/c/Beatles - Help.flac"});
        p->findChild<QAction*>("mnuPlaylist_PlayPlaylist")->trigger();
        QCOMPARE(shell.opened.last(), g.folder.path() + "/temp/PlayTmp.m3u");
        QVERIFY(shell.seen.back().startsWith(
            "#EXTM3U\r\n#EXTINF:180,Abba - Waterloo.mp3\r\n/m/a/Abba - Waterloo.mp3\r\n"));

        // the keys of the list: Ctrl+A highlights all, Ctrl+I inverts, Ctrl+Shift+U moves up
        QTest::keyClick(view->table(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(list.SelCount(), 3);
        QTest::keyClick(view->table(), Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(list.SelCount(), 0);
        ClickRow(view, 3);
        QTest::keyClick(view->table(), Qt::Key_U, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(list.CellText(2, PlCol::FTag), QStringLiteral("Party"));
        QTest::keyClick(view->table(), Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(list.CellText(3, PlCol::FTag), QStringLiteral("Party"));
        QTest::keyClick(view->table(), Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(mark->text(), QStringLiteral("Party"));
        QTest::keyClick(view->table(), Qt::Key_1, Qt::ControlModifier); // the same mark again empties the box
        QCOMPARE(mark->text(), QString());

        // remove the highlighted row (quiet), then export the unmarked rows
        ClickRow(view, 2);
        Click(p, "btnPlaylist_DeleteEntries");
        QCOMPARE(list.Rows(), 2);
        QCOMPARE(Control<QLabel>(p, "lblPlaylist_Title")->text(), QString());
        p->chooseExportFile = [&](const QString&) { return out.filePath("exp.txt"); };
        Click(p, "btnPlaylist_Export");
        QVERIFY(QFile::exists(out.filePath("exp.txt")));
        QCOMPARE(p->lbxDummyPlaylist().Rows(), 2); // title row and empty row: both rows are marked
    }

    void findOpenRenameDelete() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPlaylist* p = Page(g);
        g.window->TabInput->setCurrentWidget(p);
        QTemporaryDir dir;
        const QString root = QDir(dir.path()).canonicalPath();
        Write(root + "/Songs/a.mp3", QByteArray(2048, 'a'));
        Write(root + "/one.m3u", "#EXTM3U\r\n#EXTINF:61,x\r\nSongs/a.mp3\r\nSongs/gone.mp3\r\n");
        Write(root + "/two.m3u8", "#EXTM3U\n/abs/z.mp3\n");
        Write(root + "/three.pls", "[playlist]\nFile1=Songs/a.mp3\nLength1=5\n");
        p->chooseFolder = [&](const QString&) { return root; };
        Click(p, "optPlaylist_M3U");
        QCOMPARE(Setting(Ini::PlaylistFormat, Ini::Col1), QStringLiteral("1"));
        Click(p, "btnPlaylist_FindPlaylist");
        QCOMPARE(p->lbxM3UPLS().Rows(), 2);
        Click(p, "optPlaylist_M3UPLS");
        Click(p, "btnPlaylist_FindPlaylist");
        QCOMPARE(p->lbxM3UPLS().Rows(), 3);
        QCOMPARE(Setting(Ini::PlaylistFolderPreset, Ini::Col1), root);
        QCOMPARE(p->lbxM3UPLS().CellText(1, 1), QStringLiteral("one.m3u"));

        // a double click opens
        DataGridView* files = View(p, "lbxM3UPLS");
        DoubleClickRow(files, 1, 1);
        DataGrid& list = p->lbxPlaylist();
        QCOMPARE(list.Rows(), 2);
        QCOMPARE(list.CellText(1, PlCol::SizeByte), QStringLiteral("2048"));
        QCOMPARE(list.CellText(2, PlCol::TF), Caption(CapStatusMissing));
        QCOMPARE(Control<QLabel>(p, "lblPlaylist_Title")->text(), Caption(CapPlaylistTitle) + "one.m3u");

        // the second list reads without touching the first
        ClickRow(files, 3);
        Click(p, "btnPlaylist_OpenPlaylist2");
        QCOMPARE(p->lbxPlaylist2().Rows(), 1);
        QCOMPARE(list.Rows(), 2);

        // open over rows: the replace question; No keeps the list
        ClickRow(files, 3);
        g.prompt.answers = {false};
        Click(p, "btnPlaylist_OpenPlaylist");
        QCOMPARE(list.Rows(), 2);
        QCOMPARE(g.prompt.LastText(),
                 Caption(CapPlaylistReplaceWarning) + "\n" + Caption(CapContinueQuestion));

        // the in-cell rename
        Click(p, "chbPlaylist_DirectEdit");
        DoubleClickRow(files, 2, 1);
        auto* editor = Control<QLineEdit>(p, "txtPlaylist_CellEdit");
        QVERIFY(editor->isVisible());
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("renamed.pls"));
        QTest::keyClick(editor, Qt::Key_Return);
        QVERIFY(QFile::exists(root + "/renamed.pls"));
        QVERIFY(!QFile::exists(root + "/three.pls"));
        QCOMPARE(g.prompt.LastText(), Caption(CapRenamed));

        // remove the missing entry, then delete a playlist file
        g.prompt.answers = {true};
        Click(p, "btnPlaylist_EraseF");
        QCOMPARE(list.Rows(), 1);
        QCOMPARE(g.prompt.LastText(), Caption(CapEntriesRemoved) + "1");
        ClickRow(files, 1);
        g.prompt.answers = {true};
        Click(p, "btnPlaylist_DeletePlaylist");
        QVERIFY(!QFile::exists(root + "/one.m3u"));
        QCOMPARE(p->lbxM3UPLS().Rows(), 2);
        ClickRow(files, 1);
        Click(p, "btnPlaylist_PlayPlaylist");
        QCOMPARE(shell.opened.last(), root + "/" + p->lbxM3UPLS().CellText(1, 1));

        // with "open with a click" one click opens, without the replace question
        Click(p, "chbPlaylist_DirectEdit"); // off again
        Click(p, "chbPlaylist_OpenPlaylistWithClick");
        const std::size_t asked = g.prompt.shown.size();
        const int row = p->lbxM3UPLS().FindRow(QStringLiteral("two.m3u8"), 1);
        QVERIFY(row > 0);
        ClickRow(files, row);
        QCOMPARE(list.Rows(), 1);
        QCOMPARE(list.CellText(1, PlCol::FileName), QStringLiteral("z.mp3"));
        QCOMPARE(g.prompt.shown.size(), asked);
    }

    void shuffleAndRepair() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPlaylist* p = Page(g);
        g.window->TabInput->setCurrentWidget(p);
        QTemporaryDir dir;
        const QString root = QDir(dir.path()).canonicalPath();
        Write(root + "/New/01.mp3", "1");
        Write(root + "/New/02.mp3", "22");
        Write(root + "/list.m3u", "#EXTM3U\r\n/old/01.mp3\r\n/old/02.mp3\r\n");
        p->chooseFolder = [&](const QString&) { return root; };
        Click(p, "btnPlaylist_FindPlaylist");
        ClickRow(View(p, "lbxM3UPLS"), 1);
        Click(p, "btnPlaylist_OpenPlaylist");
        DataGrid& list = p->lbxPlaylist();
        QCOMPARE(list.Rows(), 2);
        Click(p, "btnPlaylist_HighlightAll");
        int dialogs = 0;
        p->chooseSongFile = [&](const QString&, const QString& name) {
            ++dialogs;
            return root + "/New/" + name;
        };
        Click(p, "btnPlaylist_CorrectPath");
        QCOMPARE(dialogs, 1);
        QCOMPARE(list.CellText(2, PlCol::TF), Caption(CapStatusFound));
        QCOMPARE(list.CellText(2, PlCol::SizeByte), QStringLiteral("2"));
        g.prompt.answers = {true};
        Click(p, "btnPlaylist_Shuffle");
        QCOMPARE(g.prompt.shown.back().text, Caption(CapShuffleQuestion));
        QCOMPARE(list.CellText(1, PlCol::No), QStringLiteral("1"));
        QCOMPARE(list.CellText(2, PlCol::No), QStringLiteral("2"));
        QCOMPARE(list.FooterText(PlCol::FileName), QStringLiteral("2"));
        // only found rows highlighted, then inverted
        Click(p, "btnPlaylist_Highlight_T");
        QCOMPARE(list.SelCount(), 2);
        Click(p, "btnPlaylist_InvertHighlight");
        QCOMPARE(list.SelCount(), 0);
    }

    void playSelectionOfTheFilter() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        // the filter's column (Artist) and value, chosen in the boxes
        auto* column = Control<QComboBox>(g.window.get(), "cmbTab1_Filter(0)");
        column->setCurrentIndex(0);
        emit column->activated(0);
        auto* value = Control<QComboBox>(g.window.get(), "cmbTab1_Filter(1)");
        const int abba = value->findText(QStringLiteral("Abba"));
        QVERIFY(abba >= 0);
        value->setCurrentIndex(abba);
        Click(g.window.get(), "btnTab1_PlaySelection");
        QCOMPARE(shell.opened, QStringList{g.folder.path() + "/temp/AlbumTmp.m3u"});
        QCOMPARE(shell.seen.front(),
                 QByteArray("#EXTM3U\r\n#EXTINF:180,Abba - Waterloo\r\n/m/a/Abba - Waterloo.mp3\r\n"
                            "#EXTINF:181,abba - waterloo\r\n/m/b/abba - waterloo.MP3\r\n"));
        QCOMPARE(g.prompt.LastText(), Caption(CapAlbumPassed));
        QVERIFY(!QFile::exists(g.folder.path() + "/temp/AlbumTmp.m3u"));
    }

    void rowsFromTheTagList() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        Grids::LbxInput().SetSelected(1, true);
        Grids::LbxInput().SetSelected(2, true);
        Grids::LbxInput().SetCurRow(1);
        QVERIFY(g.window->frmTag->LoadTagList(QStringLiteral("MP3")));
        g.window->frmTag->lbxTag().SelectAll();
        g.window->TabInput->setCurrentWidget(g.window->frmTag);
        g.prompt.answers = {true};
        Click(g.window->frmTag, "btnTab2_CopyToPlaylist");
        FrmPlaylist* p = Page(g);
        QCOMPARE(g.window->TabInput->currentWidget(), p);
        QCOMPARE(p->lbxPlaylist().Rows(), 2);
        QCOMPARE(p->lbxPlaylist().CellText(1, PlCol::DurationS), QStringLiteral("180"));
        QCOMPARE(p->lbxPlaylist().CellText(2, PlCol::PathFile), QStringLiteral("/m/b"));
    }
};

QTEST_MAIN(TestFrmPlaylist)
#include "test_frmplaylist.moc"
