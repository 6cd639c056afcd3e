#pragma once
// Prompt: the one way the logic asks or tells the user something. The window program
// shows message boxes (src/app/MessageBoxPrompt), the command-line tool prints, and
// tests script the answers (ScriptedPrompt).

#include <QString>
#include <QStringList>
#include <deque>
#include <optional>
#include <vector>

class Prompt {
public:
    enum class Icon { None, Information, Warning, Critical, Question };

    virtual ~Prompt() = default;

    // A message with an OK button.
    virtual void Tell(const QString& text, Icon icon = Icon::Information) = 0;
    // The same without a title: the rare message that shows another program's text
    // (the tag engine's) as it stands. Where there are no titles it is a Tell.
    virtual void TellUntitled(const QString& text, Icon icon = Icon::Critical) { Tell(text, icon); }
    // Yes/No; defaultYes chooses the default button. Returns true for Yes.
    virtual bool AskYesNo(const QString& text, bool defaultYes = true, Icon icon = Icon::Question) = 0;
    // OK/Cancel. Returns true for OK.
    virtual bool AskOkCancel(const QString& text, Icon icon = Icon::Question) = 0;
    // A line of text; nullopt when cancelled.
    virtual std::optional<QString> InputBox(const QString& text, const QString& initial = QString()) = 0;
    // The same under a title of its own instead of the program's. Where there are no
    // titles it is the plain InputBox.
    virtual std::optional<QString> TitledInputBox(const QString& title, const QString& text,
                                                  const QString& initial = QString()) {
        (void)title;
        return InputBox(text, initial);
    }

    // The title every message carries.
    static QString Title() { return QStringLiteral("Quillotune"); }
};

// For tests: answers come from a queue, everything shown is recorded.
class ScriptedPrompt : public Prompt {
public:
    struct Shown {
        QString kind; // "tell", "untitled", "yesno", "okcancel", "input"
        QString text;
        Icon icon;
        QString title = {}; // the title of an input box that has one of its own
    };

    std::deque<bool> answers; // Yes/No and OK/Cancel answers, in order
    std::deque<std::optional<QString>> inputs;
    bool defaultAnswer = true; // used when the queue is empty
    std::vector<Shown> shown;

    void Tell(const QString& text, Icon icon = Icon::Information) override {
        shown.push_back({QStringLiteral("tell"), text, icon});
    }
    void TellUntitled(const QString& text, Icon icon = Icon::Critical) override {
        shown.push_back({QStringLiteral("untitled"), text, icon});
    }
    bool AskYesNo(const QString& text, bool defaultYes = true, Icon icon = Icon::Question) override {
        (void)defaultYes;
        shown.push_back({QStringLiteral("yesno"), text, icon});
        return Next();
    }
    bool AskOkCancel(const QString& text, Icon icon = Icon::Question) override {
        shown.push_back({QStringLiteral("okcancel"), text, icon});
        return Next();
    }
    std::optional<QString> InputBox(const QString& text, const QString& initial = QString()) override {
        return TitledInputBox(QString(), text, initial);
    }
    std::optional<QString> TitledInputBox(const QString& title, const QString& text,
                                          const QString& initial = QString()) override {
        shown.push_back({QStringLiteral("input"), text, Icon::Question, title});
        if (inputs.empty())
            return initial;
        // Taken apart by hand: copying the optional itself trips a false
        // maybe-uninitialized warning of GCC 12 at -O2.
        const bool given = inputs.front().has_value();
        const QString answer = given ? *inputs.front() : QString();
        inputs.pop_front();
        if (!given)
            return std::nullopt;
        return answer;
    }

    int Count(const QString& kind) const {
        int n = 0;
        for (const auto& s : shown)
            n += s.kind == kind;
        return n;
    }
    QString LastText() const { return shown.empty() ? QString() : shown.back().text; }

private:
    bool Next() {
        if (answers.empty())
            return defaultAnswer;
        const bool a = answers.front();
        answers.pop_front();
        return a;
    }
};
