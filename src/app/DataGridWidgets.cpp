#include "app/DataGridWidgets.h"

#include "app/DataGridModel.h"
#include "core/DataGrid.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <algorithm>

namespace {

Qt::Alignment ColumnAlignment(const DataGrid* grid, int col) {
    switch (grid->Column(col).align) {
    case Align::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case Align::Center:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case Align::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

// Black or white, whichever reads better on `bg`.
QColor TextOn(const QColor& bg) {
    const int luma = (bg.red() * 299 + bg.green() * 587 + bg.blue() * 114) / 1000;
    return luma < 140 ? QColor(Qt::white) : QColor(Qt::black);
}

} // namespace

// ---- header --------------------------------------------------------------------------

DataGridHeader::DataGridHeader(DataGrid* grid, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), m_grid(grid) {
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(false);
    setStretchLastSection(false);
    setSortIndicatorShown(true);
    setSortIndicator(-1, Qt::AscendingOrder);
    setTextElideMode(Qt::ElideRight);
    setMinimumSectionSize(8);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void DataGridHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    const int col = logicalIndex + 1;
    if (!rect.isValid() || col > m_grid->Cols() || m_grid->Column(col).headerColor == kNoColor) {
        QHeaderView::paintSection(painter, rect, logicalIndex);
        return;
    }
    // A coloured section is painted here: most styles draw the header from their own
    // gradient and would hide the colour. The colour marks the group of columns as a pale
    // tint with a band of the full colour along the bottom edge, so that the header stays
    // readable and does not look like a selection.
    const QColor band = ColorFromBgr(m_grid->Column(col).headerColor);
    const QColor base = palette().color(QPalette::Button);
    const QColor bg =
        QColor::fromRgbF(base.redF() * 0.78 + band.redF() * 0.22, base.greenF() * 0.78 + band.greenF() * 0.22,
                         base.blueF() * 0.78 + band.blueF() * 0.22);
    constexpr int kBand = 3;
    painter->save();
    painter->fillRect(rect, bg);
    painter->fillRect(QRect(rect.left(), rect.bottom() - kBand + 1, rect.width(), kBand), band);
    painter->setPen(palette().color(QPalette::Mid));
    painter->drawLine(rect.topRight(), rect.bottomRight());
    QRect textRect = rect.adjusted(4, 0, -4, 0);
    if (isSortIndicatorShown() && sortIndicatorSection() == logicalIndex) {
        QStyleOptionHeader opt;
        opt.initFrom(this);
        const int arrow = std::min(rect.height() / 2, 10);
        opt.rect = QRect(rect.right() - arrow - 4, rect.center().y() - arrow / 2, arrow, arrow);
        opt.sortIndicator = sortIndicatorOrder() == Qt::AscendingOrder ? QStyleOptionHeader::SortDown
                                                                       : QStyleOptionHeader::SortUp;
        opt.palette.setColor(QPalette::ButtonText, TextOn(bg));
        opt.palette.setColor(QPalette::Text, TextOn(bg));
        opt.palette.setColor(QPalette::WindowText, TextOn(bg));
        style()->drawPrimitive(QStyle::PE_IndicatorHeaderArrow, &opt, painter, this);
        textRect.setRight(opt.rect.left() - 2);
    }
    painter->setPen(TextOn(bg));
    painter->setFont(font());
    const QString text =
        fontMetrics().elidedText(m_grid->Column(col).caption, Qt::ElideRight, textRect.width());
    painter->drawText(textRect, int(ColumnAlignment(m_grid, col)), text);
    painter->restore();
}

// ---- table ---------------------------------------------------------------------------

DataGridTable::DataGridTable(DataGrid* grid, QWidget* parent) : QTableView(parent), m_grid(grid) {
    setHorizontalHeader(new DataGridHeader(grid, this));
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setAutoScroll(false);
    // Uniform rows: the view never asks a row for its height, so 100,000 rows cost
    // nothing until they come into sight.
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(4);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
}

int DataGridTable::PageRows() const {
    const int h = verticalHeader()->defaultSectionSize();
    return std::max(1, viewport()->height() / std::max(h, 1));
}

void DataGridTable::ShowCurrentRow(int row, bool scroll) {
    QAbstractItemModel* m = model();
    if (!m)
        return;
    if (row < 1 || row > m->rowCount()) {
        selectionModel()->setCurrentIndex(QModelIndex(), QItemSelectionModel::NoUpdate);
        return;
    }
    int col = currentIndex().isValid() ? currentIndex().column() : columnAt(0);
    if (col < 0)
        col = 0;
    selectionModel()->setCurrentIndex(m->index(row - 1, col), QItemSelectionModel::NoUpdate);
    if (!scroll)
        return;
    // Vertical only: the columns stay where the user scrolled them.
    QScrollBar* bar = verticalScrollBar();
    const int first = bar->value();
    const int page = PageRows();
    if (row - 1 < first)
        bar->setValue(row - 1);
    else if (row - 1 >= first + page)
        bar->setValue(row - page);
}

void DataGridTable::GoToRow(int row, Move how) {
    const int rows = m_grid->Rows();
    if (rows == 0)
        return;
    row = std::clamp(row, 1, rows);
    if (m_anchor < 1 || m_anchor > rows)
        m_anchor = m_grid->CurRow() >= 1 ? m_grid->CurRow() : row;
    switch (how) {
    case Move::Plain:
        m_grid->ClearSelection();
        m_grid->SetSelected(row, true);
        m_anchor = row;
        break;
    case Move::Extend:
        m_grid->ClearSelection();
        m_grid->SelectRange(m_anchor, row, true);
        break;
    case Move::Toggle:
        m_grid->SetSelected(row, !m_grid->IsSelected(row));
        m_anchor = row;
        break;
    case Move::Keep:
        break;
    }
    m_grid->SetCurRow(row);
    ShowCurrentRow(row, true);
}

void DataGridTable::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    const QModelIndex idx = indexAt(event->position().toPoint());
    if (!idx.isValid() || idx.row() >= m_grid->Rows())
        return;
    const int row = idx.row() + 1;
    const Qt::KeyboardModifiers mods = event->modifiers();
    selectionModel()->setCurrentIndex(idx, QItemSelectionModel::NoUpdate);
    if (event->button() == Qt::LeftButton) {
        if ((mods & Qt::ShiftModifier) && (mods & Qt::ControlModifier)) {
            m_grid->SelectRange(m_anchor >= 1 ? m_anchor : row, row, true);
            GoToRow(row, Move::Keep);
        } else if (mods & Qt::ShiftModifier) {
            GoToRow(row, Move::Extend);
        } else if (mods & Qt::ControlModifier) {
            GoToRow(row, Move::Toggle);
        } else {
            GoToRow(row, Move::Plain);
        }
        m_dragging = !(mods & Qt::ShiftModifier);
        m_dragAdds = mods & Qt::ControlModifier;
        m_dragLast = row;
    } else if (event->button() == Qt::RightButton) {
        // A right click on a selected row keeps the selection for the context menu.
        GoToRow(row, m_grid->IsSelected(row) ? Move::Keep : Move::Plain);
    }
}

void DataGridTable::mouseMoveEvent(QMouseEvent* event) {
    if (!m_dragging || !(event->buttons() & Qt::LeftButton)) {
        QTableView::mouseMoveEvent(event);
        return;
    }
    const int y = event->position().toPoint().y();
    int idx = rowAt(std::clamp(y, 0, viewport()->height() - 1));
    if (y < 0 && idx > 0)
        --idx; // above the rows: pull the view up a row
    else if (y >= viewport()->height() && idx >= 0 && idx + 1 < m_grid->Rows())
        ++idx;
    if (idx < 0)
        return;
    const int row = idx + 1;
    if (row == m_dragLast)
        return;
    m_dragLast = row;
    if (!m_dragAdds)
        m_grid->ClearSelection();
    m_grid->SelectRange(m_anchor, row, true);
    GoToRow(row, Move::Keep);
}

void DataGridTable::mouseReleaseEvent(QMouseEvent* event) {
    m_dragging = false;
    QTableView::mouseReleaseEvent(event);
}

void DataGridTable::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex idx = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && idx.isValid() && (model()->flags(idx) & Qt::ItemIsEditable)) {
        // In-place editing: the double click opens the cell's editor.
        setCurrentIndex(idx);
        edit(idx);
        event->accept();
        return;
    }
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && idx.isValid() && idx.row() < m_grid->Rows())
        emit rowDoubleClicked(idx.row() + 1);
}

