// ScrollTextView: the rows of the scrolling text as the skin colours them.
#include "app/ScrollTextView.h"

#include "core/DataGrid.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

using namespace Scroll;

namespace {
constexpr int kMarginPx = 10; // the margin column (150 twips)
constexpr int kSidePx = 6;    // space at either side of centred words
} // namespace

QColor SkinColor(qint32 bgr) {
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}
qint32 SkinValue(const QColor& c) {
    return c.red() | (c.green() << 8) | (c.blue() << 16);
}

ScrollTextView::ScrollTextView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent); // every pixel is painted: no erase, no flicker
    setMouseTracking(false);
    updateMetrics();
}

QFont ScrollTextView::RowFont(bool bold) const {
    QFont f(m_skin.FontName); // a missing family is replaced by fontconfig's choice
    f.setPointSize(std::clamp(m_skin.FontSize, 4, 200));
    f.setBold(bold);
    f.setItalic(m_skin.FontItalic);
    f.setStyleStrategy(QFont::PreferAntialias);
    return f;
}

void ScrollTextView::SetSkin(const ScrollSkin& skin) {
    // 0 left, 2 centred; any other value keeps the alignment the rows had
    if (skin.Alignment == 0 || skin.Alignment == 2)
        m_left = skin.Alignment == 0;
    m_skin = skin;
    updateMetrics();
    SetAct(m_act);
}

void ScrollTextView::updateMetrics() {
    const QFontMetrics bold(RowFont(true)), plain(RowFont(m_skin.FontBold));
    m_rowHeight = std::max(bold.height(), plain.height()) + std::max(2, bold.height() / 7);
    updateGeometry();
    update();
}

void ScrollTextView::SetAct(int row) {
    m_act = std::max(1, row);
    if (m_previewRows > 0)
        m_top = 1;
    else if (!m_static)
        m_top = ScrollTopRow(m_skin.Mode, m_act);
    update();
}

void ScrollTextView::SetTopRow(int row) {
    const int last = m_grid ? std::max(1, m_grid->Rows() - VisibleRows() + 1) : 1;
    m_top = std::clamp(row, 1, last);
    update();
}

void ScrollTextView::SetStatic(bool on) {
    m_static = on;
    update();
}

void ScrollTextView::SetPreviewRows(int rows) {
    m_previewRows = rows;
    SetAct(m_act);
}

int ScrollTextView::VisibleRows() const {
    if (m_previewRows > 0)
        return m_previewRows;
    if (m_static)
        return std::max(1, height() / std::max(1, m_rowHeight));
    return ScrollVisibleRows(m_skin.Mode);
}

int ScrollTextView::TextWidth() const {
    if (!m_grid)
        return 0;
    const QFontMetrics fm(RowFont(true));
    int w = 0;
    for (int r = 1; r <= m_grid->Rows(); ++r) {
        const QString t = m_grid->CellText(r, ColText);
        if (!t.isEmpty() && !t.contains(QLatin1String(":/")))
            w = std::max(w, fm.horizontalAdvance(t));
    }
    return w + 2 * kSidePx + (m_left ? kMarginPx : 0);
}

int ScrollTextView::RowAt(const QPoint& p) const {
    const int i = p.y() / std::max(1, m_rowHeight);
    const int row = m_top + i;
    if (!m_grid || p.y() < 0 || i >= VisibleRows() || row > m_grid->Rows())
        return 0;
    return row;
}

void ScrollTextView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QColor listBack = m_static ? Qt::white : SkinColor(m_skin.ListBack);
    p.fillRect(rect(), listBack);
    if (!m_grid)
        return;
    p.setRenderHint(QPainter::TextAntialiasing);
    const int rows = VisibleRows();
    const bool left = m_left;
    const QFont plain = RowFont(m_skin.FontBold), bold = RowFont(true);
    for (int i = 0; i < rows; ++i) {
        const int row = m_top + i;
        if (row > m_grid->Rows())
            break;
        const QRect r(0, i * m_rowHeight, width(), m_rowHeight);
        ScrollRowLook look;
        if (m_static)
            look = {White, Black, false};
        else
            look = ScrollRowStyle(m_skin, m_act, row);
        const QColor back = SkinColor(look.back), fore = SkinColor(look.fore);
        if (back != listBack)
            p.fillRect(r, back);
        const QStringView text = m_grid->CellView(row, ColText);
        if (text.isEmpty() || fore == back)
            continue;
        p.setFont(look.bold ? bold : plain);
        p.setPen(fore);
        const QRect tr = r.adjusted(left ? kMarginPx + kSidePx : kSidePx, 0, -kSidePx, 0);
        p.drawText(tr, (left ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter | Qt::TextSingleLine,
                   text.toString());
    }
}

void ScrollTextView::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(e);
        return;
    }
    m_pressed = true;
    m_pressAt = e->position().toPoint();
}

void ScrollTextView::mouseMoveEvent(QMouseEvent* e) {
    if (m_pressed &&
        (e->position().toPoint() - m_pressAt).manhattanLength() >= QApplication::startDragDistance()) {
        m_pressed = false;
        emit dragStarted();
    }
}

void ScrollTextView::mouseReleaseEvent(QMouseEvent* e) {
    if (!m_pressed || e->button() != Qt::LeftButton)
        return;
    m_pressed = false;
    if (const int row = RowAt(e->position().toPoint()))
        emit rowClicked(row);
}

void ScrollTextView::wheelEvent(QWheelEvent* e) {
    if (!m_static)
        return;
    SetTopRow(m_top - e->angleDelta().y() / 40);
}
