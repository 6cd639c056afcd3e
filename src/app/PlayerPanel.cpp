#include "app/PlayerPanel.h"

#include "app/DataGridView.h"
#include "app/InputDataPage.h"
#include "app/MarksPanel.h"
#include "app/MessageBoxPrompt.h"
#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "player/MediaDevice.h"
#include "player/modPlayer.h"
#include "player/modRandomSample.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSlider>
#include <QStyle>
#include <QTableView>
#include <QToolButton>

namespace {
const QColor kPlayColour(0, 170, 0);
const QColor kPauseColour(230, 160, 0);
const QColor kPieceColour(0, 120, 215);
const char* const kVolumeState = "state"; // "ON" or "OFF"

QToolButton* MediaButton(QWidget* parent, const char* name, QStyle::StandardPixmap icon) {
    auto* b = new QToolButton(parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setIcon(parent->style()->standardIcon(icon));
    b->setAutoRaise(true);
    b->setIconSize(QSize(22, 22));
    return b;
}

QLabel* Lamp(QWidget* parent, const QString& name) {
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    l->setFixedSize(14, 14);
    l->setFrameShape(QFrame::Box);
    l->setAutoFillBackground(true);
    l->setProperty("lit", false);
    return l;
}
} // namespace

PlayerPanel* PlayerPanel::Install(InputDataPage* page) {
    auto* panel = new PlayerPanel(page);
    page->AddSubTab(page->TabInput1_Sub2, panel, QStringLiteral("pagTab1_Player"), SubTab::Player);
    return panel;
}

PlayerPanel::PlayerPanel(InputDataPage* page, QWidget* parent) : QWidget(parent), m_page(page) {
    m_player = new modPlayer(Grids::LbxInput(), AppPrompt(), this);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(2);

    // Row 0: the button bar, the lamps, the song and the time line.
    MMC = new QWidget(this);
    MMC->setObjectName(QStringLiteral("MMC"));
    auto* bar = new QHBoxLayout(MMC);
    bar->setContentsMargins(0, 0, 0, 0);
    bar->setSpacing(0);
    MMC_Prev = MediaButton(MMC, "MMC_Prev", QStyle::SP_MediaSkipBackward);
    MMC_Next = MediaButton(MMC, "MMC_Next", QStyle::SP_MediaSkipForward);
    MMC_Play = MediaButton(MMC, "MMC_Play", QStyle::SP_MediaPlay);
    MMC_Pause = MediaButton(MMC, "MMC_Pause", QStyle::SP_MediaPause);
    MMC_Stop = MediaButton(MMC, "MMC_Stop", QStyle::SP_MediaStop);
    for (QToolButton* b : {MMC_Prev, MMC_Next, MMC_Play, MMC_Pause, MMC_Stop})
        bar->addWidget(b);
    lblTab1_ColorPlay = Lamp(this, QStringLiteral("lblTab1_ColorPlay"));
    lblTab1_ColorPause = Lamp(this, QStringLiteral("lblTab1_ColorPause"));
    lblTab1_ActSong = new QLabel(this);
    lblTab1_ActSong->setObjectName(QStringLiteral("lblTab1_ActSong"));
    lblTab1_ActSong->setMinimumWidth(120);
    lblTab1_ActSong->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblTab1_WinampTime = new QLabel(PlayerTimeLineIdle(), this);
    lblTab1_WinampTime->setObjectName(QStringLiteral("lblTab1_WinampTime"));
    QFont mono = lblTab1_WinampTime->font();
    mono.setFamily(QStringLiteral("DejaVu Sans Mono"));
    lblTab1_WinampTime->setFont(mono);
    auto* top = new QHBoxLayout;
    top->addWidget(MMC);
    top->addSpacing(6);
    top->addWidget(lblTab1_ColorPlay);
    top->addWidget(lblTab1_ColorPause);
    top->addSpacing(6);
    top->addWidget(lblTab1_ActSong, 1);
    grid->addLayout(top, 0, 0);

    // Row 1: the time line, position, volume and the mute image.
    sliderTab1_sldLength = new QSlider(Qt::Horizontal, this);
    sliderTab1_sldLength->setObjectName(QStringLiteral("sliderTab1_sldLength"));
    sliderTab1_sldLength->setRange(0, 1);
    sliderTab1_sldLength->setTickPosition(QSlider::TicksBelow);
    sliderTab1_sldLength->setTickInterval(10);
    sliderTab1_sldLength->setMinimumWidth(120);
    sliderTab1_WinampVolume = new QSlider(Qt::Horizontal, this);
    sliderTab1_WinampVolume->setObjectName(QStringLiteral("sliderTab1_WinampVolume"));
    sliderTab1_WinampVolume->setRange(0, 100);
    sliderTab1_WinampVolume->setFixedWidth(80);
    imgTab1_WinampVolume = new QToolButton(this);
    imgTab1_WinampVolume->setObjectName(QStringLiteral("imgTab1_WinampVolume"));
    imgTab1_WinampVolume->setAutoRaise(true);
    auto* sliders = new QHBoxLayout;
    sliders->addWidget(lblTab1_WinampTime);
    sliders->addWidget(sliderTab1_sldLength, 1);
    sliders->addSpacing(6);
    sliders->addWidget(imgTab1_WinampVolume);
    sliders->addWidget(sliderTab1_WinampVolume);
    grid->addLayout(sliders, 1, 0);

    // Rows 2 and 3: the switches of a run, the mark of moving on and the skip buttons.
    chbTab1_PlayWithChange = new QCheckBox(this);
    chbTab1_PlayWithChange->setObjectName(QStringLiteral("chbTab1_PlayWithChange"));
    chbTab1_AutoPlay = new QCheckBox(this);
    chbTab1_AutoPlay->setObjectName(QStringLiteral("chbTab1_AutoPlay"));
    chbTab1_WinampAutoSign = new QCheckBox(this);
    chbTab1_WinampAutoSign->setObjectName(QStringLiteral("chbTab1_WinampAutoSign"));
    txtTab1_FTag4 = new QLineEdit(this);
    txtTab1_FTag4->setObjectName(QStringLiteral("txtTab1_FTag4"));
    txtTab1_FTag4->setMaximumWidth(80);
    btnTab1_SkipMinus = new QPushButton(this);
    btnTab1_SkipMinus->setObjectName(QStringLiteral("btnTab1_SkipMinus"));
    btnTab1_SkipPlus = new QPushButton(this);
    btnTab1_SkipPlus->setObjectName(QStringLiteral("btnTab1_SkipPlus"));
    lblTab1_Skip = new QLabel(this);
    lblTab1_Skip->setObjectName(QStringLiteral("lblTab1_Skip"));
    txtTab1_SkipSec = new QLineEdit(this);
    txtTab1_SkipSec->setObjectName(QStringLiteral("txtTab1_SkipSec"));
    txtTab1_SkipSec->setValidator(new QIntValidator(0, 9999, txtTab1_SkipSec));
    txtTab1_SkipSec->setMaximumWidth(44);
    auto* run = new QHBoxLayout;
    run->addWidget(chbTab1_PlayWithChange);
    run->addWidget(chbTab1_AutoPlay);
    run->addStretch(1);
    grid->addLayout(run, 2, 0);
    auto* mark = new QHBoxLayout;
    mark->addWidget(chbTab1_WinampAutoSign);
    mark->addWidget(txtTab1_FTag4);
    mark->addStretch(1);
    grid->addLayout(mark, 3, 0);
    // During a run the sign buttons of the marks tab come here.
    m_signSlot = new QHBoxLayout;
    m_signSlot->setContentsMargins(0, 0, 0, 0);
    grid->addLayout(m_signSlot, 4, 0);
    auto* skip = new QHBoxLayout;
    skip->addWidget(btnTab1_SkipMinus);
    skip->addWidget(lblTab1_Skip);
    skip->addWidget(txtTab1_SkipSec);
    skip->addWidget(btnTab1_SkipPlus);
    skip->addStretch(1);
    grid->addLayout(skip, 5, 0);

    // Rows 5 and 6: the pieces.
    chbTab1_UseSequenztime = new QCheckBox(this);
    chbTab1_UseSequenztime->setObjectName(QStringLiteral("chbTab1_UseSequenztime"));
    lblTab1_Times = new QLabel(this);
    lblTab1_Times->setObjectName(QStringLiteral("lblTab1_Times"));
    auto* seq = new QHBoxLayout;
    seq->addWidget(chbTab1_UseSequenztime);
    seq->addWidget(lblTab1_Times);
    for (int i = 0; i < 3; ++i) {
        txtTab1_Sequenztime[i] = new QLineEdit(this);
        txtTab1_Sequenztime[i]->setObjectName(QStringLiteral("txtTab1_Sequenztime(%1)").arg(i));
        txtTab1_Sequenztime[i]->setValidator(new QIntValidator(0, 9999, txtTab1_Sequenztime[i]));
        txtTab1_Sequenztime[i]->setMaximumWidth(40);
        seq->addWidget(txtTab1_Sequenztime[i]);
    }
    seq->addStretch(1);
    grid->addLayout(seq, 6, 0);
    auto* pieces = new QHBoxLayout;
    btnTab1_GoFwd = new QPushButton(this);
    btnTab1_GoFwd->setObjectName(QStringLiteral("btnTab1_GoFwd"));
    pieces->addWidget(btnTab1_GoFwd);
    for (int i = 0; i < 3; ++i) {
        lblTab1_Seq[i] = new QLabel(this);
        lblTab1_Seq[i]->setObjectName(QStringLiteral("lblTab1_Seq(%1)").arg(i));
        lblTab1_Seq[i]->setAlignment(Qt::AlignCenter);
        lblTab1_Seq[i]->setMargin(1);
        lblTab1_Seq[i]->setMinimumWidth(56);
        lblTab1_Seq[i]->setFrameShape(QFrame::StyledPanel);
        lblTab1_Seq[i]->setAutoFillBackground(true);
        lblTab1_Seq[i]->setProperty("lit", false);
        pieces->addWidget(lblTab1_Seq[i]);
    }
    pieces->addStretch(1);
    // The random sample belongs to the run: it stands beside its switches.
    btnTab1_Random = new QPushButton(this);
    btnTab1_Random->setObjectName(QStringLiteral("btnTab1_Random"));
    run->insertWidget(2, btnTab1_Random);
    grid->addLayout(pieces, 7, 0);
    grid->setRowStretch(8, 1);

    SetLamp(lblTab1_ColorPlay, false, kPlayColour);
    SetLamp(lblTab1_ColorPause, false, kPauseColour);
    for (QLabel* l : lblTab1_Seq)
        SetLamp(l, false, kPieceColour);
    UseSequenceToggled(false);
    AutoPlayToggled(false);

    // ---- what the player reads and shows ----------------------------------------------
    m_player->options = [this] {
        PlayerOptions o;
        o.autoPlay = chbTab1_AutoPlay->isChecked();
        o.useSequence = chbTab1_UseSequenztime->isChecked();
        o.autoSign = chbTab1_WinampAutoSign->isChecked();
        o.autoSignText = txtTab1_FTag4->text();
        for (int i = 0; i < 3; ++i)
            o.seq[size_t(i)] = txtTab1_Sequenztime[i]->text().toInt();
        o.skipSec = txtTab1_SkipSec->text();
        o.volumeOn = imgTab1_WinampVolume->property(kVolumeState).toString() == u"ON";
        o.gridHadFocus = m_gridHadFocus;
        return o;
    };
    PlayerView& v = m_player->view;
    v.timeLine = [this](const QString& t) { lblTab1_WinampTime->setText(t); };
    v.sliderRange = [this](int max, int tick) {
        sliderTab1_sldLength->setMaximum(max);
        sliderTab1_sldLength->setTickInterval(tick);
    };
    v.sliderValue = [this](int s) {
        if (!sliderTab1_sldLength->isSliderDown())
            sliderTab1_sldLength->setValue(s);
    };
    v.sliderPosition = [this] { return sliderTab1_sldLength->value(); };
    v.lamps = [this](bool play, bool pause) {
        SetLamp(lblTab1_ColorPlay, play, kPlayColour);
        SetLamp(lblTab1_ColorPause, pause, kPauseColour);
    };
    v.pieceLamps = [this](int piece) {
        for (int i = 0; i < 3; ++i)
            SetLamp(lblTab1_Seq[i], i == piece, kPieceColour);
    };
    v.actSong = [this](const QString& s) { lblTab1_ActSong->setText(s); };
    v.focusGrid = [this] { FocusList(); };
    v.volumeReadBack = [this](int vol) {
        const QSignalBlocker quiet(sliderTab1_WinampVolume);
        sliderTab1_WinampVolume->setValue(vol);
    };

    // ---- the controls ------------------------------------------------------------------
    // Whether the user had the focus in the list when a command began.
    auto noteFocus = [this] { m_gridHadFocus = m_page->LbxInput->table()->hasFocus(); };
    for (QToolButton* b : {MMC_Prev, MMC_Next, MMC_Play, MMC_Pause, MMC_Stop}) {
        b->setFocusPolicy(Qt::NoFocus); // the list keeps the focus while the buttons work
        connect(b, &QToolButton::pressed, this, noteFocus);
    }
    connect(MMC_Prev, &QToolButton::clicked, m_player, &modPlayer::Prev);
    connect(MMC_Next, &QToolButton::clicked, m_player, &modPlayer::Next);
    connect(MMC_Play, &QToolButton::clicked, m_player, &modPlayer::Play);
    connect(MMC_Pause, &QToolButton::clicked, m_player, &modPlayer::Pause);
    connect(MMC_Stop, &QToolButton::clicked, m_player, &modPlayer::Stop);
    connect(sliderTab1_sldLength, &QSlider::sliderPressed, m_player, &modPlayer::SliderPressed);
    connect(sliderTab1_sldLength, &QSlider::sliderReleased, this,
            [this] { m_player->SliderReleased(sliderTab1_sldLength->value()); });
    connect(btnTab1_SkipMinus, &QPushButton::clicked, m_player, &modPlayer::SkipMinus);
    connect(btnTab1_SkipPlus, &QPushButton::clicked, m_player, &modPlayer::SkipPlus);
    connect(btnTab1_GoFwd, &QPushButton::clicked, m_player, &modPlayer::GoFwd);
    connect(btnTab1_Random, &QPushButton::clicked, this, [this] {
        MarkRandomSample(Grids::LbxInput(), AppPrompt());
        FocusList();
    });
    connect(txtTab1_SkipSec, &QLineEdit::textChanged, this, [](const QString& t) {
        if (!State().SuppressEvents)
            SetSetting(Ini::SkipSec, Ini::Col1, t);
    });
    for (int i = 0; i < 3; ++i)
        connect(txtTab1_Sequenztime[i], &QLineEdit::textChanged, this, [i](const QString& t) {
            if (!State().SuppressEvents)
                SetSetting(Ini::SequenceTimeFirst + i, Ini::Col1, t);
        });
    connect(chbTab1_UseSequenztime, &QCheckBox::toggled, this, &PlayerPanel::UseSequenceToggled);
    connect(chbTab1_AutoPlay, &QCheckBox::toggled, this, &PlayerPanel::AutoPlayToggled);
    connect(chbTab1_PlayWithChange, &QCheckBox::toggled, this, [this](bool on) {
        if (State().SuppressEvents)
            return;
        SetSettingOn(Ini::PlayWithChange, Ini::Col1, on);
        if (!on)
            return;
        if (auto* edit = window()->findChild<QCheckBox*>(QStringLiteral("chbTab1_DirectEdit")))
            edit->setChecked(false);
        DataGrid& g = Grids::LbxInput();
        if (g.SelCount() == 1)
            g.SelectRange(1, g.Rows(), false);
    });
    connect(&Grids::LbxInput(), &DataGrid::currentRowChanged, this, [this](int row) {
        if (row >= 1 && chbTab1_PlayWithChange->isChecked() && !m_player->ChangingRow &&
            !State().SuppressEvents)
            m_player->Play();
    });
    connect(imgTab1_WinampVolume, &QToolButton::clicked, this, &PlayerPanel::ToggleVolume);
    connect(sliderTab1_WinampVolume, &QSlider::valueChanged, this, [this](int value) {
        if (imgTab1_WinampVolume->property(kVolumeState).toString() == u"ON")
            Media().SetVolume(value);
    });
    SetVolumeImage(true);
    // Without any sound output the songs run silently; the user hears about it once.
    connect(&Media(), &MediaDevice::audioOutputMissing, this,
            [] { AppPrompt().Tell(Caption(CapNoAudioOutput), Prompt::Icon::Warning); });

    // The keys of the player tab: Ctrl with N, P, U, V, X for the button bar, Ctrl with
    // plus and minus to skip, Ctrl+Alt with plus and minus for half a step, Ctrl+Shift+plus
    // for the next piece. They work while the tab is shown.
    auto key = [this](QKeyCombination keys, auto&& run) {
        auto* sc = new QShortcut(QKeySequence(keys), this);
        sc->setContext(Qt::WindowShortcut);
        connect(sc, &QShortcut::activated, this, run);
    };
    key(Qt::CTRL | Qt::Key_N, [this] { MMC_Next->click(); });
    key(Qt::CTRL | Qt::Key_P, [this] { MMC_Play->click(); });
    key(Qt::CTRL | Qt::Key_U, [this] { MMC_Pause->click(); });
    key(Qt::CTRL | Qt::Key_V, [this] { MMC_Prev->click(); });
    key(Qt::CTRL | Qt::Key_X, [this] { MMC_Stop->click(); });
    key(Qt::CTRL | Qt::Key_Plus, [this] { m_player->SkipPlus(); });
    key(Qt::CTRL | Qt::Key_Minus, [this] { m_player->SkipMinus(); });
    key(Qt::CTRL | Qt::ALT | Qt::Key_Plus, [this] {
        m_player->HalfStep = true;
        m_player->SkipPlus();
    });
    key(Qt::CTRL | Qt::ALT | Qt::Key_Minus, [this] {
        m_player->HalfStep = true;
        m_player->SkipMinus();
    });
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_Plus, [this] { btnTab1_GoFwd->click(); });

