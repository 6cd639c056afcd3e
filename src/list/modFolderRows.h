#pragma once
// The folder view's commands on folders: the favourite folders (up to ten, kept in the
// settings), and the rows of the data list whose files lie in one folder, which the
// folder's menu removes from the list or reads again from disk.

#include <QString>
#include <QStringList>
#include <vector>

class DataGrid;
class TagEngine;
struct ListEnv;

inline constexpr int kMaxFavoriteFolders = 10;

// The favourites in their order; empty cells are skipped.
QStringList FavoriteFolders(const DataGrid& lbxIni);
bool IsFavoriteFolder(const DataGrid& lbxIni, const QString& folder);
// Adds `folder` behind the others; false when it is there already or all places are taken.
bool AddFavoriteFolder(DataGrid& lbxIni, const QString& folder);
// Removes `folder`; the ones behind it move up. False when it was not a favourite.
bool RemoveFavoriteFolder(DataGrid& lbxIni, const QString& folder);

// The rows of the data list whose folder is `folder` (and, with `withSubfolders`, the
// folders below it), in list order.
std::vector<int> RowsOfFolder(const DataGrid& lbxInput, const QString& folder, bool withSubfolders);

// Removes those rows from the list; no file is touched. Returns the rows removed.
int RemoveRowsOfFolder(DataGrid& lbxInput, const QString& folder, bool withSubfolders, const ListEnv& env);

struct RereadResult {
    int reread = 0;
    int failed = 0; // files gone or unreadable: their rows keep their cells and get "_#-/->"
};

// Reads the files of those rows again: every cell follows the file, the row keeps its
// number and its mark. `numberDigits`: settings row 27.
RereadResult RereadRowsOfFolder(DataGrid& lbxInput, const QString& folder, bool withSubfolders,
                                TagEngine& engine, int numberDigits, const ListEnv& env);
