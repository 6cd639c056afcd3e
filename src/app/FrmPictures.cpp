#include "app/FrmPictures.h"

#include "app/DataGridView.h"
#include "app/MessageBoxPrompt.h"
#include "app/PictureView.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "picture/PictureColumns.h"
#include "picture/image/ThumbnailLoader.h"
#include "picture/image/ftcPictureFile.h"
#include "picture/modEmbeddedPictures.h"
#include "picture/modExternPictures.h"
#include "picture/modLinkList.h"
#include "platform/Shell.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const char* const kExternMenu[] = {"mnuPic_PlayTitel",
                                   "mnuPic_MakeBmp",
                                   "mnuPic_LaunchPicture",
                                   "mnuPic_MakeLinkToSong",
                                   "mnuPic_MakeLinkToTxt",
                                   "mnuPic_RemoveLinkToSong",
                                   "mnuPic_RemoveLinkToTxt",
                                   "mnuPic_RemoveLinkToSongAndTxt",
                                   "mnuPic_SaveShownPicInSongAsPic",
                                   "mnuPic_SaveShownPicInSongAsLink",
                                   "mnuPic_CopyPictureTo"};
const char* const kInternMenu[] = {"mnuiPic_playTitle", "mnuiPic_makeBMP", "mnuiPic_LaunchPicture"};
const char* const kZoomMenu[] = {"mnuZoom_0", "mnuZoom_P10", "mnuZoom_M10", "mnuZoom_LeftCorner",
                                 "mnuZoom_ImgSet"};

constexpr int kThumbDefaultWidth = 120, kThumbDefaultHeight = 90;
constexpr double kLargeTextFactor = 1.6; // btnPic_StretchTextbox

} // namespace

FrmPictures::FrmPictures(QWidget* parent, Prompt* prompt)
    : AreaPage(QStringLiteral("FrmPictures"), parent), m_prompt(prompt), m_intern(new DataGrid(this)) {
    m_intern->setObjectName(QStringLiteral("LbxPic_Intern"));
    DefineExternPictureColumns(Grids::LbxPic_Extern());
    DefineEmbeddedPictureColumns(*m_intern);
    m_loader = new ThumbnailLoader(this);
    m_slideTimer = new QTimer(this);
    m_slideTimer->setSingleShot(true);
    buildUi();
    connectCommon();
    connectExtern();
    connectIntern();
    connectThumbs();

    chooseFolder = [this](const QString& start) {
        return QFileDialog::getExistingDirectory(window(), Caption(CapChooseFolderTitle), start);
    };
    chooseOpenFile = [this](const QString& title, const QString& start, const QString& filter) {
        return QFileDialog::getOpenFileName(window(), title, start, filter);
    };
    chooseSaveFile = [this](const QString& title, const QString& start, const QString& filter) {
        return QFileDialog::getSaveFileName(window(), title, start, filter);
    };
}

FrmPictures::~FrmPictures() = default;

DataGrid& FrmPictures::lbxExtern() const {
    return Grids::LbxPic_Extern();
}

Prompt& FrmPictures::prompt() const {
    return m_prompt ? *m_prompt : AppPrompt();
}

PictureEnv FrmPictures::env() {
    EnsureLinkListLoaded(prompt());
    return PictureEnv(prompt(), Grids::LbxPic_Extern(), Grids::LbxPic_LinkToPic());
}

bool FrmPictures::thumbnailsBusy() const {
    return m_loader->Busy();
}

