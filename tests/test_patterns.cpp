#include "InputGridFixture.h"

#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "list/InputColumns.h"
#include "list/modColumnPatterns.h"

#include <QtTest>

class TestPatterns : public QObject {
    Q_OBJECT

    DataGrid input, ref, ini;

    QString Ones(int n) { return QString(n, QLatin1Char('1')); }

private slots:
    void initTestCase() { fixture::FillCaptions(); }
    void init() {
        input.RemoveAllColumns();
        input.Clear();
        fixture::DefineInputColumns(input);
        ref.RemoveAllColumns();
        fixture::DefineColumns(ref, 6);
        ini.RemoveAllColumns();
        ini.Clear();
        fixture::DefineSettings(ini);
    }

    void textOfVisibility() {
        const QString p = PatternOfVisibility(input);
        QCOMPARE(p.size(), 71);
        QCOMPARE(p, "0" + Ones(70)); // column No is hidden by default
        input.SetColumnVisible(71, false);
        QCOMPARE(PatternOfVisibility(input).right(2), QString("10"));
    }

    void boxesOfText() {
        QCOMPARE(PatternToBoxes("1021x", 6), std::vector<bool>({true, false, true, true, false, false}));
        QCOMPARE(PatternFromBoxes({true, false, true}), QString("101"));
    }

    void shortPatternHidesLastColumns() {
        ini.SetCellText(Ini::PatternFirst + 2, 2, Ones(10));
        QVERIFY(ApplyPattern(ini, input, 2));
        for (int c = 1; c <= 10; ++c)
            QVERIFY(input.Column(c).visible);
        for (int c = 11; c <= 71; ++c)
            QVERIFY(!input.Column(c).visible);
        QVERIFY(!input.IsLocked());
    }

    void freeSlotChangesNothing() {
        QVERIFY(!ApplyPattern(ini, input, 4));
        QCOMPARE(PatternOfVisibility(input), "0" + Ones(70));
    }

    void optionWritesActivePattern() {
        ini.SetCellText(Ini::PatternFirst + 1, 1, "Short");
        ini.SetCellText(Ini::PatternFirst + 1, 2, "001");
        const PatternResult r = optShowCol_Pattern(ini, input, 1);
        QVERIFY(r.ran);
        QCOMPARE(r.nameText, QString("Short"));
        QCOMPARE(ini.CellText(Ini::ActivePattern, 2), QString("1"));
        QCOMPARE(ActivePattern(ini), 1);
        QCOMPARE(PatternOfVisibility(input), QString("001") + QString(68, QLatin1Char('0')));
        // A free slot shows no name.
        QVERIFY(optShowCol_Pattern(ini, input, 3).nameText.isEmpty());
        QCOMPARE(ActivePattern(ini), 3);
    }

    void captions() {
        QCOMPARE(PatternCaption(ini, 2), QString("C781 3"));
        ini.SetCellText(Ini::PatternFirst + 2, 1, "Tags");
        QCOMPARE(PatternCaption(ini, 2), QString("Tags"));
        QCOMPARE(PatternName(ini, 2), QString("Tags"));
    }

    void toggleLeavesRow87() {
        ini.SetCellText(Ini::ActivePattern, 2, "5");
        ToggleColumn_LbxInput(input, 0, true);
        QVERIFY(input.Column(1).visible);
        ToggleColumn_LbxInput(input, 70, false);
        QVERIFY(!input.Column(71).visible);
        QCOMPARE(ini.CellText(Ini::ActivePattern, 2), QString("5"));
    }

    void saveGuards() {
        ScriptedPrompt prompt;
        int saves = 0;
        const SaveSettingsFn save = [&] { return ++saves > 0; };
        PatternResult r = btnShowCol_SavePattern(ini, input, QString(), 0, save, prompt);
        QVERIFY(!r.ran);
        QVERIFY(r.focusName);
        QCOMPARE(prompt.LastText(), QString("C1282"));
        r = btnShowCol_SavePattern(ini, input, "Name", -1, save, prompt);
        QVERIFY(!r.ran);
        QCOMPARE(prompt.LastText(), QString("C782"));
        QCOMPARE(saves, 0);
    }

    void saveWritesSettings() {
        ScriptedPrompt prompt;
        int saves = 0;
        const SaveSettingsFn save = [&] { return ++saves > 0; };
        input.SetColumnVisible(5, false);
        const PatternResult r = btnShowCol_SavePattern(ini, input, "Mine", 4, save, prompt);
        QVERIFY(r.ran);
        QCOMPARE(r.optionCaption, QString("Mine"));
        QCOMPARE(ini.CellText(110, 1), QString("Mine"));
        QCOMPARE(ini.CellText(110, 2), PatternOfVisibility(input));
        QCOMPARE(ini.CellText(110, 2).size(), 71);
        QCOMPARE(ini.CellText(87, 2), QString("4"));
        QCOMPARE(saves, 1);
        QCOMPARE(prompt.Count("yesno"), 0);
    }

