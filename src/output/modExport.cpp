#include "output/modExport.h"

#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/ftcFileTexts.h"
#include "output/ExportTable.h"
#include "output/ExportWriters.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {

QString& LastError() {
    static QString error;
    return error;
}

// Runs a writer on a temporary file that replaces `path` only when it is complete.
template <typename Writer> bool WriteFile(const QString& path, Writer&& write) {
    LastError().clear();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        LastError() = file.errorString();
        return false;
    }
    if (!write(file)) {
        LastError() = file.errorString();
        if (LastError().isEmpty())
            LastError() = QStringLiteral("write error");
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        LastError() = file.errorString();
        return false;
    }
    return true;
}

QString BaseName(const QString& path) {
    return QFileInfo(path).completeBaseName();
}

} // namespace

bool ExportList(const DataGrid& grid, const QString& path, int format, const QString& title, int columnsMode,
                int withHeader, int rowsMode, const QString& extra, const QString& delimiter) {
    const ExportTable table(grid, columnsMode, withHeader != 0, rowsMode);
    switch (format) {
    case ExportFormat::Txt: {
        const QChar d = delimiter.isEmpty() ? QChar(u'\t') : delimiter[0];
        return WriteFile(path,
                         [&](QSaveFile& f) { return WriteTextExport(table, f, d, false, title, extra); });
    }
    case ExportFormat::Csv:
        return WriteFile(path, [&](QSaveFile& f) {
            return WriteTextExport(table, f, CsvDelimiter(), true, title, extra);
        });
    case ExportFormat::Xls: {
        const QString sheet = title.isEmpty() ? BaseName(path) : title;
        return WriteFile(path, [&](QSaveFile& f) { return WriteXlsExport(table, f, sheet, extra); });
    }
    case ExportFormat::Xml:
        return WriteFile(path, [&](QSaveFile& f) { return WriteXmlExport(table, f, title, extra); });
    default:
        LastError() = QStringLiteral("unknown export format %1").arg(format);
        return false;
    }
}

bool ExportHtml(const DataGrid& grid, const QString& path) {
    const ExportTable table(grid, 2, true, 0);
    const QString language =
        LanguageColumn() == kLanguageGerman ? QStringLiteral("de") : QStringLiteral("en");
    return WriteFile(path, [&](QSaveFile& f) { return WriteHtmlExport(table, f, BaseName(path), language); });
}

QString LastExportError() {
    return LastError();
}

QChar CsvDelimiter() {
    return LanguageColumn() == kLanguageGerman ? QChar(u';') : QChar(u',');
}

int ExportFormatForPath(const QString& path) {
    const QString ending = path.right(4).toLower();
    if (ending == QLatin1String(".txt"))
        return ExportFormat::Txt;
    if (ending == QLatin1String(".csv"))
        return ExportFormat::Csv;
    if (ending == QLatin1String(".xls"))
        return ExportFormat::Xls;
    if (ending == QLatin1String(".xml"))
        return ExportFormat::Xml;
    if (ending == QLatin1String(".htm"))
        return ExportFormat::Htm;
    return ExportFormat::None;
}

QStringList ExportFilters() {
    const QString text = Caption(CapExportFilter);
    QStringList out;
    for (const char* ext : {"xls", "txt", "csv", "xml", "htm"})
        out << text + QStringLiteral(" (*.%1)").arg(QLatin1String(ext));
    return out;
}

QString ExportFilterString() {
    return ExportFilters().join(QStringLiteral(";;"));
}

QString ExportDefaultSuffix() {
    return QStringLiteral("txt");
}

QString ExportSuffixOfFilter(const QString& filter) {
    const qsizetype at = filter.lastIndexOf(QLatin1String("(*."));
    if (at < 0 || !filter.endsWith(QLatin1Char(')')))
        return QString();
    const QString suffix = filter.mid(at + 3, filter.size() - at - 4).toLower();
    for (const char* ext : {"xls", "txt", "csv", "xml", "htm"})
        if (suffix == QLatin1String(ext))
            return suffix;
    return QString();
}

