#include "app/FrmSText.h"
#include "app/PrintUi.h"

#include "app/DataGridView.h"
#include "app/MessageBoxPrompt.h"
#include "app/STextShortcuts.h"
#include "app/UiCaptions.h"
#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "platform/PosixFile.h"
#include "player/MediaDevice.h"
#include "player/MediaOwner.h"
#include "tag/TagEngine.h"
#include "text/modSText.h"
#include "text/modSTextFind.h"
#include "text/modSTextSync.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

using namespace SText;

namespace {

constexpr int kShiftSteps[3] = {200, 500, 1000};

template <typename T> T* Named(QWidget* parent, const char* name) {
    auto* w = new T(parent);
    w->setObjectName(QString::fromLatin1(name));
    return w;
}

QToolButton* MediaButton(QWidget* parent, const char* name, QStyle::StandardPixmap icon) {
    auto* b = Named<QToolButton>(parent, name);
    b->setIcon(parent->style()->standardIcon(icon));
    b->setAutoRaise(true);
    b->setIconSize(QSize(22, 22));
    return b;
}

QString FolderOf(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash > 0 ? path.left(slash) : QString();
}

QString BaseNameOf(const QString& path) {
    QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? name.left(dot) : name;
}

} // namespace

FrmSText::FrmSText(QWidget* parent, Prompt* prompt)
    : AreaPage(QStringLiteral("FrmSText"), parent), m_prompt(prompt), m_engine(new TagEngine) {
    DefineSTextColumns(list());
    if (list().Rows() == 0)
        ClearSTextList(list());
    TimerSText.setObjectName(QStringLiteral("TimerSText"));
    TimerSText_SyncTimer.setObjectName(QStringLiteral("TimerSText_SyncTimer"));
    setInterval(TimerSText, 0);
    setInterval(TimerSText_SyncTimer, 0);
    buildUi();
    connectCommands();
    shortcuts = new STextShortcuts(this);
    updateState();

    chooseOpenFile = [this](const QString& start, const QString& filters, const QString& title) {
        return QFileDialog::getOpenFileName(window(), title, start, filters);
    };
    chooseSaveFile = [this](const QString& start, const QString& name, bool* lrc) {
        const QString txt = Caption(CapFilterTextFile) + QStringLiteral(" (*.txt)");
        const QString lrcFilter = Caption(CapLrcFilesFilter) + QStringLiteral(" (*.lrc)");
        QString selected = *lrc ? lrcFilter : txt;
        const QString path = QFileDialog::getSaveFileName(
            window(), UiText(QStringLiteral("btnSText_Save_Txt")), start + u'/' + name,
            txt + QStringLiteral(";;") + lrcFilter, &selected);
        *lrc = selected == lrcFilter;
        return path;
    };
    chooseFolder = [this](const QString& start, const QString& title) {
        return QFileDialog::getExistingDirectory(window(), title, start);
    };
}

FrmSText::~FrmSText() {
    if (MediaOwner::Instance().Owns(this))
        Media().Close();
    delete m_engine;
}

Prompt& FrmSText::prompt() const {
    return m_prompt ? *m_prompt : AppPrompt();
}

DataGrid& FrmSText::list() const {
    return Grids::LbxSText();
}

void FrmSText::setInterval(QTimer& timer, int ms) {
    timer.setInterval(ms);
    if (ms > 0)
        timer.start();
    else
        timer.stop();
}

// ---- the controls ----------------------------------------------------------------------

void FrmSText::buildUi() {
    // the player on top, the text and the side lists beside each other, the commands on
    // the text below them
    body()->addWidget(buildPlayerBar());
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setObjectName(QStringLiteral("splSText"));
    split->setChildrenCollapsible(false);
    LbxSText = new DataGridView(&list(), split);
    LbxSText->setObjectName(QStringLiteral("LbxSText"));
    LbxSText->SetHeaderSort(false);
    LbxSText->table()->viewport()->installEventFilter(this);
    LbxSText->table()->setContextMenuPolicy(Qt::NoContextMenu);
    LbxSText->table()->horizontalHeader()->setStretchLastSection(true); // the words take the room
    LbxSText->SetMinWidthsFromCaptions(1);
    LbxSText->setMinimumSize(420, 240);
    m_side = buildSearchTabs();
    split->addWidget(LbxSText);
    split->addWidget(m_side);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    body()->addWidget(split, 1);
    m_editBox = buildEditBox();
    body()->addWidget(m_editBox);

    // cell editing: the words only, and not while stamping
    LbxSText->SetCellEditing(
        [this](int, int col) { return col == ColText && !chbSText_SetTimeStamp->isChecked(); },
        [this](int, int, QString&) {
            list().Tag = QStringLiteral("edited");
            return true;
        });
    // the translation mark goes in when an editor opens on a cell without it
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        auto* editor = qobject_cast<QLineEdit*>(now);
        if (!editor || !chbSText_Translation->isChecked() || !LbxSText->table()->isAncestorOf(editor))
            return;
        const QString marked = WithTranslationMark(editor->text());
        if (marked != editor->text()) {
            editor->setText(marked);
            editor->setCursorPosition(int(marked.size()));
        }
        editor->deselect(); // the selection is dropped, the caret at the end
    });
}

