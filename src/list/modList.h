#pragma once
// The guards at the head of the list commands and the sums shown for a list: footers
// of the data list, and the label with count, time and size of the selected or marked
// rows. No widget is touched: the label is written through a callback, the mark box is
// read through one.

#include <QString>
#include <functional>

class DataGrid;
class Prompt;

// ---- guards ------------------------------------------------------------------------
// True when `list` has rows; else shows the list-is-empty message.
bool ListNotEmpty(const DataGrid& list, Prompt& prompt);
// True when at least `n` rows of `list` are selected; else shows the message.
bool AtLeastRowsSelected(const DataGrid& list, int n, Prompt& prompt);

// ---- formats -----------------------------------------------------------------------
// "mm:ss" below one hour, "h:mm:ss" from one hour on ("03:07", "1:03:07").
QString FormatDuration(qint64 seconds);
// Megabytes of `bytes` (bytes / 1024 / 1024) in the locale: "#,##0.00" below 1000,
// "#,##0" from 1000 on.
QString FormatMegabytes(double bytes);

// ---- sums --------------------------------------------------------------------------
// What a list shows its sums from. Lists: "Input", "Ref", "Playlist".
struct SumTarget {
    DataGrid* grid = nullptr;
    int secondsCol = 0;                           // whole seconds
    int bytesCol = 0;                             // size in bytes
    int markCol = 2;                              // the mark compared by ShowMarkedSum
    int hintFooterCol = 3;                        // footer that shows the wait hint for large selections
    std::function<QString()> markBox;             // text of the list's mark box
    std::function<void(const QString&)> setLabel; // the label of the sums
};

// The standard columns of a list ("Input": 8, 10; "Ref": 9, 11, hint in 4; "Playlist": 6, 8).
SumTarget DefaultSumTarget(const QString& list);
void RegisterSumTarget(const QString& list, const SumTarget& target);
void UnregisterSumTarget(const QString& list);
SumTarget* FindSumTarget(const QString& list);

// The label text: "(n)  time mm:ss / size Mb"; counts all selected rows, or with
// `markedOnly` the selected rows whose mark equals the mark box (without regard to case).
QString SumLabelText(const SumTarget& target, bool markedOnly);

void ShowSelectionSum(const QString& list);
void ShowMarkedSum(const QString& list);

// Footers of the data list: the row count under column 3, the duration under 9, the
// megabytes under 11, lyrics and "[Lrc]" count under 37, pictures under 38. Then the
// sums of the selection (mark box empty) or of the marked rows.
void ShowTotals(DataGrid& input);
void ShowTotals(); // on the registered "Input" list
