#include "ref/modRef.h"

#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/modList.h"
#include "list/modListEnv.h"
#include "list/modSavedLists.h"
#include "output/modExport.h"
#include "platform/PosixFile.h"
#include "ref/RefColumns.h"
#include "ref/modRefIndex.h"

#include <QDir>
#include <array>
#include <sys/stat.h>

namespace {

struct RefColumnDef {
    const char* key;
    int captionRow;
    int widthTwips;
    Align align;
    bool visible;
    SortType sortType;
};

// Indexed by column number - 1. Headers share the data list's caption rows where the
// column means the same.
constexpr std::array<RefColumnDef, RefCol::Count> kRefColumns = {{
    {"Bewertung", CapHeaderRemark, 1500, Align::Left, true, SortType::Text},
    {"FTag", 2, 600, Align::Left, true, SortType::Text},
    {"TF", CapRefColFound, 400, Align::Center, true, SortType::Text},
    {"FileName", 3, 6000, Align::Left, true, SortType::Text},
    {"Artist", 4, 1500, Align::Left, false, SortType::Text},
    {"Title", 5, 1500, Align::Left, false, SortType::Text},
    {"Type", 6, 600, Align::Left, true, SortType::Text},
    {"Path", 7, 6000, Align::Left, true, SortType::Text},
    {"DurationS", 8, 700, Align::Center, true, SortType::Number},
    {"DurationMS", 9, 1000, Align::Right, true, SortType::Text},
    {"SizeByte", 10, 1200, Align::Right, true, SortType::Number},
    {"SizeMByte", 11, 1200, Align::Right, true, SortType::Text},
    {"Bitrate", 12, 600, Align::Right, true, SortType::Number},
    {"Frequency", 13, 600, Align::Right, true, SortType::Number},
    {"Rating", 1293, 600, Align::Left, true, SortType::Text},
    {"Mood", 1294, 600, Align::Left, true, SortType::Text},
}};

constexpr int kCountFooter = RefCol::FileName;

QString FullPath(const DataGrid& ref, int row) {
    QString path;
    path.append(ref.CellView(row, RefCol::Path)).append(u'/').append(ref.CellView(row, RefCol::FileName));
    return path;
}

} // namespace

void DefineRefColumns(DataGrid& ref) {
    const bool wasLocked = ref.IsLocked();
    ref.LockUpdate(true);
    ref.RemoveAllColumns();
    for (const RefColumnDef& d : kRefColumns)
        ref.AddColumn(QString::fromLatin1(d.key), Caption(d.captionRow), d.widthTwips, d.align, d.visible,
                      d.sortType);
    ref.highlightColor = 0xC0FFFF;
    ref.ColumnsChanged();
    ref.LockUpdate(wasLocked);
}

void SetRefColumnCaptions(DataGrid& ref) {
    const bool wasLocked = ref.IsLocked();
    ref.LockUpdate(true);
    for (int col = 1; col <= RefCol::Count && col <= ref.Cols(); ++col)
        ref.SetColumnCaption(col, Caption(kRefColumns[std::size_t(col - 1)].captionRow));
    ref.LockUpdate(wasLocked);
}

QString RefFoundWord() {
    return Caption(CapStatusFound);
}
QString RefMissingWord() {
    return Caption(CapStatusMissing);
}

void ShowRefTotals(DataGrid& ref) {
    if (ref.Cols() < RefCol::Count)
        return;
    double seconds = 0, bytes = 0;
    for (int r = 1; r <= ref.Rows(); ++r) {
        seconds += DataGrid::NumericPrefix(ref.CellView(r, RefCol::DurationS));
        bytes += DataGrid::NumericPrefix(ref.CellView(r, RefCol::SizeByte));
    }
    ref.SetFooterText(kCountFooter, QString::number(ref.Rows()));
    ref.SetFooterText(RefCol::DurationS, FormatDuration(qint64(seconds)));
    ref.SetFooterText(RefCol::SizeByte, FormatMegabytes(bytes));
}

// ---- files ---------------------------------------------------------------------------

QString RefListFolder() {
    return AppFile(QStringLiteral("reference"));
}

bool EnsureRefListFolder() {
    return QDir().mkpath(RefListFolder());
}

QString RefListStartFolder() {
    const QString stored = Setting(Ini::RefListFile, 2);
    if (!stored.isEmpty()) {
        struct stat st {};
        if (PosixFile::Stat(stored, st) == 0 && S_ISDIR(st.st_mode))
            return stored;
    }
    return RefListFolder();
}

