#pragma once
// The picture link list (lnkpic.qlt, the grid LbxPic_LinkToPic): one row per picture,
// keyed by the picture's full path in column 1, with the full paths of its linked text
// (column 3) and song (column 4). A row with neither link is removed, so every row holds
// at least one link (a rebuild from the shown list is the one exception: it keeps every
// picture shown).

#include <QHash>
#include <QString>

class DataGrid;

// Gives the list its five columns when it has fewer (a fresh program has no lnkpic.qlt).
void EnsureLinkListColumns(DataGrid& links);

// The row of a picture (exact full path), 0 when it has none.
int FindLinkRow(const DataGrid& links, const QString& picturePath);
// Full path -> row of every picture in the list, for a search over many files.
QHash<QString, int> LinkListIndex(const DataGrid& links);

// A link cell as a path: "/" or "\" alone counts as empty.
QString LinkCellPath(const DataGrid& links, int row, int col);

// Sets column `col` (LinkCol::Text or LinkCol::Song) of the picture's row, adding the row
// when there is none. An empty value clears the link; a row left with no link goes.
void SetPictureLink(DataGrid& links, const QString& picturePath, int col, const QString& value);

// Deletes every row whose column 1 names a file that is no longer there (rows with an
// empty first cell name nothing and stay). Returns the number of rows deleted.
int PurgeLinkList(DataGrid& links);