QWidget* FrmSText::buildPlayerBar() {
    auto* box = Named<QGroupBox>(this, "fraSText_Player");
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setVerticalSpacing(2);

    MMCSText = Named<QWidget>(box, "MMCSText");
    auto* bar = new QHBoxLayout(MMCSText);
    bar->setContentsMargins(0, 0, 0, 0);
    bar->setSpacing(0);
    MMCSText_Play = MediaButton(MMCSText, "MMCSText_Play", QStyle::SP_MediaPlay);
    MMCSText_Pause = MediaButton(MMCSText, "MMCSText_Pause", QStyle::SP_MediaPause);
    MMCSText_Stop = MediaButton(MMCSText, "MMCSText_Stop", QStyle::SP_MediaStop);
    MMCSText_Eject = MediaButton(MMCSText, "MMCSText_Eject", QStyle::SP_DialogOpenButton);
    for (QToolButton* b : {MMCSText_Play, MMCSText_Pause, MMCSText_Stop, MMCSText_Eject})
        bar->addWidget(b);

    lblSText_ColorPause = Named<QLabel>(box, "lblSText_ColorPause");
    lblSText_ColorPause->setStyleSheet(
        QStringLiteral("QLabel { background: #e6a000; color: black; padding: 1px 6px; }"));
    lblSText_ColorPause->hide();
    lblSText_Time = Named<QLabel>(box, "lblSText_Time");
    lblSText_Time->setText(STextTimeLineIdle());
    QFont mono = lblSText_Time->font();
    mono.setFamily(QStringLiteral("DejaVu Sans Mono"));
    lblSText_Time->setFont(mono);
    sliderSText_sldLength = Named<QSlider>(box, "sliderSText_sldLength");
    sliderSText_sldLength->setOrientation(Qt::Horizontal);
    sliderSText_sldLength->setRange(0, 0);
    sliderSText_sldLength->setTickPosition(QSlider::TicksBelow);
    sliderSText_sldLength->setTickInterval(10);
    sliderSText_Volume = Named<QSlider>(box, "sliderSText_Volume");
    sliderSText_Volume->setOrientation(Qt::Horizontal);
    sliderSText_Volume->setRange(0, 100);
    sliderSText_Volume->setFixedWidth(90);
    lblSText_Volume = Named<QLabel>(box, "lblSText_Volume");
    lblSText_Volume->setMinimumWidth(
        lblSText_Volume->fontMetrics().horizontalAdvance(QStringLiteral("100%")) + 4);

    auto* top = new QHBoxLayout;
    top->addWidget(MMCSText);
    top->addSpacing(6);
    top->addWidget(lblSText_Time);
    top->addWidget(lblSText_ColorPause);
    top->addStretch(1);
    top->addWidget(Named<QPushButton>(box, "btnSText_StretchLbxSText"));
    top->addSpacing(6);
    top->addWidget(sliderSText_Volume);
    top->addWidget(lblSText_Volume);
    grid->addLayout(top, 0, 0, 1, 4);
    grid->addWidget(sliderSText_sldLength, 1, 0, 1, 4);

    chbSText_SetTimeStamp = Named<QCheckBox>(box, "chbSText_SetTimeStamp");
    chbSText_PlaySynchonized = Named<QCheckBox>(box, "chbSText_PlaySynchonized");
    chbSText_PlayWithScrollList = Named<QCheckBox>(box, "chbSText_PlayWithScrollList");
    chbSText_SetTimeStamp->setSizePolicy(QSizePolicy::Maximum,
                                         QSizePolicy::Fixed); // its colour hugs the text
    chbSText_SyncMode = Named<QCheckBox>(box, "chbSText_SyncMode");
    chbSText_SyncMode->setAttribute(Qt::WA_TransparentForMouseEvents); // an indicator only
    chbSText_SyncMode->setFocusPolicy(Qt::NoFocus);
    grid->addWidget(chbSText_SetTimeStamp, 2, 0);
    grid->addWidget(chbSText_PlaySynchonized, 2, 1);
    grid->addWidget(chbSText_PlayWithScrollList, 2, 2);
    grid->addWidget(chbSText_SyncMode, 2, 3);

    lblSText_ActSong = Named<QLabel>(box, "lblSText_ActSong");
    lblSText_ActText = Named<QLabel>(box, "lblSText_ActText");
    for (QLabel* l : {lblSText_ActSong, lblSText_ActText}) {
        l->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    lblSText_ActSong->setStyleSheet(QStringLiteral("QLabel { font-weight: bold; }"));
    grid->addWidget(lblSText_ActSong, 3, 0, 1, 4);
    grid->addWidget(lblSText_ActText, 4, 0, 1, 4);
    return box;
}

QWidget* FrmSText::buildEditBox() {
    auto* holder = new QWidget(this);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);

    auto* file = Named<QGroupBox>(holder, "fraSText_File");
    auto* fl = new QGridLayout(file);
    const char* const fileButtons[] = {"btnSText_OpenTxtLrC", "btnSText_SetLinkToSong",
                                       "btnSText_Save_Txt",   "btnSText_Save_InSong",
                                       "btnSText_SaveBoth",   "btnSText_ClearText"};
    for (int i = 0; i < 6; ++i)
        fl->addWidget(Named<QPushButton>(file, fileButtons[i]), i / 2, i % 2);
    fl->addWidget(Named<QPushButton>(file, "btnSText_PrintText"), 3, 0);
    fl->addWidget(Named<QCheckBox>(file, "chbSText_PrintWithTime"), 3, 1);
    row->addWidget(file);

    auto* edit = Named<QGroupBox>(holder, "fraSText_Edit");
    auto* el = new QGridLayout(edit);
    const char* const editButtons[] = {
        "btnSText_EraseTimestampSingle", "btnSText_EraseTimestamps", "btnSText_RemoveTimeInText",
        "btnSText_RemoveSquares",        "btnSText_Remove_Rf",       "btnSText_Translation"};
    for (int i = 0; i < 6; ++i)
        el->addWidget(Named<QPushButton>(edit, editButtons[i]), i / 2, i % 2);
    chbSText_Translation = Named<QCheckBox>(edit, "chbSText_Translation");
    el->addWidget(chbSText_Translation, 3, 1);
    row->addWidget(edit);

    auto* shift = Named<QGroupBox>(holder, "fraSText_Shift");
    auto* sl = new QGridLayout(shift);
    for (int i = 0; i < 4; ++i) {
        btnSText_Shiftp[i] = new QPushButton(shift);
        btnSText_Shiftp[i]->setObjectName(QStringLiteral("btnSText_Shiftp(%1)").arg(i));
        btnSText_Shiftm[i] = new QPushButton(shift);
        btnSText_Shiftm[i]->setObjectName(QStringLiteral("btnSText_Shiftm(%1)").arg(i));
        sl->addWidget(btnSText_Shiftp[i], 0, i);
        sl->addWidget(btnSText_Shiftm[i], 1, i);
    }
    txtSText_TimeShiftP = Named<QLineEdit>(shift, "txtSText_TimeShiftP");
    txtSText_TimeShiftM = Named<QLineEdit>(shift, "txtSText_TimeShiftM");
    for (QLineEdit* e : {txtSText_TimeShiftP, txtSText_TimeShiftM}) {
        e->setFixedWidth(e->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 12);
        e->setAlignment(Qt::AlignRight);
        e->setMaxLength(6);
    }
    sl->addWidget(txtSText_TimeShiftP, 0, 4);
    sl->addWidget(txtSText_TimeShiftM, 1, 4);
    chbSText_ShiftFromActRow = Named<QCheckBox>(shift, "chbSText_ShiftFromActRow");
    sl->addWidget(chbSText_ShiftFromActRow, 2, 0, 1, 5);
    row->addWidget(shift);
    row->addStretch(1);
    return holder;
}

