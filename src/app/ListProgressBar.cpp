#include "app/ListProgressBar.h"

#include "core/AppState.h"

#include <QHBoxLayout>
#include <QLayout>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

ListProgressBar::ListProgressBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("ListProgressBar"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    prgBar = new QProgressBar(this);
    prgBar->setObjectName(QStringLiteral("prgBar"));
    prgBar->setTextVisible(true);
    btnTab1_Abort = new QPushButton(this);
    btnTab1_Abort->setObjectName(QStringLiteral("btnTab1_Abort"));
    layout->addWidget(prgBar, 1);
    layout->addWidget(btnTab1_Abort);
    connect(btnTab1_Abort, &QPushButton::clicked, this, [] { State().AbortRequested = true; });
    hide();
}

void ListProgressBar::ShowProgress(int max, int keepButtons) {
    prgBar->setRange(0, std::max(max, 1));
    prgBar->setValue(0);
    // -1 leaves the buttons as they are: the abort button shows only for commands that
    // can stop between two items.
    btnTab1_Abort->setVisible(keepButtons == 0);
    show();
    // Take the bar's place at once: the command runs before the event loop would.
    if (parentWidget() && parentWidget()->layout())
        parentWidget()->layout()->activate();
    prgBar->repaint();
    m_sincePaint.start();
}

void ListProgressBar::SetProgress(int value) {
    prgBar->setValue(value);
    // Only the bar itself is painted: the list may be half rewritten while a command
    // runs, so no event loop is entered here.
    if (m_sincePaint.isValid() && m_sincePaint.elapsed() >= 100) {
        prgBar->repaint();
        m_sincePaint.restart();
    }
}

void ListProgressBar::HideProgress() {
    hide();
    prgBar->setValue(0);
}
