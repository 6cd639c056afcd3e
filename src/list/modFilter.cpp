#include "list/modFilter.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/Marks.h"

#include <QSet>
#include <algorithm>
#include <vector>

int ColumnOfFilterIndex(int index) {
    if (index >= 0 && index <= 3)
        return index + 4;
    if (index >= 4 && index <= 25)
        return index + 11;
    if (index >= 26 && index <= 55)
        return index + 13;
    if (index == 56)
        return InCol::DateTime;
    return 0;
}

QStringList FilterColumnEntries(const DataGrid& lbxInput) {
    QStringList entries;
    for (int i = 0; i < kFilterColumnEntries; ++i) {
        const int col = ColumnOfFilterIndex(i);
        entries.append(col <= lbxInput.Cols() ? lbxInput.Column(col).caption : QString());
    }
    return entries;
}

QStringList FilterValueList(const DataGrid& lbxInput, int column, const ListEnv& env) {
    QStringList values;
    if (column < 1 || column > lbxInput.Cols())
        return values;
    const int rows = lbxInput.Rows();
    env.ShowProgress(rows, -1);
    // Views stay valid: nothing writes to the grid during the walk.
    QSet<QStringView> seen;
    std::vector<QStringView> distinct;
    for (int r = 1; r <= rows; ++r) {
        env.SetProgress(r);
        const QStringView v = lbxInput.CellView(r, column);
        if (v.isEmpty())
            continue;
        if (!seen.contains(v)) {
            seen.insert(v);
            distinct.push_back(v);
        }
    }
    std::sort(distinct.begin(), distinct.end(), [](QStringView a, QStringView b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a.compare(b, Qt::CaseSensitive) < 0;
    });
    values.reserve(qsizetype(distinct.size()));
    for (QStringView v : distinct)
        values.append(v.toString());
    env.HideProgress();
    return values;
}

int CountRowsEqual(const DataGrid& lbxInput, int column, const QString& value) {
    if (column < 1 || column > lbxInput.Cols())
        return 0;
    int n = 0;
    for (int r = 1; r <= lbxInput.Rows(); ++r)
        n += lbxInput.CellView(r, column) == value;
    return n;
}

QString ValueCountLabel(const DataGrid& lbxInput, int column, const QString& value) {
    return QString::number(CountRowsEqual(lbxInput, column, value)) + QStringLiteral(" /") +
           QString::number(lbxInput.Rows());
}

FilterChangeResult cmbTab1_Filter_Change(const DataGrid& lbxInput, int index, const FilterOptions& options,
                                         const ListEnv& env) {
    FilterChangeResult result;
    if (State().SuppressEvents)
        return result;
    switch (index) {
    case 0:
        result.values = FilterValueList(lbxInput, ColumnOfFilterIndex(options.columnIndex), env);
        result.valuesChanged = true;
        result.filter1Count = QString::number(result.values.size());
        env.ShowTotals();
        break;
    case 1:
        result.filter2Count =
            ValueCountLabel(lbxInput, ColumnOfFilterIndex(options.columnIndex), options.value);
        break;
    case 2:
        result.qualityCount = ValueCountLabel(lbxInput, InCol::Rating, options.rating);
        break;
    case 3:
        result.qualityCount = ValueCountLabel(lbxInput, InCol::Mood, options.mood);
        break;
    default:
        return result;
    }
    result.handled = true;
    return result;
}

FilterResult btnTab1_FilterMarkChoosen(DataGrid& lbxInput, const FilterOptions& options, const ListEnv& env) {
    FilterResult result;
    if (!env.ListNotEmpty(lbxInput))
        return result;
    if (options.value.isEmpty() && options.rating.isEmpty() && options.mood.isEmpty()) {
        env.prompt.Tell(Caption(CapNothingChosen), Prompt::Icon::Information);
        return result;
    }
    result.hits =
        ApplyFilter(lbxInput, options.value, ColumnOfFilterIndex(options.columnIndex), options, env);
    result.ran = true;
    return result;
}

int ApplyFilter(DataGrid& lbxInput, const QString& value, int column, const FilterOptions& options,
                const ListEnv& env) {
    if (lbxInput.Cols() < InCol::Count)
        return 0;
    // An empty criterion, or a value without a valid column, is not tested.
    const bool testValue = !value.isEmpty() && column >= 1 && column <= lbxInput.Cols();
    const bool testRating = !options.rating.isEmpty();
    const bool testMood = !options.mood.isEmpty();

    State().ListBusy = true;
    lbxInput.LockUpdate(true);
    const int rows = lbxInput.Rows();
    if (!options.addFilter)
        for (int r = 1; r <= rows; ++r)
            lbxInput.SetCellText(r, InCol::FTag, QString());
    env.ShowProgress(rows, -1);
    int hits = 0;
    if (testValue || testRating || testMood) {
        for (int r = 1; r <= rows; ++r) {
            env.SetProgress(r);
            if (testValue && lbxInput.CellView(r, column) != value)
                continue;
            if (testRating && lbxInput.CellView(r, InCol::Rating) != options.rating)
                continue;
            if (testMood && lbxInput.CellView(r, InCol::Mood) != options.mood)
                continue;
            lbxInput.SetCellText(r, InCol::FTag, Mark::FoundFilter + lbxInput.CellText(r, InCol::FTag));
            ++hits;
        }
    }
    lbxInput.DoSort(QString::number(InCol::FTag), 1);
    lbxInput.SetCurRow(rows > 0 ? 1 : 0);
    lbxInput.DoColumnAutoSize(InCol::FTag);
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
    env.HideProgress();
    State().ListBusy = false;
    env.ShowTotals();
    if (!options.noMsg) {
        if (hits > 0)
            env.prompt.Tell(CountText(CapFindHits, hits), Prompt::Icon::Information);
        else
            env.prompt.Tell(Caption(CapNothingFound), Prompt::Icon::Information);
    }
    return hits;
}