void RememberRefListFolder(const QString& path) {
    const int slash = path.lastIndexOf(u'/');
    if (slash > 0)
        SetSetting(Ini::RefListFile, 2, path.left(slash));
}

QString RefListFilter() {
    return Caption(CapRefListFilter) + QStringLiteral(" |*.ref");
}

QString RefListPath(const QString& chosenPath) {
    if (chosenPath.right(4).toLower() == QLatin1String(".ref"))
        return chosenPath;
    return chosenPath + QLatin1String(".ref");
}

bool SaveRefList(DataGrid& ref, const QString& chosenPath, bool noMsg, Prompt& prompt, QString* writtenPath) {
    if (ref.Rows() == 0) {
        prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return false;
    }
    if (chosenPath.isEmpty())
        return false;
    const QString path = RefListPath(chosenPath);
    const bool ok = WriteListFile(ref, path, RefCol::TF, CapSavingList, noMsg, prompt);
    ShowRefTotals(ref);
    if (!ok)
        return false;
    ref.Tag = path;
    if (writtenPath)
        *writtenPath = path;
    return true;
}

bool LoadRefList(DataGrid& ref, const QString& path, Prompt& prompt) {
    if (path.isEmpty())
        return false;
    ref.LockUpdate(true);
    if (ref.Cols() >= kCountFooter)
        ref.SetFooterText(kCountFooter, Caption(CapLoadingList));
    const bool ok = ref.LoadFile(path, false);
    if (ok) {
        ref.Tag = path;
        ref.ClearSelection();
        ref.SetCurRow(ref.Rows() > 0 ? 1 : 0);
    }
    ShowRefTotals(ref);
    ref.LockUpdate(false);
    ref.Refresh();
    if (!ok)
        prompt.Tell(Caption(CapListLoadFailed), Prompt::Icon::Critical);
    return ok;
}

bool DeleteRefList(const QString& path, bool noMsg, Prompt& prompt) {
    if (!DeleteList(path, prompt))
        return false;
    if (!noMsg)
        prompt.Tell(Caption(CapOneFileDeleted), Prompt::Icon::Information);
    return true;
}

// ---- copy from the data list -----------------------------------------------------------

int CopyToReflist(const DataGrid& input, DataGrid& ref, const CopyToRefOptions& options, const ListEnv& env) {
    if (!env.ListNotEmpty(input) || !env.AtLeastRowsSelected(input, 1))
        return -1;
    if (ref.Cols() < RefCol::Count)
        DefineRefColumns(ref);
    const QString found = RefFoundWord();
    // The file names already in the list, with the rows added by this command, so that a
    // name selected twice is added once, as a lookup row by row would find it.
    FileNameIndex index;
    if (!options.keepDoubles)
        index.Build(ref, RefCol::FileName);

    ref.LockUpdate(true);
    int added = 0;
    QStringList cells;
    for (int row : input.SelectedRows()) {
        if (!options.markFilter.isEmpty() && input.CellView(row, InCol::FTag) != options.markFilter)
            continue;
        const QString name = input.CellText(row, InCol::FileName);
        if (!options.keepDoubles && index.Find(ref, RefCol::FileName, name) > 0)
            continue;
        cells = {QString(),
                 options.keepDoubles ? input.CellText(row, InCol::FTag) : QString(),
                 found,
                 name,
                 input.CellText(row, InCol::Artist),
                 input.CellText(row, InCol::Title),
                 input.CellText(row, InCol::Type),
                 input.CellText(row, InCol::Path),
                 input.CellText(row, InCol::DurationS),
                 input.CellText(row, InCol::DurationMS),
                 input.CellText(row, InCol::SizeByte),
                 input.CellText(row, InCol::SizeMByte),
                 input.CellText(row, InCol::Bitrate),
                 input.CellText(row, InCol::Frequency),
                 input.CellText(row, InCol::Rating),
                 input.CellText(row, InCol::Mood)};
        const int newRow = ref.AddRow(cells);
        if (!options.keepDoubles)
            index.Add(name, newRow);
        ++added;
    }
    ShowRefTotals(ref);
    ref.LockUpdate(false);
    ref.Refresh();
    env.RefreshSums(SumList::Ref);
    if (!options.noMsg)
        env.prompt.Tell(CountText(CapAddedToRefList, added), Prompt::Icon::Information);
    return added;
}

// ---- path check ------------------------------------------------------------------------

