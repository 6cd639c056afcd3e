#include "tag/modTagBatch.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/modRenameJournal.h"
#include "list/Marks.h"
#include "list/RowKeys.h"
#include "list/modList.h"
#include "tag/TagEngine.h"
#include "tag/modTagJournal.h"

bool PassesMarkFilter(const DataGrid& list, int row, const QString& filter) {
    return filter.isEmpty() || list.CellView(row, TagCol::FTag) == filter;
}

void ForEachBatchRow(TagBatch& batch, const std::function<bool(int, const QString&)>& step,
                     BatchResult& result) {
    DataGrid& list = *batch.lbxTag;
    const std::vector<int> rows = list.SelectedRows();
    const int total = int(rows.size());
    State().AbortRequested = false;
    list.LockUpdate(true);
    if (batch.lbxInput)
        batch.lbxInput->LockUpdate(true);
    // The old tags of each file are kept before it is written, for the undo of the batch.
    TagJournalRecorder journal(rows.empty() ? QString() : batch.journalPath);
    int n = 0;
    for (int row : rows) {
        if (State().AbortRequested)
            break;
        ++n;
        if (row > list.Rows())
            continue;
        if (PassesMarkFilter(list, row, batch.markFilter)) {
            const QString path = TagRowPath(list, row);
            if (!batch.journalPath.isEmpty() && batch.engine && batch.engine->OpenFile(path) != 0)
                journal.Before(*batch.engine, path);
            const bool ok = step(row, path);
            journal.After(path);
            if (ok) {
                ++result.done;
            } else {
                list.SetCellText(row, TagCol::FTag, Mark::Failed);
                ++result.failed;
            }
        }
        if (batch.progress)
            batch.progress(n, total);
    }
    if (batch.lbxInput) {
        batch.lbxInput->LockUpdate(false);
        batch.lbxInput->Refresh();
    }
    list.LockUpdate(false);
    list.Refresh();
}

void ForEachOpenedFile(TagBatch& batch, const std::function<bool(int, const QString&, int)>& step,
                       BatchResult& result) {
    result.ran = true;
    ForEachBatchRow(
        batch,
        [&](int row, const QString& path) {
            const int type = batch.engine->OpenFile(path);
            return type != 0 && step(row, path, type);
        },
        result);
}

int InputRowOf(TagBatch& batch, int tagRow) {
    if (!batch.lbxInput)
        return 0;
    if (!batch.inputRowsBuilt) {
        batch.inputRows = InputRowsByKey(*batch.lbxInput);
        batch.inputRowsBuilt = true;
    }
    const int r =
        batch.inputRows.value(KeyIdentity(batch.lbxTag->CellText(tagRow, TagCol::KeyInput)).toString(), 0);
    return r <= batch.lbxInput->Rows() ? r : 0;
}

void CarryBackToInput(TagBatch& batch, int tagRow, const QString& path) {
    const int r = InputRowOf(batch, tagRow);
    if (r == 0)
        return;
    if (batch.engine->OpenFile(path) == 0)
        return;
    RefreshInputTagCells(*batch.lbxInput, r, *batch.engine);
}

bool TagSetChosen(UpdateSet set, Prompt& prompt, int messageRow, Prompt::Icon icon) {
    if (set != UpdateSet::None)
        return true;
    prompt.Tell(Caption(messageRow), icon);
    return false;
}

bool SelectedRowsAndSetChosen(TagBatch& batch, UpdateSet set, int noSetRow, Prompt::Icon icon) {
    Prompt& prompt = *batch.prompt;
    return ListNotEmpty(*batch.lbxTag, prompt) && AtLeastRowsSelected(*batch.lbxTag, 1, prompt) &&
           TagSetChosen(set, prompt, noSetRow, icon);
}

static void FinishWithMessage(TagBatch& batch, const BatchResult& result, const QString& text) {
    if (!batch.noMsg)
        batch.prompt->Tell(text, Prompt::Icon::Information);
    FinishFailures(batch, result);
}

void FinishBatchReport(TagBatch& batch, const BatchResult& result, int doneRow) {
    FinishWithMessage(batch, result, Caption(doneRow) + QString::number(result.done));
}

void FinishBatchNote(TagBatch& batch, const BatchResult& result, int noteRow) {
    FinishWithMessage(batch, result, Caption(noteRow));
}

void FinishFailures(TagBatch& batch, const BatchResult& result) {
    if (result.failed == 0)
        return;
    DataGrid& list = *batch.lbxTag;
    list.DoSort(TagCol::FTag, 2);
    if (list.Rows() > 0)
        list.SetCurRow(1);
    batch.prompt->Tell(Caption(CapFilesFailed) + QString::number(result.failed), Prompt::Icon::Critical);
}
