#include "list/modListEnv.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"

bool ListEnv::ListNotEmpty(const DataGrid& grid) const {
    if (listNotEmpty)
        return listNotEmpty(grid);
    if (grid.Rows() > 0)
        return true;
    prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
    return false;
}

bool ListEnv::AtLeastRowsSelected(const DataGrid& grid, int n) const {
    if (atLeastRowsSelected)
        return atLeastRowsSelected(grid, n);
    if (grid.SelCount() >= n)
        return true;
    prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
    return false;
}

void ListEnv::ShowTotals() const {
    if (showTotals)
        showTotals();
}

void ListEnv::RefreshSums(const QString& list) const {
    if (refreshSums)
        refreshSums(list);
}

void ListEnv::ShowProgress(int max, int keepButtons) const {
    if (progress)
        progress->ShowProgress(max, keepButtons);
}

void ListEnv::SetProgress(int value) const {
    if (progress && (value & 511) == 0)
        progress->SetProgress(value);
}

void ListEnv::HideProgress() const {
    if (progress)
        progress->HideProgress();
}

QString CountText(int captionRow, qint64 count) {
    QString text = Caption(captionRow);
    if (!text.isEmpty() && !text.endsWith(QLatin1Char(' ')))
        text += QLatin1Char(' ');
    return text + QString::number(count);
}
