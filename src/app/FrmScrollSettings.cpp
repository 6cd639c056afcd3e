// FrmScrollSettings: a skin of the scrolling text edited on a live preview.
#include "app/FrmScrollSettings.h"

#include "app/MessageBoxPrompt.h"
#include "app/ScrollTextView.h"
#include "app/UiCaptions.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QFontDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSlider>
#include <QStyle>

using namespace Scroll;

namespace {
constexpr int kSampleRows = 15; // caption rows of the sample: composer, work, title, 12 lines
constexpr int kMinFontSize = 8;
constexpr int kMaxFontSize = 48;
constexpr int kBoxColumnPx = 22;
constexpr int kMaxPreviewPx = 640; // the preview scrolls beyond this height

template <typename T> T* Named(QWidget* parent, const char* name) {
    auto* w = new T(parent);
    w->setObjectName(QLatin1String(name));
    return w;
}
} // namespace

FrmScrollSettings::FrmScrollSettings(QWidget* parent, Prompt* prompt)
    : QWidget(parent, Qt::Window), m_prompt(prompt), m_sample(new DataGrid(this)) {
    setObjectName(QStringLiteral("FrmScrollSettings"));
    DefineScrollColumns(*m_sample);
    buildUi();
    SetCaptionsOf(this);
    RegisterCaptionRoot(this);
    SetSkin(DefaultScrollSkin());
}

FrmScrollSettings::~FrmScrollSettings() {
    UnregisterCaptionRoot(this);
}

Prompt& FrmScrollSettings::prompt() const {
    return m_prompt ? *m_prompt : AppPrompt();
}

