#include "app/FrmTexte.h"

#include "app/DataGridModel.h"
#include "app/DataGridView.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "platform/Shell.h"
#include "tag/TagEngine.h"
#include "text/TexteColumns.h"
#include "text/modTexte.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QString AudioFilter() {
    return Caption(CapAudioFilesFilter) +
           QStringLiteral(" (*.mp3 *.flac *.wav *.ogg *.mpp *.aac *.MP3 *.FLAC *.WAV *.OGG *.MPP *.AAC)");
}

} // namespace

FrmTexte::FrmTexte(QWidget* parent, Prompt* prompt)
    : AreaPage(QStringLiteral("FrmTexte"), parent), m_prompt(prompt), m_txt(new DataGrid(this)),
      m_lyrics(new DataGrid(this)) {
    DefineTxtColumns(*m_txt);
    DefineLyricsColumns(*m_lyrics);
    buildUi();
    connectCommands();

    chooseFolder = [this](const QString& start) {
        return QFileDialog::getExistingDirectory(window(), Caption(CapChooseFolderTitle), start);
    };
    chooseSongFile = [this](const QString& start) {
        return QFileDialog::getOpenFileName(window(), Caption(CapChooseSongTitle), start, AudioFilter());
    };
    chooseTextSave = [this](const QString& start) {
        QFileDialog d(window(), Caption(CapSaveTextTitle), start);
        d.setAcceptMode(QFileDialog::AcceptSave);
        d.setNameFilter(Caption(CapTextFilesFilter) + QStringLiteral(" (.txt) (*.txt)"));
        d.setDefaultSuffix(QStringLiteral("txt"));
        if (d.exec() != QDialog::Accepted || d.selectedFiles().isEmpty())
            return QString();
        return d.selectedFiles().constFirst();
    };
    chooseAnyFile = [this](const QString& start) {
        return QFileDialog::getOpenFileName(window(), Caption(CapChooseFileTitle), start,
                                            Caption(CapAllFilesFilter) + QStringLiteral(" (*)"));
    };
    chooseTargetDir = chooseFolder;
}

FrmTexte::~FrmTexte() = default;

Prompt& FrmTexte::prompt() const {
    return m_prompt ? *m_prompt : AppPrompt();
}

