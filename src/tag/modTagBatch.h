#pragma once
// The frame shared by the batches of the tag list: the walk over the selected rows with
// the mark filter, the failure mark, progress, the abort flag, the return of results to
// the data list and the closing report.

#include "core/Prompt.h"
#include "tag/modTagUpdate.h"

#include <QString>
#include <functional>

// Sets the busy flag for its lifetime.
class BusyScope {
public:
    explicit BusyScope(bool* flag) : m_flag(flag) {
        if (m_flag)
            *m_flag = true;
    }
    ~BusyScope() {
        if (m_flag)
            *m_flag = false;
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

private:
    bool* m_flag;
};

// True when the row takes part: its FTag equals a non-empty filter, or the filter is empty.
bool PassesMarkFilter(const DataGrid& list, int row, const QString& filter);

// Walks the selected rows of LbxTag that pass the mark filter, from the first to the
// last selected, and calls `step(row, path)`; a false result marks the row "_#-/->" and
// counts as a failure, true counts as done. A file in progress always finishes; the
// abort flag is looked at between two files. Progress goes out after every row.
void ForEachBatchRow(TagBatch& batch, const std::function<bool(int row, const QString& path)>& step,
                     BatchResult& result);
// Marks the batch as run and walks the rows as ForEachBatchRow does, opening each file
// first: a file that does not open fails its row, the others go to `step` with their type.
void ForEachOpenedFile(TagBatch& batch,
                       const std::function<bool(int row, const QString& path, int type)>& step,
                       BatchResult& result);

// The data list row of a LbxTag row (by KeyInput), 0 when there is none.
int InputRowOf(TagBatch& batch, int tagRow);
// Reads the file again and rewrites the tag cells of its data list row.
void CarryBackToInput(TagBatch& batch, int tagRow, const QString& path);

// False, after the message `messageRow` with `icon`, when no tag set is chosen.
bool TagSetChosen(UpdateSet set, Prompt& prompt, int messageRow, Prompt::Icon icon);
// The checks before a batch over the selected rows: LbxTag has rows, at least one of them
// is selected, and a tag set is chosen (else `noSetRow` with `icon`). False, after the
// message, when one of them fails.
bool SelectedRowsAndSetChosen(TagBatch& batch, UpdateSet set, int noSetRow, Prompt::Icon icon);

// Unless chbTab2_NoMsg: the count of files done with `doneRow`. Then the failures.
void FinishBatchReport(TagBatch& batch, const BatchResult& result, int doneRow);
// Unless chbTab2_NoMsg: the message `noteRow` as it stands, with no count. Then the failures.
void FinishBatchNote(TagBatch& batch, const BatchResult& result, int noteRow);
// With failures: LbxTag sorted so that the failed rows come first, row 1 current, and
// the failure count as a critical message, also with chbTab2_NoMsg.
void FinishFailures(TagBatch& batch, const BatchResult& result);
