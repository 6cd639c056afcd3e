#pragma once
// The file primitives: copy, move, rename and delete of single files, as every file
// command of the program uses them. The results follow the shell: 0 for success and
// anything else for failure (an errno value, or FileOp::Cancelled when the user said
// No).
//
// Rules that hold for all of them:
// - A target is a folder (an existing folder, or a path ending in "/"): the file keeps
//   its name there; anything else is the full new path. Missing folders are made.
// - A copy is written to a temporary file in the target folder and gets its real name
//   only when it is complete and synced: an interrupted copy or a full disk never
//   leaves a half file under the real name. Permissions and file times are kept.
// - Move and rename never replace a file: a name in use gives "name (2).ext",
//   "name (3).ext", and so on.
// - Across file systems a move is a copy that is read back and compared (size and
//   content hash) before the source is removed; on any failure the source stays and
//   the copy goes.
// - A source name with "*" or "?" in it (copy and delete only) stands for all files
//   of its folder that match; "*.*" means every file.

#include <QString>

class DataGrid;
class Prompt;

namespace FileOp {
constexpr int Ok = 0;
constexpr int Cancelled = 1223; // the user answered No; nothing changed
} // namespace FileOp

// Copies `source` to `target`. With renameOnCollision a taken name gives the next free
// "name (n).ext"; without it the user is asked through `prompt` whether to replace the
// file (no prompt: the copy fails with EEXIST). `finalPath` receives the copy's path.
int CopyFile(const QString& source, const QString& target, bool renameOnCollision, Prompt* prompt = nullptr,
             QString* finalPath = nullptr);

// Moves `source` to the folder or path `target`.
int MoveFile(const QString& source, const QString& target, QString* finalPath = nullptr);

// Gives `source` the new path `target`; a bare name stays in the source's folder. The
// target is never taken as a folder. A change of case alone works on every file system.
int RenameFile(const QString& source, const QString& target, QString* finalPath = nullptr);

// Deletes a file, to the trash when toRecycleBin is set. With askFirst the user
// confirms through `prompt` first.
int DeleteFile(const QString& path, bool toRecycleBin, bool askFirst, Prompt* prompt = nullptr);

// The removal the data list uses. mode 0: plain delete; 1: to the trash; 2: the file is
// overwritten from its start in blocks of 4096 bytes up to its length, then deleted.
// With `paperbin` (chbPref_Paperbin) every mode becomes mode 0. In mode 1 a failure is
// shown through `prompt` only when `quiet` is set, as the data list's callers expect.
bool KillFile(const QString& path, int mode, bool quiet, bool paperbin = false, Prompt* prompt = nullptr);

// chbPref_Paperbin as the settings grid holds it.
bool PaperbinSetting(const DataGrid& settings);

// The path itself when nothing is there, else the first free "name (n).ext".
QString FreeFileName(const QString& path);

// A readable description of a result of the functions above (empty for 0 and Cancelled).
QString FileOpErrorText(int code);
