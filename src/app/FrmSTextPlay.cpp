// FrmSText: the song on the shared device, the two timers, the clicks on rows in time
// with the song and the searches of the side lists.
#include "app/DataGridView.h"
#include "app/FrmSText.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "player/MediaDevice.h"
#include "player/MediaOwner.h"
#include "player/modPlayer.h"
#include "tag/TagEngine.h"
#include "text/modSText.h"
#include "text/modSTextFind.h"
#include "text/modSTextSync.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>

using namespace SText;

namespace {
constexpr int kTimeTickMs = 1000;
constexpr int kSyncTickMs = 100;
constexpr qint32 kJumpLeadMs = 2000; // a Ctrl+click plays from this much before the stamp
constexpr int kStampRowOffset = 13;  // rows the current row stays below the top while stamping
} // namespace

// ---- the song ------------------------------------------------------------------------------

void FrmSText::giveSongToPlayer(const QString& song) {
    lblSText_ActSong->setText(song);
    FileName = song;
    SongLength = modPlayer::MediaLength(song);
    sliderSText_sldLength->setMaximum(SongLength / 1000);
    sliderSText_sldLength->setTickInterval(SongLength > 300000 ? 15 : 10);
    lblSText_Time->setText(STextTimeLineLoaded(SongLength));
}

bool FrmSText::openSong(const QString& path) {
    MediaOwner::Instance().Claim(this);
    if (Media().Open(path))
        return true;
    prompt().Tell(Caption(CapCannotPlay) + path + QStringLiteral("\n\n") + Caption(CapCheckFileAndType),
                  Prompt::Icon::Information);
    return false;
}

void FrmSText::play() {
    if (lblSText_ActSong->text().isEmpty()) {
        prompt().Tell(Caption(CapNoSongLoaded));
        return;
    }
    if (FileName.isEmpty())
        FileName = lblSText_ActSong->text();
    const bool sync = chbSText_PlaySynchonized->isChecked();
    const bool window = chbSText_PlayWithScrollList->isChecked();
    const QString song = FileName;
    stop();
    FileName = song;
    chbSText_PlaySynchonized->setChecked(sync);
    chbSText_PlayWithScrollList->setChecked(window);
    if (window && startScrollWindow) {
        startScrollWindow(song, list());
        return;
    }
    RowOffset = 0;
    setTopRow(1);
    if (chbSText_PlaySynchonized->isChecked() && !chbSText_SyncMode->isChecked() && !arm()) {
        setInterval(TimerSText, 0);
        setInterval(TimerSText_SyncTimer, 0);
        chbSText_SyncMode->setChecked(false);
        return;
    }
    setInterval(TimerSText, kTimeTickMs);
    if (!openSong(song)) {
        setInterval(TimerSText, 0);
        setInterval(TimerSText_SyncTimer, 0);
        chbSText_SyncMode->setChecked(false);
        return;
    }
    if (chbSText_PlaySynchonized->isChecked())
        chbSText_SyncMode->setChecked(true);
    SongLength = modPlayer::MediaLength(song);
    sliderSText_sldLength->setMaximum(SongLength / 1000);
    sliderSText_sldLength->setTickInterval(SongLength > 300000 ? 15 : 10);
    lblSText_Time->setText(STextTimeLine(SongLength, 0));
    Media().PlayFrom(0);
    lblSText_ColorPause->hide();
    MMCTag = QStringLiteral("playing");
}

bool FrmSText::arm() {
    m_quiet = true;
    const bool found = ArmSync(list(), NextStamp);
    m_quiet = false;
    if (!found) {
        prompt().Tell(Caption(CapNoTimestamps));
        AbortFlag = true;
        return false;
    }
    setInterval(TimerSText_SyncTimer, kSyncTickMs);
    chbSText_SyncMode->setChecked(true);
    return true;
}

void FrmSText::syncTick() {
    if (NextStamp == 0)
        return;
    chbSText_SyncMode->setChecked(true);
    const qint32 position = MediaOwner::Instance().Owns(this) ? Media().Position() : 0;
    const SyncStep step = SyncTick(list(), position, NextStamp);
    if (step.ended) {
        setInterval(TimerSText_SyncTimer, 0);
        chbSText_SyncMode->setChecked(false);
    }
}

void FrmSText::pause() {
    if (FileName.isEmpty() || !MediaOwner::Instance().Owns(this))
        return;
    if (MMCTag == u"playing" && lblSText_ColorPause->isHidden()) {
        Media().Pause();
        MMCTag = QStringLiteral("pause");
        lblSText_ColorPause->show();
        setInterval(TimerSText_SyncTimer, 0);
        RowOffset = 0;
        return;
    }
    Media().Resume();
    lblSText_ColorPause->hide();
    MMCTag = QStringLiteral("playing");
    if (chbSText_SyncMode->isChecked()) {
        const qint32 t = sliderSText_sldLength->value() * 1000;
        if (list().Rows() >= 2 && RowTime(list(), 2) >= t) {
            NextStamp = RowTime(list(), 2);
            list().SetCurRow(1);
        }
    }
    setInterval(TimerSText_SyncTimer, kSyncTickMs);
}