QPushButton* FrmPictures::button(const char* name, QWidget* parent) {
    auto* b = new QPushButton(parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QCheckBox* FrmPictures::check(const char* name, QWidget* parent) {
    auto* c = new QCheckBox(parent);
    c->setObjectName(QString::fromLatin1(name));
    return c;
}

QCheckBox* FrmPictures::box(const char* name) const {
    return findChild<QCheckBox*>(QString::fromLatin1(name));
}

void FrmPictures::buildUi() {
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setObjectName(QStringLiteral("splPictures"));
    body()->addWidget(split, 1);

    m_filesTabs = new QTabWidget(split);
    m_filesTabs->setObjectName(QStringLiteral("SSTabPic_Files"));
    m_filesTabs->addTab(buildExternTab(), QString());
    m_filesTabs->addTab(buildInternTab(), QString());
    m_filesTabs->addTab(buildThumbTab(), QString());

    // The picture and its linked text, with the two switches of the text under them.
    auto* showSide = new QWidget(split);
    auto* showLay = new QVBoxLayout(showSide);
    showLay->setContentsMargins(0, 0, 0, 0);
    m_picTabs = new QTabWidget(showSide);
    m_picTabs->setObjectName(QStringLiteral("SSTabPic_Pictures"));
    showLay->addWidget(m_picTabs, 1);
    auto* textSwitches = new QHBoxLayout;
    textSwitches->addWidget(button("btnPic_HideTextbox", showSide));
    textSwitches->addWidget(button("btnPic_StretchTextbox", showSide));
    textSwitches->addStretch(1);
    showLay->addLayout(textSwitches);
    m_picTabs->addTab(buildShowPane(), QString());
    auto* textPage = new QWidget(m_picTabs);
    auto* textLay = new QVBoxLayout(textPage);
    m_text = new QPlainTextEdit(textPage);
    m_text->setObjectName(QStringLiteral("txtPic_TextToSizedPic"));
    textLay->addWidget(m_text, 1);
    m_picTabs->addTab(textPage, QString());

    split->addWidget(m_filesTabs);
    split->addWidget(showSide);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    split->setSizes({720, 520});
    buildMenus();
    applyCaptions();
}

QWidget* FrmPictures::buildExternTab() {
    auto* page = new QWidget;
    auto* lay = new QVBoxLayout(page);
    m_title = new QLabel(page);
    m_title->setObjectName(QStringLiteral("lblPic_ListTitle"));
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    lay->addWidget(m_title);
    m_externView = new DataGridView(&Grids::LbxPic_Extern(), page);
    m_externView->setObjectName(QStringLiteral("LbxPic_Extern"));
    lay->addWidget(m_externView, 1);

    auto* find = new QHBoxLayout;
    find->addWidget(button("btnpic_FindPic", page));
    auto* cancel = button("btnPic_CancelPic", page);
    cancel->setEnabled(false);
    find->addWidget(cancel);
    for (const char* n : {"chbPic_WithSubFolderPic", "chbPic_AttachPic", "chbPic_OnlyWithLink"})
        find->addWidget(check(n, page));
    find->addStretch(1);
    lay->addLayout(find);

    auto* frame = new QGroupBox(page);
    frame->setObjectName(QStringLiteral("FramePic_Linklist"));
    auto* frameLay = new QGridLayout(frame);
    frameLay->setContentsMargins(6, 2, 6, 2);
    frameLay->addWidget(button("btnPic_ShowLinkedPic", frame), 0, 0);
    frameLay->addWidget(button("btnPic_WriteLinklist", frame), 0, 1);
    frameLay->addWidget(button("btnPic_RemoveBrokenLinks", frame), 0, 2);
    frameLay->addWidget(button("btnPic_LinkToTxt", frame), 1, 0);
    frameLay->addWidget(button("btnPic_LinkToAudio", frame), 1, 1);
    frameLay->addWidget(button("btnPic_RemoveLink", frame), 1, 2);
    auto* which = new QHBoxLayout;
    which->addWidget(check("chbPic_RemoveLinkTxt", frame));
    which->addWidget(check("chbPic_RemoveLinkSong", frame));
    which->addStretch(1);
    frameLay->addLayout(which, 1, 3);
    frameLay->addWidget(button("btnPic_LinkInTxt", frame), 2, 0);
    frameLay->addWidget(button("btnPic_SaveTxt", frame), 2, 1);
    frameLay->addWidget(button("btnPic_DeleteTxt", frame), 2, 2);
    frameLay->addWidget(button("btnPic_OpenLink", frame), 2, 3);
    frameLay->addWidget(button("btnPic_PlayLinkedSong", frame), 3, 0);
    frameLay->addWidget(check("chbPic_UseLinkedSong", frame), 3, 1, 1, 2);
    lay->addWidget(frame);

    auto* files = new QHBoxLayout;
    for (const char* n :
         {"btnPic_OpenPicInApp", "btnPic_CopyPic", "btnPic_DeletePic", "btnPic_ExportLbxExtern"})
        files->addWidget(button(n, page));
    files->addStretch(1);
    lay->addLayout(files);

    auto* embed = new QHBoxLayout;
    auto* descLabel = new QLabel(page);
    descLabel->setObjectName(QStringLiteral("lblPic_Description"));
    embed->addWidget(descLabel);
    m_description = new QLineEdit(page);
    m_description->setObjectName(QStringLiteral("txtPic_Description"));
    embed->addWidget(m_description, 1);
    auto* typeLabel = new QLabel(page);
    typeLabel->setObjectName(QStringLiteral("lblPic_Pictype"));
    embed->addWidget(typeLabel);
    m_picType = new QComboBox(page);
    m_picType->setObjectName(QStringLiteral("cmbPic_Pictype"));
    m_picType->setMinimumContentsLength(14);
    embed->addWidget(m_picType);
    embed->addWidget(button("btnPic_ClearCmbPicType", page));
    lay->addLayout(embed);
    auto* embed2 = new QHBoxLayout;
    embed2->addWidget(button("btnPic_SaveExternAsiPic", page));
    embed2->addWidget(check("chbPic_iPicAsLink", page));
    embed2->addStretch(1);
    lay->addLayout(embed2);

    auto* nav = new QHBoxLayout;
    nav->addWidget(button("btnPic_PreviousPic", page));
    nav->addWidget(button("btnPic_NextPic", page));
    nav->addWidget(button("btnPic_AutoPic", page));
    auto* delayCaption = new QLabel(page);
    delayCaption->setObjectName(QStringLiteral("lblPic_DelayCaption"));
    nav->addWidget(delayCaption);
    m_delay = new QScrollBar(Qt::Horizontal, page);
    m_delay->setObjectName(QStringLiteral("HScrollPic_Delay"));
    m_delay->setRange(1, 60);
    m_delay->setValue(5);
    m_delay->setMinimumWidth(120);
    nav->addWidget(m_delay);
    m_delayLabel = new QLabel(page);
    m_delayLabel->setObjectName(QStringLiteral("lblPic_Delay"));
    nav->addWidget(m_delayLabel);
    nav->addStretch(1);
    lay->addLayout(nav);
    return page;
}

QWidget* FrmPictures::buildInternTab() {
    auto* page = new QWidget;
    auto* lay = new QVBoxLayout(page);
    m_internView = new DataGridView(m_intern, page);
    m_internView->setObjectName(QStringLiteral("LbxPic_Intern"));
    lay->addWidget(m_internView, 1);

    auto* find = new QHBoxLayout;
    find->addWidget(button("btnPic_FindiPic", page));
    auto* cancel = button("btnPic_CanceliPic", page);
    cancel->setEnabled(false);
    find->addWidget(cancel);
    find->addWidget(button("btnPic_OpenSinglePicIntern", page));
    find->addStretch(1);
    lay->addLayout(find);
    auto* findChecks = new QHBoxLayout;
    for (const char* n :
         {"chbPic_WithSubFolderiPic", "chbPic_AttachiPic", "chbPic_WithiPicOnly", "chbPic_DirectEditIntern"})
        findChecks->addWidget(check(n, page));
    findChecks->addStretch(1);
    lay->addLayout(findChecks);

    auto* desc = new QHBoxLayout;
    auto* descLabel = new QLabel(page);
    descLabel->setObjectName(QStringLiteral("lblPic_iPicDescription"));
    desc->addWidget(descLabel);
    m_iDescription = new QLineEdit(page);
    m_iDescription->setObjectName(QStringLiteral("txtPic_iPicDescription"));
    desc->addWidget(m_iDescription, 1);
    auto* typeLabel = new QLabel(page);
    typeLabel->setObjectName(QStringLiteral("lblPic_iPicType"));
    desc->addWidget(typeLabel);
    m_iPicType = new QComboBox(page);
    m_iPicType->setObjectName(QStringLiteral("cmbPic_iPicType"));
    m_iPicType->setMinimumContentsLength(14);
    desc->addWidget(m_iPicType);
    desc->addWidget(button("btnPic_ClearCmbiPicType", page));
    lay->addLayout(desc);

    auto* cmds = new QHBoxLayout;
    cmds->addWidget(button("btnPic_OpeniPic", page));
    cmds->addWidget(button("btnPic_SaveiPic", page));
    cmds->addWidget(check("chbPic_SaveiPicAsNew", page));
    cmds->addWidget(check("chbPic_SaveiPicAsLink", page));
    cmds->addStretch(1);
    lay->addLayout(cmds);
    auto* del = new QHBoxLayout;
    del->addWidget(button("btnPic_DeleteiPic", page));
    del->addWidget(check("chbPic_DeleteAlliPic", page));
    del->addStretch(1);
    lay->addLayout(del);
    return page;
}

QWidget* FrmPictures::buildThumbTab() {
    auto* page = new QWidget;
    auto* lay = new QVBoxLayout(page);
    m_thumbs = new QListWidget(page);
    m_thumbs->setObjectName(QStringLiteral("ListViewPic"));
    m_thumbs->setViewMode(QListView::IconMode);
    m_thumbs->setResizeMode(QListView::Adjust);
    m_thumbs->setMovement(QListView::Static);
    m_thumbs->setUniformItemSizes(true);
    m_thumbs->setWordWrap(true);
    lay->addWidget(m_thumbs, 1);
    auto* row = new QHBoxLayout;
    row->addWidget(button("btnPic_ShowThumbnail", page));
    QCheckBox* all = check("chbPic_ShowThumbnailAll", page);
    all->setChecked(true); // all rows; off: the highlighted ones
    row->addWidget(all);
    row->addStretch(1);
    lay->addLayout(row);
    auto* sizes = new QGridLayout;
    auto slider = [&](const char* name, const char* label, const char* down, const char* up, int line) {
        auto* l = new QLabel(page);
        l->setObjectName(QString::fromLatin1(label));
        auto* s = new QSlider(Qt::Horizontal, page);
        s->setObjectName(QString::fromLatin1(name));
        s->setRange(32, 400);
        sizes->addWidget(l, line, 0);
        sizes->addWidget(button(down, page), line, 1);
        sizes->addWidget(s, line, 2);
        sizes->addWidget(button(up, page), line, 3);
        return s;
    };
    m_tnWidth =
        slider("sliderPic_ThumbnailWidth", "lblPic_TnWidth", "btnPic_TnWidthDown", "btnPic_TnWidthUp", 0);
    m_tnHeight =
        slider("sliderPic_ThumbnailHeight", "lblPic_TnHeight", "btnPic_TnHeightDown", "btnPic_TnHeightUp", 1);
    m_tnWidth->setValue(kThumbDefaultWidth);
    m_tnHeight->setValue(kThumbDefaultHeight);
    lay->addLayout(sizes);
    return page;
}

QWidget* FrmPictures::buildShowPane() {
    auto* page = new QWidget;
    auto* lay = new QVBoxLayout(page);
    auto* zoomRow = new QHBoxLayout;
    // The two zoom steps carry one sign each: narrow buttons keep the picture side small
    // enough for the area to fit a 1280-pixel screen beside the file lists.
    auto* zoomOut = button("btnPic_ZoomDecrease", page);
    zoomOut->setMaximumWidth(36);
    zoomRow->addWidget(zoomOut);
    m_zoom = new QScrollBar(Qt::Horizontal, page);
    m_zoom->setObjectName(QStringLiteral("HScrollPic_Zoom"));
    m_zoom->setRange(-90, 400);
    m_zoom->setSingleStep(10);
    m_zoom->setPageStep(50);
    m_zoom->setMinimumWidth(60);
    zoomRow->addWidget(m_zoom, 1);
    auto* zoomIn = button("btnPic_ZoomIncrease", page);
    zoomIn->setMaximumWidth(36);
    zoomRow->addWidget(zoomIn);
    zoomRow->addWidget(button("btnPic_Zoom_0", page));
    zoomRow->addWidget(button("btnPic_Adjust", page));
    m_zoomLabel = new QLabel(page);
    m_zoomLabel->setObjectName(QStringLiteral("lblPic_Zoom"));
    m_zoomLabel->setMinimumWidth(70);
    zoomRow->addWidget(m_zoomLabel);
    lay->addLayout(zoomRow);
    m_view = new PictureView(page);
    m_view->setObjectName(QStringLiteral("picPic_Pane"));
    lay->addWidget(m_view, 1);
    m_statusLabel = new QLabel(page);
    m_statusLabel->setObjectName(QStringLiteral("lblPic_Status"));
    m_statusLabel->setWordWrap(true);
    lay->addWidget(m_statusLabel);
    auto* sizeRow = new QHBoxLayout;
    m_sizeLabel = new QLabel(page);
    m_sizeLabel->setObjectName(QStringLiteral("lblPic_Size"));
    sizeRow->addWidget(m_sizeLabel, 1);
    m_cm = new QRadioButton(page);
    m_cm->setObjectName(QStringLiteral("optPic_cm"));
    m_inch = new QRadioButton(page);
    m_inch->setObjectName(QStringLiteral("optPic_Inch"));
    m_cm->setChecked(true);
    sizeRow->addWidget(m_cm);
    sizeRow->addWidget(m_inch);
    sizeRow->addWidget(button("btnPic_SavePicAsBMP", page));
    lay->addLayout(sizeRow);
    return page;
}

void FrmPictures::buildMenus() {
    auto make = [this](const char* name, const auto& entries) {
        auto* m = new QMenu(this);
        m->setObjectName(QString::fromLatin1(name));
        for (const char* n : entries)
            m->addAction(QString())->setObjectName(QString::fromLatin1(n));
        return m;
    };
    m_externMenu = make("mnuPictures_Extern", kExternMenu);
    m_internMenu = make("mnuPictures_Intern", kInternMenu);
    m_zoomMenu = make("mnuPictures_Zoom", kZoomMenu);
    auto attach = [this](QWidget* w, QMenu* menu) {
        w->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(w, &QWidget::customContextMenuRequested, this,
                [w, menu](const QPoint& at) { menu->popup(w->mapToGlobal(at)); });
    };
    attach(m_externView->table()->viewport(), m_externMenu);
    attach(m_internView->table()->viewport(), m_internMenu);
    attach(m_view->viewport(), m_zoomMenu);
}

void FrmPictures::applyCaptions() {
    for (QMenu* m : {m_externMenu, m_internMenu, m_zoomMenu})
        for (QAction* a : m->actions())
            a->setText(UiText(a->objectName()));
    const bool running = m_slideTimer->isActive();
    if (auto* b = findChild<QPushButton*>(QStringLiteral("btnPic_AutoPic")))
        b->setText(Caption(running ? CapSlideShowStop : CapSlideShowStart));
    fillTypeCombos();
    SetGridHeaders();
    showTitle();
    showZoom();
    showSize();
    m_delayLabel->setText(QString::number(m_delay->value()) + u' ' + Caption(CapHeaderSeconds));
}

void FrmPictures::SetGridHeaders() {
    SetExternPictureCaptions(Grids::LbxPic_Extern());
    SetEmbeddedPictureCaptions(*m_intern);
    m_externView->SetMinWidthsFromCaptions(1);
    m_internView->SetMinWidthsFromCaptions(1);
}

void FrmPictures::fillTypeCombos() {
    for (QComboBox* c : {m_picType, m_iPicType}) {
        const int keep = c->currentIndex();
        c->clear();
        for (int t = 0; t < PictureTypeCount(); ++t)
            c->addItem(PictureTypeName(t));
        c->setCurrentIndex(keep >= 0 ? keep : 3);
    }
}

void FrmPictures::changeEvent(QEvent* event) {
    AreaPage::changeEvent(event);
    if (event->type() == QEvent::WindowTitleChange)
        QTimer::singleShot(0, this, [this] { applyCaptions(); });
}

void FrmPictures::showEvent(QShowEvent* event) {
    AreaPage::showEvent(event);
    // The link list comes in when the window first loads.
    EnsureLinkListLoaded(prompt());
}

void FrmPictures::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    box("chbPic_WithSubFolderPic")->setChecked(SettingOn(Ini::PicWithSubFolderPic, Ini::Col1));
    box("chbPic_WithSubFolderiPic")->setChecked(SettingOn(Ini::PicWithSubFolderiPic, Ini::Col1));
    box("chbPic_OnlyWithLink")->setChecked(SettingOn(Ini::PicOnlyWithLink, Ini::Col1));
    box("chbPic_WithiPicOnly")->setChecked(SettingOn(Ini::PicWithiPicOnly, Ini::Col1));
    const int delay = Setting(Ini::PicAutoPic, Ini::Col1).toInt();
    m_delay->setValue(delay > 0 ? delay : 5);
    (Setting(Ini::PicInch, Ini::Col1) == u"1" ? m_inch : m_cm)->setChecked(true);
    const int w = Setting(Ini::ThumbnailWidth, Ini::Col1).toInt();
    const int h = Setting(Ini::ThumbnailHeight, Ini::Col1).toInt();
    m_tnWidth->setValue(w > 0 ? w : kThumbDefaultWidth);
    m_tnHeight->setValue(h > 0 ? h : kThumbDefaultHeight);
    State().SuppressEvents = quiet;
    applyCaptions();
}

void FrmPictures::saveBox(int row, int col, bool on) {
    if (!State().SuppressEvents)
        SetSetting(row, col, on ? QStringLiteral("1") : QStringLiteral("0"));
}

QString FrmPictures::listTitle() const {
    const DataGrid& list = Grids::LbxPic_Extern();
    QString head = m_showsLinkList ? UiText(QStringLiteral("FramePic_Linklist")) : m_folder;
    if (head.isEmpty())
        head = Setting(Ini::PathPictures2, Ini::Col2);
    if (head.isEmpty())
        head = m_filesTabs->tabText(0);
    return head + QStringLiteral("  (") + QString::number(list.Rows()) + u')';
}

void FrmPictures::showTitle() {
    m_title->setText(listTitle());
}

void FrmPictures::showZoom() {
    const int v = m_view->zoom();
    m_zoomLabel->setText(v == 0  ? QStringLiteral("Zoom 0%")
                         : v > 0 ? QStringLiteral("Zoom %1%").arg(v)
                                 : QStringLiteral("Zoom -%1%").arg(-v));
}

void FrmPictures::showSize() {
    const QSize full = m_view->fullSize();
    if (full.isEmpty() || m_view->path().isEmpty()) {
        m_sizeLabel->clear();
        return;
    }
    // centimetres at the picture's own resolution (96 dpi when it names none)
    const QImage& img = m_view->image();
    const double dpm = img.dotsPerMeterX() > 0 ? img.dotsPerMeterX() * double(img.width()) / full.width()
                                               : 96.0 / 2.54 * 100.0;
    double w = full.width() / dpm * 100.0, h = full.height() / dpm * 100.0;
    const bool inch = m_inch->isChecked();
    if (inch) {
        w /= 2.54;
        h /= 2.54;
    }
    const QString unit = UiText(inch ? QStringLiteral("optPic_Inch") : QStringLiteral("optPic_cm"));
    m_sizeLabel->setText(QStringLiteral("%1 x %2 px   %3 x %4 ")
                             .arg(full.width())
                             .arg(full.height())
                             .arg(QLocale().toString(w, 'f', 1), QLocale().toString(h, 'f', 1)) +
                         unit);
}

bool FrmPictures::showPictureFile(const QString& path) {
    const bool ok = m_view->ShowFile(path);
    m_statusLabel->setText(ok ? QString() : m_view->LastError());
    showSize();
    return ok;
}

void FrmPictures::connectCommon() {
    auto on = [this](const char* name, auto fn) {
        if (auto* b = findChild<QPushButton*>(QString::fromLatin1(name)))
            connect(b, &QPushButton::clicked, this, fn);
    };
    auto act = [this](QMenu* m, const char* name, auto fn) {
        connect(m->findChild<QAction*>(QString::fromLatin1(name)), &QAction::triggered, this, fn);
    };
    // zoom
    connect(m_zoom, &QScrollBar::valueChanged, this, [this](int v) { m_view->SetZoom(v); });
    connect(m_view, &PictureView::zoomChanged, this, [this](int v) {
        if (m_zoom->value() != v)
            m_zoom->setValue(v);
        showZoom();
    });
    auto zoomBy = [this](int d) { m_zoom->setValue(m_zoom->value() + d); };
    on("btnPic_ZoomIncrease", [zoomBy] { zoomBy(10); });
    on("btnPic_ZoomDecrease", [zoomBy] { zoomBy(-10); });
    on("btnPic_Zoom_0", [this] { m_zoom->setValue(0); });
    on("btnPic_Adjust", [this] { m_view->FitToPane(); });
    act(m_zoomMenu, "mnuZoom_0", [this] { m_zoom->setValue(0); });
    act(m_zoomMenu, "mnuZoom_P10", [zoomBy] { zoomBy(10); });
    act(m_zoomMenu, "mnuZoom_M10", [zoomBy] { zoomBy(-10); });
    act(m_zoomMenu, "mnuZoom_LeftCorner", [this] { m_view->ToTopLeft(); });
    act(m_zoomMenu, "mnuZoom_ImgSet", [this] { m_view->FitToPane(); });
    // the linked text: shown in place of the picture and back, and in a large font
    on("btnPic_HideTextbox", [this] { m_picTabs->setCurrentIndex(m_picTabs->currentIndex() == 1 ? 0 : 1); });
    on("btnPic_StretchTextbox", [this] {
        m_largeText = !m_largeText;
        QFont f = font();
        if (m_largeText)
            f.setPointSizeF(f.pointSizeF() * kLargeTextFactor);
        m_text->setFont(f);
        m_picTabs->setCurrentIndex(1);
    });
    // size unit
    auto* units = new QButtonGroup(this);
    units->addButton(m_cm, 0);
    units->addButton(m_inch, 1);
    connect(units, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (!checked)
            return;
        if (!State().SuppressEvents)
            SetSetting(Ini::PicInch, Ini::Col1, id == 1 ? QStringLiteral("1") : QStringLiteral("0"));
        showSize();
    });
    // saving and opening the shown picture
    on("btnPic_SavePicAsBMP", [this] { cmdSaveShownPicture(); });
    act(m_externMenu, "mnuPic_MakeBmp", [this] { cmdSaveShownPicture(); });
    act(m_internMenu, "mnuiPic_makeBMP", [this] { cmdSaveShownPicture(); });
    act(m_externMenu, "mnuPic_LaunchPicture", [this] { cmdLaunchShownPicture(); });
    act(m_internMenu, "mnuiPic_LaunchPicture", [this] { cmdLaunchShownPicture(); });
    // the type lists
    on("btnPic_ClearCmbPicType", [this] { m_picType->setCurrentIndex(3); });
    on("btnPic_ClearCmbiPicType", [this] { m_iPicType->setCurrentIndex(3); });
    // boxes kept in the settings
    auto keep = [this](const char* name, int row) {
        connect(box(name), &QCheckBox::toggled, this, [this, row](bool v) { saveBox(row, Ini::Col1, v); });
    };
    keep("chbPic_WithSubFolderPic", Ini::PicWithSubFolderPic);
    keep("chbPic_WithSubFolderiPic", Ini::PicWithSubFolderiPic);
    keep("chbPic_OnlyWithLink", Ini::PicOnlyWithLink);
    keep("chbPic_WithiPicOnly", Ini::PicWithiPicOnly);
}

