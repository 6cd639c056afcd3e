#include "file/modRename.h"

#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "file/ftcFileOps.h"
#include "file/modRenameJournal.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/ftcNames.h"
#include "list/modListEnv.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"
#include "tag/modTagUpdate.h"

#include <QHash>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace {

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool IsAsciiLetter(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

// Base and extension of a file name. A name without a point keeps all of it as the base,
// and its extension is empty: the new name then ends in ".".
void BaseAndExtension(const QString& name, QString& base, QString& ext) {
    SplitExtension(name, base, ext);
    if (!name.contains(u'.'))
        base = name;
}

// The base without a leading external or internal number.
QString WithoutNumber(const QString& base, int digits) {
    QString number, rest;
    if (!base.isEmpty() && IsAsciiDigit(base[0])) {
        SplitNumber(base, digits, number, rest);
        return rest;
    }
    if (base.startsWith(u'#')) {
        SplitInternalNumber(base, digits, number, rest);
        return rest;
    }
    return base;
}

// Artist and title of a base: numbers are not part of the artist.
void ArtistTitleOf(const QString& base, int digits, QString& artist, QString& title) {
    SplitArtistTitle(WithoutNumber(base, digits), artist, title);
}

QString Joined(const QString& base, const QString& ext) {
    return base + u'.' + ext;
}

// Statfs type numbers of the file systems that hold names as the desktop the collection
// often comes from does: no : ? * < > | " \ and no dot or blank at the end.
bool RestrictedFileSystem(long type) {
    switch (static_cast<unsigned long>(type) & 0xffffffffUL) {
    case 0x4d44UL:     // vfat, msdos
    case 0x2011BAB0UL: // exfat
    case 0x5346544eUL: // ntfs
    case 0x7366746eUL: // ntfs3
    case 0x517BUL:     // smb
    case 0xFE534D42UL: // smb2
    case 0xFF534D42UL: // cifs
        return true;
    default:
        return false;
    }
}

class FolderKinds {
public:
    bool Restricted(const QString& folder) {
        auto it = m_cache.constFind(folder);
        if (it != m_cache.constEnd())
            return *it;
        struct statfs fs {};
        const bool restricted = ::statfs(PosixFile::Native(folder).constData(), &fs) == 0 &&
                                RestrictedFileSystem(static_cast<long>(fs.f_type));
        m_cache.insert(folder, restricted);
        return restricted;
    }

private:
    QHash<QString, bool> m_cache;
};

QString Refusal(const QString& name, bool restricted) {
    if (name.isEmpty() || name == u"." || name == u"..")
        return Caption(CapReasonEmptyName);
    if (name.contains(u'/') || name.contains(QChar(0)))
        return Caption(CapReasonSlash);
    if (PosixFile::Native(name).size() > 255)
        return Caption(CapReasonTooLong);
    if (restricted) {
        static const QString bad = QStringLiteral(":?*<>|\"\\");
        for (QChar c : name) {
            if (bad.contains(c) || c.unicode() < 0x20)
                return Caption(CapReasonBadCharacter) + c;
        }
        if (name.endsWith(u'.') || name.endsWith(u' '))
            return Caption(CapReasonTrailingDot);
    }
    return QString();
}

// What one command makes of one row: true when the row takes part (a step is made).
struct RowInput {
    QString name, folder, artist, title, base, ext;
};

class Planner {
public:
    Planner(const RenameRequest& r, TagEngine* e) : req(r), engine(e) {}

    bool Make(const RowInput& in, RenameStep& step) {
        switch (req.command) {
        case RenameCommand::SwapArtistTitle:
            return Swap(in, step);
        case RenameCommand::NumExt:
            return NumExt(in, step);
        case RenameCommand::NumInt:
            return NumInt(in, step);
        case RenameCommand::NumFromTrack:
            return NumFromTrack(in, step);
        case RenameCommand::RemoveNumInt:
            return RemoveNumInt(in, step);
        case RenameCommand::SpecialSet:
            if (in.name.startsWith(Mark::SpecialNamePrefix))
                return false;
            step.newName = Mark::SpecialNamePrefix + in.name;
            step.artist = ArtistOfName(step.newName);
            step.artistOnly = true;
            return true;
        case RenameCommand::SpecialRemove:
            if (!in.name.startsWith(Mark::SpecialNamePrefix))
                return false;
            step.newName = in.name.mid(Mark::SpecialNamePrefix.size());
            step.artist = ArtistOfName(step.newName);
            step.artistOnly = true;
            return true;
        case RenameCommand::Cut:
            return Cut(in, step);
        case RenameCommand::ReplaceArtist:
            return ReplaceArtist(in, step);
        case RenameCommand::ReplaceString:
            return ReplaceString(in, step);
        case RenameCommand::TagToFilename:
            return TagToFilename(in, step);
        case RenameCommand::None:
            break;
        }
        return false;
    }

private:
    // The artist of a name as the special prefix commands take it: the text up to the
    // first "-", trimmed.
    static QString ArtistOfName(const QString& name) {
        QString base, ext;
        BaseAndExtension(name, base, ext);
        const qsizetype dash = base.indexOf(u'-');
        return (dash < 0 ? base : base.left(dash)).trimmed();
    }

    QString NumberPrefixOf(const QString& base) const {
        QString number, rest;
        if (!base.isEmpty() && IsAsciiDigit(base[0])) {
            SplitNumber(base, req.digits, number, rest);
            return number.isEmpty() ? QString() : ExternalPrefix(number);
        }
        if (base.startsWith(u'#')) {
            SplitInternalNumber(base, req.digits, number, rest);
            return number.isEmpty() ? QString() : InternalPrefix(number);
        }
        return QString();
    }

    bool Swap(const RowInput& in, RenameStep& step) const {
        const QString prefix = NumberPrefixOf(in.base);
        // What belongs to a number is no part of the artist.
        const QString artist = WithoutNumber(in.artist, req.digits);
        step.newName = Joined(prefix + in.title + QStringLiteral(" - ") + artist, in.ext);
        step.artist = in.title;
        step.title = artist;
        return true;
    }

    bool NumExt(const RowInput& in, RenameStep& step) const {
        if (in.name.isEmpty() || !IsAsciiDigit(in.name[0]))
            return false;
        QString number, rest;
        SplitNumber(in.base, req.digits, number, rest);
        step.newName = Joined(ExternalPrefix(number) + rest, in.ext);
        SplitArtistTitle(rest, step.artist, step.title);
        return true;
    }

    bool NumInt(const RowInput& in, RenameStep& step) const {
        QString number, rest;
        if (!in.name.isEmpty() && IsAsciiDigit(in.name[0])) {
            const qsizetype underscore = in.base.indexOf(u'_');
            if (underscore < 1 || underscore > 3) {
                step.reason = Caption(CapReasonNoUnderscore);
                step.newName = in.name;
                return true;
            }
            number = PadNumber(QStringView(in.base).left(underscore), req.digits);
            rest = in.base.mid(underscore + 1);
        } else if (in.name.startsWith(u'#')) {
            SplitInternalNumber(in.base, req.digits, number, rest);
        } else {
            return false;
        }
        SplitArtistTitle(rest.trimmed(), step.artist, step.title);
        step.newName =
            Joined(InternalPrefix(number) + step.artist + QStringLiteral(" - ") + step.title, in.ext);
        return true;
    }

    bool NumFromTrack(const RowInput& in, RenameStep& step) const {
        const QString rest = WithoutNumber(in.base, req.digits);
        SplitArtistTitle(rest, step.artist, step.title);
        step.newName = in.name;
        if (!engine || engine->OpenFile(in.folder + u'/' + in.name) == 0) {
            step.reason = Caption(CapReasonUnreadable);
            return true;
        }
        const int track = int(DataGrid::NumericPrefix(engine->TrackNumberValue()));
        if (track <= 0) {
            step.reason = Caption(CapReasonTrackZero);
            return true;
        }
        const QString number = PadNumber(QString::number(track), req.digits);
        const QString prefix = req.numberInternal ? InternalPrefix(number) : ExternalPrefix(number);
        step.newName = Joined(prefix + step.artist + QStringLiteral(" - ") + step.title, in.ext);
        return true;
    }

    bool RemoveNumInt(const RowInput& in, RenameStep& step) const {
        if (!in.name.contains(QStringLiteral("- #")))
            return false;
        // The title cell may still hold the internal number of the name.
        QString title = in.title.trimmed();
        if (title.startsWith(u'#')) {
            QString number;
            SplitInternalNumber(title, req.digits, number, title);
        }
        step.artist = in.artist;
        step.title = title;
        step.newName = Joined(in.artist + QStringLiteral(" - ") + title, in.ext);
        return true;
    }

    bool Cut(const RowInput& in, RenameStep& step) const {
        const CutMode mode = CutModeOf(req.cutA, req.cutB, req.cutFromRight, nullptr);
        const QString base = CutBase(in.base, mode, req.cutA, req.cutB);
        if (base.isEmpty()) {
            step.reason = Caption(CapReasonEmptyName);
            step.newName = in.name;
            return true;
        }
        SplitArtistTitle(WithoutNumber(base, req.digits), step.artist, step.title);
        step.newName = Joined(base, in.ext);
        return true;
    }

    bool ReplaceArtist(const RowInput& in, RenameStep& step) const {
        const QString prefix = NumberPrefixOf(in.base);
        step.newName = Joined(prefix + req.text + QStringLiteral(" - ") + in.title, in.ext);
        step.artist = req.text;
        step.artistOnly = true;
        return true;
    }

    bool ReplaceString(const RowInput& in, RenameStep& step) const {
        if (!in.name.contains(req.text, Qt::CaseInsensitive))
            return false;
        QString name = in.name;
        name.replace(req.text, req.replacement, Qt::CaseInsensitive);
        step.newName = name;
        QString base, ext, title;
        BaseAndExtension(name, base, ext);
        ArtistTitleOf(base, req.digits, step.artist, title);
        step.artistOnly = true;
        return true;
    }

    // The name from the tags of the chosen set: artist - title, with the track in front
    // as an external number when asked.
    bool TagToFilename(const RowInput& in, RenameStep& step) const {
        step.newName = in.name;
        if (!engine || engine->OpenFile(in.folder + u'/' + in.name) == 0) {
            step.reason = Caption(CapReasonUnreadable);
            return true;
        }
        QString artist, title, track;
        if (!ReadSetNameFields(*engine, UpdateSet(req.tagSet), &artist, &title, &track) ||
            (artist = NamePart(artist)).isEmpty() || (title = NamePart(title)).isEmpty()) {
            step.reason = Caption(CapTagArtistTitleEmpty);
            return true;
        }
        QString prefix;
        const int n = int(DataGrid::NumericPrefix(track));
        if (req.withTrack && n > 0)
            prefix = ExternalPrefix(PadNumber(QString::number(n), req.digits));
        step.newName = Joined(prefix + artist + QStringLiteral(" - ") + title, in.ext);
        step.artist = artist;
        step.title = title;
        return true;
    }

    // A tag text as part of a file name: no slash, no NUL, trimmed.
    static QString NamePart(QString s) {
        s.replace(u'/', u'_');
        s.remove(QChar(0));
        return s.trimmed();
    }

    const RenameRequest& req;
    TagEngine* engine;
};

bool ClearsMark(RenameCommand c) {
    return c == RenameCommand::SwapArtistTitle || c == RenameCommand::NumExt;
}

} // namespace

