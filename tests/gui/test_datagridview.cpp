// Window tests of DataGridView: footer alignment, selection by mouse and keys, header
// sort, widths, signals.

#include "app/DataGridModel.h"
#include "app/DataGridView.h"
#include "app/DataGridWidgets.h"
#include "core/DataGrid.h"
#include "platform/PosixFile.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QtTest>
#include <memory>

namespace {

std::unique_ptr<DataGrid> MakeGrid(int rows, int cols = 4) {
    auto g = std::make_unique<DataGrid>();
    for (int c = 1; c <= cols; ++c)
        g->AddColumn(QStringLiteral("K%1").arg(c), QStringLiteral("Col %1").arg(c), 1500,
                     c == 2 ? Align::Right : Align::Left, true, c == 2 ? SortType::Number : SortType::Text);
    g->LockUpdate(true);
    for (int r = 1; r <= rows; ++r) {
        QStringList cells;
        for (int c = 1; c <= cols; ++c)
            cells << (c == 2 ? QString::number((r * 37) % 101) : QStringLiteral("r%1c%2").arg(r).arg(c));
        g->AddRow(cells);
    }
    g->LockUpdate(false);
    return g;
}

} // namespace

class TestDataGridView : public QObject {
    Q_OBJECT

    DataGridFooter* Footer(DataGridView& v) { return qobject_cast<DataGridFooter*>(v.footer()); }

    // Global x of a column's header section and of its footer cell.
    void CheckAligned(DataGridView& v, int col) {
        QHeaderView* h = v.table()->horizontalHeader();
        const int headerX = h->viewport()->mapToGlobal(QPoint(h->sectionViewportPosition(col - 1), 0)).x();
        const QRect cell = Footer(v)->CellRect(col);
        QVERIFY(!cell.isEmpty());
        QCOMPARE(Footer(v)->mapToGlobal(cell.topLeft()).x(), headerX);
        QCOMPARE(cell.width(), h->sectionSize(col - 1));
    }

    QPoint RowPoint(DataGridView& v, int row, int col = 1) {
        return v.table()->visualRect(v.table()->model()->index(row - 1, col - 1)).center();
    }

private slots:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void widthsFromTwips() {
        auto g = MakeGrid(5);
        g->SetColumnWidth(3, 3000);
        DataGridView v(g.get());
        QCOMPARE(v.table()->horizontalHeader()->sectionSize(0), 100);
        QCOMPARE(v.table()->horizontalHeader()->sectionSize(2), 200);
    }

    void footerFollowsResizeHideMoveScroll() {
        auto g = MakeGrid(20, 12);
        g->SetFooterText(2, QStringLiteral("42"));
        DataGridView v(g.get());
        v.resize(500, 300);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        for (int c = 1; c <= 12; ++c)
            CheckAligned(v, c);
        // resize
        v.table()->horizontalHeader()->resizeSection(0, 180);
        CheckAligned(v, 2);
        QCOMPARE(g->Column(1).width, 180 * 15);
        // hide
        g->SetColumnVisible(1, false);
        QVERIFY(Footer(v)->CellRect(1).isEmpty());
        CheckAligned(v, 2);
        QCOMPARE(Footer(v)->CellRect(2).left(), Footer(v)->CellOrigin());
        g->SetColumnVisible(1, true);
        // move
        v.table()->horizontalHeader()->moveSection(0, 3);
        for (int c = 1; c <= 4; ++c)
            CheckAligned(v, c);
        // horizontal scroll
        QScrollBar* bar = v.findChild<QScrollBar*>(QStringLiteral("hbar"));
        QVERIFY(bar);
        QVERIFY(bar->isVisible());
        const int before = Footer(v)->CellRect(5).left();
        bar->setValue(120);
        QCOMPARE(v.table()->horizontalScrollBar()->value(), 120);
        QCOMPARE(Footer(v)->CellRect(5).left(), before - 120);
        CheckAligned(v, 5);
        // and the view widening
        v.resize(900, 300);
        QApplication::processEvents();
        CheckAligned(v, 6);
    }

