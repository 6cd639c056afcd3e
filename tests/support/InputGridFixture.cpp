#include "InputGridFixture.h"

#include "core/Captions.h"
#include "core/SettingRows.h"
#include "list/InputColumns.h"

namespace fixture {

void DefineInputColumns(DataGrid& grid) {
    grid.LockUpdate(true);
    for (const InputColumnDef& def : kInputColumns)
        grid.AddColumn(QString::fromLatin1(def.key), QString::fromLatin1(def.key), def.widthTwips, def.align,
                       true, def.sortType);
    grid.SetColumnVisible(InCol::No, false);
    grid.LockUpdate(false);
}

int AddInputRow(DataGrid& grid, std::initializer_list<std::pair<int, QString>> cells) {
    QStringList row;
    for (int c = 1; c <= grid.Cols(); ++c)
        row.append(QString());
    row[0] = QString::number(grid.Rows() + 1);
    for (const auto& [col, text] : cells)
        row[col - 1] = text;
    return grid.AddRow(row);
}

void DefineColumns(DataGrid& grid, int cols) {
    for (int c = 1; c <= cols; ++c)
        grid.AddColumn(QStringLiteral("R%1").arg(c), QStringLiteral("R%1").arg(c));
}

void FillCaptions() {
    DataGrid& t = CaptionTable();
    t.LockUpdate(true);
    t.Clear();
    while (t.Cols() < kLanguageEnglish)
        t.AddColumn(QString(), QString());
    for (int r = 1; r <= kCaptionRowCount; ++r)
        t.AddRow({QString::number(r), QString(), QStringLiteral("C%1").arg(r), QStringLiteral("E%1").arg(r)});
    t.LockUpdate(false);
    SetLanguageColumn(kLanguageGerman);
}

void DefineSettings(DataGrid& lbxIni) {
    for (int c = 1; c <= Ini::Columns; ++c)
        lbxIni.AddColumn(QString(), QString());
    lbxIni.LockUpdate(true);
    for (int r = 1; r <= Ini::MinRows; ++r)
        lbxIni.AddRow({});
    lbxIni.LockUpdate(false);
}

} // namespace fixture
