// Removing rows from the data list (optTab1_RemoveEntry): the guards, the staged
// rows, the totals; nothing else changes.

#include "InputGridFixture.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListRemove.h"

#include <QtTest>

class TestListRemove : public QObject {
    Q_OBJECT

    static void Fill(DataGrid& g, int rows) {
        fixture::DefineInputColumns(g);
        for (int i = 1; i <= rows; ++i)
            fixture::AddInputRow(g, {{InCol::FileName, QStringLiteral("f%1.mp3").arg(i)},
                                     {InCol::FTag, i == 2 ? QStringLiteral("mine") : QString()}});
    }

private slots:
    void initTestCase() { fixture::FillCaptions(); }

    void guards() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        DataGrid g;
        fixture::DefineInputColumns(g);
        QVERIFY(!optTab1_RemoveEntry(g, env).ran);
        QCOMPARE(prompt.LastText(), Caption(CapListEmpty));
        DataGrid filled;
        Fill(filled, 3);
        QVERIFY(!optTab1_RemoveEntry(filled, env).ran);
        QCOMPARE(prompt.LastText(), Caption(CapNoRowSelected));
        QCOMPARE(filled.Rows(), 3);
    }

    void selectedRowsGoWhateverTheirMark() {
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        int totals = 0;
        env.showTotals = [&] { ++totals; };
        DataGrid g;
        Fill(g, 5);
        g.SetSelected(2, true);
        g.SetSelected(5, true);
        g.SetCurRow(5);
        const RemoveEntriesResult r = optTab1_RemoveEntry(g, env);
        QVERIFY(r.ran);
        QCOMPARE(r.removed, 2);
        QCOMPARE(g.Rows(), 3);
        QCOMPARE(g.CellText(1, InCol::FileName), QStringLiteral("f1.mp3"));
        QCOMPARE(g.CellText(2, InCol::FileName), QStringLiteral("f3.mp3"));
        QCOMPARE(g.CellText(3, InCol::FileName), QStringLiteral("f4.mp3"));
        QCOMPARE(g.SelCount(), 0);
        QVERIFY(g.CurRow() <= g.Rows());
        QCOMPARE(totals, 1);
        QVERIFY(prompt.shown.empty()); // no question, no message
        for (int row = 1; row <= g.Rows(); ++row)
            QVERIFY(g.CellText(row, InCol::FTag) != Mark::DDelete);
    }
};

QTEST_MAIN(TestListRemove)
#include "test_listremove.moc"
