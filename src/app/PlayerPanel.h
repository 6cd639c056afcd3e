#pragma once
// The tab "Player" of the data area (TabInput1_Sub2, place 4): the built-in player of the
// data list with its button bar MMC, the time line, the lamps, the position and volume
// sliders, the skip buttons and the pieces of a song (start, middle, end).

#include <QWidget>

class InputDataPage;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class QToolButton;
class modPlayer;

class PlayerPanel : public QWidget {
    Q_OBJECT
public:
    PlayerPanel(InputDataPage* page, QWidget* parent = nullptr);
    static PlayerPanel* Install(InputDataPage* page);

    void ApplySettings();
    modPlayer& Player() { return *m_player; }

    QWidget* MMC;
    QToolButton* MMC_Prev;
    QToolButton* MMC_Next;
    QToolButton* MMC_Play;
    QToolButton* MMC_Pause;
    QToolButton* MMC_Stop;
    QLabel* lblTab1_ActSong;
    QLabel* lblTab1_WinampTime;
    QLabel* lblTab1_ColorPlay;
    QLabel* lblTab1_ColorPause;
    QSlider* sliderTab1_sldLength;
    QSlider* sliderTab1_WinampVolume;
    QToolButton* imgTab1_WinampVolume;
    QPushButton* btnTab1_SkipMinus;
    QPushButton* btnTab1_SkipPlus;
    QLabel* lblTab1_Skip;
    QLineEdit* txtTab1_SkipSec;
    QCheckBox* chbTab1_PlayWithChange;
    QCheckBox* chbTab1_AutoPlay;
    QCheckBox* chbTab1_WinampAutoSign;
    QLineEdit* txtTab1_FTag4;
    QCheckBox* chbTab1_UseSequenztime;
    QLabel* lblTab1_Times;
    QLineEdit* txtTab1_Sequenztime[3];
    QPushButton* btnTab1_GoFwd;
    QLabel* lblTab1_Seq[3];
    QPushButton* btnTab1_Random;

private:
    void SetLamp(QLabel* lamp, bool on, const QColor& colour);
    void SetVolumeImage(bool on);
    void ToggleVolume();
    void AutoPlayToggled(bool on);
    void UseSequenceToggled(bool on);
    void FocusList();

    InputDataPage* m_page;
    modPlayer* m_player;
    class QHBoxLayout* m_signSlot;
    bool m_gridHadFocus = false;
    bool m_missingTold = false;
};