// ---- grammar -------------------------------------------------------------------------------

void SplitNumber(const QString& base, int digits, QString& number, QString& rest) {
    qsizetype i = 0;
    while (i < base.size() && IsAsciiDigit(base[i]))
        ++i;
    number = PadNumber(QStringView(base).left(i), digits);
    while (i < base.size() && !IsAsciiLetter(base[i]))
        ++i;
    rest = base.mid(i);
}

void SplitInternalNumber(const QString& base, int digits, QString& number, QString& rest) {
    number.clear();
    rest = base;
    if (!base.startsWith(u'#'))
        return;
    qsizetype i = 1;
    while (i < base.size() && IsAsciiDigit(base[i]))
        ++i;
    number = PadNumber(QStringView(base).mid(1, i - 1), digits);
    const qsizetype blank = base.indexOf(u' ', i);
    rest = blank < 0 ? base.mid(i).trimmed() : base.mid(blank + 1);
}

QString ExternalPrefix(const QString& number) {
    return number + u'_';
}

QString InternalPrefix(const QString& number) {
    return u'#' + number + u' ';
}

CutMode CutModeOf(int a, int b, bool fromRight, int* messageRow) {
    auto end = [&](int row) {
        if (messageRow)
            *messageRow = row;
        return CutMode::Invalid;
    };
    if (messageRow)
        *messageRow = 0;
    if (a < 0 || b < 0)
        return end(CapNoCutPositions);
    if (a == 0 && b == 0)
        return end(CapNoCutPositions);
    if (fromRight)
        return b != 0 ? CutMode::FromRight : end(CapCutRightNeedsCount);
    if (a == 0)
        return CutMode::FromStart;
    if (b == 0)
        return CutMode::FromPosition;
    if (a > b)
        return end(CapCutPositionsOrder);
    return CutMode::Range;
}

