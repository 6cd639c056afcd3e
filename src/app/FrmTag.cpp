// FrmTag: building the window, showing a row, the tabs of a file type, the captions.
// The commands are in FrmTagCommands.cpp.

#include "app/FrmTag.h"

#include "app/DataGridView.h"
#include "app/FrmInput.h"
#include "app/FrmTagSetPanel.h"
#include "app/InputDataPage.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "tag/TagEngine.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QString Indexed(const QString& name, int i) {
    return name + QLatin1Char('(') + QString::number(i) + QLatin1Char(')');
}

QPushButton* Button(QWidget* parent, const QString& name) {
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    return b;
}

QCheckBox* Check(QWidget* parent, const QString& name) {
    auto* c = new QCheckBox(parent);
    c->setObjectName(name);
    return c;
}

} // namespace

FrmTag::FrmTag(QWidget* parent) : FrmTag(&Grids::LbxInput(), nullptr, parent) {}

FrmTag::FrmTag(DataGrid* lbxInput, Prompt* prompt, QWidget* parent)
    : AreaPage(QStringLiteral("FrmTag"), parent), m_input(lbxInput), m_prompt(prompt),
      m_tag(new DataGrid(this)), m_genres(new DataGrid(this)) {
    DefineTagList(*m_tag);
    buildUi();
    fillGenreLists();
    applyCaptions();
    connectCommands();
    SetTabsForType(QString());
}

FrmTag::~FrmTag() = default;

Prompt& FrmTag::prompt() const {
    return m_prompt ? *m_prompt : AppPrompt();
}

DataGrid& FrmTag::lbxTag() {
    return *m_tag;
}
TagEngine& FrmTag::engine() {
    return TagEngine::Shared();
}

// ---- building -----------------------------------------------------------------------------

void FrmTag::buildUi() {
    QVBoxLayout* root = body();
    auto* split = new QSplitter(Qt::Horizontal, this);
    root->addWidget(split, 1);
    split->addWidget(buildListArea());

    auto* right = new QWidget(split);
    auto* rl = new QVBoxLayout(right);
    rl->setContentsMargins(0, 0, 0, 0);
    m_tabs = new QTabWidget(right);
    m_tabs->setObjectName(QStringLiteral("SSTabFields"));
    rl->addWidget(m_tabs, 1);

    const TagSetPanelDef defs[5] = {
        {"txtTab2_V1", "chbTab2_V1", "cmbTab2_GenreV1", "", "", "btnTab2_CheckTrue_V1",
         "btnTab2_CheckFalse_V1", 1, 6, 0, true, -1},
        {"txtTab2_V2", "chbTab2_V2", "CmbTab2_GenreV2", "chbTab2_GenreV2", "", "btnTab2_CheckTrue_V2",
         "btnTab2_CheckFalse_V2", 0, 15, 0, false, -1},
        {"txtTab2_APE", "chbTab2_APE", "cmbTab2_GenreAPE", "", "", "btnTab2_APECheckTrue",
         "btnTab2_APECheckFalse", 0, 7, 1, false, -1},
        {"txtTab2_Lyrics", "chbTab2_Lyrics", "cmbTab2_GenreLyrics", "", "", "btnTab2_CheckTrueLyrics",
         "btnTab2_CheckFalseLyrics", 0, 7, 1, false, 6},
        {"txtTab2_Typical", "chbTab2_Typical", "cmbTab2_GenreTypical", "", "lblTab2_Typical",
         "btnTab2_CheckTrueTypical", "btnTab2_CheckFalseTypical", 0, 15, 1, false, -1},
    };
    for (int t = 0; t < 5; ++t) {
        m_panels[size_t(t)] = new FrmTagSetPanel(defs[t], m_tabs);
        // A field set scrolls rather than forcing its full height on the main window,
        // so that the window still fits a screen of 800 pixels.
        auto* scroll = new QScrollArea(m_tabs);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidgetResizable(true);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        scroll->setWidget(m_panels[size_t(t)]);
        scroll->viewport()->setAutoFillBackground(false);
        m_panels[size_t(t)]->setAutoFillBackground(false);
        m_tabs->addTab(scroll, QString());
    }
    // V2 extras: the filter combos over the text boxes, the comment area, the box copies
    FrmTagSetPanel* v2 = m_panels[1];
    for (int i = 0; i < 15; ++i) {
        auto* c = new QComboBox(v2);
        c->setObjectName(Indexed(QStringLiteral("cmbTab2_FilterV2"), i));
        c->setEditable(true);
        c->hide();
        v2->grid()->addWidget(c, i + 1, 2);
        m_filterCombos[size_t(i)] = c;
    }
    m_filterGenre = new QComboBox(v2);
    m_filterGenre->setObjectName(QStringLiteral("cmbTab2_FilterV2Genre"));
    m_filterGenre->setEditable(true);
    m_filterGenre->hide();
    v2->grid()->addWidget(m_filterGenre, 0, 2);
    v2->layout()->addWidget(buildCommentArea());
    v2->layout()->addWidget(buildFilterArea());
    auto* copies = new QHBoxLayout;
    copies->addWidget(Button(v2, QStringLiteral("btnTab2_V2V1")));
    copies->addStretch(1);
    static_cast<QBoxLayout*>(v2->layout())->insertLayout(2, copies);
    auto* copies1 = new QHBoxLayout;
    copies1->addWidget(Button(m_panels[0], QStringLiteral("btnTab2_V1V2")));
    copies1->addStretch(1);
    static_cast<QBoxLayout*>(m_panels[0]->layout())->insertLayout(2, copies1);
    // the V2 genre can be taken into the genre list
    v2->grid()->addWidget(Button(v2, QStringLiteral("btnTab2_TransferGenreV2")), 0, 3);

    rl->addWidget(buildCommandArea());
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("prgTag"));
    m_progress->hide();
    root->addWidget(m_progress);

    m_mnuRateMood = new QMenu(this);
    m_mnuRateMood->setObjectName(QStringLiteral("mnuRateMood"));
    m_mnuTextbox = new QMenu(this);
    m_mnuTextbox->setObjectName(QStringLiteral("mnuTextbox"));
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 1);
}

