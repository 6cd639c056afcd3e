#include "file/modFileCommands.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "file/modRenameJournal.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "picture/modEmbeddedPictures.h"
#include "platform/PosixFile.h"
#include "platform/Trash.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr TagField kLinkFields[] = {TagField::V2Composer,     TagField::V2Conductor, TagField::V2Orchestra,
                                    TagField::V2OrigArtist,   TagField::V2Copyright, TagField::V2EncodedBy,
                                    TagField::V2PublisherUrl, TagField::V2AudFileUrl};

QString RowPath(const DataGrid& list, int row, const FileCommandOptions& o) {
    return list.CellText(row, o.pathCol) + u'/' + list.CellText(row, o.nameCol);
}

bool Passes(const DataGrid& list, int row, const QString& filter) {
    return filter.isEmpty() || list.CellView(row, InCol::FTag) == filter;
}

// A link cell that names a file: an absolute path.
bool IsFileLink(const QString& value) {
    return value.startsWith(u'/');
}

// Asks for the target folder, starting from the one used last, and keeps the answer.
QString TargetFolder(const FileCommandOptions& options, int titleRow) {
    if (!options.chooseFolder)
        return QString();
    const QString folder = options.chooseFolder(titleRow, Setting(Ini::PathCopyTarget, Ini::Col2));
    if (!folder.isEmpty())
        SetSetting(Ini::PathCopyTarget, Ini::Col2, folder);
    return folder;
}

void Report(const ListEnv& env, bool noMsg, int done, int oneRow, int manyRow, int failed, int failRow) {
    if (!noMsg) {
        const QString text = done == 1 ? Caption(oneRow) : CountText(manyRow, done);
        env.prompt.Tell(text, Prompt::Icon::Information);
    }
    if (failed > 0)
        env.prompt.Tell(CountText(failRow, failed), Prompt::Icon::Critical);
}

// Keeps the rows with `mark`, removes them, and selects `keep` afterwards (failed rows).
void RemoveMarkedRows(DataGrid& list, const QString& mark) {
    list.ClearSelection();
    for (int r = 1; r <= list.Rows(); ++r)
        if (list.CellView(r, InCol::FTag) == mark)
            list.SetSelected(r, true);
    list.DeleteSelected();
}

// Path helpers that keep the bytes of a name that is no valid UTF-8 (QFileInfo would not).
QString NameOf(const QString& path) {
    return path.mid(path.lastIndexOf(u'/') + 1);
}

bool IsFile(const QString& path) {
    struct stat st;
    return PosixFile::Stat(path, st) == 0 && S_ISREG(st.st_mode);
}

} // namespace

bool SweepSkips(const QString& path) {
    return path.contains(QLatin1String("system"), Qt::CaseInsensitive) ||
           path.contains(QLatin1String("recycler"), Qt::CaseInsensitive);
}

bool CopyLinkedFiles(TagEngine& engine, const QString& source, const QString& targetFolder,
                     const QString& tempFolder) {
    if (engine.OpenFile(source) == 0)
        return false;
    if (engine.HasV2()) {
        for (TagField f : kLinkFields) {
            const QString value = engine.Field(f);
            if (IsFileLink(value) && IsFile(value))
                CopyFile(value, targetFolder + u'/', true);
        }
    }
    QStringList temps;
    QString base = NameOf(source);
    if (const qsizetype dot = base.lastIndexOf(u'.'); dot > 0)
        base.truncate(dot);
    for (int i = 1; i <= engine.PictureCount(); ++i) {
        const QString mime = engine.PictureMime(i);
        if (mime.startsWith(QLatin1String("-->"))) {
            const QString linked = mime.mid(3);
            if (IsFile(linked))
                CopyFile(linked, targetFolder + u'/', true);
            continue;
        }
        const QString temp =
            tempFolder + u'/' + EmbeddedPictureFileName(base, i, engine.PictureDescription(i), mime);
        QDir().mkpath(tempFolder);
        if (engine.ExportPicture(i, temp) > 0) {
            temps << temp;
            CopyFile(temp, targetFolder + u'/', true);
        }
    }
    for (const QString& t : temps)
        ::unlink(PosixFile::Native(t).constData());
    return true;
}