QString CutBase(const QString& base, CutMode mode, int a, int b) {
    switch (mode) {
    case CutMode::FromStart:
        return base.mid(b);
    case CutMode::FromPosition:
        return base.left(a - 1);
    case CutMode::Range:
        return base.left(a - 1) + base.mid(b - 1);
    case CutMode::FromRight: {
        if (base.size() < b + 1)
            return QString();
        QString kept = base.left(base.size() - b);
        // A blank at the start of the text that falls away becomes "_"; a closing blank
        // of what is kept goes.
        if (base[kept.size()] == u' ')
            kept += u'_';
        while (kept.endsWith(u' '))
            kept.chop(1);
        return kept;
    }
    case CutMode::Invalid:
        break;
    }
    return base;
}

bool CutPositionsFromMarks(const QString& marked, bool fromRight, int& a, int& b) {
    const qsizetype first = marked.indexOf(u'@');
    if (first < 0)
        return false;
    const qsizetype second = marked.indexOf(u'@', first + 1);
    const int plainLength = int(marked.size() - marked.count(u'@'));
    if (second < 0) {
        if (fromRight) {
            a = 0;
            b = plainLength - int(first);
        } else {
            a = int(first) + 1;
            b = 0;
        }
        return true;
    }
    a = int(first) + 1;
    b = int(second); // the position after the range, counted without the first "@"
    return true;
}

