#include "core/DataGrid.h"

#include <QTemporaryDir>
#include <QtTest>

class TestDataGrid : public QObject {
    Q_OBJECT
private slots:
    void addAndRead() {
        DataGrid g;
        g.AddColumn("A", "a");
        g.AddColumn("B", "b");
        QCOMPARE(g.AddItem("x\ty"), 1);
        QCOMPARE(g.CellText(1, 2), QString("y"));
        QCOMPARE(g.RowKey(1), QString("1k"));
    }
    void saveLoadRoundTrip() {
        QTemporaryDir dir;
        DataGrid g;
        g.AddColumn("A", "a");
        g.AddColumn("B", "b");
        g.AddRow({"tab\there", "line\nbreak\\"});
        g.AddRow({"", "Ünïcödé 日本"});
        QVERIFY(g.SaveFile(dir.filePath("g.grid")));
        DataGrid h;
        QVERIFY(h.LoadFile(dir.filePath("g.grid")));
        QCOMPARE(h.Rows(), 2);
        QCOMPARE(h.Cols(), 2);
        QCOMPARE(h.CellText(1, 1), QString("tab\there"));
        QCOMPARE(h.CellText(1, 2), QString("line\nbreak\\"));
        QCOMPARE(h.CellText(2, 2), QString("Ünïcödé 日本"));
    }
};

QTEST_GUILESS_MAIN(TestDataGrid)
#include "test_datagrid.moc"
