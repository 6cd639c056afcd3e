#include "output/ExportTable.h"

ExportTable::ExportTable(const DataGrid& grid, int columnsMode, bool withHeader, int rowsMode)
    : m_grid(grid), m_withHeader(withHeader), m_allRows(rowsMode != 1) {
    // The shown columns in the order the user sees them; all columns in the grid's own.
    if (columnsMode == 2) {
        for (int c : grid.DisplayOrder())
            if (grid.Column(c).visible)
                m_cols.push_back(c);
    } else {
        for (int c = 1; c <= grid.Cols(); ++c)
            m_cols.push_back(c);
    }
    if (!m_allRows)
        m_rows = grid.SelectedRows();
}

QString ExportTable::Caption(int c) const {
    const GridColumn& col = Column(c);
    return col.caption.isEmpty() ? col.key : col.caption;
}
