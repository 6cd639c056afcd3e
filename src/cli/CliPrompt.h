#pragma once
// The Prompt of quillotune-cli: messages go to stderr, questions take their default
// answer (the tool never waits for a key).

#include "core/Prompt.h"
#include "list/modScan.h"

class CliPrompt : public Prompt {
public:
    void Tell(const QString& text, Icon icon = Icon::Information) override;
    bool AskYesNo(const QString& text, bool defaultYes = true, Icon icon = Icon::Question) override;
    bool AskOkCancel(const QString& text, Icon icon = Icon::Question) override;
    std::optional<QString> InputBox(const QString& text, const QString& initial = QString()) override;
    std::optional<QString> TitledInputBox(const QString& title, const QString& text,
                                          const QString& initial = QString()) override;
    int shownErrors = 0; // messages with the critical icon
};

// Loads qlt.ini and Caption.qlt from the program folder when they are there, so that
// messages and column captions read as in the window. Missing files are no error here.
void LoadProgramTexts();

// A progress line on stderr, only when stderr is a terminal, at most ten times a second.
class TerminalProgress {
public:
    TerminalProgress();
    ~TerminalProgress();
    void Start(int max);
    void Set(int value);
    void Text(const QString& text);
    void Finish();

private:
    bool m_tty;
    bool m_shown = false;
    int m_max = 0;
    qint64 m_lastMs = -1000;
    QString m_text;
    void Draw(int value);
};

// The hooks of a scan or refresh that draw on `progress`.
ScanHooks TerminalScanHooks(TerminalProgress& progress);

// The value of "--threads N" at args[i + 1] (i is moved on): readers at once, 1 to 8.
// False with the usage shown for anything else.
bool ThreadsArgument(const QStringList& args, int& i, int& threads, const char* usage);
