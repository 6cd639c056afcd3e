// The tab "Marks" of the data area: marks by hand and by sign, removing and selecting
// by mark, marks by rule and by file type, the doubles, and the sums after each command.

#include "ListWindowFixture.h"
#include "app/MarksPanel.h"
#include "app/Mnemonics.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "list/Marks.h"
#include "list/modListEnv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

class TestMarksUi : public QObject {
    Q_OBJECT

    static void Click(GuiProgram& g, const char* name) {
        auto* b = Control<QPushButton>(g.window.get(), QString::fromLatin1(name));
        QVERIFY(b);
        b->click();
    }
    static QString SumLabel(GuiProgram& g) {
        return Control<QLabel>(g.window.get(), "lblTab1_TimeSizeMarkedData")->text();
    }

private slots:
    void markCurrentRowAndMoveOn() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        list.SetCurRow(2);
        Click(g, "btnTab1_SetFTagActRow");
        QCOMPARE(list.CellText(2, InCol::FTag), Mark::Default);
        QCOMPARE(list.CurRow(), 3);
        Control<QLineEdit>(g.window.get(), "txtTab1_FTag")->setText(QStringLiteral("gold"));
        Click(g, "btnTab1_SetFTagActRow");
        QCOMPARE(list.CellText(3, InCol::FTag), QStringLiteral("gold"));
        list.SetCurRow(list.Rows());
        Click(g, "btnTab1_SetFTagActRow");
        QCOMPARE(list.CurRow(), list.Rows()); // stays on the last
        // Empty list: the guard.
        list.Clear();
        Click(g, "btnTab1_SetFTagActRow");
        QCOMPARE(g.prompt.LastText(), Caption(CapListEmpty));
    }

    void signButtonsShowAndWriteTheSigns() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::SignFirst, Ini::SignCol}, QStringLiteral("+")},
                         {{Ini::SignFirst + 1, Ini::SignCol}, QStringLiteral("-")},
                         {{Ini::SignFirst + 3, Ini::SignCol}, QStringLiteral("top")}}));
        FillSampleRows();
        auto* sign0 = Control<SignButton>(g.window.get(), "btnTab1_Sign(0)");
        QCOMPARE(WithoutMnemonic(sign0->text()), Caption(187));
        QCOMPARE(sign0->Sign(), QStringLiteral("+"));
        QVERIFY(sign0->isEnabled());
        QVERIFY(!Control<SignButton>(g.window.get(), "btnTab1_Sign(2)")->isEnabled()); // no sign
        DataGrid& list = Grids::LbxInput();
        list.SetCurRow(3);
        Click(g, "btnTab1_Sign(3)");
        QCOMPARE(list.CellText(3, InCol::FTag), QStringLiteral("top"));
        // With "previous row" the row above takes it.
        Control<QCheckBox>(g.window.get(), "chbTab1_SignPreviousRow")->setChecked(true);
        Click(g, "btnTab1_Sign(1)");
        QCOMPARE(list.CellText(2, InCol::FTag), QStringLiteral("-"));
        Control<QCheckBox>(g.window.get(), "chbTab1_SignPreviousRow")->setChecked(false);
        // The cycling button: "top" is followed by the first sign again.
        Click(g, "btnTab1_Sign");
        QCOMPARE(list.CellText(3, InCol::FTag), QStringLiteral("+"));
        Click(g, "btnTab1_Sign");
        QCOMPARE(list.CellText(3, InCol::FTag), QStringLiteral("-"));
    }

    void removeMarksAsks() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        list.SetCellText(1, InCol::FTag, QStringLiteral("a"));
        list.SetCellText(2, InCol::FTag, QStringLiteral("b"));
        list.SetCellText(3, InCol::FTag, QStringLiteral("a"));
        // Nothing selected: the guard.
        Click(g, "btnTab1_RemoveFtag");
        QCOMPARE(g.prompt.LastText(), Caption(CapNoRowSelected));
        list.SelectAll();
        g.prompt.answers = {false};
        Click(g, "btnTab1_RemoveFtag");
        QCOMPARE(g.prompt.LastText(), Caption(CapRemoveMarksQuestion));
        QCOMPARE(RowsWithMark(QStringLiteral("a")), 2); // No: nothing changes
        Control<QLineEdit>(g.window.get(), "txtTab1_FTag")->setText(QStringLiteral("a"));
        g.prompt.answers = {true};
        Click(g, "btnTab1_RemoveFtag");
        QCOMPARE(g.prompt.LastText(),
                 Caption(CapRemoveMarkBefore) + QStringLiteral("a") + Caption(CapRemoveMarkAfter));
        QCOMPARE(RowsWithMark(QStringLiteral("a")), 0);
        QCOMPARE(RowsWithMark(QStringLiteral("b")), 1);
        // Clearing the mark text.
        Click(g, "btnTab1_ClearFtag");
        QVERIFY(Control<QLineEdit>(g.window.get(), "txtTab1_FTag")->text().isEmpty());
    }

    void selectionCommandsKeepTheSumsCurrent() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        Click(g, "btnTab1_HighlightAll");
        QCOMPARE(list.SelCount(), 6);
        QVERIFY(SumLabel(g).startsWith(QStringLiteral("(6)  ")));
        list.SetSelected(1, false);
        QVERIFY(SumLabel(g).startsWith(QStringLiteral("(5)  ")));
        Click(g, "btnTab1_InvertHighlight");
        QCOMPARE(list.SelCount(), 1);
        QVERIFY(SumLabel(g).startsWith(QStringLiteral("(1)  03:00 mm:ss")));
        // Select by mark: an empty box takes every marked row.
        list.SetCellText(2, InCol::FTag, QStringLiteral("x"));
        list.SetCellText(4, InCol::FTag, QStringLiteral("y"));
        Click(g, "btnTab1_FTagBlue");
        QCOMPARE(list.SelCount(), 2);
        QCOMPARE(g.prompt.LastText(), CountText(CapRowsWithMarkSelected, 2));
        QVERIFY(SumLabel(g).startsWith(QStringLiteral("(2)  ")));
        Control<QLineEdit>(g.window.get(), "txtTab1_FTag")->setText(QStringLiteral("y"));
        Click(g, "btnTab1_FTagBlue");
        QCOMPARE(list.SelCount(), 1);
        QVERIFY(list.IsSelected(4));
    }

    void marksByRule() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        const DataGrid& list = Grids::LbxInput();
        Click(g, "btnTab1_MarkLrc");
        QCOMPARE(RowsWithMark(Mark::Default), 1);
        QCOMPARE(list.CellText(1, InCol::FTag), Mark::Default); // marked rows come first
        QCOMPARE(g.prompt.LastText(), CountText(CapRowsMarked, 1));
        Click(g, "btnTab1_HighlightLyrics");
        QCOMPARE(RowsWithMark(Mark::Default), 1);
        Click(g, "btnTab1_HighlightiPic");
        QCOMPARE(RowsWithMark(Mark::Default), 1);
        QCOMPARE(list.CellText(1, InCol::FileName), QStringLiteral("Beatles - Help.flac"));
        // The picture link list is empty: nothing has a linked picture.
        Click(g, "btnTab1_HighlightLink");
        QCOMPARE(RowsWithMark(Mark::Default), 0);
        QCOMPARE(g.prompt.LastText(), CountText(CapRowsMarked, 0));
        // Quiet.
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        const std::size_t before = g.prompt.shown.size();
        Click(g, "btnTab1_MarkLrc");
        QCOMPARE(g.prompt.shown.size(), before);
    }

    void marksByFileType() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        auto* type = Control<QComboBox>(g.window.get(), "cmbTab1_FileType");
        type->setCurrentText(QStringLiteral("MP3"));
        Click(g, "btnTab1_MarkFileType");
        QCOMPARE(RowsWithMark(Mark::TypePrefix + QStringLiteral("MP3")), 4);
        QCOMPARE(list.SelCount(), 4);
        QCOMPARE(g.prompt.LastText(), CountText(CapRowsMarked, 4));
        type->setCurrentText(QStringLiteral("WMA"));
        Click(g, "btnTab1_MarkFileType");
        QCOMPARE(list.SelCount(), 0);
        QCOMPARE(g.prompt.LastText(), Caption(CapListEmpty));
    }

    void findAndEraseDoubles() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        // No: nothing changes.
        list.SetCellText(5, InCol::FTag, QStringLiteral("keep"));
        g.prompt.answers = {false};
        Click(g, "btnTab1_FindDouble");
        QCOMPARE(RowsWithMark(QStringLiteral("keep")), 1);
        g.prompt.answers = {true};
        Click(g, "btnTab1_FindDouble");
        QCOMPARE(g.prompt.shown[g.prompt.shown.size() - 2].text,
                 Caption(CapMarkRowsTitle) + QLatin1Char('\n') + Caption(CapClearMarksContinue));
        QCOMPARE(g.prompt.LastText(), CountText(CapDoubleGroupsFound, 1));
        QCOMPARE(RowsWithMark(QStringLiteral("0001")), 2); // names differ only in case
        QCOMPARE(RowsWithMark(QStringLiteral("keep")), 0);
        // Erase needs a selection.
        list.ClearSelection();
        Click(g, "btnTab1_EraseDouble");
        QCOMPARE(g.prompt.LastText(), Caption(CapNoRowSelected));
        list.SetSelected(1, true);
        Click(g, "btnTab1_EraseDouble");
        QCOMPARE(list.Rows(), 5);
        QCOMPARE(RowsWithMark(QStringLiteral("0001")), 1);
        QCOMPARE(g.prompt.LastText(), CountText(CapDoublesRemoved, 1));
        QCOMPARE(list.FooterText(InCol::FileName), QStringLiteral("5")); // the totals follow
        // Again: no groups at the head any more after the marks are gone.
        for (int r = 1; r <= list.Rows(); ++r)
            list.SetCellText(r, InCol::FTag, QString());
        list.SetSelected(1, true);
        Click(g, "btnTab1_EraseDouble");
        QCOMPARE(g.prompt.LastText(), Caption(CapNoDoubleGroups));
        QCOMPARE(list.Rows(), 5);
    }
};

QTEST_MAIN(TestMarksUi)
#include "test_marksui.moc"
