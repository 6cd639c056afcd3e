#pragma once
// The caption table: every text the user sees, one numbered row per text, one column
// per language (3 German, 4 English, 5 and 6 imported). Row numbers are named in
// core/CaptionRows.h.

#include <QString>

class DataGrid;

using CaptionRow = int;
constexpr int kCaptionRowCount = 1400;
constexpr int kLanguageGerman = 3;
constexpr int kLanguageEnglish = 4;
constexpr int kCaptionColumnCount = 6; // number, note, German, English, two imported

DataGrid& CaptionTable(); // the grid LbxCap
int LanguageColumn();
void SetLanguageColumn(int column);

// The text of `row` in the current language; empty when the row or cell is empty.
QString Caption(CaptionRow row);

// Finds the caption file in the program folder ("Caption.qlt" or "caption.qlt"), or
// an empty string when there is none.
QString CaptionFilePath();
// Loads the table, pads it to 1,400 rows and 6 columns, numbers the rows and sets the
// headers. False when the file is missing or unreadable (the table is then empty).
bool LoadCaptionTable();
// Pads to 1,400 rows and 6 columns, numbers the rows, sets the headers; keeps the texts.
void EnsureCaptionTableShape();
// Sets the column headers after a load or a language change.
void SetCaptionTableHeaders();
