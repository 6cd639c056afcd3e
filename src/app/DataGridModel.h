#pragma once
// DataGridModel: the item model a QTableView needs, laid over a DataGrid. It copies
// nothing: every call reads the grid. Row and column counts are taken at each reset,
// so a view may paint safely while a locked grid changes underneath it.

#include <QAbstractTableModel>

class DataGrid;

class DataGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit DataGridModel(DataGrid* grid, QObject* parent = nullptr);

    DataGrid* grid() const { return m_grid; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Takes the grid's current row and column counts.
    void Reset();
    // Column definitions changed but not their number: headers are repainted.
    void HeadersChanged();
    void CellChanged(int row, int col);

private:
    bool Valid(int row, int col) const; // 1-based, against the grid as it is now

    DataGrid* m_grid;
    int m_rows = 0;
    int m_cols = 0;
};

// 0xBBGGRR to a QColor.
class QColor;
QColor ColorFromBgr(unsigned bgr);
