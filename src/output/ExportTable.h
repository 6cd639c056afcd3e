#pragma once
// The part of a grid that an export writes: which columns, in which order, which rows,
// and the header texts. All writers read the grid through this view.

#include "core/DataGrid.h"

#include <QString>
#include <QStringView>
#include <vector>

class ExportTable {
public:
    // columnsMode 2: the shown columns, in their display order; any other value: all
    // columns in the grid's order. rowsMode 1: the selected rows; any other value: all
    // rows.
    ExportTable(const DataGrid& grid, int columnsMode, bool withHeader, int rowsMode);

    const DataGrid& Grid() const { return m_grid; }
    bool WithHeader() const { return m_withHeader; }
    int Cols() const { return int(m_cols.size()); }
    int Rows() const { return m_allRows ? m_grid.Rows() : int(m_rows.size()); }
    const GridColumn& Column(int c) const { return m_grid.Column(m_cols[std::size_t(c)]); }
    // The header text of a column: its caption, or its key when the caption is empty.
    QString Caption(int c) const;
    // c and r count from 0 here; the cell stays valid while the grid does not change.
    QStringView Cell(int r, int c) const {
        return m_grid.CellView(m_allRows ? r + 1 : m_rows[std::size_t(r)], m_cols[std::size_t(c)]);
    }

private:
    const DataGrid& m_grid;
    bool m_withHeader;
    bool m_allRows;
    std::vector<int> m_cols; // grid column numbers
    std::vector<int> m_rows; // grid row numbers when not all rows are written
};
