#pragma once
// Runs quillotune-cli of the build with arguments and gives its exit code and output.

#include "TestPaths.h"

#include <QProcess>
#include <QStringList>

struct CliResult {
    int code = -1;
    QString out, err;
};

inline CliResult RunCli(const QStringList& args) {
    QProcess p;
    p.start(ProgramDir() + QStringLiteral("/quillotune-cli"), args);
    CliResult r;
    if (!p.waitForFinished(120000))
        return r;
    r.code = p.exitCode();
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}
