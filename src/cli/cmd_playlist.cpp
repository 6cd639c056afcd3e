// quillotune-cli playlist: reads an M3U or PLS file into playlist rows and prints them,
// or writes songs as a playlist, with the rules of the playlist window.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/modScan.h"
#include "platform/PosixFile.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylist.h"
#include "playlist/modPlaylistFile.h"
#include "tag/TagEngine.h"

#include <sys/stat.h>

namespace {

const char kPlaylistUsage[] =
    "usage: quillotune-cli playlist FILE.m3u|FILE.m3u8|FILE.pls [--json]\n"
    "       quillotune-cli playlist --write OUT.m3u|OUT.pls [--relative] FILE...\n"
    "  The first form prints the rows that reading the playlist gives, one per line with\n"
    "  the twelve columns divided by TAB (a header line first), or with --json as an\n"
    "  array of objects. The second form scans the given songs into rows and writes them\n"
    "  as a playlist (all of them, in the given order); --relative writes the entries\n"
    "  relative to the playlist's folder and leaves out songs outside it. It prints the\n"
    "  counts of written and skipped entries; nothing written means no file.";

const char* const kKeys[PlCol::Count] = {"No",        "FTag",      "TF",           "FileName",
                                         "Type",      "DurationS", "DurationMS",   "SizeByte",
                                         "SizeMByte", "PathFile",  "PathPlaylist", "KeyInput"};

int PrintPlaylist(const QString& path, bool json) {
    DataGrid g;
    DefinePlaylistColumns(g);
    PlaylistReadResult r;
    if (IsPlsPath(path))
        r = ReadPls(path, g, false);
    else
        r = ReadM3u(path, g, false);
    if (!r.ok) {
        Err(QStringLiteral("quillotune-cli: cannot read %1: %2").arg(path, r.error));
        return 1;
    }
    QStringList keys;
    for (const char* k : kKeys)
        keys << QLatin1String(k);
    PrintGridRows(g, keys, g.Rows(), json);
    return 0;
}

int WritePlaylist(const QString& out, bool relative, const QStringList& files) {
    if (!IsM3uPath(out) && !IsPlsPath(out)) {
        Err(QStringLiteral("quillotune-cli: the playlist must end in .m3u, .m3u8 or .pls: %1").arg(out));
        return 2;
    }
    DataGrid input;
    EnsureInputColumns(input);
    TagEngine& engine = TagEngine::Shared();
    const RowContext context;
    int failed = 0;
    for (const QString& f : files) {
        const QString abs = PosixFile::AbsolutePath(f);
        struct stat st;
        if (PosixFile::Stat(abs, st) != 0 || !S_ISREG(st.st_mode)) {
            Err(QStringLiteral("quillotune-cli: not a file: %1").arg(f));
            ++failed;
            continue;
        }
        AddFileRow(input, engine, abs, context);
    }
    input.SelectAll();
    CliPrompt prompt;
    DataGrid playlist, files2;
    PlaylistEnv env(prompt, playlist, files2);
    env.tab1NoMsg = true;
    CopyRowsToPlaylist(env, input, QString());
    const QString target = PosixFile::AbsolutePath(out);
    QString folder, name;
    SplitPath(target, folder, name);
    PlaylistWriteOptions o;
    o.relative = relative;
    PlaylistWriteCounts counts;
    playlist.SelectAll();
    const QByteArray bytes =
        IsM3uPath(target) ? BuildM3u(playlist, o, folder, counts) : BuildPls(playlist, o, folder, counts);
    int rc = failed ? 1 : 0;
    if (counts.written > 0) {
        QString error;
        if (!WritePlaylistBytes(target, bytes, &error)) {
            Err(QStringLiteral("quillotune-cli: cannot write %1: %2").arg(target, error));
            return 1;
        }
    }
    Out(QStringLiteral("written: %1, skipped: %2").arg(counts.written).arg(counts.skipped));
    if (counts.written == 0) {
        Err(QStringLiteral("quillotune-cli: nothing written, no file made"));
        rc = 1;
    }
    return rc;
}

} // namespace

int RunPlaylist(const QStringList& args) {
    bool json = false, relative = false;
    QString writePath;
    QStringList files;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kPlaylistUsage));
            return 0;
        } else if (a == QLatin1String("--json")) {
            json = true;
        } else if (a == QLatin1String("--relative")) {
            relative = true;
        } else if (a == QLatin1String("--write")) {
            if (i + 1 >= args.size())
                return Err(QLatin1String(kPlaylistUsage)), 2;
            writePath = args[++i];
        } else if (a.startsWith(QLatin1String("--"))) {
            Err(QLatin1String(kPlaylistUsage));
            return 2;
        } else {
            files << a;
        }
    }
    LoadProgramTexts();
    if (!writePath.isEmpty()) {
        if (files.isEmpty() || json) {
            Err(QLatin1String(kPlaylistUsage));
            return 2;
        }
        return WritePlaylist(writePath, relative, files);
    }
    if (files.size() != 1 || relative) {
        Err(QLatin1String(kPlaylistUsage));
        return 2;
    }
    const QString path = PosixFile::AbsolutePath(files.first());
    return PrintPlaylist(path, json);
}
