// DataGrid in memory: rows, cells, columns, selection, current row, repaint signals,
// find. Sorting is in test_datagrid_sort.cpp, the file format in test_gridfile.cpp.

#include "GridTestUtil.h"
#include "core/DataGrid.h"

#include <QSignalSpy>
#include <QtTest>
#include <stdexcept>

class TestDataGrid : public QObject {
    Q_OBJECT
private slots:
    void displayOrderIsAPermutationOrNothing() {
        DataGrid g;
        for (const char* k : {"A", "B", "C"})
            g.AddColumn(k, k);
        QCOMPARE(g.DisplayOrder(), std::vector<int>({1, 2, 3}));
        g.SetDisplayOrder({3, 1, 2});
        QCOMPARE(g.DisplayOrder(), std::vector<int>({3, 1, 2}));
        g.SetDisplayOrder({3, 3, 2}); // not every column once: the own order
        QCOMPARE(g.DisplayOrder(), std::vector<int>({1, 2, 3}));
        g.SetDisplayOrder({2, 1, 3});
        g.SetDisplayOrder({2, 1});
        QCOMPARE(g.DisplayOrder(), std::vector<int>({1, 2, 3}));
        g.SetDisplayOrder({2, 1, 3});
        g.AddColumn("D", "d"); // a new column: the own order again
        QCOMPARE(g.DisplayOrder(), std::vector<int>({1, 2, 3, 4}));
    }

    void addItemAndKeys() {
        DataGrid g;
        g.AddColumn("A", "a");
        g.AddColumn("B", "b");
        QCOMPARE(g.AddItem("x\ty"), 1);
        QCOMPARE(g.AddItem("z", "own"), 2);
        QCOMPARE(g.CellText(1, 2), QString("y"));
        QCOMPARE(g.RowKey(1), QString("1k"));
        QCOMPARE(g.RowKey(2), QString("own"));
        QCOMPARE(g.CellText(2, 2), QString()); // fewer cells than columns read empty
        QCOMPARE(g.RowCells(2), QStringList({"z", ""}));
        QCOMPARE(g.AddRow({}), 3);
        QCOMPARE(g.RowCells(3), QStringList({"", ""}));
        g.SetRowKey(3, "k3");
        QCOMPARE(g.RowKey(3), QString("k3"));
    }

    void rowAddedAfterDeletionsRepeatsAKey() {
        // The default key is the row count after adding: after deletions it can repeat
        // a key that is still in the list, as the running number of the data list does.
        DataGrid g;
        FillGrid(g, 2, {"1\ta", "2\tb", "3\tc"});
        g.DeleteRow(1);
        const int n = g.AddItem(QString::number(g.Rows() + 1) + "\td");
        QCOMPARE(n, 3);
        QCOMPARE(g.RowKey(3), QString("3k"));
        QCOMPARE(g.RowKey(2), QString("3k"));
        QCOMPARE(g.CellText(3, 1), QString("3"));
        QCOMPARE(g.CellText(2, 1), QString("3"));
    }

    void cellsGrowAndShrink() {
        DataGrid g;
        FillGrid(g, 5, {"a\tbb\tccc"});
        g.SetCellText(1, 5, "e");
        QCOMPARE(g.RowCells(1), QStringList({"a", "bb", "ccc", "", "e"}));
        g.SetCellText(1, 2, "BBBBBB");
        g.SetCellText(1, 1, "");
        QCOMPARE(g.RowCells(1), QStringList({"", "BBBBBB", "ccc", "", "e"}));
        g.SetCellText(1, 5, "");
        g.SetCellText(1, 4, "");
        QCOMPARE(g.RowCells(1), QStringList({"", "BBBBBB", "ccc", "", ""}));
        QCOMPARE(g.CellView(1, 3), QStringView(u"ccc"));
        g.SetCellText(1, 3, "tab\tand\nline");
        QCOMPARE(g.CellText(1, 3), QString("tab\tand\nline"));
        // a row that holds no cell at all takes one far out
        g.AddRow({});
        g.SetCellText(2, 4, "x");
        QCOMPARE(g.RowCells(2), QStringList({"", "", "", "x", ""}));
        g.SetCellText(2, 1, QString());
        QCOMPARE(g.CellText(2, 1), QString());
    }

