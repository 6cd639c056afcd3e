#include "tag/SafeWrite.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qlt_tag {

namespace {

QString SysError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

// A new, empty temporary file beside target, opened for writing.
int CreateTemp(const QString& target, QString* tempPath, QString* error) {
    const QFileInfo info(target);
    const QString pattern =
        info.absolutePath() + QStringLiteral("/.") + info.fileName() + QStringLiteral(".qlt-XXXXXX");
    QByteArray name = QFile::encodeName(pattern);
    const int fd = ::mkstemp(name.data());
    if (fd < 0) {
        if (error)
            *error = QStringLiteral("Can't create a temporary file in the folder %1: %2")
                         .arg(QDir::toNativeSeparators(info.absolutePath()), SysError());
        return -1;
    }
    *tempPath = QFile::decodeName(name);
    return fd;
}

bool WriteAll(int fd, const char* data, qint64 size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, static_cast<size_t>(std::min<qint64>(size, 1 << 20)));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += n;
        size -= n;
    }
    return true;
}

bool CopyRange(int out, const QString& source, long long start, long long end) {
    if (end <= start)
        return true;
    const int in = ::open(QFile::encodeName(source).constData(), O_RDONLY | O_CLOEXEC);
    if (in < 0)
        return false;
    QByteArray buf(1 << 20, Qt::Uninitialized);
    long long pos = start;
    bool ok = true;
    while (ok && pos < end) {
        const ssize_t n =
            ::pread(in, buf.data(), static_cast<size_t>(std::min<long long>(buf.size(), end - pos)),
                    static_cast<off_t>(pos));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            ok = false; // the source is shorter than it was: never write a cut copy
            break;
        }
        ok = WriteAll(out, buf.constData(), n);
        pos += n;
    }
    ::close(in);
    return ok;
}

bool SyncAndClose(int fd) {
    const bool ok = ::fsync(fd) == 0;
    return ::close(fd) == 0 && ok;
}

} // namespace

bool CanRewrite(const QString& path, QString* error) {
    const QByteArray native = QFile::encodeName(path);
    struct stat st {};
    if (::stat(native.constData(), &st) != 0) {
        if (error)
            *error = QStringLiteral("The file %1 can't be found: %2")
                         .arg(QDir::toNativeSeparators(path), SysError());
        return false;
    }
    if (!S_ISREG(st.st_mode)) {
        if (error)
            *error = QStringLiteral("%1 is not a file.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    // The mode bits that apply to us; root gets no exception, a read-only file is
    // read-only for everyone here.
    mode_t bit = S_IWOTH;
    if (::geteuid() == st.st_uid)
        bit = S_IWUSR;
    else if (::getegid() == st.st_gid)
        bit = S_IWGRP;
    if ((st.st_mode & bit) == 0 || ::access(native.constData(), W_OK) != 0) {
        if (error)
            *error = QStringLiteral("The file %1 is write-protected.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    const QString folder = QFileInfo(path).absolutePath();
    if (::access(QFile::encodeName(folder).constData(), W_OK | X_OK) != 0) {
        if (error)
            *error =
                QStringLiteral("The folder %1 is write-protected.").arg(QDir::toNativeSeparators(folder));
        return false;
    }
    return true;
}

bool RenameOver(const QString& tempPath, const QString& target, QString* error) {
    const QByteArray tmp = QFile::encodeName(tempPath);
    const QByteArray dst = QFile::encodeName(target);
    struct stat st {};
    if (::stat(dst.constData(), &st) == 0) {
        ::chmod(tmp.constData(), st.st_mode & 07777);
        if (::chown(tmp.constData(), st.st_uid, st.st_gid) != 0) {
            // Not allowed for an ordinary user to give files away; the permissions stay.
        }
    }
    if (::rename(tmp.constData(), dst.constData()) != 0) {
        if (error)
            *error = QStringLiteral("Can't replace %1: %2").arg(QDir::toNativeSeparators(target), SysError());
        ::unlink(tmp.constData());
        return false;
    }
    // Make the new directory entry durable too.
    const int dir =
        ::open(QFile::encodeName(QFileInfo(target).absolutePath()).constData(), O_RDONLY | O_DIRECTORY);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    return true;
}

bool RewriteFile(const QString& target, const QByteArray& head, const QString& source, long long bodyStart,
                 long long bodyEnd, const QByteArray& tail, QString* error) {
    QString tempPath;
    const int fd = CreateTemp(target, &tempPath, error);
    if (fd < 0)
        return false;
    bool ok = WriteAll(fd, head.constData(), head.size()) && CopyRange(fd, source, bodyStart, bodyEnd) &&
              WriteAll(fd, tail.constData(), tail.size());
    const int writeErrno = errno;
    ok = SyncAndClose(fd) && ok;
    if (!ok) {
        errno = writeErrno;
        if (error)
            *error = QStringLiteral("Can't write %1: %2").arg(QDir::toNativeSeparators(target), SysError());
        ::unlink(QFile::encodeName(tempPath).constData());
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
    bool ok = CopyRange(fd, source, start, end);
    const int writeErrno = errno;
    ok = (::close(fd) == 0) && ok;
    if (!ok) {
        errno = writeErrno;
        if (error)
            *error = QStringLiteral("Can't write %1: %2").arg(QDir::toNativeSeparators(target), SysError());
        return false;
    }
    if (!edit(*tempPath, error))
        return false;
    const int again = ::open(QFile::encodeName(*tempPath).constData(), O_RDWR | O_CLOEXEC);
    if (again < 0 || !SyncAndClose(again)) {
        if (error)
            *error = QStringLiteral("Can't write %1: %2").arg(QDir::toNativeSeparators(target), SysError());
        return false;
    }
    return true;
}

} // namespace qlt_tag
