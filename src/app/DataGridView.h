#pragma once
// DataGridView: shows a DataGrid as a table with a footer row that stays aligned with
// the columns while they are resized, hidden or scrolled; header colours; multi-row
// selection kept in the grid itself; a header click sorts by that column.

#include <QWidget>

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

    // Column widths as the user left them, as one text (for the ColWidths store).
    QString ColumnWidthsText() const;
    void SetColumnWidthsText(const QString& text);

    // Sets the minimum width of columns firstCol.. to the width of their caption in
    // the header font, bold, so that no caption is cut off.
    void SetMinWidthsFromCaptions(int firstCol);
    // Column and order (1 ascending, 2 descending) of the last header click; 0 = none.
    int SortColumn() const;
    int SortOrder() const;

signals:
    void currentRowChanged(int row); // 1-based; follows clicks and keys
    void rowDoubleClicked(int row);
    void keyPressed(int key, int modifiers); // keys the view does not consume itself

private:
    struct Impl;
    Impl* d;
};
