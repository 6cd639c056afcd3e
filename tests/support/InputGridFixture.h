#pragma once
// Test helpers for commands on the data list: a LbxInput with its 71 columns, rows
// built from a few named cells, and a caption table whose row n reads "C<n>", so a
// test can tell which message was shown.

#include "core/DataGrid.h"

#include <QString>
#include <initializer_list>
#include <utility>

namespace fixture {

// Defines the 71 columns of the data list on an empty grid.
void DefineInputColumns(DataGrid& grid);

// Appends a row: "No" is the new row number, the given cells (column, text) are set,
// all others stay empty. Returns the row number.
int AddInputRow(DataGrid& grid, std::initializer_list<std::pair<int, QString>> cells);

// A reference list: `cols` columns with the keys "R1", "R2", ...
void DefineColumns(DataGrid& grid, int cols);

// Fills the caption table: row n, German column, reads "C<n>"; German is the language.
void FillCaptions();

// A settings grid with the columns and rows of qlt.ini, all empty.
void DefineSettings(DataGrid& lbxIni);

} // namespace fixture