    void minimumWidth() {
        auto g = MakeGrid(3);
        g->Column(2).minWidth = 1200; // 80 px
        g->ColumnsChanged();
        DataGridView v(g.get());
        v.table()->horizontalHeader()->resizeSection(1, 20);
        QCOMPARE(v.table()->horizontalHeader()->sectionSize(1), 80);
        v.SetMinWidthsFromCaptions(1);
        QVERIFY(g->Column(1).minWidth > 0);
        QVERIFY(v.table()->horizontalHeader()->sectionSize(0) * 15 >= g->Column(1).minWidth);
    }

    void columnWidthsText() {
        auto g = MakeGrid(3);
        DataGridView v(g.get());
        v.table()->horizontalHeader()->resizeSection(2, 77);
        const QString text = v.ColumnWidthsText();
        QCOMPARE(text, QStringLiteral("1500,1500,1155,1500"));
        auto g2 = MakeGrid(3);
        DataGridView v2(g2.get());
        v2.SetColumnWidthsText(text);
        QCOMPARE(v2.table()->horizontalHeader()->sectionSize(2), 77);
        // damaged or short texts change only what they can
        v2.SetColumnWidthsText(QStringLiteral("x,-5,,900"));
        QCOMPARE(v2.table()->horizontalHeader()->sectionSize(3), 60);
        QCOMPARE(v2.table()->horizontalHeader()->sectionSize(0), 100);
        v2.SetColumnWidthsText(QString());
        QCOMPARE(v2.ColumnWidthsText(), QStringLiteral("1500,1500,1155,900"));
    }

    void clickSelection() {
        auto g = MakeGrid(30);
        DataGridView v(g.get());
        v.resize(600, 400);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        QSignalSpy cur(&v, &DataGridView::currentRowChanged);
        QWidget* vp = v.table()->viewport();
        QTest::mouseClick(vp, Qt::LeftButton, Qt::NoModifier, RowPoint(v, 3));
        QCOMPARE(g->SelCount(), 1);
        QVERIFY(g->IsSelected(3));
        QCOMPARE(g->CurRow(), 3);
        QVERIFY(!cur.isEmpty());
        QCOMPARE(cur.last().at(0).toInt(), 3);
        QTest::mouseClick(vp, Qt::LeftButton, Qt::ControlModifier, RowPoint(v, 6));
        QCOMPARE(g->SelCount(), 2);
        QVERIFY(g->IsSelected(3) && g->IsSelected(6));
        QTest::mouseClick(vp, Qt::LeftButton, Qt::ControlModifier, RowPoint(v, 3));
        QCOMPARE(g->SelCount(), 1);
        QVERIFY(!g->IsSelected(3));
        QTest::mouseClick(vp, Qt::LeftButton, Qt::ShiftModifier, RowPoint(v, 9));
        // the Ctrl-click on row 3 set the anchor there
        QCOMPARE(g->SelCount(), 7);
        QCOMPARE(g->SelRow(1), 3);
        QCOMPARE(g->SelRow(7), 9);
        QCOMPARE(g->CurRow(), 9);
        QTest::mouseClick(vp, Qt::LeftButton, Qt::NoModifier, RowPoint(v, 2));
        QCOMPARE(g->SelCount(), 1);
        QVERIFY(g->IsSelected(2));
        // the highlight comes from the grid's flags and colour
        const QVariant bg = v.table()->model()->index(1, 0).data(Qt::BackgroundRole);
        QCOMPARE(bg.value<QBrush>().color(), QColor(0xFF, 0xFF, 0xC0));
        QVERIFY(!v.table()->model()->index(0, 0).data(Qt::BackgroundRole).isValid());
    }

