#pragma once
// The two searches of the synchronising editor: songs that carry an "lrc" frame
// (LbxSongWithLrc) and text or LRC files (LbxTxtLrc). Paths that contain "system" or
// "recycler" (any case) are passed over.

#include <QString>

#include <functional>

class DataGrid;
class TagEngine;

namespace SongLrcCol {
constexpr int Mark = 1, FileName = 2, Folder = 3;
}
namespace TxtLrcCol {
constexpr int FileName = 1, Folder = 2, Kind = 3;
}

// Kind of file the text search lists (optSText_Txt, optSText_Lrc, optSText_TxtLrc).
enum class TxtLrcKind { Txt, Lrc, Both };

void DefineSongWithLrcColumns(DataGrid& g);
void DefineTxtLrcColumns(DataGrid& g, bool showKind);
// The headers of both lists in the language now chosen.
void CaptionFindLists(DataGrid& songs, DataGrid& files);

struct STextFindOptions {
    bool subfolders = false;
    bool add = false; // add to the list instead of clearing it first
    std::function<void(int done, const QString& current)> progress; // may be empty
    std::function<bool()> aborted;                                  // may be empty
    int threads = 0; // readers of the song search; 0 = as the preferences say (ScanReadThreads)
};

// Finds MP3 songs with a user frame named "lrc" (any case). Returns the rows added. The
// walk comes first; then the songs are opened ahead on the readers and their rows added
// in the order of the walk.
int FindSongsWithLrc(DataGrid& g, TagEngine& engine, const QString& folder, const STextFindOptions& o);
// Finds text and LRC files by their last four letters. Returns the rows added.
int FindTxtLrcFiles(DataGrid& g, const QString& folder, TxtLrcKind kind, const STextFindOptions& o);
// Footer count, sort by file name, row 1 current.
void FinishFindList(DataGrid& g, int nameCol);
