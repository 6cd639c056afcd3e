#pragma once
// FrmInput: the main window. Its tab strip TabInput holds the seven main areas in the
// order of the keys F1 to F7: the data list (its own page), FrmTag, FrmTexte,
// FrmPlaylist, FrmPictures, FrmSText and FrmPreferences. It runs the start-up and the
// closing of the program.

#include "core/Startup.h"

#include <QWidget>

class FilesPanel;
class FindFilterPanel;
class FrmCap;
class FrmPictures;
class FrmPlaylist;
class FrmPreferences;
class FrmSText;
class FrmSongtext;
class FrmTag;
class FrmTexte;
class InputDataPage;
class ListProgressBar;
class ListsPanel;
class RefPanel;
class MarksPanel;
class PlayerPanel;
class Prompt;
class QTabWidget;
class RenamePanel;
class ScanPanel;

class FrmInput : public QWidget {
    Q_OBJECT
public:
    explicit FrmInput(QWidget* parent = nullptr);
    ~FrmInput() override;

    static FrmInput* Instance(); // the one main window, or nullptr

    // Form_Load: the start-up in its fixed order. Returns Ok, or the failed file check
    // (its message has been shown; no window is shown then).
    StartCheck FormLoad(Prompt& prompt);

    // Puts the settings into the controls of all areas (start-up step 8).
    void ApplySettings();
    // btn2Tab1_ClosePrg: closes the program after the closing questions.
    void ClosePrg();
    // Form_QueryUnload: unloadMode 0 = closed by the user at the window's corner (asks,
    // then closes the program), anything else = by code or system. True: close.
    bool FormQueryUnload(int unloadMode);
    // btnPref_Lng: the language has been set; re-labels every window and grid.
    void LanguageChanged();

    QTabWidget* TabInput;
    InputDataPage* pageData;
    ScanPanel* scanPanel;             // folder pane, scan controls and progress of the data area
    ListProgressBar* listProgress;    // prgBar and btnTab1_Abort over the data list
    FindFilterPanel* findFilterPanel; // TabInput1_Sub1: find and filter
    MarksPanel* marksPanel;           // TabInput1_Sub2: marks
    ListsPanel* listsPanel;           // TabInput1_Sub2: lists
    RefPanel* refPanel;               // TabInput1_Sub1: compare, and LbxRef beside the list
    FilesPanel* filesPanel;           // TabInput1_Sub2: copy, move, replace, delete
    RenamePanel* renamePanel;         // TabInput1_Sub2: rename commands and undo
    PlayerPanel* playerPanel;         // TabInput1_Sub2: the player
    FrmTag* frmTag;
    FrmTexte* frmTexte;
    FrmPlaylist* frmPlaylist;
    FrmPictures* frmPictures;
    FrmSText* frmSText;
    FrmSongtext* frmSongtext = nullptr; // the scrolling text window
    FrmPreferences* frmPreferences;

    FrmCap* Cap(); // the translators' window, created at first use

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    StartupSteps Steps();
    QuitSteps QuitStepsOfWindows();
    void SetGridHeaders();

    FrmCap* m_cap = nullptr;
    bool m_unloading = false; // set while the program closes itself
};
