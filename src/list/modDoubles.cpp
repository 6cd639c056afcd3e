#include "list/modDoubles.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/Marks.h"

#include <vector>

QString DoubleGroupMark(int group) {
    return QStringLiteral("%1").arg(group, 4, 10, QLatin1Char('0'));
}

bool IsDoubleGroupMark(QStringView mark) {
    if (mark.isEmpty() || !mark.back().isDigit())
        return false;
    for (QChar c : mark.left(3))
        if (!c.isDigit())
            return false;
    return true;
}

DoublesResult btnTab1_FindDouble(DataGrid& lbxInput, const ListEnv& env) {
    DoublesResult result;
    if (!env.ListNotEmpty(lbxInput) || lbxInput.Cols() < InCol::Count)
        return result;
    if (!env.prompt.AskYesNo(Caption(CapMarkRowsTitle) + QLatin1Char('\n') + Caption(CapClearMarksContinue)))
        return result;
    const int rows = lbxInput.Rows();

    lbxInput.LockUpdate(true);
    env.ShowProgress(rows, 0);
    for (int r = 1; r <= rows; ++r) {
        env.SetProgress(r);
        lbxInput.SetCellText(r, InCol::FTag, QString());
    }
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();

    // The sort compares names without regard to case, so equal names stand together
    // and one pass over neighbours finds every group.
    lbxInput.LockUpdate(true);
    lbxInput.DoSort(InCol::FileName, 1);
    env.SetProgress(0);
    int i = 1;
    while (i < rows) {
        env.SetProgress(i);
        const QStringView name = lbxInput.CellView(i, InCol::FileName);
        if (name.compare(lbxInput.CellView(i + 1, InCol::FileName), Qt::CaseInsensitive) != 0) {
            ++i;
            continue;
        }
        const QString mark = DoubleGroupMark(++result.groups);
        const QString groupName = name.toString(); // the mark writes below change the row's text
        lbxInput.SetCellText(i, InCol::FTag, mark);
        int j = i + 1;
        while (j <= rows && QStringView(groupName).compare(lbxInput.CellView(j, InCol::FileName),
                                                           Qt::CaseInsensitive) == 0) {
            lbxInput.SetCellText(j, InCol::FTag, mark);
            ++j;
        }
        i = j;
    }
    lbxInput.DoSort(QStringLiteral("2,4"), 1);
    lbxInput.SetCurRow(1);
    env.HideProgress();
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
    env.ShowTotals();
    env.prompt.Tell(CountText(CapDoubleGroupsFound, result.groups), Prompt::Icon::Information);
    lbxInput.SetCurRow(1);
    result.ran = true;
    return result;
}

DoublesResult btnTab1_EraseDouble(DataGrid& lbxInput, bool noMsg, const ListEnv& env) {
    DoublesResult result;
    if (!env.ListNotEmpty(lbxInput) || lbxInput.Cols() < InCol::Count)
        return result;
    if (lbxInput.SelCount() == 0) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return result;
    }
    lbxInput.LockUpdate(true);
    State().SuppressEvents = true;
    lbxInput.DoSort(QStringLiteral("2,4"), 1);
    const int rows = lbxInput.Rows();

    // Rows without a mark sort first; the groups begin behind them.
    int first = 1;
    while (first <= rows && lbxInput.CellView(first, InCol::FTag).isEmpty())
        ++first;
    if (first > rows || !IsDoubleGroupMark(lbxInput.CellView(first, InCol::FTag))) {
        env.prompt.Tell(Caption(CapNoDoubleGroups), Prompt::Icon::Information);
        State().SuppressEvents = false;
        lbxInput.LockUpdate(false);
        lbxInput.Refresh();
        return result;
    }

    // Stage every row of a group but the first; the walk ends at the first row whose
    // mark is no group mark.
    std::vector<char> drop(std::size_t(rows) + 1, 0);
    for (int r = first + 1; r <= rows; ++r) {
        const QStringView mark = lbxInput.CellView(r, InCol::FTag);
        if (!IsDoubleGroupMark(mark))
            break;
        if (mark == lbxInput.CellView(r - 1, InCol::FTag))
            drop[std::size_t(r)] = 1;
    }
    for (int r = first + 1; r <= rows; ++r)
        if (drop[std::size_t(r)])
            lbxInput.SetCellText(r, InCol::FTag, Mark::DDelete);

    // Drop the staged rows in one sweep (the selection of the other rows is kept).
    std::vector<char> wasSelected(std::size_t(rows) + 1, 0);
    for (int r = 1; r <= rows; ++r) {
        wasSelected[std::size_t(r)] = lbxInput.IsSelected(r);
        lbxInput.SetSelected(r, drop[std::size_t(r)] != 0);
    }
    result.removed = lbxInput.DeleteSelected();
    int kept = 0;
    for (int r = 1; r <= rows; ++r) {
        if (drop[std::size_t(r)])
            continue;
        ++kept;
        if (wasSelected[std::size_t(r)])
            lbxInput.SetSelected(kept, true);
    }

    State().SuppressEvents = false;
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
    env.ShowTotals();
    if (!noMsg)
        env.prompt.Tell(CountText(CapDoublesRemoved, result.removed), Prompt::Icon::Information);
    result.ran = true;
    return result;
}
