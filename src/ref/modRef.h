#pragma once
// The reference list LbxRef: its columns, its .ref files, and the commands that fill it
// from the data list and check it against the disk. Matching and replacing are in
// modRefMatch.h. No widget is touched; the window reads its controls into options.

#include <QString>

class DataGrid;
class Prompt;
struct ListEnv;

// ---- columns -----------------------------------------------------------------------
void DefineRefColumns(DataGrid& ref);
void SetRefColumnCaptions(DataGrid& ref); // after a change of language
// The status words of column 3 in the language in use.
QString RefFoundWord();   // Caption(213)
QString RefMissingWord(); // Caption(214)

// ---- footers -----------------------------------------------------------------------
// Row count under column 4, total duration under 9 and megabytes under 11, in the
// format of the data list's sums.
void ShowRefTotals(DataGrid& ref);

// ---- .ref files --------------------------------------------------------------------
QString RefListFolder(); // the program folder + "/reference"
bool EnsureRefListFolder();
// The folder the pickers start in: settings row 101, column 2 when that folder exists,
// else the default folder.
QString RefListStartFolder();
// Remembers the folder of `path` in settings row 101, column 2.
void RememberRefListFolder(const QString& path);
QString RefListFilter();                        // Caption(225) + " |*.ref"
QString RefListPath(const QString& chosenPath); // ".ref" added unless the name ends in it

// Save: the empty-list guard, then the whole grid. On success Tag = the written path.
bool SaveRefList(DataGrid& ref, const QString& chosenPath, bool noMsg, Prompt& prompt,
                 QString* writtenPath = nullptr);
// Load: all sixteen columns from the file; Tag = path, footers, row 1 current. A failed
// load leaves the list as it was. Paths are not checked here (RefCheckPath does that).
bool LoadRefList(DataGrid& ref, const QString& path, Prompt& prompt);
// Delete: the file goes to the trash after the user confirms; Caption(148) on failure,
// Caption(809) on success unless noMsg.
bool DeleteRefList(const QString& path, bool noMsg, Prompt& prompt);

// ---- filling from the data list ----------------------------------------------------
struct CopyToRefOptions {
    bool keepDoubles = false; // chbTab1_RefD: add rows already there and carry their mark
    QString markFilter;       // txtTab1_FTag
    bool noMsg = false;       // chbTab1_NoMsg
};
// optTab1_CopyToReflist: appends the selected rows of the data list that pass the mark
// filter. A file name already in column 4 is skipped unless keepDoubles. Returns the
// number of rows added, -1 when a guard refused.
int CopyToReflist(const DataGrid& input, DataGrid& ref, const CopyToRefOptions& options, const ListEnv& env);

// ---- path check --------------------------------------------------------------------
struct RefCheckResult {
    int found = 0;
    int missing = 0;
};
// btnTab1_RefCheckPath: column 3 of every row becomes the found or the missing word.
// No file and no other column changes.
RefCheckResult RefCheckPath(DataGrid& ref);

// ---- commands on the list ------------------------------------------------------------
// btnTab1_RefRemoveRemark: after Caption(1257) (No default) empties column 1 of all rows.
bool RefRemoveRemarks(DataGrid& ref, Prompt& prompt);
// btnTab1_DeleteRefRows: with `mark` empty the selected rows, else the rows whose mark
// is `mark`, after Caption(193) or (194) with Caption(195) and the count (No default).
// Returns the number of rows removed.
int DeleteRefRows(DataGrid& ref, const QString& mark, Prompt& prompt);
// btnTab1_ClearReflist: after Caption(644) and, as a second check, Caption(1375), clears
// the list and its Tag.
bool ClearReflist(DataGrid& ref, Prompt& prompt);
// btnTab1_RefHighlight_T: selects exactly the rows whose column 3 holds the found word of
// the language in use. Returns the count.
int RefHighlightFound(DataGrid& ref);
// Empties the found remarks (TF) of all rows; returns how many rows held one.
int ClearFoundRemarks(DataGrid& ref);
// chbTab1_RefFTag: shows or hides the mark column.
void ShowRefMarkColumn(DataGrid& ref, bool shown);
bool RefMarkColumnShown(const DataGrid& ref);

// btnTab1_RefExport after the save dialog: the list in the format of the file's ending,
// the folder remembered in settings row 85, column 2, Caption(209) unless noMsg. False
// when nothing was written (another ending, or a failure, which is told).
bool ExportRefList(const DataGrid& ref, const QString& chosenPath, DataGrid& settings, bool noMsg,
                   Prompt& prompt, const QString& presetFolder = QString());
