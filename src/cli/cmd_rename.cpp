// quillotune-cli rename and undo: the rename commands of the data list for scripts and
// checks. The files are read into a data list as the window reads them (folders by the
// scan), every row is selected, and the command runs with the window's rules. The last
// batch of the command-line tool is kept in its own journal for `undo`.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Settings.h"
#include "file/modRename.h"
#include "list/InputColumns.h"
#include "list/ftcNames.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <sys/stat.h>

namespace {

const char kRenameUsage[] =
    "usage: quillotune-cli rename FILE|DIR... --do COMMAND [--subfolders] [--dry-run] [--json]\n"
    "  COMMAND is one of:\n"
    "    swap                    swap artist and title\n"
    "    num-ext                 leading numbers as \"07_Name\"\n"
    "    num-int                 leading numbers as \"#07 Name\"\n"
    "    num-track [--internal]  the track of the tag as number in front\n"
    "    remove-num-int          remove internal numbers (\"Artist - #07 Title\")\n"
    "    special-set             put \"_##_\" in front\n"
    "    special-remove          take \"_##_\" away\n"
    "    cut --a N --b N [--right]  cut characters (positions from 1)\n"
    "    replace-artist TEXT     the artist becomes TEXT\n"
    "    replace FIND NEW        replace FIND (any case) by NEW\n"
    "  --digits N sets the width of numbers (default: settings row 27).\n"
    "  Prints old and new name of each file, or why it fails. --dry-run changes nothing.\n"
    "  Exit code 0 when every file was renamed, 1 when some failed, 2 for wrong use.";

const char kUndoUsage[] = "usage: quillotune-cli undo [--json]\n"
                          "  Puts back the names of the last rename batch of quillotune-cli.";

struct CommandName {
    const char* name;
    RenameCommand command;
};
const CommandName kCommandNames[] = {
    {"swap", RenameCommand::SwapArtistTitle},
    {"num-ext", RenameCommand::NumExt},
    {"num-int", RenameCommand::NumInt},
    {"num-track", RenameCommand::NumFromTrack},
    {"remove-num-int", RenameCommand::RemoveNumInt},
    {"special-set", RenameCommand::SpecialSet},
    {"special-remove", RenameCommand::SpecialRemove},
    {"cut", RenameCommand::Cut},
    {"replace-artist", RenameCommand::ReplaceArtist},
    {"replace", RenameCommand::ReplaceString},
};

int Usage() {
    Err(QLatin1String(kRenameUsage));
    return 2;
}

// A file the engine does not read as audio still gets a row: its name, folder, artist
// and title.
void AddPlainRow(DataGrid& list, const QString& path, int digits) {
    QString folder, name, base, ext, artist, title, number;
    SplitPath(path, folder, name);
    SplitExtension(name, base, ext);
    if (!name.contains(u'.'))
        base = name;
    SplitArtistTitle(base, artist, title);
    if (!artist.isEmpty() && artist[0].isDigit())
        StripArtistNumber(artist, number, 0, digits);
    QStringList cells(InCol::Count);
    cells[InCol::No - 1] = QString::number(list.Rows() + 1);
    cells[InCol::FileName - 1] = name;
    cells[InCol::Artist - 1] = artist;
    cells[InCol::Title - 1] = title;
    cells[InCol::Path - 1] = folder;
    list.AddRow(cells);
}

} // namespace