void FrmSText::stop() {
    if (FileName.isEmpty())
        return;
    const bool outer = !m_stopping;
    m_stopping = true;
    const bool sync = chbSText_PlaySynchonized->isChecked();
    const bool window = chbSText_PlayWithScrollList->isChecked();
    if (MediaOwner::Instance().Owns(this)) {
        Media().Close();
        MediaOwner::Instance().Release(this);
    }
    FileName.clear();
    MMCTag.clear();
    setInterval(TimerSText, 0);
    setInterval(TimerSText_SyncTimer, 0);
    lblSText_Time->setText(STextTimeLineIdle());
    lblSText_ColorPause->hide();
    sliderSText_sldLength->setValue(0);
    chbSText_SyncMode->setChecked(false);
    m_quiet = true;
    list().SetCurRow(1);
    m_quiet = false;
    NextStamp = 0;
    RowOffset = 0;
    setTopRow(1);
    updateState();
    if (outer) {
        chbSText_PlaySynchonized->setChecked(sync);
        chbSText_PlayWithScrollList->setChecked(window);
        m_stopping = false;
    }
}

void FrmSText::deviceTaken() {
    // The player of the data list took the device: our song is gone from it.
    if (FileName.isEmpty() && MMCTag.isEmpty())
        return;
    MMCTag.clear();
    setInterval(TimerSText, 0);
    setInterval(TimerSText_SyncTimer, 0);
    NextStamp = 0;
    chbSText_SyncMode->setChecked(false);
    lblSText_ColorPause->hide();
    sliderSText_sldLength->setValue(0);
    lblSText_Time->setText(STextTimeLineLoaded(SongLength));
}

void FrmSText::eject() {
    if (MediaOwner::Instance().Owns(this))
        Media().Close();
    setInterval(TimerSText_SyncTimer, 0);
    chbSText_SyncMode->setChecked(false);
    RowOffset = 0;
    setTopRow(1);
    const QString song = chooseOpenFile(Setting(Ini::PathSText2, Ini::Col2),
                                        Caption(CapAudioFilesFilter) + QStringLiteral(" (*.mp3 *.MP3)"),
                                        Caption(CapChooseSongTitle));
    if (song.isEmpty())
        return;
    if (!openSong(song))
        return;
    giveSongToPlayer(song);
    updateState();
}

// ---- stamping and the slider -----------------------------------------------------------------

void FrmSText::setTimeStampToggled(bool on) {
    if (on && lblSText_ActSong->text().isEmpty()) {
        prompt().Tell(Caption(CapNoSongLoaded));
        chbSText_SetTimeStamp->setChecked(false);
        return;
    }
    if (on) {
        chbSText_ShiftFromActRow->setStyleSheet(QString());
        chbSText_SetTimeStamp->setStyleSheet(QStringLiteral("QCheckBox { background: #ff8000; }")); // 33023
        chbSText_SyncMode->setChecked(false);
        setInterval(TimerSText_SyncTimer, 0);
        chbSText_ShiftFromActRow->setChecked(false);
        fraSText_PlayOptions->setEnabled(false);
        optSText_PlayInListbox->setChecked(true);
        chbSText_PlayLrc2->setChecked(false);
    } else {
        chbSText_SetTimeStamp->setStyleSheet(QString());
        fraSText_PlayOptions->setEnabled(true);
        RowOffset = 0;
        setTopRow(1);
        LbxSText->table()->setFocus();
    }
    updateState();
}

void FrmSText::sliderPressed() {
    if (QApplication::mouseButtons() != Qt::LeftButton && !sliderSText_sldLength->isSliderDown())
        return;
    m_dragging = true;
    setInterval(TimerSText, 0);
    if (MediaOwner::Instance().Owns(this) && Media().IsOpen())
        Media().Pause();
}

void FrmSText::sliderReleased() {
    if (!m_dragging)
        return;
    m_dragging = false;
    if (!MediaOwner::Instance().Owns(this) || !Media().IsOpen())
        return;
    const qint32 t = sliderSText_sldLength->value() * 1000;
    Media().PlayFrom(t);
    setInterval(TimerSText, kTimeTickMs);
    lblSText_ColorPause->hide();
    MMCTag = QStringLiteral("playing");
    if (chbSText_SyncMode->isChecked()) {
        m_quiet = true;
        SeekSync(list(), t, NextStamp);
        m_quiet = false;
        setInterval(TimerSText_SyncTimer, kSyncTickMs);
    }
}

