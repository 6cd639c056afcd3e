#include "output/modPrint.h"

#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "output/PrintDevice.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kRowFontSize = 1;
constexpr int kRowUnit = Ini::PrintFirst; // 10
constexpr int kRowLeft = 11, kRowRight = 12, kRowTop = 13, kRowBottom = 14;
constexpr int kRowHeader = 15, kRowFooter = 16, kRowHeight = 17, kRowWidth = 18;
constexpr int kRowNoPageNo = 19, kRowNoPath = 20;
static_assert(kRowNoPath == Ini::PrintLast);

QString Cell(const DataGrid& ini, int row) {
    return row <= ini.Rows() && ini.Cols() >= Ini::Col1 ? ini.CellText(row, Ini::Col1).trimmed() : QString();
}

double Number(const DataGrid& ini, int row, double fallback) {
    double v = 0;
    return ParseLength(Cell(ini, row), &v) ? v : fallback;
}

void Put(DataGrid& ini, int row, const QString& text) {
    if (row <= ini.Rows() && ini.Cols() >= Ini::Col1)
        ini.SetCellText(row, Ini::Col1, text);
}

QStringList SplitLines(const QString& text) {
    QString t = text;
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QStringList lines = t.split(QLatin1Char('\n'));
    if (lines.size() > 1 && lines.last().isEmpty())
        lines.removeLast(); // a closing line break starts no line of its own
    return lines;
}

} // namespace

bool ParseLength(const QString& text, double* value) {
    QString t = text.trimmed();
    t.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (!ok || v < 0 || !std::isfinite(v))
        return false;
    *value = v;
    return true;
}

QString FormatLength(double value) {
    QString s = QString::number(value, 'f', 2);
    while (s.endsWith(QLatin1Char('0')))
        s.chop(1);
    if (s.endsWith(QLatin1Char('.')))
        s.chop(1);
    return s;
}

PageSetup ReadPageSetup(const DataGrid& ini) {
    PageSetup s;
    s.inch = Cell(ini, kRowUnit) == QString::number(kPrintUnitInch);
    s.left = Number(ini, kRowLeft, s.left);
    s.right = Number(ini, kRowRight, s.right);
    s.top = Number(ini, kRowTop, s.top);
    s.bottom = Number(ini, kRowBottom, s.bottom);
    s.header = Number(ini, kRowHeader, s.header);
    s.footer = Number(ini, kRowFooter, s.footer);
    s.height = Number(ini, kRowHeight, s.height);
    s.width = Number(ini, kRowWidth, s.width);
    s.noPageNo = Cell(ini, kRowNoPageNo) == QLatin1String("1");
    s.noPath = Cell(ini, kRowNoPath) == QLatin1String("1");
    s.fontSize = Number(ini, kRowFontSize, s.fontSize);
    if (s.fontSize <= 0)
        s.fontSize = PageSetup().fontSize;
    return s;
}

void WritePageSetup(DataGrid& ini, const PageSetup& s) {
    Put(ini, kRowUnit, QString::number(s.inch ? kPrintUnitInch : kPrintUnitMm));
    Put(ini, kRowLeft, FormatLength(s.left));
    Put(ini, kRowRight, FormatLength(s.right));
    Put(ini, kRowTop, FormatLength(s.top));
    Put(ini, kRowBottom, FormatLength(s.bottom));
    Put(ini, kRowHeader, FormatLength(s.header));
    Put(ini, kRowFooter, FormatLength(s.footer));
    Put(ini, kRowHeight, FormatLength(s.height));
    Put(ini, kRowWidth, FormatLength(s.width));
    Put(ini, kRowNoPageNo, s.noPageNo ? QStringLiteral("1") : QStringLiteral("0"));
    Put(ini, kRowNoPath, s.noPath ? QStringLiteral("1") : QStringLiteral("0"));
    Put(ini, kRowFontSize, FormatLength(s.fontSize));
}

PageSetup ConvertPageSetup(const PageSetup& setup, bool toInch) {
    if (setup.inch == toInch)
        return setup;
    const double f = toInch ? 1.0 / kMmPerInch : kMmPerInch;
    PageSetup s = setup;
    s.inch = toInch;
    for (double* v : {&s.left, &s.right, &s.top, &s.bottom, &s.header, &s.footer, &s.height, &s.width})
        *v *= f;
    return s;
}

QString PageLine(const QString& path, const QString& pageCaption, int page, bool noPath, bool noPageNo) {
    noPath = noPath || path.isEmpty(); // a text without a file has no path to show
    const QString number = pageCaption + QStringLiteral("%1").arg(page, 2, 10, QLatin1Char('0'));
    if (!noPath && !noPageNo)
        return path + QStringLiteral("  -  ") + number;
    if (!noPath)
        return path;
    if (!noPageNo)
        return number;
    return QString();
}

bool PrintText(PrintDevice& device, const PageSetup& setup, const QString& path, const QString& pageCaption,
               const QString& text, QString* error) {
    auto fail = [&] {
        if (error)
            *error = device.ErrorText();
        return false;
    };
    if (!device.Begin(setup.width, setup.height, setup.inch))
        return fail();
    device.SetFont(QString::fromLatin1(kPrintFontFamily), setup.fontSize);
    const double lineHeight = device.TextHeight(QStringLiteral("Ä"));
    int page = 1;
    auto printPageLine = [&] {
        const QString line = PageLine(path, pageCaption, page, setup.noPath, setup.noPageNo);
        if (line.isEmpty())
            return;
        // right-aligned at the right margin, its top at the footer distance from the edge
        const double x = std::max(setup.left, setup.width - setup.right - device.TextWidth(line));
        device.PrintAt(x, setup.height - setup.footer - lineHeight, line);
    };
    double y = setup.top;
    const double bottom = setup.height - setup.bottom;
    for (const QString& line : SplitLines(text)) {
        if (y + lineHeight > bottom && y > setup.top) {
            printPageLine();
            if (!device.NewPage())
                return fail();
            ++page;
            y = setup.top;
        }
        device.PrintAt(setup.left, y, line);
        y += lineHeight;
    }
    printPageLine();
    if (!device.EndDoc())
        return fail();
    return true;
}

QString GridRowsText(const DataGrid& grid, const QList<int>& rows) {
    QList<int> cols;
    for (int c = 1; c <= grid.Cols(); ++c)
        if (grid.Column(c).visible)
            cols.append(c);
    QStringList lines;
    QStringList head;
    for (int c : cols)
        head.append(grid.Column(c).caption);
    lines.append(head.join(QStringLiteral("   ")));
    for (int r : rows) {
        if (r < 1 || r > grid.Rows())
            continue;
        QStringList cells;
        for (int c : cols)
            cells.append(grid.CellText(r, c));
        lines.append(cells.join(QStringLiteral("   ")));
    }
    return lines.join(QStringLiteral("\r\n"));
}

QList<int> PrintRows(const DataGrid& grid, PrintRowChoice choice, const QString& mark) {
    QList<int> rows;
    for (int r = 1; r <= grid.Rows(); ++r) {
        const bool take = choice == PrintRowChoice::All ? true
                          : choice == PrintRowChoice::Highlighted
                              ? grid.IsSelected(r)
                              : !mark.isEmpty() && grid.Cols() >= 2 && grid.CellText(r, 2) == mark;
        if (take)
            rows.append(r);
    }
    return rows;
}
