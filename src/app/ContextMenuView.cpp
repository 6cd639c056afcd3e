#include "app/ContextMenuView.h"

#include "core/ControlCaptions.h"

#include <QHash>
#include <QMenu>
#include <QPointer>

QString ExecContextMenu(QWidget* parent, const ContextMenuEntries& entries, const QPoint& globalPos,
                        const QString& menuName) {
    if (entries.Entries().empty())
        return QString();
    QMenu root(parent);
    root.setObjectName(menuName);
    // An entry with children becomes a sub-menu; children always follow their parent.
    QSet<QString> parents;
    for (const MenuEntry& e : entries.Entries())
        if (!e.parent.isEmpty())
            parents.insert(e.parent);
    QHash<QString, QMenu*> menus;
    QString chosen;
    for (const MenuEntry& e : entries.Entries()) {
        QMenu* into = e.parent.isEmpty() ? &root : menus.value(e.parent, &root);
        if (e.caption == QLatin1String("-")) {
            QAction* line = into->addSeparator();
            line->setObjectName(e.key);
            continue;
        }
        if (parents.contains(e.key)) {
            QMenu* sub = into->addMenu(e.caption);
            sub->setObjectName(e.key);
            sub->menuAction()->setObjectName(e.key);
            sub->setEnabled(e.enabled);
            menus.insert(e.key, sub);
            continue;
        }
        QAction* a = into->addAction(e.caption);
        a->setObjectName(e.key);
        a->setCheckable(e.checked);
        a->setChecked(e.checked);
        a->setEnabled(e.enabled);
        const QString key = e.key;
        QObject::connect(a, &QAction::triggered, &root, [&chosen, &root, &menus, key] {
            chosen = key;
            for (QMenu* m : std::as_const(menus))
                m->hide();
            root.hide();
        });
    }
    // A group none of whose entries can run is shown disabled as a whole (groups nest
    // two deep at most, so a group is looked at after its sub-groups by the last pass).
    for (int pass = 0; pass < 3; ++pass)
        for (QMenu* m : std::as_const(menus)) {
            bool any = false;
            for (QAction* a : m->actions())
                any = any || (a->isEnabled() && !a->isSeparator());
            if (!any)
                m->menuAction()->setEnabled(false);
        }
    root.exec(globalPos);
    return chosen;
}

QString InputMenuCaption(const QString& key) {
    return NamedCaption(QStringLiteral("mnuInput_") + key);
}

QString RefMenuCaption(const QString& key) {
    return NamedCaption(QStringLiteral("mnuRef_") + key);
}

QString FolderMenuCaption(const QString& key) {
    return NamedCaption(QStringLiteral("mnuFolder_") + key);
}