QWidget* FrmTag::buildListArea() {
    auto* w = new QWidget(this);
    auto* l = new QVBoxLayout(w);
    l->setContentsMargins(0, 0, 0, 0);
    m_view = new DataGridView(m_tag, w);
    m_view->setObjectName(QStringLiteral("LbxTag"));
    l->addWidget(m_view, 1);
    auto* marks = new QGridLayout;
    m_fTag = new QLineEdit(w);
    m_fTag->setObjectName(QStringLiteral("txtTab2_FTag"));
    const char* names[] = {"btnTab2_SetFTagActRow", "btnTab2_ClearFtag",     "btnTab2_SetFtagBlue",
                           "btnTab2_RemoveFTag",    "btnTag_HighlightAll",   "btnTab2_InvertHighlight",
                           "btnTab2_DeleteEntries", "btnTab2_CopyToPlaylist"};
    int i = 0;
    for (const char* n : names) {
        QPushButton* b = Button(w, QString::fromLatin1(n));
        marks->addWidget(b, 1 + i / 4, i % 4);
        ++i;
    }
    marks->addWidget(m_fTag, 0, 0, 1, 3);
    QPushButton* take = Button(w, QStringLiteral("btnTab2_TakeFromDataList"));
    marks->addWidget(take, 0, 3);
    l->addLayout(marks);
    return w;
}

