#include "platform/PosixFile.h"

#include <QFile>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace PosixFile {

QByteArray Native(const QString& path) {
    return QFile::encodeName(path);
}

int Stat(const QString& path, struct stat& st) {
    return ::stat(Native(path).constData(), &st) == 0 ? 0 : errno;
}

int LStat(const QString& path, struct stat& st) {
    return ::lstat(Native(path).constData(), &st) == 0 ? 0 : errno;
}

bool Exists(const QString& path) {
    struct stat st;
    return LStat(path, st) == 0;
}

int Rename(const QString& from, const QString& to) {
    return ::rename(Native(from).constData(), Native(to).constData()) == 0 ? 0 : errno;
}

int RenameNoReplace(const QString& from, const QString& to) {
    const QByteArray f = Native(from), t = Native(to);
    if (::renameat2(AT_FDCWD, f.constData(), AT_FDCWD, t.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    const int e = errno;
    if (e != EINVAL && e != ENOSYS && e != ENOTSUP)
        return e;
    // No RENAME_NOREPLACE here (some network and FUSE file systems). A hard link fails
    // atomically on an existing name; it does not exist for every file system either.
    struct stat st;
    if (::lstat(f.constData(), &st) == 0 && S_ISREG(st.st_mode)) {
        if (::link(f.constData(), t.constData()) == 0) {
            ::unlink(f.constData());
            return 0;
        }
        if (errno == EEXIST)
            return EEXIST;
    }
    if (::lstat(t.constData(), &st) == 0)
        return EEXIST;
    return ::rename(f.constData(), t.constData()) == 0 ? 0 : errno;
}

QString NumberedName(const QString& path, int n) {
    const qsizetype slash = path.lastIndexOf(u'/');
    const QString folder = path.left(slash + 1);
    const QString name = path.mid(slash + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString number = QStringLiteral(" (%1)").arg(n);
    if (dot <= 0)
        return folder + name + number;
    return folder + name.left(dot) + number + name.mid(dot);
}

int WriteAll(int fd, const char* data, qsizetype size) {
    while (size > 0) {
        const ssize_t w = ::write(fd, data, std::size_t(size));
        if (w < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        if (w == 0)
            return EIO;
        data += w;
        size -= w;
    }
    return 0;
}

qsizetype ReadSome(int fd, char* data, qsizetype size) {
    for (;;) {
        const ssize_t r = ::read(fd, data, std::size_t(size));
        if (r < 0 && errno == EINTR)
            continue;
        return r;
    }
}

} // namespace PosixFile