void FrmScrollSettings::buildUi() {
    auto* layout = new QHBoxLayout(this);
    FrameScrollPreview = Named<QGroupBox>(this, "FrameScrollPreview");
    // a big font makes the preview taller than a screen: it scrolls then
    auto* scroll = m_scroll = new QScrollArea(FrameScrollPreview);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidgetResizable(true);
    scroll->setMaximumHeight(kMaxPreviewPx);
    auto* inner = new QWidget(scroll);
    inner->setAutoFillBackground(false);
    scroll->viewport()->setAutoFillBackground(false);
    scroll->setWidget(inner);
    (new QVBoxLayout(FrameScrollPreview))->addWidget(scroll);
    auto* pv = new QHBoxLayout(inner);
    pv->setContentsMargins(0, 0, 0, 0);
    pv->setSpacing(2);
    m_boxColumn = new QWidget(inner);
    m_boxColumn->setFixedWidth(kBoxColumnPx);
    for (int i = 0; i < RowBoxes; ++i)
        chbScrollPrev_ColorRow[i] = Named<QCheckBox>(
            m_boxColumn, QStringLiteral("chbScrollPrev_ColorRow(%1)").arg(i).toLatin1().constData());
    LbxScrollPreview = Named<ScrollTextView>(inner, "LbxScrollPreview");
    LbxScrollPreview->SetGrid(m_sample);
    LbxScrollPreview->SetPreviewRows(PreviewRows);
    LbxScrollPreview->setMinimumWidth(460);
    pv->addWidget(m_boxColumn, 0, Qt::AlignTop);
    pv->addWidget(LbxScrollPreview, 1, Qt::AlignTop);
    layout->addWidget(FrameScrollPreview, 1);

    auto* side = new QVBoxLayout;
    auto* feature = new QHBoxLayout;
    feature->addWidget(Named<QLabel>(this, "lblScrollPrev_Feature"));
    cmbScrollPrev_Feature = Named<QComboBox>(this, "cmbScrollPrev_Feature");
    for (int i = 0; i < Modes; ++i)
        cmbScrollPrev_Feature->addItem(QString());
    feature->addWidget(cmbScrollPrev_Feature, 1);
    side->addLayout(feature);

    auto* font = new QGridLayout;
    btnScrollPrev_Font = Named<QPushButton>(this, "btnScrollPrev_Font");
    SliderScrollPrev_Fontsize = Named<QSlider>(this, "SliderScrollPrev_Fontsize");
    SliderScrollPrev_Fontsize->setOrientation(Qt::Horizontal);
    SliderScrollPrev_Fontsize->setRange(kMinFontSize, kMaxFontSize);
    lblScrollPrev_FontInfo = Named<QLabel>(this, "lblScrollPrev_FontInfo");
    font->addWidget(btnScrollPrev_Font, 0, 0);
    font->addWidget(lblScrollPrev_FontInfo, 0, 1);
    font->addWidget(Named<QLabel>(this, "lblScrollPrev_Fontsize"), 1, 0);
    font->addWidget(SliderScrollPrev_Fontsize, 1, 1);
    side->addLayout(font);

    auto* align = Named<QGroupBox>(this, "fraScrollPrev_Align");
    auto* al = new QHBoxLayout(align);
    optScrollPrev_Left = Named<QRadioButton>(align, "optScrollPrev_Left");
    optScrollPrev_Center = Named<QRadioButton>(align, "optScrollPrev_Center");
    al->addWidget(optScrollPrev_Left);
    al->addWidget(optScrollPrev_Center);
    side->addWidget(align);

    auto* colors = Named<QGroupBox>(this, "fraScrollPrev_Colors");
    auto* cl = new QGridLayout(colors);
    optScrollPrev_Uf = Named<QRadioButton>(colors, "optScrollPrev_Uf");
    optScrollPrev_lbxBack = Named<QRadioButton>(colors, "optScrollPrev_lbxBack");
    optScrollPrev_LbxFore = Named<QRadioButton>(colors, "optScrollPrev_LbxFore");
    btnScrollPrev_Color = Named<QPushButton>(colors, "btnScrollPrev_Color");
    optScrollPrev_Uf->setChecked(true);
    cl->addWidget(optScrollPrev_Uf, 0, 0);
    cl->addWidget(optScrollPrev_lbxBack, 1, 0);
    cl->addWidget(optScrollPrev_LbxFore, 2, 0);
    cl->addWidget(btnScrollPrev_Color, 1, 1);
    side->addWidget(colors);

    auto* rows = Named<QGroupBox>(this, "fraScrollPrev_Rows");
    auto* rl = new QGridLayout(rows);
    optScrollPrev_RowBackColor = Named<QRadioButton>(rows, "optScrollPrev_RowBackColor");
    optScrollPrev_RowForeColor = Named<QRadioButton>(rows, "optScrollPrev_RowForeColor");
    btnScrollPrev_ColorFloatingRow = Named<QPushButton>(rows, "btnScrollPrev_ColorFloatingRow");
    optScrollPrev_RowForeColor->setChecked(true);
    rl->addWidget(optScrollPrev_RowBackColor, 0, 0);
    rl->addWidget(optScrollPrev_RowForeColor, 1, 0);
    rl->addWidget(btnScrollPrev_ColorFloatingRow, 0, 1, 2, 1);
    side->addWidget(rows);

    auto* bold = Named<QGroupBox>(this, "fraScrollPrev_Bold");
    auto* bl = new QVBoxLayout(bold);
    chbScrollTextPrev_RowActBold = Named<QCheckBox>(bold, "chbScrollTextPrev_RowActBold");
    chbScrollTextPrev_RowTop1Bold = Named<QCheckBox>(bold, "chbScrollTextPrev_RowTop1Bold");
    bl->addWidget(chbScrollTextPrev_RowActBold);
    bl->addWidget(chbScrollTextPrev_RowTop1Bold);
    side->addWidget(bold);

    auto* saveRow = new QHBoxLayout;
    saveRow->addWidget(Named<QLabel>(this, "lblScrollPrev_Save"));
    txtScrollPrev_Save = Named<QLineEdit>(this, "txtScrollPrev_Save");
    btnScrollPrev_Save = Named<QPushButton>(this, "btnScrollPrev_Save");
    saveRow->addWidget(txtScrollPrev_Save, 1);
    saveRow->addWidget(btnScrollPrev_Save);
    side->addLayout(saveRow);
    auto* files = new QHBoxLayout;
    btnScrollPrev_OpenScs = Named<QPushButton>(this, "btnScrollPrev_OpenScs");
    btnScrollPrev_Delete = Named<QPushButton>(this, "btnScrollPrev_Delete");
    btnScrollPrev_Close = Named<QPushButton>(this, "btnScrollPrev_Close");
    files->addWidget(btnScrollPrev_OpenScs);
    files->addWidget(btnScrollPrev_Delete);
    files->addStretch(1);
    files->addWidget(btnScrollPrev_Close);
    side->addStretch(1);
    side->addLayout(files);
    layout->addLayout(side);

    connect(cmbScrollPrev_Feature, &QComboBox::currentIndexChanged, this, [this](int mode) {
        if (m_filling || mode < 0)
            return;
        m_skin.Mode = mode;
        SequencingLines();
        EnDisableForm();
    });
    connect(btnScrollPrev_Font, &QPushButton::clicked, this, [this] {
        QFont f = LbxScrollPreview->RowFont(m_skin.FontBold);
        const bool ok = chooseFont ? chooseFont(f) : [&] {
            bool accepted = false;
            f = QFontDialog::getFont(&accepted, f, this);
            return accepted;
        }();
        if (!ok)
            return;
        m_skin.FontName = f.family();
        m_skin.FontSize = std::max(1, f.pointSize());
        m_skin.FontBold = f.bold();
        m_skin.FontItalic = f.italic();
        showSkin();
    });
    connect(SliderScrollPrev_Fontsize, &QSlider::valueChanged, this, [this](int size) {
        if (m_filling)
            return;
        m_skin.FontSize = size;
        showSkin();
    });
    connect(optScrollPrev_Left, &QRadioButton::toggled, this, [this](bool on) {
        if (on && !m_filling) {
            m_skin.Alignment = 0;
            showSkin();
        }
    });
    connect(optScrollPrev_Center, &QRadioButton::toggled, this, [this](bool on) {
        if (on && !m_filling) {
            m_skin.Alignment = 2;
            showSkin();
        }
    });
    connect(btnScrollPrev_Color, &QPushButton::clicked, this, [this] { colorItem(); });
    connect(btnScrollPrev_ColorFloatingRow, &QPushButton::clicked, this, [this] { colorRows(); });
    connect(chbScrollTextPrev_RowActBold, &QCheckBox::toggled, this, [this](bool on) { SetBoldActRow(on); });
    connect(chbScrollTextPrev_RowTop1Bold, &QCheckBox::toggled, this, [this](bool on) { SetBoldTop1(on); });
    connect(btnScrollPrev_Save, &QPushButton::clicked, this, [this] { save(); });
    connect(btnScrollPrev_OpenScs, &QPushButton::clicked, this, [this] { openScs(); });
    connect(btnScrollPrev_Delete, &QPushButton::clicked, this, [this] { deleteScs(); });
    connect(btnScrollPrev_Close, &QPushButton::clicked, this, &QWidget::close);
}