bool EraseLinkTags(TagEngine& engine, const QString& path) {
    if (engine.OpenFile(path) == 0)
        return false;
    if (!engine.HasV2())
        return true;
    for (TagField f : kLinkFields)
        engine.SetField(f, QString());
    return engine.SaveV2(path) > 0;
}

FileCommandResult CopyRows(DataGrid& list, const FileCommandOptions& options, const ListEnv& env,
                           TagEngine* engine) {
    FileCommandResult res;
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return res;
    const bool extended = options.copyLinkedFiles || options.eraseTagsByCopy;
    const QString target = TargetFolder(options, CapCopyTargetTitle);
    if (target.isEmpty())
        return res;
    res.ran = true;
    const std::vector<int> rows = list.SelectedRows();
    RenameJournal journal;
    if (!options.journalPath.isEmpty())
        journal.Start(options.journalPath);
    State().AbortRequested = false;
    list.LockUpdate(true);
    env.ShowProgress(int(rows.size()), 0);
    int n = 0;
    for (int row : rows) {
        if (State().AbortRequested)
            break;
        env.SetProgress(++n);
        if (!Passes(list, row, options.markFilter))
            continue;
        const QString source = RowPath(list, row, options);
        int e = 0;
        QString copy;
        if (extended) {
            list.SetFooterText(options.nameCol,
                               QString::number(n) + QStringLiteral(" / ") + QString::number(rows.size()));
            e = CopyFile(source, target + u'/' + NameOf(source), true, nullptr, &copy);
            if (!e && engine && options.copyLinkedFiles)
                CopyLinkedFiles(*engine, source, target, options.tempFolder);
            if (!e && engine && options.eraseTagsByCopy && !EraseLinkTags(*engine, copy))
                e = -1;
        } else {
            // A copy that replaced a file of the target is not undone: the old file is gone.
            const bool replaces = PosixFile::Exists(target + u'/' + NameOf(source));
            e = CopyFile(source, target + u'/', false, &env.prompt, &copy);
            if (e == FileOp::Cancelled)
                continue; // the user kept the file in the target
            if (replaces)
                copy.clear();
        }
        if (e) {
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            ++res.failed;
        } else {
            ++res.done;
            if (!copy.isEmpty())
                journal.AddCopy(source, copy);
        }
    }
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    env.ShowTotals();
    journal.Finish();
    Report(env, options.noMsg, res.done, CapOneFileCopied, CapFilesCopied, res.failed, CapFailedFiles);
    return res;
}

FileCommandResult MoveRows(DataGrid& list, const FileCommandOptions& options, const ListEnv& env) {
    FileCommandResult res;
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return res;
    const QString target = TargetFolder(options, CapMoveTargetTitle);
    if (target.isEmpty())
        return res;
    res.ran = true;
    const std::vector<int> rows = list.SelectedRows();
    State().AbortRequested = false;
    list.LockUpdate(true);
    env.ShowProgress(int(rows.size()), 0);
    RenameJournal journal;
    if (!options.journalPath.isEmpty())
        journal.Start(options.journalPath);
    int n = 0;
    for (int row : rows) {
        if (State().AbortRequested)
            break;
        env.SetProgress(++n);
        if (!Passes(list, row, options.markFilter))
            continue;
        QString finalPath;
        if (MoveFile(RowPath(list, row, options), target + u'/', &finalPath) == 0) {
            journal.AddMove(list.CellText(row, options.pathCol), list.CellText(row, options.nameCol),
                            finalPath);
            list.SetCellText(row, InCol::FTag, Mark::Moved);
            ++res.done;
        } else {
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            ++res.failed;
        }
    }
    journal.Finish();
    RemoveMarkedRows(list, Mark::Moved);
    // A failed move leaves its row selected.
    for (int r = 1; r <= list.Rows(); ++r)
        if (list.CellView(r, InCol::FTag) == Mark::Failed && res.failed > 0)
            list.SetSelected(r, true);
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    env.ShowTotals();
    Report(env, options.noMsg, res.done, CapOneFileMoved, CapFilesMoved, res.failed, CapFailedFiles);
    return res;
}

