#include "tag/modTagJournal.h"

#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "file/modRenameJournal.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "platform/SafeFile.h"
#include "tag/TagEngine.h"
#include "tag/TagFields.h"
#include "tag/modTagList.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace {

const QByteArray kHeader = QByteArrayLiteral("quillotune-tagjournal 1");
constexpr char kPartSep = '\x1f';
constexpr int kAllSets[] = {1, 2, 4, 8, 16, 32, 64};

QByteArray Escape(const QString& text) {
    QByteArray out;
    const QByteArray utf8 = text.toUtf8();
    out.reserve(utf8.size());
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
        case kPartSep:
            out += "%1F";
            break;
        default:
            out += c;
        }
    }
    return out;
}

QString Unescape(const QByteArray& field) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(field));
}

QByteArray Parts(const QStringList& parts) {
    QByteArray out;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (i)
            out += kPartSep;
        out += Escape(parts[i]);
    }
    return out;
}

QByteArray EntryLine(const TagSnapshot& s) {
    QByteArray line = Escape(s.path) + '\t' + QByteArray::number(s.size) + '\t' +
                      QByteArray::number(s.mtimeNs) + '\t' + QByteArray::number(s.sets);
    for (const auto& [field, value] : s.fields)
        line += '\t' + TagFieldName(static_cast<TagField>(field)).toUtf8() + '=' + Escape(value);
    for (const QStringList& c : s.comments)
        line += "\tCOMM=" + Parts(c);
    for (const QStringList& c : s.lyrics)
        line += "\tUSLT=" + Parts(c);
    for (const QStringList& c : s.userFrames)
        line += "\tTXXX=" + Parts(c);
    return line + '\n';
}

// One entry line; false when the line is not one.
bool ParseLine(const QByteArray& line, TagSnapshot& s) {
    const QList<QByteArray> f = line.split('\t');
    if (f.size() < 4)
        return false;
    bool ok1 = false, ok2 = false, ok3 = false;
    s.path = Unescape(f[0]);
    s.size = f[1].toLongLong(&ok1);
    s.mtimeNs = f[2].toLongLong(&ok2);
    s.sets = f[3].toInt(&ok3);
    if (!ok1 || !ok2 || !ok3 || s.path.isEmpty() || s.sets < 0 || s.sets > 127)
        return false;
    for (qsizetype i = 4; i < f.size(); ++i) {
        const qsizetype eq = f[i].indexOf('=');
        if (eq <= 0)
            return false;
        const QByteArray key = f[i].left(eq);
        const QByteArray value = f[i].mid(eq + 1);
        auto split = [&](qsizetype want) {
            QStringList parts;
            for (const QByteArray& p : value.split(kPartSep))
                parts << Unescape(p);
            return parts.size() == want ? parts : QStringList();
        };
        if (key == "COMM" || key == "USLT") {
            const QStringList p = split(3);
            if (p.isEmpty())
                return false;
            (key == "COMM" ? s.comments : s.lyrics).push_back(p);
        } else if (key == "TXXX") {
            const QStringList p = split(2);
            if (p.isEmpty())
                return false;
            s.userFrames.push_back(p);
        } else {
            bool ok = false;
            const TagField field = TagFieldFromName(QString::fromUtf8(key), &ok);
            if (!ok || field == TagField::Count)
                return false;
            s.fields.emplace_back(static_cast<int>(field), Unescape(value));
        }
    }
    return true;
}

// Which sets the file type carries without a presence flag of their own.
int TypeSets(int type) {
    return int(TypicalSetOfType(type));
}

QString FieldOf(const TagSnapshot& s, int field) {
    for (const auto& [f, v] : s.fields)
        if (f == field)
            return v;
    return QString();
}

bool SameSet(const TagSnapshot& a, const TagSnapshot& b, int set) {
    if ((a.sets & set) != (b.sets & set))
        return false;
    for (int f = 0; f < kTagFieldCount; ++f)
        if (int(TagFieldSet(static_cast<TagField>(f))) == set && FieldOf(a, f) != FieldOf(b, f))
            return false;
    if (set == int(TagSet::V2))
        return a.comments == b.comments && a.lyrics == b.lyrics && a.userFrames == b.userFrames;
    return true;
}

} // namespace