QWidget* FrmSText::buildSearchTabs() {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    TabSText_Sub = Named<QTabWidget>(side, "TabSText_Sub");

    // songs that carry LRC
    auto* songs = new QWidget;
    auto* ls = new QGridLayout(songs);
    ls->addWidget(Named<QPushButton>(songs, "btnSText_FindSongWithLrc"), 0, 0);
    chbSText_SubfolderSong = Named<QCheckBox>(songs, "chbSText_SubfolderSong");
    chbSText_AddSongLrc = Named<QCheckBox>(songs, "chbSText_AddSongLrc");
    ls->addWidget(chbSText_SubfolderSong, 0, 1);
    ls->addWidget(chbSText_AddSongLrc, 0, 2);
    auto* songGrid = new DataGrid(this);
    DefineSongWithLrcColumns(*songGrid);
    LbxSongWithLrc = new DataGridView(songGrid, songs);
    LbxSongWithLrc->setObjectName(QStringLiteral("LbxSongWithLrc"));
    ls->addWidget(LbxSongWithLrc, 1, 0, 1, 3);
    ls->addWidget(Named<QPushButton>(songs, "btnSText_RemoveLrcFromSong"), 2, 0);
    ls->setColumnStretch(2, 1);
    TabSText_Sub->addTab(songs, QString());

    // text and LRC files
    auto* files = new QWidget;
    auto* lf = new QGridLayout(files);
    optSText_Txt = Named<QRadioButton>(files, "optSText_Txt");
    optSText_Lrc = Named<QRadioButton>(files, "optSText_Lrc");
    optSText_TxtLrc = Named<QRadioButton>(files, "optSText_TxtLrc");
    auto* kinds = new QHBoxLayout;
    for (QRadioButton* o : {optSText_Txt, optSText_Lrc, optSText_TxtLrc})
        kinds->addWidget(o);
    kinds->addStretch(1);
    optSText_TxtLrc->setChecked(true);
    lf->addLayout(kinds, 0, 0, 1, 3);
    lf->addWidget(Named<QPushButton>(files, "btnSText_FindTxtLrc"), 1, 0);
    chbSText_SubfolderTxtLrc = Named<QCheckBox>(files, "chbSText_SubfolderTxtLrc");
    chbSText_AddTxTLrc = Named<QCheckBox>(files, "chbSText_AddTxTLrc");
    lf->addWidget(chbSText_SubfolderTxtLrc, 1, 1);
    lf->addWidget(chbSText_AddTxTLrc, 1, 2);
    auto* fileGrid = new DataGrid(this);
    DefineTxtLrcColumns(*fileGrid, true);
    LbxTxtLrc = new DataGridView(fileGrid, files);
    LbxTxtLrc->setObjectName(QStringLiteral("LbxTxtLrc"));
    lf->addWidget(LbxTxtLrc, 2, 0, 1, 3);
    auto* fileButtons = new QHBoxLayout;
    for (const char* name : {"btnSText_TxtToList", "btnSText_Copy", "btnSText_Move", "btnSText_DeleteTxtLrc"})
        fileButtons->addWidget(Named<QPushButton>(files, name));
    fileButtons->addStretch(1);
    lf->addLayout(fileButtons, 3, 0, 1, 3);
    lf->setColumnStretch(2, 1);
    TabSText_Sub->addTab(files, QString());

    // options: what a load goes on with
    auto* options = new QWidget;
    auto* lo = new QVBoxLayout(options);
    fraSText_PlayOptions = Named<QGroupBox>(options, "fraSText_PlayOptions");
    auto* po = new QVBoxLayout(fraSText_PlayOptions);
    chbSText_PlayLrc2 = Named<QCheckBox>(fraSText_PlayOptions, "chbSText_PlayLrc2");
    optSText_PlayInListbox = Named<QRadioButton>(fraSText_PlayOptions, "optSText_PlayInListbox");
    optSText_PlayInWindow = Named<QRadioButton>(fraSText_PlayOptions, "optSText_PlayInWindow");
    optSText_PlayInListbox->setChecked(true);
    for (QWidget* w :
         std::initializer_list<QWidget*>{chbSText_PlayLrc2, optSText_PlayInListbox, optSText_PlayInWindow})
        po->addWidget(w);
    lo->addWidget(fraSText_PlayOptions);
    lo->addStretch(1);
    TabSText_Sub->addTab(options, QString());

    layout->addWidget(TabSText_Sub, 1);
    layout->addWidget(Named<QPushButton>(side, "btnSText_LrcToList"), 0, Qt::AlignLeft);

    // The scrolling window's switch is enabled by updateState once a window is wired.
    for (QAbstractButton* b :
         std::initializer_list<QAbstractButton*>{chbSText_PlayWithScrollList, optSText_PlayInWindow})
        b->setEnabled(false);

    LbxSongWithLrc->table()->setContextMenuPolicy(Qt::CustomContextMenu);
    LbxTxtLrc->table()->setContextMenuPolicy(Qt::CustomContextMenu);
    return side;
}

