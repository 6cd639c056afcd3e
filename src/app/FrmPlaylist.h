#pragma once
// FrmPlaylist: the area of the playlist editor, a page of the main window's tab strip
// TabInput. On the left the playlist files found on disk (lbxM3UPLS) with the commands
// that find, open, play and delete them, and a second song list (lbxPlaylist2) for a look
// at a playlist without touching the working list; on the right the working list
// LbxPlaylist with the commands on its entries. The window reads its controls into a
// PlaylistEnv and leaves the work to src/playlist.

#include "app/AreaPage.h"

#include <functional>

class DataGrid;
class DataGridView;
class Prompt;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
struct PlaylistEnv;

class FrmPlaylist : public AreaPage {
    Q_OBJECT
public:
    // `prompt` null means the program's prompt.
    explicit FrmPlaylist(QWidget* parent = nullptr, Prompt* prompt = nullptr);
    ~FrmPlaylist() override;

    DataGrid& lbxPlaylist() const { return *m_playlist; }
    DataGrid& lbxPlaylist2() const { return *m_playlist2; }
    DataGrid& lbxM3UPLS() const { return *m_files; }
    DataGrid& lbxDummyPlaylist() const { return *m_dummy; }
    QString playlistTitle() const { return m_title; }

    // Puts the settings rows into the boxes (at start).
    void ApplySettings();
    // Column headers after a change of language.
    void SetGridHeaders();

    // The roads in: rows of the data list (optTab1_CopyToPlaylist) and of the tag list
    // (btnTab2_CopyToPlaylist). Return the rows taken, -1 when the command ended early.
    int TakeOverFromDataList(const DataGrid& input, const QString& inputMark, bool tab1NoMsg);
    int TakeOverFromTagList(const DataGrid& tagList, const DataGrid& input, const QString& tagMark,
                            bool tab1NoMsg);

    // The keys' mark: `mark` into FTag of the highlighted rows, then the sums.
    void WriteMarkToHighlighted(const QString& mark);

    // Dialogues; tests replace them. Empty result = cancelled.
    std::function<QString(const QString& startFolder)> chooseSavePath;
    std::function<QString(const QString& startFolder)> chooseFolder;
    std::function<QString(const QString& startFolder, const QString& defaultName)> chooseSongFile;
    std::function<QString(const QString& startFolder)> chooseExportFile;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildUi();
    void connectCommands();
    void applyCaptions();
    Prompt& prompt() const;
    PlaylistEnv makeEnv();
    void takeBack(const PlaylistEnv& env);
    void refreshSums();
    void showTitle();
    void saveBox(int row, int col, bool on);
    void showSignMenu(QMenu* menu);
    void startRename(int row);
    QPushButton* button(const char* name);
    QCheckBox* check(const char* name);

    // commands
    void cmdExport();

    Prompt* m_prompt;
    DataGrid* m_playlist;
    DataGrid* m_playlist2;
    DataGrid* m_files;
    DataGrid* m_dummy;
    QString m_title;
    QString m_title2;

    DataGridView* m_filesView = nullptr;
    DataGridView* m_playlistView = nullptr;
    DataGridView* m_playlist2View = nullptr;
    QLabel* m_titleLabel = nullptr;    // lblPlaylist_Title
    QLabel* m_title2Label = nullptr;   // lblPlaylist_Title2
    QLabel* m_timeSize = nullptr;      // lblPlaylist_TimeSize
    QLineEdit* m_fTag = nullptr;       // txtPlaylist_FTag
    QLineEdit* m_cellEditor = nullptr; // the in-cell rename of lbxM3UPLS
    int m_editRow = 0;
    QMenu* m_menu = nullptr;     // context menu of LbxPlaylist
    QMenu* m_signMenu = nullptr; // mnuPlaylist_SignID
    QRadioButton* m_optBoth = nullptr;
    QRadioButton* m_optM3u = nullptr;
    QRadioButton* m_optPls = nullptr;
    QRadioButton* m_optRelative = nullptr;
    QRadioButton* m_optAbsolute = nullptr;
};
