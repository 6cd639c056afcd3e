#include "ref/modRefReplace.h"

#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/ftcFileOps.h"
#include "list/InputColumns.h"
#include "platform/PosixFile.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <array>
#include <memory>
#include <sys/stat.h>

namespace {

// One list's row and where its columns are.
struct Side {
    DataGrid& grid;
    int row;
    int nameCol, pathCol;
    std::array<int, 7> techCols; // Type, DurationS, DurationMS, SizeByte, SizeMByte, Bitrate, Frequency
    int foundCol;                // 0 when the list has no found column

    QString Folder() const { return grid.CellText(row, pathCol); }
    QString Name() const { return grid.CellText(row, nameCol); }
    QString FullName() const { return Folder() + u'/' + Name(); }
};

Side DataSide(DataGrid& input, int row) {
    return Side{input,
                row,
                InCol::FileName,
                InCol::Path,
                {InCol::Type, InCol::DurationS, InCol::DurationMS, InCol::SizeByte, InCol::SizeMByte,
                 InCol::Bitrate, InCol::Frequency},
                0};
}

Side RefSide(DataGrid& ref, int row) {
    return Side{ref,
                row,
                RefCol::FileName,
                RefCol::Path,
                {RefCol::Type, RefCol::DurationS, RefCol::DurationMS, RefCol::SizeByte, RefCol::SizeMByte,
                 RefCol::Bitrate, RefCol::Frequency},
                RefCol::TF};
}

// The same file: the same path, or one file under two names (a link, a folder alias).
bool SameFile(const QString& a, const QString& b) {
    if (QDir::cleanPath(a) == QDir::cleanPath(b))
        return true;
    struct stat sa {
    }, sb{};
    return PosixFile::Stat(a, sa) == 0 && PosixFile::Stat(b, sb) == 0 && sa.st_dev == sb.st_dev &&
           sa.st_ino == sb.st_ino;
}

bool CarriesV2(int type) {
    return type == 1 || type == 3 || type == 4 || type == 5 || type == 6 || type == 7 || type == 8;
}

// The tags of the file that is replaced, held in memory until the copy is in place: the
// whole ID3v2 tag, and the typical set of WMA, FLAC, Ogg, MP4 and WAV files.
class KeptTags {
public:
    void Read(const QString& path) {
        m_type = m_engine.OpenFile(path);
        m_hadV2 = m_type != 0 && m_engine.HasV2();
    }
    // Writes them into the new file; false (with the reason told) on a failure.
    bool Write(const QString& path, Prompt& prompt) {
        if (m_type == 0)
            return true; // nothing was readable: nothing to keep
        TagEngine probe;
        const int newType = probe.OpenFile(path);
        if (m_hadV2 && CarriesV2(newType)) {
            // The copy's own tag goes first, so that the kept one stands alone.
            if (probe.RemoveV2(path) == 0 || m_engine.SaveV2(path) == 0)
                return Fail(probe.LastError().isEmpty() ? m_engine.LastError() : probe.LastError(), prompt);
        }
        if (newType == m_type) {
            const TagSet typical = TypicalSetOfType(m_type);
            const int ok = typical == TagSet::None ? 1 : m_engine.Save(typical, path);
            if (ok == 0)
                return Fail(m_engine.LastError(), prompt);
        }
        return true;
    }

private:
    static bool Fail(const QString& why, Prompt& prompt) {
        prompt.Tell(why, Prompt::Icon::Critical);
        return false;
    }
    TagEngine m_engine;
    int m_type = 0;
    bool m_hadV2 = false;
};

// The common road of both directions: `from`'s file goes into `to`'s place.
ReplaceResult Replace(const Side& from, Side& to, const ReplaceOptions& o, Prompt& prompt) {
    ReplaceResult r;
    const QString source = from.FullName();
    const QString replaced = to.FullName();
    if (!PosixFile::ExistsFollowed(source)) {
        prompt.Tell(source + QStringLiteral("\n\n") + Caption(CapFileNotFound) + u'\n' +
                        Caption(CapCheckPath),
                    Prompt::Icon::Critical);
        r.failed = true;
        return r;
    }
    const QString target = to.Folder() + u'/' + (o.keepFilename ? to.Name() : from.Name());
    if (SameFile(source, target) || SameFile(source, replaced)) {
        prompt.Tell(Caption(CapSameSourceTarget), Prompt::Icon::Critical);
        r.failed = true;
        return r;
    }

    KeptTags kept;
    const bool replacedExists = PosixFile::ExistsFollowed(replaced);
    if (o.keepTags && replacedExists)
        kept.Read(replaced);
    // The replaced file goes to the trash. A reference row whose file is gone already has
    // nothing to remove: the copy simply puts the file back.
    if (replacedExists && !KillFile(replaced, 1, true, o.paperbin, &prompt)) {
        r.failed = true;
        return r;
    }
    QString finalPath;
    const int rc = CopyFile(source, target, true, &prompt, &finalPath);
    if (rc != FileOp::Ok) {
        if (rc != FileOp::Cancelled)
            prompt.Tell(source + QStringLiteral("\n") + FileOpErrorText(rc), Prompt::Icon::Critical);
        r.failed = true;
        return r;
    }
    r.newPath = finalPath.isEmpty() ? target : finalPath;
    if (o.keepTags && replacedExists && !kept.Write(r.newPath, prompt))
        r.failed = true; // the file is in place; its row still takes the new values

    const bool wasLocked = to.grid.IsLocked();
    to.grid.LockUpdate(true);
    if (to.foundCol > 0)
        to.grid.SetCellText(to.row, to.foundCol, RefFoundWord());
    if (!o.keepFilename)
        to.grid.SetCellText(to.row, to.nameCol, r.newPath.mid(r.newPath.lastIndexOf(u'/') + 1));
    for (size_t i = 0; i < from.techCols.size(); ++i)
        to.grid.SetCellText(to.row, to.techCols[i], from.grid.CellText(from.row, from.techCols[i]));
    to.grid.LockUpdate(wasLocked);
    if (!wasLocked)
        to.grid.Refresh();
    r.done = true;
    return r;
}

bool RowsUsable(const DataGrid& grid, int row) {
    return grid.Rows() > 0 && row >= 1 && row <= grid.Rows();
}

} // namespace

