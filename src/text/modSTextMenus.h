#pragma once
// modSTextMenus: the right-click menus of the lists of the synchronising editor, as entries
// of list/modContextMenu.h. The menu of the text (LbxSText) inserts rows and refrains; the
// menus of the two search lists (LbxTxtLrc, LbxSongWithLrc) load, play and mark their rows
// and carry the file commands in the group `File`. Each entry is enabled only when its
// command can run with the state given.

#include "list/modContextMenu.h"

#include <QList>

// What the menu of LbxSText is built from.
struct STextMenuState {
    int rows = 0;
    int curRow = 0;           // 0: no current row
    QList<int> refrainRows;   // the rows with a refrain mark, top to bottom
    QStringList refrainTexts; // their words, in the same order
};
ContextMenuEntries BuildSTextMenu(const STextMenuState& state, MenuCaptionFn caption);

// What the menu of the text and LRC file list (LbxTxtLrc) is built from.
struct TxtLrcMenuState {
    int rows = 0;
    int curRow = 0;
    bool kindShown = false; // the column with the file type is shown
    bool anyKind = false;   // some row holds a file type
};
ContextMenuEntries BuildTxtLrcMenu(const TxtLrcMenuState& state, MenuCaptionFn caption);

// What the menu of the list of songs with LRC (LbxSongWithLrc) is built from.
struct SongLrcMenuState {
    int rows = 0;
    int curRow = 0;
    bool anyMark = false;     // some song is marked for the sequence
    bool windowReady = false; // the scrolling window can take a song
    bool fileListRow = false; // the file list has a current row (KillFile acts on it)
};
ContextMenuEntries BuildSongLrcMenu(const SongLrcMenuState& state, MenuCaptionFn caption);

// The row of a refrain entry: "InsertText12" gives 12; -1 for any other key.
int RefrainEntryRow(const QString& key);
