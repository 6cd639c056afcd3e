#pragma once
// Filter: marks the rows of the data list whose value in one column, rating and mood
// equal the chosen ones, and builds the value lists of the filter combo boxes.

#include "list/modListEnv.h"

#include <QString>
#include <QStringList>

class DataGrid;

// The state of the filter controls on FrmInput.
struct FilterOptions {
    int columnIndex = -1;   // list index of cmbTab1_Filter(0); -1: nothing chosen
    QString value;          // cmbTab1_Filter(1); empty: not tested
    QString rating;         // cmbTab1_Filter(2); empty: not tested
    QString mood;           // cmbTab1_Filter(3); empty: not tested
    bool addFilter = false; // chbTab1_AddFilter: keep the marks that stand
    bool noMsg = false;     // chbTab1_NoMsg
};

// Index of cmbTab1_Filter(0) -> column of LbxInput: 0-3 -> 4-7, 4-25 -> 15-36,
// 26-55 -> 39-68, 56 -> 71. Any other index gives 0.
int ColumnOfFilterIndex(int index);
constexpr int kFilterColumnEntries = 57;
// The entries of cmbTab1_Filter(0): the header captions of the columns the indexes stand for.
QStringList FilterColumnEntries(const DataGrid& lbxInput);

// The distinct non-empty values of `column`, sorted without regard to case. One pass
// over the rows with a hash set.
QStringList FilterValueList(const DataGrid& lbxInput, int column, const ListEnv& env);
// Rows whose cell in `column` equals `value` exactly.
int CountRowsEqual(const DataGrid& lbxInput, int column, const QString& value);
// "<count> /<rows>", the text of lblTab1_CmbFilter2_Count and lblTab1_CmbQualityCount.
QString ValueCountLabel(const DataGrid& lbxInput, int column, const QString& value);

struct FilterChangeResult {
    bool handled = false;       // false while SuppressEvents is set or for an unknown index
    bool valuesChanged = false; // index 0: `values` is the new list of cmbTab1_Filter(1)
    QStringList values;
    QString filter1Count; // index 0: lblTab1_CmbFilter1_Count
    QString filter2Count; // index 1: lblTab1_CmbFilter2_Count
    QString qualityCount; // index 2 and 3: lblTab1_CmbQualityCount
};

// Reaction on a chosen entry of cmbTab1_Filter(index): 0 column, 1 value, 2 rating, 3 mood.
FilterChangeResult cmbTab1_Filter_Change(const DataGrid& lbxInput, int index, const FilterOptions& options,
                                         const ListEnv& env);

struct FilterResult {
    bool ran = false; // false: a guard stopped the command
    int hits = 0;
};

// btnTab1_FilterMarkChoosen: guards, then ApplyFilter. The window focuses LbxInput after it.
FilterResult btnTab1_FilterMarkChoosen(DataGrid& lbxInput, const FilterOptions& options, const ListEnv& env);

// Marks with "_#FOUND " (with its blank) in front of the old mark every row in which all
// non-empty criteria equal their cells, compared with regard to case: `value` in `column`,
// options.rating in column 69, options.mood in column 70. Returns the number of hits.
int ApplyFilter(DataGrid& lbxInput, const QString& value, int column, const FilterOptions& options,
                const ListEnv& env);
