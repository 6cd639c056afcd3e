#include "app/PrefLists.h"

#include "app/DataGridView.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "picture/modEmbeddedPictures.h"

#include <QTableView>

const std::vector<PrefListSpec>& PrefListSpecs() {
    static const std::vector<PrefListSpec> specs = {
        {"lbxSign", Ini::SignFirst, Ini::SignLast, {Ini::SignCol}, {CapHeaderSign}, 0, 3000},
        {"lbxMood", Ini::MoodFirst, Ini::MoodLast, {Ini::MoodCol}, {CapMoodHeader}, -1},
        {"LbxGenre", Ini::GenreFirst, Ini::GenreLast, {Ini::GenreCol}, {CapHeaderGenre}, -1},
        {"LbxFindChr",
         Ini::FindChrFirst,
         Ini::FindChrLast,
         {Ini::FindChrCol1, Ini::FindChrAndCol, Ini::FindChrCol2},
         {CapCheckListFind1, CapHeaderAndOr, CapCheckListFind2},
         -1,
         1700},
        {"LbxNegative",
         Ini::NegativeFirst,
         Ini::NegativeLast,
         {Ini::NegativeCol},
         {CapNegativeListHeader},
         -1},
        {"LbxPictureType",
         Ini::PictureTypeFirst,
         Ini::PictureTypeLast,
         {Ini::PictureTypeCol},
         {CapPictureTypeHeader},
         -1},
        {"lbxPrg_Extern",
         Ini::PrgExternFirst,
         Ini::PrgExternLast,
         {Ini::PrgExternNameCol, Ini::PrgExternPathCol},
         {CapHeaderProgram, CapHeaderPath},
         1,
         3500},
    };
    return specs;
}

void BuildPrefList(DataGrid& grid, const PrefListSpec& spec) {
    grid.setObjectName(QString::fromLatin1(spec.name));
    grid.LockUpdate(true);
    grid.Clear();
    if (grid.Cols() == 0) {
        if (spec.numberBase >= 0)
            grid.AddColumn(QStringLiteral("Nr"), QString(), 600, Align::Right);
        for (std::size_t i = 0; i < spec.cols.size(); ++i) {
            // a pair of search texts: the joining word between them stays narrow
            const bool joiner = spec.cols.size() == 3 && i == 1;
            grid.AddColumn(QStringLiteral("C%1").arg(i + 1), QString(), joiner ? 1100 : spec.width,
                           joiner ? Align::Center : Align::Left);
        }
    }
    for (int r = spec.first; r <= spec.last; ++r) {
        QStringList cells;
        if (spec.numberBase >= 0)
            cells.append(QString::number(r - spec.first + spec.numberBase));
        if (spec.first == Ini::PictureTypeFirst) {
            // The published names are shown in the program's language; a user's own stands.
            cells.append(PictureTypeName(r - spec.first));
        } else {
            for (int c : spec.cols)
                cells.append(Setting(r, c));
        }
        grid.AddRow(cells);
    }
    grid.LockUpdate(false);
    SetPrefListHeaders(grid, spec);
}

void SetPrefListHeaders(DataGrid& grid, const PrefListSpec& spec) {
    const int offset = spec.numberBase >= 0 ? 1 : 0;
    if (offset && grid.Cols() >= 1)
        grid.SetColumnCaption(1, Caption(CapListNumberHeader));
    for (std::size_t i = 0; i < spec.headers.size() && int(i) + offset < grid.Cols(); ++i)
        grid.SetColumnCaption(int(i) + 1 + offset, Caption(spec.headers[i]));
}

DataGridView* MakePrefListView(DataGrid& grid, const PrefListSpec& spec, QWidget* parent) {
    auto* view = new DataGridView(&grid, parent);
    view->setObjectName(QString::fromLatin1(spec.name));
    view->SetHeaderSort(false); // a row's place is its settings row
    const int offset = spec.numberBase >= 0 ? 1 : 0;
    const PrefListSpec s = spec;
    view->SetCellEditing([offset](int, int col) { return col > offset; },
                         [s, offset](int row, int col, QString& text) {
                             text = text.trimmed();
                             SetSetting(s.first + row - 1, s.cols[std::size_t(col - 1 - offset)], text);
                             SaveSettings();
                             return true;
                         });
    return view;
}
