#include "core/GlobalGrids.h"

#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

namespace {
DataGrid* Make(const char* name) {
    auto* g = new DataGrid;
    g->setObjectName(QString::fromLatin1(name));
    return g;
}
} // namespace

namespace Grids {
DataGrid& LbxInput() {
    static DataGrid* g = Make("LbxInput");
    return *g;
}
DataGrid& LbxRef() {
    static DataGrid* g = Make("LbxRef");
    return *g;
}
DataGrid& lbxLink() {
    static DataGrid* g = Make("lbxLink");
    return *g;
}
DataGrid& lbxRating() {
    static DataGrid* g = Make("lbxRating");
    return *g;
}
DataGrid& LbxPic_Extern() {
    static DataGrid* g = Make("LbxPic_Extern");
    return *g;
}
DataGrid& LbxPic_LinkToPic() {
    static DataGrid* g = Make("LbxPic_LinkToPic");
    return *g;
}
DataGrid& LbxSText() {
    static DataGrid* g = Make("LbxSText");
    return *g;
}
} // namespace Grids

void DefineRatingList() {
    DataGrid& g = Grids::lbxRating();
    g.LockUpdate(true);
    g.Clear();
    if (g.Cols() == 0)
        g.AddColumn(QStringLiteral("Rating"), QString(), 4550);
    const bool useDefault = Setting(Ini::RatingFirst, Ini::RatingCol).isEmpty();
    for (int r = Ini::RatingFirst; r <= Ini::RatingLast; ++r) {
        const int n = r - Ini::RatingFirst + 1;
        g.AddRow({useDefault ? QString(n, u'*') : Setting(r, Ini::RatingCol)});
    }
    g.LockUpdate(false);
}

void DefineLinkList() {
    DataGrid& g = Grids::lbxLink();
    g.LockUpdate(true);
    g.Clear();
    if (g.Cols() == 0) {
        g.AddColumn(QStringLiteral("Bez"), QString(), 3000);
        g.AddColumn(QStringLiteral("Link"), QString(), 6000);
    }
    for (int r = Ini::LinkFirst; r <= Ini::LinkLast; ++r) {
        const QString name = Setting(r, Ini::LinkCol1);
        if (name.isEmpty())
            break;
        g.AddRow({name, Setting(r, Ini::LinkCol2)});
    }
    g.LockUpdate(false);
}

void WriteLinkListToSettings() {
    DataGrid& ini = Settings();
    ini.LockUpdate(true);
    for (int r = Ini::LinkFirst; r <= Ini::LinkLast; ++r) {
        SetSetting(r, Ini::LinkCol1, QString());
        SetSetting(r, Ini::LinkCol2, QString());
    }
    DataGrid& links = Grids::lbxLink();
    if (links.Cols() >= 1 && links.Rows() > 0) {
        links.DoSort(1, 1);
        int r = Ini::LinkFirst;
        for (int i = 1; i <= links.Rows() && r <= Ini::LinkLast; ++i, ++r) {
            const QString name = links.CellText(i, 1);
            if (name.isEmpty())
                break;
            SetSetting(r, Ini::LinkCol1, name);
            SetSetting(r, Ini::LinkCol2, links.Cols() >= 2 ? links.CellText(i, 2) : QString());
        }
    }
    ini.LockUpdate(false);
}
