#include "core/Settings.h"

#include "core/AppPaths.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"

DataGrid& Settings() {
    static DataGrid* grid = [] {
        auto* g = new DataGrid;
        g->setObjectName(QStringLiteral("lbxIni"));
        return g;
    }();
    return *grid;
}

void EnsureSettingsShape() {
    DataGrid& g = Settings();
    const bool wasLocked = g.IsLocked();
    g.LockUpdate(true);
    while (g.Cols() < Ini::Columns)
        g.AddColumn(QStringLiteral("C%1").arg(g.Cols() + 1), QString());
    while (g.Rows() < Ini::MinRows)
        g.AddRow({});
    g.LockUpdate(wasLocked);
}

QString Setting(int row, int col) {
    const DataGrid& g = Settings();
    if (row < 1 || col < 1 || row > g.Rows() || col > g.Cols())
        return QString();
    return g.CellText(row, col);
}

void SetSetting(int row, int col, const QString& text) {
    if (row < 1 || col < 1)
        return;
    DataGrid& g = Settings();
    if (row > g.Rows() || col > g.Cols()) {
        EnsureSettingsShape();
        g.LockUpdate(true);
        while (g.Cols() < col)
            g.AddColumn(QStringLiteral("C%1").arg(g.Cols() + 1), QString());
        while (g.Rows() < row)
            g.AddRow({});
        g.LockUpdate(false);
    }
    g.SetCellText(row, col, text);
}

bool SettingOn(int row, int col) {
    return Setting(row, col) == u"1";
}

void SetSettingOn(int row, int col, bool on) {
    SetSetting(row, col, on ? QStringLiteral("1") : QStringLiteral("0"));
}

QString SettingsFilePath() {
    return AppFile(QStringLiteral("qlt.ini"));
}

bool LoadSettings() {
    return LoadSettings(SettingsFilePath());
}

bool LoadSettings(const QString& path) {
    if (!Settings().LoadFile(path))
        return false;
    EnsureSettingsShape();
    return true;
}

bool SaveSettings() {
    return Settings().SaveFile(SettingsFilePath());
}

int ApplyNumberDigitsDefault() {
    if (Setting(Ini::NumberDigits, Ini::Col1).trimmed().isEmpty())
        SetSetting(Ini::NumberDigits, Ini::Col1, QString::number(kNumberDigitChoices[0]));
    return NumberDigits();
}

int NumberDigits() {
    bool ok = false;
    const int n = Setting(Ini::NumberDigits, Ini::Col1).trimmed().toInt(&ok);
    return ok && n > 0 && n < 10 ? n : kNumberDigitChoices[0];
}