QPushButton* FrmTexte::button(const char* name) {
    auto* b = new QPushButton(this);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QCheckBox* FrmTexte::check(const char* name) {
    auto* c = new QCheckBox(this);
    c->setObjectName(QString::fromLatin1(name));
    return c;
}

bool FrmTexte::checked(const char* name) const {
    auto* c = findChild<QCheckBox*>(QString::fromLatin1(name));
    return c && c->isChecked();
}

// ---- layout ------------------------------------------------------------------------------------

void FrmTexte::buildUi() {
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setObjectName(QStringLiteral("splTexte"));
    body()->addWidget(split, 1);
    split->addWidget(buildLists());
    split->addWidget(buildBoxes());
    split->setStretchFactor(0, 4);
    split->setStretchFactor(1, 5);
    split->setSizes({540, 700});
    applyCaptions();
    showBoxes();
}

// A list with its row of buttons, its check boxes (three to a line) and the button that
// empties it, in a group.
QGroupBox* FrmTexte::listGroup(QWidget* parent, const char* name, DataGridView* view,
                               std::initializer_list<const char*> buttons,
                               std::initializer_list<const char*> checks, const char* clear) {
    auto* group = new QGroupBox(parent);
    group->setObjectName(QString::fromLatin1(name));
    auto* lay = new QVBoxLayout(group);
    view->setParent(group);
    lay->addWidget(view, 1);
    auto* row = new QHBoxLayout;
    for (const char* n : buttons)
        row->addWidget(button(n));
    row->addStretch(1);
    lay->addLayout(row);
    auto* grid = new QGridLayout;
    int i = 0;
    for (const char* n : checks) {
        grid->addWidget(check(n), i / 3, i % 3);
        ++i;
    }
    grid->setColumnStretch(3, 1);
    grid->addWidget(button(clear), 0, 4, Qt::AlignRight);
    lay->addLayout(grid);
    return group;
}

QWidget* FrmTexte::buildLists() {
    auto* left = new QWidget(this);
    auto* leftLay = new QVBoxLayout(left);
    leftLay->setContentsMargins(0, 0, 4, 0);
    m_txtView = new DataGridView(m_txt, left);
    m_txtView->setObjectName(QStringLiteral("LbxTxt"));
    leftLay->addWidget(
        listGroup(left, "grpTexte_Txt", m_txtView,
                  {"btnTexte_FindTxt", "btnTexte_OpenTxt", "btnTexte_DeleteTxt", "btnTexte_LinkToTxt"},
                  {"chbTexte_WithSubFolderTxt", "chbTexte_AttachTxt", "chbTexte_DirectEditTxt",
                   "chbTexte_OpenTxtWithClick", "chbTexte_OpenPlayTxt"},
                  "btnTexte_ClearLbxTxt"),
        4);
    m_lyricsView = new DataGridView(m_lyrics, left);
    m_lyricsView->setObjectName(QStringLiteral("LbxLyrics"));
    m_lyricsView->SetHeaderSort(false); // column 1 sorts with the name second
    leftLay->addWidget(
        listGroup(left, "grpTexte_Lyrics", m_lyricsView,
                  {"btnTexte_FindLyrics", "btnTexte_CancelFindLyrics", "btnTexte_OpenLyrics",
                   "BtnTexte_PlaySong", "btnTexte_DeleteLyrics"},
                  {"chbTexte_WithSubFolderLyrics", "chbTexte_AttachLyrics", "chbTexte_WithLyricsOnly",
                   "chbTexte_OpenLyricWithClick", "chbTexte_OpenPlaySong", "chbTexte_DirectEditLyrics",
                   "chbTexte_DeleteAllLyrics"},
                  "btnTexte_ClearLbxLyrics"),
        5);
    m_cancelFind = findChild<QPushButton*>(QStringLiteral("btnTexte_CancelFindLyrics"));
    m_cancelFind->setEnabled(false);
    findChild<QCheckBox*>(QStringLiteral("chbTexte_DirectEditLyrics"))->setEnabled(false);
    return left;
}

QWidget* FrmTexte::buildBoxes() {
    auto* right = new QWidget(this);
    auto* rightLay = new QVBoxLayout(right);
    rightLay->setContentsMargins(4, 0, 0, 0);

    auto* boxes = new QHBoxLayout;
    boxes->setSpacing(0);
    QWidget* panes[2];
    for (int i = 0; i < 2; ++i) {
        panes[i] = new QWidget(right);
        auto* lay = new QVBoxLayout(panes[i]);
        lay->setContentsMargins(0, 0, 0, 0);
        lay->setSpacing(0);
        m_marker[i] = new QLabel(panes[i]);
        m_marker[i]->setObjectName(QStringLiteral("lblTexte_Color%1").arg(i + 1));
        m_marker[i]->setFixedHeight(6);
        m_marker[i]->setAutoFillBackground(true);
        lay->addWidget(m_marker[i]);
        m_box[i] = new QPlainTextEdit(panes[i]);
        m_box[i]->setObjectName(QStringLiteral("txtTexte_Txt%1").arg(i + 1));
        m_box[i]->setLineWrapMode(QPlainTextEdit::NoWrap);
        m_box[i]->installEventFilter(this);
        lay->addWidget(m_box[i], 1);
        connect(m_box[i], &QPlainTextEdit::textChanged, this, [this, i] {
            if (m_box[i]->hasFocus())
                setActiveBox(i + 1);
        });
    }
    m_splitter = new QLabel(right);
    m_splitter->setObjectName(QStringLiteral("lblTexte_Splitter"));
    m_splitter->setFixedWidth(6);
    m_box2Pane = panes[1];
    boxes->addWidget(panes[0], 1);
    boxes->addWidget(m_splitter);
    boxes->addWidget(panes[1], 1);
    rightLay->addLayout(boxes, 1);

    // the boxes' own commands, then saving and handing on
    auto* rowBoxes = new QHBoxLayout;
    for (const char* n : {"btnTexte_ClearTxt1", "btnTexte_ClearTxt2", "btnTexte_SwitchTextbox"})
        rowBoxes->addWidget(button(n));
    rowBoxes->addWidget(check("chbTexte_Txt1Only"));
    rowBoxes->addStretch(1);
    rightLay->addLayout(rowBoxes);

    auto* rowSave = new QHBoxLayout;
    rowSave->addWidget(button("btnTexte_SaveLyric"));
    rowSave->addWidget(check("chbTexte_NewFile"));
    rowSave->addWidget(check("chbTexte_SaveNew"));
    rowSave->addStretch(1);
    rightLay->addLayout(rowSave);

    auto* rowOn = new QHBoxLayout;
    rowOn->addWidget(button("btnTexte_SaveAsTxt"));
    rowOn->addWidget(button("btnTexte_TxtToSync"));
    rowOn->addWidget(button("btnTexte_PrintTextbox"));
    rowOn->addStretch(1);
    rowOn->addWidget(check("chbTexte_NoMsg"));
    rightLay->addLayout(rowOn);

    auto* links = new QGroupBox(right);
    links->setObjectName(QStringLiteral("grpTexte_Links"));
    auto* linksLay = new QVBoxLayout(links);
    auto* linksRow = new QHBoxLayout;
    linksRow->addWidget(button("btnTexte_FillCmbWithLinks"));
    m_links = new QComboBox(links);
    m_links->setObjectName(QStringLiteral("cmbTexte_Links"));
    m_links->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_links->setMinimumContentsLength(16);
    linksRow->addWidget(m_links, 1);
    m_linksSum = new QLabel(links);
    m_linksSum->setObjectName(QStringLiteral("lblTexte_LinksSum"));
    m_linksSum->setMinimumWidth(24);
    m_linksSum->setAlignment(Qt::AlignCenter);
    linksRow->addWidget(m_linksSum);
    linksRow->addWidget(button("btnTexte_OpenLink"));
    linksLay->addLayout(linksRow);
    m_optInsert = new QRadioButton(links);
    m_optInsert->setObjectName(QStringLiteral("optTexte_LinkInTextbox"));
    m_optCopy = new QRadioButton(links);
    m_optCopy->setObjectName(QStringLiteral("optTexte_CopyLinks"));
    m_optMove = new QRadioButton(links);
    m_optMove->setObjectName(QStringLiteral("optTexte_MoveLinks"));
    m_optInsert->setChecked(true);
    auto* opts = new QGridLayout;
    opts->addWidget(m_optInsert, 0, 0);
    opts->addWidget(m_optCopy, 0, 1);
    opts->addWidget(m_optMove, 1, 0);
    opts->addWidget(button("btnTexte_LinksOK"), 1, 3, Qt::AlignRight);
    opts->setColumnStretch(2, 1);
    linksLay->addLayout(opts);
    rightLay->addWidget(links);
    return right;
}

void FrmTexte::applyCaptions() {
    SetGridHeaders();
    m_linksSum->setText(QString::number(m_links->count()));
}

void FrmTexte::SetGridHeaders() {
    SetTxtCaptions(*m_txt);
    SetLyricsCaptions(*m_lyrics);
    m_txtView->SetMinWidthsFromCaptions(1);
    m_lyricsView->SetMinWidthsFromCaptions(1);
}

void FrmTexte::changeEvent(QEvent* event) {
    AreaPage::changeEvent(event);
    if (event->type() == QEvent::WindowTitleChange)
        QTimer::singleShot(0, this, [this] { applyCaptions(); });
}

void FrmTexte::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    findChild<QCheckBox*>(QStringLiteral("chbTexte_NoMsg"))
        ->setChecked(SettingOn(Ini::TexteNoMsg, Ini::Col1));
    findChild<QCheckBox*>(QStringLiteral("chbTexte_OpenTxtWithClick"))
        ->setChecked(SettingOn(Ini::TexteOpenTxtWithClick, Ini::Col1));
    findChild<QCheckBox*>(QStringLiteral("chbTexte_OpenLyricWithClick"))
        ->setChecked(SettingOn(Ini::TexteOpenLyricWithClick, Ini::Col1));
    findChild<QCheckBox*>(QStringLiteral("chbTexte_Txt1Only"))
        ->setChecked(SettingOn(Ini::TexteTxt1Only, Ini::Col1));
    findChild<QCheckBox*>(QStringLiteral("chbTexte_WithLyricsOnly"))
        ->setChecked(SettingOn(Ini::TexteWithLyricsOnly, Ini::Col1));
    State().SuppressEvents = quiet;
    showBoxes();
    SetGridHeaders();
}

