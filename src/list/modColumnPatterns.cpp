#include "list/modColumnPatterns.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "list/InputColumns.h"

namespace {

QString IniText(const DataGrid& ini, int row, int col) {
    if (row < 1 || row > ini.Rows() || col < 1 || col > ini.Cols())
        return QString();
    return ini.CellText(row, col);
}

void SetIniText(DataGrid& ini, int row, int col, const QString& text) {
    while (ini.Cols() < col)
        ini.AddColumn(QString(), QString());
    while (ini.Rows() < row)
        ini.AddRow({});
    ini.SetCellText(row, col, text);
}

bool ValidSlot(int p) {
    return p >= 0 && p < kPatternCount;
}

void SetRangeVisible(DataGrid& grid, int first, int last, bool visible) {
    grid.LockUpdate(true);
    for (int c = std::max(first, 1); c <= std::min(last, grid.Cols()); ++c)
        grid.SetColumnVisible(c, visible);
    grid.LockUpdate(false);
    grid.Refresh();
}

} // namespace

QString PatternOfVisibility(const DataGrid& grid) {
    QString text;
    text.reserve(grid.Cols());
    for (int c = 1; c <= grid.Cols(); ++c)
        text += grid.Column(c).visible ? QLatin1Char('1') : QLatin1Char('0');
    return text;
}

std::vector<bool> PatternToBoxes(const QString& text, int count) {
    std::vector<bool> boxes(std::size_t(std::max(count, 0)), false);
    for (int i = 0; i < count && i < text.size(); ++i) {
        const QChar ch = text.at(i);
        boxes[std::size_t(i)] = ch.isDigit() && ch != QLatin1Char('0');
    }
    return boxes;
}

QString PatternFromBoxes(const std::vector<bool>& boxes) {
    QString text;
    text.reserve(qsizetype(boxes.size()));
    for (bool b : boxes)
        text += b ? QLatin1Char('1') : QLatin1Char('0');
    return text;
}

void SetColumnsVisible(DataGrid& grid, const std::vector<bool>& boxes) {
    grid.LockUpdate(true);
    for (int c = 1; c <= grid.Cols() && c <= int(boxes.size()); ++c)
        grid.SetColumnVisible(c, boxes[std::size_t(c - 1)]);
    grid.LockUpdate(false);
    grid.Refresh();
}

void ToggleColumn_LbxInput(DataGrid& lbxInput, int i, bool visible) {
    if (i >= 0 && i < lbxInput.Cols())
        lbxInput.SetColumnVisible(i + 1, visible);
}

QString PatternName(const DataGrid& lbxIni, int p) {
    return ValidSlot(p) ? IniText(lbxIni, Ini::PatternFirst + p, Ini::PatternNameCol) : QString();
}

QString PatternText(const DataGrid& lbxIni, int p) {
    return ValidSlot(p) ? IniText(lbxIni, Ini::PatternFirst + p, Ini::PatternTextCol) : QString();
}

QString PatternCaption(const DataGrid& lbxIni, int p) {
    const QString name = PatternName(lbxIni, p);
    if (!name.isEmpty())
        return name;
    return Caption(CapPatternDefault).trimmed() + QLatin1Char(' ') + QString::number(p + 1);
}

int ActivePattern(const DataGrid& lbxIni) {
    bool ok = false;
    const int p = IniText(lbxIni, Ini::ActivePattern, Ini::Col2).trimmed().toInt(&ok);
    return ok && ValidSlot(p) ? p : -1;
}

bool ApplyPattern(const DataGrid& lbxIni, DataGrid& lbxInput, int p) {
    const QString text = PatternText(lbxIni, p);
    if (text.isEmpty())
        return false;
    SetColumnsVisible(lbxInput, PatternToBoxes(text, InCol::Count));
    return true;
}

PatternResult optShowCol_Pattern(DataGrid& lbxIni, DataGrid& lbxInput, int p) {
    PatternResult result;
    if (!ValidSlot(p))
        return result;
    SetIniText(lbxIni, Ini::ActivePattern, Ini::Col2, QString::number(p));
    result.nameText = PatternName(lbxIni, p);
    result.optionCaption = PatternCaption(lbxIni, p);
    ApplyPattern(lbxIni, lbxInput, p);
    result.ran = true;
    return result;
}

