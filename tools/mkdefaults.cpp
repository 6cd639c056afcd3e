// qlt-mkdefaults RESOURCES_DIR PROGRAM_DIR
//
// Builds the default files of a fresh installation from the readable sources in
// resources/:
//   captions.tsv  (row, German, English)      -> Caption.qlt, language/qlt_*.lng
//   qlt_ini.tsv   (row, column, value)         -> qlt.ini
// and creates the folders data, temp and language beside them.

#include "core/Captions.h"
#include "core/DataGrid.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>
#include <cstdio>

namespace {

constexpr int kIniColumns = 8;
constexpr int kIniRows = 1000;

bool ReadTsv(const QString& path, int fields, QList<QStringList>& out) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        return false;
    }
    int lineNo = 0;
    while (!f.atEnd()) {
        QString line = QString::fromUtf8(f.readLine());
        ++lineNo;
        while (line.endsWith(u'\n') || line.endsWith(u'\r'))
            line.chop(1);
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        QStringList parts = line.split(u'\t');
        if (parts.size() < fields) {
            while (parts.size() < fields)
                parts << QString();
        } else if (parts.size() > fields) {
            std::fprintf(stderr, "%s:%d: more than %d fields\n", qPrintable(path), lineNo, fields);
            return false;
        }
        out << parts;
    }
    return true;
}

bool BuildCaptions(const QString& res, const QString& prog) {
    QList<QStringList> lines;
    if (!ReadTsv(res + QStringLiteral("/captions.tsv"), 3, lines))
        return false;
    DataGrid g;
    g.AddColumn(QStringLiteral("No"), QString(), 600, Align::Right, true, SortType::Number);
    g.AddColumn(QStringLiteral("Note"), QString(), 1500);
    g.AddColumn(QStringLiteral("Deutsch"), QStringLiteral("Deutsch"), 6000);
    g.AddColumn(QStringLiteral("English"), QStringLiteral("English"), 6000);
    g.LockUpdate(true);
    for (int r = 1; r <= kCaptionRowCount; ++r)
        g.AddRow({QString::number(r)});
    for (const QStringList& l : lines) {
        if (l[0] == u"row")
            continue; // header line
        bool ok = false;
        const int row = l[0].toInt(&ok);
        if (!ok || row < 1 || row > kCaptionRowCount) {
            std::fprintf(stderr, "captions.tsv: bad row number '%s'\n", qPrintable(l[0]));
            return false;
        }
        g.SetCellText(row, 3, l[1]);
        g.SetCellText(row, 4, l[2]);
    }
    if (!g.SaveFile(prog + QStringLiteral("/Caption.qlt"))) {
        std::fprintf(stderr, "cannot write Caption.qlt: %s\n", qPrintable(g.LastFileError()));
        return false;
    }
    // One .lng file per language, the form the translators' window imports.
    QDir(prog).mkpath(QStringLiteral("language"));
    for (int col : {3, 4}) {
        QSaveFile f(prog + QStringLiteral("/language/qlt_") + g.Column(col).caption + QStringLiteral(".lng"));
        if (!f.open(QIODevice::WriteOnly))
            return false;
        QByteArray out;
        for (int r = 1; r <= kCaptionRowCount; ++r)
            out += g.CellText(r, col).toUtf8() + "\r\n";
        f.write(out);
        if (!f.commit())
            return false;
    }
    return true;
}

bool BuildIni(const QString& res, const QString& prog) {
    QList<QStringList> lines;
    if (!ReadTsv(res + QStringLiteral("/qlt_ini.tsv"), 3, lines))
        return false;
    DataGrid g;
    for (int c = 1; c <= kIniColumns; ++c)
        g.AddColumn(QStringLiteral("C%1").arg(c), QString());
    g.LockUpdate(true);
    for (int r = 1; r <= kIniRows; ++r)
        g.AddRow({});
    for (const QStringList& l : lines) {
        if (l[0] == u"row")
            continue;
        bool ok1 = false, ok2 = false;
        const int row = l[0].toInt(&ok1), col = l[1].toInt(&ok2);
        if (!ok1 || !ok2 || row < 1 || row > kIniRows || col < 1 || col > kIniColumns) {
            std::fprintf(stderr, "qlt_ini.tsv: bad cell '%s,%s'\n", qPrintable(l[0]), qPrintable(l[1]));
            return false;
        }
        g.SetCellText(row, col, l[2]);
    }
    if (!g.SaveFile(prog + QStringLiteral("/qlt.ini"))) {
        std::fprintf(stderr, "cannot write qlt.ini: %s\n", qPrintable(g.LastFileError()));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: qlt-mkdefaults RESOURCES_DIR PROGRAM_DIR\n");
        return 2;
    }
    const QString res = args[1], prog = args[2];
    QDir().mkpath(prog);
    for (const char* sub : {"data", "temp", "language"})
        QDir(prog).mkpath(QString::fromLatin1(sub));
    if (!BuildCaptions(res, prog) || !BuildIni(res, prog))
        return 1;
    return 0;
}
