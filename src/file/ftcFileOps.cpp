#include "file/ftcFileOps.h"

#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "file/ftcFileTexts.h"
#include "platform/PosixFile.h"
#include "platform/Trash.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

using PosixFile::Native;

constexpr qsizetype kCopyBlock = qsizetype(1) << 20;
constexpr int kMaxNumberedNames = 10000;
constexpr auto kVerifyHash = QCryptographicHash::Sha1;

QString Absolute(const QString& path) {
    return PosixFile::AbsolutePath(path);
}

QString FolderOf(const QString& absPath) {
    const qsizetype slash = absPath.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : absPath.left(slash);
}

QString NameOf(const QString& path) {
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString Join(const QString& folder, const QString& name) {
    return folder == QLatin1String("/") ? u'/' + name : folder + u'/' + name;
}

bool HasWildcard(const QString& path) {
    const QString name = NameOf(path);
    return name.contains(u'*') || name.contains(u'?');
}

// "*" and "?" over the name's code units, letters in either case (as the desktop the
// program came from matches). Escaped bytes match only themselves or a wildcard.
bool WildcardMatch(QStringView pattern, QStringView name) {
    qsizetype p = 0, n = 0, starP = -1, starN = 0;
    auto same = [](QChar a, QChar b) { return a == b || a.toCaseFolded() == b.toCaseFolded(); };
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            starP = p++;
            starN = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || same(pattern[p], name[n]))) {
            ++p, ++n;
        } else if (starP >= 0) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

// The files a wildcard source stands for, in name order.
QStringList ExpandWildcard(const QString& absPattern) {
    QString pattern = NameOf(absPattern);
    if (pattern == QLatin1String("*.*")) // every file, as on the desktop the program came from
        pattern = QStringLiteral("*");
    const QString folder = FolderOf(absPattern);
    // The names are read as bytes (QDir would spell a name that is no UTF-8 anew).
    QStringList names;
    if (DIR* d = ::opendir(Native(folder).constData())) {
        while (const dirent* e = ::readdir(d)) {
            const QByteArrayView n(e->d_name);
            const QString name = PosixFile::FromNative(n);
            if (n == "." || n == ".." || !WildcardMatch(pattern, name))
                continue;
            struct stat st;
            if (PosixFile::Stat(Join(folder, name), st) == 0 && S_ISREG(st.st_mode))
                names << name;
        }
        ::closedir(d);
    }
    std::sort(names.begin(), names.end());
    QStringList out;
    for (const QString& n : names)
        out << Join(folder, n);
    return out;
}

// Folder targets keep the source's name; anything else is the full new path.
QString ResolveTarget(const QString& absSource, const QString& target) {
    QString t = target;
    bool folder = t.size() > 1 && t.endsWith(u'/');
    t = Absolute(t);
    struct stat st;
    if (!folder && PosixFile::Stat(t, st) == 0 && S_ISDIR(st.st_mode))
        folder = true;
    return folder ? Join(t, NameOf(absSource)) : t;
}

int MakeFolder(const QString& folder) {
    struct stat st;
    if (PosixFile::Stat(folder, st) == 0)
        return S_ISDIR(st.st_mode) ? 0 : ENOTDIR;
    // Each missing level is made by its own bytes (QDir would spell an escaped name anew).
    const qsizetype slash = folder.lastIndexOf(u'/');
    if (slash > 0)
        if (int e = MakeFolder(folder.left(slash)))
            return e;
    if (::mkdir(Native(folder).constData(), 0777) != 0 && errno != EEXIST)
        return errno;
    return PosixFile::Stat(folder, st) == 0 && S_ISDIR(st.st_mode) ? 0 : ENOTDIR;
}

int HashOpenFile(int fd, QByteArray& hash) {
    if (::lseek(fd, 0, SEEK_SET) != 0)
        return errno;
    QCryptographicHash h(kVerifyHash);
    std::vector<char> buf(static_cast<std::size_t>(kCopyBlock));
    for (;;) {
        const qsizetype n = PosixFile::ReadSome(fd, buf.data(), kCopyBlock);
        if (n < 0)
            return errno;
        if (n == 0)
            break;
        h.addData(QByteArrayView(buf.data(), n));
    }
    hash = h.result();
    return 0;
}

