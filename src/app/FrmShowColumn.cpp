#include "app/FrmShowColumn.h"

#include "app/WindowPlace.h"

#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/DataGrid.h"
#include "core/Settings.h"
#include "list/modColumnPatterns.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
constexpr int kBoxRows = 18; // boxes per column of the window
}

FrmShowColumn::FrmShowColumn(DataGrid& lbxInput, QWidget* parent)
    : QWidget(parent, Qt::Tool), m_grid(lbxInput) {
    setObjectName(QStringLiteral("FrmShowColumn"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(10);

    auto* grpColumns = new QGroupBox(this);
    grpColumns->setObjectName(QStringLiteral("grpShowCol_Columns"));
    auto* boxes = new QGridLayout(grpColumns);
    boxes->setHorizontalSpacing(14);
    boxes->setVerticalSpacing(1);
    for (int i = 0; i < m_grid.Cols(); ++i) {
        auto* b = new QCheckBox(grpColumns);
        b->setObjectName(QStringLiteral("chbCol(%1)").arg(i));
        boxes->addWidget(b, i % kBoxRows, i / kBoxRows);
        connect(b, &QCheckBox::toggled, this, [this, i](bool on) {
            if (!m_loading)
                ToggleColumn_LbxInput(m_grid, i, on);
        });
        m_boxes << b;
    }
    layout->addWidget(grpColumns, 1);

    auto* side = new QVBoxLayout;
    side->setSpacing(4);
    auto* grpPatterns = new QGroupBox(this);
    grpPatterns->setObjectName(QStringLiteral("grpShowCol_Patterns"));
    auto* pat = new QVBoxLayout(grpPatterns);
    pat->setSpacing(2);
    auto* group = new QButtonGroup(this);
    for (int p = 0; p < kPatternCount; ++p) {
        auto* o = new QRadioButton(grpPatterns);
        o->setObjectName(QStringLiteral("optShowCol_Pattern(%1)").arg(p));
        group->addButton(o, p);
        pat->addWidget(o);
        m_options << o;
    }
    txtShowCol_Pattern = new QLineEdit(grpPatterns);
    txtShowCol_Pattern->setObjectName(QStringLiteral("txtShowCol_Pattern"));
    pat->addWidget(txtShowCol_Pattern);
    btnShowCol_SavePattern = new QPushButton(grpPatterns);
    btnShowCol_SavePattern->setObjectName(QStringLiteral("btnShowCol_SavePattern"));
    btnShowCol_DeletePattern = new QPushButton(grpPatterns);
    btnShowCol_DeletePattern->setObjectName(QStringLiteral("btnShowCol_DeletePattern"));
    auto* patButtons = new QHBoxLayout;
    patButtons->addWidget(btnShowCol_SavePattern);
    patButtons->addWidget(btnShowCol_DeletePattern);
    pat->addLayout(patButtons);
    side->addWidget(grpPatterns);

    auto makeButton = [this, side](const char* name) {
        auto* b = new QPushButton(this);
        b->setObjectName(QString::fromLatin1(name));
        side->addWidget(b);
        return b;
    };
    btnShowCol_ActivateAll = makeButton("btnShowCol_ActivateAll");
    btnShowCol_DeActivateAll = makeButton("btnShowCol_DeActivateAll");
    BtnFrmShow_SetTFOn = makeButton("BtnFrmShow_SetTFOn");
    BtnFrmShow_SetTFOff = makeButton("BtnFrmShow_SetTFOff");
    side->addStretch(1);
    btnShowCol_Close = makeButton("btnShowCol_Close");
    layout->addLayout(side);

    connect(group, &QButtonGroup::idClicked, this, [this](int p) {
        const PatternResult r = ::optShowCol_Pattern(Settings(), m_grid, p);
        if (!r.ran)
            return;
        // The default caption of a free slot is no name.
        txtShowCol_Pattern->setText(r.nameText);
        LoadFromGrid();
    });
    connect(btnShowCol_SavePattern, &QPushButton::clicked, this, [this] {
        const int p = ChosenPattern();
        const PatternResult r = ::btnShowCol_SavePattern(
            Settings(), m_grid, txtShowCol_Pattern->text(), p, [] { return SaveSettings(); }, AppPrompt());
        if (r.focusName)
            txtShowCol_Pattern->setFocus();
        if (r.ran)
            m_options.at(p)->setText(r.optionCaption);
    });
    connect(btnShowCol_DeletePattern, &QPushButton::clicked, this, [this] {
        const int p = ChosenPattern();
        const PatternResult r = ::btnShowCol_DeletePattern(
            Settings(), p, [] { return SaveSettings(); }, AppPrompt());
        if (!r.ran)
            return;
        m_options.at(p)->setText(r.optionCaption);
        txtShowCol_Pattern->clear();
    });
    connect(btnShowCol_ActivateAll, &QPushButton::clicked, this, [this] {
        ::btnShowCol_ActivateAll(m_grid);
        LoadFromGrid();
    });
    connect(btnShowCol_DeActivateAll, &QPushButton::clicked, this, [this] {
        ::btnShowCol_DeActivateAll(m_grid);
        LoadFromGrid();
    });
    connect(BtnFrmShow_SetTFOn, &QPushButton::clicked, this, [this] {
        ::BtnFrmShow_SetTFOn(m_grid);
        LoadFromGrid();
    });
    connect(BtnFrmShow_SetTFOff, &QPushButton::clicked, this, [this] {
        ::BtnFrmShow_SetTFOff(m_grid);
        LoadFromGrid();
    });
    connect(btnShowCol_Close, &QPushButton::clicked, this, &QWidget::hide);

    // Captions change with the language, visibility with other commands: while the
    // window is open its boxes follow the grid.
    connect(&m_grid, &DataGrid::columnsChanged, this, [this] {
        if (!isVisible())
            return;
        LoadFromGrid();
        RefreshPatternCaptions();
    });

    RegisterCaptionRoot(this);
    SetCaptionsOf(this);
}

FrmShowColumn::~FrmShowColumn() {
    UnregisterCaptionRoot(this);
}

int FrmShowColumn::ChosenPattern() const {
    for (int p = 0; p < m_options.size(); ++p)
        if (m_options.at(p)->isChecked())
            return p;
    return -1;
}

void FrmShowColumn::RefreshPatternCaptions() {
    for (int p = 0; p < m_options.size(); ++p)
        m_options.at(p)->setText(PatternCaption(Settings(), p));
}

void FrmShowColumn::LoadFromGrid() {
    m_loading = true;
    for (int i = 0; i < m_boxes.size() && i < m_grid.Cols(); ++i) {
        m_boxes.at(i)->setText(m_grid.Column(i + 1).caption);
        m_boxes.at(i)->setChecked(m_grid.Column(i + 1).visible);
    }
    m_loading = false;
}

void FrmShowColumn::Open() {
    SetCaptionsOf(this);
    LoadFromGrid();
    RefreshPatternCaptions();
    const int active = ActivePattern(Settings());
    if (active >= 0 && active < m_options.size()) {
        m_options.at(active)->setChecked(true);
        txtShowCol_Pattern->setText(PatternName(Settings(), active));
    }
    if (!isVisible())
        CenterOver(this);
    show();
    raise();
    activateWindow();
}