    void allSlotsInUseOverwriteWithoutQuestion() {
        ScriptedPrompt prompt;
        for (int p = 0; p < kPatternCount; ++p) {
            ini.SetCellText(Ini::PatternFirst + p, 1, QStringLiteral("P%1").arg(p));
            ini.SetCellText(Ini::PatternFirst + p, 2, Ones(71));
        }
        btnShowCol_DeActivateAll(input);
        QVERIFY(btnShowCol_SavePattern(ini, input, "New", 7, {}, prompt).ran);
        QVERIFY(prompt.shown.empty());
        QCOMPARE(ini.CellText(Ini::PatternFirst + 7, 1), QString("New"));
        QCOMPARE(ini.CellText(Ini::PatternFirst + 7, 2), QString("001") + QString(68, QLatin1Char('0')));
        QCOMPARE(ini.CellText(Ini::PatternFirst + 6, 1), QString("P6"));
        QCOMPARE(ini.CellText(Ini::PatternFirst + 8, 2), Ones(71));
    }

    void deleteInUseLeavesColumns() {
        ScriptedPrompt prompt;
        int saves = 0;
        const SaveSettingsFn save = [&] { return ++saves > 0; };
        ini.SetCellText(Ini::PatternFirst + 3, 1, "Few");
        ini.SetCellText(Ini::PatternFirst + 3, 2, "0011");
        optShowCol_Pattern(ini, input, 3);
        const QString before = PatternOfVisibility(input);
        // No keeps the slot.
        prompt.answers = {false};
        QVERIFY(!btnShowCol_DeletePattern(ini, 3, save, prompt).ran);
        QCOMPARE(ini.CellText(Ini::PatternFirst + 3, 1), QString("Few"));
        prompt.answers = {true};
        const PatternResult r = btnShowCol_DeletePattern(ini, 3, save, prompt);
        QVERIFY(r.ran);
        QCOMPARE(prompt.Count("yesno"), 2);
        QVERIFY(prompt.shown.back().text.contains("Few"));
        QCOMPARE(r.optionCaption, QString("C781 4"));
        QVERIFY(ini.CellText(Ini::PatternFirst + 3, 1).isEmpty());
        QVERIFY(ini.CellText(Ini::PatternFirst + 3, 2).isEmpty());
        QVERIFY(ini.CellText(Ini::ActivePattern, 2).isEmpty());
        QCOMPARE(ActivePattern(ini), -1);
        QCOMPARE(PatternOfVisibility(input), before);
        QCOMPARE(saves, 1);
        // No option chosen.
        QVERIFY(!btnShowCol_DeletePattern(ini, -1, save, prompt).ran);
        QCOMPARE(prompt.LastText(), QString("C782"));
    }

    void activateAndDeactivateAll() {
        btnShowCol_ActivateAll(input);
        QCOMPARE(PatternOfVisibility(input), Ones(71));
        btnShowCol_DeActivateAll(input);
        QCOMPARE(PatternOfVisibility(input), QString("001") + QString(68, QLatin1Char('0')));
    }

    void tagFieldColumns() {
        btnShowCol_DeActivateAll(input);
        BtnFrmShow_SetTFOn(input);
        for (int c = 1; c <= 71; ++c)
            QCOMPARE(input.Column(c).visible, c == 3 || (c >= 15 && c <= 70));
        btnShowCol_ActivateAll(input);
        BtnFrmShow_SetTFOff(input);
        for (int c = 1; c <= 71; ++c)
            QCOMPARE(input.Column(c).visible, c < 15 || c == 71);
    }

    void referenceListPattern() {
        ScriptedPrompt prompt;
        ref.SetColumnVisible(2, false);
        btnShowColRef_Save(ini, ref, prompt);
        QCOMPARE(ini.CellText(Ini::ShowColumnRefPattern, 1), QString("101111"));
        QCOMPARE(prompt.LastText(), QString("C82"));
        ApplyRefPattern(ref, "0110");
        QCOMPARE(PatternOfVisibility(ref), QString("011000"));
    }

    void startUp() {
        ini.SetCellText(Ini::ShowColumnRefPattern, 1, "110011");
        ini.SetCellText(Ini::PatternFirst + 9, 1, "Last");
        ini.SetCellText(Ini::PatternFirst + 9, 2, "01");
        ini.SetCellText(Ini::ActivePattern, 2, "9");
        ApplyStartupPatterns(ini, input, ref);
        QCOMPARE(PatternOfVisibility(ref), QString("110011"));
        QCOMPARE(PatternOfVisibility(input), QString("01") + QString(69, QLatin1Char('0')));
        // Nothing stored: nothing changes.
        DataGrid empty;
        fixture::DefineSettings(empty);
        btnShowCol_ActivateAll(input);
        ApplyStartupPatterns(empty, input, ref);
        QCOMPARE(PatternOfVisibility(input), Ones(71));
        QCOMPARE(PatternOfVisibility(ref), QString("110011"));
    }
};

QTEST_GUILESS_MAIN(TestPatterns)
#include "test_patterns.moc"
