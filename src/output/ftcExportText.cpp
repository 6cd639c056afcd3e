// The text formats of the export: txt, csv, xml and htm.

#include "output/ExportTable.h"
#include "output/ExportWriters.h"

#include <QIODevice>
#include <QSet>
#include <vector>

namespace {

// Collects the output and hands it to the device in large pieces.
class ChunkWriter {
public:
    explicit ChunkWriter(QIODevice& dev) : m_dev(dev) { m_buf.reserve(kChunk + 4096); }
    void AddText(const QString& text) { Add(text.toUtf8()); }
    void Add(const QByteArray& bytes) {
        m_buf.append(bytes);
        if (m_buf.size() >= kChunk)
            Flush();
    }
    bool Flush() {
        if (m_ok && !m_buf.isEmpty())
            m_ok = m_dev.write(m_buf) == m_buf.size();
        m_buf.clear();
        return m_ok;
    }

private:
    static constexpr qsizetype kChunk = qsizetype(1) << 20;
    QIODevice& m_dev;
    QByteArray m_buf;
    bool m_ok = true;
};

const QByteArray kCrLf = QByteArrayLiteral("\r\n");

// ".txt": a cell must not break its line or its row.
void AppendTxtCell(QString& line, QStringView cell) {
    for (qsizetype i = 0; i < cell.size(); ++i) {
        const QChar ch = cell[i];
        if (ch == u'\r' || ch == u'\n' || ch == u'\t') {
            if (ch == u'\r' && i + 1 < cell.size() && cell[i + 1] == u'\n')
                ++i;
            line += u' ';
        } else {
            line += ch;
        }
    }
}

// ".csv": quoted when it holds the delimiter, a quote or a line break (RFC 4180).
void AppendCsvCell(QString& line, QStringView cell, QChar delimiter) {
    bool quote = false;
    for (QChar ch : cell)
        if (ch == delimiter || ch == u'"' || ch == u'\r' || ch == u'\n') {
            quote = true;
            break;
        }
    if (!quote) {
        line += cell;
        return;
    }
    line += u'"';
    for (QChar ch : cell) {
        if (ch == u'"')
            line += u'"';
        line += ch;
    }
    line += u'"';
}

// Characters that XML 1.0 does not allow at all are left out; a lone surrogate too.
bool IsXmlChar(QStringView s, qsizetype i) {
    const char16_t u = s[i].unicode();
    if (u < 0x20)
        return u == 0x09 || u == 0x0A || u == 0x0D;
    if (u == 0xFFFE || u == 0xFFFF)
        return false;
    if (QChar::isHighSurrogate(u))
        return i + 1 < s.size() && QChar::isLowSurrogate(s[i + 1].unicode());
    if (QChar::isLowSurrogate(u))
        return i > 0 && QChar::isHighSurrogate(s[i - 1].unicode());
    return true;
}

// The references that XML and HTML share: "&", "<", ">" and, where asked, the double quote;
// empty for any other character.
QLatin1String MarkupReference(QChar ch, bool quote) {
    switch (ch.unicode()) {
    case u'&':
        return QLatin1String("&amp;");
    case u'<':
        return QLatin1String("&lt;");
    case u'>':
        return QLatin1String("&gt;");
    case u'"':
        return quote ? QLatin1String("&quot;") : QLatin1String();
    default:
        return QLatin1String();
    }
}

// Escapes for XML text and attribute values (CR and TAB kept as references, so that a
// reader gets them back unchanged).
void AppendXmlEscaped(QString& out, QStringView s, bool attribute) {
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (!IsXmlChar(s, i))
            continue;
        const QChar ch = s[i];
        if (const QLatin1String ref = MarkupReference(ch, attribute); !ref.isEmpty()) {
            out += ref;
            continue;
        }
        switch (ch.unicode()) {
        case u'\r':
            out += QLatin1String("&#13;");
            break;
        case u'\n':
            out += attribute ? QLatin1String("&#10;") : QLatin1String("\n");
            break;
        case u'\t':
            out += attribute ? QLatin1String("&#9;") : QLatin1String("\t");
            break;
        default:
            out += ch;
        }
    }
}

