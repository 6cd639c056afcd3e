// The right-click menus of the synchronising editor (the text, the file list, the song
// list) and the entries of the synchronised text in the menu of the data list: a right
// click opens the menu, the entry chosen by its name runs its command, a menu closed
// without a choice runs nothing.

#include "STextFixture.h"
#include "app/InputDataPage.h"
#include "app/PlayerPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "list/InputColumns.h"

#include <QFile>
#include <QLabel>

using namespace SText;

namespace {

// Right-clicks `table` at `row` (the text: the press of the right button itself) and lets
// `act` work on the popup `name`.
void ChooseIn(STextFixture& f, QTableView* table, int row, const QString& name,
              const std::function<void(QMenu*)>& act, bool press = false) {
    bool seen = false;
    WhenMenuOpens(act, &seen, name);
    if (press)
        QTest::mouseClick(table->viewport(), Qt::RightButton, {}, f.CellRect(table, row, ColText).center());
    else
        ContextClick(table, row);
    QTRY_VERIFY(seen);
}

// Chooses the entry `key` (the entry must be enabled).
std::function<void(QMenu*)> Pick(const QString& key) {
    return [key](QMenu* menu) {
        QAction* a = MenuEntry(menu, key);
        QVERIFY2(a, qPrintable(key));
        QVERIFY2(a->isEnabled(), qPrintable(key));
        a->trigger();
    };
}

void CloseMenu(QMenu* menu) {
    for (QMenu* sub : menu->findChildren<QMenu*>())
        sub->close();
    menu->close();
}

QStringList Texts(const DataGrid& g, int rows) {
    QStringList out;
    for (int r = 1; r <= rows; ++r)
        out << g.CellText(r, ColText);
    return out;
}

} // namespace

class TestSTextMenus : public QObject {
    Q_OBJECT

    STextFixture f;

    QTableView* Text() { return f.S().LbxSText->table(); }
    void TextMenu(int row, const QString& key) {
        ChooseIn(f, Text(), row, QStringLiteral("mnuSText"), Pick(key), true);
    }

private slots:
    void init() { QVERIFY(f.Start()); }
    void cleanup() { f.Stop(); }

    void rowMenuOfTheText() {
        f.Open(f.Write(QStringLiteral("rf.txt"), "a\r\nb\r\nc\r\n"));
        f.ClickCell(1, ColRefrain); // "a" is a refrain
        // the menu works on the row under the mouse
        TextMenu(3, QStringLiteral("InsertText1"));
        QCOMPARE(Texts(f.L(), 4), QStringList({"a", "b", "a", "c"}));
        QCOMPARE(f.L().CurRow(), 4);
        TextMenu(2, QStringLiteral("AddRowBefore"));
        QCOMPARE(Texts(f.L(), 5), QStringList({"a", "", "b", "a", "c"}));
        QCOMPARE(f.L().CurRow(), 3);
        TextMenu(3, QStringLiteral("AddRowAfter"));
        QCOMPARE(Texts(f.L(), 6), QStringList({"a", "", "b", "", "a", "c"}));
        QCOMPARE(f.L().CurRow(), 4);
        TextMenu(6, QStringLiteral("InsertLine"));
        QCOMPARE(Texts(f.L(), 7), QStringList({"a", "", "b", "", "a", "c", ""}));
        QCOMPARE(f.L().CurRow(), 6);
        TextMenu(3, QStringLiteral("InsertAll"));
        QCOMPARE(Texts(f.L(), 5), QStringList({"a", "", "a", "b", ""}));
        for (int r = 1; r <= f.L().Rows(); ++r)
            QCOMPARE(f.L().RowKey(r), QString::number(r));
        TextMenu(1, QStringLiteral("DeleteRfAll"));
        QVERIFY(RefrainRows(f.L()).isEmpty());
        // without refrain marks their entries cannot run
        ChooseIn(
            f, Text(), 2, QStringLiteral("mnuSText"),
            [](QMenu* menu) {
                for (const char* k : {"InsertText", "InsertAll", "DeleteRfAll"})
                    QVERIFY2(!MenuEntry(menu, QLatin1String(k))->isEnabled(), k);
                QVERIFY(MenuEntry(menu, QStringLiteral("AddRowBefore"))->isEnabled());
                CloseMenu(menu);
            },
            true);
        QCOMPARE(Texts(f.L(), 5), QStringList({"a", "", "a", "b", ""}));
        // link a song: its path becomes the first line
        const QString song = f.Song(QStringLiteral("s.mp3"), QString());
        f.nextFile = song;
        TextMenu(4, QStringLiteral("LinkToSong"));
        QCOMPARE(f.L().CellText(1, ColText), song);
        QCOMPARE(f.S().lblSText_ActSong->text(), song);
    }

