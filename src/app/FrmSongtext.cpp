// FrmSongtext: the frameless window that runs a song's timed text with the music.
#include "app/FrmSongtext.h"

#include "app/DataGridView.h"
#include "app/FrmSText.h"
#include "app/FrmScrollSettings.h"
#include "app/MessageBoxPrompt.h"
#include "app/STextShortcuts.h"
#include "app/ScrollTextView.h"
#include "app/UiCaptions.h"
#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "platform/SafeFile.h"
#include "player/MediaDevice.h"
#include "player/MediaOwner.h"
#include "player/modPlayer.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"
#include "text/modSText.h"
#include "text/modSTextFind.h"
#include "text/modSTextSync.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QShortcut>
#include <QSlider>
#include <QTabWidget>
#include <QToolButton>
#include <QWindow>

using namespace Scroll;

namespace {
constexpr int kFramePx = 12;     // frame of the window's back colour around the rows
constexpr int kBarPx = 22;       // height of the bar with the pause field, title and close
constexpr int kMinWidthPx = 320; // narrowest window

void SetBack(QWidget* w, qint32 bgr) {
    QPalette pal = w->palette();
    pal.setColor(QPalette::Window, SkinColor(bgr));
    w->setPalette(pal);
    w->setAutoFillBackground(true);
}
} // namespace

