#include "list/modSavedLists.h"

#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/ftcFileOps.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "platform/PosixFile.h"

#include <QDir>

namespace {

constexpr int kFooterCol = InCol::FileName; // the footer of column 3 tells what is going on

void SetFooter(DataGrid& list, const QString& text) {
    if (list.Cols() >= kFooterCol)
        list.SetFooterText(kFooterCol, text);
}

// Marks every row whose file is gone; returns their count.
int MarkMissingFiles(DataGrid& list) {
    int missing = 0;
    QString path;
    for (int r = 1; r <= list.Rows(); ++r) {
        path.clear();
        path.append(list.CellView(r, InCol::Path)).append(u'/').append(list.CellView(r, InCol::FileName));
        if (PosixFile::Exists(path))
            continue;
        list.SetCellText(r, InCol::FTag, Mark::FailedPrefix + list.CellText(r, InCol::FTag));
        ++missing;
    }
    return missing;
}

} // namespace

QString SavedListFolder() {
    return AppFile(QStringLiteral("data"));
}

bool EnsureSavedListFolder() {
    return QDir().mkpath(SavedListFolder());
}

QString SavedListFilter() {
    return Caption(CapDataListFilter) + QStringLiteral(" (*.data)");
}

QString SavedListPath(const QString& chosenPath) {
    const QString name = chosenPath.mid(chosenPath.lastIndexOf(u'/') + 1);
    if (name.contains(QLatin1String(".data"), Qt::CaseInsensitive))
        return chosenPath;
    return chosenPath + QLatin1String(".data");
}

bool WriteListFile(DataGrid& list, const QString& path, int footerCol, int busyCaption, bool noMsg,
                   Prompt& prompt) {
    const bool hasFooter = list.Cols() >= footerCol;
    if (hasFooter)
        list.SetFooterText(footerCol, Caption(busyCaption));
    const bool ok = list.SaveFile(path);
    if (hasFooter)
        list.SetFooterText(footerCol, QString::number(list.Rows()));
    if (!ok) {
        prompt.Tell(Caption(CapFileSaveFailed) + QLatin1String("\n\n") + path, Prompt::Icon::Critical);
        return false;
    }
    if (!noMsg)
        prompt.Tell(Caption(CapListSaved), Prompt::Icon::Information);
    return true;
}

bool SaveList(DataGrid& list, const QString& chosenPath, const SavedListOptions& options, Prompt& prompt,
              QString* writtenPath) {
    if (chosenPath.isEmpty())
        return false;
    const QString path = SavedListPath(chosenPath);
    if (!WriteListFile(list, path, kFooterCol, CapSavingList, options.noMsg, prompt))
        return false;
    if (writtenPath)
        *writtenPath = path;
    return true;
}

LoadListResult LoadList(DataGrid& list, const QString& path, const SavedListOptions& options,
                        const SavedListHooks& hooks, Prompt& prompt) {
    LoadListResult result;
    if (path.isEmpty())
        return result;
    list.LockUpdate(true);
    SetFooter(list, Caption(CapLoadingList));
    if (!list.LoadFile(path, true)) {
        prompt.Tell(Caption(CapListLoadFailed), Prompt::Icon::Critical);
        list.LockUpdate(false);
        return result;
    }
    result.loaded = true;
    State().ListBusy = true;
    if (options.refreshFromFiles && hooks.updateList) {
        hooks.updateList();
    } else {
        SetFooter(list, Caption(CapMissingFiles));
        result.missing = MarkMissingFiles(list);
    }
    SetFooter(list, QString::number(list.Rows()));
    list.LockUpdate(false);
    list.Refresh();
    if (hooks.rebuildValueLists)
        hooks.rebuildValueLists();
    if (hooks.showTotals)
        hooks.showTotals();
    State().ListBusy = false;

    if (result.missing == 0) {
        if (!options.noMsg)
            prompt.Tell(Caption(CapListLoadedAllPresent), Prompt::Icon::Information);
    } else {
        prompt.Tell(Caption(CapMissingFiles) + u' ' + QString::number(result.missing),
                    Prompt::Icon::Information);
    }
    return result;
}

bool DeleteList(const QString& path, Prompt& prompt) {
    if (path.isEmpty())
        return false;
    const int e = DeleteFile(path, true, true, &prompt);
    if (e == FileOp::Cancelled)
        return false;
    if (e != 0) {
        prompt.Tell(Caption(CapDeleteFailed), Prompt::Icon::Critical);
        return false;
    }
    return true;
}
