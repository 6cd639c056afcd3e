#pragma once
// modPlayer: the built-in player of the data list. It plays the current row of LbxInput
// on the shared media device, keeps the time line, the lamps and the position slider up to
// date through PlayerView, plays songs in pieces (start, middle, end) and moves on to the
// next row. Everything runs on the one thread; TimerSequenz (1000 ms) drives it.

#include <QObject>
#include <QString>
#include <QTimer>

#include <array>
#include <functional>

class DataGrid;
class MediaDevice;
class Prompt;

// FormatPlayerTime(ms): "mm:ss", minutes and seconds each with two digits.
QString FormatPlayerTime(qint32 ms);
// The rest display of the time line.
QString PlayerTimeLineIdle();
// The time line while playing: total, position and remaining time.
QString PlayerTimeLine(qint32 totalMs, qint32 positionMs);

// The four positions of the pieces, in ms, from the three boxes (seconds) and the length.
struct SequencePositions {
    qint32 start = 0, middleFrom = 0, middleTo = 0, end = 0;
};
SequencePositions ComputeSequence(const std::array<int, 3>& boxes, qint32 lengthMs);

// The state of the window's controls that the player reads.
struct PlayerOptions {
    bool autoPlay = false;     // chbTab1_AutoPlay
    bool useSequence = false;  // chbTab1_UseSequenztime
    bool autoSign = false;     // chbTab1_WinampAutoSign
    QString autoSignText;      // txtTab1_FTag4
    std::array<int, 3> seq{};  // txtTab1_Sequenztime(0..2)
    QString skipSec;           // txtTab1_SkipSec
    bool volumeOn = true;      // imgTab1_WinampVolume is "ON"
    bool gridHadFocus = false; // the user had the focus on LbxInput
};

// What the player shows; every member may be left empty.
struct PlayerView {
    std::function<void(const QString&)> timeLine;       // lblTab1_WinampTime
    std::function<void(int max, int tick)> sliderRange; // sliderTab1_sldLength
    std::function<void(int)> sliderValue;               // in seconds
    std::function<int()> sliderPosition;                // the slider's value now
    std::function<void(bool play, bool pause)> lamps;   // lblTab1_ColorPlay, ..._ColorPause
    std::function<void(int piece)> pieceLamps;          // lblTab1_Seq: 0..2, -1 all off
    std::function<void(const QString&)> actSong;        // lblTab1_ActSong
    std::function<void()> focusGrid;                    // LbxInput takes the focus
    std::function<void(int)> volumeReadBack;            // sliderTab1_WinampVolume
};

class modPlayer : public QObject {
    Q_OBJECT
public:
    modPlayer(DataGrid& grid, Prompt& prompt, QObject* parent = nullptr);

    std::function<PlayerOptions()> options;
    PlayerView view;

    // ---- device operations -----------------------------------------------------------
    bool MediaOpen(const QString& path); // sets PlayerOpenFailed
    void MediaPlayFrom(qint32 ms);
    void MediaClose();
    void MediaPause();
    void MediaResume();
    qint32 MediaPosition() const;
    static qint32 MediaLength(const QString& path); // from the tag engine, whole seconds
    // The tag engine's type of the file ("MP3", "FLAC", ...), "Nothing" for a file it does
    // not take for audio (missing, broken, another kind). Every audio type plays.
    static QString MediaType(const QString& path);

    // ---- MMC and the other controls -----------------------------------------------------
    void Prev();
    void Next();
    void Play();
    void Pause(); // toggles
    void Stop();
    void SliderPressed();
    void SliderReleased(int seconds);
    void SkipMinus();
    void SkipPlus();
    void GoFwd();
    void Tick(); // one tick of TimerSequenz
    // A mark button while playing: the text goes to the current row (or the row above),
    // and with AutoPlay the next song starts. False when nothing was set.
    bool Sign(const QString& text, bool previousRow);
    // After a mark button has marked the current row during a run: on to the next song,
    // without the auto-mark.
    void NextAfterMark();

    bool IsOpen() const;
    bool IsPaused() const { return MMCTag == u"pause"; }

    QTimer TimerSequenz;
    qint32 MediaLengthMs = 0;
    QString MediaLengthText;
    qint32 SequenceStart = 0, SequenceMiddleFrom = 0, SequenceMiddleTo = 0, SequenceEnd = 0;
    bool PlayerOpenFailed = false;
    bool PlayerAutoSkip = false;
    bool PlayerBackwardJump = false;
    bool HalfStep = false;    // one-shot: the next skip goes half the step
    QString MMCTag;           // "pause" while paused
    bool ChangingRow = false; // set while the player itself moves the current row

signals:
    void stopped(); // the device was closed and the display reset

private:
    PlayerOptions Opt() const;
    void AutoMark();
    void MoveTo(int row);
    void ResetDisplay();
    void Jump(qint32 ms);
    void ShowPiece(int piece);
    int SkipStepMs();

    DataGrid& m_grid;
    Prompt& m_prompt;
    bool m_opening = false; // MediaOpen is waiting for the device
};
