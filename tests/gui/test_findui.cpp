// The tab "Find and filter" of the data area: the find over all or one column, its
// history and switches, the filter by value, rating and mood with its counts, the
// progress bar, and the fixed places of the sub-tabs.

#include "ListWindowFixture.h"
#include "app/FindFilterPanel.h"
#include "app/InputDataPage.h"
#include "app/ListProgressBar.h"
#include "app/UiCaptions.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "list/Marks.h"
#include "list/modListEnv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>

class TestFindUi : public QObject {
    Q_OBJECT

    static void Choose(QComboBox* box, int index) {
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    static void Choose(QComboBox* box, const QString& text) {
        const int i = box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
        QVERIFY2(i >= 0, qPrintable(text));
        Choose(box, i);
    }
    static void Find(GuiProgram& g, const QString& text) {
        auto* box = Control<QComboBox>(g.window.get(), "cmbTab1_Find");
        box->setCurrentText(QString());
        QTest::keyClicks(box->lineEdit(), text);
        Control<QPushButton>(g.window.get(), "btnTab1_M_Find")->click();
    }

private slots:
    void findInAllColumnsMarksAndCounts() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        auto* find = Control<QComboBox>(g.window.get(), "cmbTab1_Find");
        QCOMPARE(find->lineEdit()->placeholderText(), Caption(CapFindHint));
        Find(g, QStringLiteral("help"));
        // File name and title of Beatles, the comment of Cream, "Helpless" of Doors.
        QCOMPARE(RowsWithMark(Mark::Found), 3);
        QCOMPARE(g.prompt.LastText(), CountText(CapFindHits, 3));
        // Sorted by the mark: the hits stand together at the end.
        const DataGrid& list = Grids::LbxInput();
        QCOMPARE(list.CellText(list.Rows(), InCol::FTag), Mark::Found);
        QCOMPARE(list.CurRow(), 1);
        // The text went into the history once.
        QCOMPARE(find->count(), 1);
        Find(g, QStringLiteral("HELP"));
        QCOMPARE(find->count(), 1);
        // Without "clear marks first" a second hit keeps the older mark behind the prefix.
        QCOMPARE(RowsWithMark(Mark::Found), 3);
    }

