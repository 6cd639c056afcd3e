// The right-click menus of the synchronising editor's lists (entries, parents, enabled
// flags with no, one and many rows) and the key tables of the editor with their commands
// recorded.

#include "core/DataGrid.h"
#include "list/modShortcuts.h"
#include "list/modShortcutsText.h"
#include "text/modSText.h"
#include "text/modSTextMenus.h"

#include <QtTest>

namespace {

QString KeyCaption(const QString& key) {
    return QStringLiteral("[") + key + QStringLiteral("]");
}

bool Enabled(const ContextMenuEntries& m, const char* key) {
    const MenuEntry* e = m.Find(QLatin1String(key));
    if (!e)
        qFatal("no entry %s", key);
    return e->enabled;
}

// The commands of the keys, written down as they run.
class Recorder : public STextShortcutCommands {
public:
    QStringList log;
    void CloseSongtext() override { log << QStringLiteral("close"); }
    void VolumeStep(bool up) override { log << (up ? QStringLiteral("vol+") : QStringLiteral("vol-")); }
    void SelectSubTab(int index) override { log << QStringLiteral("sub%1").arg(index); }
    void ShiftTimes(int deltaMs) override { log << QStringLiteral("shift%1").arg(deltaMs); }
    int ShiftBoxValue(bool plus) const override { return plus ? 1500 : 2500; }
    void Player(STextPlayerKey key) override { log << QStringLiteral("player%1").arg(int(key)); }
    void InsertRow(bool before) override {
        log << (before ? QStringLiteral("before") : QStringLiteral("after"));
    }
    void LoadSelected() override { log << QStringLiteral("load"); }
    void FocusList() override { log << QStringLiteral("focus"); }
};

} // namespace

class TestSTextMenus : public QObject {
    Q_OBJECT

    Recorder m_rec;

    QStringList Key(const char* list, int key, int shift) {
        m_rec.log.clear();
        HandleShortcut(QLatin1String(list), key, shift);
        return m_rec.log;
    }

private slots:
    void init() { SetSTextShortcuts(&m_rec); }
    void cleanup() { SetSTextShortcuts(nullptr); }

    void textMenuKeysInOrder() {
        QVERIFY(BuildSTextMenu(STextMenuState(), &KeyCaption).Entries().empty());
        STextMenuState s;
        s.rows = 100;
        s.curRow = 3;
        s.refrainRows = {2, 7};
        s.refrainTexts = {QStringLiteral("la la"), QStringLiteral("oh oh")};
        const ContextMenuEntries m = BuildSTextMenu(s, &KeyCaption);
        QCOMPARE(m.Keys(),
                 QStringList({"AddRowBefore", "AddRowAfter", "LinkToSong", "InsertText", "InsertText2",
                              "InsertText7", "InsertAll", "Line", "InsertLine", "DeleteRfAll"}));
        QCOMPARE(m.Find(QStringLiteral("InsertText7"))->parent, QStringLiteral("InsertText"));
        QCOMPARE(m.Find(QStringLiteral("InsertText7"))->caption, QStringLiteral("7  oh oh"));
        QCOMPARE(m.Find(QStringLiteral("Line"))->caption, QStringLiteral("-"));
        QCOMPARE(m.Find(QStringLiteral("AddRowBefore"))->caption, QStringLiteral("[AddRowBefore]"));
        for (const char* k : {"AddRowBefore", "InsertText", "InsertAll", "InsertLine", "DeleteRfAll"})
            QVERIFY(Enabled(m, k));
        QCOMPARE(RefrainEntryRow(QStringLiteral("InsertText7")), 7);
        QCOMPARE(RefrainEntryRow(QStringLiteral("InsertAll")), -1);
    }

    void textMenuWithoutRefrainsOrRow() {
        STextMenuState s;
        s.rows = 100;
        const ContextMenuEntries m = BuildSTextMenu(s, &KeyCaption);
        for (const char* k :
             {"AddRowBefore", "AddRowAfter", "InsertText", "InsertAll", "InsertLine", "DeleteRfAll"})
            QVERIFY2(!Enabled(m, k), k);
        QVERIFY(Enabled(m, "LinkToSong")); // a song can always be linked
        s.curRow = 1;
        const ContextMenuEntries one = BuildSTextMenu(s, &KeyCaption);
        QVERIFY(Enabled(one, "AddRowAfter") && Enabled(one, "InsertLine"));
        QVERIFY(!Enabled(one, "InsertAll") && !Enabled(one, "DeleteRfAll"));
    }

    void fileListMenu() {
        QVERIFY(BuildTxtLrcMenu(TxtLrcMenuState(), &KeyCaption).Entries().empty());
        TxtLrcMenuState s;
        s.rows = 1;
        ContextMenuEntries m = BuildTxtLrcMenu(s, &KeyCaption);
        QCOMPARE(m.Keys(), QStringList({"TextToList", "File", "RenameFile", "CopyFile", "MoveFile",
                                        "KillFile", "txtlrc"}));
        for (const char* k : {"RenameFile", "CopyFile", "MoveFile", "KillFile"})
            QCOMPARE(m.Find(QLatin1String(k))->parent, QStringLiteral("File"));
        // one row, none current: nothing to load or to work on
        for (const char* k : {"TextToList", "RenameFile", "KillFile", "txtlrc"})
            QVERIFY2(!Enabled(m, k), k);
        s.rows = 5;
        s.curRow = 5;
        s.anyKind = true;
        m = BuildTxtLrcMenu(s, &KeyCaption);
        for (const char* k : {"TextToList", "RenameFile", "CopyFile", "MoveFile", "KillFile", "txtlrc"})
            QVERIFY2(Enabled(m, k), k);
        QVERIFY(!m.Find(QStringLiteral("txtlrc"))->checked);
        s.kindShown = true;
        QVERIFY(BuildTxtLrcMenu(s, &KeyCaption).Find(QStringLiteral("txtlrc"))->checked);
    }

