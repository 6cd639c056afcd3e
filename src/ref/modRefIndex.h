#pragma once
// A file name column looked up by hash instead of row by row. Find gives what
// DataGrid::FindRow(name, col) gives (the first row whose cell equals the name without
// regard to case), but a command that looks up every row of one list in another builds
// the index once and pays a hash lookup per row.

#include <QHash>
#include <QString>

class DataGrid;

class FileNameIndex {
public:
    // Indexes column `col` of all rows; for a name that occurs more than once the first row.
    void Build(const DataGrid& grid, int col);
    // Records a row appended after Build (kept only when the name is new).
    void Add(const QString& name, int row);
    // The first row of `grid` whose cell in `col` equals `name` without regard to case; 0
    // when none. The hit is confirmed with the grid's own compare.
    int Find(const DataGrid& grid, int col, const QString& name) const;

private:
    QHash<QString, int> m_first;
};
