#pragma once
// FrmSongtext: the small frameless window that runs a song's timed text with the music.
// LbxScrollText holds the stamped lines (modScrollText); ScrollTextView draws them as the
// skin colours them around the current row. The song plays on the program's one media
// device; every 50 ms TimerSongtext_SyncTimer steps the current row when the song reached
// the next stamp. At the end of a song the window goes on to the next marked song, closes,
// or turns into a plain list of the text ("StaticText").

#include "text/modScrollText.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

class DataGrid;
class FrmSText;
class Prompt;
class QLabel;
class QMenu;
class QShortcut;
class QTabWidget;
class QToolButton;
class ScrollTextView;
class TagEngine;

class FrmSongtext : public QWidget {
    Q_OBJECT
public:
    // `prompt` null means the program's prompt.
    explicit FrmSongtext(QWidget* parent = nullptr, Prompt* prompt = nullptr);
    ~FrmSongtext() override;
    // Makes the window of the main window `main`: the editor starts it on Play, the next
    // marked song comes from the editor's song list when its page is in front, else from
    // the data list.
    static FrmSongtext* Install(QWidget* main, FrmSText* editor, QTabWidget* pages);

    // From the editor: the stamped lines of `stext` and the song; false (with a message)
    // when the text has no stamp.
    bool StartFromEditor(const QString& song, const DataGrid& stext, FrmSText* editor);
    // From a song with its LRC in the tag (through "LrcTmp.lrc" in the temp folder); false
    // when no stamped line was found (AbortFlag).
    bool StartFromSong(const QString& song);
    // Plays the songs one after the other, each with its LRC; songs whose text has no stamp
    // are passed over. False when none of them could start.
    bool PlaySongs(const QStringList& songs);
    // The skin file of settings row 71 (a bare name lies in the folder "skin"); empty: none.
    static QString SkinPath();
    // Loads the skin of settings row 71 and applies it.
    void LoadSkin();
    void ApplySkin(const ScrollSkin& skin);

    // The next marked song ("p" in column 1) of the list in front, its mark emptied; empty
    // when none. Set by the main window; without it there is no next song.
    std::function<QString(bool take)> nextMarkedSong;
    // Brings the editor forward and gives it (Edit); null when there is none.
    std::function<FrmSText*()> showEditor;
    // Dialogue for NewDesign; tests replace it. Empty = cancelled.
    std::function<QString(const QString& folder)> chooseSkin;

    // ---- state (read by tests) -----------------------------------------------------------
    qint32 SongTotal = 0;
    bool AbortFlag = false;
    bool Paused = false;
    bool FromEditor = false;
    QString Tag; // "StaticText" once the window is a plain list
    DataGrid& List() const { return *m_grid; }
    int CurRow() const;
    ScrollTextView* View() const { return LbxScrollText; }

    // ---- controls ------------------------------------------------------------------------
    ScrollTextView* LbxScrollText = nullptr;
    QLabel* lblSongtext_Pause = nullptr;
    QLabel* lblSongtext_Title = nullptr;
    QToolButton* btnSongtext_Close = nullptr;
    QMenu* mnuSongtext = nullptr;
    QTimer TimerSongtext_SyncTimer;

    // Sets the menu's captions and check marks from the settings (before it shows).
    void Popup_ManageSongtext();
    // Pause, or go on after a pause (the pause field, the menu, Ctrl+U).
    void TogglePause() { pause(); }
    // One tick of the timer (public for the benchmark's fake clock).
    void SyncTick();

signals:
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private:
    void buildMenu();
    void sizeToText();
    bool start();
    void setTitle();
    void setPauseColor(qint32 bgr);
    void pause();
    void nextSong();
    void editLrc();
    void newDesign();
    void endOfSong();
    void makeStatic();
    void rowClicked(int row);
    void step(int row);
    void applyOnTop();
    void stopPlaying();
    Prompt& prompt() const;

    Prompt* m_prompt;
    DataGrid* m_grid;
    ScrollSkin m_skin;
    QPointer<FrmSText> m_editor;      // the editor the window was started from
    QPointer<FrmSText> m_home;        // the program's editor (its player keys)
    QPointer<QShortcut> m_mainEscape; // Escape of the main window, on while shown
    QString m_song;
    QStringList m_queue;    // songs still to come of PlaySongs
    bool m_started = false; // the position left 0 once (a device may report 0 at first)
};
