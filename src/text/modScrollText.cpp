// modScrollText: rows and skins of the scrolling text window.
#include "text/modScrollText.h"

#include "core/AppPaths.h"
#include "core/DataGrid.h"
#include "core/TextCodec.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "text/modSText.h"

#include <QFile>
#include <QStringList>

using namespace Scroll;

// ---- skins -----------------------------------------------------------------------------

namespace {
const char* const kDefaultSkin[] = {
    "3|16711680|16762035|16762035|Tahoma|20|1|0|2||",
    "16762035|355350|1|||",
    "16762035|16762035|16762035|16762035|16762035|16762035|16762035|16762035|16762035|16762035||||",
    "16762035|16764607|16766666|16771039|16772070|16772070|16771039|16766666|16764607|16762035|||||",
    "0||||||",
};

// A number field; false keeps the old value.
bool ToNumber(const QString& field, qint64* out) {
    bool ok = false;
    const QString t = field.trimmed();
    qint64 v = t.toLongLong(&ok);
    if (!ok) {
        const double d = t.toDouble(&ok);
        if (!ok || d > 2147483647.0 || d < -2147483648.0)
            return false;
        v = qRound64(d);
    }
    if (v > 2147483647 || v < -2147483648LL)
        return false;
    *out = v;
    return true;
}
void ReadInt(const QStringList& f, int i, int& value) {
    qint64 v;
    if (i < f.size() && ToNumber(f[i], &v))
        value = int(v);
}
void ReadFlag(const QStringList& f, int i, bool& value) {
    qint64 v;
    if (i < f.size() && ToNumber(f[i], &v))
        value = v == 1;
}
// The fields of the section that starts after the first run of `bars` bars.
QStringList Section(const QString& text, int bars) {
    const int at = int(text.indexOf(QString(bars, QLatin1Char('|'))));
    if (at < 0)
        return {};
    return text.mid(at + bars).split(QLatin1Char('|'));
}
QString Num(qint64 v) {
    return QString::number(v);
}
QString Flag(bool b) {
    return b ? QStringLiteral("1") : QStringLiteral("0");
}
} // namespace

QString DefaultScrollSkinText() {
    QString s;
    for (const char* piece : kDefaultSkin)
        s += QLatin1String(piece);
    return s;
}

ScrollSkin DefaultScrollSkin() {
    ScrollSkin skin;
    ParseScrollSkin(DefaultScrollSkinText(), skin);
    return skin;
}

void ParseScrollSkin(const QString& text, ScrollSkin& skin) {
    // section 1: field 1 at the front, the others each up to the next bar
    const QStringList one = text.split(QLatin1Char('|'));
    ReadInt(one, 0, skin.Mode);
    ReadInt(one, 1, skin.WindowBack);
    ReadInt(one, 2, skin.ListBack);
    ReadInt(one, 3, skin.ListFore);
    if (one.size() > 4)
        skin.FontName = one[4];
    ReadInt(one, 5, skin.FontSize);
    ReadFlag(one, 6, skin.FontBold);
    ReadFlag(one, 7, skin.FontItalic);
    ReadInt(one, 8, skin.Alignment);
    const QStringList two = Section(text, 2);
    ReadInt(two, 0, skin.ActBack);
    ReadInt(two, 1, skin.ActFore);
    ReadFlag(two, 2, skin.ActBold);
    const QStringList three = Section(text, 3);
    const QStringList four = Section(text, 4);
    for (int i = 0; i < TableSize; ++i) {
        ReadInt(three, i, skin.BackTable[size_t(i)]);
        ReadInt(four, i, skin.ForeTable[size_t(i)]);
    }
    ReadFlag(Section(text, 5), 0, skin.Top1Bold);
}

QString BuildScrollSkin(const ScrollSkin& k) {
    QStringList one{Num(k.Mode),     Num(k.WindowBack), Num(k.ListBack),    Num(k.ListFore), k.FontName,
                    Num(k.FontSize), Flag(k.FontBold),  Flag(k.FontItalic), Num(k.Alignment)};
    QString s = one.join(QLatin1Char('|')) + QStringLiteral("||");
    if (k.Mode == 0)
        return s + Num(k.ActBack) + QLatin1Char('|');
    s += Num(k.ActBack) + QLatin1Char('|') + Num(k.ActFore) + QLatin1Char('|') + Flag(k.ActBold) +
         QStringLiteral("|||");
    const int entries = k.Mode == 2 ? 1 : (k.Mode == 3 || k.Mode == 4) ? TableSize : 0;
    if (entries == 0)
        return s;
    QStringList back, fore;
    for (int i = 0; i < entries; ++i) {
        back << Num(k.BackTable[size_t(i)]);
        fore << Num(k.ForeTable[size_t(i)]);
    }
    s += back.join(QLatin1Char('|')) + QStringLiteral("||||") + fore.join(QLatin1Char('|')) +
         QStringLiteral("|||||");
    if (k.Mode == 3)
        s += Flag(k.Top1Bold) + QStringLiteral("||||||");
    return s;
}

