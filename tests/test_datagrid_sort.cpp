// DataGrid::DoSort: the three sort types, stability in both directions, several keys.

#include "GridTestUtil.h"
#include "core/DataGrid.h"

#include <QSignalSpy>
#include <QtTest>
#include <random>

class TestDataGridSort : public QObject {
    Q_OBJECT

    // Column 1 text, 2 number, 3 date, 4 the original position.
    static void Make(DataGrid& g, const QList<QStringList>& rows) {
        g.AddColumn("T", "t", 1000, Align::Left, true, SortType::Text);
        g.AddColumn("N", "n", 1000, Align::Right, true, SortType::Number);
        g.AddColumn("D", "d", 1000, Align::Left, true, SortType::Date);
        g.AddColumn("P", "p", 1000, Align::Left, true, SortType::Text);
        int i = 0;
        for (QStringList r : rows) {
            while (r.size() < 3)
                r << QString();
            r << QString::number(++i);
            g.AddRow(r);
        }
    }

private slots:
    void textIsCaseInsensitiveAndStable() {
        DataGrid g;
        Make(g, {{"beta"}, {"Alpha"}, {"BETA"}, {"alpha"}, {""}, {"Beta"}, {"äpfel"}, {"Zeta"}});
        g.DoSort(1, 1);
        QCOMPARE(ColumnTexts(g, 1),
                 QStringList({"", "Alpha", "alpha", "beta", "BETA", "Beta", "Zeta", "äpfel"}));
        g.DoSort(4, 1); // back to the start ("1".."8" sort as text, all one digit)
        g.DoSort(1, 2);
        // descending keeps equal rows in their order, too
        QCOMPARE(ColumnTexts(g, 1),
                 QStringList({"äpfel", "Zeta", "beta", "BETA", "Beta", "Alpha", "alpha", ""}));
    }

    void numbers() {
        DataGrid g;
        Make(g, {{"", "1.234"},
                 {"", "999"},
                 {"", "1,200"},
                 {"", ""},
                 {"", "abc"},
                 {"", "-3"},
                 {"", "12 [Lrc]"},
                 {"", "2.5"},
                 {"", "0"},
                 {"", "1.234.567"},
                 {"", "1.234"}});
        g.DoSort(2, 1);
        // no number (empty or text) first, in their order; then by value with
        // thousands separators read as such
        QCOMPARE(ColumnTexts(g, 2), QStringList({"", "abc", "-3", "0", "2.5", "12 [Lrc]", "999", "1,200",
                                                 "1.234", "1.234", "1.234.567"}));
        QCOMPARE(g.CellText(9, 4), QString("1"));
        QCOMPARE(g.CellText(10, 4), QString("11"));
        g.DoSort(2, 2);
        QCOMPARE(ColumnTexts(g, 2), QStringList({"1.234.567", "1.234", "1.234", "1,200", "999", "12 [Lrc]",
                                                 "2.5", "0", "-3", "", "abc"}));
        QCOMPARE(g.CellText(2, 4), QString("1")); // equal values stay in order when descending
    }

    void dates() {
        DataGrid g;
        Make(g, {{"", "", "01.02.2003"},
                 {"", "", "31.12.1999"},
                 {"", "", ""},
                 {"", "", "15.01.2003"},
                 {"", "", "kein Datum"},
                 {"", "", "01.02.2003"},
                 {"", "", "02.01.2003"}});
        g.DoSort(3, 1);
        QCOMPARE(ColumnTexts(g, 3), QStringList({"", "kein Datum", "31.12.1999", "02.01.2003", "15.01.2003",
                                                 "01.02.2003", "01.02.2003"}));
        QCOMPARE(g.CellText(6, 4), QString("1"));
        QCOMPARE(g.CellText(7, 4), QString("6"));
    }

    void severalColumns() {
        DataGrid g;
        Make(g, {{"b", "2"}, {"a", "10"}, {"b", "1"}, {"a", "9"}, {"B", "1"}});
        g.DoSort("1,2", 1);
        QCOMPARE(ColumnTexts(g, 4), QStringList({"4", "2", "3", "5", "1"}));
        g.DoSort(" 2 , 1 ", 2);
        QCOMPARE(ColumnTexts(g, 2), QStringList({"10", "9", "2", "1", "1"}));
        QCOMPARE(ColumnTexts(g, 4), QStringList({"2", "4", "1", "3", "5"}));
    }

    void badColumnListsDoNothing() {
        DataGrid g;
        Make(g, {{"b"}, {"a"}});
        QSignalSpy spy(&g, &DataGrid::rowsReset);
        g.DoSort("", 1);
        g.DoSort("0,9,x", 1);
        QCOMPARE(ColumnTexts(g, 1), QStringList({"b", "a"}));
        QCOMPARE(spy.size(), 0);
        g.DoSort("x,1", 1); // the valid part counts
        QCOMPARE(ColumnTexts(g, 1), QStringList({"a", "b"}));
    }

    void keysCellsAndRowsTravelTogether() {
        DataGrid g;
        g.AddColumn("T", "t");
        g.AddColumn("U", "u");
        std::mt19937 rng(7);
        for (int i = 0; i < 2000; ++i)
            g.AddRow({QString::number(rng() % 50), QString::number(i)}, QStringLiteral("key%1").arg(i));
        g.DoSort(1, 1);
        for (int r = 1; r <= g.Rows(); ++r)
            QCOMPARE(g.RowKey(r), QStringLiteral("key") + g.CellText(r, 2));
        for (int r = 2; r <= g.Rows(); ++r) {
            const int cmp = g.CellText(r - 1, 1).compare(g.CellText(r, 1));
            QVERIFY(cmp <= 0);
            if (cmp == 0) // stable
                QVERIFY(g.CellText(r - 1, 2).toInt() < g.CellText(r, 2).toInt());
        }
    }

    void rowsShorterThanTheColumns() {
        DataGrid g;
        g.AddColumn("T", "t");
        g.AddColumn("N", "n", 1000, Align::Left, true, SortType::Number);
        g.AddItem("x\t5");
        g.AddItem("y");
        g.AddItem("z\t1");
        g.DoSort(2, 1);
        QCOMPARE(ColumnTexts(g, 1), QStringList({"y", "z", "x"}));
    }
};

QTEST_GUILESS_MAIN(TestDataGridSort)
#include "test_datagrid_sort.moc"
