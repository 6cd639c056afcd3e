#pragma once
// The commands of the texts area (FrmTexte): song texts kept as .txt files and lyric
// entries kept in the songs' tags. Find, open, save, delete and link texts, the links
// inside a text, the hand-over to the synchronising editor and the direct edit of the
// two lists. No widget is touched: the window reads its controls into TexteEnv, keeps
// the two text boxes in a TextPair and gives the dialogues as hooks.
//
// Text files are written as UTF-8 without a byte-order mark with CR LF line ends, and
// read as UTF-8 or, when that is not valid, as Windows-1252. A text's first line is a
// song link when it is longer than 2 characters and begins with "/"; a link whose song
// is gone is marked by "_#-/->" behind the path.

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class DataGrid;
class Prompt;
class TagEngine;

// The mark behind a link line whose song no longer exists.
inline constexpr char16_t kMissingLinkMark[] = u"_#-/->";
// The most lines a text box takes from a file (indexes 0 to 20,000).
constexpr int kMaxTextLines = 20001;
// The name of the text handed to the synchronising editor, in the folder "temp".
inline constexpr char16_t kSyncTempName[] = u"synctemp.txt";

// ---- the two text boxes ---------------------------------------------------------------
struct TextPair {
    QString text[2];       // txtTexte_Txt1, txtTexte_Txt2
    int active = 1;        // 1 or 2: the box with the active flag
    bool box2Shown = true; // box 2 and lblTexte_Splitter are visible
    QString& Active() { return text[active == 2 ? 1 : 0]; }
    const QString& Active() const { return text[active == 2 ? 1 : 0]; }
};
// The box a text is loaded into: box 1 when only box 1 is wanted or box 1 is empty;
// else box 2 (shown first when hidden) when it is hidden or empty; else the active box.
// The target becomes active and is emptied. Returns 1 or 2.
int ChooseTargetBox(TextPair& boxes, bool txt1Only);
// Text colour and marker colour (0xBBGGRR) of a box by its flag.
constexpr int kActiveTextColour = 0, kActiveMarkerColour = 16046549, kPassiveTextColour = 7631988;

struct TexteEnv {
    TexteEnv(Prompt& p, TagEngine& e, DataGrid& t, DataGrid& l) : prompt(p), engine(e), txt(t), lyrics(l) {}

    Prompt& prompt;
    TagEngine& engine;
    DataGrid& txt;                // LbxTxt
    DataGrid& lyrics;             // LbxLyrics
    DataGrid* settings = nullptr; // lbxIni; null: Settings()
    bool saveSettingsFile = true; // write qlt.ini when a command stores a folder

    // the controls, as the window reads them
    bool attachTxt = false;           // chbTexte_AttachTxt
    bool attachLyrics = false;        // chbTexte_AttachLyrics
    bool withSubFolderTxt = false;    // chbTexte_WithSubFolderTxt
    bool withSubFolderLyrics = false; // chbTexte_WithSubFolderLyrics
    bool withLyricsOnly = false;      // chbTexte_WithLyricsOnly
    bool newFile = false;             // chbTexte_NewFile
    bool saveNew = false;             // chbTexte_SaveNew
    bool deleteAll = false;           // chbTexte_DeleteAllLyrics
    bool noMsg = false;               // chbTexte_NoMsg
    bool openPlayTxt = false;         // chbTexte_OpenPlayTxt
    bool openPlaySong = false;        // chbTexte_OpenPlaySong
    bool txt1Only = false;            // chbTexte_Txt1Only

    // dialogues: start folder in, chosen path out; empty = cancelled
    std::function<QString(const QString&)> chooseFolder;    // search folder
    std::function<QString(const QString&)> chooseSongFile;  // audio filter (Caption 662)
    std::function<QString(const QString&)> chooseTextSave;  // text filter, default "*.txt"
    std::function<QString(const QString&)> chooseAnyFile;   // every file (Caption 551)
    std::function<QString(const QString&)> chooseTargetDir; // folder for copied or moved links
    // long searches: called between two files so that the window stays alive
    std::function<void()> pump;
    const bool* cancel = nullptr; // btnTexte_CancelFindLyrics sets it
    int threads = 0;              // readers of the lyric search; 0 = as the preferences say
    // the song to the player
    std::function<void(const QString& path)> playSong;

    DataGrid& Settings() const;
};

// ---- the lists ------------------------------------------------------------------------
void DefineTxtColumns(DataGrid& g);
void SetTxtCaptions(DataGrid& g);
void DefineLyricsColumns(DataGrid& g);
void SetLyricsCaptions(DataGrid& g);
QString TxtRowPath(const DataGrid& txt, int row);
QString LyricsRowPath(const DataGrid& lyrics, int row);
// The row count in the footer (column 1 of LbxTxt, column 2 of LbxLyrics).
void ShowTxtCount(DataGrid& txt);
void ShowLyricsCount(DataGrid& lyrics);
// Header clicks of LbxLyrics: column 1 sorts by "1,2", any other column alone.
void SortLyricsByHeader(DataGrid& lyrics, int col);
// The progress steps of the searches: every file while fewer than 11 are left, every
// 50th while fewer than 1001 are left, else every 100th (`number` from 1).
bool ProgressStep(int number, int total);
QString ProgressText(int number, int total);

