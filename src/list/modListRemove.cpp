#include "list/modListRemove.h"

#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/Marks.h"

RemoveEntriesResult optTab1_RemoveEntry(DataGrid& lbxInput, const ListEnv& env) {
    RemoveEntriesResult result;
    if (!env.ListNotEmpty(lbxInput) || !env.AtLeastRowsSelected(lbxInput, 1) || lbxInput.Cols() < InCol::FTag)
        return result;
    lbxInput.LockUpdate(true);
    for (int row : lbxInput.SelectedRows())
        lbxInput.SetCellText(row, InCol::FTag, Mark::DDelete);
    // Exactly the staged rows go, in one sweep over the list.
    const int rows = lbxInput.Rows();
    for (int r = 1; r <= rows; ++r)
        lbxInput.SetSelected(r, lbxInput.CellView(r, InCol::FTag) == Mark::DDelete);
    result.removed = lbxInput.DeleteSelected();
    if (lbxInput.CurRow() > lbxInput.Rows())
        lbxInput.SetCurRow(lbxInput.Rows());
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
    env.ShowTotals();
    result.ran = true;
    return result;
}
