#pragma once
// The journal of the last rename batch: a small text file in the program's `temp` folder
// that lists every rename of the batch (folder, old name, new name, the row's old artist
// and title, and the size and time of the file right after the rename). An undo reads it
// back; it is replaced by the next batch and goes with the folder `temp` at closing.
//
// Format (UTF-8, LF): the first line "quillotune-journal 2" (a journal of version 1,
// without the ninth field, is read as well); then one line per file with tab-separated
// fields, in which "%", tab, CR and LF are written as %25, %09, %0D and %0A, and each byte
// of a name that is no valid UTF-8 as %XX (so the journal stays UTF-8 text and gives back
// the very bytes): folder, old name, new name, old artist, old title, size, modification
// time in nanoseconds, for a move the folder the file went to (an eighth field), and for
// the other file commands their kind (a ninth field): "copy" (the copy is new folder and
// new name), "trash" (the file went there, into "files/" of a trash folder) or "gone"
// (deleted for good).

#include <QFile>
#include <QString>
#include <vector>

struct JournalEntry {
    QString folder, oldName, newName, oldArtist, oldTitle;
    qint64 size = -1;
    qint64 mtimeNs = -1;
    QString newFolder; // a move: where the file went (empty: it stayed in `folder`)
    QString kind;      // empty: rename or move; "copy", "trash" or "gone"
};

class RenameJournal {
public:
    // Starts a new journal at `path` (the old one goes). False when it cannot be written;
    // the batch runs all the same, without undo.
    bool Start(const QString& path);
    // Records one done rename; `finalPath` is the file's path now.
    void Add(const QString& folder, const QString& oldName, const QString& newName, const QString& oldArtist,
             const QString& oldTitle, const QString& finalPath);
    // Records one done move: the file left `folder` and is now `finalPath`.
    void AddMove(const QString& folder, const QString& oldName, const QString& finalPath);
    bool IsOpen() const { return m_open; }
    // Records a copy that was made: `copyPath` is the new file.
    void AddCopy(const QString& sourcePath, const QString& copyPath);
    // Records a delete: into the trash at `trashedPath`, or for good when that is empty.
    void AddDelete(const QString& path, const QString& trashedPath);
    // Closes the file; a journal without entries is removed.
    void Finish();

private:
    void Write(const JournalEntry& e);
    QFile m_file;
    int m_count = 0;
    bool m_open = false;
};

// Reads a journal; false when there is none or it is not one.
bool ReadJournal(const QString& path, std::vector<JournalEntry>& entries);
bool ReadJournalBytes(const QByteArray& bytes, std::vector<JournalEntry>& entries);
// Writes `entries` as a journal (used to keep what an undo could not put back).
bool WriteJournal(const QString& path, const std::vector<JournalEntry>& entries);
// Size and modification time of a file, false when it is not there.
bool FileStamp(const QString& path, qint64& size, qint64& mtimeNs);
