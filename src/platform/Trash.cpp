#include "platform/Trash.h"

#include "platform/PosixFile.h"
#include "platform/Volumes.h"

#include <QDateTime>
#include <QDir>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A folder that must be a real folder of its own (no link), created with `mode` when missing.
int EnsureFolder(const QString& path, mode_t mode) {
    const QByteArray p = PosixFile::Native(path);
    if (::mkdir(p.constData(), mode) != 0 && errno != EEXIST)
        return errno;
    struct stat st;
    if (::lstat(p.constData(), &st) != 0)
        return errno;
    return S_ISDIR(st.st_mode) ? 0 : ENOTDIR;
}

// Makes "files" and "info" inside a trash folder.
int EnsureTrashLayout(const QString& trash) {
    if (int e = EnsureFolder(trash, 0700))
        return e;
    if (int e = EnsureFolder(trash + QLatin1String("/files"), 0700))
        return e;
    return EnsureFolder(trash + QLatin1String("/info"), 0700);
}

dev_t DeviceOf(const QString& path, int& error) {
    struct stat st;
    error = PosixFile::Stat(path, st);
    return error ? dev_t(0) : st.st_dev;
}

// The trash of the volume `top`, or empty.
QString VolumeTrash(const QString& top, dev_t dev) {
    const QString uid = QString::number(::getuid());
    struct stat st;
    // $topdir/.Trash set up by the administrator: a real folder with the sticky bit.
    const QString shared = top + QLatin1String("/.Trash");
    if (PosixFile::LStat(shared, st) == 0 && S_ISDIR(st.st_mode) && (st.st_mode & S_ISVTX) &&
        st.st_dev == dev) {
        const QString mine = shared + u'/' + uid;
        if (EnsureTrashLayout(mine) == 0 && PosixFile::LStat(mine, st) == 0 && st.st_dev == dev)
            return mine;
    }
    // $topdir/.Trash-$uid, made by us and owned by us.
    const QString own = top + QLatin1String("/.Trash-") + uid;
    if (EnsureTrashLayout(own) == 0 && PosixFile::LStat(own, st) == 0 && st.st_dev == dev &&
        st.st_uid == ::getuid())
        return own;
    return QString();
}

QString ParentFolder(const QString& absPath) {
    const qsizetype slash = absPath.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : absPath.left(slash);
}

// The name as the path holds it (its bytes kept; QFileInfo would not).
QString NameOf(const QString& absPath) {
    return absPath.mid(absPath.lastIndexOf(u'/') + 1);
}

} // namespace

QString HomeTrashPath() {
    QString base = qEnvironmentVariable("XDG_DATA_HOME");
    if (base.isEmpty() || !QDir::isAbsolutePath(base))
        base = QDir::homePath() + QLatin1String("/.local/share");
    return QDir::cleanPath(base) + QLatin1String("/Trash");
}

namespace {

struct TrashPlace {
    QString folder;
    QString top; // the volume's top folder for a volume trash; empty for the home trash
    int error = 0;
};

TrashPlace FindTrash(const QString& abs) {
    TrashPlace place;
    struct stat st;
    if ((place.error = PosixFile::LStat(abs, st)))
        return place;
    const dev_t dev = st.st_dev;

    const QString home = HomeTrashPath();
    if (QDir().mkpath(ParentFolder(home))) {
        int homeErr = 0;
        const dev_t homeDev = DeviceOf(ParentFolder(home), homeErr);
        if (!homeErr && homeDev == dev && EnsureTrashLayout(home) == 0) {
            place.folder = home;
            return place;
        }
    }
    QString top = MountTopDir(ParentFolder(abs));
    if (top.isEmpty()) {
        place.error = ENOENT;
        return place;
    }
    if (top == QLatin1String("/"))
        top.clear();
    place.folder = VolumeTrash(top, dev);
    place.top = top;
    if (place.folder.isEmpty())
        place.error = EXDEV;
    return place;
}

} // namespace

QString TrashFolderFor(const QString& path, int* error) {
    const TrashPlace place = FindTrash(PosixFile::AbsolutePath(path));
    if (error)
        *error = place.error;
    return place.error ? QString() : place.folder;
}

TrashResult MoveToTrash(const QString& path) {
    TrashResult r;
    const QString abs = PosixFile::AbsolutePath(path);
    const TrashPlace place = FindTrash(abs);
    if ((r.error = place.error))
        return r;
    const QString& trash = place.folder;

    // The recorded place: absolute in the home trash, relative to the volume's top
    // folder in a volume trash (so that it stays right when the volume is mounted elsewhere).
    QString recorded = abs;
    if (!place.folder.isEmpty() && place.folder != HomeTrashPath()) {
        const QString parent = PosixFile::CanonicalPath(ParentFolder(abs));
        const QString real = (parent == QLatin1String("/") ? QString() : parent) + u'/' + NameOf(abs);
        if (real.startsWith(place.top + u'/'))
            recorded = real.mid(place.top.size() + 1);
    }
    const QByteArray info =
        "[Trash Info]\nPath=" + PosixFile::Native(recorded).toPercentEncoding("/") + "\nDeletionDate=" +
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddThh:mm:ss")).toLatin1() + "\n";

    const QString name = NameOf(abs);
    for (int n = 1; n < 100000; ++n) {
        const QString candidate = n == 1 ? name : PosixFile::NumberedName(name, n);
        const QString infoPath = trash + QLatin1String("/info/") + candidate + QLatin1String(".trashinfo");
        const QString filesPath = trash + QLatin1String("/files/") + candidate;
        // The info file is made first and exclusively: it reserves the name.
        const int fd =
            ::open(PosixFile::Native(infoPath).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (fd < 0) {
            if (errno == EEXIST)
                continue;
            r.error = errno;
            return r;
        }
        int e = PosixFile::WriteAll(fd, info.constData(), info.size());
        if (::close(fd) != 0 && !e)
            e = errno;
        if (!e) {
            e = PosixFile::RenameNoReplace(abs, filesPath);
            if (e == EEXIST) {
                ::unlink(PosixFile::Native(infoPath).constData());
                continue;
            }
        }
        if (e) {
            ::unlink(PosixFile::Native(infoPath).constData());
            r.error = e;
            return r;
        }
        r.trashedPath = filesPath;
        r.infoPath = infoPath;
        return r;
    }
    r.error = EEXIST;
    return r;
}