QWidget* FrmTag::buildCommentArea() {
    auto* box = new QGroupBox(m_panels[1]);
    box->setObjectName(QStringLiteral("fraTab2_Comment"));
    auto* g = new QGridLayout(box);
    m_lfdNr = new QComboBox(box);
    m_lfdNr->setObjectName(QStringLiteral("cmbTab2_LfdNr"));
    m_language = new QLineEdit(box);
    m_language->setObjectName(QStringLiteral("txtTab2_Language"));
    m_language->setMaxLength(3);
    // three letters need no more room than this; the description takes the rest
    m_language->setMaximumWidth(m_language->fontMetrics().horizontalAdvance(QStringLiteral("MMMMMMMM")));
    m_description = new QLineEdit(box);
    m_description->setObjectName(QStringLiteral("txtTab2_Description"));
    m_comment = new QTextEdit(box);
    m_comment->setObjectName(QStringLiteral("txtTab2_Comment"));
    m_comment->setAcceptRichText(false);
    m_comment->setMaximumHeight(80);
    m_hasComment = new QLabel(box);
    m_hasComment->setObjectName(QStringLiteral("lblTab2_HasComment"));
    g->addWidget(m_lfdNr, 0, 0);
    g->addWidget(m_language, 0, 1);
    g->addWidget(m_description, 0, 2);
    g->addWidget(m_hasComment, 0, 3);
    g->addWidget(m_comment, 1, 0, 1, 4);
    g->setColumnStretch(2, 1);
    auto* bl = new QHBoxLayout;
    bl->addWidget(Button(box, QStringLiteral("btnTab2_UpdateComment")));
    bl->addWidget(Button(box, QStringLiteral("btnTab2_DeleteComment")));
    bl->addWidget(Button(box, QStringLiteral("btnTab2_DeleteAllComments")));
    bl->addStretch(1);
    g->addLayout(bl, 2, 0, 1, 4);
    return box;
}

QWidget* FrmTag::buildFilterArea() {
    auto* w = new QWidget(m_panels[1]);
    auto* l = new QHBoxLayout(w);
    l->setContentsMargins(0, 0, 0, 0);
    m_filterOnOff = Button(w, QStringLiteral("btnTab2_FilterOnOff"));
    m_matchComplete = Check(w, QStringLiteral("chbTab2_MatchComplete"));
    m_keepMark = Check(w, QStringLiteral("chbTab2_KeepMark"));
    m_filterBtn = Button(w, QStringLiteral("btnTab2_Filter"));
    m_transferToDatalist = Button(w, QStringLiteral("btnTab2_TransferToDatalist"));
    m_attachLink = Button(w, QStringLiteral("btnTab2_AttachLinkTxt"));
    m_showLink = Button(w, QStringLiteral("btnTab2_ShowLink"));
    for (QWidget* c : std::initializer_list<QWidget*>{m_filterOnOff, m_matchComplete, m_keepMark, m_filterBtn,
                                                      m_transferToDatalist, m_attachLink, m_showLink})
        l->addWidget(c);
    l->addStretch(1);
    m_matchComplete->hide();
    m_keepMark->hide();
    m_filterBtn->hide();
    m_transferToDatalist->hide();
    return w;
}

