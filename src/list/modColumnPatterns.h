#pragma once
// Column patterns: which columns of the data list are visible, kept as a text of one
// digit per column ("1" visible, "0" hidden). Ten named patterns live in the settings
// (rows 106 to 115: column 1 the name, column 2 the text; row 87 column 2 the pattern
// in use); the reference list has one unnamed pattern (row 77, column 1).
//
// The check boxes chbCol of FrmShowColumn mirror the visibility of LbxInput: every
// command here changes the grid, and the window reads the boxes back from it.

#include "core/Prompt.h"

#include <QString>
#include <functional>
#include <vector>

class DataGrid;

constexpr int kPatternCount = 10;

// ---- pattern texts -----------------------------------------------------------------
// One '1' or '0' per column of `grid`, in column order.
QString PatternOfVisibility(const DataGrid& grid);
// The boxes of a pattern text: character i (1-based) read as a number; a missing or
// non-digit character reads as 0, so a short text leaves the last columns hidden.
std::vector<bool> PatternToBoxes(const QString& text, int count);
QString PatternFromBoxes(const std::vector<bool>& boxes);
// Applies the boxes to the grid's columns (box i -> column i + 1), under LockUpdate.
void SetColumnsVisible(DataGrid& grid, const std::vector<bool>& boxes);
// chbCol(i): shows or hides column i + 1. Settings row 87 is left alone.
void ToggleColumn_LbxInput(DataGrid& lbxInput, int i, bool visible);

// ---- the ten patterns in the settings ------------------------------------------------
QString PatternName(const DataGrid& lbxIni, int p); // p from 0 to 9
QString PatternText(const DataGrid& lbxIni, int p);
// Caption of optShowCol_Pattern(p): the name, or CapPatternDefault and p + 1.
QString PatternCaption(const DataGrid& lbxIni, int p);
// The pattern in use (settings row 87, column 2), or -1.
int ActivePattern(const DataGrid& lbxIni);

// ApplyPattern(p): the text of slot p into the boxes and the grid. A free slot (no text)
// changes nothing and returns false.
bool ApplyPattern(const DataGrid& lbxIni, DataGrid& lbxInput, int p);

struct PatternResult {
    bool ran = false;       // false: a guard or the user's No stopped the command
    bool focusName = false; // the window focuses txtShowCol_Pattern
    QString optionCaption;  // new caption of optShowCol_Pattern(p)
    QString nameText;       // optShowCol_Pattern: text for txtShowCol_Pattern (empty for a free slot)
};

// Writes qlt.ini from lbxIni; returns success. Supplied by the settings module.
using SaveSettingsFn = std::function<bool()>;

// optShowCol_Pattern(p): p into row 87, the name for txtShowCol_Pattern, ApplyPattern(p).
PatternResult optShowCol_Pattern(DataGrid& lbxIni, DataGrid& lbxInput, int p);
// btnShowCol_SavePattern: `name` from txtShowCol_Pattern, `p` the chosen option (-1 none).
// Saves the visibility of LbxInput into slot p (overwriting it without a question).
PatternResult btnShowCol_SavePattern(DataGrid& lbxIni, const DataGrid& lbxInput, const QString& name, int p,
                                     const SaveSettingsFn& saveSettings, Prompt& prompt);
// btnShowCol_DeletePattern: asks, empties slot p and row 87; the columns stay as they are.
PatternResult btnShowCol_DeletePattern(DataGrid& lbxIni, int p, const SaveSettingsFn& saveSettings,
                                       Prompt& prompt);
// btnShowCol_ActivateAll, btnShowCol_DeActivateAll (column 3, the file name, stays visible).
void btnShowCol_ActivateAll(DataGrid& lbxInput);
void btnShowCol_DeActivateAll(DataGrid& lbxInput);
// BtnFrmShow_SetTFOn, BtnFrmShow_SetTFOff: the tag field columns (15 to 70) together.
void BtnFrmShow_SetTFOn(DataGrid& lbxInput);
void BtnFrmShow_SetTFOff(DataGrid& lbxInput);

// ---- the reference list ------------------------------------------------------------
// Applies a digit text to the columns of LbxRef (same reading as PatternToBoxes).
void ApplyRefPattern(DataGrid& lbxRef, const QString& text);
// btnShowColRef_Save: the digit text of LbxRef into settings row 77, column 1; CapColumnChoiceSaved.
void btnShowColRef_Save(DataGrid& lbxIni, const DataGrid& lbxRef, Prompt& prompt);

// At start-up: a non-empty row 77 goes to LbxRef, the pattern of row 87 to LbxInput.
void ApplyStartupPatterns(const DataGrid& lbxIni, DataGrid& lbxInput, DataGrid& lbxRef);
