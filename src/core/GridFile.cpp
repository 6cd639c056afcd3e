// Reading and writing a DataGrid as a file: the format of qlt.ini, Caption.qlt,
// lnkpic.qlt, .data and .ref files. The layout is described in docs/grid-format.md.

#include "core/DataGrid.h"

#include <QFile>
#include <QSaveFile>

namespace {

constexpr int kFormatVersion = 1;
const QByteArray kMagic = QByteArrayLiteral("QLTGRID");

// Appends `s` to `out`, escaping the four characters that the line format reserves.
void AppendEscaped(QString& out, QStringView s) {
    for (QChar ch : s) {
        switch (ch.unicode()) {
        case u'\\':
            out += QLatin1String("\\\\");
            break;
        case u'\t':
            out += QLatin1String("\\t");
            break;
        case u'\n':
            out += QLatin1String("\\n");
            break;
        case u'\r':
            out += QLatin1String("\\r");
            break;
        default:
            out += ch;
        }
    }
}

// Splits one line into unescaped fields. Returns false on a bad escape.
bool SplitFields(QStringView line, QStringList& fields) {
    fields.clear();
    QString cur;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar ch = line[i];
        if (ch == u'\t') {
            fields << cur;
            cur.clear();
        } else if (ch == u'\\') {
            if (++i >= line.size())
                return false;
            switch (line[i].unicode()) {
            case u'\\':
                cur += u'\\';
                break;
            case u't':
                cur += u'\t';
                break;
            case u'n':
                cur += u'\n';
                break;
            case u'r':
                cur += u'\r';
                break;
            default:
                return false;
            }
        } else {
            cur += ch;
        }
    }
    fields << cur;
    return true;
}

bool ToInt(QStringView s, int& out, int min, int max) {
    bool ok = false;
    const int v = s.toInt(&ok);
    if (!ok || v < min || v > max)
        return false;
    out = v;
    return true;
}

} // namespace

class GridFile {
public:
    static bool Save(const DataGrid& g, const QString& path);
    static bool Load(DataGrid& g, const QString& path, bool keepColumns);
};

bool DataGrid::SaveFile(const QString& path) const { return GridFile::Save(*this, path); }
bool DataGrid::LoadFile(const QString& path, bool keepColumns) { return GridFile::Load(*this, path, keepColumns); }

bool GridFile::Save(const DataGrid& g, const QString& path) {
    g.m_lastFileError.clear();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        g.m_lastFileError = file.errorString();
        return false;
    }
    QByteArray out;
    out.reserve(1 << 20);
    QString line;
    auto flush = [&](bool force) {
        if (force || out.size() > (1 << 20)) {
            if (file.write(out) != out.size())
                return false;
            out.clear();
        }
        return true;
    };
    const int cols = g.Cols();
    const int rows = g.Rows();
    out += kMagic + '\t' + QByteArray::number(kFormatVersion) + '\n';
    out += "C\t" + QByteArray::number(cols) + '\n';
    for (const GridColumn& c : g.m_columns) {
        line = QStringLiteral("c\t");
        AppendEscaped(line, c.key);
        line += u'\t';
        AppendEscaped(line, c.caption);
        line += QStringLiteral("\t%1\t%2\t%3\t%4").arg(c.width).arg(int(c.align)).arg(c.visible ? 1 : 0).arg(int(c.sortType));
        out += line.toUtf8() + '\n';
    }
    out += "R\t" + QByteArray::number(rows) + '\n';
    for (const DataGrid::Row& r : g.m_rows) {
        line.clear();
        line += QLatin1String("r\t");
        AppendEscaped(line, r.key);
        const std::size_t n = std::min<std::size_t>(r.ends.size(), std::size_t(cols));
        std::uint32_t begin = 0;
        for (std::size_t i = 0; i < n; ++i) {
            line += u'\t';
            AppendEscaped(line, QStringView(r.text).mid(begin, r.ends[i] - begin));
            begin = r.ends[i];
        }
        out += line.toUtf8();
        out += '\n';
        if (!flush(false)) {
            g.m_lastFileError = file.errorString();
            file.cancelWriting();
            return false;
        }
    }
    out += "E\t" + QByteArray::number(rows) + '\n';
    if (!flush(true) || !file.commit()) {
        g.m_lastFileError = file.errorString();
        return false;
    }
    return true;
}

