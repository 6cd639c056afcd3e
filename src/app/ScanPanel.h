#pragma once
// The scan controls of the data area: the folder pane beside the list, the sub-tab with
// the read command and its options, the saved-list chooser, and the progress bar with
// its cancel button over the list. The commands read the controls into options and call
// the scan logic (list/modScan) and the saved lists (list/modSavedLists).

#include "list/modScan.h"

#include <QStringList>
#include <QWidget>
#include <functional>

class DataGrid;
class FolderPanel;
class InputDataPage;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSplitter;

class ListProgressBar;

class ScanPanel : public QWidget {
    Q_OBJECT
public:
    // Builds the panel into the data area: the folder pane left of LbxInput, the controls
    // as the first tab of TabInput1_Sub1, the bar over the list.
    static ScanPanel* Install(InputDataPage* page, ListProgressBar* progress);
    ScanPanel(InputDataPage* page, ListProgressBar* progress, QWidget* parent = nullptr);

    FolderPanel* folders;
    QSplitter* splitter;
    QPushButton* btnTab1_GetFiles;
    QPushButton* btnTab1_UpdateData;
    QPushButton* btnTab1_RefreshData; // reads again only the files that changed
    QPushButton* btnTab1_Abort;
    QCheckBox* chbTab1_SubFolders;
    QCheckBox* chbTab1_Attach;
    QCheckBox* chbTab1_CheckCharacters;
    QCheckBox* chbTab1_UseChecklist;
    QCheckBox* chbTab1_Act;
    QLineEdit* txtTab1_Searchstring_ArtistTitle[2];
    QComboBox* btnTab1_HandleFileInput;
    QProgressBar* prgBar;

    // ---- commands ---------------------------------------------------------------------
    void btnTab1_GetFiles_Click();
    void btnTab1_Abort_Click();
    void btnTab1_UpdateData_Click();
    void btnTab1_RefreshData_Click();
    // Item of the saved-list chooser: 0 save, 1 load, 2 delete the data list; 3 to 5 are
    // the reference lists' (signal refListCommand).
    void btnTab1_HandleFileInput_Click(int item);

    // The bar over the list: the left and width of LbxInput, a fixed height, with
    // btnTab1_Abort beside it; btnTab1_CloseFolderview goes meanwhile.
    void ShowProgress(int max, bool keepButtons);
    void HideProgress();

    bool FolderPaneOpen() const;
    void OpenFolderPane();
    void CloseFolderPane();

    void ApplySettings();

    // The options of the scan as the controls stand.
    ScanOptions Options();
    // The check list LbxFindChr (from the settings rows when no other window keeps one).
    DataGrid& Checklist();

    // The picker of saved lists; tests replace it. action 0 save, 1 load, 2 delete.
    std::function<QString(int action)> chooseListFile;

    ScanResult lastResult;
    QStringList ratingValues; // the rebuilt value lists of Rating and Mood
    QStringList moodValues;

signals:
    void valueListsChanged(const QStringList& ratings, const QStringList& moods);
    void scanFinished();
    void refListCommand(int item);

protected:
private:
    ScanHooks WindowHooks();
    void SetListCommandsEnabled(bool on);
    void PublishValueLists(const ScanResult& r);
    QString PickListFile(int action);

    InputDataPage* m_page;
    ListProgressBar* m_progress; // the data list's one progress bar
    DataGrid* m_checklist = nullptr;
    int m_lastSplitterWidth = 260;
};
