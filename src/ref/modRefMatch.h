#pragma once
// btnTab1_MarkMatches: the reference list held against the data list by file name.

#include <QString>
#include <vector>

class DataGrid;
class Prompt;

enum class MatchDirection {
    RefToData, // optTab1_Match_R_D: the selected rows of LbxRef looked up in LbxInput
    DataToRef, // optTab1_Match_D_R: the selected rows of LbxInput looked up in LbxRef
};

struct MatchOptions {
    MatchDirection direction = MatchDirection::RefToData;
    QString dataMarkFilter; // txtTab1_FTag
    QString refMarkFilter;  // txtTab1_FTagRef
    bool noMsg = false;     // chbTab1_NoMsg
};

// A matched pair as full paths (folder + "/" + name), taken before the lists are sorted.
struct MatchPair {
    QString refPath;
    QString dataPath;
};

struct MatchResult {
    int matches = 0;
    std::vector<MatchPair> pairs; // filled when asked for
};

// Empties column 2 of both lists, then for every selected row of the searching list that
// passed its mark filter (as the marks stood before they were emptied) finds the first
// row of the other list with the same file name (without regard to case) and marks both
// "_#-->". Both lists are then sorted by columns "2,3" with row 1 current, and unless
// noMsg Caption(455) tells the count.
MatchResult MarkMatches(DataGrid& input, DataGrid& ref, const MatchOptions& options, Prompt& prompt,
                        bool wantPairs = false);
