// Reading and writing a DataGrid as a file: the format of qlt.ini, Caption.qlt,
// lnkpic.qlt, .data and .ref files. The layout is described in docs/grid-format.md.
//
// Both directions work on raw bytes in one pass per line: a data list of 100,000 rows
// is some 60 MB, and the generic string helpers would cost several times the disk time.

#include "core/DataGrid.h"

#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <limits>

namespace {

constexpr int kFormatVersion = 1;
constexpr char kMagic[] = "QLTGRID";
constexpr int kMaxColumns = 100000;
constexpr qsizetype kChunk = 1 << 20; // bytes collected before each write

// ---- writing ------------------------------------------------------------------------

// Appends UTF-8 to a byte buffer, escaping the four characters that the line format
// reserves. The buffer grows in large steps; `size` is the used part.
class LineWriter {
public:
    QByteArray buf;
    qsizetype size = 0;

    void Reserve(qsizetype more) {
        if (size + more > buf.size())
            buf.resize(std::max(buf.size() * 2, size + more));
    }
    void Byte(char c) {
        Reserve(1);
        buf.data()[size++] = c;
    }
    void Raw(const char* s) {
        while (*s)
            Byte(*s++);
    }
    void Number(qint64 v) { Raw(QByteArray::number(v).constData()); }

    void Escaped(QStringView s) {
        // At most 3 bytes per UTF-16 unit (a surrogate pair gives 4 for 2 units).
        Reserve(s.size() * 3);
        char* out = buf.data() + size;
        const char16_t* p = s.utf16();
        const char16_t* end = p + s.size();
        while (p < end) {
            const char16_t u = *p++;
            if (u < 0x80) {
                switch (u) {
                case u'\\':
                    *out++ = '\\';
                    *out++ = '\\';
                    break;
                case u'\t':
                    *out++ = '\\';
                    *out++ = 't';
                    break;
                case u'\n':
                    *out++ = '\\';
                    *out++ = 'n';
                    break;
                case u'\r':
                    *out++ = '\\';
                    *out++ = 'r';
                    break;
                default:
                    *out++ = char(u);
                }
            } else if (u < 0x800) {
                *out++ = char(0xC0 | (u >> 6));
                *out++ = char(0x80 | (u & 0x3F));
            } else if (QChar::isHighSurrogate(u) && p < end && QChar::isLowSurrogate(*p)) {
                const char32_t cp = QChar::surrogateToUcs4(u, *p++);
                *out++ = char(0xF0 | (cp >> 18));
                *out++ = char(0x80 | ((cp >> 12) & 0x3F));
                *out++ = char(0x80 | ((cp >> 6) & 0x3F));
                *out++ = char(0x80 | (cp & 0x3F));
            } else {
                // A lone surrogate has no UTF-8 form: it is written as U+FFFD.
                const char32_t cp = QChar::isSurrogate(u) ? 0xFFFD : u;
                *out++ = char(0xE0 | (cp >> 12));
                *out++ = char(0x80 | ((cp >> 6) & 0x3F));
                *out++ = char(0x80 | (cp & 0x3F));
            }
        }
        size = out - buf.data();
    }
};

// ---- reading ------------------------------------------------------------------------

// Turns a field in place into its text: "\\t" -> tab and so on. Returns the new
// length, or -1 on an escape that the writer never makes.
qsizetype Unescape(char16_t* s, qsizetype n) {
    qsizetype w = 0;
    for (qsizetype r = 0; r < n; ++r) {
        char16_t c = s[r];
        if (c == u'\\') {
            if (++r >= n)
                return -1;
            switch (s[r]) {
            case u'\\':
                c = u'\\';
                break;
            case u't':
                c = u'\t';
                break;
            case u'n':
                c = u'\n';
                break;
            case u'r':
                c = u'\r';
                break;
            default:
                return -1;
            }
        }
        s[w++] = c;
    }
    return w;
}

// Splits one header or column line into unescaped fields.
bool SplitFields(QByteArrayView line, QStringList& fields) {
    fields.clear();
    for (QString f : QString::fromUtf8(line).split(QLatin1Char('\t'))) {
        const qsizetype n = Unescape(reinterpret_cast<char16_t*>(f.data()), f.size());
        if (n < 0)
            return false;
        f.truncate(n);
        fields << f;
    }
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

bool ToInt(QByteArrayView s, int& out, int min, int max) {
    return ToInt(QString::fromLatin1(s.data(), s.size()), out, min, max);
}

} // namespace

class GridFile {
public:
    static bool Save(const DataGrid& g, const QString& path);
    static bool Load(DataGrid& g, const QString& path, bool keepColumns);

private:
    static bool ReadRow(QByteArrayView line, std::size_t maxCells, DataGrid::Row& r);
};

bool DataGrid::SaveFile(const QString& path) const {
    return GridFile::Save(*this, path);
}
bool DataGrid::LoadFile(const QString& path, bool keepColumns) {
    return GridFile::Load(*this, path, keepColumns);
}

bool GridFile::Save(const DataGrid& g, const QString& path) {
    g.m_lastFileError.clear();
    // QSaveFile writes beside the target and renames at the end: a failed or broken-off
    // write leaves the old file as it was.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        g.m_lastFileError = file.errorString();
        return false;
    }
    LineWriter w;
    w.buf.resize(kChunk + (1 << 16));
    auto flush = [&](bool force) {
        if (w.size == 0 || (!force && w.size < kChunk))
            return true;
        const bool ok = file.write(w.buf.constData(), w.size) == w.size;
        w.size = 0;
        return ok;
    };
    const int cols = g.Cols();
    const int rows = g.Rows();
    w.Raw(kMagic);
    w.Byte('\t');
    w.Number(kFormatVersion);
    w.Raw("\nC\t");
    w.Number(cols);
    w.Byte('\n');
    for (const GridColumn& c : g.m_columns) {
        w.Raw("c\t");
        w.Escaped(c.key);
        w.Byte('\t');
        w.Escaped(c.caption);
        for (int v : {c.width, int(c.align), c.visible ? 1 : 0, int(c.sortType)}) {
            w.Byte('\t');
            w.Number(v);
        }
        w.Byte('\n');
    }
    w.Raw("R\t");
    w.Number(rows);
    w.Byte('\n');
    bool ok = true;
    for (const DataGrid::Row& r : g.m_rows) {
        w.Raw("r\t");
        w.Escaped(r.key);
        const std::size_t n = std::min<std::size_t>(r.ends.size(), std::size_t(cols));
        std::uint32_t begin = 0;
        for (std::size_t i = 0; i < n; ++i) {
            w.Byte('\t');
            w.Escaped(QStringView(r.text).mid(begin, r.ends[i] - begin));
            begin = r.ends[i];
        }
        w.Byte('\n');
        if (!flush(false)) {
            ok = false;
            break;
        }
    }
    if (ok) {
        w.Raw("E\t");
        w.Number(rows);
        w.Byte('\n');
        ok = flush(true);
    }
    if (!ok || !file.commit()) {
        g.m_lastFileError = file.errorString();
        file.cancelWriting();
        return false;
    }
    return true;
}

