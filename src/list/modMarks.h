#pragma once
// Mark commands of the data list: setting and removing marks by hand, selecting by
// mark, and marking rows by a rule (song texts, pictures, file type). Every function
// takes the grid it works on, so the same commands serve LbxInput and LbxRef.

#include "list/modListEnv.h"

#include <QString>
#include <QStringList>
#include <functional>

class DataGrid;

struct MarkResult {
    bool ran = false; // false: a guard or the user's No stopped the command
    int count = 0;    // rows marked, unmarked or selected
};

// The mark a marking command writes: the text of the mark box, or "_#-->" when it is empty.
QString MarkText(const QString& ftagBox);

// btnTab1_SetFTagActRow: writes the mark box (empty: "_#-->") into the current row and
// moves to the next row (stays on the last).
MarkResult btnTab1_SetFTagActRow(DataGrid& list, const QString& ftagBox, const ListEnv& env);

// btnTab1_Sign(index): the text of sign `index` (signs[index], the marks of lbxSign)
// goes to the current row, or with signPreviousRow (chbTab1_SignPreviousRow) to the
// row above it. An empty sign sets nothing. `advanced` in the result tells the window
// that a mark was set on the current row (with chbTab1_AutoPlay it plays the next row).
struct SignResult {
    bool ran = false;
    int row = 0; // the row that took the sign
    QString sign;
    bool advanced = false; // the current row took the sign (not the row above)
};
SignResult btnTab1_Sign(DataGrid& list, const QStringList& signs, int index, bool signPreviousRow,
                        const ListEnv& env);
// One sign button that cycles: the target row (current row, or the row above it with
// signPreviousRow) takes the non-empty sign that follows its present mark in the sign
// list, or the first non-empty sign when its mark is none of them.
SignResult btnTab1_SignNext(DataGrid& list, const QStringList& signs, bool signPreviousRow,
                            const ListEnv& env);

// btnTab1_ClearFtag: empties the three mark boxes and refreshes the sums of "Input" and "Ref".
struct MarkBoxes {
    QString ftag;    // txtTab1_FTag
    QString ftag4;   // txtTab1_FTag4
    QString ftagRef; // txtTab1_FTagRef
};
void btnTab1_ClearFtag(MarkBoxes& boxes, const ListEnv& env);

// btnTab1_RemoveFtag: with an empty mark box asks CapRemoveMarksQuestion and empties the
// marks of the selected rows; with a text asks 147 + text + 149 and empties only the
// marks of selected rows equal to it. `sumList` names the list for the sums.
MarkResult btnTab1_RemoveFtag(DataGrid& list, const QString& ftagBox, const ListEnv& env,
                              const QString& sumList = SumList::Input);

// btnTab1_HighlightAll, btnTab1_InvertHighlight, btnTab1_InvertHilightRef.
void btnTab1_HighlightAll(DataGrid& list, const ListEnv& env, const QString& sumList = SumList::Input);
void btnTab1_InvertHighlight(DataGrid& list, const ListEnv& env, const QString& sumList = SumList::Input);
void btnTab1_InvertHilightRef(DataGrid& lbxRef, const ListEnv& env);

// btnTab1_FTagBlue: selects exactly the rows whose mark equals the mark box (an empty
// box: rows with any mark) and tells the count (CapRowsWithMarkSelected) unless noMsg.
MarkResult btnTab1_FTagBlue(DataGrid& list, const QString& ftagBox, bool noMsg, const ListEnv& env,
                            const QString& sumList = SumList::Input);

// Clears all marks, marks with "_#-->" each row for which `test` holds, sorts by the mark
// descending so that marked rows come first, makes row 1 current, runs ShowTotals and
// tells the count unless noMsg. The common frame of the rule marks below.
using RowTest = std::function<bool(const DataGrid& list, int row)>;
MarkResult MarkRowsWhere(DataGrid& lbxInput, const RowTest& test, bool noMsg, const ListEnv& env);

// btnTab1_MarkLrc: rows whose column 37 contains "[lrc]" in any case.
MarkResult btnTab1_MarkLrc(DataGrid& lbxInput, bool noMsg, const ListEnv& env);
// btnTab1_HighlightLink: rows with a linked picture; the link list answers `hasLink`.
MarkResult btnTab1_HighlightLink(DataGrid& lbxInput, const RowTest& hasLink, bool noMsg, const ListEnv& env);
// btnTab1_HighlightLyrics: rows with a song text in the tag (column 37 above 0, or a
// Lyrics3 text in column 54).
MarkResult btnTab1_HighlightLyrics(DataGrid& lbxInput, bool noMsg, const ListEnv& env);
// btnTab1_HighlightiPic: rows with an embedded picture (column 38 above 0).
MarkResult btnTab1_HighlightiPic(DataGrid& lbxInput, bool noMsg, const ListEnv& env);

// Marking by file type: rows whose column 6 equals `type` get "_#_" + type, all others
// are cleared; sort "2,7,3" ascending, row 1 current, exactly the marked rows selected;
// CapListEmpty or the count unless noMsg.
MarkResult MarkFileType(DataGrid& lbxInput, const QString& type, bool noMsg, const ListEnv& env);
