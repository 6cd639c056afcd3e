#include "app/WindowPlace.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

void CenterOver(QWidget* w, const QWidget* over) {
    if (!w)
        return;
    if (!over)
        over = w->parentWidget() ? w->parentWidget()->window() : QApplication::activeWindow();
    w->adjustSize();
    QRect frame = w->frameGeometry();
    const QRect target = over ? over->frameGeometry() : QRect();
    QScreen* screen = over ? over->screen() : w->screen();
    if (target.isValid())
        frame.moveCenter(target.center());
    if (screen) {
        const QRect avail = screen->availableGeometry();
        if (!target.isValid())
            frame.moveCenter(avail.center());
        frame.moveLeft(
            std::clamp(frame.left(), avail.left(), std::max(avail.left(), avail.right() - frame.width())));
        frame.moveTop(
            std::clamp(frame.top(), avail.top(), std::max(avail.top(), avail.bottom() - frame.height())));
    }
    w->move(frame.topLeft());
}
