#pragma once
// Settings: the grid lbxIni, the whole of qlt.ini in memory. A setting is a cell,
// addressed by row and column (core/SettingRows.h), its value always text. An empty
// cell means the default of its control.

#include <QString>

class DataGrid;

DataGrid& Settings(); // the grid lbxIni: 8 columns, at least 1000 rows

QString Setting(int row, int col);
void SetSetting(int row, int col, const QString& text);
// True when the cell holds "1" (boolean settings: "1" on, "0" or empty off).
bool SettingOn(int row, int col);
void SetSettingOn(int row, int col, bool on);

// Brings the grid to its shape: at least 8 columns and 1000 rows. Rows missing from an
// older file read as empty.
void EnsureSettingsShape();

// Loads qlt.ini from the program folder (or from `path`); false when it can't be read.
bool LoadSettings();
bool LoadSettings(const QString& path);
// Writes the grid whole to qlt.ini in the program folder; false when the write failed.
bool SaveSettings();
QString SettingsFilePath();

// ---- defaults taken at load --------------------------------------------------------
// The choices of optPref_AnzNum (digits of a track number); the first is the default.
inline constexpr int kNumberDigitChoices[] = {1, 2, 3};
// Row 27: when empty, the first choice is written back; returns the digits in force.
int ApplyNumberDigitsDefault();
// The digits of a track number (row 27), the default when the cell holds no number.
int NumberDigits();
