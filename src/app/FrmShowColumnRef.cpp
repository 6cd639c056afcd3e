#include "app/FrmShowColumnRef.h"

#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/DataGrid.h"
#include "core/Settings.h"
#include "list/modColumnPatterns.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int kBoxRows = 16;
}

FrmShowColumnRef::FrmShowColumnRef(DataGrid& lbxRef, QWidget* parent)
    : QWidget(parent, Qt::Tool), m_grid(lbxRef) {
    setObjectName(QStringLiteral("FrmShowColumnRef"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    m_boxArea = new QWidget(this);
    new QGridLayout(m_boxArea);
    layout->addWidget(m_boxArea, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    btnShowColRef_Save = new QPushButton(this);
    btnShowColRef_Save->setObjectName(QStringLiteral("btnShowColRef_Save"));
    btnShowColRef_Close = new QPushButton(this);
    btnShowColRef_Close->setObjectName(QStringLiteral("btnShowColRef_Close"));
    buttons->addWidget(btnShowColRef_Save);
    buttons->addWidget(btnShowColRef_Close);
    layout->addLayout(buttons);

    connect(btnShowColRef_Save, &QPushButton::clicked, this,
            [this] { ::btnShowColRef_Save(Settings(), m_grid, AppPrompt()); });
    connect(btnShowColRef_Close, &QPushButton::clicked, this, &QWidget::close);

    BuildBoxes();
    RegisterCaptionRoot(this);
    SetCaptionsOf(this);
}

FrmShowColumnRef::~FrmShowColumnRef() {
    UnregisterCaptionRoot(this);
}

void FrmShowColumnRef::BuildBoxes() {
    // The list may get its columns after the window was made: one box per column.
    auto* grid = static_cast<QGridLayout*>(m_boxArea->layout());
    while (m_boxes.size() < m_grid.Cols()) {
        const int i = int(m_boxes.size());
        auto* b = new QCheckBox(m_boxArea);
        b->setObjectName(QStringLiteral("chbColRef(%1)").arg(i));
        grid->addWidget(b, i % kBoxRows, i / kBoxRows);
        connect(b, &QCheckBox::toggled, this, [this, i](bool on) {
            if (!m_loading && i + 1 <= m_grid.Cols())
                m_grid.SetColumnVisible(i + 1, on);
        });
        m_boxes << b;
    }
    for (int i = 0; i < m_boxes.size(); ++i)
        m_boxes.at(i)->setVisible(i < m_grid.Cols());
}

void FrmShowColumnRef::LoadFromGrid() {
    BuildBoxes();
    m_loading = true;
    for (int i = 0; i < m_grid.Cols(); ++i) {
        m_boxes.at(i)->setText(m_grid.Column(i + 1).caption);
        m_boxes.at(i)->setChecked(m_grid.Column(i + 1).visible);
    }
    m_loading = false;
}

void FrmShowColumnRef::Open() {
    SetCaptionsOf(this);
    LoadFromGrid();
    show();
    raise();
    activateWindow();
}