void FrmSText::rowMouseDown(int row, int col, Qt::MouseButton button, Qt::KeyboardModifiers mods) {
    DataGrid& g = list();
    if (button == Qt::LeftButton && (mods & Qt::ControlModifier) && chbSText_PlaySynchonized->isChecked()) {
        if (MediaOwner::Instance().Owns(this) && Media().IsOpen())
            Media().PlayFrom(RowTime(g, row) - kJumpLeadMs);
        return;
    }
    if (button == Qt::RightButton) {
        if (MMCTag != u"playing") {
            g.SetCurRow(row); // the menu works on the row under the mouse
            showRowMenu(QCursor::pos());
        }
        return;
    }
    if (button != Qt::LeftButton)
        return;
    if (col == ColRefrain) {
        if (ToggleRefrain(g, row) == Refrain::Refused)
            prompt().Tell(Caption(CapTooManyRefrains));
        return;
    }
    if (!chbSText_SetTimeStamp->isChecked() || lblSText_ActSong->text().isEmpty())
        return;
    const qint32 position = MediaOwner::Instance().Owns(this) ? Media().Position() : 0;
    StampAt(g, row, ClickStampTime(position, txtSText_TimeShiftM->text(), txtSText_TimeShiftP->text()));
    list().Tag = QStringLiteral("edited");
    if (RowOffset == 0)
        RowOffset = row - topRow();
    if (!chbSText_PlaySynchonized->isEnabled())
        updateState(); // the first stamp makes the text one that can run along
}

void FrmSText::rowChanged() {
    if (m_quiet)
        return;
    DataGrid& g = list();
    if (RowsChanged) {
        RenumberSTextKeys(g);
        RowsChanged = false;
    }
    if (topRow() + visibleRows() > g.Rows()) {
        m_quiet = true;
        g.AddRow(QStringList(Cols, QString()), QString::number(g.Rows() + 1));
        m_quiet = false;
    }
    if ((chbSText_SyncMode->isChecked() || chbSText_SetTimeStamp->isChecked()) && RowOffset > 0) {
        m_quiet = true;
        if (g.CurRow() - RowOffset > topRow())
            setTopRow(g.CurRow() - RowOffset);
        m_quiet = false;
    }
    if (chbSText_SetTimeStamp->isChecked())
        RowOffset = kStampRowOffset;
}

void FrmSText::updateState() {
    bool stamps = false;
    for (int row = 1; row <= list().Rows() && !stamps; ++row)
        stamps = !list().CellView(row, ColMmss).isEmpty();
    if (lblSText_ActSong->text().isEmpty() || !stamps) {
        chbSText_PlaySynchonized->setChecked(false);
        chbSText_PlayWithScrollList->setChecked(false);
        chbSText_PlaySynchonized->setEnabled(false);
    } else if (!chbSText_PlayLrc2->isChecked()) {
        if (!m_stopping) {
            chbSText_PlaySynchonized->setChecked(false);
            chbSText_PlayWithScrollList->setChecked(false);
        }
        chbSText_PlaySynchonized->setEnabled(true);
    } else {
        chbSText_PlaySynchonized->setEnabled(true);
        chbSText_PlaySynchonized->setChecked(true);
    }
    // the scrolling window plays a stamped text with its song
    chbSText_PlayWithScrollList->setEnabled(bool(startScrollWindow) && chbSText_PlaySynchonized->isEnabled());
    optSText_PlayInWindow->setEnabled(bool(startScrollWindow));
    if (chbSText_PlayLrc2->isChecked() && chbSText_PlayWithScrollList->isEnabled())
        chbSText_PlayWithScrollList->setChecked(optSText_PlayInWindow->isChecked());
}

// ---- the time line -----------------------------------------------------------------------------

void FrmSText::timeTick() {
    if (!MediaOwner::Instance().Owns(this))
        return;
    const qint32 position = Media().Position();
    lblSText_Time->setText(STextTimeLine(SongLength, position));
    if (chbSText_PlaySynchonized->isChecked())
        chbSText_SyncMode->setChecked(true);
    if (MMCTag == u"pause")
        return;
    if (position < SongLength && !Media().AtEnd()) {
        if (!m_dragging)
            sliderSText_sldLength->setValue(position / 1000);
        return;
    }
    nextMarkedSong();
}

void FrmSText::nextMarkedSong() {
    DataGrid& songs = *LbxSongWithLrc->grid();
    const int next = songs.FindRow(QStringLiteral("p"), SongLrcCol::Mark);
    if (next > 0) {
        songs.SetCurRow(next);
        TabSText_Sub->setCurrentIndex(0);
        cmdLoadSelected(false);
        return;
    }
    setInterval(TimerSText, 0);
    setInterval(TimerSText_SyncTimer, 0);
    sliderSText_sldLength->setValue(0);
    chbSText_SyncMode->setChecked(false);
    lblSText_Time->setText(STextTimeLineIdle());
    MMCTag.clear();
}

void FrmSText::volumeChanged(int value) {
    Media().SetVolume(value);
    lblSText_Volume->setText(QString::number(value) + u'%');
}