    // The sign buttons of the marks tab: during a run one press marks the song and moves
    // on to the next (the marks tab has set the mark by then).
    for (int i = 0; i < 10; ++i) {
        auto* sign = page->findChild<SignButton*>(QStringLiteral("btnTab1_Sign(%1)").arg(i));
        auto* previous = page->findChild<QCheckBox*>(QStringLiteral("chbTab1_SignPreviousRow"));
        if (!sign)
            continue;
        connect(sign, &QPushButton::clicked, this, [this, sign, previous] {
            if (chbTab1_AutoPlay->isChecked() && !sign->Sign().isEmpty() &&
                !(previous && previous->isChecked()) && Grids::LbxInput().Rows() > 0)
                m_player->NextAfterMark();
        });
    }
}

void PlayerPanel::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    chbTab1_PlayWithChange->setChecked(SettingOn(Ini::PlayWithChange, Ini::Col1));
    for (int i = 0; i < 3; ++i)
        txtTab1_Sequenztime[i]->setText(Setting(Ini::SequenceTimeFirst + i, Ini::Col1));
    txtTab1_SkipSec->setText(Setting(Ini::SkipSec, Ini::Col1));
    State().SuppressEvents = quiet;
    // The volume slider starts from the device's volume.
    const QSignalBlocker block(sliderTab1_WinampVolume);
    sliderTab1_WinampVolume->setValue(Media().Volume());
}