void FrmSText::connectCommands() {
    auto click = [this](const char* name, auto fn) {
        if (auto* b = findChild<QPushButton*>(QString::fromLatin1(name)))
            connect(b, &QPushButton::clicked, this, fn);
    };
    click("btnSText_OpenTxtLrC", [this] { cmdOpen(); });
    click("btnSText_TxtToList", [this] { cmdLoadSelected(true); });
    click("btnSText_LrcToList", [this] { cmdLoadSelected(false); });
    click("btnSText_Save_Txt", [this] {
        stop();
        cmdSaveTxt();
    });
    click("btnSText_Save_InSong", [this] {
        stop();
        cmdSaveInSong();
    });
    click("btnSText_SaveBoth", [this] { cmdSaveBoth(); });
    click("btnSText_RemoveLrcFromSong", [this] { cmdRemoveLrc(); });
    click("btnSText_SetLinkToSong", [this] { cmdLinkToSong(); });
    click("btnSText_EraseTimestamps", [this] { cmdEraseAll(); });
    click("btnSText_EraseTimestampSingle", [this] {
        if (list().CurRow() >= 1)
            ClearRowTime(list(), list().CurRow());
        LbxSText->table()->setFocus();
    });
    click("btnSText_RemoveSquares", [this] { RemoveLineBreaks(list()); });
    click("btnSText_RemoveTimeInText", [this] { RemoveTimeInText(list()); });
    click("btnSText_Remove_Rf", [this] { RemoveRefrainMarks(list()); });
    click("btnSText_ClearText", [this] { cmdClear(); });
    click("btnSText_PrintText", [this] {
        const bool withTime = findChild<QCheckBox*>(QStringLiteral("chbSText_PrintWithTime"))->isChecked();
        const QString text = STextPrintText(list(), withTime);
        if (text.isEmpty())
            prompt().Tell(Caption(CapTextBoxEmpty), Prompt::Icon::Information);
        else
            PrintTextCommand(prompt(), QString(), text);
    });
    click("btnSText_Translation", [this] { cmdTranslation(); });
    click("btnSText_FindSongWithLrc", [this] { findSongsWithLrc(); });
    click("btnSText_FindTxtLrc", [this] { findTxtLrc(); });
    click("btnSText_Copy", [this] { cmdCopyMove(false); });
    click("btnSText_Move", [this] { cmdCopyMove(true); });
    click("btnSText_DeleteTxtLrc", [this] { cmdDelete(false); });
    click("btnSText_StretchLbxSText", [this] { stretchList(); });
    for (int i = 0; i < 4; ++i) {
        connect(btnSText_Shiftp[i], &QPushButton::clicked, this, [this, i] {
            cmdShift(i < 3 ? kShiftSteps[i] : qint32(DataGrid::NumericPrefix(txtSText_TimeShiftP->text())));
        });
        connect(btnSText_Shiftm[i], &QPushButton::clicked, this, [this, i] {
            cmdShift(
                -(i < 3 ? kShiftSteps[i] : qint32(DataGrid::NumericPrefix(txtSText_TimeShiftM->text()))));
        });
    }

    connect(MMCSText_Play, &QToolButton::clicked, this, [this] { play(); });
    connect(MMCSText_Pause, &QToolButton::clicked, this, [this] { pause(); });
    connect(MMCSText_Stop, &QToolButton::clicked, this, [this] { stop(); });
    connect(MMCSText_Eject, &QToolButton::clicked, this, [this] { eject(); });
    connect(chbSText_SetTimeStamp, &QCheckBox::clicked, this, [this](bool on) { setTimeStampToggled(on); });
    connect(chbSText_PlaySynchonized, &QCheckBox::toggled, this, [this](bool on) {
        if (!on) {
            chbSText_PlayWithScrollList->setChecked(false);
            chbSText_PlayWithScrollList->setEnabled(false);
        }
    });
    connect(chbSText_PlayWithScrollList, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            chbSText_PlaySynchonized->setChecked(true);
    });
    connect(sliderSText_sldLength, &QSlider::sliderPressed, this, [this] { sliderPressed(); });
    connect(sliderSText_sldLength, &QSlider::sliderReleased, this, [this] { sliderReleased(); });
    connect(sliderSText_Volume, &QSlider::valueChanged, this, [this](int v) { volumeChanged(v); });
    connect(&TimerSText, &QTimer::timeout, this, [this] { timeTick(); });
    connect(&TimerSText_SyncTimer, &QTimer::timeout, this, [this] { syncTick(); });
    connect(LbxSText, &DataGridView::currentRowChanged, this, [this](int) { rowChanged(); });
    connect(&list(), &DataGrid::rowsReset, this, [this] {
        if (!m_quiet)
            RowsChanged = true;
    });
    connect(&MediaOwner::Instance(), &MediaOwner::taken, this, [this](QObject* owner) {
        if (owner != this)
            deviceTaken();
    });
    connect(LbxSongWithLrc->table(), &QWidget::customContextMenuRequested, this, [this](const QPoint& p) {
        showTxtLrcMenu(true, LbxSongWithLrc->table()->viewport()->mapToGlobal(p));
    });
    connect(LbxTxtLrc->table(), &QWidget::customContextMenuRequested, this, [this](const QPoint& p) {
        showTxtLrcMenu(false, LbxTxtLrc->table()->viewport()->mapToGlobal(p));
    });
    LbxSongWithLrc->table()->viewport()->installEventFilter(this);
    connect(optSText_TxtLrc, &QRadioButton::toggled, this,
            [this](bool on) { LbxTxtLrc->grid()->SetColumnVisible(TxtLrcCol::Kind, on); });
    // the boxes of the settings rows are kept as the user sets them
    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{
             chbSText_SubfolderSong, chbSText_SubfolderTxtLrc, chbSText_PlayLrc2, optSText_Txt, optSText_Lrc,
             optSText_TxtLrc})
        connect(b, &QAbstractButton::clicked, this, [this] { StoreSettings(); });
}

