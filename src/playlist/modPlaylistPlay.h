#pragma once
// Songs handed to the desktop's player: one song by its path, or a group of songs as a
// temporary M3U file in the folder "temp" of the program folder ("PlayTmp.m3u",
// "AlbumTmp.m3u"). Each temporary file begins with "#EXTM3U", is handed to ShellOpen
// with the fallback on, lives about one second (WaitSeconds, so that the player can read
// it) and is deleted. Nothing here tests whether the songs exist.

#include <QString>
#include <functional>

class DataGrid;
class Prompt;

struct PlayEnv {
    explicit PlayEnv(Prompt& p) : prompt(p) {}
    Prompt& prompt;
    bool noMsg = false;           // chbTab1_NoMsg: no closing message
    double waitSeconds = 1.0;     // how long the temporary file stays for the player
    DataGrid* settings = nullptr; // for the start folder of the save dialogue (row 82); null: Settings()
    // The save dialogue of PlayHighlightedRows: start folder in, chosen path out (empty = cancel).
    std::function<QString(const QString& startFolder)> chooseSavePath;
};

// The full path of the temporary playlist `name` in the folder temp (made when missing).
QString TempPlaylistPath(const QString& name);

// The path of a playlist row's song: PathFile + "/" + FileName; a relative PathFile
// gets the folder of PathPlaylist in front.
QString PlaylistRowSongPath(const DataGrid& playlist, int row);

// mnuPlaylist_PlaySong: the current row's song to the default handler; a failure shows
// Caption(663). False when nothing was opened.
bool PlayPlaylistSong(const DataGrid& playlist, int row, Prompt& prompt);

// mnuPlaylist_PlayPlaylist: every row of LbxPlaylist that is not missing, as
// "PlayTmp.m3u". Returns the number of entries handed over.
int PlayRowsOfPlaylist(const DataGrid& playlist, PlayEnv& env);

// The rows of the data list whose cell in `column` equals `value` exactly, as
// "AlbumTmp.m3u"; then Caption(811) unless noMsg. Returns the entries handed over.
int PlayAlbum(const DataGrid& input, int column, const QString& value, PlayEnv& env);

// The album of the data list: `value` is looked for in the album columns 20, 27, 44, 50
// and 60 in that order (the first column that holds it is compared); an empty `value`
// takes the first non-empty album column of the current row. As "PlayTmp.m3u".
int PlayAlbumOfCurrentRow(const DataGrid& input, const QString& value, PlayEnv& env);

// The highlighted rows of the data list (or, with `fromRefList`, of the reference list:
// name in column 4, folder and seconds in column 8) as "PlayTmp.m3u". With
// `openInPlayer` the file goes to the player; with `saveAsPlaylist` it is copied to a
// path chosen in the save dialogue (start folder settings row 82, which the choice
// replaces) and Caption(436) is shown.
int PlayHighlightedRows(const DataGrid& list, bool fromRefList, bool saveAsPlaylist, bool openInPlayer,
                        PlayEnv& env);
