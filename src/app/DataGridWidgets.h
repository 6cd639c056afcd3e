#pragma once
// The parts of a DataGridView: the table with selection kept in the grid, the header
// that paints the column colours, and the footer row under the columns.

#include <QHeaderView>
#include <QTableView>
#include <QWidget>

class DataGrid;

// Header that paints a coloured section itself, so the colour shows with every style.
class DataGridHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit DataGridHeader(DataGrid* grid, QWidget* parent = nullptr);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

private:
    DataGrid* m_grid;
};

// The table. Selection lives in the DataGrid: the view's own selection model only
// carries the current cell, and mouse and keys write the grid's row flags.
class DataGridTable : public QTableView {
    Q_OBJECT
public:
    explicit DataGridTable(DataGrid* grid, QWidget* parent = nullptr);

    // Moves the current row as a key or click does: plain = select only this row,
    // extend = select from the anchor, keep = selection unchanged.
    enum class Move { Plain, Extend, Keep, Toggle };
    void GoToRow(int row, Move how);
    void ShowCurrentRow(int row, bool scroll); // follows CurRow of the grid
    int PageRows() const;

signals:
    void keyPressed(int key, int modifiers);
    void rowDoubleClicked(int row);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    DataGrid* m_grid;
    int m_anchor = 0; // 1-based row where a Shift range starts
    bool m_dragging = false;
    bool m_dragAdds = false; // a Ctrl drag adds to the selection
    int m_dragLast = 0;
};

// One cell per column under the table, kept in step with the header.
class DataGridFooter : public QWidget {
    Q_OBJECT
public:
    DataGridFooter(DataGrid* grid, QTableView* table, QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    // Left edge of the table's cells in footer coordinates.
    int CellOrigin() const;
    // The rectangle of a column's cell (1-based), empty when hidden or out of sight.
    QRect CellRect(int col) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    DataGrid* m_grid;
    QTableView* m_table;
};
