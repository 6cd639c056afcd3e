#pragma once
// modScrollText: the scrolling text window's rows and its skins. LbxScrollText holds the
// stamped lines of a song (time, margin, words) between five blank lead-in rows and blank
// trailing rows; a skin (.scs file in the folder "skin") says how the rows around the
// current one are coloured. No widgets: the window asks here what to draw and when to step.

#include <QList>
#include <QString>

#include <array>

class DataGrid;

namespace Scroll {
// Columns of LbxScrollText.
constexpr int ColTime = 1;   // time in ms as text (hidden)
constexpr int ColMargin = 2; // empty margin
constexpr int ColText = 3;   // the words
constexpr int Cols = 3;

constexpr int LeadRows = 5;    // blank rows before the first line
constexpr int TrailRows = 15;  // blank rows after the last line
constexpr int BlankRows = 100; // an empty list holds this many rows
constexpr int FirstTextRow = LeadRows + 1;
constexpr int TickMs = 50; // TimerSongtext_SyncTimer
constexpr qint32 EndSlackMs = 1000;

constexpr qint32 PlayingColor = 12648384; // lblSongtext_Pause while playing
constexpr qint32 PausedColor = 255;       // and in pause
constexpr qint32 Black = 0, White = 16777215;

constexpr int Modes = 5;
constexpr int TableSize = 10;
constexpr char SkinFolder[] = "skin";
constexpr char SkinSuffix[] = ".scs";
constexpr char StaticTag[] = "StaticText";
constexpr char LrcTempName[] = "LrcTmp.lrc";
} // namespace Scroll

// ---- skins -----------------------------------------------------------------------------
// The 33 values of a skin; colours as 0xBBGGRR.
struct ScrollSkin {
    int Mode = 3;
    qint32 WindowBack = 16711680;
    qint32 ListBack = 16762035;
    qint32 ListFore = 16762035;
    QString FontName = QStringLiteral("Tahoma");
    int FontSize = 20;
    bool FontBold = true;
    bool FontItalic = false;
    int Alignment = 2; // 0 left (margin shown), 2 centred
    qint32 ActBack = 16762035;
    qint32 ActFore = 355350;
    bool ActBold = true;
    std::array<qint32, Scroll::TableSize> BackTable{};
    std::array<qint32, Scroll::TableSize> ForeTable{};
    bool Top1Bold = false;

    bool operator==(const ScrollSkin&) const = default;
};

// The text of the default skin.
QString DefaultScrollSkinText();
// The default skin (the default text read over the built-in values).
ScrollSkin DefaultScrollSkin();
// Reads a skin's text over `skin`: a field that does not convert keeps its value.
void ParseScrollSkin(const QString& text, ScrollSkin& skin);
// The skin file's text (without the closing CR LF); writes only what the mode uses.
QString BuildScrollSkin(const ScrollSkin& skin);
// The skin of a file; the default skin when the path is empty or the file is missing,
// empty or unreadable.
ScrollSkin LoadScrollSkin(const QString& path);
// Reads a file for the settings window: false (and *error) when it can't be read.
bool ReadScrollSkinFile(const QString& path, ScrollSkin& skin, QString* error);
// Writes the skin as one line closed by CR LF through the safe writer.
bool SaveScrollSkin(const QString& path, const ScrollSkin& skin, QString* error);
// The name with ".scs" appended unless it ends in it; an ending in any case becomes ".scs".
QString ScrollSkinFileName(const QString& name);
// The folder "skin" beside the program.
QString ScrollSkinFolder();

// ---- rows ------------------------------------------------------------------------------
// The three columns of LbxScrollText.
void DefineScrollColumns(DataGrid& g);
// The stamped lines of an LbxSText-shaped list into the window's list: five blank rows,
// the lines from row 6 on, then blank rows (15 at least, 100 rows at least in all).
// Returns the number of lines taken.
int FillScrollList(DataGrid& scroll, const DataGrid& stext);
// The same from the text of an LRC (lines split as the editor splits them).
int FillScrollListFromLrc(DataGrid& scroll, const QString& lrcText);
// The first row with a time; 0 when none.
int FirstTimedScrollRow(const DataGrid& g);

// What one tick of the timer does.
enum class ScrollStep { None, Next, End };
// Next: the row below `curRow` has a time and `pos` reached it. End: otherwise, when pos
// lies within 1000 ms of the end or is 0 (the song stopped).
ScrollStep ScrollTickStep(const DataGrid& g, int curRow, qint32 pos, qint32 songTotal);

// How a mode shows the rows.
int ScrollVisibleRows(int mode); // 15, 3, 4, 12, 13; 15 for an unknown mode
int ScrollTopRow(int mode, int act);
struct ScrollRowLook {
    qint32 back = 0;
    qint32 fore = 0;
    bool bold = false;
};
// The colours of `row` with `act` current. A hidden row has back and text in ListBack.
ScrollRowLook ScrollRowStyle(const ScrollSkin& skin, int act, int row);

// The text colour that reads on `back`: white when 5 green + 2 red + blue is below 1025.
qint32 ContrastTextColor(qint32 back);

// The end of the song with no next song: blank rows from the end down to curRow + 2 go;
// returns the first row with text (the new current row), 1 when none.
int MakeStaticScrollList(DataGrid& g, int curRow);
// The window's rows back into LbxSText: two blank rows, then per row from `firstRow`
// a stamped row (time above 0) or a text row.
void ScrollListToSText(const DataGrid& scroll, DataGrid& stext, int firstRow);

// ---- the fields by name (the command line and the skin maker) --------------------------
// The 33 values in file order as name and text: Mode, WindowBack, ListBack, ListFore,
// FontName, FontSize, FontBold, FontItalic, Alignment, ActBack, ActFore, ActBold,
// BackTable1..10, ForeTable1..10, Top1Bold.
QList<std::pair<QString, QString>> ScrollSkinFields(const ScrollSkin& skin);
// Sets one field by name (case ignored); false when the name is unknown or the value
// does not convert.
bool SetScrollSkinField(ScrollSkin& skin, const QString& name, const QString& value);
