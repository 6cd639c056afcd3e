#include "player/modPlayer.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modList.h"
#include "player/MediaDevice.h"
#include "player/MediaOwner.h"
#include "tag/TagEngine.h"

#include <QFileInfo>

#include <cmath>

namespace {
constexpr int kTickMs = 1000;
constexpr qint32 kEndLeadMs = 500; // the end is recognised this much before the true end
constexpr int kDefaultSkipSec = 10;

// The player's own engine: opening a song to play it must not drop the staged changes of
// the shared engine that the tag windows work with.
TagEngine& PlayerEngine() {
    static TagEngine engine;
    return engine;
}

QString Pad(qint64 n, int width) {
    return QStringLiteral("%1").arg(n, width, 10, QLatin1Char('0'));
}
} // namespace

QString FormatPlayerTime(qint32 ms) {
    const qint64 secs = std::max<qint64>(0, ms) / 1000;
    return Pad(secs / 60, 2) + QLatin1Char(':') + Pad(secs % 60, 2);
}

QString PlayerTimeLineIdle() {
    return QStringLiteral("00:00 / 00:00 / 00:00");
}

QString PlayerTimeLine(qint32 totalMs, qint32 positionMs) {
    const qint32 remaining = totalMs - positionMs;
    return FormatPlayerTime(totalMs) + QStringLiteral(" - ") + Pad(std::max(0, totalMs) / 1000, 3) +
           QStringLiteral(" / ") + FormatPlayerTime(positionMs) + QStringLiteral(" - ") +
           Pad(std::max(0, positionMs) / 1000, 3) + QStringLiteral(" / ") + FormatPlayerTime(remaining);
}

SequencePositions ComputeSequence(const std::array<int, 3>& boxes, qint32 lengthMs) {
    SequencePositions p;
    if (boxes[0] > 0)
        p.start = boxes[0] * 1000;
    if (boxes[1] > 0) {
        const qint32 l = boxes[1] * 1000;
        p.middleFrom = std::max(0, lengthMs / 2 - l / 2);
        p.middleTo = std::min(lengthMs, lengthMs / 2 + l / 2);
    }
    if (boxes[2] != 0)
        p.end = std::max(0, lengthMs - boxes[2] * 1000);
    return p;
}

modPlayer::modPlayer(DataGrid& grid, Prompt& prompt, QObject* parent)
    : QObject(parent), m_grid(grid), m_prompt(prompt) {
    TimerSequenz.setObjectName(QStringLiteral("TimerSequenz"));
    TimerSequenz.setInterval(kTickMs);
    connect(&TimerSequenz, &QTimer::timeout, this, &modPlayer::Tick);
    // The editor took the device: the song on it is not ours any more.
    connect(&MediaOwner::Instance(), &MediaOwner::taken, this, [this](QObject* owner) {
        if (owner == this)
            return;
        TimerSequenz.stop();
        ResetDisplay();
        ShowPiece(-1);
        emit stopped();
    });
}

PlayerOptions modPlayer::Opt() const {
    return options ? options() : PlayerOptions{};
}

// ---- device operations -------------------------------------------------------------------

QString modPlayer::MediaType(const QString& path) {
    const int type = PlayerEngine().OpenFile(path);
    return type == 0 ? QStringLiteral("Nothing") : FileTypeName(type);
}

bool modPlayer::MediaOpen(const QString& path) {
    // A file the tag engine takes for no audio file (or cannot read) is not handed to
    // the device at all.
    if (MediaType(path) == u"Nothing") {
        PlayerOpenFailed = true;
        return false;
    }
    // The event queue runs while the device opens: ticks and buttons wait for the result.
    m_opening = true;
    MediaOwner::Instance().Claim(this);
    PlayerOpenFailed = !Media().Open(path);
    m_opening = false;
    return !PlayerOpenFailed;
}

void modPlayer::MediaPlayFrom(qint32 ms) {
    if (MediaOwner::Instance().FreeFor(this))
        Media().PlayFrom(ms);
}

void modPlayer::MediaClose() {
    PlayerBackwardJump = false;
    if (MediaOwner::Instance().FreeFor(this))
        Media().Close();
}

void modPlayer::MediaPause() {
    if (MediaOwner::Instance().FreeFor(this))
        Media().Pause();
}

void modPlayer::MediaResume() {
    if (MediaOwner::Instance().FreeFor(this))
        Media().Resume();
}

qint32 modPlayer::MediaPosition() const {
    return Media().Position();
}

qint32 modPlayer::MediaLength(const QString& path) {
    TagEngine& engine = PlayerEngine();
    if (engine.OpenFile(path) == 0)
        return 0;
    return qint32(std::lround(engine.DurationSeconds())) * 1000;
}

bool modPlayer::IsOpen() const {
    return MediaOwner::Instance().FreeFor(this) && Media().IsOpen();
}

// ---- display -----------------------------------------------------------------------------

void modPlayer::ResetDisplay() {
    MMCTag.clear();
    if (view.timeLine)
        view.timeLine(PlayerTimeLineIdle());
    if (view.sliderValue)
        view.sliderValue(0);
    if (view.lamps)
        view.lamps(false, false);
    if (view.actSong)
        view.actSong(QString());
}

