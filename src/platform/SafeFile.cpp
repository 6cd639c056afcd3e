#include "platform/SafeFile.h"

#include "platform/PosixFile.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace SafeFile {

namespace {

std::function<int(Op)>& Hook() {
    static std::function<int(Op)> hook;
    return hook;
}

int Injected(Op op) {
    const auto& hook = Hook();
    return hook ? hook(op) : 0;
}

constexpr char kTempMark[] = ".qlt-tmp-";

// Folders searched for stale copies, with the modification time they had then (updated
// for our own changes) and the moment of the search. A folder is searched again when
// someone else has changed it since, or a second after the last search: the search reads
// the whole folder, too much for every file of a batch in a big folder. (Two changes in
// the same clock tick of the file system leave the time alone; the second bounds that.)
struct FolderMark {
    QByteArray folder;
    timespec mtime;
    qint64 searchedAt; // ms, monotonic
};
std::vector<FolderMark>& Marks() {
    static std::vector<FolderMark> marks;
    return marks;
}

qint64 NowMs() {
    timespec t{};
    ::clock_gettime(CLOCK_MONOTONIC, &t);
    return qint64(t.tv_sec) * 1000 + t.tv_nsec / 1000000;
}

bool FolderTime(const QByteArray& folder, timespec* t) {
    struct stat st {};
    if (::stat(folder.constData(), &st) != 0)
        return false;
    *t = st.st_mtim;
    return true;
}

FolderMark* MarkOf(const QByteArray& folder) {
    for (FolderMark& m : Marks()) {
        if (m.folder == folder)
            return &m;
    }
    return nullptr;
}

bool Same(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

// Whether the folder needs no search now.
bool KnownClean(const QByteArray& folder) {
    const FolderMark* m = MarkOf(folder);
    timespec now{};
    return m && NowMs() - m->searchedAt < 1000 && FolderTime(folder, &now) && Same(now, m->mtime);
}

void Searched(const QByteArray& folder) {
    timespec t{};
    if (!FolderTime(folder, &t))
        return;
    if (FolderMark* m = MarkOf(folder)) {
        *m = {folder, t, NowMs()};
        return;
    }
    auto& marks = Marks();
    if (marks.size() >= 32)
        marks.erase(marks.begin());
    marks.push_back({folder, t, NowMs()});
}

QByteArray FolderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : path.left(slash);
}

// A change of the folder by ourselves: the folder stays known as searched when nobody
// else has changed it since we last looked.
template <typename F> int OwnChange(const QByteArray& path, const F& change) {
    const QByteArray folder = FolderOf(path);
    FolderMark* m = MarkOf(folder);
    timespec before{};
    const bool known = m && FolderTime(folder, &before) && Same(before, m->mtime);
    const int result = change();
    timespec after{};
    if (known && FolderTime(folder, &after))
        m->mtime = after;
    return result;
}

} // namespace

void SetFaultHook(std::function<int(Op)> hook) {
    Hook() = std::move(hook);
}

void IgnoreFileSizeSignal() {
    // Each time: a child made by fork may have set the signal back.
    std::signal(SIGXFSZ, SIG_IGN);
}

int WriteAll(int fd, const char* data, qint64 size) {
    while (size > 0) {
        if (const int e = Injected(Op::Write))
            return e;
        const ssize_t n = ::write(fd, data, static_cast<size_t>(std::min<qint64>(size, 1 << 20)));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        if (n == 0)
            return EIO;
        data += n;
        size -= n;
    }
    return 0;
}

int PWriteAll(int fd, const char* data, qint64 size, qint64 offset) {
    while (size > 0) {
        if (const int e = Injected(Op::Write))
            return e;
        const ssize_t n = ::pwrite(fd, data, static_cast<size_t>(std::min<qint64>(size, 1 << 20)),
                                   static_cast<off_t>(offset));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        if (n == 0)
            return EIO;
        data += n;
        size -= n;
        offset += n;
    }
    return 0;
}

int Fsync(int fd) {
    if (const int e = Injected(Op::Fsync))
        return e;
    return ::fsync(fd) == 0 ? 0 : errno;
}

int Close(int fd) {
    const int e = Injected(Op::Close);
    const int r = ::close(fd);
    if (e)
        return e;
    return r == 0 || errno == EINTR ? 0 : errno;
}

