#pragma once
// The spine of the program: the ordered start-up and the ordered closing. The window
// program passes its own steps (define the grids, set captions, show the window ...)
// as callbacks, so the order and every check can run without a screen.

#include <QString>
#include <functional>
#include <utility>
#include <vector>

class Prompt;

// ---- start-up ------------------------------------------------------------------------
enum class StartCheck { Ok, MissingIni, MissingCaption, UnreadableIni };

// The three messages that end the program before any window appears. They stand in the
// code (the caption table is not loaded yet) and carry both languages, German first.
QString StartMessage(StartCheck failure);

// Step 2: qlt.ini present, Caption.qlt (or caption.qlt) present, qlt.ini readable into
// Settings. On a failure shows its message with the critical icon and returns it;
// nothing after the first failure is checked.
StartCheck CheckFiles(Prompt& prompt);

// A language of the caption table: its column and its name (the column caption).
struct LanguageEntry {
    int column;
    QString name;
};
// Step 3: every column from 3 on whose row 1 is not empty is a language. Sets
// LanguageColumn from Settings row 43 (empty, or a column that is no language: 3).
std::vector<LanguageEntry> GetLanguage();
// The languages of the caption table as GetLanguage lists them, without changing the
// current one.
std::vector<LanguageEntry> AvailableLanguages();

// The window steps of the start-up, in the order they run. Empty ones are skipped.
struct StartupSteps {
    std::function<void()> createTagEngine;                                      // 1
    std::function<void(const std::vector<LanguageEntry>&)> fillLanguageChooser; // 3
    std::function<void()> selectFirstMainTab;                                   // 5
    std::function<void()> defineGrids;                                          // 6
    std::function<void()> setCaptions;                                          // 7
    std::function<void()> applySettings;                                        // 8
    std::function<void()> resetTabsAndRedraw;                                   // 9
    std::function<void()> fillTextInTagChooser;                                 // 10
    std::function<void()> showWindow;                                           // 11
    std::function<void()> removeFocusRects;                                     // 12
    std::function<void()> selectFirstDrive;                                     // 13
};

// Runs the whole start-up. Returns Ok, or the failure of CheckFiles after its message
// was shown (the caller then ends the process with no window shown).
StartCheck StartProgram(Prompt& prompt, const StartupSteps& steps);

// The part of step 6 and 8 that is pure data: the preference lists that other parts
// read from Settings, and the defaults that are written back (row 27).
void DefineSettingsLists();
void ApplySettingsDefaults();

// ---- closing -------------------------------------------------------------------------
struct QuitSteps {
    std::function<void()> purgeLinkList; // step 8, when chbPref_PurgeLinklist is set
    std::function<void()> closeMedia;    // step 11
    std::function<void()> unloadForms;   // steps 12 and 13
};

// QuitProgram(alreadyAsked, force): asks the closing questions (unless already asked or
// forced), then writes qlt.ini and lnkpic.qlt, empties temp and unloads. Returns false
// when the user said No to a question: then nothing has changed. From the first write
// on, a failing step does not keep the others from running.
bool QuitProgram(int& alreadyAsked, int force, Prompt& prompt, const QuitSteps& steps = {});

// Deletes every file directly in the folder temp of the program folder; sub-folders and
// their contents stay. Returns the number of files that could not be removed.
int EmptyTempFolder();
QString LinkListFilePath(); // lnkpic.qlt in the program folder
// Loads lnkpic.qlt into LbxPic_LinkToPic once: when the picture window first loads, or
// at the close. A file that can't be read goes aside (the prompt tells where) and is
// never written over.
void EnsureLinkListLoaded(Prompt& prompt);
// Writes LbxPic_LinkToPic to lnkpic.qlt (never over a file that could not be loaded).
bool SaveLinkList();
