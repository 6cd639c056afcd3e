#pragma once
// The picture link list (lnkpic.qlt, the grid LbxPic_LinkToPic): column 1 names a song
// file, the other columns its linked pictures.

class DataGrid;

// Deletes every row whose column 1 names a file that is no longer there (rows with an
// empty first cell name nothing and stay). Returns the number of rows deleted.
int PurgeLinkList(DataGrid& links);