PatternResult btnShowCol_SavePattern(DataGrid& lbxIni, const DataGrid& lbxInput, const QString& name, int p,
                                     const SaveSettingsFn& saveSettings, Prompt& prompt) {
    PatternResult result;
    if (name.trimmed().isEmpty()) {
        prompt.Tell(Caption(CapNoPatternName), Prompt::Icon::Information);
        result.focusName = true;
        return result;
    }
    if (!ValidSlot(p)) {
        prompt.Tell(Caption(CapNoPatternSlot), Prompt::Icon::Information);
        return result;
    }
    QString text = PatternOfVisibility(lbxInput).left(InCol::Count);
    SetIniText(lbxIni, Ini::PatternFirst + p, Ini::PatternNameCol, name);
    SetIniText(lbxIni, Ini::PatternFirst + p, Ini::PatternTextCol, text);
    SetIniText(lbxIni, Ini::ActivePattern, Ini::Col2, QString::number(p));
    result.optionCaption = PatternCaption(lbxIni, p);
    result.nameText = name;
    if (saveSettings)
        saveSettings();
    result.ran = true;
    return result;
}

PatternResult btnShowCol_DeletePattern(DataGrid& lbxIni, int p, const SaveSettingsFn& saveSettings,
                                       Prompt& prompt) {
    PatternResult result;
    if (!ValidSlot(p)) {
        prompt.Tell(Caption(CapNoPatternSlot), Prompt::Icon::Information);
        return result;
    }
    QString question = Caption(CapDeletePatternQuestion);
    if (!question.isEmpty())
        question += QLatin1Char('\n');
    question += PatternCaption(lbxIni, p);
    if (!prompt.AskYesNo(question, false))
        return result;
    SetIniText(lbxIni, Ini::PatternFirst + p, Ini::PatternNameCol, QString());
    SetIniText(lbxIni, Ini::PatternFirst + p, Ini::PatternTextCol, QString());
    SetIniText(lbxIni, Ini::ActivePattern, Ini::Col2, QString());
    result.optionCaption = PatternCaption(lbxIni, p);
    if (saveSettings)
        saveSettings();
    result.ran = true;
    return result;
}

void btnShowCol_ActivateAll(DataGrid& lbxInput) {
    SetRangeVisible(lbxInput, 1, lbxInput.Cols(), true);
}

void btnShowCol_DeActivateAll(DataGrid& lbxInput) {
    lbxInput.LockUpdate(true);
    for (int c = 1; c <= lbxInput.Cols(); ++c)
        lbxInput.SetColumnVisible(c, c == InCol::FileName);
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
}

void BtnFrmShow_SetTFOn(DataGrid& lbxInput) {
    SetRangeVisible(lbxInput, InCol::Tg1Genre, InCol::Mood, true);
}
void BtnFrmShow_SetTFOff(DataGrid& lbxInput) {
    SetRangeVisible(lbxInput, InCol::Tg1Genre, InCol::Mood, false);
}

void ApplyRefPattern(DataGrid& lbxRef, const QString& text) {
    SetColumnsVisible(lbxRef, PatternToBoxes(text, lbxRef.Cols()));
}

void btnShowColRef_Save(DataGrid& lbxIni, const DataGrid& lbxRef, Prompt& prompt) {
    SetIniText(lbxIni, Ini::ShowColumnRefPattern, Ini::Col1, PatternOfVisibility(lbxRef));
    prompt.Tell(Caption(CapColumnChoiceSaved), Prompt::Icon::Information);
}

void ApplyStartupPatterns(const DataGrid& lbxIni, DataGrid& lbxInput, DataGrid& lbxRef) {
    const QString refPattern = IniText(lbxIni, Ini::ShowColumnRefPattern, Ini::Col1);
    if (!refPattern.isEmpty())
        ApplyRefPattern(lbxRef, refPattern);
    const int p = ActivePattern(lbxIni);
    if (p >= 0)
        ApplyPattern(lbxIni, lbxInput, p);
}
