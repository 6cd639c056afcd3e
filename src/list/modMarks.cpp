#include "list/modMarks.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/Marks.h"

QString MarkText(const QString& ftagBox) {
    return ftagBox.isEmpty() ? Mark::Default : ftagBox;
}

namespace {

int CurrentRowOrFirst(const DataGrid& list) {
    const int cur = list.CurRow();
    return cur >= 1 && cur <= list.Rows() ? cur : 1;
}

void ClearAllMarks(DataGrid& list) {
    for (int r = 1; r <= list.Rows(); ++r)
        list.SetCellText(r, InCol::FTag, QString());
}

SignResult WriteSign(DataGrid& list, int targetRow, const QString& sign, bool advanced) {
    SignResult result;
    result.row = targetRow;
    result.sign = sign;
    result.advanced = advanced;
    list.LockUpdate(true);
    list.SetCellText(targetRow, InCol::FTag, sign);
    list.LockUpdate(false);
    list.Refresh();
    result.ran = true;
    return result;
}

// The row that takes a sign: the current row, or the one above it with signPreviousRow
// (0 when the current row is the first).
int SignTargetRow(const DataGrid& list, bool signPreviousRow) {
    const int cur = CurrentRowOrFirst(list);
    if (!signPreviousRow)
        return cur;
    return cur > 1 ? cur - 1 : 0;
}

} // namespace

MarkResult btnTab1_SetFTagActRow(DataGrid& list, const QString& ftagBox, const ListEnv& env) {
    MarkResult result;
    if (!env.ListNotEmpty(list) || list.Cols() < InCol::FTag)
        return result;
    const int row = CurrentRowOrFirst(list);
    list.LockUpdate(true);
    list.SetCellText(row, InCol::FTag, MarkText(ftagBox));
    list.SetCurRow(row < list.Rows() ? row + 1 : row);
    list.LockUpdate(false);
    list.Refresh();
    env.RefreshSums(SumList::Input);
    result.ran = true;
    result.count = 1;
    return result;
}

SignResult btnTab1_Sign(DataGrid& list, const QStringList& signs, int index, bool signPreviousRow,
                        const ListEnv& env) {
    if (!env.ListNotEmpty(list) || list.Cols() < InCol::FTag)
        return {};
    const QString sign = index >= 0 && index < signs.size() ? signs.at(index) : QString();
    if (sign.isEmpty())
        return {};
    const int target = SignTargetRow(list, signPreviousRow);
    if (target < 1)
        return {};
    SignResult result = WriteSign(list, target, sign, !signPreviousRow);
    env.RefreshSums(SumList::Input);
    return result;
}

SignResult btnTab1_SignNext(DataGrid& list, const QStringList& signs, bool signPreviousRow,
                            const ListEnv& env) {
    if (!env.ListNotEmpty(list) || list.Cols() < InCol::FTag)
        return {};
    QStringList cycle;
    for (const QString& s : signs)
        if (!s.isEmpty())
            cycle.append(s);
    if (cycle.isEmpty())
        return {};
    const int target = SignTargetRow(list, signPreviousRow);
    if (target < 1)
        return {};
    const int at = cycle.indexOf(list.CellText(target, InCol::FTag));
    const QString sign = cycle.at(at < 0 ? 0 : (at + 1) % cycle.size());
    SignResult result = WriteSign(list, target, sign, !signPreviousRow);
    env.RefreshSums(SumList::Input);
    return result;
}

void btnTab1_ClearFtag(MarkBoxes& boxes, const ListEnv& env) {
    boxes.ftag.clear();
    boxes.ftag4.clear();
    boxes.ftagRef.clear();
    env.RefreshSums(SumList::Input);
    env.RefreshSums(SumList::Ref);
}

MarkResult btnTab1_RemoveFtag(DataGrid& list, const QString& ftagBox, const ListEnv& env,
                              const QString& sumList) {
    MarkResult result;
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1) || list.Cols() < InCol::FTag)
        return result;
    const QString question = ftagBox.isEmpty()
                                 ? Caption(CapRemoveMarksQuestion)
                                 : Caption(CapRemoveMarkBefore) + ftagBox + Caption(CapRemoveMarkAfter);
    if (!env.prompt.AskYesNo(question))
        return result;
    list.LockUpdate(true);
    for (int row : list.SelectedRows()) {
        const QStringView mark = list.CellView(row, InCol::FTag);
        if (mark.isEmpty() || (!ftagBox.isEmpty() && mark != ftagBox))
            continue;
        list.SetCellText(row, InCol::FTag, QString());
        ++result.count;
    }
    list.LockUpdate(false);
    list.Refresh();
    env.RefreshSums(sumList);
    result.ran = true;
    return result;
}

void btnTab1_HighlightAll(DataGrid& list, const ListEnv& env, const QString& sumList) {
    list.LockUpdate(true);
    list.SelectAll();
    list.LockUpdate(false);
    env.RefreshSums(sumList);
}

