#include "core/Captions.h"

#include "core/AppPaths.h"
#include "core/DataGrid.h"

#include <QFileInfo>
#include <QLocale>

namespace {
int g_languageColumn = kLanguageGerman;
}

DataGrid& CaptionTable() {
    static DataGrid* grid = [] {
        auto* g = new DataGrid;
        g->setObjectName(QStringLiteral("LbxCap"));
        g->Tag = QStringLiteral("x");
        return g;
    }();
    return *grid;
}

int LanguageColumn() {
    return g_languageColumn;
}
void SetLanguageColumn(int column) {
    g_languageColumn = column;
    // Numbers in cells, sums and exports follow the program's language, not the
    // system's: German "1.234,56", English "1,234.56"; an imported language keeps the
    // system's way.
    if (column == kLanguageGerman)
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    else if (column == kLanguageEnglish)
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    else
        QLocale::setDefault(QLocale::system());
}

QString Caption(CaptionRow row) {
    const DataGrid& t = CaptionTable();
    if (row < 1 || row > t.Rows() || g_languageColumn < 1 || g_languageColumn > t.Cols())
        return QString();
    return t.CellText(row, g_languageColumn);
}

QString CaptionFilePath() {
    for (const char* name : {"Caption.qlt", "caption.qlt"}) {
        const QString p = AppFile(QString::fromLatin1(name));
        if (QFileInfo(p).isFile())
            return p;
    }
    return QString();
}

bool LoadCaptionTable() {
    DataGrid& t = CaptionTable();
    const QString path = CaptionFilePath();
    const bool loaded = !path.isEmpty() && t.LoadFile(path);
    if (!loaded) {
        // No texts rather than texts of an earlier load.
        t.Clear();
        t.RemoveAllColumns();
    }
    EnsureCaptionTableShape();
    return loaded;
}

void EnsureCaptionTableShape() {
    DataGrid& t = CaptionTable();
    t.LockUpdate(true);
    // Columns 1 to 4 always, 5 and 6 are the slots of imported languages.
    const char* keys[] = {"No", "Note", "Deutsch", "English", "Lng5", "Lng6"};
    while (t.Cols() < kCaptionColumnCount)
        t.AddColumn(QString::fromLatin1(keys[t.Cols()]), QString(), 6000, Align::Left,
                    t.Cols() < kLanguageEnglish);
    while (t.Rows() < kCaptionRowCount)
        t.AddRow({});
    for (int r = 1; r <= t.Rows(); ++r)
        t.SetCellText(r, 1, QString::number(r));
    for (int c = kLanguageEnglish + 1; c <= t.Cols(); ++c)
        t.SetColumnVisible(c, !t.CellText(1, c).isEmpty());
    SetCaptionTableHeaders();
    t.LockUpdate(false);
}

void SetCaptionTableHeaders() {
    DataGrid& t = CaptionTable();
    if (t.Cols() < kLanguageEnglish || t.Rows() < 533)
        return;
    t.SetColumnCaption(1, Caption(1));
    t.SetColumnCaption(2, Caption(533));
    t.SetColumnCaption(3, QStringLiteral("Deutsch"));
    t.SetColumnCaption(4, QStringLiteral("English"));
}
