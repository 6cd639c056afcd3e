#pragma once
// The lists of the preferences: each one a grid built from a column of the settings
// (rows first to last) and shown in an editable view; an edited cell goes back into its
// settings row at once and the settings file is saved.

#include <QString>
#include <vector>

class DataGrid;
class DataGridView;
class QWidget;

struct PrefListShape {
    const char* name;         // objectName of the grid and its view
    int first, last;          // settings rows
    std::vector<int> cols;    // settings column of each grid column
    std::vector<int> headers; // caption row of each grid column's header
    int numberBase = 0;       // with a number column: the number of the first row (-1: none)
    int width = 4550;         // twips of each text column
};

// The lists held only by the preferences: settings rows, columns and headers.
const std::vector<PrefListShape>& PrefListShapes();

// Fills `grid` with the list's columns and its rows from the settings.
void BuildPrefList(DataGrid& grid, const PrefListShape& shape);
// A view of `grid` whose cells write back into the settings; the number column stays.
DataGridView* MakePrefListView(DataGrid& grid, const PrefListShape& shape, QWidget* parent);
// The header captions of `grid` in the current language.
void SetPrefListHeaders(DataGrid& grid, const PrefListShape& shape);
