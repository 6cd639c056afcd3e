#pragma once
// The print commands of the windows: a text onto the default printer, rows of a list
// through the print preview. The page setup comes from the settings rows.

#include "output/modPrint.h"

class DataGrid;
class Prompt;
class QWidget;

// Prints `text` with the page line naming `path`; tells that printing is done, or shows
// the printer's error in a critical box. False when printing failed.
bool PrintTextCommand(Prompt& prompt, const QString& path, const QString& text);

// Prints the chosen rows of `grid` after the print preview (`mark`: the list's mark box
// for PrintRowChoice::Marked).
void PrintGridCommand(QWidget* parent, Prompt& prompt, const DataGrid& grid, PrintRowChoice choice,
                      const QString& mark, const QString& title);

// The print entries of the lists' menus: PrintAll, PrintHighlighted, PrintFTag print the
// rows of `grid` (its Tag names the list on the page). False for any other key.
bool PrintMenuKey(QWidget* parent, const QString& key, const DataGrid& grid, const QString& mark);

// Tests send every print into this PDF file instead of the printer (empty: the printer),
// and skip the preview.
void SetPrintToPdf(const QString& pdfPath);