int Truncate(int fd, qint64 length) {
    if (const int e = Injected(Op::Truncate))
        return e;
    return ::ftruncate(fd, static_cast<off_t>(length)) == 0 ? 0 : errno;
}

int Rename(const QByteArray& from, const QByteArray& to) {
    if (const int e = Injected(Op::Rename))
        return e;
    return OwnChange(to, [&] { return ::rename(from.constData(), to.constData()) == 0 ? 0 : errno; });
}

void RemoveTemp(const QString& tempPath) {
    const QByteArray path = PosixFile::Native(tempPath);
    OwnChange(path, [&] { return ::unlink(path.constData()); });
}

int SyncFolderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    const QByteArray folder = slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : path.left(slash);
    const int dir = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir < 0)
        return 0; // a folder we can't open for reading: nothing to flush through it
    const int e = Fsync(dir);
    ::close(dir);
    // Some file systems can't sync a folder at all; that is no failure of the write.
    return e == EINVAL || e == EROFS ? 0 : e;
}

QString ErrorText(int err) {
    return QString::fromLocal8Bit(std::strerror(err));
}

bool IsTempName(const QByteArray& name, pid_t* pid) {
    // ".NAME.qlt-tmp-PID-XXXXXX"
    if (!name.startsWith('.'))
        return false;
    const qsizetype mark = name.lastIndexOf(kTempMark);
    if (mark < 1)
        return false;
    const qsizetype digits = mark + qsizetype(sizeof(kTempMark) - 1);
    const qsizetype dash = name.indexOf('-', digits);
    if (dash <= digits || name.size() - dash - 1 != 6)
        return false;
    long long value = 0;
    for (qsizetype i = digits; i < dash; ++i) {
        const char c = name[i];
        if (c < '0' || c > '9' || dash - digits > 10)
            return false;
        value = value * 10 + (c - '0');
    }
    if (value <= 0)
        return false;
    if (pid)
        *pid = static_cast<pid_t>(value);
    return true;
}

int RemoveStaleTemps(const QString& folder) {
    QByteArray base = PosixFile::Native(folder);
    DIR* dir = ::opendir(base.isEmpty() ? "." : base.constData());
    if (!dir)
        return 0;
    if (!base.endsWith('/'))
        base += '/';
    const uid_t me = ::geteuid();
    int removed = 0;
    while (dirent* e = ::readdir(dir)) {
        if (e->d_name[0] != '.' || std::strstr(e->d_name, kTempMark) == nullptr)
            continue; // the usual entry: no copy of ours
        const QByteArray name(e->d_name);
        pid_t pid = 0;
        if (!IsTempName(name, &pid) || pid == ::getpid())
            continue;
        // A process that still runs (or that we may not ask about) keeps its copy.
        if (::kill(pid, 0) == 0 || errno != ESRCH)
            continue;
        const QByteArray path = base + name;
        struct stat st {};
        if (::lstat(path.constData(), &st) != 0 || !S_ISREG(st.st_mode))
            continue;
        if (me != 0 && st.st_uid != me)
            continue; // someone else's: not ours to judge
        if (::unlink(path.constData()) == 0)
            ++removed;
    }
    ::closedir(dir);
    return removed;
}

int CreateTemp(const QString& target, QString* tempPath, int* err) {
    IgnoreFileSizeSignal();
    // Split as text: QFileInfo would spell a name that is no UTF-8 anew.
    const QString abs = PosixFile::AbsolutePath(target);
    const qsizetype slash = abs.lastIndexOf(u'/');
    const QString folderPath = slash <= 0 ? QStringLiteral("/") : abs.left(slash);
    const QByteArray folder = PosixFile::Native(folderPath);
    if (!KnownClean(folder)) {
        RemoveStaleTemps(folderPath);
        Searched(folder);
    }
    // A name of up to 255 bytes must leave room for the additions (a long UTF-8 name may
    // be cut inside a character: the copy's name is never shown).
    const QByteArray base = PosixFile::Native(abs.mid(slash + 1)).left(200);
    QByteArray name = (folder == "/" ? QByteArray() : folder) + "/." + base + kTempMark +
                      QByteArray::number(::getpid()) + "-XXXXXX";
    int createErr = 0;
    const int fd = OwnChange(name, [&] {
        const int made = ::mkostemp(name.data(), O_CLOEXEC);
        createErr = made < 0 ? errno : 0;
        return made;
    });
    if (fd < 0) {
        if (err)
            *err = createErr;
        return -1;
    }
    *tempPath = PosixFile::FromNative(name);
    return fd;
}