void FrmPictures::cmdSaveShownPicture() {
    if (m_view->image().isNull() || m_view->path().isEmpty()) {
        prompt().Tell(Caption(CapNoPictureRow), Prompt::Icon::Information);
        return;
    }
    const bool png = Setting(Ini::Picformat, Ini::Col1) == u"1";
    QString base = m_view->path().mid(m_view->path().lastIndexOf(u'/') + 1);
    if (const qsizetype dot = base.lastIndexOf(u'.'); dot > 0)
        base.truncate(dot);
    const QString start = Setting(Ini::PicExportFolder1, Ini::Col2);
    const QString filter =
        Caption(CapPictureFilter) + (png ? QStringLiteral(" (*.png);;") : QStringLiteral(" (*.jpg);;")) +
        Caption(CapPictureFilter) + (png ? QStringLiteral(" (*.jpg);;") : QStringLiteral(" (*.png);;")) +
        Caption(CapPictureFilter) + QStringLiteral(" (*.bmp)");
    const QString target = chooseSaveFile(UiText(QStringLiteral("btnPic_SavePicAsBMP")),
                                          (start.isEmpty() ? QString() : start + u'/') + base +
                                              (png ? QStringLiteral(".png") : QStringLiteral(".jpg")),
                                          filter);
    if (target.isEmpty())
        return;
    SetSetting(Ini::PicExportFolder1, Ini::Col2, target.left(target.lastIndexOf(u'/')));
    const QString ext = target.mid(target.lastIndexOf(u'.') + 1).toLower();
    QString error;
    bool ok;
    if (ext == u"bmp")
        ok = SavePictureAsBmp(m_view->image(), target, nullptr, &error);
    else if (ext == u"png" || (png && ext != u"jpg" && ext != u"jpeg"))
        ok = SavePictureAsPng(m_view->image(), target, nullptr, &error);
    else
        ok = SavePictureAsJpeg(m_view->image(), target, 90, nullptr, &error);
    if (!ok)
        prompt().Tell(SaveFailedText() + u'\n' + error, Prompt::Icon::Critical);
}

void FrmPictures::cmdLaunchShownPicture() {
    if (!m_view->path().isEmpty())
        ShellOpen(m_view->path());
}
