#pragma once
// The grids that live for the whole run and that more than one part reads or writes by
// row number. Each is created at first use and never released. The windows show them
// (DataGridView); the logic reaches them here.

class DataGrid;

namespace Grids {
DataGrid& LbxInput();         // the data list (FrmInput)
DataGrid& LbxRef();           // the reference list (FrmInput); Tag = its .ref file
DataGrid& lbxLink();          // stored links: Bez, Link (FrmPreferences)
DataGrid& lbxRating();        // the six rating names (FrmPreferences)
DataGrid& LbxPic_Extern();    // pictures on disk; Tag "changes" = unsaved links (FrmPictures)
DataGrid& LbxPic_LinkToPic(); // the picture link list, lnkpic.qlt (FrmPictures)
DataGrid& LbxSText();         // the synchronising editor; Tag "edited" = unsaved (FrmSText)
} // namespace Grids

// Columns of lbxRating and its rows from Settings column 3, rows 61 to 66. Only when
// row 61 is empty do the six rows take the default "*" to "******".
void DefineRatingList();
// Columns of lbxLink and its rows from Settings columns 6 and 7, rows 1 to 250, up to
// the first row whose first cell is empty.
void DefineLinkList();
// Closing: empties columns 6 and 7 of rows 1 to 250, sorts lbxLink on its first
// column and writes its rows back, so that a deleted link leaves no stale row.
void WriteLinkListToSettings();