bool GridFile::Load(DataGrid& g, const QString& path, bool keepColumns) {
    g.m_lastFileError.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        g.m_lastFileError = file.errorString();
        return false;
    }
    const QByteArray data = file.readAll();
    file.close();
    auto fail = [&](const char* why) {
        g.m_lastFileError = QString::fromLatin1(why);
        return false;
    };

    // Walk the lines by hand: one pass, no list of lines.
    qsizetype pos = 0;
    auto nextLine = [&](QByteArrayView& line) {
        if (pos >= data.size())
            return false;
        qsizetype nl = data.indexOf('\n', pos);
        if (nl < 0)
            return false; // every line, the last included, ends in a line feed
        qsizetype end = nl;
        if (end > pos && data[end - 1] == '\r')
            --end;
        line = QByteArrayView(data).sliced(pos, end - pos);
        pos = nl + 1;
        return true;
    };

    QByteArrayView line;
    QStringList fields;
    if (!nextLine(line))
        return fail("empty or truncated file");
    {
        const QString head = QString::fromUtf8(line);
        if (!SplitFields(head, fields) || fields.size() != 2 || fields[0].toUtf8() != kMagic)
            return fail("not a grid file");
        int version = 0;
        if (!ToInt(fields[1], version, 1, kFormatVersion))
            return fail("grid file of an unknown version");
    }
    int cols = 0;
    if (!nextLine(line) || !line.startsWith("C\t") || !ToInt(QString::fromUtf8(line.sliced(2)), cols, 0, 100000))
        return fail("bad column count");
    std::vector<GridColumn> columns;
    columns.reserve(std::size_t(cols));
    for (int i = 0; i < cols; ++i) {
        if (!nextLine(line) || !SplitFields(QString::fromUtf8(line), fields) || fields.size() != 7 || fields[0] != u"c")
            return fail("bad column line");
        GridColumn c;
        c.key = fields[1];
        c.caption = fields[2];
        int align = 0, visible = 0, sort = 0;
        if (!ToInt(fields[3], c.width, -1000000, 1000000) || !ToInt(fields[4], align, 0, 2) ||
            !ToInt(fields[5], visible, 0, 1) || !ToInt(fields[6], sort, 0, 2))
            return fail("bad column line");
        c.align = Align(align);
        c.visible = visible == 1;
        c.sortType = SortType(sort);
        columns.push_back(c);
    }
    int rows = 0;
    if (!nextLine(line) || !line.startsWith("R\t") ||
        !ToInt(QString::fromUtf8(line.sliced(2)), rows, 0, std::numeric_limits<int>::max()))
        return fail("bad row count");
    // A row line takes at least three bytes: guard the reservation against a lying count.
    if (qint64(rows) * 3 > data.size())
        return fail("row count larger than the file");

    std::vector<DataGrid::Row> newRows;
    newRows.reserve(std::size_t(rows));
    const std::size_t maxCells =
        keepColumns && g.Cols() > 0 ? std::size_t(g.Cols()) : std::size_t(std::max(cols, 0));
    QString text;
    for (int i = 0; i < rows; ++i) {
        if (!nextLine(line) || !line.startsWith("r\t"))
            return fail("truncated or bad row");
        text = QString::fromUtf8(line.sliced(2));
        DataGrid::Row r;
        r.text.reserve(text.size());
        // First field is the key; the cells follow, each unescaped straight into r.text.
        bool inKey = true;
        const qsizetype n = text.size();
        for (qsizetype k = 0; k < n; ++k) {
            QChar ch = text[k];
            if (ch == u'\t') {
                if (inKey) {
                    inKey = false;
                } else {
                    r.ends.push_back(std::uint32_t(r.text.size()));
                }
                continue;
            }
            if (ch == u'\\') {
                if (++k >= n)
                    return fail("bad escape");
                switch (text[k].unicode()) {
                case u'\\':
                    ch = u'\\';
                    break;
                case u't':
                    ch = u'\t';
                    break;
                case u'n':
                    ch = u'\n';
                    break;
                case u'r':
                    ch = u'\r';
                    break;
                default:
                    return fail("bad escape");
                }
            }
            if (inKey)
                r.key += ch;
            else
                r.text += ch;
        }
        if (!inKey)
            r.ends.push_back(std::uint32_t(r.text.size()));
        if (r.ends.size() > maxCells) {
            r.ends.resize(maxCells);
            r.text.truncate(maxCells ? r.ends.back() : 0);
        }
        r.text.squeeze();
        newRows.push_back(std::move(r));
    }
    if (!nextLine(line) || line != QByteArray("E\t" + QByteArray::number(rows)) || pos != data.size())
        return fail("missing end of file");

    // Everything read: only now does the grid change.
    if (!keepColumns || g.Cols() == 0)
        g.m_columns = std::move(columns);
    g.m_rows = std::move(newRows);
    g.m_selCount = 0;
    g.m_curRow = g.Rows() ? 1 : 0;
    g.NoteColumnsChanged();
    g.NoteRowsChanged();
    g.NoteSelectionChanged();
    return true;
}
