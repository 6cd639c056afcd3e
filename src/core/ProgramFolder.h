#pragma once
// Where the program keeps its files (qlt.ini, Caption.qlt, lnkpic.qlt, data, reference,
// skin, temp, language, icons).
//
// A program run from its build folder, or from any folder it may write that holds
// qlt.ini, keeps them beside its executable. An installed program (executable in a
// folder it may not write, or without qlt.ini beside it, with the shipped default files
// in ../share/quillotune) keeps them per user in $XDG_DATA_HOME/quillotune
// (~/.local/share/quillotune): the first start copies the shipped files there, and the
// first start after an update of the package brings in new files and new caption rows
// without touching what the user changed.

#include <QString>

struct ProgramFolderChoice {
    QString folder;       // the program folder, without a trailing "/"
    QString sharedFolder; // the shipped default files; empty for a build folder
    bool perUser = false;
};

// Decides where the program folder is, from the folder of the executable and the user's
// data folder ($XDG_DATA_HOME or ~/.local/share). Looks at the disk only.
ProgramFolderChoice ChooseProgramFolder(const QString& exeFolder, const QString& userDataFolder);

struct ProgramFolderSetup {
    bool ok = true;
    bool filled = false;  // first start: the folder was made from the shipped files
    bool updated = false; // the shipped files changed since the last start
    QString error;        // what failed, for a message (in both languages)
};

// Makes or updates the per-user program folder from the shipped one. A folder that is
// not per user is left alone.
ProgramFolderSetup PrepareProgramFolder(const ProgramFolderChoice& choice);

// Merges a newly shipped caption table into the user's. Rows whose text the user never
// changed (the same as in `oldShipped`) take the new shipped text; rows the user
// translated or changed keep theirs, and so do the columns of imported languages. Rows
// the user's table lacks are added. Works on the files; false with `error` on a failure,
// which leaves the user's file as it was.
bool MergeCaptionFile(const QString& userFile, const QString& oldShippedFile, const QString& newShippedFile,
                      QString* error);

// Both programs call this first: chooses the folder, prepares it and sets AppPath().
// The setup's error (if any) is for the caller to show.
ProgramFolderSetup UseProgramFolder();

// The version of the program, from the build.
QString ProgramVersion();