void btnTab1_InvertHighlight(DataGrid& list, const ListEnv& env, const QString& sumList) {
    list.LockUpdate(true);
    list.InvertSelection();
    list.LockUpdate(false);
    env.RefreshSums(sumList);
}

void btnTab1_InvertHilightRef(DataGrid& lbxRef, const ListEnv& env) {
    btnTab1_InvertHighlight(lbxRef, env, SumList::Ref);
}

MarkResult btnTab1_FTagBlue(DataGrid& list, const QString& ftagBox, bool noMsg, const ListEnv& env,
                            const QString& sumList) {
    MarkResult result;
    if (!env.ListNotEmpty(list) || list.Cols() < InCol::FTag)
        return result;
    list.LockUpdate(true);
    for (int r = 1; r <= list.Rows(); ++r) {
        const QStringView mark = list.CellView(r, InCol::FTag);
        const bool take = ftagBox.isEmpty() ? !mark.isEmpty() : mark == ftagBox;
        list.SetSelected(r, take);
        result.count += take;
    }
    list.LockUpdate(false);
    list.Refresh();
    env.RefreshSums(sumList);
    if (!noMsg)
        env.prompt.Tell(CountText(CapRowsWithMarkSelected, result.count), Prompt::Icon::Information);
    result.ran = true;
    return result;
}

MarkResult MarkRowsWhere(DataGrid& lbxInput, const RowTest& test, bool noMsg, const ListEnv& env) {
    MarkResult result;
    if (!env.ListNotEmpty(lbxInput) || lbxInput.Cols() < InCol::Count)
        return result;
    lbxInput.LockUpdate(true);
    ClearAllMarks(lbxInput);
    for (int r = 1; r <= lbxInput.Rows(); ++r) {
        if (test && test(lbxInput, r)) {
            lbxInput.SetCellText(r, InCol::FTag, Mark::Default);
            ++result.count;
        }
    }
    lbxInput.DoSort(InCol::FTag, 2);
    lbxInput.SetCurRow(1);
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
    env.ShowTotals();
    if (!noMsg)
        env.prompt.Tell(CountText(CapRowsMarked, result.count), Prompt::Icon::Information);
    result.ran = true;
    return result;
}

MarkResult btnTab1_MarkLrc(DataGrid& lbxInput, bool noMsg, const ListEnv& env) {
    return MarkRowsWhere(
        lbxInput,
        [](const DataGrid& g, int r) {
            return g.CellView(r, InCol::TagAnzLyrics).contains(QLatin1String("[lrc]"), Qt::CaseInsensitive);
        },
        noMsg, env);
}

MarkResult btnTab1_HighlightLink(DataGrid& lbxInput, const RowTest& hasLink, bool noMsg, const ListEnv& env) {
    return MarkRowsWhere(lbxInput, hasLink, noMsg, env);
}

MarkResult btnTab1_HighlightLyrics(DataGrid& lbxInput, bool noMsg, const ListEnv& env) {
    return MarkRowsWhere(
        lbxInput,
        [](const DataGrid& g, int r) {
            return DataGrid::NumericPrefix(g.CellView(r, InCol::TagAnzLyrics)) > 0 ||
                   !g.CellView(r, InCol::TagLyricsLyric).trimmed().isEmpty();
        },
        noMsg, env);
}

MarkResult btnTab1_HighlightiPic(DataGrid& lbxInput, bool noMsg, const ListEnv& env) {
    return MarkRowsWhere(
        lbxInput,
        [](const DataGrid& g, int r) { return DataGrid::NumericPrefix(g.CellView(r, InCol::TagAnzPic)) > 0; },
        noMsg, env);
}

MarkResult MarkFileType(DataGrid& lbxInput, const QString& type, bool noMsg, const ListEnv& env) {
    MarkResult result;
    if (!env.ListNotEmpty(lbxInput) || lbxInput.Cols() < InCol::Count)
        return result;
    const QString mark = Mark::TypePrefix + type;
    lbxInput.LockUpdate(true);
    for (int r = 1; r <= lbxInput.Rows(); ++r) {
        const bool hit = !type.isEmpty() && lbxInput.CellView(r, InCol::Type) == type;
        lbxInput.SetCellText(r, InCol::FTag, hit ? mark : QString());
        result.count += hit;
    }
    lbxInput.DoSort(QStringLiteral("2,7,3"), 1);
    lbxInput.SetCurRow(1);
    for (int r = 1; r <= lbxInput.Rows(); ++r)
        lbxInput.SetSelected(r, !lbxInput.CellView(r, InCol::FTag).isEmpty());
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
    env.ShowTotals();
    if (!noMsg) {
        if (result.count == 0)
            env.prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        else
            env.prompt.Tell(CountText(CapRowsMarked, result.count), Prompt::Icon::Information);
    }
    result.ran = true;
    return result;
}