// btnTexte_FindTxt: folder dialogue (start settings row 77 column 2), then the walk.
// Returns the rows found, -1 on cancel.
int FindTextFiles(TexteEnv& env);
int FindTextFilesIn(TexteEnv& env, const QString& folder);
// btnTexte_FindLyrics: folder dialogue (start settings row 1 column 2), then the walk.
// Files of type 0, 2, 5 and 9 are passed over. Returns the rows added, -1 on cancel.
int FindLyrics(TexteEnv& env);
int FindLyricsIn(TexteEnv& env, const QString& folder);
// The rows of one song in the lyric search, read with `engine` (a reader's own): one per
// lyric entry, one without index when it has none (not with `withLyricsOnly`), none for a
// file that can't be read or whose type carries no entries.
void LyricRowsOfFile(TagEngine& engine, const QString& path, bool withLyricsOnly,
                     std::vector<QStringList>& rows);
// A file type that carries no lyric entries.
bool TypeWithoutLyrics(int type);

// ---- texts ----------------------------------------------------------------------------
// A line of more than 2 characters that begins with "/": the path of a song.
bool IsSongLinkLine(const QString& line);
// Splits a text into lines at CR LF or LF (a last line end gives no empty line).
QStringList SplitTextLines(const QString& text);
// A text file as a box shows it: lines 1 to 20,001, each followed by CR LF; a first line
// that links a missing song gets "_#-/->". False (and an empty text) when the file can't
// be read. `linkedSong` receives the path of an existing linked song.
bool ReadTextForBox(const QString& path, QString& text, QString* linkedSong = nullptr);
// Every line end (CR LF, LF or CR) made CR LF.
QString WithCrLf(const QString& text);
// The text as a file holds it: line ends made CR LF, UTF-8 without a mark.
QByteArray TextFileBytes(const QString& text);

// btnTexte_OpenTxt (and the click on a row: `byClick` takes row 1 when none is
// selected). Loads into the box of ChooseTargetBox. False when nothing was loaded.
bool OpenTextFile(TexteEnv& env, TextPair& boxes, bool byClick = false);
// btnTexte_OpenLyrics (and the click on a row). A row without an entry loads nothing.
bool OpenLyric(TexteEnv& env, TextPair& boxes, bool byClick = false);
// btnTexte_SaveLyric: the active box as lyric entry. True when written.
bool SaveLyric(TexteEnv& env, const TextPair& boxes);
// btnTexte_SaveAsTxt: the active box to a chosen .txt file. True when written.
bool SaveAsText(TexteEnv& env, const TextPair& boxes);
// btnTexte_DeleteTxt: the selected text file after the confirmation of the file layer.
bool DeleteTextFile(TexteEnv& env, bool toTrash);
// btnTexte_DeleteLyrics: the entry of the current row, or every entry of its song.
bool DeleteLyrics(TexteEnv& env);
// btnTexte_LinkToTxt: the selected text file's path into the first empty of the eight
// link fields of a chosen song.
bool LinkTextToSong(TexteEnv& env);
// The eight fields, in the order they are filled.
QStringList LinkFieldNames();

// ---- links inside a text ----------------------------------------------------------------
// btnTexte_FillCmbWithLinks: the trimmed link lines of `text` whose files exist.
QStringList LinksInText(const QString& text);
// optTexte_LinkInTextbox: a chosen file's path and CR LF in front of the active box.
bool InsertLinkIntoText(TexteEnv& env, TextPair& boxes);
// optTexte_CopyLinks / optTexte_MoveLinks: every listed file to a chosen folder. Returns
// the files copied or moved, -1 on cancel.
int CopyOrMoveLinks(TexteEnv& env, const QStringList& links, bool move);

// ---- to the synchronising editor ----------------------------------------------------------
// btnTexte_TxtToSync: box 1, or box 2 when it is active, to "synctemp.txt" in the
// folder temp; `open` gets the file's path and reads it; the file is deleted after.
bool HandTextToEditor(TexteEnv& env, const TextPair& boxes, const std::function<void(const QString&)>& open);
QString SyncTempPath();

// ---- direct edit --------------------------------------------------------------------------
// chbTexte_DirectEditLyrics: a new language (column 3) or description (column 4) of the
// entry of `row`, written to the song. False: the edit is refused and the cell keeps its
// old value.
bool EditLyricCell(TexteEnv& env, int row, int col, const QString& value);
// chbTexte_DirectEditTxt: renames the text file of `row`. False (with Caption 479): the
// cell keeps the old name.
bool RenameTextFile(TexteEnv& env, int row, const QString& newName);
