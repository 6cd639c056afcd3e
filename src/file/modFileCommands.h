#pragma once
// The file commands of the data list on its selected rows: copy (simple, and extended
// with the linked files and without the link tags), move and delete. They run on the file
// primitives of ftcFileOps; the window picks the folder and reads its switches into
// FileCommandOptions.

#include <QString>
#include <functional>

class DataGrid;
class TagEngine;
struct ListEnv;

struct FileCommandOptions {
    QString markFilter;           // txtTab1_FTag
    bool noMsg = false;           // chbTab1_NoMsg
    bool copyLinkedFiles = false; // chbTab1_CopyLinkedFiles
    bool eraseTagsByCopy = false; // chbTab1_EraseTagsByCopy
    bool paperbin = false;        // chbPref_Paperbin
    QString tempFolder;           // the program's temp folder (picture exports)
    QString journalPath;          // where a move records itself for the undo (empty: not)
    int nameCol = 3, pathCol = 7; // the list's FileName and Path columns (data list; LbxRef 4, 8)
    // The folder picker: the title row and the start folder; empty when cancelled.
    std::function<QString(int titleRow, const QString& start)> chooseFolder;
};

struct FileCommandResult {
    bool ran = false;
    int done = 0;
    int failed = 0;
};

// optTab1_FileCopy: asks for the target folder (starting from settings row 73, which keeps
// the answer) and copies. Simple copy: a name in use asks whether to replace. Extended copy
// (either switch set): a name in use gives "name (2).ext", then the linked files follow
// and/or the link tags of the copy are emptied.
FileCommandResult CopyRows(DataGrid& list, const FileCommandOptions& options, const ListEnv& env,
                           TagEngine* engine);
// optTab1_FileMove: moves into the chosen folder (a name in use gives "name (2).ext");
// moved rows leave the list, failed rows stay selected with "_#-/->". The moves go into the
// journal of the last batch, so that the undo brings the files back.
FileCommandResult MoveRows(DataGrid& list, const FileCommandOptions& options, const ListEnv& env);
// optTab1_FileDelete: asks (977, or 823 + mark + 824, No is the default), deletes to the
// trash (or for good with the paper bin switch) and removes the rows. With nothing
// selected the current row's file goes. `confirmed` skips the question.
FileCommandResult DeleteRows(DataGrid& list, const FileCommandOptions& options, const ListEnv& env,
                             bool confirmed = false);

// Copies the files the song links to (the eight link fields of V2 that hold an existing
// absolute path) and its pictures (linked ones as files, embedded ones exported through
// `tempFolder`) into `targetFolder`. False when the song could not be read.
bool CopyLinkedFiles(TagEngine& engine, const QString& source, const QString& targetFolder,
                     const QString& tempFolder);
// Empties the eight link fields of V2 of `path`. False when the save failed.
bool EraseLinkTags(TagEngine& engine, const QString& path);

// The rule of whole-drive sweeps: a path that contains "recycler" or "system" (in any
// case) is left out.
bool SweepSkips(const QString& path);
