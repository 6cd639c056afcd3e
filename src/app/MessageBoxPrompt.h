#pragma once
// The Prompt of the window program: message boxes with the title "Quillotune".

#include "core/Prompt.h"

class QWidget;

class MessageBoxPrompt : public Prompt {
public:
    explicit MessageBoxPrompt(QWidget* parent = nullptr) : m_parent(parent) {}
    void SetParent(QWidget* parent) { m_parent = parent; }

    void Tell(const QString& text, Icon icon = Icon::Information) override;
    void TellUntitled(const QString& text, Icon icon = Icon::Critical) override;
    bool AskYesNo(const QString& text, bool defaultYes = true, Icon icon = Icon::Question) override;
    bool AskOkCancel(const QString& text, Icon icon = Icon::Question) override;
    std::optional<QString> InputBox(const QString& text, const QString& initial = QString()) override;
    std::optional<QString> TitledInputBox(const QString& title, const QString& text,
                                          const QString& initial = QString()) override;

private:
    QWidget* m_parent;
};

// The one prompt of the windows. Window tests replace it with a ScriptedPrompt.
Prompt& AppPrompt();
void SetAppPrompt(Prompt* prompt); // nullptr: back to the message boxes
