#pragma once
// The commands of quillotune-cli. Each takes the arguments after its name and returns the
// exit code; main.cpp holds the table that names them.

#include <QStringList>

int RunTags(const QStringList& args);     // CliTags.cpp
int RunSet(const QStringList& args);      // CliSet.cpp
int RunScan(const QStringList& args);     // cmd_scan.cpp
int RunLoad(const QStringList& args);     // cmd_load.cpp
int RunRefresh(const QStringList& args);  // cmd_refresh.cpp
int RunPlaylist(const QStringList& args); // cmd_playlist.cpp
int RunRename(const QStringList& args);   // cmd_rename.cpp
int RunUndo(const QStringList& args);     // cmd_rename.cpp
int RunRef(const QStringList& args);      // cmd_ref.cpp
int RunLyrics(const QStringList& args);   // cmd_lyrics.cpp
int RunLrc(const QStringList& args);      // cmd_lrc.cpp
int RunPictures(const QStringList& args); // cmd_pictures.cpp
int RunSkin(const QStringList& args);     // cmd_skin.cpp
int RunPrograms(const QStringList& args); // cmd_programs.cpp

class DataGrid;
// Exports the data list by the ending of `path` (cmd_scan.cpp); false with a message.
bool ExportDataList(DataGrid& list, const QString& path);

// Output helpers shared by the commands (CliOutput.cpp).
void Out(const QString& text); // to stdout, with a line end
void Err(const QString& text); // to stderr, with a line end
// Rows 1 to lastRow of a grid: a header line of the keys and a line per row with the cells
// divided by TAB, or with json an array of objects by the keys.
void PrintGridRows(const DataGrid& g, const QStringList& keys, int lastRow, bool json);