    void keyboardSelection() {
        auto g = MakeGrid(100);
        DataGridView v(g.get());
        v.resize(600, 300);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        QTest::mouseClick(v.table()->viewport(), Qt::LeftButton, Qt::NoModifier, RowPoint(v, 5));
        QTest::keyClick(v.table(), Qt::Key_Down);
        QCOMPARE(g->CurRow(), 6);
        QCOMPARE(g->SelectedRows(), std::vector<int>{6});
        QTest::keyClick(v.table(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(v.table(), Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(g->SelectedRows(), (std::vector<int>{6, 7, 8}));
        QTest::keyClick(v.table(), Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(g->SelectedRows(), (std::vector<int>{6, 7}));
        QTest::keyClick(v.table(), Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(g->CurRow(), 8);
        QCOMPARE(g->SelCount(), 2);
        QTest::keyClick(v.table(), Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(g->SelectedRows(), (std::vector<int>{6, 7, 8}));
        QTest::keyClick(v.table(), Qt::Key_End);
        QCOMPARE(g->CurRow(), 100);
        QCOMPARE(g->SelectedRows(), std::vector<int>{100});
        // the last row came into sight
        QVERIFY(v.table()->viewport()->rect().contains(RowPoint(v, 100)));
        QTest::keyClick(v.table(), Qt::Key_PageUp);
        const int page = g->CurRow();
        QVERIFY(page < 100 && page > 50);
        QTest::keyClick(v.table(), Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(g->CurRow(), 1);
        QCOMPARE(g->SelCount(), page);
        QTest::keyClick(v.table(), Qt::Key_Up);
        QCOMPARE(g->CurRow(), 1);
    }

    void otherKeysAndDoubleClick() {
        auto g = MakeGrid(10);
        DataGridView v(g.get());
        v.resize(600, 300);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        QSignalSpy keys(&v, &DataGridView::keyPressed);
        QSignalSpy dbl(&v, &DataGridView::rowDoubleClicked);
        QTest::keyClick(v.table(), Qt::Key_Delete);
        QTest::keyClick(v.table(), Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(keys.size(), 2);
        QCOMPARE(keys.at(0).at(0).toInt(), int(Qt::Key_Delete));
        QCOMPARE(keys.at(1).at(1).toInt(), int(Qt::ControlModifier));
        QTest::keyClick(v.table(), Qt::Key_Down);
        QCOMPARE(keys.size(), 2); // navigation is the view's own
        QTest::mouseDClick(v.table()->viewport(), Qt::LeftButton, Qt::NoModifier, RowPoint(v, 4));
        QCOMPARE(dbl.size(), 1);
        QCOMPARE(dbl.at(0).at(0).toInt(), 4);
    }

    void headerClickSorts() {
        auto g = MakeGrid(50);
        DataGridView v(g.get());
        v.resize(600, 300);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        g->SetCurRow(20);
        QHeaderView* h = v.table()->horizontalHeader();
        const QPoint p(h->sectionViewportPosition(1) + 10, h->height() / 2);
        QTest::mouseClick(h->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QCOMPARE(g->CurRow(), 1);
        QCOMPARE(v.SortColumn(), 2);
        QCOMPARE(v.SortOrder(), 1);
        for (int r = 2; r <= 50; ++r) // number sort, not text sort
            QVERIFY(g->CellText(r - 1, 2).toInt() <= g->CellText(r, 2).toInt());
        QCOMPARE(h->sortIndicatorSection(), 1);
        QTest::mouseClick(h->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QCOMPARE(v.SortOrder(), 2);
        for (int r = 2; r <= 50; ++r)
            QVERIFY(g->CellText(r - 1, 2).toInt() >= g->CellText(r, 2).toInt());
        QCOMPARE(v.table()->model()->index(0, 1).data().toString(), g->CellText(1, 2));
        // another column starts ascending again
        QTest::mouseClick(h->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, h->height() / 2));
        QCOMPARE(v.SortColumn(), 1);
        QCOMPARE(v.SortOrder(), 1);
    }

    void gridSignalsReachTheView() {
        auto g = MakeGrid(10);
        DataGridView v(g.get());
        v.resize(600, 300);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        QAbstractItemModel* m = v.table()->model();
        g->SetCellText(2, 1, QStringLiteral("changed"));
        QCOMPARE(m->index(1, 0).data().toString(), QStringLiteral("changed"));
        g->AddItem(QStringLiteral("new\t1"));
        QCOMPARE(m->rowCount(), 11);
        g->AddColumn(QStringLiteral("K5"), QStringLiteral("Five"), 750);
        QCOMPARE(m->columnCount(), 5);
        QCOMPARE(v.table()->horizontalHeader()->sectionSize(4), 50);
        g->SetColumnCaption(5, QStringLiteral("Fünf"));
        QCOMPARE(m->headerData(4, Qt::Horizontal).toString(), QStringLiteral("Fünf"));
        g->Column(5).headerColor = 0xFF0000;
        g->ColumnsChanged();
        QCOMPARE(m->headerData(4, Qt::Horizontal, Qt::BackgroundRole).value<QBrush>().color(),
                 QColor(0, 0, 255));
        // while locked the view keeps its counts and paints safely
        g->LockUpdate(true);
        g->Clear();
        QCOMPARE(m->rowCount(), 11);
        v.table()->viewport()->repaint();
        Footer(v)->repaint();
        QVERIFY(!m->index(3, 0).data().isValid());
        g->LockUpdate(false);
        QCOMPARE(m->rowCount(), 0);
        // the current row from code shows in the view
        auto g2 = MakeGrid(1000);
        DataGridView v2(g2.get());
        v2.resize(600, 300);
        v2.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v2));
        g2->SetCurRow(700);
        QCOMPARE(v2.table()->currentIndex().row(), 699);
        QVERIFY(v2.table()->viewport()->rect().contains(RowPoint(v2, 700)));
    }

    void resetKeepsTheScrollPosition() {
        // A changed row or a new row at the end must not throw the user back to the top.
        auto g = MakeGrid(2000);
        DataGridView v(g.get());
        v.resize(600, 300);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        g->SetCurRow(1000);
        const int value = v.table()->verticalScrollBar()->value();
        QVERIFY(value > 900);
        g->SetRowCells(1000, {"changed"});
        QCOMPARE(v.table()->verticalScrollBar()->value(), value);
        g->AddItem("new");
        QCOMPARE(v.table()->verticalScrollBar()->value(), value);
        QCOMPARE(v.table()->currentIndex().row(), 999);
        g->LockUpdate(true);
        g->SetCellText(1000, 1, "x");
        g->LockUpdate(false);
        QCOMPARE(v.table()->verticalScrollBar()->value(), value);
    }

    void dragAndRightClick() {
        auto g = MakeGrid(30);
        DataGridView v(g.get());
        v.resize(600, 400);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        QWidget* vp = v.table()->viewport();
        QTest::mousePress(vp, Qt::LeftButton, Qt::NoModifier, RowPoint(v, 2));
        QMouseEvent move(QEvent::MouseMove, QPointF(RowPoint(v, 6)), vp->mapToGlobal(QPointF(RowPoint(v, 6))),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &move);
        QTest::mouseRelease(vp, Qt::LeftButton, Qt::NoModifier, RowPoint(v, 6));
        QCOMPARE(g->SelectedRows(), (std::vector<int>{2, 3, 4, 5, 6}));
        QCOMPARE(g->CurRow(), 6);
        // a right click inside the selection keeps it, outside it selects that row
        QTest::mouseClick(vp, Qt::RightButton, Qt::NoModifier, RowPoint(v, 4));
        QCOMPARE(g->SelCount(), 5);
        QCOMPARE(g->CurRow(), 4);
        QTest::mouseClick(vp, Qt::RightButton, Qt::NoModifier, RowPoint(v, 9));
        QCOMPARE(g->SelectedRows(), std::vector<int>{9});
    }

    void headerColourIsPainted() {
        auto g = MakeGrid(3);
        g->Column(2).headerColor = 0xFF0000; // blue
        g->Column(3).headerColor = 0x0080FF; // orange
        g->ColumnsChanged();
        DataGridView v(g.get());
        v.resize(600, 200);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        QHeaderView* h = v.table()->horizontalHeader();
        const QImage img = h->grab().toImage();
        // The band along the bottom edge carries the full colour, the section a tint of it.
        auto band = [&](int col) {
            return img.pixelColor(h->sectionViewportPosition(col - 1) + 3, h->height() - 2);
        };
        auto body = [&](int col) {
            return img.pixelColor(h->sectionViewportPosition(col - 1) + 3, h->height() / 2 - 4);
        };
        QCOMPARE(band(2), QColor(0, 0, 255));
        QCOMPARE(band(3), QColor(255, 128, 0));
        QVERIFY(band(1) != QColor(0, 0, 255) && band(1) != QColor(255, 128, 0));
        QVERIFY(body(2).blue() > body(2).red()); // a blue tint
        QVERIFY(body(3).red() > body(3).blue()); // an orange tint
        QVERIFY(body(2).lightness() > 150);      // pale enough for black text
        // the selected row is painted in the highlight colour
        g->SetSelected(2, true);
        QApplication::processEvents();
        const QImage rows = v.table()->viewport()->grab().toImage();
        const QPoint p = RowPoint(v, 2, 1) + QPoint(v.table()->columnWidth(0) / 2 - 3, 0);
        QCOMPARE(rows.pixelColor(p), QColor(0xFF, 0xFF, 0xC0));
    }

    void autoSize() {
        auto g = MakeGrid(10);
        g->SetCellText(7, 3, QString(16, QLatin1Char('W')));
        DataGridView v(g.get());
        g->DoColumnAutoSize(3);
        const int px = v.table()->horizontalHeader()->sectionSize(2);
        const int text = v.table()->fontMetrics().horizontalAdvance(QString(16, QLatin1Char('W')));
        QVERIFY(px >= text);
        QVERIFY(px <= text + 40);
        QCOMPARE(g->Column(3).width, px * 15);
        // A very long text: the fitted width stops at a third of the view (at least 300).
        v.resize(1500, 400);
        g->SetCellText(8, 3, QString(300, QLatin1Char('W')));
        g->DoColumnAutoSize(3);
        const int capped = v.table()->horizontalHeader()->sectionSize(2);
        const int third = std::max(v.table()->viewport()->width(), 900) / 3;
        QVERIFY2(capped <= third + 12, qPrintable(QString::number(capped)));
        QVERIFY(capped >= third);
    }

    void largeGrid() {
        auto g = MakeGrid(100000, 8);
        QElapsedTimer t;
        t.start();
        DataGridView v(g.get());
        v.resize(800, 600);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        g->SelectAll();
        QTest::keyClick(v.table(), Qt::Key_End);
        QCOMPARE(g->CurRow(), 100000);
        QCOMPARE(g->SelCount(), 1);
        QVERIFY2(t.elapsed() < 5000, qPrintable(QString::number(t.elapsed())));
    }

    // A file name that is no UTF-8 is shown readably with its mark; the cell keeps the bytes.
    void aNameThatIsNoUtf8IsShownReadably() {
        DataGrid g;
        g.AddColumn(QStringLiteral("Name"), QStringLiteral("Name"));
        const QString name = PosixFile::FromNative("M\xFCller.mp3");
        g.AddRow({name});
        g.AddRow({QStringLiteral("Müller.mp3")});
        DataGridView v(&g);
        QAbstractItemModel* m = v.table()->model();
        QCOMPARE(m->data(m->index(0, 0)).toString(), QStringLiteral("Müller.mp3 (≠UTF-8)"));
        QCOMPARE(m->data(m->index(1, 0)).toString(), QStringLiteral("Müller.mp3"));
        QCOMPARE(PosixFile::Native(g.CellText(1, 1)), QByteArray("M\xFCller.mp3"));
    }
};

QTEST_MAIN(TestDataGridView)
#include "test_datagridview.moc"
