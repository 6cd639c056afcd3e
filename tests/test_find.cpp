#include "InputGridFixture.h"

#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modFind.h"

#include <QtTest>

using fixture::AddInputRow;

class TestFind : public QObject {
    Q_OBJECT

    DataGrid input, ref;

    FindOptions Opt(const QString& text) {
        FindOptions o;
        o.text = text;
        o.noMsg = true;
        return o;
    }

private slots:
    void initTestCase() { fixture::FillCaptions(); }

    void init() {
        input.RemoveAllColumns();
        input.Clear();
        fixture::DefineInputColumns(input);
        ref.RemoveAllColumns();
        ref.Clear();
        fixture::DefineColumns(ref, 12);
    }

    void emptyTextOrHintAsksForText() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FileName, "a.mp3"}});
        for (const QString& text : {QString(), QStringLiteral("C1341")}) {
            prompt.shown.clear();
            FindOptions o = Opt(text);
            const FindResult r = btnTab1_M_Find_Click(input, ref, o, env);
            QVERIFY(!r.ran);
            QCOMPARE(prompt.Count("tell"), 1);
            QCOMPARE(prompt.LastText(), QString("C161"));
            QVERIFY(r.history.isEmpty());
        }
        QVERIFY(input.CellText(1, InCol::FTag).isEmpty());
    }

    void keptMarkGetsFoundPrefix() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FTag, "_#-->"}, {InCol::FileName, "Yesterday.mp3"}});
        AddInputRow(input, {{InCol::FTag, "_#-->"}, {InCol::FileName, "Help.mp3"}});
        FindOptions o = Opt("yesterday");
        const FindResult r = btnTab1_M_Find_Click(input, ref, o, env);
        QVERIFY(r.ran);
        QCOMPARE(r.hits, 1);
        QStringList marks{input.CellText(1, 2), input.CellText(2, 2)};
        QVERIFY(marks.contains("_#FOUND_#-->"));
        QVERIFY(marks.contains("_#-->"));
    }

    void clearMarksFirst() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FTag, "_#-->"}, {InCol::FileName, "Yesterday.mp3"}});
        AddInputRow(input, {{InCol::FTag, "mine"}, {InCol::FileName, "Help.mp3"}});
        FindOptions o = Opt("yesterday");
        o.clearMarks = true;
        btnTab1_M_Find_Click(input, ref, o, env);
        // Sorted by mark ascending: the empty mark first.
        QCOMPARE(input.CellText(1, 2), QString());
        QCOMPARE(input.CellText(2, 2), QString("_#FOUND"));
        QCOMPARE(input.CellText(2, InCol::FileName), QString("Yesterday.mp3"));
        QCOMPARE(input.CurRow(), 1);
    }

    void allColumnsNeverSearchesColumnTwo() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FTag, "Beatles"}, {InCol::FileName, "x.mp3"}});
        AddInputRow(input, {{InCol::FileName, "y.mp3"}, {InCol::DateTime, "the beatles"}});
        FindOptions o = Opt("beatles");
        int start = 0;
        const int hits = FindInList(input, ref, o, start, env);
        QCOMPARE(start, 3);
        QCOMPARE(hits, 1);
        for (int r = 1; r <= 2; ++r) {
            if (input.CellText(r, InCol::FileName) == "x.mp3")
                QCOMPARE(input.CellText(r, 2), QString("Beatles"));
            else
                QCOMPARE(input.CellText(r, 2), QString("_#FOUND"));
        }
    }

    void rowHitInThreeColumns() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FTag, "_#-->"},
                            {InCol::FileName, "Abba - SOS.mp3"},
                            {InCol::Artist, "Abba"},
                            {InCol::TagArtist, "ABBA"}});
        AddInputRow(
            input,
            {{InCol::FileName, "Abba - Waterloo.mp3"}, {InCol::Artist, "Abba"}, {InCol::TagArtist, "ABBA"}});
        FindOptions o = Opt("abba");
        const FindResult r = btnTab1_M_Find_Click(input, ref, o, env);
        QCOMPARE(r.hits, 2);
        QStringList marks{input.CellText(1, 2), input.CellText(2, 2)};
        marks.sort();
        // A marked row gets the word once per column hit, an unmarked one only once.
        QCOMPARE(marks, QStringList({"_#FOUND", "_#FOUND_#FOUND_#FOUND_#-->"}));
    }

    void singleColumn() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        QCOMPARE(FindColumnOfEntry(0), 0);
        QCOMPARE(FindColumnOfEntry(1), 3);
        QCOMPARE(FindColumnOfEntry(2), 4);
        AddInputRow(input, {{InCol::FileName, "Queen.mp3"}, {InCol::Artist, "x"}});
        AddInputRow(input, {{InCol::FileName, "y.mp3"}, {InCol::Artist, "Queen"}});
        FindOptions o = Opt("queen");
        o.column = FindColumnOfEntry(2);
        const FindResult r = btnTab1_M_Find_Click(input, ref, o, env);
        QCOMPARE(r.hits, 1);
        const int hitRow = input.CellText(1, 2).isEmpty() ? 2 : 1;
        QCOMPARE(input.CellText(hitRow, InCol::Artist), QString("Queen"));
    }

    void markColumnNeverSearchedAlone() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FTag, "hit"}, {InCol::FileName, "x.mp3"}});
        FindOptions o = Opt("hit");
        int start = InCol::FTag;
        QCOMPARE(FindInList(input, ref, o, start, env), 0);
        QCOMPARE(input.CellText(1, 2), QString("hit"));
    }

    void allEntriesOfHistorySkipEmpty() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FileName, "one.mp3"}});
        AddInputRow(input, {{InCol::FileName, "two.mp3"}});
        AddInputRow(input, {{InCol::FileName, "three.mp3"}});
        FindOptions o = Opt("one");
        o.allEntries = true;
        o.history = QStringList{"one", "", "three"};
        const FindResult r = btnTab1_M_Find_Click(input, ref, o, env);
        QCOMPARE(r.hits, 2);
        QCOMPARE(r.history, o.history); // "one" was there already
    }

    void historyGrows() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FileName, "one.mp3"}});
        FindOptions o = Opt("one");
        FindResult r = btnTab1_M_Find_Click(input, ref, o, env);
        QCOMPARE(r.history, QStringList{"one"});
        o.history = r.history;
        o.text = "two";
        r = btnTab1_M_Find_Click(input, ref, o, env);
        QCOMPARE(r.history, QStringList({"one", "two"}));
    }

    void countMessageUnlessNoMsg() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        int totals = 0;
        env.showTotals = [&] { ++totals; };
        AddInputRow(input, {{InCol::FileName, "one.mp3"}});
        AddInputRow(input, {{InCol::FileName, "one more.mp3"}});
        FindOptions o = Opt("one");
        o.noMsg = false;
        btnTab1_M_Find_Click(input, ref, o, env);
        QCOMPARE(prompt.LastText(), QString("C1000 2"));
        QCOMPARE(totals, 1);
        prompt.shown.clear();
        o.noMsg = true;
        btnTab1_M_Find_Click(input, ref, o, env);
        QCOMPARE(prompt.Count("tell"), 0);
        // Nothing found is an ordinary result with a count.
        o.noMsg = false;
        o.text = "zzz";
        o.clearMarks = true;
        QCOMPARE(btnTab1_M_Find_Click(input, ref, o, env).hits, 0);
        QCOMPARE(prompt.LastText(), QString("C1000 0"));
    }

    void footerAndReferenceList() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        QStringList sums;
        env.refreshSums = [&](const QString& l) { sums << l; };
        ref.AddRow({"1", "", "hit in col 3", "nothing", "x"});
        ref.AddRow({"2", "", "", "a hit here", "x"});
        FindOptions o = Opt("hit");
        o.inReferenceList = true;
        int start = 0;
        QCOMPARE(FindInList(input, ref, o, start, env), 1);
        QCOMPARE(start, 4);
        QCOMPARE(ref.FooterText(4), QString("C281hit"));
        QCOMPARE(sums, QStringList{"Ref"});
        const int hitRow = ref.CellText(1, 2).isEmpty() ? 2 : 1;
        QCOMPARE(ref.CellText(hitRow, 4), QString("a hit here"));
        QCOMPARE(ref.CellText(hitRow, 2), QString("_#FOUND"));

        start = 0;
        o.inReferenceList = false;
        AddInputRow(input, {{InCol::FileName, "x.mp3"}});
        FindInList(input, ref, o, start, env);
        QCOMPARE(input.FooterText(3), QString("C281hit"));
        QCOMPARE(start, 3);
    }

    void matchTextRules() {
        QVERIFY(MatchText(u"Hello World", u"world", false));
        QVERIFY(MatchText(u"swordfish", u"word", false));
        QVERIFY(!MatchText(u"swordfish", u"word", true));
        QVERIFY(!MatchText(u"", u"word", false));
        QVERIFY(!MatchText(u"anything", u"", false));
        // whole words
        QVERIFY(MatchText(u"the word here", u"WORD", true));
        QVERIFY(MatchText(u"the word.", u"word", true));
        QVERIFY(MatchText(u"the word. more", u"word", true));
        QVERIFY(MatchText(u"word and more", u"word", true));
        QVERIFY(MatchText(u"Word", u"word", true));
        QVERIFY(MatchText(u"my word", u"word", true));
        QVERIFY(!MatchText(u"words", u"word", true));
        QVERIFY(!MatchText(u"word.", u"word", true)); // the point counts only behind a blank and the word
        QVERIFY(!MatchText(u"a,word", u"word", true));
        QVERIFY(!MatchText(u"word,b", u"word", true));
        QVERIFY(MatchText(u"sword and word", u"word", true)); // the second occurrence counts
        QVERIFY(MatchText(u"Ärger über Öl", u"über", true));
        QVERIFY(MatchText(u"ÄRGER", u"ärger", false));
    }

    void wholeWordsInFind() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        AddInputRow(input, {{InCol::FileName, "Love me do.mp3"}});
        AddInputRow(input, {{InCol::FileName, "Lovely Rita.mp3"}});
        FindOptions o = Opt("love");
        o.wholeWords = true;
        QCOMPARE(btnTab1_M_Find_Click(input, ref, o, env).hits, 1);
        o.wholeWords = false;
        o.clearMarks = true;
        QCOMPARE(btnTab1_M_Find_Click(input, ref, o, env).hits, 2);
    }

    void emptyList() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        FindOptions o = Opt("x");
        QCOMPARE(btnTab1_M_Find_Click(input, ref, o, env).hits, 0);
        QVERIFY(!input.IsLocked());
    }
};

QTEST_GUILESS_MAIN(TestFind)
#include "test_find.moc"
