#pragma once
// Hand-overs to the desktop: a path (a song, a playlist, a temporary playlist) goes to the
// program the desktop opens such files with. The call sits behind the interface Shell so
// that tests script it and never start a real player; the program installs the desktop
// shell at start.
//
// Results follow the old shell convention: a value above 32 is success; 31 means that no
// program is set up for that kind of file; anything else is a failure.

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class Shell {
public:
    static constexpr int kNoAssociation = 31;
    static constexpr int kFileNotFound = 2;
    static constexpr int kFailed = 0;
    static constexpr int kOk = 42;

    virtual ~Shell() = default;
    // Opens `path` with the default handler of its kind ("Open").
    virtual int Open(const QString& path) = 0;
    // Lets the user choose a program for `path` and starts it; true when one was started.
    virtual bool OpenWith(const QString& path) = 0;
};

// The shell in use (the desktop's, unless a test or the window program set another).
Shell& TheShell();
// Installs `shell` (not owned; nullptr restores the desktop's).
void SetShell(Shell* shell);

// Hands `path` to the default handler. With `openAsFallback`, a missing association
// lets the user choose a program instead, and that counts as success. `showMode` is
// kept for the callers' sake (1 = normal window); the desktop decides how to show.
bool ShellOpen(const QString& path, bool openAsFallback = true, int showMode = 1);

// A wait that keeps the event queue running: pumps events, ends early when the abort
// flag is set, and ends after `seconds` by the monotonic clock.
void WaitSeconds(double seconds);

// ---- the desktop's shell ---------------------------------------------------------------

// An installed program as the desktop lists it (a .desktop entry).
struct DesktopApplication {
    QString name;     // Name, in the user's language where the entry has it
    QString exec;     // the Exec line, field codes still in it
    QString fileName; // the .desktop file
};

// The applications of the XDG data folders that can open files, sorted by name.
std::vector<DesktopApplication> InstalledApplications();
// The program and arguments of an Exec line for one file: %f %F %u %U become the path
// (or its file URL), the other field codes go; without any, the path is appended.
QStringList ExecCommandFor(const QString& exec, const QString& path);

class DesktopShell : public Shell {
public:
    // kNoAssociation when "xdg-mime" names no default program for the file's type (or
    // is not installed); else hands the file to `launch`.
    int Open(const QString& path) override;
    // Asks `chooseApplication` (the window program sets it: a list of the installed
    // applications) and starts the chosen one; without a chooser nothing is started.
    bool OpenWith(const QString& path) override;

    // Returns the index into `apps` of the chosen application, or -1.
    std::function<int(const QString& path, const std::vector<DesktopApplication>& apps)> chooseApplication;
    // Starts the default program for a file; "xdg-open" unless the window program
    // gives the desktop services of its toolkit.
    std::function<bool(const QString& path)> launch;

    // True when the desktop names a default program for the type of `path`.
    static bool HasDefaultHandler(const QString& path);
};

DesktopShell& TheDesktopShell();

// For tests: records what was opened and answers from its settings.
class ScriptedShell : public Shell {
public:
    int openResult = kOk;         // what Open returns
    bool openWithResult = true;   // what OpenWith returns
    QStringList opened;           // paths given to Open
    QStringList openedWith;       // paths given to OpenWith
    std::vector<QByteArray> seen; // the bytes of each opened file, read at the moment of opening

    int Open(const QString& path) override;
    bool OpenWith(const QString& path) override;
};
