#include "app/PrefLists.h"

#include "app/DataGridView.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "picture/modEmbeddedPictures.h"

#include <QTableView>

const std::vector<PrefListShape>& PrefListShapes() {
    static const std::vector<PrefListShape> shapes = {
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
    return shapes;
}

void BuildPrefList(DataGrid& grid, const PrefListShape& shape) {
    grid.setObjectName(QString::fromLatin1(shape.name));
    grid.LockUpdate(true);
    grid.Clear();
    if (grid.Cols() == 0) {
        if (shape.numberBase >= 0)
            grid.AddColumn(QStringLiteral("Nr"), QString(), 600, Align::Right);
        for (std::size_t i = 0; i < shape.cols.size(); ++i) {
            // a pair of search texts: the joining word between them stays narrow
            const bool joiner = shape.cols.size() == 3 && i == 1;
            grid.AddColumn(QStringLiteral("C%1").arg(i + 1), QString(), joiner ? 1100 : shape.width,
                           joiner ? Align::Center : Align::Left);
        }
    }
    for (int r = shape.first; r <= shape.last; ++r) {
        QStringList cells;
        if (shape.numberBase >= 0)
            cells.append(QString::number(r - shape.first + shape.numberBase));
        if (shape.first == Ini::PictureTypeFirst) {
            // The published names are shown in the program's language; a user's own stands.
            cells.append(PictureTypeName(r - shape.first));
        } else {
            for (int c : shape.cols)
                cells.append(Setting(r, c));
        }
        grid.AddRow(cells);
    }
    grid.LockUpdate(false);
    SetPrefListHeaders(grid, shape);
}

void SetPrefListHeaders(DataGrid& grid, const PrefListShape& shape) {
    const int offset = shape.numberBase >= 0 ? 1 : 0;
    if (offset && grid.Cols() >= 1)
        grid.SetColumnCaption(1, Caption(CapListNumberHeader));
    for (std::size_t i = 0; i < shape.headers.size() && int(i) + offset < grid.Cols(); ++i)
        grid.SetColumnCaption(int(i) + 1 + offset, Caption(shape.headers[i]));
}

DataGridView* MakePrefListView(DataGrid& grid, const PrefListShape& shape, QWidget* parent) {
    auto* view = new DataGridView(&grid, parent);
    view->setObjectName(QString::fromLatin1(shape.name));
    view->SetHeaderSort(false); // a row's place is its settings row
    const int offset = shape.numberBase >= 0 ? 1 : 0;
    const PrefListShape s = shape;
    view->SetCellEditing([offset](int, int col) { return col > offset; },
                         [s, offset](int row, int col, QString& text) {
                             text = text.trimmed();
                             SetSetting(s.first + row - 1, s.cols[std::size_t(col - 1 - offset)], text);
                             SaveSettings();
                             return true;
                         });
    return view;
}
