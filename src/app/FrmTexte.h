#pragma once
// FrmTexte: the area of song texts and lyrics, a page of the main window's tab strip TabInput.
// On the left the text files found on disk (LbxTxt) and the songs with their lyric
// entries (LbxLyrics), each with its commands; on the right the two text boxes, side by
// side for a text and its translation, with the commands that save, link and hand a text
// on. The window reads its controls into a TexteEnv and leaves the work to src/text.

#include "app/AreaPage.h"

#include <functional>
#include <initializer_list>

class DataGrid;
class DataGridView;
class Prompt;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
struct TexteEnv;
struct TextPair;

class FrmTexte : public AreaPage {
    Q_OBJECT
public:
    // `prompt` null means the program's prompt.
    explicit FrmTexte(QWidget* parent = nullptr, Prompt* prompt = nullptr);
    ~FrmTexte() override;

    DataGrid& LbxTxt() const { return *m_txt; }
    DataGrid& LbxLyrics() const { return *m_lyrics; }

    // Puts the settings rows into the boxes (at start).
    void ApplySettings();
    // Column headers after a change of language.
    void SetGridHeaders();

    // Dialogues; tests replace them. Start folder in, chosen path out; empty = cancelled.
    std::function<QString(const QString&)> chooseFolder;
    std::function<QString(const QString&)> chooseSongFile;
    std::function<QString(const QString&)> chooseTextSave;
    std::function<QString(const QString&)> chooseAnyFile;
    std::function<QString(const QString&)> chooseTargetDir;
    // The song to the player of the main window; the main window sets it.
    std::function<void(const QString& path)> playSong;
    // btnTexte_TxtToSync: the synchronising editor reads the text file at `path`
    // ("synctemp.txt" in the folder temp) and comes forward; the main window sets it.
    std::function<void(const QString& path)> openSyncEditor;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildUi();
    QWidget* buildLists();
    QGroupBox* listGroup(QWidget* parent, const char* name, DataGridView* view,
                         std::initializer_list<const char*> buttons,
                         std::initializer_list<const char*> checks, const char* clear);
    QWidget* buildBoxes();
    void connectCommands();
    void applyCaptions();
    Prompt& prompt() const;
    TexteEnv makeEnv();
    TextPair readBoxes() const;
    void writeBoxes(const TextPair& boxes);
    void showBoxes();
    void setActiveBox(int box);
    void refillLinks();
    void setDirectEditLyrics(bool on);
    void setDirectEditTxt(bool on);
    void sortLyrics(int col);
    void saveBox(int row, int col, bool on);
    QPushButton* button(const char* name);
    QCheckBox* check(const char* name);
    bool checked(const char* name) const;

    // commands
    void cmdFindTxt();
    void cmdFindLyrics();
    void cmdOpenTxt(bool byClick);
    void cmdOpenLyric(bool byClick);
    void cmdClearBox(int box);
    void cmdLinksOk();
    void cmdPlaySong();

    Prompt* m_prompt;
    DataGrid* m_txt;
    DataGrid* m_lyrics;
    DataGridView* m_txtView = nullptr;
    DataGridView* m_lyricsView = nullptr;
    QPlainTextEdit* m_box[2] = {nullptr, nullptr}; // txtTexte_Txt1, txtTexte_Txt2
    QLabel* m_marker[2] = {nullptr, nullptr};      // lblTexte_Color1, lblTexte_Color2
    QLabel* m_splitter = nullptr;                  // lblTexte_Splitter
    QWidget* m_box2Pane = nullptr;                 // box 2 with its marker
    QComboBox* m_links = nullptr;                  // cmbTexte_Links
    QLabel* m_linksSum = nullptr;                  // lblTexte_LinksSum
    QRadioButton* m_optInsert = nullptr;           // optTexte_LinkInTextbox
    QRadioButton* m_optCopy = nullptr;             // optTexte_CopyLinks
    QRadioButton* m_optMove = nullptr;             // optTexte_MoveLinks
    QPushButton* m_cancelFind = nullptr;           // btnTexte_CancelFindLyrics
    int m_active = 1;                              // the box with the active flag
    bool m_cancel = false;                         // set by btnTexte_CancelFindLyrics
    bool m_searching = false;
    int m_sortCol = 0, m_sortOrder = 1; // last header click of LbxLyrics
};