void FrmScrollSettings::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::WindowTitleChange || e->type() == QEvent::LanguageChange)
        TextInLbx();
}

void FrmScrollSettings::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    placeBoxes();
}

// ---- the preview -------------------------------------------------------------------------

void FrmScrollSettings::SetSkin(const ScrollSkin& skin) {
    m_skin = skin;
    m_filling = true;
    cmbScrollPrev_Feature->setCurrentIndex(skin.Mode >= 0 && skin.Mode < Modes ? skin.Mode : -1);
    optScrollPrev_Left->setChecked(skin.Alignment == 0);
    optScrollPrev_Center->setChecked(skin.Alignment == 2);
    m_filling = false;
    SequencingLines();
    EnDisableForm();
}

void FrmScrollSettings::TextInLbx() {
    // composer, work, a blank, the title, a blank, twelve lines, a blank
    m_sample->LockUpdate(true);
    m_sample->Clear();
    auto add = [this](const QString& text) { m_sample->AddRow({QString(), QString(), text}); };
    add(Caption(CaptionRow(CapScrollSample)));
    add(Caption(CaptionRow(CapScrollSample + 1)));
    add(QString());
    add(Caption(CaptionRow(CapScrollSample + 2)));
    add(QString());
    for (int i = 3; i < kSampleRows; ++i)
        add(Caption(CaptionRow(CapScrollSample + i)));
    add(QString());
    m_sample->LockUpdate(false);
    LbxScrollPreview->update();
}