namespace {

// KillFile's mode 1 with a record for the undo: where in the trash the file went, or that
// it went for good.
bool DeleteRecorded(const QString& path, const FileCommandOptions& options, const ListEnv& env,
                    RenameJournal& journal) {
    if (options.paperbin || !journal.IsOpen()) {
        if (!KillFile(path, 1, true, options.paperbin, &env.prompt))
            return false;
        journal.AddDelete(path, QString());
        return true;
    }
    const TrashResult t = MoveToTrash(path);
    if (t.error) {
        env.prompt.Tell(path + QLatin1String("\n") + FileOpErrorText(t.error), Prompt::Icon::Critical);
        return false;
    }
    journal.AddDelete(path, t.trashedPath);
    return true;
}

} // namespace

FileCommandResult DeleteRows(DataGrid& list, const FileCommandOptions& options, const ListEnv& env,
                             bool confirmed) {
    FileCommandResult res;
    if (!env.ListNotEmpty(list))
        return res;
    if (list.SelCount() == 0 && options.markFilter.isEmpty()) {
        // The current row alone.
        const int row = list.CurRow();
        if (row < 1 || row > list.Rows())
            return env.AtLeastRowsSelected(list, 1), res;
        if (!confirmed &&
            !env.prompt.AskYesNo(Caption(CapDeleteFilesQuestion), false, Prompt::Icon::Question))
            return res;
        res.ran = true;
        RenameJournal journal;
        if (!options.journalPath.isEmpty())
            journal.Start(options.journalPath);
        if (DeleteRecorded(RowPath(list, row, options), options, env, journal)) {
            journal.Finish();
            list.DeleteRow(row);
            res.done = 1;
            env.ShowTotals();
        } else {
            journal.Finish();
            res.failed = 1;
            env.prompt.Tell(Caption(CapDeleteFailed), Prompt::Icon::Critical);
        }
        return res;
    }
    if (!confirmed) {
        const QString question =
            options.markFilter.isEmpty()
                ? Caption(CapDeleteFilesQuestion)
                : Caption(CapDeleteMarkedBefore) + options.markFilter + Caption(CapDeleteMarkedAfter);
        if (!env.prompt.AskYesNo(question, false, Prompt::Icon::Question))
            return res;
    }
    res.ran = true;
    // With a mark filter every row that carries the mark, else the selection.
    std::vector<int> rows;
    if (options.markFilter.isEmpty()) {
        rows = list.SelectedRows();
    } else {
        for (int r = 1; r <= list.Rows(); ++r)
            if (list.CellView(r, InCol::FTag) == options.markFilter)
                rows.push_back(r);
    }
    RenameJournal journal;
    if (!options.journalPath.isEmpty())
        journal.Start(options.journalPath);
    State().AbortRequested = false;
    list.LockUpdate(true);
    env.ShowProgress(int(rows.size()), 0);
    int n = 0;
    for (int row : rows) {
        if (State().AbortRequested)
            break;
        env.SetProgress(++n);
        if (DeleteRecorded(RowPath(list, row, options), options, env, journal)) {
            list.SetCellText(row, InCol::FTag, Mark::DDelete);
            ++res.done;
        } else {
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            ++res.failed;
        }
    }
    journal.Finish();
    RemoveMarkedRows(list, Mark::DDelete);
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    env.ShowTotals();
    Report(env, options.noMsg, res.done, CapOneFileDeleted, CapFilesDeleted, res.failed, CapFilesNotDeleted);
    return res;
}
