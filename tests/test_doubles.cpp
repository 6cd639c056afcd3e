#include "InputGridFixture.h"

#include "core/AppState.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modDoubles.h"

#include <QtTest>

using fixture::AddInputRow;

class TestDoubles : public QObject {
    Q_OBJECT

    DataGrid input;

    QStringList MarksOf(const QString& file) {
        QStringList marks;
        for (int r = 1; r <= input.Rows(); ++r)
            if (input.CellText(r, InCol::FileName).compare(file, Qt::CaseInsensitive) == 0)
                marks << input.CellText(r, InCol::FTag);
        return marks;
    }
    void Add(const QString& name, const QString& folder, const QString& artist = QString(),
             const QString& mark = QString()) {
        AddInputRow(
            input,
            {{InCol::FTag, mark}, {InCol::FileName, name}, {InCol::Artist, artist}, {InCol::Path, folder}});
    }

private slots:
    void initTestCase() { fixture::FillCaptions(); }
    void init() {
        input.RemoveAllColumns();
        input.Clear();
        fixture::DefineInputColumns(input);
        State() = AppState{};
    }

    void groupMarks() {
        QCOMPARE(DoubleGroupMark(1), QString("0001"));
        QCOMPARE(DoubleGroupMark(12), QString("0012"));
        QCOMPARE(DoubleGroupMark(10000), QString("10000"));
        QVERIFY(IsDoubleGroupMark(u"0001"));
        QVERIFY(IsDoubleGroupMark(u"12345"));
        QVERIFY(!IsDoubleGroupMark(u""));
        QVERIFY(!IsDoubleGroupMark(u"_#-->"));
        QVERIFY(!IsDoubleGroupMark(u"000x"));
        QVERIFY(!IsDoubleGroupMark(u"x001"));
    }