int FrmScrollSettings::BoxRow(int box) const {
    return box >= 0 && box < RowBoxes ? FirstTextRow + box : 0;
}

void FrmScrollSettings::SequencingLines() {
    if (m_skin.Mode < 0 || m_skin.Mode >= Modes)
        return;
    TextInLbx();
    showSkin();
    EnDisableLines();
}

void FrmScrollSettings::showSkin() {
    LbxScrollPreview->SetSkin(m_skin);
    LbxScrollPreview->SetAct(m_skin.Mode == 3 ? 11 : FirstTextRow);
    LbxScrollPreview->setFixedHeight(PreviewRows * LbxScrollPreview->RowHeight());
    LbxScrollPreview->setMinimumWidth(std::max(460, LbxScrollPreview->TextWidth()));
    const int contentHeight = PreviewRows * LbxScrollPreview->RowHeight();
    const int bar = contentHeight > kMaxPreviewPx ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    m_scroll->setMinimumSize(kBoxColumnPx + 2 + LbxScrollPreview->minimumWidth() + bar + 2,
                             std::min(contentHeight, kMaxPreviewPx));
    QPalette pal = FrameScrollPreview->palette();
    pal.setColor(QPalette::Window, SkinColor(m_skin.WindowBack));
    pal.setColor(QPalette::WindowText, SkinColor(ContrastTextColor(m_skin.WindowBack)));
    FrameScrollPreview->setPalette(pal);
    FrameScrollPreview->setAutoFillBackground(true);
    m_filling = true;
    SliderScrollPrev_Fontsize->setValue(m_skin.FontSize);
    m_filling = false;
    lblScrollPrev_FontInfo->setText(QStringLiteral("%1 pt, %2").arg(m_skin.FontSize).arg(m_skin.FontName));
    placeBoxes();
}

void FrmScrollSettings::placeBoxes() {
    if (!m_boxColumn)
        return;
    const int h = LbxScrollPreview->RowHeight();
    m_boxColumn->setFixedHeight(PreviewRows * h);
    for (int i = 0; i < RowBoxes; ++i) {
        QCheckBox* b = chbScrollPrev_ColorRow[i];
        const QSize s = b->sizeHint();
        b->setGeometry(2, (BoxRow(i) - 1) * h + (h - s.height()) / 2, s.width(), s.height());
    }
}

void FrmScrollSettings::EnDisableLines() {
    // the boxes of the rows the mode colours: the current row and the table's rows
    const int used = m_skin.Mode == 1 ? 1 : m_skin.Mode == 2 ? 2 : m_skin.Mode >= 3 ? RowBoxes : 0;
    for (int i = 0; i < RowBoxes; ++i) {
        chbScrollPrev_ColorRow[i]->setEnabled(i < used);
        chbScrollPrev_ColorRow[i]->setVisible(i < used);
        if (i >= used)
            chbScrollPrev_ColorRow[i]->setChecked(false);
    }
}

void FrmScrollSettings::EnDisableForm() {
    const bool mode0 = m_skin.Mode == 0;
    findChild<QGroupBox*>(QStringLiteral("fraScrollPrev_Rows"))->setEnabled(!mode0);
    findChild<QGroupBox*>(QStringLiteral("fraScrollPrev_Bold"))->setEnabled(!mode0);
    m_filling = true;
    chbScrollTextPrev_RowActBold->setChecked(m_skin.ActBold);
    chbScrollTextPrev_RowTop1Bold->setChecked(m_skin.Mode == 3 && m_skin.Top1Bold);
    chbScrollTextPrev_RowTop1Bold->setEnabled(m_skin.Mode == 3);
    m_filling = false;
}

void FrmScrollSettings::SetBoldActRow(bool on) {
    if (m_filling)
        return;
    m_skin.ActBold = on;
    showSkin();
}