QWidget* FrmTag::buildCommandArea() {
    auto* w = new QWidget(this);
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 0, 0, 0);
    const char* opts[] = {"OptTab2_UpdateV1", "OptTab2_UpdateV2", "OptTab2_UpdateAPE", "OptTab2_UpdateLyrics",
                          "OptTab2_UpdateTypical"};
    auto* ol = new QHBoxLayout;
    for (int i = 0; i < 5; ++i) {
        m_options[size_t(i)] = new QRadioButton(w);
        m_options[size_t(i)]->setObjectName(QString::fromLatin1(opts[i]));
        m_options[size_t(i)]->setAutoExclusive(false);
        ol->addWidget(m_options[size_t(i)]);
    }
    m_noMsg = Check(w, QStringLiteral("chbTab2_NoMsg"));
    ol->addWidget(m_noMsg);
    ol->addStretch(1);
    g->addLayout(ol, 0, 0, 1, 4);

    QPushButton* update = Button(w, QStringLiteral("btnTab2_UpdateTag"));
    QPushButton* del = Button(w, QStringLiteral("btnTab2_DeleteTag"));
    g->addWidget(update, 1, 0);
    g->addWidget(del, 1, 1);
    m_tagToTag = new QComboBox(w);
    m_tagToTag->setObjectName(QStringLiteral("cmbTab2_TagToTag"));
    for (int i = 0; i < 20; ++i)
        m_tagToTag->addItem(QString());
    m_tagToTag->setCurrentIndex(-1);
    // The closed box names its purpose: its caption arrives as the widget's title.
    connect(m_tagToTag, &QWidget::windowTitleChanged, m_tagToTag, &QComboBox::setPlaceholderText);
    QPushButton* t2t = Button(w, QStringLiteral("btnTab2_TagToTag"));
    m_tagToTagStrip = Check(w, QStringLiteral("chbTab2_TagToTag"));
    g->addWidget(m_tagToTag, 2, 0);
    g->addWidget(t2t, 2, 1);
    g->addWidget(m_tagToTagStrip, 2, 2);
    QPushButton* n2t = Button(w, QStringLiteral("btnTab2_FilenameToTag"));
    m_nameToTagWithTrack = Check(w, QStringLiteral("chbTab2_NameToTagWithTrack"));
    QPushButton* t2n = Button(w, QStringLiteral("btnTab2_TagToFilename"));
    m_tagToNameWithTrack = Check(w, QStringLiteral("chbTab2_TagToNameWithTrack"));
    g->addWidget(n2t, 3, 0);
    g->addWidget(m_nameToTagWithTrack, 3, 1);
    g->addWidget(t2n, 4, 0);
    g->addWidget(m_tagToNameWithTrack, 4, 1);
    m_batchButtons = {update, del, t2t, n2t, t2n};
    return w;
}

void FrmTag::applyCaptions() {
    SetCaptionsOf(this);
    applyTypeCaptions();
}

// The captions that follow the file type of the list and the state of the filter; the
// caption walk of a language change puts the defaults back, so they come again after it.
void FrmTag::applyTypeCaptions() {
    SetTagListCaptions(*m_tag);
    // the hook from the data list until it has a caption of its own
    if (auto* take = findChild<QPushButton*>(QStringLiteral("btnTab2_TakeFromDataList"));
        take && take->text().isEmpty())
        take->setText(Caption(CapToTagList));
    // The caption of the typical tab is a caption row for some types: asked anew, so
    // that it follows the language.
    if (!m_typeText.isEmpty())
        m_typeTabs.tab4Caption = ::SetTabsForType(m_typeText, QString()).tab4Caption;
    m_tabs->setTabText(4, m_typeTabs.tab4Caption.isEmpty() ? Caption(CapTypicalTab) : m_typeTabs.tab4Caption);
    for (int i = 0; i < 15; ++i)
        if (QLabel* l = m_panels[4]->label(i); l && m_typeTabs.typicalLabelRows[size_t(i)] != 0)
            l->setText(Caption(m_typeTabs.typicalLabelRows[size_t(i)]));
    m_filterOnOff->setText(Caption(m_filterOn ? CapFilterTurnOff : CapFilterTurnOn));
    // texts that the reading of a file puts in: they follow a language change too
    if (!m_hasComment->text().isEmpty())
        m_hasComment->setText(Caption(CapHasComment));
    if (m_lfdNr->count() > 0)
        m_lfdNr->setItemText(0, Caption(CapNewComment));
    if (QComboBox* g = m_panels[0]->genre(); g && g->count() > 0 && g->itemData(0).toInt() == 255)
        g->setItemText(0, Caption(CapNoGenre));
}

void FrmTag::changeEvent(QEvent* event) {
    AreaPage::changeEvent(event);
    // the caption walk sets the title first and the controls after it
    if (event->type() == QEvent::WindowTitleChange)
        QTimer::singleShot(0, this, [this] { applyTypeCaptions(); });
}

