#pragma once
// The V2 filter of the tag list and the genre list of the tag window.

#include "tag/modTagList.h"

#include <QString>
#include <QStringList>
#include <array>

class DataGrid;
class Prompt;
class TagEngine;

// The sixteen filter fields: the thirteen V2 texts (0 to 12), rating 13, mood 14, genre 15.
constexpr int kFilterFieldCount = 16;
using FilterTexts = std::array<QString, kFilterFieldCount>;

// The sixteen values of the current file (after OpenFile).
FilterTexts FilterValuesOfFile(const TagEngine& engine);

struct FilterOnResult {
    bool turnedOn = false;
    int removed = 0;
    // Sorted distinct values for each combo, each list with an empty first item.
    std::array<QStringList, kFilterFieldCount> values;
};

// btnTab2_FilterOnOff turning the filter on: rows without V2 are offered for removal,
// then the value lists of the combos are gathered. `progress` shows the gathering. An
// empty list gets the guard message and the filter stays off.
FilterOnResult FilterOn(DataGrid& lbxTag, TagEngine& engine, Prompt& prompt,
                        const TagProgress& progress = {});

// The progress text of the gathering: "file n of total".
QString FilterProgressText(int done, int total);

// btnTab2_Filter. Returns the number of rows that passed, -1 when the list is empty or
// there was no filter text.
int ApplyTagFilter(DataGrid& lbxTag, TagEngine& engine, Prompt& prompt, const FilterTexts& filters,
                   bool matchComplete, bool keepMark, const TagProgress& progress = {});
// One field against one filter text.
bool FilterMatches(const QString& value, const QString& filter, bool matchComplete);

// btnTab2_TransferToDatalist. True when rows of the data list were marked (the window
// then brings the data list forward).
bool TransferFilterToDatalist(DataGrid& lbxTag, DataGrid& lbxInput, Prompt& prompt, bool noMsg);

// ---- genre list (LbxGenre) --------------------------------------------------------------
// Fills a one-column grid with the non-empty genres of the settings' genre column.
void LoadGenreList(DataGrid& lbxGenre);
// btnTab2_TransferGenreV2: the non-empty genre texts of the current file are added to
// the list when new; the list is sorted and written back to the settings. Returns the
// number of genres added; with no text at all, the message is shown.
int TransferGenres(const QStringList& genreTexts, DataGrid& lbxGenre, Prompt& prompt);
