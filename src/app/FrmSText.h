#pragma once
// FrmSText: the area of the synchronising editor of time-stamped text, a page of the main
// window's tab strip TabInput. LbxSText holds the text, one row per line with its time;
// the song plays on the program's one media device (shared with the player of the data
// list through MediaOwner). A click on a row stamps it in time with the song, or a
// stamped text runs along with it. Beside the list: the songs that carry LRC
// (LbxSongWithLrc) and the text and LRC files found on disk (LbxTxtLrc). The rules of
// the rows live in src/text (modSText, modSTextSync, modSTextFind).

#include "app/AreaPage.h"

#include <QTimer>

#include <functional>

class DataGrid;
class DataGridView;
class Prompt;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QSlider;
class QTabWidget;
class QToolButton;
class STextShortcuts;
class TagEngine;
struct STextFindOptions;

class FrmSText : public AreaPage {
    Q_OBJECT
public:
    // `prompt` null means the program's prompt.
    explicit FrmSText(QWidget* parent = nullptr, Prompt* prompt = nullptr);
    ~FrmSText() override;

    // The road in from the texts area: reads "synctemp.txt" of the program's temp folder
    // as a text list, shows caption row 1100 as its name and deletes the file. The caller
    // brings the page forward. False when the file could not be read.
    bool OpenSyncTemp();
    // Reads a .txt or .lrc file into the list (btnSText_OpenTxtLrC without the dialog).
    bool LoadTextFile(const QString& path);
    // Reads the LRC text of a song into the list and gives the song to the player; false
    // (with its message) when the song is no MP3 or holds no LRC.
    bool LoadSongText(const QString& song);
    // Takes the LRC text out of a song after the question; true when it was taken.
    bool RemoveSongText(const QString& song);
    // Puts the settings rows into the boxes (at start) and the boxes back (at close).
    void ApplySettings();
    void StoreSettings();
    void SetGridHeaders();

    // The scrolling window of the time-stamped text (comes later): when set, Play with
    // chbSText_PlayWithScrollList hands the song and the list to it.
    std::function<void(const QString& song, DataGrid& list)> startScrollWindow;

    // Dialogues; tests replace them. Empty result = cancelled.
    std::function<QString(const QString& startFolder, const QString& filters, const QString& title)>
        chooseOpenFile;
    // Returns the path and sets *lrc when the LRC filter was chosen (start: `lrc` given).
    std::function<QString(const QString& startFolder, const QString& name, bool* lrc)> chooseSaveFile;
    std::function<QString(const QString& startFolder, const QString& title)> chooseFolder;

    // ---- state (read by tests) -----------------------------------------------------------
    qint32 NextStamp = 0;
    qint32 SongLength = 0;
    int RowOffset = 0;
    bool RowsChanged = false;
    QString FileName; // MMCSText.FileName
    QString MMCTag;   // "playing", "pause" or empty
    bool AbortFlag = false;

