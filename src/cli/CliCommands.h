#pragma once
// The commands of quillotune-cli. Each takes the arguments after its name and returns the
// exit code; main.cpp holds the table that names them.

#include <QStringList>

int RunTags(const QStringList& args);     // CliTags.cpp
int RunSet(const QStringList& args);      // CliSet.cpp
int RunScan(const QStringList& args);     // cmd_scan.cpp
int RunLoad(const QStringList& args);     // cmd_load.cpp
int RunPlaylist(const QStringList& args); // cmd_playlist.cpp
int RunRename(const QStringList& args);   // cmd_rename.cpp
int RunUndo(const QStringList& args);     // cmd_rename.cpp
int RunRef(const QStringList& args);      // cmd_ref.cpp
int RunLrc(const QStringList& args);      // cmd_lrc.cpp
int RunSkin(const QStringList& args);     // cmd_skin.cpp

class DataGrid;
// Exports the data list by the ending of `path` (cmd_scan.cpp); false with a message.
bool ExportDataList(DataGrid& list, const QString& path);

// Output helpers shared by the commands (CliOutput.cpp).
void Out(const QString& text); // to stdout, with a line end
void Err(const QString& text); // to stderr, with a line end