    void songListMenu() {
        QVERIFY(BuildSongLrcMenu(SongLrcMenuState(), &KeyCaption).Entries().empty());
        SongLrcMenuState s;
        s.rows = 1;
        s.curRow = 1;
        ContextMenuEntries m = BuildSongLrcMenu(s, &KeyCaption);
        QCOMPARE(m.Keys(),
                 QStringList({"PlayInList", "PlayInWindow", "MarkAllSync", "EraseAllMarksSync", "File",
                              "RenameFile", "CopyFile", "MoveFile", "KillFile", "lrcInSong"}));
        QVERIFY(Enabled(m, "PlayInList") && Enabled(m, "MarkAllSync") && Enabled(m, "lrcInSong"));
        QVERIFY(!Enabled(m, "PlayInWindow"));      // no scrolling window
        QVERIFY(!Enabled(m, "EraseAllMarksSync")); // no mark to erase
        QVERIFY(!Enabled(m, "KillFile"));          // it works on the file list's row
        s.rows = 9;
        s.curRow = 4;
        s.windowReady = s.anyMark = s.fileListRow = true;
        m = BuildSongLrcMenu(s, &KeyCaption);
        for (const char* k : {"PlayInWindow", "EraseAllMarksSync", "KillFile", "RenameFile"})
            QVERIFY2(Enabled(m, k), k);
    }

    void blankLineKeepsTheCurrentRow() {
        DataGrid g;
        DefineSTextColumns(g);
        for (const char* t : {"a", "b", "c"})
            AddSTextLine(g, QLatin1String(t));
        g.SetCurRow(2);
        InsertBlankLine(g);
        QCOMPARE(g.Rows(), 4);
        QCOMPARE(g.CurRow(), 2);
        QCOMPARE(g.CellText(3, SText::ColText), QString());
        QCOMPARE(g.CellText(4, SText::ColText), QStringLiteral("c"));
        g.SetCurRow(4); // at the last row a blank row is added below
        InsertBlankLine(g);
        QCOMPARE(g.Rows(), 5);
        QCOMPARE(g.CurRow(), 4);
    }

    void tableOfTheWholeEditor() {
        using namespace KeyMask;
        QCOMPARE(Key("STextAll", Vk::Esc, None), QStringList{"close"});
        QCOMPARE(Key("STextAll", Vk::NumPlus, None), QStringList{"vol+"});
        QCOMPARE(Key("STextAll", Vk::NumMinus, None), QStringList{"vol-"});
        QCOMPARE(Key("STextAll", Vk::F1, Shift), QStringList{"sub0"});
        QCOMPARE(Key("STextAll", Vk::F1 + 1, Shift), QStringList{"sub1"});
        QVERIFY(Key("STextAll", Vk::F1 + 2, Shift).isEmpty());
        QCOMPARE(Key("STextAll", '1', Ctrl), QStringList{"shift200"});
        QCOMPARE(Key("STextAll", '2', Ctrl), QStringList{"shift500"});
        QCOMPARE(Key("STextAll", '3', Ctrl), QStringList{"shift1000"});
        QCOMPARE(Key("STextAll", '4', Ctrl), QStringList{"shift1500"});
        QCOMPARE(Key("STextAll", '1', CtrlShift), QStringList{"shift-200"});
        QCOMPARE(Key("STextAll", '2', CtrlShift), QStringList{"shift-500"});
        QCOMPARE(Key("STextAll", '3', CtrlShift), QStringList{"shift-1000"});
        QCOMPARE(Key("STextAll", '4', CtrlShift), QStringList{"shift-2500"});
        QVERIFY(Key("STextAll", '5', Ctrl).isEmpty());
        QCOMPARE(Key("STextAll", 'E', Ctrl), QStringList{"player0"});
        QCOMPARE(Key("STextAll", 'P', Ctrl), QStringList{"player1"});
        QCOMPARE(Key("STextAll", 'U', Ctrl), QStringList{"player2"});
        QCOMPARE(Key("STextAll", 'X', Ctrl), QStringList{"player3"});
        QVERIFY(Key("STextAll", 'N', Ctrl).isEmpty());
        QVERIFY(Key("STextAll", Vk::Insert, None).isEmpty());
        QVERIFY(Key("STextAll", Vk::NumPlus, Ctrl).isEmpty());
    }

    void tablesOfTheLists() {
        using namespace KeyMask;
        QCOMPARE(Key("SText", Vk::Insert, None), QStringList({"after", "focus"}));
        QCOMPARE(Key("SText", Vk::Insert, Ctrl), QStringList({"before", "focus"}));
        QVERIFY(Key("SText", Vk::Insert, Shift).isEmpty());
        QVERIFY(Key("SText", Vk::Enter, None).isEmpty());
        QCOMPARE(Key("STextLbxSongWithLrc", Vk::Enter, None), QStringList({"load", "focus"}));
        QCOMPARE(Key("STextLbxLrcTxt", Vk::Enter, None), QStringList({"load", "focus"}));
        QVERIFY(Key("STextLbxLrcTxt", Vk::Enter, Ctrl).isEmpty());
        QVERIFY(Key("STextLbxLrcTxt", Vk::Insert, None).isEmpty());
        SetSTextShortcuts(nullptr); // no editor: the keys do nothing
        QVERIFY(!HandleShortcut(QStringLiteral("STextAll"), Vk::Esc, None));
    }
};

QTEST_GUILESS_MAIN(TestSTextMenus)
#include "test_stextmenus.moc"