FrmSongtext::FrmSongtext(QWidget* parent, Prompt* prompt)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint), m_prompt(prompt), m_grid(new DataGrid(this)) {
    setObjectName(QStringLiteral("FrmSongtext"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    DefineScrollColumns(*m_grid);
    for (int i = 0; i < BlankRows; ++i)
        m_grid->AddRow({});

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(kFramePx, 4, kFramePx, kFramePx);
    outer->setSpacing(4);
    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    lblSongtext_Pause = new QLabel(this);
    lblSongtext_Pause->setObjectName(QStringLiteral("lblSongtext_Pause"));
    lblSongtext_Pause->setFixedSize(14, 14);
    lblSongtext_Pause->setFrameShape(QFrame::Box);
    lblSongtext_Pause->installEventFilter(this);
    lblSongtext_Title = new QLabel(this);
    lblSongtext_Title->setObjectName(QStringLiteral("lblSongtext_Title"));
    lblSongtext_Title->setMinimumWidth(40);
    lblSongtext_Title->installEventFilter(this);
    btnSongtext_Close = new QToolButton(this);
    btnSongtext_Close->setObjectName(QStringLiteral("btnSongtext_Close"));
    btnSongtext_Close->setAutoRaise(true);
    btnSongtext_Close->setToolButtonStyle(Qt::ToolButtonTextOnly);
    bar->addWidget(lblSongtext_Pause);
    bar->addWidget(lblSongtext_Title, 1);
    bar->addWidget(btnSongtext_Close);
    outer->addLayout(bar);
    LbxScrollText = new ScrollTextView(this);
    LbxScrollText->setObjectName(QStringLiteral("LbxScrollText"));
    LbxScrollText->SetGrid(m_grid);
    outer->addWidget(LbxScrollText, 1);
    installEventFilter(this);

    buildMenu();
    SetCaptionsOf(this);
    RegisterCaptionRoot(this);
    TimerSongtext_SyncTimer.setObjectName(QStringLiteral("TimerSongtext_SyncTimer"));
    TimerSongtext_SyncTimer.setTimerType(Qt::PreciseTimer);
    connect(&TimerSongtext_SyncTimer, &QTimer::timeout, this, &FrmSongtext::SyncTick);
    connect(btnSongtext_Close, &QToolButton::clicked, this, &QWidget::close);
    connect(LbxScrollText, &ScrollTextView::rowClicked, this, &FrmSongtext::rowClicked);
    connect(LbxScrollText, &ScrollTextView::dragStarted, this, [this] {
        if (QWindow* w = windowHandle())
            w->startSystemMove();
    });
    connect(&MediaOwner::Instance(), &MediaOwner::taken, this, [this](QObject* owner) {
        if (owner != this && TimerSongtext_SyncTimer.isActive()) {
            TimerSongtext_SyncTimer.stop();
            setPauseColor(PausedColor);
        }
    });
    setPauseColor(PlayingColor);
    m_skin = DefaultScrollSkin();
    ApplySkin(m_skin);
}

FrmSongtext::~FrmSongtext() {
    UnregisterCaptionRoot(this);
}

Prompt& FrmSongtext::prompt() const {
    return m_prompt ? *m_prompt : AppPrompt();
}

int FrmSongtext::CurRow() const {
    return m_grid->CurRow();
}

void FrmSongtext::buildMenu() {
    mnuSongtext = new QMenu(this);
    mnuSongtext->setObjectName(QStringLiteral("mnuSongtext"));
    auto add = [this](const char* name, auto fn, bool checkable = false) {
        QAction* a = mnuSongtext->addAction(QString());
        a->setObjectName(QLatin1String(name));
        a->setCheckable(checkable);
        connect(a, &QAction::triggered, this, fn);
        return a;
    };
    add(
        "mnuSongtext_Pause", [this] { pause(); }, true);
    add("mnuSongtext_NextSong", [this] { nextSong(); });
    add("mnuSongtext_EditLrc", [this] { editLrc(); });
    mnuSongtext->addSeparator();
    add(
        "mnuSongtext_AlwaysOnTop",
        [this](bool on) {
            SetSettingOn(Ini::SongtextAlwaysOnTop, Ini::Col1, on);
            applyOnTop();
        },
        true);
    add(
        "mnuSongtext_ShowTitle",
        [this](bool on) {
            SetSettingOn(Ini::SongtextShowTitle, Ini::Col1, on);
            setTitle();
        },
        true);
    add(
        "mnuSongtext_CloseWhenFinished",
        [](bool on) { SetSettingOn(Ini::SongtextCloseWhenFinished, Ini::Col1, on); }, true);
    add("mnuSongtext_NewDesign", [this] { newDesign(); });
    mnuSongtext->addSeparator();
    add("mnuSongtext_Exit", [this] { close(); });
}

void FrmSongtext::Popup_ManageSongtext() {
    for (QAction* a : mnuSongtext->actions())
        if (!a->isSeparator())
            a->setText(UiText(a->objectName()));
    auto action = [this](const char* name) { return mnuSongtext->findChild<QAction*>(QLatin1String(name)); };
    action("mnuSongtext_Pause")->setChecked(Paused);
    action("mnuSongtext_AlwaysOnTop")->setChecked(SettingOn(Ini::SongtextAlwaysOnTop, Ini::Col1));
    action("mnuSongtext_ShowTitle")->setChecked(SettingOn(Ini::SongtextShowTitle, Ini::Col1));
    action("mnuSongtext_CloseWhenFinished")->setChecked(SettingOn(Ini::SongtextCloseWhenFinished, Ini::Col1));
    action("mnuSongtext_EditLrc")->setEnabled(Tag != QLatin1String(StaticTag));
}

void FrmSongtext::contextMenuEvent(QContextMenuEvent* e) {
    Popup_ManageSongtext();
    mnuSongtext->popup(e->globalPos());
}

// ---- skin and size -----------------------------------------------------------------------

QString FrmSongtext::SkinPath() {
    const QString name = Setting(Ini::ScrollSkin, Ini::Col2);
    if (name.isEmpty())
        return {};
    return name.startsWith(QLatin1Char('/')) ? name : ScrollSkinFolder() + QLatin1Char('/') + name;
}

void FrmSongtext::LoadSkin() {
    ApplySkin(LoadScrollSkin(SkinPath()));
}

void FrmSongtext::ApplySkin(const ScrollSkin& skin) {
    m_skin = skin;
    SetBack(this, skin.WindowBack);
    LbxScrollText->SetSkin(skin);
    QPalette pal = lblSongtext_Title->palette();
    pal.setColor(QPalette::WindowText, SkinColor(ContrastTextColor(skin.WindowBack)));
    lblSongtext_Title->setPalette(pal);
    btnSongtext_Close->setPalette(pal);
    QPalette bp = btnSongtext_Close->palette();
    bp.setColor(QPalette::ButtonText, SkinColor(ContrastTextColor(skin.WindowBack)));
    btnSongtext_Close->setPalette(bp);
    sizeToText();
}

void FrmSongtext::sizeToText() {
    const int rows = LbxScrollText->IsStatic() ? 15 : LbxScrollText->VisibleRows();
    const int listHeight = rows * LbxScrollText->RowHeight();
    const QRect screen =
        (this->screen() ? this->screen() : QGuiApplication::primaryScreen())->availableGeometry();
    const int width = std::clamp(LbxScrollText->TextWidth() + 2 * kFramePx + 40, kMinWidthPx, screen.width());
    LbxScrollText->setFixedHeight(listHeight);
    setFixedSize(width, std::min(screen.height(), listHeight + kBarPx + kFramePx + 8));
}

void FrmSongtext::setTitle() {
    const bool show = SettingOn(Ini::SongtextShowTitle, Ini::Col1);
    const QString name = m_song.mid(m_song.lastIndexOf(QLatin1Char('/')) + 1);
    lblSongtext_Title->setText(show ? name : QString());
    lblSongtext_Title->setToolTip(show ? m_song : QString());
}

void FrmSongtext::setPauseColor(qint32 bgr) {
    lblSongtext_Pause->setStyleSheet(
        QStringLiteral("background:%1;border:1px solid #404040;").arg(SkinColor(bgr).name()));
    lblSongtext_Pause->setProperty("bgr", bgr);
}

void FrmSongtext::applyOnTop() {
    const bool on = SettingOn(Ini::SongtextAlwaysOnTop, Ini::Col1);
    if (bool(windowFlags() & Qt::WindowStaysOnTopHint) == on)
        return;
    const bool shown = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, on);
    if (shown)
        show();
}

// ---- starting ------------------------------------------------------------------------------

bool FrmSongtext::StartFromEditor(const QString& song, const DataGrid& stext, FrmSText* editor) {
    bool any = false;
    for (int r = 1; r <= stext.Rows() && !any; ++r)
        any = RowHasTime(stext, r);
    if (!any) {
        prompt().Tell(Caption(CapNoTimestamps));
        return false;
    }
    m_editor = editor;
    FromEditor = true;
    LoadSkin();
    if (song.isEmpty()) {
        stopPlaying();
        return false;
    }
    FillScrollList(*m_grid, stext);
    m_song = song;
    m_grid->Tag = song;
    const int first = FirstTimedScrollRow(*m_grid);
    m_grid->SetCurRow(first);
    LbxScrollText->SetAct(first);
    return start();
}

bool FrmSongtext::StartFromSong(const QString& song) {
    AbortFlag = false;
    FromEditor = false;
    m_song = song;
    m_grid->Tag = song;
    TagEngine& engine = TagEngine::Shared();
    QString text;
    if (engine.OpenFile(song) != 0)
        text = LrcFrameText(engine); // the "lrc" frame, wherever it stands among the user frames
    // the text goes through a scratch file as the other hand-overs do
    const QString tmp = AppFile(QStringLiteral("temp/") + QLatin1String(LrcTempName));
    QDir().mkpath(AppFile(QStringLiteral("temp")));
    if (SafeFile::WriteWholeFile(tmp, text.toUtf8())) {
        DataGrid stext;
        DefineSTextColumns(stext);
        ReadSTextFile(stext, tmp, 0);
        QFile::remove(tmp);
        text = BuildSTextLrc(stext);
    }
    if (FillScrollListFromLrc(*m_grid, text) == 0) {
        AbortFlag = true;
        return false;
    }
    m_grid->SetCurRow(LeadRows);
    LbxScrollText->SetAct(LeadRows);
    LoadSkin();
    return start();
}

bool FrmSongtext::PlaySongs(const QStringList& songs) {
    m_queue = songs;
    while (!m_queue.isEmpty())
        if (StartFromSong(m_queue.takeFirst()))
            return true;
    return false;
}

bool FrmSongtext::start() {
    Tag.clear();
    LbxScrollText->SetStatic(false);
    Paused = false;
    setTitle();
    sizeToText();
    if (!isVisible()) {
        const int left = Setting(Ini::SongtextLeft, Ini::Col2).toInt();
        const int top = Setting(Ini::SongtextTop, Ini::Col2).toInt();
        const QRect screen =
            (this->screen() ? this->screen() : QGuiApplication::primaryScreen())->availableGeometry();
        if (!Setting(Ini::SongtextLeft, Ini::Col2).isEmpty() &&
            screen.intersects(QRect(left, top, width(), height())))
            move(left, top);
        else // the first time: in the lower middle of the screen
            move(screen.center().x() - width() / 2, screen.bottom() - height() - screen.height() / 12);
        setWindowFlag(Qt::WindowStaysOnTopHint, SettingOn(Ini::SongtextAlwaysOnTop, Ini::Col1));
        show();
    }
    if (m_mainEscape)
        m_mainEscape->setEnabled(true);
    MediaOwner::Instance().Claim(this);
    if (!Media().Open(m_song)) {
        prompt().Tell(Caption(CapCannotPlay) + m_song + QStringLiteral("\n\n") + Caption(CapCheckFileAndType),
                      Prompt::Icon::Information);
        return false;
    }
    SongTotal = modPlayer::MediaLength(m_song);
    if (m_editor) {
        m_editor->sliderSText_sldLength->setMaximum(SongTotal / 1000);
        m_editor->sliderSText_sldLength->setTickInterval(SongTotal > 300000 ? 15 : 10);
    }
    m_started = false;
    Media().PlayFrom(0);
    TimerSongtext_SyncTimer.start(TickMs);
    setPauseColor(PlayingColor);
    return true;
}

// ---- the timer -------------------------------------------------------------------------------

void FrmSongtext::SyncTick() {
    if (!TimerSongtext_SyncTimer.isActive() && TimerSongtext_SyncTimer.interval() == 0)
        return;
    const qint32 pos = Media().Position();
    if (pos > 0)
        m_started = true;
    if (m_editor && m_editor->isVisible()) {
        m_editor->TimerSText.stop();
        m_editor->TimerSText_SyncTimer.stop();
        if (!Paused) {
            if (pos >= SongTotal - 500) {
                m_editor->sliderSText_sldLength->setValue(0);
                m_editor->lblSText_Time->setText(STextTimeLineLoaded(SongTotal));
            } else {
                m_editor->sliderSText_sldLength->setValue(pos / 1000);
                m_editor->lblSText_Time->setText(STextTimeLine(SongTotal, pos));
            }
        }
    }
    switch (ScrollTickStep(*m_grid, m_grid->CurRow(), pos, SongTotal)) {
    case ScrollStep::Next:
        step(m_grid->CurRow() + 1);
        break;
    case ScrollStep::End:
        // a device may still report 0 before the song has begun
        if (pos == 0 && !m_started && Media().IsOpen() && !Media().AtEnd())
            break;
        endOfSong();
        break;
    case ScrollStep::None:
        break;
    }
}

void FrmSongtext::step(int row) {
    m_grid->LockUpdate(true);
    m_grid->SetCurRow(row);
    m_grid->LockUpdate(false);
    LbxScrollText->SetAct(row);
}

void FrmSongtext::endOfSong() {
    TimerSongtext_SyncTimer.stop();
    TimerSongtext_SyncTimer.setInterval(0);
    SongTotal = 0;
    const QString next = nextMarkedSong ? nextMarkedSong(true) : QString();
    if (!next.isEmpty()) {
        stopPlaying();
        m_editor = nullptr;
        if (StartFromSong(next))
            return;
    }
    stopPlaying();
    if (SettingOn(Ini::SongtextCloseWhenFinished, Ini::Col1)) {
        close();
        return;
    }
    makeStatic();
}

void FrmSongtext::makeStatic() {
    const int first = MakeStaticScrollList(*m_grid, m_grid->CurRow());
    m_grid->SetCurRow(first);
    LbxScrollText->SetStatic(true);
    sizeToText();
    LbxScrollText->SetTopRow(std::max(1, first - 1));
    Tag = QLatin1String(StaticTag);
    setPauseColor(PausedColor);
}

void FrmSongtext::stopPlaying() {
    TimerSongtext_SyncTimer.stop();
    if (MediaOwner::Instance().Owns(this)) {
        Media().Close();
        MediaOwner::Instance().Release(this);
    }
    if (m_editor) {
        m_editor->lblSText_ColorPause->hide();
        m_editor->MMCTag.clear();
        m_editor->sliderSText_sldLength->setValue(0);
    }
}

// ---- commands ------------------------------------------------------------------------------

void FrmSongtext::pause() {
    if (Tag == QLatin1String(StaticTag) || !MediaOwner::Instance().Owns(this))
        return;
    if (!Paused) {
        Media().Pause();
        Paused = true;
        if (m_editor && m_editor->isVisible())
            m_editor->lblSText_ColorPause->show();
        setPauseColor(PausedColor);
    } else {
        Media().Resume();
        Paused = false;
        setPauseColor(PlayingColor);
        if (m_editor && m_editor->isVisible())
            m_editor->lblSText_ColorPause->hide();
        LbxScrollText->update();
    }
}

void FrmSongtext::nextSong() {
    if (nextMarkedSong && !nextMarkedSong(false).isEmpty()) {
        stopPlaying();
        endOfSong();
        return;
    }
    const bool top = windowFlags() & Qt::WindowStaysOnTopHint;
    if (top) {
        setWindowFlag(Qt::WindowStaysOnTopHint, false);
        show();
    }
    prompt().Tell(Caption(CapNoNextSong));
    applyOnTop();
}

void FrmSongtext::editLrc() {
    if (Tag == QLatin1String(StaticTag))
        return;
    stopPlaying();
    FrmSText* editor = showEditor ? showEditor() : nullptr;
    ScrollListToSText(*m_grid, Grids::LbxSText(), FirstTextRow);
    Grids::LbxSText().SetCurRow(1);
    if (editor) {
        editor->lblSText_ActSong->setText(m_song);
        editor->FileName = m_song;
    }
    close();
}

void FrmSongtext::newDesign() {
    const QString folder = ScrollSkinFolder();
    QString path;
    if (chooseSkin)
        path = chooseSkin(folder);
    else
        path = QFileDialog::getOpenFileName(this, Caption(CapOpenSkinTitle), folder,
                                            Caption(CapFilesFilter) + QStringLiteral(" (*.scs)"));
    if (path.isEmpty())
        return;
    const QString name = path.startsWith(folder + QLatin1Char('/')) ? path.mid(folder.size() + 1) : path;
    SetSetting(Ini::ScrollSkin, Ini::Col2, name);
    LoadSkin();
    LbxScrollText->SetAct(m_grid->CurRow());
}

void FrmSongtext::rowClicked(int row) {
    if (Tag == QLatin1String(StaticTag) || m_grid->CellView(row, ColTime).isEmpty())
        return;
    step(row);
    if (Paused)
        pause();
    if (MediaOwner::Instance().Owns(this) && Media().IsOpen())
        Media().PlayFrom(qint32(DataGrid::NumericPrefix(m_grid->CellView(row, ColTime))));
}

// ---- events --------------------------------------------------------------------------------

bool FrmSongtext::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        auto* me = static_cast<QMouseEvent*>(event);
        if (me->button() == Qt::LeftButton) {
            if (watched == lblSongtext_Pause) {
                pause();
                return true;
            }
            if ((watched == this || watched == lblSongtext_Title) && windowHandle()) {
                windowHandle()->startSystemMove();
                return true;
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FrmSongtext::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Escape) {
        close();
        return;
    }
    // the volume keys go to the editor while it is shown, else to the data list; the
    // player keys (Ctrl with E, P, U, X) always to the editor
    const bool editor = m_home && m_home->isVisible();
    const bool volume =
        (e->modifiers() & Qt::KeypadModifier) && (e->key() == Qt::Key_Plus || e->key() == Qt::Key_Minus);
    const bool player =
        (e->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier &&
        (e->key() == Qt::Key_E || e->key() == Qt::Key_P || e->key() == Qt::Key_U || e->key() == Qt::Key_X);
    if (volume || player) {
        HandleKeyEvent(volume && !editor ? QStringLiteral("Input") : QStringLiteral("STextAll"), e);
        return;
    }
    QWidget::keyPressEvent(e);
}

void FrmSongtext::closeEvent(QCloseEvent* e) {
    SetSetting(Ini::SongtextLeft, Ini::Col2, QString::number(x()));
    SetSetting(Ini::SongtextTop, Ini::Col2, QString::number(y()));
    SetSetting(Ini::SongtextWidth, Ini::Col2, QString::number(width()));
    SetSetting(Ini::SongtextHeight, Ini::Col2, QString::number(height()));
    stopPlaying();
    TimerSongtext_SyncTimer.setInterval(0);
    m_editor = nullptr;
    m_queue.clear();
    if (m_mainEscape)
        m_mainEscape->setEnabled(false);
    e->accept();
    emit closed();
}

// ---- wiring --------------------------------------------------------------------------------

namespace {
// The first row with "p" in `markCol`; with `take` its mark goes. 0 when none.
int MarkedRow(DataGrid& g, int markCol, bool take) {
    const int row = g.FindRow(QStringLiteral("p"), markCol);
    if (row > 0 && take)
        g.SetCellText(row, markCol, QString());
    return row;
}
} // namespace

FrmSongtext* FrmSongtext::Install(QWidget* main, FrmSText* editor, QTabWidget* pages) {
    auto* w = new FrmSongtext(main);
    w->m_home = editor;
    editor->shortcuts->songtext = w;
    editor->optSText_PlayInWindow->setEnabled(true);
    editor->startScrollWindow = [w, editor](const QString& song, DataGrid& list) {
        w->StartFromEditor(song, list, editor);
    };
    w->showEditor = [editor, pages] {
        pages->setCurrentWidget(editor);
        return editor;
    };
    w->nextMarkedSong = [w, editor, pages](bool take) -> QString {
        if (!w->m_queue.isEmpty()) // the songs of PlaySongs come first
            return take ? w->m_queue.takeFirst() : w->m_queue.first();
        if (pages->currentWidget() == editor) {
            DataGrid& g = *editor->LbxSongWithLrc->grid();
            const int row = MarkedRow(g, SongLrcCol::Mark, take);
            if (row > 0)
                g.SetCurRow(row);
            return row > 0 ? g.CellText(row, SongLrcCol::Folder) + QLatin1Char('/') +
                                 g.CellText(row, SongLrcCol::FileName)
                           : QString();
        }
        DataGrid& g = Grids::LbxInput();
        const int row = MarkedRow(g, 1, take);
        return row > 0 ? InputRowPath(g, row) : QString();
    };
    // Escape in the main window closes the scrolling window while it is shown
    w->m_mainEscape = new QShortcut(QKeySequence(Qt::Key_Escape), main);
    w->m_mainEscape->setObjectName(QStringLiteral("scSongtextEscape"));
    w->m_mainEscape->setEnabled(false);
    QObject::connect(w->m_mainEscape, &QShortcut::activated, w, &QWidget::close);
    // the skin editor, from the editor's play options
    auto* skinButton = new QPushButton(editor->fraSText_PlayOptions);
    skinButton->setObjectName(QStringLiteral("btnSText_Skin"));
    if (QLayout* l = editor->fraSText_PlayOptions->layout())
        l->addWidget(skinButton);
    QObject::connect(skinButton, &QPushButton::clicked, w, [w, main] {
        auto* settings = main->findChild<FrmScrollSettings*>();
        if (!settings)
            settings = new FrmScrollSettings(main);
        settings->SetSkin(LoadScrollSkin(w->SkinPath()));
        settings->show();
        settings->raise();
        settings->activateWindow();
    });
    SetCaptionsOf(editor);
    return w;
}