bool FrmSText::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        auto* me = static_cast<QMouseEvent*>(event);
        if (watched == LbxSText->table()->viewport()) {
            const QModelIndex idx = LbxSText->table()->indexAt(me->position().toPoint());
            if (idx.isValid()) {
                const bool ctrlJump = me->button() == Qt::LeftButton &&
                                      (me->modifiers() & Qt::ControlModifier) &&
                                      chbSText_PlaySynchonized->isChecked();
                rowMouseDown(idx.row() + 1, idx.column() + 1, me->button(), me->modifiers());
                // the jump leaves the selection as it is; the right button has done its
                // work (the menu) once the press is through
                return ctrlJump || me->button() == Qt::RightButton;
            }
        } else if (watched == LbxSongWithLrc->table()->viewport() && me->button() == Qt::LeftButton) {
            // a click in the first column marks a song for the sequence, or takes the mark
            const QModelIndex idx = LbxSongWithLrc->table()->indexAt(me->position().toPoint());
            if (idx.isValid() && idx.column() + 1 == SongLrcCol::Mark) {
                DataGrid& g = *LbxSongWithLrc->grid();
                const int r = idx.row() + 1;
                g.SetCellText(r, SongLrcCol::Mark,
                              g.CellText(r, SongLrcCol::Mark).isEmpty() ? QStringLiteral("p") : QString());
            }
        }
    }
    return AreaPage::eventFilter(watched, event);
}

void FrmSText::keyPressEvent(QKeyEvent* event) {
    // the keys of the whole editor; the lists hand theirs on to here after their own table
    if (HandleKeyEvent(QStringLiteral("STextAll"), event)) {
        event->accept();
        return;
    }
    AreaPage::keyPressEvent(event);
}

