#pragma once
// The right-click menu of the data list LbxInput: built fresh from the state of the list
// and the settings on each right click, the chosen key then runs its command.

#include "list/modContextMenu.h"

#include <QObject>
#include <functional>

class FrmInput;

class InputListMenu : public QObject {
    Q_OBJECT
public:
    explicit InputListMenu(FrmInput* window);

    InputMenuState State() const;
    ContextMenuEntries Build() const;
    // Runs the command of `key`; an empty or unknown key runs nothing.
    void RunKey(const QString& key);
    // The file picker of LinkToTag (start folder in, chosen file out); tests replace it.
    std::function<QString(const QString& startFolder)> chooseLinkFile;

private:
    void Show(const QPoint& at);
    void SetMarkOfHighlighted(const QString& mark);
    void RemoveMarkOfHighlighted(const QString& mark, bool all);
    void HighlightType(const QString& type);
    void LinkCurrentRow();
    bool RunRefFileKey(const QString& key);
    FrmInput* m_window;
    InputMenuState m_shown; // the state the last menu was built from
};

// The rating (or, with `mood`, the mood) `value` into the files of the highlighted rows
// of the data list; an empty value removes it. The menu and the keys of the list use it.
void SetRatingMoodOfHighlighted(FrmInput* window, bool mood, const QString& value);
