#include "player/modRandomSample.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modList.h"

#include <QRandomGenerator>
#include <QTime>

#include <numeric>
#include <vector>

int MarkRandomSample(DataGrid& list, Prompt& prompt, quint32 seed) {
    if (!ListNotEmpty(list, prompt))
        return -1;
    const std::optional<QString> answer =
        prompt.TitledInputBox(Caption(CapMarkRowsTitle), Caption(CapRandomCountPrompt));
    if (!answer)
        return -1;
    bool ok = false;
    int count = answer->trimmed().toInt(&ok);
    if (!ok || count <= 0)
        return -1;
    const int n = list.Rows();
    count = std::min(count, n);

    // A permutation of the row numbers (Fisher-Yates), the first `count` of them marked.
    if (seed == 0)
        seed = quint32(QTime::currentTime().msecsSinceStartOfDay()) ^ 0x5A17u;
    QRandomGenerator rng(seed);
    std::vector<int> rows(static_cast<size_t>(n));
    std::iota(rows.begin(), rows.end(), 1);
    for (int i = n - 1; i > 0; --i)
        std::swap(rows[size_t(i)], rows[size_t(rng.bounded(i + 1))]);

    list.LockUpdate(true);
    list.SelectAll();
    for (int r = 1; r <= n; ++r)
        list.SetCellText(r, InCol::FTag, QString());
    for (int i = 0; i < count; ++i)
        list.SetCellText(rows[size_t(i)], InCol::FTag, Mark::Default);
    list.DoSort(QString::number(InCol::No), 1);
    if (list.Rows() > 0 && list.CellText(list.Rows(), InCol::FileName).isEmpty())
        list.DeleteRow(list.Rows());
    if (list.Rows() > 0)
        list.SetCurRow(1);
    list.LockUpdate(false);
    list.Refresh();
    return count;
}
