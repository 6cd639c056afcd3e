// quillotune-cli ref: reference lists (.ref) printed, built from a saved data list,
// checked against the disk and held against a saved data list.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/DataGrid.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "output/modExport.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "ref/modRefMatch.h"
#include "ref/modRefReplace.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char kRefUsage[] =
    "usage: quillotune-cli ref FILE.ref [--json]\n"
    "       quillotune-cli ref --from FILE.data --save FILE.ref\n"
    "       quillotune-cli ref FILE.ref --check\n"
    "       quillotune-cli ref FILE.ref --match FILE.data [--json]\n"
    "       quillotune-cli ref FILE.ref --export OUT.(txt|csv|xls|xml|htm)\n"
    "       quillotune-cli ref FILE.ref --replace REFROW:DATAROW --data FILE.data\n"
    "                          [--from-ref] [--keep-name] [--keep-tags] [--paperbin]\n"
    "  Prints the sixteen columns of a reference list divided by TAB (a header line\n"
    "  first), or with --json as an array of objects. --from builds a reference list from\n"
    "  all rows of a saved data list (a name is taken once). --check tells for every row\n"
    "  whether its file exists and prints the counts. --match looks up every row of the\n"
    "  reference list in the data list by file name (first hit) and prints the pairs.\n"
    "  --export writes the list in the format of the file's ending. --replace puts the\n"
    "  file of data row DATAROW in the place of the file of reference row REFROW (with\n"
    "  --from-ref the other way round), the replaced file going to the trash (with\n"
    "  --paperbin deleted for good); --keep-name keeps the replaced file's name,\n"
    "  --keep-tags its tags. The list whose row changed is saved back to its file.";

bool LoadRef(DataGrid& ref, const QString& path, Prompt& prompt) {
    DefineRefColumns(ref);
    return LoadRefList(ref, path, prompt);
}

bool LoadData(DataGrid& list, const QString& path) {
    EnsureInputColumns(list);
    if (list.LoadFile(path, true))
        return true;
    Err(QStringLiteral("quillotune-cli: cannot load %1: %2").arg(path, list.LastFileError()));
    return false;
}

void PrintRows(const DataGrid& ref, bool json) {
    if (json) {
        QJsonArray rows;
        for (int r = 1; r <= ref.Rows(); ++r) {
            QJsonObject o;
            for (int c = 1; c <= RefCol::Count; ++c)
                o.insert(ref.Column(c).key, ref.CellText(r, c));
            rows.append(o);
        }
        Out(QString::fromUtf8(QJsonDocument(rows).toJson(QJsonDocument::Indented)).trimmed());
        return;
    }
    QStringList header;
    for (int c = 1; c <= RefCol::Count; ++c)
        header << ref.Column(c).key;
    Out(header.join(u'\t'));
    for (int r = 1; r <= ref.Rows(); ++r) {
        QStringList cells = ref.RowCells(r).mid(0, RefCol::Count);
        Out(cells.join(u'\t'));
    }
}

int Usage() {
    Err(QLatin1String(kRefUsage));
    return 2;
}

// --replace REFROW:DATAROW: the pair of rows, the replacement, and the changed list saved.
int ReplaceRows(DataGrid& ref, const QString& refPath, const QString& pair, const QString& dataPath,
                ReplaceOptions o, Prompt& prompt) {
    const QStringList parts = pair.split(u':');
    bool okRef = false, okData = false;
    const int refRow = parts.size() == 2 ? parts[0].toInt(&okRef) : 0;
    const int dataRow = parts.size() == 2 ? parts[1].toInt(&okData) : 0;
    if (!okRef || !okData || dataPath.isEmpty())
        return Usage();
    DataGrid data;
    if (!LoadData(data, dataPath))
        return 1;
    if (refRow < 1 || refRow > ref.Rows() || dataRow < 1 || dataRow > data.Rows()) {
        Err(QStringLiteral("quillotune-cli: no such row (reference list %1 rows, data list %2 rows)")
                .arg(ref.Rows())
                .arg(data.Rows()));
        return 1;
    }
    o.noMsg = true;
    const bool fromRef = o.direction == ReplaceDirection::FromReference;
    const ReplaceResult r = fromRef ? ReplaceFromReference(data, dataRow, ref, refRow, o, prompt)
                                    : ReplaceFromData(data, dataRow, ref, refRow, o, prompt);
    if (!r.done)
        return 1;
    // The list whose row took the new values goes back to its file.
    DataGrid& changed = fromRef ? data : ref;
    const QString file = fromRef ? dataPath : refPath;
    if (!changed.SaveFile(file)) {
        Err(QStringLiteral("quillotune-cli: cannot save %1: %2").arg(file, changed.LastFileError()));
        return 1;
    }
    Out(QStringLiteral("replaced: %1").arg(r.newPath));
    return r.failed ? 1 : 0;
}

} // namespace