// Escapes for HTML text; line breaks become <br>.
void AppendHtmlEscaped(QString& out, QStringView s) {
    for (qsizetype i = 0; i < s.size(); ++i) {
        const QChar ch = s[i];
        if (const QLatin1String ref = MarkupReference(ch, true); !ref.isEmpty()) {
            out += ref;
            continue;
        }
        switch (ch.unicode()) {
        case u'\'':
            out += QLatin1String("&#39;");
            break;
        case u'\r':
            if (i + 1 < s.size() && s[i + 1] == u'\n')
                ++i;
            out += QLatin1String("<br>");
            break;
        case u'\n':
            out += QLatin1String("<br>");
            break;
        default:
            if (IsXmlChar(s, i))
                out += ch;
        }
    }
}

bool IsNameStart(QChar ch) {
    const char16_t u = ch.unicode();
    return (u >= u'A' && u <= u'Z') || (u >= u'a' && u <= u'z') || u == u'_' || (u >= 0xC0 && ch.isLetter());
}

bool IsNameChar(QChar ch) {
    const char16_t u = ch.unicode();
    return IsNameStart(ch) || (u >= u'0' && u <= u'9') || u == u'-' || u == u'.';
}

// Element names of the exported columns, made unique ("Title", "Title_2").
std::vector<QString> ElementNames(const ExportTable& table) {
    std::vector<QString> names;
    QSet<QString> used;
    for (int c = 0; c < table.Cols(); ++c) {
        const QString base = XmlElementName(table.Caption(c));
        QString name = base;
        for (int n = 2; used.contains(name); ++n)
            name = base + u'_' + QString::number(n);
        used.insert(name);
        names.push_back(name);
    }
    return names;
}

} // namespace

QString XmlElementName(const QString& caption) {
    QString name;
    for (QChar ch : caption.trimmed()) {
        if (IsNameChar(ch))
            name += ch;
        else if (!name.endsWith(u'_'))
            name += u'_';
    }
    while (name.size() > 1 && name.endsWith(u'_'))
        name.chop(1);
    if (name.isEmpty() || name == QLatin1String("_"))
        return QStringLiteral("Column");
    // Names must start with a letter or "_", and names beginning with "xml" are reserved.
    if (!IsNameStart(name[0]) || name.startsWith(QLatin1String("xml"), Qt::CaseInsensitive))
        name.prepend(u'_');
    return name;
}

bool WriteTextExport(const ExportTable& table, QIODevice& out, QChar delimiter, bool csv,
                     const QString& title, const QString& extra) {
    ChunkWriter w(out);
    QString line;
    auto addCell = [&](QStringView cell) {
        if (csv)
            AppendCsvCell(line, cell, delimiter);
        else
            AppendTxtCell(line, cell);
    };
    auto endLine = [&] {
        w.Add(line.toUtf8());
        w.Add(kCrLf);
        line.clear();
    };
    if (csv)
        w.Add(QByteArrayLiteral("\xEF\xBB\xBF"));
    if (!title.isEmpty()) {
        addCell(title);
        endLine();
    }
    if (table.WithHeader()) {
        for (int c = 0; c < table.Cols(); ++c) {
            if (c)
                line += delimiter;
            addCell(table.Caption(c));
        }
        endLine();
    }
    for (int r = 0; r < table.Rows(); ++r) {
        for (int c = 0; c < table.Cols(); ++c) {
            if (c)
                line += delimiter;
            addCell(table.Cell(r, c));
        }
        endLine();
    }
    if (!extra.isEmpty()) {
        addCell(extra);
        endLine();
    }
    return w.Flush();
}