// Writes a complete copy of the open source into a new temporary file in `folder`:
// contents, permissions, owner (when allowed) and file times, synced to the disk.
// With `verify` the copy is read back and compared with what was read from the source.
// On success `temp` names the finished file; on failure nothing is left behind.
int WriteTempCopy(int sfd, const struct stat& sst, const QString& folder, bool verify, QString& temp) {
    QByteArray tmpl = Native(Join(folder, QStringLiteral(".qlt-copy-XXXXXX")));
    const int tfd = ::mkostemp(tmpl.data(), O_CLOEXEC);
    if (tfd < 0)
        return errno;
    auto fail = [&](int e) {
        ::close(tfd);
        ::unlink(tmpl.constData());
        return e;
    };
    // Reserve the space first: a full disk shows up before a byte is written.
    if (sst.st_size > 0 && ::fallocate(tfd, 0, 0, sst.st_size) != 0 && errno != EOPNOTSUPP &&
        errno != ENOSYS && errno != EINVAL)
        return fail(errno);
    ::posix_fadvise(sfd, 0, 0, POSIX_FADV_SEQUENTIAL);
    if (::lseek(sfd, 0, SEEK_SET) != 0)
        return fail(errno);

    QCryptographicHash sourceHash(kVerifyHash);
    std::vector<char> buf(static_cast<std::size_t>(kCopyBlock));
    qint64 total = 0;
    for (;;) {
        const qsizetype n = PosixFile::ReadSome(sfd, buf.data(), kCopyBlock);
        if (n < 0)
            return fail(errno);
        if (n == 0)
            break;
        if (verify)
            sourceHash.addData(QByteArrayView(buf.data(), n));
        if (int e = PosixFile::WriteAll(tfd, buf.data(), n))
            return fail(e);
        total += n;
    }
    // A source that changed while it was read is not copied: the copy would not be it.
    struct stat after;
    if (::fstat(sfd, &after) != 0)
        return fail(errno);
    if (total != after.st_size || after.st_size != sst.st_size ||
        after.st_mtim.tv_sec != sst.st_mtim.tv_sec || after.st_mtim.tv_nsec != sst.st_mtim.tv_nsec)
        return fail(EBUSY);
    if (::ftruncate(tfd, total) != 0) // fallocate may have reserved more on a racing source
        return fail(errno);

    // Owner first (only root may give files away; it clears set-id bits), then mode and times.
    if (::geteuid() == 0 && ::fchown(tfd, sst.st_uid, sst.st_gid) != 0) {
        // A file system without owners (vfat) keeps its own; the copy is still good.
    }
    if (::fchmod(tfd, sst.st_mode & 07777) != 0) {
        // As above: some file systems have no permissions to set.
    }
    const struct timespec times[2] = {sst.st_atim, sst.st_mtim};
    if (::futimens(tfd, times) != 0) {
        // Times are kept where the file system can hold them.
    }
    if (::fsync(tfd) != 0)
        return fail(errno);

    if (verify) {
        // Read the copy back from the disk, not from the cache, and compare.
        ::posix_fadvise(tfd, 0, 0, POSIX_FADV_DONTNEED);
        struct stat written;
        QByteArray copyHash;
        if (::fstat(tfd, &written) != 0)
            return fail(errno);
        if (int e = HashOpenFile(tfd, copyHash))
            return fail(e);
        if (written.st_size != total || copyHash != sourceHash.result())
            return fail(EIO);
    }
    if (::close(tfd) != 0) {
        const int e = errno;
        ::unlink(tmpl.constData());
        return e;
    }
    temp = PosixFile::FromNative(tmpl);
    return 0;
}

enum class Collision { Refuse, Replace, Number };

// Gives a finished temporary file its real name.
int Publish(const QString& temp, const QString& dest, Collision collision, QString& finalPath) {
    int e = 0;
    if (collision == Collision::Replace) {
        e = PosixFile::Rename(temp, dest);
        if (!e)
            finalPath = dest;
    } else {
        e = EEXIST;
        const int last = collision == Collision::Number ? kMaxNumberedNames : 1;
        for (int n = 1; n <= last && e == EEXIST; ++n) {
            const QString candidate = n == 1 ? dest : PosixFile::NumberedName(dest, n);
            e = PosixFile::RenameNoReplace(temp, candidate);
            if (!e)
                finalPath = candidate;
        }
    }
    if (e)
        ::unlink(Native(temp).constData());
    return e;
}