int RunRef(const QStringList& args) {
    QString refPath, fromPath, savePath, matchPath, exportPath, replacePair, dataPath;
    bool json = false, check = false;
    ReplaceOptions replace;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kRefUsage));
            return 0;
        } else if (a == QLatin1String("--json")) {
            json = true;
        } else if (a == QLatin1String("--check")) {
            check = true;
        } else if (a == QLatin1String("--from") && i + 1 < args.size()) {
            fromPath = args[++i];
        } else if (a == QLatin1String("--save") && i + 1 < args.size()) {
            savePath = args[++i];
        } else if (a == QLatin1String("--match") && i + 1 < args.size()) {
            matchPath = args[++i];
        } else if (a == QLatin1String("--export") && i + 1 < args.size()) {
            exportPath = args[++i];
        } else if (a == QLatin1String("--replace") && i + 1 < args.size()) {
            replacePair = args[++i];
        } else if (a == QLatin1String("--data") && i + 1 < args.size()) {
            dataPath = args[++i];
        } else if (a == QLatin1String("--from-ref")) {
            replace.direction = ReplaceDirection::FromReference;
        } else if (a == QLatin1String("--keep-name")) {
            replace.keepFilename = true;
        } else if (a == QLatin1String("--keep-tags")) {
            replace.keepTags = true;
        } else if (a == QLatin1String("--paperbin")) {
            replace.paperbin = true;
        } else if (a.startsWith(QLatin1String("--")) || !refPath.isEmpty()) {
            return Usage();
        } else {
            refPath = a;
        }
    }
    LoadProgramTexts();
    CliPrompt prompt;

    if (!fromPath.isEmpty()) {
        if (savePath.isEmpty() || !refPath.isEmpty() || check || !matchPath.isEmpty())
            return Usage();
        DataGrid data, ref;
        if (!LoadData(data, fromPath))
            return 1;
        DefineRefColumns(ref);
        data.SelectAll();
        ListEnv env(prompt);
        CopyToRefOptions o;
        o.noMsg = true;
        const int added = data.Rows() == 0 ? 0 : CopyToReflist(data, ref, o, env);
        if (ref.Rows() == 0) {
            Err(QStringLiteral("quillotune-cli: the data list has no rows"));
            return 1;
        }
        QString written;
        if (!SaveRefList(ref, savePath, true, prompt, &written))
            return 1;
        Out(QStringLiteral("rows: %1, written: %2").arg(added).arg(written));
        return 0;
    }
    const int commands =
        int(check) + int(!matchPath.isEmpty()) + int(!exportPath.isEmpty()) + int(!replacePair.isEmpty());
    if (refPath.isEmpty() || !savePath.isEmpty() || commands > 1)
        return Usage();

    DataGrid ref;
    if (!LoadRef(ref, refPath, prompt))
        return 1;
    if (check) {
        const RefCheckResult r = RefCheckPath(ref);
        if (json) {
            Out(QString::fromUtf8(QJsonDocument(QJsonObject{{QStringLiteral("rows"), ref.Rows()},
                                                            {QStringLiteral("found"), r.found},
                                                            {QStringLiteral("missing"), r.missing}})
                                      .toJson(QJsonDocument::Compact)));
        } else {
            Out(QStringLiteral("rows: %1, found: %2, missing: %3")
                    .arg(ref.Rows())
                    .arg(r.found)
                    .arg(r.missing));
        }
        return 0;
    }
    if (!exportPath.isEmpty()) {
        if (ExportFormatForPath(exportPath) == ExportFormat::None) {
            Err(QStringLiteral("quillotune-cli: the export file must end in .txt, .csv, .xls, .xml or .htm"));
            return 2;
        }
        DataGrid settings; // the folder is not remembered from the command line
        return ExportRefList(ref, exportPath, settings, true, prompt) ? 0 : 1;
    }
    if (!replacePair.isEmpty())
        return ReplaceRows(ref, refPath, replacePair, dataPath, replace, prompt);
    if (!matchPath.isEmpty()) {
        DataGrid data;
        if (!LoadData(data, matchPath))
            return 1;
        ref.SelectAll();
        MatchOptions o;
        o.noMsg = true;
        const MatchResult m = MarkMatches(data, ref, o, prompt, true);
        if (json) {
            QJsonArray pairs;
            for (const MatchPair& p : m.pairs)
                pairs.append(
                    QJsonObject{{QStringLiteral("ref"), p.refPath}, {QStringLiteral("data"), p.dataPath}});
            Out(QString::fromUtf8(QJsonDocument(QJsonObject{{QStringLiteral("matches"), m.matches},
                                                            {QStringLiteral("pairs"), pairs}})
                                      .toJson(QJsonDocument::Indented))
                    .trimmed());
        } else {
            for (const MatchPair& p : m.pairs)
                Out(p.refPath + u'\t' + p.dataPath);
            Out(QStringLiteral("matches: %1 of %2").arg(m.matches).arg(ref.Rows()));
        }
        return 0;
    }
    PrintRows(ref, json);
    return 0;
}
