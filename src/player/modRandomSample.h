#pragma once
// btnTab1_Random: marks a random sample of the data list for a run of the player. The
// user gives the count; every row is highlighted, all marks go, the sample gets the
// default mark "_#-->", and the list is sorted by its running number.

#include <QtGlobal>

class DataGrid;
class Prompt;

// Returns the number of rows marked, or -1 when the command ended without a change.
// `seed` 0 takes the clock.
int MarkRandomSample(DataGrid& list, Prompt& prompt, quint32 seed = 0);
