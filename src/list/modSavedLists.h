#pragma once
// Saved lists: the whole data list written to a ".data" file and read back later,
// without touching the audio files. The file pickers are the window's; these are the
// commands after the user has chosen a file.

#include <QString>
#include <functional>

class DataGrid;
class Prompt;

struct SavedListOptions {
    bool noMsg = false;            // chbTab1_NoMsg: no closing message
    bool refreshFromFiles = false; // chbTab1_Act: rebuild the rows from their files after a load
};

// What a load hands on to other parts of the program; each may be empty.
struct SavedListHooks {
    std::function<void()> updateList;        // UpdateList of the folder scan (with chbTab1_Act)
    std::function<void()> rebuildValueLists; // the value lists of Rating and Mood
    std::function<void()> showTotals;        // ShowTotals
};

// The folder of saved lists: the program folder + "/data".
QString SavedListFolder();
// Makes that folder when it is missing; false when it cannot be made.
bool EnsureSavedListFolder();
// The filter of the pickers: Caption(224) + " (*.data)".
QString SavedListFilter();
// The name as it is written: ".data" is appended unless the file name contains ".data"
// (in any case), so "my.data.old" stays as it is.
QString SavedListPath(const QString& chosenPath);

// The write shared by saved data lists and reference lists: `busyCaption` stands in the
// footer of `footerCol` meanwhile, then the row count. A failure shows Caption(221) with
// the path (critical); success shows Caption(128) unless noMsg.
bool WriteListFile(DataGrid& list, const QString& path, int footerCol, int busyCaption, bool noMsg,
                   Prompt& prompt);

// Writes the whole list. Footer of column 3: Caption(93) meanwhile, then the row count.
// Unless noMsg, success is reported; a failure always (critical icon). `writtenPath`
// receives the path with its extension.
bool SaveList(DataGrid& list, const QString& chosenPath, const SavedListOptions& options, Prompt& prompt,
              QString* writtenPath = nullptr);

struct LoadListResult {
    bool loaded = false;
    int missing = 0; // rows whose file no longer exists
};

// Replaces all rows of the list by those of the file; the list keeps its own columns.
// Then either the rows are rebuilt from their files (refreshFromFiles, hooks.updateList)
// or every row is checked: a row whose file (column 7 + "/" + column 3) is gone gets
// "_#-/-> " in front of its mark. Reports Caption(940), or Caption(941) with the count of
// missing files (shown even with noMsg).
LoadListResult LoadList(DataGrid& list, const QString& path, const SavedListOptions& options,
                        const SavedListHooks& hooks, Prompt& prompt);

// Sends a saved list to the trash after the user confirms. A failure shows Caption(148).
bool DeleteList(const QString& path, Prompt& prompt);
