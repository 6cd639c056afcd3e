#include "picture/modLinkList.h"

#include "core/DataGrid.h"
#include "platform/PosixFile.h"

int PurgeLinkList(DataGrid& links) {
    if (links.Cols() < 1)
        return 0;
    int removed = 0;
    links.LockUpdate(true);
    for (int row = links.Rows(); row >= 1; --row) {
        const QString file = links.CellText(row, 1);
        if (!file.isEmpty() && !PosixFile::ExistsFollowed(file)) {
            links.DeleteRow(row);
            ++removed;
        }
    }
    links.LockUpdate(false);
    links.Refresh();
    return removed;
}
