#include "list/ftcNames.h"

#include "core/DataGrid.h"
#include "core/Settings.h"
#include "list/InputColumns.h"

void SplitPath(const QString& path, QString& folder, QString& name) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash < 0) {
        folder.clear();
        name = path;
        return;
    }
    folder = path.left(slash);
    name = path.mid(slash + 1);
}

void SplitExtension(const QString& name, QString& base, QString& extension) {
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot < 0) {
        base.clear();
        extension.clear();
        return;
    }
    base = name.left(dot);
    extension = name.mid(dot + 1);
}

bool IsNumericText(QStringView text) {
    text = text.trimmed();
    qsizetype i = 0;
    if (i < text.size() && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-')))
        ++i;
    bool digit = false, point = false;
    for (; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digit = true;
        else if ((c == QLatin1Char('.') || c == QLatin1Char(',')) && !point)
            point = true;
        else
            return false;
    }
    return digit;
}

void SplitArtistTitle(const QString& base, QString& artist, QString& title) {
    artist.clear();
    title.clear();
    qsizetype pos = base.indexOf(QLatin1Char('-'));
    if (pos < 0) {
        artist = base;
        return;
    }
    if (IsNumericText(QStringView(base).left(pos)))
        pos = base.indexOf(QLatin1Char('-'), pos + 1);
    if (pos >= 0 && pos < base.size()) {
        artist = base.left(pos).trimmed();
        title = base.mid(pos + 1).trimmed();
    }
}

QString PadNumber(QStringView digitText, int digits) {
    QString d;
    for (QChar c : digitText) {
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            d += c;
    }
    if (d.isEmpty())
        return d;
    qsizetype first = 0;
    while (first < d.size() - 1 && d[first] == QLatin1Char('0'))
        ++first;
    d.remove(0, first);
    return d.size() >= digits ? d : QString(digits - d.size(), QLatin1Char('0')) + d;
}

namespace {
bool IsDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}
} // namespace

void StripArtistNumber(QString& artist, QString& number, int row, int digits, const DataGrid* list) {
    qsizetype i = 0;
    while (i < artist.size() && IsDigit(artist[i]))
        ++i;
    number = PadNumber(QStringView(artist).left(i).trimmed(), digits);
    // Separators between the number and the name ("01 - ", "03. ") go up to the first letter.
    while (i < artist.size() && !artist[i].isLetter())
        ++i;
    artist = artist.mid(i);
    if (artist.isEmpty() && row > 0 && list && row <= list->Rows()) {
        const QStringView name = list->CellView(row, InCol::FileName);
        const qsizetype first = name.indexOf(QLatin1Char('-'));
        if (first >= 0) {
            const qsizetype second = name.indexOf(QLatin1Char('-'), first + 1);
            const QStringView part = second < 0 ? QStringView() : name.mid(first + 1, second - first - 1);
            artist = part.trimmed().toString();
        }
    }
}

void StripArtistNumber(QString& artist, QString& number, int row) {
    StripArtistNumber(artist, number, row, NumberDigits());
}

void StripTitleNumber(const QString& title, QString& number, QString& rest, int digits) {
    qsizetype i = 0;
    while (i < title.size() && (IsDigit(title[i]) || title[i] == QLatin1Char('#')))
        ++i;
    number = PadNumber(QStringView(title).left(i), digits);
    rest = title.mid(i).trimmed();
}

void StripTitleNumber(const QString& title, QString& number, QString& rest) {
    StripTitleNumber(title, number, rest, NumberDigits());
}