    void caseAndExtension() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("Song.mp3", "/a");
        Add("song.MP3", "/b");
        Add("Song.ogg", "/c");
        Add("Other.mp3", "/a");
        const DoublesResult r = btnTab1_FindDouble(input, env);
        QVERIFY(r.ran);
        QCOMPARE(r.groups, 1);
        QCOMPARE(MarksOf("song.mp3"), QStringList({"0001", "0001"}));
        QCOMPARE(MarksOf("Song.ogg"), QStringList{""});
        QCOMPARE(MarksOf("Other.mp3"), QStringList{""});
        QCOMPARE(prompt.shown.front().kind, QString("yesno"));
        QCOMPARE(prompt.shown.front().text, QString("C152\nC153"));
        QCOMPARE(prompt.LastText(), QString("C164 1"));
        QCOMPARE(input.CurRow(), 1);
        QVERIFY(!input.IsLocked());
    }

    void threeOfOneNameOneGroup() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("b.mp3", "/1");
        Add("a.mp3", "/1");
        Add("B.mp3", "/2");
        Add("c.mp3", "/1");
        Add("b.mp3", "/3");
        Add("c.mp3", "/2");
        const DoublesResult r = btnTab1_FindDouble(input, env);
        QCOMPARE(r.groups, 2);
        QCOMPARE(MarksOf("b.mp3"), QStringList({"0001", "0001", "0001"}));
        QCOMPARE(MarksOf("c.mp3"), QStringList({"0002", "0002"}));
        QCOMPARE(MarksOf("a.mp3"), QStringList{""});
        // Sorted "2,4": the empty mark first.
        QCOMPARE(input.CellText(1, InCol::FileName), QString("a.mp3"));
    }

    void oldMarksCleared() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("a.mp3", "/1", QString(), "_#-->");
        Add("b.mp3", "/1", QString(), "mine");
        QCOMPARE(btnTab1_FindDouble(input, env).groups, 0);
        QCOMPARE(MarksOf("a.mp3"), QStringList{""});
        QCOMPARE(MarksOf("b.mp3"), QStringList{""});
        QCOMPARE(prompt.LastText(), QString("C164 0"));
    }

    void noDoublesAtAll() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("a.mp3", "/1");
        Add("b.mp3", "/1");
        const DoublesResult r = btnTab1_FindDouble(input, env);
        QCOMPARE(r.groups, 0);
        for (int row = 1; row <= input.Rows(); ++row)
            QVERIFY(input.CellText(row, InCol::FTag).isEmpty());
        QCOMPARE(prompt.LastText(), QString("C164 0"));
    }

    void answerNoChangesNothing() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("b.mp3", "/1", QString(), "keep");
        Add("b.mp3", "/2");
        prompt.answers = {false};
        QVERIFY(!btnTab1_FindDouble(input, env).ran);
        QCOMPARE(input.CellText(1, InCol::FTag), QString("keep"));
        QCOMPARE(prompt.Count("tell"), 0);
    }

    void findThenErase() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        int totals = 0;
        env.showTotals = [&] { ++totals; };
        Add("x.mp3", "/1", "Zed");
        Add("b.mp3", "/1", "Bee");
        Add("b.mp3", "/2", "Bee");
        Add("B.mp3", "/3", "Bee");
        Add("c.mp3", "/1", "Cee");
        Add("C.mp3", "/2", "Cee");
        QCOMPARE(btnTab1_FindDouble(input, env).groups, 2);
        input.SetSelected(1, true);
        const DoublesResult r = btnTab1_EraseDouble(input, false, env);
        QVERIFY(r.ran);
        QCOMPARE(r.removed, 3);
        QCOMPARE(input.Rows(), 3);
        QCOMPARE(MarksOf("b.mp3"), QStringList{"0001"});
        QCOMPARE(MarksOf("c.mp3"), QStringList{"0002"});
        QCOMPARE(MarksOf("x.mp3"), QStringList{""});
        for (int row = 1; row <= input.Rows(); ++row)
            QVERIFY(input.CellText(row, InCol::FTag) != "_#DDelete");
        QCOMPARE(prompt.LastText(), QString("C1003 3"));
        QCOMPARE(totals, 2);
        QVERIFY(!State().SuppressEvents);
        QVERIFY(!input.IsLocked());
    }

    void eraseNeedsSelection() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("b.mp3", "/1", QString(), "0001");
        Add("b.mp3", "/2", QString(), "0001");
        QVERIFY(!btnTab1_EraseDouble(input, false, env).ran);
        QCOMPARE(prompt.LastText(), QString("C102"));
        QCOMPARE(input.Rows(), 2);
    }

    void otherMarksAtHead() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("b.mp3", "/1", QString(), "_#-->");
        Add("b.mp3", "/2", QString(), "_#-->");
        input.SelectAll();
        QVERIFY(!btnTab1_EraseDouble(input, false, env).ran);
        QCOMPARE(prompt.LastText(), QString("C1300"));
        QCOMPARE(input.Rows(), 2);
        QVERIFY(!State().SuppressEvents);
        QVERIFY(!input.IsLocked());
        // A list with no marks at all holds no groups either.
        input.SetCellText(1, InCol::FTag, QString());
        input.SetCellText(2, InCol::FTag, QString());
        QVERIFY(!btnTab1_EraseDouble(input, false, env).ran);
        QCOMPARE(prompt.LastText(), QString("C1300"));
    }

    void handTypedGroupMark() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Add("one.mp3", "/1", "A", "0001");
        Add("two.mp3", "/1", "B", "0001");
        Add("three.mp3", "/1", "C", "0007");
        Add("four.mp3", "/1", "D", "_#-->");
        Add("five.mp3", "/1", "E", "_#-->");
        input.SetSelected(5, true);
        const DoublesResult r = btnTab1_EraseDouble(input, true, env);
        QVERIFY(r.ran);
        QCOMPARE(r.removed, 1);
        QCOMPARE(input.Rows(), 4);
        QCOMPARE(MarksOf("one.mp3"), QStringList{"0001"});
        QVERIFY(MarksOf("two.mp3").isEmpty());
        // The walk ends at the first mark of another kind.
        QCOMPARE(MarksOf("five.mp3"), QStringList{"_#-->"});
        QCOMPARE(prompt.Count("tell"), 0);
        // The selection of the remaining rows is kept.
        QCOMPARE(input.SelCount(), 1);
        QCOMPARE(input.CellText(input.SelRow(1), InCol::FileName), QString("five.mp3"));
    }
};

QTEST_GUILESS_MAIN(TestDoubles)
#include "test_doubles.moc"