RefCheckResult RefCheckPath(DataGrid& ref) {
    RefCheckResult result;
    if (ref.Cols() < RefCol::Count)
        return result;
    const QString found = RefFoundWord(), missing = RefMissingWord();
    ref.LockUpdate(true);
    ref.SetFooterText(kCountFooter, Caption(CapCheckingPaths));
    for (int r = 1; r <= ref.Rows(); ++r) {
        const bool exists = PosixFile::Exists(FullPath(ref, r));
        if (exists)
            ++result.found;
        else
            ++result.missing;
        const QString& word = exists ? found : missing;
        if (ref.CellView(r, RefCol::TF) != word)
            ref.SetCellText(r, RefCol::TF, word);
    }
    ref.SetFooterText(kCountFooter, QString::number(ref.Rows()));
    ref.LockUpdate(false);
    ref.Refresh();
    return result;
}

// ---- commands on the list ----------------------------------------------------------------

bool RefRemoveRemarks(DataGrid& ref, Prompt& prompt) {
    if (ref.Rows() == 0) {
        prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return false;
    }
    if (!prompt.AskYesNo(Caption(CapRemoveRemarksQuestion), false))
        return false;
    ref.LockUpdate(true);
    for (int r = 1; r <= ref.Rows(); ++r) {
        if (!ref.CellView(r, RefCol::Remark).isEmpty())
            ref.SetCellText(r, RefCol::Remark, QString());
    }
    ref.LockUpdate(false);
    ref.Refresh();
    return true;
}

int DeleteRefRows(DataGrid& ref, const QString& mark, Prompt& prompt) {
    if (ref.Rows() == 0) {
        prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return 0;
    }
    std::vector<int> rows;
    for (int r = 1; r <= ref.Rows(); ++r) {
        if (mark.isEmpty() ? ref.IsSelected(r) : ref.CellView(r, RefCol::FTag) == mark)
            rows.push_back(r);
    }
    if (rows.empty()) {
        prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return 0;
    }
    const QString question = Caption(mark.isEmpty() ? CapDeleteRefRowsSelected : CapDeleteRefRowsMarked) +
                             QLatin1String("\n\n") + CountText(CapSelectedRowsCount, qint64(rows.size()));
    if (!prompt.AskYesNo(question, false))
        return 0;
    ref.LockUpdate(true);
    // The rows chosen become the selection and go in one pass.
    ref.ClearSelection();
    for (int r : rows)
        ref.SetSelected(r, true);
    const int removed = ref.DeleteSelected();
    ShowRefTotals(ref);
    ref.SetCurRow(ref.Rows() > 0 ? 1 : 0);
    ref.LockUpdate(false);
    ref.Refresh();
    return removed;
}

bool ClearReflist(DataGrid& ref, Prompt& prompt) {
    if (ref.Rows() == 0) {
        prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return false;
    }
    if (!prompt.AskYesNo(Caption(CapRemoveEntriesListQuestion), false) ||
        !prompt.AskYesNo(Caption(CapClearRefListSure), false))
        return false;
    ref.Clear();
    ref.Tag.clear();
    ShowRefTotals(ref);
    return true;
}

int RefHighlightFound(DataGrid& ref) {
    if (ref.Cols() < RefCol::Count)
        return 0;
    const QString found = RefFoundWord();
    int count = 0;
    ref.LockUpdate(true);
    for (int r = 1; r <= ref.Rows(); ++r) {
        const bool take = ref.CellView(r, RefCol::TF) == found;
        ref.SetSelected(r, take);
        count += take;
    }
    ref.LockUpdate(false);
    ref.Refresh();
    return count;
}

void ShowRefMarkColumn(DataGrid& ref, bool shown) {
    if (ref.Cols() >= RefCol::FTag && ref.Column(RefCol::FTag).visible != shown)
        ref.SetColumnVisible(RefCol::FTag, shown);
}

bool RefMarkColumnShown(const DataGrid& ref) {
    return ref.Cols() >= RefCol::FTag && ref.Column(RefCol::FTag).visible;
}

bool ExportRefList(const DataGrid& ref, const QString& chosenPath, DataGrid& settings, bool noMsg,
                   Prompt& prompt, const QString& presetFolder) {
    if (chosenPath.isEmpty() || ExportByPath(ref, chosenPath, prompt) != ExportOutcome::Written)
        return false;
    RememberExportFolder(settings, presetFolder, chosenPath, ExportFolders::RefList);
    if (!noMsg)
        prompt.Tell(Caption(CapListExported), Prompt::Icon::Information);
    return true;
}

int ClearFoundRemarks(DataGrid& ref) {
    int n = 0;
    for (int r = 1; r <= ref.Rows(); ++r)
        if (!ref.CellView(r, RefCol::TF).isEmpty()) {
            ref.SetCellText(r, RefCol::TF, QString());
            ++n;
        }
    return n;
}
