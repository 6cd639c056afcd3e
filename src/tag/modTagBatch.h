#pragma once
// The frame shared by the batches of the tag list: the walk over the selected rows with
// the mark filter, the failure mark, progress, the abort flag, the return of results to
// the data list and the closing report.

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

// The data list row of a LbxTag row (by KeyInput), 0 when there is none.
int InputRowOf(TagBatch& batch, int tagRow);
// Reads the file again and rewrites the tag cells of its data list row.
void CarryBackToInput(TagBatch& batch, int tagRow, const QString& path);

// Unless chbTab2_NoMsg: the count of files done with `doneRow`. Then the failures.
void FinishBatchReport(TagBatch& batch, const BatchResult& result, int doneRow);
// With failures: LbxTag sorted so that the failed rows come first, row 1 current, and
// the failure count as a critical message, also with chbTab2_NoMsg.
void FinishFailures(TagBatch& batch, const BatchResult& result);