void modPlayer::ShowPiece(int piece) {
    if (view.pieceLamps)
        view.pieceLamps(piece);
}

void modPlayer::Jump(qint32 ms) {
    if (view.sliderValue)
        view.sliderValue(ms / 1000);
    MediaPlayFrom(ms);
}

void modPlayer::MoveTo(int row) {
    ChangingRow = true;
    m_grid.SetCurRow(row);
    ChangingRow = false;
}

// ---- buttons -----------------------------------------------------------------------------

void modPlayer::AutoMark() {
    const PlayerOptions o = Opt();
    const int row = m_grid.CurRow();
    if (o.autoSign && !PlayerAutoSkip && !o.autoSignText.isEmpty() && row >= 1)
        m_grid.SetCellText(row, InCol::FTag, o.autoSignText);
}

void modPlayer::Prev() {
    if (m_opening || !ListNotEmpty(m_grid, m_prompt))
        return;
    AutoMark();
    const int row = m_grid.CurRow();
    if (row >= 2)
        MoveTo(row - 1);
    Play();
}

void modPlayer::Next() {
    if (m_opening || !ListNotEmpty(m_grid, m_prompt))
        return;
    AutoMark();
    const int row = m_grid.CurRow();
    if (row < m_grid.Rows()) {
        MoveTo(row + 1);
        Play();
        return;
    }
    // The last row: the run is over.
    TimerSequenz.stop();
    MediaClose();
    ResetDisplay();
    ShowPiece(-1);
    if (m_grid.IsLocked()) {
        m_grid.LockUpdate(false);
        m_grid.Refresh();
    }
    emit stopped();
}

void modPlayer::Play() {
    if (m_opening || !ListNotEmpty(m_grid, m_prompt))
        return;
    MediaClose();
    TimerSequenz.start(kTickMs);
    if (m_grid.CurRow() < 1)
        MoveTo(1);
    const int row = m_grid.CurRow();
    const QString name = m_grid.CellText(row, InCol::FileName);
    const QString path = m_grid.CellText(row, InCol::Path) + QLatin1Char('/') + name;
    const PlayerOptions o = Opt();

    if (!MediaOpen(path)) {
        PlayerAutoSkip = false;
        TimerSequenz.stop();
        if (!o.autoPlay) {
            ResetDisplay();
            m_prompt.Tell(Caption(CapCannotPlay) + QFileInfo(name).suffix() + QStringLiteral("\n\n") +
                              Caption(CapCheckFileAndType),
                          Prompt::Icon::Information);
        } else {
            // A run goes on over a file that can't be played; the row keeps the failure mark.
            m_grid.SetCellText(row, InCol::FTag, Mark::Failed);
            Next();
        }
        return;
    }

    MediaLengthMs = MediaLength(path);
    MediaLengthText = FormatPlayerTime(MediaLengthMs);
    qint32 from = 0;
    if (o.useSequence) {
        const SequencePositions p = ComputeSequence(o.seq, MediaLengthMs);
        SequenceStart = p.start;
        SequenceMiddleFrom = p.middleFrom;
        SequenceMiddleTo = p.middleTo;
        SequenceEnd = p.end;
        if (SequenceStart > 0)
            from = 0;
        else if (SequenceMiddleFrom > 0)
            from = SequenceMiddleFrom;
        else if (SequenceEnd > 0)
            from = SequenceEnd;
    } else {
        SequenceStart = SequenceMiddleFrom = SequenceMiddleTo = SequenceEnd = 0;
    }
    MediaPlayFrom(from);
    MMCTag.clear();

    const int secs = MediaLengthMs / 1000;
    if (view.sliderRange)
        view.sliderRange(std::max(1, secs), secs < 301 ? 10 : secs < 601 ? 15 : 30);
    if (view.sliderValue)
        view.sliderValue(from / 1000);
    if (view.lamps)
        view.lamps(true, false);
    if (view.actSong)
        view.actSong(name);
    if ((o.autoPlay || o.gridHadFocus) && view.focusGrid)
        view.focusGrid();
    if (o.autoPlay)
        m_grid.LockUpdate(true); // the timer shows the current row once a tick
}

void modPlayer::Pause() {
    if (!IsOpen())
        return;
    if (MMCTag.isEmpty()) {
        TimerSequenz.stop();
        MediaPause();
        MMCTag = QStringLiteral("pause");
        if (view.lamps)
            view.lamps(false, true);
    } else {
        MediaResume();
        MMCTag.clear();
        if (view.lamps)
            view.lamps(true, false);
        TimerSequenz.start(kTickMs);
    }
    if (view.focusGrid)
        view.focusGrid();
}

void modPlayer::Stop() {
    if (m_opening)
        return;
    TimerSequenz.stop();
    MediaClose();
    ResetDisplay();
    ShowPiece(-1);
    m_grid.LockUpdate(false);
    m_grid.Refresh();
    if (view.focusGrid)
        view.focusGrid();
    emit stopped();
}

void modPlayer::SliderPressed() {
    if (!IsOpen())
        return;
    TimerSequenz.stop();
    MediaPause();
}

