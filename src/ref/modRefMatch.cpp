#include "ref/modRefMatch.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "ref/modRefIndex.h"

namespace {

// One side of the compare: the grid and where its mark, name and folder are.
struct Side {
    DataGrid& grid;
    int nameCol;
    int pathCol;
    const QString& markFilter;
};

// The selected rows that pass the mark filter, read before any mark is touched.
std::vector<int> Participants(const Side& s) {
    std::vector<int> rows;
    for (int row : s.grid.SelectedRows()) {
        if (s.markFilter.isEmpty() || s.grid.CellView(row, 2) == s.markFilter)
            rows.push_back(row);
    }
    return rows;
}

void ClearMarks(DataGrid& grid) {
    for (int r = 1; r <= grid.Rows(); ++r) {
        if (!grid.CellView(r, 2).isEmpty())
            grid.SetCellText(r, 2, QString());
    }
}

QString FullPath(const Side& s, int row) {
    QString path;
    path.append(s.grid.CellView(row, s.pathCol)).append(u'/').append(s.grid.CellView(row, s.nameCol));
    return path;
}

} // namespace

MatchResult MarkMatches(DataGrid& input, DataGrid& ref, const MatchOptions& options, Prompt& prompt,
                        bool wantPairs) {
    MatchResult result;
    if (ref.Cols() < RefCol::Count)
        DefineRefColumns(ref);
    Side data{input, InCol::FileName, InCol::Path, options.dataMarkFilter};
    Side refSide{ref, RefCol::FileName, RefCol::Path, options.refMarkFilter};
    const bool refToData = options.direction == MatchDirection::RefToData;
    Side& from = refToData ? refSide : data;
    Side& to = refToData ? data : refSide;

    const std::vector<int> rows = Participants(from);
    input.LockUpdate(true);
    ref.LockUpdate(true);
    ClearMarks(input);
    ClearMarks(ref);

    FileNameIndex index;
    index.Build(to.grid, to.nameCol);
    QString name;
    for (int row : rows) {
        name = from.grid.CellText(row, from.nameCol);
        const int hit = index.Find(to.grid, to.nameCol, name);
        if (hit == 0)
            continue;
        from.grid.SetCellText(row, 2, Mark::Default);
        to.grid.SetCellText(hit, 2, Mark::Default);
        ++result.matches;
        if (wantPairs) {
            const int refRow = refToData ? row : hit, dataRow = refToData ? hit : row;
            result.pairs.push_back({FullPath(refSide, refRow), FullPath(data, dataRow)});
        }
    }

    for (DataGrid* g : {&input, &ref}) {
        g->DoSort(QStringLiteral("2,3"), 1);
        g->SetCurRow(g->Rows() > 0 ? 1 : 0);
    }
    ShowRefTotals(ref);
    ref.LockUpdate(false);
    ref.Refresh();
    input.LockUpdate(false);
    input.Refresh();
    if (!options.noMsg)
        prompt.Tell(CountText(CapMatchesFound, result.matches), Prompt::Icon::Information);
    return result;
}