void FrmSText::changeEvent(QEvent* event) {
    AreaPage::changeEvent(event);
    if (event->type() == QEvent::WindowTitleChange)
        SetGridHeaders();
}

void FrmSText::SetGridHeaders() {
    DataGrid& g = list();
    g.SetColumnCaption(ColRefrain, Caption(CapRefrainHeader));
    g.SetColumnCaption(ColText, Caption(CapTextHeader));
    CaptionFindLists(*LbxSongWithLrc->grid(), *LbxTxtLrc->grid());
    LbxSText->SetMinWidthsFromCaptions(1);
    if (lblSText_ActText->property("fromSong").toBool())
        lblSText_ActText->setText(Caption(CapTextWithoutFile));
}

void FrmSText::ApplySettings() {
    chbSText_SubfolderSong->setChecked(SettingOn(Ini::STextSubfolderSong, Ini::Col1));
    chbSText_SubfolderTxtLrc->setChecked(SettingOn(Ini::STextSubfolderTxtLrc, Ini::Col1));
    chbSText_PlayLrc2->setChecked(SettingOn(Ini::STextOption, Ini::Col1));
    const QString source = Setting(Ini::STextSource, Ini::Col1);
    (source == u"1" ? optSText_Lrc : source == u"2" ? optSText_Txt : optSText_TxtLrc)->setChecked(true);
    LbxTxtLrc->grid()->SetColumnVisible(TxtLrcCol::Kind, optSText_TxtLrc->isChecked());
    const int volume = Media().Volume();
    sliderSText_Volume->setValue(volume);
    lblSText_Volume->setText(QString::number(volume) + u'%');
    SetGridHeaders();
}

void FrmSText::StoreSettings() {
    SetSettingOn(Ini::STextSubfolderSong, Ini::Col1, chbSText_SubfolderSong->isChecked());
    SetSettingOn(Ini::STextSubfolderTxtLrc, Ini::Col1, chbSText_SubfolderTxtLrc->isChecked());
    SetSettingOn(Ini::STextOption, Ini::Col1, chbSText_PlayLrc2->isChecked());
    SetSetting(Ini::STextSource, Ini::Col1,
               optSText_Lrc->isChecked()   ? QStringLiteral("1")
               : optSText_Txt->isChecked() ? QStringLiteral("2")
                                           : QStringLiteral("3"));
}

// ---- rows in sight -----------------------------------------------------------------------

int FrmSText::visibleRows() const {
    QTableView* t = LbxSText->table();
    const int h = t->verticalHeader()->defaultSectionSize();
    return h > 0 ? std::max(1, t->viewport()->height() / h) : 20;
}

int FrmSText::topRow() const {
    const int r = LbxSText->table()->rowAt(0);
    return r < 0 ? 1 : r + 1;
}

void FrmSText::setTopRow(int row) {
    QTableView* t = LbxSText->table();
    if (row >= 1 && row <= list().Rows())
        t->scrollTo(t->model()->index(row - 1, 0), QAbstractItemView::PositionAtTop);
}

// ---- loading -------------------------------------------------------------------------------

void FrmSText::afterLoad(bool anyTimed, const QString& song, bool songMissing) {
    RowsChanged = false;
    if (anyTimed) {
        chbSText_PlaySynchonized->setChecked(false);
        chbSText_PlayWithScrollList->setChecked(false);
        chbSText_PlaySynchonized->setEnabled(true);
    } else {
        chbSText_PlaySynchonized->setChecked(false);
    }
    if (!song.isEmpty()) {
        if (songMissing) {
            sliderSText_sldLength->setMaximum(0);
            lblSText_Time->setText(STextTimeLineIdle());
        } else {
            giveSongToPlayer(song);
        }
    }
    setTopRow(1);
    updateState();
}

bool FrmSText::LoadTextFile(const QString& path) {
    stop();
    const STextReadResult r = ReadSTextFile(list(), path, visibleRows());
    if (!r.ok)
        return false;
    lblSText_ActSong->clear();
    lblSText_ActText->setText(path);
    lblSText_ActText->setProperty("fromSong", false);
    afterLoad(r.anyTimed, r.song, r.songMissing);
    return true;
}

bool FrmSText::OpenSyncTemp() {
    const QString path = AppFile(QStringLiteral("temp/synctemp.txt"));
    if (!LoadTextFile(path))
        return false;
    list().Tag.clear();
    lblSText_ActText->setText(Caption(CapTextWithoutFile));
    lblSText_ActText->setProperty("fromSong", true);
    ::unlink(PosixFile::Native(path).constData());
    return true;
}

void FrmSText::cmdOpen() {
    stop();
    QString start = Setting(Ini::LastSTextTxtLrcFolder, Ini::Col2);
    if (start.isEmpty())
        start = Setting(Ini::TreeFolder, Ini::Col2);
    const QString filters = Caption(CapTxtFilesFilter) + QStringLiteral(" (*.txt *.TXT);;") +
                            Caption(CapLrcFilesFilter) + QStringLiteral(" (*.lrc *.LRC)");
    const QString path = chooseOpenFile(start, filters, Caption(CapChooseTextFileTitle));
    if (path.isEmpty())
        return;
    SetSetting(Ini::LastSTextTxtLrcFolder, Ini::Col2, FolderOf(path));
    if (!LoadTextFile(path))
        prompt().Tell(Caption(CapReadFailed) + QStringLiteral("\n") + path, Prompt::Icon::Warning);
}

