#include "core/modLanguage.h"

#include "core/TextCodec.h"

#include "core/AppPaths.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {
bool g_changed = false;

} // namespace

QString LanguageNameFromFile(const QString& fileName) {
    QString name = QFileInfo(fileName).fileName();
    if (name.startsWith(u"qlt_", Qt::CaseInsensitive))
        name.remove(0, 4);
    if (name.endsWith(u".lng", Qt::CaseInsensitive))
        name.chop(4);
    return name;
}

QString ImportLanguage(int slot, const QString& path) {
    if (slot < kImportSlotFirst || slot > kImportSlotLast)
        return QString();
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QString();
    const QString text = DecodeTextFile(f.readAll());
    const QString name = LanguageNameFromFile(path);
    if (name.isEmpty())
        return QString();

    DataGrid& t = CaptionTable();
    if (t.Cols() < slot || t.Rows() < kCaptionRowCount)
        EnsureCaptionTableShape();
    t.LockUpdate(true);
    int row = 0, start = 0;
    const int n = int(text.size());
    while (start < n && row < kCaptionRowCount) {
        int end = text.indexOf(u'\n', start);
        if (end < 0)
            end = n;
        int stop = end;
        if (stop > start && text.at(stop - 1) == u'\r')
            --stop;
        ++row;
        t.SetCellText(row, slot, text.mid(start, stop - start));
        start = end + 1;
    }
    t.SetColumnCaption(slot, name);
    t.SetColumnVisible(slot, true);
    t.LockUpdate(false);
    if (slot == kImportSlotFirst)
        SetSetting(Ini::CaptionImportSlot5, Ini::Col1, QStringLiteral("1"));
    g_changed = true;
    return name;
}

QString LanguageExportPath(const QString& chosenFile) {
    QString base = QFileInfo(chosenFile).fileName();
    if (base.endsWith(u".lng", Qt::CaseInsensitive))
        base.chop(4);
    if (!base.toLower().startsWith(u"qlt_"))
        base.prepend(QStringLiteral("qlt_"));
    return AppFile(QStringLiteral("language/") + base + QStringLiteral(".lng"));
}

bool ExportLanguage(int col, const QString& path) {
    const DataGrid& t = CaptionTable();
    if (col < 1 || col > t.Cols())
        return false;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    QByteArray out;
    for (int r = 1; r <= t.Rows() && r <= kCaptionRowCount; ++r) {
        out += t.CellText(r, col).toUtf8();
        out += "\r\n";
    }
    f.write(out);
    return f.commit();
}

void EraseTranslation(int col) {
    DataGrid& t = CaptionTable();
    if (col < 1 || col > t.Cols())
        return;
    t.LockUpdate(true);
    for (int r = 1; r <= t.Rows(); ++r)
        t.SetCellText(r, col, QString());
    t.LockUpdate(false);
    g_changed = true;
}

bool SaveCaptionTable() {
    QString path = CaptionFilePath();
    if (path.isEmpty())
        path = AppFile(QStringLiteral("Caption.qlt"));
    // A caption table without a single text is what a damaged file leaves after the
    // start: it never replaces the file on disk, which may still be mended.
    const DataGrid& t = CaptionTable();
    bool anyText = false;
    for (int c = kLanguageGerman; c <= t.Cols() && !anyText; ++c) {
        for (int r = 1; r <= t.Rows() && !anyText; ++r)
            anyText = !t.CellView(r, c).isEmpty();
    }
    if (!anyText && QFileInfo::exists(path))
        return false;
    const bool ok = CaptionTable().SaveFile(path);
    if (ok)
        g_changed = false;
    return ok;
}

int FindCaptionText(const QString& text, int col, int curRow) {
    const DataGrid& t = CaptionTable();
    if (text.isEmpty() || col < 1 || col > t.Cols() || t.Rows() == 0)
        return 0;
    if (curRow < t.Rows()) {
        if (const int r = t.FindRow(text, col, std::max(curRow, 0) + 1, false))
            return r;
    }
    return t.FindRow(text, col, 1, false);
}

int FindFreeCaptionRow(int curRow) {
    const DataGrid& t = CaptionTable();
    // Free: no note and no text in any language, so that a new text takes nobody's row.
    for (int r = std::max(curRow, 0) + 1; r <= t.Rows(); ++r) {
        bool empty = true;
        for (int c = 2; c <= t.Cols() && empty; ++c)
            empty = t.CellView(r, c).isEmpty();
        if (empty)
            return r;
    }
    return 0;
}

bool CaptionTableChanged() {
    return g_changed;
}
void SetCaptionTableChanged(bool changed) {
    g_changed = changed;
}
