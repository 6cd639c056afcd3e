#include "file/modRenameJournal.h"

#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "file/ftcFileOps.h"
#include "file/modRename.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QByteArray kHeader = QByteArrayLiteral("quillotune-journal 2");
const QByteArray kHeaderV1 = QByteArrayLiteral("quillotune-journal 1");

void AppendEscaped(QByteArray& out, QStringView text) {
    const QByteArray utf8 = text.toUtf8();
    for (char c : utf8) {
        switch (c) {
        case '%':
            out += "%25";
            break;
        case '\t':
            out += "%09";
            break;
        case '\r':
            out += "%0D";
            break;
        case '\n':
            out += "%0A";
            break;
        default:
            out += c;
        }
    }
}

// A field of a line. A name that is no valid UTF-8 keeps its bytes: each byte held as an
// escape (PosixFile) is written as %XX, so the journal stays UTF-8 text and the reader
// gets the very bytes back.
QByteArray Escape(const QString& text) {
    QByteArray out;
    out.reserve(text.size());
    qsizetype from = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (c < 0xDC80 || c > 0xDCFF || (i > 0 && text.at(i - 1).isHighSurrogate()))
            continue;
        AppendEscaped(out, QStringView(text).mid(from, i - from));
        out += '%' + QByteArray::number(c - 0xDC00, 16).toUpper();
        from = i + 1;
    }
    AppendEscaped(out, QStringView(text).mid(from));
    return out;
}

QString Unescape(const QByteArray& field) {
    return PosixFile::FromNative(QByteArray::fromPercentEncoding(field));
}

QByteArray EntryLine(const JournalEntry& e) {
    QByteArray line = Escape(e.folder);
    for (const QString* s : {&e.oldName, &e.newName, &e.oldArtist, &e.oldTitle}) {
        line += '\t';
        line += Escape(*s);
    }
    line += '\t' + QByteArray::number(e.size) + '\t' + QByteArray::number(e.mtimeNs);
    if (!e.newFolder.isEmpty() || !e.kind.isEmpty())
        line += '\t' + Escape(e.newFolder);
    if (!e.kind.isEmpty())
        line += '\t' + Escape(e.kind);
    line += '\n';
    return line;
}

} // namespace

bool FileStamp(const QString& path, qint64& size, qint64& mtimeNs) {
    struct stat st {};
    if (PosixFile::LStat(path, st) != 0)
        return false;
    size = qint64(st.st_size);
    mtimeNs = qint64(st.st_mtim.tv_sec) * 1000000000LL + qint64(st.st_mtim.tv_nsec);
    return true;
}

bool RenameJournal::Start(const QString& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    m_file.setFileName(path);
    m_count = 0;
    m_open = m_file.open(QIODevice::WriteOnly | QIODevice::Truncate) && m_file.write(kHeader + '\n') > 0 &&
             m_file.flush();
    return m_open;
}

void RenameJournal::Add(const QString& folder, const QString& oldName, const QString& newName,
                        const QString& oldArtist, const QString& oldTitle, const QString& finalPath) {
    if (!m_open)
        return;
    JournalEntry e{folder, oldName, newName, oldArtist, oldTitle};
    FileStamp(finalPath, e.size, e.mtimeNs);
    // Flushed per entry: after a crash the journal still names every rename that was done.
    m_open = m_file.write(EntryLine(e)) > 0 && m_file.flush();
    ++m_count;
}

void RenameJournal::AddMove(const QString& folder, const QString& oldName, const QString& finalPath) {
    if (!m_open)
        return;
    const qsizetype slash = finalPath.lastIndexOf(u'/');
    JournalEntry e{folder, oldName, finalPath.mid(slash + 1), QString(), QString()};
    e.newFolder = finalPath.left(slash);
    FileStamp(finalPath, e.size, e.mtimeNs);
    m_open = m_file.write(EntryLine(e)) > 0 && m_file.flush();
    ++m_count;
}

