#pragma once
// The commands of the playlist editor (FrmPlaylist) on its grids: find, open, save and
// delete playlist files; remove, repair, move, shuffle, copy and mark entries; take rows
// over from the data list and the tag list. No widget is touched: the window reads its
// controls into PlaylistEnv and gives the dialogues as hooks.

#include <QString>
#include <functional>

class DataGrid;
class Prompt;

struct PlaylistEnv {
    PlaylistEnv(Prompt& p, DataGrid& list, DataGrid& files) : prompt(p), playlist(list), m3upls(files) {}

    Prompt& prompt;
    DataGrid& playlist;            // LbxPlaylist
    DataGrid& m3upls;              // lbxM3UPLS
    DataGrid* playlist2 = nullptr; // lbxPlaylist2
    DataGrid* settings = nullptr;  // lbxIni; null: Settings()
    QString title;                 // the title of LbxPlaylist (the playlist's file name)

    // the controls, as the window reads them
    QString markText;             // txtPlaylist_FTag
    bool noMsg = false;           // chbPlaylist_NoMsg
    bool tab1NoMsg = false;       // chbTab1_NoMsg
    bool relative = false;        // optPlaylist_Relativ (else optPlaylist_Absolut)
    bool add = false;             // chbPlaylist_Add
    bool openWithClick = false;   // chbPlaylist_OpenPlaylistWithClick
    bool withSubFolders = false;  // chbPlaylist_WithSubFolders
    int format = 0;               // 0 M3U and PLS, 1 M3U, 2 PLS (optPlaylist_M3UPLS, _M3U, _PLS)
    bool copyWithNum = false;     // chbPlaylist_CopyWithNum
    bool saveSettingsFile = true; // write qlt.ini when a command stores a folder

    // dialogues: empty result = cancelled
    std::function<QString(const QString& startFolder)> chooseSavePath; // M3U/PLS filters
    std::function<QString(const QString& startFolder)> chooseFolder;   // folder dialogue
    std::function<QString(const QString& startFolder, const QString& defaultName)> chooseSongFile; // repair
    // after the rows or the highlight changed: the window redraws its sum label
    std::function<void()> sumsChanged;

    DataGrid& Settings() const;
    bool Passes(const DataGrid& grid, int row) const; // the mark filter
};

// ---- playlist files (lbxM3UPLS) ---------------------------------------------------------
// btnPlaylist_FindPlaylist: folder dialogue (start: settings row 63), the walk with or
// without sub-folders, rows of name and folder. Returns the rows found, -1 on cancel.
int FindPlaylists(PlaylistEnv& env);
// The same walk on a known folder (the command-line tool and tests).
int FindPlaylistsIn(PlaylistEnv& env, const QString& folder);
// btnPlaylist_OpenPlaylist: reads the first highlighted row of lbxM3UPLS. `target` 0
// fills LbxPlaylist, 2 fills lbxPlaylist2. Returns true when a file was read.
bool OpenPlaylist(PlaylistEnv& env, int target = 0);
// Reads the playlist file `path` into LbxPlaylist (or lbxPlaylist2) by its ending.
bool OpenPlaylistFile(PlaylistEnv& env, const QString& path, int target = 0);
// btnPlaylist_DeletePlaylist: deletes the current playlist file (asked first) and its row.
bool DeletePlaylistFile(PlaylistEnv& env);
// btnPlaylist_PlayPlaylist: the current playlist file to the default handler.
bool PlayPlaylistFile(PlaylistEnv& env);
// The in-cell rename of column 1 of lbxM3UPLS: renames the file on disk; false (with
// Caption(907)) leaves the cell as it was.
bool RenamePlaylistFile(PlaylistEnv& env, int row, const QString& newName);

// ---- saving -----------------------------------------------------------------------------
struct SaveResult {
    bool saved = false;
    QString path;
    int written = 0;
    int skipped = 0;
};
// btnPlaylist_SavePlaylist.
SaveResult SavePlaylist(PlaylistEnv& env);

// ---- entries ----------------------------------------------------------------------------
// The question that offers to highlight all rows when fewer than `atLeast` are; true when
// enough rows are highlighted afterwards.
bool OfferHighlightAll(PlaylistEnv& env, int atLeast = 1);
// btnPlaylist_DeleteEntries. Returns the rows removed.
int RemoveHighlightedEntries(PlaylistEnv& env);
// btnPlaylist_EraseF, mnuPlaylist_DeleteF: removes the rows with the missing status.
// `silent`: no question and no report. Returns the rows removed, -1 when the user said No.
int RemoveMissingEntries(PlaylistEnv& env, bool silent = false);
// btnPlaylist_CorrectPath. Returns the rows repaired.
int RepairMissingEntries(PlaylistEnv& env);
// btnPlaylist_Up / btnPlaylist_Down: the highlighted block one row. False when nothing moved.
bool MoveBlockUp(PlaylistEnv& env);
bool MoveBlockDown(PlaylistEnv& env);
// btnPlaylist_Shuffle: a random order, written to column No. `seed` 0 takes the clock.
bool ShufflePlaylist(PlaylistEnv& env, quint32 seed = 0);
// btnPlaylist_Copy: copies the highlighted songs to a chosen folder.
struct CopyResult {
    int copied = 0;
    int missing = 0;
    int failed = 0;
};
CopyResult CopyPlaylistSongs(PlaylistEnv& env);
// btnPlaylist_Export: the five columns through lbxDummyPlaylist, to `path`.
bool ExportPlaylist(PlaylistEnv& env, DataGrid& dummy, const QString& path);

// ---- highlight and marks ----------------------------------------------------------------
void HighlightFound(PlaylistEnv& env);                  // btnPlaylist_Highlight_T
void MarkHighlighted(PlaylistEnv& env);                 // btnPlaylist_SetFTagActRow, mnuPlaylist_MarkFromFTag
void UnhighlightOthers(PlaylistEnv& env);               // btnPlaylist_FTagBlue
void RemoveMarks(PlaylistEnv& env);                     // btnPlaylist_RemoveFTag
void ToggleSign(PlaylistEnv& env, const QString& sign); // mnuPlaylist_SignID

// ---- rows from the other lists ----------------------------------------------------------
// optTab1_CopyToPlaylist: the highlighted rows of the data list that pass its mark box.
// Returns the rows taken, -1 when a guard or a No ended the command.
int CopyRowsToPlaylist(PlaylistEnv& env, const DataGrid& input, const QString& inputMark);
// btnTab2_CopyToPlaylist: the highlighted rows of the tag list; length and size come from
// the data list row the tag row came from.
int CopyTagRowsToPlaylist(PlaylistEnv& env, const DataGrid& tagList, const DataGrid& input,
                          const QString& tagMark);
