#pragma once
// Find: marks every row of the data list (or of the reference list) in which a text
// occurs, by putting "_#FOUND" in front of the row's mark.

#include "list/modListEnv.h"

#include <QString>
#include <QStringList>
#include <QStringView>

class DataGrid;

struct FindOptions {
    QString text;                 // text of cmbTab1_Find
    bool allEntries = false;      // search every entry of cmbTab1_Find instead of the text alone
    QStringList history;          // the entries of cmbTab1_Find
    int column = 0;               // 0: all columns; else the column number (FindColumnOfEntry)
    bool clearMarks = false;      // chbTab1_Find(0): empty all marks first
    bool wholeWords = false;      // chbTab1_Find(1)
    bool inReferenceList = false; // chbTab1_Find(2): search LbxRef
    bool noMsg = false;           // chbTab1_NoMsg
};

struct FindResult {
    bool ran = false;    // false: no text; the window focuses cmbTab1_Find with its text selected
    int hits = 0;        // rows hit
    QStringList history; // the new entries of cmbTab1_Find (the text added when new)
};

// The column searched for entry `entry` of cmbTab1_FindInColumn: 0 (all) for entry 0,
// else entry + 2.
int FindColumnOfEntry(int entry);

// The find command (btnTab1_M_Find): guards the text, runs FindInList and keeps the history.
FindResult btnTab1_M_Find_Click(DataGrid& lbxInput, DataGrid& lbxRef, const FindOptions& options,
                                const ListEnv& env);

// Marks the rows of LbxInput (LbxRef with options.inReferenceList) that hold the text (or,
// with allEntries, any entry of the history). startColumn 0 means all columns and is set to
// the first searched column: 3 for LbxInput, 4 for LbxRef. Returns the number of rows hit.
int FindInList(DataGrid& lbxInput, DataGrid& lbxRef, const FindOptions& options, int& startColumn,
               const ListEnv& env);

// The text test of the find, without regard to case. With wholeWord the cell must hold
// " word " or " word.", begin with "word ", equal the word or end with " word".
bool MatchText(QStringView cell, QStringView word, bool wholeWord);
