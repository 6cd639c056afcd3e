#pragma once
// The tag list LbxTag: rows of one file type taken from the data list, the reading of
// one row's file into plain values for the tag window, and which tabs and update
// options a file type offers. No widget is touched here: the window turns these values
// into its boxes.

#include <QHash>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "tag/TagFields.h"

class DataGrid;
class Prompt;
class TagEngine;

// Columns of LbxTag.
namespace TagCol {
enum : int { No = 1, FTag = 2, FileName = 3, Type = 4, Path = 5, KeyInput = 6 };
constexpr int Count = 6;
} // namespace TagCol

// The tag set a batch works on: the five update options, numbered as they are stored.
enum class UpdateSet : int { None = 0, V1 = 1, V2 = 2, Ape = 3, Lyrics = 4, Typical = 5 };

// Progress of a loop: done items, total items. Also the place where a window pumps its
// events between two files; the loop itself never does.
using TagProgress = std::function<void(int done, int total)>;

// Defines the six columns of LbxTag (once; a grid that has them is left alone).
void DefineTagList(DataGrid& lbxTag);
// Puts the column captions of the current language on LbxTag.
void SetTagListCaptions(DataGrid& lbxTag);

// Full path of a LbxTag row: Path, "/", FileName.
QString TagRowPath(const DataGrid& lbxTag, int row);

// ---- LoadTagList -----------------------------------------------------------------------
enum class LoadTagResult {
    Loaded,   // LbxTag holds the new rows; the window reads row 1 and sets its tabs
    KeptList, // the user kept the old list: the window comes up with it unchanged
    Ended     // a guard or a No ended the command; nothing changed
};

struct LoadTagRequest {
    QString typeText;                 // the file type text of the rows to take ("MP3", "mpeg" = "MP3")
    QString markFilter;               // txtTab1_FTag of the data list
    TagProgress progress;             // may be empty
    std::function<void()> clearBoxes; // called when an old list is replaced (V1 and V2 boxes)
};

// Builds LbxTag from the selected rows of the data list. `typeText` is normalised in
// the request's copy ("mpeg" becomes "MP3").
LoadTagResult LoadTagList(DataGrid& lbxInput, DataGrid& lbxTag, LoadTagRequest& request, Prompt& prompt);
QString NormaliseTypeText(const QString& typeText);

// ---- ReadTagRow ------------------------------------------------------------------------
// Everything the tabs show for one file. Index i of each array is the box of the same
// index in the window (txtTab2_V1(1..6) use indices 1 to 6; index 0 is unused there).
struct TagRowValues {
    bool opened = false; // false: the file could not be read; every box stays empty
    int type = 0;
    int v1GenreIndex = 0; // item index of cmbTab2_GenreV1: 0 = first item (no genre)
    std::array<QString, 7> v1;
    QString v2Genre;
    std::array<QString, 15> v2; // 0..12 fields, 13 rating, 14 mood
    QString apeGenre;
    std::array<QString, 7> ape;
    QString lyricsGenre;
    std::array<QString, 7> lyrics;
    QString typicalGenre;
    std::array<QString, 15> typical;
    // comment area
    int commentCount = 0;
    int commentItem = 0; // item of cmbTab2_LfdNr to select: 0 = "new comment", 1 = comment 1
    QString commentLanguage, commentDescription, commentText;
    bool hasComment = false; // lblTab2_HasComment shows its caption
};

// Item index of cmbTab2_GenreV1 for a V1 genre code: the first item (data 255) for 255
// and for any code the genre table does not hold, else code + 1.
int V1GenreComboIndex(int code, int genreCount);

// Reads the file at `path` into the values of the tabs.
TagRowValues ReadTagRow(TagEngine& engine, const QString& path);
// The same for LbxTag row `row`.
TagRowValues ReadTagRow(TagEngine& engine, const DataGrid& lbxTag, int row);

// The rating and mood of the current file's V2 user text frames: the last text that
// starts with "QLT" and the last that starts with "MOOD" win.
void ReadRatingMood(const TagEngine& engine, QString* rating, QString* mood);

// ---- fields behind the boxes ------------------------------------------------------------
// The engine field of each text box, in box order: V1 boxes 1 to 6 (element 0 = box 1),
// V2 boxes 0 to 12, APE and Lyrics boxes 0 to 6, and the typical boxes of a file type
// (2 WMA: 0 to 14 with rating and mood; 4 FLAC, 5 WAV, 6 OGG, 9 MP4: 0 to 12). Empty for
// other types.
const std::vector<TagField>& V1BoxFields();
const std::vector<TagField>& V2BoxFields();
const std::vector<TagField>& ApeBoxFields();
const std::vector<TagField>& LyricsBoxFields();
const std::vector<TagField>& TypicalBoxFields(int type);
// The genre field of the typical set of a type; false when the type has none.
bool TypicalGenreField(int type, TagField* field);

// ---- SetTabsForType --------------------------------------------------------------------
struct TabsForType {
    std::array<bool, 5> tabEnabled{};    // V1, V2, APE, Lyrics, typical
    QString tab4Caption;                 // caption of the typical tab
    std::array<bool, 5> optionOffered{}; // OptTab2_UpdateV1 .. OptTab2_UpdateTypical
    bool optionTypicalSet = false;       // OptTab2_UpdateTypical comes up set
    // V1 check boxes: for MONKEY and AAC all set and disabled and the boxes emptied;
    // for the others cleared and enabled with their two buttons.
    bool v1ChecksEnabled = true;
    bool v1ChecksChecked = false;
    bool v1BoxesEmptied = false;
    // Captions of lblTab2_Typical(0..14); empty for the types without a typical set.
    std::array<QString, 15> typicalLabels;
    std::array<int, 15> typicalLabelRows{};
};

// `updateOption` is the text of the settings row of the update options.
TabsForType SetTabsForType(const QString& typeText, const QString& updateOption);

// The update option as the settings row keeps it: five characters, "1" at the place
// of the chosen option ("00001" = typical). A lone digit 1 to 5 is read as that option.
UpdateSet UpdateOptionFromSetting(const QString& text);
QString UpdateOptionToSetting(UpdateSet set);

// ---- LbxInput rows ---------------------------------------------------------------------
// Key identity (KeyIdentity of list/RowKeys.h) -> row of the data list, built once per
// command; look a KeyInput cell up by its identity.
QHash<QString, int> InputRowsByKey(const DataGrid& lbxInput);
// Rewrites the tag cells (columns HasTag to Mood) of one data list row from the
// current file of the engine (OpenFile must have been called for that row's file).
void RefreshInputTagCells(DataGrid& lbxInput, int row, const TagEngine& engine);
