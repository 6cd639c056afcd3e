#pragma once
// Right clicks as the window system reports them, and the popup menu they open, for the
// window tests of the context menus.

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>
#include <functional>
#include <memory>

// Waits for the popup named `name`, then hands it to `act` (which picks or closes).
inline void WhenMenuOpens(const std::function<void(QMenu*)>& act, bool* seen,
                          const QString& name = QStringLiteral("mnuInput")) {
    auto* poll = new QTimer;
    poll->setInterval(20);
    auto tries = std::make_shared<int>(0);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, act, seen, tries, name] {
        if (++*tries > 250) { // no menu within five seconds
            poll->stop();
            poll->deleteLater();
            return;
        }
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu || menu->objectName() != name)
            return;
        poll->stop();
        poll->deleteLater();
        *seen = true;
        act(menu);
    });
    poll->start();
}

// The press of the right button at `at` of a view's viewport: a context menu event.
inline void RightClickAt(QAbstractItemView* view, const QPoint& at) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, view->viewport()->mapToGlobal(at));
    QApplication::sendEvent(view->viewport(), &event);
}

// The entry (action or sub-menu) of a menu by its key.
inline QAction* Entry(QMenu* menu, const char* key) {
    return menu->findChild<QAction*>(QLatin1String(key));
}

// Opens the menu named `name` by a right click at `at` of `view` and triggers the entry
// `key`; false when the menu did not open or the entry is missing or disabled.
inline bool ChooseFromMenu(QAbstractItemView* view, const QPoint& at, const char* key, const QString& name) {
    bool seen = false, chosen = false;
    WhenMenuOpens(
        [key, &chosen](QMenu* menu) {
            QAction* a = Entry(menu, key);
            if (a && a->isEnabled()) {
                chosen = true;
                a->trigger();
            } else {
                menu->close();
            }
        },
        &seen, name);
    RightClickAt(view, at);
    return seen && chosen;
}
