#include "list/modListColumns.h"

#include "core/Captions.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"

namespace {
// Header colours by group of tag fields (0xBBGGRR).
BgrColor HeaderColor(int col) {
    if (col >= InCol::DurationS && col <= InCol::HasTag)
        return 0xFF0000; // blue: audio data
    if (col >= InCol::V1First && col <= InCol::V1Last)
        return 0x0080FF; // orange: ID3v1
    if (col >= InCol::V2First && col <= InCol::V2Last)
        return 0x0040C0; // brown: ID3v2
    if (col >= InCol::ApeFirst && col <= InCol::ApeLast)
        return 0xFF00FF; // magenta: APE
    if (col >= InCol::LyricsFirst && col <= InCol::LyricsLast)
        return 0x008000; // green: Lyrics3
    return kNoColor;
}
} // namespace

void DefineInputColumns(DataGrid& g) {
    const bool wasLocked = g.IsLocked();
    g.LockUpdate(true);
    g.RemoveAllColumns();
    for (int col = 1; col <= InCol::Count; ++col) {
        const InputColumnDef& d = kInputColumns[std::size_t(col - 1)];
        g.AddColumn(QString::fromLatin1(d.key), Caption(d.captionRow), d.widthTwips, d.align,
                    col != InCol::No, d.sortType);
        g.Column(col).headerColor = HeaderColor(col);
    }
    g.highlightColor = 0xC0FFFF;
    g.ColumnsChanged();
    g.LockUpdate(wasLocked);
}

void SetInputColumnCaptions(DataGrid& g) {
    const bool wasLocked = g.IsLocked();
    g.LockUpdate(true);
    for (int col = 1; col <= InCol::Count && col <= g.Cols(); ++col)
        g.SetColumnCaption(col, Caption(kInputColumns[std::size_t(col - 1)].captionRow));
    g.LockUpdate(wasLocked);
}

void FitAllColumns(DataGrid& grid) {
    for (int c = 1; c <= grid.Cols(); ++c)
        if (grid.Column(c).visible)
            grid.DoColumnAutoSize(c);
}
