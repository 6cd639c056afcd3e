#pragma once
// Thin helpers over the POSIX file calls that the file layer and the trash share.
// Every function that can fail returns 0 for success or the errno value.

#include <QByteArray>
#include <QString>
#include <sys/stat.h>

namespace PosixFile {

QByteArray Native(const QString& path); // the path as the file system spells it

// stat(2) / lstat(2). Returns 0 or errno.
int Stat(const QString& path, struct stat& st);
int LStat(const QString& path, struct stat& st);
bool Exists(const QString& path); // anything at the path, a dangling link included

// Renames without ever replacing an existing target: EEXIST when the target exists.
// On a file system without an atomic no-replace rename, a hard link is tried, and as
// the last resort an existence check directly before the rename.
int RenameNoReplace(const QString& from, const QString& to);
// rename(2): replaces an existing target atomically.
int Rename(const QString& from, const QString& to);

// "folder/name (n).ext" for n >= 2; a name without a dot (or with only a leading dot)
// gets the number at its end.
QString NumberedName(const QString& path, int n);

// Writes the whole buffer, resuming after interruptions and short writes.
int WriteAll(int fd, const char* data, qsizetype size);
// Reads up to size bytes; returns the count, 0 at the end, -1 with errno set.
qsizetype ReadSome(int fd, char* data, qsizetype size);

} // namespace PosixFile
