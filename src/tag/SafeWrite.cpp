#include "tag/SafeWrite.h"

#include "platform/PosixFile.h"
#include "platform/SafeFile.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qlt_tag {

namespace {

QString SysError(int err) {
    return SafeFile::ErrorText(err);
}

// The folder of a path, by text: QFileInfo would spell a name that is no UTF-8 anew.
QString FolderOf(const QString& path) {
    const QString abs = PosixFile::AbsolutePath(path);
    const qsizetype slash = abs.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : abs.left(slash);
}

// A new, empty temporary file beside target, opened for writing.
int CreateTemp(const QString& target, QString* tempPath, QString* error) {
    int err = 0;
    const int fd = SafeFile::CreateTemp(target, tempPath, &err);
    if (fd < 0 && error)
        *error = QStringLiteral("Can't create a temporary file in the folder %1: %2")
                     .arg(PosixFile::DisplayName(FolderOf(target)), SysError(err));
    return fd;
}

// Copies [start, end) of source to out. Returns 0 or the errno of the failure.
int CopyRange(int out, const QString& source, long long start, long long end) {
    if (end <= start)
        return 0;
    const int in = ::open(PosixFile::Native(source).constData(), O_RDONLY | O_CLOEXEC);
    if (in < 0)
        return errno;
    QByteArray buf(1 << 20, Qt::Uninitialized);
    long long pos = start;
    int err = 0;
    while (!err && pos < end) {
        const ssize_t n =
            ::pread(in, buf.data(), static_cast<size_t>(std::min<long long>(buf.size(), end - pos)),
                    static_cast<off_t>(pos));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            err = n < 0 ? errno : EIO; // the source is shorter than it was: never write a cut copy
            break;
        }
        err = SafeFile::WriteAll(out, buf.constData(), n);
        pos += n;
    }
    ::close(in);
    return err;
}

int SyncAndClose(int fd) {
    const int e = SafeFile::Fsync(fd);
    const int c = SafeFile::Close(fd);
    return e ? e : c;
}

// The size of the finished copy must be what was meant to go into it.
int CheckSize(const QString& path, long long expected) {
    struct stat st {};
    if (::stat(PosixFile::Native(path).constData(), &st) != 0)
        return errno;
    return st.st_size == expected ? 0 : EIO;
}

QString WriteError(const QString& target, int err) {
    return QStringLiteral("Can't write %1: %2").arg(QDir::toNativeSeparators(target), SysError(err));
}

} // namespace

bool CanRewrite(const QString& path, QString* error) {
    const QByteArray native = PosixFile::Native(path);
    struct stat st {};
    if (::stat(native.constData(), &st) != 0) {
        if (error)
            *error = QStringLiteral("The file %1 can't be found: %2")
                         .arg(QDir::toNativeSeparators(path), SysError(errno));
        return false;
    }
    if (!S_ISREG(st.st_mode)) {
        if (error)
            *error = QStringLiteral("%1 is not a file.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    // Root may write anything; for root a file without any write bit counts as read-only
    // all the same, so that the user's protection holds. Everyone else asks the system.
    const bool writable = ::geteuid() == 0 ? (st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0
                                           : ::access(native.constData(), W_OK) == 0;
    if (!writable) {
        if (error)
            *error = QStringLiteral("The file %1 is write-protected.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    const QString folder = FolderOf(path);
    if (::access(PosixFile::Native(folder).constData(), W_OK | X_OK) != 0) {
        if (error)
            *error =
                QStringLiteral("The folder %1 is write-protected.").arg(QDir::toNativeSeparators(folder));
        return false;
    }
    return true;
}

bool RenameOver(const QString& tempPath, const QString& target, QString* error) {
    const QByteArray tmp = PosixFile::Native(tempPath);
    const QByteArray dst = PosixFile::Native(target);
    if (const int e = SafeFile::Rename(tmp, dst)) {
        if (error)
            *error =
                QStringLiteral("Can't replace %1: %2").arg(QDir::toNativeSeparators(target), SysError(e));
        SafeFile::RemoveTemp(tempPath);
        return false;
    }
    // Make the new directory entry durable too.
    if (const int e = SafeFile::SyncFolderOf(dst)) {
        if (error)
            *error = WriteError(target, e);
        return false;
    }
    return true;
}

bool RewriteFile(const QString& target, const QByteArray& head, const QString& source, long long bodyStart,
                 long long bodyEnd, const QByteArray& tail, QString* error) {
    QString tempPath;
    const int fd = CreateTemp(target, &tempPath, error);
    if (fd < 0)
        return false;
    SafeFile::CopyMetadata(PosixFile::Native(target), fd);
    int err = SafeFile::WriteAll(fd, head.constData(), head.size());
    if (!err)
        err = CopyRange(fd, source, bodyStart, bodyEnd);
    if (!err)
        err = SafeFile::WriteAll(fd, tail.constData(), tail.size());
    const int closeErr = SyncAndClose(fd);
    if (!err)
        err = closeErr;
    if (!err)
        err = CheckSize(tempPath, head.size() + std::max(0LL, bodyEnd - bodyStart) + tail.size());
    if (err) {
        if (error)
            *error = WriteError(target, err);
        SafeFile::RemoveTemp(tempPath);
        return false;
    }
    return RenameOver(tempPath, target, error);
}

bool MakeEditableCopy(const QString& target, const QString& source, long long start, long long end,
                      const std::function<bool(const QString&, QString*)>& edit, QString* tempPath,
                      QString* error) {
    const int fd = CreateTemp(target, tempPath, error);
    if (fd < 0)
        return false;
    int err = CopyRange(fd, source, start, end);
    const int closeErr = SafeFile::Close(fd);
    if (!err)
        err = closeErr;
    if (!err)
        err = CheckSize(*tempPath, std::max(0LL, end - start));
    if (err) {
        if (error)
            *error = WriteError(target, err);
        return false;
    }
    if (!edit(*tempPath, error))
        return false;
    const int again = ::open(PosixFile::Native(*tempPath).constData(), O_RDWR | O_CLOEXEC);
    if (again < 0) {
        if (error)
            *error = WriteError(target, errno);
        return false;
    }
    // Owner, mode and attributes only now: the edit must still be able to open the copy.
    SafeFile::CopyMetadata(PosixFile::Native(target), again);
    if (const int e = SyncAndClose(again)) {
        if (error)
            *error = WriteError(target, e);
        return false;
    }
    return true;
}

} // namespace qlt_tag
