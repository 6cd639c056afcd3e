#pragma once
// Helpers for tests of DataGrid and its file format.

#include "core/DataGrid.h"

#include <QString>
#include <QStringList>

// Everything a load may change, as one text: columns, keys, cells, selection, current row.
inline QString DumpGrid(const DataGrid& g) {
    QString out;
    for (int c = 1; c <= g.Cols(); ++c) {
        const GridColumn& col = g.Column(c);
        out += QStringLiteral("col|%1|%2|%3|%4|%5|%6\n")
                   .arg(col.key, col.caption)
                   .arg(col.width)
                   .arg(int(col.align))
                   .arg(col.visible)
                   .arg(int(col.sortType));
    }
    for (int r = 1; r <= g.Rows(); ++r) {
        out += QStringLiteral("row|") + g.RowKey(r) + (g.IsSelected(r) ? QStringLiteral("|sel") : QString());
        for (int c = 1; c <= g.Cols(); ++c)
            out += QLatin1Char('|') + g.CellText(r, c);
        out += QLatin1Char('\n');
    }
    out += QStringLiteral("cur|%1 sel|%2\n").arg(g.CurRow()).arg(g.SelCount());
    return out;
}

// A grid with `cols` text columns and the given rows of tab-separated cells.
inline void FillGrid(DataGrid& g, int cols, const QStringList& rows) {
    for (int c = 1; c <= cols; ++c)
        g.AddColumn(QStringLiteral("K%1").arg(c), QStringLiteral("Column %1").arg(c));
    g.LockUpdate(true);
    for (const QString& r : rows)
        g.AddItem(r);
    g.LockUpdate(false);
}

inline QStringList ColumnTexts(const DataGrid& g, int col) {
    QStringList out;
    for (int r = 1; r <= g.Rows(); ++r)
        out << g.CellText(r, col);
    return out;
}