int RenameQuestionRow(const RenameRequest& request) {
    switch (request.command) {
    case RenameCommand::SwapArtistTitle:
        return CapSwapArtistTitleQuestion;
    case RenameCommand::NumExt:
        return CapNumberExternalQuestion;
    case RenameCommand::NumInt:
        return CapNumberInternalQuestion;
    case RenameCommand::NumFromTrack:
        return request.numberInternal ? CapNumberFromTrackIntQuestion : CapNumberFromTrackQuestion;
    case RenameCommand::RemoveNumInt:
        return CapRemoveNumIntQuestion;
    case RenameCommand::SpecialSet:
    case RenameCommand::SpecialRemove:
    case RenameCommand::ReplaceArtist:
    case RenameCommand::ReplaceString:
        return CapChangeNamesQuestion;
    case RenameCommand::Cut:
        return CapCutNamesQuestion;
    case RenameCommand::TagToFilename:
        return CapTagToNameQuestion;
    case RenameCommand::None:
        break;
    }
    return 0;
}

QString NameRefusal(const QString& folder, const QString& name) {
    FolderKinds kinds;
    return Refusal(name, kinds.Restricted(folder));
}

RenamePlan PlanRename(const DataGrid& list, const RenameRequest& request, TagEngine* engine) {
    RenamePlan plan;
    plan.command = request.command;
    plan.questionRow = RenameQuestionRow(request);
    switch (request.command) {
    case RenameCommand::None:
        plan.endRow = CapNoActionChosen;
        return plan;
    case RenameCommand::Cut: {
        int row = 0;
        if (CutModeOf(request.cutA, request.cutB, request.cutFromRight, &row) == CutMode::Invalid) {
            plan.endRow = row;
            plan.endIcon = row == CapCutPositionsOrder ? Prompt::Icon::None : Prompt::Icon::Warning;
            return plan;
        }
        break;
    }
    case RenameCommand::ReplaceArtist:
        if (request.text.isEmpty()) {
            plan.endRow = CapNoNewArtist;
            return plan;
        }
        break;
    case RenameCommand::ReplaceString:
        if (request.text.isEmpty()) {
            plan.endRow = CapNoReplaceFindText;
            return plan;
        }
        break;
    default:
        break;
    }
    Planner planner(request, engine);
    FolderKinds kinds;
    for (int row : list.SelectedRows()) {
        if (!request.markFilter.isEmpty() && list.CellView(row, InCol::FTag) != request.markFilter)
            continue;
        ++plan.examined;
        RowInput in;
        in.name = list.CellText(row, InCol::FileName);
        in.folder = list.CellText(row, InCol::Path);
        in.artist = list.CellText(row, InCol::Artist);
        in.title = list.CellText(row, InCol::Title);
        BaseAndExtension(in.name, in.base, in.ext);
        RenameStep step;
        step.row = row;
        step.folder = in.folder;
        step.oldName = in.name;
        if (!planner.Make(in, step))
            continue;
        if (step.reason.isEmpty() && step.newName == step.oldName)
            continue; // nothing to do for this row
        if (step.reason.isEmpty())
            step.reason = Refusal(step.newName, kinds.Restricted(in.folder));
        plan.steps.push_back(std::move(step));
    }
    return plan;
}

