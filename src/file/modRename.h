#pragma once
// The rename engine: every new name a file of the data list gets. A command first makes a
// plan (one step per selected row that passes the mark filter: the new name, or why the
// row fails); the plan is either shown (the preview) or carried out. Carrying out moves
// each file within its folder, writes the result into its row, marks failures "_#-/->"
// and records what it did in a journal, so that the last batch can be undone.
// Nothing here touches a widget: the window reads its controls into RenameRequest.

#include "core/Prompt.h"

#include <QString>
#include <vector>

class DataGrid;
class TagEngine;
struct ListEnv;

// ---- name grammar --------------------------------------------------------------------
// The leading digits of `base` form `number` (padded to `digits`); `rest` begins at the
// first letter A-Z or a-z after them (empty when there is none).
void SplitNumber(const QString& base, int digits, QString& number, QString& rest);
// For a base beginning with "#": "#" and the digits form the number (`number` holds the
// padded digits, without "#"); `rest` is the text after the following blank.
void SplitInternalNumber(const QString& base, int digits, QString& number, QString& rest);
// "07_" for the external style, "#07 " for the internal one.
QString ExternalPrefix(const QString& number);
QString InternalPrefix(const QString& number);

// ---- commands ----------------------------------------------------------------------------
enum class RenameCommand {
    None,
    SwapArtistTitle, // optTab1_FileChangeArtTit
    NumExt,          // optTab1_Num_Ext
    NumInt,          // optTab1_Num_Int
    NumFromTrack,    // optTab1_NumFromTrack (chbTab1_Num_Int: numberInternal)
    RemoveNumInt,    // optTab1_RemoveNumInt
    SpecialSet,      // optTab1_FileRenameSpecial with chbTab1_SetSpecialMark
    SpecialRemove,   // optTab1_FileRenameSpecial with chbTab1_RemoveSpecialMark
    Cut,             // optTab1_FileCut
    ReplaceArtist,   // optTab1_FileRename with chbTab1_FileReplaceArtist
    ReplaceString,   // optTab1_FileRename with chbTab1_FileReplaceString
    TagToFilename,   // optTab1_TagToFilename (chbTab1_TrackToNum: withTrack)
};

struct RenameRequest {
    RenameCommand command = RenameCommand::None;
    int digits = 2;              // settings row 27
    QString markFilter;          // txtTab1_FTag
    bool numberInternal = false; // chbTab1_Num_Int
    int cutA = 0, cutB = 0;      // txtTab1_FileCut(0), txtTab1_FileCut(1)
    bool cutFromRight = false;   // chbTab1_CutFromRight
    QString text;                // the new artist, or the text to find
    QString replacement;         // txtTab1_2_Replace
    bool confirmed = false;      // the user has said Yes already: no question
    int tagSet = 2;              // TagToFilename: the set chosen in the tag window (UpdateSet)
    bool withTrack = false;      // chbTab1_TrackToNum
};

// The cut modes of the table of rules.
enum class CutMode { Invalid, FromStart = 1, Range = 2, FromPosition = 3, FromRight = 4 };
// The mode of A, B and the switch, and the caption row that ends the command instead (0
// when the mode is valid).
CutMode CutModeOf(int a, int b, bool fromRight, int* messageRow);
// The base name after the cut (may be empty).
QString CutBase(const QString& base, CutMode mode, int a, int b);
// btnTab1_FileCut: A and B from a name in which the user typed "@" once or twice. False
// when there is no "@".
bool CutPositionsFromMarks(const QString& marked, bool fromRight, int& a, int& b);

// One row of a plan.
struct RenameStep {
    int row = 0;
    QString folder, oldName, newName;
    QString artist, title; // what the row's Artist and Title take on success
    bool artistOnly = false;
    QString reason; // not empty: the row fails with this reason, nothing is moved
};

struct RenamePlan {
    RenameCommand command = RenameCommand::None;
    int endRow = 0; // a caption row that ends the command before any file (else 0)
    Prompt::Icon endIcon = Prompt::Icon::Warning;
    int questionRow = 0; // the command's question
    std::vector<RenameStep> steps;
    int examined = 0; // selected rows that passed the mark filter
};

// The caption row of the command's question, 0 for none.
int RenameQuestionRow(const RenameRequest& request);

// Works out the new names of the selected rows of `list` (the data list) that pass the
// mark filter. `engine` is needed by NumFromTrack only. Rows whose name stays as it is are
// left out; rows that cannot be renamed carry their reason. Touches no file.
RenamePlan PlanRename(const DataGrid& list, const RenameRequest& request, TagEngine* engine = nullptr);

// Why a file system would refuse `name` in `folder` (empty when it takes it): characters
// that vfat, exfat, NTFS and SMB shares cannot hold, trailing dots and blanks there, names
// longer than 255 bytes, and "/" or an empty name everywhere.
QString NameRefusal(const QString& folder, const QString& name);

// ---- carrying out --------------------------------------------------------------------------
struct RenameOutcome {
    int done = 0;
    int failed = 0;
    bool aborted = false;
    std::vector<QString> failures; // "name: reason" per failed row, in plan order
    // Per step of the plan: the name the file has now (empty when it failed or was not
    // reached) and the reason of a failure.
    struct StepResult {
        QString finalName, reason;
    };
    std::vector<StepResult> results;
};

// Moves the files of the plan's steps and writes the results into the rows of `list`.
// Failed rows get "_#-/->". The journal (when `journalPath` is not empty) is written
// before a file moves and lists every rename that was done. Progress and the abort flag
// through `env`.
RenameOutcome ApplyPlan(DataGrid& list, const RenamePlan& plan, const ListEnv* env = nullptr,
                        const QString& journalPath = QString());

// The whole command as the data list's buttons run it: guards, question (unless
// noMsg), plan, carrying out, sort and report. With `preview` the plan is returned and
// nothing moves (the caller shows it). Returns the plan that was made.
struct RenameRun {
    bool ran = false; // false: a guard, a message or a No ended it
    RenamePlan plan;
    RenameOutcome outcome;
};
RenameRun RunRename(DataGrid& list, const RenameRequest& request, const ListEnv& env, bool noMsg,
                    bool preview, TagEngine* engine = nullptr, const QString& journalPath = QString());

// The closing of a batch: the sort (failures first) and the report.
void FinishRename(DataGrid& list, RenameCommand command, const RenameOutcome& outcome, const ListEnv& env,
                  bool noMsg);

// ---- undo ------------------------------------------------------------------------------------
struct UndoOutcome {
    bool hadJournal = false;
    int done = 0;
    int failed = 0;
    int changedSince = 0; // files whose size or time changed after the batch
    std::vector<QString> failures;
};
// Puts the renames of the journal back, the last first, and updates the rows of `list`
// (found by folder and name, so any order of the list will do). The journal goes when
// everything was put back.
UndoOutcome UndoLastBatch(DataGrid* list, const QString& journalPath, const ListEnv* env = nullptr);

// The journal of the data list's commands and that of the command-line tool, in `temp`.
QString RenameJournalPath();
QString CliJournalPath();
