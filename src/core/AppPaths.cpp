#include "core/AppPaths.h"

#include <QCoreApplication>
#include <QDir>

namespace {
QString& Override() {
    static QString dir;
    return dir;
}
} // namespace

QString AppPath() {
    QString dir = Override();
    if (dir.isEmpty())
        dir = QCoreApplication::applicationDirPath();
    while (dir.size() > 1 && dir.endsWith(u'/'))
        dir.chop(1);
    return dir;
}

void SetAppPath(const QString& dir) {
    Override() = QDir::cleanPath(dir);
}

QString AppFile(const QString& relative) {
    return AppPath() + QLatin1Char('/') + relative;
}