RenameOutcome ApplyPlan(DataGrid& list, const RenamePlan& plan, const ListEnv* env,
                        const QString& journalPath) {
    RenameOutcome out;
    RenameJournal journal;
    if (!journalPath.isEmpty())
        journal.Start(journalPath);
    State().AbortRequested = false;
    const bool clearMark = ClearsMark(plan.command);
    out.results.resize(plan.steps.size());
    int n = 0;
    for (const RenameStep& step : plan.steps) {
        if (State().AbortRequested) {
            out.aborted = true;
            break;
        }
        ++n;
        if (env)
            env->SetProgress(n);
        const int row = step.row;
        if (row < 1 || row > list.Rows())
            continue;
        QString reason = step.reason;
        QString finalPath;
        if (reason.isEmpty()) {
            // Every command moves the file within its folder; the new name is never taken
            // as a folder, and a name in use gives "name (2).ext".
            const int e =
                RenameFile(step.folder + u'/' + step.oldName, step.folder + u'/' + step.newName, &finalPath);
            if (e)
                reason = Caption(CapReasonMoveFailed) + FileOpErrorText(e);
        }
        if (!reason.isEmpty()) {
            out.results[std::size_t(n - 1)].reason = reason;
            list.SetCellText(row, InCol::FTag, Mark::Failed);
            out.failures.push_back(step.oldName + QStringLiteral(": ") + reason);
            ++out.failed;
            continue;
        }
        const QString finalName = finalPath.mid(finalPath.lastIndexOf(u'/') + 1);
        out.results[std::size_t(n - 1)].finalName = finalName;
        journal.Add(step.folder, step.oldName, finalName, list.CellText(row, InCol::Artist),
                    list.CellText(row, InCol::Title), finalPath);
        list.SetCellText(row, InCol::FileName, finalName);
        list.SetCellText(row, InCol::Artist, step.artist);
        if (!step.artistOnly)
            list.SetCellText(row, InCol::Title, step.title);
        if (clearMark)
            list.SetCellText(row, InCol::FTag, QString());
        ++out.done;
    }
    journal.Finish();
    return out;
}

