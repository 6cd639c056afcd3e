#include "InputGridFixture.h"

#include "core/AppState.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modFilter.h"

#include <QtTest>

using fixture::AddInputRow;

namespace {
class RecordingProgress : public ListProgress {
public:
    int shown = 0, hidden = 0, max = -2, keep = -2;
    bool busyWhileShown = false;
    void ShowProgress(int m, int k) override {
        ++shown;
        max = m;
        keep = k;
        busyWhileShown = State().ListBusy;
    }
    void SetProgress(int) override {}
    void HideProgress() override { ++hidden; }
};
} // namespace

class TestFilter : public QObject {
    Q_OBJECT

    DataGrid input;

    void Fill() {
        AddInputRow(input, {{InCol::FTag, "old"},
                            {InCol::FileName, "a.mp3"},
                            {InCol::Artist, "Rock"},
                            {InCol::Rating, "***"},
                            {InCol::Mood, "happy"}});
        AddInputRow(input, {{InCol::FileName, "b.mp3"}, {InCol::Artist, "rock"}, {InCol::Rating, "***"}});
        AddInputRow(input, {{InCol::FileName, "c.mp3"},
                            {InCol::Artist, "Pop"},
                            {InCol::Rating, "*"},
                            {InCol::Mood, "happy"}});
        AddInputRow(input, {{InCol::FileName, "d.mp3"}, {InCol::Artist, "Rock"}, {InCol::Mood, "sad"}});
        AddInputRow(input, {{InCol::FileName, "e.mp3"}});
    }

    int RowOf(const QString& file) {
        for (int r = 1; r <= input.Rows(); ++r)
            if (input.CellText(r, InCol::FileName) == file)
                return r;
        return 0;
    }
    QString MarkOf(const QString& file) { return input.CellText(RowOf(file), InCol::FTag); }

private slots:
    void initTestCase() { fixture::FillCaptions(); }
    void init() {
        input.RemoveAllColumns();
        input.Clear();
        fixture::DefineInputColumns(input);
        State() = AppState{};
    }

    void columnOfFilterIndex() {
        QCOMPARE(ColumnOfFilterIndex(0), 4);
        QCOMPARE(ColumnOfFilterIndex(3), 7);
        QCOMPARE(ColumnOfFilterIndex(4), 15);
        QCOMPARE(ColumnOfFilterIndex(25), 36);
        QCOMPARE(ColumnOfFilterIndex(26), 39);
        QCOMPARE(ColumnOfFilterIndex(55), 68);
        QCOMPARE(ColumnOfFilterIndex(56), 71);
        QCOMPARE(ColumnOfFilterIndex(56), int(InCol::DateTime));
        QCOMPARE(ColumnOfFilterIndex(57), 0);
        QCOMPARE(ColumnOfFilterIndex(-1), 0);
        const QStringList entries = FilterColumnEntries(input);
        QCOMPARE(entries.size(), 57);
        QCOMPARE(entries.first(), QString("Artist"));
        QCOMPARE(entries.at(4), QString("Tg1Genre"));
        QCOMPARE(entries.last(), QString("DateTime"));
    }