bool ReadScrollSkinFile(const QString& path, ScrollSkin& skin, QString* error) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        if (error)
            *error = f.errorString();
        return false;
    }
    const QByteArray bytes = f.readAll();
    if (f.error() != QFileDevice::NoError) {
        if (error)
            *error = f.errorString();
        return false;
    }
    QString text = DecodeTextFile(bytes);
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    ParseScrollSkin(text, skin);
    return true;
}

ScrollSkin LoadScrollSkin(const QString& path) {
    ScrollSkin skin = DefaultScrollSkin();
    if (path.isEmpty() || !PosixFile::Exists(path))
        return skin;
    ScrollSkin read = skin;
    QString error;
    if (!ReadScrollSkinFile(path, read, &error))
        return skin;
    return read;
}

bool SaveScrollSkin(const QString& path, const ScrollSkin& skin, QString* error) {
    return SafeFile::WriteWholeFile(path, (BuildScrollSkin(skin) + QStringLiteral("\r\n")).toUtf8(), error);
}

QString ScrollSkinFileName(const QString& name) {
    // an upper-case ending names the same skin: it is written in lower case
    if (name.toLower().endsWith(QLatin1String(SkinSuffix)))
        return name.chopped(int(qstrlen(SkinSuffix))) + QLatin1String(SkinSuffix);
    return name + QLatin1String(SkinSuffix);
}

QString ScrollSkinFolder() {
    return AppFile(QLatin1String(SkinFolder));
}

// ---- rows ------------------------------------------------------------------------------

void DefineScrollColumns(DataGrid& g) {
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("1"), QString(), 0);
    g.AddColumn(QStringLiteral("2"), QString(), 150);
    g.AddColumn(QStringLiteral("3"), QString(), 4000);
    g.SetColumnVisible(ColTime, false);
}

int FillScrollList(DataGrid& scroll, const DataGrid& stext) {
    scroll.LockUpdate(true);
    scroll.Clear();
    for (int i = 0; i < LeadRows; ++i)
        scroll.AddRow({});
    int taken = 0;
    for (int r = 1; r <= stext.Rows(); ++r) {
        if (!RowHasTime(stext, r))
            continue;
        scroll.AddRow({QString::number(RowTime(stext, r)), QString(), stext.CellText(r, SText::ColText)});
        ++taken;
    }
    const int want = std::max(BlankRows, LeadRows + taken + TrailRows);
    while (scroll.Rows() < want)
        scroll.AddRow({});
    scroll.LockUpdate(false);
    return taken;
}

int FillScrollListFromLrc(DataGrid& scroll, const QString& lrcText) {
    DataGrid stext;
    DefineSTextColumns(stext);
    stext.Clear();
    for (const QString& line : SplitSTextLines(lrcText))
        AddSTextLine(stext, line);
    return FillScrollList(scroll, stext);
}

int FirstTimedScrollRow(const DataGrid& g) {
    for (int r = 1; r <= g.Rows(); ++r)
        if (!g.CellView(r, ColTime).isEmpty())
            return r;
    return 0;
}

ScrollStep ScrollTickStep(const DataGrid& g, int curRow, qint32 pos, qint32 songTotal) {
    const int next = curRow + 1;
    if (next >= 1 && next <= g.Rows() && !g.CellView(next, ColTime).isEmpty() &&
        pos >= qint32(DataGrid::NumericPrefix(g.CellView(next, ColTime))))
        return ScrollStep::Next;
    if (pos >= songTotal - EndSlackMs || pos == 0)
        return ScrollStep::End;
    return ScrollStep::None;
}

int ScrollVisibleRows(int mode) {
    static const int rows[Modes] = {15, 3, 4, 12, 13};
    return mode >= 0 && mode < Modes ? rows[mode] : 15;
}

int ScrollTopRow(int mode, int act) {
    if (mode == 3)
        return act >= FirstTextRow ? act - 5 : 1;
    return std::max(1, act - 1);
}