void PlayerPanel::SetLamp(QLabel* lamp, bool on, const QColor& colour) {
    QPalette p = lamp->palette();
    p.setColor(QPalette::Window, on ? colour : palette().color(QPalette::Button));
    p.setColor(QPalette::WindowText, on ? QColor(Qt::white) : palette().color(QPalette::WindowText));
    lamp->setPalette(p);
    lamp->setProperty("lit", on);
}

void PlayerPanel::SetVolumeImage(bool on) {
    imgTab1_WinampVolume->setProperty(kVolumeState, on ? QStringLiteral("ON") : QStringLiteral("OFF"));
    // The pictures beside the program; the style's own when they are not there.
    const QString file = AppFile(on ? QStringLiteral("icons/VolOn.ico") : QStringLiteral("icons/VolOff.ico"));
    if (QFile::exists(file))
        imgTab1_WinampVolume->setIcon(QIcon(file));
    else
        imgTab1_WinampVolume->setIcon(
            style()->standardIcon(on ? QStyle::SP_MediaVolume : QStyle::SP_MediaVolumeMuted));
}

void PlayerPanel::ToggleVolume() {
    if (imgTab1_WinampVolume->property(kVolumeState).toString() == u"ON") {
        sliderTab1_WinampVolume->setProperty("Tag", sliderTab1_WinampVolume->value());
        Media().SetVolume(0);
        SetVolumeImage(false);
    } else {
        SetVolumeImage(true);
        const int stored = sliderTab1_WinampVolume->property("Tag").toInt();
        sliderTab1_WinampVolume->setValue(stored);
        Media().SetVolume(stored);
    }
}