QString FrmSText::selectedFilePath(bool* fromSongs) {
    const bool songs = TabSText_Sub->currentIndex() == 0;
    *fromSongs = songs;
    DataGrid& g = songs ? *LbxSongWithLrc->grid() : *LbxTxtLrc->grid();
    const int r = g.CurRow();
    if (r < 1 || r > g.Rows())
        return QString();
    return songs ? g.CellText(r, SongLrcCol::Folder) + u'/' + g.CellText(r, SongLrcCol::FileName)
                 : g.CellText(r, TxtLrcCol::Folder) + u'/' + g.CellText(r, TxtLrcCol::FileName);
}

void FrmSText::cmdLoadSelected(bool textOnly) {
    bool fromSongs = false;
    QString path = selectedFilePath(&fromSongs);
    if (textOnly && fromSongs) { // "Into the list" reads the file list in any case
        DataGrid& g = *LbxTxtLrc->grid();
        const int r = g.CurRow();
        path =
            r >= 1 ? g.CellText(r, TxtLrcCol::Folder) + u'/' + g.CellText(r, TxtLrcCol::FileName) : QString();
        fromSongs = false;
    }
    if (path.isEmpty()) {
        prompt().Tell(Caption(CapNoRowSelected));
        return;
    }
    if (!PosixFile::ExistsFollowed(path))
        return;
    setTopRow(1);
    RowOffset = 0;
    bool loaded = false;
    if (fromSongs) {
        if (!LoadSongText(path))
            return;
        loaded = true;
    } else {
        loaded = LoadTextFile(path);
    }
    if (!loaded || textOnly)
        return;
    // a load from the search lists goes on as the play options say
    if (chbSText_PlayLrc2->isChecked() && !chbSText_SetTimeStamp->isChecked())
        play();
    if (fromSongs) {
        DataGrid& g = *LbxSongWithLrc->grid();
        if (g.CurRow() >= 1)
            g.SetCellText(g.CurRow(), SongLrcCol::Mark, QString());
        if (chbSText_PlayLrc2->isChecked())
            g.SetCurRow(0);
    }
    if (!chbSText_PlayLrc2->isChecked()) {
        m_quiet = true;
        list().SetCurRow(1);
        m_quiet = false;
        FileName.clear();
    }
}

bool FrmSText::LoadSongText(const QString& song) {
    stop();
    STextReadResult r;
    switch (ReadSTextFromSong(list(), *m_engine, song, visibleRows(), &r)) {
    case SongLrc::NotMp3:
        prompt().Tell(Caption(CapOnlyMp3Lrc));
        AbortFlag = true;
        return false;
    case SongLrc::NoLrc:
        prompt().Tell(Caption(CapNoLrcText));
        return false;
    case SongLrc::Ok:
        break;
    }
    lblSText_ActText->setText(Caption(CapTextWithoutFile));
    lblSText_ActText->setProperty("fromSong", true);
    afterLoad(r.anyTimed, QString(), false);
    giveSongToPlayer(song);
    updateState();
    return true;
}

// ---- saving ----------------------------------------------------------------------------------

int FrmSText::cmdSaveTxt() {
    const QString act =
        lblSText_ActText->property("fromSong").toBool() ? QString() : lblSText_ActText->text();
    const QString start = act.startsWith(u'/') ? FolderOf(act) : Setting(Ini::PathSText3, Ini::Col2);
    const QString name = act.startsWith(u'/') ? BaseNameOf(act) : QString();
    bool lrc = false;
    for (int row = 1; row <= list().Rows() && !lrc; ++row)
        lrc = !list().CellView(row, ColMmss).isEmpty();
    QString path = chooseSaveFile(start, name, &lrc);
    if (path.isEmpty())
        return 0;
    path = STextFileName(path, lrc);
    QString error;
    if (!WriteSTextFile(list(), path, lrc, &error)) {
        prompt().Tell(Caption(CapFileSaveFailed) + QStringLiteral("\n") + error, Prompt::Icon::Critical);
        return 2;
    }
    SetSetting(Ini::PathSText3, Ini::Col2, FolderOf(path));
    lblSText_ActText->setText(path);
    lblSText_ActText->setProperty("fromSong", false);
    if (!m_quietSave)
        prompt().Tell(Caption(CapFileSaved));
    return 1;
}