TagSnapshot TakeTagSnapshot(const TagEngine& e, const QString& path) {
    TagSnapshot s;
    s.path = path;
    s.sets = (e.HasV1() ? int(TagSet::V1) : 0) | (e.HasV2() ? int(TagSet::V2) : 0) |
             (e.HasApe() ? int(TagSet::Ape) : 0) | (e.HasLyrics() ? int(TagSet::Lyrics) : 0) |
             TypeSets(e.FileType());
    for (int f = 0; f < kTagFieldCount; ++f) {
        const int set = int(TagFieldSet(static_cast<TagField>(f)));
        if (!(s.sets & set))
            continue;
        const QString v = e.Field(static_cast<TagField>(f));
        if (!v.isEmpty())
            s.fields.emplace_back(f, v);
    }
    if (s.sets & int(TagSet::V2)) {
        for (int i = 1; i <= e.CommentCount(); ++i)
            s.comments.push_back({e.CommentLanguage(i), e.CommentDescription(i), e.CommentText(i)});
        for (int i = 1; i <= e.LyricCount(); ++i)
            s.lyrics.push_back({e.LyricLanguage(i), e.LyricDescription(i), e.LyricText(i)});
        for (int i = 1; i <= e.UserFrameCount(); ++i)
            s.userFrames.push_back({e.UserFrameName(i), e.UserFrameText(i)});
    }
    return s;
}

bool TagJournal::Start(const QString& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    m_file.setFileName(path);
    m_count = 0;
    m_open = m_file.open(QIODevice::WriteOnly | QIODevice::Truncate) && m_file.write(kHeader + '\n') > 0 &&
             m_file.flush();
    return m_open;
}

void TagJournal::Add(TagSnapshot before) {
    if (!m_open)
        return;
    FileStamp(before.path, before.size, before.mtimeNs);
    // Flushed per entry: after a crash the journal still names every file that was written.
    m_open = m_file.write(EntryLine(before)) > 0 && m_file.flush();
    ++m_count;
}

void TagJournal::Finish() {
    if (!m_file.isOpen())
        return;
    m_file.close();
    m_open = false;
    if (m_count == 0)
        m_file.remove();
}

TagJournalRecorder::TagJournalRecorder(const QString& journalPath) : m_path(journalPath) {}

TagJournalRecorder::~TagJournalRecorder() {
    m_journal.Finish();
}

void TagJournalRecorder::Before(const TagEngine& engine, const QString& path) {
    m_have = !m_path.isEmpty() && engine.FileType() != 0 && FileStamp(path, m_before.size, m_before.mtimeNs);
    if (!m_have)
        return;
    const qint64 size = m_before.size, mtime = m_before.mtimeNs;
    m_before = TakeTagSnapshot(engine, path);
    m_before.size = size;
    m_before.mtimeNs = mtime;
}

void TagJournalRecorder::After(const QString& path) {
    if (!m_have || path != m_before.path)
        return;
    m_have = false;
    qint64 size = -1, mtime = -1;
    if (!FileStamp(path, size, mtime) || (size == m_before.size && mtime == m_before.mtimeNs))
        return;
    if (!m_started) {
        m_started = true;
        m_journal.Start(m_path);
    }
    m_journal.Add(std::move(m_before));
}

bool ReadTagJournalBytes(const QByteArray& bytes, std::vector<TagSnapshot>& entries) {
    entries.clear();
    const QList<QByteArray> lines = bytes.split('\n');
    if (lines.isEmpty() || lines.front().trimmed() != kHeader)
        return false;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines[i].endsWith('\r') ? lines[i].chopped(1) : lines[i];
        if (line.isEmpty())
            continue;
        TagSnapshot s;
        if (ParseLine(line, s))
            entries.push_back(std::move(s));
    }
    return true;
}

bool ReadTagJournal(const QString& path, std::vector<TagSnapshot>& entries) {
    entries.clear();
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    return ReadTagJournalBytes(f.readAll(), entries);
}

bool WriteTagJournal(const QString& path, const std::vector<TagSnapshot>& entries) {
    QByteArray all = kHeader + '\n';
    for (const TagSnapshot& e : entries)
        all += EntryLine(e);
    return SafeFile::WriteWholeFile(path, all);
}