void RenameJournal::Write(const JournalEntry& e) {
    if (!m_open)
        return;
    m_open = m_file.write(EntryLine(e)) > 0 && m_file.flush();
    ++m_count;
}

void RenameJournal::AddCopy(const QString& sourcePath, const QString& copyPath) {
    const qsizetype s = sourcePath.lastIndexOf(u'/');
    const qsizetype c = copyPath.lastIndexOf(u'/');
    JournalEntry e{sourcePath.left(s), sourcePath.mid(s + 1), copyPath.mid(c + 1), QString(), QString()};
    e.newFolder = copyPath.left(c);
    e.kind = QStringLiteral("copy");
    FileStamp(copyPath, e.size, e.mtimeNs);
    Write(e);
}

void RenameJournal::AddDelete(const QString& path, const QString& trashedPath) {
    const qsizetype s = path.lastIndexOf(u'/');
    JournalEntry e{path.left(s), path.mid(s + 1), path.mid(s + 1), QString(), QString()};
    if (trashedPath.isEmpty()) {
        e.kind = QStringLiteral("gone");
    } else {
        const qsizetype t = trashedPath.lastIndexOf(u'/');
        e.newFolder = trashedPath.left(t);
        e.newName = trashedPath.mid(t + 1);
        e.kind = QStringLiteral("trash");
        FileStamp(trashedPath, e.size, e.mtimeNs);
    }
    Write(e);
}

void RenameJournal::Finish() {
    if (!m_file.isOpen())
        return;
    m_file.close();
    if (m_count == 0)
        m_file.remove();
}

bool ReadJournalBytes(const QByteArray& bytes, std::vector<JournalEntry>& entries) {
    entries.clear();
    const QList<QByteArray> lines = bytes.split('\n');
    const QByteArray head = lines.isEmpty() ? QByteArray() : lines.front().trimmed();
    if (head != kHeader && head != kHeaderV1)
        return false;
    const qsizetype maxFields = head == kHeader ? 9 : 8;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines[i].endsWith('\r') ? lines[i].chopped(1) : lines[i];
        if (line.isEmpty())
            continue;
        const QList<QByteArray> f7 = line.split('\t');
        if (f7.size() < 7 || f7.size() > maxFields)
            continue; // not an entry: left alone
        JournalEntry e;
        e.folder = Unescape(f7[0]);
        e.oldName = Unescape(f7[1]);
        e.newName = Unescape(f7[2]);
        e.oldArtist = Unescape(f7[3]);
        e.oldTitle = Unescape(f7[4]);
        e.size = f7[5].toLongLong();
        e.mtimeNs = f7[6].toLongLong();
        if (f7.size() >= 8)
            e.newFolder = Unescape(f7[7]);
        if (f7.size() == 9)
            e.kind = Unescape(f7[8]);
        if (e.folder.isEmpty() || e.oldName.isEmpty() || e.newName.isEmpty())
            continue;
        if (!e.kind.isEmpty() && e.kind != u"copy" && e.kind != u"trash" && e.kind != u"gone")
            continue;
        if ((e.kind == u"copy" || e.kind == u"trash") && e.newFolder.isEmpty())
            continue;
        entries.push_back(std::move(e));
    }
    return true;
}

bool ReadJournal(const QString& path, std::vector<JournalEntry>& entries) {
    entries.clear();
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    return ReadJournalBytes(f.readAll(), entries);
}

bool WriteJournal(const QString& path, const std::vector<JournalEntry>& entries) {
    QByteArray all = kHeader + '\n';
    for (const JournalEntry& e : entries)
        all += EntryLine(e);
    return SafeFile::WriteWholeFile(path, all);
}

QString RenameJournalPath() {
    return AppFile(QStringLiteral("temp/rename.journal"));
}

QString CliJournalPath() {
    return AppFile(QStringLiteral("temp/cli-rename.journal"));
}