    // ---- controls ------------------------------------------------------------------------
    DataGridView* LbxSText = nullptr;
    DataGridView* LbxSongWithLrc = nullptr;
    DataGridView* LbxTxtLrc = nullptr;
    QWidget* MMCSText = nullptr;
    QToolButton* MMCSText_Play = nullptr;
    QToolButton* MMCSText_Pause = nullptr;
    QToolButton* MMCSText_Stop = nullptr;
    QToolButton* MMCSText_Eject = nullptr;
    QLabel* lblSText_Time = nullptr;
    QLabel* lblSText_ColorPause = nullptr;
    QLabel* lblSText_ActSong = nullptr;
    QLabel* lblSText_ActText = nullptr;
    QLabel* lblSText_Volume = nullptr;
    QSlider* sliderSText_sldLength = nullptr;
    QSlider* sliderSText_Volume = nullptr;
    QCheckBox* chbSText_SyncMode = nullptr;
    QCheckBox* chbSText_PlaySynchonized = nullptr;
    QCheckBox* chbSText_PlayWithScrollList = nullptr;
    QCheckBox* chbSText_SetTimeStamp = nullptr;
    QCheckBox* chbSText_ShiftFromActRow = nullptr;
    QCheckBox* chbSText_Translation = nullptr;
    QLineEdit* txtSText_TimeShiftP = nullptr;
    QLineEdit* txtSText_TimeShiftM = nullptr;
    QPushButton* btnSText_Shiftp[4] = {};
    QPushButton* btnSText_Shiftm[4] = {};
    QTabWidget* TabSText_Sub = nullptr;
    QCheckBox* chbSText_SubfolderSong = nullptr;
    QCheckBox* chbSText_SubfolderTxtLrc = nullptr;
    QCheckBox* chbSText_AddSongLrc = nullptr;
    QCheckBox* chbSText_AddTxTLrc = nullptr;
    QCheckBox* chbSText_PlayLrc2 = nullptr;
    QRadioButton* optSText_Txt = nullptr;
    QRadioButton* optSText_Lrc = nullptr;
    QRadioButton* optSText_TxtLrc = nullptr;
    QRadioButton* optSText_PlayInListbox = nullptr;
    QRadioButton* optSText_PlayInWindow = nullptr;
    QGroupBox* fraSText_PlayOptions = nullptr;
    QTimer TimerSText;
    QTimer TimerSText_SyncTimer;
    STextShortcuts* shortcuts = nullptr; // the keys of the editor and its lists

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    // Keys of the whole area that no control took: plus and minus of the number pad
    // change the volume by 5.
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend class STextShortcuts;
    // FrmSText.cpp: the controls and the commands on the text
    void buildUi();
    QWidget* buildPlayerBar();
    QWidget* buildEditBox();
    QWidget* buildSearchTabs();
    void connectCommands();
    Prompt& prompt() const;
    DataGrid& list() const;
    int visibleRows() const;
    int topRow() const;
    void setTopRow(int row);
    void afterLoad(bool anyTimed, const QString& song, bool songMissing);
    void cmdOpen();
    void cmdLoadSelected(bool textOnly);
    int cmdSaveTxt();
    int cmdSaveInSong();
    void cmdSaveBoth();
    void cmdRemoveLrc();
    void cmdLinkToSong();
    void cmdEraseAll();
    void cmdClear();
    void cmdShift(qint32 delta);
    void cmdTranslation();
    void cmdCopyMove(bool move);
    void cmdDelete(bool fromMenu);
    void cmdRename(bool songs);
    void stretchList();
    QString selectedFilePath(bool* ok);
    void setInterval(QTimer& timer, int ms);

    // FrmSTextMenus.cpp: the right-click menus of the three lists
    void showRowMenu(const QPoint& global);
    void showTxtLrcMenu(bool songs, const QPoint& global);
    void runRowMenuKey(const QString& key);
    void runTxtLrcMenuKey(bool songs, const QString& key);

    // FrmSTextPlay.cpp: the song, the timers, the clicks on rows and the searches
    void play();
    bool arm();
    void syncTick();
    void pause();
    void stop();
    void eject();
    void setTimeStampToggled(bool on);
    void sliderPressed();
    void sliderReleased();
    void rowMouseDown(int row, int col, Qt::MouseButton button, Qt::KeyboardModifiers mods);
    void rowChanged();
    void updateState();
    void timeTick();
    void nextMarkedSong();
    void giveSongToPlayer(const QString& song);
    void deviceTaken();
    bool openSong(const QString& path);
    void runSearch(DataGrid& g, int nameCol, bool subfolders, bool add,
                   const std::function<void(const QString&, const STextFindOptions&)>& search);
    void findSongsWithLrc();
    void findTxtLrc();
    void volumeChanged(int value);

    Prompt* m_prompt;
    TagEngine* m_engine;
    bool m_quiet = false;     // a row change made by code does not react
    bool m_quietSave = false; // a both-save shows one message
    bool m_stopping = false;  // Stop is running
    bool m_dragging = false;  // the position slider is held
    bool m_stretched = false;
    QWidget* m_side = nullptr; // the frames beside the list (hidden when stretched)
    QWidget* m_editBox = nullptr;
};
