#pragma once
// The journal of the last tag batch: before a batch of the tag window or of the data list
// writes a file, the file's tag sets are read and kept (every text field, and of ID3v2
// the comments, lyric texts and user text frames), together with the file's size and
// time right after the write. An undo writes the old sets back through the TagEngine,
// the last file first; a file that changed after the batch is left alone unless the user
// says otherwise. Like the rename journal it lives in `temp` and is replaced by the next
// batch, so an undo works whatever the order of the lists is by then.
//
// Format (UTF-8, LF): the first line "quillotune-tagjournal 1"; then one line per file
// with tab-separated fields: path, size, modification time in nanoseconds, the tag sets
// the file held (bits of TagSet), then one item per kept value, "Name=value" with the
// field's TagFieldName, or "COMM=", "USLT=" (language, description, text) and "TXXX="
// (name, text) with the parts separated by the byte 0x1F. "%", tab, CR, LF and 0x1F in a
// text are written as %25, %09, %0D, %0A and %1F.

#include "file/modRename.h"

#include <QFile>
#include <QString>
#include <QStringList>
#include <functional>
#include <utility>
#include <vector>

class TagEngine;
class DataGrid;
struct ListEnv;

struct TagSnapshot {
    QString path;
    int sets = 0;                                // TagSet bits of the sets the file held
    std::vector<std::pair<int, QString>> fields; // TagField index, value (only non-empty ones)
    std::vector<QStringList> comments;           // language, description, text
    std::vector<QStringList> lyrics;             // language, description, text
    std::vector<QStringList> userFrames;         // name, text
    qint64 size = -1;
    qint64 mtimeNs = -1;
};

// The tag sets of the file open in `engine` (opened from `path`).
TagSnapshot TakeTagSnapshot(const TagEngine& engine, const QString& path);

class TagJournal {
public:
    // Starts a new journal at `path` (the old one goes). False when it cannot be written;
    // the batch runs all the same, without undo.
    bool Start(const QString& path);
    bool IsOpen() const { return m_open; }
    // Records the old tags of one written file; size and time are taken from the file now.
    void Add(TagSnapshot before);
    // Closes the file; a journal without entries is removed.
    void Finish();

private:
    QFile m_file;
    int m_count = 0;
    bool m_open = false;
};

// The recording of one batch: Before() with the file open in the engine, After() once
// the batch is done with the file; only a file that changed in between is recorded. The
// journal is started with the first such file: a batch that writes nothing leaves the
// undo of the one before in place.
class TagJournalRecorder {
public:
    explicit TagJournalRecorder(const QString& journalPath);
    ~TagJournalRecorder();
    TagJournalRecorder(const TagJournalRecorder&) = delete;
    TagJournalRecorder& operator=(const TagJournalRecorder&) = delete;
    void Before(const TagEngine& engine, const QString& path);
    void After(const QString& path);

private:
    QString m_path;
    TagJournal m_journal;
    TagSnapshot m_before;
    bool m_have = false;
    bool m_started = false;
};

// Reads a tag journal; false when there is none or it is not one. Lines that are not
// entries are skipped.
bool ReadTagJournal(const QString& path, std::vector<TagSnapshot>& entries);
bool ReadTagJournalBytes(const QByteArray& bytes, std::vector<TagSnapshot>& entries);
// Writes `entries` as a tag journal (used to keep what an undo could not put back).
bool WriteTagJournal(const QString& path, const std::vector<TagSnapshot>& entries);

// Writes the sets of `old` back into its file: sets whose contents differ are written
// again, sets the file did not hold are stripped. False, with the engine's reason in
// `error`, when a write failed.
bool RestoreTagSnapshot(TagEngine& engine, const TagSnapshot& old, QString* error);

// Puts the old tags of the journal back, the last file first. `askChanged(path)` is asked
// for a file whose size or time changed after the batch (true: put back all the same; no
// function: left alone). Rows of `list` (the data list, found by folder and name) get the
// failure mark or the tag cells read again; `tagList`, if given, is read again in the same
// way (found by its path columns). The journal goes when everything was put back.
UndoOutcome UndoTagBatch(DataGrid* list, DataGrid* tagList, const QString& journalPath, TagEngine& engine,
                         const std::function<bool(const QString& path)>& askChanged,
                         const ListEnv* env = nullptr);

// The journal of the tag batches, in `temp`.
QString TagJournalPath();