void CopyMetadata(const QByteArray& from, int fd) {
    struct stat st {};
    if (::stat(from.constData(), &st) != 0)
        return;
    // The full owner only root may give; an ordinary user can still keep the group when
    // he belongs to it.
    if (::fchown(fd, st.st_uid, st.st_gid) != 0 && ::fchown(fd, static_cast<uid_t>(-1), st.st_gid) != 0) {
        // The copy keeps our own group.
    }
    ::fchmod(fd, st.st_mode & 07777);
    // Extended attributes, the ACL among them (system.posix_acl_access). Failures are
    // taken as they come: a file system without them, or an attribute we may not set.
    const ssize_t listSize = ::listxattr(from.constData(), nullptr, 0);
    if (listSize <= 0)
        return;
    QByteArray names(listSize, '\0');
    const ssize_t got = ::listxattr(from.constData(), names.data(), size_t(names.size()));
    if (got <= 0)
        return;
    for (qsizetype pos = 0; pos < got;) {
        const char* key = names.constData() + pos;
        pos += qsizetype(std::strlen(key)) + 1;
        const ssize_t valueSize = ::getxattr(from.constData(), key, nullptr, 0);
        if (valueSize < 0 || valueSize > (1 << 20))
            continue;
        QByteArray value(valueSize, '\0');
        const ssize_t n = ::getxattr(from.constData(), key, value.data(), size_t(value.size()));
        if (n >= 0)
            ::fsetxattr(fd, key, value.constData(), size_t(n), 0);
    }
}

AtomicWriter::AtomicWriter(const QString& target) : m_target(target) {}

AtomicWriter::~AtomicWriter() {
    Cancel();
}

void AtomicWriter::Fail(int err, const char* what) {
    if (m_error.isEmpty())
        m_error = QStringLiteral("%1 %2: %3")
                      .arg(QLatin1String(what), QDir::toNativeSeparators(m_target), ErrorText(err));
}

bool AtomicWriter::Open() {
    int err = 0;
    m_fd = CreateTemp(m_target, &m_temp, &err);
    if (m_fd < 0) {
        Fail(err, "Can't create a temporary file for");
        return false;
    }
    const QByteArray target = PosixFile::Native(m_target);
    struct stat st {};
    if (::stat(target.constData(), &st) == 0) {
        CopyMetadata(target, m_fd);
    } else {
        const mode_t mask = ::umask(022);
        ::umask(mask);
        ::fchmod(m_fd, 0666 & ~mask);
    }
    return true;
}

bool AtomicWriter::Write(const char* data, qint64 size) {
    if (m_fd < 0)
        return false;
    if (const int e = WriteAll(m_fd, data, size)) {
        Fail(e, "Can't write");
        Cancel();
        return false;
    }
    return true;
}

bool AtomicWriter::Commit() {
    if (m_fd < 0)
        return false;
    int e = Fsync(m_fd);
    const int c = Close(m_fd);
    m_fd = -1;
    if (!e)
        e = c;
    if (!e)
        e = Rename(PosixFile::Native(m_temp), PosixFile::Native(m_target));
    if (e) {
        Fail(e, "Can't write");
        RemoveTemp(m_temp);
        m_temp.clear();
        return false;
    }
    m_temp.clear();
    if (const int s = SyncFolderOf(PosixFile::Native(m_target))) {
        Fail(s, "Can't flush the folder of");
        return false;
    }
    return true;
}

void AtomicWriter::Cancel() {
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
    if (!m_temp.isEmpty()) {
        RemoveTemp(m_temp);
        m_temp.clear();
    }
}

bool WriteWholeFile(const QString& target, const QByteArray& bytes, QString* error) {
    AtomicWriter w(target);
    if (w.Open() && w.Write(bytes.constData(), bytes.size()) && w.Commit())
        return true;
    if (error)
        *error = w.ErrorString();
    return false;
}

} // namespace SafeFile
