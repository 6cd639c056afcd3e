// The commands behind the right-click menus of the data list, the reference list and the
// folder view: each test right-clicks as a user does, chooses the entry by its key and
// looks at the effect, on the tags (read back by mutagen), on the files or on the list.

#include "ListWindowFixture.h"
#include "MenuTestUtil.h"
#include "TagTestUtil.h"
#include "app/DataGridView.h"
#include "app/FilesPanel.h"
#include "app/FolderPanel.h"
#include "app/FrmInput.h"
#include "app/InputDataPage.h"
#include "app/InputListMenu.h"
#include "app/RefPanel.h"
#include "app/RenamePanel.h"
#include "app/ScanPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/Marks.h"
#include "list/modColumnPatterns.h"
#include "list/modScan.h"
#include "platform/Shell.h"
#include "ref/RefColumns.h"
#include "tag/TagEngine.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeWidget>

using namespace tagtest;

namespace {

// The ID3v2 frames of a file as mutagen sees them: "ID=text", "TXXX:desc=text", "ID=url".
const char* kDumpFrames = R"(
import sys
from mutagen.id3 import ID3
t = ID3(sys.argv[1])
for f in t.values():
    if f.FrameID == 'TXXX':
        print('TXXX:%s=%s' % (f.desc, f.text[0]))
    elif hasattr(f, 'url'):
        print('%s=%s' % (f.FrameID, f.url))
    elif hasattr(f, 'text'):
        print('%s=%s' % (f.FrameID, str(f.text[0])))
)";

QStringList Frames(const QString& path) {
    return RunPython(QString::fromLatin1(kDumpFrames), {path}).split(u'\n', Qt::SkipEmptyParts);
}

QTableView* InputTable(GuiProgram& g) {
    return g.window->pageData->LbxInput->table();
}

QPoint RowPoint(QTableView* table, int row) {
    const int col = table->horizontalHeader()->logicalIndexAt(10);
    return QPoint(table->columnViewportPosition(col) + 5, table->rowViewportPosition(row - 1) + 3);
}

// Chooses `key` from the menu of the data list opened on row `row`.
bool ChooseInput(GuiProgram& g, int row, const char* key) {
    return ChooseFromMenu(InputTable(g), RowPoint(InputTable(g), row), key, QStringLiteral("mnuInput"));
}

// Copies of the MP3 fixture under the given names in `dir`, read into the data list, all
// highlighted.
void LoadSongs(const QString& dir, const QStringList& names) {
    DataGrid& list = Grids::LbxInput();
    list.Clear();
    const RowContext context;
    for (const QString& n : names) {
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), dir, n);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        AddFileRow(list, TagEngine::Shared(), path, context);
    }
    list.Refresh();
    list.SelectAll();
    list.SetCurRow(1);
}

} // namespace

class TestListMenuCommands : public QObject {
    Q_OBJECT

    ScriptedShell shell;

private slots:
    void init() {
        shell = ScriptedShell();
        SetShell(&shell);
    }
    void cleanup() { SetShell(nullptr); }

