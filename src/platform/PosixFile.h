#pragma once
// Thin helpers over the POSIX file calls that the file layer and the trash share.
// Every function that can fail returns 0 for success or the errno value.

#include <QByteArray>
#include <QString>
#include <sys/stat.h>

namespace PosixFile {

// File names are bytes; most are UTF-8, but names copied from old FAT or Windows disks
// may hold Latin-1 bytes that are no valid UTF-8. FromNative keeps such a name without
// loss: each byte that is not part of valid UTF-8 becomes the code unit U+DC80..U+DCFF
// (a lone surrogate, which no valid name can contain), and Native turns the name back
// into exactly its bytes. Every call that hands a path to the system goes through
// Native, every name read from the system through FromNative; in between the name is an
// ordinary QString. (QFile and QFileInfo do not know the escape: use these helpers for
// names that may carry it.)
QByteArray Native(const QString& path);         // the path as the file system spells it
QString FromNative(const QByteArrayView bytes); // a name as the system gave it
bool HasEscapedBytes(const QString& name);      // the name holds bytes that are no UTF-8
// The name for the eye: escaped bytes shown as Windows-1252 characters, followed by the
// mark " (≠UTF-8)". Names without escapes come back unchanged.
QString DisplayName(const QString& name);

// The absolute, cleaned path: pure text work on the escapes (QFileInfo would spell them
// anew), relative paths taken from the current folder.
QString AbsolutePath(const QString& path);
// realpath(3): links and dots resolved; empty when the path does not exist.
QString CanonicalPath(const QString& path);

// stat(2) / lstat(2). Returns 0 or errno.
int Stat(const QString& path, struct stat& st);
int LStat(const QString& path, struct stat& st);
bool Exists(const QString& path);         // anything at the path, a dangling link included
bool ExistsFollowed(const QString& path); // as QFileInfo::exists: links followed

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
// Reads the whole file by its bytes-exact name; false with the system's text in `error`.
bool ReadWholeFile(const QString& path, QByteArray& bytes, QString* error = nullptr);

} // namespace PosixFile