int FrmSText::cmdSaveInSong() {
    if (!HasStampForSong(list())) {
        prompt().Tell(Caption(CapNoLrcText));
        return 0;
    }
    QString song = lblSText_ActSong->text();
    if (song.isEmpty()) {
        song = chooseOpenFile(Setting(Ini::PathSText3, Ini::Col2),
                              Caption(CapAudioFilesFilter) + QStringLiteral(" (*.mp3 *.MP3)"),
                              Caption(CapChooseSongTitle));
        if (song.isEmpty()) {
            (TabSText_Sub->currentIndex() == 0 ? LbxSongWithLrc : LbxTxtLrc)->table()->setFocus();
            return 2;
        }
    }
    QString error;
    switch (WriteSTextInSong(list(), *m_engine, song, &error)) {
    case SongWrite::NoStamp:
        prompt().Tell(Caption(CapNoLrcText));
        return 0;
    case SongWrite::NotMp3:
        prompt().Tell(Caption(CapOnlyMp3Lrc));
        AbortFlag = true;
        return 0;
    case SongWrite::Failed:
        prompt().TellUntitled(error, Prompt::Icon::Critical);
        return 0;
    case SongWrite::Ok:
        break;
    }
    if (!m_quietSave)
        prompt().Tell(Caption(CapLrcSavedInSong));
    return 1;
}

void FrmSText::cmdSaveBoth() {
    stop();
    m_quietSave = true;
    const int file = cmdSaveTxt();
    const int song = file == 1 ? cmdSaveInSong() : 0;
    m_quietSave = false;
    list().Tag.clear();
    if (file == 1 && song == 1)
        prompt().Tell(Caption(CapFileSaved) + QStringLiteral("\n") + Caption(CapLrcSavedInSong));
}

void FrmSText::cmdRemoveLrc() {
    DataGrid& g = *LbxSongWithLrc->grid();
    const int r = g.CurRow();
    if (r < 1 || r > g.Rows()) {
        prompt().Tell(Caption(CapNoRowSelected));
        return;
    }
    if (!RemoveSongText(g.CellText(r, SongLrcCol::Folder) + u'/' + g.CellText(r, SongLrcCol::FileName)))
        return;
    g.DeleteRow(r);
    g.SetFooterText(SongLrcCol::FileName, QString::number(g.Rows()));
}

bool FrmSText::RemoveSongText(const QString& song) {
    if (!prompt().AskYesNo(Caption(CapRemoveLrcQuestion), false))
        return false;
    if (MediaOwner::Instance().Owns(this) && FileName == song)
        stop(); // the song is written: not while it plays
    QString error;
    const SongRemove done = RemoveLrcFromSong(*m_engine, song, &error);
    if (done == SongRemove::Failed || done == SongRemove::NotMp3) {
        prompt().TellUntitled(error.isEmpty() ? Caption(CapOnlyMp3Lrc) : error, Prompt::Icon::Critical);
        return false;
    }
    if (lblSText_ActSong->text() == song)
        lblSText_ActSong->clear();
    if (lblSText_ActText->property("fromSong").toBool())
        lblSText_ActText->clear();
    prompt().Tell(Caption(CapLrcRemoved));
    updateState();
    return true;
}

void FrmSText::cmdLinkToSong() {
    QString start = Setting(Ini::PathSText2, Ini::Col2);
    if (!lblSText_ActSong->text().isEmpty())
        start = lblSText_ActSong->text();
    const QString song = chooseOpenFile(
        start, Caption(CapAudioFilesFilter) + QStringLiteral(" (*.mp3 *.MP3 *.flac *.wav *.ogg *.mpc *.aac)"),
        Caption(CapLinkSongTitle));
    if (song.isEmpty())
        return;
    SetSetting(Ini::PathSText2, Ini::Col2, FolderOf(song));
    if (!list().CellView(1, ColText).isEmpty()) {
        m_quiet = true;
        list().SetCurRow(1);
        InsertSTextRow(list(), true);
        m_quiet = false;
    }
    list().SetCellText(1, ColText, song);
    list().Tag = QStringLiteral("edited");
    giveSongToPlayer(song);
    updateState();
}

// ---- the commands on the rows ----------------------------------------------------------------

void FrmSText::cmdEraseAll() {
    if (!prompt().AskYesNo(Caption(CapEraseTimestampsQuestion)))
        return;
    EraseAllTimestamps(list());
    RowOffset = 0;
    setTopRow(1);
    updateState();
}

void FrmSText::cmdClear() {
    if (!prompt().AskYesNo(Caption(CapClearTextQuestion)))
        return;
    stop();
    ClearSTextList(list());
    lblSText_ActSong->clear();
    lblSText_ActText->clear();
    lblSText_ActText->setProperty("fromSong", false);
    RowsChanged = false;
    updateState();
}

void FrmSText::cmdShift(qint32 delta) {
    ShiftSTextRows(list(), delta, chbSText_ShiftFromActRow->isChecked());
    if (!chbSText_PlaySynchonized->isEnabled())
        updateState();
    LbxSText->table()->setFocus();
}

void FrmSText::cmdTranslation() {
    if (!HasTranslation(list())) {
        prompt().Tell(Caption(CapNoTranslationMark));
        return;
    }
    if (prompt().AskYesNo(Caption(CapTranslationQuestion)))
        ApplyTranslation(list());
}

// ---- the wide list --------------------------------------------------------------------------

void FrmSText::stretchList() {
    m_stretched = !m_stretched;
    m_side->setVisible(!m_stretched);
    m_editBox->setVisible(!m_stretched);
    LbxSText->table()->setFocus();
}