class SourceFile {
public:
    explicit SourceFile(const QString& path) {
        fd = ::open(Native(path).constData(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) {
            error = errno;
        } else if (::fstat(fd, &st) != 0) {
            error = errno;
        } else if (!S_ISREG(st.st_mode)) {
            error = S_ISDIR(st.st_mode) ? EISDIR : EINVAL;
        }
    }
    ~SourceFile() {
        if (fd >= 0)
            ::close(fd);
    }
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;

    int fd = -1;
    int error = 0;
    struct stat st {};
};

int CopyOne(const QString& absSource, const QString& target, bool renameOnCollision, Prompt* prompt,
            QString* finalPath) {
    SourceFile src(absSource);
    if (src.error)
        return src.error;
    const QString dest = ResolveTarget(absSource, target);
    Collision collision = renameOnCollision ? Collision::Number : Collision::Refuse;
    struct stat dst;
    if (PosixFile::Stat(dest, dst) == 0 && !renameOnCollision) {
        if (S_ISDIR(dst.st_mode))
            return EISDIR;
        if (dst.st_dev == src.st.st_dev && dst.st_ino == src.st.st_ino)
            return EINVAL; // a file cannot be copied onto itself
        if (!prompt)
            return EEXIST;
        if (!prompt->AskYesNo(FileTextOf(FileText::AskReplace) + QLatin1String("\n\n") + dest, false,
                              Prompt::Icon::Warning))
            return FileOp::Cancelled;
        collision = Collision::Replace;
    }
    const QString folder = FolderOf(dest);
    if (int e = MakeFolder(folder))
        return e;
    QString temp, final;
    if (int e = WriteTempCopy(src.fd, src.st, folder, false, temp))
        return e;
    if (int e = Publish(temp, dest, collision, final))
        return e;
    if (finalPath)
        *finalPath = final;
    return 0;
}

// `source` -> a free hidden name of its folder -> `dest`. On a failure of the second step
// the file gets its old name back.
int RenameThroughIntermediate(const QString& source, const QString& dest) {
    const QString folder = FolderOf(source);
    int e = EEXIST;
    QString middle;
    for (int i = 0; i < 100 && e == EEXIST; ++i) {
        middle = Join(folder, QStringLiteral(".qlt-case-") +
                                  QString::number(QRandomGenerator::global()->generate64(), 36));
        e = PosixFile::RenameNoReplace(source, middle);
    }
    if (e)
        return e;
    if ((e = PosixFile::Rename(middle, dest))) {
        (void)PosixFile::Rename(middle, source);
        return e;
    }
    // Where `dest` is a second name of the same file, the rename did nothing: the
    // intermediate name goes, the file keeps `dest`.
    struct stat m, d;
    if (PosixFile::LStat(middle, m) == 0 && PosixFile::LStat(dest, d) == 0 && m.st_dev == d.st_dev &&
        m.st_ino == d.st_ino)
        ::unlink(Native(middle).constData());
    return 0;
}

// Moves within or across file systems; never replaces a file.
int MoveTo(const QString& absSource, const QString& dest, QString* finalPath) {
    struct stat sst, dst;
    if (int e = PosixFile::LStat(absSource, sst))
        return e;
    if (absSource == dest)
        return EINVAL; // source and target are the same
    if (PosixFile::LStat(dest, dst) == 0 && dst.st_dev == sst.st_dev && dst.st_ino == sst.st_ino &&
        absSource.compare(dest, Qt::CaseInsensitive) == 0) {
        // The target name reaches the source itself: a change of case on a file system
        // that ignores case (vfat, exfat, NTFS, SMB, casefolded ext4). A rename onto the
        // same file does nothing there, so the file goes through an intermediate name of
        // its folder. (A hard link of another name is a name in use like any other.)
        if (int e = RenameThroughIntermediate(absSource, dest))
            return e;
        if (finalPath)
            *finalPath = dest;
        return 0;
    }
    if (int e = MakeFolder(FolderOf(dest)))
        return e;
    int e = EEXIST;
    for (int n = 1; n <= kMaxNumberedNames && e == EEXIST; ++n) {
        const QString candidate = n == 1 ? dest : PosixFile::NumberedName(dest, n);
        e = PosixFile::RenameNoReplace(absSource, candidate);
        if (!e) {
            if (finalPath)
                *finalPath = candidate;
            return 0;
        }
    }
    if (e != EXDEV)
        return e;

    // Another file system: a verified copy, then the source goes.
    if (!S_ISREG(sst.st_mode))
        return EXDEV;
    if (::access(Native(FolderOf(absSource)).constData(), W_OK | X_OK) != 0)
        return errno; // the source could not be removed afterwards: do not start
    SourceFile src(absSource);
    if (src.error)
        return src.error;
    QString temp, final;
    if ((e = WriteTempCopy(src.fd, src.st, FolderOf(dest), true, temp)))
        return e;
    if ((e = Publish(temp, dest, Collision::Number, final)))
        return e;
    if (::unlink(Native(absSource).constData()) != 0) {
        e = errno;
        ::unlink(Native(final).constData()); // the source stays: take the copy back
        return e;
    }
    if (finalPath)
        *finalPath = final;
    return 0;
}

int DeleteOne(const QString& absPath, bool toRecycleBin) {
    if (toRecycleBin)
        return MoveToTrash(absPath).error;
    struct stat st;
    if (int e = PosixFile::LStat(absPath, st))
        return e;
    if (S_ISDIR(st.st_mode))
        return EISDIR;
    return ::unlink(Native(absPath).constData()) == 0 ? 0 : errno;
}

// Overwrites the file from its start in blocks of 4096 bytes up to its length, then deletes it.
bool OverwriteAndDelete(const QString& absPath) {
    const QByteArray p = Native(absPath);
    const int fd = ::open(p.constData(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0)
        return false;
    struct stat st;
    bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode);
    static const char zeros[4096] = {};
    for (off_t done = 0; ok && done < st.st_size; done += sizeof zeros) {
        const qsizetype n = qsizetype(std::min<off_t>(sizeof zeros, st.st_size - done));
        ok = PosixFile::WriteAll(fd, zeros, n) == 0;
    }
    ok = ok && ::fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    return ok && ::unlink(p.constData()) == 0;
}

} // namespace