    void setRowCellsKeepsKeyAndSelection() {
        DataGrid g;
        FillGrid(g, 3, {"a\tb\tc", "d\te\tf"});
        g.SetSelected(2, true);
        g.SetRowCells(2, {"x", "y"});
        QCOMPARE(g.RowCells(2), QStringList({"x", "y", ""}));
        QCOMPARE(g.RowKey(2), QString("2k"));
        QVERIFY(g.IsSelected(2));
        QCOMPARE(g.SelCount(), 1);
    }

    void insertDeleteMove() {
        DataGrid g;
        FillGrid(g, 1, {"a", "b", "c", "d"});
        g.SetCurRow(3);
        QCOMPARE(g.InsertRow(1, {"new"}), 1);
        QCOMPARE(ColumnTexts(g, 1), QStringList({"new", "a", "b", "c", "d"}));
        QCOMPARE(g.CurRow(), 4); // the current row moved with its row
        QCOMPARE(g.RowKey(1), QString("5k"));
        QCOMPARE(g.InsertRow(6, {"end"}, "e"), 6);
        QCOMPARE(g.CellText(6, 1), QString("end"));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.InsertRow(8, {"x"}));
        g.MoveRow(1, 6);
        QCOMPARE(ColumnTexts(g, 1), QStringList({"a", "b", "c", "d", "end", "new"}));
        g.MoveRow(6, 2);
        QCOMPARE(ColumnTexts(g, 1), QStringList({"a", "new", "b", "c", "d", "end"}));
        g.SetSelected(3, true);
        g.SetSelected(6, true);
        g.SetCurRow(6);
        g.DeleteRow(3);
        QCOMPARE(g.SelCount(), 1);
        QCOMPARE(g.SelRow(1), 5);
        QCOMPARE(g.CurRow(), 5);
        QCOMPARE(ColumnTexts(g, 1), QStringList({"a", "new", "c", "d", "end"}));
        QCOMPARE(g.DeleteSelected(), 1);
        QCOMPARE(g.SelCount(), 0);
        QCOMPARE(g.Rows(), 4);
        QCOMPARE(g.CurRow(), 4);
        QCOMPARE(g.DeleteSelected(), 0);
        g.SelectAll();
        QCOMPARE(g.DeleteSelected(), 4);
        QCOMPARE(g.Rows(), 0);
        QCOMPARE(g.CurRow(), 0);
        QCOMPARE(g.Cols(), 1);
    }

    void clearKeepsColumns() {
        DataGrid g;
        FillGrid(g, 3, {"a", "b"});
        g.SetSelected(1, true);
        g.SetCurRow(2);
        g.Clear();
        QCOMPARE(g.Rows(), 0);
        QCOMPARE(g.Cols(), 3);
        QCOMPARE(g.SelCount(), 0);
        QCOMPARE(g.CurRow(), 0);
        QCOMPARE(g.AddItem("again"), 1);
        QCOMPARE(g.RowKey(1), QString("1k"));
    }

    void outOfRangeIsAProgramError() {
        DataGrid g;
        FillGrid(g, 2, {"a"});
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.CellText(2, 1));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.CellText(1, 3));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.CellText(0, 1));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.SetCellText(1, 0, "x"));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.DeleteRow(5));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.Column(3));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.SelRow(1));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, g.IsSelected(2));
    }

    void columns() {
        DataGrid g;
        QCOMPARE(g.AddColumn("No", "Nr.", 500, Align::Right, false, SortType::Number), 1);
        QCOMPARE(g.AddColumn("Date", "Datum", 1000, Align::Center, true, SortType::Date), 2);
        QCOMPARE(g.Cols(), 2);
        QCOMPARE(g.Column(1).width, 500);
        QCOMPARE(g.Column(1).align, Align::Right);
        QVERIFY(!g.Column(1).visible);
        QCOMPARE(g.Column(2).sortType, SortType::Date);
        QCOMPARE(g.ColumnByKey("Date"), 2);
        QCOMPARE(g.ColumnByKey("nope"), 0);
        g.SetColumnCaption(2, "Date");
        QCOMPARE(g.Column(2).caption, QString("Date"));
        g.SetColumnVisible(1, true);
        QVERIFY(g.Column(1).visible);
        g.Column(2).minWidth = 900;
        g.SetColumnWidth(2, 300);
        QCOMPARE(g.Column(2).width, 900);
        g.SetColumnWidth(2, 3000);
        QCOMPARE(g.Column(2).width, 3000);
        g.SetFooterText(2, "12");
        QCOMPARE(g.FooterText(2), QString("12"));
        QCOMPARE(g.Column(2).footerText, QString("12"));
        g.ClearFooters();
        QCOMPARE(g.FooterText(2), QString());
        g.AddItem("1\t01.01.2000");
        g.RemoveAllColumns();
        QCOMPARE(g.Cols(), 0);
        QCOMPARE(g.Rows(), 1);
    }

    void selection() {
        DataGrid g;
        FillGrid(g, 1, {"1", "2", "3", "4", "5", "6"});
        QCOMPARE(g.SelCount(), 0);
        g.SelectRange(5, 2, true);
        QCOMPARE(g.SelCount(), 4);
        QCOMPARE(g.SelRow(1), 2);
        QCOMPARE(g.SelRow(4), 5);
        g.SetSelected(3, false);
        QCOMPARE(g.SelectedRows(), (std::vector<int>{2, 4, 5}));
        g.SetSelected(3, false); // no change
        QCOMPARE(g.SelCount(), 3);
        g.InvertSelection();
        QCOMPARE(g.SelectedRows(), (std::vector<int>{1, 3, 6}));
        QCOMPARE(g.SelCount(), 3);
        g.SelectRange(-5, 100, true); // clipped to the rows
        QCOMPARE(g.SelCount(), 6);
        g.ClearSelection();
        QCOMPARE(g.SelCount(), 0);
        g.SelectAll();
        QCOMPARE(g.SelCount(), 6);
        QVERIFY(g.IsSelected(6));
        // the selection travels with the rows
        g.ClearSelection();
        g.SetSelected(1, true);
        g.DoSort(1, 2);
        QCOMPARE(g.SelectedRows(), std::vector<int>{6});
        QCOMPARE(g.CellText(6, 1), QString("1"));
        // an empty grid
        DataGrid e;
        e.AddColumn("a", "a");
        e.SelectAll();
        e.InvertSelection();
        QCOMPARE(e.SelCount(), 0);
    }

    void currentRow() {
        DataGrid g;
        FillGrid(g, 1, {"a", "b", "c"});
        QCOMPARE(g.CurRow(), 0);
        QSignalSpy spy(&g, &DataGrid::currentRowChanged);
        g.SetCurRow(2);
        QCOMPARE(g.CurRow(), 2);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toInt(), 2);
        g.SetCurRow(2);
        QCOMPARE(spy.size(), 1);
        g.SetCurRow(99); // out of range falls back to the first row
        QCOMPARE(g.CurRow(), 1);
        g.SetCurRow(0);
        QCOMPARE(g.CurRow(), 0);
    }

    void lockUpdateBatchesSignals() {
        DataGrid g;
        FillGrid(g, 2, {"a", "b"});
        QSignalSpy rows(&g, &DataGrid::rowsReset);
        QSignalSpy cells(&g, &DataGrid::cellChanged);
        QSignalSpy cols(&g, &DataGrid::columnsChanged);
        QSignalSpy foot(&g, &DataGrid::footersChanged);
        QSignalSpy sel(&g, &DataGrid::selectionChanged);
        QSignalSpy cur(&g, &DataGrid::currentRowChanged);
        // unlocked: each change speaks at once
        g.SetCellText(1, 1, "x");
        QCOMPARE(cells.size(), 1);
        QCOMPARE(cells.at(0).at(0).toInt(), 1);
        QCOMPARE(cells.at(0).at(1).toInt(), 1);
        g.SetCellText(1, 1, "x"); // same text: silent
        QCOMPARE(cells.size(), 1);
        g.AddItem("c");
        QCOMPARE(rows.size(), 1);
        g.SetSelected(1, true);
        QCOMPARE(sel.size(), 1);
        // locked: nothing until the release, then one signal per kind
        g.LockUpdate(true);
        QVERIFY(g.IsLocked());
        for (int i = 0; i < 100; ++i)
            g.AddItem(QString::number(i));
        g.SetCellText(2, 2, "y");
        g.SetSelected(2, true);
        g.SelectAll();
        g.SetFooterText(1, "f");
        g.SetColumnCaption(1, "A!");
        g.SetCurRow(5);
        g.Refresh(); // no effect while locked
        QCOMPARE(rows.size(), 1);
        QCOMPARE(cells.size(), 1);
        QCOMPARE(sel.size(), 1);
        QCOMPARE(foot.size(), 0);
        QCOMPARE(cols.size(), 0);
        QCOMPARE(cur.size(), 0);
        g.LockUpdate(false);
        QVERIFY(!g.IsLocked());
        QCOMPARE(rows.size(), 2);
        QCOMPARE(cells.size(), 1);
        QCOMPARE(sel.size(), 2);
        QCOMPARE(foot.size(), 1);
        QCOMPARE(cols.size(), 1);
        QCOMPARE(cur.size(), 1);
        QCOMPARE(cur.last().at(0).toInt(), 5);
        // a second release or a refresh with nothing pending sends no reset
        g.LockUpdate(false);
        g.Refresh();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(sel.size(), 2);
        QCOMPARE(g.Rows(), 103);
    }

    void autoSizeWithoutView() {
        DataGrid g;
        FillGrid(g, 2, {"short", QString(40, QLatin1Char('x'))});
        QSignalSpy spy(&g, &DataGrid::autoSizeRequested);
        g.DoColumnAutoSize(1);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toInt(), 1);
        QVERIFY(g.Column(1).width >= 40 * 90);
        g.Column(2).minWidth = 5000;
        g.DoColumnAutoSize(2);
        QCOMPARE(g.Column(2).width, 5000);
    }

    void findRow() {
        DataGrid g;
        FillGrid(
            g, 2,
            {"Abba\tWaterloo.mp3", "ABBA\tSOS.mp3", "Ärzte\tMänner.mp3", "\tempty", "abba\tWaterloo.MP3"});
        QCOMPARE(g.FindRow("abba", 1), 1);
        QCOMPARE(g.FindRow("abba", 1, 2), 2);
        QCOMPARE(g.FindRow("abba", 1, 3), 5);
        QCOMPARE(g.FindRow("abba", 1, 6), 0);
        QCOMPARE(g.FindRow("ABB", 1), 0); // exact needs the whole cell
        QCOMPARE(g.FindRow("bb", 1, 1, false), 1);
        QCOMPARE(g.FindRow("äRZTE", 1), 3); // case rules beyond ASCII
        QCOMPARE(g.FindRow("männer", 2, 1, false), 3);
        QCOMPARE(g.FindRow("waterloo.mp3", 2, 2), 5);
        QCOMPARE(g.FindRow("", 1), 4);
        QCOMPARE(g.FindRow("x", 3), 0); // no such column
        QCOMPARE(g.FindRow("x", 0), 0);
        QCOMPARE(g.FindRow("abba", 1, -4), 1);
    }

    void numberParses() {
        // the sums' parse: digits and one decimal point only
        QCOMPARE(DataGrid::NumericPrefix(u"3 [Lrc]"), 3.0);
        QCOMPARE(DataGrid::NumericPrefix(u"1.234"), 1.234);
        QCOMPARE(DataGrid::NumericPrefix(u"1,234"), 1.0);
        QCOMPARE(DataGrid::NumericPrefix(u"  -12.5kb"), -12.5);
        QCOMPARE(DataGrid::NumericPrefix(u""), 0.0);
        QCOMPARE(DataGrid::NumericPrefix(u"abc"), 0.0);
        // the sort key: a separator before exactly three digits groups thousands
        QCOMPARE(DataGrid::NumberSortKey(u"1.234"), 1234.0);
        QCOMPARE(DataGrid::NumberSortKey(u"1,234"), 1234.0);
        QCOMPARE(DataGrid::NumberSortKey(u"12.345.678"), 12345678.0);
        QCOMPARE(DataGrid::NumberSortKey(u"1.234,5"), 1234.5);
        QCOMPARE(DataGrid::NumberSortKey(u"3,5"), 3.5);
        QCOMPARE(DataGrid::NumberSortKey(u"1.2345"), 1.2345);
        QCOMPARE(DataGrid::NumberSortKey(u"-7 [Lrc]"), -7.0);
        QVERIFY(DataGrid::NumberSortKey(u"") < -1e100);
        QVERIFY(DataGrid::NumberSortKey(u"n/a") < -1e100);
        QCOMPARE(DataGrid::DateSortKey(u"05.11.2021"), 20211105);
        QVERIFY(DataGrid::DateSortKey(u"05.11.2021") < DataGrid::DateSortKey(u"01.01.2022"));
        QVERIFY(DataGrid::DateSortKey(u"2021-11-05") < 0);
        QVERIFY(DataGrid::DateSortKey(u"") < 0);
        QVERIFY(DataGrid::DateSortKey(u"5.11.2021") < 0);
    }
};

QTEST_GUILESS_MAIN(TestDataGrid)
#include "test_datagrid.moc"