bool RestoreTagSnapshot(TagEngine& e, const TagSnapshot& old, QString* error) {
    for (int set : kAllSets) {
        if (e.OpenFile(old.path) == 0) {
            if (error)
                *error = e.LastError();
            return false;
        }
        const TagSnapshot now = TakeTagSnapshot(e, old.path);
        if (SameSet(now, old, set))
            continue;
        const TagSet ts = static_cast<TagSet>(set);
        int ok = 0;
        const bool strippable =
            ts != TagSet::Wma && ts != TagSet::Flac && ts != TagSet::Mp4 && ts != TagSet::Wav;
        if (!(old.sets & set) && strippable) {
            ok = e.Remove(ts, old.path);
        } else {
            for (int f = 0; f < kTagFieldCount; ++f)
                if (int(TagFieldSet(static_cast<TagField>(f))) == set)
                    e.SetField(static_cast<TagField>(f), FieldOf(old, f));
            if (ts == TagSet::V2) {
                e.ClearComments();
                for (size_t i = 0; i < old.comments.size(); ++i)
                    e.SetComment(int(i) + 1, old.comments[i][0], old.comments[i][1], old.comments[i][2]);
                e.ClearLyrics();
                for (size_t i = 0; i < old.lyrics.size(); ++i)
                    e.SetLyric(int(i) + 1, old.lyrics[i][0], old.lyrics[i][1], old.lyrics[i][2]);
                for (int i = e.UserFrameCount(); i >= 1; --i)
                    e.SetUserFrame(i, QString(), QString());
                for (const QStringList& u : old.userFrames)
                    e.SetUserFrame(0, u[0], u[1]);
            }
            ok = e.Save(ts, old.path);
        }
        if (ok == 0) {
            if (error)
                *error = e.LastError();
            return false;
        }
    }
    return true;
}

UndoOutcome UndoTagBatch(DataGrid* list, DataGrid* tagList, const QString& journalPath, TagEngine& engine,
                         const std::function<bool(const QString&)>& askChanged, const ListEnv* env) {
    UndoOutcome out;
    std::vector<TagSnapshot> entries;
    if (!ReadTagJournal(journalPath, entries) || entries.empty())
        return out;
    out.hadJournal = true;
    QHash<QString, int> rows, tagRows;
    if (list)
        for (int r = 1; r <= list->Rows(); ++r)
            rows.insert(InputRowPath(*list, r), r);
    if (tagList)
        for (int r = 1; r <= tagList->Rows(); ++r)
            tagRows.insert(TagRowPath(*tagList, r), r);
    std::vector<TagSnapshot> left;
    State().AbortRequested = false;
    int n = 0;
    for (auto it = entries.rbegin(); it != entries.rend(); ++it) {
        const TagSnapshot& s = *it;
        if (State().AbortRequested) {
            left.insert(left.begin(), s);
            continue;
        }
        if (env)
            env->SetProgress(++n);
        const int row = rows.value(s.path, 0);
        const int tagRow = tagRows.value(s.path, 0);
        QString reason;
        qint64 size = 0, mtime = 0;
        if (!FileStamp(s.path, size, mtime)) {
            reason = Caption(CapReasonGone);
        } else if (size != s.size || mtime != s.mtimeNs) {
            ++out.changedSince;
            if (!askChanged || !askChanged(s.path))
                reason = Caption(CapUndoChangedLeft);
        }
        QString error;
        if (reason.isEmpty() && !RestoreTagSnapshot(engine, s, &error))
            reason = Caption(CapTagUndoWriteFailed) + error;
        if (!reason.isEmpty()) {
            ++out.failed;
            out.failures.push_back(s.path + QStringLiteral(": ") + reason);
            left.insert(left.begin(), s);
            if (list && row)
                list->SetCellText(row, InCol::FTag, Mark::Failed);
            if (tagList && tagRow)
                tagList->SetCellText(tagRow, TagCol::FTag, Mark::Failed);
            continue;
        }
        ++out.done;
        if (list && row && engine.OpenFile(s.path) != 0)
            RefreshInputTagCells(*list, row, engine);
    }
    if (left.empty())
        QFile::remove(journalPath);
    else
        WriteTagJournal(journalPath, left);
    return out;
}

QString TagJournalPath() {
    return AppFile(QStringLiteral("temp/tag.journal"));
}