// One row line without its leading "r\t": key, then the cells.
bool GridFile::ReadRow(QByteArrayView line, std::size_t maxCells, DataGrid::Row& r) {
    const qsizetype tab = line.indexOf('\t');
    const QByteArrayView keyBytes = tab < 0 ? line : line.first(tab);
    r.key = QString::fromUtf8(keyBytes);
    if (keyBytes.contains('\\')) {
        const qsizetype n = Unescape(reinterpret_cast<char16_t*>(r.key.data()), r.key.size());
        if (n < 0)
            return false;
        r.key.truncate(n);
    }
    if (tab < 0)
        return true; // a row without cells
    r.text = QString::fromUtf8(line.sliced(tab + 1));
    char16_t* s = reinterpret_cast<char16_t*>(r.text.data());
    const qsizetype n = r.text.size();
    // Cells are taken out of the line in place: the tabs go, escapes are resolved.
    qsizetype w = 0;
    r.ends.reserve(std::min<std::size_t>(maxCells, 128));
    for (qsizetype k = 0; k < n; ++k) {
        char16_t c = s[k];
        if (c == u'\t') {
            r.ends.push_back(std::uint32_t(w));
            continue;
        }
        if (c == u'\\') {
            if (++k >= n)
                return false;
            switch (s[k]) {
            case u'\\':
                break;
            case u't':
                c = u'\t';
                break;
            case u'n':
                c = u'\n';
                break;
            case u'r':
                c = u'\r';
                break;
            default:
                return false;
            }
        }
        s[w++] = c;
    }
    r.ends.push_back(std::uint32_t(w));
    if (r.ends.size() > maxCells) {
        r.ends.resize(maxCells);
        w = maxCells ? qsizetype(r.ends.back()) : 0;
    }
    // Trailing empty cells are not kept, as in rows built in memory.
    while (!r.ends.empty() && r.ends.back() == (r.ends.size() > 1 ? r.ends[r.ends.size() - 2] : 0u))
        r.ends.pop_back();
    r.ends.shrink_to_fit();
    r.text.truncate(w);
    r.text.squeeze();
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
    if (file.error() != QFileDevice::NoError) {
        g.m_lastFileError = file.errorString();
        return false;
    }
    file.close();
    auto fail = [&](const char* why) {
        g.m_lastFileError = QString::fromLatin1(why);
        return false;
    };

    qsizetype pos = 0;
    if (data.startsWith("\xEF\xBB\xBF"))
        pos = 3; // a byte order mark that an editor may have put in front
    auto nextLine = [&](QByteArrayView& line) {
        if (pos >= data.size())
            return false;
        const qsizetype nl = data.indexOf('\n', pos);
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
    if (!SplitFields(line, fields) || fields.size() != 2 || fields[0] != QLatin1String(kMagic))
        return fail("not a grid file");
    int version = 0;
    if (!ToInt(QStringView(fields[1]), version, 1, kFormatVersion))
        return fail("grid file of an unknown version");

    int cols = 0;
    if (!nextLine(line) || !line.startsWith("C\t") || !ToInt(line.sliced(2), cols, 0, kMaxColumns))
        return fail("bad column count");
    // A column line takes at least 14 bytes: a count larger than the file can hold is a lie.
    if (qint64(cols) * 14 > data.size())
        return fail("column count larger than the file");
    std::vector<GridColumn> columns;
    columns.reserve(std::size_t(cols));
    for (int i = 0; i < cols; ++i) {
        // Later versions may add fields behind the seven known ones.
        if (!nextLine(line) || !SplitFields(line, fields) || fields.size() < 7 || fields[0] != u"c")
            return fail("bad column line");
        GridColumn c;
        c.key = fields[1];
        c.caption = fields[2];
        int align = 0, visible = 0, sort = 0;
        if (!ToInt(QStringView(fields[3]), c.width, -1000000, 1000000) ||
            !ToInt(QStringView(fields[4]), align, 0, 2) || !ToInt(QStringView(fields[5]), visible, 0, 1) ||
            !ToInt(QStringView(fields[6]), sort, 0, 2))
            return fail("bad column line");
        c.align = Align(align);
        c.visible = visible == 1;
        c.sortType = SortType(sort);
        columns.push_back(c);
    }
    int rows = 0;
    if (!nextLine(line) || !line.startsWith("R\t") ||
        !ToInt(line.sliced(2), rows, 0, std::numeric_limits<int>::max()))
        return fail("bad row count");
    // A row line takes at least three bytes: guard the reservation against a lying count.
    if (qint64(rows) * 3 > data.size() - pos)
        return fail("row count larger than the file");

    const bool takeColumns = !keepColumns || g.Cols() == 0;
    const std::size_t maxCells = std::size_t(takeColumns ? std::max(cols, g.Cols()) : g.Cols());
    std::vector<DataGrid::Row> newRows;
    newRows.reserve(std::size_t(rows));
    for (int i = 0; i < rows; ++i) {
        if (!nextLine(line) || !line.startsWith("r\t"))
            return fail("truncated or bad row");
        DataGrid::Row r;
        if (!ReadRow(line.sliced(2), maxCells, r))
            return fail("bad escape");
        newRows.push_back(std::move(r));
    }
    if (!nextLine(line) || !line.startsWith("E\t") || line.sliced(2) != QByteArray::number(rows) ||
        pos != data.size())
        return fail("missing end of file");

    // Everything read: only now does the grid change.
    if (takeColumns) {
        // The file's definitions replace the grid's. What the file does not hold (header
        // colour, minimum width, footer) stays with a column that remains, and columns
        // that the grid has beyond the file's stay as they are: a file from an older
        // version with fewer columns must not take columns away from the program.
        for (std::size_t i = 0; i < columns.size() && i < g.m_columns.size(); ++i) {
            columns[i].headerColor = g.m_columns[i].headerColor;
            columns[i].minWidth = g.m_columns[i].minWidth;
            columns[i].footerText = g.m_columns[i].footerText;
        }
        for (std::size_t i = columns.size(); i < g.m_columns.size(); ++i)
            columns.push_back(g.m_columns[i]);
        g.m_columns = std::move(columns);
    }
    g.m_rows = std::move(newRows);
    g.m_selCount = 0;
    g.m_curRow = g.Rows() ? 1 : 0;
    g.NoteColumnsChanged();
    g.NoteRowsChanged();
    g.NoteSelectionChanged();
    if (!g.IsLocked())
        emit g.currentRowChanged(g.m_curRow);
    return true;
}
