#pragma once
// What a list command needs from its surroundings besides the grids: the prompt, the
// progress bar over the list, and the hooks that refresh totals and sums. Windows fill
// it from their own objects; tests and the command-line tool leave the hooks empty.

#include "core/Prompt.h"

#include <QString>
#include <functional>

class DataGrid;

// The bar prgBar over a list (ShowProgress / HideProgress).
class ListProgress {
public:
    virtual ~ListProgress() = default;
    // keepButtons: 0 shows the abort button in place of the folder button, -1 leaves
    // the buttons as they are.
    virtual void ShowProgress(int max, int keepButtons) = 0;
    virtual void SetProgress(int value) = 0;
    virtual void HideProgress() = 0;
};

// The names of the lists whose sums are shown, as ShowSelectionSum(list) takes them.
namespace SumList {
inline const QString Input = QStringLiteral("Input");
inline const QString Ref = QStringLiteral("Ref");
inline const QString Playlist = QStringLiteral("Playlist");
} // namespace SumList

struct ListEnv {
    explicit ListEnv(Prompt& p) : prompt(p) {}

    Prompt& prompt;
    ListProgress* progress = nullptr; // null: no bar
    // ShowTotals() of LbxInput (footers, then the selection or marked sum).
    std::function<void()> showTotals;
    // ShowSelectionSum(list) or ShowMarkedSum(list), whichever the list's mark box asks for.
    std::function<void(const QString& list)> refreshSums;
    // The guards of the data list. When empty, a row count test with the caption
    // messages CapListEmpty and CapNoRowSelected stands in.
    std::function<bool(const DataGrid&)> listNotEmpty;
    std::function<bool(const DataGrid&, int n)> atLeastRowsSelected;

    // Helpers used by the commands.
    bool ListNotEmpty(const DataGrid& grid) const;
    bool AtLeastRowsSelected(const DataGrid& grid, int n) const;
    void ShowTotals() const;
    void RefreshSums(const QString& list) const;
    void ShowProgress(int max, int keepButtons) const;
    // Moves the bar; cheap enough to call per row (the bar is moved every 512 rows).
    void SetProgress(int value) const;
    void HideProgress() const;
};

// A count message: Caption(row), a blank and the number.
QString CountText(int captionRow, qint64 count);
