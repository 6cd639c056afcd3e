#pragma once
// Removing rows from the data list without touching their files (optTab1_RemoveEntry).

#include "list/modListEnv.h"

class DataGrid;

struct RemoveEntriesResult {
    bool ran = false; // false: a guard stopped the command
    int removed = 0;
};

// The selected rows are staged with "_#DDelete" and then every row with that mark is
// dropped, walking from the end; the totals follow. No file is touched.
RemoveEntriesResult optTab1_RemoveEntry(DataGrid& lbxInput, const ListEnv& env);