bool WriteXmlExport(const ExportTable& table, QIODevice& out, const QString& title, const QString& extra) {
    ChunkWriter w(out);
    const std::vector<QString> names = ElementNames(table);
    QString s = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<List");
    if (!title.isEmpty()) {
        s += QLatin1String(" title=\"");
        AppendXmlEscaped(s, title, true);
        s += u'"';
    }
    s += QStringLiteral(" rows=\"%1\">\r\n").arg(table.Rows());
    if (table.WithHeader()) {
        s += QLatin1String("  <Columns>\r\n");
        for (int c = 0; c < table.Cols(); ++c) {
            s +=
                QLatin1String("    <Column name=\"") + names[std::size_t(c)] + QLatin1String("\" caption=\"");
            AppendXmlEscaped(s, table.Caption(c), true);
            s += QLatin1String("\"/>\r\n");
        }
        s += QLatin1String("  </Columns>\r\n");
    }
    w.AddText(s);
    for (int r = 0; r < table.Rows(); ++r) {
        s = QStringLiteral("  <Row>\r\n");
        for (int c = 0; c < table.Cols(); ++c) {
            const QString& name = names[std::size_t(c)];
            const QStringView cell = table.Cell(r, c);
            s += QLatin1String("    <") + name;
            if (cell.isEmpty()) {
                s += QLatin1String("/>\r\n");
                continue;
            }
            s += u'>';
            AppendXmlEscaped(s, cell, false);
            s += QLatin1String("</") + name + QLatin1String(">\r\n");
        }
        s += QLatin1String("  </Row>\r\n");
        w.AddText(s);
    }
    s.clear();
    if (!extra.isEmpty()) {
        s += QLatin1String("  <Note>");
        AppendXmlEscaped(s, extra, false);
        s += QLatin1String("</Note>\r\n");
    }
    s += QLatin1String("</List>\r\n");
    w.AddText(s);
    return w.Flush();
}

bool WriteHtmlExport(const ExportTable& table, QIODevice& out, const QString& title,
                     const QString& language) {
    ChunkWriter w(out);
    QString s =
        QStringLiteral("<!DOCTYPE html>\r\n<html lang=\"%1\">\r\n<head>\r\n<meta charset=\"utf-8\">\r\n"
                       "<meta name=\"generator\" content=\"Quillotune\">\r\n<title>")
            .arg(language);
    AppendHtmlEscaped(s, title);
    s += QLatin1String("</title>\r\n<style>\r\n"
                       "body { font-family: sans-serif; font-size: 10pt; }\r\n"
                       "table { border-collapse: collapse; }\r\n"
                       "th, td { border: 1px solid #a0a0a0; padding: 2px 6px; text-align: left; "
                       "vertical-align: top; }\r\n"
                       "th { background: #e8e8e8; }\r\n"
                       "td.r { text-align: right; }\r\n"
                       "td.c { text-align: center; }\r\n"
                       "</style>\r\n</head>\r\n<body>\r\n<h1>");
    AppendHtmlEscaped(s, title);
    s += QLatin1String("</h1>\r\n<table>\r\n");
    if (table.WithHeader()) {
        s += QLatin1String("<thead>\r\n<tr>");
        for (int c = 0; c < table.Cols(); ++c) {
            s += QLatin1String("<th>");
            AppendHtmlEscaped(s, table.Caption(c));
            s += QLatin1String("</th>");
        }
        s += QLatin1String("</tr>\r\n</thead>\r\n");
    }
    s += QLatin1String("<tbody>\r\n");
    w.AddText(s);
    // Alignment of each column as the grid shows it.
    std::vector<QString> openCell;
    for (int c = 0; c < table.Cols(); ++c) {
        const Align a = table.Column(c).align;
        openCell.push_back(a == Align::Right    ? QStringLiteral("<td class=\"r\">")
                           : a == Align::Center ? QStringLiteral("<td class=\"c\">")
                                                : QStringLiteral("<td>"));
    }
    for (int r = 0; r < table.Rows(); ++r) {
        s = QStringLiteral("<tr>");
        for (int c = 0; c < table.Cols(); ++c) {
            s += openCell[std::size_t(c)];
            AppendHtmlEscaped(s, table.Cell(r, c));
            s += QLatin1String("</td>");
        }
        s += QLatin1String("</tr>\r\n");
        w.AddText(s);
    }
    w.Add(QByteArrayLiteral("</tbody>\r\n</table>\r\n</body>\r\n</html>\r\n"));
    return w.Flush();
}
