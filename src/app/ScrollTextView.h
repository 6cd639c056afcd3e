#pragma once
// ScrollTextView: draws the rows of LbxScrollText as the skin colours them: the visible
// rows of the mode from the top row on, each row filled in its back colour with the words
// in its text colour, bold where the mode says. Used by the scrolling text window and by
// the preview of the skin editor. Drawing is one pass over a few rows, so a step of the
// current row costs one repaint of a small widget.

#include "text/modScrollText.h"

#include <QWidget>

class DataGrid;

class ScrollTextView : public QWidget {
    Q_OBJECT
public:
    explicit ScrollTextView(QWidget* parent = nullptr);

    void SetGrid(DataGrid* grid) {
        m_grid = grid;
        update();
    }
    DataGrid* Grid() const { return m_grid; }
    void SetSkin(const ScrollSkin& skin); // font, colours, alignment
    const ScrollSkin& Skin() const { return m_skin; }
    bool LeftAligned() const { return m_left; }
    // The current row and the top row of the mode.
    void SetAct(int row);
    int Act() const { return m_act; }
    int TopRow() const { return m_top; }
    void SetTopRow(int row);
    // The plain list after the end of a song: black on white, the rows scroll.
    void SetStatic(bool on);
    bool IsStatic() const { return m_static; }
    // The preview of the skin editor: every row from row 1 on, `rows` of them (0: off).
    void SetPreviewRows(int rows);
    // Height of one row in pixels, from the skin's font (and the widest row's height).
    int RowHeight() const { return m_rowHeight; }
    int VisibleRows() const;
    // The width the longest words need (plus the margin when left aligned).
    int TextWidth() const;
    // The row at a point; 0 outside the rows.
    int RowAt(const QPoint& p) const;
    QFont RowFont(bool bold) const;

signals:
    void rowClicked(int row);
    void dragStarted();

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;

private:
    void updateMetrics();
    DataGrid* m_grid = nullptr;
    ScrollSkin m_skin;
    int m_act = 1;
    int m_top = 1;
    bool m_static = false;
    bool m_left = false; // the words start at the margin (else centred)
    int m_previewRows = 0;
    int m_rowHeight = 20;
    QPoint m_pressAt;
    bool m_pressed = false;
};

// 0xBBGGRR to a QColor.
QColor SkinColor(qint32 bgr);
// A QColor to 0xBBGGRR.
qint32 SkinValue(const QColor& c);