    void valueListDistinctSortedNoEmpty() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        RecordingProgress progress;
        env.progress = &progress;
        int totals = 0;
        env.showTotals = [&] { ++totals; };
        Fill();
        FilterOptions o;
        o.columnIndex = 0; // column 4
        const FilterChangeResult r = cmbTab1_Filter_Change(input, 0, o, env);
        QVERIFY(r.handled);
        QVERIFY(r.valuesChanged);
        QCOMPARE(r.values, QStringList({"Pop", "Rock", "rock"}));
        QCOMPARE(r.filter1Count, QString("3"));
        QCOMPARE(totals, 1);
        QCOMPARE(progress.shown, 1);
        QCOMPARE(progress.hidden, 1);
    }

    void valueAndQualityCounts() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        FilterOptions o;
        o.columnIndex = 0;
        o.value = "Rock";
        QCOMPARE(cmbTab1_Filter_Change(input, 1, o, env).filter2Count, QString("2 /5"));
        o.rating = "***";
        QCOMPARE(cmbTab1_Filter_Change(input, 2, o, env).qualityCount, QString("2 /5"));
        o.mood = "sad";
        QCOMPARE(cmbTab1_Filter_Change(input, 3, o, env).qualityCount, QString("1 /5"));
        QVERIFY(!cmbTab1_Filter_Change(input, 4, o, env).handled);
    }

    void suppressEventsDoesNothing() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        State().SuppressEvents = true;
        FilterOptions o;
        o.columnIndex = 0;
        const FilterChangeResult r = cmbTab1_Filter_Change(input, 0, o, env);
        QVERIFY(!r.handled);
        QVERIFY(!r.valuesChanged);
    }

    void nothingChosen() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        FilterOptions o;
        o.columnIndex = 0;
        const FilterResult r = btnTab1_FilterMarkChoosen(input, o, env);
        QVERIFY(!r.ran);
        QCOMPARE(prompt.LastText(), QString("C628"));
        QCOMPARE(MarkOf("a.mp3"), QString("old"));
    }

    void emptyListGuard() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        FilterOptions o;
        o.rating = "*";
        QVERIFY(!btnTab1_FilterMarkChoosen(input, o, env).ran);
        QCOMPARE(prompt.Count("tell"), 1);
    }

    void emptyValueWithRatingTestsRatingAlone() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        FilterOptions o;
        o.columnIndex = 0;
        o.rating = "***";
        o.noMsg = true;
        const FilterResult r = btnTab1_FilterMarkChoosen(input, o, env);
        QVERIFY(r.ran);
        QCOMPARE(r.hits, 2);
        QCOMPARE(MarkOf("a.mp3"), QString("_#FOUND "));
        QCOMPARE(MarkOf("b.mp3"), QString("_#FOUND "));
        QCOMPARE(MarkOf("c.mp3"), QString());
        QCOMPARE(input.CurRow(), 1);
    }

    void caseSensitive() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        FilterOptions o;
        o.columnIndex = 0;
        o.value = "rock";
        o.noMsg = true;
        QCOMPARE(btnTab1_FilterMarkChoosen(input, o, env).hits, 1);
        QCOMPARE(MarkOf("b.mp3"), QString("_#FOUND "));
        QCOMPARE(MarkOf("a.mp3"), QString());
    }

    void allCriteriaMustMatch() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        FilterOptions o;
        o.columnIndex = 0;
        o.value = "Rock";
        o.rating = "***";
        o.mood = "happy";
        o.noMsg = true;
        QCOMPARE(btnTab1_FilterMarkChoosen(input, o, env).hits, 1);
        QCOMPARE(MarkOf("a.mp3"), QString("_#FOUND "));
        o.rating.clear();
        QCOMPARE(btnTab1_FilterMarkChoosen(input, o, env).hits, 1);
        o.mood.clear();
        QCOMPARE(btnTab1_FilterMarkChoosen(input, o, env).hits, 2);
    }

    void addFilterKeepsOldMarks() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        RecordingProgress progress;
        env.progress = &progress;
        Fill();
        FilterOptions o;
        o.columnIndex = 0;
        o.value = "Rock";
        o.addFilter = true;
        o.noMsg = true;
        QCOMPARE(btnTab1_FilterMarkChoosen(input, o, env).hits, 2);
        QCOMPARE(MarkOf("a.mp3"), QString("_#FOUND old"));
        QCOMPARE(MarkOf("d.mp3"), QString("_#FOUND "));
        // A second pass puts the prefix in front once more.
        btnTab1_FilterMarkChoosen(input, o, env);
        QCOMPARE(MarkOf("a.mp3"), QString("_#FOUND _#FOUND old"));
        QCOMPARE(progress.keep, -1);
        QCOMPARE(progress.max, 5);
        QVERIFY(progress.busyWhileShown);
        QVERIFY(!State().ListBusy);
        QCOMPARE(progress.hidden, progress.shown);
    }

    void filterOnDateColumn() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        input.SetCellText(RowOf("c.mp3"), InCol::DateTime, "01.02.2003");
        FilterOptions o;
        o.columnIndex = 56;
        o.value = "01.02.2003";
        o.noMsg = true;
        QCOMPARE(btnTab1_FilterMarkChoosen(input, o, env).hits, 1);
        QCOMPARE(MarkOf("c.mp3"), QString("_#FOUND "));
    }

    void messages() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        Fill();
        FilterOptions o;
        o.columnIndex = 0;
        o.value = "Rock";
        btnTab1_FilterMarkChoosen(input, o, env);
        QCOMPARE(prompt.LastText(), QString("C1000 2"));
        o.value = "Jazz";
        btnTab1_FilterMarkChoosen(input, o, env);
        QCOMPARE(prompt.LastText(), QString("C1002"));
        const int before = int(prompt.shown.size());
        o.noMsg = true;
        btnTab1_FilterMarkChoosen(input, o, env);
        QCOMPARE(int(prompt.shown.size()), before);
    }
};

QTEST_GUILESS_MAIN(TestFilter)
#include "test_filter.moc"