void FrmTexte::saveBox(int row, int col, bool on) {
    if (!State().SuppressEvents)
        SetSetting(row, col, on ? QStringLiteral("1") : QStringLiteral("0"));
}

// ---- the boxes ------------------------------------------------------------------------------------

TextPair FrmTexte::readBoxes() const {
    TextPair b;
    b.text[0] = m_box[0]->toPlainText();
    b.text[1] = m_box[1]->toPlainText();
    b.active = m_active;
    b.box2Shown = !m_box2Pane->isHidden();
    return b;
}

void FrmTexte::writeBoxes(const TextPair& b) {
    for (int i = 0; i < 2; ++i) {
        // the box shows its lines; the line ends are the file's business
        QString shown = b.text[i];
        shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        if (m_box[i]->toPlainText() != shown) {
            m_box[i]->setPlainText(shown);
            m_box[i]->moveCursor(QTextCursor::Start);
        }
    }
    if (b.box2Shown == m_box2Pane->isHidden()) {
        m_box2Pane->setHidden(!b.box2Shown);
        m_splitter->setHidden(!b.box2Shown);
    }
    setActiveBox(b.active);
}

void FrmTexte::showBoxes() {
    const bool one = checked("chbTexte_Txt1Only");
    m_box2Pane->setHidden(one);
    m_splitter->setHidden(one);
    if (one)
        setActiveBox(1);
    else
        setActiveBox(m_active);
}