void FrmScrollSettings::SetBoldTop1(bool on) {
    if (m_filling || m_skin.Mode != 3)
        return;
    m_skin.Top1Bold = on;
    showSkin();
}

// ---- colours -----------------------------------------------------------------------------

QColor FrmScrollSettings::askColor(qint32 start) {
    if (chooseColor)
        return chooseColor(SkinColor(start));
    return QColorDialog::getColor(SkinColor(start), this);
}

void FrmScrollSettings::colorItem() {
    qint32* target = optScrollPrev_Uf->isChecked()        ? &m_skin.WindowBack
                     : optScrollPrev_lbxBack->isChecked() ? &m_skin.ListBack
                                                          : &m_skin.ListFore;
    const QColor c = askColor(*target);
    if (!c.isValid())
        return;
    const qint32 v = SkinValue(c);
    if (target == &m_skin.ListBack) {
        // the list's back goes to every row of the preview
        m_skin.ActBack = v;
        m_skin.BackTable.fill(v);
    }
    *target = v;
    showSkin();
}

void FrmScrollSettings::colorRows() {
    QList<int> rows;
    for (int i = 0; i < RowBoxes; ++i)
        if (chbScrollPrev_ColorRow[i]->isEnabled() && chbScrollPrev_ColorRow[i]->isChecked())
            rows << BoxRow(i);
    if (rows.isEmpty()) {
        prompt().Tell(Caption(CapNothingChosen));
        return;
    }
    const bool back = optScrollPrev_RowBackColor->isChecked();
    const int act = m_skin.Mode == 3 ? 11 : FirstTextRow;
    const ScrollRowLook first = ScrollRowStyle(m_skin, act, rows.first());
    const QColor c = askColor(back ? first.back : first.fore);
    if (!c.isValid())
        return;
    const qint32 v = SkinValue(c);
    for (const int row : rows) {
        if (row == act) {
            (back ? m_skin.ActBack : m_skin.ActFore) = v;
            continue;
        }
        const int entry = m_skin.Mode == 3 ? (row < act ? row - 5 : row - 6) : row - act;
        if (entry >= 1 && entry <= TableSize)
            (back ? m_skin.BackTable : m_skin.ForeTable)[size_t(entry - 1)] = v;
    }
    showSkin();
}

// ---- files -------------------------------------------------------------------------------

void FrmScrollSettings::save() {
    const QString name = txtScrollPrev_Save->text().trimmed();
    if (name.isEmpty()) {
        prompt().Tell(Caption(CapNoSkinName));
        txtScrollPrev_Save->setFocus();
        return;
    }
    QDir().mkpath(ScrollSkinFolder());
    const QString path = ScrollSkinFolder() + QLatin1Char('/') + ScrollSkinFileName(name);
    QString error;
    if (!SaveScrollSkin(path, m_skin, &error)) {
        prompt().Tell(error, Prompt::Icon::Warning);
        return;
    }
    prompt().Tell(Caption(CapSkinSaved));
}

void FrmScrollSettings::openScs() {
    const QString path =
        chooseSkinFile ? chooseSkinFile(ScrollSkinFolder(), Caption(CapOpenSkinTitle))
                       : QFileDialog::getOpenFileName(this, Caption(CapOpenSkinTitle), ScrollSkinFolder(),
                                                      Caption(CapFilesFilter) + QStringLiteral(" (*.scs)"));
    if (path.isEmpty())
        return;
    ScrollSkin skin = m_skin;
    QString error;
    if (!ReadScrollSkinFile(path, skin, &error)) {
        prompt().Tell(Caption(CapReadFailed));
        return;
    }
    SetSkin(skin);
    const QString file = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    txtScrollPrev_Save->setText(file);
}

void FrmScrollSettings::deleteScs() {
    const QString path =
        chooseSkinFile ? chooseSkinFile(ScrollSkinFolder(), Caption(CapDeleteSkinTitle))
                       : QFileDialog::getOpenFileName(this, Caption(CapDeleteSkinTitle), ScrollSkinFolder(),
                                                      Caption(CapFilesFilter) + QStringLiteral(" (*.scs)"));
    if (!path.isEmpty())
        QFile::remove(path);
}
