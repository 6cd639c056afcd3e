#pragma once
// The translators' commands on the caption table (the window FrmCap shows them): one
// language in and out as a qlt_*.lng text file, erase a translation, save the table,
// find a text and the next free row. The file pickers stay in the window.
//
// A .lng file holds one row of the table per line, row 1 in line 1, written as UTF-8
// with CR LF. A file that is not valid UTF-8 is read as Windows-1252.

#include <QString>

class DataGrid;

constexpr int kImportSlotFirst = 5, kImportSlotLast = 6;

// "qlt_Español.lng" -> "Español": the file name without "qlt_" in front and ".lng"
// behind (either only when present).
QString LanguageNameFromFile(const QString& fileName);

// Reads the file line by line into column `slot` (5 or 6) of the caption table: line n
// to row n, at most 1,400 lines; rows beyond the end of a shorter file keep their text.
// Sets the column caption to the language name and shows the column; slot 5 also sets
// Settings row 97 to "1". Returns the language name, empty when the file can't be read.
QString ImportLanguage(int slot, const QString& path);

// The file a language export goes to: the chosen file's name, prefixed "qlt_" unless it
// begins so already (compared in lower case), in the folder language of the program.
QString LanguageExportPath(const QString& chosenFile);
// Writes column `col`, one line per row, to `path`; false when the write failed.
bool ExportLanguage(int col, const QString& path);

// Empties column `col` in all rows.
void EraseTranslation(int col);

// Saves the table to the caption file of the program folder (the spelling found there,
// else "Caption.qlt"); false when the write failed.
bool SaveCaptionTable();

// Searches `text` (contained, without regard to case) in column `col` from the row
// behind `curRow` to the end, then from row 1. Returns the row, 0 when none.
int FindCaptionText(const QString& text, int col, int curRow);
// The next row behind `curRow` whose column 2 (the translator's note) is empty; 0 when
// none.
int FindFreeCaptionRow(int curRow);

// Unsaved changes of the caption table (edits, import, erase); cleared by a save.
bool CaptionTableChanged();
void SetCaptionTableChanged(bool changed);