UndoOutcome UndoLastBatch(DataGrid* list, const QString& journalPath, const ListEnv* env) {
    UndoOutcome out;
    std::vector<JournalEntry> entries;
    if (!ReadJournal(journalPath, entries) || entries.empty())
        return out;
    out.hadJournal = true;
    // The rows by folder and name: the list may have been sorted since.
    QHash<QString, int> rows;
    if (list) {
        rows.reserve(list->Rows());
        for (int r = 1; r <= list->Rows(); ++r)
            rows.insert(InputRowPath(*list, r), r);
    }
    std::vector<JournalEntry> left;
    State().AbortRequested = false;
    int n = 0;
    for (auto it = entries.rbegin(); it != entries.rend(); ++it) {
        const JournalEntry& e = *it;
        if (State().AbortRequested) {
            left.insert(left.begin(), e);
            continue;
        }
        if (env)
            env->SetProgress(++n);
        const QString now = (e.newFolder.isEmpty() ? e.folder : e.newFolder) + u'/' + e.newName;
        const QString back = e.folder + u'/' + e.oldName;
        const int row = rows.value(now, 0);
        QString reason;
        qint64 size = 0, mtime = 0;
        struct stat a {
        }, b{};
        if (e.kind == u"gone") {
            // Nothing can bring it back; said in the report and not kept for a next try.
            ++out.failed;
            out.failures.push_back(e.oldName + QStringLiteral(": ") + Caption(CapUndoDeletedForGood));
            continue;
        }
        if (e.kind == u"copy") {
            if (!FileStamp(now, size, mtime)) {
                reason = Caption(CapReasonGone);
            } else if (size != e.size || mtime != e.mtimeNs) {
                ++out.changedSince;
                reason = Caption(CapUndoChangedLeft);
            } else if (::unlink(PosixFile::Native(now).constData()) != 0) {
                reason = FileOpErrorText(errno);
            }
            if (!reason.isEmpty()) {
                ++out.failed;
                out.failures.push_back(now + QStringLiteral(": ") + reason);
                left.insert(left.begin(), e);
            } else {
                ++out.done;
            }
            continue;
        }
        if (!FileStamp(now, size, mtime)) {
            reason = Caption(CapReasonGone);
        } else if (PosixFile::LStat(back, b) == 0 &&
                   (PosixFile::LStat(now, a) != 0 || a.st_ino != b.st_ino || a.st_dev != b.st_dev)) {
            reason = Caption(CapReasonNameTaken);
        } else {
            if (size != e.size || mtime != e.mtimeNs)
                ++out.changedSince;
            QString finalPath;
            const int err =
                e.kind == u"trash" ? MoveFile(now, back, &finalPath) : RenameFile(now, back, &finalPath);
            if (err)
                reason = Caption(CapReasonMoveFailed) + FileOpErrorText(err);
            else if (e.kind == u"trash")
                // files/<name> -> info/<name>.trashinfo of the same trash folder
                ::unlink(PosixFile::Native(e.newFolder.left(e.newFolder.lastIndexOf(u'/')) +
                                           QStringLiteral("/info/") + e.newName +
                                           QStringLiteral(".trashinfo"))
                             .constData());
        }
        if (!reason.isEmpty()) {
            ++out.failed;
            out.failures.push_back(e.newName + QStringLiteral(": ") + reason);
            left.insert(left.begin(), e);
            if (list && row)
                list->SetCellText(row, InCol::FTag, Mark::Failed);
            continue;
        }
        ++out.done;
        if (list && row && e.newFolder.isEmpty()) {
            list->SetCellText(row, InCol::FileName, e.oldName);
            list->SetCellText(row, InCol::Artist, e.oldArtist);
            list->SetCellText(row, InCol::Title, e.oldTitle);
        }
    }
    if (left.empty())
        QFile::remove(journalPath);
    else
        WriteJournal(journalPath, left);
    return out;
}