    void olderMarksStayBehindThePrefix() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        Grids::LbxInput().SetCellText(RowOfFile("Doors - Helpless.mp3"), InCol::FTag, Mark::Default);
        Find(g, QStringLiteral("helpless"));
        // Hit in the file name and in the title: the prefix once for each column.
        QCOMPARE(Grids::LbxInput().CellText(RowOfFile("Doors - Helpless.mp3"), InCol::FTag),
                 Mark::Found + Mark::Found + Mark::Default);
        // Clear marks first: only the prefix stays.
        Control<QCheckBox>(g.window.get(), "chbTab1_Find(0)")->setChecked(true);
        Find(g, QStringLiteral("Desperado"));
        QCOMPARE(Grids::LbxInput().CellText(RowOfFile("Doors - Helpless.mp3"), InCol::FTag), QString());
        QCOMPARE(RowsWithMark(Mark::Found), 1);
    }

    void wholeWordsAndOneColumn() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        Control<QCheckBox>(g.window.get(), "chbTab1_Find(0)")->setChecked(true);
        Control<QCheckBox>(g.window.get(), "chbTab1_Find(1)")->setChecked(true);
        Find(g, QStringLiteral("help"));
        QCOMPARE(RowsWithMark(Mark::Found), 2); // not "Helpless"
        Control<QCheckBox>(g.window.get(), "chbTab1_Find(1)")->setChecked(false);
        auto* column = Control<QComboBox>(g.window.get(), "cmbTab1_FindInColumn");
        QCOMPARE(column->count(), InCol::Count - 1);
        QCOMPARE(column->itemText(0), Caption(175));
        QCOMPARE(column->itemText(InCol::Title - 2), Grids::LbxInput().Column(InCol::Title).caption);
        column->setCurrentIndex(InCol::Title - 2);
        Find(g, QStringLiteral("help"));
        QCOMPARE(RowsWithMark(Mark::Found), 2); // Help and Helpless; not the comment
    }

    void quietAndEmptyText() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        Find(g, QString());
        QCOMPARE(g.prompt.LastText(), Caption(CapNoFindText));
        QCOMPARE(RowsWithMark(Mark::Found), 0);
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        const std::size_t before = g.prompt.shown.size();
        Find(g, QStringLiteral("abba"));
        QCOMPARE(g.prompt.shown.size(), before);
        QCOMPARE(RowsWithMark(Mark::Found), 2);
        // The reference list can be searched instead.
        QVERIFY(Control<QCheckBox>(g.window.get(), "chbTab1_Find(2)")->isEnabled());
    }

    void filterByColumnValue() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        auto* column = Control<QComboBox>(g.window.get(), "cmbTab1_Filter(0)");
        QCOMPARE(column->count(), kFilterEntries);
        // The last entry stands for the date column.
        QCOMPARE(column->itemText(kFilterEntries - 1), Grids::LbxInput().Column(InCol::DateTime).caption);
        Choose(column, InCol::Type - 4); // index 2 -> column 6
        auto* value = Control<QComboBox>(g.window.get(), "cmbTab1_Filter(1)");
        QCOMPARE(value->count(), 4); // no choice, FLAC, MP3, OGG
        QCOMPARE(value->itemText(1), QStringLiteral("FLAC"));
        QCOMPARE(Control<QLabel>(g.window.get(), "lblTab1_CmbFilter1_Count")->text(), QStringLiteral("3"));
        Choose(value, QStringLiteral("MP3"));
        QCOMPARE(Control<QLabel>(g.window.get(), "lblTab1_CmbFilter2_Count")->text(), QStringLiteral("4 /6"));
        Control<QPushButton>(g.window.get(), "btnTab1_FilterMarkChoosen")->click();
        QCOMPARE(RowsWithMark(Mark::FoundFilter), 4);
        QCOMPARE(g.prompt.LastText(), CountText(CapFindHits, 4));
        QVERIFY(Control<ListProgressBar>(g.window.get(), "ListProgressBar")->isHidden());
        // Nothing found: its own message.
        Choose(Control<QComboBox>(g.window.get(), "cmbTab1_Filter(3)"), 0);
        Grids::LbxInput().SetCellText(1, InCol::Type, QStringLiteral("WMA"));
        Choose(column, InCol::Type - 4);
        Choose(value, QStringLiteral("WMA"));
        Control<QCheckBox>(g.window.get(), "chbTab1_AddFilter")->setChecked(true);
        Grids::LbxInput().SetCellText(RowOfFile("Eagles - Desperado.mp3"), InCol::FTag,
                                      QStringLiteral("keep"));
        Control<QPushButton>(g.window.get(), "btnTab1_FilterMarkChoosen")->click();
        QCOMPARE(RowsWithMark(QStringLiteral("keep")), 1); // added, not replaced
    }

    void filterByRatingAndMood() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        auto* panel = g.window->findChild<FindFilterPanel*>();
        QVERIFY(panel);
        panel->RebuildQualityLists();
        auto* rating = Control<QComboBox>(g.window.get(), "cmbTab1_Filter(2)");
        auto* mood = Control<QComboBox>(g.window.get(), "cmbTab1_Filter(3)");
        QCOMPARE(rating->count(), 3); // no choice, "*", "***"
        QCOMPARE(mood->count(), 3);   // no choice, "happy", "sad"
        Choose(rating, QStringLiteral("***"));
        QCOMPARE(Control<QLabel>(g.window.get(), "lblTab1_CmbQualityCount")->text(), QStringLiteral("2 /6"));
        Control<QPushButton>(g.window.get(), "btnTab1_FilterMarkChoosen")->click();
        QCOMPARE(RowsWithMark(Mark::FoundFilter), 2); // the rating alone: no value chosen
        Choose(mood, QStringLiteral("happy"));
        QCOMPARE(Control<QLabel>(g.window.get(), "lblTab1_CmbQualityCount")->text(), QStringLiteral("2 /6"));
        Control<QPushButton>(g.window.get(), "btnTab1_FilterMarkChoosen")->click();
        QCOMPARE(RowsWithMark(Mark::FoundFilter), 1); // "***" and "happy": Abba in /m/a
        // No choice at all.
        Choose(rating, 0);
        Choose(mood, 0);
        Control<QPushButton>(g.window.get(), "btnTab1_FilterMarkChoosen")->click();
        QCOMPARE(g.prompt.LastText(), Caption(CapNothingChosen));
        // An empty list: its guard.
        Grids::LbxInput().Clear();
        Control<QPushButton>(g.window.get(), "btnTab1_FilterMarkChoosen")->click();
        QCOMPARE(g.prompt.LastText(), Caption(CapListEmpty));
    }

    void subTabsKeepTheirPlaces() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* page = g.window->findChild<InputDataPage*>();
        QTabWidget* sub1 = page->TabInput1_Sub1;
        QTabWidget* sub2 = page->TabInput1_Sub2;
        const int find = TabPositionOf(sub1, 1);
        QVERIFY(find >= 0);
        QCOMPARE(sub1->widget(find)->objectName(), QStringLiteral("pagTab1_FindFilter"));
        QCOMPARE(sub1->tabText(find), Caption(115));
        // The folder scan's tab is the first, labelled, and current after the start.
        QCOMPARE(sub1->widget(0)->objectName(), QStringLiteral("pagTab1_Read"));
        QVERIFY(!sub1->tabText(0).isEmpty());
        QCOMPARE(sub1->currentIndex(), 0);
        QCOMPARE(sub2->tabText(TabPositionOf(sub2, 0)), Caption(117));
        QCOMPARE(sub2->tabText(TabPositionOf(sub2, 3)), Caption(120));
        // A tab added later with a lower place goes before the higher ones.
        auto* rename = new QWidget;
        page->AddSubTab(sub2, rename, QStringLiteral("pagTab1_Test"), 2);
        QCOMPARE(sub2->indexOf(rename), TabPositionOf(sub2, 2));
        QVERIFY(sub2->indexOf(rename) < TabPositionOf(sub2, 3));
        QVERIFY(sub2->indexOf(rename) > TabPositionOf(sub2, 0));
        SetCaptions();
        QCOMPARE(sub2->tabText(sub2->indexOf(rename)), Caption(119));
        QVERIFY(InputDataPage::SelectSubTab(sub2, 3));
        QCOMPARE(sub2->currentWidget()->objectName(), QStringLiteral("pagTab1_Marks"));
        QVERIFY(InputDataPage::SelectSubTab(sub2, 4));
        QCOMPARE(sub2->currentWidget()->objectName(), QStringLiteral("pagTab1_Player"));
        QCOMPARE(sub2->tabText(TabPositionOf(sub2, 4)), Caption(121));
    }

private:
    static constexpr int kFilterEntries = 57;
};

QTEST_MAIN(TestFindUi)
#include "test_findui.moc"
