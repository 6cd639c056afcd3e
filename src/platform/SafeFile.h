#pragma once
// The checked file calls of every write that replaces a file: each write, fsync, rename,
// truncate and close is checked, and its failure is handed to the caller as an errno
// value (0 = success). Tests put a fault hook in front of them that fails the N-th call.
//
// Temporary copies are named ".NAME.qlt-tmp-PID-XXXXXX" beside their target, so that a
// copy left behind by a killed process can be told apart from every other file and
// removed once that process is gone (RemoveStaleTemps).
//
// AtomicWriter writes a whole file that way: into a temporary copy, flushed to the disk
// and renamed over the target only when every byte went through.

#include <QByteArray>
#include <QString>
#include <functional>
#include <sys/types.h>

namespace SafeFile {

enum class Op { Write, Fsync, Rename, Close, Truncate };

// Test hook: called before each checked call; a non-zero result is taken as that call's
// errno and the call is not made. An empty hook removes it.
void SetFaultHook(std::function<int(Op)> hook);

// A file-size limit (ulimit -f) must give EFBIG like any other failed write, not kill
// the program by SIGXFSZ. Called before every write that replaces a file.
void IgnoreFileSizeSignal();

int WriteAll(int fd, const char* data, qint64 size);                 // resumes short writes
int PWriteAll(int fd, const char* data, qint64 size, qint64 offset); // at an offset
int Fsync(int fd);
int Close(int fd); // closes in any case; reports a failure of the close
int Truncate(int fd, qint64 length);
int Rename(const QByteArray& from, const QByteArray& to);
int SyncFolderOf(const QByteArray& path); // makes a new directory entry durable

// The text of an errno value.
QString ErrorText(int err);

// A new, empty temporary file beside target, opened read-write. Returns the descriptor
// or -1 with *err set. Stale copies of dead processes in that folder are removed first.
int CreateTemp(const QString& target, QString* tempPath, int* err);

// Removes a temporary copy of ours (after a failure, or once it has served).
void RemoveTemp(const QString& tempPath);

// Whether `name` (a bare file name) is a temporary copy of ours; *pid receives the id of
// the process that made it.
bool IsTempName(const QByteArray& name, pid_t* pid = nullptr);
// Removes the temporary copies in `folder` whose process no longer runs. Nothing else
// is ever touched. Returns the number removed.
int RemoveStaleTemps(const QString& folder);

// Copies the owner (or at least the group), the mode, the extended attributes and the
// ACL of `from` to the open file `fd`.
void CopyMetadata(const QByteArray& from, int fd);

class AtomicWriter {
public:
    explicit AtomicWriter(const QString& target);
    ~AtomicWriter(); // an open, uncommitted copy is removed
    AtomicWriter(const AtomicWriter&) = delete;
    AtomicWriter& operator=(const AtomicWriter&) = delete;

    bool Open();
    bool Write(const char* data, qint64 size);
    bool Commit(); // flush, close, rename over the target
    void Cancel();
    QString ErrorString() const { return m_error; }

private:
    void Fail(int err, const char* what);
    QString m_target;
    QString m_temp;
    int m_fd = -1;
    QString m_error;
};

// Writes `bytes` as the whole file at `target` through an AtomicWriter: afterwards the
// file holds either its old bytes or exactly these. False with *error set on a failure.
bool WriteWholeFile(const QString& target, const QByteArray& bytes, QString* error = nullptr);

} // namespace SafeFile
