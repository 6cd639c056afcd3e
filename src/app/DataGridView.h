#pragma once
// DataGridView: shows a DataGrid as a table with a footer row that stays aligned with
// the columns while they are resized, hidden or scrolled; header colours; multi-row
// selection kept in the grid itself; a header click sorts by that column.
//
// The view reads the grid on every paint and keeps no copy: only the rows in sight are
// ever formatted. Mouse and keys write the grid's selection and CurRow; the grid's
// signals bring its changes to the screen. The grid must outlive the view.

#include <QWidget>
#include <functional>

class DataGrid;
class QTableView;

class DataGridView : public QWidget {
    Q_OBJECT
public:
    explicit DataGridView(DataGrid* grid, QWidget* parent = nullptr);
    ~DataGridView() override;

    DataGrid* grid() const;
    QTableView* table() const; // the inner view, for focus and key handling
    QWidget* footer() const;   // the footer row

    // Column widths as the user left them, as one text (for the ColWidths store): the
    // widths in twips of all columns in column order, separated by commas. Setting it
    // ignores damaged entries and keeps each column at least at its minimum width.
    QString ColumnWidthsText() const;
    void SetColumnWidthsText(const QString& text);

    // Sets the minimum width of columns firstCol.. to the width of their caption in
    // the header font, bold, so that no caption is cut off.
    void SetMinWidthsFromCaptions(int firstCol);
    // In-place editing of cells (a double click opens the editor; Enter takes the text,
    // Esc leaves the cell as it was). See DataGridModel::SetEditing; empty functions end
    // the editing.
    void SetCellEditing(std::function<bool(int row, int col)> editable,
                        std::function<bool(int row, int col, QString& text)> edited);
    // Column and order (1 ascending, 2 descending) of the last header click; 0 = none.
    int SortColumn() const;
    int SortOrder() const;
    // Whether a header click sorts (the default); off for grids whose row order means
    // something, as the caption table's row numbers do.
    void SetHeaderSort(bool on);

signals:
    void currentRowChanged(int row); // 1-based; follows clicks, keys and the grid's CurRow
    void rowDoubleClicked(int row);
    // Keys the view does not take for itself (it takes the arrows, Page Up/Down,
    // Home/End, Ctrl+Space); the event then goes on to the parent.
    void keyPressed(int key, int modifiers);

private:
    struct Impl;
    Impl* d;
};
