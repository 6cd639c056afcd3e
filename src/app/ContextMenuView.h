#pragma once
// Shows the entries of a context menu (list/modContextMenu.h) as a popup and returns the
// chosen key; an empty key when the menu closed without a choice. Every action and sub-menu
// takes its key as objectName; the popup itself is named `menuName`.

#include "list/modContextMenu.h"

#include <QPoint>

class QWidget;

QString ExecContextMenu(QWidget* parent, const ContextMenuEntries& entries, const QPoint& globalPos,
                        const QString& menuName);

// The caption of a menu key from the control table: objectName prefix + key.
QString InputMenuCaption(const QString& key);
QString RefMenuCaption(const QString& key);
QString FolderMenuCaption(const QString& key);