QString ExportStartFolder(const DataGrid& settings, const QString& presetFolder,
                          const ExportFolderRule& rule) {
    if (!presetFolder.isEmpty())
        return presetFolder;
    if (rule.row > settings.Rows() || rule.col > settings.Cols())
        return QString();
    return settings.CellText(rule.row, rule.col);
}

void RememberExportFolder(DataGrid& settings, const QString& presetFolder, const QString& chosenPath,
                          const ExportFolderRule& rule) {
    if (rule.onlyWithoutPreset && !presetFolder.isEmpty())
        return;
    if (rule.row > settings.Rows() || rule.col > settings.Cols())
        return;
    QString folder = QFileInfo(chosenPath).absolutePath();
    while (folder.size() > 1 && folder.endsWith(u'/'))
        folder.chop(1);
    settings.SetCellText(rule.row, rule.col, folder);
}

bool CheckExportable(const DataGrid& list, Prompt& prompt) {
    if (list.Rows() > 0)
        return true;
    prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
    return false;
}

ExportOutcome ExportByPath(const DataGrid& list, const QString& path, Prompt& prompt) {
    const int format = ExportFormatForPath(path);
    if (format == ExportFormat::None)
        return ExportOutcome::NotWritten;
    bool ok = false;
    if (format == ExportFormat::Htm)
        ok = ExportHtml(list, path);
    else if (format == ExportFormat::Txt || format == ExportFormat::Xls)
        ok = ExportList(list, path, format, QString(), 2, 1, 0, QString(), QStringLiteral("\t"));
    else
        ok = ExportList(list, path, format);
    if (!ok) {
        prompt.Tell(FileTextOf(FileText::ExportWriteFailed) + QLatin1String("\n\n") +
                        QDir::toNativeSeparators(path) + QLatin1String("\n") + LastExportError(),
                    Prompt::Icon::Critical);
        return ExportOutcome::Failed;
    }
    return ExportOutcome::Written;
}

ExportOutcome ExportDataList(const DataGrid& list, const QString& chosenPath, DataGrid& settings,
                             const DataListExportOptions& options, Prompt& prompt) {
    if (chosenPath.isEmpty())
        return ExportOutcome::NotWritten;
    const ExportOutcome outcome = ExportByPath(list, chosenPath, prompt);
    if (outcome != ExportOutcome::Written)
        return outcome;
    RememberExportFolder(settings, options.presetFolder, chosenPath, ExportFolders::DataList);
    if (!options.noMsg)
        prompt.Tell(Caption(CapListExported), Prompt::Icon::Information);
    return outcome;
}

void PreparePlaylistExport(const DataGrid& playlist, const QString& playlistTitle, DataGrid& dummy) {
    // Playlist columns: 2 FTag, 4 FileName, 6 DurationS, 7 DurationMS, 9 SizeMByte, 10 PathFile.
    struct Source {
        const char* key;
        int col;
    };
    static constexpr Source kSources[] = {{"Path", 10}, {"Titel", 4}, {"Sec", 6}, {"Time", 7}, {"Size", 9}};
    constexpr int kFTag = 2;
    if (dummy.Cols() == 0)
        for (const Source& s : kSources)
            dummy.AddColumn(QString::fromLatin1(s.key),
                            s.col <= playlist.Cols() ? playlist.Column(s.col).caption : QString());
    dummy.LockUpdate(true);
    dummy.Clear();
    dummy.AddRow({playlistTitle});
    dummy.AddRow({});
    QStringList cells;
    for (int r = 1; r <= playlist.Rows(); ++r) {
        if (!playlist.CellView(r, kFTag).isEmpty())
            continue;
        cells.clear();
        for (const Source& s : kSources)
            cells << playlist.CellText(r, s.col);
        dummy.AddRow(cells);
    }
    dummy.LockUpdate(false);
}

QString PictureListExportName(const QString& gridCaption) {
    const qsizetype paren = gridCaption.indexOf(u'(');
    return QStringLiteral("Export ") + (paren < 0 ? gridCaption : gridCaption.left(paren)).trimmed();
}
