#pragma once
// btnTab1_RefOK: the file of the current row of one list takes the place of the file of
// the current row of the other list. The replaced file goes to the trash; the copy can
// keep the replaced file's name and its tags.

#include <QString>

class DataGrid;
class Prompt;

enum class ReplaceDirection {
    FromReference, // optTab1_R_D: the reference's file replaces the data list's file
    FromData,      // optTab1_D_R: the data list's file replaces the reference's file
};

struct ReplaceOptions {
    ReplaceDirection direction = ReplaceDirection::FromData;
    bool keepFilename = false; // chbTab1_KeepFilename
    bool keepTags = false;     // chbTab1_KeepTags
    bool noMsg = false;        // chbTab1_NoMsg
    bool paperbin = false;     // chbPref_Paperbin: delete for good instead of the trash
};

struct ReplaceResult {
    bool done = false;   // the copy is in place (and the row updated)
    bool failed = false; // a step after the guards went wrong
    QString newPath;     // the full name of the copy
};

// The guards of the pair of current rows (Caption 1217, Captions 539 and 540), then the
// replacement of the chosen direction; Caption 259 unless noMsg or a step failed.
ReplaceResult RefReplace(DataGrid& input, DataGrid& ref, const ReplaceOptions& options, Prompt& prompt);

// The two directions on their own, for the rows given (1-based).
ReplaceResult ReplaceFromData(DataGrid& input, int inputRow, DataGrid& ref, int refRow,
                              const ReplaceOptions& options, Prompt& prompt);
ReplaceResult ReplaceFromReference(DataGrid& input, int inputRow, DataGrid& ref, int refRow,
                                   const ReplaceOptions& options, Prompt& prompt);