    void closedWithoutChoiceRunsNothing() {
        f.Open(f.Write(QStringLiteral("c.txt"), "a\r\nb\r\n"));
        f.ClickCell(1, ColRefrain);
        const int rows = f.L().Rows();
        ChooseIn(f, Text(), 2, QStringLiteral("mnuSText"), CloseMenu, true);
        QCOMPARE(f.L().Rows(), rows);
        QCOMPARE(RefrainRows(f.L()).size(), 1);
        QCOMPARE(Texts(f.L(), 3), QStringList({"a", "b", ""}));
    }

    void noMenuWhilePlaying() {
        const QString song = f.Song(QStringLiteral("p.mp3"), QString());
        f.Open(
            f.Write(QStringLiteral("p.lrc"), (QStringLiteral("%1\r\n[00:01.00]x\r\n").arg(song)).toUtf8()));
        f.Click("MMCSText_Play");
        QCOMPARE(f.S().MMCTag, QStringLiteral("playing"));
        QTest::mouseClick(Text()->viewport(), Qt::RightButton, {}, f.CellRect(Text(), 2, ColText).center());
        QVERIFY(!QApplication::activePopupWidget());
    }

    void fileListMenu() {
        const QString a = f.Write(QStringLiteral("a.lrc"), "[00:01.00]one\r\n");
        f.Write(QStringLiteral("b.txt"), "two\r\n");
        f.FindFiles();
        QCOMPARE(f.Files().Rows(), 2);
        QTableView* t = f.S().LbxTxtLrc->table();
        f.Files().SetCurRow(1);
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), Pick(QStringLiteral("TextToList")));
        QCOMPARE(f.L().CellText(1, ColText), QStringLiteral("one"));
        QCOMPARE(f.S().lblSText_ActText->text(), a);
        // the file type column: shown with both kinds, hidden and shown again by the menu
        QVERIFY(f.Files().Column(TxtLrcCol::Kind).visible);
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), [](QMenu* menu) {
            QVERIFY(MenuEntry(menu, QStringLiteral("txtlrc"))->isChecked());
            MenuEntry(menu, QStringLiteral("txtlrc"))->trigger();
        });
        QVERIFY(!f.Files().Column(TxtLrcCol::Kind).visible);
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), Pick(QStringLiteral("txtlrc")));
        QVERIFY(f.Files().Column(TxtLrcCol::Kind).visible);
        // rename through the input box
        f.prg->prompt.inputs.push_back(QStringLiteral("c.lrc"));
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), Pick(QStringLiteral("RenameFile")));
        QVERIFY(!QFile::exists(a));
        QVERIFY(QFile::exists(f.Dir().filePath(QStringLiteral("c.lrc"))));
        QCOMPARE(f.Files().CellText(1, TxtLrcCol::FileName), QStringLiteral("c.lrc"));
        // copy and move into a folder
        QDir(f.Dir().path()).mkdir(QStringLiteral("to"));
        const QString to = f.Dir().filePath(QStringLiteral("to"));
        f.nextFile = to;
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), Pick(QStringLiteral("CopyFile")));
        QVERIFY(QFile::exists(to + QStringLiteral("/c.lrc")));
        QVERIFY(QFile::exists(f.Dir().filePath(QStringLiteral("c.lrc"))));
        f.Files().SetCurRow(2);
        ChooseIn(f, t, 2, QStringLiteral("mnuTxtLrc"), Pick(QStringLiteral("MoveFile")));
        QVERIFY(QFile::exists(to + QStringLiteral("/b.txt")));
        QVERIFY(!QFile::exists(f.Dir().filePath(QStringLiteral("b.txt"))));
        QCOMPARE(f.Files().CellText(2, TxtLrcCol::Folder), to);
        // delete after the question, which names the file; No keeps it
        f.Files().SetCurRow(1);
        f.prg->prompt.answers.push_back(false);
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), Pick(QStringLiteral("KillFile")));
        QVERIFY(QFile::exists(f.Dir().filePath(QStringLiteral("c.lrc"))));
        QVERIFY(f.prg->prompt.shown.back().text.contains(f.Dir().filePath(QStringLiteral("c.lrc"))));
        f.prg->prompt.answers.push_back(true);
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), Pick(QStringLiteral("KillFile")));
        QVERIFY(!QFile::exists(f.Dir().filePath(QStringLiteral("c.lrc"))));
        QCOMPARE(f.Files().Rows(), 1);
        QCOMPARE(f.prg->prompt.shown.back().text, Caption(CapOneFileDeleted));
        // closed without a choice: the list and the files stay
        ChooseIn(f, t, 1, QStringLiteral("mnuTxtLrc"), CloseMenu);
        QCOMPARE(f.Files().Rows(), 1);
        QVERIFY(QFile::exists(to + QStringLiteral("/b.txt")));
    }

    void songListMenu() {
        const QString a = f.Song(QStringLiteral("a.mp3"), QStringLiteral("[00:00.10]first a\r\n\r\n"));
        f.Song(QStringLiteral("b.mp3"), QStringLiteral("[00:00.10]first b\r\n\r\n"));
        f.FindSongs();
        QCOMPARE(f.Songs().Rows(), 2);
        QTableView* t = f.S().LbxSongWithLrc->table();
        ChooseIn(f, t, 1, QStringLiteral("mnuSongLrc"), [](QMenu* menu) {
            QVERIFY(!MenuEntry(menu, QStringLiteral("EraseAllMarksSync"))->isEnabled()); // no mark yet
            QVERIFY(!MenuEntry(menu, QStringLiteral("KillFile"))->isEnabled()); // the file list is empty
            MenuEntry(menu, QStringLiteral("MarkAllSync"))->trigger();
        });
        QCOMPARE(f.Songs().CellText(1, SongLrcCol::Mark), QStringLiteral("p"));
        QCOMPARE(f.Songs().CellText(2, SongLrcCol::Mark), QStringLiteral("p"));
        ChooseIn(f, t, 1, QStringLiteral("mnuSongLrc"), Pick(QStringLiteral("EraseAllMarksSync")));
        QVERIFY(f.Songs().CellText(1, SongLrcCol::Mark).isEmpty());
        QVERIFY(f.Songs().CellText(2, SongLrcCol::Mark).isEmpty());
        // the LRC text of the song into the list, nothing plays
        f.Songs().SetCurRow(2);
        ChooseIn(f, t, 2, QStringLiteral("mnuSongLrc"), Pick(QStringLiteral("lrcInSong")));
        QCOMPARE(f.L().CellText(1, ColText), QStringLiteral("first b"));
        QCOMPARE(f.S().lblSText_ActText->text(), Caption(CapTextWithoutFile));
        QVERIFY(f.S().MMCTag.isEmpty());
        // play in the list
        f.Songs().SetCurRow(1);
        ChooseIn(f, t, 1, QStringLiteral("mnuSongLrc"), Pick(QStringLiteral("PlayInList")));
        QCOMPARE(f.L().CellText(1, ColText), QStringLiteral("first a"));
        QCOMPARE(f.S().MMCTag, QStringLiteral("playing"));
        QCOMPARE(f.fake.OpenPath(), a);
        f.Click("MMCSText_Stop");
        // play in the scrolling window
        f.Songs().SetCurRow(2);
        ChooseIn(f, t, 2, QStringLiteral("mnuSongLrc"), Pick(QStringLiteral("PlayInWindow")));
        QTRY_VERIFY(f.W().isVisible());
        QCOMPARE(f.fake.OpenPath(), f.Dir().filePath(QStringLiteral("b.mp3")));
        f.W().close();
        // rename the song of the song list
        f.Songs().SetCurRow(1);
        f.prg->prompt.inputs.push_back(QStringLiteral("z.mp3"));
        ChooseIn(f, t, 1, QStringLiteral("mnuSongLrc"), Pick(QStringLiteral("RenameFile")));
        QVERIFY(QFile::exists(f.Dir().filePath(QStringLiteral("z.mp3"))));
        QVERIFY(!QFile::exists(a));
        QCOMPARE(f.Songs().CellText(1, SongLrcCol::FileName), QStringLiteral("z.mp3"));
    }

    void songListDeleteWorksOnTheFileList() {
        f.Song(QStringLiteral("a.mp3"), QStringLiteral("[00:00.10]x\r\n\r\n"));
        const QString txt = f.Write(QStringLiteral("t.txt"), "t\r\n");
        f.FindFiles();
        f.Files().SetCurRow(1);
        f.FindSongs();
        f.prg->prompt.answers.push_back(false);
        ChooseIn(f, f.S().LbxSongWithLrc->table(), 1, QStringLiteral("mnuSongLrc"),
                 Pick(QStringLiteral("KillFile")));
        // the question names the file it would delete
        QVERIFY(f.prg->prompt.shown.back().text.contains(txt));
        QVERIFY(QFile::exists(txt));
        QVERIFY(QFile::exists(f.Dir().filePath(QStringLiteral("a.mp3"))));
    }

    void syncTextEntriesOfTheDataList() {
        const QString a =
            f.Song(QStringLiteral("a.mp3"), QStringLiteral("[00:00.10]from a\r\n[00:00.50]two\r\n"));
        const QString b = f.Song(QStringLiteral("b.mp3"), QStringLiteral("[00:00.10]from b\r\n\r\n"));
        const QString plain = f.Song(QStringLiteral("c.mp3"), QString());
        DataGrid& input = Grids::LbxInput();
        for (const QString& name :
             {QStringLiteral("a.mp3"), QStringLiteral("b.mp3"), QStringLiteral("c.mp3")}) {
            const int row = input.AddRow({});
            input.SetCellText(row, InCol::FileName, name);
            input.SetCellText(row, InCol::Path, f.Dir().path());
        }
        f.prg->window->TabInput->setCurrentIndex(0);
        QTableView* t = f.prg->window->pageData->LbxInput->table();
        // a song without LRC: no group of the synchronised text; nothing highlighted: no
        // songs to play
        input.SetCurRow(3);
        input.SelectRange(1, 3, false);
        ChooseIn(f, t, 3, QStringLiteral("mnuInput"), [](QMenu* menu) {
            QVERIFY(!MenuEntry(menu, QStringLiteral("sText")));
            QVERIFY(!MenuEntry(menu, QStringLiteral("sTextPlayAll"))->isEnabled());
            CloseMenu(menu);
        });
        // show the text in the editor
        input.SetCurRow(1);
        ChooseIn(f, t, 1, QStringLiteral("mnuInput"), Pick(QStringLiteral("sTextShow")));
        QCOMPARE(f.prg->window->TabInput->currentWidget(), &f.S());
        QCOMPARE(f.L().CellText(1, ColText), QStringLiteral("from a"));
        QCOMPARE(f.S().lblSText_ActSong->text(), a);
        // play it in the scrolling window
        f.prg->window->TabInput->setCurrentIndex(0);
        ChooseIn(f, t, 1, QStringLiteral("mnuInput"), Pick(QStringLiteral("sTextPlay")));
        QTRY_VERIFY(f.W().isVisible());
        QCOMPARE(f.fake.OpenPath(), a);
        f.W().close();
        // the highlighted songs with LRC one after the other; the song without is left out
        input.SelectRange(1, 3, true);
        input.SetCurRow(3);
        ChooseIn(f, t, 3, QStringLiteral("mnuInput"), Pick(QStringLiteral("sTextPlayAll")));
        QTRY_VERIFY(f.W().isVisible());
        QCOMPARE(f.fake.OpenPath(), a);
        f.fake.Close(); // the first song ended
        QTRY_COMPARE_WITH_TIMEOUT(f.fake.OpenPath(), b, 1500);
        f.fake.Close();
        QTRY_VERIFY_WITH_TIMEOUT(f.fake.OpenPath() != plain, 500);
        f.W().close();
        // remove the text from the song after the question; No keeps it
        input.SetCurRow(2);
        f.prg->prompt.answers.push_back(false);
        ChooseIn(f, t, 2, QStringLiteral("mnuInput"), Pick(QStringLiteral("sTextRemove")));
        QCOMPARE(f.prg->prompt.shown.back().text, Caption(CapRemoveLrcQuestion));
        TagEngine e;
        QCOMPARE(e.OpenFile(b), 1);
        QVERIFY(LrcFrameIndex(e) > 0);
        f.prg->prompt.answers.push_back(true);
        ChooseIn(f, t, 2, QStringLiteral("mnuInput"), Pick(QStringLiteral("sTextRemove")));
        QCOMPARE(e.OpenFile(b), 1);
        QCOMPARE(LrcFrameIndex(e), 0);
        QCOMPARE(f.prg->prompt.shown.back().text, Caption(CapLrcRemoved));
    }
};

QTEST_MAIN(TestSTextMenus)
#include "test_stextmenus.moc"
