#pragma once
// M3U and PLS playlist files: the readers that turn a file into rows of LbxPlaylist (or
// lbxPlaylist2), and the writers that turn rows into a file. No widget is touched here.
//
// The rules, kept exactly because playlists written and read by this program must stay
// the same from one version to the next:
// - Text is written as UTF-8 without a byte-order mark, each line ended by CR LF, with
//   no quoting of any kind. Reading takes CR LF or LF; a file that is not valid UTF-8
//   is read as Windows-1252.
// - An entry that begins with "/" is absolute; any other entry is relative to the
//   playlist's folder.
// - The first line of an M3U file is dropped unseen, whatever it holds: a plain list of
//   paths without the "#EXTM3U" header loses its first entry.
// - "#EXTINF:" is recognised in upper case only; the seconds are the text between the
//   colon and the first comma, the title after the comma is never read. Every other
//   line (a blank line and any other comment too) is a path line and gives a row.
// - A PLS row is made only by a "Length" line; reading stops at "NumberOfEntries", and
//   the "Title" lines are never read.
// - A read asks each entry only for its size (stat), never for its tags, so that a
//   list of thousands of songs opens at once. A missing song is kept as a row with the
//   missing status and empty size.
// - The M3U writer takes every row (not only the highlighted ones) and afterwards puts
//   the playlist's folder into the DurationS cell of each written row; the PLS writer
//   takes only the highlighted rows and leaves the cells alone.
// - The relative mode: a row is written when the playlist's folder occurs anywhere in
//   its full path (a plain text test, without regard to case or to folder boundaries),
//   and the entry is the rest of the path behind the folder's length and one separator.
//   Other rows are left out and counted as skipped. A missing song is counted as
//   skipped too, but written all the same.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

#include "list/ftcNames.h"

class DataGrid;

// ---- paths and texts --------------------------------------------------------------------
// SplitPath (list/ftcNames.h) divides a path at its last "/". The playlist writers
// divide a name at its last "." with this one: without a ".", `base` and `ext` keep their
// old values, so that a name without an extension repeats the title before it.
void SplitExtensionKeeping(const QString& name, QString& base, QString& ext);
// An entry that begins with "/".
bool IsAbsoluteEntry(QStringView path);
// True for a regular file (or a link to one) at `path`; `bytes` receives its size.
bool SongFileExists(const QString& path, qint64* bytes = nullptr);
// Size in MiB with the pattern "#,##0.000" in the locale.
QString PlaylistMegabytes(qint64 bytes);
// The lines of a text: ended by CR LF, LF or the end of the text. A text that ends
// with a line end has no empty last line.
QStringList SplitPlaylistLines(const QString& text);
// True when the path ends in ".m3u" or ".m3u8" (any case): the M3U format.
bool IsM3uPath(const QString& path);
// True when the path ends in ".pls" (any case).
bool IsPlsPath(const QString& path);

// ---- grids ------------------------------------------------------------------------------
// The twelve columns of LbxPlaylist and lbxPlaylist2 (a grid that has them is left alone).
void DefinePlaylistColumns(DataGrid& grid);
void SetPlaylistCaptions(DataGrid& grid);
// The two columns of lbxM3UPLS.
void DefineM3uPlsColumns(DataGrid& grid);
void SetM3uPlsCaptions(DataGrid& grid);

// The footers of a playlist grid after its rows changed: column 4 the row count (and
// "  (n = 0 Byte)" when rows have no size), column 7 the total time, column 9 the total
// MiB ("#,##0.00").
void ShowPlaylistSums(DataGrid& grid);
// lblPlaylist_TimeSize: "(n)  time mm:ss / size Mb" of the highlighted rows, or with a
// mark text only of those whose FTag equals it (compared in lower case).
QString PlaylistTimeSizeText(const DataGrid& grid, const QString& markText);

// ---- reading ----------------------------------------------------------------------------
struct PlaylistReadResult {
    bool ok = true; // false: the file could not be read (`error` tells why); rows read stay
    QString error;
    int rows = 0; // rows appended
};

// Reads an M3U file into `grid`. Without `add` the grid is cleared first (and the
// footer of column 2 emptied). `title` is the grid's title: with `add` and a non-empty
// title it becomes title + " / " + file name, else Caption(309) + file name.
PlaylistReadResult ReadM3u(const QString& path, DataGrid& grid, bool add, QString* title = nullptr);
// Reads a PLS file into `grid`; cleared first unless `add`.
PlaylistReadResult ReadPls(const QString& path, DataGrid& grid, bool add);
// The same on bytes already in memory (the path is only used for its folder).
int ParseM3u(const QByteArray& bytes, const QString& path, DataGrid& grid);
int ParsePls(const QByteArray& bytes, const QString& path, DataGrid& grid);

// ---- writing ----------------------------------------------------------------------------
struct PlaylistWriteOptions {
    bool relative = false; // optPlaylist_Relativ
    QString markFilter;    // txtPlaylist_FTag: a row is taken when empty or equal to FTag
};

struct PlaylistWriteCounts {
    int written = 0; // entries in the file
    int skipped = 0; // rows left out (relative mode) plus songs missing on disk
};

// The bytes of an M3U file of all rows of `grid` (see above). Writes the folder into
// the DurationS cell of each written row.
QByteArray BuildM3u(DataGrid& grid, const PlaylistWriteOptions& options, const QString& playlistFolder,
                    PlaylistWriteCounts& counts);
// The bytes of a PLS file of the highlighted rows of `grid`.
QByteArray BuildPls(const DataGrid& grid, const PlaylistWriteOptions& options, const QString& playlistFolder,
                    PlaylistWriteCounts& counts);
// Writes `bytes` to `path` through a temporary file in the same folder that replaces the
// target only when complete; false with `error` set on any failure (the target is then
// unchanged and no temporary file is left).
bool WritePlaylistBytes(const QString& path, const QByteArray& bytes, QString* error = nullptr);