    void ratingAndMoodFromTheMenu() {
        if (MutagenPython().isEmpty())
            QSKIP("python3-mutagen is missing");
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::RatingFirst + 1, Ini::RatingCol}, "**"},
                         {{Ini::MoodFirst, Ini::MoodCol}, "happy"},
                         {{Ini::NoMsg, Ini::Col1}, "1"}}));
        g.window->show();
        QTemporaryDir dir;
        LoadSongs(dir.path(), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3")});
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(2, false);
        QVERIFY(ChooseInput(g, 1, "QIn01"));
        QVERIFY(ChooseInput(g, 1, "MIn00"));
        QVERIFY(Frames(dir.filePath("a.mp3")).contains(QStringLiteral("TXXX:QLT=QLT**")));
        QVERIFY(Frames(dir.filePath("a.mp3")).contains(QStringLiteral("TXXX:MOD=MOODhappy")));
        QVERIFY(!Frames(dir.filePath("b.mp3")).join(u' ').contains(QStringLiteral("QLT")));
        QCOMPARE(list.CellText(1, InCol::Rating), QStringLiteral("**"));
        // Remove: the rating goes, the mood stays.
        QVERIFY(ChooseInput(g, 1, "RemQ"));
        const QStringList after = Frames(dir.filePath("a.mp3"));
        QVERIFY(!after.join(u' ').contains(QStringLiteral("QLT")));
        QVERIFY(after.contains(QStringLiteral("TXXX:MOD=MOODhappy")));
        QVERIFY(list.CellText(1, InCol::Rating).isEmpty());
        // Without a rating among the highlighted rows there is nothing to remove.
        QVERIFY(!ChooseInput(g, 1, "RemQ"));
        QVERIFY(ChooseInput(g, 1, "RemM"));
        QVERIFY(!Frames(dir.filePath("a.mp3")).join(u' ').contains(QStringLiteral("MOOD")));
    }

    void nameTextAlbumAndLinkIntoTags() {
        if (MutagenPython().isEmpty())
            QSKIP("python3-mutagen is missing");
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NoMsg, Ini::Col1}, "1"}}));
        g.window->show();
        QTemporaryDir dir;
        LoadSongs(dir.path(), {QStringLiteral("Abba - Waterloo.mp3")});
        const QString path = dir.filePath(QStringLiteral("Abba - Waterloo.mp3"));
        QVERIFY(ChooseInput(g, 1, "NameToTag"));
        QStringList f = Frames(path);
        QVERIFY2(f.contains(QStringLiteral("TPE1=Abba")), qPrintable(f.join(u' ')));
        QVERIFY(f.contains(QStringLiteral("TIT2=Waterloo")));
        // The text into the column chosen on the rename tab.
        RenamePanel* rename = g.window->renamePanel;
        rename->cmbTab1_TextInTag->setCurrentIndex(
            rename->cmbTab1_TextInTag->findData(int(InCol::TagComposer)));
        g.prompt.inputs = {QStringLiteral("Benny")};
        QVERIFY(ChooseInput(g, 1, "TextToTags"));
        QVERIFY(Frames(path).contains(QStringLiteral("TCOM=Benny")));
        // The album, proposed from the row.
        g.prompt.inputs = {QStringLiteral("Arrival")};
        QVERIFY(ChooseInput(g, 1, "SetAlbum"));
        QVERIFY(Frames(path).contains(QStringLiteral("TALB=Arrival")));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::TagAlbum), QStringLiteral("Arrival"));
        QCOMPARE(g.prompt.shown.back().text, Caption(CapSetAlbumPrompt));
        // A web address as link, then a file from the picker.
        g.prompt.inputs = {QStringLiteral("www.example.org")};
        QVERIFY(ChooseInput(g, 1, "LinkToTag"));
        QVERIFY(Frames(path).join(u' ').contains(QStringLiteral("www.example.org")));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::TagAudFileUrl), QStringLiteral("www.example.org"));
        auto* menu = g.window->findChild<InputListMenu*>();
        QVERIFY(menu);
        const QString linked = dir.filePath(QStringLiteral("score.pdf"));
        QVERIFY(WriteAll(linked, "pdf"));
        menu->chooseLinkFile = [&](const QString&) { return linked; };
        g.prompt.inputs = {QString()};
        QVERIFY(ChooseInput(g, 1, "LinkToTag"));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::TagAudFileUrl), linked);
        QCOMPARE(Setting(Ini::PathRename1, Ini::Col2), dir.path());
    }

    void playAlbumAndRandomChoice() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NoMsg, Ini::Col1}, "1"}}));
        g.window->show();
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(1, true);
        list.SetCurRow(1);
        // No album in the current row: the entry cannot run.
        QVERIFY(!ChooseInput(g, 1, "album"));
        list.SetCellText(1, InCol::TagAlbum, QStringLiteral("Arrival"));
        list.SetCellText(3, InCol::TagAlbum, QStringLiteral("Arrival"));
        QVERIFY(ChooseInput(g, 1, "album"));
        QCOMPARE(shell.opened.size(), 1);
        QVERIFY(shell.opened.front().endsWith(QStringLiteral(".m3u")));
        // The random sample: two rows get the default mark.
        g.prompt.inputs = {QStringLiteral("2")};
        QVERIFY(ChooseInput(g, 1, "RandomChoice"));
        QCOMPARE(RowsWithMark(Mark::Default), 2);
    }

    void columnsAsInTheColumnWindow() {
        GuiProgram g;
        QString pattern(InCol::Count, u'0');
        pattern[InCol::FileName - 1] = u'1';
        pattern[InCol::Artist - 1] = u'1';
        QVERIFY(g.Start({{{Ini::PatternFirst + 2, Ini::PatternNameCol}, "short"},
                         {{Ini::PatternFirst + 2, Ini::PatternTextCol}, pattern},
                         {{Ini::ActivePattern, Ini::Col2}, "2"}}));
        g.window->show();
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        btnShowCol_ActivateAll(list);
        QVERIFY(list.Column(InCol::Title).visible);
        QVERIFY(ChooseInput(g, 1, "ColsFrm"));
        QVERIFY(!list.Column(InCol::Title).visible);
        QVERIFY(list.Column(InCol::Artist).visible);
    }

    void singleFileCopyMoveDelete() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NoMsg, Ini::Col1}, "1"}}));
        g.window->show();
        QTemporaryDir dir, target;
        LoadSongs(dir.path(), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3"), QStringLiteral("c.mp3")});
        DataGrid& list = Grids::LbxInput();
        g.window->filesPanel->chooseFolder = [&](int, const QString&) { return target.path(); };
        list.ClearSelection();
        list.SetSelected(1, true);
        QVERIFY(ChooseInput(g, 1, "SingleFile01"));
        QVERIFY(QFile::exists(target.filePath("a.mp3")));
        QVERIFY(QFile::exists(dir.filePath("a.mp3")));
        list.ClearSelection();
        list.SetSelected(2, true);
        QVERIFY(ChooseInput(g, 2, "SingleFile03"));
        QVERIFY(QFile::exists(target.filePath("b.mp3")));
        QVERIFY(!QFile::exists(dir.filePath("b.mp3")));
        QCOMPARE(list.Rows(), 2);
        const int c = list.FindRow(QStringLiteral("c.mp3"), InCol::FileName);
        list.ClearSelection();
        list.SetSelected(c, true);
        g.prompt.answers = {true};
        QVERIFY(ChooseInput(g, c, "SingleFile02"));
        QVERIFY(!QFile::exists(dir.filePath("c.mp3")));
        QCOMPARE(list.Rows(), 1);
    }

    void refListCommands() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NoMsg, Ini::Col1}, "1"}, {{Ini::ShowColumnRefPattern, Ini::Col1}, "0001"}}));
        QTest::mouseClick(Control<QPushButton>(g.window.get(), "btnTab1_ToggleRef"), Qt::LeftButton);
        g.window->show();
        QTemporaryDir dir, target;
        DataGrid& ref = Grids::LbxRef();
        for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) {
            QVERIFY(!CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QLatin1String(name)).isEmpty());
            QStringList row(ref.Cols(), QString());
            row[RefCol::FileName - 1] = QLatin1String(name);
            row[RefCol::Path - 1] = dir.path();
            row[RefCol::TF - 1] = Caption(213);
            ref.AddRow(row);
        }
        ref.Refresh();
        ref.SetCurRow(1);
        ref.SetSelected(1, true);
        QTableView* table = g.window->refPanel->LbxRef->table();
        auto choose = [&](int row, const char* key) {
            return ChooseFromMenu(table, RowPoint(table, row), key, QStringLiteral("mnuRef"));
        };
        // Direct edit: the switch, and the remark is typed in place.
        QVERIFY(choose(1, "dEditOn"));
        QVERIFY(g.window->renamePanel->chbTab1_DirectEdit->isChecked());
        const QModelIndex remark = table->model()->index(0, RefCol::Remark - 1);
        QVERIFY(table->model()->flags(remark) & Qt::ItemIsEditable);
        QVERIFY(
            !(table->model()->flags(table->model()->index(0, RefCol::FileName - 1)) & Qt::ItemIsEditable));
        QVERIFY(choose(1, "dEditOff"));
        QVERIFY(!g.window->renamePanel->chbTab1_DirectEdit->isChecked());
        // Columns: the saved choice, then all.
        QVERIFY(choose(1, "ColsPreset"));
        QVERIFY(!ref.Column(RefCol::Path).visible);
        QVERIFY(ref.Column(RefCol::FileName).visible);
        QVERIFY(choose(1, "ColsAll"));
        QVERIFY(ref.Column(RefCol::Path).visible);
        // The folder of the current row with the desktop.
        QVERIFY(choose(1, "CMD"));
        QCOMPARE(shell.opened, QStringList{dir.path()});
        // The found remarks go.
        QVERIFY(choose(1, "Rem_F"));
        QVERIFY(ref.CellText(2, RefCol::TF).isEmpty());
        QVERIFY(!choose(1, "Rem_F")); // nothing left to clear
        // Copy, move and delete of the files of the highlighted rows.
        g.window->filesPanel->chooseFolder = [&](int, const QString&) { return target.path(); };
        QVERIFY(choose(1, "Copy"));
        QVERIFY(QFile::exists(target.filePath("a.mp3")));
        QVERIFY(QFile::exists(dir.filePath("a.mp3")));
        ref.ClearSelection();
        ref.SetSelected(2, true);
        QVERIFY(choose(2, "Move"));
        QVERIFY(QFile::exists(target.filePath("b.mp3")));
        QVERIFY(!QFile::exists(dir.filePath("b.mp3")));
        QCOMPARE(ref.Rows(), 2);
        const int c = ref.FindRow(QStringLiteral("c.mp3"), RefCol::FileName);
        ref.ClearSelection();
        ref.SetSelected(c, true);
        g.prompt.answers = {true};
        QVERIFY(choose(c, "Delete"));
        QVERIFY(!QFile::exists(dir.filePath("c.mp3")));
        QCOMPARE(ref.Rows(), 1);
    }

    void folderViewMenu() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NoMsg, Ini::Col1}, "1"}}));
        g.window->show();
        ScanPanel* scan = g.window->scanPanel;
        scan->OpenFolderPane();
        FolderPanel* f = scan->folders;
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("songs")));
        const QString songs = dir.filePath(QStringLiteral("songs"));
        f->FillDrives();
        QVERIFY(f->ShowFolder(songs));
        QTreeWidget* tree = f->Folderview;
        auto choose = [&](const char* key) {
            const QRect r = tree->visualItemRect(tree->currentItem());
            return ChooseFromMenu(tree, r.center(), key, QStringLiteral("mnuFolder"));
        };
        // A favourite: kept in the settings and offered in the volume list.
        QVERIFY(choose("AddToFavorite"));
        QCOMPARE(Setting(Ini::FavoriteFirst, Ini::FavoriteCol), songs);
        QVERIFY(f->Drive1->findData(songs) >= 0);
        QCOMPARE(f->Drive1->itemText(f->Drive1->findData(songs)), Caption(CapFavoriteDrive) + songs);
        QVERIFY(!choose("AddToFavorite"));
        // Chosen in the volume list, it shows its own tree.
        f->Drive1->setFocus();
        QTest::keyClick(f->Drive1, Qt::Key_End); // the favourites stand last
        QCOMPARE(tree->topLevelItem(0)->text(0), songs);
        QVERIFY(f->ShowFolder(songs));
        QCOMPARE(tree->currentItem(), tree->topLevelItem(0));
        QVERIFY(choose("RemFromFavorite"));
        QVERIFY(Setting(Ini::FavoriteFirst, Ini::FavoriteCol).isEmpty());
        QCOMPARE(f->Drive1->findData(songs), -1);
        // The folder shows again in the tree of its volume.
        QCOMPARE(f->SelectedFolder(), songs);
        QVERIFY(tree->topLevelItem(0)->data(0, Qt::UserRole).toString() != songs);
        // Read the folder; then its rows go, and come back read again.
        QVERIFY(!CopyFixture(QStringLiteral("tone.mp3"), songs, QStringLiteral("Abba - SOS.mp3")).isEmpty());
        QVERIFY(!choose("DirRem")); // no rows of the folder yet
        QVERIFY(choose("DirUpdate"));
        QTRY_COMPARE(Grids::LbxInput().Rows(), 1);
        TagEngine& e = TagEngine::Shared();
        const QString song = songs + QStringLiteral("/Abba - SOS.mp3");
        QVERIFY(e.OpenFile(song) != 0);
        e.SetV2Album(QStringLiteral("Arrival"));
        QVERIFY(e.SaveV2(song) > 0);
        scan->OpenFolderPane();
        QVERIFY(f->ShowFolder(songs));
        QVERIFY(choose("DirUpd"));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::TagAlbum), QStringLiteral("Arrival"));
        QVERIFY(choose("DirRem"));
        QCOMPARE(Grids::LbxInput().Rows(), 0);
        // The refreshes: a new folder shows, the volumes are read again.
        QVERIFY(QDir(songs).mkpath(QStringLiteral("new")));
        tree->currentItem()->setExpanded(true);
        QVERIFY(choose("UpdateFolders"));
        QCOMPARE(tree->currentItem()->childCount(), 1);
        QVERIFY(choose("UpdateDrivelist"));
        QVERIFY(f->Drive1->count() > 0);
        QCOMPARE(f->SelectedFolder(), songs);
    }
};

QTEST_MAIN(TestListMenuCommands)
#include "test_listmenu_commands.moc"