void PlayerPanel::UseSequenceToggled(bool on) {
    for (QWidget* w : {static_cast<QWidget*>(lblTab1_Times), static_cast<QWidget*>(btnTab1_GoFwd)})
        w->setEnabled(on);
    for (int i = 0; i < 3; ++i) {
        txtTab1_Sequenztime[i]->setEnabled(on);
        lblTab1_Seq[i]->setEnabled(on);
        if (!on)
            SetLamp(lblTab1_Seq[i], false, kPieceColour);
    }
    if (!on || State().SuppressEvents)
        return;
    // An empty box takes its stored value; the values are stored.
    for (int i = 0; i < 3; ++i) {
        if (txtTab1_Sequenztime[i]->text().isEmpty())
            txtTab1_Sequenztime[i]->setText(Setting(Ini::SequenceTimeFirst + i, Ini::Col1));
        SetSetting(Ini::SequenceTimeFirst + i, Ini::Col1, txtTab1_Sequenztime[i]->text());
    }
}

void PlayerPanel::AutoPlayToggled(bool on) {
    // A run locks out what would disturb it and shows the controls of a mark run.
    QWidget* top = window();
    if (on) {
        if (auto* edit = top->findChild<QCheckBox*>(QStringLiteral("chbTab1_DirectEdit")))
            edit->setChecked(false);
        chbTab1_PlayWithChange->setChecked(false);
    }
    for (const char* name : {"Folderview", "pagTab1_Files", "pagTab1_Rename"})
        if (auto* w = top->findChild<QWidget*>(QString::fromLatin1(name)))
            w->setEnabled(!on);
    // The sign buttons come over from the marks tab for the run, and go back after it.
    if (auto* marks = m_page->findChild<MarksPanel*>()) {
        if (on)
            marks->LendSigns(m_signSlot);
        else
            marks->TakeSignsBack();
    }
    for (QWidget* w : {static_cast<QWidget*>(txtTab1_FTag4), static_cast<QWidget*>(btnTab1_SkipMinus),
                       static_cast<QWidget*>(btnTab1_SkipPlus), static_cast<QWidget*>(lblTab1_Skip),
                       static_cast<QWidget*>(txtTab1_SkipSec)})
        w->setVisible(on);
    if (!on && Grids::LbxInput().IsLocked()) {
        Grids::LbxInput().LockUpdate(false);
        Grids::LbxInput().Refresh();
    }
}

void PlayerPanel::FocusList() {
    m_page->LbxInput->table()->setFocus();
}
