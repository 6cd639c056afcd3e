#include "platform/PosixFile.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace PosixFile {

namespace {

constexpr char16_t kEscapeFirst = 0xDC80;
constexpr char16_t kEscapeLast = 0xDCFF;

// An escaped byte is a low surrogate on its own; the same unit behind a high surrogate is
// the second half of a character beyond the first plane.
bool IsEscapeAt(QStringView s, qsizetype i) {
    const char16_t c = s[i].unicode();
    return c >= kEscapeFirst && c <= kEscapeLast && (i == 0 || !QChar::isHighSurrogate(s[i - 1].unicode()));
}

// Length of the valid UTF-8 sequence at p (1 to 4), or 0 when the byte there starts none.
int ValidSequence(const unsigned char* p, const unsigned char* end) {
    const unsigned char c = p[0];
    if (c < 0x80)
        return 1;
    int n = 0;
    char32_t min = 0;
    char32_t cp = 0;
    if ((c & 0xE0) == 0xC0) {
        n = 2, min = 0x80, cp = c & 0x1F;
    } else if ((c & 0xF0) == 0xE0) {
        n = 3, min = 0x800, cp = c & 0x0F;
    } else if ((c & 0xF8) == 0xF0) {
        n = 4, min = 0x10000, cp = c & 0x07;
    } else {
        return 0;
    }
    if (end - p < n)
        return 0;
    for (int i = 1; i < n; ++i) {
        if ((p[i] & 0xC0) != 0x80)
            return 0;
        cp = (cp << 6) | (p[i] & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return 0;
    return n;
}

// Windows-1252 for the bytes 0x80 to 0x9F; the rest of the upper half is Latin-1.
constexpr char16_t kCp1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                  0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

} // namespace

QByteArray Native(const QString& path) {
    if (!HasEscapedBytes(path))
        return path.toUtf8();
    QByteArray out;
    out.reserve(path.size() * 3);
    qsizetype from = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const char16_t c = path.at(i).unicode();
        if (!IsEscapeAt(path, i))
            continue;
        out += QStringView(path).mid(from, i - from).toUtf8();
        out += char(c - 0xDC00);
        from = i + 1;
    }
    out += QStringView(path).mid(from).toUtf8();
    return out;
}

QString FromNative(const QByteArrayView bytes) {
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* end = p + bytes.size();
    // The usual case: valid UTF-8 throughout.
    const unsigned char* q = p;
    while (q < end) {
        const int n = ValidSequence(q, end);
        if (n == 0)
            break;
        q += n;
    }
    if (q == end)
        return QString::fromUtf8(bytes);
    QString out = QString::fromUtf8(reinterpret_cast<const char*>(p), q - p);
    const unsigned char* run = q;
    while (q < end) {
        const int n = ValidSequence(q, end);
        if (n > 0) {
            q += n;
            continue;
        }
        out += QString::fromUtf8(reinterpret_cast<const char*>(run), q - run);
        out += QChar(char16_t(0xDC00 + *q));
        ++q;
        run = q;
    }
    out += QString::fromUtf8(reinterpret_cast<const char*>(run), q - run);
    return out;
}

bool HasEscapedBytes(const QString& name) {
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (IsEscapeAt(name, i))
            return true;
    }
    return false;
}

QString DisplayName(const QString& name) {
    if (!HasEscapedBytes(name))
        return name;
    QString out = name;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (!IsEscapeAt(name, i))
            continue;
        const auto b = static_cast<unsigned char>(name[i].unicode() - 0xDC00);
        out[i] = QChar(b < 0xA0 ? kCp1252[b - 0x80] : char16_t(b));
    }
    return out + QStringLiteral(" (\u2260UTF-8)");
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

QString AbsolutePath(const QString& path) {
    if (path.startsWith(u'/'))
        return QDir::cleanPath(path);
    char cwd[PATH_MAX];
    const QString base = ::getcwd(cwd, sizeof cwd) ? FromNative(cwd) : QDir::currentPath();
    return QDir::cleanPath(base + u'/' + path);
}

QString CanonicalPath(const QString& path) {
    char* real = ::realpath(Native(path).constData(), nullptr);
    if (!real)
        return QString();
    const QString out = FromNative(real);
    ::free(real);
    return out;
}

bool ExistsFollowed(const QString& path) {
    struct stat st;
    return Stat(path, st) == 0;
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

bool ReadWholeFile(const QString& path, QByteArray& bytes, QString* error) {
    bytes.clear();
    const int fd = ::open(Native(path).constData(), O_RDONLY | O_CLOEXEC);
    auto fail = [&] {
        if (error)
            *error = QString::fromLocal8Bit(std::strerror(errno));
        return false;
    };
    if (fd < 0)
        return fail();
    char buf[65536];
    for (;;) {
        const qsizetype n = ReadSome(fd, buf, sizeof buf);
        if (n < 0) {
            const int err = errno;
            ::close(fd);
            errno = err;
            return fail();
        }
        if (n == 0)
            break;
        bytes.append(buf, n);
    }
    ::close(fd);
    return true;
}

} // namespace PosixFile
