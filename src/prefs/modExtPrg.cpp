#include "prefs/modExtPrg.h"

#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "platform/PosixFile.h"

#include <QProcess>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

QString ExternalProgram::Key() const {
    return QStringLiteral("extPrg%1").arg(number, 2, 10, QLatin1Char('0'));
}

std::vector<ExternalProgram> ExternalPrograms(const DataGrid& ini) {
    std::vector<ExternalProgram> out;
    if (ini.Cols() < Ini::PrgExternPathCol)
        return out;
    for (int r = Ini::PrgExternFirst; r <= Ini::PrgExternLast && r <= ini.Rows(); ++r) {
        const QString path = ini.CellText(r, Ini::PrgExternPathCol).trimmed();
        if (path.isEmpty())
            continue;
        QString name = ini.CellText(r, Ini::PrgExternNameCol).trimmed();
        if (name.isEmpty())
            name = path.section(QLatin1Char('/'), -1);
        out.push_back({r - Ini::PrgExternFirst + 1, name, path});
    }
    return out;
}

int ExternalProgramNumber(const QString& key) {
    if (!key.startsWith(QLatin1String("extPrg")) || key.size() != 8)
        return 0;
    bool ok = false;
    const int n = key.mid(6).toInt(&ok);
    return ok && n >= 1 && n <= kMaxExternalPrograms ? n : 0;
}

QString ResolveProgram(const QString& path) {
    if (path.isEmpty())
        return QString();
    if (!path.contains(QLatin1Char('/')))
        return QStandardPaths::findExecutable(path);
    struct stat st {};
    if (PosixFile::Stat(path, st) != 0 || S_ISDIR(st.st_mode))
        return QString();
    return ::access(PosixFile::Native(path).constData(), X_OK) == 0 ? path : QString();
}

bool StartExternalProgram(const QString& path, const QStringList& arguments, Prompt& prompt) {
    const QString program = ResolveProgram(path.trimmed());
    if (program.isEmpty() || !QProcess::startDetached(program, arguments)) {
        prompt.Tell(Caption(CapProgramNotStarted) + path, Prompt::Icon::Critical);
        return false;
    }
    return true;
}
