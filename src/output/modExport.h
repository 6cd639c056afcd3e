#pragma once
// Export of lists for other programs: the grid's two export operations and the
// command flow around them (format by file ending, start folder, messages).
//
// The formats, all in UTF-8 where they are text:
// - ".txt" (0): one line per row, cells divided by the delimiter (TAB), CR LF. Line
//   breaks and TABs inside a cell become blanks, so that a row stays one line.
// - ".csv" (1): RFC 4180 with CR LF; a cell holding the delimiter, a quote or a line
//   break is quoted, quotes doubled. The delimiter is ";" while the program speaks
//   German and "," otherwise: what Excel expects from a German or an English system.
//   The file starts with a UTF-8 byte order mark, without which Excel reads umlauts
//   wrongly.
// - ".xls" (2): an Excel 97-2003 workbook (BIFF8 in a compound file), header row in
//   bold, cells as text; more than 65,536 rows continue on further sheets, each with
//   the header row again.
// - ".xml" (3): <List> with a <Columns> list (element name and caption of every
//   column) and one <Row> per grid row holding one element per column, named after its
//   caption made into a valid XML name.
// - ".htm": a complete HTML5 page with one table row per grid row.
// A file is written under a temporary name and renamed when complete: a failed export
// never leaves a half file, and an existing file stays as it was.

#include <QString>
#include <QStringList>

class DataGrid;
class Prompt;

namespace ExportFormat {
enum : int { None = -1, Txt = 0, Csv = 1, Xls = 2, Xml = 3, Htm = 4 };
}

// ---- the grid's export operations ---------------------------------------------------

// format 0 to 3 as above. title: when not empty, a first line (txt, csv), the sheet's
// name (xls) or an attribute of the root (xml). columnsMode 2: shown columns, else all.
// withHeader 0: no header line. rowsMode 1: selected rows only, else all. extra: when
// not empty, a closing line after the rows. delimiter: the cell divider of ".txt".
bool ExportList(const DataGrid& grid, const QString& path, int format, const QString& title = QString(),
                int columnsMode = 2, int withHeader = 1, int rowsMode = 0, const QString& extra = QString(),
                const QString& delimiter = QStringLiteral("\t"));
bool ExportHtml(const DataGrid& grid, const QString& path);
// Why the last export failed (empty after a success).
QString LastExportError();

// The delimiter of ".csv" files.
QChar CsvDelimiter();

// ---- the command flow ---------------------------------------------------------------

// The format by the file name's ending, compared in lower case: ExportFormat::Txt to
// Htm, or None for any other ending (".html" and ".xlsx" included).
int ExportFormatForPath(const QString& path);

// The five filters of the save dialog in their order (xls, txt, csv, xml, htm), each
// as "<caption> (*.xls)"; joined by ";;" for a Qt file dialog; the default suffix.
QStringList ExportFilters();
QString ExportFilterString();
QString ExportDefaultSuffix();
// The ending of one of those filters ("csv" of "... (*.csv)"); empty for any other text.
QString ExportSuffixOfFilter(const QString& filter);

// Where a list's export folder is remembered in the settings grid.
struct ExportFolderRule {
    int row;
    int col;
    bool onlyWithoutPreset; // remember only when no preset export folder is set
};
namespace ExportFolders {
constexpr ExportFolderRule DataList{6, 1, true};
constexpr ExportFolderRule RefList{85, 2, false};
constexpr ExportFolderRule PictureList{100, 2, false};
constexpr ExportFolderRule Playlist{84, 2, false};
} // namespace ExportFolders

// The start folder of the save dialog: the preset export folder (txtPref_PresetPathExport)
// when not empty, else the remembered one.
QString ExportStartFolder(const DataGrid& settings, const QString& presetFolder,
                          const ExportFolderRule& rule);
// Stores the folder of the chosen file. The preset itself is never written.
void RememberExportFolder(DataGrid& settings, const QString& presetFolder, const QString& chosenPath,
                          const ExportFolderRule& rule);

// The guard before the dialog: false, with the empty-list message, when the list has no rows.
bool CheckExportable(const DataGrid& list, Prompt& prompt);

enum class ExportOutcome { NotWritten, Written, Failed };

// Writes `list` to `path` in the format of its ending: ".htm" by ExportHtml, the
// others by ExportList with the shown columns, the header and all rows. Any other
// ending writes nothing. A failure is shown (critical icon).
ExportOutcome ExportByPath(const DataGrid& list, const QString& path, Prompt& prompt);

struct DataListExportOptions {
    QString presetFolder; // txtPref_PresetPathExport
    bool noMsg = false;   // chbTab1_NoMsg
};

// The export of the data list after the save dialog: writes the file, remembers the
// folder (settings row 6, only without a preset) and reports unless noMsg is set.
ExportOutcome ExportDataList(const DataGrid& list, const QString& chosenPath, DataGrid& settings,
                             const DataListExportOptions& options, Prompt& prompt);

// ---- what the other lists prepare -----------------------------------------------------

// The playlist is exported through the invisible grid lbxDummyPlaylist: five columns
// (Path, Titel, Sec, Time, Size, captions from the playlist's columns 10, 4, 6, 7, 9,
// made on the first call), a first row with the playlist's title, an empty row, then
// every row of the playlist whose FTag is empty.
void PreparePlaylistExport(const DataGrid& playlist, const QString& playlistTitle, DataGrid& dummy);

// The default file name of the picture list's export: "Export " and the grid's caption
// up to its first "(", trimmed.
QString PictureListExportName(const QString& gridCaption);
