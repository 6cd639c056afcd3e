#pragma once
// modPrint: the page setup kept in the settings rows 1 and 10-20, and the printing of a
// plain text page by page onto a PrintDevice.

#include <QString>
#include <QStringList>

class DataGrid;
class PrintDevice;

// The unit codes of row 10.
inline constexpr int kPrintUnitMm = 6, kPrintUnitInch = 5;
inline constexpr double kMmPerInch = 25.4;
// The printer's font; fontconfig gives the metric-compatible face where Arial is absent.
inline const char* const kPrintFontFamily = "Arial";

struct PageSetup {
    bool inch = false;
    double left = 20, right = 20, top = 20, bottom = 20;
    double header = 15, footer = 15;
    double height = 297, width = 210;
    bool noPageNo = false, noPath = false;
    double fontSize = 12;
};

// The setup from the settings grid; an empty or unreadable cell takes its default.
PageSetup ReadPageSetup(const DataGrid& ini);
// Writes every value of `setup` into the rows 1 and 10-20, column 1.
void WritePageSetup(DataGrid& ini, const PageSetup& setup);
// The lengths of `setup` turned into the other unit (font size stays); nothing happens
// when `toInch` is already its unit.
PageSetup ConvertPageSetup(const PageSetup& setup, bool toInch);
// A length as the page setup shows it: at most two decimals, no trailing zeros.
QString FormatLength(double value);
// Reads a number typed into the page setup ("12", "12.5", "12,5"); false when it isn't one
// or is negative.
bool ParseLength(const QString& text, double* value);

// The page line: "path  -  Page 01", one part alone, or empty when both are off.
QString PageLine(const QString& path, const QString& pageCaption, int page, bool noPath, bool noPageNo);

// Prints `text` (lines at CR LF or LF) from the top margin down, breaking the page at
// the bottom margin and printing the page line at the footer distance on every page.
// False with `error` holding the printer's text when the printer fails.
bool PrintText(PrintDevice& device, const PageSetup& setup, const QString& path, const QString& pageCaption,
               const QString& text, QString* error);

// The rows `rows` (1-based) of `grid` as text lines, the visible columns joined by a tab
// stop of blanks: the first line holds the captions.
QString GridRowsText(const DataGrid& grid, const QList<int>& rows);

// Which rows a list print takes: all, the highlighted ones, or those whose mark (column
// 2) equals the non-empty `mark`.
enum class PrintRowChoice { All, Highlighted, Marked };
QList<int> PrintRows(const DataGrid& grid, PrintRowChoice choice, const QString& mark);