void FrmTexte::setActiveBox(int box) {
    m_active = box == 2 && !m_box2Pane->isHidden() ? 2 : 1;
    for (int i = 0; i < 2; ++i) {
        const bool active = m_active == i + 1;
        QPalette p = m_box[i]->palette();
        p.setColor(QPalette::Text, ColorFromBgr(active ? kActiveTextColour : kPassiveTextColour));
        m_box[i]->setPalette(p);
        QPalette mp = m_marker[i]->palette();
        mp.setColor(QPalette::Window,
                    active ? ColorFromBgr(kActiveMarkerColour) : palette().color(QPalette::Window));
        m_marker[i]->setPalette(mp);
        m_box[i]->setProperty("activeFlag", active ? 1 : 0);
    }
}

void FrmTexte::refillLinks() {
    const QStringList links = LinksInText(readBoxes().Active());
    m_links->clear();
    m_links->addItems(links);
    m_linksSum->setText(QString::number(links.size()));
}

bool FrmTexte::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        if (watched == m_box[0])
            setActiveBox(1);
        else if (watched == m_box[1])
            setActiveBox(2);
    }
    return AreaPage::eventFilter(watched, event);
}

// ---- the env -------------------------------------------------------------------------------------

TexteEnv FrmTexte::makeEnv() {
    TexteEnv env(prompt(), TagEngine::Shared(), *m_txt, *m_lyrics);
    env.attachTxt = checked("chbTexte_AttachTxt");
    env.attachLyrics = checked("chbTexte_AttachLyrics");
    env.withSubFolderTxt = checked("chbTexte_WithSubFolderTxt");
    env.withSubFolderLyrics = checked("chbTexte_WithSubFolderLyrics");
    env.withLyricsOnly = checked("chbTexte_WithLyricsOnly");
    env.newFile = checked("chbTexte_NewFile");
    env.saveNew = checked("chbTexte_SaveNew");
    env.deleteAll = checked("chbTexte_DeleteAllLyrics");
    env.noMsg = checked("chbTexte_NoMsg");
    env.openPlayTxt = checked("chbTexte_OpenPlayTxt");
    env.openPlaySong = checked("chbTexte_OpenPlaySong");
    env.txt1Only = checked("chbTexte_Txt1Only");
    env.chooseFolder = chooseFolder;
    env.chooseSongFile = chooseSongFile;
    env.chooseTextSave = chooseTextSave;
    env.chooseAnyFile = chooseAnyFile;
    env.chooseTargetDir = chooseTargetDir;
    env.playSong = playSong;
    env.cancel = &m_cancel;
    env.pump = [] { QCoreApplication::processEvents(); };
    return env;
}
