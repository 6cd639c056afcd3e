#include "platform/Volumes.h"

#include "platform/PosixFile.h"

#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>

namespace {

// The path itself when it exists, else its nearest existing parent.
QString ExistingAncestor(const QString& path) {
    QString p = PosixFile::AbsolutePath(path);
    while (!p.isEmpty() && !PosixFile::Exists(p)) {
        const qsizetype slash = p.lastIndexOf(u'/');
        if (slash <= 0)
            return QStringLiteral("/");
        p.truncate(slash);
    }
    // Resolve links, so that walking up by name follows the real folders.
    const QString canonical = PosixFile::CanonicalPath(p);
    return canonical.isEmpty() ? p : canonical;
}

bool IsPseudoFileSystem(const QByteArray& type) {
    static const char* const pseudo[] = {
        "proc",        "sysfs",  "devpts",     "cgroup", "cgroup2",   "securityfs",      "debugfs",
        "tracefs",     "pstore", "bpf",        "mqueue", "hugetlbfs", "configfs",        "fusectl",
        "binfmt_misc", "autofs", "rpc_pipefs", "nsfs",   "efivarfs",  "overlay_internal"};
    for (const char* p : pseudo)
        if (type == p)
            return true;
    return false;
}

} // namespace

QList<Volume> MountedVolumes() {
    QList<Volume> out;
    for (const QStorageInfo& s : QStorageInfo::mountedVolumes()) {
        if (!s.isValid() || !s.isReady() || IsPseudoFileSystem(s.fileSystemType()))
            continue;
        if (s.rootPath().startsWith(QLatin1String("/proc")) || s.rootPath().startsWith(QLatin1String("/sys")))
            continue;
        Volume v;
        v.rootPath = s.rootPath();
        v.name = s.name();
        if (v.name.isEmpty())
            v.name = v.rootPath == QLatin1String("/") ? v.rootPath : QFileInfo(v.rootPath).fileName();
        v.fileSystemType = QString::fromLatin1(s.fileSystemType());
        v.bytesTotal = s.bytesTotal();
        v.bytesFree = s.bytesAvailable();
        v.readOnly = s.isReadOnly();
        out << v;
    }
    std::sort(out.begin(), out.end(),
              [](const Volume& a, const Volume& b) { return a.rootPath < b.rootPath; });
    return out;
}

bool SameFileSystem(const QString& a, const QString& b) {
    struct stat sa, sb;
    if (PosixFile::Stat(ExistingAncestor(a), sa) != 0 || PosixFile::Stat(ExistingAncestor(b), sb) != 0)
        return false;
    return sa.st_dev == sb.st_dev;
}

QString MountTopDir(const QString& path) {
    QString p = ExistingAncestor(path);
    struct stat st;
    if (PosixFile::Stat(p, st) != 0)
        return QString();
    if (!S_ISDIR(st.st_mode)) {
        const qsizetype slash = p.lastIndexOf(u'/');
        p = slash <= 0 ? QStringLiteral("/") : p.left(slash);
        if (PosixFile::Stat(p, st) != 0)
            return QString();
    }
    const dev_t dev = st.st_dev;
    while (p != QLatin1String("/")) {
        const qsizetype slash = p.lastIndexOf(u'/');
        const QString parent = slash <= 0 ? QStringLiteral("/") : p.left(slash);
        struct stat ps;
        if (PosixFile::Stat(parent, ps) != 0 || ps.st_dev != dev)
            break;
        p = parent;
    }
    return p;
}