void FrmTag::fillGenreLists() {
    QStringList names;
    TagEngine& e = engine();
    for (int i = 0; i < e.GenreCount(); ++i)
        names << e.GenreName(i);
    m_panels[0]->setGenreTable(Caption(CapNoGenre), names);
    LoadGenreList(*m_genres);
    QStringList genres;
    genres << QString();
    for (int r = 1; r <= m_genres->Rows(); ++r)
        genres << m_genres->CellText(r, 1);
    for (int t = 1; t < 5; ++t)
        m_panels[size_t(t)]->setGenreItems(genres);
}

// ---- the road in and the current row ------------------------------------------------------

bool FrmTag::LoadTagList(const QString& typeText, const QString& markFilter) {
    if (!m_input)
        return false;
    LoadTagRequest req;
    req.typeText = typeText;
    req.markFilter = markFilter;
    req.progress = progressPump();
    req.clearBoxes = [this] { clearBoxes(true); };
    fillGenreLists();
    m_progress->show();
    const LoadTagResult r = ::LoadTagList(*m_input, *m_tag, req, prompt());
    m_progress->hide();
    if (r != LoadTagResult::Loaded)
        return false;
    m_typeText = req.typeText;
    ReadTagRow(1);
    SetTabsForType(req.typeText);
    if (FrmInput* main = FrmInput::Instance())
        main->TabInput->setCurrentWidget(this);
    return true;
}

bool FrmTag::LoadFromDataList() {
    if (!m_input)
        return false;
    const DataGrid& in = *m_input;
    int row = in.CurRow();
    if (in.SelCount() > 0 && (row < 1 || row > in.Rows() || !in.IsSelected(row)))
        row = in.SelRow(1);
    if ((row < 1 || row > in.Rows()) && in.Rows() > 0)
        row = 1;
    const QString type = row >= 1 ? in.CellText(row, InCol::Type) : QString();
    FrmInput* main = FrmInput::Instance();
    const QString mark = main ? main->pageData->txtTab1_FTag->text() : QString();
    return LoadTagList(type, mark);
}

void FrmTag::showEvent(QShowEvent* event) {
    // the settings are read after the windows are built: take them when the page shows
    m_noMsg->blockSignals(true);
    m_noMsg->setChecked(SettingOn(Ini::TagNoMsg, Ini::Col1));
    m_noMsg->blockSignals(false);
    fillGenreLists();
    AreaPage::showEvent(event);
}

void FrmTag::clearBoxes(bool v1v2Only) {
    for (int t = 0; t < 5; ++t)
        if (!v1v2Only || t < 2)
            m_panels[size_t(t)]->clearBoxes();
    m_lfdNr->clear();
    m_language->clear();
    m_description->clear();
    m_comment->clear();
    m_hasComment->clear();
}

void FrmTag::ReadTagRow(int row) {
    if (m_busy)
        return;
    clearBoxes(false);
    if (row < 1 || row > m_tag->Rows())
        return;
    showValues(::ReadTagRow(engine(), *m_tag, row));
}

void FrmTag::showValues(const TagRowValues& v) {
    FrmTagSetPanel* p1 = m_panels[0];
    p1->genre()->setCurrentIndex(v.v1GenreIndex < p1->genre()->count() ? v.v1GenreIndex : 0);
    for (int i = 1; i <= 6; ++i)
        p1->setText(i, v.v1[size_t(i)]);
    m_panels[1]->genre()->setEditText(v.v2Genre);
    for (int i = 0; i < 15; ++i)
        m_panels[1]->setText(i, v.v2[size_t(i)]);
    m_panels[2]->genre()->setEditText(v.apeGenre);
    m_panels[3]->genre()->setEditText(v.lyricsGenre);
    for (int i = 0; i < 7; ++i) {
        m_panels[2]->setText(i, v.ape[size_t(i)]);
        m_panels[3]->setText(i, v.lyrics[size_t(i)]);
    }
    m_panels[4]->genre()->setEditText(v.typicalGenre);
    for (int i = 0; i < 15; ++i)
        m_panels[4]->setText(i, v.typical[size_t(i)]);
    // comment area
    m_lfdNr->blockSignals(true);
    m_lfdNr->clear();
    m_lfdNr->addItem(Caption(CapNewComment));
    for (int i = 1; i <= v.commentCount; ++i)
        m_lfdNr->addItem(QString::number(i));
    m_lfdNr->setCurrentIndex(v.commentItem);
    m_lfdNr->blockSignals(false);
    m_language->setText(v.commentLanguage);
    m_description->setText(v.commentDescription);
    m_comment->setPlainText(v.commentText);
    m_hasComment->setText(v.hasComment ? Caption(CapHasComment) : QString());
}