ReplaceResult ReplaceFromData(DataGrid& input, int inputRow, DataGrid& ref, int refRow,
                              const ReplaceOptions& options, Prompt& prompt) {
    if (!RowsUsable(input, inputRow) || !RowsUsable(ref, refRow))
        return ReplaceResult{false, true, {}};
    const Side from = DataSide(input, inputRow);
    Side to = RefSide(ref, refRow);
    return Replace(from, to, options, prompt);
}

ReplaceResult ReplaceFromReference(DataGrid& input, int inputRow, DataGrid& ref, int refRow,
                                   const ReplaceOptions& options, Prompt& prompt) {
    if (!RowsUsable(input, inputRow) || !RowsUsable(ref, refRow))
        return ReplaceResult{false, true, {}};
    const Side from = RefSide(ref, refRow);
    Side to = DataSide(input, inputRow);
    return Replace(from, to, options, prompt);
}

ReplaceResult RefReplace(DataGrid& input, DataGrid& ref, const ReplaceOptions& options, Prompt& prompt) {
    if (ref.Cols() < RefCol::Count)
        DefineRefColumns(ref);
    const int inputRow = input.CurRow(), refRow = ref.CurRow();
    if (!RowsUsable(input, inputRow) || !RowsUsable(ref, refRow)) {
        prompt.Tell(Caption(CapRefNeedsBothRows), Prompt::Icon::Information);
        return {};
    }
    if (input.SelCount() > 1 || ref.SelCount() > 1) {
        prompt.Tell(Caption(CapRefOneRowOnly) + QStringLiteral("\n\n") + Caption(CapRefWorksOnCurrentRows),
                    Prompt::Icon::Information);
        return {};
    }
    const ReplaceResult r = options.direction == ReplaceDirection::FromReference
                                ? ReplaceFromReference(input, inputRow, ref, refRow, options, prompt)
                                : ReplaceFromData(input, inputRow, ref, refRow, options, prompt);
    if (r.done)
        ShowRefTotals(ref);
    if (r.done && !r.failed && !options.noMsg)
        prompt.Tell(Caption(CapOneFileCopied), Prompt::Icon::Information);
    return r;
}
