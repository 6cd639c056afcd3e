#pragma once
// modSText: the time-stamped text of the synchronising editor. One row of LbxSText per
// line: refrain mark, whole seconds, milliseconds, "mm:ss.nn" and the words. Reads and
// writes the LRC form in .lrc and .txt files and in the "lrc" user text frame of an MP3,
// and changes times and rows. No widgets: the editor reads its controls and calls in.

#include <QList>
#include <QString>
#include <QStringList>

class DataGrid;
class TagEngine;

namespace SText {
// Columns of LbxSText.
constexpr int ColRefrain = 1;  // "->" on a marked refrain row
constexpr int ColSeconds = 2;  // whole seconds
constexpr int ColTimeMSec = 3; // milliseconds, the value timing uses
constexpr int ColMmss = 4;     // "mm:ss.nn", the value written out
constexpr int ColText = 5;     // the words
constexpr int Cols = 5;

constexpr int BlankRows = 100;  // an empty list holds this many blank rows
constexpr int MaxRefrains = 15; // refrain marks at most
constexpr char RefrainMark[] = "->";
constexpr char MissingSongMark[] = "_#-/->"; // appended to a link whose song is missing
constexpr char TranslationMark[] = "**";
} // namespace SText

// ---- the row model ---------------------------------------------------------------------
// The five columns of LbxSText (captions from the caption table).
void DefineSTextColumns(DataGrid& g);
// Clears the list and adds the 100 blank rows; Tag empty.
void ClearSTextList(DataGrid& g);
// While the list has fewer rows than `visibleRows`, blank rows go in up to visibleRows + 1.
void PadSTextRows(DataGrid& g, int visibleRows);
// Keys 1 to Rows() in order.
void RenumberSTextKeys(DataGrid& g);
// The last row whose text is not empty; 0 when none.
int LastSTextRow(const DataGrid& g);
bool RowHasTime(const DataGrid& g, int row);
qint32 RowTime(const DataGrid& g, int row); // column 3 as a number, 0 when empty

// ---- time forms ------------------------------------------------------------------------
// "mm:ss.nn" of exactly 8 characters to ms; anything else (or a non-digit) gives -1.
qint32 ParseSTextTime(const QString& mmss);
// ms to "mm:ss.nn" (minutes with at least two digits; negative times keep their sign).
QString FormatSTextTime(qint32 ms);
// Whole seconds of a stamp: ms / 1000 rounded half to even.
qint32 StampSeconds(qint32 ms);
// Sets columns 2, 3 and 4 of a row as a stamp (seconds by rounding).
void StampRow(DataGrid& g, int row, qint32 ms);
void ClearRowTime(DataGrid& g, int row);

// ---- reading ---------------------------------------------------------------------------
struct STextReadResult {
    bool ok = false;          // false: unreadable; the list was left as it was
    QString error;            // why, when not ok
    bool anyTimed = false;    // some row has a time above 0
    QString song;             // the song named by row 1, or empty
    bool songMissing = false; // row 1 names a song that does not exist (marked in the cell)
};
// Adds one line as a row: position-bound "[mm:ss.nn]text" or a plain row.
void AddSTextLine(DataGrid& g, const QString& line);
// The lines a file's text gives: items before the last CR LF; without any CR LF, every
// line of a line reader (LF, CR or CR LF ends a line; the last line needs no end).
QStringList SplitSTextLines(const QString& text);
// Reads a .lrc or .txt file into the list (UTF-8, else Windows-1252) and pads to
// `visibleRows`. Tag becomes the path.
STextReadResult ReadSTextFile(DataGrid& g, const QString& path, int visibleRows);
// The same from text already in memory (Tag = `tag`).
STextReadResult ReadSTextText(DataGrid& g, const QString& text, const QString& tag, int visibleRows);

enum class SongLrc { Ok, NotMp3, NoLrc };
// The "lrc" frame of a song into the list. NotMp3: not type 1 (caption row 1075);
// NoLrc: the song holds no such frame (caption row 1076). The list is kept on failure.
SongLrc ReadSTextFromSong(DataGrid& g, TagEngine& engine, const QString& path, int visibleRows,
                          STextReadResult* result = nullptr);
// Row 1's text names a song when it begins with "/" and ends in ".mp3" (any case).
bool IsSongLink(const QString& text);
// Checks the song link of row 1; a missing song gets the mark appended.
void CheckSongLink(DataGrid& g, STextReadResult& r);

// ---- writing ---------------------------------------------------------------------------
// The text of a .txt file: rows 1 to the last with text, trimmed, each with CR LF.
QString BuildSTextTxt(const DataGrid& g);
// The rows 1 to the last one with words as printed text: with `withTime` a timed row
// reads "seconds - mm:ss.nn  -  words", every other row its words alone.
QString STextPrintText(const DataGrid& g, bool withTime);
// The text of a .lrc file: a timed row "[mm:ss.nn]" + trimmed text, others as they stand.
QString BuildSTextLrc(const DataGrid& g);
// The text of the "lrc" frame: all rows, padding included, nothing trimmed.
QString BuildSTextFrame(const DataGrid& g);
// True when the name is to get a ".txt"/".lrc" because it holds none (case ignored).
QString STextFileName(const QString& name, bool lrc);
// Writes the file (UTF-8 without mark, CR LF) through the safe writer; empties Tag.
bool WriteSTextFile(DataGrid& g, const QString& path, bool lrc, QString* error);
// Some row before the last has a time other than 0 (a save in a song needs one).
bool HasStampForSong(const DataGrid& g);
enum class SongWrite { Ok, NotMp3, NoStamp, Failed };
// Puts the list as the "lrc" frame into the song and saves the tag.
SongWrite WriteSTextInSong(const DataGrid& g, TagEngine& engine, const QString& song, QString* error);
enum class SongRemove { Ok, NotMp3, NoLrc, Failed };
// Takes the "lrc" frame out of the song and saves the tag.
SongRemove RemoveLrcFromSong(TagEngine& engine, const QString& song, QString* error);

// ---- commands --------------------------------------------------------------------------
// Shifts the current row by delta (an unstamped row is stamped at 0); with fromActRow and
// a non-zero result also every timed row below. No lower bound, no reordering.
void ShiftSTextRows(DataGrid& g, qint32 delta, bool fromActRow);
// Inserts a blank row before or after the current row and makes the row below the
// current one current; at the last row a blank row is added and becomes current.
void InsertSTextRow(DataGrid& g, bool before);
// Inserts a blank line after the current row; the current row stays where it is.
void InsertBlankLine(DataGrid& g);
void EraseAllTimestamps(DataGrid& g);
// Deletes CR LF, CR and LF inside the texts.
void RemoveLineBreaks(DataGrid& g);
// Takes "[...]" pieces out of a text; a "[" without "]" after it ends the work.
QString RemoveTimeInLine(QString text);
void RemoveTimeInText(DataGrid& g);
void RemoveRefrainMarks(DataGrid& g);

enum class Refrain { Marked, Unmarked, Refused, NoText };
Refrain ToggleRefrain(DataGrid& g, int row);
QList<int> RefrainRows(const DataGrid& g);
// Inserts a row before the current row holding the text of `markedRow`; no time.
void InsertRefrain(DataGrid& g, int markedRow);
void InsertAllRefrains(DataGrid& g);

// Some text holds the translation mark "**".
bool HasTranslation(const DataGrid& g);
// Each text with "**" becomes the trimmed part after the first "**".
void ApplyTranslation(DataGrid& g);
// A text being edited with the translation box ticked gets "**" at its end, unless it holds one.
QString WithTranslationMark(const QString& text);
