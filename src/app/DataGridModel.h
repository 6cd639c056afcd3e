#pragma once
// DataGridModel: the item model a QTableView needs, laid over a DataGrid. It copies
// nothing: every call reads the grid. Row and column counts are taken at each reset,
// so a view may paint safely while a locked grid changes underneath it.

#include <QAbstractTableModel>
#include <functional>

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
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // In-place editing (1-based row and column): `editable` tells which cells take an
    // edit; `edited` gets the new text (it may change it) and decides: true writes it into
    // the cell, false keeps the old text. Empty functions: nothing is editable.
    using EditableFn = std::function<bool(int row, int col)>;
    using EditedFn = std::function<bool(int row, int col, QString& text)>;
    void SetEditing(EditableFn editable, EditedFn edited);
    bool IsEditable(int row, int col) const;

    // Takes the grid's current row and column counts.
    void Reset();
    // Column definitions changed but not their number: headers are repainted.
    void HeadersChanged();
    void CellChanged(int row, int col);

private:
    bool Valid(int row, int col) const; // 1-based, against the grid as it is now

    DataGrid* m_grid;
    EditableFn m_editable;
    EditedFn m_edited;
    int m_rows = 0;
    int m_cols = 0;
};

// 0xBBGGRR to a QColor.
class QColor;
QColor ColorFromBgr(unsigned bgr);
