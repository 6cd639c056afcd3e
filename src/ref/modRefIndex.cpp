#include "ref/modRefIndex.h"

#include "core/DataGrid.h"

void FileNameIndex::Build(const DataGrid& grid, int col) {
    m_first.clear();
    if (col < 1 || col > grid.Cols())
        return;
    m_first.reserve(grid.Rows());
    // From the last row up, so that for a repeated name the first row is the one kept.
    for (int r = grid.Rows(); r >= 1; --r)
        m_first.insert(grid.CellView(r, col).toString().toCaseFolded(), r);
}

void FileNameIndex::Add(const QString& name, int row) {
    const QString key = name.toCaseFolded();
    if (!m_first.contains(key))
        m_first.insert(key, row);
}

int FileNameIndex::Find(const DataGrid& grid, int col, const QString& name) const {
    const auto it = m_first.constFind(name.toCaseFolded());
    if (it == m_first.constEnd())
        return 0;
    const QStringView cell = grid.CellView(it.value(), col);
    if (cell.size() != name.size() || cell.compare(name, Qt::CaseInsensitive) != 0)
        return grid.FindRow(name, col); // folding and compare disagree: ask the grid itself
    return it.value();
}
