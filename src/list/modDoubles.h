#pragma once
// Doubles: files of the same name (column 3, compared without regard to case) in
// several folders. FindDouble numbers each group in the mark column ("0001", "0002",
// ...), EraseDouble keeps the first row of each group and drops the others from the
// list. No file is touched.

#include "list/modListEnv.h"

#include <QString>
#include <QStringView>

class DataGrid;

struct DoublesResult {
    bool ran = false; // false: a guard or the user's No stopped the command
    int groups = 0;   // FindDouble: number of groups
    int removed = 0;  // EraseDouble: rows dropped from the list
};

// The mark of double group n: four digits, "0001" for 1.
QString DoubleGroupMark(int group);
// Whether a mark reads as a group mark: its first three and its last character are digits.
bool IsDoubleGroupMark(QStringView mark);

// btnTab1_FindDouble. The count message (CapDoubleGroupsFound) is always shown.
DoublesResult btnTab1_FindDouble(DataGrid& lbxInput, const ListEnv& env);
// btnTab1_EraseDouble; noMsg (chbTab1_NoMsg) silences the closing count.
DoublesResult btnTab1_EraseDouble(DataGrid& lbxInput, bool noMsg, const ListEnv& env);
