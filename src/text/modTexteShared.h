#pragma once
// Helpers shared by the two source files of modTexte; not for other modules.

#include <QString>

class DataGrid;
struct TexteEnv;

namespace qlt_texte {
QString SettingCell(TexteEnv& env, int row, int col);
// Stores a settings cell (and writes qlt.ini when the env says so).
void StoreSetting(TexteEnv& env, int row, int col, const QString& value);
// Stores the folder of `path`.
void StoreFolderOf(TexteEnv& env, int row, int col, const QString& path);
// The guards of a command on a row: the list has rows, and a row is selected (the click
// variant takes the current row, or row 1). `row` receives it.
bool RowChosen(TexteEnv& env, const DataGrid& g, bool byClick, int& row);
void TellFailure(TexteEnv& env, const QString& text);
} // namespace qlt_texte