void modPlayer::SliderReleased(int seconds) {
    if (!IsOpen())
        return;
    const qint32 ms = seconds * 1000;
    MediaPlayFrom(ms);
    if (ms <= SequenceEnd)
        PlayerBackwardJump = true;
    TimerSequenz.start(kTickMs);
    MediaResume();
    MMCTag.clear();
    if (view.lamps)
        view.lamps(true, false);
}

int modPlayer::SkipStepMs() {
    const int secs = Opt().skipSec.trimmed().toInt();
    int ms = (secs > 0 ? secs : kDefaultSkipSec) * 1000;
    if (HalfStep) {
        ms /= 2;
        HalfStep = false;
    }
    return ms;
}

void modPlayer::SkipMinus() {
    if (!IsOpen())
        return;
    const int step = SkipStepMs();
    const qint32 pos = MediaPosition();
    if (pos - step < 0) {
        Stop();
        return;
    }
    Jump(pos - step);
}

void modPlayer::SkipPlus() {
    if (!IsOpen())
        return;
    const int step = SkipStepMs();
    const qint32 pos = MediaPosition();
    if (pos + step > MediaLengthMs) {
        if (Opt().autoPlay)
            Next();
        else
            Stop();
        return;
    }
    Jump(pos + step);
}

void modPlayer::GoFwd() {
    const PlayerOptions o = Opt();
    const int slider = view.sliderPosition ? view.sliderPosition() : MediaPosition() / 1000;
    if (!o.useSequence || slider <= 0)
        return;
    PlayerAutoSkip = true;
    const qint32 pos = slider * 1000;
    if (pos < SequenceStart && SequenceStart > 0) {
        if (SequenceMiddleFrom > 0) {
            Jump(SequenceMiddleFrom);
            ShowPiece(1);
        } else if (SequenceEnd > 0) {
            Jump(SequenceEnd);
            ShowPiece(2);
        } else {
            Jump(MediaLengthMs);
        }
    } else if (pos < SequenceMiddleTo) {
        if (SequenceEnd > 0) {
            Jump(SequenceEnd);
            ShowPiece(2);
        } else {
            Jump(MediaLengthMs);
        }
    } else {
        Next();
    }
    PlayerAutoSkip = false;
}

void modPlayer::Tick() {
    if (m_opening)
        return;
    const PlayerOptions o = Opt();
    // 1. During a run the current row's highlight shows once a tick.
    if (o.autoPlay) {
        m_grid.LockUpdate(false);
        m_grid.Refresh();
        m_grid.LockUpdate(true);
    }
    // 2. Time line and slider.
    qint32 pos = MediaPosition();
    if (view.timeLine)
        view.timeLine(PlayerTimeLine(MediaLengthMs, pos));
    if (view.sliderValue)
        view.sliderValue(pos / 1000);
    // 3. The volume as the device has it.
    if (o.volumeOn && view.volumeReadBack)
        view.volumeReadBack(Media().Volume());
    // 4. and 5. The pieces.
    if (o.useSequence) {
        const qint64 s = qint64(SequenceStart) + SequenceMiddleFrom + SequenceEnd;
        if (s != 0 && pos >= SequenceStart) {
            if (SequenceMiddleFrom > 0 && pos < SequenceMiddleFrom) {
                Jump(SequenceMiddleFrom);
                ShowPiece(1);
            } else if (SequenceEnd > 0 && pos > SequenceMiddleTo && pos < SequenceEnd &&
                       !PlayerBackwardJump) {
                Jump(SequenceEnd);
                ShowPiece(2);
            } else if (SequenceEnd == 0 && pos > SequenceMiddleTo) {
                MediaPlayFrom(MediaLengthMs);
                ShowPiece(-1);
            }
        }
        if (pos < SequenceStart && s >= 1)
            ShowPiece(0);
    }
    // 6. The end test, half a second early. A song the device gave up on (a stream that
    // breaks off) ends as well.
    pos = MediaPosition();
    if (pos + kEndLeadMs >= MediaLengthMs || !IsOpen() || Media().AtEnd()) {
        if (o.autoPlay) {
            if (view.sliderValue)
                view.sliderValue(0);
            Next();
        } else {
            TimerSequenz.stop();
            MediaClose();
            ResetDisplay();
            ShowPiece(-1);
            emit stopped();
        }
    }
}

bool modPlayer::Sign(const QString& text, bool previousRow) {
    if (!ListNotEmpty(m_grid, m_prompt))
        return false;
    m_grid.LockUpdate(false);
    if (text.isEmpty()) {
        if (view.focusGrid)
            view.focusGrid();
        return false;
    }
    const int row = m_grid.CurRow();
    if (!previousRow) {
        if (row >= 1)
            m_grid.SetCellText(row, InCol::FTag, text);
        if (Opt().autoPlay)
            NextAfterMark();
    } else if (row > 1) {
        m_grid.SetCellText(row - 1, InCol::FTag, text);
    }
    return true;
}

void modPlayer::NextAfterMark() {
    PlayerAutoSkip = true;
    Next();
    PlayerAutoSkip = false;
}