ScrollRowLook ScrollRowStyle(const ScrollSkin& k, int act, int row) {
    const ScrollRowLook hidden{k.ListBack, k.ListBack, false};
    const ScrollRowLook current{k.ActBack, k.ActFore, k.ActBold};
    const int d = row - act;
    auto entry = [&](int n, bool bold) {
        return ScrollRowLook{k.BackTable[size_t(n - 1)], k.ForeTable[size_t(n - 1)], bold};
    };
    switch (k.Mode) {
    case 0:
        if (d == 0)
            return {Black, White, true};
        return {k.ListBack, k.ListFore, false};
    case 1:
        return d == 0 ? current : hidden;
    case 2:
        if (d == 0)
            return current;
        return d == 1 ? entry(1, false) : hidden;
    case 3:
        if (d == 0)
            return current;
        if (d >= -5 && d <= -1)
            return entry(6 + d, d == -1 && k.Top1Bold);
        if (d >= 1 && d <= 5)
            return entry(5 + d, false);
        return hidden;
    case 4:
        if (d == 0)
            return current;
        return d >= 1 && d <= 10 ? entry(d, false) : hidden;
    default: // an unknown mode leaves the rows as the list shows them
        return {k.ListBack, k.ListFore, false};
    }
}

qint32 ContrastTextColor(qint32 back) {
    const int red = back & 0xFF, green = (back >> 8) & 0xFF, blue = (back >> 16) & 0xFF;
    return 5 * green + 2 * red + blue < 1025 ? White : Black;
}

int MakeStaticScrollList(DataGrid& g, int curRow) {
    g.LockUpdate(true);
    const int keep = std::max(0, curRow + 1);
    while (g.Rows() > keep && g.CellView(g.Rows(), ColText).trimmed().isEmpty())
        g.DeleteRow(g.Rows());
    int first = 1;
    for (int r = 1; r <= g.Rows(); ++r)
        if (!g.CellView(r, ColText).trimmed().isEmpty()) {
            first = r;
            break;
        }
    g.LockUpdate(false);
    return first;
}

void ScrollListToSText(const DataGrid& scroll, DataGrid& stext, int firstRow) {
    stext.LockUpdate(true);
    stext.Clear();
    stext.AddRow({});
    stext.AddRow({});
    int last = scroll.Rows();
    while (last >= firstRow && scroll.CellView(last, ColText).isEmpty() &&
           scroll.CellView(last, ColTime).isEmpty())
        --last;
    for (int r = std::max(1, firstRow); r <= last; ++r) {
        const int row = stext.AddRow({});
        stext.SetCellText(row, SText::ColText, scroll.CellText(r, ColText));
        const qint32 ms = qint32(DataGrid::NumericPrefix(scroll.CellView(r, ColTime)));
        if (ms > 0)
            StampRow(stext, row, ms);
    }
    RenumberSTextKeys(stext);
    stext.LockUpdate(false);
}

// ---- the fields by name ----------------------------------------------------------------

namespace {
struct FieldRef {
    QString name;
    int* number = nullptr;
    bool* flag = nullptr;
    QString* text = nullptr;
};
QList<FieldRef> Fields(ScrollSkin& k) {
    QList<FieldRef> f{{QStringLiteral("Mode"), &k.Mode},
                      {QStringLiteral("WindowBack"), &k.WindowBack},
                      {QStringLiteral("ListBack"), &k.ListBack},
                      {QStringLiteral("ListFore"), &k.ListFore},
                      {QStringLiteral("FontName"), nullptr, nullptr, &k.FontName},
                      {QStringLiteral("FontSize"), &k.FontSize},
                      {QStringLiteral("FontBold"), nullptr, &k.FontBold},
                      {QStringLiteral("FontItalic"), nullptr, &k.FontItalic},
                      {QStringLiteral("Alignment"), &k.Alignment},
                      {QStringLiteral("ActBack"), &k.ActBack},
                      {QStringLiteral("ActFore"), &k.ActFore},
                      {QStringLiteral("ActBold"), nullptr, &k.ActBold}};
    for (int i = 0; i < TableSize; ++i)
        f.append({QStringLiteral("BackTable%1").arg(i + 1), &k.BackTable[size_t(i)]});
    for (int i = 0; i < TableSize; ++i)
        f.append({QStringLiteral("ForeTable%1").arg(i + 1), &k.ForeTable[size_t(i)]});
    f.append({QStringLiteral("Top1Bold"), nullptr, &k.Top1Bold});
    return f;
}
} // namespace

QList<std::pair<QString, QString>> ScrollSkinFields(const ScrollSkin& skin) {
    ScrollSkin k = skin;
    QList<std::pair<QString, QString>> out;
    for (const FieldRef& f : Fields(k))
        out.append({f.name, f.number ? Num(*f.number) : f.flag ? Flag(*f.flag) : *f.text});
    return out;
}

bool SetScrollSkinField(ScrollSkin& skin, const QString& name, const QString& value) {
    for (const FieldRef& f : Fields(skin)) {
        if (f.name.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        if (f.text) {
            *f.text = value;
            return true;
        }
        qint64 v;
        if (!ToNumber(value, &v))
            return false;
        if (f.number)
            *f.number = int(v);
        else
            *f.flag = v == 1;
        return true;
    }
    return false;
}
