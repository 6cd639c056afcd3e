// The right-click menu of the data list: a right click on LbxInput opens it, the chosen
// entry runs its command, a menu closed without a choice runs nothing.

#include "ListWindowFixture.h"
#include "MenuTestUtil.h"
#include "app/DataGridView.h"
#include "app/FrmInput.h"
#include "app/InputDataPage.h"
#include "app/PrintUi.h"
#include "list/Marks.h"
#include "ref/RefColumns.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <memory>

namespace {

// The right click on row `row` of LbxInput (or of another list's table).
void RightClickRow(GuiProgram& g, int row, QTableView* table = nullptr) {
    if (!table)
        table = g.window->pageData->LbxInput->table();
    RightClickAt(table,
                 QPoint(table->columnViewportPosition(3) + 5, table->rowViewportPosition(row - 1) + 3));
}

} // namespace

class TestContextMenuUi : public QObject {
    Q_OBJECT
private slots:
    void markFromTheMenuGoesToHighlightedRows() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(2, true);
        list.SetSelected(3, true);
        bool seen = false;
        WhenMenuOpens(
            [](QMenu* menu) {
                QAction* a = Entry(menu, "Mark00");
                QVERIFY(a);
                a->trigger(); // an entry in the sub-menu "Set mark"
            },
            &seen);
        RightClickRow(g, 2);
        QTRY_VERIFY(seen);
        const std::vector<int> sel = list.SelectedRows();
        QVERIFY(!sel.empty());
        for (int r = 1; r <= list.Rows(); ++r)
            QCOMPARE(list.CellText(r, InCol::FTag), list.IsSelected(r) ? Mark::Default : QString());
    }

    void topLevelEntryByMouse() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(1, true);
        bool seen = false;
        WhenMenuOpens(
            [](QMenu* menu) {
                QAction* a = Entry(menu, "HighlightAll");
                QVERIFY(a && a->isEnabled());
                QVERIFY(Entry(menu, "SingleFile")->isEnabled());
                QVERIFY(Entry(menu, "Print")->isEnabled());
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(a).center());
            },
            &seen);
        RightClickRow(g, 1);
        QTRY_VERIFY(seen);
        QTRY_COMPARE(int(list.SelectedRows().size()), list.Rows());
    }

    void audioTypeHighlightsItsRows() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(1, true);
        bool seen = false;
        WhenMenuOpens(
            [](QMenu* menu) {
                QAction* a = Entry(menu, "AudioType2"); // MP3, FLAC, OGG: the second type
                QVERIFY(a);
                QCOMPARE(a->text(), QStringLiteral("FLAC"));
                a->trigger();
            },
            &seen);
        RightClickRow(g, 1);
        QTRY_VERIFY(seen);
        const std::vector<int> sel = list.SelectedRows();
        QCOMPARE(int(sel.size()), 1);
        QCOMPARE(list.CellText(sel[0], InCol::Type), QStringLiteral("FLAC"));
    }

    void directEditEntrySwitchesTheBox() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        FillSampleRows();
        Grids::LbxInput().SetSelected(1, true);
        auto* box = Control<QCheckBox>(g.window.get(), "chbTab1_DirectEdit");
        QVERIFY(box && !box->isChecked());
        bool seen = false;
        WhenMenuOpens([](QMenu* menu) { Entry(menu, "dEditOn")->trigger(); }, &seen);
        RightClickRow(g, 1);
        QTRY_VERIFY(seen);
        QVERIFY(box->isChecked());
    }

    void closedWithoutChoiceRunsNothing() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(2, true);
        bool seen = false;
        WhenMenuOpens([](QMenu* menu) { QTest::keyClick(menu, Qt::Key_Escape); }, &seen);
        RightClickRow(g, 2);
        QTRY_VERIFY(seen);
        QTest::qWait(50);
        QVERIFY(!QApplication::activePopupWidget());
        QCOMPARE(RowsWithMark(Mark::Default), 0);
        QCOMPARE(int(list.SelectedRows().size()), 1);
    }

    void refListMarkAndPrintEntries() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTest::mouseClick(Control<QPushButton>(g.window.get(), "btnTab1_ToggleRef"), Qt::LeftButton);
        g.window->show();
        DataGrid& ref = Grids::LbxRef();
        for (const char* name : {"a.mp3", "b.mp3"}) {
            QStringList row(ref.Cols(), QString());
            row[RefCol::FileName - 1] = QLatin1String(name);
            ref.AddRow(row);
        }
        ref.SetSelected(2, true);
        QTableView* table = Control<DataGridView>(g.window.get(), "LbxRef")->table();
        bool seen = false;
        WhenMenuOpens(
            [](QMenu* menu) {
                QVERIFY(Entry(menu, "Copy")->isEnabled());
                Entry(menu, "Mark00")->trigger();
            },
            &seen, QStringLiteral("mnuRef"));
        RightClickRow(g, 1, table);
        QTRY_VERIFY(seen);
        QCOMPARE(ref.CellText(2, RefCol::FTag), Mark::Default);
        QCOMPARE(ref.CellText(1, RefCol::FTag), QString());
        // RemMark00: the first mark of the highlighted rows goes again.
        seen = false;
        WhenMenuOpens([](QMenu* menu) { Entry(menu, "RemMark00")->trigger(); }, &seen,
                      QStringLiteral("mnuRef"));
        RightClickRow(g, 1, table);
        QTRY_VERIFY(seen);
        QCOMPARE(ref.CellText(2, RefCol::FTag), QString());
    }

    void printAllFromTheMenu() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        FillSampleRows();
        QTemporaryDir dir;
        const QString pdf = dir.filePath(QStringLiteral("menu.pdf"));
        SetPrintToPdf(pdf);
        bool seen = false;
        WhenMenuOpens([](QMenu* menu) { Entry(menu, "PrintAll")->trigger(); }, &seen);
        RightClickRow(g, 1);
        QTRY_VERIFY(seen);
        SetPrintToPdf(QString());
        QVERIFY(QFileInfo(pdf).size() > 0);
    }

    void emptyListOpensNoMenu() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        Grids::LbxInput().Clear();
        bool seen = false;
        WhenMenuOpens([](QMenu* menu) { menu->close(); }, &seen);
        RightClickRow(g, 1);
        QTest::qWait(100);
        QVERIFY(!seen);
    }
};

QTEST_MAIN(TestContextMenuUi)
#include "test_contextmenu.moc"
