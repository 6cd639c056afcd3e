#pragma once
// Writing a file without ever leaving it half written: the new contents go into a
// temporary file in the same folder, which is flushed to the disk and then renamed over
// the original. Permissions and (where allowed) the owner of the original are kept.

#include <QByteArray>
#include <QString>
#include <functional>

namespace qlt_tag {

// Whether the file may be changed: it exists, is a regular file, has a write permission
// for us (checked on the mode bits, so that running as root does not override a
// read-only file) and its folder takes the temporary file. Fills error if not.
bool CanRewrite(const QString& path, QString* error);

// Writes head + bytes [bodyStart, bodyEnd) of source + tail into a temporary file beside
// target, then replaces target with it. source may be target itself.
bool RewriteFile(const QString& target, const QByteArray& head, const QString& source, long long bodyStart,
                 long long bodyEnd, const QByteArray& tail, QString* error);

// Copies [start, end) of source to a new temporary file beside target (returned in
// tempPath), lets edit change it (return false to give up), and flushes it. The caller
// passes it on to RewriteFile or RenameOver, and removes it in any case.
bool MakeEditableCopy(const QString& target, const QString& source, long long start, long long end,
                      const std::function<bool(const QString& tempPath, QString* error)>& edit,
                      QString* tempPath, QString* error);

// Replaces target by the finished temporary file (permissions and owner of target kept).
bool RenameOver(const QString& tempPath, const QString& target, QString* error);

} // namespace qlt_tag