int RunRename(const QStringList& args) {
    QStringList inputs;
    RenameRequest request;
    bool subFolders = false, dryRun = false, json = false, haveCommand = false;
    int digits = 0;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        auto next = [&](QString& target) {
            if (i + 1 >= args.size())
                return false;
            target = args[++i];
            return true;
        };
        auto number = [&](int& target) {
            QString t;
            bool ok = false;
            if (!next(t))
                return false;
            target = t.toInt(&ok);
            return ok && target >= 0;
        };
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kRenameUsage));
            return 0;
        } else if (a == QLatin1String("--do")) {
            QString name;
            if (!next(name))
                return Usage();
            for (const CommandName& c : kCommandNames)
                if (name == QLatin1String(c.name)) {
                    request.command = c.command;
                    haveCommand = true;
                }
            if (!haveCommand) {
                Err(QStringLiteral("quillotune-cli: unknown rename command '%1'").arg(name));
                return Usage();
            }
            if (request.command == RenameCommand::ReplaceArtist && !next(request.text))
                return Usage();
            if (request.command == RenameCommand::ReplaceString &&
                (!next(request.text) || !next(request.replacement)))
                return Usage();
        } else if (a == QLatin1String("--a")) {
            if (!number(request.cutA))
                return Usage();
        } else if (a == QLatin1String("--b")) {
            if (!number(request.cutB))
                return Usage();
        } else if (a == QLatin1String("--digits")) {
            if (!number(digits) || digits < 1 || digits > 9)
                return Usage();
        } else if (a == QLatin1String("--right")) {
            request.cutFromRight = true;
        } else if (a == QLatin1String("--internal")) {
            request.numberInternal = true;
        } else if (a == QLatin1String("--subfolders")) {
            subFolders = true;
        } else if (a == QLatin1String("--dry-run")) {
            dryRun = true;
        } else if (a == QLatin1String("--json")) {
            json = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            return Usage();
        } else {
            inputs << a;
        }
    }
    if (!haveCommand || inputs.isEmpty())
        return Usage();

    LoadProgramTexts();
    request.digits = digits > 0 ? digits : NumberDigits();
    DataGrid list;
    EnsureInputColumns(list);
    TagEngine& engine = TagEngine::Shared();
    ScanOptions options;
    options.subFolders = subFolders;
    const RowContext context = MakeRowContext(options);
    for (const QString& input : inputs) {
        // By the bytes of the name: it may be no valid UTF-8.
        const QString path = PosixFile::AbsolutePath(input);
        struct stat st;
        const bool exists = PosixFile::Stat(path, st) == 0;
        if (exists && S_ISDIR(st.st_mode)) {
            ScanFolder(list, path, options, engine, ScanHooks());
        } else if (exists) {
            const int type = engine.OpenFile(path);
            if (type == 0 || !AddFileRow(list, engine, path, context, type))
                AddPlainRow(list, path, request.digits);
        } else {
            Err(QStringLiteral("quillotune-cli: no such file or folder: %1").arg(input));
            return 1;
        }
    }
    list.SelectAll();

    CliPrompt prompt;
    ListEnv env(prompt);
    const RenamePlan plan = PlanRename(list, request, &engine);
    if (plan.endRow) {
        Err(QStringLiteral("quillotune-cli: ") + Caption(plan.endRow));
        return 2;
    }
    RenameOutcome outcome;
    if (!dryRun)
        outcome = ApplyPlan(list, plan, &env, CliJournalPath());

    QJsonArray rows;
    int failed = 0;
    for (std::size_t i = 0; i < plan.steps.size(); ++i) {
        const RenameStep& s = plan.steps[i];
        QString newName = s.newName, reason = s.reason;
        if (!dryRun) {
            reason = outcome.results[i].reason;
            if (reason.isEmpty() && !outcome.results[i].finalName.isEmpty())
                newName = outcome.results[i].finalName;
        }
        if (!reason.isEmpty())
            ++failed;
        if (json) {
            QJsonObject o;
            o[QStringLiteral("folder")] = s.folder;
            o[QStringLiteral("old")] = s.oldName;
            o[QStringLiteral("new")] = newName;
            o[QStringLiteral("ok")] = reason.isEmpty();
            if (!reason.isEmpty())
                o[QStringLiteral("reason")] = reason;
            rows.append(o);
        } else if (reason.isEmpty()) {
            Out(s.folder + u'/' + s.oldName + QStringLiteral(" -> ") + newName);
        } else {
            Out(s.folder + u'/' + s.oldName + QStringLiteral(" -> ") + newName +
                QStringLiteral("  FAILED: ") + reason);
        }
    }
    if (json) {
        QJsonObject top;
        top[QStringLiteral("dryRun")] = dryRun;
        top[QStringLiteral("files")] = plan.examined;
        top[QStringLiteral("renamed")] = dryRun ? 0 : outcome.done;
        top[QStringLiteral("failed")] = failed;
        top[QStringLiteral("rows")] = rows;
        Out(QString::fromUtf8(QJsonDocument(top).toJson(QJsonDocument::Indented)).trimmed());
    } else {
        Out(QStringLiteral("files: %1, %2: %3, failed: %4")
                .arg(plan.examined)
                .arg(dryRun ? QStringLiteral("would rename") : QStringLiteral("renamed"))
                .arg(dryRun ? int(plan.steps.size()) - failed : outcome.done)
                .arg(failed));
    }
    return failed ? 1 : 0;
}

int RunUndo(const QStringList& args) {
    bool json = false;
    for (const QString& a : args) {
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kUndoUsage));
            return 0;
        }
        if (a != QLatin1String("--json")) {
            Err(QLatin1String(kUndoUsage));
            return 2;
        }
        json = true;
    }
    LoadProgramTexts();
    const UndoOutcome u = UndoLastBatch(nullptr, CliJournalPath());
    if (json) {
        QJsonObject top;
        top[QStringLiteral("journal")] = u.hadJournal;
        top[QStringLiteral("renamedBack")] = u.done;
        top[QStringLiteral("failed")] = u.failed;
        top[QStringLiteral("changedSince")] = u.changedSince;
        QJsonArray f;
        for (const QString& s : u.failures)
            f.append(s);
        top[QStringLiteral("failures")] = f;
        Out(QString::fromUtf8(QJsonDocument(top).toJson(QJsonDocument::Indented)).trimmed());
    } else if (!u.hadJournal) {
        Out(Caption(CapUndoNothing));
    } else {
        for (const QString& s : u.failures)
            Out(QStringLiteral("FAILED: ") + s);
        Out(QStringLiteral("renamed back: %1, failed: %2, changed since: %3")
                .arg(u.done)
                .arg(u.failed)
                .arg(u.changedSince));
    }
    if (!u.hadJournal)
        return 1;
    return u.failed ? 1 : 0;
}
