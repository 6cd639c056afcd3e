#include "InputGridFixture.h"

#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modMarks.h"

#include <QtTest>

using fixture::AddInputRow;

class TestMarks : public QObject {
    Q_OBJECT

    DataGrid input;

    int RowOf(const QString& file) {
        for (int r = 1; r <= input.Rows(); ++r)
            if (input.CellText(r, InCol::FileName) == file)
                return r;
        return 0;
    }
    QString MarkOf(const QString& file) { return input.CellText(RowOf(file), InCol::FTag); }
    void FillPlain(int n) {
        for (int i = 1; i <= n; ++i)
            AddInputRow(input, {{InCol::FileName, QStringLiteral("f%1.mp3").arg(i)}});
    }

private slots:
    void initTestCase() { fixture::FillCaptions(); }
    void init() {
        input.RemoveAllColumns();
        input.Clear();
        fixture::DefineInputColumns(input);
    }

    void markText() {
        QCOMPARE(MarkText(QString()), QString("_#-->"));
        QCOMPARE(MarkText("mine"), QString("mine"));
    }

    void setFTagActRow() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        FillPlain(3);
        input.SetCurRow(2);
        QVERIFY(btnTab1_SetFTagActRow(input, QString(), env).ran);
        QCOMPARE(input.CellText(2, 2), QString("_#-->"));
        QCOMPARE(input.CurRow(), 3);
        btnTab1_SetFTagActRow(input, "best", env);
        QCOMPARE(input.CellText(3, 2), QString("best"));
        QCOMPARE(input.CurRow(), 3); // stays on the last
        btnTab1_SetFTagActRow(input, "again", env);
        QCOMPARE(input.CellText(3, 2), QString("again"));
    }

    void emptyListGuard() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        QVERIFY(!btnTab1_SetFTagActRow(input, QString(), env).ran);
        QCOMPARE(prompt.LastText(), QString("C96"));
        // A guard from the list module takes precedence.
        bool asked = false;
        env.listNotEmpty = [&](const DataGrid&) {
            asked = true;
            return false;
        };
        QVERIFY(!btnTab1_MarkLrc(input, false, env).ran);
        QVERIFY(asked);
    }

    void signByIndex() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        FillPlain(3);
        const QStringList signs{"good", "", "bad"};
        input.SetCurRow(2);
        SignResult r = btnTab1_Sign(input, signs, 0, false, env);
        QVERIFY(r.ran);
        QVERIFY(r.advanced);
        QCOMPARE(input.CellText(2, 2), QString("good"));
        // An empty sign sets nothing.
        QVERIFY(!btnTab1_Sign(input, signs, 1, false, env).ran);
        QVERIFY(!btnTab1_Sign(input, signs, 7, false, env).ran);
        QCOMPARE(input.CellText(2, 2), QString("good"));
        // The previous row takes the sign.
        r = btnTab1_Sign(input, signs, 2, true, env);
        QVERIFY(r.ran);
        QVERIFY(!r.advanced);
        QCOMPARE(r.row, 1);
        QCOMPARE(input.CellText(1, 2), QString("bad"));
        QCOMPARE(input.CellText(2, 2), QString("good"));
        // No row above the first.
        input.SetCurRow(1);
        QVERIFY(!btnTab1_Sign(input, signs, 0, true, env).ran);
    }

    void signCycles() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        FillPlain(2);
        const QStringList signs{"", "A", "", "B", "C"};
        input.SetCurRow(2);
        QCOMPARE(btnTab1_SignNext(input, signs, false, env).sign, QString("A"));
        QCOMPARE(btnTab1_SignNext(input, signs, false, env).sign, QString("B"));
        QCOMPARE(btnTab1_SignNext(input, signs, false, env).sign, QString("C"));
        QCOMPARE(btnTab1_SignNext(input, signs, false, env).sign, QString("A"));
        QCOMPARE(input.CellText(2, 2), QString("A"));
        QCOMPARE(btnTab1_SignNext(input, signs, true, env).row, 1);
        QCOMPARE(input.CellText(1, 2), QString("A"));
        QVERIFY(!btnTab1_SignNext(input, QStringList{"", ""}, false, env).ran);
    }

    void clearFtag() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        QStringList sums;
        env.refreshSums = [&](const QString& l) { sums << l; };
        MarkBoxes boxes{"a", "b", "c"};
        btnTab1_ClearFtag(boxes, env);
        QVERIFY(boxes.ftag.isEmpty() && boxes.ftag4.isEmpty() && boxes.ftagRef.isEmpty());
        QCOMPARE(sums, QStringList({"Input", "Ref"}));
    }

    void removeFtag() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FTag, "x"}, {InCol::FileName, "1"}});
        AddInputRow(input, {{InCol::FTag, "y"}, {InCol::FileName, "2"}});
        AddInputRow(input, {{InCol::FTag, "x"}, {InCol::FileName, "3"}});
        // Nothing selected: the guard.
        QVERIFY(!btnTab1_RemoveFtag(input, QString(), env).ran);
        QCOMPARE(prompt.LastText(), QString("C102"));
        input.SetSelected(1, true);
        input.SetSelected(2, true);
        // No keeps everything.
        prompt.answers = {false};
        QVERIFY(!btnTab1_RemoveFtag(input, QString(), env).ran);
        QCOMPARE(prompt.LastText(), QString("C95"));
        QCOMPARE(input.CellText(1, 2), QString("x"));
        // With a text only equal marks of selected rows go.
        prompt.answers = {true};
        MarkResult r = btnTab1_RemoveFtag(input, "x", env);
        QCOMPARE(prompt.LastText(), QString("C147xC149"));
        QCOMPARE(r.count, 1);
        QCOMPARE(input.CellText(1, 2), QString());
        QCOMPARE(input.CellText(2, 2), QString("y"));
        QCOMPARE(input.CellText(3, 2), QString("x"));
        // With an empty box all marks of selected rows go.
        prompt.answers = {true};
        r = btnTab1_RemoveFtag(input, QString(), env);
        QCOMPARE(r.count, 1);
        QCOMPARE(input.CellText(2, 2), QString());
        QCOMPARE(input.CellText(3, 2), QString("x"));
    }

    void highlightAndInvert() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        QStringList sums;
        env.refreshSums = [&](const QString& l) { sums << l; };
        FillPlain(4);
        input.SetSelected(2, true);
        btnTab1_InvertHighlight(input, env);
        QCOMPARE(input.SelCount(), 3);
        QVERIFY(!input.IsSelected(2));
        btnTab1_HighlightAll(input, env);
        QCOMPARE(input.SelCount(), 4);
        DataGrid ref;
        fixture::DefineColumns(ref, 5);
        ref.AddRow({"1"});
        ref.AddRow({"2"});
        ref.SetSelected(1, true);
        btnTab1_InvertHilightRef(ref, env);
        QVERIFY(!ref.IsSelected(1));
        QVERIFY(ref.IsSelected(2));
        QCOMPARE(sums, QStringList({"Input", "Input", "Ref"}));
        QVERIFY(!input.IsLocked());
    }

    void ftagBlue() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FTag, "x"}});
        AddInputRow(input, {{InCol::FTag, "y"}});
        AddInputRow(input, {});
        AddInputRow(input, {{InCol::FTag, "x"}});
        input.SetSelected(3, true);
        MarkResult r = btnTab1_FTagBlue(input, "x", false, env);
        QCOMPARE(r.count, 2);
        QCOMPARE(input.SelectedRows(), std::vector<int>({1, 4}));
        QCOMPARE(prompt.LastText(), QString("C200 2"));
        r = btnTab1_FTagBlue(input, QString(), true, env);
        QCOMPARE(r.count, 3);
        QCOMPARE(input.SelectedRows(), std::vector<int>({1, 2, 4}));
        QCOMPARE(prompt.Count("tell"), 1);
    }

    void markLrc() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        int totals = 0;
        env.showTotals = [&] { ++totals; };
        AddInputRow(input, {{InCol::FTag, "old"}, {InCol::FileName, "a"}, {InCol::TagAnzLyrics, "1"}});
        AddInputRow(input, {{InCol::FileName, "b"}, {InCol::TagAnzLyrics, "3 [Lrc]"}});
        AddInputRow(input, {{InCol::FileName, "c"}, {InCol::TagAnzLyrics, "1 [LRC]"}});
        const MarkResult r = btnTab1_MarkLrc(input, false, env);
        QCOMPARE(r.count, 2);
        QCOMPARE(MarkOf("a"), QString());
        QCOMPARE(MarkOf("b"), QString("_#-->"));
        QCOMPARE(MarkOf("c"), QString("_#-->"));
        QCOMPARE(input.CellText(1, 2), QString("_#-->")); // marked rows first
        QCOMPARE(input.CellText(3, 2), QString());
        QCOMPARE(input.CurRow(), 1);
        QCOMPARE(totals, 1);
        QCOMPARE(prompt.LastText(), QString("C1001 2"));
        btnTab1_MarkLrc(input, true, env);
        QCOMPARE(prompt.Count("tell"), 1);
    }

    void highlightLyricsPicturesLinks() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FileName, "a"}, {InCol::TagAnzLyrics, "2"}});
        AddInputRow(input, {{InCol::FileName, "b"}, {InCol::TagAnzPic, "1"}});
        AddInputRow(input, {{InCol::FileName, "c"}, {InCol::TagLyricsLyric, "la la"}});
        AddInputRow(input, {{InCol::FileName, "d"}, {InCol::TagAnzLyrics, "0"}});
        QCOMPARE(btnTab1_HighlightLyrics(input, true, env).count, 2);
        QCOMPARE(MarkOf("a"), QString("_#-->"));
        QCOMPARE(MarkOf("c"), QString("_#-->"));
        QCOMPARE(btnTab1_HighlightiPic(input, true, env).count, 1);
        QCOMPARE(MarkOf("b"), QString("_#-->"));
        QCOMPARE(MarkOf("a"), QString());
        const RowTest linked = [](const DataGrid& g, int r) { return g.CellText(r, InCol::FileName) == "d"; };
        QCOMPARE(btnTab1_HighlightLink(input, linked, true, env).count, 1);
        QCOMPARE(MarkOf("d"), QString("_#-->"));
        QCOMPARE(MarkOf("b"), QString());
    }

    void markFileType() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(
            input, {{InCol::FTag, "old"}, {InCol::FileName, "a"}, {InCol::Type, "MP3"}, {InCol::Path, "/m"}});
        AddInputRow(input, {{InCol::FileName, "b"}, {InCol::Type, "FLAC"}, {InCol::Path, "/m"}});
        AddInputRow(input, {{InCol::FileName, "c"}, {InCol::Type, "MP3"}, {InCol::Path, "/a"}});
        input.SetSelected(2, true);
        const MarkResult r = MarkFileType(input, "MP3", false, env);
        QCOMPARE(r.count, 2);
        QCOMPARE(MarkOf("a"), QString("_#_MP3"));
        QCOMPARE(MarkOf("b"), QString());
        QCOMPARE(MarkOf("c"), QString("_#_MP3"));
        // Sorted "2,7,3": the empty mark first, then by folder.
        QCOMPARE(input.CellText(1, InCol::FileName), QString("b"));
        QCOMPARE(input.CellText(2, InCol::FileName), QString("c"));
        QCOMPARE(input.CellText(3, InCol::FileName), QString("a"));
        QCOMPARE(input.SelectedRows(), std::vector<int>({2, 3}));
        QCOMPARE(input.CurRow(), 1);
        QCOMPARE(prompt.LastText(), QString("C1001 2"));
        QCOMPARE(MarkFileType(input, "OGG", false, env).count, 0);
        QCOMPARE(prompt.LastText(), QString("C96"));
        QCOMPARE(input.SelCount(), 0);
    }
};

QTEST_GUILESS_MAIN(TestMarks)
#include "test_marks.moc"
