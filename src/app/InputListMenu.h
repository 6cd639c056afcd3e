#pragma once
// The right-click menu of the data list LbxInput: built fresh from the state of the list
// and the settings on each right click, the chosen key then runs its command.

#include "list/modContextMenu.h"

#include <QObject>

class FrmInput;

class InputListMenu : public QObject {
    Q_OBJECT
public:
    explicit InputListMenu(FrmInput* window);

    InputMenuState State() const;
    ContextMenuEntries Build() const;
    // Runs the command of `key`; an empty or unknown key runs nothing.
    void RunKey(const QString& key);

private:
    void Show(const QPoint& at);
    void SetMarkOfHighlighted(const QString& mark);
    void RemoveMarkOfHighlighted(const QString& mark, bool all);
    void HighlightType(const QString& type);
    FrmInput* m_window;
    InputMenuState m_shown; // the state the last menu was built from
};