int CopyFile(const QString& source, const QString& target, bool renameOnCollision, Prompt* prompt,
             QString* finalPath) {
    const QString abs = Absolute(source);
    if (!HasWildcard(abs))
        return CopyOne(abs, target, renameOnCollision, prompt, finalPath);
    const QStringList files = ExpandWildcard(abs);
    if (files.isEmpty())
        return ENOENT;
    struct stat st;
    if (PosixFile::Stat(target, st) != 0 || !S_ISDIR(st.st_mode))
        return ENOTDIR;
    int first = 0;
    for (const QString& f : files) {
        const int e = CopyOne(f, Absolute(target) + u'/', renameOnCollision, prompt, nullptr);
        if (e == FileOp::Cancelled)
            return e;
        if (e && !first)
            first = e;
    }
    if (finalPath)
        *finalPath = Absolute(target);
    return first;
}

int MoveFile(const QString& source, const QString& target, QString* finalPath) {
    const QString abs = Absolute(source);
    return MoveTo(abs, ResolveTarget(abs, target), finalPath);
}

int RenameFile(const QString& source, const QString& target, QString* finalPath) {
    const QString abs = Absolute(source);
    if (target.isEmpty())
        return EINVAL;
    const QString dest = target.contains(u'/') ? Absolute(target) : Join(FolderOf(abs), target);
    return MoveTo(abs, dest, finalPath);
}

int DeleteFile(const QString& path, bool toRecycleBin, bool askFirst, Prompt* prompt) {
    const QString abs = Absolute(path);
    const QStringList files = HasWildcard(abs) ? ExpandWildcard(abs) : QStringList{abs};
    if (files.isEmpty() || (files.size() == 1 && !PosixFile::Exists(files.front())))
        return ENOENT;
    if (askFirst) {
        if (!prompt)
            return FileOp::Cancelled;
        const QString text = FileTextOf(toRecycleBin ? FileText::AskTrash : FileText::AskDelete);
        if (!prompt->AskYesNo(text + QLatin1String("\n\n") + abs, true, Prompt::Icon::Question))
            return FileOp::Cancelled;
    }
    int first = 0;
    for (const QString& f : files) {
        const int e = DeleteOne(f, toRecycleBin);
        if (e && !first)
            first = e;
    }
    return first;
}

bool KillFile(const QString& path, int mode, bool quiet, bool paperbin, Prompt* prompt) {
    const QString abs = Absolute(path);
    switch (paperbin ? 0 : mode) {
    case 0:
        return DeleteOne(abs, false) == 0;
    case 1: {
        const int e = DeleteOne(abs, true);
        if (e && quiet && prompt)
            prompt->Tell(abs + QLatin1String("\n") + FileOpErrorText(e), Prompt::Icon::Critical);
        return e == 0;
    }
    case 2:
        return OverwriteAndDelete(abs);
    default:
        return false;
    }
}

bool PaperbinSetting(const DataGrid& settings) {
    return settings.Rows() >= Ini::Paperbin && settings.Cols() >= Ini::Col2 &&
           settings.CellText(Ini::Paperbin, Ini::Col2) == QLatin1String("1");
}

QString FreeFileName(const QString& path) {
    if (!PosixFile::Exists(path))
        return path;
    for (int n = 2; n <= kMaxNumberedNames; ++n) {
        const QString candidate = PosixFile::NumberedName(path, n);
        if (!PosixFile::Exists(candidate))
            return candidate;
    }
    return QString();
}

QString FileOpErrorText(int code) {
    if (code == 0 || code == FileOp::Cancelled)
        return QString();
    return QString::fromLocal8Bit(std::strerror(code));
}
