#include "app/AreaPage.h"

#include <QEvent>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

AreaPage::AreaPage(const QString& objectName, QWidget* parent, bool scrolls) : QWidget(parent) {
    setObjectName(objectName);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(12, 10, 12, 10);
    outer->setSpacing(8);
    m_title = new QLabel(this);
    m_title->setObjectName(objectName + QStringLiteral("_Title"));
    QFont f = m_title->font();
    f.setPointSizeF(f.pointSizeF() * 1.25);
    f.setBold(true);
    m_title->setFont(f);
    m_title->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    outer->addWidget(m_title);
    // The body is a widget that takes all the room, so that the title stays on top
    // even while an area has no controls yet.
    auto* bodyWidget = new QWidget(this);
    bodyWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_body = new QVBoxLayout(bodyWidget);
    m_body->setContentsMargins(0, 0, 0, 0);
    m_body->setSpacing(8);
    if (!scrolls) {
        outer->addWidget(bodyWidget, 1);
        return;
    }
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(objectName + QStringLiteral("_Scroll"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(bodyWidget);
    outer->addWidget(scroll, 1);
}

void AreaPage::changeEvent(QEvent* event) {
    // The page title follows the window title that the caption walk sets.
    if (event->type() == QEvent::WindowTitleChange)
        m_title->setText(windowTitle());
    QWidget::changeEvent(event);
}
