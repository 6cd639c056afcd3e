#include "platform/FolderWalk.h"

#include "platform/PosixFile.h"
#include "platform/SafeFile.h"

#include <QFile>
#include <algorithm>
#include <cstdio>
#include <dirent.h>
#include <sys/stat.h>
#include <time.h>

namespace {

struct DirCloser {
    DIR* d;
    ~DirCloser() {
        if (d)
            ::closedir(d);
    }
};

QByteArray Native(const QString& path) {
    return PosixFile::Native(path);
}

// Lists the raw entries; `dirsOnly` skips the stat of plain files where the type is known.
bool ReadDir(const QString& folder, std::vector<FolderEntry>& out, FolderId* id, bool dirsOnly) {
    out.clear();
    QByteArray native = Native(folder);
    if (native.isEmpty())
        return false;
    DIR* dir = ::opendir(native.constData());
    if (!dir)
        return false;
    DirCloser closer{dir};
    struct stat st {};
    if (::fstat(::dirfd(dir), &st) != 0)
        return false;
    if (id) {
        id->device = std::uint64_t(st.st_dev);
        id->inode = std::uint64_t(st.st_ino);
    }
    if (!native.endsWith('/'))
        native += '/';
    const qsizetype baseLen = native.size();
    bool tempCopies = false;
    while (dirent* e = ::readdir(dir)) {
        const char* n = e->d_name;
        if (n[0] == '.') {
            // ".", ".." and hidden entries; a temporary copy of a tag write among them
            // may be left over from a killed run.
            tempCopies = tempCopies || (!dirsOnly && n[1] != '\0' && SafeFile::IsTempName(QByteArray(n)));
            continue;
        }
        bool isDir = false;
        if (e->d_type == DT_DIR) {
            isDir = true;
        } else if (e->d_type == DT_REG) {
            if (dirsOnly)
                continue;
        } else if (e->d_type == DT_LNK || e->d_type == DT_UNKNOWN) {
            // A link counts as what it points to; a dangling link is a file that won't open.
            native.truncate(baseLen);
            native += n;
            struct stat target {};
            isDir = ::stat(native.constData(), &target) == 0 && S_ISDIR(target.st_mode);
        } else if (dirsOnly) {
            continue;
        }
        if (dirsOnly && !isDir)
            continue;
        out.push_back({PosixFile::FromNative(n), isDir});
    }
    if (tempCopies)
        SafeFile::RemoveStaleTemps(folder);
    return true;
}

} // namespace

bool ListFolder(const QString& folder, std::vector<FolderEntry>& entries, FolderId* id) {
    if (!ReadDir(folder, entries, id, false))
        return false;
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    return true;
}

bool FolderIdentity(const QString& folder, FolderId& id) {
    struct stat st {};
    if (::stat(Native(folder).constData(), &st) != 0 || !S_ISDIR(st.st_mode))
        return false;
    id.device = std::uint64_t(st.st_dev);
    id.inode = std::uint64_t(st.st_ino);
    return true;
}

std::vector<QString> ListSubfolders(const QString& folder) {
    std::vector<FolderEntry> entries;
    ReadDir(folder, entries, nullptr, true);
    std::vector<std::pair<QString, QString>> keyed;
    keyed.reserve(entries.size());
    for (FolderEntry& e : entries)
        keyed.emplace_back(e.name.toUpper(), std::move(e.name));
    std::sort(keyed.begin(), keyed.end());
    std::vector<QString> out;
    out.reserve(keyed.size());
    for (auto& k : keyed)
        out.push_back(std::move(k.second));
    return out;
}

bool HasSubfolder(const QString& folder) {
    std::vector<FolderEntry> entries;
    ReadDir(folder, entries, nullptr, true);
    return !entries.empty();
}

QString FileDateText(const QString& path) {
    struct stat st {};
    if (::stat(Native(path).constData(), &st) != 0)
        return QString();
    struct tm t {};
    const time_t when = st.st_mtime;
    if (!::localtime_r(&when, &t))
        return QString();
    char buf[32];
    const int n = std::snprintf(buf, sizeof buf, "%02d.%02d.%04d", t.tm_mday, t.tm_mon + 1, t.tm_year + 1900);
    return QString::fromLatin1(buf, n);
}
