#pragma once
// The entries of the synchronised text in the right-click menu of the data list: play the
// current row's song with its LRC in the scrolling window, show the text in the editor,
// take it out of the song, and play the highlighted songs with their texts in a row.

#include <QString>

class DataGrid;
class FrmInput;

// The song of the current row (or of the one highlighted row); empty when none.
QString SyncTextSong(const DataGrid& list);
// Whether that song is an MP3 carrying an LRC text.
bool SongHasSyncText(const QString& song);
// Runs sTextPlay, sTextShow, sTextRemove and sTextPlayAll; false for any other key.
bool RunSyncTextKey(FrmInput* window, const QString& key);
