#pragma once
// The columns of the data list LbxInput: definition at start-up and the headers in the
// current language.

class DataGrid;

// Defines the 71 columns of src/list/InputColumns.h with their widths, alignment, sort
// types, header colours and captions; No is hidden. Rows stay.
void DefineInputColumns(DataGrid& input);
// Sets every header to the caption of its row in the current language.
void SetInputColumnCaptions(DataGrid& input);
// mnuSetOptimalColumn: fits every visible column of `grid` to its widest text.
void FitAllColumns(DataGrid& grid);
