#include "list/modFolderRows.h"

#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

namespace {

void WriteFavorites(DataGrid& ini, const QStringList& folders) {
    for (int i = 0; i < kMaxFavoriteFolders; ++i)
        ini.SetCellText(Ini::FavoriteFirst + i, Ini::FavoriteCol, folders.value(i));
}

bool InFolder(QStringView rowFolder, const QString& folder, bool withSubfolders) {
    if (rowFolder == folder)
        return true;
    if (!withSubfolders)
        return false;
    // The root "/" holds every folder; any other folder holds "folder/...".
    if (folder == QLatin1String("/"))
        return rowFolder.startsWith(u'/');
    return rowFolder.size() > folder.size() && rowFolder.startsWith(folder) &&
           rowFolder[folder.size()] == u'/';
}

} // namespace

QStringList FavoriteFolders(const DataGrid& ini) {
    QStringList out;
    for (int r = Ini::FavoriteFirst; r <= Ini::FavoriteLast && r <= ini.Rows(); ++r) {
        const QString f = ini.CellText(r, Ini::FavoriteCol);
        if (!f.isEmpty())
            out << f;
    }
    return out;
}

bool IsFavoriteFolder(const DataGrid& ini, const QString& folder) {
    return !folder.isEmpty() && FavoriteFolders(ini).contains(folder);
}

bool AddFavoriteFolder(DataGrid& ini, const QString& folder) {
    QStringList f = FavoriteFolders(ini);
    if (folder.isEmpty() || f.contains(folder) || f.size() >= kMaxFavoriteFolders)
        return false;
    f << folder;
    WriteFavorites(ini, f);
    return true;
}

bool RemoveFavoriteFolder(DataGrid& ini, const QString& folder) {
    QStringList f = FavoriteFolders(ini);
    if (!f.removeOne(folder))
        return false;
    WriteFavorites(ini, f);
    return true;
}

std::vector<int> RowsOfFolder(const DataGrid& list, const QString& folder, bool withSubfolders) {
    std::vector<int> rows;
    if (folder.isEmpty() || list.Cols() < InCol::Path)
        return rows;
    for (int r = 1; r <= list.Rows(); ++r)
        if (InFolder(list.CellView(r, InCol::Path), folder, withSubfolders))
            rows.push_back(r);
    return rows;
}

int RemoveRowsOfFolder(DataGrid& list, const QString& folder, bool withSubfolders, const ListEnv& env) {
    const std::vector<int> rows = RowsOfFolder(list, folder, withSubfolders);
    if (rows.empty())
        return 0;
    list.LockUpdate(true);
    for (int r = 1; r <= list.Rows(); ++r)
        list.SetSelected(r, false);
    for (int r : rows)
        list.SetSelected(r, true);
    const int removed = list.DeleteSelected();
    if (list.CurRow() > list.Rows())
        list.SetCurRow(list.Rows());
    list.LockUpdate(false);
    list.Refresh();
    env.ShowTotals();
    return removed;
}

RereadResult RereadRowsOfFolder(DataGrid& list, const QString& folder, bool withSubfolders, TagEngine& engine,
                                int numberDigits, const ListEnv& env) {
    RereadResult res;
    const std::vector<int> rows = RowsOfFolder(list, folder, withSubfolders);
    if (rows.empty())
        return res;
    list.LockUpdate(true);
    env.ShowProgress(int(rows.size()), -1);
    int n = 0;
    for (int r : rows) {
        env.SetProgress(++n);
        const QString path = InputRowPath(list, r);
        const int type = engine.OpenFile(path);
        if (type == 0) {
            list.SetCellText(r, InCol::FTag, Mark::Failed);
            ++res.failed;
            continue;
        }
        QStringList cells = FileRowCells(engine, path, type, r, numberDigits);
        cells[InCol::No - 1] = list.CellText(r, InCol::No);
        cells[InCol::FTag - 1] = list.CellText(r, InCol::FTag);
        while (cells.size() < list.Cols())
            cells << QString();
        while (cells.size() > list.Cols())
            cells.removeLast();
        list.SetRowCells(r, cells);
        ++res.reread;
    }
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    env.ShowTotals();
    return res;
}