void DataGridTable::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers mods = event->modifiers();
    const bool shift = mods & Qt::ShiftModifier;
    const bool ctrl = mods & Qt::ControlModifier;
    const int rows = m_grid->Rows();
    const int cur = m_grid->CurRow();
    int target = 0;
    bool navigation = true;
    switch (event->key()) {
    case Qt::Key_Up:
        target = cur - 1;
        break;
    case Qt::Key_Down:
        target = cur + 1;
        break;
    case Qt::Key_PageUp:
        target = cur - PageRows();
        break;
    case Qt::Key_PageDown:
        target = cur + PageRows();
        break;
    case Qt::Key_Home:
        target = 1;
        break;
    case Qt::Key_End:
        target = rows;
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (mods & ~(Qt::ShiftModifier | Qt::KeypadModifier)) {
            navigation = false;
            break;
        }
        horizontalScrollBar()->triggerAction(event->key() == Qt::Key_Left
                                                 ? QAbstractSlider::SliderSingleStepSub
                                                 : QAbstractSlider::SliderSingleStepAdd);
        event->accept();
        return;
    case Qt::Key_Space:
        if (ctrl && !shift && cur >= 1) {
            GoToRow(cur, Move::Toggle);
            event->accept();
            return;
        }
        navigation = false;
        break;
    default:
        navigation = false;
        break;
    }
    if (navigation && !(mods & Qt::AltModifier)) {
        if (rows > 0)
            GoToRow(std::clamp(target, 1, rows), shift ? Move::Extend : (ctrl ? Move::Keep : Move::Plain));
        event->accept();
        return;
    }
    // Everything else belongs to the window that shows the grid; a modifier alone
    // says nothing yet.
    switch (event->key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_Meta:
    case Qt::Key_AltGr:
        break;
    default:
        emit keyPressed(event->key(), mods.toInt());
    }
    event->ignore();
}