void FinishRename(DataGrid& list, RenameCommand command, const RenameOutcome& outcome, const ListEnv& env,
                  bool noMsg) {
    list.DoSort(QStringLiteral("3,7"), 1);
    if (outcome.failed > 0) {
        // The failed rows come first, in the same order; other marks do not get between.
        int to = 1;
        for (int r = 1; r <= list.Rows(); ++r)
            if (list.CellView(r, InCol::FTag) == Mark::Failed)
                list.MoveRow(r, to++);
    }
    if (list.Rows() > 0)
        list.SetCurRow(1);
    env.ShowTotals();
    if (!noMsg) {
        QString text;
        switch (command) {
        case RenameCommand::SwapArtistTitle:
            text = CountText(CapSwappedCount, outcome.done);
            break;
        case RenameCommand::NumInt:
            text = Caption(CapNumberedBefore) + QString::number(outcome.done) + Caption(CapNumberedAfter);
            break;
        case RenameCommand::RemoveNumInt:
            text = CountText(CapNumIntRemoved, outcome.done);
            break;
        default:
            text = CountText(CapNamesChanged, outcome.done);
            break;
        }
        env.prompt.Tell(text, Prompt::Icon::Information);
    }
    if (outcome.failed > 0) {
        const int row = command == RenameCommand::NumInt ? CapNotRenamedCount : CapFailedCount;
        QString text = CountText(row, outcome.failed);
        const int shown = std::min<int>(10, int(outcome.failures.size()));
        for (int i = 0; i < shown; ++i)
            text += u'\n' + outcome.failures[std::size_t(i)];
        if (int(outcome.failures.size()) > shown)
            text += QStringLiteral("\n…");
        env.prompt.Tell(text, Prompt::Icon::Critical);
    }
}

RenameRun RunRename(DataGrid& list, const RenameRequest& request, const ListEnv& env, bool noMsg,
                    bool preview, TagEngine* engine, const QString& journalPath) {
    RenameRun run;
    if (request.command == RenameCommand::None) {
        env.prompt.Tell(Caption(CapNoActionChosen), Prompt::Icon::Warning);
        return run;
    }
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return run;
    // The checks of the command's own input come before its question.
    {
        RenameRequest probe = request;
        DataGrid empty;
        const RenamePlan check = PlanRename(empty, probe, nullptr);
        if (check.endRow) {
            env.prompt.Tell(Caption(check.endRow), check.endIcon);
            return run;
        }
    }
    const int question = RenameQuestionRow(request);
    if (!preview && !noMsg && !request.confirmed && question &&
        !env.prompt.AskYesNo(Caption(question), true, Prompt::Icon::Question))
        return run;
    run.plan = PlanRename(list, request, engine);
    run.ran = true;
    if (preview)
        return run;
    list.LockUpdate(true);
    env.ShowProgress(int(run.plan.steps.size()), 0);
    run.outcome = ApplyPlan(list, run.plan, &env, journalPath);
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    FinishRename(list, request.command, run.outcome, env, noMsg);
    return run;
}
