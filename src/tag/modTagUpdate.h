#pragma once
// Writing tags from the tag list: the batch update of the chosen set, the deletion of
// tag sets, the single comment, the box copies, the transfer from set to set, and the
// two commands that turn file names into tags and tags into file names. The window
// reads its boxes into TagBoxes and calls these; nothing here touches a widget.

#include "tag/modTagList.h"

#include <QString>
#include <array>
#include <functional>

class DataGrid;
class Prompt;
class TagEngine;

// One box of the tag window: only an enabled box is written; its text may be empty,
// which clears the field.
struct TagBox {
    bool enabled = false;
    QString text;
};

// All boxes of the five tabs, by the window's indices.
struct TagBoxes {
    // V1: v1[1..6] the text boxes; the genre combo by its item data (-1 = no item).
    std::array<TagBox, 7> v1;
    bool v1GenreEnabled = false;
    int v1GenreData = -1;
    TagBox v2Genre;
    std::array<TagBox, 15> v2;    // 13 rating, 14 mood
    bool v2CommentEnabled = true; // the comment area (a V2 source of a transfer)
    TagBox apeGenre;
    std::array<TagBox, 7> ape;
    TagBox lyricsGenre;
    std::array<TagBox, 7> lyrics;
    TagBox typicalGenre;
    std::array<TagBox, 15> typical;
};

// What every batch of the tag list needs.
struct TagBatch {
    DataGrid* lbxTag = nullptr;
    DataGrid* lbxInput = nullptr; // results go back into its rows (may be null)
    TagEngine* engine = nullptr;
    Prompt* prompt = nullptr;
    QString markFilter;   // txtTab2_FTag
    bool noMsg = false;   // chbTab2_NoMsg
    TagProgress progress; // after each file; the window pumps its events here
    bool* busy = nullptr; // set while the batch runs (blocks the re-reading of the row)
    QString journalPath;  // the old tags of every written file go there (empty: no undo)
    // data list rows by key, built on first use within one command
    QHash<QString, int> inputRows;
    bool inputRowsBuilt = false;
};

struct BatchResult {
    bool ran = false; // false: a guard or a No ended the command before any file
    int done = 0;
    int failed = 0;
};

// ---- update -----------------------------------------------------------------------------
// Writes the chosen set of one file. Returns true when the file failed. `lyricsError`
// receives the engine's text of a failed SaveLyrics (shown at once by the caller).
bool UpdateFile(TagEngine& engine, const QString& path, UpdateSet set, const TagBoxes& boxes,
                QString* lyricsError = nullptr);

// btnTab2_UpdateTag.
BatchResult UpdateTags(TagBatch& batch, UpdateSet set, const TagBoxes& boxes);

// Puts rating or mood ("Rating" / "Mood") into the user text frames of the current file
// for tagKind "ID3v2"; for "wma" nothing is written.
void SetTagRatingMood(TagEngine& engine, const QString& name, const QString& value, const QString& tagKind);

// The provision of the Lyrics set on the current file: without a V1 tag one is made
// (album of two blanks) and the file opened again.
void EnsureV1ForLyrics(TagEngine& engine, const QString& path);

// ---- delete ------------------------------------------------------------------------------
// btnTab2_DeleteTag.
BatchResult DeleteTags(TagBatch& batch, UpdateSet set);

// ---- comments of the current row ---------------------------------------------------------
// btnTab2_UpdateComment: `item` is the chosen item of cmbTab2_LfdNr (0 = new comment).
// Returns false when the language is empty (message shown) or the save failed.
bool UpdateComment(TagEngine& engine, const QString& path, int item, const QString& language,
                   const QString& description, const QString& text, Prompt& prompt);
// btnTab2_DeleteComment (item >= 1) and btnTab2_DeleteAllComments.
bool DeleteComment(TagEngine& engine, const QString& path, int item, Prompt& prompt);
bool DeleteAllComments(TagEngine& engine, const QString& path, Prompt& prompt);

// ---- box copies (btnTab2_V1V2, btnTab2_V2V1): texts only, nothing on disk ---------------
void CopyV1ToV2(const std::array<QString, 7>& v1, std::array<QString, 15>& v2);
void CopyV2ToV1(const std::array<QString, 15>& v2, std::array<QString, 7>& v1);

// ---- transfer -----------------------------------------------------------------------------
// btnTab2_TagToTag: `index` 0 to 19 of cmbTab2_TagToTag (-1 = nothing chosen); `strip` is
// chbTab2_TagToTag.
BatchResult TagToTag(TagBatch& batch, int index, const TagBoxes& boxes, bool strip);

// ---- names --------------------------------------------------------------------------------
// Number, artist and title of a file name without extension: a leading number, then
// artist and title split at the first " - " style hyphen.
struct NameParts {
    QString number, artist, title;
};
NameParts SplitNameForTag(const QString& base);

// What btnTab2_FilenameToTag leaves for the boxes of the set after the last success.
struct NameToTagShown {
    bool any = false;
    QString track, artist, title;
};

// Writes number (with `withTrack`), artist and title of `fileName` into `set` of the open
// file `path` of type `type` and saves that set. Returns the save's result (0 failed);
// `parts` and `track` receive what was written.
int SaveNameToSet(TagEngine& engine, const QString& path, int type, const QString& fileName, UpdateSet set,
                  bool withTrack, NameParts* parts = nullptr, QString* track = nullptr);

// btnTab2_FilenameToTag.
BatchResult FilenameToTag(TagBatch& batch, UpdateSet set, bool withTrack, NameToTagShown* shown = nullptr);

// The move used by TagToFilename: source path, target path, final path out; 0 = done.
using FileMover = std::function<int(const QString& source, const QString& target, QString* finalPath)>;
FileMover DefaultFileMover();

// btnTab2_TagToFilename. `formArtist`/`formTitle`: the form's boxes of the set (the
// guard); `digits`: digits of a track number.
BatchResult TagToFilename(TagBatch& batch, UpdateSet set, const QString& formArtist, const QString& formTitle,
                          bool withTrack, int digits, const FileMover& mover = DefaultFileMover());

// Reads the artist, title and track of a set from the current file; false when the set
// is not present in it.
bool ReadSetNameFields(const TagEngine& engine, UpdateSet set, QString* artist, QString* title,
                       QString* track);