// ---- footer --------------------------------------------------------------------------

DataGridFooter::DataGridFooter(DataGrid* grid, QTableView* table, QWidget* parent)
    : QWidget(parent), m_grid(grid), m_table(table) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAutoFillBackground(false);
}

QSize DataGridFooter::sizeHint() const {
    return QSize(100, fontMetrics().height() + 6);
}

int DataGridFooter::CellOrigin() const {
    const QWidget* vp = m_table->viewport();
    return mapFrom(window(), vp->mapTo(window(), QPoint(0, 0))).x();
}

QRect DataGridFooter::CellRect(int col) const {
    const QHeaderView* h = m_table->horizontalHeader();
    const int logical = col - 1;
    if (logical < 0 || logical >= h->count() || h->isSectionHidden(logical))
        return {};
    const int x = CellOrigin() + h->sectionViewportPosition(logical);
    return QRect(x, 0, h->sectionSize(logical), height());
}

void DataGridFooter::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QPalette& pal = palette();
    p.fillRect(rect(), pal.button());
    p.setPen(pal.mid().color());
    p.drawLine(0, 0, width() - 1, 0);
    const int origin = CellOrigin();
    const int right = origin + m_table->viewport()->width();
    p.setClipRect(QRect(origin, 0, right - origin, height()));
    const QHeaderView* h = m_table->horizontalHeader();
    const int cols = std::min(h->count(), m_grid->Cols());
    const QFontMetrics fm = fontMetrics();
    for (int v = 0; v < h->count(); ++v) {
        const int logical = h->logicalIndex(v);
        if (logical < 0 || logical >= cols || h->isSectionHidden(logical))
            continue;
        const QRect r = CellRect(logical + 1);
        if (r.right() < origin || r.left() > right)
            continue;
        p.setPen(pal.mid().color());
        p.drawLine(r.right(), 1, r.right(), height() - 1);
        const QString& text = m_grid->Column(logical + 1).footerText;
        if (text.isEmpty())
            continue;
        const QRect tr = r.adjusted(3, 1, -4, 0);
        p.setPen(pal.buttonText().color());
        p.drawText(tr, int(ColumnAlignment(m_grid, logical + 1)),
                   fm.elidedText(text, Qt::ElideRight, tr.width()));
    }
}
