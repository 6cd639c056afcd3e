#pragma once
// The folder scan: the walk of a folder, the analysis of each file through the
// TagEngine and the row of 71 cells it gives in the data list; the re-read of the rows
// that stand in the list; the check list of file names.
//
// Nothing here touches a widget. The window and quillotune-cli read their controls or
// arguments into ScanOptions and give ScanHooks for what only they can do (pump the
// event queue, move a progress bar, print a progress line).

#include <QString>
#include <QStringList>
#include <functional>

class DataGrid;
class Prompt;
class TagEngine;

struct ScanOptions {
    bool subFolders = false;             // chbTab1_SubFolders
    bool attach = false;                 // chbTab1_Attach: keep the rows that stand in the list
    bool checkCharacters = false;        // chbTab1_CheckCharacters: only files that pass a text check
    bool useChecklist = false;           // chbTab1_UseChecklist: the check uses `checklist`
    QString artistSearch;                // txtTab1_Searchstring_ArtistTitle(0)
    QString titleSearch;                 // txtTab1_Searchstring_ArtistTitle(1)
    const DataGrid* checklist = nullptr; // LbxFindChr: Find1, AND, Find2
    int numberDigits = 0;                // width of track numbers; 0 = the settings (row NumberDigits)
    int threads = 0;                     // readers at once; 0 = the preferences (ScanReadThreads)
};

struct ScanHooks {
    std::function<void()> pump;                       // between two files: let events run
    std::function<void(int max)> showProgress;        // the bar appears with its maximum
    std::function<void(int value)> setProgress;       // once per entry
    std::function<void()> hideProgress;               // the bar goes
    std::function<void(const QString&)> progressText; // the footer text was written
    std::function<void()> listCleared;                // the list was emptied for a new scan
};

struct ScanResult {
    int entries = 0;   // what the walk found (and, without sub-folders, the folder entries)
    int folders = 0;   // of those, folder entries (">>"), which are never files
    int processed = 0; // entries looked at before the end or the abort
    int rowsAdded = 0; // rows appended to the list
    int failures = 0;  // files the engine could not read as audio
    int filtered = 0;  // audio files left out by the text check
    bool aborted = false;
    QStringList ratings; // distinct values of column Rating, sorted
    QStringList moods;   // distinct values of column Mood, sorted
};

// Everything AddFileRow needs besides the file: the search texts (trimmed, lower case;
// empty = not tested), the check list and the number width. Build it once per scan.
struct RowContext {
    bool checkCharacters = false;
    bool useChecklist = false;
    QString artistSearch;
    QString titleSearch;
    const DataGrid* checklist = nullptr;
    int numberDigits = 2;
    int rowOffset = 0; // rows in front of the new ones that don't count for their number
};
RowContext MakeRowContext(const ScanOptions& options);

// ---- walk -----------------------------------------------------------------------------
// Walks `folder` and appends to `list`: each file whose name ends like `mask` (compared
// case-folded; "*" takes every file) as its full path, and without `recurse` each
// sub-folder as ">>" + its full path. Every path that contains "system" or "recycler"
// (in any case) is left out; a folder that can't be read gives nothing, and a folder
// already entered (a link loop) is not entered again. Returns the number of entries
// added; `count` grows by the same number.
int FindFiles(const QString& folder, const QString& mask, QStringList& list, bool recurse, int& count);

// ---- one file -------------------------------------------------------------------------
// Analyses `path` and appends its row to `list`. Returns true when a row was added
// (false: the text check left the file out). The file is opened by the engine unless
// `alreadyOpenType` >= 0 says that the engine's current file is `path`, opened with
// that result (the scan opens once per file). State().UpdateRun turns the checks off.
bool AddFileRow(DataGrid& list, TagEngine& engine, const QString& path, const RowContext& context,
                int alreadyOpenType = -1);
// The same for cells read before (FileRowCells with any number): the checks, then the
// number and the key of the new row, whose key records `stamp` (FileStampText).
bool AddReadRow(DataGrid& list, QStringList cells, const QString& stamp, const RowContext& context);
// The cells of the row (exactly 71) for the engine's current file at `path`.
QStringList FileRowCells(TagEngine& engine, const QString& path, int type, int rowNumber, int numberDigits);

// The tag column text: "id3v1.1, id3v2.3, ape2.0, lyrics2.00" of what the file carries.
QString HasTagText(const TagEngine& engine);

// The text checks: artist and title against the search texts (both lower case, an empty
// one is not tested), or the file name against the check list.
bool PassesTextCheck(const QString& artist, const QString& title, const QString& artistSearch,
                     const QString& titleSearch);
bool PassesChecklist(const QString& fileName, const DataGrid& checklist);
// Fills a check list grid (Find1, AND, Find2) from the settings rows of the check list.
void ChecklistFromSettings(DataGrid& checklist);

// ---- the scan -------------------------------------------------------------------------
// Progress text of entry i of count: Caption(112) + i + Caption(113) + count.
QString ScanProgressText(int i, int count);
// True when the progress text is due for entry i (every file for the last 10, every
// 50th for the last 1000, every 100th before).
bool ProgressTextDue(int i, int count);

// The whole scan of `path` into `list` (LbxInput): walk, clear (without attach),
// analyse each file with a pump and an abort test between two files, then totals and
// the order "7,3"; after an abort the rows stay, unsorted, with empty footers. With more
// than one reader the files are read on threads of their own (each with its own engine;
// `engine` is then left alone) and the rows arrive in the same order with the same cells.
ScanResult ScanFolder(DataGrid& list, const QString& path, const ScanOptions& options, TagEngine& engine,
                      const ScanHooks& hooks = {});

// Distinct non-empty values of columns Rating and Mood, each sorted.
void RebuildValueLists(const DataGrid& list, QStringList& ratings, QStringList& moods);

// Re-reads the files of all rows (column Path + "/" + FileName) into new rows, without
// checks; marks are lost. Guard: the list must not be empty. threads: readers at once,
// 0 = the preferences.
ScanResult UpdateList(DataGrid& list, TagEngine& engine, Prompt& prompt, const ScanHooks& hooks = {},
                      int threads = 0);
// btnTab1_UpdateData: UpdateList with State().UpdateRun set.
ScanResult btnTab1_UpdateData(DataGrid& list, TagEngine& engine, Prompt& prompt, const ScanHooks& hooks = {});

// The standard order of the data list after a scan: folder, then name.
inline constexpr const char* kScanSortOrder = "7,3";

// Gives a grid without columns the 71 columns of the data list (the command-line tool
// and tests; the window defines them at start).
void EnsureInputColumns(DataGrid& list);