void FrmTag::showComment(int item) {
    m_language->clear();
    m_description->clear();
    m_comment->clear();
    m_hasComment->clear();
    const int row = m_tag->CurRow();
    if (item < 1 || row < 1 || row > m_tag->Rows())
        return;
    TagEngine& e = engine();
    if (e.OpenFile(TagRowPath(*m_tag, row)) == 0 || item > e.CommentCount())
        return;
    m_language->setText(e.CommentLanguage(item));
    m_description->setText(e.CommentDescription(item));
    m_comment->setPlainText(e.CommentText(item));
    if (!m_comment->toPlainText().isEmpty())
        m_hasComment->setText(Caption(CapHasComment));
}

void FrmTag::SetTabsForType(const QString& typeText) {
    const TabsForType t = ::SetTabsForType(typeText, Setting(Ini::TagUpdateOption, Ini::Col1));
    m_typeTabs = t;
    for (int i = 0; i < 5; ++i)
        m_tabs->setTabEnabled(i, t.tabEnabled[size_t(i)]);

    for (int i = 0; i < 5; ++i) {
        m_options[size_t(i)]->blockSignals(true);
        m_options[size_t(i)]->setChecked(false);
        m_options[size_t(i)]->setEnabled(t.optionOffered[size_t(i)]);
        m_options[size_t(i)]->blockSignals(false);
    }
    m_options[4]->setChecked(t.optionTypicalSet);
    FrmTagSetPanel* v1 = m_panels[0];
    v1->setAllChecks(t.v1ChecksChecked);
    v1->setChecksEnabled(t.v1ChecksEnabled);
    if (t.v1BoxesEmptied)
        v1->clearBoxes();
    applyTypeCaptions();
    // the tab of the chosen update option, else the first that the type offers
    const int chosen = int(ChosenSet()) - 1;
    if (chosen >= 0 && t.tabEnabled[size_t(chosen)]) {
        m_tabs->setCurrentIndex(chosen);
    } else {
        for (int i = 0; i < 5; ++i)
            if (t.tabEnabled[size_t(i)]) {
                m_tabs->setCurrentIndex(i);
                break;
            }
    }
}

// ---- values of the boxes --------------------------------------------------------------------

TagBoxes FrmTag::ReadBoxes() const {
    TagBoxes b;
    FrmTagSetPanel* p = m_panels[0];
    for (int i = 1; i <= 6; ++i)
        b.v1[size_t(i)] = p->boxValue(i);
    b.v1GenreEnabled = p->genreEnabled();
    b.v1GenreData = p->genreData();
    p = m_panels[1];
    b.v2Genre = p->genreValue();
    for (int i = 0; i < 15; ++i)
        b.v2[size_t(i)] = p->boxValue(i);
    b.apeGenre = m_panels[2]->genreValue();
    b.lyricsGenre = m_panels[3]->genreValue();
    for (int i = 0; i < 7; ++i) {
        b.ape[size_t(i)] = m_panels[2]->boxValue(i);
        b.lyrics[size_t(i)] = m_panels[3]->boxValue(i);
    }
    b.typicalGenre = m_panels[4]->genreValue();
    for (int i = 0; i < 15; ++i)
        b.typical[size_t(i)] = m_panels[4]->boxValue(i);
    b.v2CommentEnabled = m_comment->isEnabled();
    return b;
}

UpdateSet FrmTag::ChosenSet() const {
    for (int i = 0; i < 5; ++i)
        if (m_options[size_t(i)]->isChecked())
            return UpdateSet(i + 1);
    return UpdateSet::None;
}
