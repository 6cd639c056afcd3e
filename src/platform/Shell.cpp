#include "platform/Shell.h"

#include "core/AppState.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>
#include <set>

namespace {
Shell* g_shell = nullptr;

// The output of a short helper program, or empty when it can't run.
QString RunQuiet(const QString& program, const QStringList& args) {
    if (QStandardPaths::findExecutable(program).isEmpty())
        return QString();
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(3000)) {
        p.kill();
        p.waitForFinished(500);
        return QString();
    }
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

QStringList ApplicationFolders() {
    QStringList dirs = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    for (const QString& d :
         {QStringLiteral("/usr/local/share/applications"), QStringLiteral("/usr/share/applications")})
        if (!dirs.contains(d))
            dirs << d;
    return dirs;
}

bool ReadDesktopEntry(const QString& file, DesktopApplication& app) {
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    const QString lang = QLocale().name();              // "de_DE"
    const QString shortLang = lang.section(u'_', 0, 0); // "de"
    bool inEntry = false, noDisplay = false, isApp = false;
    QString name, localName;
    int localRank = 0;
    while (!f.atEnd()) {
        const QString line = QString::fromUtf8(f.readLine()).trimmed();
        if (line.startsWith(u'[')) {
            inEntry = line == QLatin1String("[Desktop Entry]");
            continue;
        }
        if (!inEntry)
            continue;
        const qsizetype eq = line.indexOf(u'=');
        if (eq < 0)
            continue;
        const QString key = line.left(eq).trimmed();
        const QString value = line.mid(eq + 1).trimmed();
        if (key == QLatin1String("Name"))
            name = value;
        else if (key == QStringLiteral("Name[%1]").arg(lang) && localRank < 2)
            localName = value, localRank = 2;
        else if (key == QStringLiteral("Name[%1]").arg(shortLang) && localRank < 1)
            localName = value, localRank = 1;
        else if (key == QLatin1String("Exec"))
            app.exec = value;
        else if (key == QLatin1String("Type"))
            isApp = value == QLatin1String("Application");
        else if (key == QLatin1String("NoDisplay") || key == QLatin1String("Hidden"))
            noDisplay = noDisplay || value == QLatin1String("true");
    }
    app.name = localName.isEmpty() ? name : localName;
    app.fileName = file;
    return isApp && !noDisplay && !app.name.isEmpty() && !app.exec.isEmpty();
}
} // namespace

Shell& TheShell() {
    return g_shell ? *g_shell : TheDesktopShell();
}

void SetShell(Shell* shell) {
    g_shell = shell;
}

bool ShellOpen(const QString& path, bool openAsFallback, int showMode) {
    (void)showMode;
    Shell& shell = TheShell();
    const int result = shell.Open(path);
    if (result > 32)
        return true;
    if (result == Shell::kNoAssociation && openAsFallback)
        return shell.OpenWith(path);
    return false;
}

void WaitSeconds(double seconds) {
    QElapsedTimer clock;
    clock.start();
    const qint64 limit = qint64(seconds * 1000.0);
    while (clock.elapsed() < limit) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        if (State().AbortRequested)
            break;
        if (!QCoreApplication::instance())
            break;
    }
}

// ---- the desktop's shell ---------------------------------------------------------------

std::vector<DesktopApplication> InstalledApplications() {
    std::vector<DesktopApplication> apps;
    std::set<QString> seenIds;
    for (const QString& dir : ApplicationFolders()) {
        const QFileInfoList files = QDir(dir).entryInfoList({QStringLiteral("*.desktop")}, QDir::Files);
        for (const QFileInfo& fi : files) {
            if (!seenIds.insert(fi.fileName()).second)
                continue; // the user's own entry hides the system's of the same id
            DesktopApplication app;
            if (!ReadDesktopEntry(fi.absoluteFilePath(), app))
                continue;
            // only programs that take a file
            if (!app.exec.contains(QLatin1String("%f"), Qt::CaseInsensitive) &&
                !app.exec.contains(QLatin1String("%u"), Qt::CaseInsensitive))
                continue;
            apps.push_back(app);
        }
    }
    std::sort(apps.begin(), apps.end(), [](const DesktopApplication& a, const DesktopApplication& b) {
        return QString::localeAwareCompare(a.name, b.name) < 0;
    });
    return apps;
}

QStringList ExecCommandFor(const QString& exec, const QString& path) {
    // Split the Exec line into words, honouring double quotes.
    QStringList words;
    QString word;
    bool quoted = false, any = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar c = exec.at(i);
        if (c == u'"') {
            quoted = !quoted;
            any = true;
        } else if (c == u'\\' && quoted && i + 1 < exec.size()) {
            word += exec.at(++i);
        } else if (c.isSpace() && !quoted) {
            if (any || !word.isEmpty())
                words << word;
            word.clear();
            any = false;
        } else {
            word += c;
        }
    }
    if (any || !word.isEmpty())
        words << word;
    QStringList out;
    bool placed = false;
    for (const QString& w : words) {
        if (w == QLatin1String("%f") || w == QLatin1String("%F")) {
            out << path;
            placed = true;
        } else if (w == QLatin1String("%u") || w == QLatin1String("%U")) {
            out << QUrl::fromLocalFile(path).toString();
            placed = true;
        } else if (w.size() == 2 && w.startsWith(u'%')) {
            continue; // %i %c %k and the others: nothing
        } else {
            QString copy = w;
            copy.replace(QLatin1String("%%"), QLatin1String("%"));
            out << copy;
        }
    }
    if (!placed)
        out << path;
    return out;
}

int DesktopShell::Open(const QString& path) {
    if (!QFileInfo::exists(path))
        return kFileNotFound;
    const QString mime = QMimeDatabase().mimeTypeForFile(path).name();
    const QString handler =
        RunQuiet(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), mime});
    if (handler.isEmpty())
        return kNoAssociation;
    return QProcess::startDetached(QStringLiteral("xdg-open"), {path}) ? kOk : kFailed;
}

bool DesktopShell::OpenWith(const QString& path) {
    if (!chooseApplication)
        return false;
    const std::vector<DesktopApplication> apps = InstalledApplications();
    const int i = chooseApplication(path, apps);
    if (i < 0 || i >= int(apps.size()))
        return false;
    QStringList command = ExecCommandFor(apps[size_t(i)].exec, path);
    if (command.isEmpty())
        return false;
    const QString program = command.takeFirst();
    return QProcess::startDetached(program, command);
}

DesktopShell& TheDesktopShell() {
    static DesktopShell shell;
    return shell;
}

int ScriptedShell::Open(const QString& path) {
    opened << path;
    QFile f(path);
    seen.push_back(f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray());
    return openResult;
}

bool ScriptedShell::OpenWith(const QString& path) {
    openedWith << path;
    return openWithResult;
}
